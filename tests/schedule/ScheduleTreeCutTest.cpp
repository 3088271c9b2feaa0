#include "ScheduleTree.h"

#include <QAction>

namespace
{

class ScheduleCut : public TScheduleTree
{
protected:
    // A group of the document with everything in it.
    static QByteArray GroupInDocument(const char* name)
    {
        const QByteArray document = Document();
        const qsizetype begin = document.indexOf(QByteArray("<nodes name=\"") + name);
        const QByteArray end("</nodes>\r\n");
        return document.mid(begin, document.indexOf(end, begin) + end.size() - begin);
    }
};

} // namespace

TEST_F(ScheduleCut, MarksTheNodeAndChangesNothing)
{
    const std::string before = Outline();
    CutNode("Bad");
    EXPECT_TRUE(Node("Bad")->Cut());
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleCut, TakesTheMarkFromThePreviousCutNode)
{
    CutNode("Bad");
    CutNode("06:00");
    EXPECT_FALSE(Node("Bad")->Cut());
    EXPECT_TRUE(Node("06:00")->Cut());
    Select({});
    PressCut();
    EXPECT_FALSE(Node("06:00")->Cut());
    PasteOn("Flur");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleCut, ForgetsACopy)
{
    CopyNodes({"West"});
    CutNode("06:00");
    PasteOn("Bad");
    EXPECT_EQ(Below("Bad"), "06:00|05:15");
    EXPECT_EQ(Below("Heizung"), "Bad");
}

TEST_F(ScheduleCut, OfSeveralNodesTakesTheOneInFocus)
{
    Select({"Flur", "05:15", "Bad"});
    Run("MenuAction_CutExecute");
    EXPECT_TRUE(Node("Bad")->Cut());
    EXPECT_FALSE(Node("Flur")->Cut());
    EXPECT_FALSE(Node("05:15")->Cut());
}

// Equal levels: just before

TEST_F(ScheduleCut, EntryPastedOnAnEntryGoesBeforeIt)
{
    const TScheduleNode* entry = Node("06:00");
    CutNode("06:00");
    PasteOn("19:30");
    EXPECT_EQ(Below("Flur"), "07:05|06:00|19:30");
    EXPECT_EQ(Below("Küche"), "");
    EXPECT_EQ(Node("Flur")->Child(1), entry);
    EXPECT_FALSE(entry->Cut());
    EXPECT_EQ(entry->ImageIndex(), 3);
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleCut, EntryPastedOnAnEarlierSiblingGoesBeforeIt)
{
    CutNode("19:30");
    PasteOn("07:05");
    EXPECT_EQ(Below("Flur"), "19:30|07:05");
}

TEST_F(ScheduleCut, DatapointPastedOnADatapointGoesBeforeItWithItsEntriesAndRecord)
{
    const std::string record = Record("Flur");
    CutNode("Flur");
    PasteOn("Bad");
    EXPECT_EQ(Below("Heizung"), "Flur|Bad");
    EXPECT_EQ(Below("Flur"), "07:05|19:30");
    EXPECT_EQ(Record("Flur"), record);
    EXPECT_EQ(Below("Licht"), "Küche");
}

TEST_F(ScheduleCut, GroupPastedOnAGroupGoesBeforeIt)
{
    CutNode("Rollladen");
    PasteOn("Licht");
    EXPECT_EQ(Below(Root()), "Rollladen|Licht|Heizung|Urlaub");
    EXPECT_EQ(Below("Rollladen"), "Süd|West");
    Run("MenuAction_Export");
    EXPECT_EQ(Exported(), QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<eibnet>\r\n") +
                              GroupInDocument("Rollladen") + GroupInDocument("Licht") + GroupInDocument("Heizung") +
                              GroupInDocument("Urlaub") + "</eibnet>\r\n");
}

