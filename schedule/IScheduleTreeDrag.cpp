#include "IScheduleTree.h"

#include "NodeDrags.h"

namespace
{

// A group is offered to other panes from the third one on.
constexpr int FirstDraggedGroup = 2;

} // namespace

bool TScheduleTreeFrame::PrepareDrag(TTreeNode* node, Qt::KeyboardModifiers shiftState)
{
    if (!SelectedNode() || node->Level() != slEntry)
        return false;
    m_shiftState = shiftState;
    return true;
}

std::unique_ptr<QMimeData> TScheduleTreeFrame::StartDrag()
{
    const QList<TTreeNode*> selected = SelectedNodes();
    if (selected.size() > 1) {
        m_dragSource.Set(SelectedScheduleNode());
        return MakeObjectsDrag(selected);
    }
    if (selected.isEmpty())
        return nullptr;
    auto* node = static_cast<TScheduleNode*>(selected.first());
    if (node->IsGroup() && node->Index() >= FirstDraggedGroup)
        return DragOf(node);
    if (node->Level() < slDatapoint)
        return nullptr;
    m_dragSource.Set(node);
    return MakeNodeDrag();
}

// A group stands for its first datapoint; without one there is nothing to offer.
std::unique_ptr<QMimeData> TScheduleTreeFrame::DragOf(const TScheduleNode* group) const
{
    const TVlNodeData* record = nullptr;
    for (int i = 0; !record && i < group->Count(); ++i)
        record = group->Child(i)->Data();
    if (!record)
        return nullptr;
    return MakeDatapointDrag({.Name = record->Name,
                              .Alias = record->Alias,
                              .FixedValue = {}, // the values are in the entries, not in the datapoint
                              .EisNumber = dt2Eis(record->DataType),
                              .Source = QString::fromLatin1(SourceText(record->Source)),
                              .ShiftState = m_shiftState});
}

void TScheduleTreeFrame::EndDrag()
{
    m_dragSource.Set(nullptr);
}

bool TScheduleTreeFrame::CanDrop(const QMimeData*, TTreeNode* target) const
{
    return m_dragSource && target && (target->Level() == slDatapoint || target->Level() == slEntry);
}

void TScheduleTreeFrame::Drop(const QMimeData* content, TTreeNode* target)
{
    auto* place = static_cast<TScheduleNode*>(target);
    if (const auto objects = TObjectsDragObject::FromMimeData(content))
        DropEntries(objects->Objects(), place);
    else if (m_dragSource->IsEntry())
        DropEntry(m_dragSource.Get(), place);
    m_dragSource.Set(nullptr);
}

void TScheduleTreeFrame::DropEntries(const QList<TTreeNode*>& nodes, TScheduleNode* target)
{
    if (!target->IsDatapoint())
        return;
    const TRepaintPause pause(this);
    std::vector<std::unique_ptr<TTreeNode>> copies;
    for (const TTreeNode* node : nodes) {
        if (node->Level() == slEntry)
            copies.push_back(MakeScheduleNode(node->Caption(), slEntry));
    }
    if (copies.empty())
        return;
    InsertBranches(std::move(copies), target, target->Count());
    SelectNode(target->Child(target->Count() - 1));
}

// Ctrl moves and no key copies. Deliberate: the other way round than in most programs.
void TScheduleTreeFrame::DropEntry(TScheduleNode* entry, TScheduleNode* target)
{
    const bool moves = m_shiftState & Qt::ControlModifier;
    if (moves) {
        MoveBranch(entry, target, target->IsDatapoint() ? naAddChild : naInsert);
        SelectNode(entry);
    } else if (target->IsDatapoint()) {
        NewTreeNode(target, naAddChild, true, entry->Caption());
    } else {
        SetCaption(target, entry->Caption());
        SelectNode(target);
    }
}
