#include "XmlReading.h"

#include "TestSupport.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace
{

// Notes what arrives: "depth:name" and below it "name=value" for each attribute. Elements named "skip" are skipped,
// those named "text" taken as text and noted as such.
class TNotingVisitor final : public IXmlVisitor
{
public:
    bool BeginRoot(std::string_view name, const TXmlAttributes& attributes) override
    {
        Add(0, name, attributes);
        return SameXmlName(name, ExpectedRoot);
    }
    TXmlStep BeginElement(std::string_view name, const TXmlAttributes& attributes) override
    {
        if (name == ThrowAt)
            throw std::runtime_error("thrown by the visitor");
        if (name == "text")
            return TXmlStep::Text;
        Add(m_depth, name, attributes);
        if (name == "skip")
            return TXmlStep::Skip;
        ++m_depth;
        return TXmlStep::Enter;
    }
    void EndElement() override { --m_depth; }
    void TakeText(const QString& text) override
    {
        if (text.contains(QStringLiteral("throw")))
            throw std::runtime_error("thrown by the visitor");
        Seen.append(QString::number(m_depth) + text);
    }

    std::string_view ExpectedRoot = "root";
    std::string_view ThrowAt = "throw";
    QStringList Seen;

private:
    void Add(int depth, std::string_view name, const TXmlAttributes& attributes)
    {
        QString line = QStringLiteral("%1:%2").arg(depth).arg(XmlText(name));
        for (const TXmlAttribute attribute : attributes)
            line += QStringLiteral(" %1=%2").arg(XmlText(attribute.Name), XmlText(attribute.Value));
        Seen.append(line);
    }

    int m_depth = 1;
};

// Elements inside each other, with `content` in the innermost.
QByteArray Nested(int levels, const QByteArray& content = {})
{
    return QByteArray("<a>").repeated(levels) + content + QByteArray("</a>").repeated(levels);
}

class XmlReading : public testing::Test
{
protected:
    bool Read(const QByteArray& document)
    {
        WriteAll(m_path, document);
        m_visitor = TNotingVisitor();
        return ReadXmlFile(m_path, m_visitor);
    }
    QString LastSeen() const { return m_visitor.Seen.isEmpty() ? QString() : m_visitor.Seen.last(); }

    QTemporaryDir m_directory;
    QString m_path = m_directory.filePath(QStringLiteral("x.xml"));
    TNotingVisitor m_visitor;
};

} // namespace

TEST(SameXmlName, ComparesWithoutRegardToCase)
{
    EXPECT_TRUE(SameXmlName("node", "NODE"));
    EXPECT_TRUE(SameXmlName("", ""));
    EXPECT_FALSE(SameXmlName("node", "nodes"));
    EXPECT_FALSE(SameXmlName("nodes", "node"));
    EXPECT_FALSE(SameXmlName("node", "nodf"));
}

TEST(SameXmlName, ComparesPartsOfATextOnly)
{
    EXPECT_TRUE(SameXmlName(std::string_view("nodeXYZ").substr(0, 4), "node"));
}

TEST(XmlText, IsInTheCodePage)
{
    EXPECT_EQ(XmlText("K\xC3\xBC"
                      "che"),
              QStringLiteral("Küche"));
    EXPECT_EQ(XmlText("\xC2\x80"), QStringLiteral("€"));
    EXPECT_EQ(XmlText("\xE2\x82\xAC"), QStringLiteral("€"));
    EXPECT_EQ(XmlText("\xCE\xA9"), QStringLiteral("?"));
    EXPECT_EQ(XmlText(""), QString());
}

TEST_F(XmlReading, GivesElementsWithDepthAndAttributesInTheirOrder)
{
    EXPECT_TRUE(Read("<root z='1' a='2'><one b='x' a='y'><two/></one><three/></root>"));
    EXPECT_EQ(m_visitor.Seen, QStringList({QStringLiteral("0:root z=1 a=2"), QStringLiteral("1:one b=x a=y"),
                                           QStringLiteral("2:two"), QStringLiteral("1:three")}));
}

