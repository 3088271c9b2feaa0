#pragma once

#include <QStringView>

class TImportCollector;

// Lists of registers as CSV or TSV with a header, in the layouts of different makers. The same number as an input and
// as a holding register is two datapoints. Says why and recognises nothing when there is no header of a register list.
void ReadModbusRegisters(QStringView text, TImportCollector& collector);
