#include "IMenuTree.h"

#include "dlgLinkProps.h"
#include "dlgLogo.h"
#include "dlgMenuProps.h"

namespace
{

QString WithForwardSlashes(QString path)
{
    return path.replace(u'\\', u'/');
}

} // namespace

TSharedDialog<TMenuPropsDialog, TMenuTreeFrame>& TMenuTreeFrame::MenuDialog()
{
    static TSharedDialog<TMenuPropsDialog, TMenuTreeFrame> shared;
    return shared;
}

TSharedDialog<TLinkPropsDialog, TMenuTreeFrame>& TMenuTreeFrame::LinkDialog()
{
    static TSharedDialog<TLinkPropsDialog, TMenuTreeFrame> shared;
    return shared;
}

void TMenuTreeFrame::FinalizeMenu()
{
    MenuDialog().Release();
    LinkDialog().Release();
}

bool TMenuTreeFrame::IsMenuDialogShown() const
{
    return MenuDialog().IsShownBy(this);
}

bool TMenuTreeFrame::IsLinkDialogShown() const
{
    return LinkDialog().IsShownBy(this);
}

void TMenuTreeFrame::MenuAction_AttributesExecute()
{
    ShowInDialog(SelectedMenuNode());
}

// Nothing for the roots.
void TMenuTreeFrame::ShowInDialog(TMenuNode* node)
{
    if (!node || !node->Item())
        return;
    ApplyPending();
    if (IsLink(node))
        ShowLink(node);
    else
        ShowItem(node);
    ApplyMenuRules();
}

void TMenuTreeFrame::ShowLink(TMenuNode* node)
{
    if (IsMenuDialogShown())
        MenuDialog().Get()->close();
    LinkDialog().Take(this);
    m_currentNode.Set(node);
    TLinkPropsDialog* dialog = LinkDialog().Get();
    dialog->SetValidateFileEvent(&TMenuTreeFrame::HandleFileDrop);
    FillLinkDialog(*node->Item());
    if (!dialog->isVisible())
        dialog->Display();
}

void TMenuTreeFrame::ShowItem(TMenuNode* node)
{
    if (IsLinkDialogShown())
        LinkDialog().Get()->close();
    MenuDialog().Take(this);
    m_currentNode.Set(node);
    TMenuPropsDialog* dialog = MenuDialog().Get();
    dialog->SetValidateFileEvent(&TMenuTreeFrame::HandleFileDrop);
    FillMenuDialog(*node->Item());
    if (!dialog->isVisible())
        dialog->Display();
}

void TMenuTreeFrame::FillLinkDialog(const TVlMenuItem& item)
{
    TLinkPropsDialog* dialog = LinkDialog().Get();
    dialog->SetItemName(item.Title);
    dialog->SetLinkUrl(item.Help);
    dialog->SetNodeAlias(item.Caption);
    dialog->SetNodeValue(item.Link);
    dialog->SetNodeSource(item.Source);
    dialog->SetDataType(item.DataType);
    dialog->SetAccessCode(item.Access);
    dialog->SetChanged(false);
}

void TMenuTreeFrame::FillMenuDialog(const TVlMenuItem& item)
{
    TMenuPropsDialog* dialog = MenuDialog().Get();
    dialog->SetMenuName(item.Caption);
    dialog->SetMenuTitle(item.Title);
    dialog->SetMenuLink(item.Link);
    dialog->SetMenuHelp(item.Help);
    dialog->SetMenuAccess(item.Access);
    dialog->SetChanged(false);
}

void TMenuTreeFrame::HandleSelectionChange()
{
    ApplyMenuRules();
    if (m_loading || !GetEditable() || !SelectedNode())
        return;
    FollowInDialog(SelectedMenuNode());
}

