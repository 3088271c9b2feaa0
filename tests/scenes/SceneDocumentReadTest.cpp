#include "SceneDocument.h"

#include "SceneFiles.h"

#include <gtest/gtest.h>

namespace
{

const auto TriggersName = QStringLiteral("trigger_allowed.xml");
const auto Actions = QStringLiteral("actions_allowed.xml");
const auto Scenes = QStringLiteral("scenes.xml");

class LoadScenes : public testing::Test
{
protected:
    void SetTriggers(const QList<QByteArray>& lines) { m_files.Write(TriggersName, SceneDocument("trigger", lines)); }
    void SetActions(const QList<QByteArray>& lines) { m_files.Write(Actions, SceneDocument("actions", lines)); }
    void SetScenes(const QList<QByteArray>& lines) { m_files.Write(Scenes, SceneDocument("scenes", lines)); }
    void SetSteps(const char* id, const QList<QByteArray>& lines)
    {
        m_files.Write(QStringLiteral("scene_%1.xml").arg(QLatin1StringView(id)), SceneDocument("scene", lines));
    }

    void Load() { m_top = m_files.Load(); }
    TSceneNode* Trigger(int index) const { return m_top->Child(TriggerRootIndex)->Child(index); }
    TSceneNode* Action(int index) const { return m_top->Child(ActionRootIndex)->Child(index); }
    TSceneNode* Scene(int index) const { return m_top->Child(FirstSceneIndex + index); }

    // The record of a trigger that is read from an element with these attributes.
    TVlSceneItem Read(const QByteArray& attributes)
    {
        SetTriggers({"<node " + attributes + " />"});
        Load();
        return Trigger(0) ? *Trigger(0)->Item() : SceneItem("", "not read");
    }
    QString Counts() const { return CountsOf(m_top.get()); }

    TSceneFiles m_files;
    std::unique_ptr<TSceneNode> m_top;
};

} // namespace

TEST_F(LoadScenes, BuildsTheFixedTopWithoutAnyFile)
{
    Load();
    EXPECT_EQ(OutlineOf(m_top.get()), OutlineOf(MakeSceneTop().get()));
}

TEST_F(LoadScenes, BuildsTheFixedTopWithoutADirectory)
{
    TDocumentFiles files(nullptr);
    for (const QString& path : {QString(), QStringLiteral("x.xml"), QStringLiteral("/none/x.xml")})
        EXPECT_EQ(CountsOf(LoadSceneTree(path, files).get()),
                  QStringLiteral("0 Trigger, 0 Aktionen, 0 Szenen, 0 Schritte"));
}

TEST_F(LoadScenes, ReadsAllFourKindsOfFile)
{
    m_files.WriteSmallHouse();
    Load();
    EXPECT_EQ(OutlineOf(m_top.get()),
              QStringList({QStringLiteral("Szenen"), QStringLiteral("  Trigger-Elemente"),
                           QStringLiteral("    Taster Flur"), QStringLiteral("    Zeitschalter"),
                           QStringLiteral("  Aktions-Elemente"), QStringLiteral("    Licht Flur"),
                           QStringLiteral("    Heizung"), QStringLiteral("  Abendlicht [Taster Flur]"),
                           QStringLiteral("    Licht an [Licht Flur]"), QStringLiteral("    Warm [Heizung]"),
                           QStringLiteral("  Nachts [Zeitschalter]"), QStringLiteral("    Licht aus [Licht Flur]")}));
}

TEST_F(LoadScenes, GivesNodesTheImagesOfTheirRoles)
{
    m_files.WriteSmallHouse();
    Load();
    EXPECT_EQ(Trigger(0)->ImageIndex(), 4);
    EXPECT_EQ(Action(0)->ImageIndex(), 3);
    EXPECT_EQ(Scene(0)->ImageIndex(), 1);
    EXPECT_EQ(Scene(0)->Child(0)->ImageIndex(), 3);
    EXPECT_EQ(Scene(0)->SelectedIndex(), 1);
}

TEST_F(LoadScenes, TakesPackagePaths)
{
    m_files.WriteSmallHouse();
    m_top = LoadSceneTree(m_files.Path().replace(u'/', u'\\'), m_files.Files());
    EXPECT_EQ(Counts(), QStringLiteral("2 Trigger, 2 Aktionen, 2 Szenen, 3 Schritte"));
}

TEST_F(LoadScenes, TakesAScenesFileOfAnotherName)
{
    m_files.WriteSmallHouse();
    ASSERT_TRUE(QFile::rename(m_files.Path(), m_files.Path(QStringLiteral("szenen.dat"))));
    m_top = LoadSceneTree(m_files.Path(QStringLiteral("szenen.dat")), m_files.Files());
    EXPECT_EQ(Counts(), QStringLiteral("2 Trigger, 2 Aktionen, 2 Szenen, 3 Schritte"));
}

