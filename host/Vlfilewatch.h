#pragma once

#include "Vlexport.h"
#include "Vlshellchange.h"

#include <QObject>

#include <chrono>
#include <memory>

class QSocketNotifier;
class QTimer;
class TChangeTracker;

// Tells every change of files and folders below one root folder, in an order that a copy of the tree can follow: who
// applies the changes one by one to a copy of the tree as it was when the root was set, and fetches the content of
// every created or updated item from where that item is in the end, has the same tree.
//
// An item that is written is told once it is closed or rests for a moment, under the name that it has by then: a file
// saved through a temporary name is one update. Symbolic links are items and are never followed; FIFOs, sockets and
// devices are not told. Where the system cannot notify (a network file system, too few watches), the tree is compared
// with its last known state from time to time.
class VLHOST_API TFileWatch : public QObject
{
    Q_OBJECT

public:
    explicit TFileWatch(QObject* parent = nullptr);
    ~TFileWatch() override;

    // Watches the folder `root` from now on; an empty path ends watching. What was pending for the former root is not
    // told any more: call Drain first. A root that does not exist is waited for.
    void SetRoot(const QByteArray& root);
    QByteArray Root() const;

    // The one file (full path, below the root) that is never told of. Set it before the root.
    void SetIgnoredFile(const QByteArray& path);

    // At most so many folders are watched, the others are compared from time to time; 0 (the start) leaves it to the
    // system. Takes effect with the next root.
    void SetMaxWatches(int count);

    // Compares only, as on a network file system. Takes effect with the next root.
    void SetScanOnly(bool on);
    // The pause between two comparisons in milliseconds (2000 at the start); a comparison that takes long is repeated
    // less often.
    void SetScanInterval(int milliseconds);
    // True while at least a part of the tree is compared instead of watched.
    bool IsScanning() const;

    // Tells now all that has happened up to this call.
    void Drain();

Q_SIGNALS:
    void Changed(const TShellChange& change);
    // From now on some folders are compared instead of watched; `reason` is a German sentence for the user. Once for
    // each root.
    void Limited(const QString& reason);

private:
    void HandleReadable();
    void HandleSettle();
    void HandleHousekeeping();
    void Continue();
    void Deliver(std::chrono::milliseconds budget);

    std::unique_ptr<TChangeTracker> m_tracker;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QTimer* m_settleTimer;
    QTimer* m_housekeepingTimer;
    QByteArray m_ignoredFile;
    int m_maxWatches = 0;
    int m_scanInterval = 2000;
    bool m_isScanOnly = false;
    bool m_isLimitTold = false;
};
