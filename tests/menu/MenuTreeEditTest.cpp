#include "MenuTree.h"

#include <QAction>

namespace
{

constexpr auto Fresh = "Neuer Eintrag||| access=0 kind=0 type=0 source=0";

class MenuNodeModes : public TMenuTree
{
protected:
    TMenuNode* Make(const char* node, TNodeAttachMode mode) const
    {
        return m_frame->NewMenuNode(node ? Node(node) : nullptr, mode);
    }
    // Makes a node and gives its place: its parent and its index there.
    std::string PlaceOf(const char* node, TNodeAttachMode mode) const
    {
        const TMenuNode* made = Make(node, mode);
        const std::string place = NameOf(made->Parent()) + " " + std::to_string(made->Index());
        EXPECT_EQ(Record(made), Fresh);
        EXPECT_EQ(made->ImageIndex(), made->Level() < 2 ? miMainItem : miSubItem);
        EXPECT_EQ(made->SelectedIndex(), made->ImageIndex());
        EXPECT_EQ(m_frame->SelectedNode(), made);
        m_frame->RemoveBranches({m_frame->SelectedNode()});
        return place;
    }
    // An item that stands beside the roots, with one below it and one below that.
    void LoadStrays() const
    {
        WriteMenu("<menu><x><menuitem caption=\"Fremd\"/><menuitem caption=\"Kind\"/><menuitem caption=\"Enkel\"/></x>"
                  "<menuitem caption=\"Haupt\"/></menu>");
        Reload();
    }
};

using MenuEdit = TMenuTree;

} // namespace

// New nodes

TEST_F(MenuNodeModes, AddAppendsAsTheLastSibling)
{
    EXPECT_EQ(PlaceOf("Start", naAdd), "Menu 3");
    EXPECT_EQ(PlaceOf("Alarme", naAdd), "Menu 3");
    EXPECT_EQ(PlaceOf("Wetter", naAdd), "Start 2");
    EXPECT_EQ(PlaceOf("Menu", naAdd), "Menu 3");
}

TEST_F(MenuNodeModes, AddChildAppendsAsTheLastChild)
{
    EXPECT_EQ(PlaceOf("Start", naAddChild), "Start 2");
    EXPECT_EQ(PlaceOf("Alarme", naAddChild), "Alarme 0");
    EXPECT_EQ(PlaceOf("Uhr", naAddChild), "Uhr 0");
    EXPECT_EQ(PlaceOf("Menu", naAddChild), "Menu 3");
}

TEST_F(MenuNodeModes, InsertGoesJustBefore)
{
    EXPECT_EQ(PlaceOf("Licht", naInsert), "Menu 1");
    EXPECT_EQ(PlaceOf("Start", naInsert), "Menu 0");
    EXPECT_EQ(PlaceOf("Uhr", naInsert), "Start 1");
    EXPECT_EQ(PlaceOf("Menu", naInsert), "Menu 0");
}

TEST_F(MenuNodeModes, StayWithinTheMenuWithoutANodeOfIt)
{
    LoadStrays();
    for (const char* node : {static_cast<const char*>(nullptr), "Sensitive Links", "Tür", "Fremd", "Kind", "Enkel"}) {
        EXPECT_EQ(PlaceOf(node, naAdd), "Menu 1");
        EXPECT_EQ(PlaceOf(node, naAddChild), "Menu 1");
        EXPECT_EQ(PlaceOf(node, naInsert), "Menu 0");
    }
}

TEST_F(MenuNodeModes, OthersMakeNothing)
{
    const std::string before = Outline();
    for (const char* node : {static_cast<const char*>(nullptr), "Start", "Menu", "Tür"}) {
        EXPECT_EQ(Make(node, naAddFirst), nullptr);
        EXPECT_EQ(Make(node, naAddChildFirst), nullptr);
    }
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuNodeModes, MakeNothingWithoutAMenu)
{
    TMenuTreeFrame empty;
    EXPECT_EQ(empty.NewMenuNode(nullptr, naAdd), nullptr);
    EXPECT_EQ(empty.NewLinkNode(std::nullopt), nullptr);
    EXPECT_EQ(empty.TopNode(), nullptr);
    EXPECT_FALSE(empty.IsModified());
}

TEST_F(MenuNodeModes, GiveTheRepaintingBackAndMarkTheTree)
{
    Make("Start", naAdd);
    EXPECT_TRUE(m_frame->updatesEnabled());
    EXPECT_TRUE(m_frame->IsModified());
}

// New links

