#include "IScheduleTree.h"

#include "dlgScheduleProps.h"

namespace
{

// How far right of the frame's left edge the dialog opens, in pixels.
constexpr int DialogOffset = 20;

const TScheduleNode* GroupOf(const TScheduleNode* node)
{
    while (node->Level() > slGroup)
        node = node->Parent();
    return node;
}

bool CanBeShown(const TScheduleNode* node)
{
    return node && (node->IsDatapoint() || node->IsEntry());
}

} // namespace

TSharedDialog<TSchedulePropsDialog, TScheduleTreeFrame>& TScheduleTreeFrame::Shared()
{
    static TSharedDialog<TSchedulePropsDialog, TScheduleTreeFrame> shared;
    return shared;
}

void TScheduleTreeFrame::FinalizeView()
{
    Shared().Release();
}

bool TScheduleTreeFrame::IsDialogConnected() const
{
    return Shared().IsShownBy(this);
}

TSchedulePropsDialog* TScheduleTreeFrame::ConnectDialog()
{
    const bool isMade = !Shared().Get();
    const bool isTaken = Shared().Take(this);
    TSchedulePropsDialog* dialog = Shared().Get();
    if (isMade)
        dialog->move(mapToGlobal(QPoint(DialogOffset, 0)));
    if (isTaken)
        dialog->SetChangePartEvent([this](QObject*, int part) { HandlePartChange(part); });
    dialog->SetScheduleGroups(m_groupNames);
    return dialog;
}

void TScheduleTreeFrame::MenuAction_AttributesExecute()
{
    ShowInDialog(MenuScheduleNode());
}

void TScheduleTreeFrame::ShowInDialog(TScheduleNode* node)
{
    if (!CanBeShown(node))
        return;
    ApplyPending();
    m_editedNode.Set(node);
    const bool wasConnected = IsDialogConnected();
    TSchedulePropsDialog* dialog = ConnectDialog();
    FillDialog(node);
    if (!wasConnected)
        dialog->Display();
    ApplyMenuRules();
}

// A datapoint without a record has nothing to fill the fields with; they stay as they are.
void TScheduleTreeFrame::FillDialog(const TScheduleNode* node)
{
    TSchedulePropsDialog* dialog = Shared().Get();
    if (node->IsEntry()) {
        dialog->SetSection(GroupOf(node)->Index());
        dialog->SetScheduleText(node->Caption());
        dialog->SetTitle(node->Parent()->Caption());
    } else if (const TVlNodeData* record = node->Data()) {
        dialog->SetIsSchedule(false);
        dialog->SetSection(GroupOf(node)->Index());
        dialog->SetItemName(record->Name);
        dialog->SetNodeSource(record->Source);
        dialog->SetDataType(record->DataType);
        dialog->SetNodeAlias(record->Alias);
        dialog->SetNodeMinVal(record->MinVal);
        dialog->SetNodeMaxVal(record->MaxVal);
        dialog->SetNodeAccess(record->Access);
        dialog->SetEnableFlag(record->Enabled);
    }
    dialog->SetChanged(false);
}

void TScheduleTreeFrame::HandleSelectionChange()
{
    if (GetEditable() && IsDialogConnected() && SelectedNode())
        FollowInDialog(SelectedScheduleNode());
    ApplyMenuRules();
    if (!m_choosesInWeek)
        m_weekGroup.Set(nullptr);
    m_weekTimer.start(0);
}

void TScheduleTreeFrame::FollowInDialog(TScheduleNode* node)
{
    if (CanBeShown(node)) {
        ShowInDialog(node);
        return;
    }
    ApplyPending();
    m_editedNode.Set(nullptr);
}

void TScheduleTreeFrame::ApplyPending()
{
    if (m_editedNode && Shared().HasPending(this))
        HandleDialogAccept(Shared().Get());
}

// The node in the dialog was changed elsewhere: what is shown must not be written back over it.
void TScheduleTreeFrame::RefreshDialog(const TScheduleNode* changed)
{
    const TScheduleNode* shown = m_editedNode.Get();
    const bool concerned = shown && (shown == changed || shown->Parent() == changed);
    if (concerned && IsDialogConnected() && !Shared().Get()->GetChanged())
        FillDialog(shown);
}

void TScheduleTreeFrame::CommitEdits()
{
    CommitEditor();
    ApplyPending();
}

void TScheduleTreeFrame::SendSections()
{
    if (IsDialogConnected())
        Shared().Get()->SetScheduleGroups(m_groupNames);
}

void TScheduleTreeFrame::AcceptDatapoint(TScheduleNode* node)
{
    const TSchedulePropsDialog* dialog = Shared().Get();
    TVlNodeData& record = *node->Data();
    ChangeRecord(node, [&] {
        const TVlNodeData before = record;
        record.Name = dialog->GetItemName();
        record.MinVal = dialog->GetNodeMinVal();
        record.MaxVal = dialog->GetNodeMaxVal();
        record.Source = dialog->GetNodeSource();
        record.DataType = dialog->GetDataType();
        record.Enabled = dialog->GetEnableFlag();
        record.Access = dialog->GetNodeAccess();
        record.Alias = dialog->GetNodeAlias();
        const bool differs = !(record == before) || node->Caption() != record.Alias;
        node->SetCaption(record.Alias);
        return differs;
    });
}

// The section is not applied: a datapoint stays in its group.
void TScheduleTreeFrame::HandleDialogAccept(TSchedulePropsDialog* dialog)
{
    TScheduleNode* node = m_editedNode.Get();
    if (node && node->IsDatapoint() && node->Data() && !dialog->GetIsSchedule())
        AcceptDatapoint(node);
    else if (node && node->IsEntry() && dialog->GetIsSchedule())
        SetCaption(node, dialog->GetScheduleText());
    dialog->SetChanged(false);
}

void TScheduleTreeFrame::HandleDialogClose()
{
    m_editedNode.Set(nullptr);
    Shared().LeaveBy(this);
    ApplyMenuRules();
}

void TScheduleTreeFrame::HandlePartChange(int part)
{
    if (part < 0) {
        m_editedNode.Set(nullptr);
        SelectNode(nullptr);
        return;
    }
    const TScheduleNode* group = Root() ? Root()->Child(part) : nullptr;
    if (group && group->Count() > 0)
        SelectNode(group->Child(0));
}

void TScheduleTreeFrame::HandleMoveNotify(TDirection direction)
{
    const TTreeNode* from = m_editedNode ? m_editedNode.Get() : TopNode();
    if (!from || (direction != dirUp && direction != dirDown))
        return;
    TTreeNode* neighbour = direction == dirUp ? from->PreviousSibling() : from->NextSibling();

    if (neighbour)
        SelectNode(neighbour);
    else
        ApplyPending();
}
