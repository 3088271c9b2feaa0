#include "EsfReader.h"

#include "EisTypes.h"
#include "GroupAddress.h"
#include "ImportCollector.h"
#include "TextLines.h"

#include <QSet>

#include <algorithm>
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

// One for each range above the address, empty for one without a name; none where the path names no ranges. Only an
// address of three levels has two of them. A dot divides these where a name goes on behind it: "1. OG" is one name. Of
// several the last divides.
QList<QStringView> RangeNames(QStringView path, int levels)
{
    if (!path.contains(u'.'))
        return {};
    const QStringView ranges = SplitPath(path).Ranges;
    if (levels < 3) {
        const bool named = std::any_of(ranges.begin(), ranges.end(), [](QChar c) { return c != u'.'; });
        return {named ? ranges.trimmed() : QStringView()};
    }
    qsizetype dot = ranges.size();
    do
        dot = dot > 0 ? ranges.lastIndexOf(u'.', dot - 1) : -1;
    while (dot >= 0 && dot + 1 < ranges.size() && ranges[dot + 1].isSpace());
    if (dot < 0)
        return {ranges.trimmed()};
    return {ranges.first(dot).trimmed(), ranges.sliced(dot + 1).trimmed()};
}

enum TLikeness : quint8
{
    lkNone,
    lkShape, // looks like a datapoint's line, and may be a table's as well
    lkSure,  // has the word for a type
};

TLikeness DatapointLikeness(QStringView line)
{
    const QList<QStringView> fields = line.split(u'\t');
    if (fields.size() < 2 || line.startsWith(u'"'))
        return lkNone;
    const auto address = ParseGroupAddress(SplitPath(fields[fdPath]).Address);
    if (!address || address->IsRange())
        return lkNone;
    // A name in a table may end in a dot and a number, too; the word for a type tells.
    const bool hasRanges = fields[fdPath].contains(u'.');
    const bool hasLevels = address->Levels > 1;
    if ((hasRanges || hasLevels) && EisOfTypeWord(fields.value(fdType)))
        return lkSure;
    const auto second = ParseGroupAddress(fields[fdName]);
    const bool isTable = (second && second->Levels > 1) || IsDatapointType(fields.value(fdType).trimmed());
    return hasRanges && hasLevels && !isTable ? lkShape : lkNone;
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
        const bool mayBeTitle = fields.size() == 1 || (!address && !EisOfTypeWord(fields.value(fdType)));
        if (number == 1 && mayBeTitle) {
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
        TDatapoint datapoint{
            .Address = AddressText(*address), .Name = {}, .Group = GroupOf(fields[fdPath], *address, number)};
        datapoint.Name = NameOf(line, fields);
        const QStringView type = fields.value(fdType);
        datapoint.EisNumber = m_collector.KnownType(EisOfTypeWord(type), type, number);
        m_collector.Add(datapoint, number);
    }

    QStringList GroupOf(QStringView path, const TGroupAddress& address, qsizetype number)
    {
        QStringList group;
        TGroupAddress range = address;
        range.Filled = 0;
        for (const QStringView name : RangeNames(path, address.Levels)) {
            ++range.Filled;
            if (!name.isEmpty())
                group.append(name.toString());
            else if (range.IsRange())
                group.append(RangeWithoutName(range, number));
        }
        return group;
    }

    QString RangeWithoutName(const TGroupAddress& range, qsizetype number)
    {
        const QString text = AddressText(range);
        if (!m_withoutName.contains(text)) {
            m_withoutName.insert(text);
            m_collector.Report(number,
                               QStringLiteral("Der Bereich %1 hat keinen Namen und wird mit seiner Nummer gezeigt.")
                                   .arg(QuotedPiece(text)));
        }
        return text;
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
    QSet<QString> m_withoutName; // the ranges that were reported
};

} // namespace

bool IsEsf(QStringView text)
{
    constexpr int sampleSize = 50;
    TTextLines lines(text);
    int filled = 0;
    int alike = 0;
    for (int i = 0; i < sampleSize && lines.Next(); ++i) {
        const TLikeness likeness = DatapointLikeness(lines.Line());
        if (likeness == lkSure)
            return true;
        const bool isTitle = lines.Number() == 1 && !lines.Line().contains(u'\t');
        filled += isTitle || lines.Line().trimmed().isEmpty() ? 0 : 1;
        alike += likeness == lkShape ? 1 : 0;
    }
    return 2 * alike > filled;
}

void ReadEsf(QStringView text, TImportCollector& collector)
{
    TEsfReader(collector).Read(text);
}
