#include "MainWindow.h"

#include "MessagePane.h"
#include "Pane.h"
#include "Vlerrors.h"
#include "WorkbenchSupport.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

namespace
{

const auto House = QStringLiteral("Haus");

const QByteArray TwoPanes = R"({"format":1,"panes":[
    {"id":"a","title":"Erster","class":"TTestComponent","command":"x://?file=%PRJPATH%"},
    {"id":"b","title":"Zweiter","class":"TTestComponent"}]})";

class MainWindowTest : public TWorkbenchTest
{
protected:
    void ShowTwoPanes()
    {
        ASSERT_TRUE(Window().OpenProject(MakeProject(House, TwoPanes)));
        Window().show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Window()));
        Window().Panes().LoadAll();
        Window().FocusFirstPane();
    }

    QObject* FieldOf(const char* id) { return Component(QString::fromLatin1(id)).Field; }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(Window().windowHandle(), key, modifiers);
    }
};

TEST_F(MainWindowTest, OpenProjectShowsInTheTitleAndAsANote)
{
    const QString root = MakeProject(QStringLiteral("Musterhaus"));
    ASSERT_TRUE(Window().OpenProject(root));
    EXPECT_EQ(Window().windowTitle(), QStringLiteral("Musterhaus – Velmora Folders"));
    EXPECT_EQ(m_messages.Notes.value(0), QStringLiteral("Projekt Musterhaus geöffnet (%1)").arg(root));
    EXPECT_TRUE(Window().CloseProject());
    EXPECT_EQ(Window().windowTitle(), QStringLiteral("Velmora Folders"));
}

TEST_F(MainWindowTest, ProjectWithoutLayoutGetsThePanesOfTheInstallation)
{
    ASSERT_TRUE(Window().OpenProject(MakeProject(House)));
    EXPECT_EQ(Window().Panes().Layout(), InstallationLayout());
}

TEST_F(MainWindowTest, ProjectsOwnLayoutReplacesThePanesAndGoesWithTheProject)
{
    ASSERT_TRUE(Window().OpenProject(MakeProject(House, TwoPanes)));
    EXPECT_EQ(Window().Panes().All().size(), 2);
    ASSERT_TRUE(Window().CloseProject());
    EXPECT_EQ(Window().Panes().Layout(), InstallationLayout());
}

TEST_F(MainWindowTest, ComponentsStayAndReloadWhenTheLayoutStays)
{
    ASSERT_TRUE(Window().OpenProject(MakeProject(House)));
    Window().Panes().LoadAll();
    const TTestComponent* component = &Component(Scenes);
    ASSERT_TRUE(Window().OpenProject(MakeProject(QStringLiteral("Anderes"))));
    EXPECT_EQ(&Component(Scenes), component);
    EXPECT_EQ(component->ProjectChanges, 1);
    EXPECT_EQ(component->Commands.size(), 1);
}

TEST_F(MainWindowTest, CommandIsSentAgainForAnotherProjectWhereTheLayoutAsksForIt)
{
    ASSERT_TRUE(Window().OpenProject(MakeProject(House)));
    Window().Panes().LoadAll();
    const TTestComponent& component = Component(QStringLiteral("schedule"));
    EXPECT_EQ(component.Commands.size(), 1);
    const QString other = MakeProject(QStringLiteral("Anderes"));
    m_messages.Notes.clear();
    ASSERT_TRUE(Window().OpenProject(other));
    EXPECT_EQ(component.Commands.size(), 2);
    EXPECT_EQ(component.Commands.first(), component.Commands.last());
    // After the component has heard of the project itself.
    EXPECT_TRUE(m_messages.Notes.last().contains(other)) << m_messages.Notes.last().toStdString();
    ASSERT_TRUE(Window().CloseProject());
    EXPECT_EQ(component.Commands.size(), 2);
}

TEST_F(MainWindowTest, PanesThatGoNeverSeeTheOtherProject)
{
    ASSERT_TRUE(Window().OpenProject(MakeProject(House)));
    Window().Panes().LoadAll();
    m_messages.Notes.clear();
    ASSERT_TRUE(Window().OpenProject(MakeProject(QStringLiteral("Anderes"), TwoPanes)));
    EXPECT_FALSE(m_messages.Notes.contains(QStringLiteral("neu geladen")));
}

