#include "SceneDocument.h"

#include "ChildProcess.h"
#include "SceneFiles.h"

#include <QDir>
#include <gtest/gtest.h>

#include <libxml/parser.h>

#include <sys/stat.h>

namespace
{

const auto Triggers = QStringLiteral("trigger_allowed.xml");
const auto Everything = QStringLiteral("1 Trigger, 1 Aktionen, 1 Szenen, 1 Schritte");
const auto NoTriggers = QStringLiteral("0 Trigger, 1 Aktionen, 1 Szenen, 1 Schritte");

// A directory below tests/data/scenes/broken: a sound house of one trigger, action, scene and step in which one
// document is wrong. `Unread` is the document that an export keeps beside itself.
struct TBrokenCase
{
    const char* Name;
    const char* Counts; // triggers, actions, scenes, steps
    const char* Unread = "trigger_allowed.xml";
};

void PrintTo(const TBrokenCase& broken, std::ostream* stream)
{
    *stream << broken.Name;
}

constexpr std::array BrokenCases{
    TBrokenCase{"actions_empty", "1011", "actions_allowed.xml"},
    TBrokenCase{"actions_other_root", "1011", "actions_allowed.xml"},
    TBrokenCase{"actions_unclosed", "1011", "actions_allowed.xml"},
    TBrokenCase{"blank_before_declaration", "0111"},
    TBrokenCase{"control_character", "0111"},
    TBrokenCase{"doubled_attribute", "0111"},
    TBrokenCase{"doubled_attribute_other_case", "1111", nullptr},
    TBrokenCase{"entity_bomb_in_attribute", "0111"},
    TBrokenCase{"entity_bomb_in_content", "0111"},
    TBrokenCase{"entity_that_calls_itself", "0111"},
    TBrokenCase{"external_entity", "0111"},
    TBrokenCase{"external_entity_in_attribute", "0111"},
    TBrokenCase{"external_parameter_entity", "0111"},
    TBrokenCase{"external_subset", "1111", nullptr},
    TBrokenCase{"html", "0111"},
    TBrokenCase{"latin1_as_utf16", "0111"},
    TBrokenCase{"latin1_as_utf8", "0111"},
    TBrokenCase{"no_declaration", "1111", nullptr},
    TBrokenCase{"raw_ampersand", "0111"},
    TBrokenCase{"raw_less_than", "0111"},
    TBrokenCase{"raw_quote", "0111"},
    TBrokenCase{"scenes_empty", "1100", "scenes.xml"},
    TBrokenCase{"scenes_other_root", "1100", "scenes.xml"},
    TBrokenCase{"scenes_unclosed", "1100", "scenes.xml"},
    TBrokenCase{"steps_empty", "1110", "scene_1.xml"},
    TBrokenCase{"steps_other_root", "1110", "scene_1.xml"},
    TBrokenCase{"steps_unclosed", "1110", "scene_1.xml"},
    TBrokenCase{"text_after_root", "0111"},
    TBrokenCase{"text_only", "0111"},
    TBrokenCase{"trigger_empty", "0111"},
    TBrokenCase{"trigger_other_root", "0111"},
    TBrokenCase{"trigger_unclosed", "0111"},
    TBrokenCase{"two_roots", "0111"},
    TBrokenCase{"undeclared_entity", "0111"},
    TBrokenCase{"unknown_encoding", "0111"},
    TBrokenCase{"unused_entity", "1111", nullptr},
    TBrokenCase{"utf16_odd_length", "1111", nullptr},
    TBrokenCase{"utf8_as_latin1", "1111", nullptr},
    TBrokenCase{"utf8_as_utf8", "1111", nullptr},
    TBrokenCase{"wrong_nesting", "0111"},
    TBrokenCase{"xinclude", "1111", nullptr},
    TBrokenCase{"zero_byte_inside", "0111"},
    TBrokenCase{"zero_bytes", "0111"},
};

QString CountsText(const char* counts)
{
    return QStringLiteral("%1 Trigger, %2 Aktionen, %3 Szenen, %4 Schritte")
        .arg(QChar::fromLatin1(counts[0]))
        .arg(QChar::fromLatin1(counts[1]))
        .arg(QChar::fromLatin1(counts[2]))
        .arg(QChar::fromLatin1(counts[3]));
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

class BrokenScenes : public testing::TestWithParam<TBrokenCase>
{};

// A sound house that tests spoil.
class SpoiledScenes : public testing::Test
{
protected:
    SpoiledScenes() { m_files.CopyFrom(TestDataPath(QStringLiteral("scenes/broken/no_declaration"))); }

    QString Load()
    {
        m_top = m_files.Load();
        return CountsOf(m_top.get());
    }
    QString LoadWithTriggers(const QByteArray& content)
    {
        m_files.Write(Triggers, content);
        return Load();
    }
    QStringList Names() const { return m_files.Contents().keys(); }

    TSceneFiles m_files;
    TRecordedMessages m_messages;
    std::unique_ptr<TSceneNode> m_top;
};

} // namespace

TEST(BrokenScenesTable, HasARowForEachDirectory)
{
    QStringList names;
    for (const TBrokenCase& broken : BrokenCases)
        names.append(QString::fromLatin1(broken.Name));
    EXPECT_EQ(names, SceneCases(QStringLiteral("broken")));
}

TEST_P(BrokenScenes, AreReadAsFarAsTheyAreSoundAndNothingElseIsFetched)
{
    TSceneFiles files;
    files.CopyFrom(TestDataPath(QStringLiteral("scenes/broken/") + QLatin1StringView(GetParam().Name)));
    const TFetchCounter counter;
    const auto top = files.Load();
    EXPECT_EQ(CountsOf(top.get()), CountsText(GetParam().Counts));
    EXPECT_EQ(TFetchCounter::Fetched, 0);
}

TEST_P(BrokenScenes, AreKeptWhenAnExportReplacesThem)
{
    const TRecordedMessages messages;
    TSceneFiles files;
    files.CopyFrom(TestDataPath(QStringLiteral("scenes/broken/") + QLatin1StringView(GetParam().Name)));
    const TFileContents before = files.Contents();
    const auto top = files.Load();
    files.Save(top.get());
    TFileContents kept = files.Contents();
    for (auto file = kept.begin(); file != kept.end();)
        file = file.key().endsWith(QStringLiteral(".unlesbar")) ? std::next(file) : kept.erase(file);
    TFileContents expected;
    if (GetParam().Unread) {
        const auto name = QString::fromLatin1(GetParam().Unread);
        expected.insert(name + QStringLiteral(".unlesbar"), before.value(name));
    }
    EXPECT_EQ(kept, expected);
    EXPECT_EQ(messages.Notes.size(), expected.size());
    // What was written can be read.
    EXPECT_EQ(CountsOf(files.Load().get()), CountsOf(top.get()));
}

INSTANTIATE_TEST_SUITE_P(Cases, BrokenScenes, testing::ValuesIn(BrokenCases),
                         [](const auto& test) { return std::string(test.param.Name); });

TEST_F(SpoiledScenes, AreSoundAtFirst)
{
    EXPECT_EQ(Load(), Everything);
}

TEST_F(SpoiledScenes, TakeTheFirstOfAttributesThatDifferInCaseAndThenTheLast)
{
    ASSERT_EQ(LoadWithTriggers("<trigger><node name='u' NAME='t' alias='T'/></trigger>"), Everything);
    EXPECT_EQ(m_top->Child(TriggerRootIndex)->Child(0)->Item()->Name, QStringLiteral("t"));
}

TEST_F(SpoiledScenes, ShowNothingOfAnExternalEntity)
{
    m_files.Write(QStringLiteral("secret.txt"), "secret");
    for (const QString& url : {QStringLiteral("secret.txt"), m_files.Path(QStringLiteral("secret.txt")),
                               QStringLiteral("file://") + m_files.Path(QStringLiteral("secret.txt"))}) {
        EXPECT_EQ(LoadWithTriggers("<!DOCTYPE trigger [<!ENTITY x SYSTEM '" + url.toUtf8() +
                                   "'>]><trigger><node alias='&x;'/>&x;</trigger>"),
                  NoTriggers);
        EXPECT_FALSE(OutlineOf(m_top.get()).join(u'\n').contains(QStringLiteral("secret")));
    }
}

TEST_F(SpoiledScenes, ReadUtf8InLatin1AsTheBytesThatItIs)
{
    m_files.CopyFrom(TestDataPath(QStringLiteral("scenes/broken/utf8_as_latin1")));
    Load();
    EXPECT_EQ(m_top->Child(TriggerRootIndex)->Child(0)->Caption(), QStringLiteral("TÃ¼r"));
    m_files.CopyFrom(TestDataPath(QStringLiteral("scenes/broken/utf8_as_utf8")));
    Load();
    EXPECT_EQ(m_top->Child(TriggerRootIndex)->Child(0)->Caption(), QStringLiteral("Tür"));
}

TEST_F(SpoiledScenes, KeepAnAttributeOfTenMegabytes)
{
    constexpr qsizetype Size = qsizetype{10} * 1024 * 1024;
    const QByteArray alias(Size, 'x');
    ASSERT_EQ(LoadWithTriggers(SceneDocument("trigger", {"<node name=\"t\" alias=\"" + alias + "\" />"})), Everything);
    EXPECT_EQ(m_top->Child(TriggerRootIndex)->Child(0)->Caption().size(), Size);
    m_files.Save(m_top.get());
    EXPECT_TRUE(m_files.Read(Triggers).contains(alias));
    EXPECT_EQ(Load(), Everything);
}

TEST_F(SpoiledScenes, CountAThousandNestedElementsAsOne)
{
    EXPECT_EQ(LoadWithTriggers("<trigger>" + QByteArray("<node name='t'>").repeated(1000) +
                               QByteArray("</node>").repeated(1000) + "</trigger>"),
              Everything);
}

TEST_F(SpoiledScenes, SkipElementsThatAreNestedAndNeverClosed)
{
    EXPECT_EQ(LoadWithTriggers("<trigger>" + QByteArray("<node>").repeated(100000)), NoTriggers);
}

TEST_F(SpoiledScenes, CountAHundredThousandNestedElementsAsOne)
{
    EXPECT_EQ(LoadWithTriggers("<trigger>" + QByteArray("<node>").repeated(100000) +
                               QByteArray("</node>").repeated(100000) + "</trigger>"),
              Everything);
}

TEST_F(SpoiledScenes, TakeAThousandAttributes)
{
    QByteArray attributes;
    for (int i = 0; i < 1000; ++i)
        attributes += " a" + QByteArray::number(i) + "='x'";
    EXPECT_EQ(LoadWithTriggers("<trigger><node" + attributes + " name='t'/></trigger>"), Everything);
}

TEST_F(SpoiledScenes, AreEmptyWhereADirectoryStandsInTheirPlace)
{
    for (const QString& name : Names()) {
        TSceneFiles files;
        files.CopyFrom(m_files.Directory());
        ASSERT_TRUE(QFile::remove(files.Path(name)));
        ASSERT_TRUE(QDir().mkpath(files.Path(name)));
        const auto top = files.Load();
        EXPECT_NE(CountsOf(top.get()), Everything) << name.toStdString();
        const QString outcome = OutcomeOf([&] { files.Save(top.get()); });
        const bool steps = name == QStringLiteral("scene_1.xml");
        EXPECT_TRUE(outcome.contains(files.Path(name))) << steps << outcome.toStdString();
        EXPECT_TRUE(QFileInfo(files.Path(name)).isDir());
    }
}

TEST_F(SpoiledScenes, AreEmptyForAUserWhoMayNotReadThem)
{
    const QList<std::pair<const char*, const char*>> expected{{"trigger_allowed.xml", "0111"},
                                                              {"actions_allowed.xml", "1011"},
                                                              {"scenes.xml", "1100"},
                                                              {"scene_1.xml", "1110"}};
    for (const auto& [name, counts] : expected) {
        const QByteArray path = QFile::encodeName(m_files.Path(QLatin1StringView(name)));
        ASSERT_EQ(chmod(path.constData(), 0), 0);
        EXPECT_EQ(RunInChild([this] {
                      GiveUpRights();
                      return Load();
                  }),
                  CountsText(counts));
        ASSERT_EQ(chmod(path.constData(), 0644), 0);
    }
}

TEST_F(SpoiledScenes, AreEmptyForAUserWhoMayNotEnterTheirDirectory)
{
    ASSERT_EQ(chmod(QFile::encodeName(m_files.Directory()).constData(), 0700), 0);
    EXPECT_EQ(RunInChild([this] {
                  GiveUpRights();
                  return Load();
              }),
              geteuid() == 0 ? CountsText("0000") : Everything);
}

TEST_F(SpoiledScenes, AreWholeOrEmptyWhereverTheyAreCut)
{
    for (const QString& name : Names()) {
        const QByteArray whole = m_files.Read(name);
        const qsizetype end = whole.lastIndexOf('>') + 1;
        for (qsizetype length = 0; length <= whole.size(); ++length) {
            m_files.Write(name, whole.left(length));
            const bool isWhole = length >= end;
            EXPECT_EQ(Load() == Everything, isWhole) << name.toStdString() << " cut at " << length;
        }
    }
}

TEST_F(SpoiledScenes, NeverBreakTheReaderWhateverByteIsWrong)
{
    const QByteArray whole = TestData(QStringLiteral("scenes/broken/utf8_as_latin1/trigger_allowed.xml"));
    for (qsizetype at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\0', '<', '>', '&', '"', '\x80', '\xFF'}) {
            QByteArray document = whole;
            document[at] = byte;
            const QString counts = LoadWithTriggers(document);
            EXPECT_TRUE(counts == Everything || counts == NoTriggers) << at << ' ' << counts.toStdString();
        }
    }
}

