#include "MenuFiles.h"

#include <QBuffer>
#include <QDir>

namespace
{

void AppendOutline(const TTreeNode* node, QStringList& lines)
{
    lines.append(QString(qsizetype{2} * node->Level(), u' ') + node->Caption());
    for (int i = 0; i < node->Count(); ++i)
        AppendOutline(node->Child(i), lines);
}

std::unique_ptr<TMenuNode> With(std::unique_ptr<TMenuNode> root, TMenuNodes nodes)
{
    for (std::unique_ptr<TTreeNode>& node : nodes)
        root->addChild(node.release());
    return root;
}

QByteArray Joined(QByteArray document, const QList<QByteArray>& lines)
{
    for (const QByteArray& line : lines)
        document += line + "\r\n";
    return document;
}

} // namespace

QByteArray MenuText(const QList<QByteArray>& lines, const QByteArray& logo)
{
    return Joined("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
                  "<?xml-stylesheet type=\"text/xsl\" href=\"\"?>\r\n"
                  "<menu version=\"0.1\" levels=\"2\" logo=\"" +
                      logo + "\" helpbase=\"\">\r\n",
                  lines) +
           "</menu>\r\n";
}

QByteArray LinksText(const QList<QByteArray>& lines)
{
    return Joined("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<links>\r\n", lines) + "</links>\r\n";
}

QByteArray WrittenMenu(const TMenuNode* root, const TMenuHeader& header)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    WriteMenu(buffer, root, header);
    return buffer.data();
}

QByteArray WrittenLinks(const TMenuNode* root)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    WriteLinks(buffer, root);
    return buffer.data();
}

QStringList OutlineOf(const TMenuNodes& nodes)
{
    QStringList lines;
    for (const std::unique_ptr<TTreeNode>& node : nodes)
        AppendOutline(node.get(), lines);
    return lines;
}

QString RecordOf(const TVlMenuItem* item)
{
    if (!item)
        return QStringLiteral("no record");
    return QStringLiteral("kind=%1 type=%2 source=%3 access=%4 caption=%5 title=%6 link=%7 help=%8")
        .arg(item->Kind)
        .arg(item->DataType)
        .arg(item->Source)
        .arg(item->Access)
        .arg(item->Caption, item->Title, item->Link, item->Help);
}

QString RecordOf(const TTreeNode* node)
{
    return RecordOf(node ? static_cast<const TMenuNode*>(node)->Item() : nullptr);
}

std::unique_ptr<TMenuNode> WithItems(TMenuNodes items)
{
    return With(MakeMenuRoot(), std::move(items));
}

std::unique_ptr<TMenuNode> WithLinks(TMenuNodes links)
{
    return With(MakeLinkRoot(), std::move(links));
}

std::optional<TMenuContent> TMenuFile::Menu(const QByteArray& content) const
{
    Write(content);
    return ReadMenu(Path());
}

std::optional<TMenuNodes> TMenuFile::Links(const QByteArray& content) const
{
    Write(content);
    return ReadLinks(Path());
}

QStringList MenuCases(const QString& kind)
{
    QStringList names = QDir(TestDataPath(QStringLiteral("menu/") + kind))
                            .entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    for (QString& name : names)
        name.chop(QStringLiteral(".xml").size());
    return names;
}

QByteArray MenuCase(const QString& kind, const QString& name)
{
    return TestData(QStringLiteral("menu/%1/%2.xml").arg(kind, name));
}
