#include "MessagePane.h"
#include "Pane.h"
#include "PaneMenu.h"
#include "WorkbenchSupport.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QMenuBar>
#include <QTest>

namespace
{

const QByteArray TitledPanes = R"({"format":1,"panes":[
    {"id":"a","title":"Erster","class":"TTestComponent"},
    {"id":"b","title":"Zweiter","class":"TTestComponent"}]})";

class MainWindowMenus : public TWorkbenchTest
{
protected:
    MainWindowMenus()
    {
        Window().OpenProject(MakeProject(QStringLiteral("Haus"), TitledPanes));
        Window().show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&Window()));
        Window().Panes().LoadAll();
        Window().FocusFirstPane();
    }

    // As it looks when the user opens it.
    QMenu& Menu(const char* name)
    {
        auto* menu = Window().findChild<QMenu*>(QString::fromLatin1(name));
        Q_EMIT menu->aboutToShow();
        return *menu;
    }

    QStringList Entries(const char* menu)
    {
        QStringList entries;
        for (const QAction* action : Menu(menu).actions())
            entries.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        return entries;
    }

    QAction* Command(const char* name) { return Window().findChild<QAction*>(QString::fromLatin1(name)); }
};

TEST_F(MainWindowMenus, BarHasItsMenusInOrder)
{
    QStringList titles;
    for (const QAction* action : Window().menuBar()->actions())
        titles.append(action->text());
    EXPECT_EQ(titles, (QStringList{QStringLiteral("&Projekt"), QStringLiteral("&Erster"), QStringLiteral("&Ansicht"),
                                   QStringLiteral("&Hilfe")}));
}

TEST_F(MainWindowMenus, PaneMenuShowsTheActionsOfTheActivePane)
{
    EXPECT_EQ(Menu("PaneMenu").actions(), Component(QStringLiteral("a")).actions());
    EXPECT_EQ(Entries("PaneMenu"), (QStringList{QStringLiteral("Exportieren"), QStringLiteral("-"),
                                                QStringLiteral("Gesperrt"), QStringLiteral("Verborgen")}));
    EXPECT_FALSE(Menu("PaneMenu").actions().at(2)->isEnabled());
    EXPECT_FALSE(Menu("PaneMenu").actions().at(3)->isVisible());
}

TEST_F(MainWindowMenus, PaneMenuFollowsTheActivePane)
{
    Window().StepPane(1);
    EXPECT_EQ(Menu("PaneMenu").title(), QStringLiteral("&Zweiter"));
    EXPECT_EQ(Menu("PaneMenu").actions(), Component(QStringLiteral("b")).actions());
}

TEST_F(MainWindowMenus, PaneMenuAsksForThePresentStateWhenItOpens)
{
    const int before = Component(QStringLiteral("a")).UpdateCount;
    Menu("PaneMenu");
    EXPECT_GT(Component(QStringLiteral("a")).UpdateCount, before);
}

TEST_F(MainWindowMenus, PaneMenuOfAClosedPaneIsDisabled)
{
    Pane(QStringLiteral("b")).close();
    Pane(QStringLiteral("a")).close();
    EXPECT_FALSE(Menu("PaneMenu").menuAction()->isEnabled());
}

TEST_F(MainWindowMenus, ActionRunsFromTheMenu)
{
    Menu("PaneMenu").actions().first()->trigger();
    EXPECT_EQ(Component(QStringLiteral("a")).Exports, 1);
}

