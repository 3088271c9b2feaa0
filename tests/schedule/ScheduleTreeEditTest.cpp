#include "ScheduleTree.h"

#include <QAction>

namespace
{

class ScheduleEdit : public TScheduleTree
{};

class ScheduleNodeModes : public TScheduleTree
{
protected:
    TScheduleNode* Make(const char* node, TNodeAttachMode mode, bool select = false) const
    {
        return m_frame->NewTreeNode(Node(node), mode, select, QStringLiteral("Neu"));
    }
};

} // namespace

// New nodes

TEST_F(ScheduleNodeModes, AddAppendsAsTheLastSibling)
{
    const TScheduleNode* made = Make("Flur", naAdd);
    EXPECT_EQ(Below("Licht"), "Flur|Küche|Neu");
    EXPECT_EQ(Record(made), "id=-1 name= alias=Neu source=0 type=0 access=5 enabled=1 min= max=");
    EXPECT_EQ(Selected(), "");
}

TEST_F(ScheduleNodeModes, AddChildAppendsAsTheLastChildAndSelectsWhenAsked)
{
    const TScheduleNode* made = Make("Licht", naAddChild, true);
    EXPECT_EQ(made->Index(), 2);
    EXPECT_EQ(Selected(), "Neu");
    EXPECT_EQ(m_frame->currentItem(), made);
}

TEST_F(ScheduleNodeModes, AddChildFirstAppendsAsTheLastChildToo)
{
    Make("Licht", naAddChildFirst);
    EXPECT_EQ(Below("Licht"), "Flur|Küche|Neu");
}

TEST_F(ScheduleNodeModes, OthersMakeNothing)
{
    EXPECT_EQ(Make("Flur", naInsert, true), nullptr);
    EXPECT_EQ(Make("Flur", naAddFirst, true), nullptr);
    EXPECT_EQ(Make("Wochenschaltplan", naAdd, true), nullptr);
    EXPECT_EQ(m_frame->NewTreeNode(nullptr, naAddChild, true, QStringLiteral("Neu")), nullptr);
    EXPECT_EQ(m_frame->NewTreeNode(nullptr, naAdd, true, QStringLiteral("Neu")), nullptr);
    EXPECT_EQ(Below("Licht"), "Flur|Küche");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleNodeModes, NameAnEmptyCaptionNeuerEintrag)
{
    const TScheduleNode* made = m_frame->NewTreeNode(Node("Licht"), naAddChild, false, {});
    EXPECT_EQ(made->Caption(), QStringLiteral("Neuer Eintrag"));
    EXPECT_EQ(made->Data()->Alias, QStringLiteral("Neuer Eintrag"));
}

TEST_F(ScheduleNodeModes, GiveARecordToDatapointsAlone)
{
    EXPECT_EQ(Record(Make("Wochenschaltplan", naAddChild)), "none");
    EXPECT_EQ(Record(Make("Flur", naAddChild)), "none");
    EXPECT_EQ(Record(Make("07:05", naAdd)), "none");
    EXPECT_EQ(Record(Make("07:05", naAddChild)), "none");
    EXPECT_NE(Record(Make("Urlaub", naAddChildFirst)), "none");
}

TEST_F(ScheduleNodeModes, ChooseTheImageByTheLevel)
{
    const auto image = [&](const char* node, TNodeAttachMode mode) {
        const TScheduleNode* made = Make(node, mode);
        EXPECT_EQ(made->SelectedIndex(), made->ImageIndex());
        return made->ImageIndex();
    };
    EXPECT_EQ(image("Wochenschaltplan", naAddChild), 1);
    EXPECT_EQ(image("Licht", naAdd), 1);
    EXPECT_EQ(image("Licht", naAddChild), 2);
    EXPECT_EQ(image("Flur", naAddChild), 3);
    EXPECT_EQ(image("07:05", naAdd), 3);
}

TEST_F(ScheduleNodeModes, GiveTheRepaintingBackAndMarkTheTree)
{
    Make("Licht", naAddChild, true);
    EXPECT_TRUE(m_frame->updatesEnabled());
    EXPECT_TRUE(m_frame->IsModified());
}

// "Neue Gruppe"

