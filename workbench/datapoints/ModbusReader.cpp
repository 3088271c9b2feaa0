#include "ModbusReader.h"

#include "EisTypes.h"
#include "ImportCollector.h"
#include "ModbusColumns.h"
#include "RegisterTypes.h"

#include <algorithm>

namespace
{

bool IsBlank(const TCsvRow& row)
{
    return std::all_of(row.Cells.begin(), row.Cells.end(), [](const QString& cell) { return cell.isEmpty(); });
}

class TModbusReader
{
public:
    TModbusReader(const TModbusColumns& columns, TImportCollector& collector)
        : m_columns(columns), m_collector(collector)
    {
    }

    void Read(const QList<TCsvRow>& rows)
    {
        for (qsizetype i = m_columns.HeaderRow + 1; i < rows.size(); ++i) {
            if (!m_collector.Advance(0.5 + 0.5 * static_cast<double>(i) / static_cast<double>(rows.size())))
                return;
            if (!IsBlank(rows[i]))
                ReadRow(rows[i]);
        }
    }

private:
    void ReadRow(const TCsvRow& row)
    {
        const QString text = row.Cell(m_columns.Address);
        const auto number = ParseRegisterNumber(text);
        if (row.Cells.size() <= m_columns.LastNeeded()) {
            m_collector.Report(
                row.Line, QStringLiteral("Die Zeile bricht nach %1 von mindestens %2 Feldern ab.")
                              .arg(QString::number(row.Cells.size()), QString::number(m_columns.LastNeeded() + 1)));
        } else if (text.isEmpty()) {
            m_collector.Report(row.Line, QStringLiteral("Die Registernummer fehlt."));
        } else if (!number) {
            m_collector.Report(row.Line, QuotedPiece(text) + QStringLiteral(" ist keine Registernummer."));
        } else {
            AddRegister(row);
        }
    }

    void AddRegister(const TCsvRow& row)
    {
        const QString kind = RegisterKindName(row.Cell(m_columns.Kind));
        const QString device = row.Cell(m_columns.Device);
        const QString name = row.Cell(m_columns.Name);
        TDatapoint datapoint{.Address = row.Cell(m_columns.Address), .Name = {}, .Group = {}};
        datapoint.Name = name.isEmpty() ? row.Cell(m_columns.Description) : name;
        if (!device.isEmpty())
            datapoint.Group.append(QStringLiteral("Gerät ") + device);
        if (!kind.isEmpty())
            datapoint.Group.append(kind);
        datapoint.Device = device;
        datapoint.RegisterKind = kind;
        datapoint.EisNumber = EisOf(kind, row.Cell(m_columns.Type));
        m_collector.Add(datapoint, row.Line);
    }

    int EisOf(const QString& kind, const QString& type) const
    {
        if (IsBitKind(kind))
            return EisOfRegisterType(u"bit");
        return m_columns.HasNumberedSizes ? EisOfVariableSize(type) : EisOfRegisterType(type);
    }

    const TModbusColumns& m_columns;
    TImportCollector& m_collector;
};

QString WhyNoList(const QList<TCsvRow>& rows)
{
    if (IsCodeTable(rows))
        return QStringLiteral("Die Datei ist eine Tabelle mit Codes und ihrer Bedeutung, keine Registerliste.");
    return QStringLiteral("Es gibt keine Kopfzeile mit einer Spalte für die Registernummer (z. B. „Adresse“) und einer "
                          "für den Namen. Die Spalten müssen durch Tabulatoren, Semikolons oder Kommas getrennt sein.");
}

} // namespace

void ReadModbusRegisters(QStringView text, TImportCollector& collector)
{
    const char separator = FindSeparator(text);
    const QList<TCsvRow> rows =
        ReadCsvRows(text, separator, [&](double done) { return collector.Advance(0.5 * done); });
    if (collector.IsCancelled())
        return;
    const auto columns = FindModbusColumns(rows);
    if (!columns) {
        collector.Report(0, WhyNoList(rows));
        return;
    }
    collector.SetFormat(QStringLiteral("Registerliste (%1)").arg(SeparatorName(separator)));
    ReportQuotes(rows, collector);
    TModbusReader(*columns, collector).Read(rows);
}
