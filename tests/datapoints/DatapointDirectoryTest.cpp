#include "StoreFixture.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace
{

// The directory of files is not what it should be.
class DatapointDirectory : public TStoreFixture
{
protected:
    DatapointDirectory() { QDir().mkpath(Directory()); }

    QString Files() const { return Directory() + QStringLiteral("/eib"); }

    void ExpectOneProblem(const QString& about, const QString& part)
    {
        m_store.Load(Directory());
        EXPECT_TRUE(m_store.Datapoints().isEmpty());
        ASSERT_EQ(Texts().size(), 1);
        EXPECT_TRUE(Texts().first().startsWith(about)) << Texts().first().toStdString();
        EXPECT_TRUE(Texts().first().contains(part)) << Texts().first().toStdString();
    }
};

} // namespace

TEST_F(DatapointDirectory, IsEmptyWhereThereIsNone)
{
    m_store.Load(Directory());
    EXPECT_TRUE(Texts().isEmpty());
    EXPECT_TRUE(QDir(Directory()).removeRecursively());
    m_store.Load(Directory());
    EXPECT_TRUE(Texts().isEmpty());
}

TEST_F(DatapointDirectory, IsReportedWhenItIsAFile)
{
    WriteAll(Files(), "eine Datei");
    ExpectOneProblem(Files(), QStringLiteral("kein Verzeichnis"));
}

TEST_F(DatapointDirectory, IsReportedWhenAFileStandsAboveIt)
{
    ASSERT_TRUE(QDir(Directory()).removeRecursively());
    WriteAll(Directory(), "eine Datei");
    ExpectOneProblem(Files(), QStringLiteral("kein Verzeichnis"));
}

TEST_F(DatapointDirectory, IsReportedWhenItsLinksLeadInACircle)
{
    ASSERT_TRUE(QFile::link(Directory() + QStringLiteral("/zwei"), Files()));
    ASSERT_TRUE(QFile::link(Files(), Directory() + QStringLiteral("/zwei")));
    ExpectOneProblem(Files(), QStringLiteral("im Kreis"));
}

TEST_F(DatapointDirectory, IsReportedWhenItsLinkLeadsNowhere)
{
    ASSERT_TRUE(QFile::link(Directory() + QStringLiteral("/fehlt"), Files()));
    ExpectOneProblem(Files(), QStringLiteral("nirgendwohin"));
}

TEST_F(DatapointDirectory, IsReadThroughALink)
{
    const QString elsewhere = m_project.Path(QStringLiteral("anderswo"));
    QDir().mkpath(elsewhere);
    WriteAll(elsewhere + QStringLiteral("/haus.esf"), EsfLine("1/1/1", "Eins"));
    ASSERT_TRUE(QFile::link(elsewhere, Files()));
    m_store.Load(Directory());
    EXPECT_EQ(Names(m_store.Datapoints()), QStringList(QStringLiteral("Eins")));
}

TEST_F(DatapointDirectory, ReportsAPipeAndReadsTheRest)
{
    QDir().mkpath(Files());
    ASSERT_EQ(mkfifo(QFile::encodeName(File(QStringLiteral("a.esf"))).constData(), 0600), 0);
    WriteAll(File(QStringLiteral("b.esf")), EsfLine("1/1/1", "Eins"));
    m_store.Load(Directory());
    EXPECT_EQ(Names(m_store.Datapoints()), QStringList(QStringLiteral("Eins")));
    ASSERT_EQ(Texts().size(), 1);
    EXPECT_TRUE(Texts().first().startsWith(QStringLiteral("a.esf: ")));
}

TEST_F(DatapointDirectory, ReportsABackslashInANameAndReadsTheRest)
{
    QDir().mkpath(Files());
    WriteAll(File(QStringLiteral("a\\b.esf")), EsfLine("1/1/2", "Zwei"));
    WriteAll(File(QStringLiteral("b.esf")), EsfLine("1/1/1", "Eins"));
    m_store.Load(Directory());
    EXPECT_EQ(Names(m_store.Datapoints()), QStringList(QStringLiteral("Eins")));
    ASSERT_EQ(Texts().size(), 1);
    EXPECT_TRUE(Texts().first().startsWith(QStringLiteral("a\\b.esf: ")));
}

TEST_F(DatapointDirectory, LeavesHiddenFilesAndDirectoriesAlone)
{
    QDir().mkpath(Files() + QStringLiteral("/ordner.esf"));
    WriteAll(File(QStringLiteral(".haus.esf")), EsfLine("1/1/1", "Eins"));
    m_store.Load(Directory());
    EXPECT_TRUE(m_store.Files().isEmpty());
    EXPECT_TRUE(Texts().isEmpty());
}
