#include "ScheduleTree.h"

#include <QAction>

namespace
{

class ScheduleCopyPaste : public TScheduleTree
{
protected:
    void ExportAndReload() const
    {
        Run("MenuAction_Export");
        Run("MenuAction_Reload");
        m_frame->expandAll();
    }
};

} // namespace

// Copying a group

TEST_F(ScheduleCopyPaste, CopyOfAGroupIsAppendedWithItsDatapointsButWithoutTheirEntries)
{
    CopyNodes({"Licht"});
    ASSERT_EQ(Root()->Count(), 5);
    EXPECT_EQ(TextOf(LastGroup()), "Kopie von Licht");
    EXPECT_EQ(LastGroup()->GroupAccess(), 3);
    EXPECT_EQ(LastGroup()->ImageIndex(), 1);
    EXPECT_EQ(Below(LastGroup()), "Flur|Küche");
    EXPECT_EQ(Below(LastGroup()->Child(0)), "");
    EXPECT_EQ(Below(LastGroup()->Child(1)), "");
    EXPECT_EQ(Record(LastGroup()->Child(0)), Record("Flur"));
    EXPECT_NE(LastGroup()->Child(0)->Data(), Node("Flur")->Data());
    EXPECT_EQ(LastGroup()->Child(0)->ImageIndex(), 2);
    EXPECT_EQ(Below("Flur"), "07:05|19:30");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleCopyPaste, CopyOfAGroupKeepsTheSelectionAndCanBeMadeFromTheMenu)
{
    Select({"Heizung"});
    Run("MenuAction_CopyExecute");
    Run("MenuAction_CopyExecute");
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub|Kopie von Heizung|Kopie von Heizung");
    EXPECT_EQ(Selected(), "Heizung");
}

TEST_F(ScheduleCopyPaste, CopyOfAGroupBecomesASectionAlsoInTheDialog)
{
    ShowProperties("Bad");
    CopyNodes({"Heizung"});
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub|Kopie von Heizung");
    EXPECT_EQ(Sections(), GroupNames());
}

TEST_F(ScheduleCopyPaste, CopyOfAGroupCopiesTheOneInFocusOfSeveral)
{
    CopyNodes({"Licht", "Heizung"});
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub|Kopie von Heizung");
}

TEST_F(ScheduleCopyPaste, CopyOfAGroupLeavesOutWhatIsNoDatapointThere)
{
    CutNode("05:15");
    PasteOn("Heizung");
    ASSERT_EQ(Below("Heizung"), "05:15|Bad");
    CopyNodes({"Heizung"});
    EXPECT_EQ(Below(LastGroup()), "Bad");
}

TEST_F(ScheduleCopyPaste, CopyOfAGroupIsNoCopyForAPaste)
{
    CopyNodes({"Licht"});
    Select({"Bad"});
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    PressPaste();
    EXPECT_EQ(Below("Heizung"), "Bad");
}

// Copying datapoints

TEST_F(ScheduleCopyPaste, CopyOfADatapointChangesNothingYet)
{
    const std::string before = Outline();
    CopyNodes({"Flur"});
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_TRUE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
}

TEST_F(ScheduleCopyPaste, CopyOfAnEntryOrTheRootIsNothingAndKeepsTheCopyBefore)
{
    for (const char* node : {"07:05", "Wochenschaltplan"}) {
        CopyNodes({node});
        Select({"Bad"});
        EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled()) << node;
    }
    CopyNodes({"Flur"});
    CopyNodes({"07:05"});
    CopyNodes({"Wochenschaltplan"});
    PasteOn("Bad");
    EXPECT_EQ(Below("Heizung"), "Bad|Flur");
}

TEST_F(ScheduleCopyPaste, CopyForgetsACutNode)
{
    for (const char* copied : {"Bad", "05:15", "Licht", "Wochenschaltplan"}) {
        CutNode("08:45");
        CopyNodes({copied});
        EXPECT_FALSE(Node("08:45")->Cut()) << copied;
        m_frame->MenuAction_DeleteExecute();
        m_frame->LoadSchedules(m_frame->GetDocumentPath());
    }
}

