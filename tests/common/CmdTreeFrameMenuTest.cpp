#include "CmdTreeFrame.h"

#include "TestSupport.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QMenu>
#include <QTest>
#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace
{

// An editor whose top node is fixed, with a popup menu of one row that says what the menu acts on.
class TMenuFrame final : public TCmdTreeFrame
{
public:
    explicit TMenuFrame(bool withMenu) : TCmdTreeFrame(nullptr)
    {
        auto top = std::make_unique<TTreeNode>(QStringLiteral("top"));
        for (const char16_t* name : {u"a", u"b", u"c"})
            (new TTreeNode(QString::fromUtf16(name)))->MoveTo(top.get(), naAddChild);
        ReplaceContent(std::move(top));
        expandAll();
        if (withMenu)
            MakePopupMenu(this, std::span<const TPopupRow<TMenuFrame>>(Rows));
        SetEditable(true);
    }

    void MenuAction_Run() { Runs.append(ActsOn()); }
    // The node that the menu acts on, and whether that is valid.
    QString ActsOn() const
    {
        const TTreeNode* node = MenuNode();
        return (node ? node->Caption() : QStringLiteral("nothing")) + (IsMenuValid() ? u'+' : u'-');
    }
    int Nodes() const { return CountNodes(); }

    QStringList Runs;
    int SelectionChanges = 0;

protected:
    void BeginCommand(const QString&) override {}
    void ApplyCommandItem(const QString&, const QString&) override {}
    void FinishCommand() override {}
    void ReloadForProject() override {}
    bool IsFixed(const TTreeNode* node) const override { return node->Level() == 0; }
    void HandleSelectionChange() override { ++SelectionChanges; }

private:
    static constexpr std::array<TPopupRow<TMenuFrame>, 1> Rows{{{.Name = "MenuAction_Run",
                                                                 .Caption = _RSTR_DELETE,
                                                                 .Shortcut = "Del",
                                                                 .Execute = &TMenuFrame::MenuAction_Run}}};
};

class CmdTreeFrameMenu : public testing::Test
{
protected:
    CmdTreeFrameMenu()
    {
        m_frame.resize(300, 300);
        m_frame.show();
        m_frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_frame));
        m_frame.setFocus();
    }

    TTreeNode* Node(const char* caption) const
    {
        for (TTreeNode* node = m_frame.TopNode(); node; node = node->Next()) {
            if (node->Caption() == QLatin1StringView(caption))
                return node;
        }
        return nullptr;
    }
    // By the mouse over a node; over no node for null.
    void OpenMenu(const char* caption)
    {
        const QPoint place = caption ? m_frame.visualItemRect(Node(caption)).center() : QPoint(10, 280);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, m_frame.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(m_frame.viewport(), &event);
    }
    void CloseMenu()
    {
        Menu()->hide();
        QCoreApplication::processEvents();
    }
    QMenu* Menu() const { return m_frame.findChild<QMenu*>(); }
    QString Selected() const
    {
        QString captions;
        const QList<TTreeNode*> nodes = m_frame.SelectedNodes();
        for (const TTreeNode* node : nodes)
            captions += node->Caption();
        return captions;
    }

    TRecordedMessages m_messages;
    TMenuFrame m_frame{true};
};

QWidget* MakeNothing(QWidget*)
{
    return nullptr;
}

} // namespace

TEST_F(CmdTreeFrameMenu, ActsOnTheNodeUnderTheMouseAndSelectsIt)
{
    m_frame.SelectNode(Node("a"));
    OpenMenu("b");
    EXPECT_TRUE(Menu()->isVisible());
    EXPECT_EQ(m_frame.ActsOn(), QStringLiteral("b+"));
    EXPECT_EQ(Selected(), QStringLiteral("b"));
    CloseMenu();
    EXPECT_EQ(m_frame.ActsOn(), QStringLiteral("b+"));
}

TEST_F(CmdTreeFrameMenu, ActsOnTheSelectedNodeWhenItIsNotOpen)
{
    EXPECT_EQ(m_frame.ActsOn(), QStringLiteral("nothing-"));
    m_frame.SelectNode(Node("c"));
    EXPECT_EQ(m_frame.ActsOn(), QStringLiteral("c+"));
    m_frame.SelectNode(Node("top"));
    EXPECT_EQ(m_frame.ActsOn(), QStringLiteral("top-"));
}

TEST_F(CmdTreeFrameMenu, IsNotValidBesideAllNodesOnAFixedNodeAndWithoutASelection)
{
    OpenMenu("a");
    EXPECT_EQ(m_frame.ActsOn(), QStringLiteral("a-")) << "nothing is selected";
    EXPECT_EQ(Selected(), QString());
    CloseMenu();
    m_frame.SelectNode(Node("a"));
    for (const char* place : {static_cast<const char*>(nullptr), "top"}) {
        OpenMenu(place);
        EXPECT_EQ(m_frame.ActsOn(), place ? QStringLiteral("top-") : QStringLiteral("nothing-"));
        EXPECT_EQ(Selected(), QStringLiteral("a"));
        CloseMenu();
    }
}

