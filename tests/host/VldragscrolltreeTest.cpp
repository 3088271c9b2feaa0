#include "Vldragscrolltree.h"

#include "TestSupport.h"
#include "Vlerrors.h"

#include <QCoreApplication>
#include <QFont>
#include <QHoverEvent>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace
{

class TRecordingTree final : public TDragScrollTree
{
public:
    void HandleEdited(TTreeNode* node, const QString& text) override
    {
        Edited.append(node->Caption() + u'=' + text);
        if (text == QStringLiteral("fail"))
            throw TUserError(QStringLiteral("edit"));
        if (!text.isEmpty())
            ChangeRecord(node, [&] {
                node->SetCaption(text);
                return true;
            });
    }
    bool CanEdit(const TTreeNode* node) const override { return node != Locked; }
    void HandleSelectionChange() override
    {
        ++SelectionChanges;
        if (FailOnSelection)
            throw TUserError(QStringLiteral("selection"));
    }
    void HandleEditable(bool editable) override { Editable.append(editable); }
    void HandleChange() override
    {
        ++Changes;
        if (FailOnChange)
            throw TUserError(QStringLiteral("change"));
    }
    void HandleDeletion(TTreeNode* node) override
    {
        Deleted.append(node->Caption());
        if (FailOnDeletion)
            throw TUserError(QStringLiteral("deletion"));
    }

    const TTreeNode* Locked = nullptr;
    QStringList Edited;
    QStringList Deleted;
    QList<bool> Editable;
    int SelectionChanges = 0;
    int Changes = 0;
    bool FailOnChange = false;
    bool FailOnSelection = false;
    bool FailOnDeletion = false;
};

std::unique_ptr<TTreeNode> Branch(const QString& caption, const QStringList& below = {})
{
    auto top = std::make_unique<TTreeNode>(caption);
    for (const QString& name : below)
        (new TTreeNode(name))->MoveTo(top.get(), naAddChild);
    return top;
}

QString Captions(const QList<TTreeNode*>& nodes)
{
    QStringList captions;
    for (const TTreeNode* node : nodes)
        captions.append(node->Caption());
    return captions.join(u' ');
}

// A shown tree with the top node "top" and, below it, a (a1 a2), b (b1 b2), c, d, e; everything expanded.
class DragScrollTree : public testing::Test
{
protected:
    DragScrollTree()
    {
        auto top = Branch(QStringLiteral("top"));
        for (const char16_t* name : {u"a", u"b", u"c", u"d", u"e"})
            (new TTreeNode(QString::fromUtf16(name)))->MoveTo(top.get(), naAddChild);
        for (const int parent : {0, 1}) {
            for (const char16_t number : {u'1', u'2'})
                (new TTreeNode(top->Child(parent)->Caption() + number))->MoveTo(top->Child(parent), naAddChild);
        }
        m_tree.ReplaceContent(std::move(top));
        m_tree.expandAll();
        m_tree.setWindowTitle(QStringLiteral("[*]"));
        m_tree.resize(400, 400);
        m_tree.show();
        m_tree.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_tree));
    }

    TTreeNode* Node(const QString& caption) const
    {
        for (TTreeNode* node = m_tree.TopNode(); node; node = node->Next()) {
            if (node->Caption() == caption)
                return node;
        }
        ADD_FAILURE() << caption.toStdString();
        return nullptr;
    }
    QList<TTreeNode*> Nodes(const QString& captions) const
    {
        QList<TTreeNode*> nodes;
        for (const QString& caption : captions.split(u' '))
            nodes.append(Node(caption));
        return nodes;
    }
    void Click(const QString& caption, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        const QRect place = m_tree.visualItemRect(Node(caption));
        QTest::mouseClick(m_tree.viewport(), Qt::LeftButton, keys, place.center());
    }
    QString Selected() const { return Captions(m_tree.SelectedNodes()); }
    QString Reading() const
    {
        QList<TTreeNode*> nodes;
        for (TTreeNode* node = m_tree.TopNode(); node; node = node->Next())
            nodes.append(node);
        return Captions(nodes);
    }
    QLineEdit* Editor() const { return m_tree.viewport()->findChild<QLineEdit*>(); }
    void Type(const QString& text)
    {
        QLineEdit* editor = Editor();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // the view takes the text from its editor later
    }

    void SendHover(QEvent::Type type, const QPoint& place)
    {
        QHoverEvent event(type, place, m_tree.viewport()->mapToGlobal(place), QPointF());
        QCoreApplication::sendEvent(m_tree.viewport(), &event);
    }
    void Hover(const QString& caption) { SendHover(QEvent::HoverMove, m_tree.visualItemRect(Node(caption)).center()); }
    // The captions of the nodes that are drawn underlined.
    QString Underlined() const
    {
        QList<TTreeNode*> nodes;
        for (TTreeNode* node = m_tree.TopNode(); node; node = node->Next()) {
            if (node->data(0, Qt::FontRole).value<QFont>().underline())
                nodes.append(node);
        }
        return Captions(nodes);
    }

    TRecordingTree m_tree;
};

} // namespace

