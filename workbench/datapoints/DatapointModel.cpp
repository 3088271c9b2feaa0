#include "DatapointModel.h"

#include "DatapointKey.h"
#include "Vldragobjects.h"

#include <QMimeData>
#include <QPointer>

#include <memory>

namespace
{

constexpr int Root = 0;

QString TypeText(int eisNumber)
{
    return eisNumber == 0 ? QStringLiteral("unbestimmt") : QStringLiteral("EIS %1").arg(eisNumber);
}

} // namespace

TDatapointModel::TDatapointModel(TDatapointStore& store, QObject* parent)
    : QAbstractItemModel(parent), m_store(store), m_nodes(1)
{
    Build();
    const QPointer<TDatapointModel> self(this);
    store.SetWatcher(
        [self] {
            if (self)
                self->beginResetModel();
        },
        [self] {
            if (!self)
                return;
            try {
                self->Build();
            } catch (...) {
                self->Clear();
                self->endResetModel();
                throw;
            }
            self->endResetModel();
        });
}

TDatapointModel::~TDatapointModel() = default;

int TDatapointModel::AppendNode(int parent, TNode node)
{
    const int id = static_cast<int>(m_nodes.size());
    node.Parent = parent;
    m_nodes.push_back(std::move(node));
    m_nodes[static_cast<std::size_t>(parent)].Children.push_back(id);
    return id;
}

int TDatapointModel::GroupNode(QHash<QStringList, int>& groups, const QStringList& path)
{
    const auto known = groups.constFind(path);
    if (known != groups.constEnd())
        return *known;
    TNode group;
    group.Title = path.last();
    const int above = GroupNode(groups, path.first(path.size() - 1));
    const int node = AppendNode(above, std::move(group));
    groups.insert(path, node);
    return node;
}

void TDatapointModel::Clear()
{
    m_nodes.resize(1);
    m_nodes.front() = TNode();
    m_shownDatapoints = 0;
}

void TDatapointModel::Build()
{
    Clear();
    QHash<QStringList, int> groups{{QStringList(), Root}};
    for (qsizetype i = 0; i < m_store.Datapoints().size(); ++i) {
        const TDatapoint& datapoint = m_store.Datapoints()[i];
        const int group = GroupNode(groups, datapoint.Group);
        TNode leaf;
        leaf.Datapoint = i;
        leaf.Searched = (datapoint.Name + u'\n' + DatapointIdentifier(datapoint)).toCaseFolded();
        AppendNode(group, std::move(leaf));
    }
    ShowMatches(Root, m_filter);
}

void TDatapointModel::SetFilter(const QString& text)
{
    beginResetModel();
    m_filter = text.trimmed().toCaseFolded();
    m_shownDatapoints = 0;
    ShowMatches(Root, m_filter);
    endResetModel();
}

// Fills the shown children of a node; true when the node itself is to be shown.
bool TDatapointModel::ShowMatches(int node, const QString& folded)
{
    TNode& group = m_nodes[static_cast<std::size_t>(node)];
    group.Shown.clear();
    for (const int id : group.Children) {
        TNode& child = m_nodes[static_cast<std::size_t>(id)];
        const bool isDatapoint = child.Datapoint >= 0;
        const bool shown = isDatapoint ? child.Searched.contains(folded) : ShowMatches(id, folded);
        if (!shown)
            continue;
        child.ShownRow = static_cast<int>(group.Shown.size());
        group.Shown.push_back(id);
        m_shownDatapoints += isDatapoint ? 1 : 0;
    }
    return !group.Shown.empty();
}

const TDatapointModel::TNode& TDatapointModel::NodeAt(const QModelIndex& index) const
{
    return m_nodes[index.isValid() ? index.internalId() : Root];
}

const TDatapoint* TDatapointModel::DatapointAt(const QModelIndex& index) const
{
    const qsizetype datapoint = index.isValid() ? NodeAt(index).Datapoint : -1;
    return datapoint >= 0 ? &m_store.Datapoints()[datapoint] : nullptr;
}

