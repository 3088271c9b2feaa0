#include "ScheduleTree.h"

#include <QAction>
#include <QPointer>

namespace
{

// Two frames and the one dialog that they share.
class ScheduleSharing : public TScheduleTree
{
protected:
    ScheduleSharing() : m_other(MakeFrame()) {}

    void ShowInOther(const char* name) const
    {
        m_other->SelectNode(NodeOf(*m_other, name));
        m_other->findChild<QAction*>(QStringLiteral("MenuAction_AttributesExecute"))->trigger();
        ASSERT_TRUE(m_other->IsDialogConnected());
    }
    TVlNodeData& Other(const char* name) const { return *NodeOf(*m_other, name)->Data(); }

    std::unique_ptr<TScheduleTreeFrame> m_other;
};

} // namespace

TEST_F(ScheduleSharing, TakesTheDialogOverWithTheChangeOfTheOtherApplied)
{
    ShowProperties("Flur");
    Type("EditMaxVal", "9");
    ShowInOther("Bad");
    EXPECT_FALSE(m_frame->IsDialogConnected());
    EXPECT_EQ(DialogOf(*m_other), nullptr);
    EXPECT_EQ(Node("Flur")->Data()->MaxVal, QStringLiteral("9"));
    EXPECT_EQ(Other("Flur").MaxVal, QStringLiteral("1"));
    Type("EditMaxVal", "40");
    Press("BtnApply");
    EXPECT_EQ(Other("Bad").MaxVal, QStringLiteral("40"));
    EXPECT_EQ(Node("Bad")->Data()->MaxVal, QStringLiteral("30"));
}

TEST_F(ScheduleSharing, FollowsTheFrameThatShowsANode)
{
    ShowProperties("Flur");
    ShowInOther("Flur");
    Select({"Bad"});
    EXPECT_EQ(FieldText("EditAlias"), "Flur");
    Press("SBtnDown");
    EXPECT_EQ(m_other->SelectedNode(), NodeOf(*m_other, "Küche"));
    EXPECT_EQ(Selected(), "Bad");
    Choose("CBoxPartSelector", 2);
    EXPECT_EQ(m_other->SelectedNode(), NodeOf(*m_other, "Süd"));
    EXPECT_EQ(Selected(), "Bad");
}

TEST_F(ScheduleSharing, ShowsTheSectionsOfTheFrameThatShowsANode)
{
    m_other->MenuAction_CreateGroupExecute();
    ShowProperties("Flur");
    EXPECT_EQ(Sections(), "Licht|Heizung|Rollladen|Urlaub");
    ShowInOther("Bad");
    EXPECT_EQ(Sections(), "Licht|Heizung|Rollladen|Urlaub|Neue Gruppe");
    Rename("Licht", "Lampen");
    EXPECT_EQ(Sections(), "Licht|Heizung|Rollladen|Urlaub|Neue Gruppe");
}

TEST_F(ScheduleSharing, IsTakenBackByTheFirstFrame)
{
    ShowProperties("Flur");
    ShowInOther("07:05");
    ShowProperties("Bad");
    EXPECT_FALSE(m_other->IsDialogConnected());
    Type("EditMaxVal", "40");
    Press("BtnOK");
    EXPECT_EQ(Node("Bad")->Data()->MaxVal, QStringLiteral("40"));
    EXPECT_EQ(Other("Bad").MaxVal, QStringLiteral("30"));
    EXPECT_FALSE(m_frame->IsDialogConnected());
}

TEST_F(ScheduleSharing, IsWiredAnewAfterItWasClosed)
{
    ShowProperties("Flur");
    Press("BtnCancel");
    ShowInOther("Flur");
    Type("EditMaxVal", "7");
    Press("BtnOK");
    EXPECT_EQ(Other("Flur").MaxVal, QStringLiteral("7"));
    EXPECT_EQ(Node("Flur")->Data()->MaxVal, QStringLiteral("1"));
}

TEST_F(ScheduleSharing, GoesWithTheFrameThatOwnsIt)
{
    ShowProperties("Flur");
    const QPointer<TSchedulePropsDialog> dialog = Dialog();
    ShowInOther("Bad");
    m_frame.reset();
    EXPECT_TRUE(dialog.isNull());
    EXPECT_FALSE(m_other->IsDialogConnected());
    m_other->SelectNode(NodeOf(*m_other, "Flur"));
    ShowInOther("Flur");
    EXPECT_NE(DialogOf(*m_other), nullptr);
}

TEST_F(ScheduleSharing, GoesWithAFrameThatOnlyUsesIt)
{
    ShowProperties("Flur");
    const QPointer<TSchedulePropsDialog> dialog = Dialog();
    ShowInOther("Bad");
    m_other.reset();
    EXPECT_TRUE(dialog.isNull());
    EXPECT_FALSE(m_frame->IsDialogConnected());
    ShowProperties("Bad");
    EXPECT_EQ(FieldText("EditAlias"), "Bad");
}

TEST_F(ScheduleSharing, GoesWithAFrameThatNeverUsedItAndAppliesAChange)
{
    ShowProperties("Flur");
    Type("EditMaxVal", "9");
    m_other.reset();
    EXPECT_FALSE(m_frame->IsDialogConnected());
    EXPECT_EQ(Node("Flur")->Data()->MaxVal, QStringLiteral("9"));
    ShowProperties("Flur");
    EXPECT_EQ(FieldText("EditMaxVal"), "9");
}

TEST_F(ScheduleSharing, IsReleasedByCall)
{
    ShowProperties("Flur");
    TScheduleTreeFrame::FinalizeView();
    TScheduleTreeFrame::FinalizeView();
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_FALSE(m_frame->IsDialogConnected());
    EXPECT_TRUE(Action("MenuAction_AttributesExecute")->isVisible());
    Select({"Bad"});
    ShowProperties("Flur");
    EXPECT_EQ(FieldText("EditAlias"), "Flur");
}
