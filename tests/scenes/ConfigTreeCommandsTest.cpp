#include "IScenesTree.h"

#include "SceneFiles.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <gtest/gtest.h>

namespace
{

const auto SmallHouse = QStringLiteral("2 Trigger, 2 Aktionen, 2 Szenen, 3 Schritte");
const auto Nothing = QStringLiteral("0 Trigger, 0 Aktionen, 0 Szenen, 0 Schritte");

constexpr auto DefaultCommand = R"(Velmora.ConfigTree.1://?scenes=%PRJPATH%\_config\data\scenes\scenes.xml)";

// A frame, and a project with a small house that is not loaded yet.
class ConfigTree : public testing::Test
{
protected:
    ConfigTree()
    {
        TSceneFiles house;
        house.WriteSmallHouse();
        const TFileContents contents = house.Contents();
        for (auto file = contents.begin(); file != contents.end(); ++file)
            WriteAll(m_project.Scenes(file.key()), file.value());
    }

    void Execute(const QByteArray& command)
    {
        bool handled = false;
        m_frame.ExecuteCmd(command.constData(), handled);
        EXPECT_TRUE(handled);
    }
    QAction* Action(const char* name) const
    {
        auto* action = m_frame.findChild<QAction*>(QLatin1StringView(name));
        EXPECT_NE(action, nullptr) << name;
        return action;
    }
    QString Counts() const { return CountsOf(m_frame.Top()); }
    // The package's form of a path in the project.
    QString PackagePath(const QString& path) const { return QString(path).replace(u'/', u'\\'); }
    QString ScenesFile() const { return PackagePath(m_project.Scenes(QStringLiteral("scenes.xml"))); }

    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    TConfigTreeFrame m_frame;
};

// A second project beside the first one, open while it lives.
class TSecondProject
{
public:
    TSecondProject() : m_root(m_directory.filePath(QStringLiteral("Büro")))
    {
        TProject::Create(m_root, QStringLiteral("Büro"));
        UserManager()->OpenProject(m_root);
    }

    QString ScenesFile() const
    {
        return QString(m_root + QStringLiteral("/_config/data/scenes/scenes.xml")).replace(u'/', u'\\');
    }

private:
    QTemporaryDir m_directory;
    QString m_root;
};

} // namespace

TEST_F(ConfigTree, StartsEmptyWithItsDefaults)
{
    EXPECT_EQ(m_frame.Top(), nullptr);
    EXPECT_EQ(m_frame.GetScenesPath(), QStringLiteral(R"(%PRJPATH%\_config\data\scenes\scenes.xml)"));
    EXPECT_EQ(m_frame.GetScenesFile(), QString());
    EXPECT_EQ(m_frame.GetScenesMod(), QStringLiteral("SCENE"));
    EXPECT_EQ(m_frame.GetSections(), QStringList());
    EXPECT_FALSE(m_frame.IsModified());
}

TEST_F(ConfigTree, LoadsWhatTheScenesKeySays)
{
    Execute(DefaultCommand);
    EXPECT_EQ(Counts(), SmallHouse);
    EXPECT_EQ(m_frame.GetScenesFile(), ScenesFile());
}

TEST_F(ConfigTree, TakesItsKeysWithoutRegardToCase)
{
    Execute(R"(x://?SCENES=$(Project)/_config/data/scenes/scenes.xml&ScenesMod=LICHT)");
    EXPECT_EQ(Counts(), SmallHouse);
    EXPECT_EQ(m_frame.GetScenesMod(), QStringLiteral("LICHT"));
    EXPECT_EQ(m_frame.GetScenesFile(), ScenesFile());
}

TEST_F(ConfigTree, IgnoresOtherKeys)
{
    Execute("x://?file=a&schedules=b&scenesfile=c");
    EXPECT_EQ(m_frame.Top(), nullptr);
    EXPECT_EQ(m_frame.GetScenesFile(), ScenesFile());
}

TEST_F(ConfigTree, TakesTheFirstOfTwoScenesKeys)
{
    Execute(QByteArray(DefaultCommand) + "&scenes=C:\\none.xml");
    EXPECT_EQ(Counts(), SmallHouse);
    EXPECT_EQ(m_frame.GetScenesPath(), QStringLiteral(R"(%PRJPATH%\_config\data\scenes\scenes.xml)"));
    EXPECT_EQ(m_messages.Notes.size(), 2);
}

TEST_F(ConfigTree, KeepsTheTreeForAScenesFileThatDoesNotExist)
{
    Execute(DefaultCommand);
    Execute(R"(x://?scenes=%PRJPATH%\none\scenes.xml)");
    EXPECT_EQ(Counts(), SmallHouse);
    EXPECT_EQ(m_frame.GetScenesFile(), ScenesFile());
    EXPECT_EQ(m_frame.GetScenesPath(), QStringLiteral(R"(%PRJPATH%\none\scenes.xml)"));
}

