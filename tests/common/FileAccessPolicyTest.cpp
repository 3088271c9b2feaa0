#include "FileAccessPolicy.h"

#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <libxml/parser.h>
#include <libxml/xmlIO.h>
#include <libxslt/documents.h>

#include <filesystem>
#include <memory>

namespace
{

// A directory "inside", which may be read, beside "outside" and "inside-too", which may not; each with a file "a.xml".
class FileAccessPolicy : public testing::Test
{
protected:
    FileAccessPolicy()
    {
        for (const char* directory : {"inside", "inside/deep", "outside", "inside-too"}) {
            QDir(m_directory.path()).mkpath(QString::fromLatin1(directory));
            WriteAll(Path(directory) + QStringLiteral("/a.xml"), "<a/>");
        }
    }

    QString Path(const char* name) const
    {
        return QDir(m_directory.path()).canonicalPath() + u'/' + QString::fromUtf8(name);
    }
    // Whether a policy for "inside" and the file "outside/allowed.xml" lets `location` be read. "@" stands for the
    // directory of all.
    bool MayRead(const char* location) const
    {
        const TFileAccessPolicy policy({Path("inside")}, {Path("outside/allowed.xml")});
        return policy.MayRead(Location(location).constData());
    }
    QByteArray Location(const char* location) const
    {
        return QByteArray(location).replace("@", QDir(m_directory.path()).canonicalPath().toUtf8());
    }
    void Link(const char* target, const char* name) const
    {
        std::filesystem::create_symlink(Path(target).toStdString(), Path(name).toStdString());
    }
    // Whether the library gives a document from `path`, asked for by name or not.
    bool Loads(const char* path, bool isExpected) const
    {
        if (isExpected)
            TFileAccessPolicy::ExpectDocument();
        const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
            xmlReadFile(Path(path).toUtf8().constData(), nullptr, XML_PARSE_NOERROR | XML_PARSE_NOWARNING), xmlFreeDoc);
        return document != nullptr;
    }

    QTemporaryDir m_directory;
};

} // namespace

TEST_F(FileAccessPolicy, AllowsWhatStandsBelowItsDirectories)
{
    EXPECT_TRUE(MayRead("@/inside/a.xml"));
    EXPECT_TRUE(MayRead("@/inside/deep/a.xml"));
    EXPECT_FALSE(MayRead("@/outside/a.xml"));
    EXPECT_FALSE(MayRead("/etc/passwd"));
}

TEST_F(FileAccessPolicy, TakesNoDirectoryForAnotherThatBeginsLikeIt)
{
    EXPECT_FALSE(MayRead("@/inside-too/a.xml"));
    EXPECT_FALSE(MayRead("@/inside"));
}

TEST_F(FileAccessPolicy, AllowsItsFilesByName)
{
    WriteAll(Path("outside/allowed.xml"), "<a/>");
    EXPECT_TRUE(MayRead("@/outside/allowed.xml"));
    EXPECT_TRUE(MayRead("@/inside/../outside/allowed.xml"));
    EXPECT_FALSE(MayRead("@/outside/allowed.xml2"));
    EXPECT_FALSE(MayRead("@/outside/a.xml"));
}

TEST_F(FileAccessPolicy, ForbidsWhatDoesNotExist)
{
    EXPECT_FALSE(MayRead("@/inside/none.xml"));
    EXPECT_FALSE(MayRead("@/outside/allowed.xml"));
    EXPECT_FALSE(MayRead(""));
    const TFileAccessPolicy nothing({QString(), QStringLiteral("/none")}, {QString(), QStringLiteral("/none/a.xml")});
    for (const char* location : {"", "/none/a.xml", "@/inside/a.xml", "/"})
        EXPECT_FALSE(nothing.MayRead(Location(location).constData())) << location;
}

TEST_F(FileAccessPolicy, ResolvesDots)
{
    EXPECT_FALSE(MayRead("@/inside/../outside/a.xml"));
    EXPECT_FALSE(MayRead("@/inside/deep/../../outside/a.xml"));
    EXPECT_TRUE(MayRead("@/inside/deep/../a.xml"));
    EXPECT_TRUE(MayRead("@/outside/../inside/./a.xml"));
}

TEST_F(FileAccessPolicy, ResolvesPercentEscapes)
{
    EXPECT_TRUE(MayRead("@/inside/%61.xml"));
    EXPECT_FALSE(MayRead("@/inside/%2E%2E/outside/a.xml"));
    EXPECT_FALSE(MayRead("@/inside/..%2Foutside%2Fa.xml"));
}

TEST_F(FileAccessPolicy, LetsNeitherTheEscapedNorThePlainNameLeadOut)
{
    // Both exist, and only one of them lies inside.
    Link("outside/a.xml", "inside/b.xml");
    WriteAll(Path("inside/%62.xml"), "<a/>");
    EXPECT_FALSE(MayRead("@/inside/%62.xml"));
    WriteAll(Path("inside/c.xml"), "<a/>");
    Link("outside/a.xml", "inside/%63.xml");
    EXPECT_FALSE(MayRead("@/inside/%63.xml"));
}

