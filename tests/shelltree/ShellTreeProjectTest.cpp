#include "FileTree.h"

#include "Vlapputils.h"

namespace
{

class ShellTreeProject : public TFileTree
{
protected:
    void OpenOther() const { UserManager()->OpenProject(OtherRoot()); }
};

} // namespace

TEST_F(ShellTreeProject, ItsRootIsFollowedWhenTheKeyIsOne)
{
    Execute("t://%PRJPATH%?project=1");
    OpenOther();
    EXPECT_EQ(Root(), OtherRoot());
}

TEST_F(ShellTreeProject, ItsRootIsNotFollowedOtherwise)
{
    for (const char* value : {"0", "2", "yes", ""}) {
        Execute(QByteArray("t://%PRJPATH%?project=1&x=") + value);
        Execute(QByteArray("t://?project=") + value);
        OpenOther();
        EXPECT_EQ(Root(), m_project.Root()) << value;
        UserManager()->OpenProject(m_project.Root());
    }
}

TEST_F(ShellTreeProject, FollowingIsKeptByACommandWithoutTheKey)
{
    Execute("t://%PRJPATH%?project=$1");
    Execute("t://?color=1");
    OpenOther();
    EXPECT_EQ(Root(), OtherRoot());
}

TEST_F(ShellTreeProject, OnlyTheUserManagerIsBelieved)
{
    Execute("t://%PRJPATH%");
    OpenOther();
    m_component->HandleUserProperties(m_component.get(), upProject, {});
    EXPECT_EQ(Root(), m_project.Root());
    m_component->HandleUserProperties(UserManager(), upUser, {});
    EXPECT_EQ(Root(), OtherRoot());
}

TEST_F(ShellTreeProject, ATreeThatIsGoneIsNotToldAnyMore)
{
    Execute("t://%PRJPATH%?project=1&log=yes");
    m_component.reset();
    OpenOther();
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(ShellTreeProject, ClosingItKeepsTheTree)
{
    FollowAndLog();
    UserManager()->CloseProject();
    EXPECT_EQ(Root(), m_project.Root());
    m_component->HandleProjectChange();
    EXPECT_EQ(Root(), m_project.Root());
}

TEST_F(ShellTreeProject, LogYesWithNoProjectOpenWritesNothingUntilOneOpens)
{
    UserManager()->CloseProject();
    Execute("t://" + QFile::encodeName(m_project.Root()) + "?project=1&log=yes");
    EXPECT_TRUE(m_component->LogPath().isEmpty());
    Write(At("vorher"));
    EXPECT_EQ(NewLines(), QStringList());
    UserManager()->OpenProject(m_project.Root());
    EXPECT_FALSE(m_component->LogPath().isEmpty());
    Write(At("danach"));
    EXPECT_EQ(NewLines(), QStringList{QStringLiteral("PUT \"danach\"")});
}

TEST_F(ShellTreeProject, TheLogIsAttachedAlsoWhenTheRootIsRightAlready)
{
    UserManager()->CloseProject();
    // Another spelling of the same root.
    Execute("t://" + QFile::encodeName(m_project.Root()) + "/_config/..?project=1&log=yes");
    Tree().SelectPath(At("_config/data"));
    UserManager()->OpenProject(m_project.Root());
    EXPECT_TRUE(Tree().HasChangeEvent());
    EXPECT_TRUE(Tree().SelectedFolder().has_value()) << "one root, not set again";
    Write(At("a"));
    EXPECT_EQ(NewLines(), QStringList{QStringLiteral("PUT \"a\"")});
}

TEST_F(ShellTreeProject, PendingChangesGoIntoTheLogOfTheirOwnProject)
{
    FollowAndLog();
    Write(At("noch im alten"));
    OpenOther();
    Write(At("danach"));
    Write(AtOther("neu"));
    EXPECT_EQ(NewLines(OtherRoot()), QStringList{QStringLiteral("PUT \"neu\"")});
    EXPECT_EQ(NewLines(), QStringList{QStringLiteral("PUT \"noch im alten\"")});
}

TEST_F(ShellTreeProject, TheLogStandsNextToTheProjectFile)
{
    FollowAndLog();
    EXPECT_EQ(ToPackagePath(m_component->LogPath()), ToPackagePath(LogOf(m_project.Root())));
    OpenOther();
    EXPECT_EQ(ToPackagePath(m_component->LogPath()), ToPackagePath(LogOf(OtherRoot())));
}

TEST_F(ShellTreeProject, ChangesMadeWhileTheRootIsBeingSwitchedAreNotLogged)
{
    FollowAndLog();
    bool wrote = false;
    // In the middle of the switch, when the new root is shown for the first time.
    QObject::connect(Tree().model(), &QAbstractItemModel::modelReset, &Tree(), [&] {
        Write(At("mittendrin"));
        m_component->HandleShellChange(&Tree(), At("mittendrin"), {}, scItemCreated);
        wrote = true;
    });
    OpenOther();
    EXPECT_TRUE(wrote);
    EXPECT_EQ(NewLines(), QStringList());
    EXPECT_EQ(NewLines(OtherRoot()), QStringList());
}

TEST_F(ShellTreeProject, GoingToAndFroKeepsTheLogsApart)
{
    FollowAndLog();
    for (int i = 0; i < 3; ++i) {
        const QByteArray name = QByteArray::number(i);
        UserManager()->OpenProject(m_project.Root());
        Write(At(name));
        EXPECT_EQ(NewLines(), QStringList{QStringLiteral("PUT \"%1\"").arg(i)});
        OpenOther();
        Write(AtOther(name));
        EXPECT_EQ(NewLines(OtherRoot()), QStringList{QStringLiteral("PUT \"%1\"").arg(i)});
    }
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(ShellTreeProject, ANewlyOpenedOneSaysAgainWhatItsLogCannotCarry)
{
    FollowAndLog();
    Write(At("a\nb"));
    Settle();
    OpenOther();
    Write(AtOther("a\nb"));
    Settle();
    EXPECT_EQ(m_messages.Notes.size(), 2);
}
