#include "MessagePane.h"

#include "Layout.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTime>

namespace
{

constexpr int MaxLines = 5000;

// Readable on light and on dark windows.
QColor ErrorColor(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < 128 ? QColor(255, 128, 128) : QColor(176, 0, 0);
}

// Belongs to its line.
struct TFaultTarget final : public QTextBlockUserData
{
    TFaultTarget(const QString& paneId, const TDocumentPlace& place) : PaneId(paneId), Place(place) {}

    QString PaneId;
    TDocumentPlace Place; // may be empty
};

} // namespace

TMessagePane::TMessagePane(QWidget* parent)
    : QDockWidget(QStringLiteral("Meldungen"), parent), m_text(new QPlainTextEdit(this))
{
    setObjectName(MessagePaneId());
    setAccessibleName(windowTitle());
    m_text->setAccessibleName(windowTitle());
    m_text->setReadOnly(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_text->setTabChangesFocus(true);
    m_text->setUndoRedoEnabled(false);
    m_text->setMaximumBlockCount(MaxLines);
    m_text->installEventFilter(this);
    m_text->viewport()->installEventFilter(this);
    setWidget(m_text);
}

void TMessagePane::AddNote(const QString& text)
{
    AddLine(text, m_text->palette().color(QPalette::Text));
}

void TMessagePane::AddError(const QString& text)
{
    AddLine(QStringLiteral("Fehler: ") + text, ErrorColor(m_text->palette()));
}

void TMessagePane::AddFault(const QString& text, const QString& paneId, const TDocumentPlace& place)
{
    AddLine(text, ErrorColor(m_text->palette()));
    if (!paneId.isEmpty())
        m_text->document()->lastBlock().setUserData(new TFaultTarget(paneId, place));
}

bool TMessagePane::Activate(const QTextCursor& place)
{
    const auto* target = static_cast<const TFaultTarget*>(place.block().userData());
    if (!target)
        return false;
    // What is done there may write lines here, and a full pane drops its first ones.
    const TFaultTarget fault(target->PaneId, target->Place);
    Q_EMIT FaultActivated(fault.PaneId, fault.Place);
    return true;
}

bool TMessagePane::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonDblClick) {
        const QPoint place = static_cast<QMouseEvent*>(event)->position().toPoint();
        return Activate(m_text->cursorForPosition(place)) || QDockWidget::eventFilter(watched, event);
    }
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : 0;
    return ((key == Qt::Key_Return || key == Qt::Key_Enter) && Activate(m_text->textCursor())) ||
           QDockWidget::eventFilter(watched, event);
}

QString TMessagePane::Text() const
{
    return m_text->toPlainText();
}

void TMessagePane::FocusText()
{
    show();
    raise();
    m_text->setFocus(Qt::OtherFocusReason);
}

// Written through a cursor of its own. A selection that reaches to the end would grow with the text: it stays what the
// user made it.
void TMessagePane::AddLine(const QString& text, const QColor& color)
{
    QTextCursor selection = m_text->textCursor();
    const int anchor = selection.anchor();
    const int position = selection.position();
    const bool isSelected = selection.hasSelection();
    Append(QTime::currentTime().toString(QStringLiteral("HH:mm:ss  ")) + text, color);
    if (isSelected) {
        selection.setPosition(anchor);
        selection.setPosition(position, QTextCursor::KeepAnchor);
        m_text->setTextCursor(selection);
    }
    m_text->verticalScrollBar()->setValue(m_text->verticalScrollBar()->maximum());
}

void TMessagePane::Append(const QString& line, const QColor& color)
{
    QTextCharFormat format;
    format.setForeground(color);
    QTextCursor end(m_text->document());
    end.movePosition(QTextCursor::End);
    if (!m_text->document()->isEmpty())
        end.insertBlock();
    end.insertText(line, format);
}
