#include "SceneDocument.h"

#include "DocumentFiles.h"
#include "Formatting.h"
#include "Vlapputils.h"
#include "Vltext.h"
#include "XmlReading.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace
{

constexpr auto TriggerFile = "trigger_allowed.xml";
constexpr auto ActionsFile = "actions_allowed.xml";
constexpr auto Declaration = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n";

using TNodesByName = QHash<QString, TSceneNode*>;

QString InDirectoryOf(const QString& scenesFile, const char* name)
{
    return JoinFilePath(ExtractFileDir(scenesFile), {QString::fromLatin1(name)});
}

// Reading

void ReadAttribute(const TXmlAttribute& attribute, TVlSceneItem& item)
{
    const QString text = XmlText(attribute.Value);
    if (SameXmlName(attribute.Name, "name"))
        item.Name = text;
    else if (SameXmlName(attribute.Name, "alias"))
        item.Alias = text;
    else if (SameXmlName(attribute.Name, "value"))
        item.Value = text;
    else if (SameXmlName(attribute.Name, "type"))
        item.Source = Str2NS(text);
    else if (SameXmlName(attribute.Name, "eis"))
        item.DataType = eis2dt(StrToIntDef(text, 1));
    else if (SameXmlName(attribute.Name, "id"))
        item.Id = StrToIntDef(text, -1);
    else if (SameXmlName(attribute.Name, "delay"))
        item.Delay = StrToIntDef(text, 0);
    else if (SameXmlName(attribute.Name, "enabled"))
        item.Enabled = StrToIntDef(text, 1) == 1;
}

// Collects the elements of one file. Their names say nothing about what they become: that follows from the place.
class TElementReader final : public IXmlVisitor
{
public:
    explicit TElementReader(std::string_view root) : m_root(root) {}

    bool BeginRoot(std::string_view name, const TXmlAttributes&) override { return SameXmlName(name, m_root); }

    TXmlStep BeginElement(std::string_view name, const TXmlAttributes& attributes) override
    {
        if (!SameXmlName(name, "node") && !SameXmlName(name, "scene"))
            return TXmlStep::Skip;
        TVlSceneItem& item = Items.emplace_back();
        for (const TXmlAttribute attribute : attributes) {
            if (attribute.Value.empty())
                continue;
            ReadAttribute(attribute, item);
            HighestId = std::max(HighestId, item.Id);
        }
        return TXmlStep::Skip;
    }

    std::vector<TVlSceneItem> Items;
    std::int32_t HighestId = 0; // of every id attribute, also where a later one of the same element counts

private:
    std::string_view m_root;
};

// The elements of a file; none when it is missing or cannot be read.
std::vector<TVlSceneItem> ReadItems(const QString& path, std::string_view root, TDocumentFiles& files)
{
    TElementReader reader(root);
    if (!FileExists(path) || !ReadXmlFile(path, reader))
        return {};
    files.MarkRead(path);
    RaiseSceneId(reader.HighestId);
    return std::move(reader.Items);
}

// A scene or step takes over what the datapoint of its name says, and is linked to it.
void BindByName(TVlSceneItem& item, const TNodesByName& datapoints)
{
    TSceneNode* datapoint = datapoints.value(item.Name);
    if (!datapoint)
        return;
    item.Link.Set(datapoint);
    item.Source = datapoint->Item()->Source;
    item.DataType = datapoint->Item()->DataType;
}

void AppendItem(TSceneNode* parent, TVlSceneItem& item, int image)
{
    auto* node = new TSceneNode(std::move(item));
    parent->addChild(node);
    node->SetImageIndex(image);
    node->RebuildCaption();
}

// The first datapoint of a name is the one that scenes and steps mean.
TNodesByName AppendDatapoints(TSceneNode* root, std::vector<TVlSceneItem> items, TSceneRole role)
{
    TNodesByName byName;
    byName.reserve(static_cast<qsizetype>(items.size()));
    for (TVlSceneItem& item : items) {
        AppendItem(root, item, TSceneNode::ImageOf(role));
        TSceneNode* node = root->Child(root->Count() - 1);
        if (!byName.contains(node->Item()->Name))
            byName.insert(node->Item()->Name, node);
    }
    return byName;
}

void AppendBound(TSceneNode* parent, std::vector<TVlSceneItem> items, TSceneRole role, const TNodesByName& datapoints)
{
    for (TVlSceneItem& item : items) {
        BindByName(item, datapoints);
        AppendItem(parent, item, TSceneNode::ImageOf(role));
    }
}

// Writing

void WriteDatapoints(QIODevice& device, const TSceneNode* root, const char* begin, const char* end)
{
    TLineWriter writer(device);
    writer.Write(Declaration);
    writer.Write(begin);
    for (int i = 0; root && i < root->Count(); ++i) {
        const TVlSceneItem* item = root->Child(i)->Item();
        if (!item)
            continue;
        writer.BeginNode(root->Child(i));
        writer.Write("<node name=\"%s\" alias=\"%s\" eis=\"%d\" type=\"%s\" />\r\n", item->Name, item->Alias,
                     dt2Eis(item->DataType), SourceText(item->Source));
    }
    writer.BeginNode(nullptr);
    writer.Write(end);
}

// The datapoint that a scene's or step's line describes: the linked one, else what the item itself remembers.
const TVlSceneItem& DatapointOf(const TSceneNode& node)
{
    const TVlSceneItem* linked = node.LinkedItem();
    return linked ? *linked : *node.Item();
}

// What is bound to nothing, or has nothing to wait for or to send, is stored as disabled whatever its own flag says.
int StoredEnabled(const TSceneNode& node)
{
    const TVlSceneItem* linked = node.LinkedItem();
    const TVlSceneItem& item = *node.Item();
    return linked && item.Enabled && !linked->Name.isEmpty() && !item.Value.isEmpty() ? 1 : 0;
}

void WriteSceneLine(TLineWriter& writer, const TSceneNode& scene)
{
    const TVlSceneItem& item = *scene.Item();
    const TVlSceneItem& datapoint = DatapointOf(scene);
    writer.BeginNode(&scene);
    writer.Write("<scene id=\"%d\" name=\"%s\" alias=\"%s\" value=\"%s\" eis=\"%d\" enabled=\"%d\" type=\"%s\" />\r\n",
                 item.Id, datapoint.Name, item.Alias, item.Value, dt2Eis(datapoint.DataType), StoredEnabled(scene),
                 SourceText(datapoint.Source));
}

void WriteStepLine(TLineWriter& writer, const TSceneNode& step)
{
    const TVlSceneItem& item = *step.Item();
    const TVlSceneItem& datapoint = DatapointOf(step);
    writer.BeginNode(&step);
    writer.Write(
        "<node name=\"%s\" alias=\"%s\" value=\"%s\" eis=\"%d\" delay=\"%d\" enabled=\"%d\" type=\"%s\" />\r\n",
        datapoint.Name, item.Alias, item.Value, dt2Eis(datapoint.DataType), item.Delay, StoredEnabled(step),
        SourceText(datapoint.Source));
}

} // namespace

