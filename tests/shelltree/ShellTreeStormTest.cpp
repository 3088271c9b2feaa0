#include "FileTree.h"
#include "Replayer.h"
#include "StormRun.h"
#include "Vlcodepage.h"

#include <QProcess>

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

} // namespace

TEST_F(TShellTreeStorm, ACopyThatFollowsTheLogEqualsTheProject)
{
    Begin();
    const int operations = qEnvironmentVariableIsSet("VELMORA_LONG_TESTS") ? 200'000 : 20'000;
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
