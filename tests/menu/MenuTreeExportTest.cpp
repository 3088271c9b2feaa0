#include "MenuTree.h"

#include "Vlerrors.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>

namespace
{

constexpr auto LinkCaptions = "Start;Wetter;Uhr;Licht;Flur;Alarme;";
const auto Failed = QStringLiteral("Error (-1): Transformation failed.");

class MenuExportOfTree : public TMenuTree
{
protected:
    void RemoveMenuDirectory() const { ASSERT_TRUE(QDir(m_project.Path(QStringLiteral("_menu"))).removeRecursively()); }
    void WriteStylesheet(const QByteArray& content) const
    {
        m_project.Write(QStringLiteral("_menu/menu.xsl"), content);
    }
    void WriteHtml(const QByteArray& content) const { m_project.Write(QStringLiteral("_menu/menu.html"), content); }
    QByteArray DocumentWithStyle(const char* style) const
    {
        return MenuDocument().replace("href=\"\"", "href=\"" + QByteArray::fromStdString(PackagePath(style)) + "\"");
    }
    // An export that tells that it failed, once, and leaves the former HTML.
    void ExpectFailure()
    {
        WriteHtml("vorher");
        m_messages.Errors.clear();
        Item("Tür").Link = QStringLiteral("neu");
        Export();
        EXPECT_EQ(m_messages.Errors, QStringList({Failed}));
        EXPECT_EQ(Html(), "vorher");
        EXPECT_TRUE(WrittenLinks().contains("value=\"neu\" href=\"/tuer.html\""));
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }
};

} // namespace

// The first export and the next

