#include "ScheduleDocument.h"

#include "ScheduleFiles.h"

#include <gtest/gtest.h>

// What a reader makes of elements in places where no editor puts them, and of entries as a parser gives them.

namespace
{

class LoadOddSchedule : public testing::Test
{
protected:
    // The outline of the tree that is read from elements below the root.
    std::string Outline(const QByteArray& elements)
    {
        m_root = m_files.Load("<?xml version='1.0' encoding='ISO-8859-1'?><eibnet>" + elements + "</eibnet>");
        return OutlineOf(m_root.get()).join(u'\n').toStdString();
    }
    // The caption of an entry that is read from `element`, in a document with this declaration.
    QString Entry(const QByteArray& element, const QByteArray& declaration)
    {
        m_root = m_files.Load(declaration + "<eibnet><nodes><node>" + element + "</node></nodes></eibnet>");
        EXPECT_EQ(CountsOf(m_root.get()), QStringLiteral("1 Gruppen, 1 Datenpunkte, 1 Einträge"));
        const TScheduleNode* entry = static_cast<TScheduleNode*>(m_root->Next());
        for (int level = slGroup; entry && level < slEntry; ++level)
            entry = entry->Child(0);
        return entry ? entry->Caption() : QString();
    }
    QString Entry(const QByteArray& element) { return Entry(element, "<?xml version='1.0' encoding='ISO-8859-1'?>"); }

    TScheduleFiles m_files;
    std::unique_ptr<TScheduleNode> m_root;
};

} // namespace

TEST_F(LoadOddSchedule, AttachesEntriesWhereverTheyStand)
{
    EXPECT_EQ(Outline("<schedule time='1'/><nodes name='g'><schedule time='2'/><node alias='d'><schedule time='3'/>"
                      "<node alias='x'><schedule time='4'/></node></node><schedule time='5'/></nodes>"),
              R"(Wochenschaltplan
  <schedule time="1"/>
  g
    <schedule time="2"/>
    d
      <schedule time="3"/>
      x
        <schedule time="4"/>
    <schedule time="5"/>)");
}

TEST_F(LoadOddSchedule, GivesEveryEntryTheSameImage)
{
    Outline("<schedule/><nodes name='g'><schedule/></nodes>");
    EXPECT_EQ(m_root->Child(0)->ImageIndex(), 3);
    EXPECT_EQ(m_root->Child(1)->Child(0)->ImageIndex(), 3);
}

TEST_F(LoadOddSchedule, AttachesDatapointsWhereverTheyStandWithTheImageOfTheirLevel)
{
    EXPECT_EQ(Outline("<node alias='1'><node alias='2'><node alias='3'><node alias='4'/></node></node></node>"),
              R"(Wochenschaltplan
  1
    2
      3
        4)");
    const TScheduleNode* node = m_root.get();
    for (int level = 1; level <= 4; ++level) {
        node = node->Child(0);
        EXPECT_EQ(node->ImageIndex(), level);
        EXPECT_NE(node->Data(), nullptr) << level;
    }
    EXPECT_EQ(m_files.GroupNames(), QStringList());
}

TEST_F(LoadOddSchedule, AppendsGroupsToTheRootHoweverDeepTheyStand)
{
    EXPECT_EQ(Outline("<nodes name='g'><node alias='d'><schedule time='1'/><nodes name='h'><node alias='e'/>"
                      "<nodes name='i'/></nodes><schedule time='2'/></node><node alias='f'/></nodes><nodes name='j'/>"),
              R"(Wochenschaltplan
  g
    d
      <schedule time="1"/>
      <schedule time="2"/>
    f
  h
    e
  i
  j)");
    EXPECT_EQ(m_files.GroupNames(),
              QStringList({QStringLiteral("g"), QStringLiteral("h"), QStringLiteral("i"), QStringLiteral("j")}));
    EXPECT_EQ(m_root->Child(1)->ImageIndex(), 1);
    EXPECT_EQ(m_root->Child(1)->Child(0)->ImageIndex(), 2);
}

TEST_F(LoadOddSchedule, IgnoresOtherElementsWithEverythingInside)
{
    EXPECT_EQ(Outline("<other><nodes name='no'/><node alias='no'/><schedule/></other><nodes name='g'><group>"
                      "<node alias='no'/></group>text<!-- <node/> --><![CDATA[<node/>]]><?pi?><node alias='d'>"
                      "<x><schedule/></x></node></nodes><nodesets/><schedules/>"),
              R"(Wochenschaltplan
  g
    d)");
}

