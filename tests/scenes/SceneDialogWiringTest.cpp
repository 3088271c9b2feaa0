#include "SceneTree.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

namespace
{

class SceneWiring : public TSceneTree
{
protected:
    bool IsFieldEnabled(const char* name) const { return Field<QWidget>(name)->isEnabled(); }
    // What the dialog shows: section, name, alias, value, delay, enabled flag, type, source.
    std::string Shown() const
    {
        const TScenePropsDialog& dialog = *Dialog();
        return QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8")
            .arg(dialog.GetSection())
            .arg(dialog.GetItemName(), dialog.GetNodeAlias(), dialog.GetNodeValue())
            .arg(dialog.GetNodeDelay())
            .arg(dialog.GetEnableFlag())
            .arg(dialog.GetDataType())
            .arg(dialog.GetNodeSource())
            .toStdString();
    }
    std::string Value(const char* alias) const { return Node(alias)->Item()->Value.toStdString(); }
};

} // namespace

// Showing a node

TEST_F(SceneWiring, ShowsATriggerByItsOwnRecord)
{
    ShowProperties("Zeitschalter");
    EXPECT_EQ(Shown(), "0 40001 Zeitschalter  0 1 3 1");
    EXPECT_TRUE(IsFieldEnabled("EditName"));
    EXPECT_FALSE(IsFieldEnabled("EditAlias"));
    EXPECT_FALSE(Dialog()->GetChanged());
    EXPECT_FALSE(Dialog()->isModal());
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->currentText(), QStringLiteral("Trigger-Elemente"));
}

TEST_F(SceneWiring, ShowsANewDatapointWithItsAliasToBeEdited)
{
    ShowProperties("Zeitschalter");
    Select({"Aktions-Elemente"});
    Run("MenuAction_CreateBeforeExecute");
    EXPECT_EQ(Shown(), "1  Neue Aktion  0 1 0 0");
    EXPECT_TRUE(IsFieldEnabled("EditName"));
    EXPECT_TRUE(IsFieldEnabled("EditAlias"));
}

TEST_F(SceneWiring, ShowsAStepWithNameSourceAndTypeOfItsAction)
{
    Node("Heizung")->Item()->Name = QStringLiteral("kessel");
    Node("Heizung")->Item()->DataType = dtmEIS11;
    Node("Heizung")->Item()->Source = nsMODBUS;
    ShowProperties("Warm");
    EXPECT_EQ(Shown(), "2 kessel Warm 21 5 0 4 1");
    EXPECT_FALSE(IsFieldEnabled("EditName"));
    EXPECT_TRUE(IsFieldEnabled("EditAlias"));
}

TEST_F(SceneWiring, ShowsASceneInItsOwnSection)
{
    ShowProperties("Nachts");
    EXPECT_EQ(Shown(), "3 40001 Nachts 22 0 0 3 1");
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->currentText(), QStringLiteral("Nachts"));
}

TEST_F(SceneWiring, ShowsWhatIsBoundToNothingByItsOwnRecord)
{
    Node("Nachts")->Item()->Link.Set(nullptr);
    Node("Nachts")->Item()->Name = QStringLiteral("9/9/9");
    ShowProperties("Nachts");
    EXPECT_EQ(Shown(), "3 9/9/9 Nachts 22 0 0 3 1");
}

