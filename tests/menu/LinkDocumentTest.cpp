#include "MenuDocument.h"

#include "MenuFiles.h"
#include "Vlerrors.h"

#include <QBuffer>
#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace
{

class LinkDocument : public testing::Test
{
protected:
    bool Read(const QByteArray& content)
    {
        m_links = m_file.Links(content);
        return m_links.has_value();
    }
    // The record of a link that is read from an element with these attributes.
    TVlMenuItem ReadLink(const QByteArray& attributes)
    {
        EXPECT_TRUE(Read("<links><link " + attributes + "/></links>")) << attributes.toStdString();
        return m_links && !m_links->empty() ? *static_cast<const TMenuNode*>(m_links->front().get())->Item()
                                            : TVlMenuItem{};
    }
    std::string Captions() const { return OutlineOf(*m_links).join(u'|').toStdString(); }

    void Append(TVlMenuItem item) const { m_root->addChild(new TMenuNode(std::move(item), miSubItem)); }
    QByteArray Written() const { return WrittenLinks(m_root.get()); }
    // The one line that a document holds for `item`.
    static QByteArray LineOf(TVlMenuItem item)
    {
        const auto root = MakeLinkRoot();
        root->addChild(new TMenuNode(std::move(item), miSubItem));
        return WrittenLinks(root.get()).split('\n').value(2).trimmed();
    }
    // The line of a link without anything but these.
    static QByteArray Line(int number, const char* name, const char* alias)
    {
        return "<link id=\"lk" + QByteArray::number(number) + "\" class=\"link\" name=\"" + name + "\" alias=\"" +
               alias + "\" value=\"\" href=\"\" target=\"eib\" eis=\"1\" access=\"0\" />";
    }

    TMenuFile m_file;
    std::optional<TMenuNodes> m_links;
    std::unique_ptr<TMenuNode> m_root = MakeLinkRoot();
};

} // namespace

// Reading

TEST_F(LinkDocument, IsReadWithEveryAttribute)
{
    ASSERT_TRUE(Read(LinksText({R"(<link id="lk0" class="link" name="40001" alias="Heizung" value="21,5" )"
                                R"(href="/seiten/h.html" target="modbus" eis="10" access="3" />)",
                                R"(<link id="lk1" class="link" name="tor" alias="Tor" value="" href="" )"
                                R"(target="virtual" eis="14" access="-1" />)"})));
    EXPECT_EQ(Captions(), "Heizung|Tor");
    EXPECT_EQ(
        RecordOf(m_links->front().get()),
        QStringLiteral("kind=4 type=3 source=1 access=3 caption=Heizung title=40001 link=21,5 help=/seiten/h.html"));
    EXPECT_EQ(RecordOf(m_links->back().get()),
              QStringLiteral("kind=4 type=2 source=2 access=-1 caption=Tor title=tor link= help="));
    EXPECT_EQ(m_links->front()->ImageIndex(), 1);
    EXPECT_EQ(m_links->front()->SelectedIndex(), 1);
}

TEST_F(LinkDocument, IsNothingForWhatIsNoFile)
{
    for (const QString& path : {QString(), QStringLiteral("/none/dplinks.xml"), m_file.Directory(), m_file.Path()})
        EXPECT_FALSE(ReadLinks(path)) << path.toStdString();
}

TEST_F(LinkDocument, IsReadFromAPackagePath)
{
    m_file.Write("<links><link alias='a'/></links>");
    m_links = ReadLinks(m_file.Path().replace(u'/', u'\\'));
    ASSERT_TRUE(m_links);
    EXPECT_EQ(Captions(), "a");
}

TEST_F(LinkDocument, ComparesNamesWithoutRegardToCase)
{
    ASSERT_TRUE(Read("<LINKS><LINK Name='n' ALIAS='a' vAlue='v' HREF='h' Target='MODBUS' EIS='6' Access='2'/>"
                     "<Link alias='b'/></LINKS>"));
    EXPECT_EQ(Captions(), "a|b");
    EXPECT_EQ(RecordOf(m_links->front().get()),
              QStringLiteral("kind=4 type=1 source=1 access=2 caption=a title=n link=v help=h"));
}

TEST_F(LinkDocument, IsRefusedWithAnotherRoot)
{
    for (const char* root : {"link", "linkss", "menu", "dplinks"})
        EXPECT_FALSE(Read("<" + QByteArray(root) + "><link alias='a'/></" + root + ">")) << root;
}

TEST_F(LinkDocument, MayBeEmpty)
{
    for (const char* document : {"<links/>", "<links></links>", "<links more='x'>text<!-- c --></links>"}) {
        ASSERT_TRUE(Read(document)) << document;
        EXPECT_TRUE(m_links->empty()) << document;
    }
}

