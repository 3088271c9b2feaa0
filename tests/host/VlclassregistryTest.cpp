#include "Vlclassregistry.h"

#include "TestSupport.h"

#include <QLabel>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>

namespace
{

const auto PaneClass = QStringLiteral("TTestPane");

QWidget* MakeLabel(QWidget* parent)
{
    return new QLabel(parent);
}

class ClassRegistry : public testing::Test
{
protected:
    ~ClassRegistry() override { UnregisterComponent(PaneClass); }
};

} // namespace

TEST_F(ClassRegistry, MakesComponentsOfItsClasses)
{
    RegisterComponent(PaneClass, MakeLabel);
    QWidget parent;
    QWidget* made = CreateComponent(PaneClass, &parent);
    ASSERT_NE(qobject_cast<QLabel*>(made), nullptr);
    EXPECT_EQ(made->parent(), &parent);
    EXPECT_NE(CreateComponent(PaneClass, &parent), made);
}

TEST_F(ClassRegistry, LeavesAComponentWithoutParentToItsCaller)
{
    RegisterComponent(PaneClass, MakeLabel);
    const std::unique_ptr<QWidget> made(CreateComponent(PaneClass, nullptr));
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->parent(), nullptr);
}

TEST_F(ClassRegistry, FindsClassesWithoutRegardToCase)
{
    RegisterComponent(PaneClass, MakeLabel);
    const std::unique_ptr<QWidget> made(CreateComponent(QStringLiteral("ttestPANE"), nullptr));
    EXPECT_NE(made, nullptr);
}

TEST_F(ClassRegistry, MakesNothingOfAClassThatNobodyOffers)
{
    EXPECT_EQ(CreateComponent(PaneClass, nullptr), nullptr);
    EXPECT_EQ(CreateComponent(QString(), nullptr), nullptr);
}

TEST_F(ClassRegistry, TakesTheNewFactoryOfAClassThatIsRegisteredAgain)
{
    RegisterComponent(PaneClass, MakeLabel);
    RegisterComponent(PaneClass.toUpper(), [](QWidget* parent) { return new QWidget(parent); });
    EXPECT_EQ(RegisteredComponents().filter(PaneClass, Qt::CaseInsensitive).size(), 1);
    const std::unique_ptr<QWidget> made(CreateComponent(PaneClass, nullptr));
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(qobject_cast<QLabel*>(made.get()), nullptr);
}

TEST_F(ClassRegistry, ForgetsUnregisteredClasses)
{
    RegisterComponent(PaneClass, MakeLabel);
    EXPECT_TRUE(RegisteredComponents().contains(PaneClass));
    UnregisterComponent(PaneClass.toLower());
    UnregisterComponent(PaneClass);
    EXPECT_FALSE(RegisteredComponents().contains(PaneClass));
    EXPECT_EQ(CreateComponent(PaneClass, nullptr), nullptr);
}

TEST_F(ClassRegistry, MayChangeWhileAComponentIsMade)
{
    const auto captured = std::make_shared<int>(5);
    int seen = 0;
    RegisterComponent(PaneClass, [captured, &seen](QWidget* parent) {
        UnregisterComponent(PaneClass);
        for (int i = 0; i < 20; ++i)
            RegisterComponent(QStringLiteral("TTestPane%1").arg(i), MakeLabel);
        seen = *captured;
        return new QWidget(parent);
    });
    const std::unique_ptr<QWidget> made(CreateComponent(PaneClass, nullptr));
    EXPECT_NE(made, nullptr);
    EXPECT_EQ(seen, 5);
    for (int i = 0; i < 20; ++i)
        UnregisterComponent(QStringLiteral("TTestPane%1").arg(i));
}