TEST_F(LoadOddSchedule, DoesNotWalkTheChildrenOfAnEntry)
{
    EXPECT_EQ(Outline("<nodes name='g'><schedule><nodes name='no'/><node alias='no'/></schedule></nodes>"),
              R"(Wochenschaltplan
  g
    <schedule><nodes name="no"/><node alias="no"/></schedule>)");
    EXPECT_EQ(m_files.GroupNames(), QStringList({QStringLiteral("g")}));
}

// Entries

TEST_F(LoadOddSchedule, ClosesEntriesAsAParserDoes)
{
    const auto expected = QStringLiteral("<schedule time=\"06:30\" value=\"1\"/>");
    EXPECT_EQ(Entry("<schedule time=\"06:30\" value=\"1\" />"), expected);
    EXPECT_EQ(Entry("<schedule time=\"06:30\" value=\"1\"/>"), expected);
    EXPECT_EQ(Entry("<schedule time='06:30' value='1'></schedule>"), expected);
    EXPECT_EQ(Entry("<schedule\r\n\ttime = \"06:30\"\r\n\tvalue='1'\r\n/>"), expected);
    EXPECT_EQ(Entry("<schedule/>"), QStringLiteral("<schedule/>"));
}

TEST_F(LoadOddSchedule, KeepsTheOrderAndTheNamesOfTheAttributesOfAnEntry)
{
    EXPECT_EQ(Entry("<schedule VALUE='1' room='3' enable='0' time='x' Time='y' dow=''/>"),
              QStringLiteral("<schedule VALUE=\"1\" room=\"3\" enable=\"0\" time=\"x\" Time=\"y\" dow=\"\"/>"));
}

TEST_F(LoadOddSchedule, EscapesInAnEntryWhatTheParserEscapes)
{
    EXPECT_EQ(Entry("<schedule value='\"&quot;&amp;&lt;&gt;>&apos;&#10;&#9;&#13;'/>"),
              QStringLiteral("<schedule value=\"&quot;&quot;&amp;&lt;&gt;&gt;'&#10;&#9;&#13;\"/>"));
    EXPECT_EQ(Entry("<schedule>&quot;\"&amp;&lt;&gt;&#13;</schedule>"),
              QStringLiteral("<schedule>\"\"&amp;&lt;&gt;&#13;</schedule>"));
}

TEST_F(LoadOddSchedule, KeepsWhatStandsInsideAnEntry)
{
    EXPECT_EQ(Entry("<schedule time='1'> <day nr='2' /><!-- c --><?pi x?><![CDATA[<]]><schedule/>\r\n</schedule>"),
              QStringLiteral("<schedule time=\"1\"> <day nr=\"2\"/><!-- c --><?pi x?><![CDATA[<]]><schedule/>\n"
                             "</schedule>"));
}

TEST_F(LoadOddSchedule, ReadsEntriesInTheCodePage)
{
    EXPECT_EQ(Entry("<schedule value='K\xFC\x80'>\xE4\x84</schedule>"),
              QStringLiteral("<schedule value=\"Kü€\">ä„</schedule>"));
    EXPECT_EQ(Entry("<schedule value='&#252;&#128;'/>"), QStringLiteral("<schedule value=\"ü€\"/>"));
    EXPECT_EQ(Entry("<schedule value='K\xC3\xBC\xE2\x82\xAC'/>", "<?xml version='1.0' encoding='UTF-8'?>"),
              QStringLiteral("<schedule value=\"Kü€\"/>"));
    EXPECT_EQ(Entry("<schedule value='\xCE\xA9'/>", "<?xml version='1.0' encoding='UTF-8'?>"),
              QStringLiteral("<schedule value=\"?\"/>"));
}

TEST_F(LoadOddSchedule, ReferencesTheCharactersOfEntriesWhenNoEncodingIsDeclared)
{
    for (const char* declaration : {"", "<?xml version='1.0'?>"})
        EXPECT_EQ(Entry("<schedule value='K\xC3\xBC\xE2\x82\xAC'/>", declaration),
                  QStringLiteral("<schedule value=\"K&#xFC;&#x20AC;\"/>"))
            << declaration;
}

TEST_F(LoadOddSchedule, KeepsEntriesOfOneNodeApart)
{
    EXPECT_EQ(Outline("<nodes name='g'><node alias='d'><schedule xml:id='a' x='1'>t</schedule><schedule xml:id='a'/>"
                      "</node></nodes>"),
              R"(Wochenschaltplan
  g
    d
      <schedule xml:id="a" x="1">t</schedule>
      <schedule xml:id="a"/>)");
}

TEST_F(LoadOddSchedule, RefusesAnEntryWithADoubledAttribute)
{
    EXPECT_EQ(Outline("<nodes name='g'><node><schedule time='1' time='2'/></node></nodes>"), "Wochenschaltplan");
    EXPECT_EQ(m_files.GroupNames(), QStringList());
}
