#pragma once

#include <QList>
#include <QStringList>

#include <functional>

// A row of a table in a text file.
struct TCsvRow
{
    qsizetype Line = 0; // where it begins, from 1
    QStringList Cells;  // without quotation marks and surrounding blanks

    // Empty for a column that the row does not reach, and for the column -1.
    QString Cell(qsizetype column) const { return Cells.value(column); }
};

// What the cells of a text are separated by: tab, semicolon or comma, whichever divides the most lines alike.
char FindSeparator(QStringView text);

// Its German name.
QString SeparatorName(char separator);

// The rows of a text; blank lines are none. A cell may be quoted and then hold separators, line breaks and doubled
// quotes. A quotation mark that is never closed, or only by swallowing other rows, is a character like any other.
// `progress` gets the share that is done and returns false to stop.
QList<TCsvRow> ReadCsvRows(QStringView text, char separator, const std::function<bool(double done)>& progress);
