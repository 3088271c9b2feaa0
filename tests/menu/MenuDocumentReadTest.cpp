#include "MenuDocument.h"

#include "MenuFiles.h"

#include <gtest/gtest.h>

namespace
{

class ReadMenuTest : public testing::Test
{
protected:
    bool Read(const QByteArray& content)
    {
        m_content = m_file.Menu(content);
        return m_content.has_value();
    }
    // A menu with this inside its root.
    void ReadItems(const QByteArray& items) { ASSERT_TRUE(Read("<menu>" + items + "</menu>")) << items.toStdString(); }
    // The items one after the other, each indented by its level below the root.
    std::string Items() const { return OutlineOf(m_content->Items).join(u'|').toStdString(); }
    std::string Strays() const { return OutlineOf(m_content->Strays).join(u'|').toStdString(); }
    const TTreeNode* Main(std::size_t index) const { return m_content->Items.at(index).get(); }

    // The record of an item that is read from an element with these attributes.
    TVlMenuItem ReadItem(const QByteArray& attributes)
    {
        ReadItems("<menuitem " + attributes + "/>");
        return *static_cast<const TMenuNode*>(Main(0))->Item();
    }

    TMenuFile m_file;
    std::optional<TMenuContent> m_content;
};

} // namespace

TEST_F(ReadMenuTest, ReadsMainAndSubItemsInTheirOrder)
{
    ASSERT_TRUE(Read(MenuText(
        {R"(<menuitem id="mi0" class="main" caption="Haus" title="Alles" link="/h.html" help="/x" access="3" >)",
         R"(<menuitem id="mi1" class="sub" caption="EG" title="" link="/eg.html" help="" access="0" />)",
         R"(<menuitem id="mi2" class="sub" caption="OG" title="t" link="" help="y" access="-1" />)", "</menuitem>",
         R"(<menuitem id="mi3" class="main" caption="Garten" title="" link="" help="" access="0" >)", "</menuitem>"},
        "/logo.png")));
    EXPECT_EQ(Items(), "Haus|  EG|  OG|Garten");
    EXPECT_EQ(Strays(), "");
    EXPECT_EQ(m_content->Logo, QStringLiteral("/logo.png"));
    EXPECT_EQ(RecordOf(Main(0)),
              QStringLiteral("kind=0 type=0 source=0 access=3 caption=Haus title=Alles link=/h.html help=/x"));
    EXPECT_EQ(RecordOf(Main(0)->Child(1)),
              QStringLiteral("kind=0 type=0 source=0 access=-1 caption=OG title=t link= help=y"));
}

TEST_F(ReadMenuTest, GivesMainAndSubItemsTheirImages)
{
    ReadItems("<menuitem caption='a'><menuitem caption='b'/></menuitem>");
    EXPECT_EQ(Main(0)->ImageIndex(), 0);
    EXPECT_EQ(Main(0)->SelectedIndex(), 0);
    EXPECT_EQ(Main(0)->Child(0)->ImageIndex(), 1);
    EXPECT_EQ(Main(0)->Child(0)->SelectedIndex(), 1);
}

TEST_F(ReadMenuTest, IsNothingForWhatIsNoFile)
{
    for (const QString& path : {QString(), QStringLiteral("/none/menu.xml"), m_file.Directory(), m_file.Path()})
        EXPECT_FALSE(ReadMenu(path)) << path.toStdString();
}

TEST_F(ReadMenuTest, TakesPackagePaths)
{
    m_file.Write("<menu><menuitem caption='a'/></menu>");
    m_content = ReadMenu(m_file.Path().replace(u'/', u'\\'));
    ASSERT_TRUE(m_content);
    EXPECT_EQ(Items(), "a");
}

TEST_F(ReadMenuTest, ComparesNamesWithoutRegardToCase)
{
    ASSERT_TRUE(Read("<MENU LOGO='l'><MenuItem CAPTION='c' Title='t' LINK='k' hElP='h' ACCESS='2'>"
                     "<MENUITEM Caption='d'/></MenuItem></MENU>"));
    EXPECT_EQ(Items(), "c|  d");
    EXPECT_EQ(m_content->Logo, QStringLiteral("l"));
    EXPECT_EQ(RecordOf(Main(0)), QStringLiteral("kind=0 type=0 source=0 access=2 caption=c title=t link=k help=h"));
}

TEST_F(ReadMenuTest, RefusesAnotherRoot)
{
    for (const char* root : {"menus", "men", "links", "menuitem", "xmenu"})
        EXPECT_FALSE(Read("<" + QByteArray(root) + "><menuitem caption='a'/></" + root + ">")) << root;
}

TEST_F(ReadMenuTest, ReadsAnEmptyMenu)
{
    ASSERT_TRUE(Read("<menu/>"));
    EXPECT_EQ(Items(), "");
    EXPECT_FALSE(m_content->Logo);
}

// The root's attributes

