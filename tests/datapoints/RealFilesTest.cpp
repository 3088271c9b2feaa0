#include "Datapoints.h"
#include "EisTypes.h"
#include "Listing.h"

#include "TestSupport.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

// Files that real programs wrote are no part of the sources. Where they are at hand, in the directory that the variable
// VELMORA_REAL_DATA names or beside the sources, they have to give what is known of them.
namespace
{

struct TRealFile
{
    const char* Name;
    int Datapoints;
};

QString RealData()
{
    return qEnvironmentVariable("VELMORA_REAL_DATA", QStringLiteral(VELMORA_REAL_DATA_DEFAULT));
}

TImportResult ReadReal(TDatapointKind kind, const QString& name)
{
    return ReadDatapoints(kind, ReadAll(RealData() + u'/' + name));
}

void ExpectCounts(TDatapointKind kind, const QString& folder, const QList<TRealFile>& files)
{
    for (const TRealFile& file : files) {
        SCOPED_TRACE(file.Name);
        const TImportResult result = ReadReal(kind, folder + QString::fromUtf8(file.Name));
        EXPECT_TRUE(result.Recognised);
        EXPECT_EQ(result.Datapoints.size(), file.Datapoints);
    }
}

// The ten forms of one content, the ones that know no datapoint types last.
const QList<const char*> SameContent{
    "obs500.xml",
    "obs500_1-1_semicolon_quoted_cp1252.csv",
    "obs500_1-1_tab_utf16le_bom.csv",
    "obs500_3-1_comma_quoted_blank_utf8bom.csv",
    "obs500_3-1_semicolon_quoted_utf8.csv",
    "obs500_3-3_comma_quoted_cp850.csv",
    "obs500_3-3_tab_unquoted_noheader_cp1252.csv",
    "obs500_de_cp1252_crlf.esf",
    "obs500_de_utf8_bom.esf",
    "obs500_en_cp1252_crlf.esf",
};

TImportResult WithoutTypes(TImportResult result)
{
    for (TDatapoint& datapoint : result.Datapoints)
        datapoint.EisNumber = 0;
    return result;
}

class RealFiles : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!QDir(RealData() + QStringLiteral("/ets")).exists())
            GTEST_SKIP() << "no real files at hand";
    }
};

} // namespace

TEST_F(RealFiles, GroupAddressesCountAsKnown)
{
    ExpectCounts(dkEib, QStringLiteral("ets/"),
                 {{"hap-nodejs_ets4-opc-export.esf", 14},
                  {"knxultimate_readme-sample.esf", 23},
                  {"issue36_ets3_esf_sample.esf", 3},
                  {"smarthomeng_doc-sample.esf", 7},
                  {"openbridgeserver_1-1col_header_quoted_utf8.csv", 500},
                  {"openbridgeserver_3-3col_noheader_unquoted.csv", 500},
                  {"knxultimate_alerter-sample_tab_quoted.csv", 112},
                  {"knxultimate_scene-sample.csv", 9},
                  {"maxarndt_group-addresses-example1.xml", 1},
                  {"knx-go_two_level.xml", 1},
                  {"knx-go_free.xml", 1},
                  {"pool7302.xml", 7302},
                  {"pool7302_cp1252.esf", 7302}});
}

TEST_F(RealFiles, GroupAddressesHaveNoProblems)
{
    QDirIterator files(RealData() + QStringLiteral("/ets"),
                       {QStringLiteral("*.esf"), QStringLiteral("*.csv"), QStringLiteral("*.xml")}, QDir::Files);
    while (files.hasNext()) {
        const QString path = files.next();
        EXPECT_EQ(Reasons(ReadDatapoints(dkEib, ReadAll(path))), QStringList()) << path.toStdString();
    }
}

TEST_F(RealFiles, OneContentInTenFormsGivesTheSameRows)
{
    const TImportResult expected = ReadReal(dkEib, QStringLiteral("ets/obs500.xml"));
    ASSERT_EQ(expected.Datapoints.size(), 500);
    for (const char* name : SameContent) {
        SCOPED_TRACE(name);
        const QString file = QString::fromLatin1(name);
        const TImportResult result = ReadReal(dkEib, QStringLiteral("ets/") + file);
        if (file.endsWith(QStringLiteral(".esf")))
            EXPECT_EQ(DatapointListing(WithoutTypes(result)), DatapointListing(WithoutTypes(expected)));
        else
            EXPECT_EQ(DatapointListing(result), DatapointListing(expected));
    }
}

