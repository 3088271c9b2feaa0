#include "ChildProcess.h"
#include "CmdButtonsBar.h"
#include "NestedLoop.h"
#include "Vlerrors.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLayout>

#include <fstream>
#include <functional>

#include <unistd.h>

namespace
{

class CmdButtonsBadInput : public TBarTest
{
protected:
    QString DefinitionFile() const { return m_project.Path(QStringLiteral("_buttons/__CmdButtons.def")); }

    // Commands the bar where nobody may read the definition file. "1|" when the failure names that file, else "0|", and
    // what `report` says after it.
    QString ReportOfUnreadableDefinition(const std::function<QString()>& report)
    {
        WriteEntry(A);
        WriteDefinition("_buttons/a.uri\r\n");
        QFile::setPermissions(DefinitionFile(), QFile::Permissions());
        QFile::setPermissions(m_project.Root() + QStringLiteral("/.."), QFile::Permissions(0x7755));
        return RunInChild([&] {
            GiveUpRights();
            const QString outcome = OutcomeOf([this] { Execute(); });
            return (outcome.contains(DefinitionFile()) ? QStringLiteral("1|") : QStringLiteral("0|")) + report();
        });
    }
};

} // namespace

TEST_F(CmdButtonsBadInput, DamagedEntriesAreNamedAndTheOthersLoad)
{
    WriteEntry(A, "\x89PNG");
    WriteEntry(B);
    Execute();
    EXPECT_EQ(Captions(), QStringList{B});
    ASSERT_EQ(m_messages.Notes.size(), 1);
    EXPECT_TRUE(m_messages.Notes.first().contains(QStringLiteral("/_buttons/a.uri")));
}

