#include "DatapointDirectory.h"
#include "DatapointModel.h"
#include "Listing.h"
#include "StoreFixture.h"
#include "Vlerrors.h"

#include <QFile>
#include <stdexcept>

namespace
{

// The lines that problems are about, in their order.
QList<qsizetype> Lines(const TImportResult& result)
{
    QList<qsizetype> lines;
    for (const TImportProblem& problem : result.Problems)
        lines.append(problem.Line);
    return lines;
}

QString Text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

using StoreOfStrayContent = TStoreFixture;

} // namespace

TEST(StrayQuotes, KeepTheRowsOfARegisterList)
{
    const TImportResult result = ReadText(dkModbus, Text("Adresse\tName\tBeschreibung\n1\tA\t\"0\" = aus\n"
                                                         "2\tB\tsiehe \"Handbuch\"\n3\tC\t\n"));
    EXPECT_EQ(Addresses(result.Datapoints), Text("1 2 3").split(u' '));
    EXPECT_EQ(Lines(result), QList<qsizetype>({2}));
}

TEST(StrayQuotes, KeepTheRowsOfATableWithoutAHeader)
{
    const TImportResult result = ReadText(dkEib, Text("\"Bad\" links;1/0/1\nFlur;1/0/2\nLicht \"Süd\";1/0/3\n"));
    EXPECT_EQ(Names(result.Datapoints), Text("\"Bad\" links|Flur|Licht \"Süd\"").split(u'|'));
    EXPECT_EQ(Lines(result), QList<qsizetype>({1}));
}

TEST(StrayQuotes, MergeNoCellsOfALine)
{
    const TImportResult result = ReadText(dkModbus, Text("Adresse\tName\tBeschreibung\n"
                                                         "1\t\"Soll\" Wert\tsiehe \"Handbuch\"\n"));
    EXPECT_EQ(Names(result.Datapoints), QStringList(Text("\"Soll\" Wert")));
    EXPECT_EQ(Lines(result), QList<qsizetype>({2}));
}

TEST(StrayQuotes, ThatLookProperAndHoldRowsAreReported)
{
    const TImportResult result = ReadText(dkModbus, Text("Adresse;Name;Info\n1;A;\"x\n2;B;y\"\n3;C;z\n"));
    EXPECT_EQ(Addresses(result.Datapoints), Text("1 3").split(u' '));
    EXPECT_EQ(Lines(result), QList<qsizetype>({2}));
    EXPECT_TRUE(ReadText(dkModbus, Text("Adresse;Name;Info\n1;A;\"x\ny; z\"\n3;C;z\n")).Problems.isEmpty());
}

TEST(StrayContent, ATableWithDotsInItsNamesIsNoOpcExport)
{
    for (const char* text : {"UV1.1/2\t1/0/1\tDPST-1-1\n", "UV1.1/2\t1/0/1\tDPST-1-1\nFlur\t1/0/2\tDPST-1-1\n",
                             "UV1.1/2\t1/0/1\nUV1.1/3\t1/0/2\n"}) {
        const TImportResult result = ReadText(dkEib, Text(text));
        EXPECT_TRUE(result.Format.contains(Text("CSV"))) << result.Format.toStdString();
        EXPECT_EQ(result.Datapoints.value(0).Address, Text("1/0/1"));
        EXPECT_EQ(result.Datapoints.value(0).Name, Text("UV1.1/2"));
    }
}

TEST(StrayContent, ANameInAngleBracketsBeginsNoDocument)
{
    const TImportResult esf = ReadText(dkEib, Text("<Neubau>\nHaus.Licht.1/0/1\tKüche\tUnbekannt\tLow\t\n"));
    EXPECT_EQ(esf.Title, Text("<Neubau>"));
    EXPECT_EQ(esf.Datapoints.size(), 1);
    EXPECT_EQ(Names(ReadText(dkEib, Text("<Reserve>;1/0/1\nBad;1/0/2\n")).Datapoints),
              Text("<Reserve>;Bad").split(u';'));
    EXPECT_EQ(Names(ReadText(dkVirtual, Text("<x>\n<y>\n")).Datapoints), Text("<x>;<y>").split(u';'));
}

TEST(StrayContent, DocumentsNeedNoDeclaration)
{
    for (const char* text : {"<html><body/></html>\n", "<a xmlns=\"urn:b\"/>", "<!-- x --><a/>", "<!DOCTYPE html><p>",
                             "<g:GroupAddress-Export/>"})
        EXPECT_FALSE(ReadText(dkVirtual, Text(text)).Recognised) << text;
}

TEST(StrayContent, AddressesAreOneLineOfCharacters)
{
    const TImportResult registers =
        ReadText(dkModbus, Text("Adresse;Name\n\u00A016;A\n\"\n17\";B\n") + QChar(0xA0) + Text("16\u00A0;C\n"));
    EXPECT_EQ(Addresses(registers.Datapoints), Text("16 17").split(u' '));
    const TImportResult variables = ReadText(dkVirtual, Text("An\x01-aus;x\n\x02;y\nb\n"));
    EXPECT_EQ(Addresses(variables.Datapoints), Text("An -aus;b").split(u';'));
    EXPECT_EQ(Lines(variables), QList<qsizetype>({1, 2}));
}

