#include "Vlfilereplacer.h"

#include "ChildProcess.h"
#include "TestSupport.h"
#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace
{

const QByteArray OldContent("<alt/>\r\n");
const QByteArray NewContent("<neues dokument=\"1\"/>\r\n");

// A directory with the file "x.xml" that is replaced.
class FileReplacer : public testing::Test
{
protected:
    FileReplacer()
    {
        WriteAll(m_path, OldContent);
        SetMode(m_directory.path(), 0755);
    }
    ~FileReplacer() override { SetMode(m_directory.path(), 0755); }

    static void SetMode(const QString& path, unsigned mode)
    {
        ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0);
    }
    static unsigned Mode(const QString& path)
    {
        struct stat status
        {};
        EXPECT_EQ(stat(QFile::encodeName(path).constData(), &status), 0);
        return status.st_mode & 07777;
    }
    QStringList Names() const
    {
        return QDir(m_directory.path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    }
    QString Refusal(const QString& path) const
    {
        return QStringLiteral("\"%1\" kann nicht geschrieben werden (").arg(path);
    }

    QTemporaryDir m_directory;
    QString m_path = m_directory.filePath(QStringLiteral("x.xml"));
    QStringList m_onlyTheFile{QStringLiteral("x.xml")};
};

} // namespace

TEST_F(FileReplacer, PutsTheNewContentInPlaceOnCommit)
{
    TFileReplacer replacer(m_path);
    replacer.Write("<neues ");
    replacer.Write("dokument=\"1\"/>\r\n");
    EXPECT_EQ(ReadAll(m_path), OldContent);
    replacer.Commit();
    EXPECT_EQ(ReadAll(m_path), NewContent);
    EXPECT_EQ(Names(), m_onlyTheFile);
}

TEST_F(FileReplacer, TakesPackagePaths)
{
    WriteFile(ToPackagePath(m_path), NewContent);
    EXPECT_EQ(ReadAll(m_path), NewContent);
}

TEST_F(FileReplacer, LetsWritersUseItsDevice)
{
    TFileReplacer replacer(m_path);
    EXPECT_EQ(replacer.Device().write(NewContent), NewContent.size());
    replacer.Commit();
    EXPECT_EQ(ReadAll(m_path), NewContent);
}

TEST_F(FileReplacer, MakesAFileThatWasNotThere)
{
    const QString path = m_directory.filePath(QStringLiteral("neu.xml"));
    TFileReplacer replacer(path);
    replacer.Write(NewContent);
    EXPECT_FALSE(QFile::exists(path));
    replacer.Commit();
    EXPECT_EQ(ReadAll(path), NewContent);
}

TEST_F(FileReplacer, ChangesNothingWithoutCommit)
{
    {
        TFileReplacer replacer(m_path);
        replacer.Write(NewContent);
    }
    EXPECT_EQ(ReadAll(m_path), OldContent);
    EXPECT_EQ(Names(), m_onlyTheFile);
}

TEST_F(FileReplacer, KeepsPermissions)
{
    for (const unsigned mode : {0600u, 0640u, 0664u, 0755u}) {
        SetMode(m_path, mode);
        WriteFile(m_path, NewContent);
        EXPECT_EQ(Mode(m_path), mode);
    }
}

TEST_F(FileReplacer, FollowsALink)
{
    const QString link = m_directory.filePath(QStringLiteral("link.xml"));
    ASSERT_EQ(symlink("x.xml", QFile::encodeName(link).constData()), 0);
    WriteFile(link, NewContent);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_FALSE(QFileInfo(m_path).isSymLink());
    EXPECT_EQ(ReadAll(m_path), NewContent);
}

TEST_F(FileReplacer, FollowsAChainOfLinks)
{
    const QString first = m_directory.filePath(QStringLiteral("1.xml"));
    const QString second = m_directory.filePath(QStringLiteral("2.xml"));
    ASSERT_TRUE(QFile::link(m_path, second));
    ASSERT_TRUE(QFile::link(second, first));
    WriteFile(first, NewContent);
    EXPECT_TRUE(QFileInfo(first).isSymLink());
    EXPECT_TRUE(QFileInfo(second).isSymLink());
    EXPECT_EQ(ReadAll(m_path), NewContent);
}

TEST_F(FileReplacer, MakesTheFileThatALinkLeadsTo)
{
    const QString link = m_directory.filePath(QStringLiteral("link.xml"));
    const QString target = m_directory.filePath(QStringLiteral("neu.xml"));
    ASSERT_TRUE(QFile::link(target, link));
    WriteFile(link, NewContent);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(ReadAll(target), NewContent);
}