TEST_F(ConfigTree, SetsTheScenesFileFromTheScenesPathBeforeEveryCommand)
{
    Execute("");
    EXPECT_EQ(m_frame.GetScenesFile(), ScenesFile());
    EXPECT_EQ(m_frame.Top(), nullptr);
    Execute(DefaultCommand);
    Execute(R"(x://?scenes=%PRJPATH%\none\scenes.xml)");
    Execute("x://?color=255");
    EXPECT_EQ(m_frame.GetScenesFile(), PackagePath(m_project.Path(QStringLiteral("none/scenes.xml"))));
    EXPECT_EQ(Counts(), SmallHouse);
}

TEST_F(ConfigTree, PutsTheDefaultModuleBackForAnEmptyOne)
{
    Execute("x://?scenesmod=LICHT");
    EXPECT_EQ(m_frame.GetScenesMod(), QStringLiteral("LICHT"));
    Execute("x://path");
    EXPECT_EQ(m_frame.GetScenesMod(), QStringLiteral("LICHT"));
    Execute("x://?scenesmod=");
    EXPECT_EQ(m_frame.GetScenesMod(), QStringLiteral("SCENE"));
}

TEST_F(ConfigTree, AppliesColours)
{
    Execute("x://?color=255&bgcolor=$FF00");
    EXPECT_EQ(m_frame.palette().color(QPalette::Text), QColor(255, 0, 0));
    EXPECT_EQ(m_frame.palette().color(QPalette::Base), QColor(0, 255, 0));
    Execute("x://?bgcolor=abc");
    EXPECT_EQ(m_frame.palette().color(QPalette::Base), QApplication::palette().color(QPalette::Base));
}

TEST_F(ConfigTree, NotesHowMuchItLoaded)
{
    Execute(DefaultCommand);
    EXPECT_EQ(m_messages.Notes, QStringList({SmallHouse + QStringLiteral(" geladen")}));
}

TEST_F(ConfigTree, NotesHowMuchItExported)
{
    Execute(DefaultCommand);
    m_messages.Notes.clear();
    m_frame.SaveScenes(m_frame.GetScenesFile());
    ASSERT_EQ(m_messages.Notes.size(), 1);
    EXPECT_TRUE(m_messages.Notes[0].startsWith(SmallHouse + QStringLiteral(" in 5 Dateien exportiert nach ")));
    EXPECT_TRUE(m_messages.Notes[0].endsWith(m_project.Scenes().chopped(1)));
}

TEST_F(ConfigTree, ReloadsForAnotherProjectAlsoWithoutAScenesFile)
{
    Execute(DefaultCommand);
    const TSecondProject second;
    ASSERT_NE(m_frame.Top(), nullptr);
    EXPECT_EQ(Counts(), Nothing);
    EXPECT_EQ(m_frame.GetScenesFile(), second.ScenesFile());
    UserManager()->OpenProject(m_project.Root());
    EXPECT_EQ(Counts(), SmallHouse);
}

TEST_F(ConfigTree, FollowsTheProjectAfterAnyCommand)
{
    Execute("x://path");
    EXPECT_EQ(m_frame.Top(), nullptr);
    UserManager()->OpenProject(m_project.Root());
    EXPECT_EQ(Counts(), SmallHouse);
}

TEST_F(ConfigTree, DoesNotFollowTheProjectBeforeACommand)
{
    UserManager()->OpenProject(m_project.Root());
    EXPECT_EQ(m_frame.Top(), nullptr);
}

TEST_F(ConfigTree, DoesNotFollowTheProjectWhenItsPathIsFixed)
{
    Execute("x://?scenes=" + m_project.Scenes(QStringLiteral("scenes.xml")).toUtf8());
    const TSecondProject second;
    EXPECT_EQ(Counts(), SmallHouse);
    EXPECT_EQ(m_frame.GetScenesFile(), ScenesFile());
}

TEST_F(ConfigTree, KeepsItsTreeWhenTheProjectIsClosed)
{
    Execute(DefaultCommand);
    UserManager()->CloseProject();
    EXPECT_EQ(Counts(), SmallHouse);
}

TEST_F(ConfigTree, LoadsNothingWithoutAProject)
{
    UserManager()->CloseProject();
    Execute(DefaultCommand);
    EXPECT_EQ(m_frame.Top(), nullptr);
    EXPECT_EQ(m_frame.GetScenesFile(), QStringLiteral(R"(%PRJPATH%\_config\data\scenes\scenes.xml)"));
}