TEST_F(XmlReading, TakesPackagePaths)
{
    WriteAll(m_path, "<root/>");
    EXPECT_TRUE(ReadXmlFile(m_path.replace(u'/', u'\\'), m_visitor));
}

TEST_F(XmlReading, GivesEmptyAttributesToo)
{
    EXPECT_TRUE(Read("<root a='' b='1'/>"));
    EXPECT_EQ(LastSeen(), QStringLiteral("0:root a= b=1"));
}

TEST_F(XmlReading, GivesLocalNames)
{
    EXPECT_TRUE(Read("<p:root xmlns:p='urn:x' p:a='1' b='2'/>"));
    EXPECT_EQ(LastSeen(), QStringLiteral("0:root a=1 b=2"));
}

TEST_F(XmlReading, ResolvesCharactersAndPredefinedEntities)
{
    EXPECT_TRUE(Read("<root a='&amp;&lt;&gt;&quot;&apos;&#65;&#x42;'/>"));
    EXPECT_EQ(LastSeen(), QStringLiteral("0:root a=&<>\"'AB"));
}

TEST_F(XmlReading, PassesOverTextAndCommentsAndInstructions)
{
    EXPECT_TRUE(
        Read("<?xml version='1.0'?><!-- c --><?pi x?><root>text<!-- <one/> --><![CDATA[<two/>]]><?pi y?></root>"));
    EXPECT_EQ(m_visitor.Seen, QStringList({QStringLiteral("0:root")}));
}

TEST_F(XmlReading, StopsAtARefusedRoot)
{
    EXPECT_FALSE(Read("<other><one/></other>"));
    EXPECT_EQ(m_visitor.Seen, QStringList({QStringLiteral("0:other")}));
}

TEST_F(XmlReading, IsFalseForWhatIsNotWellFormed)
{
    for (const char* document : {"", " ", "<", "<root>", "<root", "<root></other>", "<root/><root/>", "<root/>x", "x",
                                 "<root a='1' a='2'/>", "<root a=1/>", "<root a='<'/>", "<root a='&'/>",
                                 "<root a='&x;'/>", "<root>&x;</root>", "<root a='&#0;'/>", "<root>\x01</root>"})
        EXPECT_FALSE(Read(document)) << document;
}

TEST_F(XmlReading, IsFalseWithoutAFile)
{
    EXPECT_FALSE(ReadXmlFile(m_path, m_visitor));
    EXPECT_FALSE(ReadXmlFile(QString(), m_visitor));
    EXPECT_FALSE(ReadXmlFile(m_directory.path(), m_visitor));
}

TEST_F(XmlReading, ThrowsOnWhatTheVisitorThrew)
{
    WriteAll(m_path, "<root><one/><throw/><two/></root>");
    EXPECT_THROW(ReadXmlFile(m_path, m_visitor), std::runtime_error);
    EXPECT_EQ(LastSeen(), QStringLiteral("1:one"));
    EXPECT_TRUE(Read("<root><one/></root>"));
}

TEST_F(XmlReading, TakesTheEncodingsThatItIsTold)
{
    const QString expected = QStringLiteral("0:root a=Kü€");
    EXPECT_TRUE(Read("<?xml version='1.0' encoding='ISO-8859-1'?><root a='K\xFC\x80'/>"));
    EXPECT_EQ(LastSeen(), expected);
    EXPECT_TRUE(Read("<?xml version='1.0' encoding='Windows-1252'?><root a='K\xFC\x80'/>"));
    EXPECT_EQ(LastSeen(), expected);
    EXPECT_TRUE(Read("<?xml version='1.0' encoding='UTF-8'?><root a='K\xC3\xBC\xE2\x82\xAC'/>"));
    EXPECT_EQ(LastSeen(), expected);
    EXPECT_TRUE(Read("\xEF\xBB\xBF<root a='K\xC3\xBC\xE2\x82\xAC'/>"));
    EXPECT_EQ(LastSeen(), expected);
}

