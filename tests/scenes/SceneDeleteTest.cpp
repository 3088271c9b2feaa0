#include "SceneTree.h"

#include <QAction>
#include <QComboBox>

namespace
{

const auto AskTrigger = QStringLiteral("Wenn Sie einen Trigger-Datenpunkt löschen,\r\n"
                                       "werden alle Szenen, die mit diesem Datenpunkt\r\n"
                                       "verbunden sind, deaktiviert.\r\n"
                                       "Möchten Sie wirklich diesen Datenpunkt löschen?");
const auto AskAction = QStringLiteral("Wenn Sie einen Aktionsdatenpunkt löschen,\r\n"
                                      "werden alle Aktionen, die mit diesem Datenpunkt\r\n"
                                      "verbunden sind, ebenfalls gelöscht.\r\n"
                                      "Möchten Sie wirklich diesen Datenpunkt löschen?");
const auto AskScene = QStringLiteral("Szene löschen?");

class SceneDelete : public TSceneTree
{
protected:
    void Delete(const std::vector<const char*>& aliases) const
    {
        Select(aliases);
        Run("MenuAction_DeleteExecute");
    }
    void BindToTrigger(const char* scene, const char* trigger) const
    {
        Node(scene)->Item()->Link.Set(Node(trigger));
        Node(scene)->RebuildCaption();
    }
    QStringList Export()
    {
        Run("MenuAction_Export");
        return m_messages.Errors;
    }
};

} // namespace

// Triggers

TEST_F(SceneDelete, OfATriggerAsksFirst)
{
    m_messages.Answer = false;
    const std::string before = Outline();
    Delete({"Taster Flur"});
    EXPECT_EQ(m_messages.Questions, QStringList({AskTrigger}));
    EXPECT_EQ(Outline(), before);
    EXPECT_TRUE(Node("Abendlicht")->Item()->Enabled);
    EXPECT_EQ(Selected(), "Taster Flur");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneDelete, OfATriggerUsedByTwoScenesLeavesBothDisabledAndUnbound)
{
    BindToTrigger("Nachts", "Taster Flur");
    Node("Nachts")->Item()->Enabled = true;
    Delete({"Taster Flur"});
    EXPECT_EQ(Below("Szenen"), "Trigger-Elemente|Aktions-Elemente|Abendlicht|Nachts");
    EXPECT_EQ(Below("Trigger-Elemente"), "Zeitschalter");
    EXPECT_EQ(Record("Abendlicht"), "id=1 name= alias=Abendlicht value=1 delay=0 source=0 type=0 enabled=0");
    EXPECT_EQ(Record("Nachts"), "id=2 name= alias=Nachts value=22 delay=0 source=1 type=3 enabled=0");
    EXPECT_EQ(LinkOf("Abendlicht"), "none");
    EXPECT_EQ(LinkOf("Nachts"), "none");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_EQ(Selected(), "");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(SceneDelete, OfATriggerLeavesScenesOfOtherTriggers)
{
    Delete({"Zeitschalter"});
    EXPECT_EQ(Record("Abendlicht"), "id=1 name=0/0/1 alias=Abendlicht value=1 delay=0 source=0 type=0 enabled=1");
    EXPECT_EQ(Node("Abendlicht")->Caption(), QStringLiteral("Abendlicht [Taster Flur]"));
    EXPECT_EQ(Node("Nachts")->Caption(), QStringLiteral("Nachts"));
}

TEST_F(SceneDelete, OfSeveralTriggersUnbindsTheScenesOfAll)
{
    Delete({"Zeitschalter", "Taster Flur"});
    EXPECT_EQ(m_messages.Questions, QStringList({AskTrigger}));
    EXPECT_EQ(Below("Trigger-Elemente"), "");
    EXPECT_EQ(LinkOf("Abendlicht"), "none");
    EXPECT_EQ(LinkOf("Nachts"), "none");
}

TEST_F(SceneDelete, OfATriggerIsExportedAsADisabledSceneWithoutAName)
{
    Delete({"Taster Flur"});
    EXPECT_EQ(Export(), QStringList());
    EXPECT_TRUE(
        Exported("scenes.xml")
            .contains(R"(<scene id="1" name="" alias="Abendlicht" value="1" eis="1" enabled="0" type="eib" />)"));
    EXPECT_FALSE(Exported("trigger_allowed.xml").contains("Taster"));
}

// Actions

TEST_F(SceneDelete, OfAnActionAsksFirst)
{
    m_messages.Answer = false;
    const std::string before = Outline();
    Delete({"Licht Flur"});
    EXPECT_EQ(m_messages.Questions, QStringList({AskAction}));
    EXPECT_EQ(Outline(), before);
}

TEST_F(SceneDelete, OfAnActionRemovesEveryStepBoundToItInEveryScene)
{
    Delete({"Licht Flur"});
    EXPECT_EQ(Below("Aktions-Elemente"), "Heizung");
    EXPECT_EQ(Below("Abendlicht"), "Warm [Heizung]");
    EXPECT_EQ(Below("Nachts"), "");
    EXPECT_EQ(Below("Szenen"), "Trigger-Elemente|Aktions-Elemente|Abendlicht [Taster Flur]|Nachts [Zeitschalter]");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(SceneDelete, OfSeveralActionsRemovesTheStepsOfAll)
{
    m_frame->NewSceneNode(Node("Nachts"), naAddChild, QStringLiteral("Frei"), false);
    Delete({"Heizung", "Licht Flur"});
    EXPECT_EQ(Below("Aktions-Elemente"), "");
    EXPECT_EQ(Below("Abendlicht"), "");
    EXPECT_EQ(Below("Nachts"), "Frei");
}

TEST_F(SceneDelete, OfAnActionIsExported)
{
    Delete({"Licht Flur"});
    EXPECT_EQ(Export(), QStringList());
    EXPECT_FALSE(Exported("actions_allowed.xml").contains("Licht Flur"));
    EXPECT_FALSE(Exported("scene_1.xml").contains("Licht an"));
    EXPECT_TRUE(Exported("scene_1.xml").contains("Warm"));
    EXPECT_FALSE(Exported("scene_2.xml").contains("<node"));
}

// Scenes and steps

TEST_F(SceneDelete, OfASceneAsksFirst)
{
    m_messages.Answer = false;
    Delete({"Abendlicht"});
    EXPECT_EQ(m_messages.Questions, QStringList({AskScene}));
    EXPECT_EQ(Top()->Count(), 4);
}

TEST_F(SceneDelete, OfASceneTakesItsStepsAndItsSection)
{
    Delete({"Abendlicht"});
    EXPECT_EQ(Below("Szenen"), "Trigger-Elemente|Aktions-Elemente|Nachts [Zeitschalter]");
    EXPECT_EQ(m_frame->GetSections(), QStringList({QStringLiteral("Trigger-Elemente"),
                                                   QStringLiteral("Aktions-Elemente"), QStringLiteral("Nachts")}));
    EXPECT_EQ(Below("Aktions-Elemente"), "Licht Flur|Heizung");
}

TEST_F(SceneDelete, OfAStepAsksTheQuestionOfAScene)
{
    Delete({"Licht an", "Licht aus"});
    EXPECT_EQ(m_messages.Questions, QStringList({AskScene}));
    EXPECT_EQ(Below("Abendlicht"), "Warm [Heizung]");
    EXPECT_EQ(Below("Nachts"), "");
}

TEST_F(SceneDelete, OfASceneAndItsOwnStepsDeletesEachOnce)
{
    Delete({"Licht an", "Abendlicht", "Warm"});
    EXPECT_EQ(Below("Szenen"), "Trigger-Elemente|Aktions-Elemente|Nachts [Zeitschalter]");
}

TEST_F(SceneDelete, OfASceneDoesNotSendTheSectionsToTheDialog)
{
    ShowProperties("Warm");
    Delete({"Nachts"});
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->count(), 4);
    Choose("CBoxPartSelector", 3);
    EXPECT_EQ(Selected(), "");
    Select({"Abendlicht"});
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->count(), 3);
}

