#include "MenuTree.h"

#include <QAction>
#include <QLineEdit>
#include <QPointer>

namespace
{

// Two frames and the two dialogs that they share.
class MenuSharing : public TMenuTree
{
protected:
    MenuSharing() : m_other(MakeFrame()) {}

    void ShowInOther(const char* name) const
    {
        m_other->SelectNode(NodeOf(*m_other, name));
        m_other->MenuAction_AttributesExecute();
    }
    TVlMenuItem& Other(const char* name) const { return *NodeOf(*m_other, name)->Item(); }

    std::unique_ptr<TMenuTreeFrame> m_other;
};

} // namespace

TEST_F(MenuSharing, TakesADialogOverWithTheChangeOfTheOtherApplied)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Anders");
    ShowInOther("Uhr");
    EXPECT_FALSE(m_frame->IsMenuDialogShown());
    EXPECT_TRUE(m_other->IsMenuDialogShown());
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Anders"));
    EXPECT_EQ(Other("Wetter").Title, QStringLiteral("Das Wetter"));
    Type("EditTitle", "Die Uhr");
    Press("BtnApply");
    EXPECT_EQ(Other("Uhr").Title, QStringLiteral("Die Uhr"));
    EXPECT_EQ(Item("Uhr").Title, QString());
}

TEST_F(MenuSharing, KeepsEachKindWithTheFrameThatShowsIt)
{
    ShowProperties("Wetter");
    ShowInOther("Tür");
    EXPECT_TRUE(m_frame->IsMenuDialogShown());
    EXPECT_TRUE(m_other->IsLinkDialogShown());
    EXPECT_TRUE(MenuDialog()->isVisible());
    EXPECT_TRUE(LinkDialog()->isVisible());
    LinkDialog()->SetNodeValue(QStringLiteral("9"));
    MenuDialog()->SetMenuTitle(QStringLiteral("Anders"));
    LinkDialog()->close();
    EXPECT_TRUE(m_frame->IsMenuDialogShown());
    Select("Uhr");
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Anders"));
    EXPECT_EQ(Other("Tür").Link, QStringLiteral("0"));
}

TEST_F(MenuSharing, FollowsTheFrameThatShowsANode)
{
    ShowProperties("Wetter");
    ShowInOther("Wetter");
    Select("Licht");
    EXPECT_EQ(MenuDialog()->GetMenuName(), QStringLiteral("Wetter"));
    Press("SBtnDown");
    EXPECT_EQ(m_other->SelectedNode(), NodeOf(*m_other, "Uhr"));
    EXPECT_EQ(Selected(), "Licht");
}

TEST_F(MenuSharing, TakesBothKindsFromTheOther)
{
    ShowProperties("Wetter");
    ShowInOther("Tür");
    ShowInOther("Licht");
    EXPECT_FALSE(m_frame->IsMenuDialogShown());
    EXPECT_TRUE(m_other->IsMenuDialogShown());
    EXPECT_FALSE(LinkDialog()->isVisible());
    ShowProperties("Tür");
    EXPECT_TRUE(m_other->IsMenuDialogShown());
    EXPECT_TRUE(m_frame->IsLinkDialogShown());
}

TEST_F(MenuSharing, IsWiredAnewAfterItWasClosed)
{
    ShowProperties("Tür");
    Press("BtnCancel");
    ShowInOther("Tür");
    Type("EditValue", "9");
    Press("BtnOK");
    EXPECT_EQ(Other("Tür").Link, QStringLiteral("9"));
    EXPECT_EQ(Item("Tür").Link, QStringLiteral("0"));
}

TEST_F(MenuSharing, GoesWithTheFrameThatOwnsIt)
{
    ShowProperties("Wetter");
    const QPointer<TMenuPropsDialog> dialog = MenuDialog();
    ShowInOther("Uhr");
    m_frame.reset();
    EXPECT_TRUE(dialog.isNull());
    EXPECT_FALSE(m_other->IsMenuDialogShown());
    ShowInOther("Licht");
    EXPECT_TRUE(m_other->IsMenuDialogShown());
    EXPECT_EQ(MenuDialog()->GetMenuName(), QStringLiteral("Licht"));
}

TEST_F(MenuSharing, GoesWithAFrameThatOnlyUsesIt)
{
    ShowProperties("Tür");
    const QPointer<TLinkPropsDialog> dialog = LinkDialog();
    ShowInOther("Tür");
    m_other.reset();
    EXPECT_TRUE(dialog.isNull());
    ShowProperties("vTag");
    EXPECT_EQ(LinkDialog()->GetNodeAlias(), QStringLiteral("vTag"));
}

TEST_F(MenuSharing, GoesWithAFrameThatNeverUsedItAndAppliesAChange)
{
    ShowProperties("Wetter");
    Type("EditTitle", "Anders");
    m_other.reset();
    EXPECT_EQ(MenuDialog(), nullptr);
    EXPECT_FALSE(m_frame->IsMenuDialogShown());
    EXPECT_EQ(Item("Wetter").Title, QStringLiteral("Anders"));
    EXPECT_TRUE(m_frame->IsModified());
    EXPECT_TRUE(Action("MenuAction_AttributesExecute")->isEnabled());
}

TEST_F(MenuSharing, EndsWithBothFramesAndChangesThatWait)
{
    ShowProperties("Wetter");
    MenuDialog()->SetMenuTitle(QStringLiteral("Anders"));
    ShowInOther("Tür");
    LinkDialog()->SetNodeValue(QStringLiteral("9"));
    m_frame.reset();
    EXPECT_EQ(Other("Tür").Link, QStringLiteral("9"));
    m_other.reset();
    EXPECT_EQ(MenuDialog(), nullptr);
    EXPECT_EQ(LinkDialog(), nullptr);
}

TEST_F(MenuSharing, IsReleasedByCall)
{
    ShowProperties("Wetter");
    ShowInOther("Tür");
    TMenuTreeFrame::FinalizeMenu();
    TMenuTreeFrame::FinalizeMenu();
    EXPECT_EQ(MenuDialog(), nullptr);
    EXPECT_EQ(LinkDialog(), nullptr);
    EXPECT_FALSE(m_frame->IsMenuDialogShown());
    EXPECT_FALSE(m_other->IsLinkDialogShown());
    ShowProperties("Wetter");
    EXPECT_EQ(MenuDialog()->GetMenuName(), QStringLiteral("Wetter"));
}
