#include "ScheduleDocument.h"

#include "ChildProcess.h"
#include "ScheduleFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

#include <libxml/parser.h>

#include <array>
#include <string>

#include <sys/stat.h>

namespace
{

const auto Everything = QStringLiteral("1 Gruppen, 1 Datenpunkte, 1 Einträge");
const auto Nothing = QStringLiteral("0 Gruppen, 0 Datenpunkte, 0 Einträge");
const auto Kept = QStringLiteral("schedule.xml.unlesbar");

// A document below tests/data/schedule/broken: a sound one of one group, datapoint and entry, with one fault.
struct TBrokenCase
{
    const char* Name;
    bool IsRead = false;
};

void PrintTo(const TBrokenCase& broken, std::ostream* stream)
{
    *stream << broken.Name;
}

constexpr std::array BrokenCases{
    TBrokenCase{"blank_before_declaration"},
    TBrokenCase{"control_character"},
    TBrokenCase{"doubled_attribute"},
    TBrokenCase{"doubled_attribute_in_entry"},
    TBrokenCase{"doubled_attribute_other_case", true},
    TBrokenCase{"empty"},
    TBrokenCase{"entity_bomb_in_attribute"},
    TBrokenCase{"entity_bomb_in_content"},
    TBrokenCase{"entity_bomb_in_entry"},
    TBrokenCase{"entity_in_entry_attribute"},
    TBrokenCase{"entity_that_calls_itself"},
    TBrokenCase{"external_entity"},
    TBrokenCase{"external_entity_in_attribute"},
    TBrokenCase{"external_entity_in_entry"},
    TBrokenCase{"external_parameter_entity"},
    TBrokenCase{"external_subset", true},
    TBrokenCase{"html"},
    TBrokenCase{"latin1_as_utf16"},
    TBrokenCase{"latin1_as_utf8"},
    TBrokenCase{"latin1_without_declaration"},
    TBrokenCase{"no_declaration", true},
    TBrokenCase{"other_root"},
    TBrokenCase{"raw_ampersand"},
    TBrokenCase{"raw_less_than"},
    TBrokenCase{"raw_quote"},
    TBrokenCase{"raw_quote_in_entry"},
    TBrokenCase{"skipped_elements", true},
    TBrokenCase{"text_after_root"},
    TBrokenCase{"text_only"},
    TBrokenCase{"two_roots"},
    TBrokenCase{"unclosed"},
    TBrokenCase{"unclosed_entry"},
    TBrokenCase{"undeclared_entity"},
    TBrokenCase{"unknown_encoding"},
    TBrokenCase{"unused_entity", true},
    TBrokenCase{"utf16", true},
    TBrokenCase{"utf16_odd_length", true},
    TBrokenCase{"utf8_as_latin1", true},
    TBrokenCase{"utf8_as_utf8", true},
    TBrokenCase{"wrong_nesting"},
    TBrokenCase{"xinclude", true},
    TBrokenCase{"zero_byte_inside"},
    TBrokenCase{"zero_bytes"},
};

QByteArray Document(const char* name)
{
    return ReadAll(ScheduleCasePath(QStringLiteral("broken"), QString::fromLatin1(name)));
}

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

class BrokenSchedule : public testing::TestWithParam<TBrokenCase>
{};

// A sound document that tests spoil.
class SpoiledSchedule : public testing::Test
{
protected:
    QString Load(const QByteArray& content)
    {
        m_root = m_files.Load(content);
        return CountsOf(m_root.get());
    }
    // A document whose group, datapoint and entry hold these beside.
    QString LoadWith(const QByteArray& inGroup, const QByteArray& inDatapoint = {}, const QByteArray& entry = {})
    {
        return Load("<eibnet><nodes name='g'" + inGroup + "><node alias='a'" + inDatapoint + ">" +
                    (entry.isEmpty() ? "<schedule time='06:30'/>" : entry) + "</node></nodes></eibnet>");
    }
    TScheduleNode* Datapoint() const { return m_root->Child(0)->Child(0); }

    QByteArray m_sound = Document("no_declaration");
    TScheduleFiles m_files;
    TRecordedMessages m_messages;
    std::unique_ptr<TScheduleNode> m_root;
};

QByteArray Nested(const QByteArray& name, int levels)
{
    return QByteArray("<" + name + ">").repeated(levels) + QByteArray("</" + name + ">").repeated(levels);
}

} // namespace

TEST(BrokenScheduleTable, HasARowForEachDocument)
{
    QStringList names;
    for (const TBrokenCase& broken : BrokenCases)
        names.append(QString::fromLatin1(broken.Name));
    EXPECT_EQ(names, ScheduleCases(QStringLiteral("broken")));
}

