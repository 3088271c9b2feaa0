#include "Vlshellitems.h"

#include <QFile>

#include <algorithm>
#include <memory>

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
    const int descriptor = open(path.constData(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC |
                                                      (followLink ? 0 : O_NOFOLLOW));
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
        struct stat state{};
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

// Skips the digits of a number without its leading zeros; returns them.
QStringView TakeNumber(QStringView& text)
{
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    const auto begin = std::find_if_not(text.begin(), end, [](QChar c) { return c == u'0'; });
    const QStringView digits(begin, end);
    text = text.mid(end - text.begin());
    return digits;
}

bool StartsWithDigit(QStringView text)
{
    return text.front() >= u'0' && text.front() <= u'9';
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

int CompareSortKeys(QStringView a, QStringView b)
{
    while (!a.empty() && !b.empty()) {
        if (StartsWithDigit(a) && StartsWithDigit(b)) {
            const QStringView numberA = TakeNumber(a);
            const QStringView numberB = TakeNumber(b);
            if (numberA.size() != numberB.size())
                return numberA.size() < numberB.size() ? -1 : 1;
            if (const int order = numberA.compare(numberB))
                return order;
            continue;
        }
        if (a.front() != b.front())
            return a.front() < b.front() ? -1 : 1;
        a = a.mid(1);
        b = b.mid(1);
    }
    return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}
