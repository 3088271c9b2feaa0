#include "DocumentFiles.h"
#include "SceneDocument.h"
#include "SceneNodes.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>

// An input is a directory of scene documents, one after the other with a record separator between them. A tree that was
// read is written and read again: that never fails, and what holds no character that a document cannot carry comes
// back as the same bytes.
namespace
{

constexpr char RecordSeparator = '\x1E';

const QStringList& Names()
{
    static const QStringList names{QStringLiteral("trigger_allowed.xml"), QStringLiteral("actions_allowed.xml"),
                                   QStringLiteral("scenes.xml"),          QStringLiteral("scene_1.xml"),
                                   QStringLiteral("scene_2.xml"),         QStringLiteral("scene_-1.xml")};
    return names;
}

// In memory where the system has a file system for that.
QString Template()
{
    const bool inMemory = QFileInfo(QStringLiteral("/dev/shm")).isWritable();
    return inMemory ? QStringLiteral("/dev/shm/fuzz-scene-reader-XXXXXX") : QStringLiteral("fuzz-scene-reader-XXXXXX");
}

QString Path(const QString& name)
{
    static const QTemporaryDir directory(Template());
    return directory.filePath(name);
}

void WriteDocuments(const QList<QByteArray>& documents)
{
    for (qsizetype i = 0; i < Names().size(); ++i) {
        QFile file(Path(Names()[i]));
        if (i >= documents.size()) {
            file.remove();
            continue;
        }
        if (!file.open(QIODevice::WriteOnly) || file.write(documents[i]) != documents[i].size())
            std::abort();
    }
}

std::unique_ptr<TSceneNode> Load()
{
    TDocumentFiles files(nullptr);
    return LoadSceneTree(Path(QStringLiteral("scenes.xml")), files);
}

template <class TWriter> QByteArray Written(TWriter write, const TSceneNode* node)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    write(buffer, node);
    return buffer.data();
}

// The documents of a tree, in the order of their names. Steps are taken from the last scene of a number.
QList<QByteArray> WrittenDocuments(const TSceneNode* top)
{
    QList<QByteArray> documents{Written(WriteTriggers, top), Written(WriteActions, top), Written(WriteScenes, top)};
    for (const int id : {1, 2, -1}) {
        const TSceneNode* last = nullptr;
        for (int i = FirstSceneIndex; i < top->Count(); ++i) {
            if (top->Child(i)->Item()->Id == id)
                last = top->Child(i);
        }
        documents.append(last ? Written(WriteSceneSteps, last) : QByteArray("<scene/>"));
    }
    return documents;
}

bool IsPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c >= u' ' && c != u'"' && c != u'&' && c != u'<'; });
}

bool IsPlain(const TSceneNode* node)
{
    const TVlSceneItem* item = node->Item();
    bool plain = !item || (IsPlain(item->Name) && IsPlain(item->Alias) && IsPlain(item->Value));
    for (int i = 0; plain && i < node->Count(); ++i)
        plain = IsPlain(node->Child(i));
    return plain;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    WriteDocuments(input.split(RecordSeparator));
    const auto top = Load();
    const QList<QByteArray> written = WrittenDocuments(top.get());
    WriteDocuments(written);
    const auto again = Load();
    if (IsPlain(top.get()) && WrittenDocuments(again.get()) != written)
        std::abort();
    return 0;
}
