#include "DocumentLines.h"
#include "SceneDocument.h"
#include "SceneTree.h"

#include <QAction>

namespace
{

class ScenePlaces : public TSceneTree
{
protected:
    QString Path(const char* file) const { return m_project.Scenes(QString::fromLatin1(file)); }
    std::string Places(const char* file) const
    {
        return PlacesIn(Frame(), Path(file), Exported(file), [this] { return Selected(); });
    }
    // The file of the scene's steps.
    std::string StepsFile(const char* scene) const
    {
        return "scene_" + std::to_string(Node(scene)->Item()->Id) + ".xml";
    }
};

} // namespace

TEST_F(ScenePlaces, AreKnownForEveryLineOfTheDatapoints)
{
    Run("MenuAction_Export");
    EXPECT_EQ(Places("trigger_allowed.xml"), "-|-|Taster Flur|Zeitschalter|-");
    EXPECT_EQ(Places("actions_allowed.xml"), "-|-|Licht Flur|Heizung|-");
}

TEST_F(ScenePlaces, AreKnownForEveryLineOfTheScenesAndTheirSteps)
{
    Run("MenuAction_Export");
    EXPECT_EQ(Places("scenes.xml"), "-|-|Abendlicht|Nachts|-");
    EXPECT_EQ(Places(StepsFile("Abendlicht").c_str()), "-|-|Licht an|Warm|-");
    EXPECT_EQ(Places(StepsFile("Nachts").c_str()), "-|-|Licht aus|-");
    EXPECT_FALSE(Frame().DocumentPlace(Path("scene_77.xml"), 3));
    EXPECT_FALSE(Frame().DocumentPlace(Path("other.xml"), 3));
}

TEST_F(ScenePlaces, OfATextWithLineEndsAreAllItsLines)
{
    Node("Warm")->Item()->Value = QStringLiteral("21\n\"22\"");
    Run("MenuAction_Export");
    EXPECT_EQ(Places(StepsFile("Abendlicht").c_str()), "-|-|Licht an|Warm|Warm|-");
}

TEST_F(ScenePlaces, OfScenesOfOneNumberAreThoseOfTheLast)
{
    Node("Abendlicht")->Item()->Id = Node("Nachts")->Item()->Id;
    Run("MenuAction_Export");
    EXPECT_EQ(Places(StepsFile("Nachts").c_str()), "-|-|Licht aus|-");
}

TEST_F(ScenePlaces, AreGoneWithTheirNodesOnly)
{
    const std::string file = StepsFile("Abendlicht");
    const TDocumentPlace place = Frame().DocumentPlace(Path(file.c_str()), 4);
    ASSERT_TRUE(place);
    m_frame->RemoveBranches({Node("Licht an")});
    EXPECT_TRUE(place());
    EXPECT_EQ(Selected(), "Warm");
    m_frame->RemoveBranches({Node("Abendlicht")});
    EXPECT_FALSE(place());
}
