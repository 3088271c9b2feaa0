#include "MenuDocument.h"

#include "ChildProcess.h"
#include "MenuFiles.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <libxml/parser.h>

#include <array>
#include <string>

#include <sys/stat.h>

namespace
{

const auto Everything = QStringLiteral("Licht|  Flur");
const auto OneLink = QStringLiteral("Licht");
const auto Nothing = QStringLiteral("nothing");
const auto MenuKind = QStringLiteral("broken/menu");
const auto LinksKind = QStringLiteral("broken/links");

// A document below tests/data/menu/broken/menu and one of the same name below broken/links: a sound one with one fault.
struct TBrokenCase
{
    const char* Name;
    bool IsRead = false;
    const char* Caption = "Licht"; // of the first item
};

void PrintTo(const TBrokenCase& broken, std::ostream* stream)
{
    *stream << broken.Name;
}

constexpr std::array BrokenCases{
    TBrokenCase{"blank_before_declaration"},
    TBrokenCase{"control_character"},
    TBrokenCase{"doubled_attribute"},
    TBrokenCase{"doubled_attribute_other_case", true},
    TBrokenCase{"empty"},
    TBrokenCase{"entity_bomb_in_attribute"},
    TBrokenCase{"entity_bomb_in_content"},
    TBrokenCase{"entity_in_attribute"},
    TBrokenCase{"entity_that_calls_itself"},
    TBrokenCase{"external_entity"},
    TBrokenCase{"external_entity_in_attribute"},
    TBrokenCase{"external_entity_of_the_network"},
    TBrokenCase{"external_parameter_entity"},
    TBrokenCase{"external_subset", true},
    TBrokenCase{"html"},
    TBrokenCase{"latin1_as_utf16"},
    TBrokenCase{"latin1_as_utf8"},
    TBrokenCase{"latin1_without_declaration"},
    TBrokenCase{"no_declaration", true},
    TBrokenCase{"other_root"},
    TBrokenCase{"raw_ampersand"},
    TBrokenCase{"raw_greater_than", true, "a > b"},
    TBrokenCase{"raw_less_than"},
    TBrokenCase{"raw_quote"},
    TBrokenCase{"root_of_another_namespace_prefix"},
    TBrokenCase{"skipped_elements", true},
    TBrokenCase{"sound", true},
    TBrokenCase{"text_after_root"},
    TBrokenCase{"text_only"},
    TBrokenCase{"two_roots"},
    TBrokenCase{"unclosed"},
    TBrokenCase{"unclosed_element"},
    TBrokenCase{"undeclared_entity"},
    TBrokenCase{"unknown_encoding"},
    TBrokenCase{"unused_entity", true},
    TBrokenCase{"utf16", true, "Tür"},
    TBrokenCase{"utf8_as_latin1", true, "TÃ¼r"},
    TBrokenCase{"utf8_as_utf8", true, "Tür"},
    TBrokenCase{"wrong_nesting"},
    TBrokenCase{"xinclude", true},
    TBrokenCase{"zero_byte_inside"},
    TBrokenCase{"zero_bytes"},
};

// Counts what the parser wants to fetch beside the document itself while it lives, and gives it nothing.
class TFetchCounter
{
public:
    TFetchCounter() : m_previous(xmlGetExternalEntityLoader())
    {
        Fetched = 0;
        xmlSetExternalEntityLoader([](const char*, const char*, xmlParserCtxtPtr) -> xmlParserInputPtr {
            ++Fetched;
            return nullptr;
        });
    }
    ~TFetchCounter() { xmlSetExternalEntityLoader(m_previous); }
    TFetchCounter(const TFetchCounter&) = delete;
    TFetchCounter& operator=(const TFetchCounter&) = delete;

    static inline int Fetched = 0;

private:
    xmlExternalEntityLoader m_previous;
};

class BrokenMenu : public testing::TestWithParam<TBrokenCase>
{};

// Sound documents that tests spoil.
class SpoiledMenu : public testing::Test
{
protected:
    // The items that are read; "nothing" for a document that is refused.
    QString Load(const QByteArray& content) { return Outline(m_content = m_file.Menu(content)); }
    QString LoadLinks(const QByteArray& content) { return Outline(m_links = m_file.Links(content)); }

    static QString Outline(const std::optional<TMenuContent>& content)
    {
        return content ? OutlineOf(content->Items).join(u'|') : Nothing;
    }
    static QString Outline(const std::optional<TMenuNodes>& links)
    {
        return links ? OutlineOf(*links).join(u'|') : Nothing;
    }

