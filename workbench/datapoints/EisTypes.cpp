#include "EisTypes.h"

#include <algorithm>
#include <array>

namespace
{

// The EIS type of a main number; one with two of them depends on the sub number too.
struct TEisOfMain
{
    int Main;
    int Eis;
};

constexpr std::array<TEisOfMain, 16> MainTypes{{
    {1, 1},
    {2, 8},
    {3, 2},
    {4, 13},
    {5, 14},
    {6, 14},
    {7, 10},
    {8, 10},
    {9, 5},
    {10, 3},
    {11, 4},
    {12, 11},
    {13, 11},
    {14, 9},
    {15, 12},
    {16, 15},
}};

struct TEisOfSub
{
    int Main;
    int Sub;
    int Eis;
};

constexpr std::array<TEisOfSub, 4> SubTypes{{
    {1, 7, 7}, // step
    {1, 8, 7}, // up and down
    {5, 1, 6}, // percent
    {5, 3, 6}, // angle
}};

int EisOf(int main, int sub)
{
    const auto* const exact = std::find_if(SubTypes.begin(), SubTypes.end(),
                                           [=](const TEisOfSub& row) { return row.Main == main && row.Sub == sub; });
    if (exact != SubTypes.end())
        return exact->Eis;
    const auto* const row =
        std::find_if(MainTypes.begin(), MainTypes.end(), [=](const TEisOfMain& r) { return r.Main == main; });
    return row != MainTypes.end() ? row->Eis : UndeterminedEis;
}

// Takes the digits at the beginning of `text` off it; nothing when there are none or far too many.
std::optional<int> TakeNumber(QStringView& text)
{
    qsizetype count = 0;
    while (count < text.size() && text[count] >= u'0' && text[count] <= u'9')
        ++count;
    bool ok = false;
    const int number = text.first(count).toInt(&ok);
    text = text.sliced(count);
    return ok ? std::optional(number) : std::nullopt;
}

bool TakePrefix(QStringView& text, QStringView prefix)
{
    if (!text.startsWith(prefix, Qt::CaseInsensitive))
        return false;
    text = text.sliced(prefix.size());
    return true;
}

// "DPST-1-1" with a sub number, "DPT-1" without.
std::optional<int> EisOfDatapointType(QStringView id)
{
    const bool hasSub = TakePrefix(id, u"DPST-");
    if (!hasSub && !TakePrefix(id, u"DPT-"))
        return std::nullopt;
    const auto main = TakeNumber(id);
    if (!main)
        return std::nullopt;
    if (!hasSub)
        return id.isEmpty() ? std::optional(EisOf(*main, 0)) : std::nullopt;
    if (!TakePrefix(id, u"-"))
        return std::nullopt;
    const auto sub = TakeNumber(id);
    return sub && id.isEmpty() ? std::optional(EisOf(*main, *sub)) : std::nullopt;
}

// Several identifiers stand one after the other with blanks, commas or semicolons between them.
QStringView LastIdentifier(QStringView ids)
{
    const auto separates = [](QChar c) { return c.isSpace() || c == u',' || c == u';'; };
    while (!ids.isEmpty() && separates(ids.back()))
        ids.chop(1);
    for (qsizetype i = ids.size(); i > 0; --i) {
        if (separates(ids[i - 1]))
            return ids.sliced(i);
    }
    return ids;
}

} // namespace

std::optional<int> EisOfTypeWord(QStringView word)
{
    word = word.trimmed();
    constexpr std::array<QStringView, 4> undetermined{u"Unbestimmt", u"Uncertain", u"Unbekannt", u"Unknown"};
    for (const QStringView prefix : undetermined) {
        if (word.startsWith(prefix, Qt::CaseInsensitive))
            return UndeterminedEis;
    }
    if (!TakePrefix(word, u"EIS "))
        return std::nullopt;
    const auto number = TakeNumber(word);
    const bool known = number && *number >= 1 && *number <= LastEis;
    return known && (word.isEmpty() || word.front().isSpace()) ? number : std::nullopt;
}

std::optional<int> EisOfDatapointTypes(QStringView ids)
{
    const QStringView last = LastIdentifier(ids);
    return last.isEmpty() ? std::optional(UndeterminedEis) : EisOfDatapointType(last);
}

bool IsDatapointType(QStringView text)
{
    return TakePrefix(text, u"DPST-") || TakePrefix(text, u"DPT-");
}
