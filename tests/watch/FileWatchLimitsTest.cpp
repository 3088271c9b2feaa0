#include "WatchFixture.h"

#include <QTest>

#include <cstdio>
#include <filesystem>

#include <fcntl.h>

namespace fs = std::filesystem;

using FileWatchLimitsTest = FileWatchTest;

namespace
{

// Both names change places at once.
bool Exchange(const std::string& first, const std::string& second)
{
    return renameat2(AT_FDCWD, first.c_str(), AT_FDCWD, second.c_str(), RENAME_EXCHANGE) == 0;
}

} // namespace

TEST_F(FileWatchLimitsTest, ComparesWhatItMayNotWatchAndSaysSoOnce)
{
    MakeFolder("a");
    MakeFolder("b/c");
    QStringList reasons;
    QObject::connect(&m_watch, &TFileWatch::Limited, &m_watch,
                     [&reasons](const QString& reason) { reasons += reason; });
    m_watch.SetMaxWatches(1);
    m_watch.SetScanInterval(20);
    Start();
    EXPECT_TRUE(m_watch.IsScanning());
    Write("b/c/datei", "1");
    ASSERT_TRUE(IsTold(1));
    EXPECT_EQ(m_changes[0].Kind, scItemCreated);
    Remove("a");
    ASSERT_TRUE(IsTold(2));
    EXPECT_EQ(m_changes[1].Kind, scFolderRemoved);
    ASSERT_EQ(reasons.size(), 1);
    EXPECT_TRUE(reasons[0].contains(QStringLiteral("regelmäßig verglichen"))) << reasons[0].toStdString();
}

TEST_F(FileWatchLimitsTest, WatchesAgainWhatItComparedWhenThereIsRoom)
{
    MakeFolder("a");
    MakeFolder("b");
    m_watch.SetMaxWatches(2);
    m_watch.SetScanInterval(20);
    Start();
    ASSERT_TRUE(m_watch.IsScanning());
    Remove("a");
    Remove("b");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !m_watch.IsScanning(); }));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchLimitsTest, AFolderThatReplacedAnotherWhileNotificationsWereLostIsWatched)
{
    MakeFolder("a");
    Start();
    // Nobody reads meanwhile; two names by turns, because equal notifications in a row count as one.
    const int more = ReadAll(QStringLiteral("/proc/sys/fs/inotify/max_queued_events")).trimmed().toInt() + 1;
    for (int count = 0; count < more; ++count)
        Write(count % 2 == 0 ? "1" : "2", "");
    // Many file systems give the new folder the inode number of the old one, at once.
    Remove("a");
    MakeFolder("a");
    Told();
    Write("a/neu", "1");
    EXPECT_EQ(Told(), Lines({"NEW a/neu"}));
}

TEST_F(FileWatchLimitsTest, AFolderThatTookTheNameOfOneThatWasNeverSeenIsWatched)
{
    MakeFolder("q/s");
    MakeFolder("q/t");
    MakeFolder("p");
    Start();
    MakeFolder("p/x");
    Remove("p/x");
    Rename("q/s", "p/x");
    MakeFolder("p/y");
    Rename("p/y", "p/z");
    Rename("q/t", "p/y");
    Told();
    for (const char* file : {"p/x/neu", "p/y/neu", "p/z/neu"})
        Write(file, "1");
    EXPECT_EQ(Told(), Lines({"NEW p/x/neu", "NEW p/y/neu", "NEW p/z/neu"}));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchLimitsTest, AnExchangeWithAPlaceOutsideIsAnUpdate)
{
    Write("b", "1");
    WriteAll(QString::fromStdString(m_root + "-aussen"), "2");
    Start();
    ASSERT_TRUE(Exchange(m_root + "-aussen", Path("b")));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchLimitsTest, AnExchangeWithAPlaceThatIsNotWatchedYetIsAnUpdate)
{
    Write("b", "1");
    Start();
    MakeFolder("x");
    Write("x/a", "2");
    ASSERT_TRUE(Exchange(Path("x/a"), Path("b")));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchLimitsTest, TellsTheSameByComparingOnly)
{
    MakeFolder("alt/darin");
    Write("alt/1", "1");
    Write("gleich", "1");
    m_watch.SetScanOnly(true);
    Start();
    EXPECT_TRUE(m_watch.IsScanning());
    Rename("alt", "neu");
    Write("neu/2", "2");
    Write("gleich", "2");
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchLimitsTest, SeesWhatChangedAgainRightAfterItWasTold)
{
    Write("a", "1");
    m_watch.SetScanOnly(true);
    Start();
    for (const char* content : {"2", "3", "4"}) {
        Write("a", content);
        EXPECT_TRUE(Told().contains(QStringLiteral("PUT a"))) << content;
    }
}

