#include "MenuTree.h"

#include <QAction>
#include <QMenu>

#include <array>

namespace
{

enum TShownDialog : quint8
{
    sdNone,
    sdMenu,
    sdLink,
};

// What the user did, and what the menu then offers. The menu is opened over a node; over none for null.
struct TSituation
{
    const char* Name;
    const char* Selected;
    const char* Over;
    const char* Visible;
    const char* Enabled;
    const char* SelectedAfter = nullptr; // as before when null
    const char* Cut = nullptr;
    const char* Keys = "";
    TShownDialog Dialog = sdNone;
};

void PrintTo(const TSituation& situation, std::ostream* stream)
{
    *stream << situation.Name;
}

class MenuSituation : public TMenuTree, public testing::WithParamInterface<TSituation>
{
protected:
    void Arrange(const TSituation& situation) const
    {
        if (*situation.Keys)
            Execute(*m_frame, situation.Keys);
        if (situation.Cut)
            CutNode(situation.Cut);
        if (situation.Dialog != sdNone)
            ShowProperties(situation.Dialog == sdMenu ? "Uhr" : "vTag");
        Select(situation.Selected);
    }
};

constexpr auto OverNothing = "Neu laden, Exportieren, Logo ...";
constexpr auto OverLinks = "Eigenschaften, Sensitiven Link hinzufügen, Löschen, Neu laden, Exportieren, Logo ...";
constexpr auto OverMenu =
    "Eigenschaften, Menupunkt einfügen, Menupunkt hinzufügen, Untermenu hinzufügen, Alarm-Menu hinzufügen, "
    "Config-Menu hinzufügen, Logout-Menu hinzufügen, Einfügen, Umbenennen, Ausschneiden, Löschen, Neu laden, "
    "Exportieren, Logo ...";

constexpr auto AllButNewLink = "Sensitiven Link hinzufügen, Neu laden, Exportieren, Logo ...";
constexpr auto ForASubItem = "Eigenschaften, Menupunkt einfügen, Menupunkt hinzufügen, Umbenennen, Ausschneiden, "
                             "Löschen, Neu laden, Exportieren, Logo ...";
constexpr auto ForAMainItem = "Eigenschaften, Menupunkt einfügen, Menupunkt hinzufügen, Untermenu hinzufügen, "
                              "Umbenennen, Ausschneiden, Löschen, Neu laden, Exportieren, Logo ...";
constexpr auto ForTheMenu = "Menupunkt einfügen, Menupunkt hinzufügen, Umbenennen, Ausschneiden, Neu laden, "
                            "Exportieren, Logo ...";

const std::array Situations{
    // Over no node
    TSituation{.Name = "NothingSelectedOverNothing",
               .Selected = nullptr,
               .Over = nullptr,
               .Visible = OverNothing,
               .Enabled = OverNothing},
    TSituation{.Name = "ItemSelectedOverNothing",
               .Selected = "Wetter",
               .Over = nullptr,
               .Visible = OverNothing,
               .Enabled = OverNothing,
               .Cut = "Uhr",
               .Keys = "x://?alarm=/a&config=/c&logout=/l"},
    TSituation{.Name = "LinkSelectedOverNothing",
               .Selected = "Tür",
               .Over = nullptr,
               .Visible = OverNothing,
               .Enabled = OverNothing},
    TSituation{.Name = "OverNothingWithoutAPath",
               .Selected = "Wetter",
               .Over = nullptr,
               .Visible = OverNothing,
               .Enabled = "Exportieren, Logo ...",
               .Keys = "x://?file="},
    // The links
    TSituation{.Name = "Link", .Selected = "Tür", .Over = "Tür", .Visible = OverLinks, .Enabled = OverLinks},
    TSituation{.Name = "NothingSelectedOverALink",
               .Selected = nullptr,
               .Over = "Tür",
               .Visible = OverLinks,
               .Enabled = "Eigenschaften, Sensitiven Link hinzufügen, Neu laden, Exportieren, Logo ..."},
    TSituation{.Name = "ItemSelectedOverALink",
               .Selected = "Wetter",
               .Over = "Tür",
               .Visible = OverLinks,
               .Enabled = OverLinks,
               .SelectedAfter = "Tür",
               .Cut = "Licht"},
    TSituation{.Name = "LinkWithTheLinkDialogShown",
               .Selected = "Tür",
               .Over = "Tür",
               .Visible = OverLinks,
               .Enabled = "Sensitiven Link hinzufügen, Löschen, Neu laden, Exportieren, Logo ...",
               .Dialog = sdLink},
    TSituation{.Name = "LinkWithTheMenuDialogShown",
               .Selected = "Tür",
               .Over = "Tür",
               .Visible = OverLinks,
               .Enabled = OverLinks,
               .Dialog = sdMenu},
    TSituation{.Name = "LinkRoot",
               .Selected = "Sensitive Links",
               .Over = "Sensitive Links",
               .Visible = OverLinks,
               .Enabled = AllButNewLink},
    TSituation{.Name = "NothingSelectedOverTheLinkRoot",
               .Selected = nullptr,
               .Over = "Sensitive Links",
               .Visible = OverLinks,
               .Enabled = AllButNewLink},
    TSituation{.Name = "LinkSelectedOverTheLinkRoot",
               .Selected = "Tür",
               .Over = "Sensitive Links",
               .Visible = OverLinks,
               .Enabled = AllButNewLink},
    TSituation{.Name = "ItemSelectedOverTheLinkRoot",
               .Selected = "Wetter",
               .Over = "Sensitive Links",
               .Visible = OverLinks,
               .Enabled = AllButNewLink,
               .Keys = "x://?alarm=/a"},
    TSituation{.Name = "LinkWithoutAPath",
               .Selected = "Tür",
               .Over = "Tür",
               .Visible = OverLinks,
               .Enabled = "Eigenschaften, Sensitiven Link hinzufügen, Löschen, Exportieren, Logo ...",
               .Keys = "x://?file="},
    // The menu
    TSituation{.Name = "MainItem", .Selected = "Start", .Over = "Start", .Visible = OverMenu, .Enabled = ForAMainItem},
    TSituation{.Name = "SubItem", .Selected = "Wetter", .Over = "Wetter", .Visible = OverMenu, .Enabled = ForASubItem},
    TSituation{.Name = "MenuRoot", .Selected = "Menu", .Over = "Menu", .Visible = OverMenu, .Enabled = ForTheMenu},
    TSituation{.Name = "NothingSelectedOverTheMenu",
               .Selected = nullptr,
               .Over = "Menu",
               .Visible = OverMenu,
               .Enabled = "Eigenschaften, Neu laden, Exportieren, Logo ..."},
    TSituation{.Name = "NothingSelectedOverAnItem",
               .Selected = nullptr,
               .Over = "Start",
               .Visible = OverMenu,
               .Enabled = "Eigenschaften, Neu laden, Exportieren, Logo ..."},
    TSituation{.Name = "SubItemSelectedOverTheMenu",
               .Selected = "Wetter",
               .Over = "Menu",
               .Visible = OverMenu,
               .Enabled = ForASubItem},
    TSituation{.Name = "LinkSelectedOverTheMenu",
               .Selected = "Tür",
               .Over = "Menu",
               .Visible = OverMenu,
               .Enabled = ForASubItem},
    TSituation{.Name = "LinkRootSelectedOverTheMenu",
               .Selected = "Sensitive Links",
               .Over = "Menu",
               .Visible = OverMenu,
               .Enabled = ForASubItem},
    TSituation{.Name = "LinkSelectedOverAMainItem",
               .Selected = "Tür",
               .Over = "Licht",
               .Visible = OverMenu,
               .Enabled = ForAMainItem,
               .SelectedAfter = "Licht"},
    TSituation{.Name = "MenuRootSelectedOverASubItem",
               .Selected = "Menu",
               .Over = "Flur",
               .Visible = OverMenu,
               .Enabled = ForASubItem,
               .SelectedAfter = "Flur"},
    // The dialogs
    TSituation{.Name = "SubItemWithTheMenuDialogShown",
               .Selected = "Wetter",
               .Over = "Wetter",
               .Visible = OverMenu,
               .Enabled = "Menupunkt einfügen, Menupunkt hinzufügen, Umbenennen, Ausschneiden, Löschen, Neu laden, "
                          "Exportieren, Logo ...",
               .Dialog = sdMenu},
    TSituation{.Name = "SubItemWithTheLinkDialogShown",
               .Selected = "Wetter",
               .Over = "Wetter",
               .Visible = OverMenu,
               .Enabled = ForASubItem,
               .Dialog = sdLink},
    // A cut node
    TSituation{.Name = "MainItemWithACutMainItem",
               .Selected = "Start",
               .Over = "Start",
               .Visible = OverMenu,
               .Enabled = "Eigenschaften, Menupunkt einfügen, Menupunkt hinzufügen, Untermenu hinzufügen, Einfügen, "
                          "Umbenennen, Ausschneiden, Löschen, Neu laden, Exportieren, Logo ...",
               .Cut = "Alarme"},
    TSituation{.Name = "MainItemWithACutSubItem",
               .Selected = "Start",
               .Over = "Start",
               .Visible = OverMenu,
               .Enabled = ForAMainItem,
               .Cut = "Flur"},
    TSituation{.Name = "SubItemWithACutSubItem",
               .Selected = "Wetter",
               .Over = "Wetter",
               .Visible = OverMenu,
               .Enabled = "Eigenschaften, Menupunkt einfügen, Menupunkt hinzufügen, Einfügen, Umbenennen, "
                          "Ausschneiden, Löschen, Neu laden, Exportieren, Logo ...",
               .Cut = "Flur"},
    TSituation{.Name = "SubItemWithACutMainItem",
               .Selected = "Wetter",
               .Over = "Wetter",
               .Visible = OverMenu,
               .Enabled = ForASubItem,
               .Cut = "Licht"},
    TSituation{.Name = "MenuRootWithACutMainItem",
               .Selected = "Menu",
               .Over = "Menu",
               .Visible = OverMenu,
               .Enabled = ForTheMenu,
               .Cut = "Licht"},
    TSituation{.Name = "NothingSelectedOverTheMenuWithACutMainItem",
               .Selected = nullptr,
               .Over = "Menu",
               .Visible = OverMenu,
               .Enabled = "Eigenschaften, Neu laden, Exportieren, Logo ...",
               .Cut = "Licht"},
    // The special items
    TSituation{.Name = "AlarmKey",
               .Selected = "Wetter",
               .Over = "Wetter",
               .Visible = OverMenu,
               .Enabled = "Eigenschaften, Menupunkt einfügen, Menupunkt hinzufügen, Alarm-Menu hinzufügen, "
                          "Umbenennen, Ausschneiden, Löschen, Neu laden, Exportieren, Logo ...",
               .Keys = "x://?alarm=/a"},
    TSituation{.Name = "ConfigKey",
               .Selected = "Wetter",
               .Over = "Wetter",
               .Visible = OverMenu,
               .Enabled = "Eigenschaften, Menupunkt einfügen, Menupunkt hinzufügen, Config-Menu hinzufügen, "
                          "Umbenennen, Ausschneiden, Löschen, Neu laden, Exportieren, Logo ...",
               .Keys = "x://?config=/c"},
    TSituation{.Name = "LogoutKey",
               .Selected = "Wetter",
               .Over = "Wetter",
               .Visible = OverMenu,
               .Enabled = "Eigenschaften, Menupunkt einfügen, Menupunkt hinzufügen, Logout-Menu hinzufügen, "
                          "Umbenennen, Ausschneiden, Löschen, Neu laden, Exportieren, Logo ...",
               .Keys = "x://?logout=/l"},
    TSituation{.Name = "NothingSelectedOverTheMenuWithAllKeys",
               .Selected = nullptr,
               .Over = "Menu",
               .Visible = OverMenu,
               .Enabled = "Eigenschaften, Alarm-Menu hinzufügen, Config-Menu hinzufügen, Logout-Menu hinzufügen, "
                          "Neu laden, Exportieren, Logo ...",
               .Keys = "x://?alarm=/a&config=/c&logout=/l"},
    TSituation{.Name = "EmptyKeys",
               .Selected = "Wetter",
               .Over = "Wetter",
               .Visible = OverMenu,
               .Enabled = ForASubItem,
               .Keys = "x://?alarm=&config=&logout="},
    // The path
    TSituation{.Name = "SubItemWithoutAPath",
               .Selected = "Wetter",
               .Over = "Wetter",
               .Visible = OverMenu,
               .Enabled = "Eigenschaften, Menupunkt einfügen, Menupunkt hinzufügen, Umbenennen, Ausschneiden, "
                          "Löschen, Exportieren, Logo ...",
               .Keys = "x://?file="},
};

} // namespace

