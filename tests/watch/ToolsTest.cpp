#include "ToolRun.h"
#include "WatchFixture.h"

#include <QStandardPaths>

namespace
{

class ToolsTest : public FileWatchTest, public testing::WithParamInterface<TToolRun>
{};

} // namespace

TEST_P(ToolsTest, ACopyFollows)
{
    ASSERT_FALSE(QStandardPaths::findExecutable(QLatin1String(GetParam().Program)).isEmpty());
    const QString root = QString::fromStdString(m_root);
    ASSERT_TRUE(RunScript(root, GetParam().Prepare));
    Start();
    ASSERT_TRUE(RunScript(root, GetParam().Run));
    EXPECT_EQ(Differences(), "");
    EXPECT_GE(m_changes.size(), 50U);
}

INSTANTIATE_TEST_SUITE_P(Each, ToolsTest, testing::ValuesIn(ToolRuns),
                         [](const auto& run) { return std::string(run.param.Name); });
