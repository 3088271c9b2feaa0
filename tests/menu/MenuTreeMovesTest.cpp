#include "MenuTree.h"

#include <QAction>
#include <QLineEdit>

// The up and down buttons of the dialogs.
using MenuMoves = TMenuTree;

TEST_F(MenuMoves, GoOverAllLevelsInReadingOrder)
{
    ShowProperties("Start");
    for (const char* next : {"Wetter", "Uhr", "Licht", "Flur", "Alarme"}) {
        Press("SBtnDown");
        EXPECT_EQ(Selected(), next);
        EXPECT_EQ(MenuDialog()->GetMenuName().toStdString(), next);
        EXPECT_FALSE(MenuDialog()->GetChanged());
    }
    for (const char* previous : {"Flur", "Licht", "Uhr", "Wetter", "Start"}) {
        Press("SBtnUp");
        EXPECT_EQ(Selected(), previous);
        EXPECT_EQ(MenuDialog()->GetMenuName().toStdString(), previous);
    }
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuMoves, NeverGoOntoARoot)
{
    ShowProperties("Start");
    Press("SBtnUp");
    EXPECT_EQ(Selected(), "Start");
    ShowProperties("Tür");
    Select("Alarme");
    ShowProperties("Alarme");
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "Alarme");
    EXPECT_EQ(MenuDialog()->GetMenuName(), QStringLiteral("Alarme"));
    ShowProperties("Außen");
    Press("SBtnUp");
    EXPECT_EQ(Selected(), "Außen");
    EXPECT_TRUE(m_frame->IsLinkDialogShown());
}

TEST_F(MenuMoves, GoAmongTheLinksAndStopAtTheLast)
{
    ShowProperties("Außen");
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "Tür");
    EXPECT_EQ(LinkDialog()->GetNodeAlias(), QStringLiteral("Tür"));
    Press("SBtnDown");
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "vTag");
    Press("SBtnUp");
    EXPECT_EQ(Selected(), "Tür");
}

TEST_F(MenuMoves, AcceptWhatWaits)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Anders");
    Press("SBtnDown");
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Anders"));
    EXPECT_EQ(Item("Uhr").Title, QString());
    EXPECT_TRUE(m_frame->IsModified());
    ShowProperties("vTag");
    Type("EditValue", "9");
    Press("SBtnUp");
    EXPECT_EQ(Item("vTag").Link, QStringLiteral("9"));
    EXPECT_EQ(Item("Tür").Link, QStringLiteral("0"));
}

TEST_F(MenuMoves, DropWhatWaitsWithoutAutomaticAcceptance)
{
    ShowProperties("Wetter");
    MenuDialog()->SetAutoAccept(false);
    Type("EditTitle", "Anders");
    Press("SBtnDown");
    EXPECT_EQ(MenuDialog()->GetMenuName(), QStringLiteral("Uhr"));
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Das Wetter"));
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuMoves, AcceptWhatWaitsAlsoWhereThereIsNowhereToGo)
{
    ShowProperties("Start");
    Type("EditTitle", "Anders");
    Press("SBtnUp");
    EXPECT_FALSE(MenuDialog()->GetChanged());
    EXPECT_EQ(MenuDialog()->GetMenuTitle(), QStringLiteral("Anders"));
    EXPECT_EQ(Item("Start").Title, QStringLiteral("Anders"));
}

TEST_F(MenuMoves, StartFromTheNodeThatIsShownNotFromTheSelectedOne)
{
    ShowProperties("Licht");
    Select("Menu");
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "Flur");
}

TEST_F(MenuMoves, StartFromALinkThatWasSelectedBesideTheMenuDialog)
{
    ShowProperties("Licht");
    Select("Tür");
    EXPECT_TRUE(m_frame->IsMenuDialogShown());
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "vTag");
    EXPECT_TRUE(m_frame->IsLinkDialogShown());
    EXPECT_FALSE(m_frame->IsMenuDialogShown());
    EXPECT_EQ(LinkDialog()->GetNodeAlias(), QStringLiteral("vTag"));
}

TEST_F(MenuMoves, GoIntoAClosedBranch)
{
    ShowProperties("Start");
    m_frame->collapseAll();
    Menu()->setExpanded(true);
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "Wetter");
    EXPECT_TRUE(Node("Start")->isExpanded());
}

TEST_F(MenuMoves, GoOnlyWhereTheySelectWhatTheyShow)
{
    WriteMenu("<menu><x><menuitem caption=\"Fremd\"/><menuitem caption=\"Kind\"/></x>"
              "<menuitem caption=\"Haupt\"/></menu>");
    Reload();
    ShowProperties("vTag");
    for (const char* next : {"Fremd", "Kind"}) {
        Press("SBtnDown");
        EXPECT_EQ(Selected(), next);
        EXPECT_TRUE(m_frame->IsMenuDialogShown());
        EXPECT_EQ(MenuDialog()->GetMenuName().toStdString(), next);
    }
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "Kind");
}
