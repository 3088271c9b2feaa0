#include "Vldragscrolltree.h"

#include "Vlerrors.h"

#include <QHash>
#include <QHoverEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QSet>

#include <algorithm>

namespace
{

// The branches of a list: without nodes that stand below another node of the list, and each once.
QList<TTreeNode*> OutermostBranches(const QList<TTreeNode*>& nodes)
{
    const QSet<const TTreeNode*> listed(nodes.begin(), nodes.end());
    QSet<const TTreeNode*> taken;
    QList<TTreeNode*> branches;
    for (TTreeNode* node : nodes) {
        const TTreeNode* above = node->Parent();
        while (above && !listed.contains(above))
            above = above->Parent();
        if (!above && !taken.contains(node)) {
            taken.insert(node);
            branches.append(node);
        }
    }
    return branches;
}

template <class TVisit> void ForEachIn(TTreeNode* branch, TVisit visit)
{
    visit(branch);
    for (int i = 0; i < branch->Count(); ++i)
        ForEachIn(branch->Child(i), visit);
}

// Lets every child of the nodes' parents know its index, so that none of them is searched for.
void NoteIndexes(const QList<TTreeNode*>& nodes)
{
    QSet<const TTreeNode*> parents;
    for (const TTreeNode* node : nodes) {
        const TTreeNode* parent = node->Parent();
        if (!parent || parents.contains(parent))
            continue;
        parents.insert(parent);
        for (int i = 0; i < parent->Count(); ++i)
            parent->Child(i)->NoteIndex(i);
    }
}

// The nodes, which know their places from `firstIndex` on, for somebody who takes them over.
QList<QTreeWidgetItem*> TakeAll(std::vector<std::unique_ptr<TTreeNode>>& nodes, int firstIndex = 0)
{
    QList<QTreeWidgetItem*> items;
    items.reserve(static_cast<qsizetype>(nodes.size()));
    for (std::unique_ptr<TTreeNode>& node : nodes) {
        node->NoteIndex(firstIndex + static_cast<int>(items.size()));
        items.append(node.release());
    }
    return items;
}

// A path of indexes from the top, which compares as the nodes stand in reading order.
QList<int> PlaceOf(const QModelIndex& index)
{
    QList<int> place;
    for (QModelIndex at = index; at.isValid(); at = at.parent())
        place.prepend(at.row());
    return place;
}

// In reading order. A change of the selection comes grouped by parent.
void SortByPlace(QModelIndexList& indexes)
{
    const auto sameParent = [&](const QModelIndex& index) { return index.parent() == indexes.first().parent(); };
    if (std::all_of(indexes.begin(), indexes.end(), sameParent))
        return;
    QList<std::pair<QList<int>, QModelIndex>> places;
    for (const QModelIndex& index : std::as_const(indexes))
        places.append({PlaceOf(index), index});
    std::sort(places.begin(), places.end(), [](const auto& a, const auto& b) {
        return std::lexicographical_compare(a.first.begin(), a.first.end(), b.first.begin(), b.first.end());
    });
    std::transform(places.begin(), places.end(), indexes.begin(), [](const auto& entry) { return entry.second; });
}

} // namespace