TEST_F(LinkDocument, ShowsTheNameWhereTheAliasIsMissingAndWritesItAsAlias)
{
    for (const char* attributes : {"name='1/1/1'", "name='1/1/1' alias=''", "alias='' name='1/1/1'"}) {
        const TVlMenuItem item = ReadLink(attributes);
        EXPECT_EQ(item.Caption, QStringLiteral("1/1/1")) << attributes;
        EXPECT_EQ(item.Title, QStringLiteral("1/1/1")) << attributes;
        EXPECT_EQ(Captions(), "1/1/1") << attributes;
        EXPECT_EQ(WrittenLinks(WithLinks(std::move(*m_links)).get()), LinksText({Line(0, "1/1/1", "1/1/1")}));
    }
}

TEST_F(LinkDocument, LeavesTheNameEmptyWhereOnlyTheAliasIsThere)
{
    const TVlMenuItem item = ReadLink("alias='a'");
    EXPECT_EQ(item.Caption, QStringLiteral("a"));
    EXPECT_EQ(item.Title, QString());
}

TEST_F(LinkDocument, LeavesDefaultsForMissingAndEmptyAttributes)
{
    const auto fresh = QStringLiteral("kind=4 type=0 source=0 access=0 caption= title= link= help=");
    for (const char* attributes : {"", "name='' alias='' value='' href='' target='' eis='' access=''"}) {
        const TVlMenuItem item = ReadLink(attributes);
        EXPECT_EQ(RecordOf(&item), fresh) << attributes;
        EXPECT_EQ(m_links->size(), 1U) << attributes;
    }
}

TEST_F(LinkDocument, KeepsWhatWasReadWhenAnEmptyAttributeFollows)
{
    const TVlMenuItem item = ReadLink("eis='6' EIS='' access='2' ACCESS='' target='virtual' TARGET=''");
    EXPECT_EQ(RecordOf(&item), QStringLiteral("kind=4 type=1 source=2 access=2 caption= title= link= help="));
    EXPECT_EQ(ReadLink("eis='6' EIS='11'").DataType, dtmEIS11);
}

TEST_F(LinkDocument, IgnoresIdClassAndOthers)
{
    const TVlMenuItem item =
        ReadLink("id='lk9' class='x' kind='1' caption='c' title='t' link='l' help='h' type='modbus' alias='a'");
    EXPECT_EQ(RecordOf(&item), QStringLiteral("kind=4 type=0 source=0 access=0 caption=a title= link= help="));
}

TEST_F(LinkDocument, ReadsTheTypeFromItsEisNumber)
{
    const QList<std::pair<QByteArray, TDataTypeMap>> types{
        {"1", dtmEIS1}, {"6", dtmEIS6}, {"14", dtmEIS14}, {"10", dtmEIS10}, {"11", dtmEIS11}, {"0", dtmEIS1},
        {"5", dtmEIS1}, {"9", dtmEIS1}, {"x", dtmEIS1},   {"6 ", dtmEIS1},  {"-6", dtmEIS1},  {"$E", dtmEIS14}};
    for (const auto& [eis, type] : types)
        EXPECT_EQ(ReadLink("eis='" + eis + "'").DataType, type) << eis.toStdString();
}

TEST_F(LinkDocument, ReadsASourceThatIsUnknownAsEib)
{
    EXPECT_EQ(ReadLink("target='modbus'").Source, nsMODBUS);
    EXPECT_EQ(ReadLink("target='Virtual'").Source, nsVIRTUAL);
    for (const char* target : {"eib", " modbus", "1", "modbusx", "?"})
        EXPECT_EQ(ReadLink("target='" + QByteArray(target) + "'").Source, nsEIB) << target;
}

TEST_F(LinkDocument, ReadsAccessThatIsNoNumberAsZero)
{
    for (const char* access : {"x", "1x", "99999999999", " "})
        EXPECT_EQ(ReadLink("access='" + QByteArray(access) + "'").Access, 0) << access;
    EXPECT_EQ(ReadLink("access='25'").Access, 25);
    EXPECT_EQ(ReadLink("access='-2147483648'").Access, -2147483647 - 1);
}

TEST_F(LinkDocument, IsReadInTheCodePage)
{
    const TVlMenuItem item = ReadLink("alias='K&#252;che &#8364;' name='&#937;' value='&lt;&quot;' href='a&amp;b'");
    EXPECT_EQ(RecordOf(&item),
              QStringLiteral("kind=4 type=0 source=0 access=0 caption=Küche € title=? link=<\" help=a&b"));
}

TEST_F(LinkDocument, IsReadFromItsDirectChildrenOnly)
{
    ASSERT_TRUE(Read("<links><link alias='a'><link alias='x'/></link><group><link alias='y'/></group>"
                     "<linkx alias='z'/><menuitem caption='m'/><link alias='b'/></links>"));
    EXPECT_EQ(Captions(), "a|b");
}

// Writing

