#include "Vlshellrefresh.h"

#include "Vlerrors.h"
#include "Vlshellitems.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace
{

constexpr int ShortestPause = 150; // milliseconds
constexpr int LongestPause = 2000;
constexpr int RootPause = 1000;
// Of the time, at most one part in so many goes to comparing folders.
constexpr int Share = 5;

} // namespace

TShellRefresh::TShellRefresh(QObject* parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(ShortestPause);
    m_rootTimer.setInterval(RootPause);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &TShellRefresh::HandleDirectory);
    connect(&m_timer, &QTimer::timeout, this, &TShellRefresh::HandleTimer);
    connect(&m_rootTimer, &QTimer::timeout, this, &TShellRefresh::HandleRootTimer);
}

void TShellRefresh::SetOn(bool on)
{
    m_on = on;
    if (on) {
        m_rootTimer.start();
        return;
    }
    m_rootTimer.stop();
    m_timer.stop();
    m_dirty.clear();
    Follow({});
}

void TShellRefresh::SetRoot(const QByteArray& root)
{
    m_root = root;
    m_rootGone = IsRootGone();
    m_dirty.clear();
    Follow({});
}

void TShellRefresh::Follow(const std::vector<QByteArray>& folders)
{
    QSet<QString> wanted;
    if (m_on) {
        for (const QByteArray& folder : folders) {
            if (IsDecodableName(folder))
                wanted.insert(QFile::decodeName(folder));
        }
    }
    QStringList unwanted;
    for (const QString& folder : m_watcher.directories()) {
        if (!wanted.remove(folder))
            unwanted.append(folder);
    }
    if (!unwanted.isEmpty())
        m_watcher.removePaths(unwanted);
    if (wanted.isEmpty())
        return;
    // What happened to them before they were watched is seen by comparing once more.
    const QStringList paths(wanted.begin(), wanted.end());
    const QStringList refused = m_watcher.addPaths(paths);
    for (const QString& folder : paths) {
        if (!refused.contains(folder))
            Mark(QFile::encodeName(folder));
    }
}

void TShellRefresh::Add(const QByteArray& folder)
{
    if (m_on && IsDecodableName(folder))
        m_watcher.addPath(QFile::decodeName(folder));
}

void TShellRefresh::HandleChanged(const QByteArray& path)
{
    Mark(path.left(std::max<qsizetype>(path.lastIndexOf('/'), 1)));
}

void TShellRefresh::HandleDirectory(const QString& path)
{
    Mark(QFile::encodeName(path));
}

void TShellRefresh::Mark(const QByteArray& folder)
{
    if (!m_on)
        return;
    m_dirty.insert(folder);
    if (!m_timer.isActive())
        m_timer.start();
}

void TShellRefresh::HandleTimer()
{
    Guarded([this] {
        QElapsedTimer cost;
        cost.start();
        Q_EMIT Due(std::exchange(m_dirty, {}));
        m_timer.setInterval(std::clamp(Share * static_cast<int>(cost.elapsed()), ShortestPause, LongestPause));
    });
}

// Nobody tells when a folder comes back that was watched itself.
void TShellRefresh::HandleRootTimer()
{
    const bool gone = IsRootGone();
    if (gone != m_rootGone)
        Mark(m_root);
    m_rootGone = gone;
}

bool TShellRefresh::IsRootGone() const
{
    return !m_root.isEmpty() && !QFileInfo(QFile::decodeName(m_root)).isDir();
}
