#include "ScheduleDocument.h"

#include "ScheduleFiles.h"

#include <gtest/gtest.h>

namespace
{

class LoadSchedule : public testing::Test
{
protected:
    void Load(const QList<QByteArray>& lines) { LoadBytes(ScheduleDocument(lines)); }
    void LoadBytes(const QByteArray& content) { m_root = m_files.Load(content); }
    TScheduleNode* Group(int index) const { return m_root->Child(index); }
    TScheduleNode* Datapoint(int index) const { return Group(0) ? Group(0)->Child(index) : nullptr; }

    // The record of a datapoint that is read from an element with these attributes.
    TVlNodeData Read(const QByteArray& attributes)
    {
        Load({"<nodes name=\"g\">", "<node " + attributes + " />", "</nodes>"});
        const TScheduleNode* datapoint = Datapoint(0);
        EXPECT_NE(datapoint, nullptr) << attributes.toStdString();
        return datapoint ? *datapoint->Data() : TVlNodeData{};
    }
    // The access level of a group that is read from an element with these attributes.
    int ReadAccess(const QByteArray& attributes)
    {
        Load({"<nodes name=\"g\" " + attributes + " />"});
        return Group(0) ? Group(0)->GroupAccess() : -99;
    }
    QStringList Outline() const { return OutlineOf(m_root.get()); }

    TScheduleFiles m_files;
    std::unique_ptr<TScheduleNode> m_root;
};

const QString RootLine = QStringLiteral("Wochenschaltplan");

} // namespace

TEST_F(LoadSchedule, GivesTheRootAloneWithoutAFile)
{
    m_root = m_files.Load();
    EXPECT_EQ(Outline(), QStringList({RootLine}));
    EXPECT_EQ(m_root->ImageIndex(), 0);
    EXPECT_EQ(m_files.GroupNames(), QStringList());
}

TEST_F(LoadSchedule, GivesTheRootAloneForWhatIsNoFile)
{
    QStringList names;
    for (const QString& path : {QString(), QStringLiteral("/none/x.xml"), m_files.Directory(), QStringLiteral("\\")})
        EXPECT_EQ(OutlineOf(LoadScheduleTree(path, names, m_files.Files()).get()), QStringList({RootLine}))
            << path.toStdString();
    EXPECT_EQ(names, QStringList());
}

TEST_F(LoadSchedule, TakesPackagePaths)
{
    m_files.WriteSmallHouse();
    QStringList names;
    m_root = LoadScheduleTree(m_files.Path().replace(u'/', u'\\'), names, m_files.Files());
    EXPECT_EQ(CountsOf(m_root.get()), QStringLiteral("2 Gruppen, 3 Datenpunkte, 4 Einträge"));
}

TEST_F(LoadSchedule, ReadsGroupsDatapointsAndEntriesInTheirOrder)
{
    m_files.WriteSmallHouse();
    m_root = m_files.Load();
    EXPECT_EQ(Outline().join(u'\n').toStdString(),
              R"(Wochenschaltplan
  Erdgeschoss
    Licht Flur
      <schedule time="06:30" dow="1111100" value="1" enabled="1" postprocess="0"/>
      <schedule time="22:00" dow="1111111" value="0" enabled="1" postprocess="1"/>
    Heizung
      <schedule time="05:00" dow="0000011" value="21,5" enabled="0" postprocess="0"/>
  Garten
    Teichpumpe
      <schedule time="08:00" dow="1010101" value="50" enabled="1" postprocess="1"/>)");
    EXPECT_EQ(Group(0)->GroupAccess(), 0);
    EXPECT_EQ(Group(1)->GroupAccess(), 2);
    EXPECT_EQ(RecordOf(Datapoint(1)),
              QStringLiteral("id=-1 source=1 type=3 enabled=0 access=3 name=40001 alias=Heizung min=5 max=30"));
}

TEST_F(LoadSchedule, GivesNodesTheImagesOfTheirLevels)
{
    m_files.WriteSmallHouse();
    m_root = m_files.Load();
    EXPECT_EQ(Group(0)->ImageIndex(), 1);
    EXPECT_EQ(Datapoint(0)->ImageIndex(), 2);
    EXPECT_EQ(Datapoint(0)->Child(0)->ImageIndex(), 3);
    EXPECT_EQ(Datapoint(0)->Child(0)->SelectedIndex(), 3);
    EXPECT_EQ(Group(0)->Data(), nullptr);
    EXPECT_EQ(Datapoint(0)->Child(0)->Data(), nullptr);
}

TEST_F(LoadSchedule, TakesARootInCapitals)
{
    LoadBytes("<EIBNET><nodes name='g'/></EIBNET>");
    EXPECT_EQ(Outline(), QStringList({RootLine, QStringLiteral("  g")}));
}

