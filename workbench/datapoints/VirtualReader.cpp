#include "VirtualReader.h"

#include "EisTypes.h"
#include "ImportCollector.h"
#include "TextLines.h"
#include "Vltext.h"

namespace
{

enum TField : quint8
{
    fdVariable,
    fdLabel,
    fdType,
    fdCount,
};

std::optional<int> EisOfNumber(QStringView text)
{
    const auto number = StrToInt(text.trimmed());
    return number && *number >= UndeterminedEis && *number <= LastEis ? std::optional<int>(*number) : std::nullopt;
}

void ReadLine(QStringView line, qsizetype number, TImportCollector& collector)
{
    const QList<QStringView> fields = line.split(line.contains(u'\t') ? u'\t' : u';');
    const QString variable = fields[fdVariable].trimmed().toString();
    if (variable.isEmpty()) {
        collector.Report(number, QStringLiteral("Der Name der Variablen fehlt."));
        return;
    }
    if (fields.size() > fdCount)
        collector.Report(number,
                         QStringLiteral("Die Zeile hat mehr als %1 Felder; die weiteren zählen nicht.").arg(fdCount));
    const QString label = fields.value(fdLabel).trimmed().toString();
    const QStringView type = fields.value(fdType);
    collector.Add({.Address = variable,
                   .Name = label.isEmpty() ? variable : label,
                   .Group = {},
                   .EisNumber = collector.KnownType(EisOfNumber(type), type, number)},
                  number);
}

} // namespace

void ReadVirtualVariables(QStringView text, TImportCollector& collector)
{
    if (text.contains(u'\0') || text.trimmed().startsWith(u'<')) {
        collector.Report(0, QStringLiteral("Die Datei ist keine Liste von Variablen mit einer in jeder Zeile."));
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
