#include "WeekView.h"

#include "Pane.h"
#include "TestSchedule.h"
#include "Vlerrors.h"
#include "WeekCanvas.h"
#include "WeekOutput.h"
#include "WorkbenchSupport.h"

#include <QAction>
#include <QImage>
#include <QLabel>
#include <QTest>
#include <QTimer>

namespace
{

const auto Schedule = QStringLiteral("schedule");
const auto Week = QStringLiteral("week");
const auto Kitchen = QStringLiteral("Küche");

TPaneSetup SchedulePane()
{
    return {.Id = Schedule, .Title = QStringLiteral("Plan"), .Class = QStringLiteral("TTestSchedule"), .Command = {}};
}

TPaneSetup WeekPane(const QString& command = QStringLiteral("weekview://?pane=schedule"))
{
    return {.Id = Week, .Title = QStringLiteral("Woche"), .Class = QStringLiteral("TWeekView"), .Command = command};
}

QList<TWeekEntry> TwoEntries()
{
    return {WeekEntry("06:00", "1000000"), WeekEntry("22:00", "1000000")};
}

class WeekViewTest : public TWorkbenchTest
{
protected:
    WeekViewTest() { TTestSchedule::Register(); }
    ~WeekViewTest() override { TTestSchedule::Unregister(); }

    void Open(const TLayout& layout = {SchedulePane(), WeekPane()})
    {
        Window().Panes().SetLayout(layout);
        Window().Panes().LoadAll();
    }

    TTestSchedule& Source() { return *qobject_cast<TTestSchedule*>(Pane(Schedule).Component()); }
    TWeekView& View() { return *qobject_cast<TWeekView*>(Pane(Week).Component()); }
    const TWeekPicture& Picture() { return View().Canvas()->Picture(); }
    QString Title() { return View().TitleLabel()->text(); }
    QString Hint() { return View().Canvas()->Hint(); }
    QString File(const char* name) const { return m_directory.filePath(QString::fromLatin1(name)); }

    QString FailureOf(const QString& command)
    {
        try {
            Pane(Week).Execute(command);
        } catch (const TUserError& error) {
            return error.Message();
        }
        return {};
    }

    QAction* Action(const char* name)
    {
        for (QAction* action : Pane(Week).Actions()) {
            if (action->objectName() == QString::fromLatin1(name))
                return action;
        }
        return nullptr;
    }
};

// Where nobody answers.
class TNobody final : public IMessageHandler
{
public:
    TNobody() : m_previous(SetMessageHandler(this)) {}
    ~TNobody() override { SetMessageHandler(m_previous); }

    void ShowInformation(const QString&) override {}
    void ShowError(const QString& text) override { Errors.append(text); }
    bool Confirm(const QString&) override { return false; }
    void Note(const QObject*, const QString&) override {}
    bool IsInteractive() const override { return false; }

