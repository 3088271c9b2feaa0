#include "ScheduleFiles.h"

#include "ScheduleDocument.h"

#include <QBuffer>
#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace
{

void AppendOutline(const TScheduleNode* node, QStringList& lines)
{
    lines.append(QString(qsizetype{2} * node->Level(), u' ') + node->Caption());
    for (int i = 0; i < node->Count(); ++i)
        AppendOutline(node->Child(i), lines);
}

} // namespace

QByteArray ScheduleDocument(const QList<QByteArray>& lines)
{
    QByteArray document = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<eibnet>\r\n";
    for (const QByteArray& line : lines)
        document += line + "\r\n";
    return document + "</eibnet>\r\n";
}

QByteArray Written(const TScheduleNode* root)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    WriteSchedule(buffer, root);
    return buffer.data();
}

QString CountsOf(const TScheduleNode* root)
{
    const TScheduleCounts counts = CountSchedule(root);
    return QStringLiteral("%1 Gruppen, %2 Datenpunkte, %3 Einträge")
        .arg(counts.Groups)
        .arg(counts.Datapoints)
        .arg(counts.Entries);
}

QStringList OutlineOf(const TScheduleNode* root)
{
    QStringList lines;
    if (root)
        AppendOutline(root, lines);
    return lines;
}

QString RecordOf(const TScheduleNode* node)
{
    const TVlNodeData* data = node ? node->Data() : nullptr;
    if (!data)
        return QStringLiteral("no record");
    return QStringLiteral("id=%1 source=%2 type=%3 enabled=%4 access=%5 name=%6 alias=%7 min=%8 max=%9")
        .arg(data->Id)
        .arg(data->Source)
        .arg(data->DataType)
        .arg(data->Enabled)
        .arg(data->Access)
        .arg(data->Name, data->Alias, data->MinVal, data->MaxVal);
}

TScheduleFiles::TScheduleFiles()
{
    chmod(QFile::encodeName(Directory()).constData(), 0755);
}

QStringList TScheduleFiles::Names() const
{
    return QDir(Directory()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
}

void TScheduleFiles::WriteSmallHouse() const
{
    Write(ScheduleDocument(
        {R"(<nodes name="Erdgeschoss" access="0">)",
         R"(<node name="1/1/1" alias="Licht Flur" eis="1" type="eib" access="5" enabled="1" minv="0" maxv="1">)",
         R"(<schedule time="06:30" dow="1111100" value="1" enabled="1" postprocess="0"/>)",
         R"(<schedule time="22:00" dow="1111111" value="0" enabled="1" postprocess="1"/>)", "</node>",
         R"(<node name="40001" alias="Heizung" eis="10" type="modbus" access="3" enabled="0" minv="5" maxv="30">)",
         R"(<schedule time="05:00" dow="0000011" value="21,5" enabled="0" postprocess="0"/>)", "</node>", "</nodes>",
         R"(<nodes name="Garten" access="2">)",
         R"(<node name="pumpe" alias="Teichpumpe" eis="14" type="virtual" access="5" enabled="1" minv="" maxv="">)",
         R"(<schedule time="08:00" dow="1010101" value="50" enabled="1" postprocess="1"/>)", "</node>", "</nodes>"}));
}

std::unique_ptr<TScheduleNode> TScheduleFiles::Load()
{
    return LoadScheduleTree(Path(), m_groupNames, m_files);
}

std::unique_ptr<TScheduleNode> TScheduleFiles::Load(const QByteArray& content)
{
    Write(content);
    return Load();
}

void TScheduleFiles::Save(const TScheduleNode* root)
{
    m_files.Write(Path(), [root](QIODevice& device) { WriteSchedule(device, root); });
}

QStringList ScheduleCases(const QString& kind)
{
    QStringList names = QDir(TestDataPath(QStringLiteral("schedule/") + kind))
                            .entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    for (QString& name : names)
        name.chop(QStringLiteral(".xml").size());
    return names;
}

QString ScheduleCasePath(const QString& kind, const QString& name)
{
    return TestDataPath(QStringLiteral("schedule/%1/%2.xml").arg(kind, name));
}
