#include "ModbusColumns.h"

#include "ColumnNames.h"

#include <algorithm>

namespace
{

const TColumnNames AddressWords{u"address",         u"adresse",         u"register",
                                u"registeraddress", u"registeradresse", u"registernumber",
                                u"registernummer",  u"modbusaddress",   u"modbusadresse"};
const TColumnNames IdentifierWords{u"id"};
const TColumnNames NameWords{u"name", u"title", u"titel", u"bezeichnung"};
const TColumnNames DescriptionWords{u"description", u"info", u"beschreibung", u"kommentar"};
const TColumnNames DeviceWords{u"deviceid",     u"device", u"geräteid", u"gerät", u"geräteadresse",
                               u"slaveaddress", u"slave",  u"slaveid",  u"unitid"};
const TColumnNames KindWords{u"registertype", u"registertyp", u"registerart"};
const TColumnNames NumberedSizeWords{u"sizeofvariable"};
const TColumnNames TypeWords{u"type", u"typ", u"datatype", u"datentyp", u"format", u"size", u"größe"};
const TColumnNames CodeWords{u"code", u"modecode", u"value", u"wert", u"hex", u"bitnumber", u"bitnummer", u"command"};

// Some lists have lines about the device before the header.
constexpr qsizetype LastHeaderRow = 50;

std::optional<TModbusColumns> ModbusColumnsOfHeader(const QStringList& header)
{
    TModbusColumns columns{.Address = FindColumn(header, AddressWords),
                           .Name = FindColumn(header, NameWords),
                           .Description = FindColumn(header, DescriptionWords),
                           .Device = FindColumn(header, DeviceWords),
                           .Kind = FindColumn(header, KindWords),
                           .Type = FindColumn(header, NumberedSizeWords)};
    columns.HasNumberedSizes = columns.Type >= 0;
    if (columns.Type < 0)
        columns.Type = FindColumn(header, TypeWords);
    // Anything may have an identifier; only beside a size is it a register's.
    if (columns.Address < 0 && columns.Type >= 0)
        columns.Address = FindColumn(header, IdentifierWords);
    if (columns.Name < 0)
        columns.Name = columns.Description;
    return columns.Address >= 0 && columns.Name >= 0 ? std::optional(columns) : std::nullopt;
}

} // namespace

qsizetype TModbusColumns::LastNeeded() const
{
    return std::max({Address, Name, Kind, Type});
}

std::optional<TModbusColumns> FindModbusColumns(const QList<TCsvRow>& rows)
{
    for (qsizetype row = 0; row < rows.size() && row <= LastHeaderRow; ++row) {
        if (auto columns = ModbusColumnsOfHeader(rows[row].Cells)) {
            columns->HeaderRow = row;
            return columns;
        }
    }
    return std::nullopt;
}

bool IsCodeTable(const QList<TCsvRow>& rows)
{
    return !rows.isEmpty() && FindColumn(rows.first().Cells, CodeWords) >= 0;
}
