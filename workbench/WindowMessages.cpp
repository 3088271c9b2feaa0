#include "WindowMessages.h"

#include "MessagePane.h"
#include "Pane.h"
#include "Panes.h"

#include <QApplication>

TWindowMessages::TWindowMessages(QWidget& window, TMessagePane& pane, const TPanes& panes)
    : m_window(window), m_pane(pane), m_panes(panes), m_previous(SetMessageHandler(this))
{
}

TWindowMessages::~TWindowMessages()
{
    SetMessageHandler(m_previous);
}

void TWindowMessages::BeginBoxes()
{
    m_boxesAllowed = true;
    if (!m_waiting.isEmpty())
        ShowErrorBox(std::exchange(m_waiting, {}).join(QStringLiteral("\n\n")));
}

void TWindowMessages::ShowInformation(const QString& text)
{
    Show(QMessageBox::Information, text, QMessageBox::Ok);
}

void TWindowMessages::ShowError(const QString& text)
{
    m_pane.AddError(text);
    if (m_boxesAllowed)
        ShowErrorBox(text);
    else
        m_waiting.append(text);
}

void TWindowMessages::ShowErrorBox(const QString& text)
{
    Show(QMessageBox::Critical, text, QMessageBox::Ok);
}

bool TWindowMessages::Confirm(const QString& text)
{
    return Show(QMessageBox::Question, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

void TWindowMessages::Note(const QObject* source, const QString& text)
{
    m_pane.AddNote(NoteLine(m_panes, source, text));
}

int TWindowMessages::Run(QMessageBox& box)
{
    return box.exec();
}

int TWindowMessages::Show(QMessageBox::Icon icon, const QString& text, QMessageBox::StandardButtons buttons)
{
    QMessageBox box(icon, QApplication::applicationDisplayName(), text, buttons, &m_window);
    // Texts carry names and paths; none of them is markup.
    box.setTextFormat(Qt::PlainText);
    return Run(box);
}

QString NoteLine(const TPanes& panes, const QObject* source, const QString& text)
{
    const TPane* pane = panes.PaneOf(source);
    return pane ? QStringLiteral("%1: %2").arg(pane->Id(), text) : text;
}
