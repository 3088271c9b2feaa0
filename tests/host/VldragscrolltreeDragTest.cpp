#include "Vldragscrolltree.h"

#include "NestedLoop.h"
#include "TestSupport.h"
#include "Vlerrors.h"

#include <QApplication>
#include <QDrag>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace
{

QString KeysText(Qt::KeyboardModifiers keys)
{
    return keys & Qt::ControlModifier ? QStringLiteral(" with Ctrl") : QString();
}

QString CaptionOf(const TTreeNode* node)
{
    return node ? node->Caption() : QStringLiteral("nothing");
}

// Writes down what becomes of a drag, in the order of its steps.
class TDragLog final : public TDragScrollTree
{
public:
    QStringList Log;
    bool MayBegin = true;
    bool HasContent = true;
    bool MayDrop = true;
    QString FailIn;

protected:
    bool PrepareDrag(TTreeNode* node, Qt::KeyboardModifiers keys) override
    {
        Note(QStringLiteral("prepare ") + node->Caption() + KeysText(keys));
        return MayBegin;
    }
    std::unique_ptr<QMimeData> StartDrag() override
    {
        Note(QStringLiteral("start"));
        if (!HasContent)
            return nullptr;
        auto content = std::make_unique<QMimeData>();
        content->setText(CaptionOf(SelectedNode()));
        return content;
    }
    void EndDrag() override { Note(QStringLiteral("end")); }
    bool CanDrop(const QMimeData* content, TTreeNode*) const override
    {
        if (FailIn == QStringLiteral("can drop"))
            throw TUserError(FailIn);
        return MayDrop && content->hasText();
    }
    void Drop(const QMimeData* content, TTreeNode* target) override
    {
        Note(QStringLiteral("drop ") + content->text() + QStringLiteral(" on ") + CaptionOf(target));
    }

private:
    void Note(const QString& line)
    {
        Log.append(line);
        if (!FailIn.isEmpty() && line.startsWith(FailIn))
            throw TUserError(line);
    }
};

// A shown tree with the top node "top" and 100 nodes below it, "n0" and on, of which a dozen can be seen.
class DragScrollTreeDrag : public testing::Test
{
protected:
    DragScrollTreeDrag()
    {
        auto top = std::make_unique<TTreeNode>(QStringLiteral("top"));
        for (int i = 0; i < 100; ++i)
            top->addChild(new TTreeNode(QStringLiteral("n%1").arg(i)));
        Tree.ReplaceContent(std::move(top));
        Tree.expandAll();
        Tree.resize(300, 300);
        Tree.show();
        Tree.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&Tree));
    }

    TTreeNode* Node(int index) const { return Tree.TopNode()->Child(index); }
    QPoint PlaceOf(int index) const { return Tree.visualItemRect(Node(index)).center(); }
    QString Selected() const
    {
        QStringList captions;
        for (const TTreeNode* node : Tree.SelectedNodes())
            captions.append(node->Caption());
        return captions.join(u' ');
    }
    void Click(int index, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::mouseClick(Tree.viewport(), Qt::LeftButton, keys, PlaceOf(index));
    }
    // Drags node `index` out; `during` runs while it is dragged.
    bool Drag(
        int index, const std::function<void()>& during = [] {})
    {
        const QPoint from = PlaceOf(index);
        Mouse.Press(from);
        Mouse.Move(from + QPoint(1, 0));
        return RunInLoop([&] { Mouse.Move(from + QPoint(30, 0)); }, during);
    }
    TDraggedOver Over(const QMimeData& content) { return {Tree.viewport(), &content}; }
    QPoint BottomEdge() const { return {50, Tree.viewport()->height() - 3}; }
    int ScrolledTo() const { return Tree.verticalScrollBar()->value(); }
    bool Scrolls()
    {
        const int before = ScrolledTo();
        return QTest::qWaitFor([&] { return ScrolledTo() != before; }, 1000);
    }

    TDragLog Tree;
    TMouse Mouse{Tree.viewport()};
    TRecordedMessages Messages;
};

QMimeData& Text(QMimeData& content)
{
    content.setText(QStringLiteral("something"));
    return content;
}

} // namespace

