#include "SceneTree.h"

#include <QAction>

namespace
{

class SceneCut : public TSceneTree
{
protected:
    void Cut(const char* alias) const
    {
        Select({alias});
        Run("MenuAction_CutExecute");
    }
    void PasteOn(const char* alias) const
    {
        Select({alias});
        Run("MenuAction_PasteBeforeExecute");
    }
};

} // namespace

TEST_F(SceneCut, MarksTheStepAndChangesNothing)
{
    Cut("Warm");
    EXPECT_TRUE(Node("Warm")->Cut());
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneCut, TakesTheMarkFromThePreviousCutNode)
{
    Cut("Warm");
    Cut("Licht aus");
    EXPECT_FALSE(Node("Warm")->Cut());
    EXPECT_TRUE(Node("Licht aus")->Cut());
}

TEST_F(SceneCut, ForgetsACopy)
{
    Select({"Licht an"});
    Run("MenuAction_CopyExecute");
    Cut("Warm");
    PasteOn("Nachts");
    EXPECT_EQ(Below("Nachts"), "Warm [Heizung]|Licht aus [Licht Flur]");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]");
}

TEST_F(SceneCut, IsNotOfferedForADatapointOrAScene)
{
    for (const char* alias : {"Taster Flur", "Heizung", "Nachts", "Aktions-Elemente"}) {
        Cut(alias);
        EXPECT_FALSE(Node(alias)->Cut()) << alias;
    }
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
}

TEST_F(SceneCut, PastedOnASceneBecomesItsFirstChildAndLosesItsMark)
{
    const TSceneNode* step = Node("Warm");
    const std::string record = Record(step);
    Cut("Warm");
    PasteOn("Nachts");
    EXPECT_EQ(Below("Nachts"), "Warm [Heizung]|Licht aus [Licht Flur]");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]");
    EXPECT_EQ(Node("Nachts")->Child(0), step);
    EXPECT_EQ(Record(step), record);
    EXPECT_FALSE(step->Cut());
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(SceneCut, PastedOnAStepGoesBeforeIt)
{
    Cut("Licht aus");
    PasteOn("Warm");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Licht aus [Licht Flur]|Warm [Heizung]");
    EXPECT_EQ(Below("Nachts"), "");
}

TEST_F(SceneCut, PastedOnAnEarlierSiblingGoesBeforeIt)
{
    Cut("Warm");
    PasteOn("Licht an");
    EXPECT_EQ(Below("Abendlicht"), "Warm [Heizung]|Licht an [Licht Flur]");
}

TEST_F(SceneCut, PastedOnItsOwnSceneBecomesItsFirstChild)
{
    Cut("Warm");
    PasteOn("Abendlicht");
    EXPECT_EQ(Below("Abendlicht"), "Warm [Heizung]|Licht an [Licht Flur]");
}

TEST_F(SceneCut, PastedOnItselfStaysWhereItIs)
{
    Cut("Warm");
    PasteOn("Warm");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_FALSE(Node("Warm")->Cut());
    EXPECT_FALSE(m_frame->IsModified());
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
}

TEST_F(SceneCut, PastedBelowItselfStaysWhereItIs)
{
    m_frame->NewSceneNode(Node("Warm"), naAddChild, QStringLiteral("Darunter"), false);
    m_frame->SetModified(false);
    Cut("Warm");
    PasteOn("Darunter");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_EQ(Below("Warm"), "Darunter");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneCut, IsPastedOnce)
{
    Cut("Warm");
    PasteOn("Nachts");
    Select({"Abendlicht"});
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    m_frame->MenuAction_PasteBeforeExecute();
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]");
}

TEST_F(SceneCut, KeepsItsMarkAfterACopyAndIsForgotten)
{
    Cut("Warm");
    Select({"Licht an"});
    Run("MenuAction_CopyExecute");
    EXPECT_TRUE(Node("Warm")->Cut());
    PasteOn("Nachts");
    EXPECT_EQ(Below("Nachts"), "Licht an [Licht Flur]|Licht aus [Licht Flur]");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_TRUE(Node("Warm")->Cut());
}

TEST_F(SceneCut, IsForgottenByTheCopyOfAScene)
{
    Cut("Warm");
    Select({"Nachts"});
    Run("MenuAction_CopyExecute");
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
}

TEST_F(SceneCut, OfSeveralStepsTakesTheOneInFocus)
{
    Select({"Licht an", "Licht aus", "Warm"});
    Run("MenuAction_CutExecute");
    EXPECT_TRUE(Node("Warm")->Cut());
    EXPECT_FALSE(Node("Licht an")->Cut());
    EXPECT_FALSE(Node("Licht aus")->Cut());
}

TEST_F(SceneCut, IsForgottenWhenItsSceneIsDeleted)
{
    Cut("Licht aus");
    m_frame->RemoveBranches({Node("Nachts")});
    Select({"Abendlicht"});
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    m_frame->MenuAction_PasteBeforeExecute();
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneCut, IsForgottenWhenTheFileIsLoadedAgain)
{
    Cut("Licht aus");
    Run("MenuAction_Reload");
    Select({"Abendlicht"});
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
}

TEST_F(SceneCut, StaysWithAPasteOnARoot)
{
    Cut("Warm");
    Select({"Trigger-Elemente"});
    m_frame->MenuAction_PasteBeforeExecute();
    EXPECT_TRUE(Node("Warm")->Cut());
    PasteOn("Nachts");
    EXPECT_EQ(Below("Nachts"), "Warm [Heizung]|Licht aus [Licht Flur]");
}

TEST_F(SceneCut, KeepsTheBindingsOfAMovedStepForTheExport)
{
    Cut("Warm");
    PasteOn("Nachts");
    Run("MenuAction_Export");
    EXPECT_TRUE(Exported("scene_2.xml")
                    .contains(R"(<node name="heizung" alias="Warm" value="21" eis="14" delay="5" enabled="0")"));
    EXPECT_FALSE(Exported("scene_1.xml").contains("Warm"));
}