TEST_F(LoadSchedule, ComparesNamesOfElementsAndAttributesWithoutRegardToCase)
{
    LoadBytes("<EibNet><NODES Name='g' ACCESS='3'><Node NAME='n' Alias='a' EIS='6' Type='MODBUS' Access='2' "
              "ENABLED='0' MinV='1' maxV='9'><SCHEDULE TIME='06:30'/></Node></NODES></EibNet>");
    ASSERT_EQ(Outline(), QStringList({RootLine, QStringLiteral("  g"), QStringLiteral("    a"),
                                      QStringLiteral("      <SCHEDULE TIME=\"06:30\"/>")}));
    EXPECT_EQ(Group(0)->GroupAccess(), 3);
    EXPECT_EQ(RecordOf(Datapoint(0)),
              QStringLiteral("id=-1 source=1 type=1 enabled=0 access=2 name=n alias=a min=1 max=9"));
}

TEST_F(LoadSchedule, RefusesAnotherRoot)
{
    for (const char* root : {"eibnets", "eibne", "nodes", "schedule", "xeibnet"}) {
        LoadBytes("<" + QByteArray(root) + "><nodes name='g'/></" + root + ">");
        EXPECT_EQ(Outline(), QStringList({RootLine})) << root;
    }
}

// Groups

TEST_F(LoadSchedule, NamesAGroupWithoutANameByItsIndex)
{
    Load({"<nodes/>", "<nodes access=\"1\"/>", "<nodes name=\"\"/>", "<nodes name=\"g\"/>", "<nodes/>"});
    EXPECT_EQ(Outline(), QStringList({RootLine, QStringLiteral("  Neue Gruppe 0"), QStringLiteral("  Neue Gruppe 1"),
                                      QStringLiteral("  Neue Gruppe 2"), QStringLiteral("  g"),
                                      QStringLiteral("  Neue Gruppe 4")}));
    EXPECT_EQ(m_files.GroupNames(),
              QStringList({QStringLiteral("Neue Gruppe 0"), QStringLiteral("Neue Gruppe 1"),
                           QStringLiteral("Neue Gruppe 2"), QStringLiteral("g"), QStringLiteral("Neue Gruppe 4")}));
}

TEST_F(LoadSchedule, CountsEveryChildOfTheRootForTheIndexOfAGroup)
{
    Load({"<schedule time=\"06:30\"/>", "<node alias=\"d\"/>", "<nodes/>"});
    ASSERT_EQ(m_root->Count(), 3);
    EXPECT_EQ(Group(2)->Caption(), QStringLiteral("Neue Gruppe 2"));
}

TEST_F(LoadSchedule, ReadsTheAccessOfAGroupWithFiveForWhatIsNoNumber)
{
    EXPECT_EQ(ReadAccess(""), 5);
    EXPECT_EQ(ReadAccess("access=\"\""), 5);
    EXPECT_EQ(ReadAccess("access=\"x\""), 5);
    EXPECT_EQ(ReadAccess("access=\"1x\""), 5);
    EXPECT_EQ(ReadAccess("access=\"1.5\""), 5);
    EXPECT_EQ(ReadAccess("access=\"2147483648\""), 5);
    EXPECT_EQ(ReadAccess("access=\"0\""), 0);
    EXPECT_EQ(ReadAccess("access=\"-3\""), -3);
    EXPECT_EQ(ReadAccess("access=\"$10\""), 16);
    EXPECT_EQ(ReadAccess("access=\" 7\""), 7);
}

TEST_F(LoadSchedule, SkipsAnEmptyAttributeOfAGroup)
{
    Load({"<nodes name=\"g\" NAME=\"\" access=\"3\" ACCESS=\"\"/>"});
    EXPECT_EQ(Group(0)->Caption(), QStringLiteral("g"));
    EXPECT_EQ(Group(0)->GroupAccess(), 3);
}

TEST_F(LoadSchedule, TakesTheLastOfAttributesThatDifferInCase)
{
    Load({"<nodes name=\"g\" NAME=\"h\" access=\"3\" ACCESS=\"4\">", "<node name=\"a\" Name=\"b\"/>", "</nodes>"});
    EXPECT_EQ(Group(0)->Caption(), QStringLiteral("h"));
    EXPECT_EQ(Group(0)->GroupAccess(), 4);
    EXPECT_EQ(Datapoint(0)->Data()->Name, QStringLiteral("b"));
}

TEST_F(LoadSchedule, TakesAttributesInAnyOrderAndIgnoresOthers)
{
    Load({"<nodes id=\"7\" access=\"3\" more=\"x\" name=\"g\">",
          "<node maxv=\"9\" id=\"7\" minv=\"1\" value=\"v\" enabled=\"0\" access=\"2\" type=\"virtual\" eis=\"14\" "
          "alias=\"a\" name=\"n\"/>",
          "</nodes>"});
    EXPECT_EQ(Group(0)->Caption(), QStringLiteral("g"));
    EXPECT_EQ(Group(0)->GroupAccess(), 3);
    EXPECT_EQ(RecordOf(Datapoint(0)),
              QStringLiteral("id=-1 source=2 type=2 enabled=0 access=2 name=n alias=a min=1 max=9"));
}

// Datapoints

