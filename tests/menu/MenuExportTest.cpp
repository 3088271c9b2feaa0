#include "MenuTransformation.h"

#include "Vlerrors.h"

#include <QFileInfo>

#include <libxml/parser.h>

TEST_F(MenuTransformation, WritesWhatTheStylesheetMakes)
{
    const TTransformationOutcome outcome = Run(Template("<xsl:value-of select=\"menu/menuitem/@caption\"/>"));
    EXPECT_GE(outcome.Saved, 0);
    EXPECT_EQ(outcome.Reason, QString());
    EXPECT_EQ(Html(), "<out>Start</out>\n");
}

TEST_F(MenuTransformation, TakesPathsOfThePackage)
{
    Write("project/_menu/menu.xsl", Template("neu"));
    const auto packagePath = [this](const char* name) { return Path(name).replace(u'/', u'\\'); };
    const TTransformationOutcome outcome = TransformMenu({.StylePath = packagePath("project/_menu/menu.xsl"),
                                                          .MenuPath = packagePath("project/_menu/menu.xml"),
                                                          .OutputPath = packagePath("project/_menu/menu.html"),
                                                          .ReadableRoots = {packagePath("project")}});
    EXPECT_GE(outcome.Saved, 0);
    EXPECT_EQ(Html(), "<out>neu</out>\n");
}

TEST_F(MenuTransformation, ReadsOtherDocumentsOfTheProject)
{
    Write("project/names.xml", "<names><n>Flur</n></names>");
    Run(Template("<xsl:value-of select=\"document('../names.xml')/names/n\"/>"));
    EXPECT_EQ(Html(), "<out>Flur</out>\n");
}

TEST_F(MenuTransformation, ImportsStylesheetsOfTheProject)
{
    Write("project/part.xsl", Stylesheet("<xsl:template name=\"part\">Teil</xsl:template>"));
    Run(Stylesheet("<xsl:import href=\"../part.xsl\"/><xsl:output method=\"text\"/>"
                   "<xsl:template match=\"/\"><xsl:call-template name=\"part\"/></xsl:template>"));
    EXPECT_EQ(Html(), "Teil");
}

TEST_F(MenuTransformation, WritesNothingForAnEmptyResult)
{
    const TTransformationOutcome outcome = Run(Stylesheet("<xsl:template match=\"/\"/>"));
    EXPECT_EQ(outcome.Saved, 0);
    EXPECT_EQ(Html(), "before");
}

TEST_F(MenuTransformation, FailsWithoutAStylesheetThatParses)
{
    for (const char* stylesheet : {"", "<", "<xsl:stylesheet>", "<html/>"}) {
        const TTransformationOutcome outcome = Run(stylesheet);
        EXPECT_EQ(outcome.Saved, -1) << stylesheet;
        EXPECT_FALSE(outcome.Reason.isEmpty()) << stylesheet;
        EXPECT_EQ(Html(), "before");
    }
}

TEST_F(MenuTransformation, FailsWithoutAMenuThatParses)
{
    for (const char* menu : {"", "<menu>", "<menu caption=\"a\"b\"/>"}) {
        Write("project/_menu/menu.xml", menu);
        EXPECT_EQ(Run(Template("x")).Saved, -1) << menu;
        EXPECT_EQ(Html(), "before");
    }
}

TEST_F(MenuTransformation, SaysWhatTheParserComplainsOf)
{
    Write("project/_menu/menu.xml", "<menu>\n<menuitem caption=\"a\"b\"/></menu>");
    const QString reason = Run(Template("x")).Reason;
    EXPECT_TRUE(reason.contains(QStringLiteral("menu.xml:2:"))) << reason.toStdString();
}

TEST_F(MenuTransformation, KeepsTheFormerResultWhenItCannotBeReplaced)
{
    Write("project/_menu/menu.xsl", Template("x"));
    EXPECT_THROW(TransformMenu({.StylePath = Path("project/_menu/menu.xsl"),
                                .MenuPath = Path("project/_menu/menu.xml"),
                                .OutputPath = Path("none/menu.html"),
                                .ReadableRoots = {Path("project")}}),
                 TFileError);
    EXPECT_FALSE(QFileInfo::exists(Path("none")));
}

TEST_F(MenuTransformation, LeavesTheLoaderOfTheProcessAsItWas)
{
    const xmlExternalEntityLoader before = xmlGetExternalEntityLoader();
    Run(Template("x"));
    EXPECT_EQ(xmlGetExternalEntityLoader(), before);
}

TEST_F(MenuTransformation, WritesToTheStandardOutputForAPathThatBeginsSo)
{
    Write("project/_menu/menu.xsl", Template("neu"));
    for (const char* output : {"stdout", "STDOUT", "Stdout.html"}) {
        testing::internal::CaptureStdout();
        const TTransformationOutcome outcome = TransformMenu({.StylePath = Path("project/_menu/menu.xsl"),
                                                              .MenuPath = Path("project/_menu/menu.xml"),
                                                              .OutputPath = QString::fromLatin1(output),
                                                              .ReadableRoots = {Path("project")}});
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "<out>neu</out>\n") << output;
        EXPECT_GE(outcome.Saved, 0) << output;
        EXPECT_FALSE(QFileInfo::exists(QString::fromLatin1(output))) << output;
    }
    EXPECT_EQ(Html(), "before");
}

TEST_F(MenuTransformation, GivesTheStandardOutputNothingForAFailure)
{
    Write("project/_menu/menu.xsl", "<");
    testing::internal::CaptureStdout();
    const TTransformationOutcome outcome = TransformMenu({.StylePath = Path("project/_menu/menu.xsl"),
                                                          .MenuPath = Path("project/_menu/menu.xml"),
                                                          .OutputPath = QStringLiteral("stdout"),
                                                          .ReadableRoots = {}});
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(outcome.Saved, -1);
}

TEST_F(MenuTransformation, TakesAStylesheetThatDoesNotExistForAFailure)
{
    const TTransformationOutcome outcome = TransformMenu({.StylePath = Path("project/_menu/none.xsl"),
                                                          .MenuPath = Path("project/_menu/menu.xml"),
                                                          .OutputPath = Path("project/_menu/menu.html"),
                                                          .ReadableRoots = {Path("project")}});
    EXPECT_EQ(outcome.Saved, -1);
    EXPECT_EQ(Html(), "before");
}

TEST_F(MenuTransformation, SubstitutesEntitiesInTheProcessFromThenOn)
{
    const int before = xmlSubstituteEntitiesDefault(0);
    Run(Template("x"));
    EXPECT_EQ(xmlSubstituteEntitiesDefault(before), 1);
}
