#include "ScheduleTree.h"

#include <QAction>
#include <QLineEdit>
#include <QMetaObject>

namespace
{

// What was typed and not confirmed yet is never lost in silence.
class ScheduleUnsaved : public TScheduleTree
{};

class ScheduleModified : public TScheduleTree
{
protected:
    // True when the change marks the frame, which is then exported.
    template <class TChange> bool Marks(TChange change)
    {
        EXPECT_FALSE(m_frame->IsModified());
        change();
        const bool marked = m_frame->IsModified();
        Run("MenuAction_Export");
        EXPECT_FALSE(m_frame->IsModified());
        return marked;
    }
};

} // namespace

TEST_F(ScheduleUnsaved, ExportsWhatWaitsInTheDialog)
{
    ShowProperties("Flur");
    Type("EditMaxVal", "9");
    Run("MenuAction_Export");
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_TRUE(Exported().contains("alias=\"Flur\" eis=\"1\" type=\"eib\" access=\"2\" enabled=\"1\" minv=\"0\" "
                                    "maxv=\"9\""));
}

TEST_F(ScheduleUnsaved, ExportsAnEntryThatWaitsInTheDialog)
{
    ShowProperties("07:05");
    Toggle("CheckDay7");
    Run("MenuAction_Export");
    EXPECT_TRUE(Exported().contains(EntryText("07:05", "1111101", "1", 1, 0)));
}

TEST_F(ScheduleUnsaved, ExportsTheNameThatIsBeingEdited)
{
    QLineEdit* editor = OpenEditor("Heizung");
    ASSERT_NE(editor, nullptr);
    editor->setText(QStringLiteral("Kessel"));
    Run("MenuAction_Export");
    EXPECT_TRUE(Exported().contains("<nodes name=\"Kessel\" access=\"5\">"));
    EXPECT_EQ(GroupNames(), "Licht|Kessel|Rollladen|Urlaub");
}

TEST_F(ScheduleUnsaved, IsModifiedOnceTheHostAskedForIt)
{
    ShowProperties("Flur");
    Type("EditMaxVal", "9");
    EXPECT_FALSE(m_frame->IsModified());
    QMetaObject::invokeMethod(m_frame.get(), "CommitEdits", Qt::DirectConnection);
    EXPECT_TRUE(m_frame->IsModified());
    EXPECT_EQ(Node("Flur")->Data()->MaxVal, QStringLiteral("9"));
}

TEST_F(ScheduleUnsaved, LeavesWhatWaitsWithoutAutomaticAcceptance)
{
    ShowProperties("Flur");
    Dialog()->SetAutoAccept(false);
    Type("EditMaxVal", "9");
    QMetaObject::invokeMethod(m_frame.get(), "CommitEdits", Qt::DirectConnection);
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_EQ(FieldText("EditMaxVal"), "9");
}

TEST_F(ScheduleUnsaved, KeepsTheSelectionWhenTheRightButtonIsPressedOverTheRoot)
{
    Select({"Flur", "Bad"});
    OpenMenu("Wochenschaltplan");
    EXPECT_EQ(Selected(), "Flur|Bad");
    CloseMenu();
}

// Modified state

TEST_F(ScheduleModified, IsNotSetByLookingSelectingCopyingAndCutting)
{
    EXPECT_FALSE(Marks([&] {
        ShowProperties("Flur");
        Press("SBtnDown");
        Choose("CBoxPartSelector", 1);
        Select({"07:05"});
        Press("BtnCancel");
        CopyNodes({"Bad"});
        CutNode("Bad");
        Select({"Licht"});
    }));
}

TEST_F(ScheduleModified, IsSetByEachRealChangeUntilTheNextExport)
{
    EXPECT_TRUE(Marks([&] {
        Select({"Licht"});
        Run("MenuAction_CreateGroupExecute");
    }));
    EXPECT_TRUE(Marks([&] { Run("MenuAction_CreateNodeExecute"); }));
    EXPECT_TRUE(Marks([&] { Run("MenuAction_CreateScheduleExecute"); }));
    EXPECT_TRUE(Marks([&] { Rename("Neue Gruppe", "Garten"); }));
    EXPECT_TRUE(Marks([&] { m_frame->SetGroupAccess(4); }));
    EXPECT_TRUE(Marks([&] { CopyNodes({"Licht"}); }));
    EXPECT_TRUE(Marks([&] {
        CopyNodes({"Bad"});
        PasteOn("Urlaub");
    }));
    EXPECT_TRUE(Marks([&] {
        CutNode("West");
        PasteOn("Süd");
    }));
    EXPECT_TRUE(Marks([&] {
        ShowProperties("West");
        Type("EditMinVal", "1");
        Press("BtnOK");
    }));
    EXPECT_TRUE(Marks([&] {
        Select({"West"});
        Run("MenuAction_DeleteExecute");
    }));
}

TEST_F(ScheduleModified, IsNotSetByAMoveToTheSamePlace)
{
    EXPECT_FALSE(Marks([&] {
        CutNode("07:05");
        PasteOn("19:30");
        CutNode("Flur");
        PasteOn("Licht");
    }));
}

TEST_F(ScheduleModified, IsClearedByALoad)
{
    m_frame->RemoveBranches({Node("Bad")});
    ASSERT_TRUE(m_frame->IsModified());
    Run("MenuAction_Reload");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleModified, StaysWhenTheDialogIsAppliedWithoutAChange)
{
    Rename("Heizung", "Kessel");
    ShowProperties("Bad");
    Press("BtnOK");
    EXPECT_TRUE(m_frame->IsModified());
}