TEST_F(LoadSchedule, LeavesDefaultsForMissingAndEmptyAttributes)
{
    const TVlNodeData fresh;
    EXPECT_EQ(Read(""), fresh);
    EXPECT_EQ(Read(R"(name="" alias="" access="" type="" eis="" enabled="" maxv="" minv="")"), fresh);
}

TEST_F(LoadSchedule, ShowsADatapointWithoutAnAliasEmptyAndKeepsItsName)
{
    EXPECT_EQ(Read("name=\"1/1/1\"").Name, QStringLiteral("1/1/1"));
    EXPECT_EQ(Datapoint(0)->Caption(), QString());
    EXPECT_TRUE(Written(m_root.get()).contains("<node name=\"1/1/1\" alias=\"\" "));
}

TEST_F(LoadSchedule, ReadsEnabledExactlyForOneAndForWhatIsNoNumber)
{
    for (const char* on : {"1", "yes", "true", "1x", "01", "$1", " 1"})
        EXPECT_TRUE(Read("enabled=\"" + QByteArray(on) + "\"").Enabled) << on;
    for (const char* off : {"0", "2", "-1", "11"})
        EXPECT_FALSE(Read("enabled=\"" + QByteArray(off) + "\"").Enabled) << off;
}

TEST_F(LoadSchedule, KnowsNoEnableOfADatapoint)
{
    EXPECT_TRUE(Read("enable=\"0\"").Enabled);
}

TEST_F(LoadSchedule, ReadsTheAccessOfADatapointWithFiveForWhatIsNoNumber)
{
    EXPECT_EQ(Read("access=\"x\"").Access, 5);
    EXPECT_EQ(Read("access=\"99999999999\"").Access, 5);
    EXPECT_EQ(Read("access=\"0\"").Access, 0);
    EXPECT_EQ(Read("access=\"-2147483648\"").Access, -2147483647 - 1);
}

TEST_F(LoadSchedule, ReadsTheTypeFromItsEisNumber)
{
    const QList<std::pair<QByteArray, TDataTypeMap>> types{
        {"1", dtmEIS1}, {"6", dtmEIS6}, {"14", dtmEIS14}, {"10", dtmEIS10}, {"11", dtmEIS11}, {"0", dtmEIS1},
        {"5", dtmEIS1}, {"x", dtmEIS1}, {"6 ", dtmEIS1},  {"-11", dtmEIS1}, {"$E", dtmEIS14}, {"11.0", dtmEIS1}};
    for (const auto& [eis, type] : types)
        EXPECT_EQ(Read("eis=\"" + eis + "\"").DataType, type) << eis.toStdString();
}

TEST_F(LoadSchedule, ReadsASourceThatIsUnknownAsEib)
{
    EXPECT_EQ(Read("type=\"Modbus\"").Source, nsMODBUS);
    EXPECT_EQ(Read("type=\"VIRTUAL\"").Source, nsVIRTUAL);
    EXPECT_EQ(Read("type=\"eib\"").Source, nsEIB);
    EXPECT_EQ(Read("type=\" modbus\"").Source, nsEIB);
    EXPECT_EQ(Read("type=\"1\"").Source, nsEIB);
}

TEST_F(LoadSchedule, ReadsCharactersOfTheCodePage)
{
    EXPECT_EQ(Read("alias=\"K\xFC"
                   "che \x80 \x84x\x93\"")
                  .Alias,
              QStringLiteral("Küche € „x“"));
    const TVlNodeData data = Read("alias=\"a &amp; b &lt; &quot;c&quot;\" minv=\"&#937;&#8364;\" maxv=\"x&#10;y\"");
    EXPECT_EQ(data.Alias, QStringLiteral("a & b < \"c\""));
    EXPECT_EQ(data.MinVal, QStringLiteral("?€"));
    EXPECT_EQ(data.MaxVal, QStringLiteral("x\ny"));
}

// Group names

TEST_F(LoadSchedule, AppendsTheNamesOfTheGroupsAgainWithEveryLoad)
{
    m_files.WriteSmallHouse();
    m_root = m_files.Load();
    EXPECT_EQ(m_files.GroupNames(), QStringList({QStringLiteral("Erdgeschoss"), QStringLiteral("Garten")}));
    m_root = m_files.Load();
    EXPECT_EQ(m_files.GroupNames(), QStringList({QStringLiteral("Erdgeschoss"), QStringLiteral("Garten"),
                                                 QStringLiteral("Erdgeschoss"), QStringLiteral("Garten")}));
    EXPECT_EQ(m_root->Count(), 2);
}

TEST_F(LoadSchedule, KeepsTheNamesOfGroupsWhenALoadFails)
{
    m_files.WriteSmallHouse();
    m_root = m_files.Load();
    for (const char* content : {"<eibnet><nodes name='neu'/>", "<other><nodes name='neu'/></other>", ""}) {
        LoadBytes(content);
        EXPECT_EQ(Outline(), QStringList({RootLine})) << content;
        EXPECT_EQ(m_files.GroupNames(), QStringList({QStringLiteral("Erdgeschoss"), QStringLiteral("Garten")}));
    }
}
