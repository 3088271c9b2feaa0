#include "WatchFixture.h"

#include <QTest>

#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace fs = std::filesystem;

using FileWatchItemsTest = FileWatchTest;

TEST_F(FileWatchItemsTest, TellsNothingOfWhatIsThereAtTheStart)
{
    Write("a.txt", "a");
    Start();
    EXPECT_EQ(Told(), QStringList());
}

TEST_F(FileWatchItemsTest, TellsANewFileOnce)
{
    Start();
    Write("a.txt", "a");
    EXPECT_EQ(Told(), Lines({"NEW a.txt"}));
    EXPECT_EQ(Told(), QStringList());
}

TEST_F(FileWatchItemsTest, TellsAWrittenFile)
{
    Write("a.txt", "a");
    Start();
    Write("a.txt", "b");
    EXPECT_EQ(Told(), Lines({"PUT a.txt"}));
}

TEST_F(FileWatchItemsTest, TellsAFileThatWasCutWithoutBeingOpened)
{
    Write("a.txt", "abc");
    Start();
    fs::resize_file(Path("a.txt"), 1);
    EXPECT_EQ(Told(), Lines({"PUT a.txt"}));
}

TEST_F(FileWatchItemsTest, TellsNothingOfAFileThatWasOnlyOpenedForWriting)
{
    Write("a.txt", "a");
    QTest::qWait(30);
    Start();
    std::ofstream(Path("a.txt"), std::ios::app).close();
    EXPECT_EQ(Told(), QStringList());
}

TEST_F(FileWatchItemsTest, TellsARenamedFileInOneChange)
{
    Write("a.txt", "a");
    Start();
    Rename("a.txt", "b.txt");
    EXPECT_EQ(Told(), Lines({"REN a.txt b.txt"}));
}

TEST_F(FileWatchItemsTest, TellsADeletedFile)
{
    Write("a.txt", "a");
    Start();
    Remove("a.txt");
    EXPECT_EQ(Told(), Lines({"DEL a.txt"}));
}

TEST_F(FileWatchItemsTest, TellsAChainOfRenamesInItsOrder)
{
    Write("a", "1");
    Start();
    Rename("a", "b");
    Rename("b", "c");
    EXPECT_EQ(Told(), (Lines({"REN a b", "REN b c"})));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchItemsTest, TellsASwapThroughAThirdName)
{
    Write("a", "1");
    Write("b", "2");
    Start();
    Rename("a", "t");
    Rename("b", "a");
    Rename("t", "b");
    EXPECT_EQ(Told(), (Lines({"REN a t", "REN b a", "REN t b"})));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchItemsTest, FollowsAnExchangeOfTwoNames)
{
    Write("a", "1");
    Write("b", "22");
    Start();
    ASSERT_EQ(renameat2(AT_FDCWD, Path("a").c_str(), AT_FDCWD, Path("b").c_str(), RENAME_EXCHANGE), 0);
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchItemsTest, TellsAFileThatComesAndGoesWithinABurstNotAtAll)
{
    Start();
    Write("a.tmp", "a");
    Remove("a.tmp");
    EXPECT_EQ(Told(), QStringList());
}

TEST_F(FileWatchItemsTest, TellsANewFileUnderTheNameThatItGotMeanwhile)
{
    Start();
    Write("a", "a");
    Rename("a", "b");
    EXPECT_EQ(Told(), Lines({"NEW b"}));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchItemsTest, TellsASaveThroughATemporaryNameAsAnUpdate)
{
    Write("menu.xml", "old");
    Start();
    Write("menu.xml.tmp", "new");
    Rename("menu.xml.tmp", "menu.xml");
    EXPECT_EQ(Told(), Lines({"PUT menu.xml"}));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchItemsTest, TellsASaveThatKeepsABackup)
{
    Write("menu.xml", "old");
    Start();
    Rename("menu.xml", "menu.xml~");
    Write("menu.xml", "new");
    EXPECT_EQ(Told(), (Lines({"REN menu.xml menu.xml~", "NEW menu.xml"})));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchItemsTest, TellsAKnownFileRenamedOverAnotherAsARename)
{
    Write("a", "1");
    Write("b", "2");
    Start();
    Rename("a", "b");
    EXPECT_EQ(Told(), Lines({"REN a b"}));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchItemsTest, TellsAFileMovedInAndAFileMovedOut)
{
    Write("hinaus", "1");
    Start();
    const std::string outside = m_root + "-daneben";
    WriteAll(QString::fromStdString(outside), "2");
    fs::rename(outside, Path("herein"));
    EXPECT_EQ(Told(), Lines({"NEW herein"}));
    fs::rename(Path("hinaus"), outside);
    EXPECT_EQ(Told(), Lines({"DEL hinaus"}));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchItemsTest, TellsHiddenFiles)
{
    Start();
    Write(".versteckt", "a");
    EXPECT_EQ(Told(), Lines({"NEW .versteckt"}));
}

