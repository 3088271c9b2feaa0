#include "Vlprogramfiles.h"

#include "Vlapputils.h"
#include "Vltext.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QUrl>

#include <algorithm>
#include <array>

namespace
{

// Kinds that no common program executes. What inherits from one of them (a script is plain text) is none of them.
constexpr std::array DocumentTypes{
    "text/plain", "text/html",       "text/css",        "text/csv",        "text/markdown",
    "text/xml",   "application/xml", "application/pdf", "application/rtf", "application/xhtml+xml",
};

constexpr std::array DocumentFamilies{
    "image/",
    "audio/",
    "video/",
    "application/vnd.oasis.opendocument.",
    "application/vnd.openxmlformats-officedocument.",
};

// Databases, which are forms and macros in the first place; by both names that they go by.
constexpr std::array NoDocumentTypes{
    "application/vnd.oasis.opendocument.base",
    "application/vnd.oasis.opendocument.database",
};

bool IsDocumentType(const QString& type)
{
    if (std::any_of(NoDocumentTypes.begin(), NoDocumentTypes.end(),
                    [&](const char* known) { return type == QLatin1StringView(known); }))
        return false;
    return std::any_of(DocumentTypes.begin(), DocumentTypes.end(),
                       [&](const char* known) { return type == QLatin1StringView(known); }) ||
           std::any_of(DocumentFamilies.begin(), DocumentFamilies.end(),
                       [&](const char* family) { return type.startsWith(QLatin1StringView(family)); });
}

bool HasDocumentName(const QString& path)
{
    const QList<QMimeType> types = QMimeDatabase().mimeTypesForFileName(QFileInfo(path).fileName());
    return !types.isEmpty() &&
           std::all_of(types.begin(), types.end(), [](const QMimeType& type) { return IsDocumentType(type.name()); });
}

bool BeginsLikeProgram(const QString& path)
{
    constexpr qint64 Beginning = 1024;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return true;
    const QByteArray bytes = file.read(Beginning);
    return bytes.startsWith("#!") ||
           bytes.startsWith("\x7F"
                            "ELF") ||
           bytes.startsWith("MZ") || bytes.contains("[Desktop Entry]");
}

} // namespace

bool MayRunProgram(const QString& path)
{
    const QFileInfo file(ToPlatformPath(path));
    if (file.isDir())
        return false;
    constexpr auto AnyExecute = QFile::ExeOwner | QFile::ExeUser | QFile::ExeGroup | QFile::ExeOther;
    if (!file.isFile() || (file.permissions() & AnyExecute))
        return true;
    return !HasDocumentName(file.filePath()) || !HasDocumentName(file.canonicalFilePath()) ||
           BeginsLikeProgram(file.filePath());
}

bool MayAddressRunProgram(const QString& address)
{
    const QUrl url(address);
    if (url.isLocalFile())
        return MayRunProgram(url.toLocalFile());
    return !SameText(url.scheme(), u"http") && !SameText(url.scheme(), u"https");
}
