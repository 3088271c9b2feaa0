#include "NestedLoop.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

namespace
{

constexpr int LongestLoop = 10000; // milliseconds
constexpr auto Actions = Qt::CopyAction | Qt::MoveAction;

void CancelAll()
{
    QDrag::cancel();
    while (QWidget* modal = QApplication::activeModalWidget())
        modal->hide();
}

} // namespace

bool RunInLoop(const std::function<void()>& begin, const std::function<void()>& during)
{
    bool entered = false;
    QTimer step;
    QTimer limit;
    QObject::connect(&step, &QTimer::timeout, &step, [&] {
        step.stop();
        entered = true;
        during();
        CancelAll();
    });
    QObject::connect(&limit, &QTimer::timeout, &limit, [] {
        ADD_FAILURE() << "an event loop does not end";
        CancelAll();
    });
    step.start(0);
    limit.start(LongestLoop);
    begin();
    return entered;
}

void TMouse::Press(const QPoint& at, Qt::KeyboardModifiers keys) const
{
    Send(QEvent::MouseButtonPress, at, keys);
}

void TMouse::Move(const QPoint& to, Qt::KeyboardModifiers keys) const
{
    Send(QEvent::MouseMove, to, keys);
}

void TMouse::Release(const QPoint& at, Qt::KeyboardModifiers keys) const
{
    Send(QEvent::MouseButtonRelease, at, keys);
}

void TMouse::Send(int type, const QPoint& at, Qt::KeyboardModifiers keys) const
{
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const auto buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(static_cast<QEvent::Type>(type), at, m_widget->mapToGlobal(at), button, buttons, keys);
    QCoreApplication::sendEvent(m_widget, &event);
}

bool TDraggedOver::Enter(const QPoint& at) const
{
    QDragEnterEvent event(at, Actions, m_content, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_widget, &event);
    return event.isAccepted();
}

bool TDraggedOver::Move(const QPoint& to) const
{
    QDragMoveEvent event(to, Actions, m_content, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_widget, &event);
    return event.isAccepted();
}

void TDraggedOver::Leave() const
{
    QDragLeaveEvent event;
    QCoreApplication::sendEvent(m_widget, &event);
}

bool TDraggedOver::Drop(const QPoint& at) const
{
    QDropEvent event(at, Actions, m_content, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_widget, &event);
    return event.isAccepted();
}

bool TDraggedOver::EnterAndDrop(const QPoint& at) const
{
    if (Enter(at) && Move(at))
        return Drop(at);
    Leave();
    return false;
}
