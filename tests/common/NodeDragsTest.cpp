#include "NodeDrags.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

namespace
{

// "name=value" for each property, in their order.
QStringList PropertiesOf(const TPropertyDragObject& object)
{
    QStringList lines;
    for (const auto& [name, value] : object.Properties())
        lines.append(name + u'=' + value);
    return lines;
}

} // namespace

TEST(NodeDrag, CarriesNothingThatAnotherPaneTakes)
{
    const auto content = MakeNodeDrag();
    EXPECT_FALSE(TPropertyDragObject::FromMimeData(content.get()));
    EXPECT_EQ(TObjectsDragObject::FromMimeData(content.get()), nullptr);
    EXPECT_FALSE(content->hasText());
    EXPECT_FALSE(content->hasUrls());
    EXPECT_EQ(content->formats().size(), 1);
}

TEST(ObjectsDrag, CarriesTheNodesInTheirOrder)
{
    TTreeNode a;
    TTreeNode b;
    const auto content = MakeObjectsDrag({&b, &a});
    const auto objects = TObjectsDragObject::FromMimeData(content.get());
    ASSERT_NE(objects, nullptr);
    EXPECT_EQ(objects->Objects(), QList<TTreeNode*>({&b, &a}));
    EXPECT_FALSE(objects->GetFlag());
    EXPECT_FALSE(TPropertyDragObject::FromMimeData(content.get()));
}

TEST(ObjectsDrag, DropsNodesThatAreDeletedOnTheWay)
{
    TTreeNode a;
    auto b = std::make_unique<TTreeNode>();
    const auto content = MakeObjectsDrag({b.get(), &a});
    b.reset();
    EXPECT_EQ(TObjectsDragObject::FromMimeData(content.get())->Objects(), QList<TTreeNode*>({&a}));
}

TEST(DatapointDrag, CarriesItsProperties)
{
    const auto content = MakeDatapointDrag({.Name = QStringLiteral("1/2/3"),
                                            .Alias = QStringLiteral("Küche"),
                                            .FixedValue = QStringLiteral("7"),
                                            .EisNumber = 14,
                                            .Source = QStringLiteral("modbus"),
                                            .ShiftState = Qt::ControlModifier});
    const auto object = TPropertyDragObject::FromMimeData(content.get());
    ASSERT_TRUE(object);
    EXPECT_EQ(PropertiesOf(*object),
              QStringList({QStringLiteral("name=1/2/3"), QStringLiteral("alias=Küche"), QStringLiteral("fixval=7"),
                           QStringLiteral("type=14"), QStringLiteral("target=modbus")}));
    EXPECT_EQ(object->GetShiftState(), Qt::ControlModifier);
}

TEST(DatapointDrag, BeginsAsABinaryOneWithoutKeys)
{
    const auto content = MakeDatapointDrag({});
    const auto object = TPropertyDragObject::FromMimeData(content.get());
    ASSERT_TRUE(object);
    EXPECT_EQ(object->GetValue(QStringLiteral("type")), QStringLiteral("1"));
    EXPECT_EQ(object->GetShiftState(), Qt::NoModifier);
}
