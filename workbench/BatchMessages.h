#pragma once

#include "Vlmessages.h"

#include <QObject>

#include <ostream>

class TMessagePane;
class TPanes;

// Messages of batch mode: one line on the output (and in the message pane, for the picture) for each, questions
// answered by policy, the first error kept for the end. Nothing ever waits for a user: modal dialogs that come up are
// closed as cancelled, which is an error. Is the host's message handler while it lives.
class TBatchMessages final : public QObject, public IMessageHandler
{
public:
    // All must outlive every call.
    TBatchMessages(std::ostream& output, TMessagePane& pane, const TPanes& panes, bool answerYes);
    ~TBatchMessages() override;

    // The first error since the start; empty while all is well.
    const QString& FirstError() const { return m_firstError; }

    void ShowInformation(const QString& text) override;
    void ShowError(const QString& text) override;
    bool Confirm(const QString& text) override;
    void Note(const QObject* source, const QString& text) override;
    bool IsInteractive() const override { return false; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Print(const QString& text);

    std::ostream& m_output;
    TMessagePane& m_pane;
    const TPanes& m_panes;
    bool m_answerYes;
    QString m_firstError;
    IMessageHandler* m_previous;
};

// `text` on one line.
QString OneLine(const QString& text);