TEST(StrayContent, AFirstLineThatIsNoDatapointIsReported)
{
    const TImportResult table = ReadText(dkEib, Text("Licht;Süden\nBad;1/0/2\nFlur;1/0/3\n"));
    EXPECT_EQ(table.Datapoints.size(), 2);
    EXPECT_EQ(Lines(table), QList<qsizetype>({1}));
    const TImportResult esf = ReadText(dkEib, Text("A.B.1/x/1\tBad\tUnbekannt\tLow\t\nA.B.1/0/2\tFlur\tUnbekannt\t\n"));
    EXPECT_EQ(esf.Datapoints.size(), 1);
    EXPECT_EQ(Lines(esf), QList<qsizetype>({1}));
    EXPECT_TRUE(esf.Title.isEmpty());
}

TEST(StrayContent, RangesOfAnOpcExportFollowTheLevelsOfTheAddress)
{
    const TImportResult result =
        ReadText(dkEib, Text("Haus\nA.B.1/2/3\ta\tUnbekannt\nA.B.1/2\tb\tUnbekannt\nA.B.99\tc\tUnbekannt\n"));
    ASSERT_EQ(result.Datapoints.size(), 3);
    EXPECT_EQ(result.Datapoints[0].Group, Text("A;B").split(u';'));
    EXPECT_EQ(result.Datapoints[1].Group, QStringList(Text("A.B")));
    EXPECT_EQ(result.Datapoints[2].Group, QStringList(Text("A.B")));
}

TEST(StrayContent, RangesOfAnOpcExportWithoutNamesAreReportedOnce)
{
    const TImportResult result =
        ReadText(dkEib, Text("Haus\n..1/2/3\ta\tUnbekannt\n..1/2/4\tb\tUnbekannt\n.1/5\tc\tUnbekannt\n"));
    ASSERT_EQ(result.Datapoints.size(), 3);
    EXPECT_EQ(result.Datapoints[1].Group, Text("1/-/-;1/2/-").split(u';'));
    EXPECT_EQ(result.Datapoints[2].Group, QStringList(Text("1/-")));
    EXPECT_EQ(Lines(result), QList<qsizetype>({2, 2, 4}));
}

TEST(StrayContent, BytesOutsideOfTheCodePageAreADoubtfulCharacterSet)
{
    for (const char* byte : {"\x81", "\x8D", "\x8F", "\x90", "\x9D"}) {
        TImportOptions options;
        options.Encoding = Text("Windows-1252");
        const TImportResult result = ReadDatapoints(dkVirtual, QByteArray("a\nb;x") + byte + "y\n", options);
        ASSERT_EQ(result.Problems.size(), 1);
        EXPECT_EQ(result.Problems.first().Line, 2);
        EXPECT_TRUE(result.Problems.first().Reason.contains(Text("Zeichensatz Windows-1252")));
        EXPECT_EQ(result.Datapoints.last().Name, QStringLiteral("x\uFFFDy"));
    }
}

TEST(StrayContent, NamesMayBeNumbersBesideThreePartsOfAnAddress)
{
    const TImportResult result = ReadText(dkEib, Text("1;2;30;1;0;1\n1;2;31;1;0;2\n1;3;32;1;1;1\n"));
    EXPECT_EQ(Addresses(result.Datapoints), Text("1/0/1 1/0/2 1/1/1").split(u' '));
    EXPECT_EQ(Names(result.Datapoints), Text("30 31 32").split(u' '));
    const TImportResult mixed = ReadText(dkEib, Text("Haus;100;Bad;1;0;1\nHaus;100;300;1;0;2\nHaus;100;301;1;0;3\n"));
    EXPECT_EQ(Addresses(mixed.Datapoints), Text("1/0/1 1/0/2 1/0/3").split(u' '));
    const TImportResult oneName = ReadText(dkEib, Text("Bad;1;0;1;5;6\nFlur;1;0;2;5;6\n"));
    EXPECT_EQ(Addresses(oneName.Datapoints), Text("1/0/1 1/0/2").split(u' '));
}

TEST_F(StoreOfStrayContent, FollowsTheDiskWhenAWatcherFails)
{
    int after = 0;
    int shown = 0;
    const TErrorHandler previous = SetErrorHandler([&shown](const std::exception_ptr&) { ++shown; });
    m_store.SetWatcher([] { throw std::runtime_error("before"); },
                       [&after] {
                           ++after;
                           throw std::runtime_error("after");
                       });
    Import(QStringLiteral("haus.esf"), EsfLine("1/1/1", "Eins"));
    SetErrorHandler(previous);
    EXPECT_EQ(after, 1);
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(Names(m_store.Datapoints()), QStringList(QStringLiteral("Eins")));
    EXPECT_TRUE(QFile::exists(File(QStringLiteral("haus.esf"))));
}

TEST_F(StoreOfStrayContent, RefusesAFileThatIsTooLarge)
{
    Import(QStringLiteral("haus.esf"), EsfLine("1/1/1", "Eins"));
    const QString path = File(QStringLiteral("riese.esf"));
    WriteAll(path, "Haus\n");
    ASSERT_TRUE(QFile::resize(path, LargestFile + 1)); // a hole that takes no place
    EXPECT_THROW(ReadDatapointFile(path), TFileError);
    m_store.Load(Directory());
    EXPECT_EQ(Names(m_store.Datapoints()), QStringList(QStringLiteral("Eins")));
    ASSERT_EQ(Texts().size(), 1);
    EXPECT_TRUE(Texts().first().contains(QStringLiteral("größer als 512 MB"))) << Texts().first().toStdString();
}
