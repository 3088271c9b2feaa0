#include "SceneFiles.h"

#include "SceneDocument.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace
{

void AppendOutline(const TSceneNode* node, QStringList& lines)
{
    lines.append(QString(qsizetype{2} * node->Level(), u' ') + node->Caption());
    for (int i = 0; i < node->Count(); ++i)
        AppendOutline(node->Child(i), lines);
}

} // namespace

TFileContents ReadDirectory(const QString& directory)
{
    TFileContents contents;
    const QStringList names = QDir(directory).entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : names)
        contents.insert(name, ReadAll(directory + u'/' + name));
    return contents;
}

QByteArray SceneDocument(const QByteArray& root, const QList<QByteArray>& lines)
{
    QByteArray document = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<" + root + ">\r\n";
    for (const QByteArray& line : lines)
        document += line + "\r\n";
    return document + "</" + root + ">\r\n";
}

QString CountsOf(const TSceneNode* top)
{
    const TSceneCounts counts = CountScenes(top);
    return QStringLiteral("%1 Trigger, %2 Aktionen, %3 Szenen, %4 Schritte")
        .arg(counts.Triggers)
        .arg(counts.Actions)
        .arg(counts.Scenes)
        .arg(counts.Steps);
}

QStringList OutlineOf(const TSceneNode* top)
{
    QStringList lines;
    if (top)
        AppendOutline(top, lines);
    return lines;
}

QString RecordOf(const TSceneNode* node)
{
    const TVlSceneItem* item = node ? node->Item() : nullptr;
    if (!item)
        return QStringLiteral("no item");
    return QStringLiteral("id=%1 name=%2 alias=%3 value=%4 delay=%5 source=%6 type=%7 enabled=%8")
        .arg(item->Id)
        .arg(item->Name, item->Alias, item->Value)
        .arg(item->Delay)
        .arg(item->Source)
        .arg(item->DataType)
        .arg(item->Enabled);
}

TVlSceneItem SceneItem(const char* name, const char* alias, const char* value, std::int32_t id)
{
    TVlSceneItem item;
    item.Id = id;
    item.Name = QString::fromUtf8(name);
    item.Alias = QString::fromUtf8(alias);
    item.Value = QString::fromUtf8(value);
    return item;
}

TSceneFiles::TSceneFiles()
{
    chmod(QFile::encodeName(Directory()).constData(), 0755);
}

void TSceneFiles::CopyFrom(const QString& directory) const
{
    const TFileContents contents = ReadDirectory(directory);
    for (auto file = contents.begin(); file != contents.end(); ++file)
        Write(file.key(), file.value());
}

void TSceneFiles::WriteSmallHouse() const
{
    Write(QStringLiteral("trigger_allowed.xml"),
          SceneDocument("trigger", {R"(<node name="0/0/1" alias="Taster Flur" eis="1" type="eib" />)",
                                    R"(<node name="40001" alias="Zeitschalter" eis="10" type="modbus" />)"}));
    Write(QStringLiteral("actions_allowed.xml"),
          SceneDocument("actions", {R"(<node name="1/1/1" alias="Licht Flur" eis="1" type="eib" />)",
                                    R"(<node name="heizung" alias="Heizung" eis="14" type="virtual" />)"}));
    Write(QStringLiteral("scenes.xml"),
          SceneDocument(
              "scenes",
              {R"(<scene id="1" name="0/0/1" alias="Abendlicht" value="1" eis="1" enabled="1" type="eib" />)",
               R"(<scene id="2" name="40001" alias="Nachts" value="22" eis="10" enabled="0" type="modbus" />)"}));
    Write(QStringLiteral("scene_1.xml"),
          SceneDocument(
              "scene",
              {R"(<node name="1/1/1" alias="Licht an" value="1" eis="1" delay="0" enabled="1" type="eib" />)",
               R"(<node name="heizung" alias="Warm" value="21" eis="14" delay="5" enabled="0" type="virtual" />)"}));
    Write(QStringLiteral("scene_2.xml"),
          SceneDocument(
              "scene",
              {R"(<node name="1/1/1" alias="Licht aus" value="0" eis="1" delay="30" enabled="1" type="eib" />)"}));
}

std::unique_ptr<TSceneNode> TSceneFiles::Load()
{
    return LoadSceneTree(Path(), m_files);
}

int TSceneFiles::Save(const TSceneNode* top)
{
    return SaveSceneTree(Path(), top, m_files);
}

QStringList SceneCases(const QString& kind)
{
    return QDir(TestDataPath(QStringLiteral("scenes/") + kind))
        .entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}
