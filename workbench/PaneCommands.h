#pragma once

#include "Folderman.h"

class IModifiedAsker;
class TClientRegistry;
class TPane;
class TPanes;

// Takes the command texts of navigation entries to panes, while it lives: pane://ID shows the pane of that name; every
// other text shows the first pane whose component is named by the text's scheme, a ProgID or a class name, and sends it
// the text.
class TPaneCommands
{
public:
    // All must outlive this.
    TPaneCommands(TPanes& panes, const TClientRegistry& clients, IModifiedAsker& asker);
    ~TPaneCommands();
    TPaneCommands(const TPaneCommands&) = delete;
    TPaneCommands& operator=(const TPaneCommands&) = delete;

private:
    // Throws TUserError when there is no such pane. Nothing happens when the user keeps the pane's changes.
    void Open(const QString& command);
    TPane& Find(const QString& command) const;

    TPanes& m_panes;
    const TClientRegistry& m_clients;
    IModifiedAsker& m_asker;
    TFolderManager::TCommandEvent m_previous;
};
