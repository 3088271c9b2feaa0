#include "StormRun.h"
#include "WatchFixture.h"

#include <QFile>

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

class StormTest : public FileWatchTest
{
protected:
    static int Operations() { return AreLong() ? 200'000 : 20'000; }

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
