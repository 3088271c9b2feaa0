#include "SceneTree.h"

#include "Vlpromptnumber.h"

#include <QComboBox>
#include <QLabel>
#include <QSet>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include <algorithm>

namespace
{

class SceneEdit : public TSceneTree
{
protected:
    static std::string SceneName(int number) { return "Szene-" + std::to_string(number); }

    // Answers the number prompt as soon as it shows, with a number or, below 1, with "Abbrechen"; the prompt's text
    // becomes `m_prompt`.
    void AnswerPrompt(int number)
    {
        m_prompt.clear();
        QTimer::singleShot(0, m_frame.get(), [this, number] {
            auto* prompt = qobject_cast<TPromptNumberDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(prompt, nullptr);
            m_prompt = prompt->findChild<QLabel*>()->text();
            m_prompts.insert(prompt);
            auto* edit = prompt->findChild<QSpinBox*>(QStringLiteral("EditNumber"));
            ASSERT_NE(edit, nullptr);
            edit->selectAll();
            QTest::keyClicks(edit, QString::number(std::max(number, 1)));
            QTest::keyClick(prompt, number < 1 ? Qt::Key_Escape : Qt::Key_Return);
        });
    }

    QString m_prompt;
    QSet<TPromptNumberDialog*> m_prompts;
};

class SceneNodeModes : public SceneEdit
{};

} // namespace

// New nodes

TEST_F(SceneNodeModes, AddAppendsAsTheLastSibling)
{
    const TSceneNode* made = m_frame->NewSceneNode(Node("Licht an"), naAdd, QStringLiteral("Neu"), false);
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]|Neu");
    EXPECT_EQ(Record(made), "id=-1 name= alias=Neu value= delay=0 source=0 type=0 enabled=1");
    EXPECT_EQ(Selected(), "");
}

TEST_F(SceneNodeModes, AddChildAppendsAsTheLastChildAndSelectsWhenAsked)
{
    const TSceneNode* made = m_frame->NewSceneNode(Node("Abendlicht"), naAddChild, QStringLiteral("Neu"), true);
    EXPECT_EQ(made->Index(), 2);
    EXPECT_EQ(Selected(), "Neu");
    EXPECT_EQ(m_frame->currentItem(), made);
}

TEST_F(SceneNodeModes, AddChildFirstPutsBeforeAllChildren)
{
    m_frame->NewSceneNode(Node("Abendlicht"), naAddChildFirst, QStringLiteral("Neu"), false);
    EXPECT_EQ(Below("Abendlicht"), "Neu|Licht an [Licht Flur]|Warm [Heizung]");
}

TEST_F(SceneNodeModes, OthersMakeNothing)
{
    EXPECT_EQ(m_frame->NewSceneNode(Node("Warm"), naInsert, QStringLiteral("Neu"), true), nullptr);
    EXPECT_EQ(m_frame->NewSceneNode(Node("Warm"), naAddFirst, QStringLiteral("Neu"), true), nullptr);
    EXPECT_EQ(m_frame->NewSceneNode(Top(), naAdd, QStringLiteral("Neu"), true), nullptr);
    EXPECT_EQ(m_frame->NewSceneNode(nullptr, naAddChild, QStringLiteral("Neu"), true), nullptr);
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneNodeModes, NameAnEmptyCaptionNeuerEintrag)
{
    const TSceneNode* made = m_frame->NewSceneNode(Node("Nachts"), naAddChild, {}, false);
    EXPECT_EQ(made->Caption(), QStringLiteral("Neuer Eintrag"));
    EXPECT_EQ(made->Item()->Alias, QStringLiteral("Neuer Eintrag"));
}