TEST_F(ReadMenuTest, ReadsAlarmAndLogoutLikeNothing)
{
    const QByteArray items = "<menuitem caption='a'><menuitem caption='b'/></menuitem></menu>";
    for (const char* root : {"<menu>", "<menu alarm=\"yes\" logout=\"yes\">", "<menu ALARM=\"YES\" logout=\"no\">"}) {
        ASSERT_TRUE(Read(root + items)) << root;
        EXPECT_EQ(Items(), "a|  b") << root;
        EXPECT_EQ(Strays(), "") << root;
        EXPECT_FALSE(m_content->Logo) << root;
        EXPECT_EQ(RecordOf(Main(0)), QStringLiteral("kind=0 type=0 source=0 access=0 caption=a title= link= help="));
    }
}

TEST_F(ReadMenuTest, TakesNothingButTheLogoFromTheRoot)
{
    ASSERT_TRUE(Read("<?xml-stylesheet type='text/xsl' href='x.xsl'?>"
                     "<menu version='9' levels='7' helpbase='/h' more='x' logo='/l.png'/>"));
    EXPECT_EQ(m_content->Logo, QStringLiteral("/l.png"));
    const auto root = WithItems(std::move(m_content->Items));
    EXPECT_EQ(WrittenMenu(root.get()), MenuText());
}

TEST_F(ReadMenuTest, KnowsNoLogoWhereItIsEmptyOrMissing)
{
    for (const char* root : {"<menu/>", "<menu logo=''/>", "<menu LOGO=\"\"/>"}) {
        ASSERT_TRUE(Read(root));
        EXPECT_FALSE(m_content->Logo) << root;
    }
    ASSERT_TRUE(Read("<menu logo=' '/>"));
    EXPECT_EQ(m_content->Logo, QStringLiteral(" "));
}

TEST_F(ReadMenuTest, KeepsTheLogoBesideAnEmptyOneOfOtherCase)
{
    ASSERT_TRUE(Read("<menu logo='a' LOGO=''/>"));
    EXPECT_EQ(m_content->Logo, QStringLiteral("a"));
    ASSERT_TRUE(Read("<menu logo='a' LOGO='b'/>"));
    EXPECT_EQ(m_content->Logo, QStringLiteral("b"));
}

TEST_F(ReadMenuTest, ReadsTheLogoInTheCodePage)
{
    ASSERT_TRUE(Read("<?xml version='1.0' encoding='ISO-8859-1'?><menu logo='K\xFC\x80&#937;&amp;'/>"));
    EXPECT_EQ(m_content->Logo, QStringLiteral("Kü€?&"));
}

// The attributes of an item

TEST_F(ReadMenuTest, LeavesDefaultsForMissingAndEmptyAttributes)
{
    const TVlMenuItem fresh;
    EXPECT_TRUE(ReadItem("") == fresh);
    EXPECT_EQ(Main(0)->Caption(), QString());
    EXPECT_TRUE(ReadItem(R"(caption="" title="" link="" help="" access="")") == fresh);
}

TEST_F(ReadMenuTest, LeavesWhatWasReadWhenAnEmptyAttributeFollows)
{
    const TVlMenuItem item = ReadItem("caption='a' CAPTION='' access='3' ACCESS='' link='l' Link=''");
    EXPECT_EQ(RecordOf(&item), QStringLiteral("kind=0 type=0 source=0 access=3 caption=a title= link=l help="));
}

TEST_F(ReadMenuTest, TakesTheLastOfAttributesThatDifferInCase)
{
    const TVlMenuItem item = ReadItem("caption='a' Caption='b' access='3' ACCESS='4'");
    EXPECT_EQ(item.Caption, QStringLiteral("b"));
    EXPECT_EQ(item.Access, 4);
}

TEST_F(ReadMenuTest, TakesAttributesInAnyOrderAndIgnoresOthers)
{
    const TVlMenuItem item = ReadItem("access='1' id='mi9' help='h' kind='2' link='l' eis='6' class='main' title='t' "
                                      "target='modbus' alias='x' name='y' caption='c'");
    EXPECT_EQ(RecordOf(&item), QStringLiteral("kind=0 type=0 source=0 access=1 caption=c title=t link=l help=h"));
}

TEST_F(ReadMenuTest, ReadsAccessThatIsNoNumberAsZero)
{
    for (const char* text : {"x", "1x", "1.5", "2147483648", "--1", "", " "})
        EXPECT_EQ(ReadItem("access='" + QByteArray(text) + "'").Access, 0) << text;
    EXPECT_EQ(ReadItem("access='20'").Access, 20);
    EXPECT_EQ(ReadItem("access='25'").Access, 25);
    EXPECT_EQ(ReadItem("access='-2147483648'").Access, -2147483647 - 1);
    EXPECT_EQ(ReadItem("access=' $10'").Access, 16);
}