TEST_F(ScheduleCut, NodePastedOnItselfStaysAndLosesItsMark)
{
    const std::string before = Outline();
    for (const char* name : {"Licht", "Bad", "07:05"}) {
        CutNode(name);
        PressPaste();
        EXPECT_EQ(Outline(), before) << name;
        EXPECT_FALSE(Node(name)->Cut()) << name;
    }
    EXPECT_FALSE(m_frame->IsModified());
}

// Different levels: the first child

TEST_F(ScheduleCut, EntryPastedOnADatapointBecomesItsFirstChild)
{
    CutNode("06:00");
    PasteOn("Flur");
    EXPECT_EQ(Below("Flur"), "06:00|07:05|19:30");
    EXPECT_EQ(Below("Küche"), "");
}

TEST_F(ScheduleCut, EntryPastedOnItsOwnDatapointBecomesItsFirstChild)
{
    CutNode("19:30");
    PasteOn("Flur");
    EXPECT_EQ(Below("Flur"), "19:30|07:05");
}

TEST_F(ScheduleCut, DatapointPastedOnAGroupBecomesItsFirstChildAlsoInTheFirstTwoGroups)
{
    for (const char* group : {"Licht", "Heizung", "Urlaub"}) {
        CutNode("West");
        PasteOn(group);
        EXPECT_EQ(Node(group)->Child(0), Node("West")) << group;
        EXPECT_EQ(Record("West"), "id=-1 name=vWest alias=West source=2 type=1 access=5 enabled=1 min= max=");
    }
    EXPECT_EQ(Below("Rollladen"), "Süd");
    EXPECT_EQ(Below("Urlaub"), "West");
}

TEST_F(ScheduleCut, EntryPastedOnAGroupIsADatapointWithoutARecordThatIsNotWritten)
{
    CutNode("05:15");
    PasteOn("Urlaub");
    EXPECT_EQ(Below("Urlaub"), "05:15");
    EXPECT_EQ(Node("05:15")->ImageIndex(), 2);
    EXPECT_EQ(Record("05:15"), "none");
    Select({"05:15"});
    Run("MenuAction_CreateScheduleExecute");
    Run("MenuAction_Export");
    QByteArray expected = Document();
    const qsizetype at = expected.indexOf("<schedule time=\"05:15\"");
    expected.remove(at, expected.indexOf("\r\n", at) + 2 - at);
    EXPECT_EQ(Exported(), expected);
}

TEST_F(ScheduleCut, EntryPastedOnTheRootIsWrittenAsAGroup)
{
    const QByteArray text = Node("08:45")->Caption().toLatin1();
    CutNode("08:45");
    PasteOn("Wochenschaltplan");
    EXPECT_EQ(Below(Root()), "08:45|Licht|Heizung|Rollladen|Urlaub");
    EXPECT_EQ(Node("08:45")->ImageIndex(), 1);
    Run("MenuAction_Export");
    EXPECT_TRUE(Exported().contains("<eibnet>\r\n<nodes name=\"" + text + "\" access=\"0\">\r\n</nodes>\r\n"));
}

TEST_F(ScheduleCut, DatapointPastedOnTheRootIsWrittenAsAGroupWithoutItsEntries)
{
    CutNode("Flur");
    PasteOn("Wochenschaltplan");
    EXPECT_EQ(Below(Root()), "Flur|Licht|Heizung|Rollladen|Urlaub");
    EXPECT_EQ(Node("Flur")->ImageIndex(), 1);
    EXPECT_EQ(Node("07:05")->ImageIndex(), 2);
    Run("MenuAction_Export");
    EXPECT_TRUE(Exported().contains("<eibnet>\r\n<nodes name=\"Flur\" access=\"0\">\r\n</nodes>\r\n<nodes "));
    EXPECT_FALSE(Exported().contains("07:05"));
}

