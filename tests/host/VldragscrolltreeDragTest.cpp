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
        m_tree.ReplaceContent(std::move(top));
        m_tree.expandAll();
        m_tree.resize(300, 300);
        m_tree.show();
        m_tree.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_tree));
    }

    TTreeNode* Node(int index) const { return m_tree.TopNode()->Child(index); }
    QPoint PlaceOf(int index) const { return m_tree.visualItemRect(Node(index)).center(); }
    QString Selected() const
    {
        QStringList captions;
        for (const TTreeNode* node : m_tree.SelectedNodes())
            captions.append(node->Caption());
        return captions.join(u' ');
    }
    void Click(int index, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::mouseClick(m_tree.viewport(), Qt::LeftButton, keys, PlaceOf(index));
    }
    // Drags node `index` out; `during` runs while it is dragged.
    bool Drag(
        int index, const std::function<void()>& during = [] {})
    {
        const QPoint from = PlaceOf(index);
        m_mouse.Press(from);
        m_mouse.Move(from + QPoint(1, 0));
        return RunInLoop([&] { m_mouse.Move(from + QPoint(30, 0)); }, during);
    }
    TDraggedOver Over(const QMimeData& content) { return {m_tree.viewport(), &content}; }
    QPoint BottomEdge() const { return {50, m_tree.viewport()->height() - 3}; }
    int ScrolledTo() const { return m_tree.verticalScrollBar()->value(); }
    bool Scrolls()
    {
        const int before = ScrolledTo();
        return QTest::qWaitFor([&] { return ScrolledTo() != before; }, 1000);
    }

    TDragLog m_tree;
    TMouse m_mouse{m_tree.viewport()};
    TRecordedMessages m_messages;
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
    m_mouse.Press(from);
    EXPECT_TRUE(m_tree.Log.isEmpty());
    m_mouse.Move(from + QPoint(19, 0));
    EXPECT_EQ(m_tree.Log, QStringList{QStringLiteral("prepare n3")});
    EXPECT_TRUE(RunInLoop([&] { m_mouse.Move(from + QPoint(20, 0)); }, [] {}));
    EXPECT_EQ(m_tree.Log.value(1), QStringLiteral("start"));
}

TEST_F(DragScrollTreeDrag, CountsBothDirectionsOfTheMovement)
{
    const QPoint from = PlaceOf(3);
    m_mouse.Press(from);
    m_mouse.Move(from + QPoint(-10, 9));
    EXPECT_EQ(m_tree.Log, QStringList{QStringLiteral("prepare n3")});
    EXPECT_TRUE(RunInLoop([&] { m_mouse.Move(from + QPoint(-10, -10)); }, [] {}));
}

TEST_F(DragScrollTreeDrag, MeasuresFromWhereTheButtonWasPressed)
{
    const QPoint from = PlaceOf(3);
    m_mouse.Press(from);
    for (const int way : {15, 0, -15, 0, 19})
        m_mouse.Move(from + QPoint(way, 0));
    EXPECT_EQ(m_tree.Log, QStringList{QStringLiteral("prepare n3")});
    m_mouse.Release(from);
    m_mouse.Press(from + QPoint(40, 0));
    m_mouse.Move(from + QPoint(25, 0));
    EXPECT_EQ(m_tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("prepare n3")}));
}

