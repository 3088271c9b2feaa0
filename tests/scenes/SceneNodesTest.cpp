#include "SceneNodes.h"

#include "SceneFiles.h"

#include <gtest/gtest.h>

namespace
{

TSceneNode* Append(TSceneNode* parent, const char* alias, TSceneNode* link = nullptr)
{
    TVlSceneItem item;
    item.Alias = QString::fromUtf8(alias);
    item.Link.Set(link);
    auto* node = new TSceneNode(std::move(item));
    parent->addChild(node);
    node->RebuildCaption();
    return node;
}

class SceneNodes : public testing::Test
{
protected:
    TSceneNode* TriggerRoot() const { return m_top->Child(TriggerRootIndex); }
    TSceneNode* ActionRoot() const { return m_top->Child(ActionRootIndex); }

    std::unique_ptr<TSceneNode> m_top = MakeSceneTop();
};

} // namespace

TEST(SceneItem, StartsWithItsDefaults)
{
    const TVlSceneItem item;
    EXPECT_EQ(item.Id, -1);
    EXPECT_EQ(item.Link.Get(), nullptr);
    EXPECT_EQ(item.Name, QString());
    EXPECT_EQ(item.Alias, QString());
    EXPECT_EQ(item.Value, QString());
    EXPECT_EQ(item.Delay, 0);
    EXPECT_EQ(item.Source, nsEIB);
    EXPECT_EQ(item.DataType, dtmEIS1);
    EXPECT_TRUE(item.Enabled);
}

TEST_F(SceneNodes, HaveAFixedTop)
{
    EXPECT_EQ(OutlineOf(m_top.get()), QStringList({QStringLiteral("Szenen"), QStringLiteral("  Trigger-Elemente"),
                                                   QStringLiteral("  Aktions-Elemente")}));
    EXPECT_EQ(m_top->ImageIndex(), 0);
    EXPECT_EQ(TriggerRoot()->ImageIndex(), 2);
    EXPECT_EQ(ActionRoot()->ImageIndex(), 2);
    EXPECT_EQ(m_top->Item(), nullptr);
    EXPECT_EQ(TriggerRoot()->Item(), nullptr);
    EXPECT_EQ(ActionRoot()->Item(), nullptr);
}

TEST_F(SceneNodes, HaveTheRoleOfTheirPlace)
{
    EXPECT_EQ(m_top->Role(), srTop);
    EXPECT_EQ(TriggerRoot()->Role(), srTriggerRoot);
    EXPECT_EQ(ActionRoot()->Role(), srActionRoot);
    EXPECT_EQ(Append(TriggerRoot(), "t")->Role(), srTrigger);
    EXPECT_EQ(Append(ActionRoot(), "a")->Role(), srAction);
    TSceneNode* scene = Append(m_top.get(), "s");
    EXPECT_EQ(scene->Role(), srScene);
    EXPECT_EQ(Append(m_top.get(), "s2")->Role(), srScene);
    EXPECT_EQ(Append(scene, "step")->Role(), srStep);
}

TEST_F(SceneNodes, AreDatapointsUnderTheTwoRootsOnly)
{
    EXPECT_TRUE(Append(TriggerRoot(), "t")->IsDatapoint());
    EXPECT_TRUE(Append(ActionRoot(), "a")->IsDatapoint());
    TSceneNode* scene = Append(m_top.get(), "s");
    EXPECT_FALSE(scene->IsDatapoint());
    EXPECT_FALSE(Append(scene, "step")->IsDatapoint());
    EXPECT_FALSE(TriggerRoot()->IsDatapoint());
    EXPECT_FALSE(m_top->IsDatapoint());
}

TEST_F(SceneNodes, HaveTheImageOfTheirRole)
{
    EXPECT_EQ(TSceneNode::ImageOf(srTop), 0);
    EXPECT_EQ(TSceneNode::ImageOf(srScene), 1);
    EXPECT_EQ(TSceneNode::ImageOf(srTriggerRoot), 2);
    EXPECT_EQ(TSceneNode::ImageOf(srActionRoot), 2);
    EXPECT_EQ(TSceneNode::ImageOf(srAction), 3);
    EXPECT_EQ(TSceneNode::ImageOf(srStep), 3);
    EXPECT_EQ(TSceneNode::ImageOf(srTrigger), 4);
}