TEST_F(DragScrollTreeDrag, BeginsAfterTwentyPixels)
{
    const QPoint from = PlaceOf(3);
    Mouse.Press(from);
    EXPECT_TRUE(Tree.Log.isEmpty());
    Mouse.Move(from + QPoint(19, 0));
    EXPECT_EQ(Tree.Log, QStringList{QStringLiteral("prepare n3")});
    EXPECT_TRUE(RunInLoop([&] { Mouse.Move(from + QPoint(20, 0)); }, [] {}));
    EXPECT_EQ(Tree.Log.value(1), QStringLiteral("start"));
}

TEST_F(DragScrollTreeDrag, CountsBothDirectionsOfTheMovement)
{
    const QPoint from = PlaceOf(3);
    Mouse.Press(from);
    Mouse.Move(from + QPoint(-10, 9));
    EXPECT_EQ(Tree.Log, QStringList{QStringLiteral("prepare n3")});
    EXPECT_TRUE(RunInLoop([&] { Mouse.Move(from + QPoint(-10, -10)); }, [] {}));
}

TEST_F(DragScrollTreeDrag, MeasuresFromWhereTheButtonWasPressed)
{
    const QPoint from = PlaceOf(3);
    Mouse.Press(from);
    for (const int way : {15, 0, -15, 0, 19})
        Mouse.Move(from + QPoint(way, 0));
    EXPECT_EQ(Tree.Log, QStringList{QStringLiteral("prepare n3")});
    Mouse.Release(from);
    Mouse.Press(from + QPoint(40, 0));
    Mouse.Move(from + QPoint(25, 0));
    EXPECT_EQ(Tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("prepare n3")}));
}

