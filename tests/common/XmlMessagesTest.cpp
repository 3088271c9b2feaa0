#include "XmlMessages.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <libxml/parser.h>
#include <libxml/xmlerror.h>
#include <libxslt/xsltutils.h>

namespace
{

void Complain(const char* text)
{
    xmlGenericError(xmlGenericErrorContext, "%s", text);
}

// What is first said about a document.
QString FirstOf(const char* document)
{
    const TXmlMessages messages;
    xmlFreeDoc(xmlReadDoc(reinterpret_cast<const xmlChar*>(document), "haus.xml", nullptr, 0));
    return messages.First();
}

// Whether it goes to a function of the process's own, as before and after a collection.
int noticed = 0;

void Notice(void*, const char*, ...)
{
    ++noticed;
}

} // namespace

TEST(XmlMessages, AreEmptyWithoutAComplaint)
{
    EXPECT_EQ(FirstOf("<a/>"), QString());
}

TEST(XmlMessages, SayTheFirstThingWithItsLine)
{
    const QString first = FirstOf("<a>\n<b c=\"d\"e\"/>\n<f></a>");
    EXPECT_TRUE(first.startsWith(QStringLiteral("haus.xml:2: "))) << first.toStdString();
    EXPECT_FALSE(first.contains(u'\n'));
    EXPECT_FALSE(first.contains(QStringLiteral("haus.xml:3")));
}

TEST(XmlMessages, AreOneLineWithoutBlanksAround)
{
    const TXmlMessages messages;
    Complain("\n\n  erster   Satz \nzweiter\n");
    Complain("dritter");
    EXPECT_EQ(messages.First(), QStringLiteral("erster Satz"));
}

TEST(XmlMessages, ArePutTogetherFromParts)
{
    const TXmlMessages messages;
    Complain("ein ");
    Complain("Satz\n");
    Complain("noch einer\n");
    EXPECT_EQ(messages.First(), QStringLiteral("ein Satz"));
}

TEST(XmlMessages, AreCollectedFromStylesheetsToo)
{
    const TXmlMessages messages;
    xsltGenericError(xsltGenericErrorContext, "line %d: %s\n", 7, "Küche");
    EXPECT_EQ(messages.First(), QStringLiteral("line 7: Küche"));
}

TEST(XmlMessages, BeginAnewEachTime)
{
    {
        const TXmlMessages messages;
        Complain("früher");
    }
    const TXmlMessages messages;
    EXPECT_EQ(messages.First(), QString());
    Complain("später");
    EXPECT_EQ(messages.First(), QStringLiteral("später"));
}

TEST(XmlMessages, KeepNoMoreThanWhatSaysWhatWentWrong)
{
    const TXmlMessages messages;
    const QByteArray line(900, 'x');
    for (int i = 0; i < 1000; ++i)
        Complain(line.constData());
    EXPECT_GE(messages.First().size(), 2000);
    EXPECT_LE(messages.First().size(), 4000);
}

TEST(XmlMessages, CutASingleComplaintThatIsLongerThanItsBuffer)
{
    const TXmlMessages messages;
    Complain(QByteArray(100000, 'x').constData());
    EXPECT_EQ(messages.First().size(), 1023);
}

TEST(XmlMessages, AreNoLongerCollectedAfterwards)
{
    xmlSetGenericErrorFunc(nullptr, Notice);
    noticed = 0;
    Complain("vorher");
    EXPECT_EQ(noticed, 1);
    {
        const TXmlMessages messages;
        Complain("dabei");
        EXPECT_EQ(messages.First(), QStringLiteral("dabei"));
    }
    EXPECT_EQ(noticed, 1);
    testing::internal::CaptureStderr();
    Complain("nachher");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "nachher");
    xmlSetGenericErrorFunc(nullptr, nullptr);
}
