#include "NestedLoop.h"
#include "SceneFiles.h"
#include "SceneTree.h"
#include "Vldragobjects.h"

#include <QComboBox>
#include <QDrag>
#include <QTest>

#include <algorithm>
#include <optional>

namespace
{

using TAliases = std::vector<const char*>;

// Every kind of place to drop on; null is beside all nodes.
const TAliases Targets{nullptr,        "Szenen",     "Trigger-Elemente", "Aktions-Elemente",
                       "Zeitschalter", "Licht Flur", "Nachts",           "Licht aus"};

std::string NameOf(const char* target)
{
    return target ? target : "nothing";
}

// Drags out of the small house. The node that is dragged is the last of a list, the others are selected with it.
class SceneDrag : public TSceneTree
{
protected:
    // `keys` are held from the press until the mouse has moved a little.
    bool Drag(const TAliases& nodes, const std::function<void()>& during, Qt::KeyboardModifiers keys = {})
    {
        Select(nodes);
        const TMouse mouse(Frame().viewport());
        const QPoint from = PlaceOf(nodes.back());
        mouse.Press(from, keys);
        mouse.Move(from + QPoint(2, 0), keys);
        return RunInLoop([&] { mouse.Move(from + QPoint(30, 0)); }, during);
    }
    // Drags and drops, which must be accepted.
    void DragTo(const TAliases& nodes, const char* target, Qt::KeyboardModifiers keys = {})
    {
        EXPECT_TRUE(Drag(
            nodes, [&] { EXPECT_TRUE(Over().EnterAndDrop(PlaceOf(target))); }, keys));
    }
    // Drags without a drop.
    std::optional<TPropertyDragObject> PropertiesOf(const char* scene, Qt::KeyboardModifiers keys = {})
    {
        std::optional<TPropertyDragObject> object;
        EXPECT_TRUE(Drag(
            {scene}, [&] { object = TPropertyDragObject::FromMimeData(Content()); }, keys));
        return object;
    }

    // What is being dragged.
    const QMimeData* Content() const { return Frame().findChildren<QDrag*>().last()->mimeData(); }
    TDraggedOver Over() const { return {Frame().viewport(), Content()}; }
    QPoint PlaceOf(const char* target) const
    {
        if (!target)
            return {10, Frame().viewport()->height() - 30};
        return Frame().visualItemRect(Node(target)).center();
    }
    QStringList Sections() const
    {
        const auto* box = Field<QComboBox>("CBoxPartSelector");
        QStringList sections;
        for (int i = 0; i < box->count(); ++i)
            sections.append(box->itemText(i));
        return sections;
    }
};

struct TDragCase
{
    const char* Name;
    TAliases Nodes;
    TAliases Accepting;
};

void PrintTo(const TDragCase& dragCase, std::ostream* stream)
{
    *stream << dragCase.Name;
}

class SceneDropPlaces : public SceneDrag, public testing::WithParamInterface<TDragCase>
{};

const std::vector<TDragCase> DragCases{
    {"Trigger", {"Taster Flur"}, {"Nachts"}},
    {"Action", {"Heizung"}, {"Nachts"}},
    {"Step", {"Warm"}, {"Nachts", "Licht aus"}},
    {"Scene", {"Abendlicht"}, {}},
    {"Triggers", {"Zeitschalter", "Taster Flur"}, {"Szenen"}},
    {"Actions", {"Licht Flur", "Heizung"}, {"Nachts"}},
    {"Steps", {"Licht an", "Warm"}, {}},
    {"Scenes", {"Nachts", "Abendlicht"}, {}},
    {"TriggerAmongActions", {"Licht Flur", "Heizung", "Taster Flur"}, {"Szenen"}},
    {"ActionAmongTriggers", {"Zeitschalter", "Taster Flur", "Heizung"}, {"Nachts"}},
    {"StepAmongActions", {"Licht Flur", "Heizung", "Warm"}, {}},
    {"SceneAmongTriggers", {"Zeitschalter", "Taster Flur", "Abendlicht"}, {}},
};

} // namespace

TEST_P(SceneDropPlaces, AreThoseOfItsKind)
{
    const TAliases& accepting = GetParam().Accepting;
    const std::string before = Outline();
    EXPECT_TRUE(Drag(GetParam().Nodes, [&] {
        const std::string selected = Selected();
        for (const char* target : Targets) {
            const bool expected = std::find(accepting.begin(), accepting.end(), target) != accepting.end();
            EXPECT_TRUE(Over().Enter(PlaceOf(target)));
            EXPECT_EQ(Over().Move(PlaceOf(target)), expected) << NameOf(target);
            const bool dropped = !expected && Over().Drop(PlaceOf(target));
            EXPECT_FALSE(dropped) << NameOf(target);
        }
        EXPECT_EQ(Selected(), selected);
    }));
    EXPECT_EQ(Outline(), before);
    EXPECT_FALSE(Frame().IsModified());
}