TEST_F(ConfigTree, ReloadsByItsAction)
{
    Execute(DefaultCommand);
    WriteAll(m_project.Scenes(QStringLiteral("trigger_allowed.xml")), SceneDocument("trigger", {"<node />"}));
    EXPECT_EQ(Action("MenuAction_Reload")->text(), QStringLiteral("Neu laden"));
    Action("MenuAction_Reload")->trigger();
    EXPECT_EQ(Counts(), QStringLiteral("1 Trigger, 2 Aktionen, 2 Szenen, 3 Schritte"));
}

TEST_F(ConfigTree, ExportsByItsAction)
{
    Execute(DefaultCommand);
    ASSERT_TRUE(QFile::remove(m_project.Scenes(QStringLiteral("scene_1.xml"))));
    EXPECT_EQ(Action("MenuAction_Export")->text(), QStringLiteral("Exportieren"));
    Action("MenuAction_Export")->trigger();
    EXPECT_TRUE(QFile::exists(m_project.Scenes(QStringLiteral("scene_1.xml"))));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(ConfigTree, OffersReloadingOnlyForAScenesFileThatExists)
{
    EXPECT_FALSE(Action("MenuAction_Reload")->isEnabled());
    Execute(DefaultCommand);
    EXPECT_TRUE(Action("MenuAction_Reload")->isEnabled());
    Execute(R"(x://?scenes=%PRJPATH%\none\scenes.xml)");
    Execute("");
    EXPECT_FALSE(Action("MenuAction_Reload")->isEnabled());
}

TEST_F(ConfigTree, OffersExportingOnlyWithAScenesFile)
{
    EXPECT_FALSE(Action("MenuAction_Export")->isEnabled());
    Execute("");
    EXPECT_TRUE(Action("MenuAction_Export")->isEnabled());
}

TEST_F(ConfigTree, DoesNotReloadAFileThatWentAway)
{
    Execute(DefaultCommand);
    ASSERT_TRUE(Action("MenuAction_Reload")->isEnabled());
    ASSERT_TRUE(QFile::remove(m_project.Scenes(QStringLiteral("scenes.xml"))));
    Action("MenuAction_Reload")->trigger();
    EXPECT_EQ(Counts(), SmallHouse);
}

TEST_F(ConfigTree, IsNotModifiedAfterALoadAndAfterAnExport)
{
    Execute(DefaultCommand);
    EXPECT_FALSE(m_frame.IsModified());
    m_frame.SetModified(true);
    Action("MenuAction_Reload")->trigger();
    EXPECT_FALSE(m_frame.IsModified());
    m_frame.SetModified(true);
    Action("MenuAction_Export")->trigger();
    EXPECT_FALSE(m_frame.IsModified());
}

TEST_F(ConfigTree, KeepsDocumentsThatItNeverReadWhenItExports)
{
    Execute("");
    const TFileContents before = ReadDirectory(m_project.Scenes());
    Action("MenuAction_Export")->trigger();
    const TFileContents after = ReadDirectory(m_project.Scenes());
    for (const char* name : {"trigger_allowed.xml", "actions_allowed.xml", "scenes.xml"}) {
        const auto file = QString::fromLatin1(name);
        EXPECT_EQ(after.value(file + QStringLiteral(".unlesbar")), before.value(file)) << name;
    }
    EXPECT_EQ(m_messages.Notes.filter(QStringLiteral(".unlesbar")).size(), 3);
}

TEST_F(ConfigTree, NamesItsSections)
{
    Execute(DefaultCommand);
    EXPECT_EQ(m_frame.GetSections(),
              QStringList({QStringLiteral("Trigger-Elemente"), QStringLiteral("Aktions-Elemente"),
                           QStringLiteral("Abendlicht"), QStringLiteral("Nachts")}));
}

TEST_F(ConfigTree, WritesItsFilesToStreams)
{
    Execute(DefaultCommand);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    m_frame.TriggerToStream(buffer);
    m_frame.ActionsToStream(buffer);
    m_frame.ScenesToStream(buffer);
    m_frame.SceneActionsToStream(buffer, m_frame.Top()->Child(FirstSceneIndex));
    m_frame.SceneActionsToStream(buffer, nullptr);
    QByteArray expected;
    for (const char* name : {"trigger_allowed.xml", "actions_allowed.xml", "scenes.xml", "scene_1.xml"})
        expected += ReadAll(m_project.Scenes(QLatin1StringView(name)));
    EXPECT_EQ(buffer.data(), expected);
}

TEST_F(ConfigTree, PutsTheCursorBack)
{
    Execute(DefaultCommand);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}
