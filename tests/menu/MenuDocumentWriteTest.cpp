#include "MenuDocument.h"

#include "MenuFiles.h"
#include "Vlerrors.h"

#include <QBuffer>
#include <gtest/gtest.h>

#include <limits>

namespace
{

class WriteMenuTest : public testing::Test
{
protected:
    static TMenuNode* Append(TMenuNode* parent, const char* caption)
    {
        return Append(parent, {.Caption = QString::fromUtf8(caption)});
    }
    static TMenuNode* Append(TMenuNode* parent, TVlMenuItem item)
    {
        return Append(parent, new TMenuNode(std::move(item), parent->Level() == 0 ? miMainItem : miSubItem));
    }
    static TMenuNode* AppendWithoutRecord(TMenuNode* parent, const char* caption)
    {
        return Append(parent, new TMenuNode(QString::fromUtf8(caption), miSubItem));
    }
    // The line of an item without anything but its caption.
    static QByteArray Line(int number, const char* caption, const char* kind)
    {
        return "<menuitem id=\"mi" + QByteArray::number(number) + "\" class=\"" + kind + "\" caption=\"" + caption +
               "\" title=\"\" link=\"\" help=\"\" access=\"0\"" + (QByteArray(kind) == "main" ? " >" : " />");
    }
    // The one line that a document holds for `item`.
    static QByteArray LineOf(TVlMenuItem item)
    {
        const auto root = MakeMenuRoot();
        Append(root.get(), std::move(item));
        return WrittenMenu(root.get()).split('\n').value(3).trimmed();
    }
    QByteArray Written() const { return WrittenMenu(m_root.get()); }

    std::unique_ptr<TMenuNode> m_root = MakeMenuRoot();

private:
    static TMenuNode* Append(TMenuNode* parent, TMenuNode* node)
    {
        parent->addChild(node);
        return node;
    }
};

} // namespace

TEST_F(WriteMenuTest, WritesAMenuWithoutItemsAsThreeLinesAndTheTrailer)
{
    const QByteArray expected = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
                                "<?xml-stylesheet type=\"text/xsl\" href=\"\"?>\r\n"
                                "<menu version=\"0.1\" levels=\"2\" logo=\"\" helpbase=\"\">\r\n"
                                "</menu>\r\n";
    EXPECT_EQ(Written(), expected);
    EXPECT_EQ(WrittenMenu(nullptr), expected);
}

TEST_F(WriteMenuTest, WritesTheSettingsIntoTheHeader)
{
    EXPECT_EQ(WrittenMenu(m_root.get(), {.StylePath = QStringLiteral("C:\\Haus\\menu.xsl"),
                                         .Levels = -7,
                                         .Logo = QStringLiteral("/bilder/größe €.png"),
                                         .HelpBase = QStringLiteral("/h")}),
              "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
              "<?xml-stylesheet type=\"text/xsl\" href=\"C:\\Haus\\menu.xsl\"?>\r\n"
              "<menu version=\"0.1\" levels=\"-7\" logo=\"/bilder/gr\xF6\xDF"
              "e \x80.png\" helpbase=\"/h\">\r\n"
              "</menu>\r\n");
}

TEST_F(WriteMenuTest, EscapesNothingInTheHeader)
{
    const QByteArray written = WrittenMenu(
        m_root.get(), {.StylePath = QStringLiteral("a\"?>%s"), .Logo = QStringLiteral("<&\">%d"), .HelpBase = {}});
    EXPECT_TRUE(written.contains(" href=\"a\"?>%s\"?>\r\n"));
    EXPECT_TRUE(written.contains(" logo=\"<&\">%d\" helpbase=\"\">\r\n"));
}

TEST_F(WriteMenuTest, WritesMainAndSubItemsInTheirForm)
{
    TMenuNode* main = Append(m_root.get(), {.Caption = QStringLiteral("Haus"),
                                            .Title = QStringLiteral("Alles"),
                                            .Link = QStringLiteral("/h.html"),
                                            .Help = QStringLiteral("/hilfe.html"),
                                            .Access = 3});
    Append(main, {.Caption = QStringLiteral("EG"), .Link = QStringLiteral("/eg.html"), .Access = -1});
    EXPECT_EQ(Written(),
              MenuText({"<menuitem id=\"mi0\" class=\"main\" caption=\"Haus\" title=\"Alles\" link=\"/h.html\" "
                        "help=\"/hilfe.html\" access=\"3\" >",
                        "<menuitem id=\"mi1\" class=\"sub\" caption=\"EG\" title=\"\" link=\"/eg.html\" help=\"\" "
                        "access=\"-1\" />",
                        "</menuitem>"}));
}

TEST_F(WriteMenuTest, WritesAMainItemWithoutSubItemsAsAnOpenTagAndItsEnd)
{
    Append(m_root.get(), "a");
    EXPECT_EQ(Written(), MenuText({Line(0, "a", "main"), "</menuitem>"}));
}

TEST_F(WriteMenuTest, NumbersAllItemsInTheirOrderWithoutGaps)
{
    TMenuNode* a = Append(m_root.get(), "a");
    Append(a, "b");
    Append(a, "c");
    Append(m_root.get(), "d");
    Append(Append(m_root.get(), "e"), "f");
    EXPECT_EQ(Written(), MenuText({Line(0, "a", "main"), Line(1, "b", "sub"), Line(2, "c", "sub"), "</menuitem>",
                                   Line(3, "d", "main"), "</menuitem>", Line(4, "e", "main"), Line(5, "f", "sub"),
                                   "</menuitem>"}));
}

