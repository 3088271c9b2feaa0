#include "Vlurlname.h"

#include "TestSupport.h"

#include <QLocale>
#include <gtest/gtest.h>

namespace
{

TQueryItems ItemsOf(const QString& text)
{
    TQueryItems items;
    EXPECT_TRUE(TURLName(text).GetQueryItems(items));
    return items;
}

} // namespace

TEST(URLName, SplitsACommandTextIntoItsParts)
{
    const TURLName url(QStringLiteral("scenes://$(project)\\_config\\data?scenes=x.xml&color=255"));
    EXPECT_EQ(url.GetScheme(), QStringLiteral("scenes"));
    EXPECT_EQ(url.GetPath(), QStringLiteral("$(project)\\_config\\data"));
    TQueryItems items;
    ASSERT_TRUE(url.GetQueryItems(items));
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[0].Name, QStringLiteral("scenes"));
    EXPECT_EQ(items[0].Value, QStringLiteral("x.xml"));
    EXPECT_EQ(items[1].Name, QStringLiteral("color"));
    EXPECT_EQ(items[1].Value, QStringLiteral("255"));
}

TEST(URLName, TakesAProgIdAsScheme)
{
    const TURLName url(QStringLiteral("Velmora.MenuTree.1://%PRJPATH%\\_menu\\menu.xml"));
    EXPECT_EQ(url.GetScheme(), QStringLiteral("Velmora.MenuTree.1"));
    EXPECT_EQ(url.GetPath(), QStringLiteral("%PRJPATH%\\_menu\\menu.xml"));
}

TEST(URLName, TakesPathsAsTheyStand)
{
    EXPECT_EQ(TURLName(QStringLiteral("scenes://C:\\Häuser\\Müller & Söhne")).GetPath(),
              QStringLiteral("C:\\Häuser\\Müller & Söhne"));
    EXPECT_EQ(TURLName(QStringLiteral("scenes://%20#%41/../b//c\\")).GetPath(), QStringLiteral("%20#%41/../b//c\\"));
    EXPECT_EQ(TURLName(QStringLiteral("file:///etc/hosts")).GetPath(), QStringLiteral("/etc/hosts"));
}

TEST(URLName, NeedsNoScheme)
{
    const TURLName drive(QStringLiteral("C:\\prj\\menu.xml?root=x"));
    EXPECT_EQ(drive.GetScheme(), QString());
    EXPECT_EQ(drive.GetPath(), QStringLiteral("C:\\prj\\menu.xml"));
    EXPECT_EQ(TURLName(QStringLiteral("$(project)\\a")).GetPath(), QStringLiteral("$(project)\\a"));
    EXPECT_EQ(TURLName(QString()).GetPath(), QString());
    EXPECT_EQ(TURLName(QString()).GetScheme(), QString());
}

TEST(URLName, EndsTheSchemeAtItsFirstEnd)
{
    const TURLName url(QStringLiteral("a://b://c"));
    EXPECT_EQ(url.GetScheme(), QStringLiteral("a"));
    EXPECT_EQ(url.GetPath(), QStringLiteral("b://c"));
}

TEST(URLName, TakesNoSchemeFromItsQuery)
{
    const TURLName url(QStringLiteral("menu.xml?link=http://host/x"));
    EXPECT_EQ(url.GetScheme(), QString());
    EXPECT_EQ(url.GetPath(), QStringLiteral("menu.xml"));
    EXPECT_EQ(ItemsOf(QStringLiteral("menu.xml?link=http://host/x")).Value(u"link"), QStringLiteral("http://host/x"));
}

TEST(URLName, SaysThatThereIsNoQuery)
{
    TQueryItems items;
    items.append({.Name = QStringLiteral("left"), .Value = QStringLiteral("over")});
    EXPECT_FALSE(TURLName(QStringLiteral("scenes://a&b=c")).GetQueryItems(items));
    EXPECT_TRUE(items.isEmpty());
}

TEST(URLName, HasAnEmptyQueryAfterABareQuestionMark)
{
    EXPECT_EQ(ItemsOf(QStringLiteral("scenes://a?")).size(), 0);
    EXPECT_EQ(ItemsOf(QStringLiteral("?")).size(), 0);
}

TEST(URLName, IgnoresWhatHasNoEqualsSign)
{
    const TQueryItems items = ItemsOf(QStringLiteral("x://?scenes&&color=1&&readonly&"));
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].Name, QStringLiteral("color"));
    EXPECT_EQ(items.Value(u"scenes"), QString());
}

