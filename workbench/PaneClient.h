#pragma once

#include <QObject>
#include <QString>

class QWidget;

// The components of all panes.
class IPaneComponents
{
public:
    // The component of the pane `id` of the layout; null while it has none.
    virtual QWidget* ComponentOf(const QString& id) const = 0;

protected:
    ~IPaneComponents() = default;
};

// A component that reads from the component of another pane. It is told before it gets its first command, and again
// each time a component has come or before one goes, in whatever order the panes are made and closed.
class IPaneClient
{
public:
    // `panes` outlives every component.
    virtual void FollowPanes(const IPaneComponents& panes) = 0;

protected:
    ~IPaneClient() = default;
};

Q_DECLARE_INTERFACE(IPaneClient, "Velmora.PaneClient/1")
