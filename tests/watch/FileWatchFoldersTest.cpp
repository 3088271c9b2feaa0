#include "ChildProcess.h"
#include "WatchFixture.h"

#include <QTest>

#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

using FileWatchFoldersTest = FileWatchTest;

TEST_F(FileWatchFoldersTest, TellsANewFolder)
{
    Start();
    MakeFolder("unten");
    EXPECT_EQ(Told(), Lines({"MKDIR unten"}));
}

TEST_F(FileWatchFoldersTest, TellsWhatWasInAFolderBeforeItWasWatched)
{
    Start();
    MakeFolder("a/b/c");
    Write("a/b/c/datei", "1");
    EXPECT_EQ(Told(), (Lines({"MKDIR a", "MKDIR a/b", "MKDIR a/b/c", "NEW a/b/c/datei"})));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchFoldersTest, TellsChangesInAFolderThatWasMadeWhileItWatched)
{
    Start();
    MakeFolder("a");
    EXPECT_EQ(Told(), Lines({"MKDIR a"}));
    Write("a/datei", "1");
    EXPECT_EQ(Told(), Lines({"NEW a/datei"}));
}

TEST_F(FileWatchFoldersTest, TellsARenamedFolderInOneChange)
{
    MakeFolder("a/b");
    Write("a/b/datei", "1");
    Start();
    Rename("a", "c");
    EXPECT_EQ(Told(), Lines({"RENDIR a c"}));
    Write("c/b/datei", "2");
    EXPECT_EQ(Told(), Lines({"PUT c/b/datei"}));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchFoldersTest, TellsAFolderMovedIntoAnother)
{
    MakeFolder("a/b");
    MakeFolder("c");
    Start();
    Rename("a", "c/a");
    EXPECT_EQ(Told(), Lines({"RENDIR a c/a"}));
    Remove("c/a/b");
    EXPECT_EQ(Told(), Lines({"RMDIR c/a/b"}));
}

TEST_F(FileWatchFoldersTest, TellsARemovedFolderAfterItsContent)
{
    MakeFolder("a/b");
    Write("a/b/datei", "1");
    Start();
    Remove("a");
    EXPECT_EQ(Told(), (Lines({"DEL a/b/datei", "RMDIR a/b", "RMDIR a"})));
}

TEST_F(FileWatchFoldersTest, TellsAFolderMovedOutAsRemovedWithItsContent)
{
    MakeFolder("a/b");
    Write("a/b/datei", "1");
    Start();
    fs::rename(Path("a"), m_root + "-daneben");
    EXPECT_EQ(Told(), (Lines({"DEL a/b/datei", "RMDIR a/b", "RMDIR a"})));
    WriteAll(QString::fromStdString(m_root + "-daneben/b/datei"), "2");
    EXPECT_EQ(Told(), QStringList());
}

TEST_F(FileWatchFoldersTest, TellsAFolderMovedInWithItsContent)
{
    fs::create_directories(m_root + "-daneben/b");
    WriteAll(QString::fromStdString(m_root + "-daneben/b/datei"), "1");
    Start();
    fs::rename(m_root + "-daneben", Path("a"));
    EXPECT_EQ(Told(), (Lines({"MKDIR a", "MKDIR a/b", "NEW a/b/datei"})));
    Write("a/b/datei", "2");
    EXPECT_EQ(Told(), Lines({"PUT a/b/datei"}));
}