TEST_F(FileWatchItemsTest, TellsAnotherNameOfAFile)
{
    Write("a", "1");
    Start();
    fs::create_hard_link(Path("a"), Path("b"));
    EXPECT_EQ(Told(), Lines({"NEW b"}));
}

TEST_F(FileWatchItemsTest, TellsASymbolicLinkAsAnItemAndNeverFollowsIt)
{
    const std::string outside = m_root + "-daneben";
    fs::create_directory(outside);
    Start();
    fs::create_directory_symlink(outside, Path("verweis"));
    EXPECT_EQ(Told(), Lines({"NEW verweis"}));
    WriteAll(QString::fromStdString(outside + "/fremd.txt"), "x");
    EXPECT_EQ(Told(), QStringList());
    Remove("verweis");
    EXPECT_EQ(Told(), Lines({"DEL verweis"}));
}

TEST_F(FileWatchItemsTest, TellsAFileThatBecameALink)
{
    Write("a", "1");
    Start();
    Remove("a");
    fs::create_symlink("irgendwo", Path("a"));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchItemsTest, FifosAndSocketsNeitherBlockNorAreTold)
{
    Start();
    ASSERT_EQ(mkfifo(Path("rohr").c_str(), 0666), 0);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    Path("s").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(Told(), QStringList());
    Remove("rohr");
    Rename("s", "t");
    EXPECT_EQ(Told(), QStringList());
    close(descriptor);
}

TEST_F(FileWatchItemsTest, AFifoThatReplacesAFileIsTheEndOfTheFile)
{
    Write("a", "1");
    Start();
    ASSERT_EQ(mkfifo(Path("rohr").c_str(), 0666), 0);
    EXPECT_EQ(Told(), QStringList());
    Rename("rohr", "a");
    EXPECT_EQ(Told(), Lines({"DEL a"}));
    Remove("a");
    EXPECT_EQ(Told(), QStringList());
}

TEST_F(FileWatchItemsTest, KeepsNamesAsTheirBytes)
{
    const std::string name = "kaputt \xff \"Zeile\n2\" .";
    Start();
    Write("a", "1");
    EXPECT_EQ(Told(), Lines({"NEW a"}));
    fs::rename(Path("a"), Path(name));
    m_watch.Drain();
    ASSERT_EQ(m_changes.size(), 2U);
    EXPECT_EQ(m_changes[1].NewPath.toStdString(), Path(name));
    EXPECT_EQ(Differences(), "");
}

TEST_F(FileWatchItemsTest, NeverTellsOfTheIgnoredFile)
{
    m_watch.SetIgnoredFile(QByteArray::fromStdString(Path("actions.log")));
    Start();
    Write("actions.log", "1");
    Write("actions.log", "2");
    EXPECT_EQ(Told(), QStringList());
    Remove("actions.log");
    EXPECT_EQ(Told(), QStringList());
}

TEST_F(FileWatchItemsTest, TellsAFileOfTheIgnoredNameElsewhere)
{
    MakeFolder("unten");
    m_watch.SetIgnoredFile(QByteArray::fromStdString(Path("actions.log")));
    Start();
    Write("unten/actions.log", "1");
    EXPECT_EQ(Told(), Lines({"NEW unten/actions.log"}));
}

TEST_F(FileWatchItemsTest, TellsWhatStopsOrBeginsToBeTheIgnoredFile)
{
    Write("actions.log", "1");
    Write("b", "2");
    m_watch.SetIgnoredFile(QByteArray::fromStdString(Path("actions.log")));
    Start();
    Rename("actions.log", "alt.log");
    EXPECT_EQ(Told(), Lines({"NEW alt.log"}));
    Rename("b", "actions.log");
    EXPECT_EQ(Told(), Lines({"DEL b"}));
}

TEST_F(FileWatchItemsTest, TellsAnOpenFileThatRestsForAMoment)
{
    Start();
    std::ofstream stream(Path("lang.log"));
    stream << "1" << std::flush;
    ASSERT_TRUE(IsTold(1));
    EXPECT_EQ(m_changes[0].Kind, scItemCreated);
    stream << "2" << std::flush;
    ASSERT_TRUE(IsTold(2));
    EXPECT_EQ(m_changes[1].Kind, scItemUpdated);
}
