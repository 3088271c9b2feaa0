#include "ChildProcess.h"
#include "CmdButtonsBar.h"
#include "NestedLoop.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>

namespace
{

const auto Werkstatt = QStringLiteral("Werkstatt");

class CmdButtonsNew : public TBarTest
{
protected:
    // Chooses "Neue Aktion" in the popup menu and does something with the dialog.
    bool ChooseNew(const std::function<void()>& during)
    {
        OpenPopup({});
        return RunInLoop([this] { Choose(QStringLiteral("Neue Aktion")); }, during);
    }
    QStringList Files() const { return QDir(m_project.Path(QStringLiteral("_buttons"))).entryList(QDir::Files); }
    static QStringList TemporaryEntries() { return QDir::temp().entryList({QStringLiteral("velmora-*.uri")}); }
};

} // namespace

TEST_F(CmdButtonsNew, ConfirmedEntryIsAButtonAtTheBottomAndAFileOfTheFolder)
{
    WriteEntry(QStringLiteral("z"));
    Execute();
    EXPECT_TRUE(ChooseNew([] {
        EXPECT_EQ(QApplication::activeModalWidget()->windowTitle(), QStringLiteral("Neue Aktion"));
        Confirm(Werkstatt);
    }));
    EXPECT_EQ(Captions(), QStringList({QStringLiteral("z"), Werkstatt}));
    EXPECT_EQ(Files().size(), 2);
    const TNavigation* entry = Button(Werkstatt)->Action();
    EXPECT_FALSE(entry->IsNew());
    EXPECT_EQ(entry->GetCategory(), QStringLiteral("_buttons"));
    EXPECT_EQ(ReadAll(ToPlatformPath(entry->GetFile())), "Caption=Werkstatt\nCommand=pane://neu\nRemovable=yes\n");
    EXPECT_TRUE(entry->GetFile().endsWith(QStringLiteral(".uri")));
    EXPECT_EQ(TemporaryEntries(), QStringList());
}

TEST_F(CmdButtonsNew, NewButtonRunsAndCanBeEditedAndComesBack)
{
    Execute();
    ChooseNew([] { Confirm(Werkstatt); });
    Click(Werkstatt);
    EXPECT_EQ(m_commands, QStringList{QStringLiteral("pane://neu")});
    EXPECT_TRUE(RunInLoop([this] { Bar().ShowProperties(Button(Werkstatt)); }, [] { Confirm(A); }));
    EXPECT_EQ(Button(A)->text(), A);
    Execute();
    EXPECT_EQ(Captions(), QStringList{A});
}

TEST_F(CmdButtonsNew, CancelledEntryLeavesNothingBehind)
{
    WriteEntry(A);
    Execute();
    EXPECT_TRUE(ChooseNew([] {
        Type("EditCaption", Werkstatt);
        Press("BtnCancel");
    }));
    EXPECT_EQ(Captions(), QStringList{A});
    EXPECT_EQ(Files(), QStringList{QStringLiteral("a.uri")});
    EXPECT_EQ(FolderManager().Entries().size(), 1);
    EXPECT_EQ(TemporaryEntries(), QStringList());
}

TEST_F(CmdButtonsNew, FileThatIsThereAfterACancelIsDeleted)
{
    Execute();
    EXPECT_TRUE(ChooseNew([] {
        WriteAll(Field<QLabel>("LabelFile")->text(), "Command=pane://x");
        Press("BtnCancel");
    }));
    EXPECT_TRUE(Files().isEmpty());
}

TEST_F(CmdButtonsNew, OnADefinitionFileSavingFailsWithAClearMessageAndTheFileStaysIntact)
{
    WriteEntry(A);
    WriteDefinition("_buttons/a.uri\r\n");
    Execute();
    EXPECT_TRUE(ChooseNew([this] {
        EXPECT_TRUE(Field<QLabel>("LabelFile")
                        ->text()
                        .startsWith(m_project.Path(QStringLiteral("_buttons/__CmdButtons.def/"))));
        Confirm(Werkstatt);
        ASSERT_EQ(m_messages.Errors.size(), 1);
        EXPECT_TRUE(
            m_messages.Errors.first().contains(QStringLiteral("\"__CmdButtons.def\" ist eine Datei und kein Ordner")));
        Press("BtnCancel");
    }));
    EXPECT_EQ(Captions(), QStringList{A});
    EXPECT_EQ(m_project.Read(QStringLiteral("_buttons/__CmdButtons.def")), "[CMDBUTTONS]\r\n_buttons/a.uri\r\n");
    EXPECT_EQ(Files().size(), 2);
}

