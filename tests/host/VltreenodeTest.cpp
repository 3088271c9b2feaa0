#include "Vltreenode.h"

#include "TestSupport.h"
#include "Vldragscrolltree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <type_traits>
#include <vector>

namespace
{

TTreeNode* AddBelow(TTreeNode* parent, const QString& caption)
{
    auto* node = new TTreeNode(caption);
    EXPECT_TRUE(node->MoveTo(parent, naAddChild));
    return node;
}

// The branch as text: captions, with what is below in brackets.
QString Shape(const TTreeNode* node)
{
    QString text = node->Caption();
    if (node->Count() == 0)
        return text;
    QStringList below;
    for (int i = 0; i < node->Count(); ++i)
        below.append(Shape(node->Child(i)));
    return text + u'(' + below.join(u' ') + u')';
}

QString Shape(const QTreeWidget& tree)
{
    QStringList tops;
    for (int i = 0; i < tree.topLevelItemCount(); ++i)
        tops.append(Shape(static_cast<TTreeNode*>(tree.topLevelItem(i))));
    return tops.join(u' ');
}

// The detached branch top(a(a1 a2) b c).
class TreeNode : public testing::Test
{
protected:
    TTreeNode m_top{QStringLiteral("top")};
    TTreeNode* m_a = AddBelow(&m_top, QStringLiteral("a"));
    TTreeNode* m_a1 = AddBelow(m_a, QStringLiteral("a1"));
    TTreeNode* m_a2 = AddBelow(m_a, QStringLiteral("a2"));
    TTreeNode* m_b = AddBelow(&m_top, QStringLiteral("b"));
    TTreeNode* m_c = AddBelow(&m_top, QStringLiteral("c"));
};

// The tree x(x1 x2) y z.
class TreeNodeInView : public testing::Test
{
protected:
    TreeNodeInView()
    {
        for (TTreeNode* top : {m_x, m_y, m_z})
            m_tree.addTopLevelItem(top);
    }

    TDragScrollTree m_tree;
    TTreeNode* m_x = new TTreeNode(QStringLiteral("x"));
    TTreeNode* m_x1 = AddBelow(m_x, QStringLiteral("x1"));
    TTreeNode* m_x2 = AddBelow(m_x, QStringLiteral("x2"));
    TTreeNode* m_y = new TTreeNode(QStringLiteral("y"));
    TTreeNode* m_z = new TTreeNode(QStringLiteral("z"));
};

} // namespace

TEST(NewTreeNode, StandsAlone)
{
    const TTreeNode node;
    EXPECT_EQ(node.Caption(), QString());
    EXPECT_EQ(node.ImageIndex(), -1);
    EXPECT_FALSE(node.Cut());
    EXPECT_EQ(node.Level(), 0);
    EXPECT_EQ(node.Index(), 0);
    EXPECT_EQ(node.AbsoluteIndex(), 0);
    EXPECT_EQ(node.Count(), 0);
    EXPECT_EQ(node.Parent(), nullptr);
    EXPECT_EQ(node.Child(0), nullptr);
    EXPECT_EQ(node.Next(), nullptr);
    EXPECT_EQ(node.NextSibling(), nullptr);
    EXPECT_EQ(node.PreviousSibling(), nullptr);
    EXPECT_EQ(node.Tree(), nullptr);
}

TEST(NewTreeNode, CannotBeCopied)
{
    EXPECT_FALSE(std::is_copy_constructible_v<TTreeNode>);
    EXPECT_FALSE(std::is_copy_assignable_v<TTreeNode>);
}

TEST_F(TreeNode, KnowsItsLevel)
{
    EXPECT_EQ(m_top.Level(), 0);
    EXPECT_EQ(m_a->Level(), 1);
    EXPECT_EQ(m_a2->Level(), 2);
}

TEST_F(TreeNode, KnowsItsIndex)
{
    EXPECT_EQ(m_top.Index(), 0);
    EXPECT_EQ(m_a->Index(), 0);
    EXPECT_EQ(m_b->Index(), 1);
    EXPECT_EQ(m_c->Index(), 2);
    EXPECT_EQ(m_a2->Index(), 1);
}