TEST_F(ScheduleEdit, NewGroupIsAppendedAndSelected)
{
    for (const std::vector<const char*>& selected :
         {std::vector<const char*>{}, std::vector<const char*>{"Wochenschaltplan"},
          std::vector<const char*>{"Licht"}}) {
        const int count = Root()->Count();
        Select(selected);
        Run("MenuAction_CreateGroupExecute");
        EXPECT_EQ(Root()->Count(), count + 1);
        EXPECT_EQ(TextOf(LastGroup()), "Neue Gruppe");
        EXPECT_EQ(m_frame->SelectedNode(), LastGroup());
        EXPECT_EQ(LastGroup()->ImageIndex(), 1);
    }
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub|Neue Gruppe|Neue Gruppe|Neue Gruppe");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleEdit, NewGroupIsMadeBesideAllNodesWhileAnEntryIsSelected)
{
    Select({"07:05"});
    EXPECT_FALSE(Action("MenuAction_CreateGroupExecute")->isEnabled());
    OpenMenu(nullptr);
    Run("MenuAction_CreateGroupExecute");
    CloseMenu();
    EXPECT_EQ(TextOf(LastGroup()), "Neue Gruppe");
}

TEST_F(ScheduleEdit, NewGroupHasAccessZeroAndALoadedOneWithoutAccessHasFive)
{
    m_project.Write(QStringLiteral("_config/data/schedule/schedule.xml"), "<eibnet><nodes name=\"Alt\"/></eibnet>");
    Run("MenuAction_Reload");
    Run("MenuAction_CreateGroupExecute");
    EXPECT_EQ(Node("Alt")->GroupAccess(), 5);
    EXPECT_EQ(Node("Neue Gruppe")->GroupAccess(), 0);
    Run("MenuAction_Export");
    EXPECT_TRUE(Exported().contains("<nodes name=\"Alt\" access=\"5\">\r\n</nodes>\r\n"
                                    "<nodes name=\"Neue Gruppe\" access=\"0\">\r\n</nodes>\r\n"));
}

TEST_F(ScheduleEdit, NewGroupReachesADialogThatIsShown)
{
    ShowProperties("Bad");
    Select({"Heizung"});
    Run("MenuAction_CreateGroupExecute");
    EXPECT_EQ(Sections(), "Licht|Heizung|Rollladen|Urlaub|Neue Gruppe");
}

// "Neuer Datenpunkt"

TEST_F(ScheduleEdit, NewDatapointIsTheLastOfItsGroupWithAFreshRecord)
{
    for (const char* group : {"Licht", "Urlaub"}) {
        Select({group});
        Run("MenuAction_CreateNodeExecute");
        const TScheduleNode* made = SelectedNode();
        EXPECT_EQ(made->Parent(), Node(group));
        EXPECT_EQ(made->Index(), Node(group)->Count() - 1);
        EXPECT_EQ(TextOf(made), "Neuer Datenpunkt");
        EXPECT_EQ(Record(made), "id=-1 name= alias=Neuer Datenpunkt source=0 type=0 access=5 enabled=1 min= max=");
        EXPECT_EQ(made->ImageIndex(), 2);
    }
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleEdit, NewDatapointIsWrittenWithItsInitialValues)
{
    Select({"Urlaub"});
    Run("MenuAction_CreateNodeExecute");
    Run("MenuAction_Export");
    EXPECT_TRUE(Exported().contains("<node name=\"\" alias=\"Neuer Datenpunkt\" eis=\"1\" type=\"eib\" access=\"5\" "
                                    "enabled=\"1\" minv=\"\" maxv=\"\">\r\n</node>\r\n</nodes>\r\n</eibnet>"));
}

TEST_F(ScheduleEdit, NewDatapointIsMadeForNothingButAGroup)
{
    for (const char* node : {"Wochenschaltplan", "Flur", "07:05"}) {
        Select({node});
        EXPECT_FALSE(Action("MenuAction_CreateNodeExecute")->isEnabled()) << node;
        m_frame->MenuAction_CreateNodeExecute();
    }
    Select({});
    m_frame->MenuAction_CreateNodeExecute();
    EXPECT_FALSE(m_frame->IsModified());
}

// "Neue Aktion"

TEST_F(ScheduleEdit, NewActionOnADatapointIsAnEntryAtMidnightWithoutDays)
{
    Select({"Flur"});
    Run("MenuAction_CreateScheduleExecute");
    EXPECT_EQ(Below("Flur"), "07:05|19:30|00:00");
    EXPECT_EQ(Selected(), "00:00");
    EXPECT_EQ(TextOf(SelectedNode()),
              R"(<schedule time="00:00" dow="0000000" value="0" enabled="0" postprocess="0" />)");
    EXPECT_EQ(SelectedNode()->ImageIndex(), 3);
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleEdit, NewActionOnADatapointWithoutEntriesIsItsFirst)
{
    Select({"West"});
    Run("MenuAction_CreateScheduleExecute");
    EXPECT_EQ(Below("West"), "00:00");
}

TEST_F(ScheduleEdit, NewActionOnAnEntryIsADuplicateAtTheEndOfItsDatapoint)
{
    const std::string text = TextOf(Node("19:30"));
    Select({"07:05"});
    Run("MenuAction_CreateScheduleExecute");
    EXPECT_EQ(Below("Flur"), "07:05|19:30|07:05");
    EXPECT_EQ(SelectedNode(), Node("Flur")->Child(2));
    Select({"19:30"});
    Run("MenuAction_CreateScheduleExecute");
    EXPECT_EQ(Below("Flur"), "07:05|19:30|07:05|19:30");
    EXPECT_EQ(TextOf(Node("Flur")->Child(3)), text);
}

TEST_F(ScheduleEdit, NewActionIsMadeForNothingAboveTheDatapoints)
{
    for (const char* node : {"Wochenschaltplan", "Licht"}) {
        Select({node});
        EXPECT_FALSE(Action("MenuAction_CreateScheduleExecute")->isEnabled()) << node;
        m_frame->MenuAction_CreateScheduleExecute();
    }
    Select({});
    m_frame->MenuAction_CreateScheduleExecute();
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleEdit, NewActionIsMadeForTheNodeInFocusOfSeveral)
{
    Select({"Bad", "07:05", "West"});
    Run("MenuAction_CreateScheduleExecute");
    EXPECT_EQ(Below("West"), "00:00");
    EXPECT_EQ(Below("Flur"), "07:05|19:30");
}
