#include "TestSchedule.h"
#include "WeekLayout.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{

constexpr TWeekRoom Narrow{.BoxMinutes = 30, .Lanes = 1, .MostRows = 2};
constexpr TWeekRoom Wide{.BoxMinutes = 30, .Lanes = 3, .MostRows = 2};

// One day as text: entries, the minute of the top, lane and lanes of each box.
std::string Day(const TWeekLayout& layout, size_t day)
{
    std::ostringstream text;
    for (const TWeekBox& box : layout.Days[day]) {
        text << (text.tellp() > 0 ? " " : "");
        for (qsizetype i = 0; i < box.Entries.size(); ++i)
            text << (i > 0 ? "+" : "") << box.Entries[i];
        text << '@' << box.Top << ':' << box.Lane << '/' << box.LaneCount;
    }
    return text.str();
}

std::string Monday(const QList<const char*>& times, const TWeekRoom& room)
{
    QList<TWeekEntry> entries;
    for (const char* time : times)
        entries.append(WeekEntry(time, "1000000"));
    return Day(LayOutWeek(entries, room), 0);
}

TEST(WeekLayout, EntryStandsAtItsTimeOnEachOfItsDays)
{
    const TWeekLayout layout = LayOutWeek({WeekEntry("06:30", "1000001")}, Wide);
    EXPECT_EQ(Day(layout, 0), "0@390:0/1");
    EXPECT_EQ(Day(layout, 6), "0@390:0/1");
    for (size_t day = 1; day < 6; ++day)
        EXPECT_EQ(Day(layout, day), "");
    EXPECT_TRUE(layout.Dayless.isEmpty());
}

TEST(WeekLayout, BoxesComeInTheOrderOfTimeAndKeepTheTreesOrderWhereItIsEqual)
{
    EXPECT_EQ(Monday({"08:00", "06:00", "07:00"}, Wide), "1@360:0/1 2@420:0/1 0@480:0/1");
    EXPECT_EQ(Monday({"06:00", "05:00", "06:00"}, Wide), "1@300:0/1 0@360:0/2 2@360:1/2");
}

TEST(WeekLayout, EqualTimesStandSideBySide)
{
    EXPECT_EQ(Monday({"06:00", "06:00", "06:00"}, Wide), "0@360:0/3 1@360:1/3 2@360:2/3");
}

TEST(WeekLayout, OverlapCountsAndTouchingDoesNot)
{
    EXPECT_EQ(Monday({"06:00", "06:29"}, Wide), "0@360:0/2 1@389:1/2");
    EXPECT_EQ(Monday({"06:00", "06:30"}, Wide), "0@360:0/1 1@390:0/1");
}

TEST(WeekLayout, AllBoxesOfAChainShareTheWidth)
{
    EXPECT_EQ(Monday({"06:00", "06:20", "06:40", "08:00"}, Wide), "0@360:0/2 1@380:1/2 2@400:0/2 3@480:0/1");
}

TEST(WeekLayout, WithoutALaneTheNextRowIsTaken)
{
    EXPECT_EQ(Monday({"06:00", "06:00"}, Narrow), "0@360:0/1 1@390:0/1");
    EXPECT_EQ(Monday({"06:00", "06:10", "06:20"}, {.BoxMinutes = 30, .Lanes = 2, .MostRows = 2}),
              "0@360:0/2 1@370:1/2 2@390:0/2");
}

TEST(WeekLayout, WithoutARowTheyShareTheLastBox)
{
    EXPECT_EQ(Monday({"06:00", "06:00", "06:00", "06:00"}, Narrow), "0@360:0/1 1+2+3@390:0/1");
    EXPECT_EQ(Monday({"06:00", "06:00", "06:00", "07:00"}, Narrow), "0@360:0/1 1+2@390:0/1 3@420:0/1");
}

TEST(WeekLayout, RowsLeaveLaterTimesTheirPlace)
{
    EXPECT_EQ(Monday({"06:00", "06:00", "06:30"}, Narrow), "0+1@360:0/1 2@390:0/1");
    EXPECT_EQ(Monday({"06:00", "06:00", "06:59"}, Narrow), "0+1@360:0/1 2@419:0/1");
    EXPECT_EQ(Monday({"06:00", "06:00", "07:00"}, Narrow), "0@360:0/1 1@390:0/1 2@420:0/1");
}

TEST(WeekLayout, EndOfTheDayHoldsItsBoxes)
{
    EXPECT_EQ(Monday({"23:59"}, Narrow), "0@1410:0/1");
    EXPECT_EQ(Monday({"23:50", "23:59"}, Narrow), "0+1@1410:0/1");
    EXPECT_EQ(Monday({"23:20", "23:59"}, Narrow), "0+1@1400:0/1");
    EXPECT_EQ(Monday({"00:00"}, {.BoxMinutes = 5000}), "0@0:0/1");
}

TEST(WeekLayout, TimeIsKeptWhereTheBoxStandsElsewhere)
{
    const TWeekLayout layout = LayOutWeek({WeekEntry("06:00", "1000000"), WeekEntry("06:01", "1000000")}, Narrow);
    EXPECT_EQ(layout.Days[0].value(1).Minute, 361);
    EXPECT_EQ(layout.Days[0].value(1).Top, 390);
}

TEST(WeekLayout, EntriesWithoutDayStandApartInTheOrderOfTime)
{
    const TWeekLayout layout =
        LayOutWeek({WeekEntry("09:00", "0000000"), WeekEntry("07:00", "0000000"), WeekEntry("08:00", "0000001")}, Wide);
    EXPECT_EQ(layout.Dayless, (QList<int>{1, 0}));
    EXPECT_EQ(Day(layout, 6), "2@480:0/1");
}

TEST(WeekLayout, NoBoxEverLiesOnAnother)
{
    QList<TWeekEntry> entries;
    for (int i = 0; i < 3000; ++i) {
        entries.append(WeekEntry("00:00", "1111111"));
        entries.last().Time = QTime(0, 0).addSecs(60 * (i * 7919 % MinutesPerDay));
    }
    const TWeekRoom room{.BoxMinutes = 45, .Lanes = 4, .MostRows = 4};
    const TWeekLayout layout = LayOutWeek(entries, room);
    for (const QList<TWeekBox>& boxes : layout.Days) {
        std::array<int, 4> ends{};
        qsizetype held = 0;
        for (const TWeekBox& box : boxes) {
            EXPECT_GE(box.Top, ends.at(static_cast<size_t>(box.Lane)));
            EXPECT_LT(box.Lane, box.LaneCount);
            ends.at(static_cast<size_t>(box.Lane)) = box.Top + room.BoxMinutes;
            EXPECT_LE(box.Top + room.BoxMinutes, MinutesPerDay);
            held += box.Entries.size();
        }
        EXPECT_EQ(held, entries.size());
    }
}

TEST(WeekStops, GoThroughTheWeekInTimeAndEndWithTheDayless)
{
    const QList<TWeekStop> stops =
        WeekStops({WeekEntry("08:00", "1010000"), WeekEntry("06:00", "1000000"), WeekEntry("05:00", "0000000")});
    const QList<TWeekStop> expected{{.Day = 0, .Entry = 1},
                                    {.Day = 0, .Entry = 0},
                                    {.Day = 2, .Entry = 0},
                                    {.Day = TWeekStop::Dayless, .Entry = 2}};
    EXPECT_EQ(stops, expected);
    EXPECT_TRUE(WeekStops({}).isEmpty());
}

} // namespace