TEST_F(FileReplacer, LeavesTheOldContentToItsOtherNames)
{
    const QString kept = m_directory.filePath(QStringLiteral("x.xml.unlesbar"));
    ASSERT_EQ(link(QFile::encodeName(m_path).constData(), QFile::encodeName(kept).constData()), 0);
    WriteFile(m_path, NewContent);
    EXPECT_EQ(ReadAll(kept), OldContent);
    EXPECT_EQ(ReadAll(m_path), NewContent);
}

TEST_F(FileReplacer, RefusesADirectory)
{
    EXPECT_EQ(OutcomeOf([this] { TFileReplacer(m_directory.path()); }),
              Refusal(m_directory.path()) + QStringLiteral("Dort steht ein Verzeichnis)"));
}

TEST_F(FileReplacer, RefusesWhatIsNoOrdinaryFile)
{
    const QString fifo = m_directory.filePath(QStringLiteral("fifo"));
    ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0666), 0);
    EXPECT_EQ(OutcomeOf([&] { WriteFile(fifo, NewContent); }),
              Refusal(fifo) + QStringLiteral("Dort steht keine gewöhnliche Datei)"));
    struct stat status
    {};
    ASSERT_EQ(stat(QFile::encodeName(fifo).constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(FileReplacer, RefusesADirectoryThatIsNotThere)
{
    const QString path = m_directory.filePath(QStringLiteral("none/x.xml"));
    EXPECT_TRUE(OutcomeOf([&] { TFileReplacer{path}; }).startsWith(Refusal(path)));
}

TEST_F(FileReplacer, KeepsTheOldFileOnAFullDisk)
{
    const QString outcome = RunInChild([this] {
        LimitFileSize(65536);
        return OutcomeOf([this] { WriteFile(m_path, QByteArray(1 << 20, 'x')); });
    });
    EXPECT_TRUE(outcome.startsWith(Refusal(m_path))) << outcome.toStdString();
    EXPECT_FALSE(outcome.contains(QStringLiteral("Unknown error"))) << outcome.toStdString();
    EXPECT_FALSE(outcome.endsWith(QStringLiteral("()"))) << outcome.toStdString();
    EXPECT_EQ(ReadAll(m_path), OldContent);
    EXPECT_EQ(Names(), m_onlyTheFile);
}

TEST_F(FileReplacer, ShowsAFullDiskInCommitAtTheLatest)
{
    const QString outcome = RunInChild([this] {
        LimitFileSize(100);
        TFileReplacer replacer(m_path);
        const bool taken = replacer.Device().write(QByteArray(1000, 'x')) == 1000;
        return OutcomeOf([&] { replacer.Commit(); }) + (taken ? QStringLiteral(" taken") : QString());
    });
    EXPECT_TRUE(outcome.startsWith(Refusal(m_path))) << outcome.toStdString();
    EXPECT_FALSE(outcome.contains(QStringLiteral("Unknown error"))) << outcome.toStdString();
    EXPECT_FALSE(outcome.contains(QStringLiteral("()"))) << outcome.toStdString();
    EXPECT_TRUE(outcome.endsWith(QStringLiteral(" taken")));
    EXPECT_EQ(ReadAll(m_path), OldContent);
    EXPECT_EQ(Names(), m_onlyTheFile);
}

TEST_F(FileReplacer, KeepsTheOldFileWhereverTheDiskIsFull)
{
    const QByteArray content(40000, 'x');
    for (const unsigned long limit : {0ul, 1ul, 4096ul, 16383ul, 16384ul, 16385ul, 32768ul, 39999ul}) {
        const QString outcome = RunInChild([&] {
            LimitFileSize(limit);
            return OutcomeOf([&] {
                TFileReplacer replacer(m_path);
                for (qsizetype at = 0; at < content.size(); at += 1000)
                    replacer.Device().write(content.mid(at, 1000));
                replacer.Commit();
            });
        });
        // A pipe is no file, so the outcome arrives whatever the limit.
        EXPECT_TRUE(outcome.startsWith(Refusal(m_path))) << limit << ' ' << outcome.toStdString();
        EXPECT_EQ(ReadAll(m_path), OldContent) << limit;
        EXPECT_EQ(Names(), m_onlyTheFile) << limit;
    }
}

TEST_F(FileReplacer, ReplacesAFileThatJustFitsOnTheDisk)
{
    const QByteArray content(40000, 'x');
    const QString outcome = RunInChild([&] {
        LimitFileSize(40000);
        return OutcomeOf([&] { WriteFile(m_path, content); });
    });
    EXPECT_EQ(outcome, QStringLiteral("ok"));
    EXPECT_EQ(ReadAll(m_path), content);
}

TEST_F(FileReplacer, RefusesANewFileInAReadOnlyDirectory)
{
    const QString path = m_directory.filePath(QStringLiteral("neu.xml"));
    SetMode(m_directory.path(), 0555);
    const QString outcome = RunInChild([&] {
        GiveUpRights();
        return OutcomeOf([&] { WriteFile(path, NewContent); });
    });
    EXPECT_TRUE(outcome.startsWith(Refusal(path))) << outcome.toStdString();
    EXPECT_EQ(Names(), m_onlyTheFile);
}

TEST_F(FileReplacer, RefusesAReadOnlyFile)
{
    SetMode(m_path, 0444);
    SetMode(m_directory.path(), 0777);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        return OutcomeOf([this] { WriteFile(m_path, NewContent); });
    });
    EXPECT_TRUE(outcome.startsWith(Refusal(m_path))) << outcome.toStdString();
    EXPECT_EQ(ReadAll(m_path), OldContent);
}