TEST_F(RealFiles, TheSourceOfTheTenFormsHasTheSameRows)
{
    const TImportResult expected = ReadReal(dkEib, QStringLiteral("ets/obs500.xml"));
    const TImportResult quoted = ReadReal(dkEib, QStringLiteral("ets/openbridgeserver_1-1col_header_quoted_utf8.csv"));
    EXPECT_EQ(DatapointListing(quoted), DatapointListing(expected));

    // Its names are transcribed to ASCII.
    const TImportResult plain = ReadReal(dkEib, QStringLiteral("ets/openbridgeserver_3-3col_noheader_unquoted.csv"));
    ASSERT_EQ(plain.Datapoints.size(), expected.Datapoints.size());
    for (qsizetype i = 0; i < plain.Datapoints.size(); ++i) {
        EXPECT_EQ(plain.Datapoints[i].Address, expected.Datapoints[i].Address);
        EXPECT_EQ(plain.Datapoints[i].EisNumber, expected.Datapoints[i].EisNumber);
    }
}

TEST_F(RealFiles, RegistersCountAsKnown)
{
    // One row of s2125.csv is cut; a register that is listed twice counts once.
    ExpectCounts(dkModbus, QStringLiteral("modbus/nibe/"),
                 {{"f1145_f1245.csv", 1529},
                  {"f370_f470.csv", 488},
                  {"s2125.csv", 1486},
                  {"s320_s325.csv", 1367},
                  {"smo20.csv", 367},
                  {"vvms500.csv", 922}});
    ExpectCounts(dkModbus, QStringLiteral("modbus/templates/"),
                 {{"Energiezaehler/EASTRON/Eastron SDM72dm-v2/Sdm72dm-v2.tsv", 41},
                  {"Energiezaehler/EASTRON/input-registers_sdm630Modbus.tsv", 85},
                  {"Energiezaehler/Eastron SDM630/input-registers.tsv", 85},
                  {"Lueftungsanlagen/Meltem/meltem_default.tsv", 19},
                  {"PV-Wechselrichter/Deye/holding-registers.tsv", 118},
                  {"Energiezaehler/Phoenix Contact EEM-EM3xx EEM-DM3xx/Holding Register - Gerät und Konfig/"
                   "1280-57856 Geräte und konfig.tsv",
                   31}});
}

TEST_F(RealFiles, TheCutRowIsReported)
{
    const TImportResult result = ReadReal(dkModbus, QStringLiteral("modbus/nibe/s2125.csv"));
    ASSERT_EQ(result.Problems.size(), 1);
    EXPECT_EQ(result.Problems.first().Line, 369);
}

TEST_F(RealFiles, CodeTablesAreNoRegisterLists)
{
    int tables = 0;
    QDirIterator files(RealData() + QStringLiteral("/modbus"), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (!path.contains(QStringLiteral("/4 Tabellen/")))
            continue;
        ++tables;
        const TImportResult result = ReadDatapoints(dkModbus, ReadAll(path));
        EXPECT_FALSE(result.Recognised) << path.toStdString();
        EXPECT_TRUE(Reasons(result).join(u' ').contains(QStringLiteral("keine Registerliste"))) << path.toStdString();
    }
    EXPECT_EQ(tables, 9);
}

TEST_F(RealFiles, EveryTypeWordHasItsEisType)
{
    static const QRegularExpression typed(QStringLiteral("^EIS (\\d+) "));
    const QString table = QString::fromUtf8(ReadAll(RealData() + QStringLiteral("/ets/esf_type_strings_de_en.tsv")));
    QStringList lines = table.split(u'\n', Qt::SkipEmptyParts);
    lines.removeFirst();
    QSet<int> types;
    for (const QString& line : std::as_const(lines)) {
        for (const QString& word : line.split(u'\t').sliced(1)) {
            if (word.trimmed().isEmpty())
                continue;
            const int expected = typed.match(word).captured(1).toInt();
            EXPECT_EQ(EisOfTypeWord(word), expected) << word.toStdString();
            types.insert(expected);
        }
    }
    EXPECT_EQ(types, QSet<int>({0, 1, 2, 8, 15}));
}
