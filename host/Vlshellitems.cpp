#include "Vlshellitems.h"

#include <QFile>

#include <algorithm>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

struct TCloseDirectory
{
    void operator()(DIR* directory) const { closedir(directory); }
};

using TDirectory = std::unique_ptr<DIR, TCloseDirectory>;

TDirectory OpenDirectory(const QByteArray& path, bool followLink)
{
    const int descriptor =
        open(path.constData(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC | (followLink ? 0 : O_NOFOLLOW));
    if (descriptor < 0)
        return nullptr;
    TDirectory directory(fdopendir(descriptor));
    if (!directory)
        close(descriptor);
    return directory;
}

TShellItemKind KindOfMode(mode_t mode)
{
    if (S_ISDIR(mode))
        return skFolder;
    if (S_ISREG(mode))
        return skFile;
    return S_ISLNK(mode) ? skLink : skSpecial;
}

TShellItemKind KindOf(DIR* directory, const dirent& entry)
{
    // Some file systems do not tell the kind with the name.
    if (entry.d_type == DT_UNKNOWN) {
        struct stat state
        {};
        if (fstatat(dirfd(directory), entry.d_name, &state, AT_SYMLINK_NOFOLLOW) != 0)
            return skSpecial;
        return KindOfMode(state.st_mode);
    }
    return KindOfMode(static_cast<mode_t>(DTTOIF(entry.d_type)));
}

bool IsShown(const QByteArray& name, TShellItemKind kind, TShellObjects objects)
{
    if (name == "." || name == "..")
        return false;
    if (objects == soAll)
        return true;
    return !name.startsWith('.') && (kind == skFolder || objects == soFoldersAndFiles);
}

bool IsDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// The digits of a number without its leading zeros; `at` stands behind them after it.
std::u16string_view TakeNumber(const char16_t*& at, const char16_t* end)
{
    while (at != end && *at == u'0')
        ++at;
    const char16_t* const begin = at;
    while (at != end && IsDigit(*at))
        ++at;
    return {begin, static_cast<std::size_t>(at - begin)};
}

} // namespace

TShellListing ListShellFolder(const QByteArray& path, TShellObjects objects, bool followLink)
{
    TShellListing listing;
    const TDirectory directory = OpenDirectory(path, followLink);
    if (!directory)
        return listing;
    listing.Readable = true;
    while (const dirent* entry = readdir(directory.get())) {
        const QByteArray name(static_cast<const char*>(entry->d_name));
        const TShellItemKind kind = KindOf(directory.get(), *entry);
        if (IsShown(name, kind, objects))
            listing.Entries.push_back({.Name = name, .Kind = kind, .Inode = entry->d_ino});
    }
    return listing;
}

QString ShellDisplayName(const QByteArray& name)
{
    QString text = QFile::decodeName(name);
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = QChar::ReplacementCharacter;
    }
    return text;
}

bool IsDecodableName(const QByteArray& name)
{
    return QFile::encodeName(QFile::decodeName(name)) == name;
}

QString ShellSortKey(const QByteArray& name)
{
    const QString text = QFile::decodeName(name);
    const bool ascii = std::all_of(name.begin(), name.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    return ascii ? text.toCaseFolded() : text.normalized(QString::NormalizationForm_D).toCaseFolded();
}

int CompareSortKeys(const QString& a, const QString& b)
{
    // By pointers: sorting a large folder is nothing but this.
    const auto* atA = reinterpret_cast<const char16_t*>(a.utf16());
    const auto* atB = reinterpret_cast<const char16_t*>(b.utf16());
    const char16_t* const endA = atA + a.size();
    const char16_t* const endB = atB + b.size();
    while (atA != endA && atB != endB) {
        if (IsDigit(*atA) && IsDigit(*atB)) {
            const std::u16string_view numberA = TakeNumber(atA, endA);
            const std::u16string_view numberB = TakeNumber(atB, endB);
            if (numberA.size() != numberB.size())
                return numberA.size() < numberB.size() ? -1 : 1;
            if (const int order = numberA.compare(numberB))
                return order;
            continue;
        }
        if (*atA != *atB)
            return *atA < *atB ? -1 : 1;
        ++atA;
        ++atB;
    }
    return static_cast<int>(atA != endA) - static_cast<int>(atB != endB);
}