INSTANTIATE_TEST_SUITE_P(Drags, SceneDropPlaces, testing::ValuesIn(DragCases),
                         [](const auto& testCase) { return testCase.param.Name; });

TEST_F(SceneDrag, BeginsOnNothingFixed)
{
    for (const char* fixed : {"Szenen", "Trigger-Elemente", "Aktions-Elemente"})
        EXPECT_FALSE(Drag({fixed}, [] {})) << fixed;
    EXPECT_FALSE(Drag({"Taster Flur", "Trigger-Elemente"}, [] {}));
}

TEST_F(SceneDrag, CarriesTheNodesInTheOrderOfTheirSelection)
{
    EXPECT_TRUE(Drag({"Warm", "Taster Flur", "Nachts", "Licht Flur"}, [&] {
        const auto objects = TObjectsDragObject::FromMimeData(Content());
        ASSERT_NE(objects, nullptr);
        EXPECT_FALSE(objects->GetFlag());
        EXPECT_EQ(objects->Objects(),
                  (QList<TTreeNode*>{Node("Warm"), Node("Taster Flur"), Node("Nachts"), Node("Licht Flur")}));
    }));
}

TEST_F(SceneDrag, CarriesNothingForOthersWithASingleDatapointOrStep)
{
    for (const char* node : {"Taster Flur", "Heizung", "Warm"}) {
        EXPECT_TRUE(Drag({node}, [&] {
            EXPECT_FALSE(TPropertyDragObject::FromMimeData(Content()).has_value());
            EXPECT_EQ(TObjectsDragObject::FromMimeData(Content()), nullptr);
            EXPECT_FALSE(Content()->hasText());
        })) << node;
    }
}

TEST_F(SceneDrag, CarriesASceneAsADatapoint)
{
    Node("Abendlicht")->Item()->Name = QStringLiteral("not this one");
    const auto object = PropertiesOf("Abendlicht");
    ASSERT_TRUE(object.has_value());
    const QList<std::pair<QString, QString>> expected{{QStringLiteral("name"), QStringLiteral("0/0/1")},
                                                      {QStringLiteral("alias"), QStringLiteral("Abendlicht")},
                                                      {QStringLiteral("fixval"), QStringLiteral("1")},
                                                      {QStringLiteral("type"), QStringLiteral("1")},
                                                      {QStringLiteral("target"), QStringLiteral("eib")}};
    EXPECT_EQ(object->Properties(), expected);
}

TEST_F(SceneDrag, CarriesTheNameOfASceneThatIsNotBound)
{
    TVlSceneItem& item = *Node("Abendlicht")->Item();
    item.Link.Set(nullptr);
    item.Name = QStringLiteral("7/7/7");
    EXPECT_EQ(PropertiesOf("Abendlicht")->GetValue(QStringLiteral("name")), QStringLiteral("7/7/7"));
}

TEST_F(SceneDrag, CarriesTypeAndSourceOfTheSceneItself)
{
    auto object = PropertiesOf("Nachts");
    EXPECT_EQ(object->GetValue(QStringLiteral("type")), QStringLiteral("10"));
    EXPECT_EQ(object->GetValue(QStringLiteral("target")), QStringLiteral("modbus"));
    Node("Nachts")->Item()->Source = nsVIRTUAL;
    Node("Nachts")->Item()->DataType = dtmEIS14;
    object = PropertiesOf("Nachts");
    EXPECT_EQ(object->GetValue(QStringLiteral("type")), QStringLiteral("14"));
    EXPECT_EQ(object->GetValue(QStringLiteral("target")), QStringLiteral("virtual"));
}

TEST_F(SceneDrag, CarriesTheKeysHeldAtItsStart)
{
    EXPECT_EQ(PropertiesOf("Nachts")->GetShiftState(), Qt::NoModifier);
    EXPECT_EQ(PropertiesOf("Nachts", Qt::ControlModifier)->GetShiftState(), Qt::ControlModifier);
    EXPECT_EQ(PropertiesOf("Nachts", Qt::AltModifier)->GetShiftState(), Qt::AltModifier);
    EXPECT_EQ(PropertiesOf("Nachts")->GetShiftState(), Qt::NoModifier);
}

