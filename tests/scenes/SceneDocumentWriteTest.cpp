#include "SceneDocument.h"

#include "SceneFiles.h"

#include <QBuffer>
#include <gtest/gtest.h>

namespace
{

template <class TWriter, class TNode> QByteArray Written(TWriter write, const TNode* node)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    write(buffer, node);
    return buffer.data();
}

class WriteScenesTest : public testing::Test
{
protected:
    static TSceneNode* Append(TSceneNode* parent, TVlSceneItem item)
    {
        auto* node = new TSceneNode(std::move(item));
        parent->addChild(node);
        return node;
    }
    TSceneNode* AppendTrigger(TVlSceneItem item) const
    {
        return Append(m_top->Child(TriggerRootIndex), std::move(item));
    }
    TSceneNode* AppendAction(TVlSceneItem item) const { return Append(m_top->Child(ActionRootIndex), std::move(item)); }
    TSceneNode* AppendScene(TVlSceneItem item) const { return Append(m_top.get(), std::move(item)); }

    QByteArray Triggers() const { return Written(WriteTriggers, m_top.get()); }
    QByteArray Actions() const { return Written(WriteActions, m_top.get()); }
    QByteArray Scenes() const { return Written(WriteScenes, m_top.get()); }
    static QByteArray Steps(const TSceneNode* scene) { return Written(WriteSceneSteps, scene); }

    // The one element of a document.
    static QByteArray LineOf(const QByteArray& document) { return document.split('\n').value(2).trimmed(); }

    static TVlSceneItem Linked(TVlSceneItem item, TSceneNode* link)
    {
        item.Link.Set(link);
        return item;
    }

    std::unique_ptr<TSceneNode> m_top = MakeSceneTop();
};

} // namespace

