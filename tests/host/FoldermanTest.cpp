#include "Folderman.h"

#include "ChildProcess.h"
#include "TestSupport.h"
#include "Userman.h"
#include "Vlerrors.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <vector>

namespace
{

// Sets the new-item event and keeps what it reports.
class FolderManagerTest : public testing::Test
{
protected:
    FolderManagerTest()
    {
        QDir().mkpath(Folder());
        FolderManager().SetNewItemEvent([this](QObject* sender, TNavigationPtr entry) {
            EXPECT_EQ(sender, &FolderManager());
            m_entries.push_back(std::move(entry));
        });
    }
    ~FolderManagerTest() override { FolderManager().SetNewItemEvent({}); }

    QString Folder() const { return m_project.Path(QStringLiteral("_buttons")); }
    void WriteEntry(const QString& name, const QByteArray& text = "Command=pane://scenes\n") const
    {
        m_project.Write(QStringLiteral("_buttons/") + name, text);
    }
    QStringList Captions() const
    {
        QStringList captions;
        for (const TNavigationPtr& entry : m_entries)
            captions.append(entry->GetCaption());
        return captions;
    }
    QStringList Add(const QStringList& names)
    {
        m_entries.clear();
        FolderManager().AddItems(names, QStringLiteral("Leiste"));
        return Captions();
    }

    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    std::vector<TNavigationPtr> m_entries;
};

} // namespace

TEST_F(FolderManagerTest, ReportsTheEntriesOfAFolderInTheOrderOfTheirNames)
{
    for (const char* name : {"10 b", "2 a", "Zebra", "apfel", "Äpfel", "Birne", "öl", "Ofen"})
        WriteEntry(QString::fromUtf8(name) + QStringLiteral(".uri"));
    FolderManager().AddFolder(Folder(), QStringLiteral("Leiste"));
    EXPECT_EQ(Captions(), QStringList({QStringLiteral("2 a"), QStringLiteral("10 b"), QStringLiteral("apfel"),
                                       QStringLiteral("Äpfel"), QStringLiteral("Birne"), QStringLiteral("Ofen"),
                                       QStringLiteral("öl"), QStringLiteral("Zebra")}));
}

TEST_F(FolderManagerTest, OnlyEntryFilesOfTheFolderItselfAreEntries)
{
    WriteEntry(QStringLiteral("A.URI"));
    WriteEntry(QStringLiteral("b.txt"));
    WriteEntry(QStringLiteral(".c.uri"));
    QDir().mkpath(Folder() + QStringLiteral("/d.uri"));
    m_project.Write(QStringLiteral("_buttons/d.uri/e.uri"), "Command=pane://x");
    FolderManager().AddFolder(Folder(), {});
    EXPECT_EQ(Captions(), QStringList{QStringLiteral("A")});
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}

TEST_F(FolderManagerTest, PathsMayHaveBackslashes)
{
    WriteEntry(QStringLiteral("a.uri"));
    FolderManager().AddFolder(QString(Folder()).replace(u'/', u'\\'), {});
    EXPECT_EQ(Captions(), QStringList{QStringLiteral("a")});
}

TEST_F(FolderManagerTest, GivesTheCategoryToEntriesWithoutOne)
{
    WriteEntry(QStringLiteral("a.uri"));
    WriteEntry(QStringLiteral("b.uri"), "Command=pane://x\nCategory=Eigene\n");
    FolderManager().AddFolder(Folder(), QStringLiteral("Leiste"));
    ASSERT_EQ(m_entries.size(), 2U);
    EXPECT_EQ(m_entries[0]->GetCategory(), QStringLiteral("Leiste"));
    EXPECT_EQ(m_entries[1]->GetCategory(), QStringLiteral("Eigene"));
}

