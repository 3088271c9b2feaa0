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
    TTreeNode Top{QStringLiteral("top")};
    TTreeNode* A = AddBelow(&Top, QStringLiteral("a"));
    TTreeNode* A1 = AddBelow(A, QStringLiteral("a1"));
    TTreeNode* A2 = AddBelow(A, QStringLiteral("a2"));
    TTreeNode* B = AddBelow(&Top, QStringLiteral("b"));
    TTreeNode* C = AddBelow(&Top, QStringLiteral("c"));
};

// The tree x(x1 x2) y z.
class TreeNodeInView : public testing::Test
{
protected:
    TreeNodeInView()
    {
        for (TTreeNode* top : {X, Y, Z})
            Tree.addTopLevelItem(top);
    }

    TDragScrollTree Tree;
    TTreeNode* X = new TTreeNode(QStringLiteral("x"));
    TTreeNode* X1 = AddBelow(X, QStringLiteral("x1"));
    TTreeNode* X2 = AddBelow(X, QStringLiteral("x2"));
    TTreeNode* Y = new TTreeNode(QStringLiteral("y"));
    TTreeNode* Z = new TTreeNode(QStringLiteral("z"));
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
    EXPECT_EQ(Top.Level(), 0);
    EXPECT_EQ(A->Level(), 1);
    EXPECT_EQ(A2->Level(), 2);
}

TEST_F(TreeNode, KnowsItsIndex)
{
    EXPECT_EQ(Top.Index(), 0);
    EXPECT_EQ(A->Index(), 0);
    EXPECT_EQ(B->Index(), 1);
    EXPECT_EQ(C->Index(), 2);
    EXPECT_EQ(A2->Index(), 1);
}

TEST_F(TreeNode, KnowsItsIndexAfterNeighboursMoved)
{
    EXPECT_EQ(C->Index(), 2);
    delete A;
    EXPECT_EQ(B->Index(), 0);
    EXPECT_EQ(C->Index(), 1);
    (new TTreeNode(QStringLiteral("n")))->MoveTo(&Top, naAddChildFirst);
    EXPECT_EQ(C->Index(), 2);
    Top.takeChild(2);
    EXPECT_EQ(C->Index(), 0);
    delete C;
}

TEST_F(TreeNode, CountsItsAbsoluteIndexInReadingOrder)
{
    int expected = 0;
    for (const TTreeNode* node : std::initializer_list<const TTreeNode*>{&Top, A, A1, A2, B, C})
        EXPECT_EQ(node->AbsoluteIndex(), expected++) << node->Caption().toStdString();
}

TEST_F(TreeNode, LeadsToTheNextInReadingOrder)
{
    QStringList captions;
    for (const TTreeNode* node = &Top; node; node = node->Next())
        captions.append(node->Caption());
    EXPECT_EQ(captions.join(u' '), QStringLiteral("top a a1 a2 b c"));
}

TEST_F(TreeNode, KnowsItsNeighbours)
{
    EXPECT_EQ(A->NextSibling(), B);
    EXPECT_EQ(C->NextSibling(), nullptr);
    EXPECT_EQ(C->PreviousSibling(), B);
    EXPECT_EQ(A->PreviousSibling(), nullptr);
    EXPECT_EQ(A2->NextSibling(), nullptr);
}

TEST_F(TreeNode, HasNoChildrenBeyondItsOwn)
{
    EXPECT_EQ(A->Child(1), A2);
    EXPECT_EQ(A->Child(2), nullptr);
    EXPECT_EQ(A->Child(-1), nullptr);
}

TEST_F(TreeNode, IsWithinItselfAndEverythingAbove)
{
    EXPECT_TRUE(A1->IsWithin(A1));
    EXPECT_TRUE(A1->IsWithin(A));
    EXPECT_TRUE(A1->IsWithin(&Top));
    EXPECT_FALSE(A1->IsWithin(A2));
    EXPECT_FALSE(A->IsWithin(A1));
    EXPECT_FALSE(A->IsWithin(nullptr));
}

TEST_F(TreeNode, MovesBehindItsLastSibling)
{
    EXPECT_TRUE(A->MoveTo(B, naAdd));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(b c a(a1 a2))"));
    EXPECT_TRUE(A1->MoveTo(B, naAdd));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(b c a(a2) a1)"));
    EXPECT_EQ(A1->Index(), 3);
}