TEST_F(DragScrollTreeDrag, PreparesStartsAndEnds)
{
    EXPECT_TRUE(Drag(3, [&] {
        EXPECT_EQ(m_tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start")}));
        EXPECT_EQ(m_tree.findChild<QDrag*>()->mimeData()->text(), QStringLiteral("n3"));
        QTest::keyClick(m_tree.viewport(), Qt::Key_Escape);
    }));
    EXPECT_EQ(m_tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"), QStringLiteral("end")}));
}

TEST_F(DragScrollTreeDrag, BeginsOnlyOnceForAPress)
{
    const QPoint from = PlaceOf(3);
    EXPECT_TRUE(Drag(3, [&] { QTest::keyClick(m_tree.viewport(), Qt::Key_Escape); }));
    m_tree.Log.clear();
    EXPECT_FALSE(RunInLoop([&] { m_mouse.Move(from + QPoint(60, 40)); }, [] {}));
    EXPECT_TRUE(m_tree.Log.isEmpty());
    EXPECT_EQ(Selected(), QStringLiteral("n3"));
    m_mouse.Release(from);
    EXPECT_TRUE(Drag(4));
}

TEST_F(DragScrollTreeDrag, DoesNotBeginBesideAllNodes)
{
    m_tree.ReplaceContent(std::make_unique<TTreeNode>(QStringLiteral("only")));
    const QPoint from(50, 200);
    m_mouse.Press(from);
    EXPECT_FALSE(RunInLoop([&] { m_mouse.Move(from + QPoint(30, 0)); }, [] {}));
    // Not on the way over a node either: that is a selection with the mouse.
    EXPECT_FALSE(RunInLoop([&] { m_mouse.Move(m_tree.visualItemRect(m_tree.TopNode()).center()); }, [] {}));
    EXPECT_TRUE(m_tree.Log.isEmpty());
    EXPECT_EQ(Selected(), QStringLiteral("only"));
}

TEST_F(DragScrollTreeDrag, DoesNotBeginWhereTheEditorRefusesIt)
{
    m_tree.MayBegin = false;
    EXPECT_FALSE(Drag(3));
    EXPECT_EQ(m_tree.Log, QStringList{QStringLiteral("prepare n3")});
    // The view does nothing of its own with the movement.
    m_mouse.Move(PlaceOf(6));
    EXPECT_EQ(Selected(), QStringLiteral("n3"));
    EXPECT_EQ(m_tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("prepare n6")}));
}

TEST_F(DragScrollTreeDrag, BeginsWhereTheMouseComesToANodeThatAllowsIt)
{
    m_tree.MayBegin = false;
    m_mouse.Press(PlaceOf(3));
    m_mouse.Move(PlaceOf(3) + QPoint(2, 0));
    m_tree.MayBegin = true;
    const QPoint there = PlaceOf(6);
    m_mouse.Move(there, Qt::ControlModifier);
    EXPECT_EQ(m_tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("prepare n6 with Ctrl")}));
    EXPECT_TRUE(RunInLoop([&] { m_mouse.Move(there + QPoint(30, 0)); }, [] {}));
    EXPECT_EQ(Selected(), QStringLiteral("n3"));
}

TEST_F(DragScrollTreeDrag, DoesNotBeginWithoutTheLeftButton)
{
    const QPoint from = PlaceOf(3);
    QTest::mousePress(m_tree.viewport(), Qt::RightButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, from + QPoint(40, 0), m_tree.viewport()->mapToGlobal(from), Qt::NoButton,
                     Qt::RightButton, Qt::NoModifier);
    EXPECT_FALSE(RunInLoop([&] { QCoreApplication::sendEvent(m_tree.viewport(), &move); }, [] {}));
    QTest::mouseRelease(m_tree.viewport(), Qt::RightButton, {}, from);
    QTest::mouseMove(m_tree.viewport(), from + QPoint(0, 40));
    EXPECT_TRUE(m_tree.Log.isEmpty());
}

TEST_F(DragScrollTreeDrag, DoesNotBeginOnANodeThatIsGone)
{
    const QPoint from = PlaceOf(3);
    m_mouse.Press(from);
    m_tree.RemoveBranches({Node(3)});
    EXPECT_FALSE(RunInLoop([&] { m_mouse.Move(from + QPoint(30, 0)); }, [] {}));
    EXPECT_TRUE(m_tree.Log.isEmpty());
}

TEST_F(DragScrollTreeDrag, KeepsTheNodeThatWasPressedWhenTheViewScrolls)
{
    const QPoint from = PlaceOf(3);
    m_mouse.Press(from);
    m_tree.scrollToBottom();
    EXPECT_TRUE(RunInLoop([&] { m_mouse.Move(from + QPoint(30, 0)); }, [] {}));
    EXPECT_EQ(m_tree.Log.value(0), QStringLiteral("prepare n3"));
}

