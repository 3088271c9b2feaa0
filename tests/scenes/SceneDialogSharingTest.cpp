#include "SceneTree.h"

#include <QAction>
#include <QComboBox>
#include <QPointer>

namespace
{

// Two frames and the one dialog that they share.
class SceneSharing : public TSceneTree
{
protected:
    SceneSharing() : m_other(MakeFrame()) {}

    void ShowInOther(const char* alias) const
    {
        m_other->SelectNode(NodeOf(*m_other, alias));
        m_other->findChild<QAction*>(QStringLiteral("MenuAction_AttributesExecute"))->trigger();
        ASSERT_TRUE(m_other->IsDialogShown());
    }
    std::string ValueInOther(const char* alias) const { return NodeOf(*m_other, alias)->Item()->Value.toStdString(); }

    std::unique_ptr<TConfigTreeFrame> m_other;
};

class SceneModified : public TSceneTree
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

TEST_F(SceneSharing, TakesTheDialogOverWithTheChangeOfTheOtherApplied)
{
    ShowProperties("Warm");
    Type("EditValue", "25");
    ShowInOther("Nachts");
    EXPECT_FALSE(m_frame->IsDialogShown());
    EXPECT_EQ(DialogOf(*m_other), nullptr);
    EXPECT_EQ(Node("Warm")->Item()->Value, QStringLiteral("25"));
    EXPECT_EQ(ValueInOther("Warm"), "21");
    EXPECT_EQ(TextOf("EditAlias"), "Nachts");
    Type("EditValue", "7");
    Press("BtnApply");
    EXPECT_EQ(ValueInOther("Nachts"), "7");
    EXPECT_EQ(Node("Nachts")->Item()->Value, QStringLiteral("22"));
}

TEST_F(SceneSharing, FollowsTheFrameThatShowsANode)
{
    ShowProperties("Warm");
    ShowInOther("Nachts");
    Select({"Licht an"});
    EXPECT_EQ(TextOf("EditAlias"), "Nachts");
    Press("SBtnUp");
    EXPECT_EQ(m_other->SelectedNode(), NodeOf(*m_other, "Abendlicht"));
    EXPECT_EQ(Selected(), "Licht an");
    Choose("CBoxPartSelector", 3);
    EXPECT_EQ(m_other->SelectedNode(), NodeOf(*m_other, "Nachts"));
}

TEST_F(SceneSharing, ShowsTheSectionsOfTheFrameThatShowsANode)
{
    m_other->NewSceneNode(m_other->Top(), naAddChild, QStringLiteral("Fünfte"), false);
    ShowProperties("Warm");
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->count(), 4);
    ShowInOther("Nachts");
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->count(), 5);
    m_frame->NewSceneNode(Top(), naAddChild, QStringLiteral("X"), false);
    m_frame->FinishEditing(Node("X"), QStringLiteral("Y"));
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->itemText(4), QStringLiteral("Fünfte"));
}

TEST_F(SceneSharing, IsTakenBackByTheFirstFrame)
{
    ShowProperties("Warm");
    ShowInOther("Nachts");
    ShowProperties("Licht an");
    EXPECT_FALSE(m_other->IsDialogShown());
    Type("EditValue", "3");
    Press("BtnOK");
    EXPECT_EQ(Node("Licht an")->Item()->Value, QStringLiteral("3"));
    EXPECT_EQ(ValueInOther("Licht an"), "1");
    EXPECT_FALSE(m_frame->IsDialogShown());
}

TEST_F(SceneSharing, IsWiredAnewAfterItWasClosed)
{
    ShowProperties("Warm");
    Press("BtnCancel");
    ShowInOther("Warm");
    Type("EditValue", "4");
    Press("BtnOK");
    EXPECT_EQ(ValueInOther("Warm"), "4");
    EXPECT_EQ(Node("Warm")->Item()->Value, QStringLiteral("21"));
}

TEST_F(SceneSharing, GoesWithTheFrameThatOwnsIt)
{
    ShowProperties("Warm");
    const QPointer<TScenePropsDialog> dialog = Dialog();
    ShowInOther("Nachts");
    m_frame.reset();
    EXPECT_TRUE(dialog.isNull());
    EXPECT_FALSE(m_other->IsDialogShown());
    m_other->SelectNode(NodeOf(*m_other, "Licht an"));
    ShowInOther("Licht an");
    EXPECT_NE(DialogOf(*m_other), nullptr);
    m_other.reset();
}

TEST_F(SceneSharing, GoesWithAFrameThatOnlyUsesIt)
{
    ShowProperties("Warm");
    const QPointer<TScenePropsDialog> dialog = Dialog();
    ShowInOther("Nachts");
    m_other.reset();
    EXPECT_TRUE(dialog.isNull());
    EXPECT_FALSE(m_frame->IsDialogShown());
    ShowProperties("Nachts");
    EXPECT_EQ(TextOf("EditAlias"), "Nachts");
}

