#include "CmdButtonsBar.h"
#include "Vlerrors.h"

#include <QDir>
#include <QLayout>
#include <QSet>

namespace
{

using CmdButtonsLoad = TBarTest;

// The captions of the buttons that have been painted while it lives.
class TPaintRecorder final : public QObject
{
public:
    TPaintRecorder() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        const auto* button = qobject_cast<TCmdButton*>(receiver);
        if (button && event->type() == QEvent::Paint)
            Painted.insert(button->text());
        return false;
    }

    QSet<QString> Painted;
};

} // namespace

TEST_F(CmdButtonsLoad, FolderIsLoadedInTheOrderOfItsNames)
{
    WriteEntries({C, A, B});
    Execute();
    EXPECT_EQ(Captions(), QStringList({A, B, C}));
    EXPECT_EQ(Bar().GetCategory(), QStringLiteral("_buttons"));
    EXPECT_EQ(Bar().GetSourceLocation(), ToPackagePath(m_project.Path(QStringLiteral("_buttons"))));
}

TEST_F(CmdButtonsLoad, ButtonsStackFromTheTopInTheirOrder)
{
    WriteEntries({A, B});
    Execute();
    const QRect first = Button(A)->geometry();
    const QRect second = Button(B)->geometry();
    EXPECT_EQ(first.height(), 75);
    EXPECT_EQ(second.height(), 75);
    EXPECT_LT(first.top(), 10);
    EXPECT_LE(second.top() - first.bottom(), 4);
    EXPECT_GT(second.top(), first.bottom());
}

TEST_F(CmdButtonsLoad, FolderWithADefinitionFileLoadsFromTheFileAndTheCategoryIsTheFoldersName)
{
    WriteEntries({A, B, C});
    WriteDefinition("_buttons\\c.uri=\r\n%PRJPATH%/_buttons/a.uri\r\n");
    Execute();
    EXPECT_EQ(Captions(), QStringList({C, A}));
    EXPECT_EQ(Bar().GetCategory(), QStringLiteral("_buttons"));
    EXPECT_EQ(Bar().GetSourceLocation(), ToPackagePath(m_project.Path(QStringLiteral("_buttons/__CmdButtons.def"))));
}

TEST_F(CmdButtonsLoad, DefinitionFileMayBeTheLocation)
{
    WriteEntry(A);
    m_project.Write(QStringLiteral("_buttons/andere.def"), "[CMDBUTTONS]\n_buttons/a.uri\n");
    Execute("Velmora.CmdButtons.1://%PRJPATH%/_buttons/andere.def");
    EXPECT_EQ(Captions(), QStringList{A});
    EXPECT_EQ(Bar().GetCategory(), QStringLiteral("_buttons"));
}

TEST_F(CmdButtonsLoad, DefinitionFileNamesActionsOfTheHost)
{
    QAction action(QStringLiteral("&Beenden"));
    FolderManager().RegisterAction(QStringLiteral("Quit"), &action);
    WriteDefinition("Quit\r\n");
    Execute();
    EXPECT_EQ(Captions(), QStringList{QStringLiteral("Beenden")});
}

TEST_F(CmdButtonsLoad, TrailingSeparatorMakesNoEmptyCategory)
{
    for (const char* command :
         {"Velmora.CmdButtons.1://%PRJPATH%/_buttons/", "Velmora.CmdButtons.1://%PRJPATH%\\_buttons\\",
          "Velmora.CmdButtons.1://%PRJPATH%/_buttons//"}) {
        WriteEntry(A);
        TICmdButtons bar(nullptr);
        bool handled = false;
        bar.ExecuteCmd(command, handled);
        EXPECT_EQ(bar.GetCategory(), QStringLiteral("_buttons")) << command;
        EXPECT_EQ(bar.Buttons().size(), 1);
    }
}

TEST_F(CmdButtonsLoad, WhatIsNeitherFolderNorFileLoadsNothingAndLeavesTheBarEmpty)
{
    WriteEntry(A);
    Execute();
    EXPECT_TRUE(Execute("Velmora.CmdButtons.1://%PRJPATH%/fehlt"));
    EXPECT_TRUE(Captions().isEmpty());
    EXPECT_TRUE(Execute("Velmora.CmdButtons.1://"));
    EXPECT_TRUE(Execute("Velmora.CmdButtons.1"));
    EXPECT_TRUE(Captions().isEmpty());
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}

TEST_F(CmdButtonsLoad, RemovedButtonLeavesItsFileAndComesBackWithTheNextCommand)
{
    WriteEntries({A, B});
    Execute();
    Bar().RemoveCmdButton(Button(A));
    EXPECT_EQ(Captions(), QStringList{B});
    EXPECT_TRUE(m_project.Exists(QStringLiteral("_buttons/a.uri")));
    Execute();
    EXPECT_EQ(Captions(), QStringList({A, B}));
}

