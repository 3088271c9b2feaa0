#include "WatchFixture.h"

#include <QElapsedTimer>

namespace
{

constexpr int Processes = 4;

// The full storms take minutes; by default they are a tenth of that.
int Operations()
{
    return qEnvironmentVariableIsSet("VELMORA_LONG_TESTS") ? 200'000 : 20'000;
}

class StormTest : public FileWatchTest
{
protected:
    std::vector<std::unique_ptr<QProcess>> Storm(int operations) const
    {
        std::vector<std::unique_ptr<QProcess>> programs;
        for (int number = 0; number < Processes; ++number) {
            programs.push_back(std::make_unique<QProcess>());
            programs.back()->setProgram(QStringLiteral(VELMORA_STORM));
            programs.back()->setArguments(
                {QString::fromStdString(Root), QString::number(number + 1), QString::number(operations / Processes)});
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
    EXPECT_GT(Changes.size(), static_cast<size_t>(Operations() / 10));
}

TEST_F(StormTest, NotificationsThatWereLostAreMadeUpForByAComparison)
{
    Start();
    auto programs = Storm(Operations() * 2);
    // Nobody reads meanwhile, so that the system's queue overflows.
    for (const auto& program : programs) {
        program->setWorkingDirectory(QString::fromStdString(Root));
        program->start();
    }
    for (const auto& program : programs)
        ASSERT_TRUE(program->waitForFinished(-1));
    EXPECT_EQ(Differences(), "");
}
