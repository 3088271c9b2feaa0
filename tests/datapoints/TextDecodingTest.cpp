#include "TextDecoding.h"

#include "Datapoints.h"
#include "TestSupport.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace
{

QString Found(const QByteArray& content)
{
    return DecodeText(content, {}).Encoding;
}

QString Decoded(const QByteArray& content, const char* encoding = "")
{
    return DecodeText(content, QString::fromLatin1(encoding)).Text;
}

} // namespace

TEST(TextDecoding, FollowsTheByteOrderMark)
{
    EXPECT_EQ(Found("\xEF\xBB\xBF\xFC"), QStringLiteral("UTF-8"));
    EXPECT_EQ(Decoded("\xEF\xBB\xBFK\xC3\xBC"), QStringLiteral("Kü"));
    EXPECT_EQ(Decoded(QByteArray("\xFF\xFEK\0\xFC\0", 6)), QStringLiteral("Kü"));
    EXPECT_EQ(Decoded(QByteArray("\xFE\xFF\0K\0\xFC", 6)), QStringLiteral("Kü"));
}

TEST(TextDecoding, KnowsSixteenBitsByTheirZeros)
{
    EXPECT_EQ(Found(QByteArray("K\0\xFC\0c\0h\0e\0", 10)), QStringLiteral("UTF-16LE"));
    EXPECT_EQ(Found(QByteArray("\0K\0\xFC\0c\0h\0e", 10)), QStringLiteral("UTF-16BE"));
    EXPECT_EQ(Decoded(QByteArray("K\0\xFC\0c\0h\0e\0x", 11)).left(5), QStringLiteral("Küche"));
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
    EXPECT_EQ(Decoded("K\xFC"
                      "che, Stra\xDF"
                      "e, \xD6l"),
              QStringLiteral("Küche, Straße, Öl"));
    EXPECT_EQ(Decoded("K\x81"
                      "che, Stra\xE1"
                      "e, \x99l"),
              QStringLiteral("Küche, Straße, Öl"));
    EXPECT_EQ(Decoded("\x8E"
                      "NDERUNG"),
              QStringLiteral("ÄNDERUNG"));
    EXPECT_EQ(Decoded("AU\xDF"
                      "EN"),
              QStringLiteral("AUßEN"));
}

TEST(TextDecoding, IsNotMisledByQuotationMarks)
{
    EXPECT_EQ(Decoded("Szene \x84"
                      "Abend\x93 und \x93Nacht\x94, 20 \xB0"
                      "C"),
              QStringLiteral("Szene „Abend“ und “Nacht”, 20 °C"));
}

