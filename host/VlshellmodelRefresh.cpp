#include "Vlshellmodel.h"

#include <QHash>

#include <algorithm>
#include <iterator>

namespace
{

// Folders first.
bool ComesBefore(const std::unique_ptr<TShellNode>& a, const std::unique_ptr<TShellNode>& b)
{
    const bool folderA = a->Entry.Kind == skFolder;
    const bool folderB = b->Entry.Kind == skFolder;
    if (folderA != folderB)
        return folderA;
    const int order = CompareSortKeys(a->SortKey, b->SortKey);
    return order == 0 ? a->Entry.Name < b->Entry.Name : order < 0;
}

void Number(std::vector<std::unique_ptr<TShellNode>>& nodes)
{
    int row = 0;
    for (const auto& node : nodes)
        node->Row = row++;
}

std::vector<std::unique_ptr<TShellNode>> MakeNodes(TShellNode* parent, const std::vector<TShellEntry>& entries)
{
    std::vector<std::unique_ptr<TShellNode>> nodes;
    nodes.reserve(entries.size());
    for (const TShellEntry& entry : entries) {
        nodes.push_back(std::make_unique<TShellNode>());
        nodes.back()->Entry = entry;
        nodes.back()->SortKey = ShellSortKey(entry.Name);
        nodes.back()->Parent = parent;
    }
    std::sort(nodes.begin(), nodes.end(), ComesBefore);
    return nodes;
}

} // namespace

template <class TFunction> void TShellModel::ForListed(TShellNode* node, const TFunction& function) const
{
    if (!node || !node->Listed)
        return;
    function(node);
    for (const auto& child : node->Children)
        ForListed(child.get(), function);
}

void TShellModel::SetObjects(TShellObjects objects)
{
    if (objects == m_objects)
        return;
    m_objects = objects;
    RefreshAll();
}

std::vector<QByteArray> TShellModel::ListedFolders() const
{
    std::vector<QByteArray> paths;
    ForListed(m_root.get(), [&](const TShellNode* node) { paths.push_back(PathOf(node)); });
    return paths;
}

void TShellModel::RefreshAll()
{
    ForListed(m_root.get(), [this](TShellNode* node) { RefreshFolder(node); });
}

void TShellModel::Refresh(const QSet<QByteArray>& paths)
{
    ForListed(m_root.get(), [&](TShellNode* node) {
        if (paths.contains(PathOf(node)))
            RefreshFolder(node);
    });
}

void TShellModel::List(TShellNode* folder)
{
    folder->Listed = true;
    Q_EMIT Listing(PathOf(folder));
    RefreshFolder(folder);
    if (!folder->Children.empty())
        return;
    // The view does not ask again whether there is something to open.
    const QList<QPersistentModelIndex> parents{IndexOf(folder)};
    Q_EMIT layoutAboutToBeChanged(parents);
    Q_EMIT layoutChanged(parents);
}

void TShellModel::RefreshFolder(TShellNode* folder)
{
    TShellListing listing = ListShellFolder(PathOf(folder), m_objects, folder == m_root.get());
    folder->Readable = listing.Readable;
    QSet<TShellNode*> gone = MatchWithListing(folder, listing);
    MatchRenamed(gone, listing.Entries);
    Remove(folder, gone);
    if (!std::is_sorted(folder->Children.begin(), folder->Children.end(), ComesBefore))
        Sort(folder);
    Insert(folder, MakeNodes(folder, listing.Entries));
}

QSet<TShellNode*> TShellModel::MatchWithListing(TShellNode* folder, TShellListing& listing)
{
    QHash<QByteArray, TShellNode*> known;
    known.reserve(static_cast<qsizetype>(folder->Children.size()));
    for (const auto& child : folder->Children)
        known.insert(child->Entry.Name, child.get());
    // A folder that has become a file, or the other way round, is another item.
    std::erase_if(listing.Entries, [&](const TShellEntry& entry) {
        TShellNode* node = known.value(entry.Name);
        if (!node || (node->Entry.Kind == skFolder) != (entry.Kind == skFolder))
            return false;
        known.remove(entry.Name);
        const bool changed = node->Entry.Kind != entry.Kind;
        node->Entry = entry;
        if (changed)
            Q_EMIT dataChanged(IndexOf(node), IndexOf(node));
        return true;
    });
    return {known.begin(), known.end()};
}

