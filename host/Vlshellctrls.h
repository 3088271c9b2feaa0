#pragma once

#include "Vlexport.h"
#include "Vlshellchange.h"
#include "Vlshellitems.h"

#include <QPointer>
#include <QSet>
#include <QTreeView>

#include <functional>
#include <optional>
#include <span>

class QMenu;
class TFileWatch;
class TShellModel;
class TShellRefresh;

// An item of a shell tree as it was when it was asked for.
class VLHOST_API TShellFolder
{
public:
    TShellFolder(QByteArray nativePath, bool isFolder) : m_nativePath(std::move(nativePath)), m_isFolder(isFolder) {}

    // The full path; where the name is no text, with marks in the places of its bytes.
    QString PathName() const;
    // The full path as the file system has it.
    const QByteArray& NativePath() const { return m_nativePath; }
    // False for files, and for symbolic links wherever they lead.
    bool IsFolder() const { return m_isFolder; }

private:
    QByteArray m_nativePath;
    bool m_isFolder;
};

// A change below the root; paths are full paths in the file system's own bytes, the second only of a rename.
using TShellChangeEvent = std::function<void(QObject* sender, const QByteArray& firstPath, const QByteArray& secondPath,
                                             TShellChangeKind kind)>;
// The user has picked a command (a number, and a verb such as "open") from the menu of an item, or by its key. Whoever
// handles it sets `handled`; what nobody handles, the tree does itself.
using TExecuteContextEvent =
    std::function<void(QObject* sender, QMenu* contextMenu, int command, const QString& verb, bool& handled)>;
// The user has activated the selected item, by the mouse or the Enter key.
using TDefaultActionEvent = std::function<void(QObject* sender)>;

// A tree of the folders and files below one root folder, which is its only top item. Folders are read when they are
// first opened. Symbolic links are items without content. The form owns it.
class VLHOST_API TCustomShellTreeView : public QTreeView
{
    Q_OBJECT

public:
    explicit TCustomShellTreeView(QWidget* parent = nullptr);
    ~TCustomShellTreeView() override;

    // Shows what is below `path`, which need not exist yet. Two spellings of one path are one root, and setting it
    // again keeps what is open and selected. Changes below the former root that are pending are told before.
    void SetRoot(const QString& path);
    // The root as a full path in the platform's form; empty while none is set.
    QString Root() const;
    // True when both texts lead to one folder.
    static bool IsSameFolder(const QString& a, const QString& b);

    void SetObjects(TShellObjects objects);
    TShellObjects Objects() const;

    // With it the tree follows the disk by itself, else when it is told to.
    void SetAutoRefresh(bool on);
    bool GetAutoRefresh() const;
    void Refresh();

    // The item under the mouse is underlined.
    void SetHotTracking(bool on);
    bool GetHotTracking() const { return m_hotTracking; }
    // Items show their full path when the mouse rests on them.
    void SetShowHint(bool on) { m_showHint = on; }
    bool GetShowHint() const { return m_showHint; }

    std::optional<TShellFolder> SelectedFolder() const;
    // Selects an item in a folder that is shown, and opens what is above it. False when there is none.
    bool SelectPath(const QByteArray& path);

    // Empty events are none. Everything below the root is told, also what is not shown; changes are looked for only
    // while somebody wants to hear of them.
    void SetChangeEvent(TShellChangeEvent event);
    bool HasChangeEvent() const { return static_cast<bool>(m_change); }
    void SetExecuteContextEvent(TExecuteContextEvent event) { m_executeContext = std::move(event); }
    void SetDefaultActionEvent(TDefaultActionEvent event) { m_defaultAction = std::move(event); }
    // The file (full path, however its folder is spelled) whose changes are not told; an empty path is none.
    void SetIgnoredFile(const QString& path);
    // Tells all changes now that have happened up to this call.
    void DrainChanges();

    // The popup menu. Its actions belong to the tree as well; their object names are those of the operations.
    QMenu* ContextMenu() const { return m_menu; }
    // Puts every action into the state that its rule asks for. Done by itself before the menu opens and before a short
    // cut fires.
    void UpdateActions();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct TCommand;

    static std::span<const TCommand> Commands();

    void MakeMenu();
    // Takes the number of a row of the menu.
    void RunCommand(int number);
    void MenuAction_Open();
    void MenuAction_Edit();
    void MenuAction_Rename();
    void MenuAction_Delete();
    void MenuAction_NewFolder();
    void MenuAction_CopyPath();
    void MenuAction_Refresh();
    bool CanOpen() const;
    bool CanEdit() const;
    bool CanRename() const;
    bool HasItem() const;
    bool HasRoot() const;

    void Launch(const QString& verb);
    void RenameItem(const QModelIndex& index, const QString& name);
    QModelIndex SelectedIndex() const;
    void HandleActivated(const QModelIndex& index);
    void HandleDue(const QSet<QByteArray>& folders);
    void HandleChange(const TShellChange& change);
    void ApplyWatch();
    QByteArray IgnoredBelowRoot() const;

    TShellModel* m_model;
    TShellRefresh* m_refresh;
    QMenu* m_menu;
    QPointer<TFileWatch> m_watch;
    TShellChangeEvent m_change;
    TExecuteContextEvent m_executeContext;
    TDefaultActionEvent m_defaultAction;
    QString m_ignoredFile;
    bool m_hotTracking = false;
    bool m_showHint = false;
};