    QStringList Errors;

private:
    IMessageHandler* m_previous;
};

TEST_F(WeekViewTest, ShowsWhatIsSelectedInTheSchedule)
{
    Open();
    EXPECT_EQ(Hint(), QStringLiteral("Wählen Sie im Wochenschaltplan eine Gruppe oder einen Datenpunkt."));
    EXPECT_TRUE(Title().isEmpty());
    Source().Show(Kitchen, TwoEntries(), 1);
    EXPECT_EQ(Title(), Kitchen);
    EXPECT_TRUE(Hint().isEmpty());
    EXPECT_EQ(Picture().Entries.size(), 2);
    EXPECT_EQ(Picture().Selected, 1);
    Source().Show({}, {});
    EXPECT_TRUE(Picture().Entries.isEmpty());
    EXPECT_FALSE(Hint().isEmpty());
}

TEST_F(WeekViewTest, SaysSoWhenThereAreNoEntries)
{
    Open();
    Source().Show(Kitchen, {});
    EXPECT_EQ(Hint(), QStringLiteral("\"Küche\" hat noch keine Schaltzeiten."));
    EXPECT_EQ(Title(), Kitchen);
}

TEST_F(WeekViewTest, FindsTheScheduleInWhateverOrderThePanesCome)
{
    Open({WeekPane(), SchedulePane()});
    Source().Show(Kitchen, TwoEntries());
    EXPECT_EQ(Title(), Kitchen);
}

TEST_F(WeekViewTest, FollowsAScheduleThatIsClosedAndOpenedAgain)
{
    Open();
    Window().show();
    Source().Show(Kitchen, TwoEntries());
    ASSERT_TRUE(Pane(Schedule).close());
    EXPECT_TRUE(Title().isEmpty());
    EXPECT_TRUE(Picture().Entries.isEmpty());
    Pane(Schedule).toggleViewAction()->trigger();
    ASSERT_NE(Pane(Schedule).Component(), nullptr);
    Source().Show(QStringLiteral("Bad"), TwoEntries());
    EXPECT_EQ(Title(), QStringLiteral("Bad"));
}

TEST_F(WeekViewTest, ClosedScheduleIsNotHeardAnyMore)
{
    Open();
    Window().show();
    TTestSchedule& old = Source();
    EXPECT_EQ(old.ListenerCount(), 1);
    ASSERT_TRUE(Pane(Schedule).close());
    EXPECT_EQ(old.ListenerCount(), 0);
}

TEST_F(WeekViewTest, ScheduleThatIsDestroyedLeavesTheHint)
{
    Open();
    Source().Show(Kitchen, TwoEntries());
    delete Pane(Schedule).Component();
    EXPECT_TRUE(Title().isEmpty());
    QTest::keyClick(View().Canvas(), Qt::Key_Home);
    EXPECT_FALSE(Hint().isEmpty());
}

TEST_F(WeekViewTest, ClosedViewLeavesTheScheduleAlone)
{
    Open();
    Window().show();
    ASSERT_TRUE(Pane(Week).close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Source().ListenerCount(), 0);
    Source().Show(Kitchen, TwoEntries());
    Pane(Week).FocusContent();
    EXPECT_EQ(Title(), Kitchen);
}

TEST_F(WeekViewTest, LaterCommandNamesAnotherPane)
{
    TPaneSetup other = SchedulePane();
    other.Id = QStringLiteral("other");
    Open({SchedulePane(), WeekPane(), other});
    Source().Show(Kitchen, TwoEntries());
    Pane(Week).Execute(QStringLiteral("weekview://?pane=other"));
    EXPECT_TRUE(Title().isEmpty());
    EXPECT_EQ(Source().ListenerCount(), 0);
    Pane(Week).Execute(QStringLiteral("weekview://?pane=schedule"));
    EXPECT_EQ(Title(), Kitchen);
    EXPECT_EQ(Source().ListenerCount(), 1);
    Pane(Week).Execute(QStringLiteral("weekview://?pane=schedule"));
    EXPECT_EQ(Source().ListenerCount(), 1);
}

TEST_F(WeekViewTest, PaneWithoutAScheduleIsNamed)
{
    Open({TestPane(Schedule), WeekPane()});
    EXPECT_EQ(Hint(), QStringLiteral("Der Bereich \"schedule\" zeigt keinen Wochenschaltplan."));
}

TEST_F(WeekViewTest, OtherCommandsAreRefused)
{
    Open();
    EXPECT_FALSE(FailureOf(QStringLiteral("weekplan://?pane=schedule")).isEmpty());
    EXPECT_TRUE(FailureOf(QStringLiteral("WeekView://")).isEmpty());
}

TEST_F(WeekViewTest, ClickSelectsTheEntryInTheSchedule)
{
    Open();
    Window().show();
    Pane(Week).FocusContent();
    QCoreApplication::processEvents();
    Source().Show(Kitchen, TwoEntries());
    const QRectF spot = View().Canvas()->Geometry().SpotOf(Picture().Layout, TWeekStop{.Day = 0, .Entry = 1}).Rect;
    QTest::mouseClick(View().Canvas()->viewport(), Qt::LeftButton, {}, spot.center().toPoint());
    EXPECT_EQ(Source().Selections, QList<int>{1});
    EXPECT_EQ(Picture().Selected, 1);
}

TEST_F(WeekViewTest, KeysSelectInTheSchedule)
{
    Open();
    Source().Show(Kitchen, TwoEntries());
    QTest::keyClick(View().Canvas(), Qt::Key_Home);
    QTest::keyClick(View().Canvas(), Qt::Key_Down);
    EXPECT_EQ(Source().Selections, (QList<int>{0, 1}));
}

TEST_F(WeekViewTest, PresentTimeComesFromTheClockAndMovesOn)
{
    Open();
    QDateTime now(QDate(2024, 5, 1), QTime(15, 0));
    View().SetClock([&now] { return now; });
    EXPECT_EQ(Picture().Now, now);
    now = now.addSecs(60);
    View().FollowTime();
    EXPECT_EQ(Picture().Now, now);
    Source().Show(Kitchen, TwoEntries());
    EXPECT_EQ(Picture().Now, now);
}

TEST_F(WeekViewTest, ClockRunsWhileTheViewIsSeen)
{
    Open();
    const auto* timer = View().findChild<QTimer*>(QStringLiteral("ClockTimer"));
    ASSERT_NE(timer, nullptr);
    EXPECT_FALSE(timer->isActive());
    Window().show();
    Pane(Week).raise();
    QCoreApplication::processEvents();
    EXPECT_TRUE(timer->isActive());
    Window().hide();
    EXPECT_FALSE(timer->isActive());
}

TEST_F(WeekViewTest, ActionsNeedAWeek)
{
    Open();
    for (const char* name : {"MenuAction_Print", "MenuAction_SavePdf", "MenuAction_SavePng", "MenuAction_ZoomIn"}) {
        ASSERT_NE(Action(name), nullptr) << name;
        EXPECT_FALSE(Action(name)->isEnabled()) << name;
    }
    Source().Show(Kitchen, TwoEntries());
    for (const char* name : {"MenuAction_Print", "MenuAction_SavePdf", "MenuAction_SavePng", "MenuAction_ZoomIn"})
        EXPECT_TRUE(Action(name)->isEnabled()) << name;
    EXPECT_EQ(Action("MenuAction_Print")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_P));
}

