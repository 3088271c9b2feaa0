#include "MenuTree.h"

#include <QAction>
#include <QLineEdit>
#include <QMetaObject>

namespace
{

// What was typed and not confirmed yet is never lost in silence.
using MenuUnsaved = TMenuTree;

class MenuModified : public TMenuTree
{
protected:
    MenuModified() { Execute(*m_frame, "x://?alarm=/a"); }

    // True when the change marks the frame, which is then exported.
    template <class TChange> bool Marks(TChange change)
    {
        EXPECT_FALSE(m_frame->IsModified());
        change();
        const bool marked = m_frame->IsModified();
        Export();
        EXPECT_FALSE(m_frame->IsModified());
        return marked;
    }
};

} // namespace

TEST_F(MenuUnsaved, ExportsWhatWaitsInTheDialogs)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Anders");
    Export();
    EXPECT_TRUE(WrittenMenu().contains("caption=\"Wetter\" title=\"Anders\""));
    EXPECT_FALSE(m_frame->IsModified());
    ShowProperties("vTag");
    Type("EditValue", "9");
    Export();
    EXPECT_TRUE(WrittenLinks().contains("alias=\"vTag\" value=\"9\""));
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(MenuUnsaved, ExportsTheNameThatIsBeingEdited)
{
    QLineEdit* editor = OpenEditor("Licht");
    ASSERT_NE(editor, nullptr);
    editor->setText(QStringLiteral("Lampen"));
    Export();
    EXPECT_TRUE(WrittenMenu().contains("caption=\"Lampen\" title=\"Lampen\""));
}

TEST_F(MenuUnsaved, IsModifiedOnceTheHostAskedForIt)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Anders");
    EXPECT_FALSE(m_frame->IsModified());
    QMetaObject::invokeMethod(m_frame.get(), "CommitEdits", Qt::DirectConnection);
    EXPECT_TRUE(m_frame->IsModified());
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Anders"));
}

TEST_F(MenuUnsaved, IsTakenOverOnce)
{
    ShowProperties("Licht");
    Type("EditName", "Leuchten");
    Export();
    Rename("Leuchten", "Lampen");
    Select("Start");
    EXPECT_EQ(Below(Menu()), "Start|Lampen|Alarme");
}

TEST_F(MenuUnsaved, LeavesWhatWaitsWithoutAutomaticAcceptance)
{
    ShowProperties("Wetter");
    MenuDialog()->SetAutoAccept(false);
    Type("EditTitle", "Anders");
    QMetaObject::invokeMethod(m_frame.get(), "CommitEdits", Qt::DirectConnection);
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_EQ(MenuDialog()->GetMenuTitle(), QStringLiteral("Anders"));
    Press("BtnOK");
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Anders"));
}

// Modified state

TEST_F(MenuModified, IsNotSetByLookingSelectingAndCutting)
{
    EXPECT_FALSE(Marks([&] {
        ShowProperties("Wetter");
        Press("SBtnDown");
        Select("Flur");
        ShowProperties("Tür");
        Press("SBtnUp");
        Press("BtnCancel");
        CutNode("Licht");
        OpenMenu("Start");
        CloseMenu();
    }));
}

TEST_F(MenuModified, IsSetByEachRealChangeUntilTheNextExport)
{
    EXPECT_TRUE(Marks([&] { RunOn("Start", "MenuAction_CreateBeforeExecute"); }));
    EXPECT_TRUE(Marks([&] { RunOn("Start", "MenuAction_CreateAfterExecute"); }));
    EXPECT_TRUE(Marks([&] { RunOn("Start", "MenuAction_SubmenuExecute"); }));
    EXPECT_TRUE(Marks([&] { RunOn("Tür", "MenuAction_CreateLink"); }));
    EXPECT_TRUE(Marks([&] { RunOn("Start", "MenuAction_InsertSpecExecute_1"); }));
    EXPECT_TRUE(Marks([&] { Rename("Licht", "Lampen"); }));
    EXPECT_TRUE(Marks([&] {
        CutNode("Uhr");
        PasteOn("Wetter");
    }));
    EXPECT_TRUE(Marks([&] {
        ShowProperties("Wetter");
        TypeAccess("4");
        Press("BtnOK");
    }));
    EXPECT_TRUE(Marks([&] {
        ShowProperties("Tür");
        Choose("CBoxDataType", dtmEIS11);
        Press("BtnApply");
    }));
    EXPECT_TRUE(Marks([&] { RunOn("Uhr", "MenuAction_DeleteExecute"); }));
}

TEST_F(MenuModified, IsNotSetByOkWithoutAChange)
{
    EXPECT_FALSE(Marks([&] {
        for (const char* name : {"Wetter", "Tür"}) {
            ShowProperties(name);
            Press("BtnApply");
            Press("BtnOK");
        }
    }));
}

TEST_F(MenuModified, IsNotSetByAMoveToTheSamePlace)
{
    EXPECT_FALSE(Marks([&] {
        CutNode("Wetter");
        PasteOn("Uhr");
    }));
}

TEST_F(MenuModified, IsClearedByALoad)
{
    m_frame->RemoveBranches({Node("Licht")});
    ASSERT_TRUE(m_frame->IsModified());
    Reload();
    EXPECT_FALSE(m_frame->IsModified());
}