// Nothing to delete

TEST_F(SceneDelete, OfNothingOrARootOrTheTopAsksNothing)
{
    for (const std::vector<const char*>& selected :
         {std::vector<const char*>{}, {"Szenen"}, {"Trigger-Elemente"}, {"Aktions-Elemente"}}) {
        Select(selected);
        m_frame->MenuAction_DeleteExecute();
    }
    EXPECT_TRUE(m_messages.Questions.isEmpty());
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneDelete, SkipsTheTopAndTheRootsInASelectionOfSeveral)
{
    Select({"Szenen", "Trigger-Elemente", "Aktions-Elemente", "Warm"});
    m_frame->MenuAction_DeleteExecute();
    EXPECT_EQ(m_messages.Questions, QStringList({AskScene}));
    EXPECT_EQ(Below("Szenen"), "Trigger-Elemente|Aktions-Elemente|Abendlicht [Taster Flur]|Nachts [Zeitschalter]");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]");
    EXPECT_EQ(Below("Trigger-Elemente"), "Taster Flur|Zeitschalter");
}

// Mixed selections and what still refers to a deleted node

TEST_F(SceneDelete, OfAMixedSelectionByItsTriggerLeavesNoLinkBehind)
{
    Delete({"Licht Flur", "Nachts", "Warm", "Taster Flur"});
    EXPECT_EQ(m_messages.Questions, QStringList({AskTrigger}));
    EXPECT_EQ(Outline(), "Szenen\n  Trigger-Elemente\n    Zeitschalter\n  Aktions-Elemente\n    Heizung\n"
                         "  Abendlicht\n    Licht an");
    EXPECT_EQ(LinkOf("Abendlicht"), "none");
    EXPECT_EQ(LinkOf("Licht an"), "none");
    EXPECT_EQ(Export(), QStringList());
}