TEST_F(MenuEdit, LinkOfARecordIsTheLastOneAndSelected)
{
    const TMenuNode* made = m_frame->NewLinkNode(TVlMenuItem{.Caption = QStringLiteral("Tor"),
                                                             .Title = QStringLiteral("1/2/3"),
                                                             .Access = 7,
                                                             .Kind = mkLink,
                                                             .DataType = dtmEIS6,
                                                             .Source = nsVIRTUAL});
    EXPECT_EQ(Below(Links()), "Außen|Tür|vTag|Tor");
    EXPECT_EQ(Record(made), "Tor|1/2/3|| access=7 kind=4 type=1 source=2");
    EXPECT_EQ(made->ImageIndex(), miSubItem);
    EXPECT_TRUE(m_frame->IsLink(made));
    EXPECT_EQ(Selected(), "Tor");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(MenuEdit, LinkOfARecordWithoutACaptionIsNamedByItsTitle)
{
    const TMenuNode* made = m_frame->NewLinkNode(TVlMenuItem{.Title = QStringLiteral("1/2/3"), .Kind = mkLink});
    EXPECT_EQ(Record(made), "1/2/3|1/2/3|| access=0 kind=4 type=0 source=0");
    EXPECT_EQ(NameOf(made), "1/2/3");
}

TEST_F(MenuEdit, NewLinkIsTheLastOneAndSelected)
{
    for (const char* node : {"Tür", "Sensitive Links"}) {
        RunOn(node, "MenuAction_CreateLink");
        EXPECT_EQ(m_frame->SelectedNode(), Links()->Child(Links()->Count() - 1));
        EXPECT_EQ(Selected(), "Neuer Eintrag");
    }
    EXPECT_EQ(Below(Links()), "Außen|Tür|vTag|Neuer Eintrag|Neuer Eintrag");
    EXPECT_EQ(Record("Neuer Eintrag"), "Neuer Eintrag||| access=0 kind=4 type=0 source=0");
    EXPECT_TRUE(m_frame->IsModified());
}

// By the menu

TEST_F(MenuEdit, AddingToTheFirstOfThreeMainItemsAppendsAfterTheThird)
{
    RunOn("Start", "MenuAction_CreateAfterExecute");
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme|Neuer Eintrag");
    EXPECT_EQ(Selected(), "Neuer Eintrag");
}

TEST_F(MenuEdit, AddingToASubItemAppendsASubItem)
{
    RunOn("Wetter", "MenuAction_CreateAfterExecute");
    EXPECT_EQ(Below("Start"), "Wetter|Uhr|Neuer Eintrag");
    EXPECT_EQ(Node("Neuer Eintrag")->ImageIndex(), miSubItem);
}

TEST_F(MenuEdit, InsertingGoesBeforeTheSelectedItem)
{
    RunOn("Licht", "MenuAction_CreateBeforeExecute");
    EXPECT_EQ(Below(Menu()), "Start|Neuer Eintrag|Licht|Alarme");
    EXPECT_EQ(Selected(), "Neuer Eintrag");
    RunOn("Menu", "MenuAction_CreateBeforeExecute");
    EXPECT_EQ(Below(Menu()), "Neuer Eintrag|Start|Neuer Eintrag|Licht|Alarme");
}

TEST_F(MenuEdit, SubMenuIsAppendedToAMainItem)
{
    RunOn("Licht", "MenuAction_SubmenuExecute");
    EXPECT_EQ(Below("Licht"), "Flur|Neuer Eintrag");
    EXPECT_EQ(Selected(), "Neuer Eintrag");
    EXPECT_EQ(Node("Neuer Eintrag")->ImageIndex(), miSubItem);
}

TEST_F(MenuEdit, SubMenuIsForMainItemsOnly)
{
    const std::string before = Outline();
    for (const char* node : {static_cast<const char*>(nullptr), "Menu", "Wetter", "Sensitive Links", "Tür"}) {
        Select(node);
        m_frame->MenuAction_SubmenuExecute();
        EXPECT_FALSE(Action("MenuAction_SubmenuExecute")->isEnabled());
    }
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuEdit, ItemsForASelectedLinkGoIntoTheMenu)
{
    Select("Tür");
    OpenMenu("Menu");
    Run("MenuAction_CreateAfterExecute");
    CloseMenu();
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme|Neuer Eintrag");
    EXPECT_EQ(Below(Links()), "Außen|Tür|vTag");
}

TEST_F(MenuEdit, LevelThreeItemIsExportedFlatAndReadAsASubItem)
{
    m_frame->NewMenuNode(Node("Wetter"), naAddChild);
    Export();
    EXPECT_TRUE(WrittenMenu().contains("<menuitem id=\"mi2\" class=\"sub\" caption=\"Neuer Eintrag\" title=\"\" "
                                       "link=\"\" help=\"\" access=\"0\" />\r\n<menuitem id=\"mi3\" class=\"sub\" "
                                       "caption=\"Uhr\""));
    Reload();
    EXPECT_EQ(Below("Start"), "Wetter|Neuer Eintrag|Uhr");
}
