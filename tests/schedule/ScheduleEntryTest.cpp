#include "ScheduleEntry.h"

#include "TestSupport.h"

#include <QString>
#include <QTime>
#include <gtest/gtest.h>

#include <array>
#include <string>

namespace
{

// "07:05:00 1111100 [value] enabled postprocess", with "-" for a flag that is off.
std::string FieldsOf(const TScheduleEntry& entry)
{
    std::string fields = entry.Time.toString(QStringLiteral("HH:mm:ss ")).toStdString();
    for (const bool day : entry.Days)
        fields += day ? '1' : '0';
    fields += " [" + entry.Value.toStdString() + ']';
    fields += entry.Enabled ? " enabled" : " -";
    return fields + (entry.PostProcess ? " postprocess" : " -");
}

std::string Read(const QString& text)
{
    const auto entry = ReadScheduleEntry(text);
    return entry ? FieldsOf(*entry) : "no entry";
}

std::string Read(const char* text)
{
    return Read(QString::fromUtf8(text));
}

// The fields of an entry with nothing but one attribute, as it stands in the text.
TScheduleEntry ReadWith(const std::string& attribute)
{
    return ReadScheduleEntry(QString::fromStdString("<schedule " + attribute + "/>")).value_or(TScheduleEntry{});
}

struct TReadCase
{
    const char* Text;
    const char* Fields;
};

void PrintTo(const TReadCase& read, std::ostream* stream)
{
    *stream << read.Text;
}

constexpr std::array ReadCases{
    TReadCase{R"(<schedule time="07:05" dow="1111100" value="1" enabled="1" postprocess="0" />)",
              "07:05:00 1111100 [1] enabled -"},
    TReadCase{R"(<schedule time="07:05" dow="1111100" value="1" enabled="1" postprocess="0"/>)",
              "07:05:00 1111100 [1] enabled -"},
    TReadCase{R"(<schedule time='07:05' dow='0000011' value='1' enabled='0' postprocess='1' />)",
              "07:05:00 0000011 [1] - postprocess"},
    TReadCase{R"(<schedule time='23:59' dow="1" value='a b' enabled="0" postprocess='1'></schedule>)",
              "23:59:00 1000000 [a b] - postprocess"},
    TReadCase{R"(<schedule postprocess="1" enabled="0" value="x" dow="0101010" time="12:00"/>)",
              "12:00:00 0101010 [x] - postprocess"},
    TReadCase{"<schedule \n\ttime = \"6:07\"\n\tdow=  '1000000'\n\tvalue =\"5\"/>", "06:07:00 1000000 [5] enabled -"},
    TReadCase{"<SCHEDULE time=\"06:00\" />", "06:00:00 0000000 [] enabled -"},
    TReadCase{"<Schedule TIME=\"06:00\" Dow=\"1111111\" VALUE=\"1\" Enabled=\"0\" PostProcess=\"1\" />",
              "00:00:00 0000000 [] enabled -"},
    TReadCase{"<schedule ", "00:00:00 0000000 [] enabled -"},
    TReadCase{"<schedule />", "00:00:00 0000000 [] enabled -"},
    TReadCase{"<schedule time=07:05 dow=1111100 value=21 enabled=0 postprocess=1 />",
              "07:05:00 1111100 [21] - postprocess"},
    // Without quotes a value goes on to the next blank.
    TReadCase{"<schedule value=21 enabled=0/>", "00:00:00 0000000 [21] enabled -"},
    TReadCase{"<schedule dow=\"1\" dow=\"01\" value=\"first\" value=\"second\" />",
              "00:00:00 1000000 [first] enabled -"},
    TReadCase{R"(<schedule time="06:00" more="x" room="3"/>)", "06:00:00 0000000 [] enabled -"},
    TReadCase{"<schedule value=\"open", "00:00:00 0000000 [open] enabled -"},
    TReadCase{"<schedule time=\"08:00", "08:00:00 0000000 [] enabled -"},
    TReadCase{R"(<schedule time="06:00"><!-- value="5" --></schedule>)", "06:00:00 0000000 [5] enabled -"},
    // A key is found wherever it stands first.
    TReadCase{R"(<schedule runtime="06:00" time="08:00"/>)", "06:00:00 0000000 [] enabled -"},
    TReadCase{R"(<schedule value="dow=1111111 time=12:30 x"/>)",
              "12:30:00 1111111 [dow=1111111 time=12:30 x] enabled -"},
    TReadCase{R"(<schedule value="enable" enabled="0"/>)", "00:00:00 0000000 [enable] - -"},
};

class ReadScheduleEntryCase : public testing::TestWithParam<TReadCase>
{};

TScheduleEntry Entry(const char* value)
{
    TScheduleEntry entry;
    entry.Value = QString::fromUtf8(value);
    return entry;
}

std::string TextOf(const TScheduleEntry& entry)
{
    return ScheduleEntryText(entry).toStdString();
}

} // namespace

