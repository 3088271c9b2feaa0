#include "ScheduleDocument.h"

#include "ScheduleEntry.h"
#include "ScheduleFiles.h"

#include <gtest/gtest.h>

namespace
{

class ScheduleRoundtrip : public testing::TestWithParam<QString>
{};

QString OutlineText(const TScheduleNode* root)
{
    return OutlineOf(root).join(u'\n');
}

} // namespace

TEST_P(ScheduleRoundtrip, GivesTheSameBytes)
{
    const QByteArray before = ReadAll(ScheduleCasePath(QStringLiteral("roundtrip"), GetParam()));
    ASSERT_FALSE(before.isEmpty());
    const TRecordedMessages messages;
    TScheduleFiles files;
    const auto root = files.Load(before);
    files.Save(root.get());
    EXPECT_EQ(files.Read(), before);
    EXPECT_EQ(files.Names().size(), 1);
    EXPECT_EQ(messages.Notes, QStringList());
}

TEST_P(ScheduleRoundtrip, GivesTheSameTree)
{
    TScheduleFiles files;
    const auto root = files.Load(ReadAll(ScheduleCasePath(QStringLiteral("roundtrip"), GetParam())));
    files.Save(root.get());
    const auto again = files.Load();
    EXPECT_EQ(OutlineText(again.get()), OutlineText(root.get()));
    const TTreeNode* node = root.get();
    const TTreeNode* other = again.get();
    for (; node && other; node = node->Next(), other = other->Next()) {
        EXPECT_EQ(RecordOf(static_cast<const TScheduleNode*>(node)),
                  RecordOf(static_cast<const TScheduleNode*>(other)));
        EXPECT_EQ(static_cast<const TScheduleNode*>(node)->GroupAccess(),
                  static_cast<const TScheduleNode*>(other)->GroupAccess());
    }
    EXPECT_EQ(node, other);
}

INSTANTIATE_TEST_SUITE_P(Cases, ScheduleRoundtrip, testing::ValuesIn(ScheduleCases(QStringLiteral("roundtrip"))),
                         [](const auto& test) { return test.param.toStdString(); });

TEST(SampleSchedule, GivesTheSameBytes)
{
    const QByteArray before =
        ReadAll(QStringLiteral(VELMORA_EXAMPLES "/musterhaus/_config/data/schedule/schedule.xml"));
    TScheduleFiles files;
    const auto root = files.Load(before);
    const TScheduleCounts counts = CountSchedule(root.get());
    EXPECT_GE(counts.Groups, 6);
    EXPECT_GE(counts.Datapoints, 40);
    EXPECT_GE(counts.Entries, 200);
    files.Save(root.get());
    EXPECT_EQ(files.Read(), before);
}

TEST(ScheduleRoundtripCases, AreThere)
{
    EXPECT_EQ(ScheduleCases(QStringLiteral("roundtrip")).size(), 9);
}

TEST(SavedSchedule, ComesBackWithItsEntriesInTheFormOfTheParser)
{
    TScheduleEntry entry;
    entry.Value = QStringLiteral("21,5");
    const QString text = ScheduleEntryText(entry);
    const auto root = MakeScheduleRoot();
    TScheduleNode* parent = root.get();
    for (const QString& caption : {QStringLiteral("g"), QStringLiteral("d"), text}) {
        TScheduleNode* node = MakeScheduleNode(caption, parent->Level() + 1).release();
        parent->addChild(node);
        parent = node;
    }
    TScheduleFiles files;
    files.Save(root.get());
    EXPECT_TRUE(files.Read().contains(text.toLatin1() + "\r\n"));
    const auto again = files.Load();
    const QString read = again->Child(0)->Child(0)->Child(0)->Caption();
    EXPECT_EQ(read, QString(text).replace(QStringLiteral(" />"), QStringLiteral("/>")));
    ASSERT_TRUE(ReadScheduleEntry(read));
    EXPECT_EQ(ScheduleEntryText(*ReadScheduleEntry(read)), text);
}

TEST(SavedSchedule, ComesBackAsTheRootAloneWhenAValueHoldsWhatNothingEscapes)
{
    for (const char* text : {"a\"b", "a & b", "a < b"}) {
        TScheduleFiles files;
        files.WriteSmallHouse();
        const auto root = files.Load();
        root->Child(0)->Child(0)->Data()->MaxVal = QString::fromLatin1(text);
        files.Save(root.get());
        EXPECT_TRUE(files.Read().contains(QByteArray("maxv=\"") + text + "\">\r\n"));
        EXPECT_EQ(OutlineText(files.Load().get()), QStringLiteral("Wochenschaltplan")) << text;
    }
}

TEST(SavedSchedule, OfOddLevelsComesBackAsItsLevelsSay)
{
    TScheduleFiles files;
    const auto root =
        files.Load("<eibnet><schedule/><node alias='Licht' access='3'><schedule/><node alias='a' name='n'>"
                   "<node alias='b'/></node></node><nodes name='g'><schedule/></nodes></eibnet>");
    // As a group, the caption of the entry can be read by nobody.
    delete root->Child(0);
    files.Save(root.get());
    const auto again = files.Load();
    EXPECT_EQ(OutlineText(again.get()).toStdString(), R"(Wochenschaltplan
  Licht
    a
  g)");
    EXPECT_EQ(again->Child(0)->GroupAccess(), 0);
    EXPECT_EQ(again->Child(1)->GroupAccess(), 5);
    EXPECT_EQ(again->Child(0)->Child(0)->Data()->Name, QStringLiteral("n"));
}

TEST(SavedSchedule, DropsWhatNoEditorWrites)
{
    TScheduleFiles files;
    const auto root = files.Load("<eibnet version='2'><!-- c --><nodes name='g' id='7'>text<node name='n' alias='a' "
                                 "room='3'/><more/></nodes></eibnet>");
    EXPECT_EQ(
        Written(root.get()),
        ScheduleDocument({"<nodes name=\"g\" access=\"5\">",
                          R"(<node name="n" alias="a" eis="1" type="eib" access="5" enabled="1" minv="" maxv="">)",
                          "</node>", "</nodes>"}));
}
