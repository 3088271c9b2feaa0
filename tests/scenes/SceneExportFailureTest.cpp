#include "IScenesTree.h"

#include "ChildProcess.h"
#include "SceneDocument.h"
#include "SceneFiles.h"

#include <QApplication>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace
{

const auto ErrorBegin = QStringLiteral("Fehler beim Szenen-Export: ");

// A frame with a loaded house of small documents.
class SceneExport : public testing::Test
{
protected:
    SceneExport()
    {
        m_files.WriteSmallHouse();
        m_frame.LoadScenes(m_files.Path());
        m_before = m_files.Contents();
    }
    ~SceneExport() override { SetMode(m_files.Directory(), 0755); }

    static void SetMode(const QString& path, unsigned mode)
    {
        ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0) << path.toStdString();
    }
    // The error messages of an export in a child process, after `prepare` ran there.
    template <class TFunction> QString ErrorsOfExport(TFunction prepare)
    {
        return RunInChild([&] {
            prepare();
            m_frame.SaveScenes(m_files.Path());
            return m_messages.Errors.join(u'|');
        });
    }
    // Gives a node a record that makes its document large.
    static void MakeLarge(TSceneNode* node) { node->Item()->Value = QString(100000, u'x'); }
    static void AddDatapoint(TSceneNode* root, const QString& alias)
    {
        auto* node = new TSceneNode(SceneItem("n", ""));
        node->Item()->Alias = alias;
        root->addChild(node);
    }
    QString ErrorFor(const char* name) const
    {
        return ErrorBegin + u'"' + m_files.Path(QLatin1StringView(name)) +
               QStringLiteral("\" kann nicht geschrieben werden (");
    }

    TRecordedMessages m_messages;
    TSceneFiles m_files;
    TConfigTreeFrame m_frame;
    TFileContents m_before;
};

} // namespace

TEST_F(SceneExport, SucceedsAtFirst)
{
    EXPECT_EQ(ErrorsOfExport([] {}), QString());
    EXPECT_EQ(m_files.Contents(), m_before);
}

TEST_F(SceneExport, NamesTheFileThatAFullDiskRefuses)
{
    MakeLarge(m_frame.Top()->Child(FirstSceneIndex));
    const QString errors = ErrorsOfExport([] { LimitFileSize(4096); });
    EXPECT_TRUE(errors.startsWith(ErrorFor("scenes.xml"))) << errors.toStdString();
    EXPECT_TRUE(errors.endsWith(QStringLiteral(").")));
    EXPECT_EQ(m_files.Contents(), m_before);
}

TEST_F(SceneExport, LeavesEarlierFilesWrittenAndLaterOnesAloneOnAFullDisk)
{
    AddDatapoint(m_frame.Top()->Child(TriggerRootIndex), QStringLiteral("neu"));
    AddDatapoint(m_frame.Top()->Child(ActionRootIndex), QString(100000, u'x'));
    m_frame.Top()->Child(FirstSceneIndex)->Item()->Alias = QStringLiteral("neu");
    const QString errors = ErrorsOfExport([] { LimitFileSize(4096); });
    EXPECT_TRUE(errors.startsWith(ErrorFor("actions_allowed.xml"))) << errors.toStdString();
    TFileContents after = m_files.Contents();
    EXPECT_TRUE(after.value(QStringLiteral("trigger_allowed.xml")).contains("alias=\"neu\""));
    after.insert(QStringLiteral("trigger_allowed.xml"), m_before.value(QStringLiteral("trigger_allowed.xml")));
    EXPECT_EQ(after, m_before);
}

TEST_F(SceneExport, NamesTheStepsThatAFullDiskRefuses)
{
    MakeLarge(m_frame.Top()->Child(FirstSceneIndex + 1)->Child(0));
    const QString errors = ErrorsOfExport([] { LimitFileSize(4096); });
    EXPECT_TRUE(errors.startsWith(ErrorFor("scene_2.xml"))) << errors.toStdString();
    EXPECT_EQ(m_files.Contents(), m_before);
}

