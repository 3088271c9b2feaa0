#include "ScenePointer.h"

#include "IScenesTree.h"
#include "SceneFiles.h"
#include "Vlerrors.h"

#include <QDir>
#include <gtest/gtest.h>

namespace
{

// A product home beside a project named "Haus".
class ScenePointer : public testing::Test
{
protected:
    ScenePointer()
    {
        QDir().mkpath(Folder());
        qputenv("KOLT_HOME", QFile::encodeName(m_home.path()));
    }

    QString Folder() const { return m_home.filePath(QStringLiteral("Parvex Studio Web/_ext")); }
    QString Pointer(const char* name = "scene_SCENE.env") const { return Folder() + u'/' + QLatin1StringView(name); }
    void SetPointer(const QByteArray& content) const { WriteAll(Pointer(), content); }
    // The pointer file after an update.
    QByteArray Updated() const
    {
        UpdateScenePointer(QStringLiteral("SCENE"));
        return ReadAll(Pointer());
    }
    QString Question(const char* project) const
    {
        return QStringLiteral("Zur Zeit verweisen die Automation Services auf die\r\n"
                              "Szenenkonfiguration des Projekts %1. Sollen die\r\n"
                              "Automation Services auf das neue Projekt verweisen?")
            .arg(QLatin1StringView(project));
    }

    TTemporaryProject m_project;
    QTemporaryDir m_home;
    TRecordedMessages m_messages;
};

} // namespace

TEST_F(ScenePointer, IsNotTouchedWithoutAHome)
{
    qunsetenv("KOLT_HOME");
    UpdateScenePointer(QStringLiteral("SCENE"));
    qputenv("KOLT_HOME", "");
    UpdateScenePointer(QStringLiteral("SCENE"));
    EXPECT_FALSE(QFile::exists(Pointer()));
}

TEST_F(ScenePointer, IsNotTouchedWhenTheHomeIsNoDirectory)
{
    const QString file = m_home.filePath(QStringLiteral("file"));
    WriteAll(file, "x");
    for (const QString& home : {file, m_home.filePath(QStringLiteral("none"))}) {
        qputenv("KOLT_HOME", QFile::encodeName(home));
        UpdateScenePointer(QStringLiteral("SCENE"));
    }
    EXPECT_FALSE(QFile::exists(Pointer()));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_TRUE(m_messages.Informations.isEmpty());
}