TEST_F(MainWindowMenus, ShortcutsWorkInTheirOwnPaneOnly)
{
    QTest::keyClick(Component(QStringLiteral("a")).Field, Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(Component(QStringLiteral("a")).Exports, 1);
    Window().StepPane(1);
    QTest::keyClick(Component(QStringLiteral("b")).Field, Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(Component(QStringLiteral("a")).Exports, 1);
    EXPECT_EQ(Component(QStringLiteral("b")).Exports, 1);
}

TEST_F(MainWindowMenus, ViewMenuListsEveryPane)
{
    EXPECT_EQ(Entries("ViewMenu").first(3),
              (QStringList{QStringLiteral("Erster"), QStringLiteral("Zweiter"), QStringLiteral("Meldungen")}));
    Menu("ViewMenu").actions().at(2)->trigger();
    EXPECT_TRUE(Window().Messages().isHidden());
}

TEST_F(MainWindowMenus, ViewMenuFollowsTheLayout)
{
    ASSERT_TRUE(Window().CloseProject());
    EXPECT_EQ(Entries("ViewMenu").first(10),
              (QStringList{QStringLiteral("Szenen"), QStringLiteral("Wochenschaltplan"), QStringLiteral("Menu"),
                           QStringLiteral("EIB"), QStringLiteral("Modbus"), QStringLiteral("Virtuell"),
                           QStringLiteral("Befehle"), QStringLiteral("Projektdateien"), QStringLiteral("Wochenansicht"),
                           QStringLiteral("Meldungen")}));
}

TEST_F(MainWindowMenus, ProjectCanBeClosedOnlyWhileOneIsOpen)
{
    EXPECT_TRUE(Command("ProjectClose")->isEnabled());
    Command("ProjectClose")->trigger();
    EXPECT_EQ(UserManager()->GetActiveProject(), nullptr);
    EXPECT_FALSE(Command("ProjectClose")->isEnabled());
}

TEST_F(MainWindowMenus, RecentProjectOpensByItsEntry)
{
    const QString other = MakeProject(QStringLiteral("Anderes & mehr"));
    ASSERT_TRUE(Window().OpenProject(other));
    ASSERT_TRUE(Window().CloseProject());
    Menu("ProjectMenu");
    const auto entries = Menu("RecentMenu").actions();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_TRUE(entries.first()->text().startsWith(QStringLiteral("&1  ")));
    EXPECT_TRUE(entries.first()->text().endsWith(QStringLiteral("Anderes && mehr")));
    entries.first()->trigger();
    EXPECT_EQ(UserManager()->GetActiveProject()->GetName(), QStringLiteral("Anderes & mehr"));
}

TEST_F(MainWindowMenus, ExportedMenuOpensInTheBrowser)
{
    TOpenedUrls opened;
    QDir(m_directory.path()).mkpath(QStringLiteral("Haus/_menu"));
    const QString page = m_directory.filePath(QStringLiteral("Haus/_menu/menu.html"));
    WriteAll(page, "<html/>");
    Command("OpenInBrowser")->trigger();
    EXPECT_EQ(opened.Urls(), QList<QUrl>{QUrl::fromLocalFile(page)});
    EXPECT_EQ(m_messages.Errors, QStringList());
}

TEST_F(MainWindowMenus, PageThatTheMenusCommandNamesOpensInTheBrowser)
{
    TOpenedUrls opened;
    QDir(m_directory.path()).mkpath(QStringLiteral("Haus/_menu"));
    WriteAll(m_directory.filePath(QStringLiteral("Haus/_menu/menu.html")), "<html/>");
    Pane(QStringLiteral("b")).Execute(QStringLiteral("Velmora.MenuTree.1://?out=%PRJPATH%\\visu\\start.html"));
    Command("OpenInBrowser")->trigger();
    EXPECT_EQ(opened.Urls(), QList<QUrl>());
    ASSERT_EQ(m_messages.Errors.size(), 1);
    const QString page = m_directory.filePath(QStringLiteral("Haus/visu/start.html"));
    EXPECT_TRUE(m_messages.Errors.first().contains(page));

    QDir(m_directory.path()).mkpath(QStringLiteral("Haus/visu"));
    WriteAll(page, "<html/>");
    Command("OpenInBrowser")->trigger();
    EXPECT_EQ(opened.Urls(), QList<QUrl>{QUrl::fromLocalFile(page)});
    EXPECT_EQ(m_messages.Errors.size(), 1);
}

TEST_F(MainWindowMenus, ProgramThatTheMenusCommandNamesAsItsPageRunsOnlyAfterAQuestion)
{
    TOpenedUrls opened;
    const QString page = m_directory.filePath(QStringLiteral("Haus/start.desktop"));
    WriteAll(page, "[Desktop Entry]\nType=Application\nExec=a\n");
    Pane(QStringLiteral("b")).Execute(QStringLiteral("Velmora.MenuTree.1://?out=%PRJPATH%\\start.desktop"));
    m_messages.Answer = false;
    Command("OpenInBrowser")->trigger();
    EXPECT_EQ(opened.Urls(), QList<QUrl>());
    ASSERT_EQ(m_messages.Questions.size(), 1);
    EXPECT_TRUE(m_messages.Questions.first().contains(page));
    EXPECT_EQ(m_messages.Errors, QStringList());

    m_messages.Answer = true;
    Command("OpenInBrowser")->trigger();
    EXPECT_EQ(opened.Urls(), QList<QUrl>{QUrl::fromLocalFile(page)});
}

TEST_F(MainWindowMenus, FolderIsNoPage)
{
    TOpenedUrls opened;
    Pane(QStringLiteral("b")).Execute(QStringLiteral("Velmora.MenuTree.1://?out=%PRJPATH%"));
    Command("OpenInBrowser")->trigger();
    EXPECT_EQ(opened.Urls(), QList<QUrl>());
    EXPECT_EQ(m_messages.Errors.size(), 1);
}

TEST_F(MainWindowMenus, MenuThatWasNotExportedIsNamed)
{
    TOpenedUrls opened;
    Command("OpenInBrowser")->trigger();
    EXPECT_EQ(opened.Urls(), QList<QUrl>());
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.first().contains(QStringLiteral("Exportieren Sie zuerst das Menu.")));
}

TEST_F(MainWindowMenus, BrowserNeedsAProject)
{
    EXPECT_TRUE(Command("OpenInBrowser")->isEnabled());
    Window().CloseProject();
    EXPECT_FALSE(Command("OpenInBrowser")->isEnabled());
}

TEST_F(MainWindowMenus, QuitClosesTheWindow)
{
    Command("Quit")->trigger();
    EXPECT_FALSE(Window().isVisible());
}

TEST_F(MainWindowMenus, NoShortcutIsGivenTwice)
{
    QStringList shortcuts;
    for (const QAction* action : Window().findChildren<QAction*>()) {
        if (!action->shortcut().isEmpty() && action->shortcutContext() != Qt::WidgetWithChildrenShortcut)
            shortcuts.append(action->shortcut().toString());
    }
    EXPECT_GE(shortcuts.size(), 6);
    EXPECT_EQ(shortcuts.removeDuplicates(), 0);
}

TEST(Mnemonic, IsTheFirstFreeLetter)
{
    EXPECT_EQ(WithMnemonic(QStringLiteral("Szenen"), u"PAH"), QStringLiteral("&Szenen"));
    EXPECT_EQ(WithMnemonic(QStringLiteral("Ablauf"), u"PAH"), QStringLiteral("A&blauf"));
    EXPECT_EQ(WithMnemonic(QStringLiteral("Haha"), u"PAH"), QStringLiteral("Haha"));
    EXPECT_EQ(WithMnemonic(QStringLiteral("A & B"), u"PAH"), QStringLiteral("A && &B"));
}

} // namespace