TEST_F(DragScrollTree, FindsTheNodeAtAPlace)
{
    EXPECT_EQ(m_tree.NodeAt(m_tree.visualItemRect(Node(QStringLiteral("b1"))).center()), Node(QStringLiteral("b1")));
    EXPECT_EQ(m_tree.NodeAt(QPoint(10, 390)), nullptr);
}

TEST_F(DragScrollTree, HasNoSelectionAtFirst)
{
    EXPECT_EQ(m_tree.SelectedNode(), nullptr);
    EXPECT_TRUE(m_tree.SelectedNodes().isEmpty());
}

TEST_F(DragScrollTree, SelectsOneNodeByCall)
{
    Click(QStringLiteral("a"));
    Click(QStringLiteral("c"), Qt::ControlModifier);
    m_tree.SelectNode(Node(QStringLiteral("d")));
    EXPECT_EQ(Selected(), QStringLiteral("d"));
    EXPECT_EQ(m_tree.SelectedNode(), Node(QStringLiteral("d")));
    EXPECT_EQ(m_tree.currentItem(), Node(QStringLiteral("d")));
    m_tree.SelectNode(nullptr);
    EXPECT_EQ(Selected(), QString());
    EXPECT_EQ(m_tree.SelectedNode(), nullptr);
}

TEST_F(DragScrollTree, KeepsTheOrderOfSelection)
{
    Click(QStringLiteral("d"));
    Click(QStringLiteral("a1"), Qt::ControlModifier);
    Click(QStringLiteral("c"), Qt::ControlModifier);
    EXPECT_EQ(Selected(), QStringLiteral("d a1 c"));
    EXPECT_EQ(m_tree.SelectedNode(), Node(QStringLiteral("c")));
}

TEST_F(DragScrollTree, PutsANodeLastThatIsSelectedAgain)
{
    Click(QStringLiteral("d"));
    Click(QStringLiteral("a"), Qt::ControlModifier);
    Click(QStringLiteral("c"), Qt::ControlModifier);
    Click(QStringLiteral("d"), Qt::ControlModifier);
    EXPECT_EQ(Selected(), QStringLiteral("a c"));
    Click(QStringLiteral("d"), Qt::ControlModifier);
    EXPECT_EQ(Selected(), QStringLiteral("a c d"));
}

TEST_F(DragScrollTree, TakesTheNodeSelectedLastWhenTheFocusedOneIsNotSelected)
{
    Click(QStringLiteral("a"));
    Click(QStringLiteral("e"), Qt::ControlModifier);
    Click(QStringLiteral("c"), Qt::ControlModifier);
    Click(QStringLiteral("c"), Qt::ControlModifier);
    EXPECT_EQ(m_tree.currentItem(), Node(QStringLiteral("c")));
    EXPECT_EQ(m_tree.SelectedNode(), Node(QStringLiteral("e")));
}

TEST_F(DragScrollTree, SelectsARangeDownwardsInReadingOrder)
{
    Click(QStringLiteral("c"));
    Click(QStringLiteral("e"), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), QStringLiteral("c d e"));
}

TEST_F(DragScrollTree, SelectsARangeUpwardsAwayFromItsBeginning)
{
    Click(QStringLiteral("e"));
    Click(QStringLiteral("c"), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), QStringLiteral("e d c"));
    EXPECT_EQ(m_tree.SelectedNode(), Node(QStringLiteral("c")));
}

TEST_F(DragScrollTree, ExtendsARangeInItsDirection)
{
    Click(QStringLiteral("d"));
    Click(QStringLiteral("c"), Qt::ShiftModifier);
    Click(QStringLiteral("b2"), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), QStringLiteral("d c b2"));
}

