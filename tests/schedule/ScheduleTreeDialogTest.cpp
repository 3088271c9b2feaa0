#include "ScheduleTree.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QTimeEdit>

namespace
{

constexpr auto ShownFlur = "0 1/1/1 Flur [0..1] type=0 source=0 access=2 enabled=1";

class ScheduleDialogWiring : public TScheduleTree
{
protected:
    // What the schedule page shows: the entry that it would build, and the title.
    std::string ShownEntry() const
    {
        const TSchedulePropsDialog& dialog = *Dialog();
        return dialog.GetIsSchedule() ? dialog.GetScheduleText().toStdString() + " " + dialog.GetTitle().toStdString()
                                      : "a datapoint";
    }
    // Puts a datapoint without a record in front of "Bad".
    void MakeDatapointWithoutRecord() const
    {
        CutNode("08:45");
        PasteOn("Heizung");
        ASSERT_EQ(Below("Heizung"), "08:45|Bad");
        m_frame->SetModified(false);
    }
};

} // namespace

// Showing a node

TEST_F(ScheduleDialogWiring, ShowsADatapointByItsRecord)
{
    ShowProperties("Flur");
    EXPECT_EQ(ShownDatapoint(), ShownFlur);
    EXPECT_EQ(Sections(), "Licht|Heizung|Rollladen|Urlaub");
    EXPECT_FALSE(Dialog()->GetChanged());
    EXPECT_FALSE(Dialog()->isModal());
    EXPECT_TRUE(Dialog()->isVisible());
    Select({"Bad"});
    EXPECT_EQ(ShownDatapoint(), "1 40001 Bad [5..30] type=3 source=1 access=7 enabled=0");
    Select({"Süd"});
    EXPECT_EQ(ShownDatapoint(), "2 vSued Süd [..] type=2 source=2 access=5 enabled=1");
}

TEST_F(ScheduleDialogWiring, ShowsAnEntryWithItsDatapointAsTitle)
{
    ShowProperties("06:00");
    EXPECT_EQ(ShownEntry(), EntryText("06:00", "0000011", "1", 1, 1) + " Küche");
    EXPECT_EQ(Dialog()->GetSection(), 0);
    Select({"08:45"});
    EXPECT_EQ(ShownEntry(), EntryText("08:45", "0100000", "100", 1, 0) + " Süd");
    EXPECT_EQ(Dialog()->GetSection(), 2);
    EXPECT_FALSE(Dialog()->GetChanged());
}