TEST_F(TreeNode, KnowsItsIndexAfterNeighboursMoved)
{
    EXPECT_EQ(m_c->Index(), 2);
    delete m_a;
    EXPECT_EQ(m_b->Index(), 0);
    EXPECT_EQ(m_c->Index(), 1);
    (new TTreeNode(QStringLiteral("n")))->MoveTo(&m_top, naAddChildFirst);
    EXPECT_EQ(m_c->Index(), 2);
    m_top.takeChild(2);
    EXPECT_EQ(m_c->Index(), 0);
    delete m_c;
}

TEST_F(TreeNode, CountsItsAbsoluteIndexInReadingOrder)
{
    int expected = 0;
    for (const TTreeNode* node : std::initializer_list<const TTreeNode*>{&m_top, m_a, m_a1, m_a2, m_b, m_c})
        EXPECT_EQ(node->AbsoluteIndex(), expected++) << node->Caption().toStdString();
}

TEST_F(TreeNode, LeadsToTheNextInReadingOrder)
{
    QStringList captions;
    for (const TTreeNode* node = &m_top; node; node = node->Next())
        captions.append(node->Caption());
    EXPECT_EQ(captions.join(u' '), QStringLiteral("top a a1 a2 b c"));
}

TEST_F(TreeNode, KnowsItsNeighbours)
{
    EXPECT_EQ(m_a->NextSibling(), m_b);
    EXPECT_EQ(m_c->NextSibling(), nullptr);
    EXPECT_EQ(m_c->PreviousSibling(), m_b);
    EXPECT_EQ(m_a->PreviousSibling(), nullptr);
    EXPECT_EQ(m_a2->NextSibling(), nullptr);
}

TEST_F(TreeNode, HasNoChildrenBeyondItsOwn)
{
    EXPECT_EQ(m_a->Child(1), m_a2);
    EXPECT_EQ(m_a->Child(2), nullptr);
    EXPECT_EQ(m_a->Child(-1), nullptr);
}

TEST_F(TreeNode, IsWithinItselfAndEverythingAbove)
{
    EXPECT_TRUE(m_a1->IsWithin(m_a1));
    EXPECT_TRUE(m_a1->IsWithin(m_a));
    EXPECT_TRUE(m_a1->IsWithin(&m_top));
    EXPECT_FALSE(m_a1->IsWithin(m_a2));
    EXPECT_FALSE(m_a->IsWithin(m_a1));
    EXPECT_FALSE(m_a->IsWithin(nullptr));
}

TEST_F(TreeNode, MovesBehindItsLastSibling)
{
    EXPECT_TRUE(m_a->MoveTo(m_b, naAdd));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(b c a(a1 a2))"));
    EXPECT_TRUE(m_a1->MoveTo(m_b, naAdd));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(b c a(a2) a1)"));
    EXPECT_EQ(m_a1->Index(), 3);
}

TEST_F(TreeNode, MovesBeforeItsFirstSibling)
{
    EXPECT_TRUE(m_c->MoveTo(m_b, naAddFirst));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(c a(a1 a2) b)"));
    EXPECT_TRUE(m_b->MoveTo(m_a2, naAddFirst));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(c a(b a1 a2))"));
    EXPECT_EQ(m_b->Index(), 0);
}

TEST_F(TreeNode, BecomesTheLastChild)
{
    EXPECT_TRUE(m_c->MoveTo(m_a, naAddChild));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(a(a1 a2 c) b)"));
    EXPECT_TRUE(m_a1->MoveTo(m_a, naAddChild));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(a(a2 c a1) b)"));
}

TEST_F(TreeNode, BecomesTheFirstChild)
{
    EXPECT_TRUE(m_c->MoveTo(m_a, naAddChildFirst));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(a(c a1 a2) b)"));
    EXPECT_TRUE(m_a2->MoveTo(m_a, naAddChildFirst));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(a(a2 c a1) b)"));
}

TEST_F(TreeNode, IsInsertedJustBeforeAnother)
{
    EXPECT_TRUE(m_c->MoveTo(m_b, naInsert));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(a(a1 a2) c b)"));
    EXPECT_TRUE(m_a->MoveTo(m_b, naInsert));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(c a(a1 a2) b)"));
    EXPECT_TRUE(m_b->MoveTo(m_a2, naInsert));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(c a(a1 b a2))"));
    EXPECT_TRUE(m_a1->MoveTo(m_b, naInsert));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(c a(a1 b a2))"));
}