TEST_F(SceneDelete, OfAMixedSelectionByItsActionDeletesStepsAndUnbindsScenes)
{
    Delete({"Taster Flur", "Nachts", "Licht Flur"});
    EXPECT_EQ(m_messages.Questions, QStringList({AskAction}));
    EXPECT_EQ(Outline(), "Szenen\n  Trigger-Elemente\n    Zeitschalter\n  Aktions-Elemente\n    Heizung\n"
                         "  Abendlicht\n    Warm [Heizung]");
    EXPECT_EQ(LinkOf("Abendlicht"), "none");
    EXPECT_EQ(Export(), QStringList());
}

TEST_F(SceneDelete, OfAMixedSelectionByItsStepKeepsWhatWasBoundToADatapoint)
{
    Delete({"Taster Flur", "Licht Flur", "Warm"});
    EXPECT_EQ(m_messages.Questions, QStringList({AskScene}));
    EXPECT_EQ(Outline(), "Szenen\n  Trigger-Elemente\n    Zeitschalter\n  Aktions-Elemente\n    Heizung\n"
                         "  Abendlicht\n    Licht an\n  Nachts [Zeitschalter]\n    Licht aus");
    EXPECT_EQ(LinkOf("Licht aus"), "none");
    EXPECT_TRUE(Node("Abendlicht")->Item()->Enabled);
    EXPECT_EQ(Export(), QStringList());
}

TEST_F(SceneDelete, OfEverythingSelectedLeavesTheFixedNodes)
{
    m_frame->expandAll();
    Click("Szenen");
    Click("Licht aus", Qt::ShiftModifier);
    m_frame->MenuAction_DeleteExecute();
    EXPECT_EQ(Outline(), "Szenen\n  Trigger-Elemente\n  Aktions-Elemente");
    EXPECT_EQ(Export(), QStringList());
}

TEST_F(SceneDelete, OfASceneThatAStepIsBoundToLeavesTheStepUnbound)
{
    Node("Warm")->Item()->Link.Set(Node("Nachts"));
    Node("Warm")->RebuildCaption();
    Delete({"Nachts"});
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm");
    EXPECT_EQ(Export(), QStringList());
}

TEST_F(SceneDelete, OfATriggerThatAStepIsBoundToLeavesTheStepUnbound)
{
    Select({"Zeitschalter"});
    Run("MenuAction_CopyExecute");
    Select({"Warm"});
    Run("MenuAction_PasteBeforeExecute");
    ASSERT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]|Zeitschalter [Zeitschalter]");
    Delete({"Zeitschalter"});
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]|Zeitschalter");
    EXPECT_EQ(Export(), QStringList());
}

TEST_F(SceneDelete, OfTheActionOfACutStepForgetsTheStep)
{
    Select({"Warm"});
    Run("MenuAction_CutExecute");
    Delete({"Heizung"});
    Select({"Nachts"});
    m_frame->MenuAction_PasteBeforeExecute();
    EXPECT_EQ(Below("Nachts"), "Licht aus [Licht Flur]");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]");
}

TEST_F(SceneDelete, TakesTheMarkFromACutStepAlsoAfterNo)
{
    m_messages.Answer = false;
    Select({"Warm"});
    Run("MenuAction_CutExecute");
    Delete({"Nachts"});
    EXPECT_FALSE(Node("Warm")->Cut());
    EXPECT_FALSE(Action("MenuAction_PasteBeforeExecute")->isEnabled());
}

TEST_F(SceneDelete, OfTheNodeInTheDialogLeavesTheDialogWithoutOne)
{
    ShowProperties("Warm");
    Type("EditValue", "30");
    Delete({"Heizung"});
    EXPECT_TRUE(m_frame->IsDialogShown());
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]");
    Press("BtnApply");
    Press("BtnOK");
    EXPECT_FALSE(m_frame->IsDialogShown());
    EXPECT_EQ(Export(), QStringList());
    EXPECT_FALSE(Exported("scene_1.xml").contains("30"));
}

TEST_F(SceneDelete, OfTheTriggerOfTheSceneInTheDialogLeavesTheSceneThere)
{
    ShowProperties("Abendlicht");
    m_frame->RemoveBranches({Node("Taster Flur")});
    Type("EditValue", "7");
    Press("BtnApply");
    EXPECT_EQ(Node("Abendlicht")->Item()->Value, QStringLiteral("7"));
    EXPECT_EQ(LinkOf("Abendlicht"), "none");
}

TEST_F(SceneDelete, LeavesNeighboursThatCanBeUsedAtOnce)
{
    Delete({"Abendlicht"});
    Run("MenuAction_CreateSceneExecute");
    EXPECT_EQ(Below("Szenen"), "Trigger-Elemente|Aktions-Elemente|Nachts [Zeitschalter]|Neue Szene");
}