TEST(URLName, SplitsAnItemAtItsFirstEqualsSign)
{
    const TQueryItems items = ItemsOf(QStringLiteral("x://?filter=a=b==&empty="));
    EXPECT_EQ(items.Value(u"filter"), QStringLiteral("a=b=="));
    ASSERT_EQ(items.size(), 2);
    EXPECT_EQ(items[1].Name, QStringLiteral("empty"));
    EXPECT_EQ(items[1].Value, QString());
}

TEST(URLName, TakesValuesAsTheyStand)
{
    const TQueryItems items =
        ItemsOf(QStringLiteral("x://?root=%PRJPATH%\\a b+c%20d&scenes=C:\\Söhne\\?.xml&color=$80000005& bgcolor = 1"));
    EXPECT_EQ(items.Value(u"root"), QStringLiteral("%PRJPATH%\\a b+c%20d"));
    EXPECT_EQ(items.Value(u"scenes"), QStringLiteral("C:\\Söhne\\?.xml"));
    EXPECT_EQ(items.Value(u"color"), QStringLiteral("$80000005"));
    EXPECT_EQ(items.Value(u"bgcolor"), QString());
    EXPECT_EQ(items.Value(u" bgcolor "), QStringLiteral(" 1"));
}

TEST(URLName, StartsTheQueryAtTheFirstQuestionMark)
{
    const TURLName url(QStringLiteral("x://a?b=c?d=e"));
    EXPECT_EQ(url.GetPath(), QStringLiteral("a"));
    EXPECT_EQ(ItemsOf(QStringLiteral("x://a?b=c?d=e")).Value(u"b"), QStringLiteral("c?d=e"));
}

TEST(QueryItems, FindTheFirstOfSeveralEqualNames)
{
    const TQueryItems items = ItemsOf(QStringLiteral("x://?Color=1&color=2&COLOR=3"));
    EXPECT_EQ(items.size(), 3);
    EXPECT_EQ(items.Value(u"color"), QStringLiteral("1"));
}

TEST(QueryItems, FindNamesWithoutRegardToCase)
{
    const TQueryItems items = ItemsOf(QStringLiteral("x://?ScenesMod=Ab&GRÖSSE=5"));
    EXPECT_EQ(items.Value(u"scenesmod"), QStringLiteral("Ab"));
    EXPECT_EQ(items.Value(u"größe"), QString());
    EXPECT_EQ(items.Value(u"grösse"), QStringLiteral("5"));
}

TEST(QueryItems, FindNamesUnderTurkishRules)
{
    QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
    EXPECT_EQ(ItemsOf(QStringLiteral("x://?TITLE=Flur")).Value(u"title"), QStringLiteral("Flur"));
    QLocale::setDefault(QLocale::system());
}

TEST(QueryItems, AreEmptyForANameThatIsNotThere)
{
    EXPECT_EQ(ItemsOf(QStringLiteral("x://?a=1")).Value(u"b"), QString());
    EXPECT_EQ(ItemsOf(QStringLiteral("x://?a=1")).Value(u""), QString());
}

TEST(CommandText, IsUtf8)
{
    EXPECT_EQ(CommandText("scenes://Küche?x=5 €"), QStringLiteral("scenes://Küche?x=5 €"));
    EXPECT_EQ(CommandText("💡"), QStringLiteral("💡"));
}

TEST(CommandText, IsElseInTheCodePage)
{
    EXPECT_EQ(CommandText("scenes://K\xFC"
                          "che?x=5 \x80"),
              QStringLiteral("scenes://Küche?x=5 €"));
    EXPECT_EQ(CommandText("\x84"
                          "Flur\x93"),
              QStringLiteral("„Flur“"));
}

TEST(CommandText, IsInTheCodePageWhenItsLastSequenceIsIncomplete)
{
    EXPECT_EQ(CommandText("Caf\xE9"), QStringLiteral("Café"));
    EXPECT_EQ(CommandText("\xC3"), QStringLiteral("Ã"));
}

TEST(CommandText, IsInTheCodePageAsAWholeWhenOneByteIsNoUtf8)
{
    EXPECT_EQ(CommandText("\xC3\xBC \xFC"), QStringLiteral("Ã¼ ü"));
}

TEST(CommandText, IsInTheCodePageForOverlongAndSurrogateSequences)
{
    EXPECT_EQ(CommandText("\xC0\xAF"), QStringLiteral("À¯"));
    EXPECT_EQ(CommandText("\xED\xA0\xBD"), QStringLiteral(u"í\u00A0½"));
}

TEST(CommandText, IsEmptyForANullPointer)
{
    EXPECT_EQ(CommandText(nullptr), QString());
    EXPECT_EQ(CommandText(""), QString());
}
