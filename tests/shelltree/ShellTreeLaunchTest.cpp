#include "FileTree.h"

#include "OpenedUrls.h"
#include "Vlerrors.h"

#include <QMenu>

namespace
{

class ShellTreeLaunch : public TFileTree
{
protected:
    ShellTreeLaunch()
    {
        qunsetenv("VISUAL");
        qunsetenv("EDITOR");
        m_project.Write(QStringLiteral("a.txt"), "x");
        Execute("t://%PRJPATH%");
        Tree().SelectPath(At("a.txt"));
    }
    bool Handles(const QString& verb)
    {
        bool handled = true;
        m_component->HandleExecuteContext(&Tree(), Tree().ContextMenu(), 0, verb, handled);
        return handled;
    }
    QUrl Url(const QByteArray& item) const { return QUrl::fromLocalFile(QFile::decodeName(At(item))); }

    TOpenedUrls m_opened;
};

} // namespace

TEST_F(ShellTreeLaunch, OpenAndEditGoToTheDesktopInAnyCase)
{
    for (const char16_t* verb : {u"open", u"edit", u"OPEN", u"Edit"})
        EXPECT_TRUE(Handles(QString::fromUtf16(verb)));
    EXPECT_EQ(m_opened.Urls(), QList<QUrl>(4, Url("a.txt")));
}

TEST_F(ShellTreeLaunch, OtherVerbsStayWithTheTree)
{
    for (const char16_t* verb : {u"rename", u"delete", u"newfolder", u"copypath", u"", u"opened"})
        EXPECT_FALSE(Handles(QString::fromUtf16(verb)));
    EXPECT_TRUE(m_opened.Urls().isEmpty());
}

TEST_F(ShellTreeLaunch, WhatTheDesktopRefusesIsNotHandled)
{
    QFile::remove(m_project.Path(QStringLiteral("a.txt")));
    EXPECT_FALSE(Handles(QStringLiteral("open")));
    Tree().clearSelection();
    EXPECT_FALSE(Handles(QStringLiteral("open")));
}

TEST_F(ShellTreeLaunch, TheMenuOpensTheSelectedFileAndAFolderToo)
{
    const auto* open = m_component->findChild<QAction*>(QStringLiteral("MenuAction_Open"));
    const_cast<QAction*>(open)->trigger();
    Tree().SelectPath(At("_config"));
    const_cast<QAction*>(open)->trigger();
    EXPECT_EQ(m_opened.Urls(), (QList<QUrl>{Url("a.txt"), Url("_config")}));
}

TEST_F(ShellTreeLaunch, ActivatingAFileOpensIt)
{
    QTest::keyClick(&Tree(), Qt::Key_Return);
    EXPECT_EQ(m_opened.Urls(), QList<QUrl>{Url("a.txt")});
}

TEST_F(ShellTreeLaunch, ActivatingAFolderOrNothingOpensNothing)
{
    Tree().SelectPath(At("_config"));
    QTest::keyClick(&Tree(), Qt::Key_Return);
    Tree().clearSelection();
    m_component->HandleDefaultAction(&Tree());
    EXPECT_TRUE(m_opened.Urls().isEmpty());
}

TEST_F(ShellTreeLaunch, AFileThatCannotBeOpenedIsNoted)
{
    QFile::remove(m_project.Path(QStringLiteral("a.txt")));
    m_component->HandleDefaultAction(&Tree());
    EXPECT_EQ(
        m_messages.Notes,
        QStringList{QStringLiteral("\"%1\" kann nicht geöffnet werden.").arg(m_project.Path(QStringLiteral("a.txt")))});
}

TEST_F(ShellTreeLaunch, ATreeThatIsBeingDestroyedOpensNothing)
{
    FollowAndLog();
    Tree().SelectPath(At("a.txt"));
    ASSERT_TRUE(QDir().mkdir(LogOf(m_project.Root())));
    Write(At("b.txt"));
    // The line that cannot be written is told on the way down; who hears of it still has the tree.
    TICmdShellTreeView* component = m_component.get();
    bool handled = true;
    int errors = 0;
    const TErrorHandler previous = SetErrorHandler([&](const std::exception_ptr&) {
        ++errors;
        component->HandleExecuteContext(component->ShellTree(), nullptr, 0, QStringLiteral("open"), handled);
    });
    m_component.reset();
    SetErrorHandler(previous);
    EXPECT_EQ(errors, 1);
    EXPECT_FALSE(handled);
    EXPECT_TRUE(m_opened.Urls().isEmpty());
}
