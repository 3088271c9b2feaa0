#pragma once

#include "Vlmessages.h"

#include <QMessageBox>
#include <QStringList>

class QWidget;
class TMessagePane;
class TPanes;

// Messages of the window: boxes for what the user must see, and everything noticed or failed in the message pane. Boxes
// that come up before the window stands wait for it. Is the host's message handler while it lives.
class TWindowMessages : public IMessageHandler
{
public:
    // All three must outlive every call.
    TWindowMessages(QWidget& window, TMessagePane& pane, const TPanes& panes);
    ~TWindowMessages() override;
    TWindowMessages(const TWindowMessages&) = delete;
    TWindowMessages& operator=(const TWindowMessages&) = delete;

    // The window stands: shows what has waited, from now on boxes come at once.
    void BeginBoxes();

    void ShowInformation(const QString& text) override;
    void ShowError(const QString& text) override;
    bool Confirm(const QString& text) override;
    void Note(const QObject* source, const QString& text) override;

protected:
    // Shows the box until it is answered; the standard button that was chosen.
    virtual int Run(QMessageBox& box);

private:
    int Show(QMessageBox::Icon icon, const QString& text, QMessageBox::StandardButtons buttons);
    void ShowErrorBox(const QString& text);

    QWidget& m_window;
    TMessagePane& m_pane;
    const TPanes& m_panes;
    QStringList m_waiting;
    bool m_boxesAllowed = false;
    IMessageHandler* m_previous;
};

// `text` with the identifier of the pane that `source` belongs to in front of it, where there is one.
QString NoteLine(const TPanes& panes, const QObject* source, const QString& text);
