#include "MenuDocument.h"

#include "Formatting.h"
#include "Vltext.h"
#include "XmlReading.h"

namespace
{

// How deep items are looked for: what stands below the sub items of sub items is not read.
constexpr std::size_t DeepestRead = 2;

// Reading

void ReadItemAttribute(const TXmlAttribute& attribute, TVlMenuItem& item)
{
    if (SameXmlName(attribute.Name, "caption"))
        item.Caption = XmlText(attribute.Value);
    else if (SameXmlName(attribute.Name, "title"))
        item.Title = XmlText(attribute.Value);
    else if (SameXmlName(attribute.Name, "link"))
        item.Link = XmlText(attribute.Value);
    else if (SameXmlName(attribute.Name, "help"))
        item.Help = XmlText(attribute.Value);
    else if (SameXmlName(attribute.Name, "access"))
        item.Access = StrToIntDef(XmlText(attribute.Value), 0);
}

// Builds the menu while its document is read. The names of elements decide what is an item; their depth, counted over
// all elements, decides where it goes.
class TMenuReader final : public IXmlVisitor
{
public:
    bool BeginRoot(std::string_view name, const TXmlAttributes& attributes) override
    {
        if (!SameXmlName(name, "menu"))
            return false;
        // "alarm" and "logout" are known and change nothing, like everything else that stands here.
        for (const TXmlAttribute attribute : attributes) {
            if (!attribute.Value.empty() && SameXmlName(attribute.Name, "logo"))
                Content.Logo = XmlText(attribute.Value);
        }
        return true;
    }

    TXmlStep BeginElement(std::string_view name, const TXmlAttributes& attributes) override
    {
        if (SameXmlName(name, "menuitem")) {
            TVlMenuItem item;
            for (const TXmlAttribute attribute : attributes) {
                if (!attribute.Value.empty())
                    ReadItemAttribute(attribute, item);
            }
            Place(std::move(item));
        }
        if (m_depth == DeepestRead)
            return TXmlStep::Skip;
        ++m_depth;
        return TXmlStep::Enter;
    }

    void EndElement() override { --m_depth; }

    TMenuContent Content;

private:
    // A sub item goes behind the sub item before it, else into the main item before it. One that comes before any main
    // item stands beside the roots, and the next one takes it for its main item.
    void Place(TVlMenuItem item)
    {
        const bool isMain = m_depth == 0;
        auto node = std::make_unique<TMenuNode>(std::move(item), isMain ? miMainItem : miSubItem);
        TMenuNode* current = node.get();
        if (isMain) {
            m_level = 1;
            Content.Items.push_back(std::move(node));
        } else if (!m_current) {
            m_level = 0;
            Content.Strays.push_back(std::move(node));
        } else if (m_level > 1) {
            m_current->Parent()->addChild(node.release());
        } else {
            ++m_level;
            m_current->addChild(node.release());
        }
        m_current = current;
    }

    std::size_t m_depth = 0;
    TMenuNode* m_current = nullptr; // the item that came last
    int m_level = 0;                // where it will stand in the tree
};

void ReadLinkAttribute(const TXmlAttribute& attribute, TVlMenuItem& item)
{
    const QString text = XmlText(attribute.Value);
    if (SameXmlName(attribute.Name, "name"))
        item.Title = text;
    else if (SameXmlName(attribute.Name, "alias"))
        item.Caption = text;
    else if (SameXmlName(attribute.Name, "value"))
        item.Link = text;
    else if (SameXmlName(attribute.Name, "href"))
        item.Help = text;
    else if (SameXmlName(attribute.Name, "eis"))
        item.DataType = eis2dt(StrToIntDef(text, 1));
    else if (SameXmlName(attribute.Name, "target"))
        item.Source = Str2NS(text);
    else if (SameXmlName(attribute.Name, "access"))
        item.Access = StrToIntDef(text, 0);
}

class TLinkReader final : public IXmlVisitor
{
public:
    bool BeginRoot(std::string_view name, const TXmlAttributes&) override { return SameXmlName(name, "links"); }

    TXmlStep BeginElement(std::string_view name, const TXmlAttributes& attributes) override
    {
        if (!SameXmlName(name, "link"))
            return TXmlStep::Skip;
        TVlMenuItem item{.Kind = mkLink};
        for (const TXmlAttribute attribute : attributes) {
            if (!attribute.Value.empty())
                ReadLinkAttribute(attribute, item);
        }
        if (item.Caption.isEmpty())
            item.Caption = item.Title;
        Links.push_back(std::make_unique<TMenuNode>(std::move(item), miSubItem));
        return TXmlStep::Skip;
    }

    TMenuNodes Links;
};

// Writing

// A node at this level is a main item, whose element stays open for its sub items.
constexpr int MainLevel = 1;

void WriteItems(TLineWriter& writer, const TMenuNode* parent, int level, int& number)
{
    const bool isMain = level == MainLevel;
    for (int i = 0; i < parent->Count(); ++i) {
        const TMenuNode* node = parent->Child(i);
        writer.BeginNode(node);
        if (const TVlMenuItem* item = node->Item()) {
            writer.Write("<menuitem id=\"mi%d\" class=\"%s\" caption=\"%s\" title=\"%s\" link=\"%s\" help=\"%s\" "
                         "access=\"%d\"%s\r\n",
                         number, isMain ? "main" : "sub", item->Caption, item->Title, item->Link, item->Help,
                         item->Access, isMain ? " >" : " />");
            ++number;
        }
        WriteItems(writer, node, level + 1, number);
        writer.BeginNode(node);
        if (isMain)
            writer.Write("</menuitem>\r\n");
    }
}

} // namespace

std::optional<TMenuContent> ReadMenu(const QString& path)
{
    TMenuReader reader;
    if (!ReadXmlFile(path, reader))
        return std::nullopt;
    return std::move(reader.Content);
}

void WriteMenu(QIODevice& device, const TMenuNode* root, const TMenuHeader& header)
{
    TLineWriter writer(device);
    writer.Write("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
                 "<?xml-stylesheet type=\"text/xsl\" href=\"%s\"?>\r\n"
                 "<menu version=\"0.1\" levels=\"%d\" logo=\"%s\" helpbase=\"%s\">\r\n",
                 header.StylePath, header.Levels, header.Logo, header.HelpBase);
    int number = 0;
    if (root)
        WriteItems(writer, root, MainLevel, number);
    writer.BeginNode(nullptr);
    writer.Write("</menu>\r\n");
}

std::optional<TMenuNodes> ReadLinks(const QString& path)
{
    TLinkReader reader;
    if (!ReadXmlFile(path, reader))
        return std::nullopt;
    return std::move(reader.Links);
}

void WriteLinks(QIODevice& device, const TMenuNode* root)
{
    TLineWriter writer(device);
    writer.Write("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<links>\r\n");
    int number = 0;
    for (int i = 0; root && i < root->Count(); ++i) {
        const TVlMenuItem* item = root->Child(i)->Item();
        if (!item)
            continue;
        writer.BeginNode(root->Child(i));
        writer.Write("<link id=\"lk%d\" class=\"link\" name=\"%s\" alias=\"%s\" value=\"%s\" href=\"%s\" "
                     "target=\"%s\" eis=\"%d\" access=\"%d\" />\r\n",
                     number, item->Title, item->Caption, item->Link, item->Help, SourceText(item->Source),
                     dt2Eis(item->DataType), item->Access);
        ++number;
    }
    writer.BeginNode(nullptr);
    writer.Write("</links>\r\n");
}
