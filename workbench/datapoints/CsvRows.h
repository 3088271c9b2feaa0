#pragma once

#include <QList>
#include <QStringList>

#include <functional>

class TImportCollector;

// How the quotation marks of a row were taken.
enum TRowQuotes : quint8
{
    rqProper,     // around cells, or as characters inside of them
    rqCharacters, // all as characters, as they enclose no cells
    rqDoubtful,   // around a cell of several lines that may well be rows
};

// A row of a table in a text file.
struct TCsvRow
{
    qsizetype Line = 0; // where it begins, from 1
    QStringList Cells;  // without quotation marks and surrounding blanks
    TRowQuotes Quotes = rqProper;

    // Empty for a column that the row does not reach, and for the column -1.
    QString Cell(qsizetype column) const { return Cells.value(column); }
};

// What the cells of a text are separated by: tab, semicolon or comma, whichever divides the most lines alike.
char FindSeparator(QStringView text);

// Its German name.
QString SeparatorName(char separator);

// The rows of a text; blank lines are none. A cell may be quoted and then hold separators, line breaks and doubled
// quotes. Where a quotation mark that opens a cell is never closed, only by swallowing other rows, or not right before
// a separator or the end of a line, all of the row's are characters like any other. `progress` gets the share that is
// done and returns false to stop.
QList<TCsvRow> ReadCsvRows(QStringView text, char separator, const std::function<bool(double done)>& progress);

// Says of every row whose quotation marks are not proper how it was read.
void ReportQuotes(const QList<TCsvRow>& rows, TImportCollector& collector);