TEST(ScheduleEntry, IsNothingForATextThatDoesNotBeginAsOne)
{
    for (const char* text : {"", "schedule ", "<schedule", "<schedule/>", "<schedule\ttime=\"1:00\"/>",
                             "<schedule\ntime=\"1:00\"/>", " <schedule />", "<scheduled />", "<schedules />",
                             "< schedule />", "<x:schedule time=\"1:00\"/>", "Licht Flur"})
        EXPECT_FALSE(ReadScheduleEntry(QString::fromLatin1(text))) << text;
}

TEST_P(ReadScheduleEntryCase, GivesItsFields)
{
    EXPECT_EQ(Read(GetParam().Text), GetParam().Fields);
}

INSTANTIATE_TEST_SUITE_P(Texts, ReadScheduleEntryCase, testing::ValuesIn(ReadCases));

TEST(ScheduleEntry, TakesTheDaysFromTheirCharacters)
{
    const std::array<std::pair<const char*, const char*>, 12> days{{{"", "0000000"},
                                                                    {"1", "1000000"},
                                                                    {"0000001", "0000001"},
                                                                    {"111111", "1111110"},
                                                                    {"1111111", "1111111"},
                                                                    {"11111111111", "1111111"},
                                                                    {"00000001", "0000000"},
                                                                    {"1234567", "1000000"},
                                                                    {"1 1 1 1 1", "1010101"},
                                                                    {"xxxxxx1", "0000001"},
                                                                    {"2222222", "0000000"},
                                                                    {"true", "0000000"}}};
    for (const auto& [text, expected] : days) {
        std::string read;
        for (const bool day : ReadWith("dow=\"" + std::string(text) + '"').Days)
            read += day ? '1' : '0';
        EXPECT_EQ(read, expected) << text;
    }
}

TEST(ScheduleEntry, TakesTheTimeAsFarAsItIsOne)
{
    const std::array<std::pair<const char*, const char*>, 22> times{
        {{"07:05", "07:05:00"},    {"7:5", "07:05:00"},     {"00:00", "00:00:00"},     {"23:59", "23:59:00"},
         {"08:30:15", "08:30:15"}, {"8:30:x", "08:30:00"},  {"8:30:15:9", "08:30:15"}, {"x:30", "00:30:00"},
         {"8:x", "08:00:00"},      {" 8: 30", "08:30:00"},  {"8 :30", "00:30:00"},     {"8::30", "08:30:00"},
         {":8:30", "08:30:00"},    {"007:005", "07:05:00"}, {"25:00", "00:00:00"},     {"24:00", "00:00:00"},
         {"10:75", "00:00:00"},    {"8:30:60", "00:00:00"}, {"-1:30", "00:00:00"},     {"12", "00:00:00"},
         {"", "00:00:00"},         {"12.30", "00:00:00"}}};
    for (const auto& [text, expected] : times)
        EXPECT_EQ(ReadWith("time=\"" + std::string(text) + '"').Time.toString(QStringLiteral("HH:mm:ss")).toStdString(),
                  expected)
            << text;
}

TEST(ScheduleEntry, TakesEverySecondOfTheDayAsItIs)
{
    for (QTime time(0, 0); time.hour() < 23 || time.minute() < 59; time = time.addSecs(59)) {
        const std::string text = time.toString(QStringLiteral("HH:mm:ss")).toStdString();
        ASSERT_EQ(ReadWith("time='" + text + '\'').Time, time) << text;
    }
}

TEST(ScheduleEntry, IsEnabledUnlessItSaysZero)
{
    for (const char* off : {"0", "00", "-0", " 0", "$0"})
        EXPECT_FALSE(ReadWith("enabled=\"" + std::string(off) + '"').Enabled) << off;
    for (const char* on : {"1", "2", "-1", "", "no", "false", "0x", "0 ", "0.0", "99999999999"})
        EXPECT_TRUE(ReadWith("enabled=\"" + std::string(on) + '"').Enabled) << on;
    EXPECT_TRUE(ReadWith("").Enabled);
}

TEST(ScheduleEntry, TakesEnableForEnabled)
{
    EXPECT_FALSE(ReadWith("enable=\"0\"").Enabled);
    EXPECT_TRUE(ReadWith("enable=\"1\"").Enabled);
    EXPECT_FALSE(ReadWith("enable=\"0\" enabled=\"1\"").Enabled);
    EXPECT_TRUE(ReadWith("enabled=\"1\" enable=\"0\"").Enabled);
}

