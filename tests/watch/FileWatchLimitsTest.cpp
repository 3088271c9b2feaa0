#include "WatchFixture.h"

#include <QTest>

#include <filesystem>

namespace fs = std::filesystem;

using FileWatchLimitsTest = FileWatchTest;

TEST_F(FileWatchLimitsTest, ComparesWhatItMayNotWatchAndSaysSoOnce)
{
    MakeFolder("a");
    MakeFolder("b/c");
    QStringList reasons;
    QObject::connect(&Watch, &TFileWatch::Limited, &Watch, [&reasons](const QString& reason) { reasons += reason; });
    Watch.SetMaxWatches(1);
    Watch.SetScanInterval(20);
    Start();
    EXPECT_TRUE(Watch.IsScanning());
    Write("b/c/datei", "1");
    ASSERT_TRUE(IsTold(1));
    EXPECT_EQ(Changes[0].Kind, scItemCreated);
    Remove("a");
    ASSERT_TRUE(IsTold(2));
    EXPECT_EQ(Changes[1].Kind, scFolderRemoved);
    ASSERT_EQ(reasons.size(), 1);
    EXPECT_TRUE(reasons[0].contains(QStringLiteral("regelmäßig verglichen"))) << reasons[0].toStdString();
}

TEST_F(FileWatchLimitsTest, WatchesAgainWhatItComparedWhenThereIsRoom)
{
    MakeFolder("a");
    MakeFolder("b");
    Watch.SetMaxWatches(2);
    Watch.SetScanInterval(20);
    Start();
    ASSERT_TRUE(Watch.IsScanning());
    Remove("a");
    Remove("b");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Watch.IsScanning(); }));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchLimitsTest, TellsTheSameByComparingOnly)
{
    MakeFolder("alt/darin");
    Write("alt/1", "1");
    Write("gleich", "1");
    Watch.SetScanOnly(true);
    Start();
    EXPECT_TRUE(Watch.IsScanning());
    Rename("alt", "neu");
    Write("neu/2", "2");
    Write("gleich", "2");
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchLimitsTest, SeesWhatChangedAgainRightAfterItWasTold)
{
    Write("a", "1");
    Watch.SetScanOnly(true);
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
    Watch.SetScanInterval(20);
    Start();
    fs::rename(Root, Root + "-fort");
    QTest::qWait(100);
    EXPECT_EQ(Told(), QStringList());
    fs::remove(Root + "-fort/2");
    fs::rename(Root + "-fort", Root);
    ASSERT_TRUE(IsTold(1));
    EXPECT_EQ(Told(), Lines({"DEL 2"}));
    Write("a/1", "neu");
    EXPECT_EQ(Told(), Lines({"PUT a/1"}));
}

TEST_F(FileWatchLimitsTest, ARootThatIsReplacedIsComparedWithTheOldOne)
{
    Write("1", "1");
    Watch.SetScanInterval(20);
    Start();
    fs::rename(Root, Root + "-fort");
    fs::create_directory(Root);
    Write("2", "2");
    ASSERT_TRUE(IsTold(2));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchLimitsTest, ARootThatDoesNotExistIsWaitedFor)
{
    fs::remove(Root);
    Watch.SetScanInterval(20);
    Watch.SetRoot(QByteArray::fromStdString(Root));
    fs::create_directory(Root);
    Write("1", "1");
    ASSERT_TRUE(IsTold(1));
    EXPECT_EQ(Told(), Lines({"NEW 1"}));
}

TEST_F(FileWatchLimitsTest, WithoutARootNothingIsTold)
{
    Start();
    Watch.SetRoot({});
    Write("a", "1");
    EXPECT_EQ(Told(), QStringList());
    EXPECT_EQ(Watch.Root(), QByteArray());
}

TEST_F(FileWatchLimitsTest, ASeparatorAtTheEndOfTheRootMakesNoDifference)
{
    Watch.SetRoot(QByteArray::fromStdString(Root + "/"));
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
    watch->SetRoot(QByteArray::fromStdString(Root));
    Write("a", "1");
    Write("b", "1");
    watch->Drain();
    EXPECT_EQ(count, 1);
}

TEST_F(FileWatchLimitsTest, TheListenerMaySetAnotherRoot)
{
    Start();
    QObject::connect(&Watch, &TFileWatch::Changed, &Watch,
                     [this](const TShellChange&) { Watch.SetRoot(QByteArray::fromStdString(Root + "-kopie")); });
    Write("a", "1");
    Write("b", "1");
    Watch.Drain();
    EXPECT_EQ(Changes.size(), 1U);
    WriteAll(QString::fromStdString(Root + "-kopie/c"), "1");
    Watch.Drain();
    EXPECT_EQ(Changes.size(), 2U);
}

TEST_F(FileWatchLimitsTest, ChangesThatNobodyDrainsAreToldByTheEventLoop)
{
    Start();
    Write("a", "1");
    ASSERT_TRUE(IsTold(1));
}
