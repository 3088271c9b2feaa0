#include "ScheduleTree.h"

#include <QAction>

using ScheduleDialogMoves = TScheduleTree;

// Another section

TEST_F(ScheduleDialogMoves, GoesToTheFirstChildOfTheGroupThatTheUserChooses)
{
    ShowProperties("Flur");
    Type("EditMaxVal", "9");
    Choose("CBoxPartSelector", 1);
    EXPECT_EQ(Selected(), "Bad");
    EXPECT_EQ(ShownDatapoint(), "1 40001 Bad [5..30] type=3 source=1 access=7 enabled=0");
    EXPECT_EQ(Node("Flur")->Data()->MaxVal, QStringLiteral("9"));
    EXPECT_FALSE(Dialog()->GetChanged());
    Choose("CBoxPartSelector", 0);
    EXPECT_EQ(Selected(), "Flur");
}

TEST_F(ScheduleDialogMoves, StaysForAGroupWithoutChildrenAndForASectionWithoutAGroup)
{
    Run("MenuAction_Reload");
    ShowProperties("West");
    Choose("CBoxPartSelector", 3);
    EXPECT_EQ(Selected(), "West");
    Choose("CBoxPartSelector", 4);
    EXPECT_EQ(Selected(), "West");
    Type("EditMaxVal", "9");
    Press("BtnApply");
    EXPECT_EQ(Node("West")->Data()->MaxVal, QStringLiteral("9"));
}

// Up and down

TEST_F(ScheduleDialogMoves, MovesAmongSiblingsAndSelectsThem)
{
    ShowProperties("07:05");
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "19:30");
    EXPECT_EQ(Dialog()->GetScheduleText().toStdString(), EntryText("19:30", "1111111", "0", 0, 1));
    Press("SBtnUp");
    EXPECT_EQ(Selected(), "07:05");
    Select({"Flur"});
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "Küche");
    Press("SBtnUp");
    EXPECT_EQ(Selected(), "Flur");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDialogMoves, DoesNotMoveBeyondTheLastAndTheFirstSibling)
{
    for (const auto& [name, button] : {std::pair{"19:30", "SBtnDown"},
                                       {"07:05", "SBtnUp"},
                                       {"Küche", "SBtnDown"},
                                       {"Flur", "SBtnUp"},
                                       {"Bad", "SBtnDown"},
                                       {"05:15", "SBtnUp"}}) {
        ShowProperties(name);
        Press(button);
        EXPECT_EQ(Selected(), name);
        Press("BtnCancel");
    }
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDialogMoves, AppliesAChangeWhenItMovesAndAtTheEnd)
{
    ShowProperties("Flur");
    Type("EditMaxVal", "8");
    Press("SBtnDown");
    EXPECT_EQ(Node("Flur")->Data()->MaxVal, QStringLiteral("8"));
    EXPECT_EQ(Selected(), "Küche");
    Type("EditMaxVal", "9");
    Press("SBtnDown");
    EXPECT_EQ(Node("Küche")->Data()->MaxVal, QStringLiteral("9"));
    EXPECT_EQ(Selected(), "Küche");
    EXPECT_FALSE(Dialog()->GetChanged());
}

TEST_F(ScheduleDialogMoves, DropsAChangeWhenItMovesWithoutAutomaticAcceptance)
{
    ShowProperties("Flur");
    Dialog()->SetAutoAccept(false);
    Type("EditMaxVal", "8");
    Press("SBtnDown");
    Type("EditMaxVal", "9");
    Press("SBtnDown");
    EXPECT_EQ(FieldText("EditMaxVal"), "9");
    EXPECT_FALSE(Dialog()->GetChanged());
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDialogMoves, DoesNotMoveWithoutANode)
{
    ShowProperties("Flur");
    Select({"Heizung"});
    Press("SBtnDown");
    Press("SBtnUp");
    EXPECT_EQ(Selected(), "Heizung");
    EXPECT_TRUE(m_frame->IsDialogConnected());
}

// A load

TEST_F(ScheduleDialogMoves, ForgetsItsNodeByALoadAndShowsTheNewSections)
{
    ShowProperties("Flur");
    Type("EditAlias", "Anders");
    Run("MenuAction_Reload");
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_EQ(Sections(), "Licht|Heizung|Rollladen|Urlaub|Licht|Heizung|Rollladen|Urlaub");
    Press("BtnApply");
    EXPECT_EQ(Below("Licht"), "Flur|Küche");
    EXPECT_TRUE(m_frame->IsDialogConnected());
}
