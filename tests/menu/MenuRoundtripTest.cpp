#include "MenuDocument.h"

#include "MenuFiles.h"

#include <gtest/gtest.h>

namespace
{

const auto MenuRoundtrips = QStringLiteral("roundtrip/menu");
const auto LinkRoundtrips = QStringLiteral("roundtrip/links");

QByteArray Sample(const char* name)
{
    return ReadAll(QStringLiteral(VELMORA_EXAMPLES "/musterhaus/_menu/") + QString::fromLatin1(name));
}

// What is written of a menu after it was read; empty when it was not.
QByteArray Rewritten(const QByteArray& document)
{
    auto content = TMenuFile().Menu(document);
    if (!content)
        return {};
    return WrittenMenu(WithItems(std::move(content->Items)).get(), {.Logo = content->Logo.value_or(QString())});
}

QByteArray RewrittenLinks(const QByteArray& document)
{
    auto links = TMenuFile().Links(document);
    return links ? WrittenLinks(WithLinks(std::move(*links)).get()) : QByteArray();
}

// Every node of a branch with its level, image and record.
QStringList Records(const TMenuNode* root)
{
    QStringList records;
    for (const TTreeNode* node = root->Next(); node; node = node->Next())
        records.append(QStringLiteral("%1 %2 %3").arg(node->Level()).arg(node->ImageIndex()).arg(RecordOf(node)));
    return records;
}

class MenuRoundtrip : public testing::TestWithParam<QString>
{};

class LinkRoundtrip : public testing::TestWithParam<QString>
{};

} // namespace

TEST_P(MenuRoundtrip, GivesTheSameBytes)
{
    const QByteArray before = MenuCase(MenuRoundtrips, GetParam());
    ASSERT_FALSE(before.isEmpty());
    EXPECT_EQ(Rewritten(before), before);
}

TEST_P(MenuRoundtrip, GivesTheSameTree)
{
    const TMenuFile file;
    auto content = file.Menu(MenuCase(MenuRoundtrips, GetParam()));
    ASSERT_TRUE(content);
    const auto root = WithItems(std::move(content->Items));
    auto again = file.Menu(WrittenMenu(root.get()));
    ASSERT_TRUE(again);
    EXPECT_EQ(Records(WithItems(std::move(again->Items)).get()), Records(root.get()));
}

INSTANTIATE_TEST_SUITE_P(Cases, MenuRoundtrip, testing::ValuesIn(MenuCases(MenuRoundtrips)),
                         [](const auto& test) { return test.param.toStdString(); });

TEST_P(LinkRoundtrip, GivesTheSameBytes)
{
    const QByteArray before = MenuCase(LinkRoundtrips, GetParam());
    ASSERT_FALSE(before.isEmpty());
    EXPECT_EQ(RewrittenLinks(before), before);
}

TEST_P(LinkRoundtrip, GivesTheSameTree)
{
    const TMenuFile file;
    auto links = file.Links(MenuCase(LinkRoundtrips, GetParam()));
    ASSERT_TRUE(links);
    const auto root = WithLinks(std::move(*links));
    auto again = file.Links(WrittenLinks(root.get()));
    ASSERT_TRUE(again);
    EXPECT_EQ(Records(WithLinks(std::move(*again)).get()), Records(root.get()));
}

INSTANTIATE_TEST_SUITE_P(Cases, LinkRoundtrip, testing::ValuesIn(MenuCases(LinkRoundtrips)),
                         [](const auto& test) { return test.param.toStdString(); });

TEST(MenuRoundtripCases, AreThere)
{
    EXPECT_EQ(MenuCases(MenuRoundtrips).size(), 9);
    EXPECT_EQ(MenuCases(LinkRoundtrips).size(), 8);
}

TEST(SampleMenu, GivesTheSameBytes)
{
    const QByteArray before = Sample("menu.xml");
    EXPECT_TRUE(Rewritten(before) == before);
    EXPECT_GT(before.count("class=\"main\""), 11);
    EXPECT_GT(before.count("class=\"sub\""), 59);
}

TEST(SampleLinks, GiveTheSameBytes)
{
    const QByteArray before = Sample("dplinks.xml");
    EXPECT_TRUE(RewrittenLinks(before) == before);
    EXPECT_GT(before.count("<link "), 29);
}

TEST(SavedMenu, DropsWhatNoEditorWrites)
{
    EXPECT_EQ(Rewritten("<menu version='2' levels='1' helpbase='x' alarm='yes'><!-- c -->text"
                        "<menuitem id='x' caption='a' room='3'>text</menuitem><more/></menu>"),
              MenuText({R"(<menuitem id="mi0" class="main" caption="a" title="" link="" help="" access="0" >)",
                        "</menuitem>"}));
}

TEST(SavedMenu, IsWithoutTheItemsThatBelongToNoMainItem)
{
    EXPECT_EQ(Rewritten("<menu><x><menuitem caption='s'/></x><menuitem caption='a'/></menu>"),
              MenuText({R"(<menuitem id="mi0" class="main" caption="a" title="" link="" help="" access="0" >)",
                        "</menuitem>"}));
}

TEST(SavedMenu, CannotBeReadWhereATextHoldsWhatNothingEscapes)
{
    for (const char* text : {"a\"b", "a & b", "a < b"}) {
        const auto root = MakeMenuRoot();
        root->addChild(new TMenuNode(TVlMenuItem{.Title = QString::fromLatin1(text)}, miMainItem));
        EXPECT_EQ(Rewritten(WrittenMenu(root.get())), QByteArray()) << text;
    }
}
