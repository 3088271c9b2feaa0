#include "Layout.h"
#include "TestSupport.h"
#include "Userman.h"
#include "Vlerrors.h"

#include <QDir>
#include <gtest/gtest.h>

#include <algorithm>

namespace
{

QString Failure(const QByteArray& json)
{
    try {
        ParseLayout(json, QStringLiteral("test.layout"));
    } catch (const TUserError& error) {
        return error.Message();
    }
    return {};
}

QByteArray WithPanes(const QByteArray& panes)
{
    return R"({"format":1,"panes":[)" + panes + "]}";
}

TEST(Layout, InstallationShowsTheScenes)
{
    const TLayout layout = InstallationLayout();
    ASSERT_FALSE(layout.isEmpty());
    EXPECT_EQ(layout.first().Id, QStringLiteral("scenes"));
    EXPECT_EQ(layout.first().Title, QStringLiteral("Szenen"));
    EXPECT_EQ(layout.first().Class, QStringLiteral("Velmora.ConfigTree.1"));
    EXPECT_EQ(layout.first().Command,
              QStringLiteral("Velmora.ConfigTree.1://?scenes=%PRJPATH%/_config/data/scenes/scenes.xml"));
}

TEST(Layout, InstallationShowsTheScheduleAndItsWeek)
{
    const TLayout layout = InstallationLayout();
    EXPECT_EQ(layout.value(1).Id, QStringLiteral("schedule"));
    EXPECT_EQ(layout.value(1).Class, QStringLiteral("Velmora.ScheduleTree.1"));
    EXPECT_EQ(layout.value(1).Command,
              QStringLiteral("Velmora.ScheduleTree.1://?schedules=%PRJPATH%/_config/data/schedule/schedule.xml"));
    EXPECT_EQ(layout.value(1).OnProject, QStringLiteral("command"));
    EXPECT_EQ(layout.last().Id, QStringLiteral("week"));
    EXPECT_EQ(layout.last().Class, QStringLiteral("TWeekView"));
    EXPECT_EQ(layout.last().Command, QStringLiteral("weekview://?pane=schedule"));
    EXPECT_EQ(layout.last().Side, QStringLiteral("right"));
}

TEST(Layout, InstallationKeepsTheLogOfTheProjectFilesFromTheStart)
{
    const TLayout layout = InstallationLayout();
    const auto files = std::find_if(layout.begin(), layout.end(),
                                    [](const TPaneSetup& pane) { return pane.Id == QStringLiteral("files"); });
    ASSERT_NE(files, layout.end());
    EXPECT_EQ(files->Title, QStringLiteral("Projektdateien"));
    EXPECT_EQ(files->Class, QStringLiteral("TICmdShellTreeView"));
    EXPECT_EQ(files->Command, QStringLiteral("shelltree://%PRJPATH%?project=1&files=all&log=yes"));
    EXPECT_EQ(files->Load, QStringLiteral("start"));
}

TEST(Layout, InstallationShowsTheCommandsOfTheProject)
{
    const TLayout layout = InstallationLayout();
    const auto found = std::find_if(layout.begin(), layout.end(),
                                    [](const TPaneSetup& setup) { return setup.Id == QStringLiteral("buttons"); });
    ASSERT_NE(found, layout.end());
    EXPECT_EQ(found->Title, QStringLiteral("Befehle"));
    EXPECT_EQ(found->Class, QStringLiteral("Velmora.CmdButtons.1"));
    EXPECT_EQ(found->Command, QStringLiteral("Velmora.CmdButtons.1://%PRJPATH%/_buttons"));
    EXPECT_EQ(found->Side, QStringLiteral("right"));
    EXPECT_TRUE(found->OnProject.isEmpty());
}

TEST(Layout, WhatHappensWithAnotherProjectIsRead)
{
    const auto onProject = [](const QByteArray& more) {
        return ParseLayout(WithPanes(R"({"id":"a","title":"A","class":"X")" + more + "}"), QStringLiteral("f"))
            .first()
            .OnProject;
    };
    EXPECT_EQ(onProject(R"(,"onProject":"command")"), QStringLiteral("command"));
    EXPECT_TRUE(onProject("").isEmpty());
}

TEST(Layout, PanesAreReadInTheirOrder)
{
    const TLayout layout = ParseLayout(WithPanes(R"({"id":"b","title":"Büro","class":"X","command":"x://"},
                                                    {"id":"a","title":"A","class":"Y"})"),
                                       QStringLiteral("f"));
    const TLayout expected{
        {.Id = QStringLiteral("b"),
         .Title = QStringLiteral("Büro"),
         .Class = QStringLiteral("X"),
         .Command = QStringLiteral("x://")},
        {.Id = QStringLiteral("a"), .Title = QStringLiteral("A"), .Class = QStringLiteral("Y"), .Command = {}}};
    EXPECT_EQ(layout, expected);
}

TEST(Layout, NoPanesAreALayout)
{
    EXPECT_TRUE(ParseLayout(WithPanes(""), QStringLiteral("f")).isEmpty());
}

TEST(Layout, DamageIsNamedWithFileAndReason)
{
    const struct
    {
        QByteArray Json;
        const char* Reason;
    } cases[] = {
        {"", "Zeichen 0"},
        {R"({"format":1,"panes":[)", "Zeichen"},
        {"[]", "\"format\" ist nicht 1"},
        {R"({"panes":[]})", "\"format\" ist nicht 1"},
        {R"({"format":2,"panes":[]})", "\"format\" ist nicht 1"},
        {R"({"format":"1","panes":[]})", "\"format\" ist nicht 1"},
        {R"({"format":1})", "\"panes\" fehlt oder ist keine Liste"},
        {R"({"format":1,"panes":{}})", "\"panes\" fehlt oder ist keine Liste"},
        {WithPanes("7"), "Bereich 1: er ist kein Objekt"},
        {WithPanes(R"({"title":"A","class":"X"})"), "Bereich 1: \"id\" fehlt oder ist kein Text"},
        {WithPanes(R"({"id":"  ","title":"A","class":"X"})"), "\"id\" fehlt oder ist kein Text"},
        {WithPanes(R"({"id":7,"title":"A","class":"X"})"), "\"id\" fehlt oder ist kein Text"},
        {WithPanes(R"({"id":"a","title":null,"class":"X"})"), "\"title\" fehlt oder ist kein Text"},
        {WithPanes(R"({"id":"a","title":"A"})"), "\"class\" fehlt oder ist kein Text"},
        {WithPanes(R"({"id":"a","title":"A","class":"X","command":1})"), "\"command\" fehlt oder ist kein Text"},
        {WithPanes(R"({"id":"a","title":"A","class":"X","titel":"B"})"), "die Angabe \"titel\" ist unbekannt"},
        {WithPanes(R"({"id":"a","title":"A","class":"X","side":"left"})"), "\"side\" kennt nur \"right\""},
        {WithPanes(R"({"id":"a","title":"A","class":"X","onProject":"reload"})"),
         "Bereich 1: \"onProject\" kennt nur \"command\""},
        {WithPanes(R"({"id":"a","title":"A","class":"X","load":"later"})"), "Bereich 1: \"load\" kennt nur \"start\""},
        {WithPanes(R"({"id":"a","title":"A","class":"X","onProject":true})"), "\"onProject\" fehlt oder ist kein Text"},
        {WithPanes(R"({"id":"a=b","title":"A","class":"X"})"), "der Name \"a=b\" ist nicht erlaubt"},
        {WithPanes(R"({"id":"messages","title":"A","class":"X"})"), "der Name \"messages\" ist nicht erlaubt"},
        {WithPanes(R"({"id":"a","title":"A","class":"X"},{"id":"a","title":"B","class":"X"})"),
         "den Bereich \"a\" gibt es zweimal"},
    };
    for (const auto& [json, reason] : cases) {
        EXPECT_TRUE(Failure(json).contains(QString::fromUtf8(reason)))
            << json.toStdString() << ": " << Failure(json).toStdString();
        EXPECT_TRUE(Failure(json).contains(QStringLiteral("test.layout"))) << json.toStdString();
    }
}

TEST(Layout, CutAtEveryByteIsRefused)
{
    const QByteArray whole = WithPanes(R"({"id":"a","title":"Ä","class":"X","command":"x://"})");
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(Failure(whole.first(size)).isEmpty()) << size;
    EXPECT_TRUE(Failure(whole).isEmpty());
}

TEST(Layout, WithoutProjectTheInstallationsOneHolds)
{
    EXPECT_EQ(LayoutFor(nullptr), InstallationLayout());
}

TEST(Layout, ProjectWithoutLayoutFileHasTheInstallationsOne)
{
    const TRecordedMessages messages;
    const TTemporaryProject project;
    EXPECT_EQ(LayoutFor(UserManager()->GetActiveProject()), InstallationLayout());
    EXPECT_TRUE(messages.Errors.isEmpty());
}

TEST(Layout, ProjectsOwnLayoutHolds)
{
    const TTemporaryProject project;
    project.Write(QStringLiteral("velmora.layout"), WithPanes(R"({"id":"a","title":"A","class":"X"})"));
    const TLayout layout = LayoutFor(UserManager()->GetActiveProject());
    ASSERT_EQ(layout.size(), 1);
    EXPECT_EQ(layout.first().Id, QStringLiteral("a"));
}

TEST(Layout, DamagedLayoutOfAProjectFallsBackWithAMessage)
{
    const TRecordedMessages messages;
    const TTemporaryProject project;
    project.Write(QStringLiteral("velmora.layout"), "{");
    EXPECT_EQ(LayoutFor(UserManager()->GetActiveProject()), InstallationLayout());
    ASSERT_EQ(messages.Errors.size(), 1);
    EXPECT_TRUE(messages.Errors.first().contains(project.Path(QStringLiteral("velmora.layout"))));
}

TEST(Layout, DirectoryInPlaceOfTheFileFallsBackWithAMessage)
{
    const TRecordedMessages messages;
    const TTemporaryProject project;
    ASSERT_TRUE(QDir().mkdir(project.Path(QStringLiteral("velmora.layout"))));
    EXPECT_EQ(LayoutFor(UserManager()->GetActiveProject()), InstallationLayout());
    ASSERT_EQ(messages.Errors.size(), 1);
    EXPECT_TRUE(messages.Errors.first().contains(QStringLiteral("velmora.layout")));
}

} // namespace
