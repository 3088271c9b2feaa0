#include "GroupAddress.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

namespace
{

QString Canonical(const QString& text)
{
    const auto address = ParseGroupAddress(text);
    return address && IsOnBus(*address) ? AddressText(*address) : QString();
}

int Value(const QString& text)
{
    const auto address = ParseGroupAddress(text);
    return address ? BusValue(*address) : -1;
}

} // namespace

TEST(GroupAddress, HasThreeTwoOrNoLevels)
{
    for (const char* text : {"0/0/1", "31/7/255", "0/1", "31/2047", "1", "65535"})
        EXPECT_EQ(Canonical(QString::fromLatin1(text)), QString::fromLatin1(text));
}

TEST(GroupAddress, IsWrittenWithoutSuperfluousZerosAndBlanks)
{
    EXPECT_EQ(Canonical(QStringLiteral(" 01/ 002 /003 ")), QStringLiteral("1/2/3"));
}

TEST(GroupAddress, EndsAtTheLimitsOfTheBus)
{
    for (const char* text : {"32/0/1", "1/8/1", "1/1/256", "32/1", "1/2048", "65536", "99999999999999999999"})
        EXPECT_TRUE(Canonical(QString::fromLatin1(text)).isEmpty()) << text;
}

TEST(GroupAddress, IsNeverTheBroadcast)
{
    for (const char* text : {"0/0/0", "0/0", "0"})
        EXPECT_TRUE(Canonical(QString::fromLatin1(text)).isEmpty()) << text;
}

TEST(GroupAddress, IsNothingElse)
{
    for (const char* text : {"", "/", "1/", "/1", "1//2", "1/2/3/4", "-1/2/3", "+1/2/3", "1.2.3", "a", "-", "-/-/-",
                             "1/-/3", "-/1", "1/2/3x", "0x10"})
        EXPECT_FALSE(ParseGroupAddress(QString::fromLatin1(text))) << text;
}

TEST(GroupAddress, IsTheSameInEveryNotation)
{
    EXPECT_EQ(Value(QStringLiteral("1/2/3")), 2563);
    EXPECT_EQ(Value(QStringLiteral("1/515")), 2563);
    EXPECT_EQ(Value(QStringLiteral("2563")), 2563);
    EXPECT_EQ(Value(QStringLiteral("31/7/255")), 65535);
}

TEST(GroupAddress, MayBeARange)
{
    EXPECT_EQ(Canonical(QStringLiteral("0/-/-")), QStringLiteral("0/-/-"));
    EXPECT_EQ(Canonical(QStringLiteral("1/0/-")), QStringLiteral("1/0/-"));
    EXPECT_EQ(Canonical(QStringLiteral("1/-")), QStringLiteral("1/-"));
    EXPECT_TRUE(Canonical(QStringLiteral("32/-/-")).isEmpty());
    EXPECT_TRUE(ParseGroupAddress(QStringLiteral("1/0/-"))->IsRange());
    EXPECT_FALSE(ParseGroupAddress(QStringLiteral("1/0/1"))->IsRange());
}

TEST(GroupAddress, FaultSaysWhatIsWrong)
{
    EXPECT_EQ(AddressFault(QStringLiteral(" ")), QStringLiteral("Die Gruppenadresse fehlt."));
    EXPECT_EQ(AddressFault(QStringLiteral("abc")), QStringLiteral("„abc“ ist keine Gruppenadresse."));
    EXPECT_EQ(AddressFault(QStringLiteral("40/1")),
              QStringLiteral("Die Adresse „40/1“ liegt außerhalb von 0/1 bis 31/2047."));
    EXPECT_EQ(AddressFault(QStringLiteral("1/-/-")),
              QStringLiteral("„1/-/-“ ist ein Bereich, keine einzelne Gruppenadresse."));
}

TEST(GroupAddress, FaultShowsOnlyAPieceOfLongText)
{
    EXPECT_LT(AddressFault(QString(1'000'000, u'x')).size(), 150);
}
