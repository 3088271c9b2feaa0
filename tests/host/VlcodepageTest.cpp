#include "Vlcodepage.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace
{

QByteArray AllBytes()
{
    QByteArray bytes(256, Qt::Uninitialized);
    std::generate(bytes.begin(), bytes.end(), [next = 0]() mutable { return static_cast<char>(next++); });
    return bytes;
}

QString FromUtf8(const QByteArray& utf8)
{
    return CodePageTextFromUtf8(utf8.constData(), utf8.size());
}

} // namespace

TEST(CodePage, KeepsEveryByteOnARoundTrip)
{
    EXPECT_EQ(ToCodePage(FromCodePage(AllBytes())), AllBytes());
}

TEST(CodePage, GivesEveryByteACharacterOfItsOwn)
{
    QString text = FromCodePage(AllBytes());
    ASSERT_EQ(text.size(), 256);
    std::sort(text.begin(), text.end());
    EXPECT_EQ(std::adjacent_find(text.cbegin(), text.cend()), text.cend());
}

TEST(CodePage, ReadsBytesAsTheirCodePointsOutsideTheUpperControls)
{
    const QString text = FromCodePage(AllBytes());
    for (int byte = 0; byte < 256; ++byte) {
        if (byte < 0x80 || byte > 0x9F) {
            EXPECT_EQ(text[byte].unicode(), byte) << byte;
        }
    }
}

TEST(CodePage, ReadsTheUpperControlsAsTheirPrintedCharacters)
{
    EXPECT_EQ(FromCodePage("\x80\x82\x84\x85\x8A\x8E"), QStringLiteral("€‚„…ŠŽ"));
    EXPECT_EQ(FromCodePage("\x91\x92\x93\x94\x95\x96\x97\x99\x9F"), QStringLiteral("‘’“”•–—™Ÿ"));
}

TEST(CodePage, ReadsBytesThatItLeavesOpenAsControlCharacters)
{
    EXPECT_EQ(FromCodePage("\x81\x8D\x8F\x90\x9D"), QStringLiteral(u"\u0081\u008D\u008F\u0090\u009D"));
}

TEST(CodePage, WritesPrintedCharactersAsTheirBytes)
{
    EXPECT_EQ(ToCodePage(u"Küche für 5 €"), QByteArray("K\xFC"
                                                       "che f\xFCr 5 \x80"));
    EXPECT_EQ(ToCodePage(u"„Flur“ – Süd"), QByteArray("\x84"
                                                      "Flur\x93 \x96 S\xFC"
                                                      "d"));
}

TEST(CodePage, WritesUpperControlCharactersAsTheBytesOfTheirNumber)
{
    EXPECT_EQ(ToCodePage(u"\u0080\u0081\u0099\u009F"), QByteArray("\x80\x81\x99\x9F"));
}

TEST(CodePage, WritesAQuestionMarkForWhatItLacks)
{
    EXPECT_EQ(ToCodePage(u"Łódź → 5 ₂"), QByteArray("?\xF3"
                                                    "d? ? 5 ?"));
    EXPECT_EQ(ToCodePage(u"\u0100\uFFFD\uFFFF"), QByteArray("???"));
}

TEST(CodePage, WritesOneQuestionMarkForASurrogatePair)
{
    EXPECT_EQ(ToCodePage(u"a\U0001F4A1b"), QByteArray("a?b"));
}

TEST(CodePage, WritesOneQuestionMarkForEachLoneSurrogate)
{
    constexpr std::array<char16_t, 6> Text{u'a', 0xD83D, 0xD83D, u'b', 0xDCA1, 0xD83D};
    EXPECT_EQ(ToCodePage(QStringView(Text.data(), 6)), QByteArray("a??b??"));
}

TEST(CodePage, KeepsZeroCharacters)
{
    EXPECT_EQ(ToCodePage(QStringView(u"a\0b", 3)), QByteArray("a\0b", 3));
    EXPECT_EQ(FromCodePage(QByteArray("a\0b", 3)).size(), 3);
}

TEST(CodePage, TurnsNothingIntoNothing)
{
    EXPECT_EQ(ToCodePage(u""), QByteArray());
    EXPECT_EQ(ToCodePage(QStringView()), QByteArray());
    EXPECT_EQ(FromCodePage(QByteArrayView()), QString());
}

TEST(AppendCodePage, AppendsToWhatIsThere)
{
    std::string bytes = "Raum=";
    AppendCodePage(u"Büro ☂", bytes);
    AppendCodePage(u"", bytes);
    AppendCodePage(u"!", bytes);
    EXPECT_EQ(bytes, "Raum=B\xFCro ?!");
}

TEST(CodePageTextFromUtf8, KeepsPlainAndWesternText)
{
    EXPECT_EQ(FromUtf8("Licht"), QStringLiteral("Licht"));
    EXPECT_EQ(FromUtf8("Küche „Süd“ 5 €"), QStringLiteral("Küche „Süd“ 5 €"));
    EXPECT_EQ(FromUtf8(""), QString());
}

TEST(CodePageTextFromUtf8, PutsAQuestionMarkForWhatTheCodePageLacks)
{
    EXPECT_EQ(FromUtf8("Łódź 💡"), QStringLiteral("?ód? ?"));
}

TEST(CodePageTextFromUtf8, ReadsUpperControlsAsTheBytesTheyCameFrom)
{
    EXPECT_EQ(FromUtf8("\xC2\x80"), QStringLiteral("€"));
    EXPECT_EQ(FromUtf8("\xC2\x84"
                       "Flur\xC2\x93"),
              QStringLiteral("„Flur“"));
    EXPECT_EQ(FromUtf8("\xC2\x81"), QStringLiteral(u"\u0081"));
}

TEST(CodePageTextFromUtf8, KeepsToItsLength)
{
    EXPECT_EQ(CodePageTextFromUtf8("Licht", 3), QStringLiteral("Lic"));
    EXPECT_EQ(CodePageTextFromUtf8(nullptr, 0), QString());
}

TEST(CodePageTextFromUtf8, SurvivesBrokenSequences)
{
    EXPECT_EQ(FromUtf8("a\xFF"
                       "b"),
              QStringLiteral("a?b"));
}
