#pragma once

#include "DatapointStore.h"

#include <QAbstractItemModel>

#include <optional>
#include <vector>

// The datapoints of a store as a tree of their groups, with a filter that leaves the groups above a match visible.
// Columns: address (for a group its name), name, type. Belongs to a browser; the store must outlive it.
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

    TDatapointModel(const TDatapointStore& store, QObject* parent);
    ~TDatapointModel() override;

    // The store has been loaded anew.
    void Rebuild();
    // Shows the datapoints whose name or address contains `text`, without regard to case; all for an empty text.
    void SetFilter(const QString& text);
    int ShownDatapoints() const { return m_shownDatapoints; }

    // Null for a group.
    const TDatapoint* DatapointAt(const QModelIndex& index) const;
    // The types of some datapoints were decided.
    void NoteTypes();

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
    bool ShowMatches(int node, const QString& folded);

    const TDatapointStore& m_store;
    std::vector<TNode> m_nodes; // the first is the invisible root
    QString m_filter;
    int m_shownDatapoints = 0;
};
