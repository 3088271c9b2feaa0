#include "ScheduleDocument.h"

#include "ScheduleFiles.h"
#include "Vlerrors.h"

#include <QBuffer>
#include <gtest/gtest.h>

#include <limits>

namespace
{

class WriteScheduleTest : public testing::Test
{
protected:
    static TScheduleNode* Append(TScheduleNode* parent, const char* caption)
    {
        return Append(parent, new TScheduleNode(QString::fromUtf8(caption), parent->Level() + 1));
    }
    static TScheduleNode* Append(TScheduleNode* parent, TVlNodeData data)
    {
        return Append(parent, new TScheduleNode(std::move(data), parent->Level() + 1));
    }
    static TVlNodeData Data(const char* name, const char* alias)
    {
        TVlNodeData data;
        data.Name = QString::fromUtf8(name);
        data.Alias = QString::fromUtf8(alias);
        return data;
    }
    // The one line that a document holds for `data`.
    QByteArray LineOf(TVlNodeData data) const
    {
        const auto root = MakeScheduleRoot();
        Append(Append(root.get(), "g"), std::move(data));
        return ::Written(root.get()).split('\n').value(3).trimmed();
    }
    QByteArray Written() const { return ::Written(m_root.get()); }

    std::unique_ptr<TScheduleNode> m_root = MakeScheduleRoot();

private:
    static TScheduleNode* Append(TScheduleNode* parent, TScheduleNode* node)
    {
        parent->addChild(node);
        return node;
    }
};

const QByteArray FreshNode = R"(<node name="n" alias="a" eis="1" type="eib" access="5" enabled="1" minv="" maxv="">)";

} // namespace

TEST_F(WriteScheduleTest, WritesAnEmptyDocument)
{
    const QByteArray expected = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<eibnet>\r\n</eibnet>\r\n";
    EXPECT_EQ(Written(), expected);
    EXPECT_EQ(::Written(nullptr), expected);
}