TEST_F(TreeNode, MovesBeforeItsFirstSibling)
{
    EXPECT_TRUE(C->MoveTo(B, naAddFirst));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(c a(a1 a2) b)"));
    EXPECT_TRUE(B->MoveTo(A2, naAddFirst));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(c a(b a1 a2))"));
    EXPECT_EQ(B->Index(), 0);
}

TEST_F(TreeNode, BecomesTheLastChild)
{
    EXPECT_TRUE(C->MoveTo(A, naAddChild));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(a(a1 a2 c) b)"));
    EXPECT_TRUE(A1->MoveTo(A, naAddChild));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(a(a2 c a1) b)"));
}

TEST_F(TreeNode, BecomesTheFirstChild)
{
    EXPECT_TRUE(C->MoveTo(A, naAddChildFirst));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(a(c a1 a2) b)"));
    EXPECT_TRUE(A2->MoveTo(A, naAddChildFirst));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(a(a2 c a1) b)"));
}

TEST_F(TreeNode, IsInsertedJustBeforeAnother)
{
    EXPECT_TRUE(C->MoveTo(B, naInsert));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(a(a1 a2) c b)"));
    EXPECT_TRUE(A->MoveTo(B, naInsert));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(c a(a1 a2) b)"));
    EXPECT_TRUE(B->MoveTo(A2, naInsert));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(c a(a1 b a2))"));
    EXPECT_TRUE(A1->MoveTo(B, naInsert));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(c a(a1 b a2))"));
}

TEST_F(TreeNode, TakesWhatIsBelowAlong)
{
    EXPECT_TRUE(A->MoveTo(C, naAddChild));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(b c(a(a1 a2)))"));
    EXPECT_EQ(A1->Level(), 3);
}

TEST_F(TreeNode, DoesNotMoveIntoItself)
{
    for (const auto mode : {naAdd, naAddFirst, naAddChild, naAddChildFirst, naInsert}) {
        EXPECT_FALSE(A->MoveTo(A, mode)) << int{mode};
        EXPECT_FALSE(A->MoveTo(A1, mode)) << int{mode};
        EXPECT_FALSE(Top.MoveTo(A2, mode)) << int{mode};
    }
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(a(a1 a2) b c)"));
}

TEST_F(TreeNode, DoesNotBecomeTheSiblingOfADetachedTop)
{
    for (const auto mode : {naAdd, naAddFirst, naInsert})
        EXPECT_FALSE(A->MoveTo(&Top, mode)) << int{mode};
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(a(a1 a2) b c)"));
}

TEST_F(TreeNode, MovesFromOneDetachedBranchToAnother)
{
    TTreeNode other(QStringLiteral("other"));
    EXPECT_TRUE(A->MoveTo(&other, naAddChild));
    EXPECT_EQ(Shape(&Top), QStringLiteral("top(b c)"));
    EXPECT_EQ(Shape(&other), QStringLiteral("other(a(a1 a2))"));
}

TEST_F(TreeNode, KeepsCaptionImageAndCut)
{
    A->SetCaption(QStringLiteral("Küche"));
    A->SetImageIndex(7);
    A->SetCut(true);
    EXPECT_EQ(A->Caption(), QStringLiteral("Küche"));
    EXPECT_EQ(A->EditText(), QStringLiteral("Küche"));
    EXPECT_EQ(A->ImageIndex(), 7);
    EXPECT_EQ(A->SelectedIndex(), 7);
    EXPECT_TRUE(A->Cut());
    A->SetCut(false);
    EXPECT_FALSE(A->Cut());
}

TEST_F(TreeNode, ShowsItsCaptionToTheToolkit)
{
    EXPECT_EQ(A->data(0, Qt::DisplayRole), QStringLiteral("a"));
    EXPECT_EQ(A->data(0, Qt::EditRole), QStringLiteral("a"));
    EXPECT_EQ(A->text(0), QStringLiteral("a"));
}

TEST_F(TreeNode, IsNotChangedByTheToolkitWithoutATree)
{
    A->setText(0, QStringLiteral("anders"));
    A->setData(0, Qt::EditRole, QStringLiteral("anders"));
    EXPECT_EQ(A->Caption(), QStringLiteral("a"));
}

