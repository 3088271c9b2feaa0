#include "FileTree.h"

#include "ChildProcess.h"
#include "Vlerrors.h"

#include <sys/stat.h>

namespace
{

class ShellTreeLogFailure : public TFileTree
{
protected:
    ShellTreeLogFailure() { FollowAndLog(); }

    QString Log() const { return LogOf(m_project.Root()); }
};

} // namespace

TEST_F(ShellTreeLogFailure, IsOneMessageForManyLines)
{
    ASSERT_TRUE(QDir().mkdir(Log()));
    for (const char* file : {"a", "b", "c"})
        Write(At(file));
    Settle();
    EXPECT_EQ(m_messages.Errors,
              QStringList{
                  QStringLiteral("\"%1\" kann nicht fortgeschrieben werden (Dort steht ein Verzeichnis)").arg(Log())});
}

TEST_F(ShellTreeLogFailure, EndsWithTheNextChangeThatCanBeWritten)
{
    ASSERT_TRUE(QDir().mkdir(Log()));
    Write(At("a"));
    Settle();
    ASSERT_TRUE(QDir().rmdir(Log()));
    Write(At("b"));
    EXPECT_EQ(NewLines(), QStringList{QStringLiteral("PUT \"b\"")});
    EXPECT_EQ(m_messages.Errors.size(), 1);
}

TEST_F(ShellTreeLogFailure, IsToldAgainAfterItWorkedInBetween)
{
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(QDir().mkdir(Log()));
        Write(At("a" + QByteArray::number(i)));
        Settle();
        ASSERT_TRUE(QDir().rmdir(Log()));
        Write(At("b" + QByteArray::number(i)));
        Settle();
        ASSERT_TRUE(QFile::remove(Log()));
        Settle();
    }
    EXPECT_EQ(m_messages.Errors.size(), 2);
}

TEST_F(ShellTreeLogFailure, ReachesWhoCallsTheHandlerAsAnError)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(Log()).constData(), 0600), 0);
    EXPECT_THROW(m_component->HandleShellChange(&Tree(), At("a"), {}, scItemCreated), TFileError);
    EXPECT_NO_THROW(m_component->HandleShellChange(&Tree(), At("b"), {}, scItemCreated));
}

TEST_F(ShellTreeLogFailure, ReachesTheGeneralErrorHandlerAndNotTheEventLoop)
{
    int errors = 0;
    const TErrorHandler previous = SetErrorHandler([&](const std::exception_ptr&) { ++errors; });
    ASSERT_TRUE(QDir().mkdir(Log()));
    Write(At("a"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return errors > 0; }));
    Write(At("b"));
    QTest::qWait(200);
    SetErrorHandler(previous);
    EXPECT_EQ(errors, 1);
}

TEST_F(ShellTreeLogFailure, AMediumThatCannotBeWrittenIsOneErrorAndTheLogStays)
{
    WriteAll(Log(), "PUT \"früher\"\r\n");
    const QByteArray root = QFile::encodeName(m_project.Root());
    ASSERT_EQ(chmod(QFile::encodeName(Log()).constData(), 0444), 0);
    ASSERT_EQ(chmod(root.constData(), 0555), 0);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        QStringList outcomes;
        for (const char* file : {"a", "b", "c"})
            outcomes += OutcomeOf([&] { m_component->HandleShellChange(&Tree(), At(file), {}, scItemCreated); });
        return outcomes.join(u'|');
    });
    ASSERT_EQ(chmod(root.constData(), 0755), 0);
    EXPECT_EQ(outcome,
              QStringLiteral("\"%1\" kann nicht fortgeschrieben werden (Zugriff verweigert)|ok|ok").arg(Log()));
    EXPECT_EQ(ReadAll(Log()), "PUT \"früher\"\r\n");
}

TEST_F(ShellTreeLogFailure, ARootThatVanishesAndComesBackIsToldAsItsDifference)
{
    Write(At("bleibt"));
    Write(At("geht"));
    Settle();
    const QString aside = m_project.Root() + QStringLiteral(".weg");
    Rename(QFile::encodeName(m_project.Root()), QFile::encodeName(aside));
    Settle();
    ASSERT_TRUE(QFile::remove(aside + QStringLiteral("/geht")));
    ASSERT_TRUE(QFile::remove(LogOf(aside)));
    Rename(QFile::encodeName(aside), QFile::encodeName(m_project.Root()));
    EXPECT_TRUE(QTest::qWaitFor([this] {
        Settle();
        return QFile::exists(Log()) && ReadAll(Log()).contains("DEL \"" + At("geht") + "\"\r\n");
    }));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}
