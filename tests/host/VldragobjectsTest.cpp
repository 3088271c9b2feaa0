#include "Vldragobjects.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

namespace
{

const auto PropertiesFormat = QStringLiteral("application/x-velmora-properties");

// What another process sees: the bytes of every format, and nothing else.
std::unique_ptr<QMimeData> InAnotherProcess(const QMimeData& data)
{
    auto copy = std::make_unique<QMimeData>();
    const QStringList formats = data.formats();
    for (const QString& format : formats)
        copy->setData(format, data.data(format));
    return copy;
}

std::optional<TPropertyDragObject> Travelled(const TPropertyDragObject& object)
{
    const std::unique_ptr<QMimeData> data(object.ToMimeData());
    return TPropertyDragObject::FromMimeData(InAnotherProcess(*data).get());
}

std::optional<TPropertyDragObject> FromBytes(const QByteArray& bytes)
{
    QMimeData data;
    data.setData(PropertiesFormat, bytes);
    return TPropertyDragObject::FromMimeData(&data);
}

} // namespace

TEST(PropertyDragObject, GivesValuesByName)
{
    TPropertyDragObject object;
    object.Add(QStringLiteral("name"), QStringLiteral("1/2/3"));
    object.Add(QStringLiteral("type"), QStringLiteral("14"));
    EXPECT_EQ(object.GetValue(QStringLiteral("name")), QStringLiteral("1/2/3"));
    EXPECT_EQ(object.GetValue(QStringLiteral("TYPE")), QStringLiteral("14"));
}

TEST(PropertyDragObject, GivesTheEmptyTextForANameThatIsNotThere)
{
    TPropertyDragObject object;
    EXPECT_EQ(object.GetValue(QStringLiteral("name")), QString());
    object.Add(QStringLiteral("name"), QStringLiteral("1/2/3"));
    EXPECT_EQ(object.GetValue(QStringLiteral("alias")), QString());
    EXPECT_EQ(object.GetValue(QString()), QString());
}

TEST(PropertyDragObject, GivesTheFirstOfSeveralValues)
{
    TPropertyDragObject object;
    object.Add(QStringLiteral("name"), QString());
    object.Add(QStringLiteral("Name"), QStringLiteral("2"));
    EXPECT_EQ(object.GetValue(QStringLiteral("name")), QString());
    EXPECT_EQ(object.Properties().size(), 2);
}

TEST(PropertyDragObject, TravelsBetweenProcesses)
{
    TPropertyDragObject object;
    object.Add(QStringLiteral("label"), QStringLiteral("Küche „Süd“ 5 €"));
    object.Add(QStringLiteral("name"), QStringLiteral("1/2/3"));
    object.Add(QStringLiteral("name"), QStringLiteral("zweiter"));
    const auto travelled = Travelled(object);
    ASSERT_TRUE(travelled.has_value());
    EXPECT_EQ(travelled->Properties(), object.Properties());
}

TEST(PropertyDragObject, KeepsOddTextsOnItsWay)
{
    TPropertyDragObject object;
    object.Add(QString(), QStringLiteral("ohne Namen"));
    object.Add(QStringLiteral("leer"), QString());
    object.Add(QStringLiteral("quotes"), QStringLiteral("\"'\\\\\" </name> &amp; = %20 \r\n\t"));
    object.Add(QStringLiteral("zero"), QString(QChar(0)) + QStringLiteral("b\u0001\u0080"));
    object.Add(QStringLiteral("lamp"), QStringLiteral("💡 \u2028"));
    object.Add(QStringLiteral("blanks"), QStringLiteral("  a  "));
    object.Add(QStringLiteral("long"), QString(100000, u'ä'));
    const auto travelled = Travelled(object);
    ASSERT_TRUE(travelled.has_value());
    EXPECT_EQ(travelled->Properties(), object.Properties());
}

TEST(PropertyDragObject, KeepsTheShiftStateOnItsWay)
{
    TPropertyDragObject object;
    EXPECT_EQ(object.GetShiftState(), Qt::NoModifier);
    for (const auto state : {Qt::KeyboardModifiers(Qt::NoModifier), Qt::ShiftModifier | Qt::ControlModifier,
                             Qt::AltModifier | Qt::MetaModifier | Qt::KeypadModifier}) {
        object.SetShiftState(state);
        const auto travelled = Travelled(object);
        ASSERT_TRUE(travelled.has_value());
        EXPECT_EQ(travelled->GetShiftState(), state);
    }
}

TEST(PropertyDragObject, TravelsWithoutProperties)
{
    const auto travelled = Travelled(TPropertyDragObject());
    ASSERT_TRUE(travelled.has_value());
    EXPECT_TRUE(travelled->Properties().isEmpty());
}

