#include "TextDecoding.h"

#include "Datapoints.h"
#include "TestSupport.h"

#include <gtest/gtest.h>

namespace
{

QString Found(const QByteArray& content)
{
    return DecodeText(content, {}).Encoding;
}

QString Text(const QByteArray& content, const char* encoding = "")
{
    return DecodeText(content, QString::fromLatin1(encoding)).Text;
}

} // namespace

TEST(TextDecoding, FollowsTheByteOrderMark)
{
    EXPECT_EQ(Found("\xEF\xBB\xBF\xFC"), QStringLiteral("UTF-8"));
    EXPECT_EQ(Text("\xEF\xBB\xBFK\xC3\xBC"), QStringLiteral("Kü"));
    EXPECT_EQ(Text(QByteArray("\xFF\xFEK\0\xFC\0", 6)), QStringLiteral("Kü"));
    EXPECT_EQ(Text(QByteArray("\xFE\xFF\0K\0\xFC", 6)), QStringLiteral("Kü"));
}

TEST(TextDecoding, KnowsSixteenBitsByTheirZeros)
{
    EXPECT_EQ(Found(QByteArray("K\0\xFC\0c\0h\0e\0", 10)), QStringLiteral("UTF-16LE"));
    EXPECT_EQ(Found(QByteArray("\0K\0\xFC\0c\0h\0e", 10)), QStringLiteral("UTF-16BE"));
    EXPECT_EQ(Text(QByteArray("K\0\xFC\0c\0h\0e\0x", 11)).left(5), QStringLiteral("Küche"));
}

TEST(TextDecoding, PrefersValidUtf8)
{
    EXPECT_EQ(Found("Kueche"), QStringLiteral("UTF-8"));
    EXPECT_EQ(Found("K\xC3\xBC"
                    "che"),
              QStringLiteral("UTF-8"));
}

TEST(TextDecoding, TellsTheCodePagesByGermanLetters)
{
    EXPECT_EQ(Text("K\xFC"
                   "che, Stra\xDF"
                   "e, \xD6l"),
              QStringLiteral("Küche, Straße, Öl"));
    EXPECT_EQ(Text("K\x81"
                   "che, Stra\xE1"
                   "e, \x99l"),
              QStringLiteral("Küche, Straße, Öl"));
    EXPECT_EQ(Text("\x8E"
                   "NDERUNG"),
              QStringLiteral("ÄNDERUNG"));
    EXPECT_EQ(Text("AU\xDF"
                   "EN"),
              QStringLiteral("AUßEN"));
}

TEST(TextDecoding, IsNotMisledByQuotationMarks)
{
    EXPECT_EQ(Text("Szene \x84"
                   "Abend\x93 und \x93Nacht\x94, 20 \xB0"
                   "C"),
              QStringLiteral("Szene „Abend“ und “Nacht”, 20 °C"));
}

TEST(TextDecoding, DropsTheMarkInEveryForm)
{
    EXPECT_EQ(Text("\\ufeffLicht"), QStringLiteral("Licht"));
    EXPECT_EQ(Text("\xEF\xBB\xBF\\ufeffLicht"), QStringLiteral("Licht"));
    EXPECT_EQ(Text("Licht \\ufeff"), QStringLiteral("Licht \\ufeff"));
}

TEST(TextDecoding, BelievesADocumentAboutItsCodePage)
{
    EXPECT_EQ(Found("<?xml version=\"1.0\" encoding='ibm850'?><a b=\"\x85\"/>"), QStringLiteral("IBM850"));
    EXPECT_EQ(Found("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a b=\"\xE0\"/>"), QStringLiteral("Windows-1252"));
    EXPECT_EQ(Found("<?xml version=\"1.0\" encoding=\"UTF-8\"?><a b=\"K\xFC"
                    "che\"/>"),
              QStringLiteral("Windows-1252"));
    EXPECT_EQ(Found("<?xml encoding="), QStringLiteral("UTF-8"));
    EXPECT_EQ(Found("<?xml encoding=\""), QStringLiteral("UTF-8"));
}

TEST(TextDecoding, TakesTheChosenEncoding)
{
    EXPECT_EQ(Text("\xFC", "IBM850"), QStringLiteral("³"));
    EXPECT_EQ(Text("\xFC", "Windows-1252"), QStringLiteral("ü"));
    EXPECT_EQ(Text("\xFC", "UTF-8"), QString(QChar(QChar::ReplacementCharacter)));
    EXPECT_EQ(Text("\xA4", "ISO-8859-15"), QStringLiteral("€"));
    EXPECT_EQ(Found("x"), DecodeText("x", QStringLiteral("unbekannt")).Encoding);
}

TEST(TextDecoding, DecodesEveryByteInEveryEncoding)
{
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes.append(static_cast<char>(i));
    for (const QString& name : ImportEncodings()) {
        const TDecodedText decoded = DecodeText(bytes, name);
        EXPECT_EQ(decoded.Encoding, name);
        EXPECT_FALSE(decoded.Text.isEmpty()) << name.toStdString();
    }
}

TEST(TextDecoding, WrongEncodingIsReportedWhereItShows)
{
    TImportOptions options;
    options.Encoding = QStringLiteral("UTF-8");
    const QByteArray content = "Haus\nHaus.Licht.1/0/1\tK\xFC"
                               "che\tUnbekannt\tLow\t\n";
    const TImportResult wrong = ReadDatapoints(dkEib, content, options);
    ASSERT_EQ(wrong.Problems.size(), 1);
    EXPECT_EQ(wrong.Problems.first().Line, 2);
    EXPECT_EQ(wrong.Datapoints.size(), 1);
    EXPECT_TRUE(ReadDatapoints(dkEib, content).Problems.isEmpty());
}