TEST_F(ScheduleCopyPaste, PasteOnTheThirdGroupOrALaterPutsCopiesIntoIt)
{
    for (const char* group : {"Rollladen", "Urlaub"}) {
        CopyNodes({"Flur"});
        PasteOn(group);
        const TScheduleNode* made = Node(group)->Child(Node(group)->Count() - 1);
        EXPECT_EQ(TextOf(made), "Flur");
        EXPECT_EQ(Record(made), "id=-1 name=1/1/1 alias=Flur source=0 type=0 access=2 enabled=1 min=0 max=1");
        EXPECT_EQ(made->Count(), 0);
        EXPECT_EQ(made->ImageIndex(), 2);
    }
    EXPECT_EQ(Below("Rollladen"), "Süd|West|Flur");
    EXPECT_EQ(Below("Urlaub"), "Flur");
    EXPECT_EQ(Below("Licht"), "Flur|Küche");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleCopyPaste, PasteOnTheFirstOrSecondGroupPutsCopiesBesideItWithoutARecord)
{
    for (const char* group : {"Licht", "Heizung"}) {
        CopyNodes({"Flur"});
        PasteOn(group);
        EXPECT_EQ(TextOf(LastGroup()), "Flur");
        EXPECT_EQ(Record(LastGroup()), "none");
        EXPECT_EQ(LastGroup()->ImageIndex(), 1);
        EXPECT_EQ(LastGroup()->GroupAccess(), 0);
    }
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub|Flur|Flur");
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_EQ(Below("Licht"), "Flur|Küche");
}

TEST_F(ScheduleCopyPaste, PasteOnADatapointPutsCopiesBehindItsSiblings)
{
    CopyNodes({"West"});
    PasteOn("Flur");
    EXPECT_EQ(Below("Licht"), "Flur|Küche|West");
    EXPECT_EQ(Record(Node("Licht")->Child(2)), Record("West"));
    EXPECT_EQ(Node("Licht")->Child(2)->Data()->Name, QStringLiteral("vWest"));
}

TEST_F(ScheduleCopyPaste, PasteOnAnEntryPutsCopiesBehindItsSiblingsWithoutARecord)
{
    CopyNodes({"West"});
    PasteOn("07:05");
    EXPECT_EQ(Below("Flur"), "07:05|19:30|West");
    EXPECT_EQ(Record(Node("Flur")->Child(2)), "none");
    EXPECT_EQ(Node("Flur")->Child(2)->ImageIndex(), 3);
}

TEST_F(ScheduleCopyPaste, PasteOnTheRootMakesNothingAndForgetsTheCopy)
{
    CopyNodes({"West"});
    PasteOn("Wochenschaltplan");
    EXPECT_EQ(m_frame->topLevelItemCount(), 1);
    EXPECT_FALSE(m_frame->IsModified());
    PasteOn("Bad");
    EXPECT_EQ(Below("Heizung"), "Bad");
}

TEST_F(ScheduleCopyPaste, PasteWithoutASelectionMakesNothingAndForgetsTheCopy)
{
    CopyNodes({"West"});
    Select({});
    PressPaste();
    PasteOn("Bad");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleCopyPaste, PasteIsDoneOnce)
{
    CopyNodes({"West"});
    PasteOn("Bad");
    PasteOn("Flur");
    EXPECT_EQ(Below("Heizung"), "Bad|West");
    EXPECT_EQ(Below("Licht"), "Flur|Küche");
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
}

TEST_F(ScheduleCopyPaste, PasteKeepsTheOrderOfTheSelection)
{
    CopyNodes({"West", "Flur", "Bad"});
    PasteOn("Urlaub");
    EXPECT_EQ(Below("Urlaub"), "West|Flur|Bad");
}

TEST_F(ScheduleCopyPaste, PasteSkipsWhatHasNoRecord)
{
    CopyNodes({"07:05", "Licht", "West", "Wochenschaltplan", "05:15", "Bad"});
    PasteOn("Urlaub");
    EXPECT_EQ(Below("Urlaub"), "West|Bad");
}

TEST_F(ScheduleCopyPaste, PasteSkipsADatapointWithoutARecord)
{
    CutNode("05:15");
    PasteOn("Heizung");
    ASSERT_EQ(Below("Heizung"), "05:15|Bad");
    CopyNodes({"05:15", "Bad"});
    PasteOn("Urlaub");
    EXPECT_EQ(Below("Urlaub"), "Bad");
}

