#include "ScheduleNodes.h"

#include "ScheduleFiles.h"

#include <gtest/gtest.h>

namespace
{

TScheduleNode* Append(TScheduleNode* parent, const char* caption)
{
    TScheduleNode* node = MakeScheduleNode(QString::fromUtf8(caption), parent->Level() + 1).release();
    parent->addChild(node);
    return node;
}

class ScheduleNodes : public testing::Test
{
protected:
    std::unique_ptr<TScheduleNode> m_root = MakeScheduleRoot();
};

} // namespace

TEST(NodeData, StartsWithItsDefaults)
{
    const TVlNodeData data;
    EXPECT_EQ(data.Id, -1);
    EXPECT_EQ(data.Source, nsEIB);
    EXPECT_EQ(data.DataType, dtmEIS1);
    EXPECT_TRUE(data.Enabled);
    EXPECT_EQ(data.Access, 5);
    EXPECT_EQ(data.Name, QString());
    EXPECT_EQ(data.Alias, QString());
    EXPECT_EQ(data.MinVal, QString());
    EXPECT_EQ(data.MaxVal, QString());
}

TEST(NodeData, DiffersInEveryField)
{
    const TVlNodeData data;
    const auto differs = [&](auto change) {
        TVlNodeData other = data;
        change(other);
        return other != data;
    };
    EXPECT_FALSE(differs([](TVlNodeData&) {}));
    EXPECT_TRUE(differs([](TVlNodeData& other) { other.Id = 0; }));
    EXPECT_TRUE(differs([](TVlNodeData& other) { other.Source = nsVIRTUAL; }));
    EXPECT_TRUE(differs([](TVlNodeData& other) { other.DataType = dtmEIS11; }));
    EXPECT_TRUE(differs([](TVlNodeData& other) { other.Enabled = false; }));
    EXPECT_TRUE(differs([](TVlNodeData& other) { other.Access = 0; }));
    EXPECT_TRUE(differs([](TVlNodeData& other) { other.Name = QStringLiteral("n"); }));
    EXPECT_TRUE(differs([](TVlNodeData& other) { other.Alias = QStringLiteral("a"); }));
    EXPECT_TRUE(differs([](TVlNodeData& other) { other.MinVal = QStringLiteral("0"); }));
    EXPECT_TRUE(differs([](TVlNodeData& other) { other.MaxVal = QStringLiteral("1"); }));
}

TEST_F(ScheduleNodes, BeginWithOneRoot)
{
    EXPECT_EQ(OutlineOf(m_root.get()), QStringList({QStringLiteral("Wochenschaltplan")}));
    EXPECT_EQ(m_root->ImageIndex(), 0);
    EXPECT_EQ(m_root->SelectedIndex(), 0);
    EXPECT_EQ(m_root->Data(), nullptr);
    EXPECT_EQ(m_root->GroupAccess(), 0);
}

TEST_F(ScheduleNodes, AreWhatTheirLevelSays)
{
    TScheduleNode* group = Append(m_root.get(), "g");
    TScheduleNode* datapoint = Append(group, "d");
    TScheduleNode* entry = Append(datapoint, "e");
    const auto kinds = [](const TScheduleNode* node) {
        return QList<bool>{node->IsGroup(), node->IsDatapoint(), node->IsEntry()};
    };
    EXPECT_EQ(kinds(m_root.get()), QList<bool>({false, false, false}));
    EXPECT_EQ(kinds(group), QList<bool>({true, false, false}));
    EXPECT_EQ(kinds(datapoint), QList<bool>({false, true, false}));
    EXPECT_EQ(kinds(entry), QList<bool>({false, false, true}));
    EXPECT_EQ(kinds(Append(entry, "x")), QList<bool>({false, false, false}));
}

TEST_F(ScheduleNodes, BecomeWhatTheyAreWhereTheyAreMovedTo)
{
    TScheduleNode* group = Append(m_root.get(), "g");
    TScheduleNode* datapoint = Append(group, "d");
    ASSERT_TRUE(datapoint->MoveTo(m_root.get(), naAddChild));
    EXPECT_TRUE(datapoint->IsGroup());
    EXPECT_EQ(datapoint->GroupAccess(), 0);
    ASSERT_TRUE(group->MoveTo(datapoint, naAddChild));
    EXPECT_TRUE(group->IsDatapoint());
    EXPECT_EQ(group->Data(), nullptr);
}

