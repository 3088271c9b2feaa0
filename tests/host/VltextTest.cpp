#include "Vltext.h"

#include "TestSupport.h"

#include <QLocale>
#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <string>

namespace
{

// Works under Turkish rules while it lives, as far as the machine has them.
class TTurkishLocale
{
public:
    TTurkishLocale() : m_previous(std::setlocale(LC_ALL, nullptr))
    {
        std::setlocale(LC_ALL, "tr_TR.UTF-8");
        QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
    }
    ~TTurkishLocale()
    {
        std::setlocale(LC_ALL, m_previous.c_str());
        QLocale::setDefault(QLocale::system());
    }
    TTurkishLocale(const TTurkishLocale&) = delete;
    TTurkishLocale& operator=(const TTurkishLocale&) = delete;

private:
    std::string m_previous;
};

constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();

} // namespace

TEST(SameText, DisregardsCase)
{
    EXPECT_TRUE(SameText(u"ScenesMod", u"scenesmod"));
    EXPECT_TRUE(SameText(u"KÜCHE", u"küche"));
    EXPECT_TRUE(SameText(u"", u""));
}

TEST(SameText, TellsDifferentTextsApart)
{
    EXPECT_FALSE(SameText(u"scenes", u"scene"));
    EXPECT_FALSE(SameText(u"scenes", u" scenes"));
    EXPECT_FALSE(SameText(u"scenes", u""));
    EXPECT_FALSE(SameText(u"Kuche", u"Küche"));
}

TEST(SameText, DoesNotFoldLettersThatAreOnlyAlike)
{
    EXPECT_FALSE(SameText(u"STRASSE", u"straße"));
    EXPECT_FALSE(SameText(u"fi", u"\uFB01"));
}

TEST(SameText, IsTheSameUnderTurkishRules)
{
    const TTurkishLocale turkish;
    EXPECT_TRUE(SameText(u"TITLE", u"title"));
    EXPECT_TRUE(SameText(u"$(PROJECT) ID", u"$(project) id"));
    EXPECT_FALSE(SameText(u"I", u"ı"));
    EXPECT_FALSE(SameText(u"i", u"İ"));
}

TEST(StrToInt, ReadsDecimalNumbers)
{
    EXPECT_EQ(StrToInt(u"0"), 0);
    EXPECT_EQ(StrToInt(u"42"), 42);
    EXPECT_EQ(StrToInt(u"+7"), 7);
    EXPECT_EQ(StrToInt(u"-7"), -7);
}

TEST(StrToInt, ReadsLeadingZerosAsDecimal)
{
    EXPECT_EQ(StrToInt(u"010"), 10);
    EXPECT_EQ(StrToInt(u"-0019"), -19);
    EXPECT_EQ(StrToInt(u"00000000000000000000001"), 1);
}

TEST(StrToInt, ReadsHexadecimalNumbersAfterADollarSign)
{
    EXPECT_EQ(StrToInt(u"$0"), 0);
    EXPECT_EQ(StrToInt(u"$ff"), 255);
    EXPECT_EQ(StrToInt(u"$FF"), 255);
    EXPECT_EQ(StrToInt(u"-$10"), -16);
    EXPECT_EQ(StrToInt(u"$00000000000FF"), 255);
}

TEST(StrToInt, ReadsHexadecimalNumbersUpToThirtyTwoBits)
{
    EXPECT_EQ(StrToInt(u"$7FFFFFFF"), Highest);
    EXPECT_EQ(StrToInt(u"$80000005"), Lowest + 5);
    EXPECT_EQ(StrToInt(u"$FFFFFFFF"), -1);
    EXPECT_EQ(StrToInt(u"$100000000"), std::nullopt);
}

TEST(StrToInt, NegatesAHexadecimalNumberOfThirtyTwoBits)
{
    EXPECT_EQ(StrToInt(u"-$80000000"), Lowest);
    EXPECT_EQ(StrToInt(u"-$FFFFFFFF"), 1);
}

TEST(StrToInt, KeepsToTheSignedRange)
{
    EXPECT_EQ(StrToInt(u"2147483647"), Highest);
    EXPECT_EQ(StrToInt(u"2147483648"), std::nullopt);
    EXPECT_EQ(StrToInt(u"-2147483648"), Lowest);
    EXPECT_EQ(StrToInt(u"-2147483649"), std::nullopt);
    EXPECT_EQ(StrToInt(u"99999999999999999999999999999999"), std::nullopt);
    EXPECT_EQ(StrToInt(u"18446744073709551617"), std::nullopt);
}

TEST(StrToInt, AllowsBlanksBeforeANumberOnly)
{
    EXPECT_EQ(StrToInt(u"  5"), 5);
    EXPECT_EQ(StrToInt(u" -5"), -5);
    EXPECT_EQ(StrToInt(u" $1F"), 31);
    EXPECT_EQ(StrToInt(u"5 "), std::nullopt);
    EXPECT_EQ(StrToInt(u"- 5"), std::nullopt);
    EXPECT_EQ(StrToInt(u"1 000"), std::nullopt);
    EXPECT_EQ(StrToInt(u"\t5"), std::nullopt);
    EXPECT_EQ(StrToInt(u"5\n"), std::nullopt);
}

TEST(StrToInt, RefusesWhatIsNoNumber)
{
    for (const char16_t* text : {u"",    u" ",   u"-",   u"+",  u"$",   u"-$",  u"--1",  u"+-1", u"1.0", u"1,5",
                                 u"1e3", u"abc", u"12a", u"$G", u"$-1", u"$ 1", u"0x10", u"x10", u"#10", u"1_000"})
        EXPECT_EQ(StrToInt(text), std::nullopt) << QString::fromUtf16(text).toStdString();
}

TEST(StrToInt, KnowsAsciiDigitsOnly)
{
    EXPECT_EQ(StrToInt(u"\u0661\u0662"), std::nullopt); // Arabic-Indic digits
    EXPECT_EQ(StrToInt(u"\uFF11"), std::nullopt);       // a full-width digit
    EXPECT_EQ(StrToInt(u"\u22125"), std::nullopt);      // the mathematical minus sign
}

TEST(StrToInt, StopsAtNoZeroCharacter)
{
    EXPECT_EQ(StrToInt(QStringView(u"12\0", 3)), std::nullopt);
}

TEST(StrToIntDef, GivesTheNumberOrTheDefault)
{
    EXPECT_EQ(StrToIntDef(u"12", -1), 12);
    EXPECT_EQ(StrToIntDef(u"12 ", -1), -1);
    EXPECT_EQ(StrToIntDef(u"", 77), 77);
    EXPECT_EQ(StrToIntDef(u"2147483648", Lowest), Lowest);
    EXPECT_EQ(StrToIntDef(u"-1", 0), -1);
}

TEST(StrToIntDef, ReadsTheSameUnderTurkishRules)
{
    const TTurkishLocale turkish;
    EXPECT_EQ(StrToIntDef(u"$FF", 0), 255);
    EXPECT_EQ(StrToIntDef(u"1.000", 0), 0);
}
