#include "Datapoints.h"
#include "Listing.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

namespace
{

constexpr qsizetype Megabyte = 1'000'000;
constexpr qsizetype LongestName = 1000;

const QList<TDatapointKind> Kinds{dkEib, dkModbus, dkVirtual};

QString Document(const QString& body)
{
    return QStringLiteral("<GroupAddress-Export xmlns=\"http://knx.org/xml/ga-export/01\">%1</GroupAddress-Export>")
        .arg(body);
}

} // namespace

TEST(BadInput, EmptyFilesAreOfNoFormat)
{
    for (const TDatapointKind kind : Kinds) {
        for (const char* content : {"", "\n\n", " \t\r\n", "\xEF\xBB\xBF", "\xFF\xFE"}) {
            const TImportResult result = ReadDatapoints(kind, content);
            EXPECT_FALSE(result.Recognised);
            EXPECT_EQ(Reasons(result), QStringList(QStringLiteral("Die Datei ist leer.")));
        }
    }
}

TEST(BadInput, OtherFilesAreOfNoFormat)
{
    const QByteArray png("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x01", 20);
    for (const TDatapointKind kind : Kinds) {
        const TImportResult result = ReadDatapoints(kind, png);
        EXPECT_FALSE(result.Recognised) << kind;
        EXPECT_EQ(result.Problems.size(), 1);
    }
}

TEST(BadInput, LinesOfAMegabyteAreReportedAndTheRestIsRead)
{
    const QString name(Megabyte, u'x');
    const QList<QPair<TDatapointKind, QString>> files{
        {dkEib, QStringLiteral("Haus\nA.B.1/0/1\t%1\tUnbekannt\nA.B.1/0/2\ty\tUnbekannt\n")},
        {dkEib, QStringLiteral("Name;Adresse\n%1;1/0/1\ny;1/0/2\n")},
        {dkEib, QStringLiteral("Name;Adresse\n\"%1\";1/0/1\n\"y\";1/0/2\n")},
        {dkModbus, QStringLiteral("Adresse;Name\n1;%1\n2;y\n")},
        {dkVirtual, QStringLiteral("x\r%1\ry\r")},
    };
    for (const auto& [kind, text] : files) {
        SCOPED_TRACE(text.toStdString());
        const TImportResult result = ReadText(kind, text.arg(name));
        ASSERT_FALSE(result.Datapoints.isEmpty());
        EXPECT_EQ(result.Datapoints.last().Name, QStringLiteral("y"));
        ASSERT_EQ(result.Problems.size(), 1);
        EXPECT_EQ(result.Problems.first().Line, 2);
        EXPECT_EQ(result.Problems.first().Reason,
                  QStringLiteral("Die Zeile ist länger als 65.536 Zeichen und wird nicht gelesen."));
        for (const TDatapoint& datapoint : result.Datapoints)
            EXPECT_LT(datapoint.Address.size(), 10);
    }
}

TEST(BadInput, ADocumentMayBeOneLine)
{
    const QString name(Megabyte, u'x');
    const TImportResult xml =
        ReadText(dkEib, Document(QStringLiteral("<GroupAddress Name=\"%1\" Address=\"1\"/>").arg(name)));
    ASSERT_EQ(xml.Datapoints.size(), 1);
    EXPECT_EQ(xml.Datapoints.first().Name.size(), LongestName);
    EXPECT_EQ(xml.Problems.size(), 1);
}

TEST(BadInput, LinesAreReadUpToTheirLimit)
{
    constexpr qsizetype longestLine = 65'536;
    const QString line = QStringLiteral("a;") + QString(longestLine - 2, u'x');
    EXPECT_EQ(ReadText(dkVirtual, line).Datapoints.size(), 1);
    EXPECT_TRUE(ReadText(dkVirtual, line + u'x').Datapoints.isEmpty());
}

TEST(BadInput, LongNamesAreCutToWhatCanBeShown)
{
    const QString name(LongestName + 1, u'x');
    const TImportResult esf = ReadText(dkEib, QStringLiteral("Haus\nA.%1.1/0/1\t%1\tUnbekannt\n").arg(name));
    ASSERT_EQ(esf.Datapoints.size(), 1);
    EXPECT_EQ(esf.Datapoints.first().Name.size(), LongestName);
    EXPECT_EQ(esf.Datapoints.first().Group.last().size(), LongestName);
    const TImportResult registers = ReadText(dkModbus, QStringLiteral("Gerät;Adresse;Name\n%1;1;%1\n").arg(name));
    ASSERT_EQ(registers.Datapoints.size(), 1);
    EXPECT_EQ(registers.Datapoints.first().Device.size(), LongestName);
}

TEST(BadInput, ALongVariableIsReported)
{
    const TImportResult result = ReadText(dkVirtual, QString(LongestName + 1, u'x') + QStringLiteral(";a\nb\n"));
    ASSERT_EQ(result.Datapoints.size(), 1);
    EXPECT_EQ(result.Datapoints.first().Address, QStringLiteral("b"));
    ASSERT_EQ(result.Problems.size(), 1);
    EXPECT_EQ(result.Problems.first().Line, 1);
}

