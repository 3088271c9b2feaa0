#include "DatapointView.h"

#include "DatapointModel.h"

#include <QHeaderView>
#include <QScopedValueRollback>

#include <utility>

namespace
{

constexpr int MostOpened = 500;
constexpr int AddressWidth = 180;
constexpr int NameWidth = 260;

} // namespace

TDatapointView::TDatapointView(TDatapointModel& model, QWidget* parent) : QTreeView(parent), m_model(model)
{
    setModel(&model);
    setUniformRowHeights(true);
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setContextMenuPolicy(Qt::NoContextMenu);
    header()->resizeSection(TDatapointModel::ColumnAddress, AddressWidth);
    header()->resizeSection(TDatapointModel::ColumnName, NameWidth);
    connect(this, &QTreeView::expanded, this, &TDatapointView::NoteOpened);
    connect(this, &QTreeView::collapsed, this, &TDatapointView::NoteClosed);
    connect(&model, &QAbstractItemModel::modelReset, this, &TDatapointView::Forget);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &TDatapointView::NoteSelection);
}

void TDatapointView::Filter(const QString& text)
{
    const bool wasFiltered = m_model.IsFiltered();
    const QScopedValueRollback filtering(m_filtering, true);
    m_model.SetFilter(text);
    if (!wasFiltered)
        m_unfiltered = m_open;
    if (!m_model.IsFiltered()) {
        m_open = m_unfiltered;
        m_closed.clear();
    }
    OpenGroups();
    const QModelIndex selected = m_model.IndexOf(m_selected);
    if (selected.isValid())
        setCurrentIndex(selected);
}

void TDatapointView::OpenGroups()
{
    const QSet<int> open = m_open;
    for (const int group : open) {
        const QModelIndex index = m_model.IndexOf(group);
        if (index.isValid())
            expand(index);
    }
    if (!m_model.IsFiltered() || m_model.ShownDatapoints() > MostOpened)
        return;
    for (const int group : m_model.ShownGroups()) {
        if (!m_closed.contains(group))
            expand(m_model.IndexOf(group));
    }
}

// The nodes are others after the datapoints have changed.
void TDatapointView::Forget()
{
    if (m_filtering)
        return;
    m_open.clear();
    m_unfiltered.clear();
    m_closed.clear();
    m_selected = -1;
}

void TDatapointView::NoteOpened(const QModelIndex& group)
{
    m_open.insert(m_model.NodeOf(group));
    m_closed.remove(m_model.NodeOf(group));
}

void TDatapointView::NoteClosed(const QModelIndex& group)
{
    m_open.remove(m_model.NodeOf(group));
    if (m_model.IsFiltered())
        m_closed.insert(m_model.NodeOf(group));
}

void TDatapointView::NoteSelection()
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    if (!m_filtering && !rows.isEmpty())
        m_selected = m_model.NodeOf(rows.first());
}
