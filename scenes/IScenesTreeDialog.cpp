#include "IScenesTree.h"

#include "dlgSceneProps.h"

#include <QPointer>

namespace
{

// The one properties dialog of all frames, and the frame that shows a node in it, if one does.
struct TSharedDialog
{
    QPointer<TScenePropsDialog> Dialog;
    QPointer<TConfigTreeFrame> Frame;
};

TSharedDialog& Shared()
{
    static TSharedDialog shared;
    return shared;
}

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

void TConfigTreeFrame::FinalizeScenes()
{
    if (Shared().Frame) {
        Shared().Frame->ApplyPending();
        Shared().Frame->m_dialogNode.Set(nullptr);
    }
    Shared().Frame = nullptr;
    delete Shared().Dialog.data();
}

bool TConfigTreeFrame::IsDialogShown() const
{
    return Shared().Dialog && Shared().Frame == this && Shared().Dialog->isVisible();
}

// The dialog belongs to whoever shows a node in it; the frame that had it before is left with its changes applied.
TScenePropsDialog* TConfigTreeFrame::TakeDialog()
{
    TSharedDialog& shared = Shared();
    if (shared.Frame && shared.Frame != this) {
        shared.Frame->ApplyPending();
        shared.Frame->HandleDialogClose();
    }
    if (!shared.Dialog)
        shared.Dialog = new TScenePropsDialog(this);
    if (shared.Frame != this) {
        shared.Frame = this;
        shared.Dialog->SetCloseEvent([this](QObject*) { HandleDialogClose(); });
        shared.Dialog->SetApplyEvent([this](QObject*) { HandleDialogAccept(); });
        shared.Dialog->SetMoveEvent([this](QObject*, TDirection direction) { HandleMoveNotify(direction); });
        shared.Dialog->SetChangePartEvent([this](QObject*, int part) { HandlePartChange(part); });
    }
    shared.Dialog->SetSceneSections(GetSections());
    return shared.Dialog;
}

void TConfigTreeFrame::MenuAction_AttributesExecute()
{
    ShowInDialog(MenuNode());
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
    m_popupMenu->ApplyRules();
}

void TConfigTreeFrame::FillDialog(TSceneNode* node)
{
    TScenePropsDialog* dialog = Shared().Dialog;
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
    m_popupMenu->ApplyRules();
}

void TConfigTreeFrame::HandleEditable(bool editable)
{
    m_popupMenu->SetAttached(editable);
    if (editable)
        HandleSelectionChange();
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
    if (IsDialogShown() && m_dialogNode && Shared().Dialog->GetChanged() && Shared().Dialog->GetAutoAccept())
        HandleDialogAccept();
}

// The node in the dialog was changed elsewhere: what is shown must not be written back over it.
void TConfigTreeFrame::RefreshDialog(const TSceneNode* changed)
{
    TSceneNode* shown = m_dialogNode.Get();
    const bool concerned = shown && (shown == changed || shown->Item()->Link.Get() == changed);
    if (concerned && IsDialogShown() && !Shared().Dialog->GetChanged())
        FillDialog(shown);
}

void TConfigTreeFrame::CommitEdits()
{
    CommitEditor();
    ApplyPending();
}

void TConfigTreeFrame::SendSections()
{
    if (Shared().Dialog && Shared().Frame == this)
        Shared().Dialog->SetSceneSections(GetSections());
}

void TConfigTreeFrame::HandleDialogAccept()
{
    TScenePropsDialog* dialog = Shared().Dialog;
    TSceneNode* node = m_dialogNode.Get();
    if (!dialog || !node)
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
    if (Shared().Frame == this)
        Shared().Frame = nullptr;
    m_popupMenu->ApplyRules();
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