TEST_F(DragScrollTreeDrag, EndsAlsoWithoutContent)
{
    m_tree.HasContent = false;
    EXPECT_FALSE(Drag(3));
    m_mouse.Move(PlaceOf(5));
    EXPECT_EQ(m_tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"), QStringLiteral("end")}));
}

TEST_F(DragScrollTreeDrag, GivesTheKeysHeldWhenTheMouseBeginsToMove)
{
    const QPoint from = PlaceOf(3);
    m_mouse.Press(from);
    m_mouse.Move(from + QPoint(2, 0), Qt::ControlModifier);
    EXPECT_TRUE(RunInLoop([&] { m_mouse.Move(from + QPoint(30, 0)); }, [] {}));
    EXPECT_EQ(m_tree.Log.value(0), QStringLiteral("prepare n3 with Ctrl"));
}

TEST_F(DragScrollTreeDrag, TakesNoNoticeOfKeysPressedLater)
{
    const QPoint from = PlaceOf(3);
    m_mouse.Press(from);
    m_mouse.Move(from + QPoint(2, 0));
    EXPECT_TRUE(RunInLoop([&] { m_mouse.Move(from + QPoint(30, 0), Qt::ControlModifier); }, [] {}));
    EXPECT_EQ(m_tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"), QStringLiteral("end")}));
}

TEST_F(DragScrollTreeDrag, KeepsASelectionOfSeveralWhenOneOfThemIsDragged)
{
    Click(2);
    Click(5, Qt::ControlModifier);
    Click(3, Qt::ControlModifier);
    EXPECT_TRUE(Drag(5, [&] { EXPECT_EQ(Selected(), QStringLiteral("n2 n5 n3")); }));
    EXPECT_EQ(Selected(), QStringLiteral("n2 n5 n3"));
    EXPECT_EQ(m_tree.SelectedNode(), Node(5));
}

TEST_F(DragScrollTreeDrag, KeepsASelectionOfSeveralWhenCtrlIsHeldAtThePress)
{
    Click(2);
    Click(5, Qt::ControlModifier);
    const QPoint from = PlaceOf(5);
    m_mouse.Press(from, Qt::ControlModifier);
    EXPECT_TRUE(RunInLoop([&] { m_mouse.Move(from + QPoint(30, 0), Qt::ControlModifier); }, [] {}));
    EXPECT_EQ(Selected(), QStringLiteral("n2 n5"));
}

TEST_F(DragScrollTreeDrag, SelectsOneOfSeveralWhenTheButtonIsReleasedInItsPlace)
{
    Click(2);
    Click(5, Qt::ControlModifier);
    m_mouse.Press(PlaceOf(2));
    EXPECT_EQ(Selected(), QStringLiteral("n2 n5"));
    m_mouse.Release(PlaceOf(2));
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
    m_tree.FailIn = QStringLiteral("prepare");
    EXPECT_FALSE(Drag(3));
    m_mouse.Move(PlaceOf(5));
    EXPECT_EQ(m_messages.Errors, QStringList{QStringLiteral("prepare n3")});
    EXPECT_EQ(m_tree.Log.size(), 1);
}

TEST_F(DragScrollTreeDrag, EndsADragThatFailsAtItsStart)
{
    m_tree.FailIn = QStringLiteral("start");
    EXPECT_FALSE(Drag(3));
    EXPECT_EQ(m_messages.Errors, QStringList{QStringLiteral("start")});
    EXPECT_EQ(m_tree.Log.value(2), QStringLiteral("end"));
}

TEST_F(DragScrollTreeDrag, DropsInItsOwnTreeBeforeTheDragEnds)
{
    EXPECT_TRUE(Drag(3, [&] {
        m_mouse.Move(PlaceOf(6));
        m_mouse.Release(PlaceOf(6));
        QCoreApplication::processEvents();
    }));
    EXPECT_EQ(m_tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"),
                                       QStringLiteral("drop n3 on n6"), QStringLiteral("end")}));
}