TEST_F(MainWindowTest, ProjectThatCannotBeOpenedLeavesThePreviousOneOpen)
{
    ASSERT_TRUE(Window().OpenProject(MakeProject(House)));
    const QString damaged = MakeProject(QStringLiteral("Kaputt"), TwoPanes);
    WriteAll(damaged + u'/' + TProject::ProjectFileName(), "{");
    EXPECT_FALSE(Window().OpenProject(damaged));
    EXPECT_EQ(Window().windowTitle(), QStringLiteral("Haus – Velmora Folders"));
    EXPECT_EQ(Window().Panes().Layout(), InstallationLayout());
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.first().contains(damaged));
}

TEST_F(MainWindowTest, DamagedLayoutIsReportedAndTheProjectOpens)
{
    EXPECT_TRUE(Window().OpenProject(MakeProject(House, "{")));
    EXPECT_EQ(m_messages.Errors.size(), 1);
    EXPECT_EQ(Window().Panes().Layout(), InstallationLayout());
    EXPECT_EQ(Window().windowTitle(), QStringLiteral("Haus – Velmora Folders"));
}

TEST_F(MainWindowTest, NewProjectIsMadeAndOpened)
{
    ASSERT_TRUE(Window().CreateProject(m_directory.filePath(QStringLiteral("Neu")), QStringLiteral("Neubau")));
    EXPECT_EQ(Window().windowTitle(), QStringLiteral("Neubau – Velmora Folders"));
}

TEST_F(MainWindowTest, NewProjectHoldsEmptyDocuments)
{
    const QString root = m_directory.filePath(QStringLiteral("Neu"));
    ASSERT_TRUE(Window().CreateProject(root, QStringLiteral("Neubau")));
    const auto empty = [](const QByteArray& name) {
        return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<" + name + ">\r\n</" + name + ">\r\n";
    };
    const QString data = root + QStringLiteral("/_config/data/");
    EXPECT_EQ(ReadAll(data + QStringLiteral("schedule/schedule.xml")), empty("eibnet"));
    EXPECT_EQ(ReadAll(data + QStringLiteral("scenes/scenes.xml")), empty("scenes"));
    EXPECT_EQ(ReadAll(data + QStringLiteral("scenes/trigger_allowed.xml")), empty("trigger"));
    EXPECT_EQ(ReadAll(data + QStringLiteral("scenes/actions_allowed.xml")), empty("actions"));
    EXPECT_TRUE(QFileInfo(data + QStringLiteral("schedule/schedule.xml")).isWritable());
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(MainWindowTest, NewProjectKeepsDocumentsThatAreThere)
{
    const QString root = m_directory.filePath(QStringLiteral("Neu"));
    const QString scenes = root + QStringLiteral("/_config/data/scenes");
    ASSERT_TRUE(QDir().mkpath(scenes));
    WriteAll(scenes + QStringLiteral("/scenes.xml"), "alt");
    ASSERT_TRUE(Window().CreateProject(root, QStringLiteral("Neubau")));
    EXPECT_EQ(ReadAll(scenes + QStringLiteral("/scenes.xml")), "alt");
    EXPECT_FALSE(ReadAll(scenes + QStringLiteral("/trigger_allowed.xml")).isEmpty());
}

TEST_F(MainWindowTest, NewProjectIsOpenedEvenIfADocumentIsMissing)
{
    const QString root = m_directory.filePath(QStringLiteral("Neu"));
    const QString schedule = root + QStringLiteral("/_config/data/schedule/schedule.xml");
    ASSERT_TRUE(QDir().mkpath(schedule));
    ASSERT_TRUE(Window().CreateProject(root, QStringLiteral("Neubau")));
    EXPECT_EQ(Window().windowTitle(), QStringLiteral("Neubau – Velmora Folders"));
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.first().contains(QStringLiteral("schedule.xml")));
}

TEST_F(MainWindowTest, NewProjectNeverReplacesOne)
{
    const QString root = MakeProject(House);
    EXPECT_FALSE(Window().CreateProject(root, QStringLiteral("Neubau")));
    EXPECT_EQ(m_messages.Errors.size(), 1);
}