    const QByteArray m_menu = MenuCase(MenuKind, QStringLiteral("sound"));
    const QByteArray m_linkList = MenuCase(LinksKind, QStringLiteral("sound"));
    TMenuFile m_file;
    std::optional<TMenuContent> m_content;
    std::optional<TMenuNodes> m_links;
};

QByteArray Nested(const QByteArray& name, int levels)
{
    return QByteArray("<" + name + ">").repeated(levels) + QByteArray("</" + name + ">").repeated(levels);
}

} // namespace

TEST(BrokenMenuTable, HasARowForEachDocument)
{
    QStringList names;
    for (const TBrokenCase& broken : BrokenCases)
        names.append(QString::fromLatin1(broken.Name));
    EXPECT_EQ(MenuCases(LinksKind), names);
    QStringList menus = MenuCases(MenuKind);
    EXPECT_TRUE(menus.removeOne(QStringLiteral("external_entity_in_logo")));
    EXPECT_EQ(menus, names);
}

TEST_P(BrokenMenu, IsReadOrNotAndNothingElseIsFetched)
{
    const TRecordedMessages messages;
    const TFetchCounter counter;
    const auto content = TMenuFile().Menu(MenuCase(MenuKind, QString::fromLatin1(GetParam().Name)));
    ASSERT_EQ(content.has_value(), GetParam().IsRead);
    if (content) {
        EXPECT_EQ(OutlineOf(content->Items),
                  QStringList({QString::fromUtf8(GetParam().Caption), QStringLiteral("  Flur")}));
        EXPECT_TRUE(content->Strays.empty());
        EXPECT_EQ(content->Logo, QStringLiteral("/logo.png"));
    }
    EXPECT_EQ(TFetchCounter::Fetched, 0);
    EXPECT_EQ(messages.Informations + messages.Errors + messages.Notes, QStringList());
}

TEST_P(BrokenMenu, IsReadOrNotAsAListOfLinksToo)
{
    const TRecordedMessages messages;
    const TFetchCounter counter;
    const auto links = TMenuFile().Links(MenuCase(LinksKind, QString::fromLatin1(GetParam().Name)));
    ASSERT_EQ(links.has_value(), GetParam().IsRead);
    if (links) {
        EXPECT_EQ(OutlineOf(*links), QStringList({QString::fromUtf8(GetParam().Caption)}));
    }
    EXPECT_EQ(TFetchCounter::Fetched, 0);
    EXPECT_EQ(messages.Informations + messages.Errors + messages.Notes, QStringList());
}

INSTANTIATE_TEST_SUITE_P(Cases, BrokenMenu, testing::ValuesIn(BrokenCases),
                         [](const auto& test) { return std::string(test.param.Name); });

TEST_F(SpoiledMenu, TakesNoExternalEntityAsItsLogo)
{
    const TFetchCounter counter;
    EXPECT_EQ(Load(MenuCase(MenuKind, QStringLiteral("external_entity_in_logo"))), Nothing);
    EXPECT_EQ(TFetchCounter::Fetched, 0);
}

TEST_F(SpoiledMenu, IsWholeOrRefusedWhereverItIsCut)
{
    const qsizetype menuEnd = m_menu.lastIndexOf('>') + 1;
    for (qsizetype length = 0; length <= m_menu.size(); ++length)
        EXPECT_EQ(Load(m_menu.left(length)), length >= menuEnd ? Everything : Nothing) << "cut at " << length;
    const qsizetype linksEnd = m_linkList.lastIndexOf('>') + 1;
    for (qsizetype length = 0; length <= m_linkList.size(); ++length)
        EXPECT_EQ(LoadLinks(m_linkList.left(length)), length >= linksEnd ? OneLink : Nothing) << "cut at " << length;
}

TEST_F(SpoiledMenu, IsReadAsAWholeOrNotAtAllWhateverByteIsWrong)
{
    int read = 0;
    int refused = 0;
    for (qsizetype at = 0; at < m_menu.size(); ++at) {
        for (const char byte : {'\0', '<', '"', '\xFF'}) {
            QByteArray document = m_menu;
            document[at] = byte;
            if (Load(document) == Nothing) {
                ++refused;
                continue;
            }
            ++read;
            const qsizetype nodes = OutlineOf(m_content->Items).size() + OutlineOf(m_content->Strays).size();
            ASSERT_LE(nodes, 2) << at << ' ' << int{byte};
        }
    }
    // In texts most bytes are as good as any other.
    EXPECT_GT(read, 0);
    EXPECT_GT(refused, read);
}