TEST_F(CmdTreeFrameMenu, KeepsASelectionAroundTheNodeUnderTheMouse)
{
    m_frame.SelectNode(Node("a"));
    Node("b")->setSelected(true);
    Node("c")->setSelected(true);
    OpenMenu("b");
    EXPECT_EQ(Selected(), QStringLiteral("abc"));
    EXPECT_EQ(m_frame.SelectedNode(), Node("b"));
    CloseMenu();
}

TEST_F(CmdTreeFrameMenu, OpensForTheSelectedNodeByTheKeyboard)
{
    m_frame.SelectNode(Node("c"));
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5), m_frame.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(m_frame.viewport(), &event);
    EXPECT_TRUE(Menu()->isVisible());
    EXPECT_EQ(m_frame.ActsOn(), QStringLiteral("c+"));
    CloseMenu();
}

TEST_F(CmdTreeFrameMenu, ActsOnNoNodeThatIsDeletedWhileItIsOpen)
{
    m_frame.SelectNode(Node("a"));
    OpenMenu("b");
    m_frame.RemoveBranches({Node("b")});
    EXPECT_EQ(m_frame.ActsOn(), QStringLiteral("nothing-"));
    CloseMenu();
}

TEST_F(CmdTreeFrameMenu, RunsWhatIsChosenForItsPlace)
{
    m_frame.SelectNode(Node("a"));
    OpenMenu(nullptr);
    QTest::mouseClick(Menu(), Qt::LeftButton, {}, Menu()->actionGeometry(Menu()->actions().at(0)).center());
    EXPECT_EQ(m_frame.Runs, QStringList({QStringLiteral("nothing-")}));
}

TEST_F(CmdTreeFrameMenu, RunsAShortCutForTheSelectedNode)
{
    m_frame.SelectNode(Node("a"));
    QTest::keyClick(&m_frame, Qt::Key_Delete);
    EXPECT_EQ(m_frame.Runs, QStringList({QStringLiteral("a+")}));
}

TEST_F(CmdTreeFrameMenu, GoesWithTheShortCutsWhileTheTreeIsNotEditable)
{
    m_frame.SelectNode(Node("a"));
    m_frame.SetEditable(false);
    OpenMenu("b");
    EXPECT_FALSE(Menu()->isVisible());
    EXPECT_EQ(Selected(), QStringLiteral("a"));
    QTest::keyClick(&m_frame, Qt::Key_Delete);
    EXPECT_TRUE(m_frame.Runs.isEmpty());
    m_frame.SetEditable(true);
    QTest::keyClick(&m_frame, Qt::Key_Delete);
    EXPECT_EQ(m_frame.Runs, QStringList({QStringLiteral("a+")}));
}

TEST_F(CmdTreeFrameMenu, TellsTheEditorOfTheSelectionWhenTheTreeBecomesEditable)
{
    const int before = m_frame.SelectionChanges;
    m_frame.SetEditable(false);
    EXPECT_EQ(m_frame.SelectionChanges, before);
    m_frame.SetEditable(true);
    EXPECT_EQ(m_frame.SelectionChanges, before + 1);
}

TEST_F(CmdTreeFrameMenu, CountsItsNodes)
{
    EXPECT_EQ(m_frame.Nodes(), 4);
    m_frame.RemoveBranches({Node("b")});
    EXPECT_EQ(m_frame.Nodes(), 3);
    m_frame.ReplaceContent(nullptr);
    EXPECT_EQ(m_frame.Nodes(), 0);
}

TEST(CmdTreeFrameWithoutMenu, ActsOnTheSelectedNode)
{
    TMenuFrame frame(false);
    frame.SelectNode(frame.TopNode()->Child(0));
    EXPECT_EQ(frame.ActsOn(), QStringLiteral("a+"));
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
    QCoreApplication::sendEvent(frame.viewport(), &event);
    EXPECT_EQ(frame.findChild<QMenu*>(), nullptr);
    frame.UpdateActions();
}

// Registering an editor

TEST(RegisterEditor, MakesTheClassKnownAndItsProgIdWhereTheHostHasARegistry)
{
    const auto name = QStringLiteral("TTestEditor");
    {
        TClientRegistry registry;
        SetApplicationInterface(IID_IRegisterClient, &registry);
        RegisterEditor(name, "Velmora.TestEditor.1", MakeNothing);
        SetApplicationInterface(IID_IRegisterClient, nullptr);
        EXPECT_EQ(registry.ClassOf(QStringLiteral("velmora.testeditor.1")), name);
    }
    EXPECT_TRUE(RegisteredComponents().contains(name));
    UnregisterComponent(name);
}

TEST(RegisterEditor, MakesTheClassKnownWithoutARegistryToo)
{
    const auto name = QStringLiteral("TTestEditor");
    RegisterEditor(name, "Velmora.TestEditor.1", MakeNothing);
    EXPECT_TRUE(RegisteredComponents().contains(name));
    UnregisterComponent(name);
    EXPECT_FALSE(RegisteredComponents().contains(name));
}
