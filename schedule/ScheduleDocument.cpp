#include "ScheduleDocument.h"

#include "DocumentFiles.h"
#include "FoldersRc.h"
#include "Formatting.h"
#include "Vlapputils.h"
#include "Vltext.h"
#include "XmlReading.h"

#include <vector>

namespace
{

// What a group or a datapoint has that says nothing else. A group that the user makes has 0 instead.
constexpr int DefaultAccess = 5;

// Reading

void ReadAttribute(const TXmlAttribute& attribute, TVlNodeData& data)
{
    const QString text = XmlText(attribute.Value);
    if (SameXmlName(attribute.Name, "name"))
        data.Name = text;
    else if (SameXmlName(attribute.Name, "alias"))
        data.Alias = text;
    else if (SameXmlName(attribute.Name, "access"))
        data.Access = StrToIntDef(text, DefaultAccess);
    else if (SameXmlName(attribute.Name, "type"))
        data.Source = Str2NS(text);
    else if (SameXmlName(attribute.Name, "eis"))
        data.DataType = eis2dt(StrToIntDef(text, 1));
    else if (SameXmlName(attribute.Name, "enabled"))
        data.Enabled = StrToIntDef(text, 1) == 1;
    else if (SameXmlName(attribute.Name, "maxv"))
        data.MaxVal = text;
    else if (SameXmlName(attribute.Name, "minv"))
        data.MinVal = text;
}

// Builds the tree while the document is read. Groups go below the root, wherever they stand; everything else goes below
// the group or datapoint that it stands in, without a look at the level.
class TScheduleReader final : public IXmlVisitor
{
public:
    bool BeginRoot(std::string_view name, const TXmlAttributes&) override { return SameXmlName(name, "eibnet"); }

    TXmlStep BeginElement(std::string_view name, const TXmlAttributes& attributes) override
    {
        if (SameXmlName(name, "schedule"))
            return TXmlStep::Text;
        if (SameXmlName(name, "nodes"))
            m_open.push_back({.Node = AppendGroup(attributes), .Level = slGroup});
        else if (SameXmlName(name, "node"))
            m_open.push_back({.Node = AppendDatapoint(attributes), .Level = m_open.back().Level + 1});
        else
            return TXmlStep::Skip;
        return TXmlStep::Enter;
    }

    void EndElement() override { m_open.pop_back(); }

    void TakeText(const QString& text) override
    {
        if (!text.isEmpty())
            m_open.back().Node->addChild(new TScheduleNode(text, slEntry));
    }

    std::unique_ptr<TScheduleNode> Root = MakeScheduleRoot();
    QStringList GroupNames;

private:
    struct TOpenNode
    {
        TScheduleNode* Node;
        int Level;
    };

    TScheduleNode* AppendGroup(const TXmlAttributes& attributes)
    {
        QString caption;
        std::int32_t access = DefaultAccess;
        for (const TXmlAttribute attribute : attributes) {
            if (attribute.Value.empty())
                continue;
            if (SameXmlName(attribute.Name, "name"))
                caption = XmlText(attribute.Value);
            else if (SameXmlName(attribute.Name, "access"))
                access = StrToIntDef(XmlText(attribute.Value), DefaultAccess);
        }
        if (caption.isEmpty())
            caption = FormatText("%s %d", RcText(_RSTR_NEW_GROUP), Root->Count());
        auto* group = new TScheduleNode(caption, slGroup);
        group->SetGroupAccess(access);
        Root->addChild(group);
        GroupNames.append(caption);
        return group;
    }

    TScheduleNode* AppendDatapoint(const TXmlAttributes& attributes)
    {
        TVlNodeData data;
        for (const TXmlAttribute attribute : attributes)
            ReadAttribute(attribute, data);
        auto* datapoint = new TScheduleNode(std::move(data), m_open.back().Level + 1);
        m_open.back().Node->addChild(datapoint);
        return datapoint;
    }

    std::vector<TOpenNode> m_open{{.Node = Root.get(), .Level = slRoot}};
};

// Writing

void WriteDatapoint(TLineWriter& writer, const TScheduleNode& datapoint)
{
    const TVlNodeData& data = *datapoint.Data();
    writer.BeginNode(&datapoint);
    writer.Write("<node name=\"%s\" alias=\"%s\" eis=\"%d\" type=\"%s\" access=\"%d\" enabled=\"%d\" minv=\"%s\" "
                 "maxv=\"%s\">\r\n",
                 data.Name, data.Alias, dt2Eis(data.DataType), SourceText(data.Source), data.Access,
                 data.Enabled ? 1 : 0, data.MinVal, data.MaxVal);
    for (int i = 0; i < datapoint.Count(); ++i) {
        writer.BeginNode(datapoint.Child(i));
        writer.Write("%s\r\n", datapoint.Child(i)->Caption());
    }
    writer.BeginNode(&datapoint);
    writer.Write("</node>\r\n");
}

void WriteGroup(TLineWriter& writer, const TScheduleNode& group)
{
    writer.BeginNode(&group);
    writer.Write("<nodes name=\"%s\" access=\"%d\">\r\n", group.Caption(), group.GroupAccess());
    for (int i = 0; i < group.Count(); ++i) {
        if (group.Child(i)->Data())
            WriteDatapoint(writer, *group.Child(i));
    }
    writer.BeginNode(&group);
    writer.Write("</nodes>\r\n");
}

} // namespace

std::unique_ptr<TScheduleNode> LoadScheduleTree(const QString& fileName, QStringList& groupNames, TDocumentFiles& files)
{
    files.Clear();
    TScheduleReader reader;
    if (!FileExists(fileName) || !ReadXmlFile(fileName, reader))
        return MakeScheduleRoot();
    files.MarkRead(fileName);
    groupNames.append(reader.GroupNames);
    return std::move(reader.Root);
}

void WriteSchedule(QIODevice& device, const TScheduleNode* root)
{
    TLineWriter writer(device);
    writer.Write("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<eibnet>\r\n");
    for (int i = 0; root && i < root->Count(); ++i)
        WriteGroup(writer, *root->Child(i));
    writer.BeginNode(nullptr);
    writer.Write("</eibnet>\r\n");
}