TEST_F(TreeNode, TakesWhatIsBelowAlong)
{
    EXPECT_TRUE(m_a->MoveTo(m_c, naAddChild));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(b c(a(a1 a2)))"));
    EXPECT_EQ(m_a1->Level(), 3);
}

TEST_F(TreeNode, DoesNotMoveIntoItself)
{
    for (const auto mode : {naAdd, naAddFirst, naAddChild, naAddChildFirst, naInsert}) {
        EXPECT_FALSE(m_a->MoveTo(m_a, mode)) << int{mode};
        EXPECT_FALSE(m_a->MoveTo(m_a1, mode)) << int{mode};
        EXPECT_FALSE(m_top.MoveTo(m_a2, mode)) << int{mode};
    }
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(a(a1 a2) b c)"));
}

TEST_F(TreeNode, DoesNotBecomeTheSiblingOfADetachedTop)
{
    for (const auto mode : {naAdd, naAddFirst, naInsert})
        EXPECT_FALSE(m_a->MoveTo(&m_top, mode)) << int{mode};
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(a(a1 a2) b c)"));
}

TEST_F(TreeNode, MovesFromOneDetachedBranchToAnother)
{
    TTreeNode other(QStringLiteral("other"));
    EXPECT_TRUE(m_a->MoveTo(&other, naAddChild));
    EXPECT_EQ(Shape(&m_top), QStringLiteral("top(b c)"));
    EXPECT_EQ(Shape(&other), QStringLiteral("other(a(a1 a2))"));
}

TEST_F(TreeNode, KeepsCaptionImageAndCut)
{
    m_a->SetCaption(QStringLiteral("Küche"));
    m_a->SetImageIndex(7);
    m_a->SetCut(true);
    EXPECT_EQ(m_a->Caption(), QStringLiteral("Küche"));
    EXPECT_EQ(m_a->EditText(), QStringLiteral("Küche"));
    EXPECT_EQ(m_a->ImageIndex(), 7);
    EXPECT_EQ(m_a->SelectedIndex(), 7);
    EXPECT_TRUE(m_a->Cut());
    m_a->SetCut(false);
    EXPECT_FALSE(m_a->Cut());
}

TEST_F(TreeNode, ShowsItsCaptionToTheToolkit)
{
    EXPECT_EQ(m_a->data(0, Qt::DisplayRole), QStringLiteral("a"));
    EXPECT_EQ(m_a->data(0, Qt::EditRole), QStringLiteral("a"));
    EXPECT_EQ(m_a->text(0), QStringLiteral("a"));
}

TEST_F(TreeNode, IsNotChangedByTheToolkitWithoutATree)
{
    m_a->setText(0, QStringLiteral("anders"));
    m_a->setData(0, Qt::EditRole, QStringLiteral("anders"));
    EXPECT_EQ(m_a->Caption(), QStringLiteral("a"));
}

TEST_F(TreeNodeInView, KnowsItsPlace)
{
    EXPECT_EQ(m_x->Level(), 0);
    EXPECT_EQ(m_x1->Level(), 1);
    EXPECT_EQ(m_z->Index(), 2);
    EXPECT_EQ(m_x->Tree(), &m_tree);
    EXPECT_EQ(m_x2->Tree(), &m_tree);
    EXPECT_EQ(m_x->NextSibling(), m_y);
    EXPECT_EQ(m_y->PreviousSibling(), m_x);
    EXPECT_EQ(m_x2->Next(), m_y);
    EXPECT_EQ(m_z->Next(), nullptr);
}

TEST_F(TreeNodeInView, CountsItsAbsoluteIndexOverAllTopNodes)
{
    int expected = 0;
    for (const TTreeNode* node : {m_x, m_x1, m_x2, m_y, m_z})
        EXPECT_EQ(node->AbsoluteIndex(), expected++) << node->Caption().toStdString();
}