TEST(TextDecoding, DropsTheMarkInEveryForm)
{
    EXPECT_EQ(Decoded("\\ufeffLicht"), QStringLiteral("Licht"));
    EXPECT_EQ(Decoded("\xEF\xBB\xBF\\ufeffLicht"), QStringLiteral("Licht"));
    EXPECT_EQ(Decoded("Licht \\ufeff"), QStringLiteral("Licht \\ufeff"));
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
    EXPECT_EQ(Decoded("\xFC", "IBM850"), QStringLiteral("³"));
    EXPECT_EQ(Decoded("\xFC", "Windows-1252"), QStringLiteral("ü"));
    EXPECT_EQ(Decoded("\xFC", "UTF-8"), QString(QChar(QChar::ReplacementCharacter)));
    EXPECT_EQ(Decoded("\xA4", "ISO-8859-15"), QStringLiteral("€"));
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

TEST(TextDecoding, OneBadByteLeavesTheRestUtf8)
{
    const QByteArray content = "Haus\n"
                               "Haus.Licht.1/0/1\tK\xC3\xBC"
                               "che\tUnbekannt\tLow\t\n"
                               "Haus.Licht.1/0/2\tB\xE4"
                               "d\tUnbekannt\tLow\t\n";
    const TImportResult result = ReadDatapoints(dkEib, content);
    EXPECT_EQ(result.Encoding, QStringLiteral("UTF-8"));
    ASSERT_EQ(result.Datapoints.size(), 2);
    EXPECT_EQ(result.Datapoints[0].Name, QStringLiteral("Küche"));
    ASSERT_EQ(result.Problems.size(), 1);
    EXPECT_EQ(result.Problems.first().Line, 3);
}

TEST(TextDecoding, EveryDamagedLineIsReportedByTheLinesThatTheReaderCounts)
{
    for (const char* end : {"\n", "\r\n", "\r"}) {
        QByteArray content = "\xC3\xBC\xC3\xBC\xC3\xBC@a@x\xFCy@b@\xFC@c@";
        content.replace('@', end);
        const TImportResult result = ReadDatapoints(dkVirtual, content);
        QList<qsizetype> lines;
        for (const TImportProblem& problem : result.Problems)
            lines.append(problem.Line);
        EXPECT_EQ(lines, QList<qsizetype>({3, 5}));
    }
}

TEST(TextDecoding, AMixtureIsReadAsACodePageAndReported)
{
    const TImportResult result = ReadDatapoints(dkVirtual, "T\xFCr\nB\xE4"
                                                           "der\nK\xC3\xBC"
                                                           "che\n\xD6l\n");
    EXPECT_EQ(result.Encoding, QStringLiteral("Windows-1252"));
    ASSERT_EQ(result.Problems.size(), 1);
    EXPECT_EQ(result.Problems.first().Line, 3);
}

TEST(TextDecoding, ADocumentThatIsNotTheUtf8ItClaimsToBeIsReported)
{
    const TImportResult result =
        ReadDatapoints(dkEib, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
                              "<GroupAddress-Export xmlns=\"http://knx.org/xml/ga-export/01\">\r\n"
                              "<GroupAddress Name=\"K\xFC"
                              "che\" Address=\"1\"/></GroupAddress-Export>");
    ASSERT_EQ(result.Datapoints.size(), 1);
    EXPECT_EQ(result.Datapoints.first().Name, QStringLiteral("Küche"));
    ASSERT_EQ(result.Problems.size(), 1);
    EXPECT_EQ(result.Problems.first().Line, 3);
    EXPECT_TRUE(result.Problems.first().Reason.contains(QStringLiteral("gibt UTF-8 an")));
}

TEST(TextDecoding, KnowsEveryWrongFormOfUtf8)
{
    // Cut off, too long, half of a pair, beyond the last character, a part without its beginning.
    for (const char* bytes : {"\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80",
                              "\xF4\x90\x80\x80", "\x80", "\xFF"})
        EXPECT_NE(Found(bytes), QStringLiteral("UTF-8")) << QByteArray(bytes).toHex().toStdString();
    for (const char* bytes : {"\xC3\xBC", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF"})
        EXPECT_EQ(Found(bytes), QStringLiteral("UTF-8")) << QByteArray(bytes).toHex().toStdString();
}

TEST(TextDecoding, LongTextIsDecodedInPartsThatTearNothing)
{
    constexpr int many = 400'000;
    const QString piece = QStringLiteral("ü€😀");
    for (int shift = 0; shift < 4; ++shift) {
        const QString text = QString(shift, u'x') + piece.repeated(many);
        EXPECT_EQ(DecodeText(text.toUtf8(), QStringLiteral("UTF-8")).Text, text);
        const QByteArray utf16(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
        EXPECT_EQ(DecodeText(utf16, QStringLiteral("UTF-16LE")).Text, text);
    }
}

TEST(TextDecoding, SaysHowFarItIsAndCanBeStopped)
{
    const QByteArray content = QByteArray("T\xFCr\n").repeated(300'000);
    QList<double> shares;
    const TDecodedText whole = DecodeText(content, {}, [&](double done) {
        shares.append(done);
        return true;
    });
    EXPECT_EQ(whole.Text.size(), content.size());
    ASSERT_GT(shares.size(), 4);
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    for (qsizetype allowed = 0; allowed < shares.size(); ++allowed) {
        qsizetype calls = 0;
        EXPECT_TRUE(DecodeText(content, {}, [&](double) { return calls++ < allowed; }).Cancelled);
        EXPECT_EQ(calls, allowed + 1);
    }
}
