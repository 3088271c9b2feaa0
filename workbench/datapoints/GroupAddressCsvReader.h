#pragma once

#include <QStringView>

class TImportCollector;

// The engineering tool's CSV export of group addresses: names in one or three columns, addresses in one or three, with
// or without a header. Rows whose address is a range ("1/-/-") name the groups of the addresses within it, before or
// behind them. Says why and recognises nothing when no column holds addresses.
void ReadGroupAddressCsv(QStringView text, TImportCollector& collector);
