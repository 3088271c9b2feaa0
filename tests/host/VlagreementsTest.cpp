#include "Vlagreements.h"

#include "TemporarySettings.h"
#include "TestSupport.h"
#include "Vlerrors.h"

#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{

const auto Caption = QStringLiteral("Sicherung");

class Agreements : public testing::Test
{
protected:
    Agreements() { WriteAll(m_program, "#!/bin/sh\n"); }

    bool Ask(const QString& command, const QString& program = {}) const
    {
        return IsAgreedTo(Caption, command, program);
    }

    TTemporarySettings m_settings;
    TRecordedMessages m_messages;
    QTemporaryDir m_directory;
    QString m_program = m_directory.filePath(QStringLiteral("a.sh"));
};

// Nobody sees what is asked.
class TUnattended final : public IMessageHandler
{
public:
    TUnattended() : m_previous(SetMessageHandler(this)) {}
    ~TUnattended() override { SetMessageHandler(m_previous); }
    TUnattended(const TUnattended&) = delete;
    TUnattended& operator=(const TUnattended&) = delete;

    void ShowInformation(const QString&) override {}
    void ShowError(const QString&) override {}
    bool Confirm(const QString&) override { return true; }
    void Note(const QObject*, const QString&) override {}
    bool IsInteractive() const override { return false; }

private:
    IMessageHandler* m_previous;
};

} // namespace

TEST_F(Agreements, QuestionShowsTheWholeCommandAndIsAskedOnce)
{
    const QString command = m_program + QStringLiteral(" --alles ") + QString(1000, u'x');
    EXPECT_TRUE(Ask(command, m_program));
    ASSERT_EQ(m_messages.Questions.size(), 1);
    EXPECT_TRUE(m_messages.Questions.first().contains(command));
    EXPECT_TRUE(m_messages.Questions.first().contains(Caption));
    EXPECT_TRUE(Ask(command, m_program));
    EXPECT_EQ(m_messages.Questions.size(), 1);
}

TEST_F(Agreements, RefusalIsNotRemembered)
{
    m_messages.Answer = false;
    EXPECT_FALSE(Ask(QStringLiteral("a")));
    EXPECT_FALSE(Ask(QStringLiteral("a")));
    EXPECT_EQ(m_messages.Questions.size(), 2);
}

TEST_F(Agreements, AnotherCommandIsAskedAbout)
{
    Ask(QStringLiteral("a"));
    Ask(QStringLiteral("A"));
    Ask(QStringLiteral("a "));
    EXPECT_EQ(m_messages.Questions.size(), 3);
}

TEST_F(Agreements, ChangedProgramIsAskedAboutAgain)
{
    Ask(m_program, m_program);
    WriteAll(m_program, "#!/bin/sh\nrm -rf ~\n");
    m_messages.Answer = false;
    EXPECT_FALSE(Ask(m_program, m_program));
    WriteAll(m_program, "#!/bin/sh\n");
    EXPECT_TRUE(Ask(m_program, m_program));
    EXPECT_EQ(m_messages.Questions.size(), 2);
}

TEST_F(Agreements, AgreementsAreKeptInTheUsersSettings)
{
    Ask(QStringLiteral("a"));
    QSettings settings;
    settings.beginGroup(QStringLiteral("agreements"));
    ASSERT_EQ(settings.childKeys().size(), 1);
    EXPECT_EQ(settings.childKeys().first().size(), 64);
}

TEST_F(Agreements, UnreadableProgramIsNotRun)
{
    EXPECT_THROW(Ask(QStringLiteral("a"), m_directory.filePath(QStringLiteral("fehlt"))), TFileError);
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(Agreements, CommandTooLongToBeSeenIsNotRun)
{
    EXPECT_THROW(Ask(QString(4097, u'x')), TUserError);
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(Agreements, NothingIsAgreedToWhereNobodySeesIt)
{
    Ask(QStringLiteral("a"));
    const TUnattended nobody;
    EXPECT_TRUE(Ask(QStringLiteral("a")));
    EXPECT_THROW(Ask(QStringLiteral("b")), TUserError);
}

TEST_F(Agreements, CharactersThatHideOthersAreShownByTheirCodes)
{
    EXPECT_EQ(VisibleText(QStringLiteral("a\u202Eb\nc\u200Bd\u2028e")),
              QStringLiteral("a<U+202E>b<U+000A>c<U+200B>d<U+2028>e"));
    EXPECT_EQ(VisibleText(QStringLiteral("Küche 100 %")), QStringLiteral("Küche 100 %"));
    Ask(QStringLiteral("rm\n\n\n\nharmlos"));
    EXPECT_TRUE(m_messages.Questions.first().contains(QStringLiteral("rm<U+000A><U+000A>")));
}