TEST_F(XmlReading, TakesUtf16)
{
    const QString document = QStringLiteral("\uFEFF<?xml version='1.0' encoding='UTF-16'?><root a='Kü€'/>");
    QByteArray bytes;
    for (const QChar c : document) {
        bytes.append(static_cast<char>(c.unicode() & 0xFF));
        bytes.append(static_cast<char>(c.unicode() >> 8));
    }
    EXPECT_TRUE(Read(bytes));
    EXPECT_EQ(LastSeen(), QStringLiteral("0:root a=Kü€"));
}

TEST_F(XmlReading, IsFalseForBytesThatAreNotInTheEncoding)
{
    EXPECT_FALSE(Read("<root a='K\xFC'/>"));
    EXPECT_FALSE(Read("<?xml version='1.0' encoding='UTF-8'?><root a='\xC3'/>"));
    EXPECT_FALSE(Read("<?xml version='1.0' encoding='none-such'?><root/>"));
}

TEST_F(XmlReading, DoesNotMindAnUnusedDeclaration)
{
    EXPECT_TRUE(Read("<!DOCTYPE root [<!ENTITY x 'y'>]><root a='1'/>"));
    EXPECT_EQ(LastSeen(), QStringLiteral("0:root a=1"));
}

TEST_F(XmlReading, RefusesADocumentThatUsesEntitiesOfItsOwn)
{
    EXPECT_FALSE(Read("<!DOCTYPE root [<!ENTITY x 'y'>]><root a='&x;'/>"));
    EXPECT_FALSE(Read("<!DOCTYPE root [<!ENTITY x '<one/>'>]><root>&x;</root>"));
}

TEST_F(XmlReading, EntersElementsDownToTheTwoHundredAndFiftySixthLevel)
{
    EXPECT_TRUE(Read("<root>" + Nested(256) + "</root>"));
    EXPECT_EQ(m_visitor.Seen.size(), 257);
    EXPECT_EQ(LastSeen(), QStringLiteral("256:a"));
}

TEST_F(XmlReading, RefusesADocumentThatNestsDeeper)
{
    EXPECT_FALSE(Read("<root>" + Nested(257) + "</root>"));
    EXPECT_FALSE(Read("<root>" + Nested(100000) + "</root>"));
    EXPECT_FALSE(Read("<root>" + QByteArray("<a>").repeated(100000)));
    // Only what is open counts.
    EXPECT_TRUE(Read("<root>" + Nested(200) + Nested(200) + "</root>"));
}

TEST_F(XmlReading, DoesNotCountTheLevelsInsideASkippedElement)
{
    EXPECT_TRUE(Read("<root><skip>" + Nested(1000) + "</skip><one/></root>"));
    EXPECT_EQ(LastSeen(), QStringLiteral("1:one"));
}

TEST_F(XmlReading, DoesNotCountTheLevelsInsideAText)
{
    EXPECT_TRUE(Read("<root><text>" + Nested(1000, "x") + "</text></root>"));
    EXPECT_EQ(LastSeen(),
              QStringLiteral("1<text>") + QString::fromLatin1(Nested(1000, "x")) + QStringLiteral("</text>"));
}

TEST_F(XmlReading, SkipsAndTakesTextOnTheLowestLevelToo)
{
    EXPECT_TRUE(Read("<root>" + Nested(256, "<skip/><text>x</text>") + "</root>"));
    EXPECT_EQ(LastSeen(), QStringLiteral("257<text>x</text>"));
}

