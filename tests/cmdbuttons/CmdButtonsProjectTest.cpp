#include "CmdButtonsBar.h"

#include <QDir>

namespace
{

class CmdButtonsProject : public TBarTest
{
protected:
    CmdButtonsProject() { WriteEntry(A); }
};

} // namespace

TEST_F(CmdButtonsProject, BarFollowsTheProject)
{
    Execute();
    OpenOther();
    EXPECT_EQ(Captions(), QStringList{Other});
    EXPECT_EQ(Bar().GetSourceLocation(), ToPackagePath(OtherRoot() + QStringLiteral("/_buttons")));
}

TEST_F(CmdButtonsProject, BothSpellingsOfTheVariableFollowTheProject)
{
    for (const char* command :
         {"Velmora.CmdButtons.1://$(PROJECT)/_buttons", "Velmora.CmdButtons.1://%prjpath%/_buttons"}) {
        UserManager()->OpenProject(m_project.Root());
        Execute(command);
        ASSERT_EQ(Captions(), QStringList{A}) << command;
        OpenOther();
        EXPECT_EQ(Captions(), QStringList{Other}) << command;
    }
}

TEST_F(CmdButtonsProject, LocationWithoutTheVariableDoesNotReload)
{
    const QByteArray command = "Velmora.CmdButtons.1://" + m_project.Path(QStringLiteral("_buttons")).toUtf8();
    Execute(command.constData());
    TCmdButton* before = Button(A);
    OpenOther();
    ASSERT_EQ(Captions(), QStringList{A});
    EXPECT_EQ(Button(A), before);
}

TEST_F(CmdButtonsProject, ThreeCommandsMakeOneListener)
{
    Execute();
    Execute();
    Execute();
    // Each load names the damaged entry once.
    WriteEntry(QStringLiteral("b"), "Unsinn");
    UserManager()->OpenProject(m_project.Root());
    EXPECT_EQ(m_messages.Notes.size(), 1);
    EXPECT_EQ(Captions(), QStringList{A});
}

TEST_F(CmdButtonsProject, CommandThatNoLongerDependsOnTheProjectEndsTheListening)
{
    Execute();
    const QByteArray command = "Velmora.CmdButtons.1://" + m_project.Path(QStringLiteral("_buttons")).toUtf8();
    Execute(command.constData());
    TCmdButton* before = Button(A);
    OpenOther();
    ASSERT_EQ(Captions(), QStringList{A});
    EXPECT_EQ(Button(A), before);
    EndBar();
    UserManager()->OpenProject(m_project.Root());
}

TEST_F(CmdButtonsProject, DestroyedBarIsNotCalled)
{
    Execute();
    EndBar();
    OpenOther();
    EXPECT_TRUE(FolderManager().Entries().isEmpty());
}

TEST_F(CmdButtonsProject, ClosingTheProjectChangesNothing)
{
    Execute();
    UserManager()->CloseProject();
    EXPECT_EQ(Captions(), QStringList{A});
}

TEST_F(CmdButtonsProject, OnlyTheUserManagerIsListenedTo)
{
    Execute();
    TCmdButton* before = Button(A);
    Bar().HandleProjectChange(&Bar(), upProject, {});
    Bar().HandleProjectChange(nullptr, upUser, {});
    EXPECT_EQ(Button(A), before);
    WriteEntry(QStringLiteral("b"));
    Bar().HandleProjectChange(UserManager(), upUser, {});
    EXPECT_EQ(Captions().size(), 2);
}

TEST_F(CmdButtonsProject, RemovedButtonComesBackWithTheProject)
{
    Execute();
    Bar().RemoveCmdButton(Button(A));
    UserManager()->OpenProject(m_project.Root());
    EXPECT_EQ(Captions(), QStringList{A});
}

TEST_F(CmdButtonsProject, ProjectWithoutTheFolderLeavesTheBarEmpty)
{
    Execute();
    QDir(OtherRoot() + QStringLiteral("/_buttons")).removeRecursively();
    OpenOther();
    EXPECT_TRUE(Captions().isEmpty());
    EXPECT_TRUE(Bar().GetSourceLocation().isEmpty());
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(CmdButtonsProject, CategoryStaysTheFirstOne)
{
    Execute("Velmora.CmdButtons.1://%PRJPATH%/_buttons?category=Büro");
    OpenOther();
    EXPECT_EQ(Button(Other)->Action()->GetCategory(), QStringLiteral("Büro"));
}

TEST_F(CmdButtonsProject, FailureOfAReloadReachesTheErrorHandlerAndNotTheUserManager)
{
    Execute();
    WriteEntry(QStringLiteral("b"), "Unsinn");
    const TThrowingNotes notes;
    EXPECT_NO_THROW(UserManager()->OpenProject(m_project.Root()));
    EXPECT_EQ(notes.Errors, QStringList{QStringLiteral("Notiz")});
    EXPECT_EQ(Captions(), QStringList{A});
}
