#pragma once

#include "CmdTreeFrame.h"
#include "DocumentFiles.h"
#include "SceneNodes.h"
#include "SharedDialog.h"

class TPromptNumberDialog;
class TScenePropsDialog;

// The navigation pane in which a user edits the scene configuration of the active project. Created by the host by its
// class name or as "Velmora.ConfigTree.1"; owned by the host's form.
class TConfigTreeFrame final : public TCmdTreeFrame
{
    Q_OBJECT

public:
    explicit TConfigTreeFrame(QWidget* parent = nullptr);
    ~TConfigTreeFrame() override;

    // Rebuilds the tree from the files in the directory of `fileName`, the scenes file. What is missing or cannot be
    // read stays empty without a message.
    void LoadScenes(const QString& fileName);

    // Writes all files into the directory of `fileName`, then points the automation services at the project. What goes
    // wrong is shown; files already written stay written.
    void SaveScenes(const QString& fileName);

    // Write one file's content; nothing for a null scene.
    void TriggerToStream(QIODevice& stream) const;
    void ActionsToStream(QIODevice& stream) const;
    void ScenesToStream(QIODevice& stream) const;
    void SceneActionsToStream(QIODevice& stream, const TSceneNode* scene) const;

    // Sets the pictures up and, when the tree is empty, fills it from a text file of captions, one a line, indented by
    // one tab a level (UTF-8). Returns the number of nodes. Throws TUserError for a file that cannot be read or has no
    // single top; an empty name reads nothing.
    int InitializeMenu(const QString& fileName);

    // Releases the properties dialog that all frames share, if there is one. Changes that wait in it are applied.
    static void FinalizeScenes();

    const QString& GetScenesPath() const { return m_scenesPath; }
    const QString& GetScenesFile() const { return m_scenesFile; }
    const QString& GetScenesMod() const { return m_scenesMod; }
    TSceneNode* Top() const { return static_cast<TSceneNode*>(TopNode()); }
    TSceneNode* TriggerRoot() const { return Top() ? Top()->Child(TriggerRootIndex) : nullptr; }
    TSceneNode* ActionRoot() const { return Top() ? Top()->Child(ActionRootIndex) : nullptr; }
    // The lists that the properties dialog offers: the two roots and every scene.
    QStringList GetSections() const { return SceneSections(Top()); }
    bool IsDialogShown() const;

    // Makes a node with an item: naAdd as the last sibling of `node`, naAddChild or naAddChildFirst below it; null for
    // every other mode. An empty caption becomes "Neuer Eintrag". A node that lands among the scenes gets the next
    // number.
    TSceneNode* NewSceneNode(TSceneNode* node, TNodeAttachMode mode, const QString& caption, bool select);

    // The popup menu's operations. Each does nothing where its conditions do not hold.
    void MenuAction_AttributesExecute();
    void MenuAction_AutoAppend();
    void MenuAction_CreateSceneExecute();
    void MenuAction_CreateBeforeExecute();
    void MenuAction_CopyExecute();
    void MenuAction_PasteBeforeExecute();
    void MenuAction_CutExecute();
    void MenuAction_DeleteExecute();
    void MenuAction_Reload();
    void MenuAction_Export();

    void CommitEdits() override;

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
    bool PrepareDrag(TTreeNode* node, Qt::KeyboardModifiers shiftState) override;
    std::unique_ptr<QMimeData> StartDrag() override;
    void EndDrag() override;
    bool CanDrop(const QMimeData* content, TTreeNode* target) const override;
    void Drop(const QMimeData* content, TTreeNode* target) override;

private:
    friend class TSharedDialog<TScenePropsDialog, TConfigTreeFrame>;

    static TSharedDialog<TScenePropsDialog, TConfigTreeFrame>& Shared();
    static std::span<const TPopupRow<TConfigTreeFrame>> PopupRows();

    void LoadScenesIfPresent(const QString& fileName);
    void WriteDocuments(const QString& fileName);

    TSceneNode* MenuSceneNode() const { return static_cast<TSceneNode*>(MenuNode()); }
    TSceneNode* SelectedSceneNode() const { return static_cast<TSceneNode*>(SelectedNode()); }
    QList<TSceneNode*> SelectedSceneNodes() const;

    // The rules of the popup menu.
    bool CanShowProperties() const;
    bool CanAutoAppend() const;
    bool CanCreateAction() const;
    bool CanCopy() const;
    bool CanPaste() const;
    bool CanCut() const;
    bool CanDelete() const;
    bool CanReload() const;
    bool CanExport() const;

    // Editing
    void ChangeItem(TSceneNode* node, const std::function<void(TVlSceneItem&)>& change);
    std::unique_ptr<TSceneNode> MakeNode(const TSceneNode* parent, int index, const QString& caption) const;
    // Puts a new node for each caption and source below `parent`, bound to that source, in one step.
    void AppendBound(TSceneNode* parent, int index, const QStringList& captions, const QList<TSceneNode*>& sources);
    void CopyBinding(const TSceneNode* source, TSceneNode* target);
    void BindScene(TSceneNode* scene, TSceneNode* trigger);
    void AppendScenesFor(const QList<TSceneNode*>& triggers);
    void AppendSceneWith(const QList<TSceneNode*>& actions);
    void AppendStepsFor(TSceneNode* scene, const QList<TSceneNode*>& actions);
    void CopyScene(TSceneNode* scene);
    void PasteCopied(TSceneNode* selected);
    void PasteCut(TSceneNode* selected);
    void DeleteTriggers(const QList<TSceneNode*>& nodes);
    void DeleteActions(const QList<TSceneNode*>& nodes);
    void RemoveNodes(QList<TSceneNode*> nodes);
    void RebuildCaptionsOf(const TSceneNode* datapoint);

    // The dialog
    TScenePropsDialog* TakeDialog();
    void ShowInDialog(TSceneNode* node);
    void FillDialog(TSceneNode* node);
    void FollowInDialog(TSceneNode* node);
    void ApplyPending();
    void SendSections();
    void RefreshDialog(const TSceneNode* changed);
    void HandleDialogAccept(TScenePropsDialog* dialog);
    void HandleDialogClose();
    void HandlePartChange(int part);
    void HandleMoveNotify(TDirection direction);

    // Dragging
    std::unique_ptr<QMimeData> DragOf(const TSceneNode* scene) const;
    void DropObjects(const QList<TSceneNode*>& nodes, TSceneNode* target);
    void DropNode(TSceneNode* dragged, TSceneNode* target);

    QString m_scenesPath;
    QString m_scenesFile;
    QString m_scenesMod;
    TDocumentFiles m_files;
    TPromptNumberDialog* m_prompt = nullptr;

    TNodeRefTo<TSceneNode> m_dialogNode;
    TNodeRefTo<TSceneNode> m_dragNode;
    Qt::KeyboardModifiers m_dragShiftState;
};

// What the package runs at load and at unload.
void InitializeScenesUnit();
void FinalizeScenesUnit();
