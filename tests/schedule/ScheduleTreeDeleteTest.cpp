#include "ScheduleTree.h"

#include <QAction>

namespace
{

class ScheduleDelete : public TScheduleTree
{
protected:
    void Delete(const std::vector<const char*>& names) const
    {
        Select(names);
        PressKey(Qt::Key_Delete);
    }
};

} // namespace

TEST_F(ScheduleDelete, AsksAndDeletesOnYes)
{
    Delete({"06:00"});
    EXPECT_EQ(m_messages.Questions, QStringList({QStringLiteral("Element löschen?")}));
    EXPECT_EQ(Below("Küche"), "");
    EXPECT_EQ(Selected(), "");
    EXPECT_TRUE(m_frame->IsModified());
    EXPECT_TRUE(m_frame->updatesEnabled());
}

TEST_F(ScheduleDelete, LeavesEverythingUnchangedOnNo)
{
    m_messages.Answer = false;
    const std::string before = Outline();
    Delete({"Licht", "Bad"});
    EXPECT_EQ(m_messages.Questions.size(), 1);
    EXPECT_EQ(Outline(), before);
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_EQ(Selected(), "Licht|Bad");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDelete, ForgetsCopyAndCutAlsoOnNo)
{
    m_messages.Answer = false;
    CopyNodes({"West"});
    Delete({"Bad"});
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    CutNode("West");
    Delete({"Bad"});
    EXPECT_FALSE(Node("West")->Cut());
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
}

TEST_F(ScheduleDelete, AsksOnceForSeveralNodesOfAllLevels)
{
    Delete({"07:05", "Bad", "Rollladen", "Süd", "08:45"});
    EXPECT_EQ(m_messages.Questions.size(), 1);
    EXPECT_EQ(Outline(), "Wochenschaltplan\n  Licht\n    Flur\n      19:30\n    Küche\n      06:00\n"
                         "  Heizung\n  Urlaub");
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Urlaub");
}

TEST_F(ScheduleDelete, TakesDatapointsAndEntriesWithTheirGroup)
{
    Run("MenuAction_Export");
    Delete({"Licht"});
    Run("MenuAction_Export");
    EXPECT_FALSE(Exported().contains("Flur"));
    EXPECT_FALSE(Exported().contains("07:05"));
    EXPECT_TRUE(Exported().contains("<eibnet>\r\n<nodes name=\"Heizung\""));
}

TEST_F(ScheduleDelete, DoesNothingForTheRootAndWithoutASelection)
{
    const std::string before = Outline();
    Delete({"Wochenschaltplan"});
    Delete({});
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDelete, LeavesTheRootOfASelectionByItsShortCut)
{
    Delete({"Wochenschaltplan", "07:05", "Licht"});
    EXPECT_EQ(m_messages.Questions.size(), 1);
    EXPECT_EQ(Below(Root()), "Heizung|Rollladen|Urlaub");
    EXPECT_EQ(GroupNames(), "Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleDelete, IsDoneByTheMenuToo)
{
    Select({"Licht"});
    OpenMenu("Heizung");
    Run("MenuAction_DeleteExecute");
    CloseMenu();
    EXPECT_EQ(Below(Root()), "Licht|Rollladen|Urlaub");
}

// The names of groups

TEST_F(ScheduleDelete, TakesTheNamesOfSeveralGroupsWhateverTheOrderOfTheSelection)
{
    Delete({"Heizung", "Urlaub", "Licht"});
    EXPECT_EQ(Below(Root()), "Rollladen");
    EXPECT_EQ(GroupNames(), "Rollladen");
}

TEST_F(ScheduleDelete, TakesTheNameAtTheIndexOfAGroupAlsoWhenThatIsOneOfAnEarlierLoad)
{
    Run("MenuAction_Reload");
    ASSERT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub|Licht|Heizung|Rollladen|Urlaub");
    Delete({"Heizung"});
    EXPECT_EQ(GroupNames(), "Licht|Rollladen|Urlaub|Licht|Heizung|Rollladen|Urlaub");
    Delete({"Licht", "Urlaub"});
    EXPECT_EQ(GroupNames(), "Rollladen|Licht|Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleDelete, TakesNoNameForAGroupBehindTheEndOfTheList)
{
    CopyNodes({"West"});
    PasteOn("Licht");
    ASSERT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub|West");
    m_frame->SelectNode(LastGroup());
    PressKey(Qt::Key_Delete);
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleDelete, TakesNoNameForADatapointOrAnEntry)
{
    Delete({"Flur", "05:15"});
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleDelete, SendsTheNamesToADialogThatIsShown)
{
    ShowProperties("Bad");
    Delete({"Licht"});
    EXPECT_TRUE(m_frame->IsDialogConnected());
    EXPECT_EQ(Sections(), "Heizung|Rollladen|Urlaub");
}

// The node in the dialog

TEST_F(ScheduleDelete, OfTheNodeInTheDialogLeavesTheDialogWithoutOne)
{
    for (const char* deleted : {"Flur", "Licht"}) {
        ShowProperties("Flur");
        Delete({deleted});
        const std::string after = Outline();
        EXPECT_TRUE(m_frame->IsDialogConnected());
        Type("EditAlias", "Anders");
        Press("BtnApply");
        Press("SBtnDown");
        Press("BtnOK");
        EXPECT_FALSE(m_frame->IsDialogConnected());
        EXPECT_EQ(Outline(), after);
        Run("MenuAction_Reload");
    }
}

TEST_F(ScheduleDelete, OfTheEntryInTheDialogLeavesItsSiblingsAlone)
{
    ShowProperties("07:05");
    Type("EditValue", "77");
    Delete({"07:05"});
    Press("BtnOK");
    Run("MenuAction_Export");
    EXPECT_EQ(Below("Flur"), "19:30");
    EXPECT_FALSE(Exported().contains("77"));
}

TEST_F(ScheduleDelete, LeavesATreeThatCanBeUsedAtOnce)
{
    Delete({"Licht", "Heizung", "Rollladen", "Urlaub"});
    EXPECT_EQ(Outline(), "Wochenschaltplan");
    Run("MenuAction_CreateGroupExecute");
    Run("MenuAction_CreateNodeExecute");
    Run("MenuAction_CreateScheduleExecute");
    EXPECT_EQ(Outline(), "Wochenschaltplan\n  Neue Gruppe\n    Neuer Datenpunkt\n      00:00");
    EXPECT_EQ(GroupNames(), "Neue Gruppe");
}
