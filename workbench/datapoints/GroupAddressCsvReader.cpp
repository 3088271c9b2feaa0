#include "GroupAddressCsvReader.h"

#include "EisTypes.h"
#include "GroupAddress.h"
#include "GroupAddressColumns.h"
#include "ImportCollector.h"

#include <QHash>

namespace
{

// A row whose address could be read.
struct TAddressRow
{
    const TCsvRow* Row = nullptr;
    TGroupAddress Address;
};

// Tells the ranges of a file from each other: the first `filled` parts of an address.
int RangeKey(const TGroupAddress& address, int filled)
{
    const int second = filled > 1 ? address.Parts[1] + 1 : 0;
    return address.Parts[0] << 16 | second;
}

class TGroupAddressCsvReader
{
public:
    TGroupAddressCsvReader(const TGroupAddressColumns& columns, TImportCollector& collector)
        : m_columns(columns), m_collector(collector)
    {
    }

    void Read(const QList<TCsvRow>& rows)
    {
        const QList<TAddressRow> found = ReadAddresses(rows);
        for (const TAddressRow& row : found) {
            if (row.Address.IsRange())
                KeepRange(row);
        }
        double done = 0;
        for (const TAddressRow& row : found) {
            if (!m_collector.Advance(0.75 + 0.25 * done++ / static_cast<double>(found.size())))
                return;
            if (!row.Address.IsRange())
                AddDatapoint(row);
        }
    }

private:
    // The rows found point into `rows`; none when cancelled.
    QList<TAddressRow> ReadAddresses(const QList<TCsvRow>& rows)
    {
        QList<TAddressRow> found;
        for (qsizetype i = m_columns.HasHeader ? 1 : 0; i < rows.size(); ++i) {
            if (!m_collector.Advance(0.5 + 0.25 * static_cast<double>(i) / static_cast<double>(rows.size())))
                return {};
            const TCsvRow& row = rows[i];
            const QString text = m_columns.AddressOf(row);
            const auto address = ParseGroupAddress(text);
            if (address && IsOnBus(*address))
                found.append({.Row = &row, .Address = *address});
            else
                m_collector.Report(row.Line, AddressFault(text));
        }
        return found;
    }

    // The row's own name is in the last of its name columns that is filled; the ones before are those of its ranges.
    qsizetype OwnNameColumn(const TCsvRow& row) const
    {
        qsizetype own = m_columns.Names.size() - 1;
        while (own > 0 && row.Cell(m_columns.Names[own]).isEmpty())
            --own;
        return own;
    }

    QString OwnName(const TCsvRow& row) const { return row.Cell(m_columns.Names[OwnNameColumn(row)]); }

    void KeepRange(const TAddressRow& row)
    {
        const QString name = m_collector.DisplayName(OwnName(*row.Row), row.Row->Line);
        if (name.isEmpty()) {
            m_collector.Report(row.Row->Line,
                               QStringLiteral("Der Bereich %1 hat keinen Namen und wird mit seiner Nummer gezeigt.")
                                   .arg(QuotedPiece(AddressText(row.Address))));
        }
        const int key = RangeKey(row.Address, row.Address.Filled);
        if (!m_ranges.contains(key))
            m_ranges.insert(key, name.isEmpty() ? AddressText(row.Address) : name);
    }

    // The range's name from its own row, or else from the address's row, which may repeat it.
    QString RangeName(const TAddressRow& row, int level) const
    {
        const auto range = m_ranges.find(RangeKey(row.Address, level + 1));
        if (range != m_ranges.end())
            return *range;
        return level < OwnNameColumn(*row.Row) ? row.Row->Cell(m_columns.Names[level]) : QString();
    }

    QStringList GroupOf(const TAddressRow& row) const
    {
        QStringList group;
        for (int level = 0; level + 1 < row.Address.Levels; ++level) {
            const QString name = RangeName(row, level);
            if (!name.isEmpty())
                group.append(name);
        }
        return group;
    }

    void AddDatapoint(const TAddressRow& row)
    {
        const QString types = row.Row->Cell(m_columns.Type);
        m_collector.Add({.Address = AddressText(row.Address),
                         .Name = OwnName(*row.Row),
                         .Group = GroupOf(row),
                         .EisNumber = m_collector.KnownType(EisOfDatapointTypes(types), types, row.Row->Line)},
                        row.Row->Line);
    }

    const TGroupAddressColumns& m_columns;
    TImportCollector& m_collector;
    QHash<int, QString> m_ranges;
};

} // namespace

void ReadGroupAddressCsv(QStringView text, TImportCollector& collector)
{
    const char separator = FindSeparator(text);
    const QList<TCsvRow> rows =
        ReadCsvRows(text, separator, [&](double done) { return collector.Advance(0.5 * done); });
    if (collector.IsCancelled())
        return;
    const auto columns = FindGroupAddressColumns(rows);
    if (!columns) {
        collector.Report(0, QStringLiteral("Es gibt keine Spalte mit Gruppenadressen. Die Spalten müssen durch "
                                           "Tabulatoren, Semikolons oder Kommas getrennt sein."));
        return;
    }
    collector.SetFormat(QStringLiteral("Gruppenadressen (CSV, %1)").arg(SeparatorName(separator)));
    ReportQuotes(rows, collector);
    if (columns->HasUnknownHeader) {
        collector.Report(rows.first().Line, QStringLiteral("Die erste Zeile hat keine Gruppenadresse und gilt als "
                                                           "Kopfzeile."));
    }
    TGroupAddressCsvReader(*columns, collector).Read(rows);
}