TEST_F(ScenePointer, IsWrittenAnewWithOneLine)
{
    EXPECT_EQ(Updated(), "project=Haus\r\n");
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(ScenePointer, IsNamedAfterTheModule)
{
    UpdateScenePointer(QStringLiteral("LICHT"));
    EXPECT_EQ(ReadAll(Pointer("scene_LICHT.env")), "project=Haus\r\n");
    EXPECT_FALSE(QFile::exists(Pointer()));
}

TEST_F(ScenePointer, TakesAHomeWithATrailingSeparator)
{
    qputenv("KOLT_HOME", QFile::encodeName(m_home.path() + u'/'));
    EXPECT_EQ(Updated(), "project=Haus\r\n");
}

TEST_F(ScenePointer, TakesTheLastItemOfTheProjectPath)
{
    for (const char* path : {"/a/Haus", "/a/Haus/", "C:\\a\\Haus", "C:\\a\\Haus\\", "Haus"}) {
        QFile::remove(Pointer());
        qputenv("PRJPATH", path);
        EXPECT_EQ(Updated(), "project=Haus\r\n") << path;
    }
}

TEST_F(ScenePointer, WritesTheProjectInTheCodePage)
{
    qputenv("PRJPATH", "/a/H\xC3\xA4user");
    EXPECT_EQ(Updated(), "project=H\xE4user\r\n");
    EXPECT_EQ(Updated(), "project=H\xE4user\r\n");
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(ScenePointer, IsFilledSilentlyWhenItNamesNoProject)
{
    for (const char* content : {"project=", "project=\r\n", "project=\n"}) {
        SetPointer(content);
        EXPECT_EQ(Updated(), "project=Haus\r\n");
    }
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(ScenePointer, GetsALineWhenItHasNone)
{
    SetPointer("");
    EXPECT_EQ(Updated(), "project=Haus\r\n");
    SetPointer("a=1\r\nproject\r\n");
    EXPECT_EQ(Updated(), "a=1\r\nproject\r\nproject=Haus\r\n");
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(ScenePointer, IsWrittenBackWithCrLfWhenItNamesTheProjectAlready)
{
    for (const char* content : {"a=1\nproject=Haus\nb", "a=1\rproject=Haus\rb\r", "a=1\r\nproject=Haus\r\nb\r\n"}) {
        SetPointer(content);
        EXPECT_EQ(Updated(), "a=1\r\nproject=Haus\r\nb\r\n");
    }
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(ScenePointer, KeepsTheSpellingOfItsKeyWhenItNamesTheProjectAlready)
{
    SetPointer("PROJECT=Haus\r\n");
    EXPECT_EQ(Updated(), "PROJECT=Haus\r\n");
    EXPECT_TRUE(m_messages.Questions.isEmpty());
}

TEST_F(ScenePointer, AsksWhenItNamesAnotherProject)
{
    SetPointer("project=Buero\r\n");
    EXPECT_EQ(Updated(), "project=Haus\r\n");
    EXPECT_EQ(m_messages.Questions, QStringList({Question("Buero")}));
}

TEST_F(ScenePointer, StaysAsItIsOnNoAndAsksAgainEachTime)
{
    m_messages.Answer = false;
    SetPointer("a=1\nproject=Buero\nb");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(Updated(), "a=1\nproject=Buero\nb");
    EXPECT_EQ(m_messages.Questions, QStringList({Question("Buero"), Question("Buero"), Question("Buero")}));
}

TEST_F(ScenePointer, ComparesProjectsWithTheirCase)
{
    SetPointer("project=haus\r\n");
    EXPECT_EQ(Updated(), "project=Haus\r\n");
    EXPECT_EQ(m_messages.Questions.size(), 1);
}

TEST_F(ScenePointer, ComparesProjectsWithTheirBlanks)
{
    SetPointer("project= Haus\r\n");
    Updated();
    EXPECT_EQ(m_messages.Questions, QStringList({Question(" Haus")}));
}

TEST_F(ScenePointer, FindsItsKeyWithoutRegardToCase)
{
    SetPointer("Project=Buero\r\n");
    EXPECT_EQ(Updated(), "project=Haus\r\n");
    EXPECT_EQ(m_messages.Questions, QStringList({Question("Buero")}));
}

TEST_F(ScenePointer, TakesTheTextAfterTheFirstEqualsSign)
{
    SetPointer("project=a=b\r\n");
    Updated();
    EXPECT_EQ(m_messages.Questions, QStringList({Question("a=b")}));
}

TEST_F(ScenePointer, ChangesTheFirstLineOfItsKeyOnly)
{
    SetPointer("# x\r\n\r\na=\xFC\r\nproject=Buero\r\nprojects=1\r\nproject=Garten\r\n");
    EXPECT_EQ(Updated(), "# x\r\n\r\na=\xFC\r\nproject=Haus\r\nprojects=1\r\nproject=Garten\r\n");
}

TEST_F(ScenePointer, ThrowsWithoutItsFolder)
{
    ASSERT_TRUE(QDir(Folder()).removeRecursively());
    EXPECT_THROW(UpdateScenePointer(QStringLiteral("SCENE")), TFileError);
}

TEST_F(ScenePointer, ThrowsWhereADirectoryStands)
{
    ASSERT_TRUE(QDir().mkpath(Pointer()));
    EXPECT_THROW(UpdateScenePointer(QStringLiteral("SCENE")), TFileError);
}

TEST_F(ScenePointer, IsUpdatedByEverySave)
{
    TConfigTreeFrame frame;
    m_messages.Answer = false;
    frame.LoadScenes(m_project.Scenes(QStringLiteral("scenes.xml")));
    SetPointer("project=Buero\r\n");
    frame.SaveScenes(frame.GetScenesFile());
    frame.SaveScenes(frame.GetScenesFile());
    EXPECT_EQ(m_messages.Questions.size(), 2);
    SetPointer("project=");
    frame.SaveScenes(frame.GetScenesFile());
    EXPECT_EQ(m_messages.Questions.size(), 2);
    EXPECT_EQ(ReadAll(Pointer()), "project=Haus\r\n");
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(ScenePointer, IsNamedAfterTheModuleOfTheFrame)
{
    TConfigTreeFrame frame;
    bool handled = false;
    frame.ExecuteCmd("Velmora.ConfigTree.1://?scenesmod=LICHT", handled);
    frame.SaveScenes(m_project.Scenes(QStringLiteral("scenes.xml")));
    EXPECT_TRUE(QFile::exists(Pointer("scene_LICHT.env")));
}

TEST_F(ScenePointer, ShowsAnErrorAndLeavesTheScenesWhenItCannotBeWritten)
{
    ASSERT_TRUE(QDir(Folder()).removeRecursively());
    TConfigTreeFrame frame;
    frame.LoadScenes(m_project.Scenes(QStringLiteral("scenes.xml")));
    frame.SaveScenes(frame.GetScenesFile());
    ASSERT_EQ(m_messages.Errors.size(), 1);
    EXPECT_TRUE(m_messages.Errors[0].startsWith(QStringLiteral("Fehler beim Szenen-Export: \"")));
    EXPECT_TRUE(m_messages.Errors[0].contains(Pointer())) << m_messages.Errors[0].toStdString();
    EXPECT_EQ(ReadAll(m_project.Scenes(QStringLiteral("scenes.xml"))), SceneDocument("scenes"));
    EXPECT_EQ(ReadAll(m_project.Scenes(QStringLiteral("trigger_allowed.xml"))), SceneDocument("trigger"));
}

TEST_F(ScenePointer, IsNotTouchedWhenTheScenesAreNotWritten)
{
    TConfigTreeFrame frame;
    frame.SaveScenes(m_project.Path(QStringLiteral("none/scenes.xml")));
    EXPECT_EQ(m_messages.Informations.size(), 1);
    EXPECT_FALSE(QFile::exists(Pointer()));
}
