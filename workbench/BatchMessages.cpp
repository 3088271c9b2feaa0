#include "BatchMessages.h"

#include "MessagePane.h"
#include "WindowMessages.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>

TBatchMessages::TBatchMessages(std::ostream& output, TMessagePane& pane, const TPanes& panes, bool answerYes)
    : m_output(output), m_pane(pane), m_panes(panes), m_answerYes(answerYes), m_previous(SetMessageHandler(this))
{
    qApp->installEventFilter(this);
}

TBatchMessages::~TBatchMessages()
{
    SetMessageHandler(m_previous);
}

void TBatchMessages::ShowInformation(const QString& text)
{
    Print(text);
}

void TBatchMessages::ShowError(const QString& text)
{
    if (m_firstError.isEmpty())
        m_firstError = OneLine(text);
}

bool TBatchMessages::Confirm(const QString& text)
{
    Print(QStringLiteral("%1 %2").arg(text, m_answerYes ? QStringLiteral("Ja") : QStringLiteral("Nein")));
    return m_answerYes;
}

void TBatchMessages::Note(const QObject* source, const QString& text)
{
    Print(NoteLine(m_panes, source, text));
}

// The dialog's own loop has not begun when it is shown: the refusal waits for it.
bool TBatchMessages::eventFilter(QObject* watched, QEvent* event)
{
    auto* dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
    if (dialog && dialog->isModal()) {
        ShowError(QStringLiteral("Im Stapelbetrieb ist kein Dialog möglich: \"%1\"").arg(dialog->windowTitle()));
        QMetaObject::invokeMethod(dialog, &QDialog::reject, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

void TBatchMessages::Print(const QString& text)
{
    m_pane.AddNote(text);
    m_output << OneLine(text).toStdString() << std::endl;
}

QString OneLine(const QString& text)
{
    QString line = text;
    return line.replace(u'\n', u' ');
}