std::unique_ptr<TSceneNode> LoadSceneTree(const QString& fileName, TDocumentFiles& files)
{
    files.Clear();
    std::unique_ptr<TSceneNode> top = MakeSceneTop();
    // Links are resolved by name while reading, so the datapoints come first.
    const TNodesByName triggers = AppendDatapoints(
        top->Child(TriggerRootIndex), ReadItems(InDirectoryOf(fileName, TriggerFile), "trigger", files), srTrigger);
    const TNodesByName actions = AppendDatapoints(
        top->Child(ActionRootIndex), ReadItems(InDirectoryOf(fileName, ActionsFile), "actions", files), srAction);
    AppendBound(top.get(), ReadItems(fileName, "scenes", files), srScene, triggers);
    for (int i = FirstSceneIndex; i < top->Count(); ++i) {
        TSceneNode* scene = top->Child(i);
        AppendBound(scene, ReadItems(SceneStepsFile(fileName, scene->Item()->Id), "scene", files), srStep, actions);
    }
    return top;
}

void WriteTriggers(QIODevice& device, const TSceneNode* top)
{
    WriteDatapoints(device, top ? top->Child(TriggerRootIndex) : nullptr, "<trigger>\r\n", "</trigger>\r\n");
}

void WriteActions(QIODevice& device, const TSceneNode* top)
{
    WriteDatapoints(device, top ? top->Child(ActionRootIndex) : nullptr, "<actions>\r\n", "</actions>\r\n");
}

void WriteScenes(QIODevice& device, const TSceneNode* top)
{
    TLineWriter writer(device);
    writer.Write(Declaration);
    writer.Write("<scenes>\r\n");
    for (int i = FirstSceneIndex; top && i < top->Count(); ++i) {
        if (top->Child(i)->Item())
            WriteSceneLine(writer, *top->Child(i));
    }
    writer.BeginNode(nullptr);
    writer.Write("</scenes>\r\n");
}

void WriteSceneSteps(QIODevice& device, const TSceneNode* scene)
{
    if (!scene)
        return;
    TLineWriter writer(device);
    writer.Write(Declaration);
    writer.Write("<scene>\r\n");
    for (int i = 0; i < scene->Count(); ++i) {
        if (scene->Child(i)->Item())
            WriteStepLine(writer, *scene->Child(i));
    }
    writer.BeginNode(nullptr);
    writer.Write("</scene>\r\n");
}

int SaveSceneTree(const QString& fileName, const TSceneNode* top, TDocumentFiles& files)
{
    files.Write(InDirectoryOf(fileName, TriggerFile), [top](QIODevice& device) { WriteTriggers(device, top); });
    files.Write(InDirectoryOf(fileName, ActionsFile), [top](QIODevice& device) { WriteActions(device, top); });
    files.Write(fileName, [top](QIODevice& device) { WriteScenes(device, top); });
    int written = 3;
    for (int i = FirstSceneIndex; top && i < top->Count(); ++i) {
        const TSceneNode* scene = top->Child(i);
        if (!scene->Item())
            continue;
        ++written;
        files.Write(SceneStepsFile(fileName, scene->Item()->Id),
                    [scene](QIODevice& device) { WriteSceneSteps(device, scene); });
    }
    return written;
}

void WriteSceneFile(QIODevice& device, const TSceneNode* top, const QString& scenesFile, const QString& path)
{
    if (IsSameDocument(path, InDirectoryOf(scenesFile, TriggerFile)))
        return WriteTriggers(device, top);
    if (IsSameDocument(path, InDirectoryOf(scenesFile, ActionsFile)))
        return WriteActions(device, top);
    if (IsSameDocument(path, scenesFile))
        return WriteScenes(device, top);
    // The last one of a number has the file.
    for (int i = top ? top->Count() - 1 : 0; i >= FirstSceneIndex; --i) {
        const TSceneNode* scene = top->Child(i);
        if (scene->Item() && IsSameDocument(path, SceneStepsFile(scenesFile, scene->Item()->Id)))
            return WriteSceneSteps(device, scene);
    }
}

QString SceneStepsFile(const QString& scenesFile, std::int32_t id)
{
    return JoinFilePath(ExtractFileDir(scenesFile), {FormatText("scene_%d.xml", id)});
}
