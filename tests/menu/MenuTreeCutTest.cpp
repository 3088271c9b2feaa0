#include "MenuTree.h"

#include <QAction>

namespace
{

class MenuCut : public TMenuTree
{
protected:
    // With this node selected and the mouse over the menu's root: the way to the entries for a link, too.
    void RunOverMenu(const char* selected, const char* name) const
    {
        Select(selected);
        OpenMenu("Menu");
        Run(name);
        CloseMenu();
    }
    void ExpectUntouched(const std::string& before) const
    {
        EXPECT_EQ(Outline(), before);
        EXPECT_FALSE(m_frame->IsModified());
    }
};

constexpr auto Cut = "MenuAction_CutExecute";
constexpr auto Paste = "MenuAction_PasteBeforeExecute";

} // namespace

TEST_F(MenuCut, MarksTheNodeAndChangesNothing)
{
    const std::string before = Outline();
    CutNode("Wetter");
    EXPECT_TRUE(Node("Wetter")->Cut());
    ExpectUntouched(before);
}

TEST_F(MenuCut, TakesTheMarkFromThePreviousCutNode)
{
    CutNode("Wetter");
    CutNode("Licht");
    EXPECT_FALSE(Node("Wetter")->Cut());
    EXPECT_TRUE(Node("Licht")->Cut());
}

TEST_F(MenuCut, NeverTakesARoot)
{
    const std::string before = Outline();
    CutNode("Wetter");
    for (const char* root : {"Menu", "Sensitive Links"}) {
        RunOverMenu(root, Cut);
        EXPECT_FALSE(Node(root)->Cut()) << root;
        EXPECT_FALSE(Action(Paste)->isEnabled()) << root;
    }
    m_frame->MenuAction_PasteBeforeExecute();
    ExpectUntouched(before);
}

TEST_F(MenuCut, MainItemGoesBeforeTheSelectedOneWithItsSubItems)
{
    const TMenuNode* node = Node("Licht");
    const std::string record = Record("Licht");
    CutNode("Licht");
    PasteOn("Start");
    EXPECT_EQ(Below(Menu()), "Licht|Start|Alarme");
    EXPECT_EQ(Below("Licht"), "Flur");
    EXPECT_EQ(Node("Licht"), node);
    EXPECT_EQ(Record("Licht"), record);
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(MenuCut, SubItemGoesBeforeTheSelectedOneOfAnotherMainItem)
{
    CutNode("Uhr");
    PasteOn("Flur");
    EXPECT_EQ(Below("Start"), "Wetter");
    EXPECT_EQ(Below("Licht"), "Uhr|Flur");
    EXPECT_EQ(Node("Uhr")->ImageIndex(), miSubItem);
}

TEST_F(MenuCut, LinkGoesBeforeTheSelectedLink)
{
    RunOverMenu("vTag", Cut);
    RunOverMenu("Außen", Paste);
    EXPECT_EQ(Below(Links()), "vTag|Außen|Tür");
    EXPECT_TRUE(m_frame->IsLink(Node("vTag")));
}

TEST_F(MenuCut, MarkStaysOnThePastedNodeAndThePasteIsSpent)
{
    CutNode("Uhr");
    PasteOn("Wetter");
    EXPECT_EQ(Below("Start"), "Uhr|Wetter");
    EXPECT_TRUE(Node("Uhr")->Cut());
    Select("Flur");
    EXPECT_FALSE(Action(Paste)->isEnabled());
    m_frame->MenuAction_PasteBeforeExecute();
    EXPECT_EQ(Below("Licht"), "Flur");
}

TEST_F(MenuCut, OtherLevelsAreRefused)
{
    const std::string before = Outline();
    CutNode("Wetter");
    for (const char* node : {"Menu", "Licht", "Sensitive Links"}) {
        Select(node);
        EXPECT_FALSE(Action(Paste)->isEnabled()) << node;
        Run(Paste);
    }
    CutNode("Licht");
    for (const char* node : {"Menu", "Wetter"}) {
        Select(node);
        EXPECT_FALSE(Action(Paste)->isEnabled()) << node;
        Run(Paste);
    }
    ExpectUntouched(before);
    EXPECT_TRUE(Node("Licht")->Cut());
}

TEST_F(MenuCut, ItemIsNeverPastedAmongTheLinks)
{
    const std::string before = Outline();
    CutNode("Licht");
    RunOverMenu("Tür", Paste);
    ExpectUntouched(before);
}

TEST_F(MenuCut, LinkIsNeverPastedAmongTheItems)
{
    const std::string before = Outline();
    RunOverMenu("Tür", Cut);
    RunOverMenu("Licht", Paste);
    ExpectUntouched(before);
    EXPECT_TRUE(m_frame->IsLink(Node("Tür")));
}

TEST_F(MenuCut, ItemIsNeverPastedWhereNoExportFindsIt)
{
    WriteMenu("<menu><x><menuitem caption=\"Fremd\"/><menuitem caption=\"Kind\"/></x>"
              "<menuitem caption=\"Haupt\"/></menu>");
    Reload();
    const std::string before = Outline();
    CutNode("Haupt");
    PasteOn("Kind");
    ExpectUntouched(before);
    CutNode("Kind");
    PasteOn("Haupt");
    ExpectUntouched(before);
    CutNode("Fremd");
    Select("Menu");
    Run(Paste);
    ExpectUntouched(before);
}

TEST_F(MenuCut, MainItemIsNotPastedBeforeItsOwnDescendant)
{
    const std::string before = Outline();
    CutNode("Start");
    Select("Uhr");
    m_frame->MenuAction_PasteBeforeExecute();
    ExpectUntouched(before);
    EXPECT_EQ(Below("Start"), "Wetter|Uhr");
}

TEST_F(MenuCut, NodePastedOnItselfStays)
{
    const std::string before = Outline();
    for (const char* node : {"Licht", "Wetter"}) {
        CutNode(node);
        PasteOn(node);
    }
    ExpectUntouched(before);
}

TEST_F(MenuCut, DeletedNodeIsForgotten)
{
    CutNode("Uhr");
    RunOn("Uhr", "MenuAction_DeleteExecute");
    Select("Wetter");
    EXPECT_FALSE(Action(Paste)->isEnabled());
    m_frame->MenuAction_PasteBeforeExecute();
    EXPECT_EQ(Below("Start"), "Wetter");
}

TEST_F(MenuCut, NodeDeletedWithItsMainItemIsForgotten)
{
    CutNode("Uhr");
    RunOn("Start", "MenuAction_DeleteExecute");
    Select("Flur");
    EXPECT_FALSE(Action(Paste)->isEnabled());
    m_frame->MenuAction_PasteBeforeExecute();
    EXPECT_EQ(Below("Licht"), "Flur");
}

TEST_F(MenuCut, NodeIsForgottenByALoad)
{
    CutNode("Uhr");
    Reload();
    Select("Wetter");
    EXPECT_FALSE(Action(Paste)->isEnabled());
    EXPECT_FALSE(Node("Uhr")->Cut());
}

TEST_F(MenuCut, PastedOrderIsExported)
{
    CutNode("Alarme");
    PasteOn("Start");
    Export();
    Reload();
    EXPECT_EQ(Below(Menu()), "Alarme|Start|Licht");
    EXPECT_TRUE(WrittenMenu().contains("id=\"mi0\" class=\"main\" caption=\"Alarme\""));
}
