#pragma once

#include "Folders.h"
#include "EditClipboard.h"
#include "FoldersCommon.h"
#include "PopupMenus.h"
#include "Userman.h"
#include "Vlclassregistry.h"
#include "Vlcolors.h"
#include "Vldragscrolltree.h"

class TURLName;

// What the tree editors share: the command target with the course of a command and its colours, the binding to the
// project, the popup menu and what it remembers for a paste. The host's form owns a frame; the editor adds its keys,
// its document and its operations.
class TCmdTreeFrame : public TDragScrollTree, public TCmdTarget
{
    Q_OBJECT
    Q_INTERFACES(ICmdTarget)

public:
    explicit TCmdTreeFrame(QWidget* parent);
    ~TCmdTreeFrame() override;

    void ExecuteCmd(const char* command, bool& handled) override;

    // Brings the states of the frame's actions up to date; the host calls it by name before it shows or runs them.
    Q_INVOKABLE virtual void UpdateActions() { ApplyMenuRules(); }

    // Takes over what the user has typed and not confirmed yet; the host calls it by name before it asks about changes.
    Q_INVOKABLE virtual void CommitEdits() { CommitEditor(); }

    // The node that line `line` (from 1) of the document at `path` belongs to, as an export would write it now; the
    // host calls it by name. Empty for a line that belongs to none and for any other file. The place follows its node
    // wherever that is moved, and forgets it when it is deleted.
    Q_INVOKABLE TDocumentPlace DocumentPlace(const QString& path, int line) const;

protected:
    // Writes what an export leaves at `path`; nothing for any other file.
    virtual void WriteDocument(const QString& path, QIODevice& device) const;

    // The steps of a command, in their order: before it is parsed, for each of its items (the colours are applied
    // before and do not arrive here), and at its end. The end is not reached when a step fails.
    virtual void BeginCommand(const QString& command) = 0;
    virtual void ApplyCommandItem(const QString& key, const QString& value) = 0;
    virtual void FinishCommand() = 0;

    // Follows the project from now on, when `path` depends on it.
    void SetProjectListener(const QString& path);
    // Another project was opened; called by the user manager and only while a project is active.
    virtual void ReloadForProject() = 0;

    // Makes the popup menu. A frame calls it once, before it is made editable.
    template <class TFrame> void MakePopupMenu(TFrame* frame, std::span<const TPopupRow<TFrame>> rows,
                                               TShortcutRule shortcutRule = TShortcutRule::AsInMenu)
    {
        m_popupMenu = new TPopupMenu(frame, rows, shortcutRule);
    }
    void ApplyMenuRules();

    // The node that the menu acts on: the one under the mouse, for short cuts the selected one.
    TTreeNode* MenuNode() const;
    // True when something is selected and the menu acts on a node that is the user's own.
    bool IsMenuValid() const;
    // True for the nodes that every tree of this editor has.
    virtual bool IsFixed(const TTreeNode* node) const = 0;

    TEditClipboard& Clipboard() { return m_clipboard; }
    const TEditClipboard& Clipboard() const { return m_clipboard; }

    // The number of nodes in the tree.
    int CountNodes() const;

    void HandleEditable(bool editable) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

    // A path of a document with the project's variables decoded and backslashes as separators.
    static QString DecodePath(const QString& path);
    // The same with environment references expanded as well.
    static QString ExpandPath(const QString& path);

private:
    void HandleProjectChange(QObject* sender, TUserProperty property, const QString& value);

    TPopupMenu* m_popupMenu = nullptr;
    TEditClipboard m_clipboard;
};

// What an editor's unit runs at load: registers its class and, where the host has a client registry, its ProgID.
void RegisterEditor(const QString& className, const char* progId, TComponentFactory factory);
