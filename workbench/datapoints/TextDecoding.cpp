#include "TextDecoding.h"

#include "GermanLetters.h"
#include "Vlcodepage.h"

#include <QStringDecoder>

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>

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

// Null where ICU lacks the encoding.
TConverter OpenConverter(const char* name)
{
    UErrorCode error = U_ZERO_ERROR;
    TConverter converter(ucnv_open(name, &error));
    return U_SUCCESS(error) ? std::move(converter) : nullptr;
}

// For encodings of one byte a character.
QString FromIcu(const QByteArray& content, const char* name)
{
    UErrorCode error = U_ZERO_ERROR;
    const TConverter converter = OpenConverter(name);
    if (!converter)
        return QString(content.size(), QChar::ReplacementCharacter);
    QString text(content.size(), Qt::Uninitialized);
    auto* const begin = reinterpret_cast<UChar*>(text.data());
    UChar* target = begin;
    const char* source = content.constData();
    ucnv_toUnicode(converter.get(), &target, begin + text.size(), &source, source + content.size(), nullptr, true,
                   &error);
    text.truncate(target - begin);
    return text;
}

// Five bytes are no character of the code page; the host keeps them as control characters.
QString FromWindows(const QByteArray& content)
{
    QString text = FromCodePage(content);
    const auto isControl = [](QChar c) { return c >= QChar(0x80) && c <= QChar(0x9F); };
    std::replace_if(text.begin(), text.end(), isControl, QChar(QChar::ReplacementCharacter));
    return text;
}

// A part of a text that can be decoded by itself.
QString DecodePart(const QByteArray& part, const TEncoding& encoding)
{
    if (encoding.Unicode) {
        QStringDecoder decoder(*encoding.Unicode,
                               QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
        return decoder(part);
    }
    return encoding.IcuName ? FromIcu(part, encoding.IcuName) : FromWindows(part);
}

// Whether a character of the encoding may begin at that byte. A wrong yes would tear one apart.
bool MayBegin(const QByteArray& content, qsizetype at, const TEncoding& encoding)
{
    if (encoding.Unicode == QStringConverter::Utf8)
        return (static_cast<uchar>(content[at]) & 0xC0U) != 0x80U;
    if (!encoding.Unicode)
        return true;
    const qsizetype high = encoding.Unicode == QStringConverter::Utf16LE ? at + 1 : at;
    const bool isLowSurrogate = high < content.size() && (static_cast<uchar>(content[high]) & 0xFCU) == 0xDCU;
    return at % 2 == 0 && !isLowSurrogate;
}

using TProgress = std::function<bool(double done)>;

// Hands a text out in decoded parts until `progress` stops it.
template <class TTake>
void DecodeInParts(const QByteArray& content, const TEncoding& encoding, const TProgress& progress, const TTake& take)
{
    constexpr qsizetype partSize = 1 << 20;
    constexpr qsizetype longestCharacter = 4;
    for (qsizetype begin = 0; begin < content.size();) {
        if (!progress(static_cast<double>(begin) / static_cast<double>(content.size())))
            return;
        const qsizetype wanted = std::min(begin + partSize, content.size());
        qsizetype end = wanted;
        while (end < content.size() && end + longestCharacter > wanted && !MayBegin(content, end, encoding))
            --end;
        take(DecodePart(content.mid(begin, end - begin), encoding));
        begin = end;
    }
}

// How many bytes at `at` are a character of UTF-8; 0 when they are none.
qsizetype Utf8Length(const QByteArray& content, qsizetype at)
{
    const auto byte = [&](qsizetype i) { return i < content.size() ? static_cast<uchar>(content[i]) : uchar{0}; };
    const uchar lead = byte(at);
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    const qsizetype length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    // Longer than needed, a half of a pair, or beyond the last character.
    const uchar lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const uchar highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(at + 1) < lowest || byte(at + 1) > highest)
        return 0;
    for (qsizetype i = 2; i < length; ++i) {
        if ((byte(at + i) & 0xC0U) != 0x80U)
            return 0;
    }
    return length;
}

struct TUtf8Count
{
    qsizetype Long = 0;   // characters of several bytes
    qsizetype Faults = 0; // bytes that belong to no character
    qsizetype FirstLong = 0;
    qsizetype FirstFault = 0;
};