TEST_F(WriteScheduleTest, WritesEveryLineInItsForm)
{
    TScheduleNode* group = Append(m_root.get(), "Erdgeschoss");
    group->SetGroupAccess(3);
    TVlNodeData data = Data("40001", "Heizung");
    data.DataType = dtmEIS10;
    data.Source = nsMODBUS;
    data.Access = 2;
    data.Enabled = false;
    data.MinVal = QStringLiteral("5");
    data.MaxVal = QStringLiteral("30");
    data.Id = 99;
    Append(Append(group, data), "<schedule time=\"06:30\" />");
    EXPECT_EQ(Written(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
                         "<eibnet>\r\n"
                         "<nodes name=\"Erdgeschoss\" access=\"3\">\r\n"
                         "<node name=\"40001\" alias=\"Heizung\" eis=\"10\" type=\"modbus\" access=\"2\" enabled=\"0\" "
                         "minv=\"5\" maxv=\"30\">\r\n"
                         "<schedule time=\"06:30\" />\r\n"
                         "</node>\r\n"
                         "</nodes>\r\n"
                         "</eibnet>\r\n");
}

TEST_F(WriteScheduleTest, WritesEverythingInTheOrderOfTheTree)
{
    for (const char* name : {"2", "1"}) {
        TScheduleNode* group = Append(m_root.get(), name);
        for (const char* alias : {"b", "a"}) {
            TScheduleNode* datapoint = Append(group, Data("n", alias));
            for (const char* entry : {"<y/>", "<x/>"})
                Append(datapoint, entry);
        }
    }
    QList<QByteArray> marks;
    for (const QByteArray& line : Written().split('\n'))
        marks.append(line.startsWith("<node ") ? line.mid(line.indexOf("alias=") + 7, 1) : line.mid(0, 15).trimmed());
    EXPECT_EQ(marks.mid(2, 10), QList<QByteArray>({"<nodes name=\"2\"", "b", "<y/>", "<x/>", "</node>", "a", "<y/>",
                                                   "<x/>", "</node>", "</nodes>"}));
    EXPECT_EQ(marks.value(12), "<nodes name=\"1\"");
}

TEST_F(WriteScheduleTest, WritesEveryTypeAndSource)
{
    TVlNodeData data = Data("n", "a");
    const QList<QByteArray> types{"1", "6", "14", "10", "11"};
    for (int type = 0; type < types.size(); ++type) {
        data.DataType = static_cast<TDataTypeMap>(type);
        EXPECT_TRUE(LineOf(data).contains(" eis=\"" + types[type] + "\" type=\"eib\" ")) << type;
    }
    const QList<QByteArray> sources{"eib", "modbus", "virtual"};
    for (int source = 0; source < sources.size(); ++source) {
        data.Source = static_cast<TNodeSource>(source);
        EXPECT_TRUE(LineOf(data).contains(" eis=\"11\" type=\"" + sources[source] + "\" ")) << source;
    }
}

TEST_F(WriteScheduleTest, WritesTheNumbersOfItsRange)
{
    TVlNodeData data = Data("n", "a");
    data.Access = std::numeric_limits<std::int32_t>::min();
    EXPECT_TRUE(LineOf(data).contains(" access=\"-2147483648\" "));
    Append(m_root.get(), "g")->SetGroupAccess(std::numeric_limits<std::int32_t>::max());
    EXPECT_TRUE(Written().contains("access=\"2147483647\""));
}

TEST_F(WriteScheduleTest, TakesTheAliasFromTheRecordAndNotFromTheCaption)
{
    TScheduleNode* datapoint = Append(Append(m_root.get(), "g"), Data("n", "a"));
    datapoint->SetCaption(QStringLiteral("other"));
    EXPECT_TRUE(Written().contains(FreshNode));
    EXPECT_FALSE(Written().contains("other"));
}

TEST_F(WriteScheduleTest, WritesEntriesUnchanged)
{
    TScheduleNode* datapoint = Append(Append(m_root.get(), "g"), Data("n", "a"));
    for (const char* entry : {"<schedule time=\"06:30\"/>", "no entry & \"at\" < all %s %d", "", " two\nlines ", "ü€Ω"})
        Append(datapoint, entry);
    EXPECT_TRUE(Written().contains(FreshNode + "\r\n"
                                               "<schedule time=\"06:30\"/>\r\n"
                                               "no entry & \"at\" < all %s %d\r\n"
                                               "\r\n"
                                               " two\nlines \r\n"
                                               "\xFC\x80?\r\n"
                                               "</node>\r\n"));
}

TEST_F(WriteScheduleTest, EscapesNothing)
{
    Append(m_root.get(), "a\"b & <c> %s");
    EXPECT_TRUE(Written().contains("<nodes name=\"a\"b & <c> %s\" access=\"0\">\r\n"));
    TVlNodeData data = Data("a\"b", "c & d < e %s");
    data.MinVal = QStringLiteral("\"");
    data.MaxVal = QStringLiteral("%d>'");
    EXPECT_EQ(LineOf(data), "<node name=\"a\"b\" alias=\"c & d < e %s\" eis=\"1\" type=\"eib\" access=\"5\" "
                            "enabled=\"1\" minv=\"\"\" maxv=\"%d>'\">");
}

TEST_F(WriteScheduleTest, WritesInTheCodePage)
{
    EXPECT_TRUE(LineOf(Data("Ω", "Küche € „x“ 😀"))
                    .startsWith("<node name=\"?\" alias=\"K\xFC"
                                "che \x80 \x84x\x93 ?\" "));
}

TEST_F(WriteScheduleTest, ThrowsWhenTheDeviceTakesNothing)
{
    QBuffer closed;
    EXPECT_THROW(WriteSchedule(closed, m_root.get()), TFileError);
}

// Nodes that paste and drag brought to levels where none of their kind stood before

TEST_F(WriteScheduleTest, WritesADatapointOnTheFirstLevelAsAGroupWithoutAccess)
{
    TScheduleNode* datapoint = Append(m_root.get(), Data("n", "Licht"));
    Append(datapoint, "<schedule/>");
    Append(datapoint, Data("n", "a"));
    EXPECT_EQ(Written(), ScheduleDocument({"<nodes name=\"Licht\" access=\"0\">", FreshNode, "</node>", "</nodes>"}));
}

TEST_F(WriteScheduleTest, WritesAnEntryOnTheFirstLevelAsAGroup)
{
    Append(m_root.get(), "<schedule/>");
    EXPECT_EQ(Written(), ScheduleDocument({"<nodes name=\"<schedule/>\" access=\"0\">", "</nodes>"}));
}

TEST_F(WriteScheduleTest, LeavesOutWhatHasNoRecordOnTheSecondLevelWithEverythingBelow)
{
    TScheduleNode* group = Append(m_root.get(), "g");
    Append(Append(group, "<schedule/>"), "<schedule time=\"1\"/>");
    Append(group, Data("n", "a"));
    TScheduleNode* inner = Append(group, "h");
    inner->SetGroupAccess(3);
    Append(inner, Data("n", "b"));
    EXPECT_EQ(Written(), ScheduleDocument({"<nodes name=\"g\" access=\"0\">", FreshNode, "</node>", "</nodes>"}));
}

TEST_F(WriteScheduleTest, WritesTheCaptionOfWhateverStandsOnTheThirdLevel)
{
    TScheduleNode* datapoint = Append(Append(m_root.get(), "g"), Data("n", "a"));
    Append(Append(datapoint, Data("n", "Licht")), "<schedule time=\"deeper\"/>");
    Append(datapoint, "Gruppe");
    EXPECT_EQ(Written(), ScheduleDocument(
                             {"<nodes name=\"g\" access=\"0\">", FreshNode, "Licht", "Gruppe", "</node>", "</nodes>"}));
}

TEST_F(WriteScheduleTest, KeepsTheAccessOfAGroupThatWasElsewhereMeanwhile)
{
    TScheduleNode* group = Append(m_root.get(), "g");
    group->SetGroupAccess(7);
    TScheduleNode* other = Append(m_root.get(), "h");
    ASSERT_TRUE(group->MoveTo(other, naAddChild));
    EXPECT_EQ(Written(), ScheduleDocument({"<nodes name=\"h\" access=\"0\">", "</nodes>"}));
    ASSERT_TRUE(group->MoveTo(m_root.get(), naAddChild));
    EXPECT_TRUE(Written().contains("<nodes name=\"g\" access=\"7\">"));
}
