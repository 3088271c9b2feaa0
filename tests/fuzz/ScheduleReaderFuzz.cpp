#include "DocumentFiles.h"
#include "ScheduleDocument.h"
#include "ScheduleNodes.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

// An input is a schedule document. The tree that was read is written, read, written and read again: that never fails.
// Where nothing in it is out of what a document can carry, nothing gets lost, and from the second writing on the bytes
// stay the same.
namespace
{

// In memory where the system has a file system for that.
QString Template()
{
    const bool inMemory = QFileInfo(QStringLiteral("/dev/shm")).isWritable();
    return inMemory ? QStringLiteral("/dev/shm/fuzz-schedule-reader-XXXXXX")
                    : QStringLiteral("fuzz-schedule-reader-XXXXXX");
}

QString Path()
{
    static const QTemporaryDir directory(Template());
    return directory.filePath(QStringLiteral("schedule.xml"));
}

std::unique_ptr<TScheduleNode> Load(const QByteArray& document)
{
    QFile file(Path());
    if (!file.open(QIODevice::WriteOnly) || file.write(document) != document.size())
        std::abort();
    file.close();
    QStringList groupNames;
    TDocumentFiles files(nullptr);
    return LoadScheduleTree(Path(), groupNames, files);
}

QByteArray Written(const TScheduleNode* root)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    WriteSchedule(buffer, root);
    return buffer.data();
}

bool IsPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c >= u' ' && c != u'"' && c != u'&' && c != u'<'; });
}

// An entry that reads the same in any document: ASCII, and nothing that leans on the document around it.
bool IsPlainEntry(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c >= u' ' && c < u'\x7F' && c != u':' && c != u'&'; }) &&
           !text.contains(QStringLiteral("xmlns"));
}

// Whether every node stands where its kind belongs and holds nothing that its line cannot carry.
bool IsPlain(const TScheduleNode* node)
{
    const TVlNodeData* data = node->Data();
    if ((data != nullptr) != node->IsDatapoint() || node->Level() > slEntry || node->ImageIndex() != node->Level())
        return false;
    if (node->IsEntry() ? !IsPlainEntry(node->Caption()) : !IsPlain(node->Caption()))
        return false;
    bool plain = !data || (IsPlain(data->Name) && IsPlain(data->MinVal) && IsPlain(data->MaxVal));
    for (int i = 0; plain && i < node->Count(); ++i)
        plain = IsPlain(node->Child(i));
    return plain;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto root = Load(input);
    const QByteArray first = Written(root.get());
    const auto again = Load(first);
    const QByteArray second = Written(again.get());
    const auto last = Load(second);
    if (IsPlain(root.get()) && (second != first || Written(last.get()) != first))
        std::abort();
    return 0;
}