TEST_F(MenuExportOfTree, FirstOneMakesTheDirectoryWithTheTemplates)
{
    RemoveMenuDirectory();
    Export();
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_EQ(MenuFiles(), "dplinks.xml|menu.css|menu.html|menu.js|menu.xml|menu.xsl");
    EXPECT_EQ(m_project.Read(QStringLiteral("_menu/menu.xsl")), Stylesheet());
    EXPECT_EQ(m_project.Read(QStringLiteral("_menu/menu.js")), "// script");
    EXPECT_EQ(m_project.Read(QStringLiteral("_menu/menu.css")), "/* style */");
    EXPECT_EQ(WrittenMenu(), MenuDocument()) << "with an empty reference to a stylesheet";
    EXPECT_EQ(WrittenLinks(), LinksDocument());
    EXPECT_EQ(Html(), LinkCaptions);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(MenuExportOfTree, SecondOneNamesTheStylesheetOfTheFirst)
{
    RemoveMenuDirectory();
    Export();
    Export();
    EXPECT_EQ(WrittenMenu(), DocumentWithStyle("_menu/menu.xsl"));
    EXPECT_EQ(Html(), LinkCaptions);
    Reload();
    Export();
    EXPECT_EQ(WrittenMenu(), DocumentWithStyle("_menu/menu.xsl")) << "the defaults stay until the next command";
}

TEST_F(MenuExportOfTree, NamesTheStylesheetAlsoWhereItDoesNotExist)
{
    Export();
    EXPECT_EQ(m_frame->GetStylePath().toStdString(), PackagePath("_menu/menu.xsl"));
    Export();
    EXPECT_EQ(WrittenMenu(), DocumentWithStyle("_menu/menu.xsl"));
    EXPECT_EQ(MenuFiles(), "dplinks.xml|menu.xml");
}

TEST_F(MenuExportOfTree, WithoutAStylesheetIsSilent)
{
    Export();
    EXPECT_EQ(MenuFiles(), "dplinks.xml|menu.xml") << "no template comes into a directory that exists";
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_TRUE(m_messages.Informations.isEmpty());
}

TEST_F(MenuExportOfTree, LeavesTheFilesOfADirectoryThatExists)
{
    WriteStylesheet(Stylesheet("eigenes:"));
    m_project.Write(QStringLiteral("_menu/menu.js"), "mine");
    Export();
    EXPECT_EQ(m_project.Read(QStringLiteral("_menu/menu.xsl")), Stylesheet("eigenes:"));
    EXPECT_EQ(m_project.Read(QStringLiteral("_menu/menu.js")), "mine");
    EXPECT_EQ(MenuFiles(), "dplinks.xml|menu.html|menu.js|menu.xml|menu.xsl");
    EXPECT_EQ(Html(), QByteArray("eigenes:") + LinkCaptions);
}

TEST_F(MenuExportOfTree, PassesMissingTemplatesOver)
{
    RemoveMenuDirectory();
    ASSERT_TRUE(QFile::remove(HomePath("menu.xsl")));
    Export();
    EXPECT_EQ(MenuFiles(), "dplinks.xml|menu.css|menu.js|menu.xml");
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(MenuExportOfTree, WorksWithoutAHomeOfTheProduct)
{
    RemoveMenuDirectory();
    qunsetenv("NORHOME");
    Export();
    EXPECT_EQ(MenuFiles(), "dplinks.xml|menu.xml");
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(MenuExportOfTree, NotesHowMuchItWroteAndClearsTheModifiedState)
{
    m_frame->SetModified(true);
    m_messages.Notes.clear();
    Export();
    EXPECT_EQ(m_messages.Notes, QStringList({QStringLiteral("3 Menupunkte, 3 Untermenupunkte, 3 Links exportiert "
                                                            "nach ") +
                                             m_project.Path(QStringLiteral("_menu"))}));
    EXPECT_FALSE(m_frame->IsModified());
}

// Where it goes

TEST_F(MenuExportOfTree, GoesWhereTheKeysSay)
{
    m_project.Write(QStringLiteral("own.xsl"), Stylesheet("eigenes:"));
    Execute(*m_frame, "x://?style=$(project)/own.xsl&out=$(project)/index.html");
    Export();
    EXPECT_EQ(m_project.Read(QStringLiteral("index.html")), QByteArray("eigenes:") + LinkCaptions);
    EXPECT_EQ(MenuFiles(), "dplinks.xml|menu.xml");
    EXPECT_EQ(WrittenMenu(), DocumentWithStyle("own.xsl"));
}

TEST_F(MenuExportOfTree, TakesTheDefaultForAStylesheetThatDoesNotExist)
{
    WriteStylesheet(Stylesheet("eigenes:"));
    Execute(*m_frame, "x://?style=$(project)/none.xsl");
    Export();
    EXPECT_EQ(Html(), QByteArray("eigenes:") + LinkCaptions);
}

TEST_F(MenuExportOfTree, NeverTakesTheMenuForItsStylesheetOrItsOutput)
{
    WriteStylesheet(Stylesheet());
    Execute(*m_frame, "x://?style=$(project)/_menu/menu.xml&out=%PRJPATH%\\_menu\\menu.xml");
    Export();
    EXPECT_EQ(Html(), LinkCaptions);
    EXPECT_EQ(m_frame->GetOutputPath().toStdString(), PackagePath("_menu/menu.html"));
    EXPECT_EQ(m_frame->GetStylePath().toStdString(), PackagePath("_menu/menu.xsl"));
    EXPECT_TRUE(WrittenMenu().contains("<menuitem id=\"mi0\""));
}

TEST_F(MenuExportOfTree, GoesToTheStandardOutputByItsName)
{
    WriteStylesheet(Stylesheet());
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(m_home.path()));
    WriteAll(QStringLiteral("StdOut.html"), "unberührt");
    Execute(*m_frame, "x://?out=StdOut.html");
    testing::internal::CaptureStdout();
    Export();
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_EQ(output, LinkCaptions);
    EXPECT_EQ(ReadAll(QStringLiteral("StdOut.html")), "unberührt");
    EXPECT_FALSE(m_project.Exists(QStringLiteral("_menu/menu.html")));
    ASSERT_TRUE(QDir::setCurrent(before));
}

TEST_F(MenuExportOfTree, WritesTheLinksAfterTheTransformation)
{
    WriteStylesheet(Stylesheet("<xsl:value-of select=\"document('dplinks.xml')//link[2]/@value\"/>:"));
    Item("Tür").Link = QStringLiteral("neu");
    Export();
    EXPECT_EQ(Html(), QByteArray("0:") + LinkCaptions) << "the links as they were before";
    Export();
    EXPECT_EQ(Html(), QByteArray("neu:") + LinkCaptions);
}

TEST_F(MenuExportOfTree, WritesLinksBesideTheMenuWhereThereWereNone)
{
    ASSERT_TRUE(QFile::remove(m_project.Path(QStringLiteral("_menu/dplinks.xml"))));
    TMenuTreeFrame frame;
    Execute(frame, "x://?file=$(project)/_menu/menu.xml");
    EXPECT_EQ(frame.GetLinksPath(), QString());
    frame.MenuAction_Export();
    EXPECT_EQ(frame.GetLinksPath().toStdString(), PackagePath("_menu/dplinks.xml"));
    EXPECT_EQ(WrittenLinks(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<links>\r\n</links>\r\n");
}

TEST_F(MenuExportOfTree, IgnoresThePathThatSaveMenuIsGiven)
{
    m_frame->SaveMenu(m_project.Path(QStringLiteral("other.xml")));
    EXPECT_FALSE(m_project.Exists(QStringLiteral("other.xml")));
    EXPECT_EQ(WrittenMenu(), MenuDocument());
}

// Failures

TEST_F(MenuExportOfTree, FailsWithAStylesheetThatDoesNotParse)
{
    WriteStylesheet("<xsl:");
    ExpectFailure();
}

TEST_F(MenuExportOfTree, FailsWithAStylesheetThatGivesUp)
{
    WriteStylesheet(Stylesheet("<xsl:message terminate=\"yes\">genug</xsl:message>"));
    m_messages.Notes.clear();
    ExpectFailure();
    EXPECT_EQ(m_messages.Notes.filter(QStringLiteral("genug")).size(), 1);
}

TEST_F(MenuExportOfTree, FailsForACaptionWithAQuoteThatIsWrittenAllTheSame)
{
    WriteStylesheet(Stylesheet());
    Item("Uhr").Title = QStringLiteral("die \"Uhr\"");
    ExpectFailure();
    EXPECT_TRUE(WrittenMenu().contains("title=\"die \"Uhr\"\" link"));
}

TEST_F(MenuExportOfTree, FailsForAStylesheetThatDoublesATextForEver)
{
    WriteStylesheet("<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">"
                    "<xsl:template match=\"/\" name=\"again\"><xsl:param name=\"s\" select=\"'0123456789'\"/>"
                    "<xsl:call-template name=\"again\"><xsl:with-param name=\"s\" select=\"concat($s, $s)\"/>"
                    "</xsl:call-template></xsl:template></xsl:stylesheet>");
    ExpectFailure();
    EXPECT_TRUE(m_messages.Notes.contains(QStringLiteral("Das Stylesheet braucht zu viel Speicher.")));
}

TEST_F(MenuExportOfTree, FailsForAnOutputThatCannotBeWritten)
{
    WriteStylesheet(Stylesheet());
    QDir(m_project.Root()).mkpath(QStringLiteral("aus"));
    Execute(*m_frame, "x://?out=$(project)/aus/menu.html");
    ASSERT_TRUE(QDir(m_project.Root()).rmdir(QStringLiteral("aus")));
    ExpectFailure();
    EXPECT_FALSE(m_project.Exists(QStringLiteral("aus")));
}

TEST_F(MenuExportOfTree, WithoutAMenuFileTransformsNothing)
{
    WriteStylesheet(Stylesheet());
    ASSERT_TRUE(QFile::remove(m_project.Path(QStringLiteral("_menu/menu.xml"))));
    m_frame->TranslateMenu();
    EXPECT_EQ(MenuFiles(), "dplinks.xml|menu.xsl");
    EXPECT_EQ(m_frame->GetOutputPath(), QString());
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(MenuExportOfTree, ThatCannotWriteTheMenuTellsItAndStaysModified)
{
    RemoveMenuDirectory();
    m_project.Write(QStringLiteral("_menu"), "a file");
    m_frame->SetModified(true);
    EXPECT_THROW(m_frame->SaveMenu({}), TFileError);
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    Export();
    EXPECT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors.value(0).contains(QStringLiteral("_menu")));
    EXPECT_TRUE(m_frame->IsModified());
    EXPECT_EQ(m_project.Read(QStringLiteral("_menu")), "a file");
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}
