#include "SceneDocument.h"

#include "SceneFiles.h"

#include <gtest/gtest.h>

namespace
{

// Loads the documents of `directory` and writes them again, over a copy and into an empty directory.
void ExpectTheSameBytes(const QString& directory)
{
    const TFileContents before = ReadDirectory(directory);
    ASSERT_FALSE(before.isEmpty());
    const TRecordedMessages messages;
    TSceneFiles copy;
    copy.CopyFrom(directory);
    const auto top = copy.Load();
    copy.Save(top.get());
    EXPECT_EQ(copy.Contents(), before);
    EXPECT_EQ(messages.Notes, QStringList());

    TSceneFiles elsewhere;
    elsewhere.Save(top.get());
    EXPECT_EQ(elsewhere.Contents(), before);
}

class SceneRoundtrip : public testing::TestWithParam<QString>
{};

QString MusterhausScenes()
{
    return QStringLiteral(VELMORA_EXAMPLES "/musterhaus/_config/data/scenes");
}

} // namespace

TEST_P(SceneRoundtrip, GivesTheSameBytes)
{
    ExpectTheSameBytes(TestDataPath(QStringLiteral("scenes/roundtrip/")) + GetParam());
}

INSTANTIATE_TEST_SUITE_P(Cases, SceneRoundtrip, testing::ValuesIn(SceneCases(QStringLiteral("roundtrip"))),
                         [](const auto& test) { return test.param.toStdString(); });

TEST(MusterhausScenes, ComeBackByteForByte)
{
    ExpectTheSameBytes(MusterhausScenes());
}

TEST(MusterhausScenes, AreAWholeHouse)
{
    TDocumentFiles files(nullptr);
    const auto top = LoadSceneTree(MusterhausScenes() + QStringLiteral("/scenes.xml"), files);
    const TSceneCounts counts = CountScenes(top.get());
    EXPECT_GE(counts.Triggers, 40);
    EXPECT_GE(counts.Actions, 80);
    EXPECT_GE(counts.Scenes, 25);
    EXPECT_GE(counts.Steps, 120);
}

TEST(SavedScenes, ComeBackAsTheSameTree)
{
    TSceneFiles files;
    files.WriteSmallHouse();
    const auto top = files.Load();
    TSceneFiles copy;
    copy.Save(top.get());
    const auto again = copy.Load();
    EXPECT_EQ(OutlineOf(again.get()), OutlineOf(top.get()));
    const TSceneNode* node = top.get();
    const TSceneNode* other = again.get();
    for (; node && other;
         node = static_cast<TSceneNode*>(node->Next()), other = static_cast<TSceneNode*>(other->Next()))
        EXPECT_EQ(RecordOf(node), RecordOf(other));
    EXPECT_EQ(node, other);
}

TEST(SavedScenes, ComeBackDisabledWhenTheyAreUnboundOrHaveNoValue)
{
    TSceneFiles files;
    files.Write(QStringLiteral("trigger_allowed.xml"), SceneDocument("trigger", {"<node name=\"t\" />"}));
    files.Write(QStringLiteral("actions_allowed.xml"), SceneDocument("actions", {"<node name=\"a\" />"}));
    files.Write(QStringLiteral("scenes.xml"),
                SceneDocument("scenes", {R"(<scene id="1" name="gone" value="1" enabled="1" />)",
                                         R"(<scene id="2" name="t" enabled="1" />)",
                                         R"(<scene id="3" name="t" value="1" enabled="1" />)"}));
    files.Write(QStringLiteral("scene_3.xml"),
                SceneDocument("scene", {R"(<node name="gone" value="1" enabled="1" />)", R"(<node name="a" />)",
                                        R"(<node name="a" value="1" />)"}));
    const auto loaded = files.Load();
    EXPECT_TRUE(loaded->Child(FirstSceneIndex)->Item()->Enabled);
    files.Save(loaded.get());
    const auto again = files.Load();
    QList<bool> scenes;
    QList<bool> steps;
    for (int i = 0; i < 3; ++i) {
        scenes.append(again->Child(FirstSceneIndex + i)->Item()->Enabled);
        steps.append(again->Child(FirstSceneIndex + 2)->Child(i)->Item()->Enabled);
    }
    EXPECT_EQ(scenes, QList<bool>({false, false, true}));
    EXPECT_EQ(steps, QList<bool>({false, false, true}));
}