TEST_F(SceneSharing, GoesWithAFrameThatNeverUsedItAndAppliesAChange)
{
    ShowProperties("Warm");
    Type("EditValue", "25");
    m_other.reset();
    EXPECT_FALSE(m_frame->IsDialogShown());
    Select({"Licht an"});
    EXPECT_EQ(Node("Warm")->Item()->Value, QStringLiteral("25"));
    ShowProperties("Warm");
    EXPECT_EQ(TextOf("EditValue"), "25");
}

TEST_F(SceneSharing, GoesWithTheFrameThatOwnsItWhileTheOtherNeverUsedIt)
{
    ShowProperties("Warm");
    const QPointer<TScenePropsDialog> dialog = Dialog();
    m_frame.reset();
    EXPECT_TRUE(dialog.isNull());
    ShowInOther("Warm");
    EXPECT_NE(DialogOf(*m_other), nullptr);
}

TEST_F(SceneSharing, IsReleasedByCall)
{
    ShowProperties("Warm");
    TConfigTreeFrame::FinalizeScenes();
    TConfigTreeFrame::FinalizeScenes();
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_FALSE(m_frame->IsDialogShown());
    ShowProperties("Warm");
    EXPECT_EQ(TextOf("EditAlias"), "Warm");
}

// Modified state

TEST_F(SceneModified, IsNotSetByOpeningAndClosingTheDialogWithoutAChange)
{
    for (const char* alias : {"Taster Flur", "Heizung", "Abendlicht", "Warm"}) {
        for (const char* button : {"BtnOK", "BtnCancel"}) {
            ShowProperties(alias);
            Press("BtnApply");
            Press(button);
            EXPECT_FALSE(m_frame->IsModified()) << alias << button;
        }
    }
}

TEST_F(SceneModified, IsNotSetByOkForAStepWhoseActionHasAnotherTypeByNow)
{
    EXPECT_TRUE(Marks([&] {
        ShowProperties("Licht Flur");
        Choose("CBoxDataType", 4);
        Press("BtnOK");
    }));
    EXPECT_FALSE(Marks([&] {
        ShowProperties("Licht an");
        Press("BtnOK");
    }));
}

TEST_F(SceneModified, IsNotSetByMovingSelectingCopyingAndCutting)
{
    EXPECT_FALSE(Marks([&] {
        ShowProperties("Licht an");
        Press("SBtnDown");
        Choose("CBoxPartSelector", 0);
        Select({"Nachts"});
        Press("BtnCancel");
        Select({"Warm"});
        Run("MenuAction_CopyExecute");
        Run("MenuAction_CutExecute");
    }));
}

TEST_F(SceneModified, IsSetByEachRealChangeUntilTheNextExport)
{
    EXPECT_TRUE(Marks([&] {
        Select({});
        Run("MenuAction_CreateSceneExecute");
    }));
    EXPECT_TRUE(Marks([&] {
        Select({"Nachts"});
        Run("MenuAction_CreateBeforeExecute");
    }));
    EXPECT_TRUE(Marks([&] { Rename("Neue Aktion", "Schritt"); }));
    EXPECT_TRUE(Marks([&] {
        Select({"Schritt"});
        Run("MenuAction_CopyExecute");
        Run("MenuAction_PasteBeforeExecute");
    }));
    EXPECT_TRUE(Marks([&] {
        Select({"Warm"});
        Run("MenuAction_CutExecute");
        Select({"Nachts"});
        Run("MenuAction_PasteBeforeExecute");
    }));
    EXPECT_TRUE(Marks([&] {
        ShowProperties("Warm");
        Type("EditValue", "22");
        Press("BtnOK");
    }));
    EXPECT_TRUE(Marks([&] {
        Select({"Warm"});
        Run("MenuAction_DeleteExecute");
    }));
}

TEST_F(SceneModified, IsClearedByALoad)
{
    Select({"Warm"});
    Run("MenuAction_DeleteExecute");
    ASSERT_TRUE(m_frame->IsModified());
    Run("MenuAction_Reload");
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneModified, StaysWhenTheDialogIsAppliedWithoutAChange)
{
    Rename("Warm", "Heiss");
    ShowProperties("Heiss");
    Press("BtnOK");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(SceneModified, IsNotSetByALoadWhileTheDialogIsShown)
{
    ShowProperties("Warm");
    Type("EditValue", "25");
    Run("MenuAction_Reload");
    EXPECT_FALSE(m_frame->IsModified());
    Press("BtnApply");
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_TRUE(m_frame->IsDialogShown());
    EXPECT_EQ(Node("Warm")->Item()->Value, QStringLiteral("21"));
}
