#include "Vlprogramfiles.h"

#include "TestSupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{

class ProgramFiles : public testing::Test
{
protected:
    QString Path(const QString& name) const { return m_directory.filePath(name); }

    bool MayRun(const char* name, const QByteArray& content = "Text") const
    {
        const QString path = Path(QString::fromUtf8(name));
        WriteAll(path, content);
        return MayRunProgram(path);
    }

    QTemporaryDir m_directory;
};

} // namespace

TEST_F(ProgramFiles, KnownDocumentsAreNoPrograms)
{
    for (const char* name : {"a.txt", "a.html", "A.HTM", "a.pdf", "a.png", "a.jpg", "a.svg", "a.csv", "a.xml", "a.odt",
                             "a.xlsx", "a.docx", "a.mp4", "a.wav"})
        EXPECT_FALSE(MayRun(name)) << name;
}

TEST_F(ProgramFiles, EverythingElseMayBeOne)
{
    for (const char* name : {"a.sh",   "a.py",       "a.pl",  "a.desktop",   "a.exe", "a.bat",    "a.cmd",
                             "a.jar",  "a.AppImage", "a.deb", "a.js",        "a.vbs", "a.ps1",    "a.docm",
                             "a.xlsm", "a.lnk",      "a.so",  "a.unbekannt", "ohne",  "a.txt.sh", "a.odb"})
        EXPECT_TRUE(MayRun(name)) << name;
}

TEST_F(ProgramFiles, RightToBeExecutedMakesAnyDocumentAProgram)
{
    const QString path = Path(QStringLiteral("a.txt"));
    for (const auto right : {QFile::ExeOwner, QFile::ExeGroup, QFile::ExeOther}) {
        WriteAll(path, "Text");
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | right);
        EXPECT_TRUE(MayRunProgram(path));
    }
}

TEST_F(ProgramFiles, ContentOfAProgramCountsWhateverTheName)
{
    EXPECT_TRUE(MayRun("a.txt", "#!/bin/sh\nrm -rf ~\n"));
    EXPECT_TRUE(MayRun("a.png", "\x7F"
                                "ELF\2\1\1"));
    EXPECT_TRUE(MayRun("a.pdf", "MZ\x90"));
    EXPECT_TRUE(MayRun("a.html", "# Kommentar\n[Desktop Entry]\nExec=sh\n"));
}

TEST_F(ProgramFiles, LinkIsWhatItLeadsTo)
{
    WriteAll(Path(QStringLiteral("a.sh")), "echo");
    ASSERT_TRUE(QFile::link(Path(QStringLiteral("a.sh")), Path(QStringLiteral("b.txt"))));
    EXPECT_TRUE(MayRunProgram(Path(QStringLiteral("b.txt"))));
    WriteAll(Path(QStringLiteral("c.txt")), "Text");
    ASSERT_TRUE(QFile::link(Path(QStringLiteral("c.txt")), Path(QStringLiteral("d.sh"))));
    EXPECT_TRUE(MayRunProgram(Path(QStringLiteral("d.sh"))));
}

TEST_F(ProgramFiles, FoldersAreDocumentsAndWhatIsNoFileIsNone)
{
    EXPECT_FALSE(MayRunProgram(m_directory.path()));
    EXPECT_TRUE(MayRunProgram(Path(QStringLiteral("fehlt.txt"))));
    const QString pipe = Path(QStringLiteral("pipe.txt"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_TRUE(MayRunProgram(pipe));
}

TEST_F(ProgramFiles, OnlyPagesOfTheWebAreDocumentsAmongAddresses)
{
    WriteAll(Path(QStringLiteral("a.html")), "Text");
    EXPECT_FALSE(MayAddressRunProgram(QStringLiteral("https://www.example.org/a.sh")));
    EXPECT_FALSE(MayAddressRunProgram(QStringLiteral("HTTP://www.example.org/")));
    EXPECT_FALSE(MayAddressRunProgram(QStringLiteral("file://") + Path(QStringLiteral("a.html"))));
    EXPECT_TRUE(MayAddressRunProgram(QStringLiteral("file:///bin/sh")));
    for (const char* address : {"ssh://host/", "javascript:alert(1)", "steuerung://start", "ftp://host/a.html", ""})
        EXPECT_TRUE(MayAddressRunProgram(QString::fromLatin1(address))) << address;
}
