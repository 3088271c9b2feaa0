#include "TestSchedule.h"
#include "TestSupport.h"
#include "WeekTexts.h"

#include <gtest/gtest.h>

#include <numeric>

namespace
{

TEST(WeekTexts, WeekBeginsOnMonday)
{
    EXPECT_EQ(WeekDayName(0), QStringLiteral("Montag"));
    EXPECT_EQ(WeekDayName(6), QStringLiteral("Sonntag"));
    EXPECT_EQ(ShortWeekDayName(3), QStringLiteral("Do"));
}

TEST(WeekTexts, DaysAreListedUnlessAllOrNone)
{
    EXPECT_EQ(DaysText(WeekEntry("06:00", "1100100")), QStringLiteral("Mo, Di, Fr"));
    EXPECT_EQ(DaysText(WeekEntry("06:00", "1111111")), QStringLiteral("täglich"));
    EXPECT_EQ(DaysText(WeekEntry("06:00", "0000000")), QStringLiteral("ohne Tag"));
}

TEST(WeekTexts, SecondsShowOnlyWhereThereAreAny)
{
    TWeekEntry entry = WeekEntry("06:05", "1000000");
    EXPECT_EQ(TimeText(entry), QStringLiteral("06:05"));
    entry.Time = QTime(6, 5, 9);
    EXPECT_EQ(TimeText(entry), QStringLiteral("06:05:09"));
}

TEST(WeekTexts, EntryNamesItsDatapointWhereAsked)
{
    const TWeekEntry entry = WeekEntry("06:00", "1000000", " 21 \n °C", "Küche");
    EXPECT_EQ(EntryText(entry, false), QStringLiteral("06:00 21 °C"));
    EXPECT_EQ(EntryText(entry, true), QStringLiteral("06:00 21 °C · Küche"));
}

TEST(WeekTexts, DetailsHoldEverything)
{
    TWeekEntry entry = WeekEntry("06:00", "0000011", "Ein", "Küche");
    EXPECT_EQ(EntryDetails(entry), QStringLiteral("Küche\n06:00, Sa, So\nWert: Ein\nAktiv"));
    entry.Active = false;
    entry.PostProcess = true;
    EXPECT_EQ(EntryDetails(entry), QStringLiteral("Küche\n06:00, Sa, So\nWert: Ein\nInaktiv\nNachfahren"));
}

TEST(WeekTexts, ToolTipShowsTextsAsTheyStand)
{
    const QString text = ToolTipText({WeekEntry("06:00", "1000000", "<b>&", "\"%1\"")}, {0});
    EXPECT_TRUE(text.contains(QStringLiteral("Wert: &lt;b&gt;&amp;")));
    EXPECT_TRUE(text.contains(QStringLiteral("&quot;%1&quot;")));
}

TEST(WeekTexts, ToolTipOfManyHasALineForEachAndEndsSomewhere)
{
    QList<TWeekEntry> entries(30, WeekEntry("06:00", "1000000", "1", "Küche"));
    entries[1].Active = false;
    entries[1].PostProcess = true;
    EXPECT_TRUE(ToolTipText(entries, {0, 1})
                    .contains(QStringLiteral("06:00 1 · Küche\n06:00 1 · Küche · inaktiv · Nachfahren<")));
    QList<int> all(entries.size());
    std::iota(all.begin(), all.end(), 0);
    EXPECT_EQ(ToolTipText(entries, all).count(u'\n'), 20);
    EXPECT_TRUE(ToolTipText(entries, all).contains(QStringLiteral("und 10 weitere")));
}

} // namespace