TEST_F(CmdButtonsNew, BeforeAnyCommandNothingIsWrittenAnywhere)
{
    const QStringList before = QDir::current().entryList(QDir::AllEntries | QDir::Hidden);
    EXPECT_TRUE(Bar().GetSourceLocation().isEmpty());
    OpenPopup({});
    Choose(QStringLiteral("Neue Aktion"));
    EXPECT_EQ(m_messages.Errors.size(), 1);
    EXPECT_EQ(QDir::current().entryList(QDir::AllEntries | QDir::Hidden), before);
    EXPECT_TRUE(Captions().isEmpty());
}

TEST_F(CmdButtonsNew, FolderThatIsMissingIsNamedAndTheFormerOneIsLeftAlone)
{
    Execute();
    Execute("Velmora.CmdButtons.1://%PRJPATH%/fehlt");
    OpenPopup({});
    Choose(QStringLiteral("Neue Aktion"));
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.first().contains(QStringLiteral("fehlt")));
    EXPECT_TRUE(Files().isEmpty());
}

TEST_F(CmdButtonsNew, ProjectChangeUnderTheOpenDialogKeepsTheEntryOutOfTheOtherProjectsBar)
{
    Execute();
    EXPECT_TRUE(ChooseNew([this] {
        OpenOther();
        Confirm(Werkstatt);
    }));
    EXPECT_EQ(Captions(), QStringList{QStringLiteral("anderes")});
    EXPECT_EQ(Files().size(), 1);
    EXPECT_EQ(QDir(OtherRoot() + QStringLiteral("/_buttons")).entryList(QDir::Files).size(), 1);
}

TEST_F(CmdButtonsNew, DialogOfAButtonOutlivesAProjectChange)
{
    WriteEntry(A);
    Execute();
    EXPECT_TRUE(RunInLoop([this] { Bar().ShowProperties(Button(A)); },
                          [this] {
                              OpenOther();
                              Confirm(Werkstatt);
                          }));
    EXPECT_EQ(Captions(), QStringList{QStringLiteral("anderes")});
    EXPECT_TRUE(m_project.Read(QStringLiteral("_buttons/a.uri")).contains("Caption=Werkstatt"));
    UserManager()->OpenProject(m_project.Root());
    EXPECT_EQ(Captions(), QStringList{Werkstatt});
}

// Both cases as a user without rights in the folder: what is said, and what is left in it.
TEST_F(CmdButtonsNew, InAFolderWithoutRightsSavingFailsWithAMessageAndTheDialogStays)
{
    WriteEntry(A);
    Execute();
    const QString folder = m_project.Path(QStringLiteral("_buttons"));
    QFile::setPermissions(folder, QFile::Permissions(0x5555));
    QFile::setPermissions(m_project.Root() + QStringLiteral("/.."), QFile::Permissions(0x7755));
    const auto tryIn = [&](const std::function<void(const std::function<void()>&)>& open) {
        return RunInChild([&] {
            GiveUpRights();
            bool stays = false;
            open([&] {
                Confirm(Werkstatt);
                stays = Field<QLineEdit>("EditCaption")->text() == Werkstatt;
                Press("BtnCancel");
            });
            return QStringLiteral("%1|%2|%3|%4")
                .arg(m_messages.Errors.size())
                .arg(m_messages.Errors.value(0).contains(folder))
                .arg(stays)
                .arg(Captions().join(u','));
        });
    };
    EXPECT_EQ(tryIn([this](const auto& during) { ChooseNew(during); }), QStringLiteral("1|1|1|a"));
    EXPECT_EQ(tryIn([this](const auto& during) { RunInLoop([this] { Bar().ShowProperties(Button(A)); }, during); }),
              QStringLiteral("1|1|1|a"));
    EXPECT_EQ(Files(), QStringList{QStringLiteral("a.uri")});
    EXPECT_EQ(m_project.Read(QStringLiteral("_buttons/a.uri")), "Command=pane://a\n");
    QFile::setPermissions(folder, QFile::Permissions(0x7755));
}

TEST_F(CmdButtonsNew, BarMayGoUnderTheOpenDialog)
{
    Execute();
    EXPECT_TRUE(ChooseNew([this] {
        EndBar();
        Confirm(Werkstatt);
    }));
    EXPECT_EQ(Files().size(), 1);
}