TEST_P(BrokenSchedule, IsReadOrNotAndNothingElseIsFetched)
{
    const TRecordedMessages messages;
    TScheduleFiles files;
    const TFetchCounter counter;
    const auto root = files.Load(Document(GetParam().Name));
    EXPECT_EQ(CountsOf(root.get()), GetParam().IsRead ? Everything : Nothing);
    EXPECT_EQ(files.GroupNames().size(), GetParam().IsRead ? 1 : 0);
    EXPECT_EQ(TFetchCounter::Fetched, 0);
    EXPECT_EQ(messages.Informations + messages.Errors + messages.Notes, QStringList());
}

TEST_P(BrokenSchedule, IsKeptWhenAnExportReplacesIt)
{
    const TRecordedMessages messages;
    TScheduleFiles files;
    const QByteArray before = Document(GetParam().Name);
    const auto root = files.Load(before);
    files.Save(root.get());
    const bool isRead = GetParam().IsRead;
    EXPECT_EQ(files.Names().contains(Kept), !isRead);
    if (!isRead) {
        EXPECT_EQ(files.Read(Kept), before);
    }
    EXPECT_EQ(messages.Notes.size(), isRead ? 0 : 1);
    // What was written can be read.
    EXPECT_EQ(CountsOf(files.Load().get()), CountsOf(root.get()));
}

INSTANTIATE_TEST_SUITE_P(Cases, BrokenSchedule, testing::ValuesIn(BrokenCases),
                         [](const auto& test) { return std::string(test.param.Name); });

TEST_F(SpoiledSchedule, IsSoundAtFirst)
{
    EXPECT_EQ(Load(m_sound), Everything);
}

TEST_F(SpoiledSchedule, IsWholeOrEmptyWhereverItIsCut)
{
    const qsizetype end = m_sound.lastIndexOf('>') + 1;
    for (qsizetype length = 0; length <= m_sound.size(); ++length)
        EXPECT_EQ(Load(m_sound.left(length)), length >= end ? Everything : Nothing) << "cut at " << length;
}

TEST_F(SpoiledSchedule, IsReadAsAWholeOrNotAtAllWhateverByteIsWrong)
{
    const QByteArray whole = Document("utf8_as_latin1");
    int readable = 0;
    for (qsizetype at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\0', '<', '>', '&', '"', '\x80', '\xFF'}) {
            QByteArray document = whole;
            document[at] = byte;
            const qsizetype namesBefore = m_files.GroupNames().size();
            Load(document);
            ASSERT_EQ(m_files.GroupNames().size() - namesBefore, m_root->Count()) << at << ' ' << int{byte};
            readable += m_root->Count();
        }
    }
    // In texts most bytes are as good as any other.
    EXPECT_GT(readable, 0);
    EXPECT_LT(readable, whole.size() * 7);
}

TEST_F(SpoiledSchedule, ShowsNothingOfAnExternalEntity)
{
    const QString secret = m_files.Path(QStringLiteral("secret.txt"));
    WriteAll(secret, "secret");
    for (const QString& url : {QStringLiteral("secret.txt"), secret, QStringLiteral("file://") + secret}) {
        const QByteArray declaration = "<!DOCTYPE eibnet [<!ENTITY x SYSTEM '" + url.toUtf8() + "'>]><eibnet>";
        for (const char* element : {"<nodes name='&x;'/>", "<nodes name='g'>&x;</nodes>", "<schedule value='&x;'/>",
                                    "<schedule>&x;</schedule>", "<node alias='&x;'/>"}) {
            EXPECT_EQ(Load(declaration + element + "</eibnet>"), Nothing) << element;
            EXPECT_FALSE(OutlineOf(m_root.get()).join(u'\n').contains(QStringLiteral("secret"))) << element;
        }
    }
}

TEST_F(SpoiledSchedule, ReadsUtf8InLatin1AsTheBytesThatItIs)
{
    Load(Document("utf8_as_latin1"));
    EXPECT_EQ(Datapoint()->Caption(), QStringLiteral("TÃ¼r"));
    Load(Document("utf8_as_utf8"));
    EXPECT_EQ(Datapoint()->Caption(), QStringLiteral("Tür"));
    Load(Document("utf16"));
    EXPECT_EQ(Datapoint()->Caption(), QStringLiteral("Tür"));
}

