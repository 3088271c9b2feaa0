#include "Vltext.h"

#include <limits>

namespace
{

int DigitValue(QChar c, int base)
{
    const char16_t u = c.unicode();
    int value = -1;
    if (u >= u'0' && u <= u'9')
        value = u - u'0';
    else if (u >= u'a' && u <= u'f')
        value = u - u'a' + 10;
    else if (u >= u'A' && u <= u'F')
        value = u - u'A' + 10;
    return value < base ? value : -1;
}

// The magnitude of an unsigned number without sign or prefix; nothing when it is empty, malformed or above `limit`.
std::optional<std::int64_t> Magnitude(QStringView digits, int base, std::int64_t limit)
{
    if (digits.isEmpty())
        return std::nullopt;
    std::int64_t value = 0;
    for (const QChar c : digits) {
        const int digit = DigitValue(c, base);
        if (digit < 0)
            return std::nullopt;
        value = value * base + digit;
        if (value > limit)
            return std::nullopt;
    }
    return value;
}

} // namespace

bool SameText(QStringView a, QStringView b)
{
    return a.size() == b.size() && a.compare(b, Qt::CaseInsensitive) == 0;
}

std::optional<std::int32_t> StrToInt(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.mid(1);
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.mid(1);
    const bool hexadecimal = text.startsWith(u'$');
    if (hexadecimal)
        text = text.mid(1);

    const std::int64_t decimalLimit = std::int64_t{std::numeric_limits<std::int32_t>::max()} + (negative ? 1 : 0);
    const std::int64_t limit = hexadecimal ? std::numeric_limits<std::uint32_t>::max() : decimalLimit;
    const auto magnitude = Magnitude(text, hexadecimal ? 16 : 10, limit);
    if (!magnitude)
        return std::nullopt;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(negative ? -*magnitude : *magnitude));
}

std::int32_t StrToIntDef(QStringView text, std::int32_t defaultValue)
{
    return StrToInt(text).value_or(defaultValue);
}