TEST_F(SceneDrag, RebindsASceneToATrigger)
{
    DragTo({"Zeitschalter"}, "Abendlicht");
    EXPECT_EQ(LinkOf("Abendlicht"), "Zeitschalter");
    EXPECT_EQ(Node("Abendlicht")->Caption(), QStringLiteral("Abendlicht [Zeitschalter]"));
    EXPECT_EQ(Node("Abendlicht")->Item()->Source, nsMODBUS);
    EXPECT_EQ(Node("Abendlicht")->Item()->DataType, dtmEIS10);
    EXPECT_EQ(Node("Abendlicht")->Item()->Value, QStringLiteral("1"));
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_EQ(Selected(), "Abendlicht");
    EXPECT_EQ(Frame().currentItem(), Node("Abendlicht"));
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(SceneDrag, ChangesNothingWhereTheSceneIsBoundAlready)
{
    DragTo({"Taster Flur"}, "Abendlicht");
    EXPECT_EQ(LinkOf("Abendlicht"), "Taster Flur");
    EXPECT_FALSE(Frame().IsModified());
}

TEST_F(SceneDrag, AppendsAStepForAnAction)
{
    Node("Heizung")->Item()->Value = QStringLiteral("19");
    Node("Heizung")->Item()->Delay = 7;
    DragTo({"Heizung"}, "Nachts");
    EXPECT_EQ(Below("Nachts"), "Licht aus [Licht Flur]|Neuer Eintrag [Heizung]");
    EXPECT_EQ(LinkOf("Neuer Eintrag"), "Heizung");
    EXPECT_EQ(Record("Neuer Eintrag"), "id=-1 name= alias=Neuer Eintrag value=19 delay=7 source=2 type=2 enabled=1");
    EXPECT_EQ(Selected(), "Nachts");
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(SceneDrag, LeavesASceneAsItIsForAStep)
{
    const std::string before = Outline();
    for (const auto keys : {Qt::NoModifier, Qt::ControlModifier}) {
        DragTo({"Warm"}, "Nachts", keys);
        EXPECT_EQ(Outline(), before);
        EXPECT_EQ(Selected(), "Nachts");
    }
    EXPECT_FALSE(Frame().IsModified());
}

TEST_F(SceneDrag, BindsAStepLikeTheStepDroppedOnIt)
{
    DragTo({"Warm"}, "Licht aus");
    EXPECT_EQ(Below("Nachts"), "Licht aus [Heizung]");
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]|Warm [Heizung]");
    EXPECT_EQ(LinkOf("Licht aus"), "Heizung");
    EXPECT_EQ(Record("Licht aus"), "id=-1 name=1/1/1 alias=Licht aus value=21 delay=5 source=2 type=2 enabled=1");
    EXPECT_EQ(Selected(), "Licht aus");
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(SceneDrag, MovesAStepBeforeAnotherWithCtrl)
{
    DragTo({"Warm"}, "Licht aus", Qt::ControlModifier);
    EXPECT_EQ(Below("Abendlicht"), "Licht an [Licht Flur]");
    EXPECT_EQ(Below("Nachts"), "Warm [Heizung]|Licht aus [Licht Flur]");
    EXPECT_EQ(Selected(), "Licht aus");
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(SceneDrag, MovesAStepWithinItsSceneWithCtrl)
{
    DragTo({"Warm"}, "Licht an", Qt::ControlModifier);
    EXPECT_EQ(Below("Abendlicht"), "Warm [Heizung]|Licht an [Licht Flur]");
}

TEST_F(SceneDrag, TakesNoNoticeOfCtrlAtTheDrop)
{
    EXPECT_TRUE(Drag({"Warm"}, [&] {
        ASSERT_TRUE(Over().Enter(PlaceOf("Licht aus")));
        ASSERT_TRUE(Over().Move(PlaceOf("Licht aus")));
        QDropEvent drop(PlaceOf("Licht aus"), Qt::CopyAction | Qt::MoveAction, Content(), Qt::LeftButton,
                        Qt::ControlModifier);
        QCoreApplication::sendEvent(Frame().viewport(), &drop);
        EXPECT_TRUE(drop.isAccepted());
    }));
    EXPECT_EQ(Below("Nachts"), "Licht aus [Heizung]");
}

TEST_F(SceneDrag, ForgetsCtrlUntilTheNextDrag)
{
    EXPECT_TRUE(Drag(
        {"Licht an"}, [] {}, Qt::ControlModifier));
    DragTo({"Warm"}, "Licht aus");
    EXPECT_EQ(Below("Nachts"), "Licht aus [Heizung]");
}

TEST_F(SceneDrag, ChangesNothingOnTheDraggedStepItself)
{
    const std::string before = Outline();
    const std::string record = Record("Warm");
    for (const auto keys : {Qt::NoModifier, Qt::ControlModifier}) {
        DragTo({"Warm"}, "Warm", keys);
        EXPECT_EQ(Outline(), before);
        EXPECT_EQ(Record("Warm"), record);
        EXPECT_EQ(LinkOf("Warm"), "Heizung");
        EXPECT_EQ(Selected(), "Warm");
    }
    EXPECT_FALSE(Frame().IsModified());
}

TEST_F(SceneDrag, AppendsStepsForSeveralActions)
{
    Node("Heizung")->Item()->Value = QStringLiteral("19");
    DragTo({"Heizung", "Licht Flur"}, "Nachts");
    EXPECT_EQ(Below("Nachts"), "Licht aus [Licht Flur]|Aktion-2 [Heizung]|Aktion-3 [Licht Flur]");
    EXPECT_EQ(LinkOf("Aktion-2"), "Heizung");
    EXPECT_EQ(Record("Aktion-2"), "id=-1 name= alias=Aktion-2 value=19 delay=0 source=2 type=2 enabled=1");
    EXPECT_EQ(LinkOf("Aktion-3"), "Licht Flur");
    EXPECT_EQ(Selected(), "");
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(SceneDrag, AppendsScenesForSeveralTriggers)
{
    const int last = LastSceneId();
    DragTo({"Zeitschalter", "Taster Flur"}, "Szenen");
    ASSERT_EQ(Top()->Count(), 6);
    const TSceneNode* first = Top()->Child(4);
    const TSceneNode* second = Top()->Child(5);
    EXPECT_EQ(first->Caption(), QStringLiteral("Szene-%1 [Zeitschalter]").arg(last + 1));
    EXPECT_EQ(second->Caption(), QStringLiteral("Szene-%1 [Taster Flur]").arg(last + 2));
    EXPECT_EQ(first->Item()->Id, last + 1);
    EXPECT_EQ(second->Item()->Id, last + 2);
    EXPECT_EQ(first->Item()->Link.Get(), Node("Zeitschalter"));
    EXPECT_EQ(first->Item()->Source, nsMODBUS);
    EXPECT_EQ(first->Item()->DataType, dtmEIS10);
    EXPECT_EQ(first->Item()->Name, QString());
    EXPECT_EQ(Selected(), "");
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(SceneDrag, BindsNothingToTheFixedNodesAmongSeveral)
{
    DragTo({"Szenen", "Aktions-Elemente", "Heizung", "Trigger-Elemente", "Licht Flur"}, "Nachts");
    EXPECT_EQ(Below("Nachts"), "Licht aus [Licht Flur]|Aktion-2 [Heizung]|Aktion-3 [Licht Flur]");
    DragTo({"Szenen", "Trigger-Elemente", "Zeitschalter"}, "Szenen");
    EXPECT_EQ(Top()->Count(), 5);
    EXPECT_EQ(LinkOf(LastScene()), "Zeitschalter");
}

TEST_F(SceneDrag, SendsTheSectionsOfNewScenesToTheDialog)
{
    ShowProperties("Nachts");
    const int last = LastSceneId();
    DragTo({"Zeitschalter", "Taster Flur"}, "Szenen");
    EXPECT_EQ(Sections(), Frame().GetSections());
    EXPECT_EQ(Sections().value(4), QStringLiteral("Szene-%1").arg(last + 1));
    EXPECT_EQ(Sections().size(), 6);
}

TEST_F(SceneDrag, ShowsTheTargetInTheDialog)
{
    ShowProperties("Nachts");
    DragTo({"Taster Flur"}, "Nachts");
    EXPECT_EQ(TextOf("EditAlias"), "Nachts");
    EXPECT_EQ(TextOf("EditName"), "0/0/1");
    EXPECT_EQ(Field<QComboBox>("CBoxDataSource")->currentIndex(), nsEIB);
    EXPECT_FALSE(Dialog()->GetChanged());
}

TEST_F(SceneDrag, ForgetsTheDraggedNodeAfterTheDrop)
{
    for (const TAliases& nodes : {TAliases{"Heizung"}, TAliases{"Licht Flur", "Heizung"}}) {
        EXPECT_TRUE(Drag(nodes, [&] {
            EXPECT_TRUE(Over().EnterAndDrop(PlaceOf("Nachts")));
            const std::string after = Outline();
            EXPECT_FALSE(Over().EnterAndDrop(PlaceOf("Nachts")));
            EXPECT_EQ(Outline(), after);
        }));
    }
}

TEST_F(SceneDrag, ForgetsTheDraggedNodeAtTheEnd)
{
    EXPECT_TRUE(Drag({"Heizung"}, [&] { EXPECT_TRUE(Over().Enter(PlaceOf("Nachts"))); }));
    const std::string before = Outline();
    const QMimeData content;
    EXPECT_FALSE(TDraggedOver(Frame().viewport(), &content).EnterAndDrop(PlaceOf("Nachts")));
    EXPECT_EQ(Outline(), before);
}

TEST_F(SceneDrag, IsRefusedWhenItsNodeIsDeletedMeanwhile)
{
    for (const char* node : {"Warm", "Heizung", "Taster Flur"}) {
        EXPECT_TRUE(Drag({node}, [&] {
            Frame().RemoveBranches({Node(node)});
            const std::string before = Outline();
            EXPECT_FALSE(Over().EnterAndDrop(PlaceOf("Nachts")));
            EXPECT_FALSE(Over().EnterAndDrop(PlaceOf("Licht aus")));
            EXPECT_EQ(Outline(), before);
        })) << node;
    }
}

TEST_F(SceneDrag, IsRefusedWhenTheTreeIsLoadedAnewMeanwhile)
{
    EXPECT_TRUE(Drag({"Licht Flur", "Heizung"}, [&] {
        Frame().MenuAction_Reload();
        Frame().expandAll();
        const std::string before = Outline();
        EXPECT_FALSE(Over().EnterAndDrop(PlaceOf("Nachts")));
        EXPECT_EQ(Outline(), before);
    }));
}

TEST_F(SceneDrag, LeavesOutNodesOfSeveralThatAreDeletedMeanwhile)
{
    EXPECT_TRUE(Drag({"Licht Flur", "Heizung"}, [&] {
        Frame().RemoveBranches({Node("Licht Flur")});
        EXPECT_TRUE(Over().EnterAndDrop(PlaceOf("Nachts")));
    }));
    EXPECT_EQ(LastScene()->Child(1)->Caption(), QStringLiteral("Aktion-2 [Heizung]"));
    EXPECT_EQ(LastScene()->Count(), 2);
}

TEST_F(SceneDrag, IsRefusedByAnotherFrame)
{
    const auto other = MakeFrame();
    const std::string before = OutlineOf(other->Top()).join(u'\n').toStdString();
    const QPoint scene = other->visualItemRect(NodeOf(*other, "Nachts")).center();
    const QPoint top = other->visualItemRect(other->Top()).center();
    for (const TAliases& nodes : {TAliases{"Heizung"}, TAliases{"Abendlicht"}, TAliases{"Licht Flur", "Heizung"},
                                  TAliases{"Zeitschalter", "Taster Flur"}}) {
        EXPECT_TRUE(Drag(nodes, [&] {
            const TDraggedOver dragged(other->viewport(), Content());
            EXPECT_FALSE(dragged.EnterAndDrop(scene));
            EXPECT_FALSE(dragged.EnterAndDrop(top));
        }));
    }
    EXPECT_EQ(OutlineOf(other->Top()).join(u'\n').toStdString(), before);
    EXPECT_FALSE(other->IsModified());
}

TEST_F(SceneDrag, IsDroppedByTheMouse)
{
    EXPECT_TRUE(Drag({"Heizung"}, [&] {
        const TMouse mouse(Frame().viewport());
        mouse.Move(PlaceOf("Abendlicht"));
        mouse.Move(PlaceOf("Nachts"));
        mouse.Release(PlaceOf("Nachts"));
        QCoreApplication::processEvents();
    }));
    EXPECT_EQ(Below("Nachts"), "Licht aus [Licht Flur]|Neuer Eintrag [Heizung]");
    EXPECT_EQ(Selected(), "Nachts");
}

TEST_F(SceneDrag, IsCancelledWithTheEscapeKey)
{
    const std::string before = Outline();
    EXPECT_TRUE(Drag({"Heizung"}, [&] {
        const TMouse mouse(Frame().viewport());
        mouse.Move(PlaceOf("Nachts"));
        QTest::keyClick(Frame().viewport(), Qt::Key_Escape);
    }));
    EXPECT_EQ(Outline(), before);
    EXPECT_EQ(Selected(), "Heizung");
    EXPECT_FALSE(Frame().IsModified());
}
