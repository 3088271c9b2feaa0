#include "TextDecoding.h"

#include "GermanLetters.h"
#include "Vlcodepage.h"

#include <QStringDecoder>

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

namespace
{

struct TConverterCloser
{
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};

using TConverter = std::unique_ptr<UConverter, TConverterCloser>;

// An encoding is decoded by Qt where it is one of Unicode's, by ICU where that has a name for it, and else by the host,
// which knows the system's code page.
struct TEncoding
{
    QStringView Name;
    std::optional<QStringConverter::Encoding> Unicode = std::nullopt;
    const char* IcuName = nullptr;
};

constexpr TEncoding Utf8{.Name = u"UTF-8", .Unicode = QStringConverter::Utf8};
constexpr TEncoding CodePage{.Name = u"Windows-1252"};
constexpr TEncoding Utf16Le{.Name = u"UTF-16LE", .Unicode = QStringConverter::Utf16LE};
constexpr TEncoding Utf16Be{.Name = u"UTF-16BE", .Unicode = QStringConverter::Utf16BE};
constexpr TEncoding Ibm850{.Name = u"IBM850", .IcuName = "ibm-850"};

const std::array<TEncoding, 10>& Encodings()
{
    static const std::array<TEncoding, 10> encodings{{
        Utf8,
        CodePage,
        Ibm850,
        Utf16Le,
        Utf16Be,
        {.Name = u"ISO-8859-15", .IcuName = "iso-8859-15"},
        {.Name = u"IBM437", .IcuName = "ibm-437"},
        {.Name = u"Windows-1250", .IcuName = "windows-1250"},
        {.Name = u"Windows-1251", .IcuName = "windows-1251"},
        {.Name = u"Macintosh", .IcuName = "macintosh"},
    }};
    return encodings;
}

const TEncoding* FindEncoding(QStringView name)
{
    // Browsers and tools write this name where they mean the code page, of which it is a part.
    if (name.compare(u"ISO-8859-1", Qt::CaseInsensitive) == 0)
        return &CodePage;
    const auto found = std::find_if(Encodings().begin(), Encodings().end(), [=](const TEncoding& encoding) {
        return encoding.Name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found != Encodings().end() ? &*found : nullptr;
}

// For encodings of one byte a character.
QString FromIcu(const QByteArray& content, const char* name)
{
    UErrorCode error = U_ZERO_ERROR;
    const TConverter converter(ucnv_open(name, &error));
    if (U_FAILURE(error))
        return FromCodePage(content);
    QString text(content.size(), Qt::Uninitialized);
    auto* const begin = reinterpret_cast<UChar*>(text.data());
    UChar* target = begin;
    const char* source = content.constData();
    ucnv_toUnicode(converter.get(), &target, begin + text.size(), &source, source + content.size(), nullptr, true,
                   &error);
    text.truncate(target - begin);
    return text;
}

QString Decode(const QByteArray& content, const TEncoding& encoding)
{
    if (encoding.Unicode) {
        QStringDecoder decoder(*encoding.Unicode, QStringConverter::Flag::Stateless);
        return decoder(content);
    }
    return encoding.IcuName ? FromIcu(content, encoding.IcuName) : FromCodePage(content);
}

bool IsUtf8(const QByteArray& content)
{
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
    const QString text = decoder(content);
    return !decoder.hasError();
}

const TEncoding* EncodingOfMark(const QByteArray& content)
{
    if (content.startsWith("\xEF\xBB\xBF"))
        return &Utf8;
    if (content.startsWith("\xFF\xFE"))
        return &Utf16Le;
    return content.startsWith("\xFE\xFF") ? &Utf16Be : nullptr;
}

// European text in UTF-16 has a zero in nearly every second byte, always on the same side.
const TEncoding* EncodingOfZeros(const QByteArray& content)
{
    constexpr qsizetype longestSample = 4096;
    const qsizetype pairs = std::min(content.size(), longestSample) / 2;
    qsizetype first = 0;
    qsizetype second = 0;
    for (qsizetype i = 0; i < pairs; ++i) {
        first += content[2 * i] == '\0' ? 1 : 0;
        second += content[2 * i + 1] == '\0' ? 1 : 0;
    }
    if (second > pairs / 2 && first <= pairs / 20)
        return &Utf16Le;
    return first > pairs / 2 && second <= pairs / 20 ? &Utf16Be : nullptr;
}

// What an XML document says about itself, as far as it can be believed: a declaration as UTF-8 is checked by the
// content.
const TEncoding* DeclaredEncoding(const QByteArray& content)
{
    constexpr qsizetype longestDeclaration = 200;
    if (!content.startsWith("<?xml"))
        return nullptr;
    const QByteArray declaration = content.left(longestDeclaration);
    const qsizetype name = declaration.left(declaration.indexOf("?>")).indexOf("encoding=");
    if (name < 0)
        return nullptr;
    const qsizetype begin = name + static_cast<qsizetype>(qstrlen("encoding=")) + 1;
    const qsizetype end = declaration.indexOf(declaration[begin - 1], begin);
    const TEncoding* encoding = FindEncoding(QString::fromLatin1(declaration.mid(begin, end - begin)));
    return encoding && !encoding->Unicode ? encoding : nullptr;
}

// Text that is in neither is of a code page. Five bytes stand for nothing in Windows-1252 but for letters in IBM850.
const TEncoding* EncodingOfLetters(const QByteArray& content)
{
    const qsizetype inCodePage = CountGermanLetters(Decode(content, CodePage));
    const qsizetype inIbm850 = CountGermanLetters(Decode(content, Ibm850));
    if (inCodePage != inIbm850)
        return inIbm850 > inCodePage ? &Ibm850 : &CodePage;
    constexpr QByteArrayView open("\x81\x8D\x8F\x90\x9D");
    const bool hasOpen = std::any_of(content.begin(), content.end(), [&](char c) { return open.contains(c); });
    return hasOpen ? &Ibm850 : &CodePage;
}

const TEncoding* FoundEncoding(const QByteArray& content)
{
    for (const auto find : {EncodingOfMark, EncodingOfZeros, DeclaredEncoding}) {
        if (const TEncoding* encoding = find(content))
            return encoding;
    }
    return IsUtf8(content) ? &Utf8 : EncodingOfLetters(content);
}

// Some programs write the mark as an escape sequence, letter by letter.
QString WithoutMark(QString text)
{
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    const QLatin1String escaped("\\ufeff");
    if (text.startsWith(escaped))
        text.remove(0, escaped.size());
    return text;
}

} // namespace

TDecodedText DecodeText(const QByteArray& content, const QString& encoding)
{
    const TEncoding* chosen = FindEncoding(encoding);
    const TEncoding& used = chosen ? *chosen : *FoundEncoding(content);
    return {.Text = WithoutMark(Decode(content, used)), .Encoding = used.Name.toString()};
}

QStringList EncodingNames()
{
    QStringList names;
    for (const TEncoding& encoding : Encodings())
        names.append(encoding.Name.toString());
    return names;
}