TEST_F(LinkDocument, IsWrittenAsItsHeaderAndTrailerWithoutLinks)
{
    const QByteArray expected = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<links>\r\n</links>\r\n";
    EXPECT_EQ(Written(), expected);
    EXPECT_EQ(WrittenLinks(nullptr), expected);
}

TEST_F(LinkDocument, IsWrittenInItsForm)
{
    Append({.Caption = QStringLiteral("Heizung"),
            .Title = QStringLiteral("40001"),
            .Link = QStringLiteral("21,5"),
            .Help = QStringLiteral("/seiten/h.html"),
            .Access = 3,
            .Kind = mkLink,
            .DataType = dtmEIS10,
            .Source = nsMODBUS});
    EXPECT_EQ(Written(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
                         "<links>\r\n"
                         "<link id=\"lk0\" class=\"link\" name=\"40001\" alias=\"Heizung\" value=\"21,5\" "
                         "href=\"/seiten/h.html\" target=\"modbus\" eis=\"10\" access=\"3\" />\r\n"
                         "</links>\r\n");
}

TEST_F(LinkDocument, IsWrittenWithEveryTypeAndSource)
{
    const QList<QByteArray> types{"1", "6", "14", "10", "11"};
    for (int type = 0; type < types.size(); ++type)
        EXPECT_TRUE(LineOf({.DataType = static_cast<TDataTypeMap>(type)})
                        .contains(" target=\"eib\" eis=\"" + types[type] + "\" access="))
            << type;
    const QList<QByteArray> sources{"eib", "modbus", "virtual"};
    for (int source = 0; source < sources.size(); ++source)
        EXPECT_TRUE(
            LineOf({.Source = static_cast<TNodeSource>(source)}).contains(" target=\"" + sources[source] + "\" eis="))
            << source;
}

TEST_F(LinkDocument, SpendsNoNumberOnANodeWithoutARecord)
{
    Append({.Caption = QStringLiteral("a")});
    m_root->addChild(new TMenuNode(QStringLiteral("no record"), miSubItem));
    Append({.Caption = QStringLiteral("b")});
    EXPECT_EQ(Written(), LinksText({Line(0, "", "a"), Line(1, "", "b")}));
}

TEST_F(LinkDocument, IsWrittenFromDirectChildrenOnly)
{
    Append({.Caption = QStringLiteral("a")});
    m_root->Child(0)->addChild(new TMenuNode(TVlMenuItem{.Caption = QStringLiteral("x")}, miSubItem));
    m_root->addChild(new TMenuNode(QStringLiteral("no record"), miSubItem));
    m_root->Child(1)->addChild(new TMenuNode(TVlMenuItem{.Caption = QStringLiteral("y")}, miSubItem));
    EXPECT_EQ(Written(), LinksText({Line(0, "", "a")}));
}

TEST_F(LinkDocument, TakesTheAliasFromTheRecordAndNotFromTheNode)
{
    Append({.Caption = QStringLiteral("a"), .Title = QStringLiteral("n")});
    m_root->Child(0)->SetCaption(QStringLiteral("other"));
    EXPECT_EQ(Written(), LinksText({Line(0, "n", "a")}));
}

TEST_F(LinkDocument, IsWrittenWithoutEscapesInTheCodePage)
{
    const QByteArray line = LineOf({.Caption = QStringLiteral("K\"ü\" € Ω"),
                                    .Title = QStringLiteral("a & b"),
                                    .Link = QStringLiteral("<%s>"),
                                    .Help = QStringLiteral("c\\d %d")});
    EXPECT_EQ(line, "<link id=\"lk0\" class=\"link\" name=\"a & b\" alias=\"K\"\xFC\" \x80 ?\" value=\"<%s>\" "
                    "href=\"c\\d %d\" target=\"eib\" eis=\"1\" access=\"0\" />");
}

TEST_F(LinkDocument, IsRefusedByItsReaderWhereATextHoldsWhatNothingEscapes)
{
    for (const char* text : {"a\"b", "a & b", "a < b"}) {
        m_root = MakeLinkRoot();
        Append({.Caption = QString::fromLatin1(text)});
        const QByteArray written = Written();
        EXPECT_TRUE(written.contains(QByteArray("alias=\"") + text + "\"")) << text;
        EXPECT_FALSE(Read(written)) << text;
    }
}

TEST_F(LinkDocument, IsWrittenWithTheNumbersOfTheirRange)
{
    EXPECT_TRUE(LineOf({.Access = std::numeric_limits<std::int32_t>::max()}).endsWith(" access=\"2147483647\" />"));
    EXPECT_TRUE(LineOf({.Access = std::numeric_limits<std::int32_t>::min()}).endsWith(" access=\"-2147483648\" />"));
}

TEST_F(LinkDocument, ThrowsWhenTheDeviceTakesNothing)
{
    QBuffer closed;
    EXPECT_THROW(WriteLinks(closed, m_root.get()), TFileError);
}
