#include "Vlshellmodel.h"

#include <QFile>
#include <QMimeData>
#include <QUrl>

#include <algorithm>

TShellModel::TShellModel(QObject* parent) : QAbstractItemModel(parent) {}
TShellModel::~TShellModel() = default;

void TShellModel::SetRoot(const QByteArray& path)
{
    beginResetModel();
    m_root.reset();
    if (!path.isEmpty()) {
        m_root = std::make_unique<TShellNode>();
        m_root->Entry = {.Name = path, .Kind = skFolder};
    }
    endResetModel();
}

QModelIndex TShellModel::RootItem() const
{
    return m_root ? IndexOf(m_root.get()) : QModelIndex();
}

const TShellNode* TShellModel::NodeOf(const QModelIndex& index) const
{
    return index.isValid() ? At(index) : nullptr;
}

QModelIndex TShellModel::Find(const QModelIndex& folder, const QByteArray& name) const
{
    const TShellNode* node = NodeOf(folder);
    if (!node)
        return {};
    const auto found = std::find_if(node->Children.begin(), node->Children.end(),
                                    [&](const auto& child) { return child->Entry.Name == name; });
    return found == node->Children.end() ? QModelIndex() : IndexOf(found->get());
}

QByteArray TShellModel::PathOf(const TShellNode* node) const
{
    if (!node->Parent)
        return node->Entry.Name;
    QByteArray path = PathOf(node->Parent);
    if (!path.endsWith('/'))
        path += '/';
    return path + node->Entry.Name;
}

TShellNode* TShellModel::At(const QModelIndex& index) const
{
    return static_cast<TShellNode*>(index.internalPointer());
}

QModelIndex TShellModel::IndexOf(const TShellNode* node) const
{
    return createIndex(node->Row, 0, node);
}

QModelIndex TShellModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || column != 0 || row >= rowCount(parent))
        return {};
    if (!parent.isValid())
        return RootItem();
    return IndexOf(At(parent)->Children[static_cast<std::size_t>(row)].get());
}

QModelIndex TShellModel::parent(const QModelIndex& index) const
{
    const TShellNode* node = NodeOf(index);
    return node && node->Parent ? IndexOf(node->Parent) : QModelIndex();
}

int TShellModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return m_root ? 1 : 0;
    return static_cast<int>(At(parent)->Children.size());
}

int TShellModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant TShellModel::data(const QModelIndex& index, int role) const
{
    const TShellNode* node = NodeOf(index);
    if (!node)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return node->Parent ? ShellDisplayName(node->Entry.Name) : ShellDisplayName(node->Entry.Name.split('/').last());
    case Qt::EditRole:
        return QFile::decodeName(node->Entry.Name);
    case Qt::DecorationRole:
        return m_icons.IconOf(node->Entry);
    case Qt::ToolTipRole: {
        const QString path = ShellDisplayName(PathOf(node));
        return node->Readable ? path : QStringLiteral("%1 (kann nicht gelesen werden)").arg(path);
    }
    default:
        return {};
    }
}

Qt::ItemFlags TShellModel::flags(const QModelIndex& index) const
{
    const TShellNode* node = NodeOf(index);
    if (!node)
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (node->Parent)
        flags |= Qt::ItemIsEditable;
    if (node->Parent && node->Entry.Kind != skSpecial)
        flags |= Qt::ItemIsDragEnabled;
    if (node->Entry.Kind != skFolder)
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

bool TShellModel::hasChildren(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return m_root != nullptr;
    const TShellNode* node = At(parent);
    return node->Entry.Kind == skFolder && (!node->Listed || !node->Children.empty());
}

bool TShellModel::canFetchMore(const QModelIndex& parent) const
{
    const TShellNode* node = NodeOf(parent);
    return node && node->Entry.Kind == skFolder && !node->Listed;
}

void TShellModel::fetchMore(const QModelIndex& parent)
{
    if (canFetchMore(parent))
        List(At(parent));
}

QStringList TShellModel::mimeTypes() const
{
    return {QStringLiteral("text/uri-list")};
}

QMimeData* TShellModel::mimeData(const QModelIndexList& indexes) const
{
    QList<QUrl> urls;
    for (const QModelIndex& index : indexes) {
        // From the bytes: a name that is no UTF-8 arrives where it is understood.
        if (const TShellNode* node = NodeOf(index))
            urls.append(QUrl::fromEncoded("file://" + PathOf(node).toPercentEncoding("/")));
    }
    auto* data = new QMimeData;
    data->setUrls(urls);
    return data;
}