TEST_F(XmlReading, ReadsAnAttributeOfTenMegabytes)
{
    constexpr int Size = 10 * 1024 * 1024;
    EXPECT_TRUE(Read("<root a='" + QByteArray(Size, 'x') + "'/>"));
    EXPECT_EQ(LastSeen().size(), Size + QStringLiteral("0:root a=").size());
}

TEST_F(XmlReading, SkipsAnElementWithAllInside)
{
    EXPECT_TRUE(Read("<root><skip><one/><text/><throw/></skip><two/></root>"));
    EXPECT_EQ(m_visitor.Seen,
              QStringList({QStringLiteral("0:root"), QStringLiteral("1:skip"), QStringLiteral("1:two")}));
}

TEST_F(XmlReading, GivesAnElementAsText)
{
    EXPECT_TRUE(Read("<root><one><text b = '1'\n a=\"2\"></text></one><text/></root>"));
    EXPECT_EQ(m_visitor.Seen, QStringList({QStringLiteral("0:root"), QStringLiteral("1:one"),
                                           QStringLiteral("2<text b=\"1\" a=\"2\"/>"), QStringLiteral("1<text/>")}));
}

TEST_F(XmlReading, GivesTextWithAllInside)
{
    EXPECT_TRUE(Read("<root><text> x<a><!-- c --><text/></a><![CDATA[<]]><?pi y?>&lt;</text></root>"));
    EXPECT_EQ(LastSeen(), QStringLiteral("1<text> x<a><!-- c --><text/></a><![CDATA[<]]><?pi y?>&lt;</text>"));
}

TEST_F(XmlReading, EscapesInTextWhatTheParserEscapes)
{
    EXPECT_TRUE(Read("<root><text a='&quot;&amp;&lt;&apos;&#10;'/></root>"));
    EXPECT_EQ(LastSeen(), QStringLiteral("1<text a=\"&quot;&amp;&lt;'&#10;\"/>"));
}

TEST_F(XmlReading, GivesTextInTheCodePage)
{
    EXPECT_TRUE(Read("<?xml version='1.0' encoding='ISO-8859-1'?><root><text a='K\xFC\x80'/></root>"));
    EXPECT_EQ(LastSeen(), QStringLiteral("1<text a=\"Kü€\"/>"));
}

TEST_F(XmlReading, ReferencesCharactersInTextWhenNoEncodingIsDeclared)
{
    EXPECT_TRUE(Read("<root><text a='K\xC3\xBC'/></root>"));
    EXPECT_EQ(LastSeen(), QStringLiteral("1<text a=\"K&#xFC;\"/>"));
}

TEST_F(XmlReading, KeepsIdentifiersAndNamespacesInText)
{
    EXPECT_TRUE(Read("<root><text xml:id='a' xmlns:p='urn:x' p:b='1'/><text xml:id='a'/></root>"));
    EXPECT_EQ(m_visitor.Seen, QStringList({QStringLiteral("0:root"),
                                           QStringLiteral("1<text xmlns:p=\"urn:x\" xml:id=\"a\" p:b=\"1\"/>"),
                                           QStringLiteral("1<text xml:id=\"a\"/>")}));
}

TEST_F(XmlReading, IsFalseWhenTextIsCutShort)
{
    EXPECT_FALSE(Read("<root><text a='1'><b>"));
    EXPECT_FALSE(Read("<root><text a='1'>x"));
    EXPECT_FALSE(Read("<root><text a='1'/>"));
}

TEST_F(XmlReading, ThrowsOnWhatTheVisitorThrewAtAText)
{
    WriteAll(m_path, "<root><text>throw</text><one/></root>");
    EXPECT_THROW(ReadXmlFile(m_path, m_visitor), std::runtime_error);
    EXPECT_EQ(LastSeen(), QStringLiteral("0:root"));
}

TEST_F(XmlReading, RefusesAnEntityInsideAText)
{
    EXPECT_FALSE(Read("<!DOCTYPE root [<!ENTITY x 'y'>]><root><text>&x;</text></root>"));
}