TEST_F(CmdButtonsBadInput, DefinitionFileOfTenThousandLinesIsLoadedWhole)
{
    WriteEntry(A);
    QByteArray names;
    for (int i = 0; i < 10'000; ++i)
        names += "_buttons/a.uri=" + QByteArray::number(i) + "\r\n";
    WriteDefinition(names);
    Execute();
    EXPECT_EQ(Bar().Buttons().size(), 10'000);
    EXPECT_EQ(Bar().Buttons().last()->height(), 75);
    Execute("Velmora.CmdButtons.1://");
    EXPECT_TRUE(Bar().Buttons().isEmpty());
}

TEST_F(CmdButtonsBadInput, DefinitionFileOfTenThousandMissingEntriesFillsNoMessagePane)
{
    QByteArray names;
    for (int i = 0; i < 10'000; ++i)
        names += "fehlt" + QByteArray::number(i) + ".uri\r\n";
    WriteDefinition(names);
    Execute();
    EXPECT_TRUE(Captions().isEmpty());
    EXPECT_EQ(m_messages.Notes.size(), 21);
}

TEST_F(CmdButtonsBadInput, DefinitionFileThatNamesItselfIsNamedAsADamagedEntry)
{
    WriteEntry(A);
    WriteDefinition("_buttons\\__CmdButtons.def\r\n_buttons\r\n_buttons\\a.uri\r\n");
    Execute();
    EXPECT_EQ(Captions(), QStringList{A});
    EXPECT_EQ(m_messages.Notes.size(), 2);
}

TEST_F(CmdButtonsBadInput, BinaryFileAsDefinitionFileLoadsNothing)
{
    QByteArray bytes;
    for (int i = 0; i < 100'000; ++i)
        bytes += static_cast<char>(i * 7);
    m_project.Write(QStringLiteral("_buttons/__CmdButtons.def"), bytes);
    EXPECT_TRUE(Execute());
    EXPECT_TRUE(Captions().isEmpty());
}

TEST_F(CmdButtonsBadInput, UnreadableDefinitionFileReachesTheHostAndTheBarStillFollowsTheProject)
{
    const QString report = ReportOfUnreadableDefinition([this] {
        QFile::remove(DefinitionFile());
        UserManager()->OpenProject(m_project.Root());
        return QStringLiteral("%1|%2").arg(Captions().size()).arg(m_messages.Errors.size());
    });
    EXPECT_EQ(report, QStringLiteral("1|0|1"));
}

TEST_F(CmdButtonsBadInput, EntryThatNamesItselfLoadsAndIsRefusedWhenItRuns)
{
    WriteEntry(A, "File=%PRJPATH%/_buttons/a.uri\n");
    Execute();
    Click(A);
    EXPECT_EQ(m_messages.Errors, QStringList{QStringLiteral("Der Eintrag \"a\" nennt sich selbst.")});
}

TEST_F(CmdButtonsBadInput, IconThatIsNoPictureLeavesTheButtonWithoutAGlyphAndIsNoted)
{
    m_project.Write(QStringLiteral("_buttons/a.png"), "Das ist kein Bild.");
    WriteEntry(A, "Command=pane://a\nIcon=_buttons/a.png\n");
    WriteEntry(B, "Command=pane://b\nIcon=_buttons/fehlt.png\n");
    Execute();
    EXPECT_TRUE(Button(A)->icon().isNull());
    EXPECT_TRUE(Button(B)->icon().isNull());
    ASSERT_EQ(m_messages.Notes.size(), 1);
    EXPECT_TRUE(m_messages.Notes.first().contains(QStringLiteral("_buttons/a.png")));
}

TEST_F(CmdButtonsBadInput, CaptionsOfAnyKindAreShownAsText)
{
    const auto markup = QStringLiteral("<b>Fett</b> & \"mehr\"");
    WriteEntry(A, "Caption=" + markup.toUtf8() + "\nCommand=pane://a\n");
    WriteEntry(B, "Caption=" + QByteArray(20'000, 'x') + "\nCommand=pane://b\n");
    Execute();
    EXPECT_EQ(Button(markup)->accessibleName(), markup);
    EXPECT_TRUE(Button(markup)->toolTip().contains(QStringLiteral("&lt;b&gt;")));
    EXPECT_LE(Bar().widget()->width(), Bar().viewport()->width());
    EXPECT_FALSE(Bar().grab().isNull());
}

TEST_F(CmdButtonsBadInput, FailureWhileADefinitionFileIsReadLeavesNothingBehind)
{
    const QString report = ReportOfUnreadableDefinition([this] {
        return QStringLiteral("%1|%2|%3")
            .arg(FolderManager().GetNewItemEvent() ? 1 : 0)
            .arg(Bar().widget()->layout()->isEnabled())
            .arg(Bar().widget()->isVisible());
    });
    EXPECT_EQ(report, QStringLiteral("1|0|1|1"));
}

TEST_F(CmdButtonsBadInput, FailureWhileTheEntriesOfADefinitionFileAreReadLeavesNothingBehind)
{
    WriteEntry(A);
    WriteEntry(B, "Unsinn");
    WriteDefinition("_buttons/b.uri\r\n_buttons/a.uri\r\n");
    const TThrowingNotes notes;
    EXPECT_THROW(Execute(), TUserError);
    EXPECT_FALSE(FolderManager().GetNewItemEvent());
    EXPECT_TRUE(Bar().widget()->layout()->isEnabled());
    EXPECT_TRUE(Bar().widget()->isVisible());
    WriteEntry(B);
    Execute();
    EXPECT_EQ(Captions(), QStringList({B, A}));
    EXPECT_TRUE(Button(A)->isVisible());
}

TEST_F(CmdButtonsBadInput, FileNamesOfAnyKindAreCaptionsAndRun)
{
    const QStringList names{QStringLiteral("\"zitat\" 'und'"), QStringLiteral("zwei\nzeilen"),
                            QStringLiteral("punkte..."), QStringLiteral("%PRJPATH%"), QStringLiteral("a&b=c;d")};
    for (const QString& name : names)
        WriteEntry(name, "Command=pane://x\n");
    Execute();
    QStringList captions = Captions();
    captions.sort();
    QStringList expected = names;
    expected.sort();
    EXPECT_EQ(captions, expected);
    for (const QString& name : names)
        Click(name);
    EXPECT_EQ(m_commands, QStringList(names.size(), QStringLiteral("pane://x")));
}

TEST_F(CmdButtonsBadInput, PropertiesOfAnEntryWithAnOddFileNameAreSavedInItsFile)
{
    const auto name = QStringLiteral("\"zwei\"\nzeilen...");
    WriteEntry(name, "Command=pane://x\n");
    Execute();
    EXPECT_TRUE(RunInLoop([&] { Bar().ShowProperties(Button(name)); }, [] { Confirm(QStringLiteral("Neu")); }));
    EXPECT_EQ(m_messages.Errors, QStringList());
    EXPECT_TRUE(m_project.Read(QStringLiteral("_buttons/%1.uri").arg(name)).contains("Caption=Neu"));
    EXPECT_EQ(QDir(m_project.Path(QStringLiteral("_buttons"))).entryList(QDir::Files).size(), 1);
}

TEST_F(CmdButtonsBadInput, FileNameThatIsNoUtf8LeavesTheOthersAlone)
{
    WriteEntry(A);
    const QByteArray path = m_project.Path(QStringLiteral("_buttons/")).toUtf8() + "k\xFC"
                                                                                   "che.uri";
    std::ofstream(path.toStdString()) << "Command=pane://x\n";
    ASSERT_EQ(access(path.constData(), R_OK), 0);
    Execute();
    EXPECT_EQ(Captions(), QStringList{A});
    EXPECT_EQ(m_messages.Errors, QStringList());
}
