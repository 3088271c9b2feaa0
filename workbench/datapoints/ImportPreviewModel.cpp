#include "ImportPreviewModel.h"

#include "DatapointKey.h"

#include <QSet>

void TImportPreviewModel::Append(const QList<TDatapoint>& datapoints, const QString& change)
{
    for (const TDatapoint& datapoint : datapoints)
        m_rows.append({.Datapoint = datapoint, .Change = change});
}

void TImportPreviewModel::Show(TDatapointKind kind, const TImportResult& result, const TImportChanges& changes)
{
    beginResetModel();
    m_rows.clear();
    Append(changes.Gone, QStringLiteral("entfällt"));
    Append(changes.Added, QStringLiteral("neu"));
    Append(changes.Renamed, QStringLiteral("umbenannt"));
    Append(changes.Ignored, QStringLiteral("gilt aus einer anderen Datei"));
    QSet<QString> shown;
    for (const TRow& row : std::as_const(m_rows))
        shown.insert(DatapointKey(kind, row.Datapoint));
    for (const TDatapoint& datapoint : result.Datapoints) {
        if (!shown.contains(DatapointKey(kind, datapoint)))
            m_rows.append({.Datapoint = datapoint, .Change = {}});
    }
    endResetModel();
}

int TImportPreviewModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TImportPreviewModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(ColumnCount);
}

QVariant TImportPreviewModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole || !index.isValid())
        return {};
    const TRow& row = m_rows[index.row()];
    switch (index.column()) {
    case ColumnAddress:
        return DatapointIdentifier(row.Datapoint);
    case ColumnName:
        return row.Datapoint.Name;
    case ColumnType:
        return row.Datapoint.EisNumber == 0 ? QString() : QStringLiteral("EIS %1").arg(row.Datapoint.EisNumber);
    default:
        return row.Change;
    }
}

QVariant TImportPreviewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return {};
    const QStringList titles{QStringLiteral("Adresse"), QStringLiteral("Name"), QStringLiteral("Typ"),
                             QStringLiteral("Änderung")};
    return titles.value(section);
}
