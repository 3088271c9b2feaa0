#pragma once

#include "Vlexport.h"

#include <QObject>
#include <QString>

// How the host talks to its user. The workbench shows windows, its batch mode prints and answers by policy, tests
// record.
class VLHOST_API IMessageHandler
{
public:
    virtual ~IMessageHandler();

    virtual void ShowInformation(const QString& text) = 0;
    virtual void ShowError(const QString& text) = 0;
    // A question with Yes and No; true for Yes.
    virtual bool Confirm(const QString& text) = 0;
    // Something done or noticed that needs no answer, for the message pane. `source` is the component that did it, or
    // null for the host itself.
    virtual void Note(const QObject* source, const QString& text) = 0;
    // False where nobody sees a dialog (batch runs); what needs one is then refused with an error.
    virtual bool IsInteractive() const { return true; }
};

// Puts `handler` in the place of the previous one, which is returned. Null brings message boxes back. The handler stays
// the caller's and must stay alive until it is replaced.
VLHOST_API IMessageHandler* SetMessageHandler(IMessageHandler* handler);

VLHOST_API void ShowInformation(const QString& text);
VLHOST_API void ShowError(const QString& text);
VLHOST_API bool Confirm(const QString& text);
VLHOST_API void Note(const QObject* source, const QString& text);
VLHOST_API bool IsInteractive();