TEST_F(SpoiledMenu, ShowsNothingOfAnExternalEntity)
{
    const QString secret = m_file.Path(QStringLiteral("secret.txt"));
    WriteAll(secret, "secret");
    for (const QString& url : {QStringLiteral("secret.txt"), secret, QStringLiteral("file://") + secret}) {
        const QByteArray declaration = "[<!ENTITY x SYSTEM '" + url.toUtf8() + "'>]>";
        for (const char* element : {"<menuitem caption='&x;'/>", "<menuitem>&x;</menuitem>", "&x;", "<x y='&x;'/>"})
            EXPECT_EQ(Load("<!DOCTYPE menu " + declaration + "<menu>" + element + "</menu>"), Nothing) << element;
        for (const char* element : {"<link alias='&x;'/>", "<link>&x;</link>", "&x;", "<x y='&x;'/>"})
            EXPECT_EQ(LoadLinks("<!DOCTYPE links " + declaration + "<links>" + element + "</links>"), Nothing)
                << element;
        EXPECT_EQ(Load("<!DOCTYPE menu " + declaration + "<menu logo='&x;'/>"), Nothing);
    }
}

TEST_F(SpoiledMenu, ExpandsNoEntityWhileTheProcessSubstitutesThem)
{
    const int before = xmlSubstituteEntitiesDefault(1);
    const QString secret = m_file.Path(QStringLiteral("secret.txt"));
    WriteAll(secret, "secret");
    EXPECT_EQ(
        Load("<!DOCTYPE menu [<!ENTITY x SYSTEM 'secret.txt'>]><menu><menuitem caption='a'>&x;</menuitem></menu>"),
        Nothing);
    EXPECT_EQ(Load("<!DOCTYPE menu [<!ENTITY x 'y'>]><menu><menuitem caption='&x;'/></menu>"), Nothing);
    EXPECT_EQ(Load(m_menu), Everything);
    xmlSubstituteEntitiesDefault(before);
}

TEST_F(SpoiledMenu, KeepsAttributesOfTenMegabytes)
{
    constexpr qsizetype Size = qsizetype{10} * 1024 * 1024;
    const QByteArray text(Size, 'x');
    ASSERT_NE(Load("<menu logo='" + text + "'><menuitem caption='" + text + "' link='" + text + "'/></menu>"), Nothing);
    EXPECT_EQ(m_content->Logo->size(), Size);
    const auto root = WithItems(std::move(m_content->Items));
    EXPECT_EQ(root->Child(0)->Item()->Link.size(), Size);
    ASSERT_NE(Load(WrittenMenu(root.get(), {.Logo = *m_content->Logo})), Nothing);
    EXPECT_TRUE(RecordOf(m_content->Items.front().get()) == RecordOf(root->Child(0)));
    ASSERT_NE(LoadLinks("<links><link name='" + text + "' href='" + text + "'/></links>"), Nothing);
    EXPECT_EQ(m_links->front()->Caption().size(), Size);
}

TEST_F(SpoiledMenu, TakesAThousandAttributes)
{
    QByteArray attributes;
    for (int i = 0; i < 1000; ++i)
        attributes += " a" + QByteArray::number(i) + "='x'";
    EXPECT_EQ(Load("<menu" + attributes + "><menuitem" + attributes + " caption='a'/></menu>"), QStringLiteral("a"));
    EXPECT_EQ(LoadLinks("<links" + attributes + "><link" + attributes + " alias='a'/></links>"), QStringLiteral("a"));
}

TEST_F(SpoiledMenu, TakesAnyDepthBelowWhatItReads)
{
    for (const char* name : {"menuitem", "link", "x"}) {
        const QByteArray deep = Nested(name, 100000);
        EXPECT_NE(Load("<menu>" + deep + "</menu>"), Nothing) << name;
        EXPECT_NE(LoadLinks("<links>" + deep + "</links>"), Nothing) << name;
        EXPECT_EQ(Load("<menu>" + QByteArray("<" + QByteArray(name) + ">").repeated(100000)), Nothing) << name;
        EXPECT_EQ(LoadLinks("<links>" + QByteArray("<" + QByteArray(name) + ">").repeated(100000)), Nothing) << name;
    }
    EXPECT_EQ(Load("<menu>" + Nested("menuitem", 100000) + "</menu>").count(u'|'), 2);
    EXPECT_EQ(LoadLinks("<links>" + Nested("link", 100000) + "</links>").count(u'|'), 0);
}

TEST_F(SpoiledMenu, IsNothingForAUserWhoMayNotReadIt)
{
    m_file.Write(m_menu);
    ASSERT_EQ(chmod(QFile::encodeName(m_file.Directory()).constData(), 0755), 0);
    ASSERT_EQ(chmod(QFile::encodeName(m_file.Path()).constData(), 0), 0);
    EXPECT_EQ(RunInChild([this] {
                  GiveUpRights();
                  return ReadMenu(m_file.Path()) || ReadLinks(m_file.Path()) ? QStringLiteral("read") : Nothing;
              }),
              Nothing);
}
