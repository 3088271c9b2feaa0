#pragma once

#include "Vlshellicons.h"
#include "Vlshellitems.h"

#include <QAbstractItemModel>
#include <QSet>

#include <functional>
#include <memory>
#include <vector>

// One item of the shell tree. Belongs to its parent.
struct TShellNode
{
    TShellEntry Entry;
    QString SortKey;
    TShellNode* Parent = nullptr;
    int Row = 0;
    bool Listed = false; // the children are known
    bool Readable = true;
    std::vector<std::unique_ptr<TShellNode>> Children;
};

// The items below one root folder, which is itself the only top item. A folder is listed when it is first opened and
// from then on compared with the disk when the view asks for it: what is still there keeps its index, and so its
// expansion and selection, and so does what was renamed within its folder. Belongs to the view.
class TShellModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit TShellModel(QObject* parent);
    ~TShellModel() override;

    // An empty path shows nothing. The folder need not exist.
    void SetRoot(const QByteArray& path);
    QByteArray Root() const { return m_root ? m_root->Entry.Name : QByteArray(); }
    QModelIndex RootItem() const;

    void SetObjects(TShellObjects objects);
    TShellObjects Objects() const { return m_objects; }

    // The item of an index; null for none.
    const TShellNode* NodeOf(const QModelIndex& index) const;
    // The child of that name of a listed folder; none when there is none.
    QModelIndex Find(const QModelIndex& folder, const QByteArray& name) const;
    QByteArray PathOf(const TShellNode* node) const;

    // The paths of all folders whose content is known.
    std::vector<QByteArray> ListedFolders() const;
    // Compares listed folders with the disk: all of them, or those with the given paths.
    void RefreshAll();
    void Refresh(const QSet<QByteArray>& paths);

    // An item has got another name in its folder; a shown item of that name was replaced by it.
    void HandleRenamed(const QModelIndex& index, const QByteArray& name);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

Q_SIGNALS:
    // A folder was opened for the first time; comes before it is read.
    void Listing(const QByteArray& path);

private:
    using TNodes = std::vector<std::unique_ptr<TShellNode>>;

    TShellNode* At(const QModelIndex& index) const;
    QModelIndex IndexOf(const TShellNode* node) const;
    void List(TShellNode* folder);
    void RefreshFolder(TShellNode* folder);
    // Takes what the listing still has out of it, renamed items included; returns what it has no more.
    QSet<TShellNode*> MatchWithListing(TShellNode* folder, TShellListing& listing);
    void MatchRenamed(QSet<TShellNode*>& gone, std::vector<TShellEntry>& added);
    void Remove(TShellNode* folder, const QSet<TShellNode*>& gone);
    void Insert(TShellNode* folder, TNodes added);
    void Sort(TShellNode* folder);
    void Reorder(TShellNode* folder, const std::function<void(TNodes&)>& change);
    void SetEntry(TShellNode* node, const TShellEntry& entry);
    template <class TFunction> void ForListed(TShellNode* node, const TFunction& function) const;

    std::unique_ptr<TShellNode> m_root;
    TShellObjects m_objects = soFoldersAndFiles;
    mutable TShellIcons m_icons;
};
