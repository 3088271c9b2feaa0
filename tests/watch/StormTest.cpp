#include "StormRun.h"
#include "WatchFixture.h"

#include <QFile>
#include <QProcess>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace
{

// The system's limit on waiting notifications, for every watch that begins while this lives.
class TQueueLimit
{
public:
    explicit TQueueLimit(const QByteArray& limit) : m_file(QStringLiteral("/proc/sys/fs/inotify/max_queued_events"))
    {
        if (m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
            m_former = m_file.readAll();
            Set(limit);
        }
    }
    ~TQueueLimit()
    {
        if (IsSet())
            Set(m_former);
    }
    Q_DISABLE_COPY(TQueueLimit)

    bool IsSet() const { return m_file.isOpen(); }

private:
    void Set(const QByteArray& limit)
    {
        m_file.seek(0);
        m_file.write(limit);
    }

    QFile m_file;
    QByteArray m_former;
};

// Keeps all processors busy while it lives, so that everything happens late and in between.
class TBusyMachine
{
public:
    TBusyMachine()
    {
        const unsigned count = 2 * std::max(1U, std::thread::hardware_concurrency());
        for (unsigned number = 0; number < count; ++number) {
            m_threads.emplace_back([this] {
                while (!m_isDone)
                    ++m_turns;
            });
        }
    }
    ~TBusyMachine()
    {
        m_isDone = true;
        for (std::thread& thread : m_threads)
            thread.join();
    }
    Q_DISABLE_COPY(TBusyMachine)

private:
    std::atomic<bool> m_isDone = false;
    std::atomic<unsigned> m_turns = 0;
    std::vector<std::thread> m_threads;
};

class StormTest : public FileWatchTest
{
protected:
    static int Operations() { return AreStormsLong() ? 200'000 : 20'000; }

    // Not started before the root is watched.
    auto Storm(int operations) const { return StartStorm(QString::fromStdString(m_root), operations); }
};

} // namespace

TEST_F(StormTest, FourProcessesLeaveACopyThatEqualsTheTree)
{
    Start();
    EXPECT_TRUE(WaitForAll(Storm(Operations())));
    EXPECT_EQ(Differences(), "");
    EXPECT_GT(m_changes.size(), static_cast<size_t>(Operations() / 10));
}

TEST_F(StormTest, ABusyMachineMakesNoDifference)
{
    Start();
    {
        const TBusyMachine machine;
        EXPECT_TRUE(WaitForAll(Storm(Operations() / 2)));
    }
    EXPECT_EQ(Differences(), "");
}

TEST_F(StormTest, NotificationsThatWereLostAreMadeUpForByAComparison)
{
    Start();
    // Nobody reads meanwhile, so that the system's queue overflows.
    for (const auto& program : Storm(Operations()))
        ASSERT_TRUE(program->waitForFinished(-1));
    EXPECT_EQ(Differences(), "");
}

TEST_F(StormTest, AShortQueueLosesNothingInTheEnd)
{
    {
        const TQueueLimit limit("16");
        if (!limit.IsSet())
            GTEST_SKIP() << "Only root sets the system's limits.";
        Start();
    }
    EXPECT_TRUE(WaitForAll(Storm(Operations())));
    EXPECT_EQ(Differences(), "");
}