TEST_F(FolderManagerTest, UnreadableAndDamagedEntriesAreNamedAndTheOthersLoad)
{
    WriteEntry(QStringLiteral("a.uri"));
    WriteEntry(QStringLiteral("b.uri"), "Unsinn");
    WriteEntry(QStringLiteral("c.uri"), "\xFF\xFE");
    ASSERT_TRUE(QFile::link(QStringLiteral("/nirgends"), Folder() + QStringLiteral("/d.uri")));
    ASSERT_EQ(mkfifo(QFile::encodeName(Folder() + QStringLiteral("/e.uri")).constData(), 0600), 0);
    WriteEntry(QStringLiteral("f.uri"));
    FolderManager().AddFolder(Folder(), {});
    EXPECT_EQ(Captions(), QStringList({QStringLiteral("a"), QStringLiteral("f")}));
    ASSERT_EQ(m_messages.Notes.size(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(m_messages.Notes[i].contains(QStringLiteral("/_buttons/%1.uri").arg(QChar(u'b' + i))));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(FolderManagerTest, EntryWithoutTheRightToReadItIsNamed)
{
    WriteEntry(QStringLiteral("a.uri"));
    WriteEntry(QStringLiteral("b.uri"));
    QFile::setPermissions(Folder() + QStringLiteral("/a.uri"), QFile::Permissions());
    QFile::setPermissions(m_project.Root() + QStringLiteral("/.."), QFile::Permissions(0x7755));
    EXPECT_EQ(RunInChild([this] {
                  GiveUpRights();
                  FolderManager().AddFolder(Folder(), {});
                  return Captions().join(u',') + u'|' + QString::number(m_messages.Notes.size());
              }),
              QStringLiteral("b|1"));
}

TEST_F(FolderManagerTest, VeryManyDamagedEntriesAreSummedUp)
{
    QStringList names;
    for (int i = 0; i < 10'000; ++i)
        names.append(QStringLiteral("_buttons/fehlt%1.uri").arg(i));
    EXPECT_TRUE(Add(names).isEmpty());
    ASSERT_EQ(m_messages.Notes.size(), 21);
    EXPECT_EQ(m_messages.Notes.last(), QStringLiteral("9980 weitere Einträge können nicht gelesen werden."));
}

TEST_F(FolderManagerTest, ListIsReportedInItsOrderWithVariablesDecoded)
{
    for (const char* name : {"a", "b", "c"})
        WriteEntry(QString::fromLatin1(name) + QStringLiteral(".uri"));
    EXPECT_EQ(Add({QStringLiteral("%PRJPATH%\\_buttons\\c.uri"), QStringLiteral("_buttons\\a.uri"),
                   QStringLiteral("$(project)/_buttons/b.uri"), QStringLiteral("_buttons/a.uri"),
                   Folder() + QStringLiteral("/c.uri")}),
              QStringList({QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("a"),
                           QStringLiteral("c")}));
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}

TEST_F(FolderManagerTest, ListMayNameFolderDefinitionFileAndNothingElseButEntries)
{
    m_project.Write(QStringLiteral("_buttons/__CmdButtons.def"), "[CMDBUTTONS]\n_buttons\\__CmdButtons.def\n");
    EXPECT_TRUE(
        Add({QStringLiteral("_buttons"), QStringLiteral("_buttons/__CmdButtons.def"), QStringLiteral("..")}).isEmpty());
    EXPECT_EQ(m_messages.Notes.size(), 3);
}

TEST_F(FolderManagerTest, ListWithoutAProjectNamesWhatItCannotFind)
{
    UserManager()->CloseProject();
    EXPECT_TRUE(Add({QStringLiteral("_buttons/a.uri")}).isEmpty());
    EXPECT_EQ(m_messages.Notes,
              QStringList{QStringLiteral("Der Eintrag \"_buttons/a.uri\" braucht ein offenes Projekt.")});
}

TEST_F(FolderManagerTest, RegisteredActionIsFoundByItsNameBeforeAnyFile)
{
    QAction action(QStringLiteral("&Beenden"));
    FolderManager().RegisterAction(QStringLiteral("Quit"), &action);
    m_project.Write(QStringLiteral("Quit"), "Caption=Datei\nCommand=pane://x");
    EXPECT_EQ(Add({QStringLiteral("quit")}), QStringList{QStringLiteral("Beenden")});
    EXPECT_EQ(m_entries.front()->GetCategory(), QStringLiteral("Leiste"));
}

TEST_F(FolderManagerTest, DestroyedActionIsForgotten)
{
    auto action = std::make_unique<QAction>();
    FolderManager().RegisterAction(QStringLiteral("Weg"), action.get());
    EXPECT_EQ(FolderManager().FindAction(QStringLiteral("WEG")), action.get());
    action.reset();
    EXPECT_EQ(FolderManager().FindAction(QStringLiteral("Weg")), nullptr);
    EXPECT_TRUE(Add({QStringLiteral("Weg")}).isEmpty());
    EXPECT_EQ(m_messages.Notes.size(), 1);
}

TEST_F(FolderManagerTest, EntriesThatNobodyTakesAreGone)
{
    WriteEntry(QStringLiteral("a.uri"));
    FolderManager().SetNewItemEvent({});
    const qsizetype before = FolderManager().Entries().size();
    FolderManager().AddFolder(Folder(), {});
    FolderManager().SetNewItemEvent([](QObject*, const TNavigationPtr&) {});
    FolderManager().AddFolder(Folder(), {});
    EXPECT_EQ(FolderManager().Entries().size(), before);
}

TEST_F(FolderManagerTest, ExceptionOfTheEventPassesAndTheEntryIsGone)
{
    WriteEntry(QStringLiteral("a.uri"));
    const qsizetype before = FolderManager().Entries().size();
    FolderManager().SetNewItemEvent([](QObject*, const TNavigationPtr&) { throw TUserError(QStringLiteral("Nein")); });
    EXPECT_THROW(FolderManager().AddFolder(Folder(), {}), TUserError);
    EXPECT_EQ(FolderManager().Entries().size(), before);
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}
