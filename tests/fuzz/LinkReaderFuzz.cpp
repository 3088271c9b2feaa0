#include "MenuDocument.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>

// An input is a document of sensitive links. What was read of it is written, read and written again: that never fails,
// and what holds no character that a document cannot carry comes back as the same bytes.
namespace
{

// In memory where the system has a file system for that.
QString Template()
{
    const bool inMemory = QFileInfo(QStringLiteral("/dev/shm")).isWritable();
    return inMemory ? QStringLiteral("/dev/shm/fuzz-link-reader-XXXXXX") : QStringLiteral("fuzz-link-reader-XXXXXX");
}

QString Path()
{
    static const QTemporaryDir directory(Template());
    return directory.filePath(QStringLiteral("dplinks.xml"));
}

// Null for what is no document of links.
std::unique_ptr<TMenuNode> Load(const QByteArray& document)
{
    QFile file(Path());
    if (!file.open(QIODevice::WriteOnly) || file.write(document) != document.size())
        std::abort();
    file.close();
    std::optional<TMenuNodes> links = ReadLinks(Path());
    if (!links)
        return nullptr;
    auto root = MakeLinkRoot();
    for (std::unique_ptr<TTreeNode>& link : *links)
        root->addChild(link.release());
    return root;
}

QByteArray Written(const TMenuNode* root)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    WriteLinks(buffer, root);
    return buffer.data();
}

bool IsPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c >= u' ' && c != u'"' && c != u'&' && c != u'<'; });
}

// A link has a record of its kind, and nothing stands below it.
bool IsPlain(const TMenuNode* node)
{
    const TVlMenuItem* item = node->Item();
    if (!item || item->Kind != mkLink || node->Count() > 0 || (item->Caption.isEmpty() && !item->Title.isEmpty()))
        std::abort();
    return IsPlain(item->Caption) && IsPlain(item->Title) && IsPlain(item->Link) && IsPlain(item->Help);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto root = Load(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (!root)
        return 0;
    bool plain = true;
    for (int i = 0; i < root->Count(); ++i)
        plain = IsPlain(root->Child(i)) && plain;
    const QByteArray written = Written(root.get());
    const auto again = Load(written);
    if (plain && (!again || Written(again.get()) != written))
        std::abort();
    return 0;
}