void TDatapointModel::NoteType(const QModelIndex& index)
{
    const QModelIndex type = index.siblingAtColumn(ColumnType);
    Q_EMIT dataChanged(type, type);
}

QModelIndex TDatapointModel::IndexOf(int node) const
{
    if (node <= Root || node >= static_cast<int>(m_nodes.size()))
        return {};
    for (int id = node; id != Root; id = m_nodes[static_cast<std::size_t>(id)].Parent) {
        const TNode& child = m_nodes[static_cast<std::size_t>(id)];
        const std::vector<int>& shown = m_nodes[static_cast<std::size_t>(child.Parent)].Shown;
        const auto row = static_cast<std::size_t>(child.ShownRow);
        if (row >= shown.size() || shown[row] != id)
            return {};
    }
    return createIndex(m_nodes[static_cast<std::size_t>(node)].ShownRow, 0, static_cast<quintptr>(node));
}

std::vector<int> TDatapointModel::ShownGroups() const
{
    std::vector<int> groups;
    std::vector<int> open{Root};
    while (!open.empty()) {
        const TNode& node = m_nodes[static_cast<std::size_t>(open.back())];
        open.pop_back();
        for (const int id : node.Shown) {
            if (m_nodes[static_cast<std::size_t>(id)].Datapoint >= 0)
                continue;
            groups.push_back(id);
            open.push_back(id);
        }
    }
    return groups;
}

QModelIndex TDatapointModel::index(int row, int column, const QModelIndex& parent) const
{
    const TNode& above = NodeAt(parent);
    if (row < 0 || column < 0 || column >= ColumnCount || row >= static_cast<int>(above.Shown.size()))
        return {};
    return createIndex(row, column, static_cast<quintptr>(above.Shown[static_cast<std::size_t>(row)]));
}

QModelIndex TDatapointModel::parent(const QModelIndex& index) const
{
    const int above = index.isValid() ? NodeAt(index).Parent : Root;
    if (above <= Root)
        return {};
    return createIndex(m_nodes[static_cast<std::size_t>(above)].ShownRow, 0, static_cast<quintptr>(above));
}

int TDatapointModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(NodeAt(parent).Shown.size());
}

int TDatapointModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

QVariant TDatapointModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    const TDatapoint* datapoint = DatapointAt(index);
    if (!datapoint)
        return index.column() == ColumnAddress ? NodeAt(index).Title : QVariant();
    switch (index.column()) {
    case ColumnAddress:
        return datapoint->Address;
    case ColumnName:
        return datapoint->Name;
    default:
        return TypeText(m_store.EisNumber(*datapoint));
    }
}

QVariant TDatapointModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    const QStringList titles{QStringLiteral("Adresse"), QStringLiteral("Name"), QStringLiteral("Typ")};
    return titles.value(section);
}

Qt::ItemFlags TDatapointModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags usual = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return DatapointAt(index) ? usual | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren : usual;
}

QStringList TDatapointModel::mimeTypes() const
{
    return std::unique_ptr<QMimeData>(TPropertyDragObject().ToMimeData())->formats();
}

QMimeData* TDatapointModel::mimeData(const QModelIndexList& indexes) const
{
    for (const QModelIndex& index : indexes) {
        const TDatapoint* datapoint = DatapointAt(index);
        if (!datapoint)
            continue;
        const int eisNumber = m_store.EisNumber(*datapoint);
        TPropertyDragObject object;
        object.Add(QStringLiteral("name"), DatapointIdentifier(*datapoint));
        object.Add(QStringLiteral("label"), datapoint->Name);
        object.Add(QStringLiteral("type"), eisNumber == 0 ? QString() : QString::number(eisNumber));
        return object.ToMimeData();
    }
    return nullptr;
}
