#include "SceneFiles.h"

#include "Formatting.h"
#include "Vlapputils.h"

#include <QBuffer>
#include <QDir>

namespace
{

constexpr auto Declaration = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n";
constexpr int BoundDatapoints = 1000;
constexpr int StepsPerScene = 10;

template <class TWrite> QByteArray Document(const char* root, TWrite write)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    TLineWriter writer(buffer);
    writer.Write(Declaration);
    writer.Write("<%s>\r\n", root);
    write(writer);
    writer.Write("</%s>\r\n", root);
    return buffer.data();
}

QString Address(int number)
{
    return FormatText("%d/%d/%d", number >> 11, number >> 8 & 7, number & 255);
}

void WriteStep(TLineWriter& writer, int number)
{
    writer.Write("<node name=\"%s\" alias=\"Schritt %d\" value=\"1\" eis=\"1\" delay=\"%d\" enabled=\"1\" "
                 "type=\"eib\" />\r\n",
                 Address(number % BoundDatapoints), number, number % 30);
}

void WriteScene(TLineWriter& writer, int number)
{
    writer.Write("<scene id=\"%d\" name=\"%s\" alias=\"Szene %d\" value=\"1\" eis=\"1\" enabled=\"1\" type=\"eib\" "
                 "/>\r\n",
                 number + 1, Address(number % BoundDatapoints), number);
}

} // namespace

QByteArray DatapointFile(const char* root, int count)
{
    const QString alias = QStringLiteral("Licht Gebäude %1");
    return Document(root, [&](TLineWriter& writer) {
        for (int i = 0; i < count; ++i) {
            writer.Write("<node name=\"%s\" alias=\"%s\" eis=\"1\" type=\"eib\" />\r\n", Address(i), alias.arg(i));
        }
    });
}

QString MakeSceneDirectory(const QString& directory, int datapoints, int scenes)
{
    const QDir target(directory);
    WriteFile(target.filePath(QStringLiteral("trigger_allowed.xml")), DatapointFile("trigger", datapoints));
    WriteFile(target.filePath(QStringLiteral("actions_allowed.xml")), DatapointFile("actions", datapoints));
    const QString scenesFile = target.filePath(QStringLiteral("scenes.xml"));
    WriteFile(scenesFile, Document("scenes", [scenes](TLineWriter& writer) {
                  for (int i = 0; i < scenes; ++i)
                      WriteScene(writer, i);
              }));
    for (int scene = 0; scene < scenes; ++scene) {
        WriteFile(target.filePath(QStringLiteral("scene_%1.xml").arg(scene + 1)),
                  Document("scene", [scene](TLineWriter& writer) {
                      for (int i = 0; i < StepsPerScene; ++i)
                          WriteStep(writer, scene * StepsPerScene + i);
                  }));
    }
    return scenesFile;
}
