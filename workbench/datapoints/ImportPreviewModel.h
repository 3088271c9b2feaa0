#pragma once

#include "DatapointStore.h"

#include <QAbstractTableModel>

// What an import holds and changes, a row for each datapoint, the changes first. Belongs to the import's dialog.
class TImportPreviewModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum TColumn : int
    {
        ColumnAddress,
        ColumnName,
        ColumnType,
        ColumnChange,
        ColumnCount,
    };

    using QAbstractTableModel::QAbstractTableModel;

    // The datapoints of `result`, of the given kind, and what else the import changes.
    void Show(TDatapointKind kind, const TImportResult& result, const TImportChanges& changes);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct TRow
    {
        TDatapoint Datapoint;
        QString Change;
    };

    void Append(const QList<TDatapoint>& datapoints, const QString& change);

    QList<TRow> m_rows;
};