// The dialog of the node's own kind shows it, if it is there; the other one stays as it is.
void TMenuTreeFrame::FollowInDialog(TMenuNode* node)
{
    if (!node->Item() || !node->Parent())
        return;
    ApplyPending();
    m_currentNode.Set(node);
    if (IsLink(node) && IsLinkDialogShown())
        FillLinkDialog(*node->Item());
    else if (!IsLink(node) && IsMenuDialogShown())
        FillMenuDialog(*node->Item());
}

void TMenuTreeFrame::ApplyPending()
{
    if (!m_currentNode)
        return;
    // Taken over once: what changes the node afterwards is not undone by the same values again.
    if (IsLink(m_currentNode.Get()) && LinkDialog().HasPending(this)) {
        HandleDialogAccept(LinkDialog().Get());
        LinkDialog().Get()->SetChanged(false);
    } else if (!IsLink(m_currentNode.Get()) && MenuDialog().HasPending(this)) {
        HandleDialogAccept(MenuDialog().Get());
        MenuDialog().Get()->SetChanged(false);
    }
}

void TMenuTreeFrame::CommitEdits()
{
    CommitEditor();
    ApplyPending();
}

// The link keeps its backslashes, other than a menu item's.
void TMenuTreeFrame::HandleDialogAccept(TLinkPropsDialog* dialog)
{
    TMenuNode* node = m_currentNode.Get();
    if (!node || !node->Item() || !IsLink(node))
        return;
    ChangeItem(node, [dialog](TVlMenuItem& item) {
        item.Title = dialog->GetItemName();
        item.Link = dialog->GetNodeValue();
        item.Caption = dialog->GetNodeAlias();
        item.Help = dialog->GetLinkUrl();
        item.Source = dialog->GetNodeSource();
        item.DataType = dialog->GetDataType();
        item.Access = dialog->GetAccessCode();
    });
}

void TMenuTreeFrame::HandleDialogAccept(TMenuPropsDialog* dialog)
{
    TMenuNode* node = m_currentNode.Get();
    if (!node || !node->Item() || IsLink(node))
        return;
    ChangeItem(node, [dialog](TVlMenuItem& item) {
        item.Caption = dialog->GetMenuName();
        item.Link = WithForwardSlashes(dialog->GetMenuLink());
        item.Title = dialog->GetMenuTitle();
        item.Help = WithForwardSlashes(dialog->GetMenuHelp());
        item.Access = dialog->GetMenuAccess();
    });
}

void TMenuTreeFrame::HandleDialogClose()
{
    m_currentNode.Set(nullptr);
    MenuDialog().LeaveBy(this);
    LinkDialog().LeaveBy(this);
    ApplyMenuRules();
}

void TMenuTreeFrame::HandleMoveNotify(TDirection direction)
{
    if (!m_currentNode)
        return;
    TTreeNode* neighbour = nullptr;
    if (direction == dirUp)
        neighbour = m_currentNode->Previous();
    else if (direction == dirDown)
        neighbour = m_currentNode->Next();
    auto* node = static_cast<TMenuNode*>(neighbour);
    if (!node || !node->Item()) {
        // The dialog forgets now that something waits in it.
        ApplyPending();
        return;
    }
    ShowInDialog(node);
    SelectNode(node);
}

bool TMenuTreeFrame::HandleFileDrop(QObject*, QString& fileName)
{
    fileName = GetResourceUrl(fileName, {}, false);
    return true;
}

void TMenuTreeFrame::MenuAction_LogoClick()
{
    auto* dialog = new TLogoDialog(this);
    dialog->SetLogoLink(m_header.Logo);
    dialog->SetValidateFileEvent(&TMenuTreeFrame::HandleFileDrop);
    dialog->SetCloseEvent([this](const TLogoDialog* sender) { HandleLogoDialog(sender); });
    dialog->Display();
}

// Deliberate: a logo that was set cannot be taken away here.
void TMenuTreeFrame::HandleLogoDialog(const TLogoDialog* dialog)
{
    const QString logo = WithForwardSlashes(dialog->GetLogoLink());
    if (logo.isEmpty() || logo == m_header.Logo)
        return;
    m_header.Logo = logo;
    SetModified(true);
}