TEST_F(LoadScenes, ReadsEveryAttribute)
{
    SetScenes({R"(<scene id="7" name="n" alias="a" value="v" eis="11" delay="5" enabled="0" type="virtual" />)"});
    Load();
    EXPECT_EQ(RecordOf(Scene(0)), QStringLiteral("id=7 name=n alias=a value=v delay=5 source=2 type=4 enabled=0"));
}

TEST_F(LoadScenes, LeavesDefaultsForMissingAttributes)
{
    SetTriggers({"<node />"});
    Load();
    EXPECT_EQ(RecordOf(Trigger(0)), QStringLiteral("id=-1 name= alias= value= delay=0 source=0 type=0 enabled=1"));
}

TEST_F(LoadScenes, LeavesDefaultsForEmptyAttributes)
{
    SetScenes({R"(<scene id="" name="" alias="" value="" eis="" delay="" enabled="" type="" />)"});
    Load();
    EXPECT_EQ(RecordOf(Scene(0)), QStringLiteral("id=-1 name= alias= value= delay=0 source=0 type=0 enabled=1"));
}

TEST_F(LoadScenes, ComparesNamesOfElementsAndAttributesWithoutRegardToCase)
{
    m_files.Write(TriggersName, "<TRIGGER><Node NAME=\"n\" Alias=\"a\" EIS=\"6\" Type=\"MODBUS\"/></TRIGGER>");
    Load();
    EXPECT_EQ(RecordOf(Trigger(0)), QStringLiteral("id=-1 name=n alias=a value= delay=0 source=1 type=1 enabled=1"));
}

TEST_F(LoadScenes, IgnoresOtherAttributesAndElements)
{
    SetTriggers({R"(<node name="n" more="1" link="2" />)", "<other name=\"x\" />", "<nodes/>", "text", "<!-- c -->"});
    Load();
    EXPECT_EQ(Counts(), QStringLiteral("1 Trigger, 0 Aktionen, 0 Szenen, 0 Schritte"));
    EXPECT_EQ(Trigger(0)->Item()->Name, QStringLiteral("n"));
}

TEST_F(LoadScenes, IgnoresElementsInsideElements)
{
    SetTriggers({"<node name=\"a\"><node name=\"b\"/></node>", "<group><node name=\"c\"/></group>"});
    Load();
    EXPECT_EQ(Counts(), QStringLiteral("1 Trigger, 0 Aktionen, 0 Szenen, 0 Schritte"));
}

TEST_F(LoadScenes, TakesEitherElementNameInEveryFile)
{
    SetTriggers({"<scene id=\"3\" name=\"t\" alias=\"T\" />"});
    SetActions({"<SCENE name=\"a\" alias=\"A\" />"});
    SetScenes({"<node id=\"5\" name=\"t\" alias=\"S\" />"});
    SetSteps("5", {"<scene name=\"a\" alias=\"X\" />"});
    Load();
    EXPECT_EQ(OutlineOf(m_top.get()),
              QStringList({QStringLiteral("Szenen"), QStringLiteral("  Trigger-Elemente"), QStringLiteral("    T"),
                           QStringLiteral("  Aktions-Elemente"), QStringLiteral("    A"), QStringLiteral("  S [T]"),
                           QStringLiteral("    X [A]")}));
    EXPECT_EQ(Trigger(0)->Role(), srTrigger);
    EXPECT_EQ(Trigger(0)->ImageIndex(), 4);
    EXPECT_EQ(Trigger(0)->Item()->Id, 3);
}

TEST_F(LoadScenes, ReadsAnEisThatIsNoNumberAsOne)
{
    EXPECT_EQ(Read("eis=\"abc\"").DataType, dtmEIS1);
    EXPECT_EQ(Read("eis=\"6 \"").DataType, dtmEIS1);
    EXPECT_EQ(Read("eis=\"7\"").DataType, dtmEIS1);
    EXPECT_EQ(Read("eis=\"14\"").DataType, dtmEIS14);
    EXPECT_EQ(Read("eis=\"$E\"").DataType, dtmEIS14);
}

TEST_F(LoadScenes, ReadsEnabledExactlyForOneAndForWhatIsNoNumber)
{
    EXPECT_TRUE(Read("enabled=\"1\"").Enabled);
    EXPECT_TRUE(Read("enabled=\"yes\"").Enabled);
    EXPECT_TRUE(Read("enabled=\"true\"").Enabled);
    EXPECT_FALSE(Read("enabled=\"0\"").Enabled);
    EXPECT_FALSE(Read("enabled=\"2\"").Enabled);
    EXPECT_FALSE(Read("enabled=\"-1\"").Enabled);
}