TEST(BadInput, FilesOfOtherFormatsAreNoListOfVariables)
{
    const QList<QPair<QString, QString>> files{
        {QStringLiteral("datapoints/esf/german_cp1252_crlf.esf"), QStringLiteral("OPC-Export")},
        {QStringLiteral("datapoints/esf/no_title.esf"), QStringLiteral("OPC-Export")},
        {QStringLiteral("datapoints/csv/1_1_semicolon_quoted_header_german_cp1252.csv"),
         QStringLiteral("Gruppenadressen")},
        {QStringLiteral("datapoints/csv/1_1_comma_unquoted_noheader_cp850.csv"), QStringLiteral("Gruppenadressen")},
        {QStringLiteral("datapoints/csv/3_3_semicolon_unquoted_noheader_cp1252.csv"), QStringLiteral("Spalten")},
        {QStringLiteral("datapoints/xml/three_levels.xml"), QStringLiteral("keine Liste")},
        {QStringLiteral("datapoints/modbus/german_headings.csv"), QStringLiteral("Registerliste")},
        {QStringLiteral("datapoints/modbus/register_kinds.tsv"), QStringLiteral("Registerliste")},
    };
    for (const auto& [path, word] : files) {
        SCOPED_TRACE(path.toStdString());
        const TImportResult result = ReadDatapoints(dkVirtual, TestData(path));
        EXPECT_FALSE(result.Recognised);
        ASSERT_EQ(result.Problems.size(), 1);
        EXPECT_TRUE(result.Problems.first().Reason.contains(word)) << result.Problems.first().Reason.toStdString();
    }
    EXPECT_FALSE(ReadText(dkVirtual, QStringLiteral("Anwesend,Jemand da,1\nUrlaub,Alle weg,1\n")).Recognised);
}

TEST(BadInput, ListsWithAHeaderOrOddNamesAreLists)
{
    for (const char* text : {"Name;Bezeichnung;Typ\nAnwesend;Da;1\n", "Meldung, wichtig\n",
                             "Haus.Licht.1\nHaus.Licht.2\n", "1;2;3\n4;5;6\n", "a;b;1;mehr\nb\nc\n"})
        EXPECT_TRUE(ReadText(dkVirtual, QString::fromLatin1(text)).Recognised) << text;
}

TEST(BadInput, CutNamesKeepPairsWhole)
{
    const QString name = QString(LongestName - 1, u'x') + QStringLiteral("😀");
    const TImportResult result = ReadText(dkVirtual, QStringLiteral("a;") + name);
    ASSERT_EQ(result.Datapoints.size(), 1);
    EXPECT_EQ(result.Datapoints.first().Name, QString(LongestName - 1, u'x'));
}

TEST(BadInput, ReasonsAreShort)
{
    const QString long1(30'000, u'x');
    const TImportResult result =
        ReadText(dkEib, QStringLiteral("Name;Adresse;Datenpunkttyp\na;1/0/1;%1\nb;%1;DPT-1\n").arg(long1));
    EXPECT_EQ(result.Problems.size(), 2);
    for (const QString& reason : Reasons(result))
        EXPECT_LT(reason.size(), 200);
}

TEST(BadInput, ProblemsAreInTheOrderOfTheirLines)
{
    const TImportResult result = ReadText(dkVirtual, QStringLiteral("a\nb;x;99\n;y\na\n"));
    QList<qsizetype> lines;
    for (const TImportProblem& problem : result.Problems)
        lines.append(problem.Line);
    EXPECT_EQ(lines, QList<qsizetype>({1, 2, 3, 4}));
}

TEST(BadInput, DeepRangesEndSomewhere)
{
    constexpr int depth = 10'000;
    const TImportResult result = ReadText(
        dkEib,
        Document(QStringLiteral("<GroupRange Name=\"A\"><GroupAddress Name=\"B\" Address=\"1\"/>").repeated(depth) +
                 QStringLiteral("</GroupRange>").repeated(depth) +
                 QStringLiteral("<GroupAddress Name=\"C\" Address=\"2\"/>")));
    ASSERT_EQ(result.Datapoints.size(), 2);
    EXPECT_TRUE(result.Datapoints.last().Group.isEmpty());
}

TEST(BadInput, EveryBeginningOfAFileIsRead)
{
    const QList<QPair<TDatapointKind, QString>> files{
        {dkEib, QStringLiteral("datapoints/esf/odd_names.esf")},
        {dkEib, QStringLiteral("datapoints/csv/odd_names.csv")},
        {dkEib, QStringLiteral("datapoints/xml/three_levels_utf16.xml")},
        {dkModbus, QStringLiteral("datapoints/modbus/register_kinds.tsv")},
        {dkVirtual, QStringLiteral("datapoints/virtual/labels.list")},
    };
    for (const auto& [kind, path] : files) {
        const QByteArray content = TestData(path);
        const qsizetype whole = ReadDatapoints(kind, content).Datapoints.size();
        for (qsizetype size = 0; size < content.size(); ++size)
            EXPECT_LE(ReadDatapoints(kind, content.left(size)).Datapoints.size(), whole + 1) << path.toStdString();
    }
}
