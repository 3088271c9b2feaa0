#include "FileTree.h"

#include "Vlapputils.h"

#include <QLineEdit>

#include <sys/stat.h>

namespace
{

class ShellTreeLog : public TFileTree
{
protected:
    // Is told to the component as if it came from `sender`.
    void Tell(QObject* sender, TShellChangeKind kind = scItemCreated)
    {
        m_component->HandleShellChange(sender, At("x"), {}, kind);
    }
    static QStringList One(const QString& line) { return {line}; }
};

} // namespace

TEST_F(ShellTreeLog, RenamingAFileInTheRootAppendsOneLine)
{
    Write(At("a.txt"));
    Rest();
    FollowAndLog();
    Rename(At("a.txt"), At("b.txt"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return QFile::exists(LogOf(m_project.Root())); }));
    QTest::qWait(200);
    EXPECT_EQ(ReadAll(LogOf(m_project.Root())), "REN \"" + At("a.txt") + "\" \"" + At("b.txt") + "\"\r\n");
}

TEST_F(ShellTreeLog, EveryKindOfChangeHasItsLine)
{
    FollowAndLog();
    Write(At("neu.txt"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"neu.txt\"")));
    Write(At("neu.txt"), "anders");
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"neu.txt\"")));
    ASSERT_TRUE(QDir().mkdir(m_project.Path(QStringLiteral("ordner"))));
    EXPECT_EQ(NewLines(), One(QStringLiteral("MKDIR \"ordner\"")));
    Rename(At("ordner"), At("mappe"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("REN \"ordner\" \"mappe\"")));
    ASSERT_TRUE(QDir().rmdir(m_project.Path(QStringLiteral("mappe"))));
    EXPECT_EQ(NewLines(), One(QStringLiteral("RMDIR \"mappe\"")));
    QFile::remove(m_project.Path(QStringLiteral("neu.txt")));
    EXPECT_EQ(NewLines(), One(QStringLiteral("DEL \"neu.txt\"")));
}

TEST_F(ShellTreeLog, WhatTheTreeDoesNotShowIsLoggedAsWell)
{
    FollowAndLog();
    Execute("t://?files=no");
    Write(At("_config/tief.txt"));
    Write(At("_config/data/scenes/.versteckt"));
    const QStringList expected{QStringLiteral("PUT \"_config/tief.txt\""),
                               QStringLiteral("PUT \"_config/data/scenes/.versteckt\"")};
    EXPECT_EQ(NewLines(), expected);
}

TEST_F(ShellTreeLog, ItsOwnGrowthWritesNoLine)
{
    FollowAndLog();
    Write(At("a"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"a\"")));
    EXPECT_EQ(NewLines(), QStringList());
    // That one path only.
    Write(At("_config/actions.log"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"_config/actions.log\"")));
}

TEST_F(ShellTreeLog, ItsOwnGrowthWritesNoLineWhereTheRootIsALink)
{
    QTemporaryDir elsewhere;
    const QString link = elsewhere.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(m_project.Root(), link));
    Execute("t://" + QFile::encodeName(link) + "?log=yes");
    Write(At("a"));
    Settle();
    Settle();
    EXPECT_EQ(ReadAll(LogOf(m_project.Root())), "PUT \"" + QFile::encodeName(link) + "/a\"\r\n");
}

TEST_F(ShellTreeLog, NamesStandInItAsTheyAreOneLineEach)
{
    FollowAndLog();
    Write(At("mit \" und \" \".txt"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"mit \" und \" \".txt\"")));
    Write(At("punkte..."));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"punkte...\"")));
    Write(At("Büro €"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"B\u00fcro \u0080\"")));
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}

TEST_F(ShellTreeLog, ANameThatCannotBeReplayedIsSaidOnce)
{
    FollowAndLog();
    Write(At("zwei\nZeilen"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"zwei?Zeilen\"")));
    Write(At("gr\xfcn"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"gr?n\"")));
    Write(At("Łódź"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"?\u00f3d?\"")));
    ASSERT_EQ(m_messages.Notes.size(), 1);
    EXPECT_TRUE(m_messages.Notes.first().contains(LogOf(m_project.Root())));
    EXPECT_TRUE(m_messages.Notes.first().contains(QStringLiteral("zwei?Zeilen")));
    EXPECT_TRUE(m_messages.Notes.first().endsWith(QStringLiteral("lässt sich nicht wiederholen.")));
}