TEST_F(SceneNodes, ShowTheAliasWithoutALink)
{
    EXPECT_EQ(Append(m_top.get(), "Abendlicht")->Caption(), QStringLiteral("Abendlicht"));
    EXPECT_EQ(Append(m_top.get(), "")->Caption(), QString());
}

TEST_F(SceneNodes, ShowTheAliasOfTheirLinkInBrackets)
{
    TSceneNode* trigger = Append(TriggerRoot(), "Taster Flur");
    TSceneNode* scene = Append(m_top.get(), "Abendlicht", trigger);
    EXPECT_EQ(scene->Caption(), QStringLiteral("Abendlicht [Taster Flur]"));
    TSceneNode* action = Append(ActionRoot(), "Licht %s");
    EXPECT_EQ(Append(scene, "an", action)->Caption(), QStringLiteral("an [Licht %s]"));
    EXPECT_EQ(Append(m_top.get(), "", trigger)->Caption(), QStringLiteral(" [Taster Flur]"));
}

TEST_F(SceneNodes, ShowNoBracketsForALinkWithoutAnAlias)
{
    TSceneNode* trigger = Append(TriggerRoot(), "");
    EXPECT_EQ(Append(m_top.get(), "Abendlicht", trigger)->Caption(), QStringLiteral("Abendlicht"));
}

TEST_F(SceneNodes, ForgetALinkWhoseNodeIsDeleted)
{
    TSceneNode* trigger = Append(TriggerRoot(), "Taster Flur");
    TSceneNode* scene = Append(m_top.get(), "Abendlicht", trigger);
    ASSERT_NE(scene->LinkedItem(), nullptr);
    delete trigger;
    EXPECT_EQ(scene->LinkedItem(), nullptr);
    scene->RebuildCaption();
    EXPECT_EQ(scene->Caption(), QStringLiteral("Abendlicht"));
}

TEST_F(SceneNodes, KeepTheirCaptionWithoutAnItem)
{
    TriggerRoot()->RebuildCaption();
    EXPECT_EQ(TriggerRoot()->Caption(), QStringLiteral("Trigger-Elemente"));
}

TEST_F(SceneNodes, OfferTheAliasForEditing)
{
    TSceneNode* trigger = Append(TriggerRoot(), "Taster Flur");
    EXPECT_EQ(Append(m_top.get(), "Abendlicht", trigger)->EditText(), QStringLiteral("Abendlicht"));
    EXPECT_EQ(TriggerRoot()->EditText(), QStringLiteral("Trigger-Elemente"));
}

TEST_F(SceneNodes, NameTheirSections)
{
    TSceneNode* trigger = Append(TriggerRoot(), "Taster Flur");
    TSceneNode* scene = Append(m_top.get(), "Abendlicht", trigger);
    Append(scene, "step");
    Append(m_top.get(), "");
    EXPECT_EQ(SceneSections(m_top.get()),
              QStringList({QStringLiteral("Trigger-Elemente"), QStringLiteral("Aktions-Elemente"),
                           QStringLiteral("Abendlicht"), QString()}));
    EXPECT_EQ(SceneSections(nullptr), QStringList());
}

TEST_F(SceneNodes, AreCounted)
{
    EXPECT_EQ(CountsOf(nullptr), QStringLiteral("0 Trigger, 0 Aktionen, 0 Szenen, 0 Schritte"));
    EXPECT_EQ(CountsOf(m_top.get()), QStringLiteral("0 Trigger, 0 Aktionen, 0 Szenen, 0 Schritte"));
    Append(TriggerRoot(), "t");
    for (int i = 0; i < 2; ++i)
        Append(ActionRoot(), "a");
    for (int i = 0; i < 3; ++i) {
        TSceneNode* scene = Append(m_top.get(), "s");
        Append(scene, "1");
        Append(scene, "2");
    }
    EXPECT_EQ(CountsOf(m_top.get()), QStringLiteral("1 Trigger, 2 Aktionen, 3 Szenen, 6 Schritte"));
}
