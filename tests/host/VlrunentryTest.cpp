#include "Vlrunentry.h"

#include "Folderman.h"
#include "OpenedUrls.h"
#include "TemporarySettings.h"
#include "TestSupport.h"
#include "Userman.h"
#include "Vlerrors.h"

#include <QFile>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace
{

class RunEntryTest : public testing::Test
{
protected:
    ~RunEntryTest() override { FolderManager().SetCommandEvent({}); }

    void Run(TEntryKind kind, const QString& target) const
    {
        RunEntry(QStringLiteral("Knopf"), {.Kind = kind, .Target = target}, m_file);
    }
    // The message of the failure; empty when it ran.
    QString Fault(TEntryKind kind, const QString& target) const
    {
        try {
            Run(kind, target);
        } catch (const TUserError& error) {
            return error.Message();
        }
        return {};
    }
    QUrl Local(const char* relative) const
    {
        return QUrl::fromLocalFile(m_project.Path(QString::fromLatin1(relative)));
    }

    TTemporarySettings m_settings;
    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    TOpenedUrls m_opened{{QStringLiteral("file"), QStringLiteral("https"), QStringLiteral("steuerung")}};
    QString m_file = m_project.Path(QStringLiteral("a.uri"));
};

} // namespace

TEST_F(RunEntryTest, CommandTextGoesToWhoeverOpensPanes)
{
    QStringList commands;
    FolderManager().SetCommandEvent([&](const QString& command) { commands.append(command); });
    Run(TEntryKind::Command, QStringLiteral("pane://scenes"));
    EXPECT_EQ(commands, QStringList{QStringLiteral("pane://scenes")});
}

TEST_F(RunEntryTest, CommandTextThatNobodyTakesIsAnError)
{
    EXPECT_TRUE(Fault(TEntryKind::Command, QStringLiteral("pane://x")).contains(QStringLiteral("pane://x")));
}

