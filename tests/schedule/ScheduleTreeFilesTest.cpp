#include "ScheduleTree.h"

#include "ChildProcess.h"
#include "Vlerrors.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace
{

class ScheduleFilesOfTree : public TScheduleTree
{
protected:
    static void SetMode(const QString& path, unsigned mode)
    {
        ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0) << path.toStdString();
    }
    QString Directory() const { return QFileInfo(m_project.Schedule()).path(); }
    QStringList Names() const { return QDir(Directory()).entryList(QDir::Files | QDir::Hidden); }
    void WriteDocument(const QByteArray& content) const { WriteAll(m_project.Schedule(), content); }
    // Makes the document larger than `LimitFileSize` lets it be.
    void MakeLarge() const { Node("Flur")->Data()->MinVal = QString(100000, u'x'); }
};

const auto NoConfig = QStringLiteral("Dieses Projekt enthält nicht das notwendige _config Verzeichnis.");

} // namespace

TEST_F(ScheduleFilesOfTree, ExportWithoutAChangeWritesTheSameBytes)
{
    Run("MenuAction_Export");
    EXPECT_EQ(Exported(), Document());
    EXPECT_EQ(Names(), QStringList({QStringLiteral("schedule.xml")}));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(ScheduleFilesOfTree, ExportNotesHowMuchItWrote)
{
    m_messages.Notes.clear();
    Run("MenuAction_Export");
    EXPECT_EQ(m_messages.Notes, QStringList({QStringLiteral("4 Gruppen, 5 Datenpunkte, 5 Schalteinträge exportiert "
                                                            "nach ") +
                                             m_project.Schedule()}));
}

TEST_F(ScheduleFilesOfTree, StreamHoldsTheWholeDocument)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    m_frame->SchedulesToStream(buffer);
    EXPECT_EQ(buffer.data(), Document());
}

