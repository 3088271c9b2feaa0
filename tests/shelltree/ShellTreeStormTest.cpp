#include "FileTree.h"
#include "Replayer.h"
#include "StormRun.h"
#include "ToolRun.h"
#include "Vlcodepage.h"

#include <QProcess>
#include <QStandardPaths>

namespace
{

// A copy of the project that is made before anything happens, and follows the log alone.
class TShellTreeStorm : public TFileTree
{
protected:
    void Begin()
    {
        FollowAndLog();
        CopyTree(m_project.Root().toStdString(), Copy());
    }
    std::string Copy() const { return m_copies.filePath(QStringLiteral("kopie")).toStdString(); }

    std::string Differences()
    {
        Tree().DrainChanges();
        TReplayer replayer(m_project.Root().toStdString(), Copy());
        replayer.ApplyLog(FromCodePage(ReadAll(LogOf(m_project.Root()))).toStdString());
        replayer.Finish(LogOf(m_project.Root()).toStdString());
        return replayer.Mistakes().empty() ? std::string() : replayer.Summary();
    }

private:
    QTemporaryDir m_copies;
};

class TShellTreeTools : public TShellTreeStorm, public testing::WithParamInterface<TToolRun>
{};

} // namespace

TEST_F(TShellTreeStorm, ACopyThatFollowsTheLogEqualsTheProject)
{
    Begin();
    const int operations = AreStormsLong() ? 200'000 : 20'000;
    ASSERT_TRUE(WaitForAll(StartStorm(m_project.Root(), operations)));
    EXPECT_EQ(Differences(), "");
    EXPECT_EQ(m_messages.Errors, QStringList());
}

TEST_F(TShellTreeStorm, ACopyFollowsAlsoWhereNotificationsWereLost)
{
    Begin();
    for (const auto& program : StartStorm(m_project.Root(), 20'000))
        ASSERT_TRUE(program->waitForFinished(-1));
    EXPECT_EQ(Differences(), "");
}

TEST_P(TShellTreeTools, ACopyThatFollowsTheLogEqualsTheProject)
{
    ASSERT_FALSE(QStandardPaths::findExecutable(QLatin1String(GetParam().Program)).isEmpty());
    ASSERT_TRUE(RunScript(m_project.Root(), GetParam().Prepare));
    Begin();
    ASSERT_TRUE(RunScript(m_project.Root(), GetParam().Run));
    EXPECT_EQ(Differences(), "");
    EXPECT_GE(ReadAll(LogOf(m_project.Root())).count('\n'), 50);
    EXPECT_EQ(m_messages.Errors, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Each, TShellTreeTools, testing::ValuesIn(ToolRuns),
                         [](const auto& run) { return std::string(run.param.Name); });
