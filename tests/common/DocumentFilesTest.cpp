#include "DocumentFiles.h"

#include "ChildProcess.h"
#include "TestSupport.h"
#include "Vlerrors.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

const QByteArray OldContent("<alt>");
const QByteArray NewContent("<neu/>\r\n");

// A directory that everybody may write to, with the document "x.xml" in it.
class DocumentFiles : public testing::Test
{
protected:
    DocumentFiles()
    {
        SetMode(m_directory.path(), 0777);
        WriteAll(m_path, OldContent);
        SetMode(m_path, 0666);
    }

    static void SetMode(const QString& path, unsigned mode)
    {
        ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0) << path.toStdString();
    }
    static void GiveTo(const QString& path, unsigned user)
    {
        if (geteuid() == 0) {
            ASSERT_EQ(chown(QFile::encodeName(path).constData(), user, user), 0) << path.toStdString();
        }
    }
    QString File(const char* name) const { return m_directory.filePath(QString::fromLatin1(name)); }
    QStringList Names() const
    {
        return QDir(m_directory.path())
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
    }
    void Export(const QString& path, const QByteArray& content = NewContent)
    {
        m_files.Write(path, [&](QIODevice& device) { device.write(content); });
    }
    // The outcome of an export by a user without special rights.
    QString ExportWithoutRights(const QString& path)
    {
        return RunInChild([&] {
            GiveUpRights();
            return OutcomeOf([&] { Export(path); });
        });
    }

    QTemporaryDir m_directory;
    QString m_path = m_directory.filePath(QStringLiteral("x.xml"));
    TRecordedMessages m_messages;
    QObject m_owner;
    TDocumentFiles m_files{&m_owner};
};

} // namespace

TEST_F(DocumentFiles, WritesANewFileWithoutANote)
{
    Export(File("neu.xml"));
    EXPECT_EQ(ReadAll(File("neu.xml")), NewContent);
    EXPECT_EQ(Names(), QStringList({QStringLiteral("neu.xml"), QStringLiteral("x.xml")}));
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}

TEST_F(DocumentFiles, ReplacesAFileThatWasRead)
{
    m_files.MarkRead(m_path);
    Export(m_path);
    EXPECT_EQ(ReadAll(m_path), NewContent);
    EXPECT_EQ(Names(), QStringList({QStringLiteral("x.xml")}));
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}

TEST_F(DocumentFiles, KnowsAFileUnderEverySpellingOfItsPath)
{
    m_files.MarkRead(m_directory.path().replace(u'/', u'\\') + QStringLiteral("\\.\\x.xml"));
    Export(m_path);
    EXPECT_EQ(Names(), QStringList({QStringLiteral("x.xml")}));
}

TEST_F(DocumentFiles, KeepsAFileThatWasNotRead)
{
    Export(m_path);
    EXPECT_EQ(ReadAll(m_path), NewContent);
    EXPECT_EQ(ReadAll(File("x.xml.unlesbar")), OldContent);
    ASSERT_EQ(m_messages.Notes.size(), 1);
    EXPECT_EQ(m_messages.Notes[0],
              QStringLiteral("\"x.xml\" war nicht gelesen worden und bleibt als \"x.xml.unlesbar\" erhalten"));
}

TEST_F(DocumentFiles, KeepsAFileOnceOnly)
{
    Export(m_path);
    Export(m_path, "<neuer/>");
    EXPECT_EQ(ReadAll(m_path), "<neuer/>");
    EXPECT_EQ(Names(), QStringList({QStringLiteral("x.xml"), QStringLiteral("x.xml.unlesbar")}));
    EXPECT_EQ(m_messages.Notes.size(), 1);
}

TEST_F(DocumentFiles, NumbersWhatIsKeptWhereTheNameIsTaken)
{
    for (const char* content : {"eins", "zwei", "drei"}) {
        WriteAll(m_path, content);
        m_files.Clear();
        Export(m_path);
    }
    EXPECT_EQ(ReadAll(File("x.xml.unlesbar")), "eins");
    EXPECT_EQ(ReadAll(File("x.xml.unlesbar2")), "zwei");
    EXPECT_EQ(ReadAll(File("x.xml.unlesbar3")), "drei");
    EXPECT_TRUE(m_messages.Notes.last().contains(QStringLiteral("x.xml.unlesbar3")));
}

TEST_F(DocumentFiles, NumbersPastAFolderOfThatName)
{
    ASSERT_TRUE(QDir().mkpath(File("x.xml.unlesbar")));
    Export(m_path);
    EXPECT_EQ(ReadAll(File("x.xml.unlesbar2")), OldContent);
}

TEST_F(DocumentFiles, NumbersPastALinkThatLeadsNowhere)
{
    ASSERT_EQ(symlink("nowhere", QFile::encodeName(File("x.xml.unlesbar")).constData()), 0);
    Export(m_path);
    EXPECT_EQ(ReadAll(File("x.xml.unlesbar2")), OldContent);
    EXPECT_FALSE(QFile::exists(File("nowhere")));
}

