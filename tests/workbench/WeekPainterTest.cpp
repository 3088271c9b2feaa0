#include "TestSchedule.h"
#include "WeekPainter.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

namespace
{

constexpr QRectF Canvas(0, 0, 1000, 700);

// The picture of a week and what can be measured in it.
class WeekPainter : public ::testing::Test
{
protected:
    void Paint(const QList<TWeekEntry>& entries)
    {
        m_picture = MakeWeekPicture(entries);
        PaintAgain();
    }

    void PaintAgain()
    {
        m_picture.Layout = LayOutWeek(m_picture.Entries, Geometry().Room());
        m_image = QImage(Canvas.size().toSize(), QImage::Format_RGB32);
        m_image.fill(Qt::magenta);
        QPainter painter(&m_image);
        painter.setFont(QApplication::font());
        TWeekPainter(painter, Geometry(), m_picture, m_colors).Paint();
    }

    TWeekGeometry Geometry() const
    {
        return TWeekGeometry({.Area = Canvas, .HasNames = m_picture.HasNames, .HasStrip = true},
                             QFontMetricsF(QApplication::font()));
    }

    QRectF Spot(int day, int entry) const
    {
        return Geometry().SpotOf(m_picture.Layout, {.Day = day, .Entry = entry}).Rect;
    }

    // The fill of a box, below its text.
    QColor Fill(int day, int entry) const
    {
        const QRectF rect = Spot(day, entry);
        return m_image.pixelColor(QPointF(rect.right() - 5, rect.bottom() - 3).toPoint());
    }

    // How far the colours in a place go from the paper, summed up.
    double InkIn(const QRectF& place) const
    {
        double sum = 0;
        const QRect pixels = place.toAlignedRect().intersected(m_image.rect());
        for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
            for (int x = pixels.left(); x <= pixels.right(); ++x)
                sum += std::abs(m_image.pixelColor(x, y).lightnessF() - m_colors.Paper.lightnessF());
        }
        return sum;
    }

    static double Distance(const QColor& a, const QColor& b)
    {
        return std::hypot(a.red() - b.red(), a.green() - b.green(), a.blue() - b.blue());
    }

    TWeekColors m_colors = TWeekColors::ForPaper();
    TWeekPicture m_picture;
    QImage m_image;
};

TEST_F(WeekPainter, NothingOfTheAreaStaysUnpainted)
{
    Paint({});
    for (int y = 0; y < m_image.height(); y += 3) {
        for (int x = 0; x < m_image.width(); x += 3)
            ASSERT_NE(m_image.pixelColor(x, y), QColor(Qt::magenta)) << x << ' ' << y;
    }
}

TEST_F(WeekPainter, EntryIsPaintedOnItsDaysAndNowhereElse)
{
    Paint({WeekEntry("06:00", "0100000")});
    EXPECT_NE(Fill(1, 0), m_colors.Paper);
    QRectF onWednesday = Spot(1, 0);
    onWednesday.moveLeft(Geometry().Column(2).left() + 2);
    EXPECT_EQ(m_image.pixelColor(QPointF(onWednesday.right() - 5, onWednesday.bottom() - 3).toPoint()), m_colors.Paper);
}

TEST_F(WeekPainter, TimeAndValueCanBeRead)
{
    Paint({WeekEntry("06:00", "1000000", ""), WeekEntry("12:00", "1000000", "WWWW")});
    EXPECT_GT(InkIn(Spot(0, 0)), 10);
    EXPECT_GT(InkIn(Spot(0, 1)), InkIn(Spot(0, 0)) * 1.1);
}

TEST_F(WeekPainter, InactiveEntriesFade)
{
    TWeekEntry inactive = WeekEntry("12:00", "1000000");
    inactive.Active = false;
    Paint({WeekEntry("06:00", "1000000"), inactive});
    EXPECT_LT(Distance(Fill(0, 1), m_colors.Paper), Distance(Fill(0, 0), m_colors.Paper) / 2);
    EXPECT_LT(InkIn(Spot(0, 1)), InkIn(Spot(0, 0)) / 2);
}

TEST_F(WeekPainter, PostProcessHasAMark)
{
    TWeekEntry marked = WeekEntry("06:00", "1000000");
    marked.PostProcess = true;
    Paint({marked, WeekEntry("06:00", "0100000")});
    const auto rightEnd = [this](int day, int entry) {
        const QRectF rect = Spot(day, entry);
        return InkIn(rect.adjusted(rect.width() - rect.height(), 0, 0, 0));
    };
    EXPECT_GT(rightEnd(0, 0), rightEnd(1, 1) * 1.2);
}

TEST_F(WeekPainter, SelectedEntryIsHighlightedOnAllItsDays)
{
    m_colors.Selection = QColor(0, 0, 200);
    m_picture = MakeWeekPicture({WeekEntry("06:00", "1100000"), WeekEntry("12:00", "1000000")});
    m_picture.Selected = 0;
    PaintAgain();
    EXPECT_EQ(Fill(0, 0), m_colors.Selection);
    EXPECT_EQ(Fill(1, 0), m_colors.Selection);
    EXPECT_NE(Fill(0, 1), m_colors.Selection);
}

