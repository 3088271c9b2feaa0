#include "RecentProjects.h"

#include <QSettings>

namespace
{

const auto Key = QStringLiteral("projects/recent");

} // namespace

QStringList TRecentProjects::List() const
{
    return QSettings().value(Key).toStringList();
}

void TRecentProjects::Add(const QString& directory)
{
    QStringList directories = List();
    directories.removeAll(directory);
    directories.prepend(directory);
    Store(directories.first(qMin(directories.size(), MaxCount)));
}

void TRecentProjects::Remove(const QString& directory)
{
    QStringList directories = List();
    directories.removeAll(directory);
    Store(directories);
}

void TRecentProjects::Store(const QStringList& directories)
{
    QSettings().setValue(Key, directories);
}