TEST_F(RunEntryTest, DocumentOfTheProjectIsOpenedWithoutAQuestion)
{
    m_project.Write(QStringLiteral("_menu/menu.html"), "<html/>");
    Run(TEntryKind::File, QStringLiteral("%PRJPATH%\\_menu\\menu.html"));
    Run(TEntryKind::File, QStringLiteral("_menu/menu.html"));
    EXPECT_EQ(m_opened.Urls(), QList<QUrl>({Local("_menu/menu.html"), Local("_menu/menu.html")}));
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(RunEntryTest, FolderIsOpened)
{
    Run(TEntryKind::File, QStringLiteral("%PRJPATH%/_menu"));
    EXPECT_EQ(m_opened.Urls(), QList<QUrl>{Local("_menu")});
}

TEST_F(RunEntryTest, WebAddressIsOpenedAsItStands)
{
    Run(TEntryKind::Address, QStringLiteral("https://www.example.org/?a=%20b"));
    ASSERT_EQ(m_opened.Urls().size(), 1);
    EXPECT_EQ(m_opened.Urls().first().toString(QUrl::FullyEncoded), QStringLiteral("https://www.example.org/?a=%20b"));
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(RunEntryTest, ProgramRunsAfterTheUserHasSeenItAndAgreedOnce)
{
    m_project.Write(QStringLiteral("a.sh"), "#!/bin/sh\n");
    m_messages.Answer = false;
    Run(TEntryKind::File, QStringLiteral("a.sh"));
    EXPECT_TRUE(m_opened.Urls().isEmpty());
    ASSERT_EQ(m_messages.Questions.size(), 1);
    EXPECT_TRUE(m_messages.Questions.first().contains(m_project.Path(QStringLiteral("a.sh"))));

    m_messages.Answer = true;
    Run(TEntryKind::File, QStringLiteral("a.sh"));
    Run(TEntryKind::File, QStringLiteral("%PRJPATH%/a.sh"));
    EXPECT_EQ(m_opened.Urls().size(), 2);
    EXPECT_EQ(m_messages.Questions.size(), 2);
}

TEST_F(RunEntryTest, ChangedProgramOfTheProjectIsAskedAboutAgain)
{
    m_project.Write(QStringLiteral("a.desktop"), "[Desktop Entry]\nExec=a\n");
    Run(TEntryKind::File, QStringLiteral("a.desktop"));
    m_project.Write(QStringLiteral("a.desktop"), "[Desktop Entry]\nExec=b\n");
    Run(TEntryKind::File, QStringLiteral("a.desktop"));
    EXPECT_EQ(m_messages.Questions.size(), 2);
}

TEST_F(RunEntryTest, AddressOfAFileIsTreatedAsTheFile)
{
    m_project.Write(QStringLiteral("a.sh"), "#!/bin/sh\n");
    m_messages.Answer = false;
    Run(TEntryKind::Address, Local("a.sh").toString());
    EXPECT_EQ(m_messages.Questions.size(), 1);
    EXPECT_TRUE(m_opened.Urls().isEmpty());
}

TEST_F(RunEntryTest, AddressOfAnotherSchemeIsAskedAbout)
{
    Run(TEntryKind::Address, QStringLiteral("steuerung://start"));
    ASSERT_EQ(m_messages.Questions.size(), 1);
    EXPECT_TRUE(m_messages.Questions.first().contains(QStringLiteral("steuerung://start")));
    EXPECT_EQ(m_opened.Urls().size(), 1);
}

TEST_F(RunEntryTest, WhatIsNoAddressIsRefused)
{
    for (const char* address : {"www.example.org", "https:www", "://", "a.sh"})
        EXPECT_TRUE(
            Fault(TEntryKind::Address, QString::fromLatin1(address)).contains(QStringLiteral("keine Webadresse")))
            << address;
    EXPECT_TRUE(m_opened.Urls().isEmpty());
}

TEST_F(RunEntryTest, EntryThatNamesItselfIsRefused)
{
    m_project.Write(QStringLiteral("a.uri"), "File=a.uri\n");
    EXPECT_EQ(Fault(TEntryKind::File, QStringLiteral("a.uri")),
              QStringLiteral("Der Eintrag \"Knopf\" nennt sich selbst."));
    ASSERT_TRUE(QFile::link(m_file, m_project.Path(QStringLiteral("b.txt"))));
    EXPECT_EQ(Fault(TEntryKind::File, QStringLiteral("b.txt")),
              QStringLiteral("Der Eintrag \"Knopf\" nennt sich selbst."));
}

TEST_F(RunEntryTest, EntryThatNamesAnotherEntryIsRefused)
{
    m_project.Write(QStringLiteral("b.uri"), "File=a.uri\n");
    EXPECT_TRUE(Fault(TEntryKind::File, QStringLiteral("b.uri")).contains(QStringLiteral("einen anderen Eintrag")));
}

TEST_F(RunEntryTest, MissingFileAndWhatIsNoFileAreRefused)
{
    EXPECT_TRUE(Fault(TEntryKind::File, QStringLiteral("fehlt.txt")).contains(QStringLiteral("fehlt.txt")));
    ASSERT_EQ(mkfifo(QFile::encodeName(m_project.Path(QStringLiteral("pipe.txt"))).constData(), 0600), 0);
    EXPECT_FALSE(Fault(TEntryKind::File, QStringLiteral("pipe.txt")).isEmpty());
    EXPECT_TRUE(m_opened.Urls().isEmpty());
}

TEST_F(RunEntryTest, FileOfAProjectNeedsOne)
{
    UserManager()->CloseProject();
    EXPECT_TRUE(Fault(TEntryKind::File, QStringLiteral("a.txt")).contains(QStringLiteral("offenes Projekt")));
    EXPECT_TRUE(Fault(TEntryKind::File, QStringLiteral("%PRJPATH%/a")).contains(QStringLiteral("offenes Projekt")));
}

TEST_F(RunEntryTest, EntryThatIsEditedWhileTheQuestionStandsRunsWhatWasAgreedTo)
{
    TEntryRecord record{.Kind = TEntryKind::Address, .Target = QStringLiteral("steuerung://start")};
    m_messages.WhenAsked = [&] {
        record = {.Kind = TEntryKind::Address, .Target = QStringLiteral("steuerung://stop")};
    };
    RunEntry(QStringLiteral("Knopf"), record, m_file);
    EXPECT_EQ(m_opened.Urls(), QList<QUrl>{QUrl(QStringLiteral("steuerung://start"))});
}
