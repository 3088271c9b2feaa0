#include "Vlfilewatch.h"

#include "Vlchangetracker.h"
#include "Vlerrors.h"

#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>

#include <poll.h>

namespace
{

using namespace std::chrono_literals;

// The user interface waits no longer than this for a burst of changes to be worked on.
constexpr auto Slice = 20ms;
constexpr int SettlePause = 40; // milliseconds
// Comparing takes no more than this part of the time.
constexpr int ComparingShare = 20;
// So many passes end a drain also where others never stop writing.
constexpr int MaxDrainPasses = 20;
constexpr auto DrainSlice = 2s;

} // namespace

TFileWatch::TFileWatch(QObject* parent)
    : QObject(parent), m_settleTimer(new QTimer(this)), m_housekeepingTimer(new QTimer(this))
{
    m_settleTimer->setSingleShot(true);
    m_housekeepingTimer->setSingleShot(true);
    connect(m_settleTimer, &QTimer::timeout, this, &TFileWatch::HandleSettle);
    connect(m_housekeepingTimer, &QTimer::timeout, this, &TFileWatch::HandleHousekeeping);
}

TFileWatch::~TFileWatch() = default;

void TFileWatch::SetRoot(const QByteArray& root)
{
    m_notifier.reset();
    m_settleTimer->stop();
    m_housekeepingTimer->stop();
    m_tracker.reset();
    m_isLimitTold = false;
    if (root.isEmpty())
        return;
    QByteArray path = root;
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    m_tracker = std::make_unique<TChangeTracker>(TChangeTracker::TSettings{.Root = path.toStdString(),
                                                                           .IgnoredFile = m_ignoredFile.toStdString(),
                                                                           .MaxWatches = m_maxWatches,
                                                                           .IsScanOnly = m_isScanOnly});
    if (m_tracker->Descriptor() >= 0) {
        m_notifier = std::make_unique<QSocketNotifier>(m_tracker->Descriptor(), QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, &TFileWatch::HandleReadable);
    }
    m_housekeepingTimer->start(m_scanInterval);
    m_tracker->Process(Slice);
    Continue();
}

QByteArray TFileWatch::Root() const
{
    return m_tracker ? QByteArray::fromStdString(m_tracker->Root()) : QByteArray();
}

void TFileWatch::SetIgnoredFile(const QByteArray& path)
{
    m_ignoredFile = path;
}

void TFileWatch::SetMaxWatches(int count)
{
    m_maxWatches = count;
}

void TFileWatch::SetScanOnly(bool on)
{
    m_isScanOnly = on;
}

void TFileWatch::SetScanInterval(int milliseconds)
{
    m_scanInterval = milliseconds;
    if (m_housekeepingTimer->isActive())
        m_housekeepingTimer->start(milliseconds);
}

bool TFileWatch::IsScanning() const
{
    return m_tracker && m_tracker->IsScanning();
}

void TFileWatch::HandleReadable()
{
    Guarded([this] {
        if (m_tracker && m_tracker->Process(Slice))
            QMetaObject::invokeMethod(this, &TFileWatch::HandleReadable, Qt::QueuedConnection);
        Continue();
    });
}

void TFileWatch::HandleSettle()
{
    Guarded([this] {
        if (m_tracker) {
            m_tracker->Process(Slice);
            m_tracker->Settle(false);
        }
        Continue();
    });
}

void TFileWatch::HandleHousekeeping()
{
    Guarded([this] {
        if (!m_tracker)
            return;
        const auto begin = TChangeTracker::TClock::now();
        m_tracker->Housekeep();
        const auto spent = std::chrono::duration_cast<std::chrono::milliseconds>(TChangeTracker::TClock::now() - begin);
        m_housekeepingTimer->start(std::max(m_scanInterval, static_cast<int>(spent.count()) * ComparingShare));
        Continue();
    });
}

// Tells what is known by now and sees to it that the rest follows.
void TFileWatch::Continue()
{
    if (m_tracker && m_tracker->IsOutstanding() && !m_settleTimer->isActive())
        m_settleTimer->start(SettlePause);
    const QPointer<TFileWatch> self(this);
    Deliver(Slice);
    if (!self || !m_tracker)
        return;
    if (!m_tracker->Changes().empty())
        QMetaObject::invokeMethod(this, &TFileWatch::Continue, Qt::QueuedConnection);
    if (!m_isLimitTold && !m_tracker->LimitReason().empty()) {
        m_isLimitTold = true;
        const std::string_view reason = m_tracker->LimitReason();
        Q_EMIT Limited(QString::fromUtf8(reason.data(), static_cast<qsizetype>(reason.size())));
    }
}

// A listener may do anything: open a message, set another root, destroy the watch.
void TFileWatch::Deliver(std::chrono::milliseconds budget)
{
    const QPointer<TFileWatch> self(this);
    const auto end = TChangeTracker::TClock::now() + budget;
    while (self && m_tracker && !m_tracker->Changes().empty() && TChangeTracker::TClock::now() < end) {
        const TShellChange change = std::move(m_tracker->Changes().front());
        m_tracker->Changes().pop_front();
        Guarded([this, &change] { Q_EMIT Changed(change); });
    }
}

void TFileWatch::Drain()
{
    const QPointer<TFileWatch> self(this);
    for (int pass = 0; m_tracker && pass < MaxDrainPasses; ++pass) {
        m_tracker->Process(DrainSlice);
        if (m_tracker->IsScanning())
            m_tracker->Housekeep();
        m_tracker->Settle(true);
        if (!m_tracker->IsOutstanding())
            break;
    }
    Deliver(24h);
    if (self)
        Continue();
}
