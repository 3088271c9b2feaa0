#pragma once

#include "CsvRows.h"

#include <optional>

// Where a register list has what; -1 for a column that it lacks.
struct TModbusColumns
{
    qsizetype HeaderRow = -1; // an index into the rows
    qsizetype Address = -1;
    qsizetype Name = -1;
    qsizetype Description = -1; // stands in for an empty name
    qsizetype Device = -1;
    qsizetype Kind = -1;
    qsizetype Type = -1;
    bool HasNumberedSizes = false; // the type is given as EisOfVariableSize takes it

    // The last column that a row must reach.
    qsizetype LastNeeded() const;
};

// Finds the header among the first rows: the one that names a column for the register's number and one for its name, in
// any order and among any others. Nothing when there is none.
std::optional<TModbusColumns> FindModbusColumns(const QList<TCsvRow>& rows);

// Whether rows without such a header are a table of codes and their meaning, as device manuals have them.
bool IsCodeTable(const QList<TCsvRow>& rows);
