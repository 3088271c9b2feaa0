#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class TProject;

// A pane as a layout describes it: which component it holds and what the component is told first.
struct TPaneSetup
{
    QString Id;        // names the pane in batch mode and in what the window remembers
    QString Title;     // what the user reads
    QString Class;     // a ProgID or a class name
    QString Command;   // the command text of the component; empty for none
    QString Side = {}; // "right" for a pane that stands beside the others; empty for the rest
    // "command" for a component that gets its command again when another project is open; empty for one that follows
    // the project by itself
    QString OnProject = {};
    // "start" for a component that works from the start, also behind a tab; empty for one that is made when it is seen
    QString Load = {};

    bool operator==(const TPaneSetup&) const = default;
};

using TLayout = QList<TPaneSetup>;

// The identifier of the workbench's own message pane, which a layout must not use.
QString MessagePaneId();

// The layout that `json` describes. Throws TUserError naming `fileName` and the reason when it is damaged.
TLayout ParseLayout(const QByteArray& json, const QString& fileName);

// The layout that comes with the workbench.
TLayout InstallationLayout();

// The layout file that a project may have, whether it is there or not.
QString ProjectLayoutFile(const TProject& project);

// The project's own layout, or the installation's when there is no project, no layout file, or a damaged one; the last
// is told the user.
TLayout LayoutFor(const TProject* project);
