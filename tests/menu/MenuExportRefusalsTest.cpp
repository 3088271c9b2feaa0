#include "MenuTransformation.h"

#include "MenuDocument.h"

#include <QFileInfo>
#include <QUrl>

#include <filesystem>

TEST_F(MenuTransformation, DoesNotReachTheNetwork)
{
    for (const char* address : {"http://127.0.0.1:9/x.xml", "https://127.0.0.1:9/x.xml", "ftp://127.0.0.1:9/x.xml"}) {
        const TTransformationOutcome outcome =
            Run(Template(QByteArray("<xsl:copy-of select=\"document('") + address + "')\"/>"));
        EXPECT_FALSE(outcome.Reason.isEmpty()) << address;
        EXPECT_FALSE(Html().contains("127.0.0.1")) << address;
    }
}

TEST_F(MenuTransformation, ReadsNothingOutsideOfTheProject)
{
    const QByteArray absolute = Path("outside/secret.xml").toUtf8();
    std::filesystem::create_symlink(Path("outside").toStdString(), Path("project/link").toStdString());
    std::filesystem::create_symlink(Path("outside/secret.xml").toStdString(),
                                    Path("project/_menu/secret.xml").toStdString());
    for (const QByteArray& location :
         {absolute, "file://" + absolute, "file://localhost" + absolute, QByteArray("../../outside/secret.xml"),
          QByteArray("../%2E%2E/outside/secret.xml"), QByteArray("../link/secret.xml"), QByteArray("secret.xml")}) {
        Run(Template("<xsl:copy-of select=\"document('" + location + "')\"/>"));
        EXPECT_FALSE(Html().contains("geheim")) << location.toStdString();
    }
}

TEST_F(MenuTransformation, ImportsNothingFromOutside)
{
    Write("outside/part.xsl", Stylesheet("<xsl:template name=\"part\">geheim</xsl:template>"));
    for (const char* element : {"import", "include"}) {
        ExpectFailure(Run(Stylesheet(QByteArray("<xsl:") + element +
                                     " href=\"../../outside/part.xsl\"/><xsl:template match=\"/\">"
                                     "<xsl:call-template name=\"part\"/></xsl:template>")));
    }
}

TEST_F(MenuTransformation, FailsForAMissingImport)
{
    ExpectFailure(Run(Stylesheet("<xsl:import href=\"none.xsl\"/><xsl:template match=\"/\">x</xsl:template>")));
}

TEST_F(MenuTransformation, WritesNoOtherFile)
{
    const QByteArray target = Path("project/_menu/written.xml").toUtf8();
    Run("<xsl:stylesheet version=\"1.1\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
        "<xsl:template match=\"/\"><xsl:document href=\"" +
        target + "\"><x/></xsl:document><out/></xsl:template></xsl:stylesheet>");
    EXPECT_FALSE(QFileInfo::exists(Path("project/_menu/written.xml")));
    Run("<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\" "
        "xmlns:exsl=\"http://exslt.org/common\" extension-element-prefixes=\"exsl\">"
        "<xsl:template match=\"/\"><exsl:document href=\"" +
        target + "\"><x/></exsl:document><out/></xsl:template></xsl:stylesheet>");
    EXPECT_FALSE(QFileInfo::exists(Path("project/_menu/written.xml")));
}

TEST_F(MenuTransformation, EndsAnEndlessRecursion)
{
    ExpectFailure(Run(Stylesheet("<xsl:template match=\"/\" name=\"again\">"
                                 "<xsl:call-template name=\"again\"/></xsl:template>")));
    ExpectFailure(Run(Stylesheet("<xsl:template match=\"/\" name=\"again\"><xsl:param name=\"n\" select=\"0\"/>"
                                 "<a><xsl:call-template name=\"again\"><xsl:with-param name=\"n\" "
                                 "select=\"$n + 1\"/></xsl:call-template></a></xsl:template>")));
}

TEST_F(MenuTransformation, CutsARunawayLoopOff)
{
    // Each template calls the one below it ten times: 10^12 calls without any depth.
    QByteArray templates = "<xsl:template match=\"/\"><xsl:call-template name=\"t12\"/></xsl:template>"
                           "<xsl:template name=\"t0\"/>";
    for (int i = 1; i <= 12; ++i) {
        const QByteArray call = "<xsl:call-template name=\"t" + QByteArray::number(i - 1) + "\"/>";
        templates += "<xsl:template name=\"t" + QByteArray::number(i) + "\">" + call.repeated(10) + "</xsl:template>";
    }
    ExpectFailure(Run(Stylesheet(templates)));
}

TEST_F(MenuTransformation, CutsARunawayPathOff)
{
    Write("project/_menu/menu.xml", "<menu>" + QByteArray("<menuitem/>").repeated(2000) + "</menu>");
    ExpectFailure(Run(
        Template("<xsl:value-of select=\"count(//menuitem[count(//menuitem[count(//menuitem) &gt; 1]) &gt; 1])\"/>")));
}

TEST_F(MenuTransformation, FailsWhenTheStylesheetTerminates)
{
    const TTransformationOutcome outcome = Run(Template("<xsl:message terminate=\"yes\">genug</xsl:message>"));
    ExpectFailure(outcome);
    EXPECT_TRUE(outcome.Reason.contains(QStringLiteral("genug")));
}

TEST_F(MenuTransformation, ExpandsNoExternalEntity)
{
    const QByteArray entity = "[<!ENTITY x SYSTEM \"" + Path("project/_menu/inside.xml").toUtf8() + "\">]>";
    Write("project/_menu/inside.xml", "geheim");
    Write("project/_menu/menu.xml", "<!DOCTYPE menu " + entity + "<menu>&x;</menu>");
    Run(Template("<xsl:value-of select=\"menu\"/>"));
    EXPECT_FALSE(Html().contains("geheim"));

    Write("project/_menu/menu.xml", "<menu/>");
    QByteArray stylesheet = Template("&x;");
    Run("<!DOCTYPE stylesheet " + entity + stylesheet);
    EXPECT_FALSE(Html().contains("geheim"));
}

TEST_F(MenuTransformation, LeavesReadersUnharmed)
{
    Run(Template("x"));
    const QByteArray entity = "[<!ENTITY x SYSTEM \"" + Path("outside/secret.xml").toUtf8() + "\">]>";
    Write("project/_menu/menu.xml", "<!DOCTYPE menu " + entity + "<menu logo=\"&x;\">&x;</menu>");
    EXPECT_FALSE(ReadMenu(Path("project/_menu/menu.xml")));
}