TEST(PropertyDragObject, IsNotThereInOtherData)
{
    EXPECT_FALSE(TPropertyDragObject::FromMimeData(nullptr).has_value());
    QMimeData data;
    EXPECT_FALSE(TPropertyDragObject::FromMimeData(&data).has_value());
    data.setText(QStringLiteral("{\"properties\":[]}"));
    EXPECT_FALSE(TPropertyDragObject::FromMimeData(&data).has_value());
}

TEST(PropertyDragObject, IsNotThereInDamagedData)
{
    for (const char* bytes : {"", "{", "[]", "5", "{}", "{\"shift\":0}", "{\"properties\":5}", "{\"properties\":{}}",
                              "{\"properties\":[5]}", "{\"properties\":[[]]}", "{\"properties\":[[\"name\"]]}",
                              "{\"properties\":[[\"name\",5]]}", "{\"properties\":[[\"a\",\"b\"],[1,\"c\"]]}"})
        EXPECT_FALSE(FromBytes(bytes).has_value()) << bytes;
}

TEST(PropertyDragObject, TakesNothingButKeysForItsShiftState)
{
    const auto object = FromBytes("{\"shift\":33554433,\"properties\":[]}");
    ASSERT_TRUE(object.has_value());
    EXPECT_EQ(object->GetShiftState(), Qt::ShiftModifier);
    const auto text = FromBytes("{\"shift\":\"x\",\"properties\":[]}");
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(text->GetShiftState(), Qt::NoModifier);
}

TEST(ObjectsDragObject, GivesItsNodesInTheOrderOfAdding)
{
    TTreeNode a;
    TTreeNode b;
    TTreeNode c;
    TObjectsDragObject object(false);
    object.Add(&b);
    object.Add(&c);
    object.Add(&a);
    EXPECT_EQ(object.Objects(), (QList<TTreeNode*>{&b, &c, &a}));
}

TEST(ObjectsDragObject, KeepsItsFlag)
{
    EXPECT_FALSE(TObjectsDragObject(false).GetFlag());
    EXPECT_TRUE(TObjectsDragObject(true).GetFlag());
}

TEST(ObjectsDragObject, DropsNodesThatAreDeletedOnTheWay)
{
    auto a = std::make_unique<TTreeNode>();
    TTreeNode b;
    auto* below = new TTreeNode;
    a->addChild(below);
    TObjectsDragObject object(false);
    object.Add(a.get());
    object.Add(&b);
    object.Add(below);
    a.reset();
    EXPECT_EQ(object.Objects(), QList<TTreeNode*>{&b});
}

TEST(ObjectsDragObject, LeavesItsNodesAliveInTheEnd)
{
    TTreeNode a(QStringLiteral("a"));
    {
        TObjectsDragObject object(true);
        object.Add(&a);
    }
    EXPECT_EQ(a.Caption(), QStringLiteral("a"));
}

TEST(ObjectsDragObject, TravelsWithinTheProcess)
{
    TTreeNode a;
    auto object = std::make_shared<TObjectsDragObject>(false);
    object->Add(&a);
    const std::unique_ptr<QMimeData> data(TObjectsDragObject::ToMimeData(object));
    EXPECT_FALSE(data->formats().isEmpty());
    EXPECT_EQ(TObjectsDragObject::FromMimeData(data.get()), object);
}

TEST(ObjectsDragObject, LivesAsLongAsItsDataDoes)
{
    TTreeNode a;
    auto object = std::make_shared<TObjectsDragObject>(false);
    object->Add(&a);
    const std::unique_ptr<QMimeData> data(TObjectsDragObject::ToMimeData(object));
    object.reset();
    const auto travelled = TObjectsDragObject::FromMimeData(data.get());
    ASSERT_NE(travelled, nullptr);
    EXPECT_EQ(travelled->Objects(), QList<TTreeNode*>{&a});
}

TEST(ObjectsDragObject, IsRefusedFromAnotherProcess)
{
    const std::unique_ptr<QMimeData> data(TObjectsDragObject::ToMimeData(std::make_shared<TObjectsDragObject>(false)));
    EXPECT_EQ(TObjectsDragObject::FromMimeData(InAnotherProcess(*data).get()), nullptr);
}

TEST(ObjectsDragObject, IsNotThereInOtherData)
{
    EXPECT_EQ(TObjectsDragObject::FromMimeData(nullptr), nullptr);
    const std::unique_ptr<QMimeData> properties(TPropertyDragObject().ToMimeData());
    EXPECT_EQ(TObjectsDragObject::FromMimeData(properties.get()), nullptr);
}

TEST(ObjectsDragObject, CarriesNoProperties)
{
    const std::unique_ptr<QMimeData> data(TObjectsDragObject::ToMimeData(std::make_shared<TObjectsDragObject>(false)));
    EXPECT_FALSE(TPropertyDragObject::FromMimeData(data.get()).has_value());
}