TEST_F(WriteScenesTest, WritesEmptyDocuments)
{
    EXPECT_EQ(Triggers(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<trigger>\r\n</trigger>\r\n");
    EXPECT_EQ(Actions(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<actions>\r\n</actions>\r\n");
    EXPECT_EQ(Scenes(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<scenes>\r\n</scenes>\r\n");
    EXPECT_EQ(Steps(AppendScene({})), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<scene>\r\n</scene>\r\n");
}

TEST_F(WriteScenesTest, WritesEmptyDocumentsForAnEmptyTree)
{
    m_top.reset();
    EXPECT_EQ(Triggers(), SceneDocument("trigger"));
    EXPECT_EQ(Actions(), SceneDocument("actions"));
    EXPECT_EQ(Scenes(), SceneDocument("scenes"));
}

TEST_F(WriteScenesTest, WritesNothingWithoutAScene)
{
    EXPECT_EQ(Steps(nullptr), QByteArray());
}

TEST_F(WriteScenesTest, WritesDatapointsInTheirOrder)
{
    TVlSceneItem counter = SceneItem("40001", "Zähler");
    counter.Source = nsMODBUS;
    counter.DataType = dtmEIS11;
    AppendTrigger(counter);
    AppendTrigger(SceneItem("0/0/1", "Taster"));
    AppendAction(SceneItem("1/1/1", "Licht"));
    EXPECT_EQ(Triggers(),
              SceneDocument("trigger", {"<node name=\"40001\" alias=\"Z\xE4hler\" eis=\"11\" type=\"modbus\" />",
                                        "<node name=\"0/0/1\" alias=\"Taster\" eis=\"1\" type=\"eib\" />"}));
    EXPECT_EQ(Actions(), SceneDocument("actions", {"<node name=\"1/1/1\" alias=\"Licht\" eis=\"1\" type=\"eib\" />"}));
}

TEST_F(WriteScenesTest, WritesEverySourceAndType)
{
    TVlSceneItem item = SceneItem("n", "a");
    const QList<QByteArray> types{"1", "6", "14", "10", "11"};
    for (int type = 0; type < types.size(); ++type) {
        item.DataType = static_cast<TDataTypeMap>(type);
        item.Source = nsVIRTUAL;
        m_top = MakeSceneTop();
        AppendTrigger(item);
        EXPECT_EQ(LineOf(Triggers()), "<node name=\"n\" alias=\"a\" eis=\"" + types[type] + "\" type=\"virtual\" />");
    }
}

TEST_F(WriteScenesTest, WritesABoundSceneWithWhatItsTriggerSays)
{
    TVlSceneItem trigger = SceneItem("0/0/1", "Taster");
    trigger.Source = nsVIRTUAL;
    trigger.DataType = dtmEIS6;
    TVlSceneItem scene = Linked(SceneItem("old", "Abend", "5"), AppendTrigger(trigger));
    scene.Id = 12;
    AppendScene(scene);
    EXPECT_EQ(Scenes(), SceneDocument("scenes", {"<scene id=\"12\" name=\"0/0/1\" alias=\"Abend\" value=\"5\" "
                                                 "eis=\"6\" enabled=\"1\" type=\"virtual\" />"}));
}

TEST_F(WriteScenesTest, WritesAnUnboundSceneWithItsOwnValuesAndDisabled)
{
    TVlSceneItem scene = SceneItem("own", "Abend", "5");
    scene.Source = nsMODBUS;
    scene.DataType = dtmEIS14;
    AppendScene(scene);
    EXPECT_EQ(LineOf(Scenes()), "<scene id=\"-1\" name=\"own\" alias=\"Abend\" value=\"5\" eis=\"14\" enabled=\"0\" "
                                "type=\"modbus\" />");
}

TEST_F(WriteScenesTest, StoresASceneAsEnabledOnlyWithTriggerNameAndValue)
{
    TSceneNode* trigger = AppendTrigger(SceneItem("t", "T"));
    TSceneNode* nameless = AppendTrigger(SceneItem("", "N"));
    TVlSceneItem disabled = Linked(SceneItem("", "d", "1"), trigger);
    disabled.Enabled = false;
    AppendScene(disabled);
    AppendScene(Linked(SceneItem("", "v", ""), trigger));
    AppendScene(Linked(SceneItem("x", "n", "1"), nameless));
    EXPECT_EQ(Scenes().count("enabled=\"0\""), 3);
    AppendScene(Linked(SceneItem("", "e", "1"), trigger));
    EXPECT_EQ(Scenes().count("enabled=\"1\""), 1);
}

TEST_F(WriteScenesTest, WritesABoundStepWithWhatItsActionSays)
{
    TVlSceneItem action = SceneItem("1/1/1", "Licht");
    action.Source = nsMODBUS;
    action.DataType = dtmEIS10;
    TVlSceneItem step = Linked(SceneItem("old", "an", "1"), AppendAction(action));
    step.Delay = 30;
    TSceneNode* scene = AppendScene({});
    Append(scene, step);
    EXPECT_EQ(Steps(scene), SceneDocument("scene", {"<node name=\"1/1/1\" alias=\"an\" value=\"1\" eis=\"10\" "
                                                    "delay=\"30\" enabled=\"1\" type=\"modbus\" />"}));
}

TEST_F(WriteScenesTest, WritesAnUnboundStepWithItsOwnValuesAndDisabled)
{
    TVlSceneItem step = SceneItem("own", "an", "1");
    step.Delay = -1;
    TSceneNode* scene = AppendScene({});
    Append(scene, step);
    EXPECT_EQ(LineOf(Steps(scene)), "<node name=\"own\" alias=\"an\" value=\"1\" eis=\"1\" delay=\"-1\" "
                                    "enabled=\"0\" type=\"eib\" />");
}

TEST_F(WriteScenesTest, StoresAStepAsEnabledOnlyWithActionNameAndValue)
{
    TSceneNode* action = AppendAction(SceneItem("a", "A"));
    TSceneNode* nameless = AppendAction(SceneItem("", "N"));
    TSceneNode* scene = AppendScene({});
    TVlSceneItem disabled = Linked(SceneItem("", "d", "1"), action);
    disabled.Enabled = false;
    Append(scene, disabled);
    Append(scene, Linked(SceneItem("", "v", ""), action));
    Append(scene, Linked(SceneItem("x", "n", "1"), nameless));
    EXPECT_EQ(Steps(scene).count("enabled=\"0\""), 3);
    Append(scene, Linked(SceneItem("", "e", "1"), action));
    EXPECT_EQ(Steps(scene).count("enabled=\"1\""), 1);
}

TEST_F(WriteScenesTest, EscapesNothing)
{
    AppendTrigger(SceneItem("a\"b", "c & d < e %s"));
    EXPECT_EQ(LineOf(Triggers()), "<node name=\"a\"b\" alias=\"c & d < e %s\" eis=\"1\" type=\"eib\" />");
}

TEST_F(WriteScenesTest, WritesInTheCodePage)
{
    AppendTrigger(SceneItem("n", "Küche € Ω"));
    EXPECT_EQ(LineOf(Triggers()), "<node name=\"n\" alias=\"K\xFC"
                                  "che \x80 ?\" eis=\"1\" type=\"eib\" />");
}

TEST_F(WriteScenesTest, WritesThatAReaderRejectsALaterReadingOfARawAmpersand)
{
    TSceneFiles files;
    AppendTrigger(SceneItem("t", "a & b"));
    AppendAction(SceneItem("a", "A"));
    files.Save(m_top.get());
    EXPECT_EQ(CountsOf(files.Load().get()), QStringLiteral("0 Trigger, 1 Aktionen, 0 Szenen, 0 Schritte"));
}

TEST(SaveScenes, WritesOneFileOfEachKindAndOneForEachScene)
{
    TSceneFiles files;
    files.WriteSmallHouse();
    const TFileContents before = files.Contents();
    const auto top = files.Load();
    TSceneFiles copy;
    EXPECT_EQ(copy.Save(top.get()), 5);
    EXPECT_EQ(copy.Contents(), before);
}

TEST(SaveScenes, WritesTheFileOfMinusOneForASceneWithoutANumber)
{
    TSceneFiles files;
    const auto top = MakeSceneTop();
    top->addChild(new TSceneNode(TVlSceneItem{}));
    files.Save(top.get());
    EXPECT_EQ(files.Read(QStringLiteral("scene_-1.xml")), SceneDocument("scene"));
}

TEST(SaveScenes, GivesASharedFileToTheLastScene)
{
    TSceneFiles files;
    const auto top = MakeSceneTop();
    for (const char* alias : {"first", "last"}) {
        auto* scene = new TSceneNode(SceneItem("", "", "", 3));
        top->addChild(scene);
        scene->addChild(new TSceneNode(SceneItem("", alias)));
    }
    EXPECT_EQ(files.Save(top.get()), 5);
    EXPECT_EQ(files.Contents().size(), 4);
    EXPECT_TRUE(files.Read(QStringLiteral("scene_3.xml")).contains("alias=\"last\""));
}

TEST(SaveScenes, LeavesFilesOfDeletedScenesUntouched)
{
    TSceneFiles files;
    files.WriteSmallHouse();
    const QByteArray steps = files.Read(QStringLiteral("scene_2.xml"));
    const auto top = files.Load();
    delete top->Child(FirstSceneIndex + 1);
    EXPECT_EQ(files.Save(top.get()), 4);
    EXPECT_EQ(files.Read(QStringLiteral("scene_2.xml")), steps);
}

TEST(SaveScenes, WritesAnEmptyTree)
{
    TSceneFiles files;
    EXPECT_EQ(files.Save(nullptr), 3);
    EXPECT_EQ(files.Contents().size(), 3);
    EXPECT_EQ(files.Read(QStringLiteral("scenes.xml")), SceneDocument("scenes"));
}

TEST(SceneStepsFile, StandsBesideTheScenesFile)
{
    EXPECT_EQ(SceneStepsFile(QStringLiteral("C:\\d\\scenes.xml"), 13), QStringLiteral("C:\\d\\scene_13.xml"));
    EXPECT_EQ(SceneStepsFile(QStringLiteral("C:\\d\\other.dat"), -1), QStringLiteral("C:\\d\\scene_-1.xml"));
    EXPECT_EQ(SceneStepsFile(QStringLiteral("x.xml"), 0), QStringLiteral("scene_0.xml"));
}
