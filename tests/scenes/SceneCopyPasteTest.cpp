#include "SceneTree.h"

#include "ChildProcess.h"

#include <QAction>
#include <QComboBox>

namespace
{

class SceneCopyPaste : public TSceneTree
{
protected:
    void Copy(const std::vector<const char*>& aliases) const
    {
        Select(aliases);
        Run("MenuAction_CopyExecute");
    }
    void PasteOn(const char* alias) const
    {
        Select({alias});
        Run("MenuAction_PasteBeforeExecute");
    }
    // A step of the scene "Nachts", bound to an action.
    void AddStep(const char* alias, const char* action) const
    {
        TSceneNode* step = m_frame->NewSceneNode(Node("Nachts"), naAddChild, QString::fromUtf8(alias), false);
        step->Item()->Link.Set(Node(action));
        step->RebuildCaption();
    }
    // The scene "Licht" copied while the last number is 7, told by its caption, record and link.
    std::string CopyAfterSeven()
    {
        ResetSceneIds();
        RaiseSceneId(7);
        Copy({"Licht"});
        return LastScene()->Caption().toStdString() + " / " + Record(LastScene()) + " / " + LinkOf(LastScene());
    }
};

} // namespace

// Copying a scene

TEST_F(SceneCopyPaste, CopyOfASceneLichtWhileTheLastNumberIsSevenGetsNumberEight)
{
    Node("Abendlicht")->Item()->Link.Set(nullptr);
    Node("Abendlicht")->Item()->Alias = QStringLiteral("Licht");
    Node("Licht")->RebuildCaption();
    EXPECT_EQ(RunInChild([&] { return QString::fromStdString(CopyAfterSeven()); }).toStdString(),
              "Szene-8=Licht / id=8 name= alias=Szene-8=Licht value= delay=0 source=0 type=0 enabled=1 / none");
}