TEST_F(LoadScenes, ReadsADelayThatIsNoNumberAsZero)
{
    EXPECT_EQ(Read("delay=\"soon\"").Delay, 0);
    EXPECT_EQ(Read("delay=\"2147483648\"").Delay, 0);
    EXPECT_EQ(Read("delay=\"2147483647\"").Delay, 2147483647);
    EXPECT_EQ(Read("delay=\"-5\"").Delay, -5);
}

TEST_F(LoadScenes, ReadsATypeThatIsUnknownAsEib)
{
    EXPECT_EQ(Read("type=\"knx\"").Source, nsEIB);
    EXPECT_EQ(Read("type=\" modbus\"").Source, nsEIB);
    EXPECT_EQ(Read("type=\"Modbus\"").Source, nsMODBUS);
    EXPECT_EQ(Read("type=\"virtual\"").Source, nsVIRTUAL);
}

TEST_F(LoadScenes, ReadsAnIdThatIsNoNumberAsMinusOneAndLooksForThatFile)
{
    SetScenes({"<scene id=\"x\" alias=\"S\" />"});
    SetSteps("-1", {"<node alias=\"step of minus one\" />"});
    Load();
    EXPECT_EQ(Scene(0)->Item()->Id, -1);
    ASSERT_EQ(Scene(0)->Count(), 1);
    EXPECT_EQ(Scene(0)->Child(0)->Caption(), QStringLiteral("step of minus one"));
}

TEST_F(LoadScenes, ReadsCharactersOfTheCodePage)
{
    EXPECT_EQ(Read("alias=\"K\xFC"
                   "che \x80 \x84x\x93\"")
                  .Alias,
              QStringLiteral("Küche € „x“"));
    EXPECT_EQ(Read("alias=\"a &amp; b &lt; &quot;c&quot;\"").Alias, QStringLiteral("a & b < \"c\""));
    EXPECT_EQ(Read("alias=\"&#937;&#8364;\"").Alias, QStringLiteral("?€"));
}

TEST_F(LoadScenes, ComparesNamesInTheCodePage)
{
    SetTriggers({"<node name=\"&#937;\" alias=\"T\" />"});
    SetScenes({"<scene name=\"&#936;\" alias=\"S\" />"});
    Load();
    EXPECT_EQ(Scene(0)->Caption(), QStringLiteral("S [T]"));
}

TEST_F(LoadScenes, BindsScenesToTheFirstTriggerOfTheirName)
{
    SetTriggers({"<node name=\"t\" alias=\"first\" />", "<node name=\"t\" alias=\"second\" />"});
    SetScenes({"<scene name=\"t\" alias=\"S\" />"});
    Load();
    EXPECT_EQ(Scene(0)->Item()->Link.Get(), Trigger(0));
    EXPECT_EQ(Scene(0)->Caption(), QStringLiteral("S [first]"));
}

TEST_F(LoadScenes, ComparesNamesOfDatapointsExactly)
{
    SetTriggers({"<node name=\"Taster\" alias=\"T\" />"});
    SetScenes({"<scene name=\"taster\" alias=\"1\" />", "<scene name=\"Taster \" alias=\"2\" />",
               "<scene name=\"Taster\" alias=\"3\" />"});
    Load();
    EXPECT_EQ(Scene(0)->Caption(), QStringLiteral("1"));
    EXPECT_EQ(Scene(1)->Caption(), QStringLiteral("2"));
    EXPECT_EQ(Scene(2)->Caption(), QStringLiteral("3 [T]"));
}

TEST_F(LoadScenes, TakesSourceAndTypeFromTheTrigger)
{
    SetTriggers({"<node name=\"t\" alias=\"T\" eis=\"11\" type=\"virtual\" />"});
    SetScenes({"<scene name=\"t\" alias=\"S\" eis=\"6\" type=\"modbus\" />"});
    Load();
    EXPECT_EQ(Scene(0)->Item()->Source, nsVIRTUAL);
    EXPECT_EQ(Scene(0)->Item()->DataType, dtmEIS11);
}

TEST_F(LoadScenes, TakesSourceAndTypeFromTheAction)
{
    SetActions({"<node name=\"a\" alias=\"A\" eis=\"10\" type=\"modbus\" />"});
    SetScenes({"<scene id=\"1\" alias=\"S\" />"});
    SetSteps("1", {"<node name=\"a\" alias=\"X\" eis=\"6\" type=\"virtual\" />"});
    Load();
    const TSceneNode* step = Scene(0)->Child(0);
    EXPECT_EQ(step->Item()->Link.Get(), Action(0));
    EXPECT_EQ(step->Item()->Source, nsMODBUS);
    EXPECT_EQ(step->Item()->DataType, dtmEIS10);
}