TEST_F(TreeNodeInView, MovesAmongTopNodesInAllModes)
{
    EXPECT_TRUE(m_x->MoveTo(m_y, naAdd));
    EXPECT_EQ(Shape(m_tree), QStringLiteral("y z x(x1 x2)"));
    EXPECT_TRUE(m_x2->MoveTo(m_z, naAddFirst));
    EXPECT_EQ(Shape(m_tree), QStringLiteral("x2 y z x(x1)"));
    EXPECT_TRUE(m_y->MoveTo(m_x, naInsert));
    EXPECT_EQ(Shape(m_tree), QStringLiteral("x2 z y x(x1)"));
    EXPECT_TRUE(m_x->MoveTo(m_x2, naInsert));
    EXPECT_EQ(Shape(m_tree), QStringLiteral("x(x1) x2 z y"));
    EXPECT_TRUE(m_z->MoveTo(m_x, naAddChild));
    EXPECT_EQ(Shape(m_tree), QStringLiteral("x(x1 z) x2 y"));
    EXPECT_TRUE(m_y->MoveTo(m_x, naAddChildFirst));
    EXPECT_EQ(Shape(m_tree), QStringLiteral("x(y x1 z) x2"));
    EXPECT_EQ(m_z->Index(), 2);
}

TEST_F(TreeNodeInView, DoesNotMoveIntoItself)
{
    EXPECT_FALSE(m_x->MoveTo(m_x, naInsert));
    EXPECT_FALSE(m_x->MoveTo(m_x1, naAdd));
    EXPECT_EQ(Shape(m_tree), QStringLiteral("x(x1 x2) y z"));
}

TEST_F(TreeNodeInView, MovesToAnotherTree)
{
    TDragScrollTree other;
    other.addTopLevelItem(new TTreeNode(QStringLiteral("o")));
    EXPECT_TRUE(m_x->MoveTo(other.TopNode(), naAddFirst));
    EXPECT_EQ(Shape(m_tree), QStringLiteral("y z"));
    EXPECT_EQ(Shape(other), QStringLiteral("x(x1 x2) o"));
    EXPECT_EQ(m_x1->Tree(), &other);
}

TEST_F(TreeNodeInView, ShowsTheImageOfItsIndex)
{
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    m_tree.SetImages({QIcon(), QIcon(pixmap)});
    m_x->SetImageIndex(1);
    EXPECT_FALSE(m_x->data(0, Qt::DecorationRole).value<QIcon>().isNull());
    for (const int nowhere : {-1, 0, 2, 99}) {
        m_x->SetImageIndex(nowhere);
        EXPECT_TRUE(m_x->data(0, Qt::DecorationRole).value<QIcon>().isNull()) << nowhere;
    }
}

TEST_F(TreeNodeInView, IsFadedWhileItIsCut)
{
    EXPECT_FALSE(m_x->data(0, Qt::ForegroundRole).isValid());
    m_x->SetCut(true);
    EXPECT_EQ(m_x->data(0, Qt::ForegroundRole).value<QBrush>(), m_tree.palette().brush(QPalette::PlaceholderText));
    m_x->SetCut(false);
    EXPECT_FALSE(m_x->data(0, Qt::ForegroundRole).isValid());
}

TEST_F(TreeNodeInView, TellsItsTreeWhatChanged)
{
    int changes = 0;
    QObject::connect(&m_tree, &QTreeWidget::itemChanged, &m_tree, [&] { ++changes; });
    m_x->SetCaption(QStringLiteral("x"));
    EXPECT_EQ(changes, 0);
    m_x->SetCaption(QStringLiteral("neu"));
    EXPECT_EQ(changes, 1);
    m_x->SetCut(false);
    EXPECT_EQ(changes, 1);
    m_x->SetCut(true);
    m_x->SetImageIndex(3);
    EXPECT_EQ(changes, 3);
}

TEST(NodeRef, IsEmptyAtFirst)
{
    const TNodeRef reference;
    EXPECT_EQ(reference.Get(), nullptr);
    EXPECT_FALSE(reference);
    EXPECT_EQ(TNodeRef(nullptr).Get(), nullptr);
}

TEST(NodeRef, IsForgottenWithItsNode)
{
    auto node = std::make_unique<TTreeNode>();
    const TNodeRef reference(node.get());
    EXPECT_EQ(reference.Get(), node.get());
    EXPECT_TRUE(reference);
    node.reset();
    EXPECT_EQ(reference.Get(), nullptr);
    EXPECT_FALSE(reference);
}

TEST(NodeRef, IsForgottenWithTheBranchAboveItsNode)
{
    auto top = std::make_unique<TTreeNode>();
    const TNodeRef reference(AddBelow(AddBelow(top.get(), QStringLiteral("a")), QStringLiteral("b")));
    top.reset();
    EXPECT_EQ(reference.Get(), nullptr);
}