// Of the whole content, unless `progress` stops it.
TUtf8Count CountUtf8(const QByteArray& content, const TProgress& progress)
{
    constexpr qsizetype partSize = 1 << 20;
    TUtf8Count count;
    qsizetype part = 0; // where the next one begins
    for (qsizetype at = 0; at < content.size();) {
        if (at >= part && !progress(static_cast<double>(at) / static_cast<double>(content.size())))
            break;
        part = at >= part ? at + partSize : part;
        const qsizetype length = Utf8Length(content, at);
        if (length == 0 && count.Faults++ == 0)
            count.FirstFault = at;
        if (length > 1 && count.Long++ == 0)
            count.FirstLong = at;
        at += std::max<qsizetype>(length, 1);
    }
    return count;
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

// The encoding that an XML document names; empty for none.
QString DeclaredName(const QByteArray& content)
{
    constexpr qsizetype longestDeclaration = 200;
    if (!content.startsWith("<?xml"))
        return {};
    const QByteArray declaration = content.left(longestDeclaration);
    const qsizetype name = declaration.left(declaration.indexOf("?>")).indexOf("encoding=");
    if (name < 0)
        return {};
    const qsizetype begin = name + static_cast<qsizetype>(qstrlen("encoding=")) + 1;
    const qsizetype end = declaration.indexOf(declaration[begin - 1], begin);
    return QString::fromLatin1(declaration.mid(begin, end - begin));
}

// A declaration is believed but for Unicode, which is checked by the content.
const TEncoding* DeclaredEncoding(const QByteArray& content)
{
    const TEncoding* encoding = FindEncoding(DeclaredName(content));
    return encoding && !encoding->Unicode ? encoding : nullptr;
}

// Text that is in neither is of a code page. Five bytes stand for nothing in Windows-1252 but for letters in IBM850.
const TEncoding* EncodingOfLetters(const QByteArray& content, const TProgress& progress)
{
    const auto count = [&](const TEncoding& encoding, double from) {
        qsizetype letters = 0;
        DecodeInParts(
            content, encoding, [&](double done) { return progress(from + 0.5 * done); },
            [&](const QString& part) { letters += CountGermanLetters(part); });
        return letters;
    };
    const qsizetype inCodePage = count(CodePage, 0);
    const qsizetype inIbm850 = count(Ibm850, 0.5);
    if (inCodePage != inIbm850)
        return inIbm850 > inCodePage ? &Ibm850 : &CodePage;
    constexpr QByteArrayView open("\x81\x8D\x8F\x90\x9D");
    const bool hasOpen = std::any_of(content.begin(), content.end(), [&](char c) { return open.contains(c); });
    return hasOpen ? &Ibm850 : &CodePage;
}

// In a code page it takes luck to write a character of UTF-8; a byte that is none may come into any file.
bool IsMostlyUtf8(const TUtf8Count& count)
{
    return count.Faults <= count.Long;
}

const TEncoding* FoundEncoding(const QByteArray& content, const TProgress& progress, TDecodedText& decoded)
{
    for (const auto find : {EncodingOfMark, EncodingOfZeros, DeclaredEncoding}) {
        if (const TEncoding* encoding = find(content))
            return encoding;
    }
    constexpr double countingShare = 0.25;
    const TUtf8Count count = CountUtf8(content, [&](double done) { return progress(countingShare * done); });
    if (IsMostlyUtf8(count))
        return &Utf8;
    const TEncoding* encoding =
        EncodingOfLetters(content, [&](double done) { return progress(countingShare + (1 - countingShare) * done); });
    const bool declared = FindEncoding(DeclaredName(content)) == FindEncoding(Utf8.Name);
    if (declared || count.Long > 0) {
        decoded.DoubtAt = declared ? count.FirstFault : count.FirstLong;
        decoded.Doubt = QStringLiteral("Die Datei ist teils UTF-8 und teils nicht. Sie wird als %1 gelesen; bitte "
                                       "prüfen Sie die Umlaute.")
                            .arg(encoding->Name);
        if (declared)
            decoded.Doubt = QStringLiteral("Das Dokument gibt UTF-8 an, ist es aber nicht. Es wird als %1 gelesen; "
                                           "bitte prüfen Sie die Umlaute.")
                                .arg(encoding->Name);
    }
    return encoding;
}

const TEncoding& AvailableEncoding(const TEncoding& encoding, TDecodedText& decoded)
{
    if (!encoding.IcuName || OpenConverter(encoding.IcuName))
        return encoding;
    decoded.DoubtAt = 0;
    decoded.Doubt = QStringLiteral("Den Zeichensatz %1 kennt dieser Rechner nicht. Die Datei wird als %2 gelesen; "
                                   "bitte prüfen Sie die Umlaute.")
                        .arg(encoding.Name, CodePage.Name);
    return CodePage;
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

TDecodedText DecodeText(const QByteArray& content, const QString& encoding, const TProgress& progress)
{
    constexpr double findingShare = 0.5;
    TDecodedText decoded;
    const TProgress ask = [&](double done) {
        decoded.Cancelled = decoded.Cancelled || (progress && !progress(done));
        return !decoded.Cancelled;
    };
    const TProgress finding = [&](double done) { return ask(findingShare * done); };
    const TProgress decoding = [&](double done) { return ask(findingShare + (1 - findingShare) * done); };
    const TEncoding* chosen = FindEncoding(encoding);
    const TEncoding& wanted = chosen ? *chosen : *FoundEncoding(content, finding, decoded);
    const TEncoding& used = AvailableEncoding(wanted, decoded);
    decoded.Encoding = used.Name.toString();
    decoded.Text.reserve(content.size());
    DecodeInParts(content, used, decoding, [&](const QString& part) { decoded.Text += part; });
    decoded.Text = WithoutMark(decoded.Text);
    return decoded;
}

QStringList EncodingNames()
{
    QStringList names;
    for (const TEncoding& encoding : Encodings())
        names.append(encoding.Name.toString());
    return names;
}