TEST_F(DragScrollTreeDrag, DropsNothingWhenItIsReleasedWhereItIsRefused)
{
    m_tree.MayDrop = false;
    EXPECT_TRUE(Drag(3, [&] {
        m_mouse.Move(PlaceOf(6));
        m_mouse.Release(PlaceOf(6));
        QCoreApplication::processEvents();
    }));
    EXPECT_EQ(m_tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"), QStringLiteral("end")}));
}

TEST_F(DragScrollTreeDrag, DropsIntoAnotherWidget)
{
    QLineEdit other;
    other.setGeometry(m_tree.geometry().right() + 50, m_tree.geometry().top(), 200, 40);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    EXPECT_TRUE(Drag(3, [&] {
        const TMouse mouse(&other);
        mouse.Move(QPoint(20, 20));
        mouse.Release(QPoint(20, 20));
        QCoreApplication::processEvents();
    }));
    EXPECT_EQ(other.text(), QStringLiteral("n3"));
    EXPECT_EQ(m_tree.Log, (QStringList{QStringLiteral("prepare n3"), QStringLiteral("start"), QStringLiteral("end")}));
    EXPECT_EQ(m_tree.TopNode()->Count(), 100);
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
    m_tree.MayDrop = false;
    EXPECT_FALSE(dragged.Move(PlaceOf(3)));
    m_tree.MayDrop = true;
    EXPECT_TRUE(dragged.Move(PlaceOf(4)));
    EXPECT_TRUE(dragged.Drop(PlaceOf(4)));
    EXPECT_EQ(m_tree.Log, QStringList{QStringLiteral("drop something on n4")});
}

TEST_F(DragScrollTreeDrag, RefusesForeignContent)
{
    QMimeData content;
    content.setData(QStringLiteral("application/x-foreign"), "x");
    EXPECT_FALSE(Over(content).EnterAndDrop(PlaceOf(3)));
    EXPECT_FALSE(Over(content).Drop(PlaceOf(3)));
    EXPECT_TRUE(m_tree.Log.isEmpty());
}

TEST_F(DragScrollTreeDrag, RefusesADropThatIsNoLongerWanted)
{
    QMimeData content;
    const TDraggedOver dragged = Over(Text(content));
    EXPECT_TRUE(dragged.Enter(PlaceOf(3)));
    EXPECT_TRUE(dragged.Move(PlaceOf(3)));
    m_tree.MayDrop = false;
    EXPECT_FALSE(dragged.Drop(PlaceOf(3)));
    EXPECT_TRUE(m_tree.Log.isEmpty());
}

TEST_F(DragScrollTreeDrag, TellsOfADropBesideAllNodes)
{
    m_tree.ReplaceContent(std::make_unique<TTreeNode>(QStringLiteral("only")));
    QMimeData content;
    EXPECT_TRUE(Over(Text(content)).EnterAndDrop(QPoint(50, 200)));
    EXPECT_EQ(m_tree.Log, QStringList{QStringLiteral("drop something on nothing")});
}

TEST_F(DragScrollTreeDrag, NeverTakesWhatIsDraggedAwayFromItsSource)
{
    QMimeData content;
    ASSERT_TRUE(Over(Text(content)).Enter(PlaceOf(3)));
    QDragMoveEvent move(PlaceOf(3), Qt::CopyAction | Qt::MoveAction, &content, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(m_tree.viewport(), &move);
    EXPECT_EQ(move.dropAction(), Qt::CopyAction);
}

TEST_F(DragScrollTreeDrag, GuardsTheEditorsAnswers)
{
    m_tree.FailIn = QStringLiteral("can drop");
    QMimeData content;
    EXPECT_FALSE(Over(Text(content)).EnterAndDrop(PlaceOf(3)));
    EXPECT_EQ(m_messages.Errors, QStringList{QStringLiteral("can drop")});
    m_tree.FailIn = QStringLiteral("drop something");
    Over(Text(content)).EnterAndDrop(PlaceOf(3));
    EXPECT_EQ(m_messages.Errors.size(), 2);
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
    m_tree.MayDrop = false;
    m_tree.scrollToBottom();
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