TEST_F(FileWatchFoldersTest, TellsAFolderRenamedOverAnEmptyOne)
{
    MakeFolder("a");
    Write("a/datei", "1");
    MakeFolder("b");
    Start();
    Rename("a", "b");
    EXPECT_EQ(Told(), (Lines({"RMDIR b", "RENDIR a b"})));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchFoldersTest, FollowsAnExchangeOfTwoFolders)
{
    MakeFolder("a");
    Write("a/1", "1");
    MakeFolder("b/c");
    Write("b/c/2", "2");
    Start();
    ASSERT_EQ(renameat2(AT_FDCWD, Path("a").c_str(), AT_FDCWD, Path("b").c_str(), RENAME_EXCHANGE), 0);
    m_watch.Drain();
    Write("a/c/2", "3");
    Write("b/1", "3");
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchFoldersTest, FollowsAFolderThatIsRenamedWhileItIsNew)
{
    Start();
    MakeFolder("Neuer Ordner");
    Rename("Neuer Ordner", "Bilder");
    Write("Bilder/a", "1");
    Rename("Bilder", "Fotos");
    Write("Fotos/b", "1");
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchFoldersTest, FollowsAFolderThatTakesTheNameOfOneThatMoved)
{
    MakeFolder("a/x");
    Write("a/x/1", "1");
    Start();
    Rename("a", "b");
    MakeFolder("a/x");
    Write("a/x/2", "2");
    Write("b/x/1", "3");
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchFoldersTest, FollowsAFileThatBecomesAFolderAndBack)
{
    Write("a", "1");
    Start();
    Remove("a");
    MakeFolder("a/b");
    EXPECT_EQ(Differences(), "");
    m_changes.clear();
    fs::remove_all(m_root + "-kopie");
    CopyTree(m_root, m_root + "-kopie");
    Remove("a");
    Write("a", "2");
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchFoldersTest, LeavesAFolderWithoutRightsAloneAndReadsItWhenItMay)
{
    const QString told = RunInChild([] {
        GiveUpRights();
        const QTemporaryDir directory;
        const std::string root = directory.path().toStdString();
        fs::create_directory(root + "/zu");
        fs::permissions(root + "/zu", fs::perms::none);
        TFileWatch watch;
        QStringList names;
        QObject::connect(&watch, &TFileWatch::Changed, &watch, [&names, &root](const TShellChange& change) {
            names.append(QString::fromUtf8(change.Path.mid(static_cast<qsizetype>(root.size()) + 1)));
        });
        watch.SetScanInterval(20);
        watch.SetRoot(QByteArray::fromStdString(root));
        WriteAll(QString::fromStdString(root + "/offen"), "1");
        watch.Drain();
        fs::permissions(root + "/zu", fs::perms::owner_all);
        WriteAll(QString::fromStdString(root + "/zu/datei"), "1");
        static_cast<void>(QTest::qWaitFor([&names] { return names.size() >= 2; }, 10'000));
        return names.join(u' ');
    });
    EXPECT_EQ(told, QStringLiteral("offen zu/datei"));
}

TEST_F(FileWatchFoldersTest, FollowsANewFolderThatMovesAwayBeforeItIsRead)
{
    MakeFolder("a");
    MakeFolder("b");
    Start();
    MakeFolder("a/neu");
    Write("a/neu/1", "1");
    Rename("a/neu", "b/alt");
    Write("b/alt/2", "2");
    m_watch.Drain();
    Write("b/alt/3", "3");
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchFoldersTest, FollowsAnExchangeAmongOtherRenames)
{
    Write("a", "1");
    Write("b", "22");
    Write("c", "333");
    Write("d", "4444");
    Start();
    // Onto an existing name, then the exchange of that name, then another one over an existing name.
    Rename("d", "c");
    ASSERT_EQ(renameat2(AT_FDCWD, Path("a").c_str(), AT_FDCWD, Path("b").c_str(), RENAME_EXCHANGE), 0);
    ASSERT_EQ(renameat2(AT_FDCWD, Path("b").c_str(), AT_FDCWD, Path("c").c_str(), RENAME_EXCHANGE), 0);
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchFoldersTest, NeverEntersALinkThatTookTheNameOfAFolder)
{
    fs::create_directories(m_root + "-daneben/b");
    WriteAll(QString::fromStdString(m_root + "-daneben/b/fremd"), "1");
    MakeFolder("a/b");
    Start();
    MakeFolder("a/b/neu");
    Rename("a", "z");
    fs::create_directory_symlink(m_root + "-daneben", Path("a"));
    EXPECT_EQ(Differences(), "");
    WriteAll(QString::fromStdString(m_root + "-daneben/b/fremd"), "2");
    Write("z/b/neu/1", "1");
    m_changes.clear();
    m_watch.Drain();
    ASSERT_EQ(m_changes.size(), 1U);
    EXPECT_EQ(m_changes[0].Path.toStdString(), Path("z/b/neu/1"));
}

TEST_F(FileWatchFoldersTest, KeepsTheContentOfAFolderThatMayBeListedButNotEntered)
{
    const QString told = RunInChild([] {
        GiveUpRights();
        const QTemporaryDir directory;
        const std::string root = directory.path().toStdString();
        fs::create_directory(root + "/d");
        WriteAll(QString::fromStdString(root + "/d/1"), "1");
        TFileWatch watch;
        QStringList names;
        QObject::connect(&watch, &TFileWatch::Changed, &watch, [&names, &root](const TShellChange& change) {
            names.append(QString::number(change.Kind) +
                         QString::fromUtf8(change.Path.mid(static_cast<qsizetype>(root.size()))));
        });
        watch.SetScanOnly(true);
        watch.SetRoot(QByteArray::fromStdString(root));
        fs::permissions(root + "/d", fs::perms::owner_read);
        watch.Drain();
        fs::permissions(root + "/d", fs::perms::owner_all);
        return names.join(u' ');
    });
    EXPECT_EQ(told, QString());
}

TEST_F(FileWatchFoldersTest, FollowsTheExchangeOfAFileWithTheIgnoredOne)
{
    Write("b", "1");
    Write("actions.log", "22");
    m_watch.SetIgnoredFile(QByteArray::fromStdString(Path("actions.log")));
    Start();
    ASSERT_EQ(renameat2(AT_FDCWD, Path("b").c_str(), AT_FDCWD, Path("actions.log").c_str(), RENAME_EXCHANGE), 0);
    EXPECT_EQ(Told(), Lines({"DEL b", "NEW b"}));
}
