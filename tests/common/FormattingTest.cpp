#include "Formatting.h"

#include "TestSupport.h"

#include <QBuffer>
#include <gtest/gtest.h>

#include <limits>

namespace
{

// Notes each write that arrives.
class TWriteCounter final : public QIODevice
{
public:
    TWriteCounter() { open(QIODevice::WriteOnly | QIODevice::Unbuffered); }

    QList<QByteArray> Writes;

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override
    {
        Writes.append(QByteArray(data, size));
        return size;
    }
};

template <class... TArguments> QByteArray Line(const char* format, const TArguments&... arguments)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    TLineWriter(buffer).Write(format, arguments...);
    return buffer.data();
}

} // namespace

TEST(FormatText, FillsTextsAndNumbers)
{
    EXPECT_EQ(FormatText("%s [%s]", QStringLiteral("Abendlicht"), QStringLiteral("Taster Flur")),
              QStringLiteral("Abendlicht [Taster Flur]"));
    EXPECT_EQ(FormatText("scene_%d.xml", 13), QStringLiteral("scene_13.xml"));
    EXPECT_EQ(FormatText("scene_%d.xml", -1), QStringLiteral("scene_-1.xml"));
    EXPECT_EQ(FormatText("%d", std::numeric_limits<int>::min()), QStringLiteral("-2147483648"));
}

TEST(FormatText, FillsResourceTexts)
{
    EXPECT_EQ(FormatText(QStringLiteral("Fehler beim Szenen-Export: %s."), QStringLiteral("x")),
              QStringLiteral("Fehler beim Szenen-Export: x."));
}

TEST(FormatText, KeepsWhatTheCodePageLacks)
{
    EXPECT_EQ(FormatText("%s [%s]", QStringLiteral("Ω"), QStringLiteral("€ „x“")), QStringLiteral("Ω [€ „x“]"));
}

TEST(FormatText, InsertsTextsRaw)
{
    EXPECT_EQ(FormatText("%s|%s", QStringLiteral("100 %"), QStringLiteral("%s%d%n")), QStringLiteral("100 %|%s%d%n"));
    EXPECT_EQ(FormatText(QStringLiteral("%s!"), QStringLiteral("%s")), QStringLiteral("%s!"));
    EXPECT_EQ(FormatText("%s", QString()), QString());
}

TEST(LineWriter, WritesALineWithOneWriteAndNoTerminatingZero)
{
    TWriteCounter device;
    TLineWriter writer(device);
    writer.Write("<scenes>\r\n");
    writer.Write("<scene id=\"%d\" alias=\"%s\" type=\"%s\" />\r\n", 7, QStringLiteral("A"), "eib");
    EXPECT_EQ(device.Writes, QList<QByteArray>({"<scenes>\r\n", "<scene id=\"7\" alias=\"A\" type=\"eib\" />\r\n"}));
}

TEST(LineWriter, WritesTheBytesOfTheCodePage)
{
    EXPECT_EQ(Line("%s", QStringLiteral("Küche € „x“")), QByteArray("K\xFC"
                                                                    "che \x80 \x84x\x93"));
}

TEST(LineWriter, WritesAQuestionMarkForWhatTheCodePageLacks)
{
    EXPECT_EQ(Line("%s", QStringLiteral("Ω😀x")), QByteArray("??x"));
}

TEST(LineWriter, EscapesNothing)
{
    EXPECT_EQ(Line("alias=\"%s\"", QStringLiteral("a \"b\" & <c> %s")), QByteArray("alias=\"a \"b\" & <c> %s\""));
}

TEST(LineWriter, WritesLongTextsWhole)
{
    const QString text(10'000'000, u'x');
    EXPECT_EQ(Line("<%s>", text), '<' + text.toLatin1() + '>');
}