TEST_F(DocumentFiles, ForgetsWhatWasReadWhenALoadBegins)
{
    m_files.MarkRead(m_path);
    m_files.Clear();
    Export(m_path);
    EXPECT_EQ(ReadAll(File("x.xml.unlesbar")), OldContent);
}

TEST_F(DocumentFiles, KeepsPermissionsOfBoth)
{
    SetMode(m_path, 0640);
    Export(m_path);
    struct stat status
    {};
    for (const char* name : {"x.xml", "x.xml.unlesbar"}) {
        ASSERT_EQ(stat(QFile::encodeName(File(name)).constData(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777u, 0640u) << name;
    }
}

TEST_F(DocumentFiles, KeepsTheTargetOfALink)
{
    const QString link = File("link.xml");
    ASSERT_TRUE(QFile::link(m_path, link));
    Export(link);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(ReadAll(m_path), NewContent);
    EXPECT_EQ(ReadAll(File("link.xml.unlesbar")), OldContent);
    EXPECT_FALSE(QFileInfo(File("link.xml.unlesbar")).isSymLink());
}

TEST_F(DocumentFiles, KeepsTheTargetOfALinkIntoAReadOnlyDirectory)
{
    const QString elsewhere = File("elsewhere");
    ASSERT_TRUE(QDir().mkpath(elsewhere));
    const QString target = elsewhere + QStringLiteral("/x.xml");
    WriteAll(target, OldContent);
    SetMode(target, 0666);
    SetMode(elsewhere, 0555);
    const QString link = File("link.xml");
    ASSERT_TRUE(QFile::link(target, link));
    EXPECT_EQ(ExportWithoutRights(link), QStringLiteral("ok"));
    EXPECT_EQ(ReadAll(target), NewContent);
    EXPECT_EQ(ReadAll(File("link.xml.unlesbar")), OldContent);
    SetMode(elsewhere, 0755);
}

TEST_F(DocumentFiles, MakesTheTargetOfALinkThatLeadsNowhere)
{
    const QString link = File("link.xml");
    ASSERT_TRUE(QFile::link(File("target.xml"), link));
    Export(link);
    EXPECT_EQ(ReadAll(File("target.xml")), NewContent);
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}

TEST_F(DocumentFiles, KeepsAFileThatItsUserMayNotRead)
{
    GiveTo(m_path, 65534);
    SetMode(m_path, 0200);
    EXPECT_EQ(ExportWithoutRights(m_path), QStringLiteral("ok"));
    SetMode(m_path, 0666);
    EXPECT_EQ(ReadAll(m_path), NewContent);
    SetMode(File("x.xml.unlesbar"), 0666);
    EXPECT_EQ(ReadAll(File("x.xml.unlesbar")), OldContent);
}

TEST_F(DocumentFiles, RefusesAFileThatCannotBeKept)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "needs a file of another user";
    SetMode(m_path, 0222);
    const QString outcome = ExportWithoutRights(m_path);
    EXPECT_TRUE(outcome.contains(QStringLiteral("x.xml"))) << outcome.toStdString();
    EXPECT_NE(outcome, QStringLiteral("ok"));
    EXPECT_EQ(ReadAll(m_path), OldContent);
    EXPECT_EQ(Names(), QStringList({QStringLiteral("x.xml")}));
}

TEST_F(DocumentFiles, RefusesADirectory)
{
    const QString path = File("d.xml");
    ASSERT_TRUE(QDir().mkpath(path));
    EXPECT_THROW(Export(path), TFileError);
    EXPECT_TRUE(QFileInfo(path).isDir());
    EXPECT_TRUE(m_messages.Notes.isEmpty());
}

TEST_F(DocumentFiles, ChangesNothingWhenTheWriterFails)
{
    EXPECT_THROW(m_files.Write(m_path, [](QIODevice&) { throw TFileError(QStringLiteral("x")); }), TFileError);
    EXPECT_EQ(ReadAll(m_path), OldContent);
    EXPECT_EQ(Names(), QStringList({QStringLiteral("x.xml")}));
}

TEST_F(DocumentFiles, KeepsAFileOnceOnlyOverFailedExports)
{
    const QString outcome = RunInChild([this] {
        LimitFileSize(100);
        QStringList outcomes;
        for (int i = 0; i < 3; ++i)
            outcomes.append(OutcomeOf([this] { Export(m_path, QByteArray(100000, 'x')); }));
        return outcomes.join(u'|');
    });
    EXPECT_EQ(outcome.count(QStringLiteral("kann nicht geschrieben werden")), 3) << outcome.toStdString();
    EXPECT_EQ(ReadAll(m_path), OldContent);
    EXPECT_LE(Names().size(), 2) << Names().join(u' ').toStdString();
}
