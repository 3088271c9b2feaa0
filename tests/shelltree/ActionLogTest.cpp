#include "ActionLog.h"

#include "ChildProcess.h"
#include "TestSupport.h"
#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <csignal>

#include <sys/stat.h>
#include <unistd.h>

namespace
{

class ActionLog : public testing::Test
{
protected:
    QString Path() const { return m_directory.filePath(QStringLiteral("actions.log")); }
    QByteArray Content() const { return ReadAll(Path()); }
    void Append(const QByteArray& line) { TActionLog(Path()).Append(line); }
    // What a log becomes that is found like this.
    QByteArray Continued(const QByteArray& content)
    {
        WriteAll(Path(), content);
        Append("DEL \"/neu\"");
        return Content();
    }
    QString Refusal()
    {
        TActionLog log(Path());
        return OutcomeOf([&] { log.Append("DEL \"/a\""); });
    }
    QString Refused(const char16_t* reason) const
    {
        return QStringLiteral("\"%1\" kann nicht fortgeschrieben werden (%2)").arg(Path(), QString::fromUtf16(reason));
    }

    QTemporaryDir m_directory;
};

constexpr auto New = "DEL \"/neu\"\r\n";

} // namespace

TEST_F(ActionLog, IsMadeByItsFirstLine)
{
    TActionLog log(ToPackagePath(Path()));
    EXPECT_FALSE(QFile::exists(Path()));
    log.Append("PUT \"/a\"");
    EXPECT_EQ(Content(), "PUT \"/a\"\r\n");
}

TEST_F(ActionLog, IsOnlyEverAppendedTo)
{
    WriteAll(Path(), "REN \"/a\" \"/b\"\r\nDEL \"/b\"\r\n");
    TActionLog log(Path());
    log.Append("PUT \"/c\"");
    log.Append("PUT \"/d\"");
    EXPECT_EQ(Content(), "REN \"/a\" \"/b\"\r\nDEL \"/b\"\r\nPUT \"/c\"\r\nPUT \"/d\"\r\n");
}

TEST_F(ActionLog, NothingIsKeptOpenBetweenLines)
{
    TActionLog log(Path());
    log.Append("PUT \"/a\"");
    ASSERT_TRUE(QFile::rename(Path(), Path() + u'1'));
    log.Append("PUT \"/b\"");
    EXPECT_EQ(Content(), "PUT \"/b\"\r\n");
    EXPECT_EQ(ReadAll(Path() + u'1'), "PUT \"/a\"\r\n");
}

TEST_F(ActionLog, AnUnfinishedLineIsCutBack)
{
    EXPECT_EQ(Continued("PUT \"/a\"\r\nREN \"/a\" \"/"), QByteArray("PUT \"/a\"\r\n") + New);
    EXPECT_EQ(Continued("MKDIR \"/ordner"), New);
    EXPECT_EQ(Continued("x\nDEL \""), QByteArray("x\n") + New);
}

TEST_F(ActionLog, ALineThatMayEndInTheMiddleOfANameIsCutBack)
{
    EXPECT_EQ(Continued("PUT \"/1\"\r\nDEL \"/p/a\""), QByteArray("PUT \"/1\"\r\n") + New);
}

TEST_F(ActionLog, ALineThatOnlyLacksItsLineFeedGetsIt)
{
    EXPECT_EQ(Continued("PUT \"/a\"\r"), QByteArray("PUT \"/a\"\r\n") + New);
}