TEST_F(TreeNodeInView, KnowsItsPlace)
{
    EXPECT_EQ(X->Level(), 0);
    EXPECT_EQ(X1->Level(), 1);
    EXPECT_EQ(Z->Index(), 2);
    EXPECT_EQ(X->Tree(), &Tree);
    EXPECT_EQ(X2->Tree(), &Tree);
    EXPECT_EQ(X->NextSibling(), Y);
    EXPECT_EQ(Y->PreviousSibling(), X);
    EXPECT_EQ(X2->Next(), Y);
    EXPECT_EQ(Z->Next(), nullptr);
}

TEST_F(TreeNodeInView, CountsItsAbsoluteIndexOverAllTopNodes)
{
    int expected = 0;
    for (const TTreeNode* node : {X, X1, X2, Y, Z})
        EXPECT_EQ(node->AbsoluteIndex(), expected++) << node->Caption().toStdString();
}

TEST_F(TreeNodeInView, MovesAmongTopNodesInAllModes)
{
    EXPECT_TRUE(X->MoveTo(Y, naAdd));
    EXPECT_EQ(Shape(Tree), QStringLiteral("y z x(x1 x2)"));
    EXPECT_TRUE(X2->MoveTo(Z, naAddFirst));
    EXPECT_EQ(Shape(Tree), QStringLiteral("x2 y z x(x1)"));
    EXPECT_TRUE(Y->MoveTo(X, naInsert));
    EXPECT_EQ(Shape(Tree), QStringLiteral("x2 z y x(x1)"));
    EXPECT_TRUE(X->MoveTo(X2, naInsert));
    EXPECT_EQ(Shape(Tree), QStringLiteral("x(x1) x2 z y"));
    EXPECT_TRUE(Z->MoveTo(X, naAddChild));
    EXPECT_EQ(Shape(Tree), QStringLiteral("x(x1 z) x2 y"));
    EXPECT_TRUE(Y->MoveTo(X, naAddChildFirst));
    EXPECT_EQ(Shape(Tree), QStringLiteral("x(y x1 z) x2"));
    EXPECT_EQ(Z->Index(), 2);
}

TEST_F(TreeNodeInView, DoesNotMoveIntoItself)
{
    EXPECT_FALSE(X->MoveTo(X, naInsert));
    EXPECT_FALSE(X->MoveTo(X1, naAdd));
    EXPECT_EQ(Shape(Tree), QStringLiteral("x(x1 x2) y z"));
}

TEST_F(TreeNodeInView, MovesToAnotherTree)
{
    TDragScrollTree other;
    other.addTopLevelItem(new TTreeNode(QStringLiteral("o")));
    EXPECT_TRUE(X->MoveTo(other.TopNode(), naAddFirst));
    EXPECT_EQ(Shape(Tree), QStringLiteral("y z"));
    EXPECT_EQ(Shape(other), QStringLiteral("x(x1 x2) o"));
    EXPECT_EQ(X1->Tree(), &other);
}

TEST_F(TreeNodeInView, ShowsTheImageOfItsIndex)
{
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    Tree.SetImages({QIcon(), QIcon(pixmap)});
    X->SetImageIndex(1);
    EXPECT_FALSE(X->data(0, Qt::DecorationRole).value<QIcon>().isNull());
    for (const int nowhere : {-1, 0, 2, 99}) {
        X->SetImageIndex(nowhere);
        EXPECT_TRUE(X->data(0, Qt::DecorationRole).value<QIcon>().isNull()) << nowhere;
    }
}

TEST_F(TreeNodeInView, IsFadedWhileItIsCut)
{
    EXPECT_FALSE(X->data(0, Qt::ForegroundRole).isValid());
    X->SetCut(true);
    EXPECT_EQ(X->data(0, Qt::ForegroundRole).value<QBrush>(), Tree.palette().brush(QPalette::PlaceholderText));
    X->SetCut(false);
    EXPECT_FALSE(X->data(0, Qt::ForegroundRole).isValid());
}

TEST_F(TreeNodeInView, TellsItsTreeWhatChanged)
{
    int changes = 0;
    QObject::connect(&Tree, &QTreeWidget::itemChanged, &Tree, [&] { ++changes; });
    X->SetCaption(QStringLiteral("x"));
    EXPECT_EQ(changes, 0);
    X->SetCaption(QStringLiteral("neu"));
    EXPECT_EQ(changes, 1);
    X->SetCut(false);
    EXPECT_EQ(changes, 1);
    X->SetCut(true);
    X->SetImageIndex(3);
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
