#pragma once

#include <QMimeData>
#include <QPoint>
#include <Qt>

#include <functional>

class QWidget;

// Does `begin`, which blocks in an event loop of its own (a drag, a modal dialog), and `during` inside of that loop.
// Whatever is still open after it, or after some seconds, is cancelled. True when the loop was entered.
bool RunInLoop(const std::function<void()>& begin, const std::function<void()>& during);

// The left button of a mouse on one widget, whose coordinates the places are.
class TMouse
{
public:
    explicit TMouse(QWidget* widget) : m_widget(widget) {}

    void Press(const QPoint& at, Qt::KeyboardModifiers keys = {}) const;
    void Move(const QPoint& to, Qt::KeyboardModifiers keys = {}) const;
    void Release(const QPoint& at, Qt::KeyboardModifiers keys = {}) const;

private:
    void Send(int type, const QPoint& at, Qt::KeyboardModifiers keys) const;

    QWidget* m_widget;
};

// What is dragged over a widget, as the toolkit tells the widget of it.
class TDraggedOver
{
public:
    TDraggedOver(QWidget* widget, const QMimeData* content) : m_widget(widget), m_content(content) {}

    // Enters the widget; whether it wants to hear of the movements.
    bool Enter(const QPoint& at) const;
    // Whether it may be dropped there.
    bool Move(const QPoint& to) const;
    void Leave() const;
    bool Drop(const QPoint& at) const;
    // Enters, moves, and drops where that is accepted, else leaves; whether it was dropped.
    bool EnterAndDrop(const QPoint& at) const;

private:
    QWidget* m_widget;
    const QMimeData* m_content;
};