TEST_F(SceneCopyPaste, CopyOfASceneTakesSourceTypeAndLinkButNotNameValueAndEnabledFlag)
{
    const std::string number = std::to_string(LastSceneId() + 1);
    Copy({"Nachts"});
    ASSERT_EQ(Top()->Count(), 5);
    EXPECT_EQ(LastScene()->Caption().toStdString(), "Szene-" + number + "=Nachts [Zeitschalter]");
    EXPECT_EQ(Record(LastScene()),
              "id=" + number + " name= alias=Szene-" + number + "=Nachts value= delay=0 source=1 type=3 enabled=1");
    EXPECT_EQ(LinkOf(LastScene()), "Zeitschalter");
    EXPECT_EQ(LastScene()->ImageIndex(), 1);
    EXPECT_EQ(Selected(), "Nachts");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(SceneCopyPaste, CopyOfASceneHasItsStepsUnderTheirAliasesBoundToTheSameActions)
{
    Copy({"Abendlicht"});
    EXPECT_EQ(Below(LastScene()), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_EQ(Record(LastScene()->Child(1)), "id=-1 name= alias=Warm value=21 delay=5 source=2 type=2 enabled=1");
    EXPECT_EQ(LinkOf(LastScene()->Child(1)), "Heizung");
}

TEST_F(SceneCopyPaste, CopyOfASceneBecomesASectionAlsoInTheDialog)
{
    ShowProperties("Nachts");
    Run("MenuAction_CopyExecute");
    EXPECT_EQ(m_frame->GetSections().size(), 5);
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->itemText(4), LastScene()->Item()->Alias);
}

TEST_F(SceneCopyPaste, CopyOfSeveralScenesCopiesTheOneInFocus)
{
    Copy({"Abendlicht", "Nachts"});
    ASSERT_EQ(Top()->Count(), 5);
    EXPECT_TRUE(LastScene()->Item()->Alias.endsWith(QStringLiteral("=Nachts")));
}

TEST_F(SceneCopyPaste, CopyOfASceneLeavesTheCopyList)
{
    Copy({"Warm"});
    Copy({"Nachts"});
    PasteOn("Nachts");
    EXPECT_EQ(Below("Nachts"), "Warm [Heizung]|Licht aus [Licht Flur]");
}

// Copying steps and datapoints

TEST_F(SceneCopyPaste, CopyOfStepsMakesNothingYet)
{
    const std::string before = Outline();
    Copy({"Warm", "Licht an"});
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneCopyPaste, ThreeStepsBecomeTheFirstChildrenOfASceneInReverseOrder)
{
    Copy({"Warm", "Licht aus", "Licht an"});
    PasteOn("Nachts");
    EXPECT_EQ(Below("Nachts"), "Licht an [Licht Flur]|Licht aus [Licht Flur]|Warm [Heizung]|Licht aus [Licht Flur]");
    EXPECT_EQ(Record(Node("Nachts")->Child(2)), "id=-1 name= alias=Warm value=21 delay=5 source=2 type=2 enabled=1");
    EXPECT_EQ(Node("Nachts")->Child(0)->ImageIndex(), 3);
    EXPECT_EQ(Selected(), "Nachts");
}

TEST_F(SceneCopyPaste, ARangeIsPastedInTheReverseOrderOfItsSelection)
{
    AddStep("Zwei", "Heizung");
    AddStep("Drei", "Heizung");
    Select({"Drei"});
    Click("Licht aus", Qt::ShiftModifier);
    EXPECT_EQ(Selected(), "Drei|Zwei|Licht aus");
    Run("MenuAction_CopyExecute");
    PasteOn("Abendlicht");
    EXPECT_EQ(Below("Abendlicht"),
              "Licht aus [Licht Flur]|Zwei [Heizung]|Drei [Heizung]|Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneCopyPaste, StepsAreAppendedInTheirOrderBehindTheSiblingsOfAStep)
{
    Copy({"Warm", "Licht an"});
    PasteOn("Licht aus");
    EXPECT_EQ(Below("Nachts"), "Licht aus [Licht Flur]|Warm [Heizung]|Licht an [Licht Flur]");
}

TEST_F(SceneCopyPaste, AnActionBecomesAStepBoundToIt)
{
    Copy({"Heizung"});
    PasteOn("Nachts");
    EXPECT_EQ(Below("Nachts"), "Heizung [Heizung]|Licht aus [Licht Flur]");
    EXPECT_EQ(LinkOf(Node("Nachts")->Child(0)), "Heizung");
    EXPECT_EQ(Record(Node("Nachts")->Child(0)), "id=-1 name= alias=Heizung value= delay=0 source=2 type=2 enabled=1");
}

TEST_F(SceneCopyPaste, ACopiedStepIsBoundToTheActionAndNotToTheStep)
{
    Copy({"Warm"});
    PasteOn("Nachts");
    EXPECT_EQ(Node("Nachts")->Child(0)->Item()->Link.Get(), m_frame->ActionRoot()->Child(1));
}

TEST_F(SceneCopyPaste, ACopiedStepWithoutALinkStaysWithoutOne)
{
    m_frame->NewSceneNode(Node("Nachts"), naAddChild, QStringLiteral("Frei"), false);
    Copy({"Frei"});
    PasteOn("Abendlicht");
    EXPECT_EQ(Below("Abendlicht"), "Frei|Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneCopyPaste, ATriggerRebindsASceneInsteadOfMakingAStep)
{
    Copy({"Zeitschalter"});
    PasteOn("Abendlicht");
    EXPECT_EQ(Node("Abendlicht")->Caption(), QStringLiteral("Abendlicht [Zeitschalter]"));
    EXPECT_EQ(Record("Abendlicht"), "id=1 name=0/0/1 alias=Abendlicht value=1 delay=0 source=1 type=3 enabled=1");
    EXPECT_EQ(Node("Abendlicht")->Count(), 2);
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(SceneCopyPaste, ATriggerOnAStepBecomesAStepBoundToIt)
{
    Copy({"Zeitschalter"});
    PasteOn("Licht aus");
    EXPECT_EQ(Below("Nachts"), "Licht aus [Licht Flur]|Zeitschalter [Zeitschalter]");
}

TEST_F(SceneCopyPaste, AMixedCopyRebindsTheSceneAndMakesSteps)
{
    Copy({"Warm", "Taster Flur", "Heizung"});
    PasteOn("Nachts");
    EXPECT_EQ(Node("Nachts")->Caption(), QStringLiteral("Nachts [Taster Flur]"));
    EXPECT_EQ(Below("Nachts"), "Heizung [Heizung]|Warm [Heizung]|Licht aus [Licht Flur]");
}

TEST_F(SceneCopyPaste, AnEarlierCopyIsReplaced)
{
    Copy({"Warm", "Licht an"});
    Copy({"Licht aus"});
    PasteOn("Abendlicht");
    EXPECT_EQ(Below("Abendlicht"), "Licht aus [Licht Flur]|Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneCopyPaste, ACopyIsPastedOnce)
{
    Copy({"Warm"});
    PasteOn("Nachts");
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    m_frame->MenuAction_PasteBeforeExecute();
    EXPECT_EQ(Below("Nachts"), "Warm [Heizung]|Licht aus [Licht Flur]");
}

TEST_F(SceneCopyPaste, PastingWithARootOrNothingSelectedDoesNothing)
{
    Copy({"Warm"});
    for (const std::vector<const char*>& selected :
         {std::vector<const char*>{}, {"Szenen"}, {"Trigger-Elemente"}, {"Aktions-Elemente"}}) {
        Select(selected);
        m_frame->MenuAction_PasteBeforeExecute();
    }
    EXPECT_FALSE(m_frame->IsModified());
    PasteOn("Nachts");
    EXPECT_EQ(Below("Nachts"), "Warm [Heizung]|Licht aus [Licht Flur]");
}

// Stored positions

TEST_F(SceneCopyPaste, StoredPositionsMeanWhatStandsThereWhenPasted)
{
    Copy({"Licht an"});
    m_frame->NewSceneNode(m_frame->TriggerRoot(), naAddChild, QStringLiteral("Neu"), false);
    PasteOn("Nachts");
    // One node more before it: the position is now the scene's.
    EXPECT_EQ(Below("Nachts"), "Abendlicht [Abendlicht]|Licht aus [Licht Flur]");
    EXPECT_EQ(LinkOf(Node("Nachts")->Child(0)), "Abendlicht");
}

TEST_F(SceneCopyPaste, StoredPositionsThatLeadToARootAreSkipped)
{
    Copy({"Licht Flur", "Heizung"});
    m_frame->NewSceneNode(m_frame->TriggerRoot(), naAddChild, QStringLiteral("Neu"), false);
    PasteOn("Nachts");
    EXPECT_EQ(Below("Nachts"), "Licht Flur [Licht Flur]|Licht aus [Licht Flur]");
}

TEST_F(SceneCopyPaste, StoredPositionsBehindTheEndAreSkipped)
{
    Copy({"Licht aus", "Warm"});
    m_frame->RemoveBranches({Node("Nachts")});
    PasteOn("Abendlicht");
    EXPECT_EQ(Below("Abendlicht"), "Warm [Heizung]|Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneCopyPaste, StoredPositionsAreSafeAfterALoadOfLess)
{
    Copy({"Licht aus", "Warm"});
    m_project.Write(QStringLiteral("_config/data/scenes/trigger_allowed.xml"), "");
    Run("MenuAction_Reload");
    PasteOn("Abendlicht");
    EXPECT_EQ(Below("Abendlicht"), "Licht aus [Licht Flur]|Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneCopyPaste, AllStoredPositionsAreLookedUpBeforeAnythingIsInserted)
{
    Copy({"Warm", "Licht aus"});
    PasteOn("Abendlicht");
    EXPECT_EQ(Below("Abendlicht"), "Licht aus [Licht Flur]|Warm [Heizung]|Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneCopyPaste, DeletingForgetsTheCopyAlsoAfterNo)
{
    Copy({"Warm"});
    m_messages.Answer = false;
    Select({"Licht an"});
    Run("MenuAction_DeleteExecute");
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
    PasteOn("Nachts");
    EXPECT_EQ(Below("Nachts"), "Licht aus [Licht Flur]");
}