TEST_F(SpoiledSchedule, KeepsAttributesOfTenMegabytes)
{
    constexpr qsizetype Size = qsizetype{10} * 1024 * 1024;
    const QByteArray text(Size, 'x');
    ASSERT_EQ(LoadWith(" NAME='" + text + "'", " minv='" + text + "'", "<schedule value='" + text + "'/>"), Everything);
    EXPECT_EQ(m_root->Child(0)->Caption().size(), Size);
    EXPECT_EQ(Datapoint()->Data()->MinVal.size(), Size);
    EXPECT_EQ(Datapoint()->Child(0)->Caption().size(), Size + QStringLiteral("<schedule value=\"\"/>").size());
    m_files.Save(m_root.get());
    const auto again = m_files.Load();
    ASSERT_EQ(CountsOf(again.get()), Everything);
    EXPECT_TRUE(OutlineOf(again.get()) == OutlineOf(m_root.get()));
    EXPECT_TRUE(*again->Child(0)->Child(0)->Data() == *Datapoint()->Data());
}

TEST_F(SpoiledSchedule, TakesAThousandAttributes)
{
    QByteArray attributes;
    for (int i = 0; i < 1000; ++i)
        attributes += " a" + QByteArray::number(i) + "='x'";
    EXPECT_EQ(LoadWith(attributes, attributes, "<schedule" + attributes + "/>"), Everything);
    EXPECT_EQ(Datapoint()->Child(0)->Caption().count(QStringLiteral("=\"x\"")), 1000);
}

TEST_F(SpoiledSchedule, IsReadDownToTwoHundredAndFiftySixNestedElements)
{
    for (const char* name : {"nodes", "node"}) {
        Load("<eibnet>" + Nested(name, 256) + "</eibnet>");
        EXPECT_EQ(OutlineOf(m_root.get()).size(), 257) << name;
        EXPECT_EQ(Load("<eibnet>" + Nested(name, 257) + "</eibnet>"), Nothing) << name;
        EXPECT_EQ(Load("<eibnet>" + Nested(name, 100000) + "</eibnet>"), Nothing) << name;
        EXPECT_EQ(Load("<eibnet>" + QByteArray("<" + QByteArray(name) + ">").repeated(100000)), Nothing) << name;
    }
    EXPECT_EQ(m_files.GroupNames().size(), 256);
}

TEST_F(SpoiledSchedule, TakesAnyDepthInsideAnEntryAndInsideWhatItSkips)
{
    ASSERT_EQ(LoadWith({}, {}, "<schedule>" + Nested("x", 10000) + "</schedule>"), Everything);
    EXPECT_TRUE(Datapoint()->Child(0)->Caption().startsWith(QStringLiteral("<schedule><x><x>")));
    EXPECT_EQ(LoadWith({}, {}, Nested("other", 100000) + "<schedule/>"), Everything);
    EXPECT_EQ(LoadWith({}, {}, QByteArray("<schedule>").repeated(100000)), Nothing);
}

TEST_F(SpoiledSchedule, IsEmptyWhereADirectoryStandsInItsPlace)
{
    ASSERT_TRUE(QDir().mkpath(m_files.Path()));
    m_root = m_files.Load();
    EXPECT_EQ(CountsOf(m_root.get()), Nothing);
    const QString outcome = OutcomeOf([&] { m_files.Save(m_root.get()); });
    EXPECT_TRUE(outcome.contains(m_files.Path())) << outcome.toStdString();
    EXPECT_TRUE(QFileInfo(m_files.Path()).isDir());
}

TEST_F(SpoiledSchedule, IsEmptyForAUserWhoMayNotReadIt)
{
    m_files.Write(m_sound);
    ASSERT_EQ(chmod(QFile::encodeName(m_files.Path()).constData(), 0), 0);
    EXPECT_EQ(RunInChild([this] {
                  GiveUpRights();
                  return CountsOf(m_files.Load().get());
              }),
              Nothing);
}

TEST_F(SpoiledSchedule, IsKeptUnderTheNextNumberTheSecondTime)
{
    for (const char* content : {"<eins>", "<zwei>"}) {
        Load(content);
        m_files.Save(m_root.get());
    }
    EXPECT_EQ(m_files.Read(Kept), "<eins>");
    EXPECT_EQ(m_files.Read(Kept + u'2'), "<zwei>");
    EXPECT_EQ(m_messages.Notes.size(), 2);
}

TEST_F(SpoiledSchedule, IsKeptWhenItWasReadOnlyBeforeTheLastLoad)
{
    Load(m_sound);
    Load("<eibnet>");
    m_files.Save(m_root.get());
    EXPECT_EQ(m_files.Read(Kept), "<eibnet>");
    EXPECT_EQ(m_files.Read(), ScheduleDocument());
}

TEST_F(SpoiledSchedule, IsNotKeptAgainByTheNextExport)
{
    Load("<eibnet>");
    m_files.Save(m_root.get());
    m_files.Save(m_root.get());
    EXPECT_EQ(m_files.Names(), QStringList({QStringLiteral("schedule.xml"), Kept}));
}