TEST_F(ShellTreeLog, FifosAndSocketsAreNotLogged)
{
    FollowAndLog();
    ASSERT_EQ(mkfifo(At("pipe").constData(), 0600), 0);
    Write(At("a"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"a\"")));
}

TEST_F(ShellTreeLog, OnlyTheOwnTreeIsListenedTo)
{
    FollowAndLog();
    QObject other;
    Tell(nullptr);
    Tell(&other);
    Tell(m_component.get());
    EXPECT_FALSE(QFile::exists(LogOf(m_project.Root())));
    Tell(&Tree(), static_cast<TShellChangeKind>(5));
    EXPECT_FALSE(QFile::exists(LogOf(m_project.Root()))) << "a kind without a line";
    Tell(&Tree());
    EXPECT_TRUE(QFile::exists(LogOf(m_project.Root())));
}

TEST_F(ShellTreeLog, WithoutALogPathNothingIsWritten)
{
    Tell(&Tree());
    Execute("t://%PRJPATH%?project=1");
    Tell(&Tree());
    EXPECT_TRUE(m_component->LogPath().isEmpty());
    EXPECT_FALSE(QFile::exists(LogOf(m_project.Root())));
}

TEST_F(ShellTreeLog, YesInAnyCaseSwitchesItOnAndEverythingElseOff)
{
    const QString path = JoinFilePath(m_project.Root(), {QStringLiteral("actions.log")});
    for (const char* on : {"yes", "YES", "Yes"}) {
        Execute(QByteArray("t://%PRJPATH%?log=") + on);
        EXPECT_EQ(ToPackagePath(m_component->LogPath()), ToPackagePath(path)) << on;
        EXPECT_TRUE(Tree().HasChangeEvent());
        for (const char* off : {"no", "1", "true", ""}) {
            Execute("t://?log=yes");
            Execute(QByteArray("t://?log=") + off);
            EXPECT_TRUE(m_component->LogPath().isEmpty()) << off;
            EXPECT_FALSE(Tree().HasChangeEvent());
        }
    }
    Execute("t://?log=yes");
    Execute("t://?color=1");
    EXPECT_FALSE(m_component->LogPath().isEmpty()) << "kept without the key";
}

TEST_F(ShellTreeLog, WhatHappenedBeforeItIsSwitchedOffIsLogged)
{
    FollowAndLog();
    Write(At("vorher"));
    Execute("t://?log=no");
    Write(At("danach"));
    EXPECT_EQ(NewLines(), One(QStringLiteral("PUT \"vorher\"")));
}

TEST_F(ShellTreeLog, WhatHappenedBeforeTheTreeGoesIsLogged)
{
    FollowAndLog();
    Write(At("zuletzt"));
    m_component.reset();
    EXPECT_EQ(ReadAll(LogOf(m_project.Root())), "PUT \"" + At("zuletzt") + "\"\r\n");
}

TEST_F(ShellTreeLog, RenamingInTheTreeIsLogged)
{
    Write(At("alt.txt"));
    Rest();
    FollowAndLog();
    ASSERT_TRUE(Tree().SelectPath(At("alt.txt")));
    m_component->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(m_component.get()));
    m_component->findChild<QAction*>(QStringLiteral("MenuAction_Rename"))->trigger();
    QTest::qWait(1);
    QTest::keyClicks(Tree().viewport()->findChild<QLineEdit*>(), QStringLiteral("neu"));
    QTest::keyClick(Tree().viewport()->findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return QFile::exists(m_project.Path(QStringLiteral("neu.txt"))); }));
    Settle();
    EXPECT_EQ(ReadAll(LogOf(m_project.Root())), "REN \"" + At("alt.txt") + "\" \"" + At("neu.txt") + "\"\r\n");
    EXPECT_EQ(Tree().SelectedFolder()->NativePath(), At("neu.txt"));
}
