#include "IScheduleTree.h"

#include "FoldersRc.h"
#include "ScheduleEntry.h"
#include "Vlmessages.h"

#include <algorithm>
#include <functional>

namespace
{

// Copies are put into a group from the third one on; onto the first two they are put beside it. Deliberate.
constexpr int FirstGroupPastedInto = 2;

// A datapoint as it was copied: with its record where it lands among the datapoints, else nothing but a caption.
std::unique_ptr<TScheduleNode> CopyOf(const TScheduleNode& source, int level)
{
    auto copy = MakeScheduleNode(source.Data()->Alias, level);
    if (copy->Data())
        *copy->Data() = *source.Data();
    return copy;
}

} // namespace

TScheduleNode* TScheduleTreeFrame::NewTreeNode(TScheduleNode* node, TNodeAttachMode mode, bool select,
                                               const QString& caption)
{
    const bool asSibling = mode == naAdd;
    TScheduleNode* parent = node && asSibling ? node->Parent() : node;
    if (!parent || (!asSibling && mode != naAddChild && mode != naAddChildFirst))
        return nullptr;
    const TRepaintPause pause(this);
    TTreeNode* inserted = InsertBranch(MakeScheduleNode(caption, parent->Level() + 1), parent, naAddChild);
    if (select)
        SelectNode(inserted);
    return static_cast<TScheduleNode*>(inserted);
}

void TScheduleTreeFrame::MenuAction_CreateGroupExecute()
{
    // A group that is made here has access level 0, a loaded one that says nothing has 5. Deliberate.
    if (!NewTreeNode(Root(), naAddChild, true, RcText(_RSTR_NEW_GROUP)))
        return;
    m_groupNames.append(RcText(_RSTR_NEW_GROUP));
    SendSections();
}

void TScheduleTreeFrame::MenuAction_CreateNodeExecute()
{
    NewTreeNode(SelectedGroup(), naAddChild, true, RcText(_RSTR_NEW_NODE));
}

void TScheduleTreeFrame::MenuAction_CreateScheduleExecute()
{
    TScheduleNode* selected = SelectedScheduleNode();
    if (!selected)
        return;
    if (selected->IsDatapoint())
        NewTreeNode(selected, naAddChild, true, ScheduleEntryText({.Value = QStringLiteral("0")}));
    else if (selected->IsEntry())
        NewTreeNode(selected->Parent(), naAddChild, true, selected->Caption());
}

void TScheduleTreeFrame::MenuAction_CopyExecute()
{
    Clipboard().ForgetCut();
    const TScheduleNode* selected = SelectedScheduleNode();
    if (!selected)
        return;
    if (selected->IsGroup())
        CopyGroup(selected);
    else if (selected->IsDatapoint())
        Clipboard().Copy(Root(), SelectedNodes());
}

// Deliberate: the datapoints are copied without their switching entries.
void TScheduleTreeFrame::CopyGroup(const TScheduleNode* group)
{
    const TRepaintPause pause(this);
    const QString name = RcText(_RSTR_COPY_OF) + group->Caption();
    auto copy = MakeScheduleNode(name, slGroup);
    copy->SetGroupAccess(group->GroupAccess());
    for (int i = 0; i < group->Count(); ++i) {
        if (group->Child(i)->Data())
            copy->addChild(CopyOf(*group->Child(i), slDatapoint).release());
    }
    InsertBranch(std::move(copy), Root(), naAddChild);
    m_groupNames.append(name);
    SendSections();
}

void TScheduleTreeFrame::MenuAction_CutExecute()
{
    Clipboard().Cut(SelectedNode());
}

void TScheduleTreeFrame::MenuAction_PasteBeforeExecute()
{
    const TRepaintPause pause(this);
    if (TScheduleNode* target = SelectedScheduleNode()) {
        if (Clipboard().HasCopied())
            PasteCopied(target);
        else if (Clipboard().CutNode())
            PasteCut(target);
    }
    Clipboard().Clear();
}

void TScheduleTreeFrame::PasteCopied(TScheduleNode* target)
{
    const bool asChildren = target->IsGroup() && target->Index() >= FirstGroupPastedInto;
    TScheduleNode* parent = asChildren ? target : target->Parent();
    if (!parent)
        return;
    std::vector<std::unique_ptr<TTreeNode>> copies;
    const QList<TTreeNode*> sources = Clipboard().Copied(Root());
    for (const TTreeNode* node : sources) {
        const auto* source = static_cast<const TScheduleNode*>(node);
        if (source->Data())
            copies.push_back(CopyOf(*source, parent->Level() + 1));
    }
    InsertBranches(std::move(copies), parent, parent->Count());
}

void TScheduleTreeFrame::PasteCut(TScheduleNode* target)
{
    auto* cut = static_cast<TScheduleNode*>(Clipboard().CutNode());
    const bool sameLevel = target->Level() == cut->Level();
    // Beside the root there is no place; below itself a node cannot go (MoveBranch).
    if (IsFixed(cut))
        return;
    if (MoveBranch(cut, target, sameLevel ? naInsert : naAddChildFirst))
        RefreshImages(cut);
}

void TScheduleTreeFrame::MenuAction_DeleteExecute()
{
    Clipboard().Clear();
    const TScheduleNode* selected = SelectedScheduleNode();
    if (!selected || IsFixed(selected) || !Confirm(RcText(_CONFIRM_SCHEDITEM_DEL)))
        return;
    const TRepaintPause pause(this);
    QList<TTreeNode*> nodes = SelectedNodes();
    nodes.removeIf([this](const TTreeNode* node) { return IsFixed(node); });
    ForgetGroupNames(nodes);
    RemoveBranches(nodes);
    SendSections();
}

void TScheduleTreeFrame::ForgetGroupNames(const QList<TTreeNode*>& deleted)
{
    QList<int> indexes;
    for (const TTreeNode* node : deleted) {
        if (node->Level() == slGroup)
            indexes.append(node->Index());
    }
    std::sort(indexes.begin(), indexes.end(), std::greater<>());
    for (const int index : std::as_const(indexes)) {
        if (index < m_groupNames.size())
            m_groupNames.removeAt(index);
    }
}

void TScheduleTreeFrame::MenuAction_RenameExecute()
{
    if (TScheduleNode* selected = SelectedScheduleNode())
        edit(indexFromItem(selected), AllEditTriggers, nullptr);
}

bool TScheduleTreeFrame::CanEdit(const TTreeNode* node) const
{
    return node->Level() == slGroup;
}

void TScheduleTreeFrame::SetCaption(TScheduleNode* node, const QString& caption)
{
    ChangeRecord(node, [&] {
        const bool differs = caption != node->Caption();
        node->SetCaption(caption);
        return differs;
    });
    RefreshDialog(node);
}

void TScheduleTreeFrame::HandleEdited(TTreeNode* node, const QString& text)
{
    if (text.isEmpty())
        return;
    auto* edited = static_cast<TScheduleNode*>(node);
    ApplyPending();
    if (edited->IsDatapoint() && edited->Data()) {
        ChangeRecord(edited, [&] {
            const bool differs = edited->Data()->Alias != text;
            edited->Data()->Alias = text;
            return differs;
        });
    }
    SetCaption(edited, text);
    const int index = edited->Index();
    if (edited->IsGroup() && index < m_groupNames.size() && m_groupNames[index] != text) {
        m_groupNames[index] = text;
        SendSections();
    }
    if (IsDialogConnected())
        FollowInDialog(edited);
}
