#pragma once

#include <QStringList>

// The projects that were opened last, the latest first, at most ten. Kept in the user's settings.
class TRecentProjects
{
public:
    static constexpr qsizetype MaxCount = 10;

    // Project directories.
    QStringList List() const;
    void Add(const QString& directory);
    void Remove(const QString& directory);

private:
    void Store(const QStringList& directories);
};