TDragScrollTree::TDragScrollTree(QWidget* parent) : QTreeWidget(parent)
{
    setHeaderHidden(true);
    setColumnCount(1);
    setUniformRowHeights(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setDragEnabled(true);
    setAcceptDrops(true);
    setAutoScroll(true);
    setDropIndicatorShown(false);
}

TDragScrollTree::~TDragScrollTree() = default;

TTreeNode* TDragScrollTree::NodeAt(const QPoint& position) const
{
    return static_cast<TTreeNode*>(itemAt(position));
}

TTreeNode* TDragScrollTree::SelectedNode() const
{
    auto* current = static_cast<TTreeNode*>(currentItem());
    if (current && current->isSelected())
        return current;
    const QList<TTreeNode*> selected = SelectedNodes();
    return selected.isEmpty() ? nullptr : selected.last();
}

QList<TTreeNode*> TDragScrollTree::SelectedNodes() const
{
    QList<TTreeNode*> nodes;
    const QList<QTreeWidgetItem*> items = selectedItems();
    nodes.reserve(items.size());
    for (QTreeWidgetItem* item : items)
        nodes.append(static_cast<TTreeNode*>(item));
    std::sort(nodes.begin(), nodes.end(),
              [](const TTreeNode* a, const TTreeNode* b) { return a->SelectionSerial() < b->SelectionSerial(); });
    return nodes;
}

void TDragScrollTree::SelectNode(TTreeNode* node)
{
    if (node)
        setCurrentItem(node, 0, QItemSelectionModel::ClearAndSelect);
    else
        clearSelection();
}

void TDragScrollTree::SetHotTracking(bool hotTracking)
{
    m_hotTracking = hotTracking;
    viewport()->setAttribute(Qt::WA_Hover, true);
    if (!hotTracking)
        SetHotNode(nullptr);
}

void TDragScrollTree::SetHotNode(TTreeNode* node)
{
    TTreeNode* before = m_hotNode.Get();
    if (node == before)
        return;
    m_hotNode.Set(node);
    for (TTreeNode* changed : {before, node}) {
        if (changed)
            update(indexFromItem(changed));
    }
}

bool TDragScrollTree::viewportEvent(QEvent* event)
{
    if (m_hotTracking && (event->type() == QEvent::HoverMove || event->type() == QEvent::HoverEnter))
        SetHotNode(NodeAt(static_cast<QHoverEvent*>(event)->position().toPoint()));
    else if (event->type() == QEvent::HoverLeave)
        SetHotNode(nullptr);
    return QTreeWidget::viewportEvent(event);
}

void TDragScrollTree::SetEditable(bool editable)
{
    m_editable = editable;
    setEditTriggers(editable ? EditKeyPressed | SelectedClicked : NoEditTriggers);
    Guarded([&] { HandleEditable(editable); });
}

void TDragScrollTree::SetModified(bool modified)
{
    if (modified != isWindowModified())
        setWindowModified(modified);
}

void TDragScrollTree::ReplaceContent(std::unique_ptr<TTreeNode> top)
{
    clear();
    if (top)
        addTopLevelItem(top.release());
    Guarded([this] { HandleChange(); });
}

void TDragScrollTree::ReplaceContent(std::vector<std::unique_ptr<TTreeNode>> tops)
{
    clear();
    addTopLevelItems(TakeAll(tops));
    Guarded([this] { HandleChange(); });
}

void TDragScrollTree::ReplaceChildren(TTreeNode* parent, std::vector<std::unique_ptr<TTreeNode>> children)
{
    Q_ASSERT(parent);
    if (!parent)
        return;
    qDeleteAll(parent->takeChildren());
    parent->addChildren(TakeAll(children));
    Guarded([this] { HandleChange(); });
}

void TDragScrollTree::NoteChange()
{
    SetModified(true);
    Guarded([this] { HandleChange(); });
}

TTreeNode* TDragScrollTree::InsertBranch(std::unique_ptr<TTreeNode> branch, TTreeNode* node, TNodeAttachMode mode)
{
    if (!branch || !branch->MoveTo(node, mode))
        return nullptr;
    TTreeNode* inserted = branch.release();
    NoteChange();
    return inserted;
}

void TDragScrollTree::InsertBranches(std::vector<std::unique_ptr<TTreeNode>> branches, TTreeNode* parent, int index)
{
    Q_ASSERT(parent);
    if (!parent || branches.empty())
        return;
    parent->insertChildren(index, TakeAll(branches, index));
    NoteChange();
}

void TDragScrollTree::RemoveBranches(const QList<TTreeNode*>& nodes)
{
    const TRepaintPause pause(this);
    const QList<TTreeNode*> branches = OutermostBranches(nodes);
    if (branches.isEmpty())
        return;
    NoteIndexes(branches);
    QHash<TTreeNode*, QList<int>> places;
    for (TTreeNode* node : branches) {
        Guarded([&] { HandleDeletion(node); });
        places[node->Parent()].append(node->Index());
    }
    // One change of the selection instead of one for each run of nodes.
    clearSelection();
    for (auto place = places.begin(); place != places.end(); ++place) {
        std::sort(place->begin(), place->end(), std::greater<>());
        RemoveChildren(place.key(), *place);
    }
    NoteChange();
}

// `indexes` from the last to the first. Neighbours go together, one change of the model for each run. As each change
// costs the view time for all its rows, a parent that loses many runs has its children exchanged as a whole instead.
void TDragScrollTree::RemoveChildren(TTreeNode* parent, const QList<int>& indexes)
{
    constexpr int FewRuns = 16;
    QList<std::pair<int, int>> runs; // first index and count
    for (const int index : indexes) {
        if (!runs.isEmpty() && runs.last().first == index + 1)
            runs.last() = {index, runs.last().second + 1};
        else
            runs.append({index, 1});
    }
    if (parent && runs.size() > FewRuns) {
        RemoveByRebuilding(parent, indexes);
        return;
    }
    const QModelIndex place = parent ? indexFromItem(parent) : QModelIndex();
    for (const auto& [first, count] : std::as_const(runs))
        model()->removeRows(first, count, place);
}

void TDragScrollTree::RemoveByRebuilding(TTreeNode* parent, const QList<int>& indexes)
{
    const int scrolledTo = verticalScrollBar()->value();
    QList<TTreeNode*> expanded;
    ForEachIn(parent, [&](TTreeNode* node) {
        if (node->Count() > 0 && node->isExpanded())
            expanded.append(node);
    });
    QSet<const TTreeNode*> gone;
    const TNodeRef current(static_cast<TTreeNode*>(currentItem()));
    QList<QTreeWidgetItem*> kept = parent->takeChildren();
    for (const int index : indexes) {
        auto* removed = static_cast<TTreeNode*>(kept[index]);
        ForEachIn(removed, [&](TTreeNode* node) { gone.insert(node); });
        kept[index] = nullptr;
        delete removed;
    }
    kept.removeAll(nullptr);
    expanded.removeIf([&](const TTreeNode* node) { return gone.contains(node); });
    parent->addChildren(kept);
    for (TTreeNode* node : std::as_const(expanded))
        node->setExpanded(true);
    if (current)
        setCurrentItem(current.Get(), 0, QItemSelectionModel::NoUpdate);
    verticalScrollBar()->setValue(scrolledTo);
}

bool TDragScrollTree::MoveBranch(TTreeNode* branch, TTreeNode* node, TNodeAttachMode mode)
{
    const TRepaintPause pause(this);
    QList<TTreeNode*> expanded;
    QList<std::pair<TTreeNode*, quint32>> selected;
    ForEachIn(branch, [&](TTreeNode* below) {
        if (below->Count() > 0 && below->isExpanded())
            expanded.append(below);
        if (below->isSelected())
            selected.append({below, below->SelectionSerial()});
    });
    auto* current = static_cast<TTreeNode*>(currentItem());
    const TTreeNode* parent = branch->Parent();
    const int index = branch->Index();
    if (!branch->MoveTo(node, mode))
        return false;
    for (TTreeNode* open : std::as_const(expanded))
        open->setExpanded(true);
    for (const auto& [below, serial] : std::as_const(selected)) {
        below->setSelected(true);
        below->SetSelectionSerial(serial);
    }
    if (current && current->IsWithin(branch))
        setCurrentItem(current, 0, QItemSelectionModel::NoUpdate);
    if (branch->Parent() != parent || branch->Index() != index)
        NoteChange();
    return true;
}

bool TDragScrollTree::ChangeRecord(TTreeNode* node, const std::function<bool()>& change)
{
    Q_ASSERT(node);
    if (!node || !change())
        return false;
    NoteChange();
    return true;
}

void TDragScrollTree::CommitEditor()
{
    if (state() != EditingState)
        return;
    const QList<QLineEdit*> editors = viewport()->findChildren<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
    for (QLineEdit* editor : editors) {
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void TDragScrollTree::FinishEditing(TTreeNode* node, const QString& text)
{
    if (!m_editable)
        return;
    Guarded([&] { HandleEdited(node, text); });
}

void TDragScrollTree::HandleEdited(TTreeNode*, const QString&) {}

bool TDragScrollTree::CanEdit(const TTreeNode*) const
{
    return true;
}

void TDragScrollTree::HandleSelectionChange() {}

void TDragScrollTree::HandleEditable(bool) {}

void TDragScrollTree::HandleChange() {}

void TDragScrollTree::HandleDeletion(TTreeNode*) {}

bool TDragScrollTree::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    const auto* node = static_cast<const TTreeNode*>(itemFromIndex(index));
    bool allowed = false;
    Guarded([&] { allowed = m_editable && node && CanEdit(node); });
    if (!allowed)
        return false;
    return QTreeWidget::edit(index, trigger, event);
}

void TDragScrollTree::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QModelIndexList indexes = selected.indexes();
    SortByPlace(indexes);
    const bool upwards = !indexes.isEmpty() && currentIndex() == indexes.first() && indexes.size() > 1;
    if (upwards)
        std::reverse(indexes.begin(), indexes.end());
    for (const QModelIndex& index : std::as_const(indexes)) {
        if (auto* node = static_cast<TTreeNode*>(itemFromIndex(index)))
            node->SetSelectionSerial(++m_lastSerial);
    }
    QTreeWidget::selectionChanged(selected, deselected);
    Guarded([this] { HandleSelectionChange(); });
}