TEST_F(SceneNodeModes, NumberScenesAndNothingElse)
{
    const std::int32_t last = LastSceneId();
    const TSceneNode* sibling = m_frame->NewSceneNode(Node("Abendlicht"), naAdd, QStringLiteral("A"), false);
    const TSceneNode* child = m_frame->NewSceneNode(Top(), naAddChild, QStringLiteral("B"), false);
    const TSceneNode* step = m_frame->NewSceneNode(Node("Nachts"), naAddChild, QStringLiteral("C"), false);
    EXPECT_EQ(sibling->Item()->Id, last + 1);
    EXPECT_EQ(child->Item()->Id, last + 2);
    EXPECT_EQ(step->Item()->Id, -1);
    EXPECT_EQ(LastSceneId(), last + 2);
}

TEST_F(SceneNodeModes, ChooseTheImageByThePlace)
{
    const auto made = [&](TSceneNode* parent, TNodeAttachMode mode) {
        const TSceneNode* node = m_frame->NewSceneNode(parent, mode, {}, false);
        EXPECT_EQ(node->SelectedIndex(), node->ImageIndex());
        return node->ImageIndex();
    };
    EXPECT_EQ(made(Top(), naAddChild), 1);
    EXPECT_EQ(made(m_frame->TriggerRoot(), naAddChild), 4);
    EXPECT_EQ(made(m_frame->ActionRoot(), naAddChild), 3);
    EXPECT_EQ(made(Node("Nachts"), naAddChildFirst), 3);
    EXPECT_EQ(made(Top(), naAddChildFirst), 2);
}

TEST_F(SceneNodeModes, GiveTheRepaintingBack)
{
    m_frame->NewSceneNode(Top(), naAddChild, {}, true);
    EXPECT_TRUE(m_frame->updatesEnabled());
}

// "Neue Szene"

