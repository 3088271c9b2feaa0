#include "ScheduleTree.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QFile>
#include <QMenu>

#include <array>

namespace
{

enum TStore : quint8
{
    stNothing,
    stCopied, // the datapoint "West" was copied
    stCut,    // the entry "08:45" was cut
};

enum TFileState : quint8
{
    fsExists,
    fsMissing,
    fsNotSet,
};

// What the user did, and what the menu then offers. The menu is opened over a node; over none for null.
struct TSituation
{
    const char* Name;
    std::vector<const char*> Selected;
    const char* Over;
    const char* Enabled;
    const char* Access = nullptr;        // the checked access level; "Eigenschaften" is shown instead when null
    const char* SelectedAfter = nullptr; // as before when null
    TStore Store = stNothing;
    bool DialogShown = false;
    TFileState File = fsExists;
};

void PrintTo(const TSituation& situation, std::ostream* stream)
{
    *stream << situation.Name;
}

class ScheduleMenu : public TScheduleTree
{
protected:
    void Arrange(const TSituation& situation) const
    {
        if (situation.File == fsNotSet) {
            m_frame->LoadSchedules({});
            m_frame->NewTreeNode(Root(), naAddChild, false, QStringLiteral("Licht"));
        }
        if (situation.File == fsMissing) {
            ASSERT_TRUE(QFile::remove(m_project.Schedule()));
        }
        if (situation.Store == stCopied)
            CopyNodes({"West"});
        if (situation.Store == stCut)
            CutNode("08:45");
        if (situation.DialogShown)
            ShowProperties("Küche");
        Select(situation.Selected);
    }
    static std::string Visible(const char* first)
    {
        return std::string(first) + ", Neue Gruppe, Neuer Datenpunkt, Neue Aktion, Ausschneiden, Kopieren, "
                                    "Einfügen, Löschen, Umbenennen, Neu laden, Exportieren";
    }
};

class ScheduleMenuSituation : public ScheduleMenu, public testing::WithParamInterface<TSituation>
{};

const std::array Situations{
    // Nothing selected
    TSituation{.Name = "NothingSelectedOverNothing",
               .Selected = {},
               .Over = nullptr,
               .Enabled = "Neue Gruppe, Neu laden, Exportieren"},
    TSituation{.Name = "NothingSelectedOverNothingWithACopy",
               .Selected = {},
               .Over = nullptr,
               .Enabled = "Neue Gruppe, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "NothingSelectedOverTheRoot",
               .Selected = {},
               .Over = "Wochenschaltplan",
               .Enabled = "Neue Gruppe, Neu laden, Exportieren"},
    TSituation{.Name = "NothingSelectedOverAGroup",
               .Selected = {},
               .Over = "Licht",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neu laden, Exportieren",
               .Access = "3"},
    TSituation{
        .Name = "NothingSelectedOverADatapoint", .Selected = {}, .Over = "Flur", .Enabled = "Neu laden, Exportieren"},
    TSituation{.Name = "NothingSelectedOverAnEntry",
               .Selected = {},
               .Over = "07:05",
               .Enabled = "Neu laden, Exportieren",
               .Store = stCut},
    // Over no node
    TSituation{.Name = "GroupSelectedOverNothing",
               .Selected = {"Licht"},
               .Over = nullptr,
               .Enabled = "Neue Gruppe, Neu laden, Exportieren"},
    TSituation{.Name = "DatapointSelectedOverNothingWithACopy",
               .Selected = {"Flur"},
               .Over = nullptr,
               .Enabled = "Neue Gruppe, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "EntrySelectedOverNothing",
               .Selected = {"07:05"},
               .Over = nullptr,
               .Enabled = "Neue Gruppe, Neu laden, Exportieren"},
    // The root
    TSituation{.Name = "Root",
               .Selected = {"Wochenschaltplan"},
               .Over = "Wochenschaltplan",
               .Enabled = "Neue Gruppe, Neu laden, Exportieren"},
    TSituation{.Name = "RootWithACutNode",
               .Selected = {"Wochenschaltplan"},
               .Over = "Wochenschaltplan",
               .Enabled = "Neue Gruppe, Neu laden, Exportieren",
               .Store = stCut},
    TSituation{.Name = "EntrySelectedOverTheRoot",
               .Selected = {"07:05"},
               .Over = "Wochenschaltplan",
               .Enabled = "Neue Gruppe, Neu laden, Exportieren",
               .Store = stCopied},
    // Groups
    TSituation{.Name = "Group",
               .Selected = {"Licht"},
               .Over = "Licht",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Kopieren, Löschen, Umbenennen, Neu laden, "
                          "Exportieren",
               .Access = "3"},
    TSituation{.Name = "ThirdGroupWithACopy",
               .Selected = {"Rollladen"},
               .Over = "Rollladen",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Kopieren, Löschen, Umbenennen, Neu laden, "
                          "Exportieren",
               .Access = "20",
               .Store = stCopied},
    TSituation{.Name = "EmptyGroupWithACutNode",
               .Selected = {"Urlaub"},
               .Over = "Urlaub",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Kopieren, Löschen, Umbenennen, Neu laden, "
                          "Exportieren",
               .Access = "0",
               .Store = stCut},
    TSituation{.Name = "SeveralGroups",
               .Selected = {"Licht", "Heizung"},
               .Over = "Heizung",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Löschen, Umbenennen, Neu laden, Exportieren",
               .Access = "5"},
    // Datapoints
    TSituation{.Name = "Datapoint",
               .Selected = {"Flur"},
               .Over = "Flur",
               .Enabled = "Eigenschaften, Neue Aktion, Ausschneiden, Kopieren, Löschen, Neu laden, Exportieren"},
    TSituation{.Name = "DatapointWithACopy",
               .Selected = {"Flur"},
               .Over = "Flur",
               .Enabled =
                   "Eigenschaften, Neue Aktion, Ausschneiden, Kopieren, Einfügen, Löschen, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "DatapointWithACutNode",
               .Selected = {"Flur"},
               .Over = "Flur",
               .Enabled =
                   "Eigenschaften, Neue Aktion, Ausschneiden, Kopieren, Einfügen, Löschen, Neu laden, Exportieren",
               .Store = stCut},
    TSituation{.Name = "SeveralDatapoints",
               .Selected = {"Flur", "Bad"},
               .Over = "Bad",
               .Enabled = "Neue Aktion, Ausschneiden, Kopieren, Löschen, Neu laden, Exportieren"},
    // Entries
    TSituation{.Name = "Entry",
               .Selected = {"07:05"},
               .Over = "07:05",
               .Enabled = "Eigenschaften, Neue Aktion, Ausschneiden, Kopieren, Löschen, Neu laden, Exportieren"},
    TSituation{.Name = "EntryWithACopy",
               .Selected = {"07:05"},
               .Over = "07:05",
               .Enabled =
                   "Eigenschaften, Neue Aktion, Ausschneiden, Kopieren, Einfügen, Löschen, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "EntryWithACutNode",
               .Selected = {"07:05"},
               .Over = "07:05",
               .Enabled =
                   "Eigenschaften, Neue Aktion, Ausschneiden, Kopieren, Einfügen, Löschen, Neu laden, Exportieren",
               .Store = stCut},
    TSituation{.Name = "SeveralEntriesWithACutNode",
               .Selected = {"07:05", "05:15"},
               .Over = "05:15",
               .Enabled = "Neue Aktion, Ausschneiden, Kopieren, Einfügen, Löschen, Neu laden, Exportieren",
               .Store = stCut},
    // Mixed
    TSituation{.Name = "MixedOverAGroup",
               .Selected = {"07:05", "Bad", "Licht"},
               .Over = "Licht",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Löschen, Umbenennen, Neu laden, Exportieren",
               .Access = "3",
               .Store = stCopied},
    TSituation{.Name = "MixedOverADatapoint",
               .Selected = {"Licht", "07:05", "Bad"},
               .Over = "Bad",
               .Enabled = "Neue Aktion, Ausschneiden, Kopieren, Einfügen, Löschen, Neu laden, Exportieren",
               .Store = stCopied},
    TSituation{.Name = "MixedWithTheRootOverAnEntry",
               .Selected = {"Wochenschaltplan", "07:05"},
               .Over = "07:05",
               .Enabled = "Neue Aktion, Ausschneiden, Kopieren, Neu laden, Exportieren"},
    TSituation{.Name = "MixedWithTheRootOverAGroup",
               .Selected = {"Wochenschaltplan", "Licht"},
               .Over = "Licht",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Umbenennen, Neu laden, Exportieren",
               .Access = "3"},
    // Another node than the selected one
    TSituation{.Name = "EntrySelectedOverAGroup",
               .Selected = {"07:05"},
               .Over = "Rollladen",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Kopieren, Löschen, Umbenennen, Neu laden, "
                          "Exportieren",
               .Access = "20",
               .SelectedAfter = "Rollladen",
               .Store = stCopied},
    TSituation{.Name = "GroupSelectedOverADatapoint",
               .Selected = {"Rollladen"},
               .Over = "Bad",
               .Enabled = "Eigenschaften, Neue Aktion, Ausschneiden, Kopieren, Löschen, Neu laden, Exportieren",
               .SelectedAfter = "Bad"},
    TSituation{.Name = "SeveralSelectedOverAnotherEntry",
               .Selected = {"07:05", "Bad"},
               .Over = "06:00",
               .Enabled = "Eigenschaften, Neue Aktion, Ausschneiden, Kopieren, Löschen, Neu laden, Exportieren",
               .SelectedAfter = "06:00"},
    TSituation{.Name = "RootSelectedOverAnEntry",
               .Selected = {"Wochenschaltplan"},
               .Over = "06:00",
               .Enabled = "Eigenschaften, Neue Aktion, Ausschneiden, Kopieren, Löschen, Neu laden, Exportieren",
               .SelectedAfter = "06:00"},
    // The dialog
    TSituation{.Name = "DatapointWithTheDialogShown",
               .Selected = {"Flur"},
               .Over = "Flur",
               .Enabled = "Neue Aktion, Ausschneiden, Kopieren, Löschen, Neu laden, Exportieren",
               .DialogShown = true},
    TSituation{.Name = "EntryWithTheDialogShown",
               .Selected = {"07:05"},
               .Over = "07:05",
               .Enabled = "Neue Aktion, Ausschneiden, Kopieren, Löschen, Neu laden, Exportieren",
               .DialogShown = true},
    TSituation{.Name = "GroupWithTheDialogShown",
               .Selected = {"Heizung"},
               .Over = "Heizung",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Kopieren, Löschen, Umbenennen, Neu laden, "
                          "Exportieren",
               .Access = "5",
               .DialogShown = true},
    // The file
    TSituation{.Name = "NothingSelectedWithoutTheFile",
               .Selected = {},
               .Over = nullptr,
               .Enabled = "Neue Gruppe, Exportieren",
               .File = fsMissing},
    TSituation{.Name = "GroupWithoutTheFile",
               .Selected = {"Licht"},
               .Over = "Licht",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Kopieren, Löschen, Umbenennen, Exportieren",
               .Access = "3",
               .File = fsMissing},
    TSituation{.Name = "GroupWithoutAFileName",
               .Selected = {"Licht"},
               .Over = "Licht",
               .Enabled = "Zugriffsebene, Neue Gruppe, Neuer Datenpunkt, Kopieren, Löschen, Umbenennen",
               .Access = "0",
               .File = fsNotSet},
    TSituation{.Name = "NothingSelectedWithoutAFileName",
               .Selected = {},
               .Over = nullptr,
               .Enabled = "Neue Gruppe",
               .File = fsNotSet},
};

} // namespace

TEST_P(ScheduleMenuSituation, ShowsAndEnablesWhatItsRulesSay)
{
    const TSituation& situation = GetParam();
    Arrange(situation);
    const std::string before = Selected();
    OpenMenu(situation.Over);
    EXPECT_TRUE(Menu()->isVisible());
    EXPECT_EQ(EnabledEntries(), situation.Enabled);
    EXPECT_EQ(VisibleEntries(), Visible(situation.Access ? "Zugriffsebene" : "Eigenschaften"));
    EXPECT_EQ(CheckedAccess(), situation.Access ? situation.Access : "");
    EXPECT_EQ(Selected(), situation.SelectedAfter ? situation.SelectedAfter : before);
    CloseMenu();
}

INSTANTIATE_TEST_SUITE_P(Menu, ScheduleMenuSituation, testing::ValuesIn(Situations),
                         [](const auto& situation) { return std::string(situation.param.Name); });

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
    EXPECT_EQ(VisibleEntries(), Visible("Zugriffsebene"));
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
