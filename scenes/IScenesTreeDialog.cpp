#include "IScenesTree.h"

#include "dlgSceneProps.h"

namespace
{

int SectionOf(const TSceneNode* node)
{
    return node->Role() == srScene ? node->Index() : node->Parent()->Index();
}

// A root stands for its first datapoint, if it has one.
TSceneNode* ShownFor(TSceneNode* node)
{
    const bool isRoot = node && (node->Role() == srTriggerRoot || node->Role() == srActionRoot);
    return isRoot ? node->Child(0) : node;
}

} // namespace

TSharedDialog<TScenePropsDialog, TConfigTreeFrame>& TConfigTreeFrame::Shared()
{
    static TSharedDialog<TScenePropsDialog, TConfigTreeFrame> shared;
    return shared;
}

void TConfigTreeFrame::FinalizeScenes()
{
    Shared().Release();
}

bool TConfigTreeFrame::IsDialogShown() const
{
    return Shared().IsShownBy(this);
}

TScenePropsDialog* TConfigTreeFrame::TakeDialog()
{
    const bool isNew = Shared().Take(this);
    TScenePropsDialog* dialog = Shared().Get();
    if (isNew)
        dialog->SetChangePartEvent([this](QObject*, int part) { HandlePartChange(part); });
    dialog->SetSceneSections(GetSections());
    return dialog;
}

void TConfigTreeFrame::MenuAction_AttributesExecute()
{
    ShowInDialog(MenuSceneNode());
}

void TConfigTreeFrame::ShowInDialog(TSceneNode* node)
{
    if (!node || !node->Item())
        return;
    ApplyPending();
    m_dialogNode.Set(node);
    TScenePropsDialog* dialog = TakeDialog();
    FillDialog(node);
    if (!dialog->isVisible())
        dialog->Display();
    ApplyMenuRules();
}

void TConfigTreeFrame::FillDialog(TSceneNode* node)
{
    TScenePropsDialog* dialog = Shared().Get();
    const TVlSceneItem& item = *node->Item();
    const TVlSceneItem* linked = node->LinkedItem();
    const TVlSceneItem& datapoint = linked ? *linked : item;
    // The name comes before the section, which decides by it whether the alias can be edited.
    dialog->SetItemName(datapoint.Name);
    dialog->SetNodeAlias(item.Alias);
    dialog->SetNodeValue(item.Value);
    dialog->SetNodeDelay(item.Delay);
    dialog->SetEnableFlag(item.Enabled);
    dialog->SetDataType(datapoint.DataType);
    dialog->SetNodeSource(datapoint.Source);
    dialog->SetSection(SectionOf(node));
    dialog->SetChanged(false);
}

void TConfigTreeFrame::HandleSelectionChange()
{
    if (GetEditable() && IsDialogShown() && SelectedNode())
        FollowInDialog(SelectedSceneNode());
    ApplyMenuRules();
}

void TConfigTreeFrame::FollowInDialog(TSceneNode* node)
{
    TSceneNode* shown = ShownFor(node);
    if (shown && shown->Item()) {
        ShowInDialog(shown);
        return;
    }
    ApplyPending();
    m_dialogNode.Set(nullptr);
}

void TConfigTreeFrame::ApplyPending()
{
    if (m_dialogNode && Shared().HasPending(this))
        HandleDialogAccept(Shared().Get());
}

// The node in the dialog was changed elsewhere: what is shown must not be written back over it.
void TConfigTreeFrame::RefreshDialog(const TSceneNode* changed)
{
    TSceneNode* shown = m_dialogNode.Get();
    const bool concerned = shown && (shown == changed || shown->Item()->Link.Get() == changed);
    if (concerned && IsDialogShown() && !Shared().Get()->GetChanged())
        FillDialog(shown);
}

void TConfigTreeFrame::CommitEdits()
{
    CommitEditor();
    ApplyPending();
}

void TConfigTreeFrame::SendSections()
{
    if (IsDialogShown())
        Shared().Get()->SetSceneSections(GetSections());
}

void TConfigTreeFrame::HandleDialogAccept(TScenePropsDialog* dialog)
{
    TSceneNode* node = m_dialogNode.Get();
    if (!node)
        return;
    const bool newAlias = dialog->GetNodeAlias() != node->Item()->Alias;
    // What a bound node remembers of its datapoint is not stored while it is bound; taking it over is no change.
    if (node->LinkedItem()) {
        node->Item()->Source = dialog->GetNodeSource();
        node->Item()->DataType = dialog->GetDataType();
    }
    ChangeItem(node, [&](TVlSceneItem& item) {
        if (node->IsDatapoint())
            item.Name = dialog->GetItemName();
        item.Value = dialog->GetNodeValue();
        item.Source = dialog->GetNodeSource();
        item.DataType = dialog->GetDataType();
        item.Enabled = dialog->GetEnableFlag();
        item.Delay = dialog->GetNodeDelay();
        item.Alias = dialog->GetNodeAlias();
    });
    if (newAlias)
        RebuildCaptionsOf(node);
    if (newAlias && node->Role() == srScene)
        SendSections();
    dialog->SetChanged(false);
}

void TConfigTreeFrame::HandleDialogClose()
{
    m_dialogNode.Set(nullptr);
    Shared().LeaveBy(this);
    ApplyMenuRules();
}

void TConfigTreeFrame::HandlePartChange(int part)
{
    if (part < 0) {
        m_dialogNode.Set(nullptr);
        SelectNode(nullptr);
        return;
    }
    TSceneNode* node = Top() ? Top()->Child(part) : nullptr;
    TSceneNode* shown = ShownFor(node);
    SelectNode(shown ? shown : node);
    FollowInDialog(node);
}

void TConfigTreeFrame::HandleMoveNotify(TDirection direction)
{
    const TTreeNode* from = m_dialogNode ? m_dialogNode.Get() : TopNode();
    TTreeNode* neighbour = nullptr;
    if (from && direction == dirUp)
        neighbour = from->PreviousSibling();
    else if (from && direction == dirDown)
        neighbour = from->NextSibling();

    auto* node = static_cast<TSceneNode*>(neighbour);
    if (!node || !node->Item()) {
        ApplyPending();
        return;
    }
    ShowInDialog(node);
    SelectNode(node);
}