TEST_F(FileAccessPolicy, ResolvesSymbolicLinks)
{
    Link("outside", "inside/door");
    Link("outside/a.xml", "inside/window.xml");
    Link("inside/deep", "outside/back");
    EXPECT_FALSE(MayRead("@/inside/door/a.xml"));
    EXPECT_FALSE(MayRead("@/inside/window.xml"));
    EXPECT_TRUE(MayRead("@/outside/back/a.xml"));
}

TEST_F(FileAccessPolicy, AllowsBelowADirectoryThatIsALinkItself)
{
    Link("inside", "entrance");
    const TFileAccessPolicy policy({Path("entrance")}, {});
    EXPECT_TRUE(policy.MayRead(Location("@/entrance/a.xml").constData()));
    EXPECT_TRUE(policy.MayRead(Location("@/inside/a.xml").constData()));
    EXPECT_FALSE(policy.MayRead(Location("@/outside/a.xml").constData()));
}

TEST_F(FileAccessPolicy, KnowsTheUrlsOfFiles)
{
    for (const char* prefix : {"file://", "file:", "file://localhost"}) {
        EXPECT_TRUE(MayRead(QByteArray(prefix + QByteArray("@/inside/a.xml")).constData())) << prefix;
        EXPECT_FALSE(MayRead(QByteArray(prefix + QByteArray("@/outside/a.xml")).constData())) << prefix;
        EXPECT_FALSE(MayRead(QByteArray(prefix + QByteArray("@/inside/../outside/a.xml")).constData())) << prefix;
    }
    EXPECT_FALSE(MayRead("file://elsewhere@/inside/a.xml"));
}

TEST_F(FileAccessPolicy, ForbidsEveryOtherUrl)
{
    for (const char* location : {"http://localhost/a.xml", "https://localhost@/inside/a.xml", "ftp://localhost/a.xml",
                                 "http:@/inside/a.xml", "data:text/xml,<a/>"})
        EXPECT_FALSE(MayRead(location)) << location;
}

TEST_F(FileAccessPolicy, TakesDirectoriesAndFilesInTheFormOfThePackage)
{
    const auto packagePath = [this](const char* name) { return Path(name).replace(u'/', u'\\'); };
    const TFileAccessPolicy policy({packagePath("inside")}, {packagePath("outside/a.xml")});
    EXPECT_TRUE(policy.MayRead(Location("@/inside/a.xml").constData()));
    EXPECT_TRUE(policy.MayRead(Location("@/outside/a.xml").constData()));
    EXPECT_FALSE(policy.MayRead(Location("@/inside-too/a.xml").constData()));
}

TEST_F(FileAccessPolicy, KnowsNamesBeyondAscii)
{
    WriteAll(Path("inside/Küche 1.xml"), "<a/>");
    EXPECT_TRUE(MayRead("@/inside/Küche 1.xml"));
    EXPECT_TRUE(MayRead("@/inside/K%C3%BCche%201.xml"));
}

// What the libraries load

TEST_F(FileAccessPolicy, LetsTheLibraryLoadOnlyADocumentThatWasAskedFor)
{
    EXPECT_TRUE(Loads("outside/a.xml", false));
    {
        const TFileAccessPolicy policy({Path("inside")}, {});
        EXPECT_TRUE(Loads("inside/a.xml", true));
        EXPECT_FALSE(Loads("inside/a.xml", false));
        EXPECT_FALSE(Loads("outside/a.xml", true));
        EXPECT_FALSE(Loads("inside/a.xml", false));
    }
    EXPECT_TRUE(Loads("outside/a.xml", false));
}

TEST_F(FileAccessPolicy, GivesNobodyAnEntityOfADocument)
{
    WriteAll(Path("inside/text.txt"), "geheim");
    WriteAll(Path("inside/b.xml"), Location("<!DOCTYPE b [<!ENTITY x SYSTEM \"@/inside/text.txt\">]><b>&x;</b>"));
    const auto content = [this] {
        TFileAccessPolicy::ExpectDocument();
        const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
            xmlReadFile(Path("inside/b.xml").toUtf8().constData(), nullptr,
                        XML_PARSE_NOENT | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
            xmlFreeDoc);
        if (!document)
            return QByteArray("no document");
        const std::unique_ptr<xmlChar, decltype(xmlFree)> text(xmlNodeGetContent(xmlDocGetRootElement(document.get())),
                                                               xmlFree);
        return QByteArray(reinterpret_cast<const char*>(text.get()));
    };
    EXPECT_EQ(content(), "geheim");
    const TFileAccessPolicy policy({Path("inside")}, {});
    EXPECT_FALSE(content().contains("geheim"));
}

TEST_F(FileAccessPolicy, IsCurrentWhileItLivesAndLeavesTheLoadersAsTheyWere)
{
    const xmlExternalEntityLoader loader = xmlGetExternalEntityLoader();
    const xsltDocLoaderFunc documentLoader = xsltDocDefaultLoader;
    EXPECT_EQ(TFileAccessPolicy::Current(), nullptr);
    {
        const TFileAccessPolicy policy({}, {});
        EXPECT_EQ(TFileAccessPolicy::Current(), &policy);
        EXPECT_NE(xmlGetExternalEntityLoader(), loader);
    }
    EXPECT_EQ(TFileAccessPolicy::Current(), nullptr);
    EXPECT_EQ(xmlGetExternalEntityLoader(), loader);
    EXPECT_EQ(xsltDocDefaultLoader, documentLoader);
}