TEST_F(SceneEdit, NewSceneIsAppendedAndSelectedWithoutASelection)
{
    const std::int32_t last = LastSceneId();
    Select({});
    Run("MenuAction_CreateSceneExecute");
    EXPECT_EQ(LastScene()->Caption(), QStringLiteral("Neue Szene"));
    EXPECT_EQ(LastScene()->Item()->Id, last + 1);
    EXPECT_EQ(Selected(), "Neue Szene");
    EXPECT_EQ(m_frame->GetSections().last(), QStringLiteral("Neue Szene"));
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(SceneEdit, NewSceneIsAppendedForTheTopARootAndAScene)
{
    for (const char* selected : {"Szenen", "Trigger-Elemente", "Aktions-Elemente", "Abendlicht"}) {
        const int count = Top()->Count();
        Select({selected});
        Run("MenuAction_CreateSceneExecute");
        EXPECT_EQ(Top()->Count(), count + 1) << selected;
        EXPECT_EQ(LastScene()->Caption(), QStringLiteral("Neue Szene")) << selected;
        EXPECT_EQ(m_frame->SelectedNode(), LastScene()) << selected;
    }
}

TEST_F(SceneEdit, NewScenesForTriggersTakeTheirSourceTypeAndLinkInTheOrderOfTheirSelection)
{
    const int next = LastSceneId() + 1;
    Select({"Zeitschalter", "Taster Flur"});
    Run("MenuAction_CreateSceneExecute");
    ASSERT_EQ(Top()->Count(), 6);
    EXPECT_EQ(Top()->Child(4)->Caption().toStdString(), SceneName(next) + " [Zeitschalter]");
    EXPECT_EQ(Top()->Child(5)->Caption().toStdString(), SceneName(next + 1) + " [Taster Flur]");
    EXPECT_EQ(Record(Top()->Child(4)), "id=" + std::to_string(next) + " name= alias=" + SceneName(next) +
                                           " value= delay=0 source=1 type=3 enabled=1");
    EXPECT_EQ(LinkOf(Top()->Child(4)), "Zeitschalter");
    EXPECT_EQ(LinkOf(Top()->Child(5)), "Taster Flur");
    EXPECT_EQ(Top()->Child(5)->Item()->Id, next + 1);
    EXPECT_EQ(Top()->Child(5)->ImageIndex(), 1);
    EXPECT_EQ(Selected(), "");
    EXPECT_EQ(m_frame->GetSections().mid(4).join(u'|').toStdString(), SceneName(next) + "|" + SceneName(next + 1));
}

TEST_F(SceneEdit, NewScenesForARangeOfTriggersCountAwayFromItsBeginning)
{
    const int next = LastSceneId() + 1;
    Select({"Zeitschalter"});
    Click("Taster Flur", Qt::ShiftModifier);
    Run("MenuAction_CreateSceneExecute");
    EXPECT_EQ(Top()->Child(4)->Caption().toStdString(), SceneName(next) + " [Zeitschalter]");
    EXPECT_EQ(Top()->Child(5)->Caption().toStdString(), SceneName(next + 1) + " [Taster Flur]");
}

TEST_F(SceneEdit, NewSceneForActionsGetsAStepForEachInTheOrderOfTheirSelection)
{
    m_frame->ActionRoot()->Child(1)->Item()->Value = QStringLiteral("19");
    m_frame->ActionRoot()->Child(1)->Item()->Delay = 8;
    Select({"Heizung", "Licht Flur"});
    Run("MenuAction_CreateSceneExecute");
    ASSERT_EQ(Top()->Count(), 5);
    EXPECT_EQ(LastScene()->Caption(), QStringLiteral("Neue Szene"));
    EXPECT_EQ(LinkOf(LastScene()), "none");
    EXPECT_EQ(Below(LastScene()), "Aktion-1 [Heizung]|Aktion-2 [Licht Flur]");
    EXPECT_EQ(Record(LastScene()->Child(0)), "id=-1 name= alias=Aktion-1 value=19 delay=8 source=2 type=2 enabled=1");
    EXPECT_EQ(LinkOf(LastScene()->Child(0)), "Heizung");
    EXPECT_EQ(LastScene()->Child(0)->ImageIndex(), 3);
    EXPECT_EQ(Selected(), "");
    EXPECT_EQ(m_frame->GetSections().last(), QStringLiteral("Neue Szene"));
}

TEST_F(SceneEdit, NewSceneWithALevel2StepSelectedMakesNothingAndClearsTheSelection)
{
    const std::string before = Outline();
    Select({"Warm", "Licht an"});
    Run("MenuAction_CreateSceneExecute");
    EXPECT_EQ(Outline(), before);
    EXPECT_EQ(Selected(), "");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneEdit, NewScenesUseOnlyTheSelectedNodesOfTheListInFocus)
{
    Select({"Warm", "Heizung", "Nachts", "Taster Flur"});
    Run("MenuAction_CreateSceneExecute");
    ASSERT_EQ(Top()->Count(), 5);
    EXPECT_EQ(LinkOf(LastScene()), "Taster Flur");
    Select({"Taster Flur", "Warm", "Heizung"});
    Run("MenuAction_CreateSceneExecute");
    ASSERT_EQ(Top()->Count(), 6);
    EXPECT_EQ(Below(LastScene()), "Aktion-1 [Heizung]");
}

TEST_F(SceneEdit, NewScenesReachADialogThatIsShown)
{
    ShowProperties("Taster Flur");
    Run("MenuAction_CreateSceneExecute");
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->count(), 5);
    EXPECT_EQ(Dialog()->GetSection(), 0);
    EXPECT_EQ(TextOf("EditAlias"), "Taster Flur");
}

// "Elemente hinzufügen..."

