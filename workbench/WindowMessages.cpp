#include "WindowMessages.h"

#include "MessagePane.h"
#include "Pane.h"
#include "Panes.h"

#include <QApplication>
#include <QMessageBox>

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
    QMessageBox box(QMessageBox::Information, QApplication::applicationDisplayName(), text, QMessageBox::Ok, &m_window);
    Run(box);
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
    QMessageBox box(QMessageBox::Critical, QApplication::applicationDisplayName(), text, QMessageBox::Ok, &m_window);
    Run(box);
}

bool TWindowMessages::Confirm(const QString& text)
{
    QMessageBox box(QMessageBox::Question, QApplication::applicationDisplayName(), text,
                    QMessageBox::Yes | QMessageBox::No, &m_window);
    return Run(box) == QMessageBox::Yes;
}

void TWindowMessages::Note(const QObject* source, const QString& text)
{
    m_pane.AddNote(NoteLine(m_panes, source, text));
}

int TWindowMessages::Run(QMessageBox& box)
{
    return box.exec();
}

QString NoteLine(const TPanes& panes, const QObject* source, const QString& text)
{
    const TPane* pane = panes.PaneOf(source);
    return pane ? QStringLiteral("%1: %2").arg(pane->Id(), text) : text;
}