TEST_F(ScheduleNodes, GetARecordWithTheCaptionAsAliasAmongTheDatapointsOnly)
{
    TScheduleNode* group = Append(m_root.get(), "g");
    TScheduleNode* datapoint = Append(group, "Küche");
    EXPECT_EQ(RecordOf(datapoint),
              QStringLiteral("id=-1 source=0 type=0 enabled=1 access=5 name= alias=Küche min= max="));
    EXPECT_EQ(datapoint->Caption(), QStringLiteral("Küche"));
    EXPECT_EQ(group->Data(), nullptr);
    EXPECT_EQ(Append(datapoint, "e")->Data(), nullptr);
    EXPECT_EQ(MakeScheduleNode(QStringLiteral("r"), slRoot)->Data(), nullptr);
}

TEST_F(ScheduleNodes, HaveTheImageOfTheirLevel)
{
    TScheduleNode* group = Append(m_root.get(), "g");
    TScheduleNode* datapoint = Append(group, "d");
    TScheduleNode* entry = Append(datapoint, "e");
    EXPECT_EQ(group->ImageIndex(), 1);
    EXPECT_EQ(datapoint->ImageIndex(), 2);
    EXPECT_EQ(entry->ImageIndex(), 3);
    EXPECT_EQ(entry->SelectedIndex(), 3);
}

TEST_F(ScheduleNodes, AreCaptionedByTheAliasOfTheirRecord)
{
    TVlNodeData data;
    data.Alias = QStringLiteral("Licht");
    data.Name = QStringLiteral("1/1/1");
    const TScheduleNode node(data, slDatapoint);
    EXPECT_EQ(node.Caption(), QStringLiteral("Licht"));
    ASSERT_NE(node.Data(), nullptr);
    EXPECT_EQ(*node.Data(), data);
}

TEST_F(ScheduleNodes, KeepTheAccessOfTheirGroup)
{
    TScheduleNode* group = Append(m_root.get(), "g");
    EXPECT_EQ(group->GroupAccess(), 0);
    group->SetGroupAccess(-7);
    EXPECT_EQ(group->GroupAccess(), -7);
}

TEST_F(ScheduleNodes, GetNewImagesWhereTheyAreMovedTo)
{
    TScheduleNode* group = Append(m_root.get(), "g");
    TScheduleNode* other = Append(m_root.get(), "h");
    TScheduleNode* datapoint = Append(other, "d");
    TScheduleNode* entry = Append(datapoint, "e");
    ASSERT_TRUE(other->MoveTo(group, naAddChild));
    RefreshImages(other);
    EXPECT_EQ(other->ImageIndex(), 2);
    EXPECT_EQ(datapoint->ImageIndex(), 3);
    EXPECT_EQ(entry->ImageIndex(), 4);
    ASSERT_TRUE(other->MoveTo(m_root.get(), naAddChild));
    RefreshImages(other);
    EXPECT_EQ(other->ImageIndex(), 1);
    EXPECT_EQ(datapoint->ImageIndex(), 2);
    EXPECT_EQ(entry->ImageIndex(), 3);
}

TEST_F(ScheduleNodes, AreCounted)
{
    EXPECT_EQ(CountsOf(nullptr), QStringLiteral("0 Gruppen, 0 Datenpunkte, 0 Einträge"));
    EXPECT_EQ(CountsOf(m_root.get()), QStringLiteral("0 Gruppen, 0 Datenpunkte, 0 Einträge"));
    Append(m_root.get(), "empty");
    for (int g = 0; g < 2; ++g) {
        TScheduleNode* group = Append(m_root.get(), "g");
        Append(group, "empty");
        for (int d = 0; d < 3; ++d) {
            TScheduleNode* datapoint = Append(group, "d");
            for (int e = 0; e < 4; ++e)
                Append(Append(datapoint, "e"), "deeper");
        }
    }
    EXPECT_EQ(CountsOf(m_root.get()), QStringLiteral("3 Gruppen, 8 Datenpunkte, 24 Einträge"));
}