TEST_F(SceneExport, NamesTheFileThatAReadOnlyDirectoryRefuses)
{
    SetMode(m_files.Directory(), 0555);
    const QString errors = ErrorsOfExport(GiveUpRights);
    EXPECT_TRUE(errors.startsWith(ErrorFor("trigger_allowed.xml"))) << errors.toStdString();
    EXPECT_EQ(m_files.Contents(), m_before);
}

TEST_F(SceneExport, NamesTheFileThatIsReadOnly)
{
    SetMode(m_files.Directory(), 0777);
    for (const QString& name : m_before.keys())
        SetMode(m_files.Path(name), name == QStringLiteral("scenes.xml") ? 0444 : 0666);
    const QString errors = ErrorsOfExport(GiveUpRights);
    EXPECT_TRUE(errors.startsWith(ErrorFor("scenes.xml"))) << errors.toStdString();
    EXPECT_EQ(m_files.Contents(), m_before);
}

TEST_F(SceneExport, NamesTheFileWhereADirectoryStands)
{
    ASSERT_TRUE(QFile::remove(m_files.Path(QStringLiteral("scenes.xml"))));
    ASSERT_TRUE(QDir().mkpath(m_files.Path(QStringLiteral("scenes.xml"))));
    m_frame.SaveScenes(m_files.Path());
    EXPECT_EQ(m_messages.Errors,
              QStringList({ErrorFor("scenes.xml") + QStringLiteral("Dort steht ein Verzeichnis).")}));
}

TEST_F(SceneExport, PutsTheCursorBackAfterAFailure)
{
    ASSERT_TRUE(QFile::remove(m_files.Path(QStringLiteral("scenes.xml"))));
    ASSERT_TRUE(QDir().mkpath(m_files.Path(QStringLiteral("scenes.xml"))));
    m_frame.SaveScenes(m_files.Path());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(SceneExport, StaysModifiedAfterAFailure)
{
    ASSERT_TRUE(QFile::remove(m_files.Path(QStringLiteral("scenes.xml"))));
    ASSERT_TRUE(QDir().mkpath(m_files.Path(QStringLiteral("scenes.xml"))));
    m_frame.SetModified(true);
    m_frame.SaveScenes(m_files.Path());
    EXPECT_TRUE(m_frame.IsModified());
}

TEST_F(SceneExport, NotesAMissingDirectoryAndWritesNothing)
{
    m_frame.SetModified(true);
    m_frame.SaveScenes(m_files.Path(QStringLiteral("none/scenes.xml")));
    EXPECT_EQ(m_messages.Informations,
              QStringList({QStringLiteral("Dieses Projekt enthält nicht das notwendige _config Verzeichnis.")}));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
    EXPECT_FALSE(QFile::exists(m_files.Path(QStringLiteral("none"))));
    EXPECT_TRUE(m_frame.IsModified());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(SceneExport, NeverLeavesATornDocumentWhenTheProcessIsKilledAnywhere)
{
    const auto first = m_files.Load();
    const auto second = m_files.Load();
    for (int i = 0; i < 500; ++i) {
        AddDatapoint(second->Child(TriggerRootIndex), QStringLiteral("Trigger %1").arg(i));
        AddDatapoint(second->Child(ActionRootIndex), QStringLiteral("Aktion %1").arg(i));
        second->Child(FirstSceneIndex)->addChild(new TSceneNode(SceneItem("n", "Schritt")));
    }
    m_files.Save(second.get());
    const TFileContents other = m_files.Contents();
    ASSERT_NE(other, m_before);

    for (int round = 0; round < 25; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (;;) {
                m_files.Save(first.get());
                m_files.Save(second.get());
            }
        }
        usleep(static_cast<useconds_t>(500 + round * 611));
        ASSERT_EQ(kill(child, SIGKILL), 0);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
        for (const QString& name : m_before.keys()) {
            const QByteArray content = m_files.Read(name);
            EXPECT_TRUE(content == m_before.value(name) || content == other.value(name))
                << name.toStdString() << ' ' << content.size();
        }
    }
}
