#include "PaneCommands.h"

#include "Pane.h"
#include "Vlerrors.h"
#include "WorkbenchSupport.h"

#include <QAction>
#include <QApplication>

namespace
{

// Two panes with the test component, the second of them named as the bar is.
class PaneCommandsTest : public TWorkbenchTest
{
protected:
    PaneCommandsTest()
    {
        TPaneSetup bar = TestPane(B, QStringLiteral("bar://"));
        bar.Class = QString::fromLatin1(ProgIdCmdButtons);
        Window().Panes().SetLayout({TestPane(A, QStringLiteral("x://")), bar});
        Window().show();
        QApplication::setActiveWindow(&Window());
        QApplication::processEvents();
        Pane(A).FocusContent();
    }

    // What an entry of a bar does; the message of its failure.
    static QString Run(const QString& command)
    {
        try {
            FolderManager().RunCommand(command);
        } catch (const TUserError& error) {
            return error.Message();
        }
        return {};
    }
    bool IsActive(const QString& id) { return Window().Panes().Active() == &Pane(id); }
};

} // namespace

TEST_F(PaneCommandsTest, PaneIsShownByItsName)
{
    EXPECT_EQ(Run(QStringLiteral("pane://b")), QString());
    EXPECT_TRUE(IsActive(B));
    EXPECT_EQ(Component(B).Commands, QStringList{QStringLiteral("bar://")});
    EXPECT_EQ(Run(QStringLiteral("PANE://a/")), QString());
    EXPECT_TRUE(IsActive(A));
}

TEST_F(PaneCommandsTest, ClosedPaneIsShownAgainWithItsComponent)
{
    EXPECT_TRUE(Pane(B).close());
    EXPECT_EQ(Run(QStringLiteral("pane://b")), QString());
    EXPECT_TRUE(Pane(B).isVisible());
    EXPECT_EQ(Component(B).Commands, QStringList{QStringLiteral("bar://")});
}

TEST_F(PaneCommandsTest, TextGoesToThePaneOfItsScheme)
{
    // The test component stands for every ProgID: the first pane of its class is meant.
    EXPECT_EQ(Run(QStringLiteral("velmora.cmdbuttons.1://%PRJPATH%/x?color=1")), QString());
    EXPECT_EQ(Component(A).Commands,
              QStringList({QStringLiteral("x://"), QStringLiteral("velmora.cmdbuttons.1://%PRJPATH%/x?color=1")}));
    EXPECT_EQ(Run(QStringLiteral("TTestComponent://y")), QString());
    EXPECT_EQ(Component(A).Commands.size(), 3);
}

TEST_F(PaneCommandsTest, TextThatNamesOnlyAComponentShowsItsPane)
{
    Pane(B).FocusContent();
    EXPECT_EQ(Run(QStringLiteral("TTestComponent://")), QString());
    EXPECT_TRUE(IsActive(A));
    EXPECT_EQ(Component(A).Commands, QStringList{QStringLiteral("x://")});
}

TEST_F(PaneCommandsTest, UnknownPanesAndComponentsAreErrors)
{
    for (const char* command :
         {"pane://c", "pane://", "pane://A", "Velmora.Unbekannt.1://x", "http://www.example.org/", "", "a"})
        EXPECT_FALSE(Run(QString::fromLatin1(command)).isEmpty()) << command;
}

TEST_F(PaneCommandsTest, ChangesAreAskedAboutBeforeATextReplacesThem)
{
    Component(A).Edit();
    EXPECT_EQ(Run(QStringLiteral("TTestComponent://y")), QString());
    EXPECT_EQ(m_asker.Asked.size(), 1);
    EXPECT_EQ(Component(A).Commands.size(), 1);
    EXPECT_EQ(Run(QStringLiteral("pane://a")), QString());
    EXPECT_EQ(m_asker.Asked.size(), 1);
    m_asker.Answer = TModifiedAnswer::Discard;
    EXPECT_EQ(Run(QStringLiteral("TTestComponent://y")), QString());
    EXPECT_EQ(Component(A).Commands.size(), 2);
}

TEST_F(PaneCommandsTest, CommandsOfTheMenuBarAreActionsThatEntriesCanName)
{
    for (const char* name : {"ProjectNew", "ProjectOpen", "ProjectClose", "OpenInBrowser", "NextPane", "Quit", "About"})
        EXPECT_NE(FolderManager().FindAction(QString::fromLatin1(name)), nullptr) << name;
    FolderManager().FindAction(QStringLiteral("nextpane"))->trigger();
    EXPECT_TRUE(IsActive(B));
}

TEST_F(PaneCommandsTest, NobodyTakesCommandsAfterTheWindow)
{
    {
        TMainWindow second(m_services.Clients(), m_asker);
    }
    EXPECT_EQ(Run(QStringLiteral("pane://b")), QString());
    RestartWindow();
    Window().Panes().SetLayout({});
    EXPECT_FALSE(Run(QStringLiteral("pane://b")).isEmpty());
}

TEST_F(PaneCommandsTest, ProgIdOfTheBarIsKnownWithoutAPackage)
{
    const THostServices services;
    EXPECT_EQ(services.Clients().ClassOf(QString::fromLatin1(ProgIdCmdButtons)), QStringLiteral("TICmdButtons"));
}