TEST_F(CmdButtonsLoad, OnlyButtonsOfTheBarAreRemoved)
{
    WriteEntry(A);
    Execute();
    TICmdButtons other(nullptr);
    Bar().RemoveCmdButton(nullptr);
    Bar().RemoveCmdButton(Bar().widget());
    other.RemoveCmdButton(Button(A));
    EXPECT_EQ(Captions(), QStringList{A});
}

TEST_F(CmdButtonsLoad, RemovedActionIsTakenOutOfTheListOfActions)
{
    WriteEntries({A, B});
    Execute();
    EXPECT_EQ(FolderManager().Entries().size(), 2);
    Bar().RemoveCmdButton(Button(A));
    ASSERT_EQ(FolderManager().Entries().size(), 1);
    EXPECT_EQ(FolderManager().Entries().first(), Button(B)->Action());
}

TEST_F(CmdButtonsLoad, NewItemEventIsRestored)
{
    int reported = 0;
    FolderManager().SetNewItemEvent([&](QObject*, const TNavigationPtr&) { ++reported; });
    WriteEntry(A);
    Execute();
    WriteDefinition("_buttons/a.uri\r\n");
    Execute();
    EXPECT_EQ(reported, 0);
    FolderManager().AddFolder(m_project.Path(QStringLiteral("_buttons")), {});
    EXPECT_EQ(reported, 1);
    FolderManager().SetNewItemEvent({});
}

TEST_F(CmdButtonsLoad, NewItemEventAndLayoutAreRestoredWhenAnExceptionPasses)
{
    WriteEntries({A, C});
    WriteEntry(B, "Unsinn");
    {
        const TThrowingNotes notes;
        EXPECT_THROW(Execute(), TUserError);
        WriteDefinition("_buttons/fehlt.uri\r\n");
        EXPECT_THROW(Execute(), TUserError);
    }
    EXPECT_FALSE(FolderManager().GetNewItemEvent());
    EXPECT_TRUE(Bar().widget()->layout()->isEnabled());
    EXPECT_TRUE(Bar().widget()->isVisible());
    QFile::remove(m_project.Path(QStringLiteral("_buttons/__CmdButtons.def")));
    Execute();
    EXPECT_EQ(Captions(), QStringList({A, C}));
}

TEST_F(CmdButtonsLoad, LayoutIsSuspendedWhileButtonsAreAdded)
{
    class TProbe final : public IMessageHandler
    {
    public:
        explicit TProbe(TICmdButtons& bar) : m_bar(bar), m_previous(SetMessageHandler(this)) {}
        ~TProbe() override { SetMessageHandler(m_previous); }
        TProbe(const TProbe&) = delete;
        TProbe& operator=(const TProbe&) = delete;
        void ShowInformation(const QString&) override {}
        void ShowError(const QString&) override {}
        bool Confirm(const QString&) override { return false; }
        void Note(const QObject*, const QString&) override { WasEnabled.append(m_bar.widget()->layout()->isEnabled()); }

        QList<bool> WasEnabled;

    private:
        TICmdButtons& m_bar;
        IMessageHandler* m_previous;
    };
    WriteEntry(A, "Unsinn");
    TProbe probe(Bar());
    Execute();
    EXPECT_EQ(probe.WasEnabled, QList<bool>{false});
    EXPECT_TRUE(Bar().widget()->layout()->isEnabled());
}

TEST_F(CmdButtonsLoad, LongBarScrolls)
{
    QStringList names;
    for (int i = 0; i < 30; ++i)
        names.append(QString::number(i));
    WriteEntries(names);
    Execute();
    EXPECT_EQ(Captions(), names);
    EXPECT_TRUE(Bar().widget()->height() > 30 * 75);
    EXPECT_LE(Bar().widget()->width(), Bar().viewport()->width());
}

TEST_F(CmdButtonsLoad, ButtonIsPaintedAsSoonAsItIsScrolledIntoSight)
{
    QStringList names;
    for (int i = 0; i < 30; ++i)
        names.append(QString::number(i));
    WriteEntries(names);
    const TPaintRecorder recorder;
    Execute();
    EXPECT_TRUE(recorder.Painted.contains(names.first()));
    EXPECT_FALSE(recorder.Painted.contains(names.last()));
    Bar().ensureWidgetVisible(Button(names.last()));
    QApplication::processEvents();
    EXPECT_TRUE(recorder.Painted.contains(names.last()));
}

TEST_F(CmdButtonsLoad, BarThatIsLoadedWhileItsPaneIsHiddenShowsItsButtonsWithIt)
{
    WriteEntries({QStringLiteral("a"), QStringLiteral("b")});
    Bar().window()->hide();
    Execute();
    EXPECT_FALSE(Button(QStringLiteral("a"))->isVisible());
    Bar().window()->show();
    QApplication::processEvents();
    for (const TCmdButton* button : Bar().Buttons()) {
        EXPECT_TRUE(button->isVisible());
        EXPECT_GT(button->width(), 100);
    }
    EXPECT_GE(Button(QStringLiteral("b"))->y(), Button(QStringLiteral("a"))->y() + TCmdButton::Height);
}