TEST(ClientRegistry, KnowsTheClassOfAProgId)
{
    TClientRegistry registry;
    registry.RegisterComponentClass(QStringLiteral("Velmora.MenuTree.1"), QStringLiteral("TMenuTreeFrame"));
    EXPECT_EQ(registry.ClassOf(QStringLiteral("Velmora.MenuTree.1")), QStringLiteral("TMenuTreeFrame"));
    EXPECT_EQ(registry.ClassOf(QStringLiteral("velmora.menutree.1")), QStringLiteral("TMenuTreeFrame"));
}

TEST(ClientRegistry, TakesEveryOtherNameForAClass)
{
    const TClientRegistry registry;
    EXPECT_EQ(registry.ClassOf(QStringLiteral("TMenuTreeFrame")), QStringLiteral("TMenuTreeFrame"));
    EXPECT_EQ(registry.ClassOf(QString()), QString());
}

TEST(ClientRegistry, TakesTheNewClassOfAProgIdThatIsRegisteredAgain)
{
    TClientRegistry registry;
    registry.RegisterComponentClass(QStringLiteral("Velmora.MenuTree.1"), QStringLiteral("TOld"));
    registry.RegisterComponentClass(QStringLiteral("VELMORA.MENUTREE.1"), QStringLiteral("TNew"));
    EXPECT_EQ(registry.ClassOf(QStringLiteral("Velmora.MenuTree.1")), QStringLiteral("TNew"));
}

TEST(ClientRegistry, GivesTheInterfacesThatItHas)
{
    TClientRegistry registry;
    void* result = nullptr;
    EXPECT_TRUE(registry.QueryInterface(IID_IInterface, &result));
    EXPECT_EQ(result, static_cast<IRegisterClient*>(&registry));
    result = nullptr;
    EXPECT_TRUE(registry.QueryInterface(IID_IRegisterClient, &result));
    static_cast<IRegisterClient*>(result)->RegisterComponentClass(QStringLiteral("A.B.1"), QStringLiteral("TB"));
    EXPECT_EQ(registry.ClassOf(QStringLiteral("A.B.1")), QStringLiteral("TB"));
}

TEST(ClientRegistry, ClearsTheResultForAnInterfaceThatItDoesNotHave)
{
    TClientRegistry registry;
    int something = 0;
    void* result = &something;
    EXPECT_FALSE(registry.QueryInterface(TGuid{.Data1 = 1}, &result));
    EXPECT_EQ(result, nullptr);
}

TEST(ClientRegistry, CountsReferencesAndOutlivesThem)
{
    TClientRegistry registry;
    EXPECT_EQ(registry.AddRef(), 1);
    EXPECT_EQ(registry.AddRef(), 2);
    EXPECT_EQ(registry.Release(), 1);
    EXPECT_EQ(registry.Release(), 0);
    registry.RegisterComponentClass(QStringLiteral("A.B.1"), QStringLiteral("TB"));
    EXPECT_EQ(registry.ClassOf(QStringLiteral("A.B.1")), QStringLiteral("TB"));
}

TEST(ComponentPalette, HoldsClassesByPageInTheirOrder)
{
    const QString page = QStringLiteral("Test %1").arg(__LINE__);
    RegisterOnPalette(page, QStringLiteral("TB"));
    RegisterOnPalette(page, QStringLiteral("TA"));
    RegisterOnPalette(page + u'x', QStringLiteral("TC"));
    EXPECT_EQ(PaletteClasses(page), (QStringList{QStringLiteral("TB"), QStringLiteral("TA")}));
}

TEST(ComponentPalette, HoldsAClassOnceOnAPage)
{
    const QString page = QStringLiteral("Test %1").arg(__LINE__);
    RegisterOnPalette(page, QStringLiteral("TB"));
    RegisterOnPalette(page, QStringLiteral("tb"));
    EXPECT_EQ(PaletteClasses(page), QStringList{QStringLiteral("TB")});
}

TEST(ComponentPalette, HasNothingOnAnUnknownPage)
{
    EXPECT_TRUE(PaletteClasses(QStringLiteral("Niemand")).isEmpty());
}