TEST_F(SceneEdit, AppendsAsManyTriggersAsAskedFor)
{
    Select({"Trigger-Elemente"});
    AnswerPrompt(3);
    Run("MenuAction_AutoAppend");
    EXPECT_EQ(m_prompt, QStringLiteral("Anzahl Trigger-Elemente: "));
    EXPECT_EQ(Below("Trigger-Elemente"), "Taster Flur|Zeitschalter|Trigger-3|Trigger-4|Trigger-5");
    EXPECT_EQ(Record("Trigger-4"), "id=-1 name= alias=Trigger-4 value= delay=0 source=0 type=0 enabled=1");
    EXPECT_EQ(Node("Trigger-4")->ImageIndex(), 4);
    EXPECT_EQ(Selected(), "Trigger-Elemente");
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(SceneEdit, AppendsAsManyActionsAsAskedForByOnePrompt)
{
    Select({"Aktions-Elemente"});
    for (int i = 0; i < 2; ++i) {
        AnswerPrompt(1);
        Run("MenuAction_AutoAppend");
        EXPECT_EQ(m_prompt, QStringLiteral("Anzahl Aktions-Elemente: "));
    }
    EXPECT_EQ(Below("Aktions-Elemente"), "Licht Flur|Heizung|Aktion-3|Aktion-4");
    EXPECT_EQ(Node("Aktion-3")->ImageIndex(), 3);
    EXPECT_EQ(m_prompts.size(), 1);
}

TEST_F(SceneEdit, AppendsNothingWhenThePromptIsCancelled)
{
    Select({"Trigger-Elemente"});
    AnswerPrompt(0);
    Run("MenuAction_AutoAppend");
    EXPECT_EQ(m_prompt, QStringLiteral("Anzahl Trigger-Elemente: "));
    EXPECT_EQ(Below("Trigger-Elemente"), "Taster Flur|Zeitschalter");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneEdit, AppendsToTheRootUnderTheMouse)
{
    Select({"Warm"});
    OpenMenu("Aktions-Elemente");
    AnswerPrompt(1);
    QTest::mouseClick(Menu(), Qt::LeftButton, {}, Menu()->actionGeometry(Action("MenuAction_AutoAppend")).center());
    EXPECT_EQ(Below("Aktions-Elemente"), "Licht Flur|Heizung|Aktion-3");
    EXPECT_EQ(Selected(), "Warm");
}

TEST_F(SceneEdit, AppendsNothingElsewhereThanToARoot)
{
    Select({"Abendlicht"});
    m_frame->MenuAction_AutoAppend();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_FALSE(m_frame->IsModified());
}

// "Neue Aktion"

TEST_F(SceneEdit, NewActionIsADatapointInARootAndAStepInAScene)
{
    Select({"Trigger-Elemente"});
    Run("MenuAction_CreateBeforeExecute");
    EXPECT_EQ(Selected(), "Neue Aktion");
    EXPECT_EQ(Below("Trigger-Elemente"), "Taster Flur|Zeitschalter|Neue Aktion");
    EXPECT_EQ(static_cast<TSceneNode*>(m_frame->SelectedNode())->Role(), srTrigger);
    EXPECT_EQ(m_frame->SelectedNode()->ImageIndex(), 4);
    Select({"Aktions-Elemente"});
    Run("MenuAction_CreateBeforeExecute");
    EXPECT_EQ(Below("Aktions-Elemente"), "Licht Flur|Heizung|Neue Aktion");
    Select({"Abendlicht"});
    Run("MenuAction_CreateBeforeExecute");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]|Neue Aktion");
    EXPECT_EQ(static_cast<TSceneNode*>(m_frame->SelectedNode())->Role(), srStep);
    EXPECT_EQ(m_frame->SelectedNode()->ImageIndex(), 3);
}

TEST_F(SceneEdit, NewActionIsAppendedBehindTheSiblingsOfALevel2Node)
{
    Select({"Licht an"});
    Run("MenuAction_CreateBeforeExecute");
    EXPECT_FALSE(m_frame->IsModified());
    m_frame->MenuAction_CreateBeforeExecute();
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]|Neue Aktion");
    EXPECT_EQ(Selected(), "Neue Aktion");
}

TEST_F(SceneEdit, NewActionMakesNothingForTheTopOrWithoutASelection)
{
    Select({"Szenen"});
    m_frame->MenuAction_CreateBeforeExecute();
    Select({});
    m_frame->MenuAction_CreateBeforeExecute();
    EXPECT_FALSE(m_frame->IsModified());
}