TEST_F(ReadMenuTest, ReadsTextsInTheCodePage)
{
    ASSERT_TRUE(Read("<?xml version='1.0' encoding='ISO-8859-1'?><menu><menuitem caption='K\xFC"
                     "che \x80 \x84x\x93' title='&lt;a&gt; &amp; &quot;b&quot;' link='&#937;&#8364;' help='x&#10;y'/>"
                     "</menu>"));
    EXPECT_EQ(RecordOf(Main(0)), QStringLiteral("kind=0 type=0 source=0 access=0 caption=Küche € „x“ title=<a> & \"b\" "
                                                "link=?€ help=x\ny"));
    EXPECT_EQ(Main(0)->Caption(), QStringLiteral("Küche € „x“"));
}

TEST_F(ReadMenuTest, TakesBackslashesAsTheyAre)
{
    EXPECT_EQ(ReadItem("link='a\\b'").Link, QStringLiteral("a\\b"));
}

// Depths

TEST_F(ReadMenuTest, PutsItemsNestedThreeDeepBesideTheSubItemBefore)
{
    ReadItems("<menuitem caption='a'><menuitem caption='b'><menuitem caption='c'/><menuitem caption='d'/></menuitem>"
              "<menuitem caption='e'/></menuitem><menuitem caption='f'/>");
    EXPECT_EQ(Items(), "a|  b|  c|  d|  e|f");
    EXPECT_EQ(Main(0)->Child(1)->ImageIndex(), 1);
}

TEST_F(ReadMenuTest, ReadsNothingThatIsNestedDeeper)
{
    ReadItems("<menuitem caption='a'><menuitem caption='b'><menuitem caption='c'><menuitem caption='d'>"
              "<menuitem caption='e'/></menuitem></menuitem></menuitem></menuitem>");
    EXPECT_EQ(Items(), "a|  b|  c");
}

TEST_F(ReadMenuTest, ReadsTheChildrenOfOtherElementsOneLevelDeeper)
{
    ReadItems("<menuitem caption='a'/><group><menuitem caption='b'/><group><menuitem caption='c'/>"
              "<group><menuitem caption='d'/></group></group></group><menuitem caption='e'/>");
    EXPECT_EQ(Items(), "a|  b|  c|e");
    EXPECT_EQ(Strays(), "");
}

TEST_F(ReadMenuTest, CountsOtherElementsInsideItemsForTheDepth)
{
    ReadItems("<menuitem caption='a'><x><menuitem caption='b'/><x><menuitem caption='c'/></x></x></menuitem>");
    EXPECT_EQ(Items(), "a|  b");
}

TEST_F(ReadMenuTest, IgnoresWhatIsNoElement)
{
    ReadItems("text<!-- <menuitem caption='x'/> --><menuitem caption='a'>text<![CDATA[<menuitem caption='y'/>]]>"
              "<?menuitem caption='z'?></menuitem>");
    EXPECT_EQ(Items(), "a");
}

TEST_F(ReadMenuTest, KnowsNoOtherElementAsAnItem)
{
    ReadItems("<menuitems caption='a'/><item caption='b'/><menu caption='c'/><link alias='d'/>");
    EXPECT_EQ(Items(), "");
    EXPECT_EQ(Strays(), "");
}

// Sub items before any main item

TEST_F(ReadMenuTest, PutsASubItemThatComesBeforeAnyMainItemBesideTheRoots)
{
    ReadItems("<x><menuitem caption='s' access='2'/></x><menuitem caption='a'><menuitem caption='b'/></menuitem>");
    EXPECT_EQ(Strays(), "s");
    EXPECT_EQ(Items(), "a|  b");
    EXPECT_EQ(m_content->Strays.front()->ImageIndex(), 1);
    EXPECT_EQ(RecordOf(m_content->Strays.front().get()),
              QStringLiteral("kind=0 type=0 source=0 access=2 caption=s title= link= help="));
}

TEST_F(ReadMenuTest, PutsWhatFollowsASubItemBesideTheRootsBelowIt)
{
    ReadItems("<x><menuitem caption='s'/><menuitem caption='t'/><menuitem caption='u'/><menuitem caption='v'/></x>");
    EXPECT_EQ(Strays(), "s|  t|    u|    v");
    EXPECT_EQ(Items(), "");
}

TEST_F(ReadMenuTest, PutsNothingBesideTheRootsOnceThereWasAMainItem)
{
    ReadItems("<menuitem caption='a'/><x><menuitem caption='b'/></x><x><x><menuitem caption='c'/></x></x>");
    EXPECT_EQ(Items(), "a|  b|  c");
    EXPECT_EQ(Strays(), "");
}

TEST_F(ReadMenuTest, FindsASubItemBeforeAnyMainItemAlsoTwoLevelsDeep)
{
    ReadItems("<x><y><menuitem caption='s'/></y></x><menuitem caption='a'/>");
    EXPECT_EQ(Strays(), "s");
    EXPECT_EQ(Items(), "a");
}
