#pragma once

#include "Vlexport.h"
#include "Vlnavigation.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>

#include <functional>

// The host's registry of navigation folders: makes the entries of a folder or of a list and reports each one, keeps the
// list of all entries there are, knows the host's actions by name, and takes command texts to whoever understands them.
// One instance, reached through FolderManager.
class VLHOST_API TFolderManager final : public QObject
{
    Q_OBJECT

public:
    // Called once for each new entry, which belongs to the receiver from then on.
    using TNewItemEvent = std::function<void(QObject* sender, TNavigationPtr action)>;
    // Called with the command text of an entry that is run. Throws TUserError for what it cannot do.
    using TCommandEvent = std::function<void(const QString& command)>;

    // Makes the entries of the files NAME.uri in `path`, in the order of their names as German sorts them: without
    // regard to case, numbers by their value. Their category is `category` where they have none themselves. An
    // entry that cannot be read is noted in the message pane and left out.
    void AddFolder(const QString& path, const QString& category);

    // The same for a list, in its order: names of the host's actions, or paths of entry files, with variables or below
    // the active project.
    void AddItems(const QStringList& names, const QString& category);

    const TNewItemEvent& GetNewItemEvent() const { return m_newItemEvent; }
    void SetNewItemEvent(TNewItemEvent event) { m_newItemEvent = std::move(event); }

    // The host's actions, by name without regard to case. They stay their owner's; one that is destroyed is forgotten.
    void RegisterAction(const QString& name, QAction* action);
    QAction* FindAction(const QString& name) const;

    // Who opens panes for command texts; the workbench, when there is one.
    const TCommandEvent& GetCommandEvent() const { return m_commandEvent; }
    void SetCommandEvent(TCommandEvent event) { m_commandEvent = std::move(event); }
    // Hands a command text to it. Throws TUserError, also when there is nobody.
    void RunCommand(const QString& command) const;

    // All entries that are attached.
    const QList<TNavigation*>& Entries() const { return m_entries; }

private:
    friend VLHOST_API TFolderManager& FolderManager();
    friend TNavigation;

    TFolderManager();
    ~TFolderManager() override;

    void Attach(TNavigation* entry) { m_entries.append(entry); }
    void Remove(TNavigation* entry);
    void Report(TNavigationPtr entry);
    TNavigationPtr MakeItem(const QString& name, const QString& category) const;

    QList<TNavigation*> m_entries;
    QHash<QString, QPointer<QAction>> m_actions;
    TNewItemEvent m_newItemEvent;
    TCommandEvent m_commandEvent;
};

VLHOST_API TFolderManager& FolderManager();