TEST_F(WriteMenuTest, WritesDeeperItemsFlatAmongTheSubItems)
{
    TMenuNode* sub = Append(Append(m_root.get(), "a"), "b");
    Append(Append(sub, "c"), "d");
    Append(m_root->Child(0), "e");
    EXPECT_EQ(Written(), MenuText({Line(0, "a", "main"), Line(1, "b", "sub"), Line(2, "c", "sub"), Line(3, "d", "sub"),
                                   Line(4, "e", "sub"), "</menuitem>"}));
}

TEST_F(WriteMenuTest, ClosesAMainItemWithoutARecordToo)
{
    Append(AppendWithoutRecord(m_root.get(), "a"), "b");
    Append(m_root.get(), "c");
    EXPECT_EQ(Written(), MenuText({Line(0, "b", "sub"), "</menuitem>", Line(1, "c", "main"), "</menuitem>"}));
}

TEST_F(WriteMenuTest, LeavesOutASubItemWithoutARecordAndWritesWhatIsBelowIt)
{
    TMenuNode* main = Append(m_root.get(), "a");
    Append(AppendWithoutRecord(main, "b"), "c");
    AppendWithoutRecord(main, "d");
    EXPECT_EQ(Written(), MenuText({Line(0, "a", "main"), Line(1, "c", "sub"), "</menuitem>"}));
}

TEST_F(WriteMenuTest, TakesTheCaptionFromTheRecordAndNotFromTheNode)
{
    Append(m_root.get(), "a")->SetCaption(QStringLiteral("other"));
    EXPECT_EQ(Written(), MenuText({Line(0, "a", "main"), "</menuitem>"}));
}

TEST_F(WriteMenuTest, TellsNothingOfAnItemsKind)
{
    for (const TMenuKind kind : {mkAlarm, mkConfig, mkLogout, mkLink}) {
        const QByteArray line =
            LineOf({.Caption = QStringLiteral("x"), .Kind = kind, .DataType = dtmEIS11, .Source = nsVIRTUAL});
        EXPECT_EQ(line, Line(0, "x", "main")) << kind;
    }
}

TEST_F(WriteMenuTest, WritesTheNumbersOfTheirRange)
{
    EXPECT_TRUE(LineOf({.Access = std::numeric_limits<std::int32_t>::max()}).endsWith(" access=\"2147483647\" >"));
    EXPECT_TRUE(LineOf({.Access = std::numeric_limits<std::int32_t>::min()}).endsWith(" access=\"-2147483648\" >"));
}

TEST_F(WriteMenuTest, EscapesNothing)
{
    EXPECT_EQ(LineOf({.Caption = QStringLiteral("a\"b"),
                      .Title = QStringLiteral("c & d"),
                      .Link = QStringLiteral("<e>"),
                      .Help = QStringLiteral("%s %d ' \r\n")}),
              "<menuitem id=\"mi0\" class=\"main\" caption=\"a\"b\" title=\"c & d\" link=\"<e>\" help=\"%s %d '");
}

TEST_F(WriteMenuTest, WritesACaptionWithAQuoteThatTheReaderRejects)
{
    Append(m_root.get(), "Bad \"oben\"");
    const QByteArray written = Written();
    EXPECT_TRUE(written.contains(" caption=\"Bad \"oben\"\" title="));
    EXPECT_FALSE(TMenuFile().Menu(written));
}

TEST_F(WriteMenuTest, WritesInTheCodePage)
{
    EXPECT_TRUE(LineOf({.Caption = QStringLiteral("Küche € „x“ Ω 😀")})
                    .contains(" caption=\"K\xFC"
                              "che \x80 \x84x\x93 ? ?\" "));
}

TEST_F(WriteMenuTest, ThrowsWhenTheDeviceTakesNothing)
{
    QBuffer closed;
    EXPECT_THROW(WriteMenu(closed, m_root.get(), {}), TFileError);
}

// Written and read again

TEST_F(WriteMenuTest, NumbersAnewWhatWasRead)
{
    const TMenuFile file;
    auto content = file.Menu("<menu><menuitem id='mi7' caption='a'/><menuitem id='mi3' caption='b'/></menu>");
    ASSERT_TRUE(content);
    EXPECT_EQ(WrittenMenu(WithItems(std::move(content->Items)).get()),
              MenuText({Line(0, "a", "main"), "</menuitem>", Line(1, "b", "main"), "</menuitem>"}));
}

TEST_F(WriteMenuTest, TurnsEverySpecialItemIntoAnOrdinaryOne)
{
    for (const TMenuKind kind : {mkAlarm, mkConfig, mkLogout})
        Append(m_root.get(), {.Caption = QString::number(kind),
                              .Title = QStringLiteral("t"),
                              .Link = QStringLiteral("/l"),
                              .Help = QStringLiteral("/h"),
                              .Access = 5,
                              .Kind = kind});
    const auto content = TMenuFile().Menu(Written());
    ASSERT_TRUE(content);
    ASSERT_EQ(content->Items.size(), 3U);
    for (const auto& node : content->Items)
        EXPECT_EQ(
            RecordOf(node.get()),
            QStringLiteral("kind=0 type=0 source=0 access=5 caption=%1 title=t link=/l help=/h").arg(node->Caption()));
}

TEST_F(WriteMenuTest, BringsADeeperItemBackAsASubItem)
{
    Append(Append(Append(m_root.get(), "a"), "b"), "c");
    const auto content = TMenuFile().Menu(Written());
    ASSERT_TRUE(content);
    EXPECT_EQ(OutlineOf(content->Items),
              QStringList({QStringLiteral("a"), QStringLiteral("  b"), QStringLiteral("  c")}));
}