TEST_F(WeekPainter, FocusIsSeenOnOneDayOnly)
{
    m_picture = MakeWeekPicture({WeekEntry("06:00", "1100000")});
    PaintAgain();
    const double before = InkIn(Spot(0, 0));
    m_picture.Focus = {.Day = 0, .Entry = 0};
    PaintAgain();
    EXPECT_GT(InkIn(Spot(0, 0)), before * 1.2);
    EXPECT_NEAR(InkIn(Spot(1, 0)), before, before * 0.02);
}

TEST_F(WeekPainter, PresentTimeIsALineInTodaysColumn)
{
    m_picture.Now = QDateTime(QDate(2024, 5, 1), QTime(15, 0)); // a Wednesday
    PaintAgain();
    const auto colorAt = [this](int day, int minute) {
        return m_image.pixelColor(QPointF(Geometry().Column(day).center().x(), Geometry().Y(minute)).toPoint());
    };
    EXPECT_LT(Distance(colorAt(2, 900), m_colors.Now()), 90);
    EXPECT_GT(Distance(colorAt(1, 900), m_colors.Now()), 200);
    m_picture.Now = QDateTime(QDate(2024, 5, 1), QTime(16, 30));
    PaintAgain();
    EXPECT_GT(Distance(colorAt(2, 900), m_colors.Now()), 150);
    EXPECT_LT(Distance(colorAt(2, 990), m_colors.Now()), 90);
}

TEST_F(WeekPainter, WithoutATimeNoDayIsToday)
{
    Paint({});
    EXPECT_DOUBLE_EQ(InkIn(Geometry().Column(0).adjusted(3, 0, -3, 0)),
                     InkIn(Geometry().Column(0).adjusted(3, 0, -3, 0).translated(Geometry().Column(0).width(), 0)));
}

TEST_F(WeekPainter, EntriesWithoutDayStandInTheStrip)
{
    Paint({WeekEntry("06:00", "0000000")});
    const QRectF spot = Spot(TWeekStop::Dayless, 0);
    EXPECT_GT(spot.top(), Geometry().Body().bottom());
    EXPECT_GT(InkIn(spot), 10);
    EXPECT_GT(InkIn(Geometry().StripLabel()), 10);
}

TEST_F(WeekPainter, DatapointsDifferInColour)
{
    Paint({WeekEntry("06:00", "1000000", "1", "Licht"), WeekEntry("12:00", "1000000", "1", "Heizung"),
           WeekEntry("18:00", "1000000", "1", "Licht")});
    EXPECT_GT(Distance(Fill(0, 0), Fill(0, 1)), 20);
    EXPECT_EQ(Fill(0, 0), Fill(0, 2));
    EXPECT_TRUE(m_picture.HasNames);
}

TEST_F(WeekPainter, NameIsWrittenForAGroup)
{
    const TWeekEntry heating = WeekEntry("12:00", "1000000", "1", "Heizung");
    Paint({WeekEntry("06:00", "1000000", "1", "WWWWWW"), heating});
    const double named = InkIn(Spot(0, 0));
    Paint({WeekEntry("06:00", "1000000", "1", ""), heating});
    EXPECT_GT(named, InkIn(Spot(0, 0)) * 1.1);
}

TEST_F(WeekPainter, SharedBoxTellsHowManyItHolds)
{
    Paint(QList<TWeekEntry>(200, WeekEntry("06:00", "1000000")));
    const int shared = m_picture.Layout.Days[0].last().Entries.last();
    const double many = InkIn(Spot(0, shared));
    EXPECT_GT(many, 10);
    EXPECT_NE(Fill(0, shared), Fill(0, 0));
}

TEST_F(WeekPainter, OneDatapointNeedsNoNames)
{
    Paint({WeekEntry("06:00", "1000000"), WeekEntry("07:00", "1000000")});
    EXPECT_FALSE(m_picture.HasNames);
}

TEST_F(WeekPainter, DarkPaletteMakesADarkPicture)
{
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(30, 30, 30));
    palette.setColor(QPalette::Text, QColor(230, 230, 230));
    m_colors = TWeekColors::FromPalette(palette);
    Paint({WeekEntry("06:00", "1000000")});
    EXPECT_TRUE(m_colors.IsDark());
    EXPECT_EQ(m_image.pixelColor(1, 1), QColor(30, 30, 30));
    EXPECT_LT(Fill(0, 0).lightness(), 128);
    EXPECT_GT(InkIn(Spot(0, 0)), 10);
}

TEST_F(WeekPainter, SmallestAreaDoesNoHarm)
{
    for (const QRectF& area : {QRectF(), QRectF(0, 0, 1, 1), QRectF(0, 0, 60, 40)}) {
        const TWeekGeometry geometry({.Area = area, .HasStrip = true}, QFontMetricsF(QApplication::font()));
        TWeekPicture picture = MakeWeekPicture({WeekEntry("06:00", "1111111"), WeekEntry("06:00", "0000000")});
        picture.Layout = LayOutWeek(picture.Entries, geometry.Room());
        QImage image(10, 10, QImage::Format_RGB32);
        QPainter painter(&image);
        TWeekPainter(painter, geometry, picture, m_colors).Paint();
        EXPECT_EQ(picture.Layout.Days[0].size(), 1);
    }
}

} // namespace