TEST_F(ScheduleFilesOfTree, StreamOfAnEmptyTreeIsAnEmptyDocument)
{
    const TScheduleTreeFrame empty;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    empty.SchedulesToStream(buffer);
    EXPECT_EQ(buffer.data(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<eibnet>\r\n</eibnet>\r\n");
}

TEST_F(ScheduleFilesOfTree, ReloadBringsBackWhatTheFileHolds)
{
    const std::string before = Outline();
    m_frame->RemoveBranches({Node("Licht")});
    ASSERT_TRUE(m_frame->IsModified());
    Run("MenuAction_Reload");
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(ScheduleFilesOfTree, ReloadOfAFileThatWentAwayDoesNothing)
{
    const std::string before = Outline();
    ASSERT_TRUE(Action("MenuAction_Reload")->isEnabled());
    ASSERT_TRUE(QFile::remove(m_project.Schedule()));
    Run("MenuAction_Reload");
    EXPECT_EQ(Outline(), before);
}

TEST_F(ScheduleFilesOfTree, LoadOfAMissingOrDamagedFileLeavesTheRootAloneAndRemembersThePath)
{
    for (const char* content : {"", "<eibnet><nodes name=\"a", "<other><nodes name=\"a\"/></other>", "text"}) {
        WriteDocument(content);
        m_frame->LoadSchedules(m_project.Schedule());
        EXPECT_EQ(Outline(), "Wochenschaltplan") << content;
        EXPECT_EQ(m_frame->GetDocumentPath(), m_project.Schedule());
    }
    const QString missing = m_project.Path(QStringLiteral("none/none.xml"));
    m_frame->LoadSchedules(missing);
    EXPECT_EQ(Outline(), "Wochenschaltplan");
    EXPECT_EQ(m_frame->GetDocumentPath(), missing);
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_TRUE(m_messages.Informations.isEmpty());
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(ScheduleFilesOfTree, LoadsAppendTheNamesOfTheirGroups)
{
    m_frame->LoadSchedules(m_project.Schedule());
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub|Licht|Heizung|Rollladen|Urlaub");
    m_frame->LoadSchedules({});
    EXPECT_EQ(GroupNames(), "Licht|Heizung|Rollladen|Urlaub|Licht|Heizung|Rollladen|Urlaub");
}

TEST_F(ScheduleFilesOfTree, EntriesAtUnusualPlacesStayThereAndAreLeftOutOfAnExport)
{
    WriteDocument("<eibnet><schedule time=\"01:00\"/><nodes name=\"A\"><schedule time=\"02:00\"/></nodes></eibnet>");
    Run("MenuAction_Reload");
    EXPECT_EQ(Outline(), "Wochenschaltplan\n  01:00\n  A\n    02:00");
    EXPECT_EQ(Node("01:00")->ImageIndex(), 3);
    Run("MenuAction_Export");
    EXPECT_TRUE(Exported().contains("<nodes name=\"A\" access=\"5\">\r\n</nodes>\r\n</eibnet>"));
    EXPECT_FALSE(Exported().contains("02:00"));
    EXPECT_TRUE(Exported().contains("<nodes name=\"<schedule time=\"01:00\"/>\" access=\"0\">"));
}

// What cannot be written

TEST_F(ScheduleFilesOfTree, ExportIntoAMissingDirectoryTellsTheUserAndWritesNothing)
{
    ASSERT_TRUE(QDir(Directory()).removeRecursively());
    m_frame->SetModified(true);
    Run("MenuAction_Export");
    EXPECT_EQ(m_messages.Informations, QStringList({NoConfig}));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_FALSE(QFile::exists(Directory()));
    EXPECT_TRUE(m_frame->IsModified());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(ScheduleFilesOfTree, ExportToABareFileNameIsAnsweredAsAMissingDirectory)
{
    m_frame->SaveSchedules(QStringLiteral("schedule.xml"));
    EXPECT_EQ(m_messages.Informations, QStringList({NoConfig}));
    EXPECT_FALSE(QFile::exists(QStringLiteral("schedule.xml")));
}

TEST_F(ScheduleFilesOfTree, ExportWhereADirectoryStandsFails)
{
    ASSERT_TRUE(QFile::remove(m_project.Schedule()));
    ASSERT_TRUE(QDir().mkpath(m_project.Schedule()));
    m_frame->SetModified(true);
    EXPECT_THROW(m_frame->SaveSchedules(m_project.Schedule()), TFileError);
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    Run("MenuAction_Export");
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors[0].contains(QStringLiteral("schedule.xml"))) << m_messages.Errors[0].toStdString();
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(ScheduleFilesOfTree, ExportOnAFullDiskLeavesTheOldDocument)
{
    MakeLarge();
    const QString errors = RunInChild([&] {
        LimitFileSize(4096);
        Run("MenuAction_Export");
        return m_messages.Errors.join(u'|');
    });
    EXPECT_TRUE(errors.contains(QStringLiteral("schedule.xml\" kann nicht geschrieben werden")))
        << errors.toStdString();
    EXPECT_EQ(Exported(), Document());
    EXPECT_EQ(Names(), QStringList({QStringLiteral("schedule.xml")}));
}

TEST_F(ScheduleFilesOfTree, SavingOnAFullDiskFailsForTheCaller)
{
    MakeLarge();
    const QString outcome = RunInChild([&] {
        LimitFileSize(4096);
        return OutcomeOf([&] { m_frame->SaveSchedules(m_project.Schedule()); });
    });
    EXPECT_TRUE(outcome.contains(QStringLiteral("schedule.xml\" kann nicht geschrieben werden")))
        << outcome.toStdString();
    EXPECT_EQ(Exported(), Document());
}

TEST_F(ScheduleFilesOfTree, ExportOverAReadOnlyDocumentFailsAndLeavesIt)
{
    // Everybody may reach the document and nobody may write it.
    SetMode(QFileInfo(m_project.Root()).path(), 0755);
    SetMode(Directory(), 0555);
    SetMode(m_project.Schedule(), 0444);
    const QString errors = RunInChild([&] {
        GiveUpRights();
        Run("MenuAction_Export");
        return m_messages.Errors.join(u'|');
    });
    SetMode(Directory(), 0755);
    EXPECT_TRUE(errors.contains(QStringLiteral("schedule.xml\" kann nicht geschrieben werden")))
        << errors.toStdString();
    EXPECT_EQ(Exported(), Document());
}

// What was never read

TEST_F(ScheduleFilesOfTree, ExportKeepsADocumentThatItCouldNotRead)
{
    WriteDocument("<eibnet><nodes name=\"a");
    Run("MenuAction_Reload");
    m_messages.Notes.clear();
    Run("MenuAction_Export");
    EXPECT_EQ(ReadAll(m_project.Schedule() + QStringLiteral(".unlesbar")), "<eibnet><nodes name=\"a");
    EXPECT_EQ(m_messages.Notes.filter(QStringLiteral(".unlesbar")).size(), 1);
    EXPECT_EQ(Exported(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<eibnet>\r\n</eibnet>\r\n");
    Run("MenuAction_Export");
    EXPECT_EQ(Names(), QStringList({QStringLiteral("schedule.xml"), QStringLiteral("schedule.xml.unlesbar")}));
}

TEST_F(ScheduleFilesOfTree, ExportKeepsADocumentOfAnotherName)
{
    const QString other = Directory() + QStringLiteral("/other.xml");
    WriteAll(other, "<other/>");
    m_frame->SaveSchedules(other);
    EXPECT_EQ(ReadAll(other + QStringLiteral(".unlesbar")), "<other/>");
    EXPECT_EQ(ReadAll(other), Document());
    EXPECT_EQ(QString(m_frame->GetDocumentPath()).replace(u'\\', u'/'), m_project.Schedule());
}