TEST_F(DragScrollTreeDrag, PreparesStartsAndEnds)
{
    EXPECT_TRUE(Drag(3, [&] {
        EXPECT_EQ(Tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start")}));
        EXPECT_EQ(Tree.findChild<QDrag*>()->mimeData()->text(), QStringLiteral("n3"));
        QTest::keyClick(Tree.viewport(), Qt::Key_Escape);
    }));
    EXPECT_EQ(Tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"), QStringLiteral("end")}));
}

TEST_F(DragScrollTreeDrag, BeginsOnlyOnceForAPress)
{
    const QPoint from = PlaceOf(3);
    EXPECT_TRUE(Drag(3, [&] { QTest::keyClick(Tree.viewport(), Qt::Key_Escape); }));
    Tree.Log.clear();
    EXPECT_FALSE(RunInLoop([&] { Mouse.Move(from + QPoint(60, 40)); }, [] {}));
    EXPECT_TRUE(Tree.Log.isEmpty());
    EXPECT_EQ(Selected(), QStringLiteral("n3"));
    Mouse.Release(from);
    EXPECT_TRUE(Drag(4));
}

TEST_F(DragScrollTreeDrag, DoesNotBeginBesideAllNodes)
{
    Tree.ReplaceContent(std::make_unique<TTreeNode>(QStringLiteral("only")));
    const QPoint from(50, 200);
    Mouse.Press(from);
    EXPECT_FALSE(RunInLoop([&] { Mouse.Move(from + QPoint(30, 0)); }, [] {}));
    // Not on the way over a node either: that is a selection with the mouse.
    EXPECT_FALSE(RunInLoop([&] { Mouse.Move(Tree.visualItemRect(Tree.TopNode()).center()); }, [] {}));
    EXPECT_TRUE(Tree.Log.isEmpty());
    EXPECT_EQ(Selected(), QStringLiteral("only"));
}

TEST_F(DragScrollTreeDrag, DoesNotBeginWhereTheEditorRefusesIt)
{
    Tree.MayBegin = false;
    EXPECT_FALSE(Drag(3));
    EXPECT_EQ(Tree.Log, QStringList{QStringLiteral("prepare n3")});
    // The view does nothing of its own with the movement.
    Mouse.Move(PlaceOf(6));
    EXPECT_EQ(Selected(), QStringLiteral("n3"));
    EXPECT_EQ(Tree.Log, QStringList{QStringLiteral("prepare n3")});
}

TEST_F(DragScrollTreeDrag, DoesNotBeginWithoutTheLeftButton)
{
    const QPoint from = PlaceOf(3);
    QTest::mousePress(Tree.viewport(), Qt::RightButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, from + QPoint(40, 0), Tree.viewport()->mapToGlobal(from), Qt::NoButton,
                     Qt::RightButton, Qt::NoModifier);
    EXPECT_FALSE(RunInLoop([&] { QCoreApplication::sendEvent(Tree.viewport(), &move); }, [] {}));
    QTest::mouseRelease(Tree.viewport(), Qt::RightButton, {}, from);
    QTest::mouseMove(Tree.viewport(), from + QPoint(0, 40));
    EXPECT_TRUE(Tree.Log.isEmpty());
}

TEST_F(DragScrollTreeDrag, DoesNotBeginOnANodeThatIsGone)
{
    const QPoint from = PlaceOf(3);
    Mouse.Press(from);
    Tree.RemoveBranches({Node(3)});
    EXPECT_FALSE(RunInLoop([&] { Mouse.Move(from + QPoint(30, 0)); }, [] {}));
    EXPECT_TRUE(Tree.Log.isEmpty());
}

TEST_F(DragScrollTreeDrag, KeepsTheNodeThatWasPressedWhenTheViewScrolls)
{
    const QPoint from = PlaceOf(3);
    Mouse.Press(from);
    Tree.scrollToBottom();
    EXPECT_TRUE(RunInLoop([&] { Mouse.Move(from + QPoint(30, 0)); }, [] {}));
    EXPECT_EQ(Tree.Log.value(0), QStringLiteral("prepare n3"));
}

TEST_F(DragScrollTreeDrag, EndsAlsoWithoutContent)
{
    Tree.HasContent = false;
    EXPECT_FALSE(Drag(3));
    Mouse.Move(PlaceOf(5));
    EXPECT_EQ(Tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"), QStringLiteral("end")}));
}

TEST_F(DragScrollTreeDrag, GivesTheKeysHeldWhenTheMouseBeginsToMove)
{
    const QPoint from = PlaceOf(3);
    Mouse.Press(from);
    Mouse.Move(from + QPoint(2, 0), Qt::ControlModifier);
    EXPECT_TRUE(RunInLoop([&] { Mouse.Move(from + QPoint(30, 0)); }, [] {}));
    EXPECT_EQ(Tree.Log.value(0), QStringLiteral("prepare n3 with Ctrl"));
}

TEST_F(DragScrollTreeDrag, TakesNoNoticeOfKeysPressedLater)
{
    const QPoint from = PlaceOf(3);
    Mouse.Press(from);
    Mouse.Move(from + QPoint(2, 0));
    EXPECT_TRUE(RunInLoop([&] { Mouse.Move(from + QPoint(30, 0), Qt::ControlModifier); }, [] {}));
    EXPECT_EQ(Tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"), QStringLiteral("end")}));
}

TEST_F(DragScrollTreeDrag, KeepsASelectionOfSeveralWhenOneOfThemIsDragged)
{
    Click(2);
    Click(5, Qt::ControlModifier);
    Click(3, Qt::ControlModifier);
    EXPECT_TRUE(Drag(5, [&] { EXPECT_EQ(Selected(), QStringLiteral("n2 n5 n3")); }));
    EXPECT_EQ(Selected(), QStringLiteral("n2 n5 n3"));
    EXPECT_EQ(Tree.SelectedNode(), Node(5));
}

TEST_F(DragScrollTreeDrag, KeepsASelectionOfSeveralWhenCtrlIsHeldAtThePress)
{
    Click(2);
    Click(5, Qt::ControlModifier);
    const QPoint from = PlaceOf(5);
    Mouse.Press(from, Qt::ControlModifier);
    EXPECT_TRUE(RunInLoop([&] { Mouse.Move(from + QPoint(30, 0), Qt::ControlModifier); }, [] {}));
    EXPECT_EQ(Selected(), QStringLiteral("n2 n5"));
}

TEST_F(DragScrollTreeDrag, SelectsOneOfSeveralWhenTheButtonIsReleasedInItsPlace)
{
    Click(2);
    Click(5, Qt::ControlModifier);
    Mouse.Press(PlaceOf(2));
    EXPECT_EQ(Selected(), QStringLiteral("n2 n5"));
    Mouse.Release(PlaceOf(2));
    EXPECT_EQ(Selected(), QStringLiteral("n2"));
}

TEST_F(DragScrollTreeDrag, DragsANodeThatWasNotSelectedAlone)
{
    Click(2);
    Click(5, Qt::ControlModifier);
    EXPECT_TRUE(Drag(7, [&] { EXPECT_EQ(Selected(), QStringLiteral("n7")); }));
}

TEST_F(DragScrollTreeDrag, ReportsAFailureOfThePreparationOnce)
{
    Tree.FailIn = QStringLiteral("prepare");
    EXPECT_FALSE(Drag(3));
    Mouse.Move(PlaceOf(5));
    EXPECT_EQ(Messages.Errors, QStringList{QStringLiteral("prepare n3")});
    EXPECT_EQ(Tree.Log.size(), 1);
}

TEST_F(DragScrollTreeDrag, EndsADragThatFailsAtItsStart)
{
    Tree.FailIn = QStringLiteral("start");
    EXPECT_FALSE(Drag(3));
    EXPECT_EQ(Messages.Errors, QStringList{QStringLiteral("start")});
    EXPECT_EQ(Tree.Log.value(2), QStringLiteral("end"));
}

TEST_F(DragScrollTreeDrag, DropsInItsOwnTreeBeforeTheDragEnds)
{
    EXPECT_TRUE(Drag(3, [&] {
        Mouse.Move(PlaceOf(6));
        Mouse.Release(PlaceOf(6));
        QCoreApplication::processEvents();
    }));
    EXPECT_EQ(Tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"),
                                     QStringLiteral("drop n3 on n6"), QStringLiteral("end")}));
}

TEST_F(DragScrollTreeDrag, DropsNothingWhenItIsReleasedWhereItIsRefused)
{
    Tree.MayDrop = false;
    EXPECT_TRUE(Drag(3, [&] {
        Mouse.Move(PlaceOf(6));
        Mouse.Release(PlaceOf(6));
        QCoreApplication::processEvents();
    }));
    EXPECT_EQ(Tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"), QStringLiteral("end")}));
}

TEST_F(DragScrollTreeDrag, DropsIntoAnotherWidget)
{
    QLineEdit other;
    other.setGeometry(Tree.geometry().right() + 50, Tree.geometry().top(), 200, 40);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    EXPECT_TRUE(Drag(3, [&] {
        const TMouse mouse(&other);
        mouse.Move(QPoint(20, 20));
        mouse.Release(QPoint(20, 20));
        QCoreApplication::processEvents();
    }));
    EXPECT_EQ(other.text(), QStringLiteral("n3"));
    EXPECT_EQ(Tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"), QStringLiteral("end")}));
    EXPECT_EQ(Tree.TopNode()->Count(), 100);
}

TEST_F(DragScrollTreeDrag, SurvivesThatItsTreeIsClosedMeanwhile)
{
    auto tree = std::make_unique<TDragLog>();
    tree->ReplaceContent(std::make_unique<TTreeNode>(QStringLiteral("only")));
    tree->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(tree.get()));
    const QPoint from = tree->visualItemRect(tree->TopNode()).center();
    const TMouse mouse(tree->viewport());
    mouse.Press(from);
    EXPECT_TRUE(RunInLoop([&] { mouse.Move(from + QPoint(30, 0)); }, [&] { tree.reset(); }));
}

TEST_F(DragScrollTreeDrag, AsksTheEditorForEveryPlace)
{
    QMimeData content;
    const TDraggedOver dragged = Over(Text(content));
    EXPECT_TRUE(dragged.Enter(PlaceOf(3)));
    EXPECT_TRUE(dragged.Move(PlaceOf(3)));
    Tree.MayDrop = false;
    EXPECT_FALSE(dragged.Move(PlaceOf(3)));
    Tree.MayDrop = true;
    EXPECT_TRUE(dragged.Move(PlaceOf(4)));
    EXPECT_TRUE(dragged.Drop(PlaceOf(4)));
    EXPECT_EQ(Tree.Log, QStringList{QStringLiteral("drop something on n4")});
}

TEST_F(DragScrollTreeDrag, RefusesForeignContent)
{
    QMimeData content;
    content.setData(QStringLiteral("application/x-foreign"), "x");
    EXPECT_FALSE(Over(content).EnterAndDrop(PlaceOf(3)));
    EXPECT_FALSE(Over(content).Drop(PlaceOf(3)));
    EXPECT_TRUE(Tree.Log.isEmpty());
}

TEST_F(DragScrollTreeDrag, RefusesADropThatIsNoLongerWanted)
{
    QMimeData content;
    const TDraggedOver dragged = Over(Text(content));
    EXPECT_TRUE(dragged.Enter(PlaceOf(3)));
    EXPECT_TRUE(dragged.Move(PlaceOf(3)));
    Tree.MayDrop = false;
    EXPECT_FALSE(dragged.Drop(PlaceOf(3)));
    EXPECT_TRUE(Tree.Log.isEmpty());
}

TEST_F(DragScrollTreeDrag, TellsOfADropBesideAllNodes)
{
    Tree.ReplaceContent(std::make_unique<TTreeNode>(QStringLiteral("only")));
    QMimeData content;
    EXPECT_TRUE(Over(Text(content)).EnterAndDrop(QPoint(50, 200)));
    EXPECT_EQ(Tree.Log, QStringList{QStringLiteral("drop something on nothing")});
}

TEST_F(DragScrollTreeDrag, NeverTakesWhatIsDraggedAwayFromItsSource)
{
    QMimeData content;
    ASSERT_TRUE(Over(Text(content)).Enter(PlaceOf(3)));
    QDragMoveEvent move(PlaceOf(3), Qt::CopyAction | Qt::MoveAction, &content, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(Tree.viewport(), &move);
    EXPECT_EQ(move.dropAction(), Qt::CopyAction);
}

TEST_F(DragScrollTreeDrag, GuardsTheEditorsAnswers)
{
    Tree.FailIn = QStringLiteral("can drop");
    QMimeData content;
    EXPECT_FALSE(Over(Text(content)).EnterAndDrop(PlaceOf(3)));
    EXPECT_EQ(Messages.Errors, QStringList{QStringLiteral("can drop")});
    Tree.FailIn = QStringLiteral("drop something");
    Over(Text(content)).EnterAndDrop(PlaceOf(3));
    EXPECT_EQ(Messages.Errors.size(), 2);
}

TEST_F(DragScrollTreeDrag, ScrollsNearTheEdge)
{
    QMimeData content;
    const TDraggedOver dragged = Over(Text(content));
    dragged.Enter(BottomEdge());
    dragged.Move(BottomEdge());
    EXPECT_TRUE(Scrolls());
    dragged.Leave();
}

TEST_F(DragScrollTreeDrag, ScrollsOnWhileTheMouseRests)
{
    QMimeData content;
    const TDraggedOver dragged = Over(Text(content));
    dragged.Enter(BottomEdge());
    dragged.Move(BottomEdge());
    EXPECT_TRUE(QTest::qWaitFor([&] { return ScrolledTo() > 10; }, 8000)) << ScrolledTo();
    dragged.Leave();
}

TEST_F(DragScrollTreeDrag, ScrollsAlsoWhereNothingMayBeDropped)
{
    Tree.MayDrop = false;
    Tree.scrollToBottom();
    QMimeData content;
    const TDraggedOver dragged = Over(Text(content));
    dragged.Enter(QPoint(50, 3));
    dragged.Move(QPoint(50, 3));
    EXPECT_TRUE(Scrolls());
    dragged.Leave();
}

TEST_F(DragScrollTreeDrag, DoesNotScrollInTheMiddle)
{
    QMimeData content;
    const TDraggedOver dragged = Over(Text(content));
    dragged.Enter(PlaceOf(5));
    dragged.Move(PlaceOf(5));
    EXPECT_FALSE(Scrolls());
    dragged.Leave();
}

TEST_F(DragScrollTreeDrag, StopsScrollingWithTheDrop)
{
    QMimeData content;
    const TDraggedOver dragged = Over(Text(content));
    dragged.Enter(BottomEdge());
    dragged.Move(BottomEdge());
    ASSERT_TRUE(Scrolls());
    dragged.Drop(BottomEdge());
    EXPECT_FALSE(Scrolls());
}

TEST_F(DragScrollTreeDrag, StopsScrollingWhenTheDragLeaves)
{
    QMimeData content;
    const TDraggedOver dragged = Over(Text(content));
    dragged.Enter(BottomEdge());
    dragged.Move(BottomEdge());
    ASSERT_TRUE(Scrolls());
    dragged.Leave();
    EXPECT_FALSE(Scrolls());
}