TEST_F(SceneWiring, OpensByADoubleClick)
{
    const QPoint place = m_frame->visualItemRect(Node("Warm")).center();
    QTest::mouseClick(m_frame->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(m_frame->viewport(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(m_frame->IsDialogShown());
    EXPECT_EQ(TextOf("EditAlias"), "Warm");
}

TEST_F(SceneWiring, DoesNotOpenForANodeWithoutAnItem)
{
    for (const char* fixed : {"Szenen", "Trigger-Elemente", "Aktions-Elemente"}) {
        Select({fixed});
        m_frame->MenuAction_AttributesExecute();
        EXPECT_FALSE(m_frame->IsDialogShown()) << fixed;
    }
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(SceneWiring, MakesTheDialogOnce)
{
    ShowProperties("Warm");
    const TScenePropsDialog* dialog = Dialog();
    Press("BtnCancel");
    ShowProperties("Nachts");
    EXPECT_EQ(Dialog(), dialog);
    EXPECT_EQ(m_frame->findChildren<TScenePropsDialog*>().size(), 1);
}

// Following the selection

TEST_F(SceneWiring, FollowsTheSelectionWhileTheDialogIsShown)
{
    ShowProperties("Warm");
    Select({"Licht aus"});
    EXPECT_EQ(Shown(), "3 1/1/1 Licht aus 0 30 1 0 0");
    Select({"Heizung"});
    EXPECT_EQ(Shown(), "1 heizung Heizung  0 1 2 2");
}

TEST_F(SceneWiring, DoesNotFollowTheSelectionWhenTheTreeIsNotEditable)
{
    ShowProperties("Warm");
    m_frame->SetEditable(false);
    Select({"Licht aus"});
    EXPECT_EQ(TextOf("EditAlias"), "Warm");
    m_frame->SetEditable(true);
    EXPECT_EQ(TextOf("EditAlias"), "Licht aus");
}

TEST_F(SceneWiring, ShowsTheFirstChildOfARoot)
{
    ShowProperties("Warm");
    Select({"Trigger-Elemente"});
    EXPECT_EQ(TextOf("EditAlias"), "Taster Flur");
    EXPECT_EQ(Selected(), "Trigger-Elemente");
    Type("EditName", "7/7/7");
    Press("BtnApply");
    EXPECT_EQ(Node("Taster Flur")->Item()->Name, QStringLiteral("7/7/7"));
}

TEST_F(SceneWiring, ForgetsItsNodeForTheTopAndForAnEmptyRoot)
{
    m_frame->RemoveBranches({Node("Taster Flur"), Node("Zeitschalter")});
    for (const char* fixed : {"Szenen", "Trigger-Elemente"}) {
        ShowProperties("Warm");
        Select({fixed});
        EXPECT_TRUE(m_frame->IsDialogShown());
        Type("EditValue", "99");
        Press("BtnApply");
        EXPECT_EQ(Value("Warm"), "21") << fixed;
        Press("BtnCancel");
    }
}

// Changes that wait

TEST_F(SceneWiring, AppliesAChangeWhenAnotherNodeIsSelected)
{
    ShowProperties("Warm");
    Type("EditValue", "25");
    Type("EditDelay", "60");
    EXPECT_EQ(Value("Warm"), "21");
    Select({"Licht aus"});
    EXPECT_EQ(Record("Warm"), "id=-1 name=heizung alias=Warm value=25 delay=60 source=2 type=2 enabled=0");
    EXPECT_FALSE(Dialog()->GetChanged());
    EXPECT_TRUE(m_frame->IsModified());
}

TEST_F(SceneWiring, DropsAChangeWithoutAutomaticAcceptance)
{
    ShowProperties("Warm");
    Dialog()->SetAutoAccept(false);
    Type("EditValue", "25");
    Select({"Licht aus"});
    EXPECT_EQ(Value("Warm"), "21");
    EXPECT_EQ(TextOf("EditValue"), "0");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneWiring, AppliesAChangeWhenTheTopIsSelected)
{
    ShowProperties("Warm");
    Type("EditValue", "25");
    Select({"Szenen"});
    EXPECT_EQ(Value("Warm"), "25");
}

TEST_F(SceneWiring, DropsAChangeWhenTheDialogIsCancelled)
{
    ShowProperties("Warm");
    Type("EditValue", "25");
    Press("BtnCancel");
    Select({"Licht aus"});
    EXPECT_EQ(Value("Warm"), "21");
    EXPECT_FALSE(m_frame->IsModified());
}

// Accepting

TEST_F(SceneWiring, WritesTheNameOnlyForADatapoint)
{
    ShowProperties("Heizung");
    Type("EditName", "kessel");
    Press("BtnApply");
    EXPECT_EQ(Record("Heizung"), "id=-1 name=kessel alias=Heizung value= delay=0 source=2 type=2 enabled=1");
    Select({"Warm"});
    Type("EditValue", "1");
    Press("BtnApply");
    EXPECT_EQ(Record("Warm"), "id=-1 name=heizung alias=Warm value=1 delay=5 source=2 type=2 enabled=0");
}

TEST_F(SceneWiring, WritesTypeSourceFlagAndDelay)
{
    ShowProperties("Licht Flur");
    Choose("CBoxDataType", 3);
    Choose("CBoxDataSource", 1);
    Type("EditDelay", "sofort");
    QTest::mouseClick(Field<QAbstractButton>("CheckEnabled"), Qt::LeftButton, {}, QPoint(8, 8));
    Press("BtnOK");
    EXPECT_EQ(Record("Licht Flur"), "id=-1 name=1/1/1 alias=Licht Flur value= delay=0 source=1 type=3 enabled=0");
    EXPECT_FALSE(m_frame->IsDialogShown());
}

TEST_F(SceneWiring, RebuildsTheCaptionsOfWhatIsBoundToADatapointWithANewAlias)
{
    Node("Licht Flur")->Item()->Name.clear();
    ShowProperties("Licht Flur");
    Type("EditAlias", "Lampe");
    Press("BtnApply");
    EXPECT_EQ(Below("Aktions-Elemente"), "Lampe|Heizung");
    EXPECT_EQ(Below("Nachts"), "Licht aus [Lampe]");
}

TEST_F(SceneWiring, ReplacesTheSectionOfASceneWithANewAlias)
{
    ShowProperties("Nachts");
    Type("EditAlias", "Ruhe");
    Press("BtnApply");
    EXPECT_EQ(Node("Ruhe")->Caption(), QStringLiteral("Ruhe [Zeitschalter]"));
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->currentText(), QStringLiteral("Ruhe"));
    EXPECT_EQ(Dialog()->GetSection(), 3);
    EXPECT_FALSE(Dialog()->GetChanged());
    EXPECT_TRUE(Dialog()->isVisible());
}

// Another section

TEST_F(SceneWiring, GoesToTheNodeOfTheSectionThatTheUserChooses)
{
    ShowProperties("Warm");
    Type("EditValue", "25");
    Choose("CBoxPartSelector", 3);
    EXPECT_EQ(Selected(), "Nachts");
    EXPECT_EQ(Shown(), "3 40001 Nachts 22 0 0 3 1");
    EXPECT_EQ(Value("Warm"), "25");
    EXPECT_FALSE(Dialog()->GetChanged());
    EXPECT_FALSE(IsFieldEnabled("EditName"));
}

TEST_F(SceneWiring, GoesToTheFirstChildOfARootThatTheUserChooses)
{
    ShowProperties("Abendlicht");
    Choose("CBoxPartSelector", 1);
    EXPECT_EQ(Selected(), "Licht Flur");
    EXPECT_EQ(Shown(), "1 1/1/1 Licht Flur  0 1 0 0");
    EXPECT_TRUE(IsFieldEnabled("EditName"));
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneWiring, GoesToAnEmptyRootWithoutANode)
{
    m_frame->RemoveBranches({Node("Licht Flur"), Node("Heizung")});
    ShowProperties("Abendlicht");
    Choose("CBoxPartSelector", 1);
    EXPECT_EQ(Selected(), "Aktions-Elemente");
    Type("EditValue", "99");
    Press("BtnApply");
    EXPECT_EQ(Value("Abendlicht"), "1");
}

// Up and down

TEST_F(SceneWiring, MovesToTheNeighboursAndSelectsThem)
{
    ShowProperties("Warm");
    Press("SBtnUp");
    EXPECT_EQ(TextOf("EditAlias"), "Licht an");
    EXPECT_EQ(Selected(), "Licht an");
    Press("SBtnDown");
    EXPECT_EQ(TextOf("EditAlias"), "Warm");
    EXPECT_EQ(Selected(), "Warm");
    EXPECT_FALSE(m_frame->IsModified());
}

TEST_F(SceneWiring, AppliesAChangeWhenItMoves)
{
    ShowProperties("Licht an");
    Type("EditValue", "9");
    Press("SBtnDown");
    EXPECT_EQ(Value("Licht an"), "9");
    EXPECT_EQ(TextOf("EditAlias"), "Warm");
    EXPECT_FALSE(Dialog()->GetChanged());
}

TEST_F(SceneWiring, DropsAChangeWhenItMovesWithoutAutomaticAcceptance)
{
    ShowProperties("Licht an");
    Dialog()->SetAutoAccept(false);
    Type("EditValue", "9");
    Press("SBtnDown");
    EXPECT_EQ(Value("Licht an"), "1");
    EXPECT_FALSE(Dialog()->GetChanged());
}

TEST_F(SceneWiring, EndsAtTheLastSiblingAndAppliesTheChange)
{
    ShowProperties("Warm");
    Type("EditValue", "9");
    Press("SBtnDown");
    EXPECT_EQ(Value("Warm"), "9");
    EXPECT_EQ(TextOf("EditAlias"), "Warm");
    EXPECT_EQ(Selected(), "Warm");
    EXPECT_FALSE(Dialog()->GetChanged());
}

TEST_F(SceneWiring, EndsAtTheFirstSceneAndAppliesTheChange)
{
    ShowProperties("Abendlicht");
    Type("EditValue", "9");
    Press("SBtnUp");
    EXPECT_EQ(Value("Abendlicht"), "9");
    EXPECT_EQ(TextOf("EditAlias"), "Abendlicht");
    EXPECT_EQ(Selected(), "Abendlicht");
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "Nachts");
    Press("SBtnDown");
    EXPECT_EQ(Selected(), "Nachts");
}

TEST_F(SceneWiring, LeavesAChangeUnappliedAtTheEndWithoutAutomaticAcceptance)
{
    ShowProperties("Warm");
    Dialog()->SetAutoAccept(false);
    Type("EditValue", "9");
    Press("SBtnDown");
    EXPECT_EQ(Value("Warm"), "21");
    EXPECT_EQ(TextOf("EditValue"), "9");
}

TEST_F(SceneWiring, DoesNotMoveWithoutANode)
{
    ShowProperties("Warm");
    m_frame->RemoveBranches({Node("Abendlicht")});
    Press("SBtnDown");
    Press("SBtnUp");
    EXPECT_EQ(Selected(), "");
    EXPECT_TRUE(m_frame->IsDialogShown());
}

TEST_F(SceneWiring, ShowsTheSectionsOfALoad)
{
    ShowProperties("Warm");
    m_project.Write(QStringLiteral("_config/data/scenes/scenes.xml"),
                    "<scenes><scene id=\"5\" alias=\"Neu\"/></scenes>");
    Run("MenuAction_Reload");
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->count(), 3);
    EXPECT_EQ(Field<QComboBox>("CBoxPartSelector")->itemText(2), QStringLiteral("Neu"));
}