TEST_P(MenuSituation, ShowsAndEnablesWhatItsRulesSay)
{
    const TSituation& situation = GetParam();
    Arrange(situation);
    const std::string before = Selected();
    OpenMenu(situation.Over);
    EXPECT_TRUE(Popup()->isVisible());
    EXPECT_EQ(VisibleEntries(), situation.Visible);
    EXPECT_EQ(EnabledEntries(), situation.Enabled);
    EXPECT_EQ(Selected(), situation.SelectedAfter ? situation.SelectedAfter : before);
    CloseMenu();
}

INSTANTIATE_TEST_SUITE_P(Menu, MenuSituation, testing::ValuesIn(Situations),
                         [](const auto& situation) { return std::string(situation.param.Name); });

// Beside the table

using MenuPopup = TMenuTree;

TEST_F(MenuPopup, HasItsTwentyTwoPositions)
{
    struct TExpected
    {
        const char* Caption = nullptr; // none for a separator
        const char* Name = nullptr;
    };
    constexpr std::array<TExpected, 22> Rows{{
        {"Eigenschaften", "MenuAction_AttributesExecute"},
        {},
        {"Sensitiven Link hinzufügen", "MenuAction_CreateLink"},
        {},
        {"Menupunkt einfügen", "MenuAction_CreateBeforeExecute"},
        {"Menupunkt hinzufügen", "MenuAction_CreateAfterExecute"},
        {"Untermenu hinzufügen", "MenuAction_SubmenuExecute"},
        {},
        {"Alarm-Menu hinzufügen", "MenuAction_InsertSpecExecute_1"},
        {"Config-Menu hinzufügen", "MenuAction_InsertSpecExecute_2"},
        {"Logout-Menu hinzufügen", "MenuAction_InsertSpecExecute_3"},
        {},
        {"Einfügen", "MenuAction_PasteBeforeExecute"},
        {"Umbenennen", "MenuAction_RenameExecute"},
        {"Ausschneiden", "MenuAction_CutExecute"},
        {},
        {"Löschen", "MenuAction_DeleteExecute"},
        {},
        {"Neu laden", "MenuAction_Reload"},
        {"Exportieren", "MenuAction_Export"},
        {},
        {"Logo ...", "MenuAction_LogoClick"},
    }};
    const QList<QAction*> actions = Popup()->actions();
    ASSERT_EQ(actions.size(), 22);
    for (std::size_t i = 0; i < Rows.size(); ++i) {
        const QAction* action = actions[static_cast<qsizetype>(i)];
        EXPECT_EQ(action->isSeparator(), !Rows[i].Caption) << i;
        if (action->isSeparator())
            continue;
        EXPECT_EQ(action->text().toStdString(), Rows[i].Caption);
        EXPECT_EQ(action->objectName().toStdString(), Rows[i].Name);
        EXPECT_TRUE(action->shortcut().isEmpty()) << i;
    }
}

