#include "ScheduleTree.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QFile>
#include <QMenu>

#include <array>

// The popup menu beside its table of states.
using ScheduleMenu = TScheduleTree;

TEST_F(ScheduleMenu, HasItsFifteenPositions)
{
    struct TExpected
    {
        const char* Caption;
        const char* Shortcut;
        const char* Name;
    };
    constexpr std::array<TExpected, 15> Rows{{
        {"Eigenschaften", "", "MenuAction_AttributesExecute"},
        {"Zugriffsebene", "", "SetGroupAccess"},
        {nullptr, nullptr, nullptr},
        {"Neue Gruppe", "", "MenuAction_CreateGroupExecute"},
        {"Neuer Datenpunkt", "", "MenuAction_CreateNodeExecute"},
        {"Neue Aktion", "", "MenuAction_CreateScheduleExecute"},
        {nullptr, nullptr, nullptr},
        {"Ausschneiden", "Ctrl+X", "MenuAction_CutExecute"},
        {"Kopieren", "Ctrl+C", "MenuAction_CopyExecute"},
        {"Einfügen", "Ctrl+V", "MenuAction_PasteBeforeExecute"},
        {"Löschen", "Del", "MenuAction_DeleteExecute"},
        {"Umbenennen", "", "MenuAction_RenameExecute"},
        {nullptr, nullptr, nullptr},
        {"Neu laden", "", "MenuAction_Reload"},
        {"Exportieren", "", "MenuAction_Export"},
    }};
    const QList<QAction*> actions = Menu()->actions();
    ASSERT_EQ(actions.size(), 15);
    for (std::size_t i = 0; i < Rows.size(); ++i) {
        const QAction* action = actions[static_cast<qsizetype>(i)];
        EXPECT_EQ(action->isSeparator(), !Rows[i].Caption) << i;
        if (action->isSeparator())
            continue;
        EXPECT_EQ(action->text().toStdString(), Rows[i].Caption);
        EXPECT_EQ(action->shortcut(), QKeySequence(QString::fromLatin1(Rows[i].Shortcut))) << i;
        EXPECT_EQ(action->objectName().toStdString(), Rows[i].Name);
    }
}

TEST_F(ScheduleMenu, HidesTheAccessLevelsAtFirst)
{
    m_frame = std::make_unique<TScheduleTreeFrame>();
    m_frame->show();
    EXPECT_FALSE(Action("SetGroupAccess")->isVisible());
    EXPECT_TRUE(Action("MenuAction_AttributesExecute")->isVisible());
}

TEST_F(ScheduleMenu, FocusesTheNodeUnderTheMouseAndKeepsASelectionAroundIt)
{
    Select({"07:05", "Bad", "05:15"});
    OpenMenu("Bad");
    EXPECT_EQ(m_frame->SelectedNode(), Node("Bad"));
    EXPECT_EQ(Selected(), "07:05|Bad|05:15");
    CloseMenu();
}

TEST_F(ScheduleMenu, GoesBackToTheSelectedNodeWhenItCloses)
{
    Select({"07:05"});
    OpenMenu(nullptr);
    EXPECT_FALSE(Action("MenuAction_DeleteExecute")->isEnabled());
    CloseMenu();
    EXPECT_TRUE(Action("MenuAction_DeleteExecute")->isEnabled());
    EXPECT_FALSE(Action("MenuAction_CreateGroupExecute")->isEnabled());
}

TEST_F(ScheduleMenu, OpensForTheSelectedNodeByTheKeyboard)
{
    Select({"Licht"});
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), m_frame->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(m_frame->viewport(), &event);
    EXPECT_TRUE(Menu()->isVisible());
    EXPECT_TRUE(Action("SetGroupAccess")->isVisible());
    EXPECT_EQ(CheckedAccess(), "3");
    CloseMenu();
}

TEST_F(ScheduleMenu, OffersNoEntriesOfADatapointForANodeBelowAnEntry)
{
    m_frame->NewTreeNode(Node("06:00"), naAddChild, false, QStringLiteral("Darunter"));
    Select({"Darunter"});
    OpenMenu("Darunter");
    EXPECT_EQ(EnabledEntries(), "Eigenschaften, Neue Aktion, Ausschneiden, Kopieren, Löschen, Neu laden, Exportieren");
    CloseMenu();
    m_frame->SetModified(false);
    Run("MenuAction_CreateScheduleExecute");
    Run("MenuAction_AttributesExecute");
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_FALSE(m_frame->IsDialogConnected());
}

TEST_F(ScheduleMenu, EnablesWhatAFileThatAppearsAllows)
{
    const QString file = m_project.Schedule();
    ASSERT_TRUE(QFile::rename(file, file + QStringLiteral(".away")));
    OpenMenu(nullptr);
    EXPECT_EQ(EnabledEntries(), "Neue Gruppe, Exportieren");
    CloseMenu();
    ASSERT_TRUE(QFile::rename(file + QStringLiteral(".away"), file));
    OpenMenu(nullptr);
    EXPECT_EQ(EnabledEntries(), "Neue Gruppe, Neu laden, Exportieren");
    CloseMenu();
}

TEST_F(ScheduleMenu, ShowsOnlyNeueGruppeBeforeAnythingIsLoaded)
{
    m_frame = std::make_unique<TScheduleTreeFrame>();
    m_frame->show();
    OpenMenu(nullptr);
    EXPECT_EQ(EnabledEntries(), "Neue Gruppe");
    Run("MenuAction_CreateGroupExecute");
    EXPECT_EQ(m_frame->Root(), nullptr);
    EXPECT_EQ(GroupNames(), "");
    CloseMenu();
}

TEST_F(ScheduleMenu, DoesNotOpenWhileTheTreeIsNotEditable)
{
    m_frame->SetEditable(false);
    OpenMenu("Licht");
    EXPECT_FALSE(Menu()->isVisible());
    m_frame->SetEditable(true);
    OpenMenu("Licht");
    EXPECT_TRUE(Menu()->isVisible());
    CloseMenu();
}
