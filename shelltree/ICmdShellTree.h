#pragma once

#include "ActionLog.h"
#include "Folders.h"
#include "Userman.h"
#include "Vlshellctrls.h"

#include <QWidget>

#include <optional>

class QMenu;

// The project's files as a tree, and the log of everything that happens to them. The host's form owns it and drives it
// by command texts; it follows the project when it is told to.
class TICmdShellTreeView : public QWidget, public TCmdTarget
{
    Q_OBJECT
    Q_INTERFACES(ICmdTarget)

public:
    explicit TICmdShellTreeView(QWidget* parent = nullptr);
    ~TICmdShellTreeView() override;

    void ExecuteCmd(const char* command, bool& handled) override;

    // Follows the project or no more, and puts the log into the state that its flag and the project ask for.
    void SetProjectListener(bool on);
    void HandleUserProperties(QObject* sender, TUserProperty property, const QString& value);
    void HandleProjectChange();
    // Appends the line of a change to the log. Throws TFileError, once for all failures in a row.
    void HandleShellChange(QObject* sender, const QByteArray& firstPath, const QByteArray& secondPath,
                           TShellChangeKind kind);
    // "open" and "edit" are handed to the desktop; everything else stays with the tree.
    void HandleExecuteContext(QObject* sender, QMenu* contextMenu, int command, const QString& verb, bool& handled);
    void HandleDefaultAction(QObject* sender);

    // Empty while nothing is logged.
    QString LogPath() const { return m_logPath; }
    TCustomShellTreeView* ShellTree() const { return m_shellTree; }

    // Brings the states of the actions up to date; the host calls it by name before it shows or runs them.
    Q_INVOKABLE void UpdateActions();

private:
    void ApplyCommandItem(const QString& key, const QString& value, QString& root, bool& project);
    void SetLogPath(const QString& path);
    void AttachLog(const TProject& project);
    void DetachLog();

    QString m_logPath;
    bool m_isLogEnabled = false;
    bool m_isListening = false;
    bool m_isUpdating = true;
    TCustomShellTreeView* m_shellTree;

    std::optional<TActionLog> m_log; // of the log path
    bool m_isLogFailing = false;
    bool m_isInexactTold = false;
    bool m_isDestroying = false;
};

// Puts the component on the palette of a form designer.
void Register();

// The unit's part in loading and unloading the package.
void InitializeShellTreeUnit();
void FinalizeShellTreeUnit();
