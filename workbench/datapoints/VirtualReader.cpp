#include "VirtualReader.h"

#include "CsvRows.h"
#include "EisTypes.h"
#include "EsfReader.h"
#include "GroupAddressColumns.h"
#include "GroupAddressXmlReader.h"
#include "ImportCollector.h"
#include "ModbusColumns.h"
#include "TextLines.h"
#include "Vltext.h"

#include <algorithm>

namespace
{

enum TVirtualField : quint8
{
    vfVariable,
    vfLabel,
    vfType,
    vfCount,
};

std::optional<int> EisOfNumber(QStringView text)
{
    const auto number = StrToInt(text.trimmed());
    return number && *number >= UndeterminedEis && *number <= LastEis ? std::optional<int>(*number) : std::nullopt;
}

void ReadLine(QStringView line, qsizetype number, TImportCollector& collector)
{
    const QList<QStringView> fields = line.split(line.contains(u'\t') ? u'\t' : u';');
    const QString variable = fields[vfVariable].trimmed().toString();
    if (variable.isEmpty()) {
        collector.Report(number, QStringLiteral("Der Name der Variablen fehlt."));
        return;
    }
    if (variable.size() > LongestName) {
        collector.Report(number, QStringLiteral("Der Name der Variablen ist länger als %1 Zeichen.").arg(LongestName));
        return;
    }
    if (fields.size() > vfCount)
        collector.Report(number,
                         QStringLiteral("Die Zeile hat mehr als %1 Felder; die weiteren zählen nicht.").arg(vfCount));
    const QString label = fields.value(vfLabel).trimmed().toString();
    const QStringView type = fields.value(vfType);
    collector.Add({.Address = variable,
                   .Name = label.isEmpty() ? variable : label,
                   .Group = {},
                   .EisNumber = collector.KnownType(EisOfNumber(type), type, number)},
                  number);
}

// The first rows, if the text were a table.
QList<TCsvRow> SampleRows(QStringView text, char separator)
{
    constexpr int sampleSize = 100;
    int rows = 0;
    return ReadCsvRows(text, separator, [&rows](double) { return ++rows < sampleSize; });
}

template <class TRule> bool Mostly(const QList<TCsvRow>& rows, const TRule& rule)
{
    return 2 * std::count_if(rows.begin(), rows.end(), rule) > rows.size();
}

// What another format the text is of; empty when it may be a list. Any text could be taken for one, line by line.
QString OtherFormat(QStringView text)
{
    if (text.contains(u'\0') || IsXml(text))
        return QStringLiteral("Die Datei ist keine Liste von Variablen mit einer in jeder Zeile.");
    if (IsEsf(text))
        return QStringLiteral("Die Datei ist ein OPC-Export von Gruppenadressen, keine Liste von Variablen.");
    const char separator = FindSeparator(text);
    const QList<TCsvRow> rows = SampleRows(text, separator);
    if (IsGroupAddressTable(rows))
        return QStringLiteral("Die Datei ist eine Tabelle von Gruppenadressen, keine Liste von Variablen.");
    if (FindModbusColumns(rows))
        return QStringLiteral("Die Datei ist eine Registerliste, keine Liste von Variablen.");
    if (Mostly(rows, [](const TCsvRow& row) { return row.Cells.size() > vfCount; })) {
        return QStringLiteral("Die Datei ist eine Tabelle mit mehr als %1 Spalten, keine Liste von Variablen.")
            .arg(vfCount);
    }
    const bool hasCommas = Mostly(rows, [](const TCsvRow& row) { return row.Cells.size() > 1; });
    if (separator == ',' && rows.size() > 1 && hasCommas) {
        return QStringLiteral("Die Felder sind durch Kommas getrennt; in einer Liste von Variablen sind es Semikolons "
                              "oder Tabulatoren.");
    }
    return {};
}

} // namespace

void ReadVirtualVariables(QStringView text, TImportCollector& collector)
{
    const QString otherFormat = OtherFormat(text);
    if (!otherFormat.isEmpty()) {
        collector.Report(0, otherFormat);
        return;
    }
    collector.SetFormat(QStringLiteral("Liste virtueller Variablen"));
    TTextLines lines(text);
    while (lines.Next() && collector.Advance(lines.Done())) {
        const QStringView line = lines.Line().trimmed();
        if (!line.isEmpty() && !line.startsWith(u'#'))
            ReadLine(lines.Line(), lines.Number(), collector);
    }
}