TEST_F(ActionLog, ForeignContentIsNeverLost)
{
    EXPECT_EQ(Continued("Notizen"), QByteArray("Notizen\r\n") + New);
    EXPECT_EQ(Continued("Notizen\n"), QByteArray("Notizen\n") + New);
    EXPECT_EQ(Continued("PU"), QByteArray("PU\r\n") + New);
    // Too long for a line of ours, though it begins like one.
    const QByteArray longLine = "DEL \"" + QByteArray(100'000, 'x');
    EXPECT_EQ(Continued(longLine), longLine + "\r\n" + New);
    EXPECT_EQ(Continued("PUT \"/a\"\r\n" + longLine), "PUT \"/a\"\r\n" + longLine + "\r\n" + New);
}

TEST_F(ActionLog, WhatOthersAppendMeanwhileIsLookedAt)
{
    TActionLog log(Path());
    log.Append("PUT \"/a\"");
    WriteAll(Path(), Content() + "Notiz");
    log.Append("PUT \"/b\"");
    WriteAll(Path(), Content() + "REN \"/x");
    log.Append("PUT \"/c\"");
    EXPECT_EQ(Content(), "PUT \"/a\"\r\nNotiz\r\nPUT \"/b\"\r\nPUT \"/c\"\r\n");
}

TEST_F(ActionLog, AFolderIsRefused)
{
    ASSERT_TRUE(QDir().mkdir(Path()));
    EXPECT_EQ(Refusal(), Refused(u"Dort steht ein Verzeichnis"));
}

TEST_F(ActionLog, AFifoIsRefusedWithoutWaiting)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(Path()).constData(), 0600), 0);
    EXPECT_EQ(Refusal(), Refused(u"Dort steht keine gewöhnliche Datei"));
}

TEST_F(ActionLog, ALinkIsRefusedAndWhatItLeadsToStays)
{
    const QString target = m_directory.filePath(QStringLiteral("wichtig"));
    WriteAll(target, "x");
    ASSERT_TRUE(QFile::link(target, Path()));
    EXPECT_EQ(Refusal(), Refused(u"Dort steht eine Verknüpfung"));
    EXPECT_EQ(ReadAll(target), "x");
}

TEST_F(ActionLog, AFolderThatIsGoneIsNamed)
{
    TActionLog log(m_directory.filePath(QStringLiteral("weg/actions.log")));
    const QString outcome = OutcomeOf([&] { log.Append("DEL \"/a\""); });
    EXPECT_TRUE(outcome.contains(QStringLiteral("weg/actions.log"))) << outcome.toStdString();
}

TEST_F(ActionLog, AMediumThatCannotBeWrittenIsRefused)
{
    ASSERT_EQ(chmod(QFile::encodeName(m_directory.path()).constData(), 0555), 0);
    const QString outcome = RunInChild([this] {
        GiveUpRights();
        return Refusal();
    });
    ASSERT_EQ(chmod(QFile::encodeName(m_directory.path()).constData(), 0755), 0);
    EXPECT_EQ(outcome, Refused(u"Zugriff verweigert"));
}

TEST_F(ActionLog, ALineThatTheDiskTookHalfIsCutBackAtOnce)
{
    const QString outcome = RunInChild([this] {
        LimitFileSize(25);
        TActionLog log(Path());
        log.Append("PUT \"/a\""); // 10 bytes
        const QString failed = OutcomeOf([&] { log.Append("PUT \"/ein langer Name\""); });
        const QString between = QString::fromLatin1(Content());
        log.Append("PUT \"/b\"");
        return QString(failed == QStringLiteral("ok") ? u'-' : u'+') + between;
    });
    EXPECT_EQ(outcome, QStringLiteral("+PUT \"/a\"\r\n"));
    EXPECT_EQ(Content(), "PUT \"/a\"\r\nPUT \"/b\"\r\n");
}

TEST_F(ActionLog, AFailureBesideForeignContentKeepsItsRepairForTheNextLine)
{
    WriteAll(Path(), "Notiz");
    RunInChild([this] {
        LimitFileSize(20);
        TActionLog log(Path());
        const QString failed = OutcomeOf([&] { log.Append("PUT \"/ein langer Name\""); });
        log.Append("PUT \"/b\"");
        return failed;
    });
    EXPECT_EQ(Content(), "Notiz\r\nPUT \"/b\"\r\n");
}

TEST_F(ActionLog, TwoHundredThousandLinesAreAllThere)
{
    TActionLog log(Path());
    for (int i = 0; i < 200'000; ++i)
        log.Append("PUT \"/" + QByteArray::number(i) + '"');
    const QByteArray content = Content();
    EXPECT_EQ(content.count("\r\n"), 200'000);
    EXPECT_TRUE(content.endsWith("PUT \"/199998\"\r\nPUT \"/199999\"\r\n"));
}
