#include "Vlcodepage.h"

#include <algorithm>
#include <array>

namespace
{

// Windows-1252 80..9F; all other bytes equal their code points.
constexpr std::array<char16_t, 32> UpperControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

constexpr bool IsUpperControl(char16_t c)
{
    return c >= 0x80 && c <= 0x9F;
}

char ToByte(char16_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return static_cast<char>(c);
    const auto found = std::find(UpperControls.begin(), UpperControls.end(), c);
    if (found != UpperControls.end())
        return static_cast<char>(0x80 + (found - UpperControls.begin()));
    // A control character that the code page uses for something else keeps its number, as the reader gave it.
    return IsUpperControl(c) ? static_cast<char>(c) : '?';
}

char16_t ToCharacter(unsigned char byte)
{
    return IsUpperControl(byte) ? UpperControls[byte - 0x80u] : char16_t{byte};
}

// Writes the bytes of `text` to `bytes`, which has room for one a code unit; returns the end.
char* WriteBytes(QStringView text, char* bytes)
{
    const char16_t* const end = text.utf16() + text.size();
    for (const char16_t* at = text.utf16(); at != end; ++at) {
        const bool pair = QChar::isHighSurrogate(*at) && at + 1 != end && QChar::isLowSurrogate(at[1]);
        *bytes++ = *at < 0x80 ? static_cast<char>(*at) : ToByte(*at);
        if (pair)
            ++at;
    }
    return bytes;
}

} // namespace

QByteArray ToCodePage(QStringView text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    const char* const end = WriteBytes(text, bytes.data());
    bytes.truncate(end - bytes.constData());
    return bytes;
}

void AppendCodePage(QStringView text, std::string& bytes)
{
    const std::size_t before = bytes.size();
    bytes.resize(before + static_cast<std::size_t>(text.size()));
    const char* const end = WriteBytes(text, bytes.data() + before);
    bytes.resize(static_cast<std::size_t>(end - bytes.data()));
}

QString FromCodePage(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](char byte) { return QChar(ToCharacter(static_cast<unsigned char>(byte))); });
    return text;
}

QString CodePageTextFromUtf8(const char* utf8, qsizetype length)
{
    const bool ascii = std::all_of(utf8, utf8 + length, [](char c) { return static_cast<signed char>(c) >= 0; });
    if (ascii)
        return QString::fromLatin1(utf8, length);
    return FromCodePage(ToCodePage(QString::fromUtf8(utf8, length)));
}