TEST_F(FileReplacer, RefusesAReadOnlyFileInAReadOnlyDirectory)
{
    SetMode(m_path, 0444);
    SetMode(m_directory.path(), 0555);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        return OutcomeOf([this] { WriteFile(m_path, NewContent); });
    });
    EXPECT_TRUE(outcome.startsWith(Refusal(m_path))) << outcome.toStdString();
    EXPECT_EQ(ReadAll(m_path), OldContent);
}

TEST_F(FileReplacer, WritesOverAWritableFileInAReadOnlyDirectory)
{
    SetMode(m_path, 0666);
    SetMode(m_directory.path(), 0555);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        return OutcomeOf([this] { WriteFile(m_path, NewContent); });
    });
    EXPECT_EQ(outcome, QStringLiteral("ok"));
    EXPECT_EQ(ReadAll(m_path), NewContent);
    EXPECT_EQ(Mode(m_path), 0666u);
}

TEST_F(FileReplacer, LeavesNothingOfALongerFileInAReadOnlyDirectory)
{
    WriteAll(m_path, QByteArray(100000, 'a'));
    SetMode(m_path, 0666);
    SetMode(m_directory.path(), 0555);
    RunInChild([this] {
        GiveUpRights();
        return OutcomeOf([this] { WriteFile(m_path, NewContent); });
    });
    EXPECT_EQ(ReadAll(m_path), NewContent);
}

TEST_F(FileReplacer, ChangesNothingWithoutCommitInAReadOnlyDirectory)
{
    SetMode(m_path, 0666);
    SetMode(m_directory.path(), 0555);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        return OutcomeOf([this] {
            TFileReplacer replacer(m_path);
            replacer.Write(NewContent);
        });
    });
    EXPECT_EQ(outcome, QStringLiteral("ok"));
    EXPECT_EQ(ReadAll(m_path), OldContent);
}

TEST_F(FileReplacer, PutsTheOldFileBackWhenTheDiskIsFullInAReadOnlyDirectory)
{
    SetMode(m_path, 0666);
    SetMode(m_directory.path(), 0555);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        LimitFileSize(4096);
        return OutcomeOf([this] { WriteFile(m_path, QByteArray(100000, 'x')); });
    });
    EXPECT_TRUE(outcome.startsWith(Refusal(m_path))) << outcome.toStdString();
    EXPECT_EQ(ReadAll(m_path), OldContent);
}

TEST_F(FileReplacer, KeepsTheOldFileWhenTheProcessIsKilledBeforeCommit)
{
    const QString outcome = RunInChild([this] {
        TFileReplacer replacer(m_path);
        replacer.Write(QByteArray(1 << 20, 'x'));
        raise(SIGKILL);
        return QString();
    });
    EXPECT_EQ(outcome, QStringLiteral("signal 9"));
    EXPECT_EQ(ReadAll(m_path), OldContent);
}

TEST_F(FileReplacer, KeepsTheOldFileWhenTheProcessIsKilledBeforeCommitInAReadOnlyDirectory)
{
    SetMode(m_path, 0666);
    SetMode(m_directory.path(), 0555);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        TFileReplacer replacer(m_path);
        replacer.Write(QByteArray(1 << 20, 'x'));
        raise(SIGKILL);
        return QString();
    });
    EXPECT_EQ(outcome, QStringLiteral("signal 9"));
    EXPECT_EQ(ReadAll(m_path), OldContent);
}

TEST_F(FileReplacer, NeverLeavesATornFileWhenTheProcessIsKilledAnywhere)
{
    const QByteArray a(300000, 'a');
    const QByteArray b(200000, 'b');
    WriteFile(m_path, a);
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (;;) {
                WriteFile(m_path, b);
                WriteFile(m_path, a);
            }
        }
        usleep(static_cast<useconds_t>(1000 + round * 700));
        ASSERT_EQ(kill(child, SIGKILL), 0);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        const QByteArray content = ReadAll(m_path);
        EXPECT_TRUE(content == a || content == b) << content.size();
    }
}
