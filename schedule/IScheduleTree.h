#pragma once

#include "CmdTreeFrame.h"
#include "DocumentFiles.h"
#include "ScheduleNodes.h"
#include "SharedDialog.h"

#include <QTimer>

class TSchedulePropsDialog;

// The navigation pane in which a user edits the weekly schedule of the active project. Created by the host by its class
// name or as "Velmora.ScheduleTree.1"; owned by the host's form.
class TScheduleTreeFrame final : public TCmdTreeFrame, public IWeekSchedule
{
    Q_OBJECT

public:
    explicit TScheduleTreeFrame(QWidget* parent = nullptr);
    ~TScheduleTreeFrame() override;

    bool QueryInterface(const TGuid& iid, void** result) override;
    int AddRef() override { return TCmdTreeFrame::AddRef(); }
    int Release() override { return TCmdTreeFrame::Release(); }

    // Remembers the name as the document's path and rebuilds the tree. A file that is missing or cannot be read leaves
    // the root alone without a message.
    void LoadSchedules(const QString& fileName);

    // Writes the document, or tells the user when its directory is missing. Throws TFileError when it cannot be
    // written; the previous document is then still there.
    void SaveSchedules(const QString& fileName);

    void SchedulesToStream(QIODevice& stream) const;

    // Sets the pictures up and, when the tree is empty, fills it from a text file of captions, one a line, indented by
    // one tab a level (UTF-8). Returns the number of nodes. Throws TUserError for a file that cannot be read or has no
    // single top; an empty name reads nothing.
    int InitializeMenu(const QString& fileName);

    // Releases the properties dialog that all frames share, if there is one. Changes that wait in it are applied.
    static void FinalizeView();

    // The document that "Neu laden" and "Exportieren" mean.
    const QString& GetDocumentPath() const { return m_documentPath; }
    TScheduleNode* Root() const { return static_cast<TScheduleNode*>(TopNode()); }
    // What the properties dialog offers as sections: names of groups by their index. Names of an earlier load stay in
    // front of the present ones, deliberately.
    const QStringList& GetGroupNames() const { return m_groupNames; }
    bool IsDialogConnected() const;

    // Makes a node: naAdd as the last sibling of `node`, naAddChild and naAddChildFirst both as its last child; null
    // for every other mode, and for a sibling of the root. An empty caption becomes "Neuer Eintrag".
    TScheduleNode* NewTreeNode(TScheduleNode* node, TNodeAttachMode mode, bool select, const QString& caption);

    // Gives the selected group this access level, 0 to 20.
    void SetGroupAccess(int access);

    // The popup menu's operations. Each does nothing where its conditions do not hold.
    void MenuAction_AttributesExecute();
    void MenuAction_CreateGroupExecute();
    void MenuAction_CreateNodeExecute();
    void MenuAction_CreateScheduleExecute();
    void MenuAction_CutExecute();
    void MenuAction_CopyExecute();
    void MenuAction_PasteBeforeExecute();
    void MenuAction_DeleteExecute();
    void MenuAction_RenameExecute();
    void MenuAction_Reload();
    void MenuAction_Export();

    void CommitEdits() override;

    bool HasWeek() const override { return WeekNode() != nullptr; }
    QString WeekTitle() const override;
    QList<TWeekEntry> WeekEntries() const override;
    int SelectedWeekEntry() const override;
    void SelectWeekEntry(int index) override;
    void AddWeekListener(QObject* receiver, std::function<void()> changed) override;

Q_SIGNALS:
    void WeekChanged();

protected:
    void WriteDocument(const QString& path, QIODevice& device) const override;

    void BeginCommand(const QString& command) override;
    void ApplyCommandItem(const QString& key, const QString& value) override;
    void FinishCommand() override;
    void ReloadForProject() override;

    void HandleEdited(TTreeNode* node, const QString& text) override;
    bool CanEdit(const TTreeNode* node) const override;
    bool IsFixed(const TTreeNode* node) const override;
    void HandleSelectionChange() override;
    void HandleChange() override;
    bool PrepareDrag(TTreeNode* node, Qt::KeyboardModifiers shiftState) override;
    std::unique_ptr<QMimeData> StartDrag() override;
    void EndDrag() override;
    bool CanDrop(const QMimeData* content, TTreeNode* target) const override;
    void Drop(const QMimeData* content, TTreeNode* target) override;

private:
    friend class TSharedDialog<TSchedulePropsDialog, TScheduleTreeFrame>;

    static TSharedDialog<TSchedulePropsDialog, TScheduleTreeFrame>& Shared();
    static std::span<const TPopupRow<TScheduleTreeFrame>> PopupRows();

    TScheduleNode* SelectedScheduleNode() const { return static_cast<TScheduleNode*>(SelectedNode()); }
    TScheduleNode* MenuScheduleNode() const { return static_cast<TScheduleNode*>(MenuNode()); }
    TScheduleNode* SelectedGroup() const;

    // The rules of the popup menu.
    bool IsOnRoot() const;
    bool IsOnGroup() const;
    bool IsOnNoGroup() const { return !IsOnGroup(); }
    bool CanShowProperties() const;
    bool CanCreateGroup() const;
    bool CanCreateNode() const;
    bool CanCreateSchedule() const;
    bool CanCut() const;
    bool CanCopy() const;
    bool CanPaste() const;
    bool CanDelete() const;
    bool CanRename() const;
    bool CanReload() const;
    bool CanExport() const;
    std::optional<int> ShownAccess() const;

    // Editing
    void SetCaption(TScheduleNode* node, const QString& caption);
    void CopyGroup(const TScheduleNode* group);
    void PasteCopied(TScheduleNode* target);
    void PasteCut(TScheduleNode* target);
    void ForgetGroupNames(const QList<TTreeNode*>& deleted);

    // The dialog
    TSchedulePropsDialog* ConnectDialog();
    void ShowInDialog(TScheduleNode* node);
    void FillDialog(const TScheduleNode* node);
    void FollowInDialog(TScheduleNode* node);
    void RefreshDialog(const TScheduleNode* changed);
    void ApplyPending();
    void SendSections();
    void AcceptDatapoint(TScheduleNode* node);
    void HandleDialogAccept(TSchedulePropsDialog* dialog);
    void HandleDialogClose();
    void HandlePartChange(int part);
    void HandleMoveNotify(TDirection direction);

    // Dragging
    std::unique_ptr<QMimeData> DragOf(const TScheduleNode* group) const;
    void DropEntries(const QList<TTreeNode*>& nodes, TScheduleNode* target);
    void DropEntry(TScheduleNode* entry, TScheduleNode* target);

    // The week: the datapoint or group that is shown, and its entries.
    TScheduleNode* WeekNode() const;
    QList<TScheduleNode*> WeekNodes() const;

    QString m_commandText;
    QString m_documentPath;
    QStringList m_groupNames;
    TDocumentFiles m_files;
    TNodeRefTo<TScheduleNode> m_editedNode; // shown in the dialog
    TNodeRefTo<TScheduleNode> m_dragSource;
    Qt::KeyboardModifiers m_shiftState; // held when the drag began
    // The group that a week shows on while one of its entries was chosen there.
    TNodeRefTo<TScheduleNode> m_weekGroup;
    bool m_choosesInWeek = false;
    QTimer m_weekTimer;
};

// What the package runs at load and at unload.
void InitializeScheduleUnit();
void FinalizeScheduleUnit();