TEST_F(MenuPopup, OffersAStrayItemWhatItOffersItems)
{
    WriteMenu("<menu><x><menuitem caption=\"Fremd\"/></x></menu>");
    Reload();
    Select("Fremd");
    OpenMenu("Fremd");
    EXPECT_EQ(VisibleEntries(), OverMenu);
    EXPECT_EQ(EnabledEntries(), ForASubItem);
    CloseMenu();
}

TEST_F(MenuPopup, OffersNoEntriesOfItemsBeforeAnythingIsLoaded)
{
    m_frame = std::make_unique<TMenuTreeFrame>();
    m_frame->show();
    OpenMenu(nullptr);
    EXPECT_EQ(EnabledEntries(), OverNothing);
    CloseMenu();
}

TEST_F(MenuPopup, GoesBackToTheSelectedNodeWhenItCloses)
{
    Select("Tür");
    OpenMenu(nullptr);
    EXPECT_EQ(VisibleEntries(), OverNothing);
    CloseMenu();
    EXPECT_EQ(VisibleEntries(), OverLinks);
}

TEST_F(MenuPopup, DoesNotOpenWhileTheTreeIsNotEditable)
{
    m_frame->SetEditable(false);
    OpenMenu("Start");
    EXPECT_FALSE(Popup()->isVisible());
    m_frame->SetEditable(true);
    OpenMenu("Start");
    EXPECT_TRUE(Popup()->isVisible());
    CloseMenu();
}
