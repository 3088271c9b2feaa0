#include "Options.h"
#include "TestSupport.h"
#include "Vlerrors.h"

#include <gtest/gtest.h>

namespace
{

TOptions Parse(const QStringList& arguments)
{
    return ParseOptions(QStringList{QStringLiteral("velmora-workbench")} + arguments);
}

QStringList Words(const char* line)
{
    return QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts);
}

QString Failure(const char* line)
{
    try {
        Parse(Words(line));
    } catch (const TUserError& error) {
        return error.Message();
    }
    return {};
}

TEST(Options, NothingAsksForAWindowWithoutProject)
{
    const TOptions options = Parse({});
    EXPECT_FALSE(options.Batch);
    EXPECT_TRUE(options.ProjectDirectory.isEmpty());
    EXPECT_TRUE(options.Steps.isEmpty());
}

TEST(Options, ProjectIsTakenInBothSpellings)
{
    EXPECT_EQ(Parse(Words("--project haus")).ProjectDirectory, QStringLiteral("haus"));
    EXPECT_EQ(Parse(Words("--project=haus")).ProjectDirectory, QStringLiteral("haus"));
}

TEST(Options, CommandsAndActionsKeepTheOrderOfTheCommandLine)
{
    const TOptions options = Parse(Words("--batch --do a=MenuAction_One --command b=x://?k=v --project p "
                                         "--do=c=MenuAction_Two --command=a=y"));
    const QList<TBatchStep> expected{
        {.Kind = TBatchStep::TKind::Action, .Pane = QStringLiteral("a"), .Text = QStringLiteral("MenuAction_One")},
        {.Kind = TBatchStep::TKind::Command, .Pane = QStringLiteral("b"), .Text = QStringLiteral("x://?k=v")},
        {.Kind = TBatchStep::TKind::Action, .Pane = QStringLiteral("c"), .Text = QStringLiteral("MenuAction_Two")},
        {.Kind = TBatchStep::TKind::Command, .Pane = QStringLiteral("a"), .Text = QStringLiteral("y")},
    };
    EXPECT_EQ(options.Steps, expected);
    EXPECT_EQ(options.ProjectDirectory, QStringLiteral("p"));
}

TEST(Options, AValueThatLooksLikeAnOptionIsAValue)
{
    const TOptions options = Parse({QStringLiteral("--batch"), QStringLiteral("--project=p"),
                                    QStringLiteral("--command=a=--do"), QStringLiteral("--do=a=MenuAction_X")});
    ASSERT_EQ(options.Steps.size(), 2);
    EXPECT_EQ(options.Steps[0].Text, QStringLiteral("--do"));
}

TEST(Options, AnswerIsNoUnlessYesIsAsked)
{
    EXPECT_FALSE(Parse(Words("--batch --project p")).AnswerYes);
    EXPECT_FALSE(Parse(Words("--batch --project p --answer no")).AnswerYes);
    EXPECT_TRUE(Parse(Words("--batch --project p --answer yes")).AnswerYes);
}

TEST(Options, PictureIsTaken)
{
    EXPECT_EQ(Parse(Words("--batch --project p --picture x.png")).PictureFile, QStringLiteral("x.png"));
}

TEST(Options, HelpAndVersionAreHeardInAnyCompany)
{
    EXPECT_TRUE(Parse(Words("--nonsense --help")).Help);
    EXPECT_TRUE(Parse(Words("--version --batch")).Version);
}

TEST(Options, EveryMistakeIsNamed)
{
    const struct
    {
        const char* Line;
        const char* Part;
    } cases[] = {
        {"--nonsense", "Unbekannte Option: --nonsense"},
        {"-x", "Unbekannte Option: -x"},
        {"haus", "Unbekanntes Argument: haus"},
        {"--project", "--project"},
        {"--batch", "--project DIR fehlt"},
        {"--do a=b", "--do gilt nur zusammen mit --batch"},
        {"--command a=b", "--command gilt nur zusammen mit --batch"},
        {"--picture x.png", "--picture gilt nur zusammen mit --batch"},
        {"--answer yes", "--answer gilt nur zusammen mit --batch"},
        {"--batch --project p --quit-after-paint", "--quit-after-paint"},
        {"--batch --project p --do scenes", "--do erwartet BEREICH=MenuAction_NAME, nicht \"scenes\""},
        {"--batch --project p --do =x", "--do erwartet"},
        {"--batch --project p --command scenes=", "--command erwartet BEREICH=TEXT"},
        {"--batch --project p --answer vielleicht", "yes oder no, nicht \"vielleicht\""},
    };
    for (const auto& [line, part] : cases)
        EXPECT_TRUE(Failure(line).contains(QString::fromUtf8(part))) << line << ": " << Failure(line).toStdString();
}

TEST(Options, HelpNamesEveryOption)
{
    const QString help = HelpText();
    for (const char* name : {"project", "batch", "command", "do", "answer", "picture", "quit-after-paint"})
        EXPECT_TRUE(help.contains(QStringLiteral("--") + QString::fromLatin1(name))) << name;
    EXPECT_TRUE(VersionText().startsWith(QStringLiteral("Velmora Folders ")));
}

} // namespace
