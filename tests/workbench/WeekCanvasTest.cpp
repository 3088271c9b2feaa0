#include "TestSchedule.h"
#include "TestSupport.h"
#include "WeekCanvas.h"

#include <QHelpEvent>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

namespace
{

class WeekCanvas : public ::testing::Test
{
protected:
    WeekCanvas()
    {
        m_canvas.resize(900, 700);
        m_canvas.show();
        m_canvas.activateWindow();
        m_canvas.setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_canvas));
    }

    void Show(const QList<TWeekEntry>& entries, int selected = -1) { m_canvas.ShowWeek(entries, selected, {}); }

    QPoint Place(int day, int entry) const
    {
        const TWeekStop stop{.Day = day, .Entry = entry};
        return m_canvas.Geometry().SpotOf(m_canvas.Picture().Layout, stop).Rect.center().toPoint();
    }

    void Click(const QPoint& place) { QTest::mouseClick(m_canvas.viewport(), Qt::LeftButton, {}, place); }
    void Press(Qt::Key key) { QTest::keyClick(&m_canvas, key); }
    const TWeekStop& Focus() const { return m_canvas.Picture().Focus; }

    QList<int> Chosen() const
    {
        QList<int> entries;
        for (const QList<QVariant>& arguments : m_chosen)
            entries.append(arguments.first().toInt());
        return entries;
    }

    QMenu* EntriesMenu() const { return m_canvas.findChild<QMenu*>(QStringLiteral("EntriesMenu")); }

    void Wheel(int delta, Qt::KeyboardModifiers modifiers)
    {
        QWheelEvent event(QPointF(200, 200), m_canvas.viewport()->mapToGlobal(QPointF(200, 200)), {}, {0, delta},
                          Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_canvas.viewport(), &event);
    }

    TWeekCanvas m_canvas{nullptr};
    QSignalSpy m_chosen{&m_canvas, &TWeekCanvas::EntryChosen};
};

// In the order of time: 1 (Mo 06:00), 0 (Mo 08:00), 2 (Mi 07:00), 0 (Mi 08:00), 3 (no day).
const QList<TWeekEntry>& FourEntries()
{
    static const QList<TWeekEntry> entries{WeekEntry("08:00", "1010000"), WeekEntry("06:00", "1000000"),
                                           WeekEntry("07:00", "0010000"), WeekEntry("09:00", "0000000")};
    return entries;
}

TEST_F(WeekCanvas, ClickChoosesTheEntryUnderTheMouse)
{
    Show(FourEntries());
    Click(Place(0, 1));
    Click(Place(2, 0));
    Click(Place(TWeekStop::Dayless, 3));
    EXPECT_EQ(Chosen(), (QList<int>{1, 0, 3}));
    EXPECT_EQ(Focus(), (TWeekStop{.Entry = 3}));
}

TEST_F(WeekCanvas, ClickBesideEntriesChoosesNothing)
{
    Show(FourEntries());
    Click(Place(0, 1) + QPoint(0, 200));
    QTest::mouseClick(m_canvas.viewport(), Qt::RightButton, {}, Place(0, 1));
    EXPECT_TRUE(Chosen().isEmpty());
}

TEST_F(WeekCanvas, ArrowsGoThroughTheWeekInTheOrderOfTime)
{
    Show(FourEntries());
    for (int i = 0; i < 6; ++i)
        Press(Qt::Key_Down);
    EXPECT_EQ(Chosen(), (QList<int>{1, 0, 2, 0, 3, 3}));
    m_chosen.clear();
    for (int i = 0; i < 5; ++i)
        Press(Qt::Key_Up);
    EXPECT_EQ(Chosen(), (QList<int>{0, 2, 0, 1, 1}));
}

TEST_F(WeekCanvas, HomeAndEndLeadToTheEnds)
{
    Show(FourEntries());
    Press(Qt::Key_End);
    Press(Qt::Key_Home);
    EXPECT_EQ(Chosen(), (QList<int>{3, 1}));
}

TEST_F(WeekCanvas, SidewaysLeadsToTheNearestTimeOfTheNextDayThatHasAny)
{
    Show(FourEntries());
    Press(Qt::Key_Home);
    Press(Qt::Key_Right);
    EXPECT_EQ(Focus(), (TWeekStop{.Day = 2, .Entry = 2}));
    Press(Qt::Key_Down);
    Press(Qt::Key_Left);
    EXPECT_EQ(Focus(), (TWeekStop{.Day = 0, .Entry = 0}));
    Press(Qt::Key_Left);
    EXPECT_EQ(Focus(), (TWeekStop{.Day = 0, .Entry = 0}));
}

TEST_F(WeekCanvas, KeysWithoutEntriesChooseNothing)
{
    Show({});
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_Home, Qt::Key_End, Qt::Key_Return})
        Press(key);
    EXPECT_TRUE(Chosen().isEmpty());
}

TEST_F(WeekCanvas, SelectionOfTheTreeTakesTheFocusAlong)
{
    Show(FourEntries(), 0);
    EXPECT_EQ(Focus(), (TWeekStop{.Day = 0, .Entry = 0}));
    Press(Qt::Key_Right);
    EXPECT_EQ(Focus().Day, 2);
    Show(FourEntries(), Focus().Entry);
    EXPECT_EQ(Focus().Day, 2);
    Show(FourEntries(), -1);
    EXPECT_EQ(Focus().Entry, -1);
}

TEST_F(WeekCanvas, FocusShowsWithTheKeyboardOnly)
{
    Show(FourEntries(), 1);
    EXPECT_EQ(Focus().Entry, 1);
    m_canvas.clearFocus();
    EXPECT_EQ(Focus().Entry, -1);
    EXPECT_EQ(m_canvas.Picture().Selected, 1);
    m_canvas.setFocus();
    EXPECT_EQ(Focus().Entry, 1);
}