TEST_F(MainWindowTest, KeyboardStartsInTheFirstPane)
{
    ShowTwoPanes();
    EXPECT_EQ(QApplication::focusWidget(), FieldOf("a"));
    EXPECT_EQ(Window().Panes().Active(), &Pane(QStringLiteral("a")));
}

TEST_F(MainWindowTest, F6GoesRoundThePanesAndTheMessages)
{
    ShowTwoPanes();
    Press(Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), FieldOf("b"));
    Press(Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), Window().Messages().findChild<QPlainTextEdit*>());
    Press(Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), FieldOf("a"));
    Press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), Window().Messages().findChild<QPlainTextEdit*>());
}

TEST_F(MainWindowTest, F6PassesClosedPanesBy)
{
    ShowTwoPanes();
    Pane(QStringLiteral("b")).close();
    Press(Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), Window().Messages().findChild<QPlainTextEdit*>());
}

TEST_F(MainWindowTest, MessagesDoNotTakeTheActiveRoleFromAPane)
{
    ShowTwoPanes();
    Window().Messages().FocusText();
    EXPECT_EQ(Window().Panes().Active(), &Pane(QStringLiteral("a")));
}

TEST_F(MainWindowTest, GeometryAndArrangementAreRemembered)
{
    ASSERT_TRUE(Window().OpenProject(MakeProject(House, TwoPanes)));
    Window().RememberArrangement();
    Window().show();
    Window().resize(700, 500);
    Window().addDockWidget(Qt::RightDockWidgetArea, &Pane(QStringLiteral("b")));
    Window().Messages().close();
    ASSERT_TRUE(Window().close());

    RestartWindow();
    Window().LoadProject(m_directory.filePath(House));
    Window().RememberArrangement();
    Window().show();
    EXPECT_EQ(Window().size(), QSize(700, 500));
    EXPECT_EQ(Window().dockWidgetArea(&Pane(QStringLiteral("b"))), Qt::RightDockWidgetArea);
    EXPECT_TRUE(Window().Messages().isHidden());
}

TEST_F(MainWindowTest, ArrangementIsRememberedForEachSetOfPanes)
{
    Window().RememberArrangement();
    const QString house = MakeProject(House, TwoPanes);
    ASSERT_TRUE(Window().OpenProject(house));
    Window().show();
    Window().addDockWidget(Qt::RightDockWidgetArea, &Pane(QStringLiteral("b")));
    ASSERT_TRUE(Window().OpenProject(MakeProject(QStringLiteral("Anderes"))));
    ASSERT_TRUE(Window().OpenProject(house));
    EXPECT_EQ(Window().dockWidgetArea(&Pane(QStringLiteral("b"))), Qt::RightDockWidgetArea);
}

TEST_F(MainWindowTest, NothingIsRememberedUnlessAsked)
{
    Window().show();
    Window().resize(700, 500);
    ASSERT_TRUE(Window().close());
    RestartWindow();
    EXPECT_EQ(Window().size(), QSize(1280, 800));
}

TEST_F(MainWindowTest, EditorsHaveMostOfTheRoomAndMessagesStandBelow)
{
    ShowTwoPanes();
    EXPECT_GT(Pane(QStringLiteral("a")).height(), Window().height() / 2);
    EXPECT_GT(Window().Messages().y(), Pane(QStringLiteral("a")).y());
    EXPECT_GT(Window().Messages().width(), Window().width() / 2);
}

TEST_F(MainWindowTest, ResetBringsClosedAndMovedPanesBack)
{
    ShowTwoPanes();
    Window().addDockWidget(Qt::RightDockWidgetArea, &Pane(QStringLiteral("b")));
    Pane(QStringLiteral("a")).close();
    Window().Messages().close();
    Window().ResetArrangement();
    EXPECT_EQ(Window().dockWidgetArea(&Pane(QStringLiteral("b"))), Qt::LeftDockWidgetArea);
    EXPECT_FALSE(Pane(QStringLiteral("a")).isHidden());
    EXPECT_FALSE(Window().Messages().isHidden());
}

} // namespace