TEST_F(FileWatchLimitsTest, ARootThatVanishesAndComesBackTellsTheDifference)
{
    MakeFolder("a");
    Write("a/1", "1");
    Write("2", "2");
    QTest::qWait(30);
    m_watch.SetScanInterval(20);
    Start();
    fs::rename(m_root, m_root + "-fort");
    QTest::qWait(100);
    EXPECT_EQ(Told(), QStringList());
    fs::remove(m_root + "-fort/2");
    fs::rename(m_root + "-fort", m_root);
    ASSERT_TRUE(IsTold(1));
    EXPECT_EQ(Told(), Lines({"DEL 2"}));
    Write("a/1", "neu");
    EXPECT_EQ(Told(), Lines({"PUT a/1"}));
}

TEST_F(FileWatchLimitsTest, ARootThatIsReplacedIsComparedWithTheOldOne)
{
    Write("1", "1");
    m_watch.SetScanInterval(20);
    Start();
    fs::rename(m_root, m_root + "-fort");
    fs::create_directory(m_root);
    Write("2", "2");
    ASSERT_TRUE(IsTold(2));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchLimitsTest, ARootThatDoesNotExistIsWaitedFor)
{
    fs::remove(m_root);
    m_watch.SetScanInterval(20);
    m_watch.SetRoot(QByteArray::fromStdString(m_root));
    fs::create_directory(m_root);
    Write("1", "1");
    ASSERT_TRUE(IsTold(1));
    EXPECT_EQ(Told(), Lines({"NEW 1"}));
}

TEST_F(FileWatchLimitsTest, WithoutARootNothingIsTold)
{
    Start();
    m_watch.SetRoot({});
    Write("a", "1");
    EXPECT_EQ(Told(), QStringList());
    EXPECT_EQ(m_watch.Root(), QByteArray());
}

TEST_F(FileWatchLimitsTest, ASeparatorAtTheEndOfTheRootMakesNoDifference)
{
    m_watch.SetRoot(QByteArray::fromStdString(m_root + "/"));
    Write("a", "1");
    EXPECT_EQ(Told(), Lines({"NEW a"}));
}

TEST_F(FileWatchLimitsTest, TheListenerMayDestroyTheWatch)
{
    auto* watch = new TFileWatch;
    int count = 0;
    QObject::connect(watch, &TFileWatch::Changed, qApp, [&count, watch](const TShellChange&) {
        ++count;
        delete watch;
    });
    watch->SetRoot(QByteArray::fromStdString(m_root));
    Write("a", "1");
    Write("b", "1");
    watch->Drain();
    EXPECT_EQ(count, 1);
}

TEST_F(FileWatchLimitsTest, TheListenerMaySetAnotherRoot)
{
    Start();
    QObject::connect(&m_watch, &TFileWatch::Changed, &m_watch,
                     [this](const TShellChange&) { m_watch.SetRoot(QByteArray::fromStdString(m_root + "-kopie")); });
    Write("a", "1");
    Write("b", "1");
    m_watch.Drain();
    EXPECT_EQ(m_changes.size(), 1U);
    WriteAll(QString::fromStdString(m_root + "-kopie/c"), "1");
    m_watch.Drain();
    EXPECT_EQ(m_changes.size(), 2U);
}

TEST_F(FileWatchLimitsTest, ChangesThatNobodyDrainsAreToldByTheEventLoop)
{
    Start();
    Write("a", "1");
    ASSERT_TRUE(IsTold(1));
}
