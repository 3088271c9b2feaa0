#include "WatchFixture.h"

#include <QFile>

namespace
{

constexpr int Processes = 4;

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

    std::vector<std::unique_ptr<QProcess>> Storm(int operations) const
    {
        std::vector<std::unique_ptr<QProcess>> programs;
        for (int number = 0; number < Processes; ++number) {
            programs.push_back(std::make_unique<QProcess>());
            programs.back()->setProgram(QStringLiteral(VELMORA_STORM));
            programs.back()->setArguments(
                {QString::fromStdString(m_root), QString::number(number + 1), QString::number(operations / Processes)});
        }
        return programs;
    }
};

} // namespace

TEST_F(StormTest, FourProcessesLeaveACopyThatEqualsTheTree)
{
    Start();
    auto programs = Storm(Operations());
    RunAll(programs);
    EXPECT_EQ(Differences(), "");
    EXPECT_GT(m_changes.size(), static_cast<size_t>(Operations() / 10));
}

TEST_F(StormTest, NotificationsThatWereLostAreMadeUpForByAComparison)
{
    Start();
    auto programs = Storm(Operations() * 2);
    // Nobody reads meanwhile, so that the system's queue overflows.
    for (const auto& program : programs) {
        program->setWorkingDirectory(QString::fromStdString(m_root));
        program->start();
    }
    for (const auto& program : programs)
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
    auto programs = Storm(Operations());
    RunAll(programs);
    EXPECT_EQ(Differences(), "");
}