TEST_F(DragScrollTree, TurnsARangeAround)
{
    Click(QStringLiteral("d"));
    Click(QStringLiteral("c"), Qt::ShiftModifier);
    Click(QStringLiteral("e"), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), QStringLiteral("d e"));
}

TEST_F(DragScrollTree, SelectsARangeOverSeveralLevelsDownwards)
{
    Click(QStringLiteral("a"));
    Click(QStringLiteral("c"), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), QStringLiteral("a a1 a2 b b1 b2 c"));
}

TEST_F(DragScrollTree, SelectsARangeOverSeveralLevelsUpwards)
{
    Click(QStringLiteral("c"));
    Click(QStringLiteral("a1"), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), QStringLiteral("c b2 b1 b a2 a1"));
}

TEST_F(DragScrollTree, SelectsARangeFromOneBranchIntoTheNext)
{
    Click(QStringLiteral("a2"));
    Click(QStringLiteral("b1"), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), QStringLiteral("a2 b b1"));
    Click(QStringLiteral("b1"));
    Click(QStringLiteral("a2"), Qt::ShiftModifier);
    EXPECT_EQ(Selected(), QStringLiteral("b1 b a2"));
}

TEST_F(DragScrollTree, SelectsRangesByKeyboard)
{
    Click(QStringLiteral("d"));
    QTest::keyClick(&m_tree, Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(&m_tree, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(Selected(), QStringLiteral("d c b2"));
}

TEST_F(DragScrollTree, TellsWhenTheSelectionChanges)
{
    const int before = m_tree.SelectionChanges;
    Click(QStringLiteral("a"));
    EXPECT_EQ(m_tree.SelectionChanges, before + 1);
    Click(QStringLiteral("a"));
    EXPECT_EQ(m_tree.SelectionChanges, before + 1);
}

TEST_F(DragScrollTree, GuardsWhatAFrameDoesOnSelection)
{
    TRecordedMessages messages;
    m_tree.FailOnSelection = true;
    Click(QStringLiteral("a"));
    m_tree.FailOnSelection = false;
    EXPECT_EQ(messages.Errors, QStringList{QStringLiteral("selection")});
    EXPECT_EQ(Selected(), QStringLiteral("a"));
}

TEST_F(DragScrollTree, IsNotModifiedByLoading)
{
    EXPECT_FALSE(m_tree.IsModified());
    m_tree.ReplaceContent(Branch(QStringLiteral("neu"), {QStringLiteral("n1")}));
    EXPECT_FALSE(m_tree.IsModified());
    EXPECT_EQ(Reading(), QStringLiteral("neu n1"));
    EXPECT_TRUE(m_tree.Deleted.isEmpty());
}

TEST_F(DragScrollTree, LeavesTheModifiedStateWhenItsContentIsExchanged)
{
    m_tree.SetModified(true);
    m_tree.ReplaceContent(nullptr);
    EXPECT_TRUE(m_tree.IsModified());
    EXPECT_EQ(m_tree.TopNode(), nullptr);
    EXPECT_TRUE(m_tree.SelectedNodes().isEmpty());
}

TEST_F(DragScrollTree, ForgetsReferencesWhenItsContentIsExchanged)
{
    const TNodeRef reference(Node(QStringLiteral("b2")));
    m_tree.SelectNode(reference.Get());
    m_tree.ReplaceContent(Branch(QStringLiteral("neu")));
    EXPECT_EQ(reference.Get(), nullptr);
    EXPECT_TRUE(m_tree.SelectedNodes().isEmpty());
}

TEST_F(DragScrollTree, ShowsItsModifiedStateAsTheWidgetsProperty)
{
    m_tree.SetModified(true);
    EXPECT_TRUE(m_tree.isWindowModified());
    m_tree.SetModified(false);
    EXPECT_FALSE(m_tree.isWindowModified());
}

TEST_F(DragScrollTree, TakesABranch)
{
    TTreeNode* inserted =
        m_tree.InsertBranch(Branch(QStringLiteral("n"), {QStringLiteral("n1")}), Node(QStringLiteral("b")), naInsert);
    ASSERT_NE(inserted, nullptr);
    EXPECT_EQ(inserted->Caption(), QStringLiteral("n"));
    EXPECT_EQ(inserted->Tree(), &m_tree);
    EXPECT_EQ(Reading(), QStringLiteral("top a a1 a2 n n1 b b1 b2 c d e"));
    EXPECT_TRUE(m_tree.IsModified());
}

TEST_F(DragScrollTree, TakesABranchInEveryMode)
{
    TTreeNode* b = Node(QStringLiteral("b"));
    m_tree.InsertBranch(Branch(QStringLiteral("1")), b, naAdd);
    m_tree.InsertBranch(Branch(QStringLiteral("2")), b, naAddFirst);
    m_tree.InsertBranch(Branch(QStringLiteral("3")), b, naAddChild);
    m_tree.InsertBranch(Branch(QStringLiteral("4")), b, naAddChildFirst);
    m_tree.InsertBranch(Branch(QStringLiteral("5")), b, naInsert);
    EXPECT_EQ(Reading(), QStringLiteral("top 2 a a1 a2 5 b 4 b1 b2 3 c d e 1"));
}

TEST_F(DragScrollTree, TakesNoBranchThatIsNone)
{
    EXPECT_EQ(m_tree.InsertBranch(nullptr, m_tree.TopNode(), naAddChild), nullptr);
    EXPECT_FALSE(m_tree.IsModified());
}

TEST_F(DragScrollTree, DestroysABranchThatCannotGoWhereItShould)
{
    TTreeNode detached;
    auto branch = Branch(QStringLiteral("n"));
    const TNodeRef reference(branch.get());
    EXPECT_EQ(m_tree.InsertBranch(std::move(branch), &detached, naAdd), nullptr);
    EXPECT_EQ(reference.Get(), nullptr);
    EXPECT_FALSE(m_tree.IsModified());
}

TEST_F(DragScrollTree, RemovesABranchWithAllBelow)
{
    const TNodeRef inner(Node(QStringLiteral("a1")));
    const TNodeRef other(Node(QStringLiteral("b")));
    m_tree.RemoveBranches(Nodes(QStringLiteral("a")));
    EXPECT_EQ(Reading(), QStringLiteral("top b b1 b2 c d e"));
    EXPECT_EQ(inner.Get(), nullptr);
    EXPECT_NE(other.Get(), nullptr);
    EXPECT_EQ(m_tree.Deleted, QStringList{QStringLiteral("a")});
    EXPECT_TRUE(m_tree.IsModified());
}

TEST_F(DragScrollTree, RemovesNestedAndDoubledNodesOnce)
{
    m_tree.RemoveBranches(Nodes(QStringLiteral("a1 a b2 a a2 b2 d")));
    EXPECT_EQ(Reading(), QStringLiteral("top b b1 c e"));
    EXPECT_EQ(m_tree.Deleted.join(u' '), QStringLiteral("a b2 d"));
}

TEST_F(DragScrollTree, RemovesAlternatingNodes)
{
    m_tree.RemoveBranches(Nodes(QStringLiteral("e a c")));
    EXPECT_EQ(Reading(), QStringLiteral("top b b1 b2 d"));
}

TEST_F(DragScrollTree, RemovesFromSeveralParents)
{
    m_tree.RemoveBranches(Nodes(QStringLiteral("b1 a2 e a1 d")));
    EXPECT_EQ(Reading(), QStringLiteral("top a b b2 c"));
}

TEST_F(DragScrollTree, RemovesItsTopNode)
{
    m_tree.RemoveBranches({m_tree.TopNode()});
    EXPECT_EQ(m_tree.TopNode(), nullptr);
    EXPECT_EQ(m_tree.topLevelItemCount(), 0);
}

TEST_F(DragScrollTree, IsNotModifiedByRemovingNothing)
{
    m_tree.RemoveBranches({});
    EXPECT_FALSE(m_tree.IsModified());
    EXPECT_TRUE(m_tree.updatesEnabled());
}

TEST_F(DragScrollTree, RemovesItsSelection)
{
    Click(QStringLiteral("c"));
    Click(QStringLiteral("d"), Qt::ShiftModifier);
    m_tree.RemoveBranches(m_tree.SelectedNodes());
    EXPECT_EQ(Selected(), QString());
    EXPECT_EQ(m_tree.SelectedNode(), nullptr);
    EXPECT_EQ(Reading(), QStringLiteral("top a a1 a2 b b1 b2 e"));
}

TEST_F(DragScrollTree, GuardsWhatAFrameDoesOnDeletion)
{
    TRecordedMessages messages;
    m_tree.FailOnDeletion = true;
    EXPECT_NO_THROW(m_tree.RemoveBranches(Nodes(QStringLiteral("c"))));
    EXPECT_EQ(messages.Errors, QStringList{QStringLiteral("deletion")});
    EXPECT_EQ(Reading(), QStringLiteral("top a a1 a2 b b1 b2 d e"));
}

TEST_F(DragScrollTree, RemovesTenThousandNodes)
{
    constexpr int Total = 10000;
    auto top = Branch(QStringLiteral("top"));
    QList<QTreeWidgetItem*> children;
    QList<TTreeNode*> odd;
    for (int i = 0; i < Total; ++i) {
        auto* node = new TTreeNode(QString::number(i));
        children.append(node);
        if (i % 2)
            odd.append(node);
    }
    top->addChildren(children);
    m_tree.ReplaceContent(std::move(top));
    m_tree.expandAll();
    const TNodeRef last(odd.last());

    m_tree.RemoveBranches(odd);
    ASSERT_EQ(m_tree.TopNode()->Count(), Total / 2);
    for (int i = 0; i < Total / 2; ++i)
        ASSERT_EQ(m_tree.TopNode()->Child(i)->Caption(), QString::number(2 * i));
    EXPECT_EQ(last.Get(), nullptr);

    QList<TTreeNode*> rest;
    for (int i = 0; i < m_tree.TopNode()->Count(); ++i)
        rest.prepend(m_tree.TopNode()->Child(i));
    m_tree.RemoveBranches(rest);
    EXPECT_EQ(m_tree.TopNode()->Count(), 0);
}

TEST_F(DragScrollTree, MovesABranch)
{
    EXPECT_TRUE(m_tree.MoveBranch(Node(QStringLiteral("a")), Node(QStringLiteral("d")), naInsert));
    EXPECT_EQ(Reading(), QStringLiteral("top b b1 b2 c a a1 a2 d e"));
    EXPECT_TRUE(m_tree.IsModified());
}

TEST_F(DragScrollTree, KeepsExpansionWhenABranchMoves)
{
    Node(QStringLiteral("b"))->setExpanded(false);
    EXPECT_TRUE(m_tree.MoveBranch(Node(QStringLiteral("a")), Node(QStringLiteral("e")), naAdd));
    EXPECT_TRUE(m_tree.MoveBranch(Node(QStringLiteral("b")), Node(QStringLiteral("e")), naAdd));
    EXPECT_TRUE(Node(QStringLiteral("a"))->isExpanded());
    EXPECT_FALSE(Node(QStringLiteral("b"))->isExpanded());
}

TEST_F(DragScrollTree, KeepsExpansionBelowABranchThatMoves)
{
    EXPECT_TRUE(m_tree.MoveBranch(Node(QStringLiteral("b")), Node(QStringLiteral("a")), naAddChild));
    EXPECT_TRUE(m_tree.MoveBranch(Node(QStringLiteral("a")), Node(QStringLiteral("e")), naAdd));
    EXPECT_TRUE(Node(QStringLiteral("a"))->isExpanded());
    EXPECT_TRUE(Node(QStringLiteral("b"))->isExpanded());
}

TEST_F(DragScrollTree, KeepsTheSelectionOfABranchThatMoves)
{
    Click(QStringLiteral("a"));
    EXPECT_TRUE(m_tree.MoveBranch(Node(QStringLiteral("a")), Node(QStringLiteral("e")), naAdd));
    EXPECT_EQ(Selected(), QStringLiteral("a"));
    EXPECT_EQ(m_tree.SelectedNode(), Node(QStringLiteral("a")));
}

TEST_F(DragScrollTree, KeepsTheSelectionOfOthersWhenABranchMoves)
{
    Click(QStringLiteral("c"));
    EXPECT_TRUE(m_tree.MoveBranch(Node(QStringLiteral("a")), Node(QStringLiteral("e")), naAdd));
    EXPECT_EQ(Selected(), QStringLiteral("c"));
}

TEST_F(DragScrollTree, KeepsTheSelectionOfSeveralWhenOneOfThemMoves)
{
    Click(QStringLiteral("a"));
    Click(QStringLiteral("c"), Qt::ControlModifier);
    Click(QStringLiteral("d"), Qt::ControlModifier);
    EXPECT_TRUE(m_tree.MoveBranch(Node(QStringLiteral("c")), Node(QStringLiteral("e")), naAdd));
    EXPECT_EQ(Selected(), QStringLiteral("a c d"));
}

TEST_F(DragScrollTree, KeepsTheSelectionBelowABranchThatMoves)
{
    Click(QStringLiteral("a1"));
    EXPECT_TRUE(m_tree.MoveBranch(Node(QStringLiteral("a")), Node(QStringLiteral("e")), naAdd));
    EXPECT_EQ(Selected(), QStringLiteral("a1"));
}

TEST_F(DragScrollTree, ChangesNothingWhenABranchCannotMove)
{
    Click(QStringLiteral("a"));
    EXPECT_FALSE(m_tree.MoveBranch(Node(QStringLiteral("a")), Node(QStringLiteral("a1")), naAddChild));
    EXPECT_EQ(Reading(), QStringLiteral("top a a1 a2 b b1 b2 c d e"));
    EXPECT_EQ(Selected(), QStringLiteral("a"));
    EXPECT_FALSE(m_tree.IsModified());
}

TEST_F(DragScrollTree, NotesAChangedRecord)
{
    TTreeNode* a = Node(QStringLiteral("a"));
    EXPECT_FALSE(m_tree.ChangeRecord(a, [] { return false; }));
    EXPECT_FALSE(m_tree.IsModified());
    EXPECT_TRUE(m_tree.ChangeRecord(a, [] { return true; }));
    EXPECT_TRUE(m_tree.IsModified());
}

TEST_F(DragScrollTree, LetsAFailedChangePass)
{
    EXPECT_THROW(
        m_tree.ChangeRecord(Node(QStringLiteral("a")), []() -> bool { throw TUserError(QStringLiteral("x")); }),
        TUserError);
    EXPECT_FALSE(m_tree.IsModified());
}

TEST_F(DragScrollTree, IsNotEditableAtFirst)
{
    EXPECT_FALSE(m_tree.GetEditable());
    Click(QStringLiteral("a"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    EXPECT_EQ(Editor(), nullptr);
}

TEST_F(DragScrollTree, TellsFramesThatItIsEditable)
{
    m_tree.SetEditable(true);
    EXPECT_TRUE(m_tree.GetEditable());
    m_tree.SetEditable(false);
    EXPECT_EQ(m_tree.Editable, (QList<bool>{true, false}));
}

TEST_F(DragScrollTree, IsEditedInPlace)
{
    m_tree.SetEditable(true);
    Click(QStringLiteral("a"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    EXPECT_EQ(Editor()->text(), QStringLiteral("a"));
    Type(QStringLiteral("Flur"));
    EXPECT_EQ(m_tree.Edited, QStringList{QStringLiteral("a=Flur")});
    EXPECT_EQ(m_tree.TopNode()->Child(0)->Caption(), QStringLiteral("Flur"));
    EXPECT_TRUE(m_tree.IsModified());
}

TEST_F(DragScrollTree, KeepsTheCaptionOfARefusedText)
{
    m_tree.SetEditable(true);
    m_tree.FinishEditing(Node(QStringLiteral("a")), QString());
    EXPECT_EQ(m_tree.TopNode()->Child(0)->Caption(), QStringLiteral("a"));
    EXPECT_FALSE(m_tree.IsModified());
}

TEST_F(DragScrollTree, KeepsTheCaptionWhenEditingIsGivenUp)
{
    m_tree.SetEditable(true);
    Click(QStringLiteral("a"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClicks(Editor(), QStringLiteral("Flur"));
    QTest::keyClick(Editor(), Qt::Key_Escape);
    EXPECT_TRUE(m_tree.Edited.isEmpty());
    EXPECT_EQ(m_tree.TopNode()->Child(0)->Caption(), QStringLiteral("a"));
}

TEST_F(DragScrollTree, DoesNotEditWhatAFrameLocks)
{
    m_tree.SetEditable(true);
    m_tree.Locked = Node(QStringLiteral("b"));
    Click(QStringLiteral("b"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    EXPECT_EQ(Editor(), nullptr);
    Click(QStringLiteral("c"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    EXPECT_NE(Editor(), nullptr);
}

TEST_F(DragScrollTree, GuardsWhatAFrameDoesAfterEditing)
{
    TRecordedMessages messages;
    m_tree.SetEditable(true);
    Click(QStringLiteral("a"));
    QTest::keyClick(&m_tree, Qt::Key_F2);
    Type(QStringLiteral("fail"));
    EXPECT_EQ(messages.Errors, QStringList{QStringLiteral("edit")});
    EXPECT_EQ(m_tree.TopNode()->Child(0)->Caption(), QStringLiteral("a"));
}

// The hook after a change

TEST_F(DragScrollTree, TellsFramesOfEachOfItsOperations)
{
    m_tree.Changes = 0;
    m_tree.InsertBranch(Branch(QStringLiteral("n")), Node(QStringLiteral("b")), naInsert);
    EXPECT_EQ(m_tree.Changes, 1);
    m_tree.RemoveBranches(Nodes(QStringLiteral("n a1 a2")));
    EXPECT_EQ(m_tree.Changes, 2);
    m_tree.MoveBranch(Node(QStringLiteral("a")), Node(QStringLiteral("c")), naInsert);
    EXPECT_EQ(m_tree.Changes, 3);
    m_tree.ChangeRecord(Node(QStringLiteral("a")), [] { return true; });
    EXPECT_EQ(m_tree.Changes, 4);
    std::vector<std::unique_ptr<TTreeNode>> several;
    several.push_back(Branch(QStringLiteral("x")));
    several.push_back(Branch(QStringLiteral("y")));
    m_tree.InsertBranches(std::move(several), Node(QStringLiteral("a")), 0);
    EXPECT_EQ(m_tree.Changes, 5);
}

TEST_F(DragScrollTree, TellsFramesThatItsContentWasExchanged)
{
    m_tree.Changes = 0;
    m_tree.ReplaceContent(Branch(QStringLiteral("neu")));
    EXPECT_EQ(m_tree.Changes, 1);
    m_tree.ReplaceContent(nullptr);
    EXPECT_EQ(m_tree.Changes, 2);
    EXPECT_FALSE(m_tree.IsModified());
}

TEST_F(DragScrollTree, TellsFramesNothingWhenNothingHasChanged)
{
    m_tree.Changes = 0;
    m_tree.InsertBranch(nullptr, Node(QStringLiteral("b")), naInsert);
    m_tree.InsertBranches({}, Node(QStringLiteral("b")), 0);
    m_tree.RemoveBranches({});
    m_tree.MoveBranch(Node(QStringLiteral("a")), Node(QStringLiteral("a1")), naAddChild);
    m_tree.MoveBranch(Node(QStringLiteral("a")), Node(QStringLiteral("b")), naInsert);
    m_tree.MoveBranch(Node(QStringLiteral("e")), Node(QStringLiteral("top")), naAddChild);
    m_tree.ChangeRecord(Node(QStringLiteral("a")), [] { return false; });
    Click(QStringLiteral("c"));
    m_tree.SetEditable(true);
    EXPECT_EQ(m_tree.Changes, 0);
    EXPECT_FALSE(m_tree.IsModified());
}

TEST_F(DragScrollTree, TellsFramesOfAChangeThatIsThereAlready)
{
    class TLookingTree final : public TDragScrollTree
    {
    public:
        QStringList Seen;

    protected:
        void HandleChange() override
        {
            Seen.append(TopNode() ? QString::number(TopNode()->Count()) : QStringLiteral("none"));
        }
    };
    TLookingTree tree;
    tree.ReplaceContent(Branch(QStringLiteral("top"), {QStringLiteral("a")}));
    tree.InsertBranch(Branch(QStringLiteral("b")), tree.TopNode(), naAddChild);
    tree.RemoveBranches({tree.TopNode()->Child(0), tree.TopNode()->Child(1)});
    tree.ReplaceContent(nullptr);
    EXPECT_EQ(tree.Seen.join(u' '), QStringLiteral("1 2 0 none"));
}

TEST_F(DragScrollTree, GuardsWhatAFrameDoesAfterAChange)
{
    const TRecordedMessages messages;
    m_tree.FailOnChange = true;
    EXPECT_NO_THROW(m_tree.RemoveBranches(Nodes(QStringLiteral("c"))));
    EXPECT_NO_THROW(m_tree.ReplaceContent(nullptr));
    EXPECT_EQ(messages.Errors, QStringList({QStringLiteral("change"), QStringLiteral("change")}));
    EXPECT_TRUE(m_tree.IsModified());
}

// The node under the mouse

TEST_F(DragScrollTree, UnderlinesNothingWithoutHotTracking)
{
    EXPECT_FALSE(m_tree.GetHotTracking());
    Hover(QStringLiteral("b"));
    EXPECT_EQ(Underlined(), QString());
}

TEST_F(DragScrollTree, UnderlinesTheNodeUnderTheMouseAlone)
{
    m_tree.SetHotTracking(true);
    EXPECT_TRUE(m_tree.GetHotTracking());
    EXPECT_EQ(Underlined(), QString());
    Hover(QStringLiteral("b"));
    EXPECT_EQ(Underlined(), QStringLiteral("b"));
    EXPECT_TRUE(m_tree.IsHot(Node(QStringLiteral("b"))));
    Hover(QStringLiteral("a1"));
    EXPECT_EQ(Underlined(), QStringLiteral("a1"));
    EXPECT_FALSE(m_tree.IsHot(Node(QStringLiteral("b"))));
}

TEST_F(DragScrollTree, UnderlinesNothingBesideAllNodesAndAfterTheMouseHasLeft)
{
    m_tree.SetHotTracking(true);
    Hover(QStringLiteral("b"));
    SendHover(QEvent::HoverMove, QPoint(10, 390));
    EXPECT_EQ(Underlined(), QString());
    Hover(QStringLiteral("b"));
    SendHover(QEvent::HoverLeave, QPoint(-1, -1));
    EXPECT_EQ(Underlined(), QString());
}

TEST_F(DragScrollTree, UnderlinesNothingAnyMoreWhenHotTrackingEnds)
{
    m_tree.SetHotTracking(true);
    Hover(QStringLiteral("b"));
    m_tree.SetHotTracking(false);
    EXPECT_EQ(Underlined(), QString());
    EXPECT_FALSE(m_tree.GetHotTracking());
    Hover(QStringLiteral("c"));
    EXPECT_EQ(Underlined(), QString());
}

TEST_F(DragScrollTree, ForgetsTheNodeUnderTheMouseWhenItIsDeleted)
{
    m_tree.SetHotTracking(true);
    Hover(QStringLiteral("b1"));
    m_tree.RemoveBranches(Nodes(QStringLiteral("b")));
    EXPECT_EQ(Underlined(), QString());
    Hover(QStringLiteral("c"));
    EXPECT_EQ(Underlined(), QStringLiteral("c"));
    EXPECT_FALSE(TTreeNode().data(0, Qt::FontRole).isValid()) << "a node without a tree has no font of its own";
}

TEST(PlainDragScrollTree, RefusesEveryText)
{
    TDragScrollTree tree;
    tree.ReplaceContent(Branch(QStringLiteral("top")));
    tree.SetEditable(true);
    tree.TopNode()->setText(0, QStringLiteral("neu"));
    EXPECT_EQ(tree.TopNode()->Caption(), QStringLiteral("top"));
    EXPECT_FALSE(tree.IsModified());
}

TEST(PlainDragScrollTree, HasNoImagesAtFirst)
{
    const TDragScrollTree tree;
    EXPECT_TRUE(tree.Image(0).isNull());
    EXPECT_TRUE(tree.Image(-1).isNull());
}

TEST(PlainDragScrollTree, ForgetsReferencesWhenItIsDestroyed)
{
    auto tree = std::make_unique<TDragScrollTree>();
    tree->ReplaceContent(Branch(QStringLiteral("top"), {QStringLiteral("a")}));
    const TNodeRef reference(tree->TopNode()->Child(0));
    tree->SelectNode(reference.Get());
    tree.reset();
    EXPECT_EQ(reference.Get(), nullptr);
}

TEST(RepaintPause, SuspendsRepaintingWhileItLives)
{
    QWidget widget;
    {
        const TRepaintPause pause(&widget);
        EXPECT_FALSE(widget.updatesEnabled());
        const TRepaintPause inner(&widget);
    }
    EXPECT_TRUE(widget.updatesEnabled());
    widget.setUpdatesEnabled(false);
    {
        const TRepaintPause pause(&widget);
    }
    EXPECT_FALSE(widget.updatesEnabled());
}
