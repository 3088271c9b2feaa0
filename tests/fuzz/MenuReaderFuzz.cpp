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

// An input is a menu document. What was read of it is written, read and written again: that never fails, and what holds
// no character that a document cannot carry comes back as the same bytes.
namespace
{

// In memory where the system has a file system for that.
QString Template()
{
    const bool inMemory = QFileInfo(QStringLiteral("/dev/shm")).isWritable();
    return inMemory ? QStringLiteral("/dev/shm/fuzz-menu-reader-XXXXXX") : QStringLiteral("fuzz-menu-reader-XXXXXX");
}

QString Path()
{
    static const QTemporaryDir directory(Template());
    return directory.filePath(QStringLiteral("menu.xml"));
}

struct TMenu
{
    std::unique_ptr<TMenuNode> Root = MakeMenuRoot();
    TMenuHeader Header;
    TMenuNodes Strays;
};

std::optional<TMenu> Load(const QByteArray& document)
{
    QFile file(Path());
    if (!file.open(QIODevice::WriteOnly) || file.write(document) != document.size())
        std::abort();
    file.close();
    std::optional<TMenuContent> content = ReadMenu(Path());
    if (!content)
        return std::nullopt;
    TMenu menu;
    for (std::unique_ptr<TTreeNode>& item : content->Items)
        menu.Root->addChild(item.release());
    menu.Header.Logo = content->Logo.value_or(QString());
    menu.Strays = std::move(content->Strays);
    return menu;
}

QByteArray Written(const TMenu& menu)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    WriteMenu(buffer, menu.Root.get(), menu.Header);
    return buffer.data();
}

bool IsPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c >= u' ' && c != u'"' && c != u'&' && c != u'<'; });
}

// Every item has a record and stands on one of two levels.
void ExpectShape(const TMenuNode* root)
{
    for (int i = 0; i < root->Count(); ++i) {
        const TMenuNode* main = root->Child(i);
        if (!main->Item() || main->ImageIndex() != miMainItem)
            std::abort();
        for (int j = 0; j < main->Count(); ++j) {
            const TMenuNode* sub = main->Child(j);
            if (!sub->Item() || sub->ImageIndex() != miSubItem || sub->Count() > 0)
                std::abort();
        }
    }
}

bool IsPlain(const TMenuNode* node)
{
    const TVlMenuItem* item = node->Item();
    bool plain =
        !item || (IsPlain(item->Caption) && IsPlain(item->Title) && IsPlain(item->Link) && IsPlain(item->Help));
    for (int i = 0; plain && i < node->Count(); ++i)
        plain = IsPlain(node->Child(i));
    return plain;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto menu = Load(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (!menu)
        return 0;
    ExpectShape(menu->Root.get());
    const QByteArray written = Written(*menu);
    const auto again = Load(written);
    const bool plain = IsPlain(menu->Header.Logo) && IsPlain(menu->Root.get());
    if (plain && (!again || !again->Strays.empty() || Written(*again) != written))
        std::abort();
    return 0;
}
