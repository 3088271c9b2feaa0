#include "Vlapputils.h"
#include "Vlerrors.h"
#include "StoreFixture.h"

#include <QFile>
#include <gtest/gtest.h>

namespace
{

const QByteArray Export = "Haus\r\n"
                          "Licht.EG.1/1/1\tDecke K\xFC"
                          "che\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n"
                          "Licht.EG.1/1/2\tDecke Flur\tUnbestimmt (1 Byte)\tLow\t\r\n";

using DatapointStore = TStoreFixture;

} // namespace

TEST_F(DatapointStore, IsEmptyWithoutADirectory)
{
    EXPECT_TRUE(m_store.Datapoints().isEmpty());
    EXPECT_TRUE(m_store.Problems().isEmpty());
}

TEST_F(DatapointStore, KeepsTheOriginalFileAsItCame)
{
    Import(QStringLiteral("haus.esf"), Export);
    EXPECT_EQ(ReadAll(File(QStringLiteral("haus.esf"))), Export);
    EXPECT_EQ(Addresses(m_store.Datapoints()), (QStringList{QStringLiteral("1/1/1"), QStringLiteral("1/1/2")}));
}

TEST_F(DatapointStore, ShowsWhatTheProjectHoldsWithoutAnImport)
{
    Import(QStringLiteral("haus.esf"), Export);
    TDatapointStore other(dkEib);
    other.Load(Directory());
    ASSERT_EQ(other.Datapoints().size(), 2);
    EXPECT_EQ(other.Datapoints()[0].Name, QStringLiteral("Decke Küche"));
    EXPECT_EQ(other.Datapoints()[0].EisNumber, 1);
}

TEST_F(DatapointStore, KeepsATypeChosenByHandOverAnImport)
{
    Import(QStringLiteral("haus.esf"), Export);
    EXPECT_EQ(m_store.EisNumber(m_store.Datapoints()[1]), 0);
    m_store.SetEisNumber(m_store.Datapoints()[1], 6);
    Import(QStringLiteral("haus.esf"), Export, QStringLiteral("haus.esf"));
    EXPECT_EQ(m_store.EisNumber(m_store.Datapoints()[1]), 6);
    TDatapointStore other(dkEib);
    other.Load(Directory());
    EXPECT_EQ(other.EisNumber(other.Datapoints()[1]), 6);
}

TEST_F(DatapointStore, PrefersTheTypeThatAFileGives)
{
    Import(QStringLiteral("haus.esf"), Export);
    m_store.SetEisNumber(m_store.Datapoints()[1], 6);
    const QByteArray determined = QByteArray(Export).replace("Unbestimmt (1 Byte)", "EIS 2 'Dimmen' (4 Bit)");
    Import(QStringLiteral("haus.esf"), determined, QStringLiteral("haus.esf"));
    EXPECT_EQ(m_store.EisNumber(m_store.Datapoints()[1]), 2);
}

TEST_F(DatapointStore, SaysWhatAnImportChanges)
{
    Import(QStringLiteral("haus.esf"), Export);
    const QByteArray changed = "Haus\r\n"
                               "Licht.EG.1/1/2\tDecke Diele\tUnbestimmt (1 Byte)\tLow\t\r\n"
                               "Licht.EG.1/1/3\tDecke Bad\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n";
    const TImportChanges changes =
        m_store.Compare(Requested(QStringLiteral("haus.esf"), changed, QStringLiteral("haus.esf")));
    EXPECT_EQ(Addresses(changes.Added), QStringList{QStringLiteral("1/1/3")});
    EXPECT_EQ(Addresses(changes.Renamed), QStringList{QStringLiteral("1/1/2")});
    EXPECT_EQ(Addresses(changes.Gone), QStringList{QStringLiteral("1/1/1")});
}

TEST_F(DatapointStore, LosesNothingWhenAFileIsAddedToAnother)
{
    Import(QStringLiteral("haus.esf"), Export);
    const TImportChanges changes = m_store.Compare(Requested(QStringLiteral("neu.esf"), Export));
    EXPECT_TRUE(changes.Added.isEmpty());
    EXPECT_TRUE(changes.Gone.isEmpty());
}

TEST_F(DatapointStore, RemovesTheReplacedFileOfAnotherName)
{
    Import(QStringLiteral("alt.esf"), Export);
    Import(QStringLiteral("neu.esf"), Export, QStringLiteral("alt.esf"));
    EXPECT_FALSE(QFile::exists(File(QStringLiteral("alt.esf"))));
    ASSERT_EQ(m_store.Files().size(), 1);
    EXPECT_EQ(m_store.Files()[0].Name, QStringLiteral("neu.esf"));
}

TEST_F(DatapointStore, NeverOverwritesAFileThatIsNotReplaced)
{
    Import(QStringLiteral("haus.esf"), Export);
    EXPECT_THROW(Import(QStringLiteral("haus.esf"), "Anderes\r\n"), TUserError);
    EXPECT_EQ(ReadAll(File(QStringLiteral("haus.esf"))), Export);
}

TEST_F(DatapointStore, RemembersTheChosenEncoding)
{
    const QByteArray content = "Haus\r\nLicht.EG.1/1/1\tK\x81"
                               "che\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n";
    m_store.Import(QStringLiteral("haus.esf"), content, QStringLiteral("IBM850"), {});
    TDatapointStore other(dkEib);
    other.Load(Directory());
    ASSERT_EQ(other.Datapoints().size(), 1);
    EXPECT_EQ(other.Datapoints()[0].Name, QStringLiteral("Küche"));
}

TEST_F(DatapointStore, ReportsDamagedDecisionsAndKeepsThem)
{
    Import(QStringLiteral("haus.esf"), Export);
    WriteAll(Directory() + QStringLiteral("/eib.json"), "{ kaputt");
    m_store.Load(Directory());
    EXPECT_EQ(Texts().filter(QStringLiteral("eib.json")).size(), 1);
    EXPECT_THROW(m_store.SetEisNumber(m_store.Datapoints()[1], 6), TFileError);
    EXPECT_EQ(ReadAll(Directory() + QStringLiteral("/eib.json")), "{ kaputt");
}

TEST_F(DatapointStore, RefusesAFileThatWouldBeHidden)
{
    Import(QStringLiteral("haus.esf"), Export);
    EXPECT_THROW(Import(QStringLiteral(".haus.esf"), Export, QStringLiteral("haus.esf")), TUserError);
    EXPECT_EQ(ReadAll(File(QStringLiteral("haus.esf"))), Export);
}

TEST_F(DatapointStore, HasNothingAndTakesNothingWithoutAProject)
{
    Import(QStringLiteral("haus.esf"), Export);
    m_store.Load({});
    EXPECT_TRUE(m_store.Datapoints().isEmpty());
    EXPECT_THROW(Import(QStringLiteral("neu.esf"), Export), TUserError);
}

TEST_F(DatapointStore, ForgetsTheEncodingOfAFileThatWasTakenAway)
{
    m_store.Import(QStringLiteral("haus.esf"), Export, QStringLiteral("IBM850"), {});
    ASSERT_TRUE(QFile::remove(File(QStringLiteral("haus.esf"))));
    m_store.Load(Directory());
    Import(QStringLiteral("haus.esf"), Export);
    ASSERT_EQ(m_store.Datapoints().size(), 2);
    EXPECT_EQ(m_store.Datapoints()[0].Name, QStringLiteral("Decke Küche"));
}
