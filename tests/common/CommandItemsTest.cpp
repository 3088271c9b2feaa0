#include "CommandItems.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

namespace
{

// The items of a command text as "key=value", in the order in which they were applied.
QStringList Walk(const QString& command)
{
    QStringList applied;
    WalkCommandItems(TURLName(command),
                     [&](const QString& key, const QString& value) { applied.append(key + u'=' + value); });
    return applied;
}

} // namespace

TEST(WalkCommandItems, AppliesItemsInTheirOrder)
{
    EXPECT_EQ(Walk(QStringLiteral("x://path?b=2&a=1&c=3")),
              QStringList({QStringLiteral("b=2"), QStringLiteral("a=1"), QStringLiteral("c=3")}));
}

TEST(WalkCommandItems, AppliesTheFirstValueOfADoubledKeyTwice)
{
    EXPECT_EQ(Walk(QStringLiteral("x://?a=1&b=2&A=3")),
              QStringList({QStringLiteral("a=1"), QStringLiteral("b=2"), QStringLiteral("A=1")}));
}

TEST(WalkCommandItems, AppliesNothingWithoutAQuery)
{
    EXPECT_EQ(Walk(QStringLiteral("x://path")), QStringList());
    EXPECT_EQ(Walk(QStringLiteral("x://path?")), QStringList());
    EXPECT_EQ(Walk(QString()), QStringList());
}

TEST(WalkCommandItems, IgnoresWhatHasNoEqualsSign)
{
    EXPECT_EQ(Walk(QStringLiteral("x://?a&b=2&")), QStringList({QStringLiteral("b=2")}));
}

TEST(WalkCommandItems, TakesValuesAsTheyStand)
{
    EXPECT_EQ(Walk(QStringLiteral("x://?a=%20%PRJPATH%\\b=c")), QStringList({QStringLiteral("a=%20%PRJPATH%\\b=c")}));
    EXPECT_EQ(Walk(QStringLiteral("x://?a=")), QStringList({QStringLiteral("a=")}));
}
