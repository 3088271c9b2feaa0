#pragma once

#include <QSet>
#include <QTreeView>

class TDatapointModel;

// The tree of a browser. Over a change of the filter it keeps what is selected and which groups are open; when the
// filter is taken away, the groups are open that were before. Owned by its browser; the model must outlive it.
class TDatapointView final : public QTreeView
{
    Q_OBJECT

public:
    TDatapointView(TDatapointModel& model, QWidget* parent);

    // Shows what matches. Few matches are all in sight, but for groups that the user closed.
    void Filter(const QString& text);

private:
    void Forget();
    void OpenGroups();
    void NoteOpened(const QModelIndex& group);
    void NoteClosed(const QModelIndex& group);
    void NoteSelection();

    TDatapointModel& m_model;
    QSet<int> m_open;       // groups, by the nodes of the model; also those that the filter hides
    QSet<int> m_unfiltered; // the ones that were open before there was a filter
    QSet<int> m_closed;     // by hand, since there is a filter
    int m_selected = -1;    // comes back when it is shown again
    bool m_filtering = false;
};
