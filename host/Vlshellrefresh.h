#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <vector>

// Tells the shell tree when the folders that it knows differ from the disk. It watches these folders itself, and takes
// notice of what else is heard of. Many changes are told at once, and the less often the longer the tree needs for
// them. Belongs to the view.
class TShellRefresh : public QObject
{
    Q_OBJECT

public:
    explicit TShellRefresh(QObject* parent);

    void SetOn(bool on);
    bool IsOn() const { return m_on; }
    // The root, which may vanish and come back.
    void SetRoot(const QByteArray& root);
    // From now on these folders are watched and no others.
    void Follow(const std::vector<QByteArray>& folders);
    // The same, for one more.
    void Add(const QByteArray& folder);
    // Something in the folder of this item is not as it was.
    void HandleChanged(const QByteArray& path);

Q_SIGNALS:
    // These folders may differ from the disk. The receiver compares them at once and says what to follow now.
    void Due(const QSet<QByteArray>& folders);

private:
    void HandleDirectory(const QString& path);
    void HandleTimer();
    void HandleRootTimer();
    void Mark(const QByteArray& folder);
    bool IsRootGone() const;

    QFileSystemWatcher m_watcher;
    QTimer m_timer;
    QTimer m_rootTimer; // asks whether the root has come back
    QSet<QByteArray> m_dirty;
    QByteArray m_root;
    bool m_on = false;
    bool m_rootGone = false;
};
