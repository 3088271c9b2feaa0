#include "Vldragscrolltree.h"

#include "Vlerrors.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QTimerEvent>

namespace
{

constexpr int ScrollInterval = 50; // milliseconds from row to row

} // namespace

bool TDragScrollTree::PrepareDrag(TTreeNode*, Qt::KeyboardModifiers)
{
    return false;
}

std::unique_ptr<QMimeData> TDragScrollTree::StartDrag()
{
    return nullptr;
}

void TDragScrollTree::EndDrag() {}

bool TDragScrollTree::CanDrop(const QMimeData*, TTreeNode*) const
{
    return false;
}

void TDragScrollTree::Drop(const QMimeData*, TTreeNode*) {}

void TDragScrollTree::mousePressEvent(QMouseEvent* event)
{
    // What the popup menu does to a selection is for the menu to say.
    if (event->button() == Qt::RightButton && selectionModel()->hasSelection())
        return;
    if (event->button() == Qt::LeftButton) {
        m_pressedAt = event->position().toPoint();
        m_pressedNode.Set(NodeAt(m_pressedAt));
        m_askedNode.Set(nullptr);
        m_press = m_pressedNode ? TPress::OnNode : TPress::Beside;
    }
    QTreeWidget::mousePressEvent(event);
}

void TDragScrollTree::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton) || m_press == TPress::Beside) {
        QTreeWidget::mouseMoveEvent(event);
        return;
    }
    if (m_press == TPress::OnNode)
        AskForDrag(event->position().toPoint(), event->modifiers());
    const QPoint distance = event->position().toPoint() - m_pressedAt;
    if (m_press == TPress::Draggable && distance.manhattanLength() >= DragThreshold)
        RunDrag();
}

// First for the node that was pressed, then for every other one that the mouse comes to. The distance counts from the
// press, or from where another node said yes.
void TDragScrollTree::AskForDrag(const QPoint& position, Qt::KeyboardModifiers modifiers)
{
    TTreeNode* pressed = m_pressedNode.Get();
    TTreeNode* node = m_askedNode ? NodeAt(position) : pressed;
    if (!pressed)
        m_press = TPress::Spent;
    if (!pressed || !node || node == m_askedNode.Get())
        return;
    m_askedNode.Set(node);
    m_press = TPress::Spent; // unless nothing fails
    Guarded([&] {
        m_press = PrepareDrag(node, modifiers) ? TPress::Draggable : TPress::OnNode;
        if (m_press == TPress::Draggable && node != pressed)
            m_pressedAt = position;
    });
}

void TDragScrollTree::RunDrag()
{
    m_press = TPress::Spent;
    const QPointer<TDragScrollTree> alive(this);
    Guarded([this] {
        if (std::unique_ptr<QMimeData> content = StartDrag()) {
            auto* drag = new QDrag(this);
            drag->setMimeData(content.release());
            drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
        }
    });
    // The drag has an event loop of its own, in which the pane may have been closed.
    if (!alive)
        return;
    setState(NoState);
    Guarded([this] { EndDrag(); });
}

void TDragScrollTree::dragEnterEvent(QDragEnterEvent* event)
{
    // Whether it can be dropped depends on the node, so the tree wants to hear of every movement.
    QTreeWidget::dragEnterEvent(event);
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void TDragScrollTree::dragMoveEvent(QDragMoveEvent* event)
{
    // The view itself would scroll only as long as the mouse moves.
    ScrollNearEdge(event->position().toPoint());
    const bool accepted = AcceptsDrop(event->mimeData(), NodeAt(event->position().toPoint()));
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(accepted);
}

void TDragScrollTree::dragLeaveEvent(QDragLeaveEvent* event)
{
    m_scrollTimer.stop();
    QTreeWidget::dragLeaveEvent(event);
}

void TDragScrollTree::ScrollNearEdge(const QPoint& position)
{
    const bool nearTop = position.y() < autoScrollMargin();
    const bool nearBottom = position.y() >= viewport()->height() - autoScrollMargin();
    m_scrollStep = static_cast<int>(nearBottom) - static_cast<int>(nearTop);
    if (m_scrollStep == 0)
        m_scrollTimer.stop();
    else if (!m_scrollTimer.isActive())
        m_scrollTimer.start(ScrollInterval, this);
}

void TDragScrollTree::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_scrollTimer.timerId()) {
        QTreeWidget::timerEvent(event);
        return;
    }
    QScrollBar* bar = verticalScrollBar();
    bar->setValue(bar->value() + m_scrollStep * bar->singleStep());
}

bool TDragScrollTree::AcceptsDrop(const QMimeData* content, TTreeNode* target) const
{
    bool accepts = false;
    Guarded([&] { accepts = CanDrop(content, target); });
    return accepts;
}

void TDragScrollTree::dropEvent(QDropEvent* event)
{
    TTreeNode* target = NodeAt(event->position().toPoint());
    const bool accepted = AcceptsDrop(event->mimeData(), target);
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(accepted);
    if (accepted)
        Guarded([&] { Drop(event->mimeData(), target); });
    m_scrollTimer.stop();
    setState(NoState);
    viewport()->update();
}
