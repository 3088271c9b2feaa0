#pragma once

#include "DatapointStore.h"

#include <QAbstractItemModel>
#include <QHash>

#include <optional>
#include <vector>

// The datapoints of a store as a tree of their groups, with a filter that leaves the groups above a match visible.
// Columns: address (for a group its name), name, type. Follows the store by itself: it has no rows that the store does
// not have any more. Belongs to a browser; the only model of its store, which must live as long as the model is used.
class TDatapointModel final : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum TColumn : int
    {
        ColumnAddress,
        ColumnName,
        ColumnType,
        ColumnCount,
    };

    TDatapointModel(TDatapointStore& store, QObject* parent);
    ~TDatapointModel() override;

    // Shows the datapoints whose name or address contains `text`, without regard to case; all for an empty text.
    void SetFilter(const QString& text);
    bool IsFiltered() const { return !m_filter.isEmpty(); }
    int ShownDatapoints() const { return m_shownDatapoints; }

    // Every row has a node, whose number the filter does not change; a change of the store does.
    int NodeOf(const QModelIndex& index) const { return static_cast<int>(index.internalId()); }
    // Not valid for a node that is not shown, and for -1.
    QModelIndex IndexOf(int node) const;
    std::vector<int> ShownGroups() const;

    // Null for a group.
    const TDatapoint* DatapointAt(const QModelIndex& index) const;
    // The type of that datapoint was decided.
    void NoteType(const QModelIndex& index);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }

private:
    struct TNode
    {
        int Parent = -1;
        int ShownRow = 0;
        qsizetype Datapoint = -1; // -1 for a group
        QString Title;            // of a group
        QString Searched;         // folded name and address
        std::vector<int> Children;
        std::vector<int> Shown;
    };

    const TNode& NodeAt(const QModelIndex& index) const;
    int AppendNode(int parent, TNode node);
    int GroupNode(QHash<QStringList, int>& groups, const QStringList& path);
    void Clear();
    void Build();
    bool ShowMatches(int node, const QString& folded);

    const TDatapointStore& m_store;
    std::vector<TNode> m_nodes; // the first is the invisible root
    QString m_filter;
    int m_shownDatapoints = 0;
};