TEST(NodeRef, StaysWhenItsNodeMoves)
{
    TTreeNode top;
    TTreeNode* a = AddBelow(&top, QStringLiteral("a"));
    TTreeNode* b = AddBelow(&top, QStringLiteral("b"));
    const TNodeRef reference(a);
    ASSERT_TRUE(a->MoveTo(b, naAddChild));
    EXPECT_EQ(reference.Get(), a);
}

TEST(NodeRef, IsOneOfManyThatAreForgottenTogether)
{
    auto node = std::make_unique<TTreeNode>();
    TTreeNode other;
    std::vector<TNodeRef> references(1000, TNodeRef(node.get()));
    const TNodeRef elsewhere(&other);
    node.reset();
    for (const TNodeRef& reference : references)
        EXPECT_EQ(reference.Get(), nullptr);
    EXPECT_EQ(elsewhere.Get(), &other);
}

TEST(NodeRef, GoesInAnyOrder)
{
    auto node = std::make_unique<TTreeNode>();
    auto first = std::make_unique<TNodeRef>(node.get());
    auto second = std::make_unique<TNodeRef>(node.get());
    auto third = std::make_unique<TNodeRef>(node.get());
    second.reset();
    EXPECT_EQ(first->Get(), node.get());
    EXPECT_EQ(third->Get(), node.get());
    third.reset();
    EXPECT_EQ(first->Get(), node.get());
    node.reset();
    EXPECT_EQ(first->Get(), nullptr);
}

TEST(NodeRef, IsCopied)
{
    auto node = std::make_unique<TTreeNode>();
    auto original = std::make_unique<TNodeRef>(node.get());
    const TNodeRef copy(*original);
    original.reset();
    EXPECT_EQ(copy.Get(), node.get());
    node.reset();
    EXPECT_EQ(copy.Get(), nullptr);
}

TEST(NodeRef, IsAssigned)
{
    auto first = std::make_unique<TTreeNode>();
    auto second = std::make_unique<TTreeNode>();
    TNodeRef reference(first.get());
    const TNodeRef other(second.get());
    reference = other;
    EXPECT_EQ(reference.Get(), second.get());
    first.reset();
    EXPECT_EQ(reference.Get(), second.get());
    second.reset();
    EXPECT_EQ(reference.Get(), nullptr);
    EXPECT_EQ(other.Get(), nullptr);
}

TEST(NodeRef, SurvivesBeingAssignedToItself)
{
    auto node = std::make_unique<TTreeNode>();
    TNodeRef reference(node.get());
    const TNodeRef& same = reference;
    reference = same;
    EXPECT_EQ(reference.Get(), node.get());
    node.reset();
    EXPECT_EQ(reference.Get(), nullptr);
}

TEST(NodeRef, IsSetToAnotherNodeAndToNone)
{
    TTreeNode first;
    auto second = std::make_unique<TTreeNode>();
    TNodeRef reference(&first);
    reference.Set(second.get());
    reference.Set(second.get());
    EXPECT_EQ(reference.Get(), second.get());
    reference.Set(nullptr);
    second.reset();
    EXPECT_EQ(reference.Get(), nullptr);
    reference.Set(&first);
    EXPECT_EQ(reference.Get(), &first);
}

TEST(NodeRef, MovesWithinAGrowingList)
{
    TTreeNode node;
    auto other = std::make_unique<TTreeNode>();
    QList<TNodeRef> references;
    for (int i = 0; i < 100; ++i)
        references.prepend(TNodeRef(i % 2 ? &node : other.get()));
    references.removeAt(50);
    references.removeFirst();
    other.reset();
    EXPECT_EQ(std::count_if(references.cbegin(), references.cend(),
                            [&](const TNodeRef& reference) { return reference.Get() == &node; }),
              48);
}

TEST(NodeRef, KnowsTheNodesOfAFamily)
{
    class TFamilyNode : public TTreeNode
    {
    public:
        int Record = 5;
    };
    auto node = std::make_unique<TFamilyNode>();
    TNodeRefTo<TFamilyNode> reference(node.get());
    const TNodeRefTo<TFamilyNode> copy = reference;
    EXPECT_EQ(reference->Record, 5);
    EXPECT_TRUE(copy);
    reference.Set(nullptr);
    EXPECT_FALSE(reference);
    EXPECT_EQ(copy.Get(), node.get());
    node.reset();
    EXPECT_EQ(copy.Get(), nullptr);
}