TEST(ScheduleEntry, IsPostProcessedOnlyForANumberOtherThanZero)
{
    for (const char* on : {"1", "2", "-1", " 1", "$F"})
        EXPECT_TRUE(ReadWith("postprocess=\"" + std::string(on) + '"').PostProcess) << on;
    for (const char* off : {"0", "", "yes", "true", "1x", "1 ", "99999999999"})
        EXPECT_FALSE(ReadWith("postprocess=\"" + std::string(off) + '"').PostProcess) << off;
    EXPECT_FALSE(ReadWith("").PostProcess);
}

TEST(ScheduleEntry, TakesTheValueRaw)
{
    EXPECT_EQ(ReadWith(R"(value="&quot;x&quot; &amp; &#10;")").Value, QStringLiteral("&quot;x&quot; &amp; &#10;"));
    EXPECT_EQ(ReadWith(R"(value='say "x"')").Value, QStringLiteral("say \"x\""));
    EXPECT_EQ(ReadWith(R"(value="it's")").Value, QStringLiteral("it's"));
    EXPECT_EQ(ReadWith("value=\"Küche € %s < >\"").Value, QStringLiteral("Küche € %s < >"));
    EXPECT_EQ(ReadWith("value=\"  1  \"").Value, QStringLiteral("  1  "));
    EXPECT_EQ(ReadWith("value=\"\"").Value, QString());
}

TEST(ScheduleEntry, TakesAValueOfTenMegabytes)
{
    constexpr std::size_t Size = std::size_t{10} * 1024 * 1024;
    EXPECT_EQ(ReadWith("value=\"" + std::string(Size, 'x') + '"').Value.size(), static_cast<qsizetype>(Size));
}

// Building

TEST(ScheduleEntryText, IsThatOfANewEntry)
{
    EXPECT_EQ(TextOf(Entry("0")), R"(<schedule time="00:00" dow="0000000" value="0" enabled="0" postprocess="0" />)");
}

TEST(ScheduleEntryText, HoldsEveryField)
{
    TScheduleEntry entry = Entry("21,5");
    entry.Time = QTime(7, 5);
    entry.Days = {true, false, true, false, true, false, true};
    entry.Enabled = true;
    entry.PostProcess = true;
    EXPECT_EQ(TextOf(entry), R"(<schedule time="07:05" dow="1010101" value="21,5" enabled="1" postprocess="1" />)");
}

TEST(ScheduleEntryText, LeavesSecondsAway)
{
    TScheduleEntry entry = Entry("1");
    entry.Time = QTime(23, 59, 59, 999);
    EXPECT_EQ(TextOf(entry), R"(<schedule time="23:59" dow="0000000" value="1" enabled="0" postprocess="0" />)");
}

TEST(ScheduleEntryText, HoldsTheValueRaw)
{
    EXPECT_EQ(TextOf(Entry("a\"b & <c> %s %d 'ü'")),
              "<schedule time=\"00:00\" dow=\"0000000\" value=\"a\"b & <c> %s %d 'ü'\" enabled=\"0\" "
              "postprocess=\"0\" />");
    EXPECT_EQ(TextOf(Entry("")), R"(<schedule time="00:00" dow="0000000" value="" enabled="0" postprocess="0" />)");
}

TEST(ScheduleEntryText, ComesBackAsTheSameFieldsForEveryDayAndFlag)
{
    for (unsigned bits = 0; bits < 1U << 9; ++bits) {
        TScheduleEntry entry = Entry("50");
        entry.Time = QTime(static_cast<int>(bits % 24), static_cast<int>(bits % 60));
        for (std::size_t day = 0; day < entry.Days.size(); ++day)
            entry.Days[day] = (bits >> day & 1U) != 0;
        entry.Enabled = (bits >> 7 & 1U) != 0;
        entry.PostProcess = (bits >> 8 & 1U) != 0;
        ASSERT_EQ(Read(ScheduleEntryText(entry)), FieldsOf(entry)) << bits;
    }
}

TEST(ScheduleEntryText, DropsWhatNobodyKnows)
{
    const auto entry =
        ReadScheduleEntry(QStringLiteral("<schedule room='3' time='08:30:15' enable='0'><x/></schedule>"));
    ASSERT_TRUE(entry);
    EXPECT_EQ(TextOf(*entry), R"(<schedule time="08:30" dow="0000000" value="" enabled="0" postprocess="0" />)");
}
