#include "TestSchedule.h"
#include "WeekGeometry.h"

#include <QApplication>
#include <gtest/gtest.h>

#include <numeric>

namespace
{

constexpr QRectF Area(10, 20, 800, 600);

TWeekGeometry Geometry(const TWeekFrame& frame)
{
    return TWeekGeometry(frame, QFontMetricsF(QApplication::font()));
}

TWeekGeometry Plain()
{
    return Geometry({.Area = Area});
}

TEST(WeekGeometry, ColumnsStandSideBySideWithinTheArea)
{
    const TWeekGeometry geometry = Plain();
    for (int day = 1; day < TWeekEntry::DayCount; ++day)
        EXPECT_DOUBLE_EQ(geometry.Column(day).left(), geometry.Column(day - 1).right());
    EXPECT_GT(geometry.Column(0).left(), Area.left());
    EXPECT_DOUBLE_EQ(geometry.Column(6).right(), Area.right());
    EXPECT_DOUBLE_EQ(geometry.Head(3).left(), geometry.Column(3).left());
    EXPECT_DOUBLE_EQ(geometry.Head(3).bottom(), geometry.Body().top());
}

TEST(WeekGeometry, DayFillsTheBodyWhereItNeedNotScroll)
{
    const TWeekGeometry geometry = Plain();
    EXPECT_GT(geometry.Y(0), geometry.Body().top());
    EXPECT_LT(geometry.Y(MinutesPerDay), geometry.Body().bottom());
    EXPECT_DOUBLE_EQ(geometry.Y(60) - geometry.Y(0), geometry.HourHeight());
    EXPECT_DOUBLE_EQ(geometry.MinuteAt(geometry.Y(777)), 777);
}

TEST(WeekGeometry, LowAreaScrollsAndKeepsTheHoursReadable)
{
    const TWeekFrame low{.Area = QRectF(0, 0, 800, 200), .Scrolls = true};
    EXPECT_GT(Geometry(low).ContentHeight(), Geometry(low).Body().height());
    EXPECT_GT(Geometry(low).HourHeight(), QFontMetricsF(QApplication::font()).height() * 0.75);
    TWeekFrame named = low;
    named.HasNames = true;
    EXPECT_GT(Geometry(named).HourHeight(), Geometry(low).HourHeight());
    TWeekFrame fixed = low;
    fixed.Scrolls = false;
    EXPECT_DOUBLE_EQ(Geometry(fixed).ContentHeight(), Geometry(fixed).Body().height());
}

TEST(WeekGeometry, ZoomStretchesTheDayAndOffsetMovesIt)
{
    const TWeekGeometry zoomed = Geometry({.Area = Area, .Zoom = 3, .Offset = 50});
    EXPECT_DOUBLE_EQ(zoomed.ContentHeight(), 3 * Plain().ContentHeight());
    EXPECT_DOUBLE_EQ(zoomed.Y(0), Plain().Y(0) - 50);
    EXPECT_LT(zoomed.Room().BoxMinutes, Plain().Room().BoxMinutes);
}

TEST(WeekGeometry, BoxesThatDoNotOverlapInTheLayoutDoNotOverlapHere)
{
    const TWeekGeometry geometry = Plain();
    const TWeekLayout layout = LayOutWeek(QList<TWeekEntry>(40, WeekEntry("06:00", "1000000")), geometry.Room());
    const QList<TWeekBox>& boxes = layout.Days[0];
    ASSERT_GT(boxes.size(), 1);
    for (qsizetype i = 0; i < boxes.size(); ++i) {
        EXPECT_TRUE(geometry.Column(0).contains(geometry.Box(0, boxes[i])));
        for (qsizetype j = 0; j < i; ++j)
            EXPECT_FALSE(geometry.Box(0, boxes[i]).intersects(geometry.Box(0, boxes[j]))) << i << ' ' << j;
    }
}

TEST(WeekGeometry, BoxIsHighEnoughForItsText)
{
    const TWeekGeometry geometry = Plain();
    EXPECT_GE(geometry.Box(0, {.Entries = {0}}).height(), QFontMetricsF(QApplication::font()).height());
}

TEST(WeekGeometry, NarrowBoxHasALineForTheName)
{
    const TWeekBox box{.Entries = {0}};
    const QRectF narrow(0, 0, 500, 600);
    const QRectF wide(0, 0, 2000, 600);
    const double low = Geometry({.Area = narrow}).Box(0, box).height();
    EXPECT_GT(Geometry({.Area = narrow, .HasNames = true}).Box(0, box).height(), 1.5 * low);
    EXPECT_DOUBLE_EQ(Geometry({.Area = wide, .HasNames = true}).Box(0, box).height(), low);
}

TEST(WeekGeometry, NamesNeedMoreRoomSideBySide)
{
    const QRectF wide(0, 0, 3000, 600);
    EXPECT_GT(Geometry({.Area = wide}).Room().Lanes, Geometry({.Area = wide, .HasNames = true}).Room().Lanes);
    EXPECT_EQ(Geometry({.Area = QRectF(0, 0, 10, 10)}).Room().Lanes, 1);
}

TEST(WeekGeometry, OnlyBoxesInSightAreVisible)
{
    QList<TWeekEntry> entries;
    for (int hour = 0; hour < 24; ++hour) {
        entries.append(WeekEntry("00:00", "1000000"));
        entries.last().Time = QTime(hour, 0);
    }
    const TWeekGeometry zoomed = Geometry({.Area = Area, .Zoom = 12, .Offset = 12 * 250});
    const QList<TWeekBox> boxes = LayOutWeek(entries, zoomed.Room()).Days[0];
    const auto [first, last] = zoomed.Visible(boxes);
    EXPECT_LT(last - first, 5);
    for (qsizetype i = 0; i < boxes.size(); ++i)
        EXPECT_EQ(zoomed.Box(0, boxes[i]).intersects(zoomed.Body()), i >= first && i < last) << i;
    EXPECT_EQ(Plain().Visible(boxes), (std::pair<qsizetype, qsizetype>(0, 24)));
}

TEST(WeekGeometry, StripHoldsWhatFindsRoomAndTheLastSpotTheRest)
{
    const TWeekGeometry geometry = Geometry({.Area = Area, .HasStrip = true});
    QList<int> many(100);
    std::iota(many.begin(), many.end(), 0);
    const QList<TWeekSpot> spots = geometry.StripSpots(many);
    ASSERT_GT(spots.size(), 2);
    EXPECT_EQ(spots[1].Entries, QList<int>{1});
    EXPECT_EQ(spots.last().Entries.size(), 100 - spots.size() + 1);
    EXPECT_LE(spots.last().Rect.right(), Area.right());
    EXPECT_GT(spots.first().Rect.top(), geometry.Body().bottom());
    EXPECT_LT(spots.first().Rect.bottom(), geometry.Legend().top());
    EXPECT_EQ(geometry.StripSpots({7}).size(), 1);
}

TEST(WeekGeometry, SpotIsFoundByPointAndByStop)
{
    const TWeekGeometry geometry = Geometry({.Area = Area, .HasStrip = true});
    const TWeekLayout layout =
        LayOutWeek({WeekEntry("06:00", "0010000"), WeekEntry("09:00", "0000000")}, geometry.Room());
    for (const TWeekStop& stop : {TWeekStop{.Day = 2, .Entry = 0}, TWeekStop{.Entry = 1}}) {
        const TWeekSpot spot = geometry.SpotOf(layout, stop);
        EXPECT_EQ(spot.Entries, QList<int>{stop.Entry});
        EXPECT_EQ(geometry.SpotAt(layout, spot.Rect.center()).Entries, spot.Entries);
        EXPECT_EQ(geometry.SpotAt(layout, spot.Rect.center()).Day, stop.Day);
        EXPECT_TRUE(geometry.SpotAt(layout, spot.Rect.bottomLeft() + QPointF(5, 3)).Entries.isEmpty());
    }
    EXPECT_TRUE(geometry.SpotOf(layout, {.Day = 3, .Entry = 0}).Entries.isEmpty());
    EXPECT_TRUE(geometry.SpotAt(layout, Area.topLeft()).Entries.isEmpty());
}

} // namespace
