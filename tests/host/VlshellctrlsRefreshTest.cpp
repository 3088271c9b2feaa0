#include "ShellTree.h"

#include "ChildProcess.h"

#include <unistd.h>

namespace
{

using VlshellctrlsRefreshTest = TShellTreeFixture;

} // namespace

TEST_F(VlshellctrlsRefreshTest, WithoutItTheTreeStaysUntilItIsTold)
{
    MakeFile("a");
    Open();
    MakeFile("b");
    QTest::qWait(300);
    EXPECT_EQ(Outline(), QStringLiteral("a"));
    m_tree.Refresh();
    EXPECT_EQ(Outline(), QStringLiteral("a b"));
    EXPECT_FALSE(m_tree.GetAutoRefresh());
}

TEST_F(VlshellctrlsRefreshTest, SwitchingItOnCatchesUp)
{
    Open();
    MakeFile("a");
    m_tree.SetAutoRefresh(true);
    EXPECT_TRUE(m_tree.GetAutoRefresh());
    EXPECT_EQ(Outline(), QStringLiteral("a"));
}

TEST_F(VlshellctrlsRefreshTest, FollowsTheDiskInEveryFolderThatIsOpen)
{
    MakeFolder("a");
    MakeFolder("a/b");
    MakeFile("a/b/c");
    Open(true);
    ASSERT_TRUE(Select("a/b/c"));
    MakeFile("a/b/d");
    WaitFor(QStringLiteral("a*(b*(c d))"));
    unlink(At("a/b/d").constData());
    MakeFolder("e");
    WaitFor(QStringLiteral("a*(b*(c)) e"));
    EXPECT_EQ(Selected(), "a/b/c");
}

TEST_F(VlshellctrlsRefreshTest, KeepsWhatIsOpenAndSelectedOverManyChanges)
{
    for (const char* folder : {"b", "d", "f"})
        MakeFolder(folder);
    MakeFile("d/x");
    MakeFolder("f/g");
    MakeFile("f/g/y");
    Open();
    m_tree.expand(Item("d"));
    ASSERT_TRUE(Select("f/g/y"));
    for (const char* folder : {"a", "c", "e", "g", "d/w", "d/y", "f/a"})
        MakeFolder(folder);
    rmdir(At("b").constData());
    m_tree.Refresh();
    EXPECT_EQ(Outline(), QStringLiteral("a c d*(w y x) e f*(a g*(y)) g"));
    EXPECT_EQ(Selected(), "f/g/y");
}

TEST_F(VlshellctrlsRefreshTest, KeepsWhatIsOpenAndSelectedOverARename)
{
    MakeFolder("a");
    MakeFolder("b");
    MakeFolder("b/x");
    MakeFile("b/x/y");
    MakeFile("c");
    Open(true);
    ASSERT_TRUE(Select("b/x/y"));
    Rename("b", "z");
    WaitFor(QStringLiteral("a z*(x*(y)) c"));
    EXPECT_EQ(Selected(), "z/x/y");
    // And goes on following the folder under its new name.
    MakeFile("z/x/neu");
    WaitFor(QStringLiteral("a z*(x*(neu y)) c"));
    ASSERT_TRUE(Select("c"));
    Rename("c", "a.txt");
    WaitFor(QStringLiteral("a z*(x*(neu y)) a.txt"));
    EXPECT_EQ(Selected(), "a.txt");
}

TEST_F(VlshellctrlsRefreshTest, AFileThatTakesThePlaceOfAFolderIsAnotherItem)
{
    MakeFolder("a");
    MakeFile("a/x");
    Open();
    m_tree.expand(Item("a"));
    unlink(At("a/x").constData());
    rmdir(At("a").constData());
    MakeFile("a");
    m_tree.Refresh();
    EXPECT_EQ(Outline(), QStringLiteral("a"));
    ASSERT_TRUE(Select("a"));
    EXPECT_FALSE(m_tree.SelectedFolder()->IsFolder());
}

TEST_F(VlshellctrlsRefreshTest, TheSelectionGoesToANeighbourWhenItsItemGoes)
{
    for (const char* file : {"a", "b", "c"})
        MakeFile(file);
    Open();
    ASSERT_TRUE(Select("b"));
    unlink(At("b").constData());
    m_tree.Refresh();
    EXPECT_EQ(Outline(), QStringLiteral("a c"));
    EXPECT_EQ(Selected(), "c");
}

TEST_F(VlshellctrlsRefreshTest, ARootThatVanishesAndComesBackIsShownAgain)
{
    MakeFile("a");
    Open(true);
    ASSERT_TRUE(QDir(Root()).removeRecursively());
    WaitFor(QString());
    EXPECT_EQ(m_tree.model()->rowCount(), 1);
    // Longer away than the tree needs to notice it.
    QTest::qWait(1200);
    ASSERT_TRUE(QDir().mkdir(Root()));
    MakeFile("b");
    WaitFor(QStringLiteral("b"));
    MakeFile("c");
    WaitFor(QStringLiteral("b c"));
}

TEST_F(VlshellctrlsRefreshTest, ARootThatDoesNotExistYetIsShownWhenItComes)
{
    ASSERT_TRUE(QDir(Root()).removeRecursively());
    Open(true);
    EXPECT_EQ(Outline(), QString());
    ASSERT_TRUE(QDir().mkdir(Root()));
    MakeFile("a");
    WaitFor(QStringLiteral("a"));
}

TEST_F(VlshellctrlsRefreshTest, AFolderWithoutRightsIsShownEmptyAndSaysSo)
{
    MakeFolder("zu");
    MakeFile("zu/x");
    ASSERT_EQ(chmod(At("zu").constData(), 0), 0);
    ASSERT_EQ(chmod(QFile::encodeName(m_directory.path()).constData(), 0755), 0);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        TCustomShellTreeView tree;
        tree.SetRoot(Root());
        const QModelIndex folder = tree.model()->index(0, 0, tree.model()->index(0, 0));
        tree.model()->fetchMore(folder);
        return QString::number(tree.model()->rowCount(folder)) +
               folder.data(Qt::ToolTipRole).toString().section(u'/', -1);
    });
    ASSERT_EQ(chmod(At("zu").constData(), 0755), 0);
    EXPECT_EQ(outcome, QStringLiteral("0zu (kann nicht gelesen werden)"));
}

TEST_F(VlshellctrlsRefreshTest, AStormOfChangesIsFollowedInFewSteps)
{
    MakeFolder("a");
    Open(true);
    m_tree.expand(Item("a"));
    int steps = 0;
    QObject::connect(m_tree.model(), &QAbstractItemModel::rowsInserted, &m_tree, [&] { ++steps; });
    for (int i = 0; i < 2000; ++i) {
        MakeFile("a/f" + QByteArray::number(i));
        if (i % 100 == 0)
            QCoreApplication::processEvents();
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_tree.model()->rowCount(Item("a")) == 2000; }));
    EXPECT_LT(steps, 50);
}
