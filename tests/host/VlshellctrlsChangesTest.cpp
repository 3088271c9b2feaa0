#include "ShellTree.h"

#include "Vlapputils.h"

#include <unistd.h>

namespace
{

class VlshellctrlsChangesTest : public TShellTreeFixture
{
protected:
    // Writes down every change, by its number and its paths below the root.
    void Listen()
    {
        m_tree.SetChangeEvent(
            [this](QObject* sender, const QByteArray& first, const QByteArray& second, TShellChangeKind kind) {
                EXPECT_EQ(sender, &m_tree);
                const QByteArray to = second.isEmpty() ? QByteArray() : " " + Below(second);
                m_changes.append(QString::number(kind) + u' ' + QString::fromLatin1(Below(first) + to));
            });
    }
    // After a rest: who asks at once may be told of a file twice, because it could have changed again unnoticed.
    QStringList Changes()
    {
        QTest::qWait(50);
        m_tree.DrainChanges();
        return std::exchange(m_changes, {});
    }

private:
    QByteArray Below(const QByteArray& path) const
    {
        EXPECT_TRUE(path.startsWith(At("") + '/')) << path.toStdString();
        return path.mid(At("").size() + 1);
    }

    QStringList m_changes;
};

} // namespace

TEST_F(VlshellctrlsChangesTest, EveryKindIsToldWithItsNumber)
{
    MakeFile("alt");
    MakeFolder("ordner");
    Open();
    QTest::qWait(50);
    Listen();
    Rename("alt", "neu");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("0 alt neu")});
    MakeFile("datei");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("1 datei")});
    MakeFile("datei", "mehr");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("13 datei")});
    unlink(At("datei").constData());
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("2 datei")});
    MakeFolder("f");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("3 f")});
    rmdir(At("f").constData());
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("4 f")});
    Rename("ordner", "o2");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("17 ordner o2")});
}

TEST_F(VlshellctrlsChangesTest, WhatIsNotShownIsToldAsWell)
{
    MakeFolder("zu");
    Open();
    m_tree.SetObjects(soFolders);
    Listen();
    MakeFile("zu/x");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("1 zu/x")});
    MakeFile(".versteckt");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("1 .versteckt")});
}

TEST_F(VlshellctrlsChangesTest, NamesAreToldAsBytes)
{
    Open();
    Listen();
    MakeFile("gr\xfcn");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("1 gr\u00fcn")});
}

TEST_F(VlshellctrlsChangesTest, NothingIsToldToWhoDoesNotListen)
{
    Open();
    EXPECT_FALSE(m_tree.HasChangeEvent());
    MakeFile("vorher");
    Listen();
    EXPECT_TRUE(m_tree.HasChangeEvent());
    EXPECT_EQ(Changes(), QStringList());
    m_tree.SetChangeEvent({});
    MakeFile("danach");
    EXPECT_EQ(Changes(), QStringList());
}

TEST_F(VlshellctrlsChangesTest, WhoListensMayStopWhileItIsTold)
{
    Open();
    int told = 0;
    m_tree.SetChangeEvent([&](auto&&...) {
        ++told;
        m_tree.SetChangeEvent({});
    });
    MakeFile("a");
    MakeFile("b");
    m_tree.DrainChanges();
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
}

TEST_F(VlshellctrlsChangesTest, PendingChangesAreToldBeforeTheRootChanges)
{
    MakeFolder("a");
    Open();
    Listen();
    MakeFile("x");
    MakeFile("a/y");
    m_tree.SetRoot(Root() + QStringLiteral("/a"));
    const QStringList before{QStringLiteral("1 x"), QStringLiteral("1 a/y")};
    EXPECT_EQ(Changes(), before);
    MakeFile("z");
    EXPECT_EQ(Changes(), QStringList());
    MakeFile("a/z");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("1 a/z")});
}

TEST_F(VlshellctrlsChangesTest, TheIgnoredFileIsNotToldWheneverItIsNamed)
{
    Open();
    m_tree.SetIgnoredFile(Root() + QStringLiteral("/log1"));
    Listen();
    MakeFile("log1");
    MakeFile("log2");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("1 log2")});
    m_tree.SetIgnoredFile(Root() + QStringLiteral("/log2"));
    MakeFile("log2", "mehr");
    MakeFile("log1", "mehr");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("13 log1")});
}

TEST_F(VlshellctrlsChangesTest, TheIgnoredFileIsKnownHoweverItsFolderIsSpelled)
{
    MakeFolder("a");
    const QString link = m_directory.filePath(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(Root(), link));
    Open();
    m_tree.SetIgnoredFile(ToPackagePath(link + QStringLiteral("/a/../log")));
    Listen();
    MakeFile("log");
    MakeFile("a/log");
    EXPECT_EQ(Changes(), QStringList{QStringLiteral("1 a/log")});
}

TEST_F(VlshellctrlsChangesTest, WhatIsToldIsShownAsWell)
{
    Open(true);
    Listen();
    MakeFile("a");
    m_tree.DrainChanges();
    WaitFor(QStringLiteral("a"));
}

TEST_F(VlshellctrlsChangesTest, AnErrorOfWhoListensIsShownAndEndsNothing)
{
    Open();
    m_tree.SetChangeEvent([](auto&&...) { throw std::runtime_error("no"); });
    MakeFile("a");
    MakeFile("b");
    m_tree.DrainChanges();
    EXPECT_EQ(m_messages.Errors.size(), 2);
}