TEST_F(WeekCanvas, BoxOfManyAsksWhichOne)
{
    Show(QList<TWeekEntry>(300, WeekEntry("06:00", "1000000")));
    const TWeekBox& last = m_canvas.Picture().Layout.Days[0].last();
    ASSERT_GT(last.Entries.size(), 40);
    const int third = last.Entries[2];
    Click(Place(0, third));
    EXPECT_TRUE(Chosen().isEmpty());
    ASSERT_NE(EntriesMenu(), nullptr);
    const QList<QAction*> actions = EntriesMenu()->actions();
    ASSERT_EQ(actions.size(), 41);
    EXPECT_FALSE(actions.last()->isEnabled());
    actions[2]->trigger();
    EXPECT_EQ(Chosen(), QList<int>{third});
}

TEST_F(WeekCanvas, MenuOfAnOldWeekIsClosed)
{
    Show(QList<TWeekEntry>(300, WeekEntry("06:00", "1000000")));
    Click(Place(0, m_canvas.Picture().Layout.Days[0].last().Entries[2]));
    ASSERT_NE(EntriesMenu(), nullptr);
    QPointer<QMenu> menu = EntriesMenu();
    Show({});
    EXPECT_TRUE(!menu || !menu->isVisible());
}

TEST_F(WeekCanvas, ToolTipTellsAllAboutTheEntry)
{
    Show(FourEntries());
    QHelpEvent event(QEvent::ToolTip, Place(2, 0), m_canvas.viewport()->mapToGlobal(Place(2, 0)));
    QCoreApplication::sendEvent(m_canvas.viewport(), &event);
    EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("08:00, Mo, Mi"))) << QToolTip::text().toStdString();
    QToolTip::hideText();
}

TEST_F(WeekCanvas, AssistiveTechnologyHearsOfTheEntry)
{
    Show(FourEntries());
    Press(Qt::Key_Home);
    EXPECT_TRUE(m_canvas.accessibleDescription().contains(QStringLiteral("06:00, Mo")));
    m_canvas.ShowHint(QStringLiteral("Nichts"));
    EXPECT_EQ(m_canvas.accessibleDescription(), QStringLiteral("Nichts"));
}

TEST_F(WeekCanvas, WholeDayIsSeenAtFirstWhereThereIsRoom)
{
    Show(FourEntries());
    EXPECT_EQ(m_canvas.verticalScrollBar()->maximum(), 0);
    m_canvas.resize(900, 200);
    EXPECT_GT(m_canvas.verticalScrollBar()->maximum(), 0);
}

TEST_F(WeekCanvas, WheelWithCtrlZoomsWithinLimits)
{
    Show(FourEntries());
    EXPECT_FALSE(m_canvas.CanZoomOut());
    const double hour = m_canvas.Geometry().HourHeight();
    Wheel(120, Qt::ControlModifier);
    EXPECT_GT(m_canvas.Geometry().HourHeight(), hour * 1.2);
    Wheel(-120, Qt::ControlModifier);
    Wheel(-120, Qt::ControlModifier);
    EXPECT_DOUBLE_EQ(m_canvas.Geometry().HourHeight(), hour);
    for (int i = 0; i < 30; ++i)
        m_canvas.ZoomIn();
    EXPECT_FALSE(m_canvas.CanZoomIn());
    m_canvas.ResetZoom();
    EXPECT_DOUBLE_EQ(m_canvas.Geometry().HourHeight(), hour);
}

TEST_F(WeekCanvas, WheelAloneScrolls)
{
    Show(FourEntries());
    m_canvas.ZoomIn();
    m_canvas.ZoomIn();
    m_canvas.verticalScrollBar()->setValue(0);
    const double top = m_canvas.Geometry().Y(0);
    Wheel(-120, Qt::NoModifier);
    EXPECT_LT(m_canvas.Geometry().Y(0), top);
}

TEST_F(WeekCanvas, ChosenEntryIsScrolledIntoSight)
{
    Show({WeekEntry("00:30", "1000000"), WeekEntry("23:00", "1000000")});
    for (int i = 0; i < 6; ++i)
        m_canvas.ZoomIn();
    for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home}) {
        Press(key);
        EXPECT_TRUE(
            m_canvas.Geometry().Body().contains(m_canvas.Geometry().SpotOf(m_canvas.Picture().Layout, Focus()).Rect))
            << key;
    }
}

TEST_F(WeekCanvas, FontChangesTheMeasures)
{
    Show(FourEntries());
    const double row = m_canvas.Geometry().RowHeight();
    QFont font = m_canvas.font();
    font.setPointSize(font.pointSize() * 2);
    m_canvas.setFont(font);
    EXPECT_GT(m_canvas.Geometry().RowHeight(), row * 1.5);
}

TEST_F(WeekCanvas, TenThousandEntriesAreAllReached)
{
    QList<TWeekEntry> entries;
    for (int i = 0; i < 10000; ++i) {
        entries.append(WeekEntry("00:00", "1111111"));
        entries.last().Time = QTime(0, 0).addSecs(i * 8);
    }
    Show(entries, 9999);
    qsizetype boxes = 0;
    qsizetype held = 0;
    for (const TWeekBox& box : m_canvas.Picture().Layout.Days[0]) {
        ++boxes;
        held += box.Entries.size();
    }
    EXPECT_EQ(held, 10000);
    EXPECT_LT(boxes, 1000);
    EXPECT_FALSE(m_canvas.grab().isNull());
    Press(Qt::Key_End);
    EXPECT_EQ(Chosen().value(0), 9999);
    EXPECT_EQ(Focus().Day, 6);
}

} // namespace
