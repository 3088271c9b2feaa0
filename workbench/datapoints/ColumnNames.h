#pragma once

#include <QList>
#include <QStringList>
#include <QStringView>

// The words that head a column in the files of different programs: small letters and digits only, as ColumnWord makes
// them.
using TColumnNames = QList<QStringView>;

// The heading of a column without what programs write differently: case, blanks, hyphens, underscores.
QString ColumnWord(QStringView heading);

// The first column from `from` on that one of the names heads, -1 for none. A name that stands earlier in the list is
// preferred to one that stands later.
qsizetype FindColumn(const QStringList& header, const TColumnNames& names, qsizetype from = 0);
