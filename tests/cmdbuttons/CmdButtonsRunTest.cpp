#include "CmdButtonsBar.h"
#include "NestedLoop.h"
#include "OpenedUrls.h"
#include "Vlerrors.h"

#include <QDialog>
#include <QTest>

namespace
{

class CmdButtonsRun : public TBarTest
{
protected:
    CmdButtonsRun()
    {
        WriteEntries({A, B});
        Execute();
    }

    // What the buttons' command texts do from now on.
    void WhenRun(const std::function<void(const QString& command)>& action)
    {
        FolderManager().SetCommandEvent([this, action](const QString& command) {
            m_commands.append(command);
            action(command);
        });
    }
};

} // namespace

TEST_F(CmdButtonsRun, ClickRunsTheEntry)
{
    Click(B);
    Click(A);
    EXPECT_EQ(m_commands, QStringList({QStringLiteral("pane://b"), QStringLiteral("pane://a")}));
}

TEST_F(CmdButtonsRun, FileOfTheProjectIsOpened)
{
    const TOpenedUrls opened;
    m_project.Write(QStringLiteral("plan.txt"), "Text");
    WriteEntry(A, "File=plan.txt\n");
    Execute();
    Click(A);
    EXPECT_EQ(opened.Urls(), QList<QUrl>{QUrl::fromLocalFile(m_project.Path(QStringLiteral("plan.txt")))});
}

TEST_F(CmdButtonsRun, ProgramOfTheProjectIsAskedAboutOnce)
{
    const TOpenedUrls opened;
    m_project.Write(QStringLiteral("sichern.sh"), "#!/bin/sh\n");
    WriteEntry(A, "File=%PRJPATH%/sichern.sh\n");
    Execute();
    m_messages.Answer = false;
    Click(A);
    EXPECT_TRUE(opened.Urls().isEmpty());
    m_messages.Answer = true;
    Click(A);
    Execute();
    Click(A);
    EXPECT_EQ(opened.Urls().size(), 2);
    EXPECT_EQ(m_messages.Questions.size(), 2);
    EXPECT_TRUE(m_messages.Questions.first().contains(m_project.Path(QStringLiteral("sichern.sh"))));
}

TEST_F(CmdButtonsRun, FailureIsShownAndTheButtonStays)
{
    WhenRun([](const QString&) { throw TUserError(QStringLiteral("Das ging nicht.")); });
    Click(A);
    EXPECT_EQ(m_messages.Errors, QStringList{QStringLiteral("Das ging nicht.")});
    EXPECT_EQ(Captions(), QStringList({A, B}));
}

TEST_F(CmdButtonsRun, ActionMayCommandItsBar)
{
    const QPointer<TNavigation> entry = Button(A)->Action();
    bool lived = false;
    WhenRun([&](const QString&) {
        Execute("Velmora.CmdButtons.1://%PRJPATH%/fehlt");
        lived = entry && entry->GetCaption() == A;
        Execute();
    });
    Click(A);
    EXPECT_TRUE(lived);
    EXPECT_FALSE(entry);
    EXPECT_EQ(Captions(), QStringList({A, B}));
}

TEST_F(CmdButtonsRun, ActionMayOpenAnotherProject)
{
    const QPointer<TNavigation> entry = Button(A)->Action();
    WhenRun([&](const QString&) {
        OpenOther();
        EXPECT_TRUE(entry);
    });
    Click(A);
    EXPECT_FALSE(entry);
    EXPECT_EQ(Captions(), QStringList{Other});
}

TEST_F(CmdButtonsRun, ActionMayRemoveItsButton)
{
    const QPointer<TCmdButton> button = Button(A);
    WhenRun([&](const QString&) {
        Bar().RemoveCmdButton(Button(A));
        EXPECT_TRUE(button);
    });
    Click(A);
    EXPECT_EQ(Captions(), QStringList{B});
    Settle();
    EXPECT_FALSE(button);
}

TEST_F(CmdButtonsRun, ActionMayRemoveItsButtonAndFailAfterwards)
{
    const QPointer<TNavigation> entry = Button(A)->Action();
    const QPointer<TCmdButton> button = Button(A);
    WhenRun([&](const QString&) {
        Bar().RemoveCmdButton(Button(A));
        throw TUserError(QStringLiteral("Das ging nicht."));
    });
    Click(A);
    EXPECT_FALSE(entry);
    Settle();
    EXPECT_FALSE(button);
    EXPECT_EQ(m_messages.Errors, QStringList{QStringLiteral("Das ging nicht.")});
    EXPECT_EQ(Captions(), QStringList{B});
}

TEST_F(CmdButtonsRun, ProgramThatIsAgreedToAfterTheProjectHasChangedIsTheOneThatWasShown)
{
    const TOpenedUrls opened;
    m_project.Write(QStringLiteral("a.sh"), "#!/bin/sh\n");
    WriteAll(OtherRoot() + QStringLiteral("/a.sh"), "#!/bin/sh\n");
    WriteEntry(A, "File=a.sh\n");
    Execute();
    m_messages.WhenAsked = [this] { OpenOther(); };
    Click(A);
    EXPECT_EQ(opened.Urls(), QList<QUrl>{QUrl::fromLocalFile(m_project.Path(QStringLiteral("a.sh")))});
    EXPECT_EQ(Captions(), QStringList{Other});
}

TEST_F(CmdButtonsRun, ActionMayRemoveItsButtonByKeyboard)
{
    WhenRun([&](const QString&) { Bar().RemoveCmdButton(Button(A)); });
    Button(A)->setFocus();
    QTest::keyClick(Button(A), Qt::Key_Space);
    EXPECT_EQ(Captions(), QStringList{B});
    EXPECT_EQ(m_commands.size(), 1);
}

TEST_F(CmdButtonsRun, ActionMayEndItsBar)
{
    const QPointer<TNavigation> entry = Button(A)->Action();
    TCmdButton* button = Button(A);
    WhenRun([&](const QString&) {
        EndBar();
        EXPECT_TRUE(entry);
    });
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_FALSE(entry);
    EXPECT_EQ(m_commands.size(), 1);
}

TEST_F(CmdButtonsRun, ActionWithADialogOutlivesWhatHappensUnderIt)
{
    const QPointer<TNavigation> entry = Button(A)->Action();
    const QPointer<TCmdButton> button = Button(A);
    WhenRun([&](const QString&) {
        QDialog dialog;
        dialog.exec();
        EXPECT_TRUE(entry);
    });
    EXPECT_TRUE(RunInLoop([this] { Click(A); },
                          [&] {
                              OpenOther();
                              Settle();
                              EXPECT_TRUE(entry);
                              // The click returns through it.
                              EXPECT_TRUE(button);
                          }));
    EXPECT_FALSE(entry);
    Settle();
    EXPECT_FALSE(button);
    EXPECT_EQ(Captions(), QStringList{Other});
}

TEST_F(CmdButtonsRun, ActionMayRunAnotherOneAndItselfAgain)
{
    int depth = 0;
    WhenRun([&](const QString&) {
        if (++depth == 1) {
            Button(A)->Action()->trigger();
            Button(B)->Action()->trigger();
            Execute();
        }
    });
    Click(A);
    EXPECT_EQ(m_commands,
              QStringList({QStringLiteral("pane://a"), QStringLiteral("pane://a"), QStringLiteral("pane://b")}));
    EXPECT_EQ(FolderManager().Entries().size(), 2);
}
