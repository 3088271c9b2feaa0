#include "GroupAddress.h"

#include "ImportCollector.h"

#include <QStringTokenizer>

#include <algorithm>

namespace
{

using TLimits = std::array<int, 3>;

constexpr TLimits ThreeLevels{31, 7, 255};
constexpr TLimits TwoLevels{31, 2047, 0};
constexpr TLimits FreeLevel{65535, 0, 0};

// Above every limit, and far from an overflow.
constexpr int TooLarge = 1'000'000;

const TLimits& LimitsOf(int levels)
{
    return levels == 3 ? ThreeLevels : levels == 2 ? TwoLevels : FreeLevel;
}

std::optional<int> PartNumber(QStringView digits)
{
    int number = 0;
    for (const QChar c : digits) {
        if (c < u'0' || c > u'9')
            return std::nullopt;
        number = std::min(number * 10 + (c.unicode() - u'0'), TooLarge);
    }
    return digits.isEmpty() ? std::nullopt : std::optional(number);
}

// Appends a part; false when the address has no place for it.
bool AppendPart(TGroupAddress& address, QStringView part)
{
    if (address.Levels == static_cast<int>(address.Parts.size()))
        return false;
    const auto number = PartNumber(part);
    if (!number && part != u"-")
        return false;
    if (number && address.IsRange())
        return false;
    if (number)
        address.Parts[static_cast<size_t>(address.Filled++)] = *number;
    ++address.Levels;
    return true;
}

} // namespace

std::optional<TGroupAddress> ParseGroupAddress(QStringView text)
{
    TGroupAddress address;
    for (const QStringView part : QStringTokenizer{text.trimmed(), u'/'}) {
        if (!AppendPart(address, part.trimmed()))
            return std::nullopt;
    }
    return address.Filled > 0 ? std::optional(address) : std::nullopt;
}

bool IsOnBus(const TGroupAddress& address)
{
    const TLimits& limits = LimitsOf(address.Levels);
    for (size_t i = 0; i < static_cast<size_t>(address.Filled); ++i) {
        if (address.Parts[i] > limits[i])
            return false;
    }
    return address.IsRange() || BusValue(address) != 0;
}

int BusValue(const TGroupAddress& address)
{
    const auto& [first, second, third] = address.Parts;
    switch (address.Levels) {
    case 3:
        return (first << 11) | (second << 8) | third;
    case 2:
        return (first << 11) | second;
    default:
        return first;
    }
}

QString AddressText(const TGroupAddress& address)
{
    QString text;
    for (int i = 0; i < address.Levels; ++i) {
        if (i > 0)
            text += u'/';
        text += i < address.Filled ? QString::number(address.Parts[static_cast<size_t>(i)]) : QStringLiteral("-");
    }
    return text;
}

QString AddressFault(QStringView text)
{
    const auto address = ParseGroupAddress(text);
    if (text.trimmed().isEmpty())
        return QStringLiteral("Die Gruppenadresse fehlt.");
    if (!address)
        return QuotedPiece(text) + QStringLiteral(" ist keine Gruppenadresse.");
    if (address->IsRange() && IsOnBus(*address))
        return QuotedPiece(text) + QStringLiteral(" ist ein Bereich, keine einzelne Gruppenadresse.");
    TGroupAddress last = *address;
    last.Parts = LimitsOf(address->Levels);
    TGroupAddress first = *address;
    first.Parts = {};
    if (!address->IsRange())
        first.Parts[static_cast<size_t>(address->Levels - 1)] = 1;
    return QStringLiteral("Die Adresse %1 liegt außerhalb von %2 bis %3.")
        .arg(QuotedPiece(text), AddressText(first), AddressText(last));
}
