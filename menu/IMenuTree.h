#pragma once

#include "CmdTreeFrame.h"
#include "DocumentFiles.h"
#include "MenuDocument.h"
#include "SharedDialog.h"

class TLinkPropsDialog;
class TLogoDialog;
class TMenuPropsDialog;

// The navigation pane in which a user edits the navigation menu and the sensitive links of the active project, and
// exports them. Created by the host by its class name or as "Velmora.MenuTree.1"; owned by the host's form.
class TMenuTreeFrame final : public TCmdTreeFrame
{
    Q_OBJECT

public:
    explicit TMenuTreeFrame(QWidget* parent = nullptr);
    ~TMenuTreeFrame() override;

    // Loads the menu from `path` and the links from "dplinks.xml" beside it. What is missing leaves its branch as it
    // was; what cannot be read leaves it empty without a message. The last link that was read becomes the selection,
    // which the dialogs follow only where the links are loaded by themselves.
    void LoadData(const QString& path);
    void LoadMenu(const QString& path);
    void LoadLinks(const QString& path);

    // Writes the menu to MenuPath (whatever path is given), into a directory with the product's templates where there
    // was none, and renders it. Throws TUserError while the path depends on a project and none is open, TFileError when
    // it cannot be written.
    void SaveMenu(const QString&);
    // Writes the links. Throws TFileError.
    void SaveLinks(const QString& path);
    // Writes the whole menu document.
    void SaveToStream(QIODevice& stream) const;
    // Renders the menu file through the stylesheet; without one of them nothing happens. Paths that are not set get
    // their defaults beside the menu and keep them until the next command: the next export names the stylesheet in the
    // document. A failure is shown.
    void TranslateMenu();

    // Sets the pictures up and, when the tree is empty, fills it from a text file of captions, one a line, indented by
    // one tab a level (UTF-8): a heading, and one level below it first the menu, then the links. Returns the number of
    // nodes. Throws TUserError for a file that cannot be read or has not these two branches; an empty path reads
    // nothing and returns 0.
    int InitializeMenu(const QString& path);

    // Releases the two properties dialogs that all frames share. Changes that wait in them are applied.
    static void FinalizeMenu();

    const QString& GetMenuPath() const { return m_menuPath; }
    const QString& GetLinksPath() const { return m_linksPath; }
    const QString& GetStylePath() const { return m_header.StylePath; }
    const QString& GetOutputPath() const { return m_outputPath; }
    const QString& GetLogo() const { return m_header.Logo; }
    int GetLevels() const { return m_header.Levels; }

    // Null before anything was loaded.
    TMenuNode* MenuRoot() const { return m_menuRoot.Get(); }
    TMenuNode* LinkRoot() const { return m_linkRoot.Get(); }
    bool IsLink(const TTreeNode* node) const { return node->Parent() && node->Parent() == LinkRoot(); }
    // The page that an export writes, for the host; it calls this by name.
    Q_INVOKABLE QString ExportedPage() const;
    bool IsMenuDialogShown() const;
    bool IsLinkDialogShown() const;

    // Makes an item and selects it: naAdd as the last sibling of `node` (of the menu root: its last child), naAddChild
    // as its last child, naInsert just before it (the menu root or none: as the first main item). Null for every other
    // mode and without a menu.
    TMenuNode* NewMenuNode(TMenuNode* node, TNodeAttachMode mode);
    // Makes a link with a record, or a fresh one without, and selects it. Null without a link root.
    TMenuNode* NewLinkNode(std::optional<TVlMenuItem> item);

    // The popup menu's operations. Each does nothing where its conditions do not hold.
    void MenuAction_AttributesExecute();
    void MenuAction_CreateLink();
    void MenuAction_CreateBeforeExecute();
    void MenuAction_CreateAfterExecute();
    void MenuAction_SubmenuExecute();
    void MenuAction_InsertSpecExecute(TMenuKind kind);
    void MenuAction_PasteBeforeExecute();
    void MenuAction_RenameExecute();
    void MenuAction_CutExecute();
    void MenuAction_DeleteExecute();
    void MenuAction_Reload();
    void MenuAction_Export();
    void MenuAction_LogoClick();

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

private:
    friend class TSharedDialog<TMenuPropsDialog, TMenuTreeFrame>;
    friend class TSharedDialog<TLinkPropsDialog, TMenuTreeFrame>;

    // What the mouse is over, for the popup menu.
    enum TMenuGroup : quint8
    {
        mgNothing,
        mgLinks,
        mgMenu,
    };

    static TSharedDialog<TMenuPropsDialog, TMenuTreeFrame>& MenuDialog();
    static TSharedDialog<TLinkPropsDialog, TMenuTreeFrame>& LinkDialog();
    static std::span<const TPopupRow<TMenuTreeFrame>> PopupRows();

    // Files
    void EnsureRoots();
    void SetMenuPath(const QString& path);
    void RemoveStrays();
    void SelectLastLink();
    void ForgetProjectPaths();
    void CloseLogoDialogs();
    void ResolveStyle();
    void ResolveOutput();
    QStringList ReadableRoots() const;

    // The rules of the popup menu.
    TMenuGroup Group() const;
    bool IsOverSomething() const { return Group() != mgNothing; }
    bool IsOverLinks() const { return Group() == mgLinks; }
    bool IsOverMenu() const { return Group() == mgMenu; }
    bool HasSelection() const { return SelectedNode() != nullptr; }
    bool CanShowProperties() const;
    bool CanCreateSubmenu() const;
    bool CanPaste() const;
    bool CanDelete() const;
    bool CanReload() const;
    const QString& SpecialLink(TMenuKind kind) const;
    template <TMenuKind Kind> void InsertSpecial() { MenuAction_InsertSpecExecute(Kind); }
    template <TMenuKind Kind> bool CanInsertSpecial() const { return !SpecialLink(Kind).isEmpty(); }

    TMenuNode* SelectedMenuNode() const { return static_cast<TMenuNode*>(SelectedNode()); }
    // The node itself, or the menu root for one that is no part of the menu.
    TMenuNode* WithinMenu(TMenuNode* node) const;
    void ChangeItem(TMenuNode* node, const std::function<void(TVlMenuItem&)>& change);

    // The dialogs
    void ShowInDialog(TMenuNode* node);
    void ShowLink(TMenuNode* node);
    void ShowItem(TMenuNode* node);
    void FillLinkDialog(const TVlMenuItem& item);
    void FillMenuDialog(const TVlMenuItem& item);
    void FollowInDialog(TMenuNode* node);
    void ApplyPending();
    void HandleDialogAccept(TMenuPropsDialog* dialog);
    void HandleDialogAccept(TLinkPropsDialog* dialog);
    void HandleDialogClose();
    void HandleMoveNotify(TDirection direction);
    static bool HandleFileDrop(QObject* sender, QString& fileName);
    void HandleLogoDialog(const TLogoDialog* dialog);

    TNodeRefTo<TMenuNode> m_menuRoot;
    TNodeRefTo<TMenuNode> m_linkRoot;
    TNodeRefTo<TMenuNode> m_currentNode; // whose values the open dialog shows
    bool m_loading = false;

    // Paths before variables are resolved, and what they resolve to now.
    QString m_fileTemplate;
    QString m_styleTemplate;
    QString m_outputTemplate;
    QString m_menuPath;
    QString m_linksPath;
    QString m_outputPath;
    TMenuHeader m_header;
    QString m_alarmLink;
    QString m_configLink;
    QString m_logoutLink;
    TDocumentFiles m_files;
};

// What the package runs at load and at unload.
void InitializeMenuUnit();
void FinalizeMenuUnit();
