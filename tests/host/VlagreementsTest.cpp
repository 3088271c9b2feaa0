#include "Vlagreements.h"

#include "ChildProcess.h"
#include "TemporarySettings.h"
#include "TestSupport.h"
#include "Vlerrors.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <string>

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

TEST_F(Agreements, EveryBlankCharacterIsShownByItsCode)
{
    const std::u32string blanks = U"\u3164\u115F\u1160\uFFA0\u2800\u00A0\u2003\u202F\u3000\u034F\uFE0F\uE000"
                                  U"\U000E0041\U000E0100\U0001D159";
    EXPECT_EQ(VisibleText(QString::fromStdU32String(blanks)),
              QStringLiteral("<U+3164><U+115F><U+1160><U+FFA0><U+2800><U+00A0><U+2003><U+202F><U+3000><U+034F><U+FE0F>"
                             "<U+E000><U+E0041><U+E0100><U+1D159>"));
    EXPECT_EQ(VisibleText(QString(QChar(0xD83D)) + u'a' + QChar(0xDE00)), QStringLiteral("<U+D83D>a<U+DE00>"));
    const auto shown = QString::fromUtf8("Küche 😀 中文 한글 a b");
    EXPECT_EQ(VisibleText(shown), shown);
}

TEST_F(Agreements, CommandStandsOnItsOwnLineBeforeACaptionOfAnyLength)
{
    const auto command = QStringLiteral("/tmp/a.sh");
    for (const QString& caption : {QString(5000, u'x'), QString(5000, u'\n'), QString::fromUtf8("😀").repeated(3000),
                                   QStringLiteral("Harmlos:\n\n/usr/bin/true\n\n")}) {
        IsAgreedTo(caption, command + QString::number(m_messages.Questions.size()), {});
        const QString question = m_messages.Questions.last();
        EXPECT_EQ(question.section(u'\n', 2, 2), command + QString::number(m_messages.Questions.size() - 1));
        EXPECT_LT(question.size(), 400);
        EXPECT_TRUE(question.isValidUtf16());
    }
    EXPECT_TRUE(m_messages.Questions.first().contains(QString(79, u'x') + u'…'));
    EXPECT_TRUE(m_messages.Questions.last().contains(QStringLiteral("Harmlos:<U+000A><U+000A>/usr/bin/true")));
}

TEST_F(Agreements, ProgramThatIsReplacedWhileTheQuestionStandsIsNotRun)
{
    m_messages.WhenAsked = [this] { WriteAll(m_program, "#!/bin/sh\nrm -rf ~\n"); };
    EXPECT_TRUE(OutcomeOf([this] { Ask(m_program, m_program); }).contains(QStringLiteral("hat sich geändert")));
    m_messages.WhenAsked = {};
    m_messages.Answer = false;
    EXPECT_FALSE(Ask(m_program, m_program));
    WriteAll(m_program, "#!/bin/sh\n");
    EXPECT_FALSE(Ask(m_program, m_program));
    EXPECT_EQ(m_messages.Questions.size(), 3);
}

TEST_F(Agreements, ProgramThatVanishesWhileTheQuestionStandsIsNotRun)
{
    m_messages.WhenAsked = [this] { QFile::remove(m_program); };
    EXPECT_THROW(Ask(m_program, m_program), TFileError);
    EXPECT_TRUE(QSettings().allKeys().isEmpty());
}