TEST_F(ScheduleCut, DatapointPastedOnAForeignEntryIsNotWrittenAndComesBackWhole)
{
    CutNode("Bad");
    PasteOn("06:00");
    EXPECT_EQ(Below("06:00"), "Bad");
    EXPECT_EQ(Below("Bad"), "05:15");
    Run("MenuAction_Export");
    EXPECT_FALSE(Exported().contains("Bad"));
    EXPECT_FALSE(Exported().contains("05:15"));
    CutNode("Bad");
    PasteOn("Heizung");
    EXPECT_EQ(Node("Bad")->ImageIndex(), 2);
    EXPECT_EQ(Node("05:15")->ImageIndex(), 3);
    Run("MenuAction_Export");
    EXPECT_EQ(Exported(), Document());
}

TEST_F(ScheduleCut, GroupPastedOnADatapointIsWrittenAsALineThere)
{
    CutNode("Urlaub");
    PasteOn("West");
    EXPECT_EQ(Below("West"), "Urlaub");
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen");
    Run("MenuAction_Export");
    EXPECT_TRUE(Exported().contains("minv=\"\" maxv=\"\">\r\nUrlaub\r\n</node>\r\n</nodes>\r\n</eibnet>\r\n"));
}

TEST_F(ScheduleCut, GroupThatWasADatapointMeanwhileKeepsItsAccess)
{
    CutNode("Licht");
    PasteOn("West");
    CutNode("Licht");
    PasteOn("Wochenschaltplan");
    EXPECT_EQ(Below(Root()), "Licht|Heizung|Rollladen|Urlaub");
    Run("MenuAction_Export");
    EXPECT_EQ(Exported(), Document());
}

// Where it cannot go

TEST_F(ScheduleCut, NodePastedBelowItselfStaysAndIsForgotten)
{
    const std::string before = Outline();
    for (const auto& [cut, target] :
         {std::pair{"Flur", "07:05"}, {"Licht", "Flur"}, {"Licht", "07:05"}, {"Licht", "06:00"}}) {
        CutNode(cut);
        PasteOn(target);
        EXPECT_EQ(Outline(), before) << cut << " on " << target;
        EXPECT_FALSE(Node(cut)->Cut());
        PasteOn("Bad");
        EXPECT_EQ(Outline(), before) << "forgotten";
    }
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleCut, RootIsNeverMoved)
{
    const std::string before = Outline();
    for (const char* target : {"Wochenschaltplan", "Licht", "Bad", "07:05"}) {
        CutNode("Wochenschaltplan");
        EXPECT_TRUE(Root()->Cut());
        PasteOn(target);
        EXPECT_EQ(Outline(), before) << target;
        EXPECT_FALSE(Root()->Cut());
    }
    EXPECT_EQ(m_frame->topLevelItemCount(), 1);
    EXPECT_FALSE(m_frame->IsModified());
}

// How long it is remembered

TEST_F(ScheduleCut, IsPastedOnce)
{
    CutNode("06:00");
    PasteOn("Bad");
    Select({"Flur"});
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    PressPaste();
    EXPECT_EQ(Below("Bad"), "06:00|05:15");
}

TEST_F(ScheduleCut, IsForgottenByAPasteWithoutASelection)
{
    CutNode("06:00");
    Select({});
    PressPaste();
    EXPECT_FALSE(Node("06:00")->Cut());
    PasteOn("Bad");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleCut, IsForgottenWhenItIsDeletedMeanwhile)
{
    for (const char* deleted : {"05:15", "Heizung"}) {
        CutNode("05:15");
        m_frame->RemoveBranches({Node(deleted)});
        Select({"Flur"});
        EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
        PressPaste();
        EXPECT_EQ(Below("Flur"), "07:05|19:30");
        Run("MenuAction_Reload");
    }
}

TEST_F(ScheduleCut, IsForgottenByALoad)
{
    CutNode("05:15");
    Run("MenuAction_Reload");
    EXPECT_FALSE(Node("05:15")->Cut());
    PasteOn("Flur");
    EXPECT_EQ(Below("Flur"), "07:05|19:30");
}
