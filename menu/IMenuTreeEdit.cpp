#include "IMenuTree.h"

#include "Vlmessages.h"

namespace
{

// What the alarm and the config item ask for. The logout item deliberately stays at 0.
constexpr int SpecialAccess = 10;

TResourceId SpecialCaption(TMenuKind kind)
{
    if (kind == mkAlarm)
        return _RSTR_ALARM;
    return kind == mkConfig ? _RSTR_CONFIG : _RSTR_LOGOUT;
}

std::unique_ptr<TMenuNode> MakeItem(int level)
{
    constexpr int FirstSubLevel = 2;
    TVlMenuItem item;
    item.Caption = RcText(_STR_NEW_ENTRY);
    return std::make_unique<TMenuNode>(std::move(item), level < FirstSubLevel ? miMainItem : miSubItem);
}

} // namespace

TMenuNode* TMenuTreeFrame::WithinMenu(TMenuNode* node) const
{
    return node && node->IsWithin(MenuRoot()) ? node : MenuRoot();
}

TMenuNode* TMenuTreeFrame::NewMenuNode(TMenuNode* node, TNodeAttachMode mode)
{
    if (!MenuRoot() || (mode != naAdd && mode != naAddChild && mode != naInsert))
        return nullptr;
    const TRepaintPause pause(this);
    TMenuNode* place = WithinMenu(node);
    TNodeAttachMode placeMode = mode;
    if (place == MenuRoot())
        placeMode = mode == naInsert ? naAddChildFirst : naAddChild;
    const int level = place->Level() + (placeMode == naAdd || placeMode == naInsert ? 0 : 1);
    TTreeNode* inserted = InsertBranch(MakeItem(level), place, placeMode);
    SelectNode(inserted);
    return static_cast<TMenuNode*>(inserted);
}

TMenuNode* TMenuTreeFrame::NewLinkNode(std::optional<TVlMenuItem> item)
{
    if (!LinkRoot())
        return nullptr;
    if (!item)
        item = TVlMenuItem{.Caption = RcText(_STR_NEW_ENTRY), .Kind = mkLink};
    if (item->Caption.isEmpty())
        item->Caption = item->Title;
    TTreeNode* inserted =
        InsertBranch(std::make_unique<TMenuNode>(std::move(*item), miSubItem), LinkRoot(), naAddChild);
    SelectNode(inserted);
    return static_cast<TMenuNode*>(inserted);
}

void TMenuTreeFrame::MenuAction_CreateLink()
{
    NewLinkNode(std::nullopt);
}

void TMenuTreeFrame::MenuAction_CreateBeforeExecute()
{
    NewMenuNode(SelectedMenuNode(), naInsert);
}

void TMenuTreeFrame::MenuAction_CreateAfterExecute()
{
    NewMenuNode(SelectedMenuNode(), naAdd);
}

void TMenuTreeFrame::MenuAction_SubmenuExecute()
{
    if (CanCreateSubmenu())
        NewMenuNode(SelectedMenuNode(), naAddChild);
}

void TMenuTreeFrame::MenuAction_InsertSpecExecute(TMenuKind kind)
{
    TMenuNode* node = NewMenuNode(SelectedMenuNode(), naAdd);
    if (!node)
        return;
    ChangeItem(node, [&](TVlMenuItem& item) {
        item.Kind = kind;
        item.Caption = RcText(SpecialCaption(kind));
        item.Title = item.Caption;
        item.Link = SpecialLink(kind);
        if (kind != mkLogout)
            item.Access = SpecialAccess;
    });
    FollowInDialog(node);
}

// Nodes that are fixed are never cut.
void TMenuTreeFrame::MenuAction_CutExecute()
{
    TTreeNode* selected = SelectedNode();
    Clipboard().Cut(selected && !IsFixed(selected) ? selected : nullptr);
}

void TMenuTreeFrame::MenuAction_PasteBeforeExecute()
{
    const TRepaintPause pause(this);
    TTreeNode* cut = Clipboard().CutNode();
    TTreeNode* selected = SelectedNode();
    // A link stays a link and an item an item, and neither goes where no export would find it.
    const auto bothWithin = [&](const TMenuNode* root) { return cut->IsWithin(root) && selected->IsWithin(root); };
    if (CanPaste() && !IsFixed(selected) && (bothWithin(MenuRoot()) || bothWithin(LinkRoot())))
        MoveBranch(cut, selected, naInsert);
    // Deliberate: the mark stays on the node.
    Clipboard().ForgetCutOnly();
}

void TMenuTreeFrame::MenuAction_DeleteExecute()
{
    TTreeNode* selected = SelectedNode();
    if (!selected || IsFixed(selected) || !Confirm(RcText(_CONFIRM_MENU_DEL)))
        return;
    const TRepaintPause pause(this);
    RemoveBranches({selected});
}

void TMenuTreeFrame::MenuAction_RenameExecute()
{
    if (TTreeNode* selected = SelectedNode())
        edit(indexFromItem(selected), AllEditTriggers, nullptr);
}

bool TMenuTreeFrame::CanEdit(const TTreeNode* node) const
{
    return !IsFixed(node);
}

void TMenuTreeFrame::HandleEdited(TTreeNode* node, const QString& text)
{
    auto* edited = static_cast<TMenuNode*>(node);
    if (text.isEmpty() || !edited->Item())
        return;
    ApplyPending();
    ChangeItem(edited, [&](TVlMenuItem& item) {
        item.Caption = text;
        if (item.Title.isEmpty())
            item.Title = text;
    });
    FollowInDialog(edited);
}

void TMenuTreeFrame::ChangeItem(TMenuNode* node, const std::function<void(TVlMenuItem&)>& change)
{
    ChangeRecord(node, [&] {
        const TVlMenuItem before = *node->Item();
        change(*node->Item());
        node->SetCaption(node->Item()->Caption);
        return !(before == *node->Item());
    });
}
