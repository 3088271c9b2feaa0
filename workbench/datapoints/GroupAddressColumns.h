#pragma once

#include "CsvRows.h"

#include <optional>

// Where a table of group addresses has what. Names and addresses stand in one column each or in one for each level.
struct TGroupAddressColumns
{
    QList<qsizetype> Names;
    QList<qsizetype> Addresses;
    qsizetype Type = -1;           // -1: none
    bool HasHeader = false;        // the first row names the columns
    bool HasUnknownHeader = false; // it is taken for a header only because it holds no number

    // The address of a row as one text: "1/2/3", or "1/2/-" where the last column is empty.
    QString AddressOf(const TCsvRow& row) const;
};

// By the names in the first row, in German or English, or else by what the columns hold. Nothing when no column holds
// addresses.
std::optional<TGroupAddressColumns> FindGroupAddressColumns(const QList<TCsvRow>& rows);

// Whether rows are such a table for certain: its header says so, or most of them have an address of several levels.
bool IsGroupAddressTable(const QList<TCsvRow>& rows);
