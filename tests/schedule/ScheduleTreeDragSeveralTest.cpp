#include "ScheduleDrag.h"

// Drags of several nodes at once, and of a datapoint or a group.
using ScheduleDragOther = TScheduleDrag;

// Several nodes

TEST_F(ScheduleDragOther, CarriesSeveralNodesInTheOrderOfTheirSelection)
{
    EXPECT_TRUE(Drag({"Bad", "Licht", "07:05"}, [&] {
        const auto objects = TObjectsDragObject::FromMimeData(Content());
        ASSERT_NE(objects, nullptr);
        EXPECT_FALSE(objects->GetFlag());
        EXPECT_EQ(objects->Objects(), (QList<TTreeNode*>{Node("Bad"), Node("Licht"), Node("07:05")}));
    }));
}

TEST_F(ScheduleDragOther, CopiesTheEntriesAmongSeveralToTheEndOfADatapoint)
{
    for (const auto keys : {Qt::NoModifier, Qt::ControlModifier}) {
        DragTo({"05:15", "Flur", "Licht", "19:30"}, "West", keys);
        EXPECT_EQ(Below("Bad"), "05:15");
        EXPECT_EQ(Below("Flur"), "07:05|19:30");
    }
    EXPECT_EQ(Below("West"), "05:15|19:30|05:15|19:30");
    EXPECT_EQ(Frame().SelectedNode(), Node("West")->Child(3));
    EXPECT_EQ(Selected(), "19:30");
    EXPECT_TRUE(Frame().updatesEnabled());
    EXPECT_TRUE(Frame().IsModified());
}

TEST_F(ScheduleDragOther, CopiesSeveralEntriesToTheEndOfTheirOwnDatapoint)
{
    DragTo({"07:05", "19:30"}, "Flur");
    EXPECT_EQ(Below("Flur"), "07:05|19:30|07:05|19:30");
}

TEST_F(ScheduleDragOther, OfSeveralOnAnEntryChangesNothing)
{
    const std::string before = Outline();
    for (const auto keys : {Qt::NoModifier, Qt::ControlModifier}) {
        DragTo({"05:15", "Flur", "19:30"}, "06:00", keys);
        EXPECT_EQ(Outline(), before);
    }
    EXPECT_FALSE(Frame().IsModified());
}

TEST_F(ScheduleDragOther, LeavesOutEntriesOfSeveralThatAreDeletedMeanwhile)
{
    EXPECT_TRUE(Drag({"05:15", "19:30", "07:05"}, [&] {
        Frame().RemoveBranches({Node("05:15")});
        EXPECT_TRUE(Over().EnterAndDrop(PlaceOf("West")));
    }));
    EXPECT_EQ(Below("West"), "19:30|07:05");
}

// A datapoint or a group that is the selected node

TEST_F(ScheduleDragOther, OfADatapointChangesNothing)
{
    const std::string before = Outline();
    for (const char* target : {"Flur", "07:05", "Bad"}) {
        EXPECT_TRUE(DragOther("Bad", [&] { EXPECT_TRUE(Over().EnterAndDrop(PlaceOf(target))); })) << target;
        EXPECT_EQ(Outline(), before) << target;
    }
    EXPECT_FALSE(Frame().IsModified());
}

TEST_F(ScheduleDragOther, OfAGroupFromTheThirdOnCarriesItsFirstDatapoint)
{
    const auto object = PropertiesOf("Rollladen");
    ASSERT_TRUE(object.has_value());
    const QList<std::pair<QString, QString>> expected{{QStringLiteral("name"), QStringLiteral("vSued")},
                                                      {QStringLiteral("alias"), QStringLiteral("Süd")},
                                                      {QStringLiteral("fixval"), QString()},
                                                      {QStringLiteral("type"), QStringLiteral("14")},
                                                      {QStringLiteral("target"), QStringLiteral("virtual")}};
    EXPECT_EQ(object->Properties(), expected);
}

TEST_F(ScheduleDragOther, OfAGroupCarriesItsFirstNodeWithARecord)
{
    CutNode("05:15");
    PasteOn("Rollladen");
    ASSERT_EQ(Below("Rollladen"), "05:15|Süd|West");
    EXPECT_EQ(PropertiesOf("Rollladen")->GetValue(QStringLiteral("name")), QStringLiteral("vSued"));
    Node("Süd")->Data()->Source = nsMODBUS;
    Node("Süd")->Data()->DataType = dtmEIS11;
    EXPECT_EQ(PropertiesOf("Rollladen")->GetValue(QStringLiteral("target")), QStringLiteral("modbus"));
    EXPECT_EQ(PropertiesOf("Rollladen")->GetValue(QStringLiteral("type")), QStringLiteral("11"));
}

TEST_F(ScheduleDragOther, OfAGroupCarriesTheKeysHeldAtItsStart)
{
    EXPECT_EQ(PropertiesOf("Rollladen", Qt::ControlModifier)->GetShiftState(), Qt::ControlModifier);
    EXPECT_EQ(PropertiesOf("Rollladen")->GetShiftState(), Qt::NoModifier);
}

TEST_F(ScheduleDragOther, OfAGroupIsTakenByNoPlaceInTheTree)
{
    EXPECT_TRUE(DragOther("Rollladen", [&] { ExpectPlaces(false); }));
    EXPECT_FALSE(Frame().IsModified());
}

TEST_F(ScheduleDragOther, IsNotOfferedForTheFirstTwoGroupsForOneWithoutDatapointsAndForTheRoot)
{
    for (const char* node : {"Licht", "Heizung", "Urlaub", "Wochenschaltplan"})
        EXPECT_FALSE(DragOther(node, [] {})) << node;
}
