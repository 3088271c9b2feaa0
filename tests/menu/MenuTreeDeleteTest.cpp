#include "MenuTree.h"

#include <QAction>

namespace
{

constexpr auto Delete = "MenuAction_DeleteExecute";
const auto Question = QStringLiteral("Eintrag löschen?");

using MenuDelete = TMenuTree;

} // namespace

TEST_F(MenuDelete, AsksAndDeletesWithAllBelow)
{
    RunOn("Start", Delete);
    EXPECT_EQ(m_messages.Questions, QStringList({Question}));
    EXPECT_EQ(Outline(), "Menu\n  Licht\n    Flur\n  Alarme\nSensitive Links\n  Außen\n  Tür\n  vTag");
    EXPECT_TRUE(m_frame->IsModified());
    EXPECT_TRUE(m_frame->updatesEnabled());
}

TEST_F(MenuDelete, OfASubItemLeavesItsSiblings)
{
    RunOn("Wetter", Delete);
    EXPECT_EQ(Below("Start"), "Uhr");
}

TEST_F(MenuDelete, OfALinkAsksTheSame)
{
    RunOn("Tür", Delete);
    EXPECT_EQ(m_messages.Questions, QStringList({Question}));
    EXPECT_EQ(Below(Links()), "Außen|vTag");
    Export();
    EXPECT_FALSE(WrittenLinks().contains("40001"));
    EXPECT_TRUE(WrittenLinks().contains("id=\"lk1\" class=\"link\" name=\"vTag\""));
}

TEST_F(MenuDelete, DoesNothingAfterNo)
{
    const std::string before = Outline();
    m_messages.Answer = false;
    RunOn("Start", Delete);
    RunOn("Tür", Delete);
    EXPECT_EQ(m_messages.Questions.size(), 2);
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuDelete, NeitherAsksForARootNorDeletesIt)
{
    const std::string before = Outline();
    for (const char* root : {"Menu", "Sensitive Links"}) {
        Select(root);
        EXPECT_FALSE(Action(Delete)->isEnabled()) << root;
        m_frame->MenuAction_DeleteExecute();
        OpenMenu("Menu");
        Run(Delete);
        CloseMenu();
    }
    Select(nullptr);
    m_frame->MenuAction_DeleteExecute();
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    EXPECT_EQ(Outline(), before);
}

TEST_F(MenuDelete, TakesTheSelectedNodeNotTheRootUnderTheMouse)
{
    Select("Tür");
    OpenMenu("Menu");
    Run(Delete);
    CloseMenu();
    EXPECT_EQ(Below(Links()), "Außen|vTag");
    EXPECT_EQ(Below(Menu()), "Start|Licht|Alarme");
}

TEST_F(MenuDelete, OfTheLastNodesLeavesEmptyRoots)
{
    for (const char* node : {"Start", "Licht", "Alarme", "Außen", "Tür", "vTag"})
        RunOn(node, Delete);
    EXPECT_EQ(Outline(), "Menu\nSensitive Links");
    Export();
    EXPECT_EQ(WrittenLinks(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<links>\r\n</links>\r\n");
    EXPECT_TRUE(WrittenMenu().endsWith("helpbase=\"\">\r\n</menu>\r\n"));
}

TEST_F(MenuDelete, OfAStrayItemTakesItAway)
{
    WriteMenu("<menu><x><menuitem caption=\"Fremd\"/></x></menu>");
    Reload();
    RunOn("Fremd", Delete);
    EXPECT_EQ(Outline(), "Menu\nSensitive Links\n  Außen\n  Tür\n  vTag");
}

TEST_F(MenuDelete, OfTheNodeInTheDialogShowsTheNodeThatIsSelectedThen)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Verloren");
    Run(Delete);
    EXPECT_EQ(Selected(), "Uhr");
    EXPECT_EQ(ShownItem(), "Uhr||/uhr.html| access=0");
    m_frame->SetModified(false);
    Press("BtnOK");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuDelete, OfTheLastLinkInTheDialogLetsTheDialogChangeNothing)
{
    for (const char* node : {"Außen", "vTag"})
        RunOn(node, Delete);
    ShowProperties("Tür");
    Type("EditValue", "9");
    Run(Delete);
    EXPECT_EQ(Below(Links()), "");
    m_frame->SetModified(false);
    Press("BtnApply");
    Press("SBtnUp");
    Press("BtnOK");
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_FALSE(m_frame->IsLinkDialogShown());
    EXPECT_EQ(Outline(), "Menu\n  Start\n    Wetter\n    Uhr\n  Licht\n    Flur\n  Alarme\nSensitive Links");
}