TEST_F(SpoiledScenes, AreAllKeptByAnExportThatLoadedNothing)
{
    const TFileContents before = m_files.Contents();
    m_files.Save(nullptr);
    const TFileContents after = m_files.Contents();
    for (const char* name : {"trigger_allowed.xml", "actions_allowed.xml", "scenes.xml"}) {
        const auto file = QString::fromLatin1(name);
        EXPECT_EQ(after.value(file + QStringLiteral(".unlesbar")), before.value(file)) << name;
    }
    EXPECT_EQ(after.value(QStringLiteral("scene_1.xml")), before.value(QStringLiteral("scene_1.xml")));
    EXPECT_EQ(m_messages.Notes.size(), 3);
}

TEST_F(SpoiledScenes, LeaveTheStepsOfUnreadScenesAlone)
{
    m_files.Write(QStringLiteral("scenes.xml"), "<scenes>");
    const QByteArray steps = m_files.Read(QStringLiteral("scene_1.xml"));
    Load();
    m_files.Save(m_top.get());
    EXPECT_EQ(m_files.Read(QStringLiteral("scene_1.xml")), steps);
    EXPECT_EQ(m_files.Read(QStringLiteral("scenes.xml.unlesbar")), "<scenes>");
}

TEST_F(SpoiledScenes, AreKeptUnderTheNextNumberTheSecondTime)
{
    for (const char* content : {"<eins>", "<zwei>"}) {
        LoadWithTriggers(content);
        m_files.Save(m_top.get());
    }
    EXPECT_EQ(m_files.Read(QStringLiteral("trigger_allowed.xml.unlesbar")), "<eins>");
    EXPECT_EQ(m_files.Read(QStringLiteral("trigger_allowed.xml.unlesbar2")), "<zwei>");
}