TEST_F(WeekViewTest, ZoomActionsFollowTheZoom)
{
    Open();
    Source().Show(Kitchen, TwoEntries());
    EXPECT_FALSE(Action("MenuAction_ZoomOut")->isEnabled());
    Pane(Week).Trigger(QStringLiteral("MenuAction_ZoomIn"));
    EXPECT_TRUE(Action("MenuAction_ZoomOut")->isEnabled());
    Pane(Week).Trigger(QStringLiteral("MenuAction_ZoomReset"));
    EXPECT_FALSE(Action("MenuAction_ZoomReset")->isEnabled());
}

TEST_F(WeekViewTest, DialogsAreRefusedWhereNobodySeesThem)
{
    Open();
    Source().Show(Kitchen, TwoEntries());
    const TNobody nobody;
    for (const char* name : {"MenuAction_Print", "MenuAction_SavePdf", "MenuAction_SavePng"})
        Pane(Week).Trigger(QString::fromLatin1(name));
    ASSERT_EQ(nobody.Errors.size(), 3);
    EXPECT_TRUE(nobody.Errors[1].contains(QStringLiteral("weekview://?pdf=")));
    EXPECT_TRUE(nobody.Errors[2].contains(QStringLiteral("weekview://?png=")));
}

TEST_F(WeekViewTest, CommandsSaveInTheProject)
{
    const QString root = MakeProject(QStringLiteral("Haus"));
    UserManager()->OpenProject(root);
    Open();
    Source().Show(Kitchen, TwoEntries());
    Pane(Week).Execute(QStringLiteral("weekview://?pdf=%PRJPATH%/woche.pdf&png=$(project)\\woche.png"));
    EXPECT_TRUE(ReadAll(root + QStringLiteral("/woche.pdf")).startsWith("%PDF"));
    EXPECT_FALSE(QImage(root + QStringLiteral("/woche.png")).isNull());
    EXPECT_EQ(m_messages.Notes.last(),
              QStringLiteral("Woche von \"Küche\" als PNG gespeichert (%1/woche.png)").arg(root));
}

TEST_F(WeekViewTest, NothingIsSavedWithoutAProjectOrASelection)
{
    Open();
    EXPECT_TRUE(FailureOf(QStringLiteral("weekview://?pdf=") + File("a.pdf")).contains(QStringLiteral("ausgewählt")));
    Source().Show(Kitchen, TwoEntries());
    EXPECT_TRUE(
        FailureOf(QStringLiteral("weekview://?png=%PRJPATH%/a.png")).contains(QStringLiteral("%PRJPATH%/a.png")));
    EXPECT_TRUE(FailureOf(QStringLiteral("weekview://?png=") + File("fehlt/a.png")).contains(File("fehlt/a.png")));
    EXPECT_TRUE(QDir(m_directory.path()).isEmpty());
}

TEST_F(WeekViewTest, PageNamesTitleProjectAndDate)
{
    UserManager()->OpenProject(MakeProject(QStringLiteral("Haus")));
    Open();
    Source().Show(Kitchen, TwoEntries());
    View().SetClock([] { return QDateTime(QDate(2024, 5, 1), QTime(15, 0)); });
    const TWeekPage page = View().Page();
    EXPECT_EQ(page.Title, Kitchen);
    EXPECT_EQ(page.Project, QStringLiteral("Haus"));
    EXPECT_EQ(page.Date, QDate(2024, 5, 1));
    EXPECT_EQ(page.Entries.size(), 2);
}

TEST_F(WeekViewTest, KeyboardGoesToThePicture)
{
    Open();
    Window().show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
    Pane(Week).FocusContent();
    EXPECT_EQ(QApplication::focusWidget(), View().Canvas());
}

} // namespace
