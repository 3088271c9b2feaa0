#include "EsfReader.h"

#include "EisTypes.h"
#include "GroupAddress.h"
#include "ImportCollector.h"
#include "TextLines.h"

#include <optional>

namespace
{

enum TField : quint8
{
    fdPath,
    fdName,
    fdType,
};

// A line has this many fields; the last two are of no use here.
constexpr qsizetype FieldCount = 5;

struct TPath
{
    QStringView Ranges;
    QStringView Address;
};

TPath SplitPath(QStringView path)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    return {.Ranges = path.first(dot < 0 ? 0 : dot), .Address = path.sliced(dot + 1)};
}

// A dot divides the two ranges only where a name goes on behind it: "1. OG" is one name. Of several the last divides.
QStringList RangeNames(QStringView ranges)
{
    qsizetype dot = ranges.size();
    do
        dot = dot > 0 ? ranges.lastIndexOf(u'.', dot - 1) : -1;
    while (dot >= 0 && dot + 1 < ranges.size() && ranges[dot + 1].isSpace());
    QStringList names;
    for (const QStringView name : {ranges.first(qMax(dot, 0)), ranges.sliced(dot + 1)}) {
        if (!name.trimmed().isEmpty())
            names.append(name.trimmed().toString());
    }
    return names;
}

bool IsDatapointLine(QStringView line)
{
    const QList<QStringView> fields = line.split(u'\t');
    if (fields.size() < 2 || line.startsWith(u'"'))
        return false;
    const auto address = ParseGroupAddress(SplitPath(fields[fdPath]).Address);
    if (!address || address->IsRange())
        return false;
    // A name in a table may end in a dot and a number, too; the word for a type tells.
    const bool hasRanges = fields[fdPath].contains(u'.');
    const bool hasLevels = address->Levels > 1;
    return (hasRanges && hasLevels) || ((hasRanges || hasLevels) && EisOfTypeWord(fields.value(fdType)));
}

class TEsfReader
{
public:
    explicit TEsfReader(TImportCollector& collector) : m_collector(collector) {}

    void Read(QStringView text)
    {
        m_collector.SetFormat(QStringLiteral("OPC-Export (ESF)"));
        TTextLines lines(text);
        while (lines.Next() && m_collector.Advance(lines.Done())) {
            if (!lines.Line().trimmed().isEmpty())
                ReadLine(lines.Line(), lines.Number());
        }
    }

private:
    void ReadLine(QStringView line, qsizetype number)
    {
        QList<QStringView> fields = line.split(u'\t');
        const TPath path = SplitPath(fields[fdPath]);
        const auto address = ParseGroupAddress(path.Address);
        if (number == 1 && (!address || fields.size() == 1)) {
            m_collector.SetTitle(line.trimmed().toString());
            return;
        }
        if (fields.size() == 1) {
            m_collector.Report(number, QuotedPiece(line) + QStringLiteral(" hat keine durch Tabulatoren getrennten "
                                                                          "Felder."));
            return;
        }
        if (!address || address->IsRange() || !IsOnBus(*address)) {
            m_collector.Report(number, AddressFault(path.Address));
            return;
        }
        TDatapoint datapoint{.Address = AddressText(*address), .Name = {}, .Group = RangeNames(path.Ranges)};
        datapoint.Name = NameOf(line, fields);
        const QStringView type = fields.value(fdType);
        datapoint.EisNumber = m_collector.KnownType(EisOfTypeWord(type), type, number);
        m_collector.Add(datapoint, number);
    }

    // Too many fields: the name has tabs, and goes on to the field that is a type.
    static QString NameOf(QStringView line, QList<QStringView>& fields)
    {
        if (fields.size() <= FieldCount || EisOfTypeWord(fields[fdType]))
            return fields[fdName].toString();
        qsizetype type = fdType + 1;
        while (type < fields.size() && !EisOfTypeWord(fields[type]))
            ++type;
        if (type == fields.size())
            return fields[fdName].toString();
        const QStringView name =
            line.sliced(fields[fdName].begin() - line.begin(), fields[type].begin() - fields[fdName].begin() - 1);
        fields.remove(fdType, type - fdType);
        return name.toString();
    }

    TImportCollector& m_collector;
};

} // namespace

bool IsEsf(QStringView text)
{
    constexpr int sampleSize = 50;
    TTextLines lines(text);
    for (int i = 0; i < sampleSize && lines.Next(); ++i) {
        if (IsDatapointLine(lines.Line()))
            return true;
    }
    return false;
}

void ReadEsf(QStringView text, TImportCollector& collector)
{
    TEsfReader(collector).Read(text);
}