TEST_F(ScheduleCopyPaste, PasteTakesWhatStandsAtThePlacesOfTheCopiedNodesByThen)
{
    CopyNodes({"Süd"});
    m_frame->RemoveBranches({Node("07:05"), Node("19:30")});
    PasteOn("Urlaub");
    EXPECT_EQ(Below("Urlaub"), "West");
}

TEST_F(ScheduleCopyPaste, PasteSkipsEntriesThatMovedToThePlacesOfTheCopiedNodes)
{
    CopyNodes({"Küche", "Bad"});
    m_frame->RemoveBranches({Node("07:05")});
    PasteOn("Urlaub");
    EXPECT_EQ(Below("Urlaub"), "");
}

TEST_F(ScheduleCopyPaste, PasteTakesTheDatapointAsItIsByThen)
{
    CopyNodes({"West"});
    Node("West")->Data()->Alias = QStringLiteral("Westen");
    Node("West")->Data()->MaxVal = QStringLiteral("9");
    PasteOn("Bad");
    EXPECT_EQ(TextOf(Node("Heizung")->Child(1)), "Westen");
    EXPECT_EQ(Node("Heizung")->Child(1)->Data()->MaxVal, QStringLiteral("9"));
}

TEST_F(ScheduleCopyPaste, PasteSkipsPlacesThatAreGone)
{
    CopyNodes({"West", "Flur"});
    m_frame->RemoveBranches({Node("Rollladen"), Node("Urlaub")});
    PasteOn("Bad");
    EXPECT_EQ(Below("Heizung"), "Bad|Flur");
}

TEST_F(ScheduleCopyPaste, PasteLooksUpAllPlacesBeforeTheFirstInsertion)
{
    // The first copy goes in front of the places of the others.
    CopyNodes({"Küche", "Bad", "West"});
    PasteOn("Flur");
    EXPECT_EQ(Below("Licht"), "Flur|Küche|Küche|Bad|West");
}

TEST_F(ScheduleCopyPaste, PasteOnTheNodeThatWasCopiedDuplicatesIt)
{
    CopyNodes({"Flur"});
    PressPaste();
    EXPECT_EQ(Below("Licht"), "Flur|Küche|Flur");
}

TEST_F(ScheduleCopyPaste, PasteOnTheNodeInFocusOfSeveral)
{
    CopyNodes({"West"});
    Select({"Flur", "Bad"});
    PressPaste();
    EXPECT_EQ(Below("Heizung"), "Bad|West");
    EXPECT_EQ(Below("Licht"), "Flur|Küche");
}

TEST_F(ScheduleCopyPaste, LoadForgetsTheCopy)
{
    CopyNodes({"West"});
    Run("MenuAction_Reload");
    PasteOn("Bad");
    EXPECT_EQ(Below("Heizung"), "Bad");
}

// What is written then

TEST_F(ScheduleCopyPaste, DatapointPastedBesideAGroupIsWrittenAsAnEmptyGroup)
{
    CopyNodes({"Bad"});
    PasteOn("Licht");
    Run("MenuAction_Export");
    EXPECT_EQ(Exported(),
              Document().replace("</eibnet>", "<nodes name=\"Bad\" access=\"0\">\r\n</nodes>\r\n</eibnet>"));
}

TEST_F(ScheduleCopyPaste, DatapointPastedBesideEntriesIsWrittenAsItsAlias)
{
    CopyNodes({"West"});
    PasteOn("05:15");
    Run("MenuAction_Export");
    EXPECT_EQ(Exported(), Document().replace("value=\"21\" enabled=\"1\" postprocess=\"0\"/>\r\n",
                                             "value=\"21\" enabled=\"1\" postprocess=\"0\"/>\r\nWest\r\n"));
    ExportAndReload();
    EXPECT_EQ(Below("Bad"), "05:15");
}

TEST_F(ScheduleCopyPaste, GroupAndDatapointsAreWrittenAsTheyWereCopied)
{
    CopyNodes({"Licht"});
    CopyNodes({"Bad"});
    PasteOn("Urlaub");
    ExportAndReload();
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub|Kopie von Licht");
    EXPECT_EQ(LastGroup()->GroupAccess(), 3);
    EXPECT_EQ(Below(LastGroup()), "Flur|Küche");
    EXPECT_EQ(Record(LastGroup()->Child(0)), Record("Flur"));
    EXPECT_EQ(Below("Urlaub"), "Bad");
    EXPECT_EQ(Record(Node("Urlaub")->Child(0)), Record("Bad"));
}