TEST_F(LoadScenes, BindsScenesToTriggersOnlyAndStepsToActionsOnly)
{
    SetTriggers({"<node name=\"t\" alias=\"T\" />"});
    SetActions({"<node name=\"a\" alias=\"A\" />"});
    SetScenes({"<scene id=\"1\" name=\"a\" alias=\"S\" />"});
    SetSteps("1", {"<node name=\"t\" alias=\"X\" />"});
    Load();
    EXPECT_FALSE(Scene(0)->Item()->Link);
    EXPECT_FALSE(Scene(0)->Child(0)->Item()->Link);
}

TEST_F(LoadScenes, BindsNoDatapointToAnother)
{
    SetTriggers({"<node name=\"x\" alias=\"1\" />", "<node name=\"x\" alias=\"2\" />"});
    SetActions({"<node name=\"x\" alias=\"3\" />"});
    Load();
    EXPECT_FALSE(Trigger(1)->Item()->Link);
    EXPECT_FALSE(Action(0)->Item()->Link);
}

TEST_F(LoadScenes, KeepsWhatAnUnboundSceneSaysItself)
{
    SetScenes({"<scene id=\"1\" name=\"gone\" alias=\"S\" value=\"1\" eis=\"6\" type=\"modbus\" enabled=\"1\" />"});
    Load();
    EXPECT_EQ(RecordOf(Scene(0)), QStringLiteral("id=1 name=gone alias=S value=1 delay=0 source=1 type=1 enabled=1"));
    EXPECT_FALSE(Scene(0)->Item()->Link);
}

TEST_F(LoadScenes, ReadsNoStepsWithoutAScenesFile)
{
    SetActions({"<node name=\"a\" />"});
    SetSteps("1", {"<node name=\"a\" />"});
    SetSteps("-1", {"<node name=\"a\" />"});
    Load();
    EXPECT_EQ(Counts(), QStringLiteral("0 Trigger, 1 Aktionen, 0 Szenen, 0 Schritte"));
}

TEST_F(LoadScenes, LeavesASceneEmptyWithoutItsFile)
{
    m_files.WriteSmallHouse();
    ASSERT_TRUE(QFile::remove(m_files.Path(QStringLiteral("scene_1.xml"))));
    Load();
    EXPECT_EQ(Scene(0)->Count(), 0);
    EXPECT_EQ(Scene(1)->Count(), 1);
}

TEST_F(LoadScenes, LeavesABranchEmptyWithoutItsFile)
{
    m_files.WriteSmallHouse();
    ASSERT_TRUE(QFile::remove(m_files.Path(TriggersName)));
    Load();
    EXPECT_EQ(Counts(), QStringLiteral("0 Trigger, 2 Aktionen, 2 Szenen, 3 Schritte"));
    EXPECT_EQ(Scene(0)->Caption(), QStringLiteral("Abendlicht"));
}

TEST_F(LoadScenes, SkipsAFileThatDoesNotParse)
{
    m_files.WriteSmallHouse();
    SetTriggers({"<node name=\"n\" alias=\"a & b\" />"});
    Load();
    EXPECT_EQ(Counts(), QStringLiteral("0 Trigger, 2 Aktionen, 2 Szenen, 3 Schritte"));
}

TEST_F(LoadScenes, SkipsAFileWithAnotherRoot)
{
    m_files.WriteSmallHouse();
    m_files.Write(TriggersName, SceneDocument("actions", {"<node name=\"n\" />"}));
    m_files.Write(Actions, SceneDocument("trigger", {"<node name=\"n\" />"}));
    m_files.Write(Scenes, SceneDocument("scene", {"<scene name=\"n\" />"}));
    Load();
    EXPECT_EQ(Counts(), QStringLiteral("0 Trigger, 0 Aktionen, 0 Szenen, 0 Schritte"));
    m_files.WriteSmallHouse();
    m_files.Write(QStringLiteral("scene_1.xml"), SceneDocument("scenes", {"<node name=\"n\" />"}));
    Load();
    EXPECT_EQ(Counts(), QStringLiteral("2 Trigger, 2 Aktionen, 2 Szenen, 1 Schritte"));
}

TEST_F(LoadScenes, SharesTheFileOfEqualIds)
{
    SetScenes({"<scene id=\"1\" alias=\"S\" />", "<scene id=\"1\" alias=\"T\" />"});
    SetSteps("1", {"<node alias=\"X\" />"});
    Load();
    EXPECT_EQ(Counts(), QStringLiteral("0 Trigger, 0 Aktionen, 2 Szenen, 2 Schritte"));
}

TEST_F(LoadScenes, ReadsSectionsInTheirOrder)
{
    m_files.WriteSmallHouse();
    Load();
    EXPECT_EQ(SceneSections(m_top.get()),
              QStringList({QStringLiteral("Trigger-Elemente"), QStringLiteral("Aktions-Elemente"),
                           QStringLiteral("Abendlicht"), QStringLiteral("Nachts")}));
}
