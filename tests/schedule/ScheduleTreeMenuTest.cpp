#include "ScheduleTree.h"

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

class ScheduleMenuSituation : public TScheduleTree, public testing::WithParamInterface<TSituation>
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