void TShellModel::MatchRenamed(QSet<TShellNode*>& gone, std::vector<TShellEntry>& added)
{
    if (gone.isEmpty() || added.empty())
        return;
    QHash<quint64, TShellNode*> byInode;
    for (TShellNode* node : std::as_const(gone))
        byInode.insert(node->Entry.Inode, node);
    std::erase_if(added, [&](const TShellEntry& entry) {
        TShellNode* node = byInode.value(entry.Inode);
        if (!node || node->Entry.Kind != entry.Kind)
            return false;
        byInode.remove(entry.Inode);
        gone.remove(node);
        SetEntry(node, entry);
        return true;
    });
}

void TShellModel::SetEntry(TShellNode* node, const TShellEntry& entry)
{
    node->Entry = entry;
    node->SortKey = ShellSortKey(entry.Name);
    Q_EMIT dataChanged(IndexOf(node), IndexOf(node));
}

// What goes is brought together first, so that any number of items costs the view one removal.
void TShellModel::Remove(TShellNode* folder, const QSet<TShellNode*>& gone)
{
    if (gone.isEmpty())
        return;
    const auto [first, last] = std::minmax_element(
        gone.begin(), gone.end(), [](const TShellNode* a, const TShellNode* b) { return a->Row < b->Row; });
    int from = (*first)->Row;
    if ((*last)->Row - from + 1 != gone.size()) {
        Reorder(folder, [&](TNodes& nodes) {
            std::stable_partition(nodes.begin(), nodes.end(),
                                  [&](const auto& node) { return !gone.contains(node.get()); });
        });
        from = static_cast<int>(folder->Children.size() - static_cast<std::size_t>(gone.size()));
    }
    const int count = static_cast<int>(gone.size());
    beginRemoveRows(IndexOf(folder), from, from + count - 1);
    const auto begin = folder->Children.begin() + from;
    folder->Children.erase(begin, begin + count);
    Number(folder->Children);
    endRemoveRows();
}

// New items go where they belong when they stand together there, else to the end, to be sorted in one go.
void TShellModel::Insert(TShellNode* folder, TNodes added)
{
    if (added.empty())
        return;
    TNodes& children = folder->Children;
    const auto place = std::lower_bound(children.begin(), children.end(), added.front(), ComesBefore);
    const bool together = place == children.end() || ComesBefore(added.back(), *place);
    const auto at = together ? place : children.end();
    const int row = static_cast<int>(at - children.begin());
    beginInsertRows(IndexOf(folder), row, row + static_cast<int>(added.size()) - 1);
    children.insert(at, std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
    Number(children);
    endInsertRows();
    if (!together)
        Sort(folder);
}

void TShellModel::Sort(TShellNode* folder)
{
    Reorder(folder, [](TNodes& nodes) { std::sort(nodes.begin(), nodes.end(), ComesBefore); });
}

void TShellModel::Reorder(TShellNode* folder, const std::function<void(TNodes&)>& change)
{
    const QList<QPersistentModelIndex> parents{IndexOf(folder)};
    Q_EMIT layoutAboutToBeChanged(parents);
    change(folder->Children);
    Number(folder->Children);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before)
        after.append(IndexOf(At(index)));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged(parents);
}

void TShellModel::HandleRenamed(const QModelIndex& index, const QByteArray& name)
{
    TShellNode* node = At(index);
    TShellNode* folder = node->Parent;
    const QModelIndex replaced = Find(IndexOf(folder), name);
    if (replaced.isValid() && replaced != index)
        Remove(folder, {At(replaced)});
    TShellEntry entry = node->Entry;
    entry.Name = name;
    SetEntry(node, entry);
    Sort(folder);
}