TEST_F(ScheduleDialogWiring, ShowsTheSectionAtTheIndexOfTheGroup)
{
    Run("MenuAction_Reload");
    ShowProperties("Bad");
    EXPECT_EQ(Dialog()->GetSection(), 1);
    EXPECT_EQ(Sections(), "Licht|Heizung|Rollladen|Urlaub|Licht|Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleDialogWiring, OpensByADoubleClickOnADatapointOrAnEntry)
{
    for (const char* name : {"Bad", "19:30"}) {
        Click(name);
        QTest::mouseDClick(m_frame->viewport(), Qt::LeftButton, {}, m_frame->visualItemRect(Node(name)).center());
        EXPECT_TRUE(m_frame->IsDialogConnected()) << name;
        EXPECT_EQ(Selected(), name);
        EXPECT_EQ(Dialog()->GetIsSchedule(), Node(name)->IsEntry());
        Press("BtnCancel");
    }
}

TEST_F(ScheduleDialogWiring, DoesNotOpenForTheRootOrAGroup)
{
    for (const char* name : {"Wochenschaltplan", "Licht"}) {
        Click(name);
        QTest::mouseDClick(m_frame->viewport(), Qt::LeftButton, {}, m_frame->visualItemRect(Node(name)).center());
        m_frame->MenuAction_AttributesExecute();
        EXPECT_FALSE(m_frame->IsDialogConnected()) << name;
    }
    Select({});
    m_frame->MenuAction_AttributesExecute();
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(ScheduleDialogWiring, OpensTwentyPixelsRightOfTheFrame)
{
    ShowProperties("Flur");
    EXPECT_EQ(Dialog()->pos().x(), m_frame->mapToGlobal(QPoint(20, 0)).x());
}

TEST_F(ScheduleDialogWiring, MakesTheDialogOnce)
{
    ShowProperties("Flur");
    const TSchedulePropsDialog* dialog = Dialog();
    Press("BtnCancel");
    EXPECT_FALSE(m_frame->IsDialogConnected());
    EXPECT_TRUE(Action("MenuAction_AttributesExecute")->isEnabled());
    ShowProperties("07:05");
    EXPECT_EQ(Dialog(), dialog);
    EXPECT_EQ(m_frame->findChildren<TSchedulePropsDialog*>().size(), 1);
}

// Following the selection

TEST_F(ScheduleDialogWiring, FollowsTheSelectionBetweenBothPages)
{
    ShowProperties("Flur");
    Select({"07:05"});
    EXPECT_EQ(ShownEntry(), EntryText("07:05", "1111100", "1", 1, 0) + " Flur");
    Select({"Bad"});
    EXPECT_EQ(ShownDatapoint(), "1 40001 Bad [5..30] type=3 source=1 access=7 enabled=0");
    EXPECT_EQ(Dialog()->GetTitle(), QString());
    EXPECT_EQ(Selected(), "Bad");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, DoesNotFollowWhileItIsClosed)
{
    ShowProperties("Flur");
    Press("BtnCancel");
    Select({"Bad"});
    EXPECT_EQ(ShownDatapoint(), ShownFlur);
    EXPECT_FALSE(Dialog()->isVisible());
}

TEST_F(ScheduleDialogWiring, ForgetsItsNodeForTheRootAndForAGroup)
{
    for (const char* name : {"Wochenschaltplan", "Heizung"}) {
        ShowProperties("Flur");
        Select({name});
        EXPECT_TRUE(m_frame->IsDialogConnected());
        Type("EditAlias", "Anders");
        Press("BtnOK");
        EXPECT_EQ(Below("Licht"), "Flur|Küche") << name;
    }
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, DoesNotFollowWhileTheTreeIsNotEditableAndIsRefreshedThen)
{
    ShowProperties("Flur");
    m_frame->SetEditable(false);
    Select({"Bad"});
    EXPECT_EQ(ShownDatapoint(), ShownFlur);
    m_frame->SetEditable(true);
    EXPECT_EQ(ShownDatapoint(), "1 40001 Bad [5..30] type=3 source=1 access=7 enabled=0");
}

// Changes that wait

TEST_F(ScheduleDialogWiring, AppliesAChangeWhenAnotherNodeIsSelected)
{
    for (const char* other : {"Bad", "05:15", "Heizung", "Wochenschaltplan"}) {
        ShowProperties("Flur");
        Type("EditMaxVal", other);
        EXPECT_TRUE(Dialog()->GetChanged());
        Select({other});
        EXPECT_EQ(Node("Flur")->Data()->MaxVal.toStdString(), other);
        EXPECT_FALSE(Dialog()->GetChanged());
        Press("BtnCancel");
    }
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, AppliesAnEntryWhenAnotherNodeIsSelected)
{
    ShowProperties("07:05");
    Type("EditValue", "42");
    Toggle("CheckDay6");
    Select({"Bad"});
    EXPECT_EQ(TextOf(Node("07:05")), EntryText("07:05", "1111110", "42", 1, 0));
}

TEST_F(ScheduleDialogWiring, DropsAChangeWithoutAutomaticAcceptance)
{
    ShowProperties("Flur");
    Dialog()->SetAutoAccept(false);
    Type("EditMaxVal", "9");
    Select({"07:05"});
    Type("EditValue", "42");
    Select({"Flur"});
    EXPECT_EQ(ShownDatapoint(), ShownFlur);
    EXPECT_EQ(Node("Flur")->Data()->MaxVal, QStringLiteral("1"));
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, HoldsNoChangeAfterAFillingAlsoWhenOneWasDropped)
{
    const std::string text = TextOf(Node("19:30"));
    ShowProperties("Flur");
    Dialog()->SetAutoAccept(false);
    Type("EditMaxVal", "9");
    Select({"19:30"});
    EXPECT_FALSE(Dialog()->GetChanged());
    Dialog()->SetAutoAccept(true);
    Select({"Bad"});
    EXPECT_EQ(TextOf(Node("19:30")), text);
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, AppliesAChangeWhenAnotherNodeIsShownByADoubleClick)
{
    ShowProperties("Flur");
    Type("EditMaxVal", "9");
    QTest::mouseDClick(m_frame->viewport(), Qt::LeftButton, {}, m_frame->visualItemRect(Node("05:15")).center());
    EXPECT_EQ(Node("Flur")->Data()->MaxVal, QStringLiteral("9"));
}

TEST_F(ScheduleDialogWiring, DropsAChangeWhenItIsCancelledOrClosed)
{
    ShowProperties("Flur");
    Type("EditMaxVal", "9");
    Press("BtnCancel");
    Select({"Bad"});
    ShowProperties("07:05");
    Type("EditValue", "42");
    Dialog()->close();
    EXPECT_FALSE(m_frame->IsDialogConnected());
    Select({"Bad"});
    EXPECT_EQ(Node("Flur")->Data()->MaxVal, QStringLiteral("1"));
    EXPECT_FALSE(m_frame->IsModified());
}

// Accepting

TEST_F(ScheduleDialogWiring, WritesEveryFieldOfADatapoint)
{
    ShowProperties("Flur");
    Type("EditAlias", "Diele");
    Type("EditName", "2/2/2");
    Type("EditMinVal", "3");
    Type("EditMaxVal", "4");
    Type("EditAccess", "11");
    Choose("CBoxDataType", 4);
    Choose("CBoxDataSource", 2);
    Toggle("CheckNodeEnabled");
    EXPECT_FALSE(m_frame->IsModified());
    Press("BtnApply");
    EXPECT_EQ(Record("Diele"), "id=-1 name=2/2/2 alias=Diele source=2 type=4 access=11 enabled=0 min=3 max=4");
    EXPECT_EQ(Below("Licht"), "Diele|Küche");
    EXPECT_FALSE(Dialog()->GetChanged());
    EXPECT_TRUE(m_frame->IsDialogConnected());
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, WritesAccessThatIsNoNumberAsZero)
{
    ShowProperties("Flur");
    Type("EditAccess", "viel");
    Press("BtnOK");
    EXPECT_EQ(Node("Flur")->Data()->Access, 0);
    EXPECT_FALSE(m_frame->IsDialogConnected());
}

TEST_F(ScheduleDialogWiring, WritesAnEntryAsItIsBuilt)
{
    ShowProperties("07:05");
    Toggle("CheckDay1");
    Toggle("CheckDay7");
    Toggle("CheckEnabled");
    Toggle("CheckPostProcess");
    Field<QTimeEdit>("TimeEdit")->setTime(QTime(23, 59));
    Type("EditValue", "a \"b\" <c>");
    Press("BtnOK");
    EXPECT_EQ(Below("Flur"), "23:59|19:30");
    EXPECT_EQ(TextOf(Node("23:59")), EntryText("23:59", "0111101", "a \"b\" <c>", 0, 1));
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, LeavesAnEntryByteForByteWhenNothingWasChanged)
{
    const std::string text = TextOf(Node("19:30"));
    ShowProperties("19:30");
    Select({"07:05"});
    Select({"19:30"});
    Press("SBtnUp");
    Press("SBtnDown");
    Select({"Licht"});
    Press("BtnCancel");
    EXPECT_EQ(TextOf(Node("19:30")), text);
    EXPECT_FALSE(m_frame->IsModified());
    Run("MenuAction_Export");
    EXPECT_EQ(Exported(), Document());
}

TEST_F(ScheduleDialogWiring, BuildsAnEntryAnewByOk)
{
    ShowProperties("19:30");
    Press("BtnOK");
    EXPECT_EQ(TextOf(Node("19:30")), EntryText("19:30", "1111111", "0", 0, 1));
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, DoesNotMarkTheTreeByOkForADatapointWithoutAChange)
{
    for (const char* name : {"Flur", "Bad", "Süd"}) {
        ShowProperties(name);
        Press("BtnApply");
        Press("BtnOK");
    }
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, LeavesADatapointInItsGroup)
{
    ShowProperties("Flur");
    Dialog()->SetSection(2);
    Press("BtnOK");
    EXPECT_EQ(Below("Licht"), "Flur|Küche");
    EXPECT_EQ(Below("Rollladen"), "Süd|West");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, ShowsANewTextAfterTheDatapointWasRenamedElsewhere)
{
    ShowProperties("07:05");
    Node("Flur")->Data()->Alias = QStringLiteral("Diele");
    Node("Flur")->SetCaption(QStringLiteral("Diele"));
    Select({"19:30"});
    EXPECT_EQ(Dialog()->GetTitle(), QStringLiteral("Diele"));
}

// What has nothing to show

TEST_F(ScheduleDialogWiring, LeavesADatapointWithoutARecordAsItIs)
{
    MakeDatapointWithoutRecord();
    const std::string text = TextOf(Node("08:45"));
    ShowProperties("Flur");
    Select({"08:45"});
    EXPECT_EQ(ShownDatapoint(), ShownFlur) << "nothing to fill the fields with";
    Type("EditAlias", "Anders");
    Press("BtnApply");
    Press("BtnOK");
    EXPECT_EQ(TextOf(Node("08:45")), text);
    EXPECT_EQ(Below("Licht"), "Flur|Küche");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleDialogWiring, LeavesATextThatIsNoEntryAsItIs)
{
    m_frame->NewTreeNode(Node("West"), naAddChild, false, QStringLiteral("kein Eintrag"));
    m_frame->SetModified(false);
    ShowProperties("Flur");
    Select({"kein Eintrag"});
    EXPECT_EQ(ShownDatapoint().substr(1), std::string(ShownFlur).substr(1)) << "nothing but the section";
    Press("BtnApply");
    EXPECT_EQ(Below("West"), "kein Eintrag");
    EXPECT_EQ(Below("Licht"), "Flur|Küche");
    EXPECT_FALSE(m_frame->IsModified());
}
