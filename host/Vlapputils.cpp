#include "Vlapputils.h"

#include "Vlerrors.h"
#include "Vlfilereplacer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <algorithm>

namespace
{

bool IsSeparator(QChar c, QChar separator)
{
    return c == separator || (separator == PathSeparator && c == u'/');
}

// The folders and the file of a path. A leading separator gives an empty first item, so that rooted paths share a root;
// other empty items are none.
QStringList PathItems(const QString& path, QChar separator)
{
    QStringList items;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= path.size(); ++i) {
        if (i < path.size() && !IsSeparator(path[i], separator))
            continue;
        if (i > start || (i == 0 && !path.isEmpty()))
            items.append(path.mid(start, i - start));
        start = i + 1;
    }
    return items;
}

bool IsDrive(const QString& item)
{
    return item.size() == 2 && item[1] == u':';
}

bool SameItem(const QString& a, const QString& b)
{
    return a == b || (IsDrive(a) && IsDrive(b) && a.compare(b, Qt::CaseInsensitive) == 0);
}

qsizetype LastSeparator(const QString& path)
{
    return std::max(path.lastIndexOf(PathSeparator), path.lastIndexOf(u'/'));
}

} // namespace

QString ToPlatformPath(const QString& path)
{
    QString result = path;
    return result.replace(PathSeparator, QDir::separator()).replace(u'/', QDir::separator());
}

QString ToPackagePath(const QString& path)
{
    QString result = path;
    return result.replace(u'/', PathSeparator);
}

QString GetLastPathItem(const QString& path, QChar separator)
{
    const QStringList items = PathItems(path, separator);
    return items.isEmpty() ? QString() : items.last();
}

void ExtractRelPath(const QString& base, const QString& path, QChar separator, QString& first, QString& second,
                    QString& third)
{
    const QStringList baseItems = PathItems(base, separator);
    const QStringList pathItems = PathItems(path, separator);
    qsizetype common = 0;
    while (common < baseItems.size() && common < pathItems.size() && SameItem(baseItems[common], pathItems[common]))
        ++common;

    first.clear();
    second.clear();
    third = path;
    if (common == 0)
        return;
    first = pathItems.first(common).join(separator);
    second = (QStringLiteral("..") + separator).repeated(baseItems.size() - common);
    third = pathItems.mid(common).join(separator);
}

QString JoinFilePath(const QString& base, std::initializer_list<QString> parts)
{
    QString result = base;
    for (const QString& part : parts) {
        qsizetype start = 0;
        while (!result.isEmpty() && start < part.size() && IsSeparator(part[start], PathSeparator))
            ++start;
        if (start == part.size())
            continue;
        if (!result.isEmpty() && !IsSeparator(result.back(), PathSeparator))
            result += PathSeparator;
        result += QStringView(part).mid(start);
    }
    return result;
}

QString ExtractFileDir(const QString& path)
{
    const qsizetype at = LastSeparator(path);
    if (at < 0)
        return {};
    const bool root = at == 0 || path[at - 1] == u':';
    return path.left(root ? at + 1 : at);
}

QString ExtractFileName(const QString& path)
{
    return path.mid(LastSeparator(path) + 1);
}

QString ChangeFileExt(const QString& path, const QString& extension)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    // A dot that begins the name is no extension.
    return (dot > LastSeparator(path) + 1 ? path.left(dot) : path) + extension;
}

QString ExpandEnvStrings(const QString& text)
{
    QString result;
    qsizetype done = 0;
    for (qsizetype open = text.indexOf(u'%'); open >= 0;) {
        const qsizetype close = text.indexOf(u'%', open + 1);
        if (close < 0)
            break;
        const QByteArray name = text.mid(open + 1, close - open - 1).toLocal8Bit();
        if (name.isEmpty() || !qEnvironmentVariableIsSet(name.constData())) {
            open = close;
            continue;
        }
        result += QStringView(text).mid(done, open - done);
        result += GetEnvironment(name.constData());
        done = close + 1;
        open = text.indexOf(u'%', done);
    }
    return result + text.mid(done);
}

QString GetEnvironment(const char* name)
{
    return qEnvironmentVariable(name);
}

bool FileExists(const QString& path)
{
    return !path.isEmpty() && QFileInfo(ToPlatformPath(path)).isFile();
}

bool DirectoryExists(const QString& path)
{
    return !path.isEmpty() && QFileInfo(ToPlatformPath(path)).isDir();
}

void ForceDirectories(const QString& path)
{
    if (path.isEmpty() || !QDir().mkpath(ToPlatformPath(path))) {
        throw TFileError(FileErrorText(path, QStringLiteral("angelegt"),
                                       QStringLiteral("Das Verzeichnis lässt sich hier nicht anlegen")));
    }
}

QByteArray ReadFile(const QString& path)
{
    QFile file(ToPlatformPath(path));
    const QString action = QStringLiteral("gelesen");
    if (QFileInfo(file).isDir())
        throw TFileError(FileErrorText(path, action, QStringLiteral("Dort steht ein Verzeichnis")));
    if (!file.open(QIODevice::ReadOnly))
        throw TFileError(FileErrorText(path, action, file.errorString()));
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw TFileError(FileErrorText(path, action, file.errorString()));
    return content;
}

void WriteFile(const QString& path, QByteArrayView content)
{
    TFileReplacer replacer(path);
    replacer.Write(content);
    replacer.Commit();
}

bool CopyFileTo(const QString& source, const QString& target, bool overwrite)
{
    if (!overwrite && QFileInfo::exists(ToPlatformPath(target)))
        return false;
    const bool isNew = !FileExists(target);
    WriteFile(target, ReadFile(source));
    if (isNew)
        QFile::setPermissions(ToPlatformPath(target), QFile::permissions(ToPlatformPath(source)));
    return true;
}

void RenameFileTo(const QString& source, const QString& target)
{
    const QString action = QStringLiteral("umbenannt");
    QFile file(ToPlatformPath(source));
    // QFile would copy the file through a link that leads nowhere.
    if (QFileInfo(ToPlatformPath(target)).isSymLink())
        throw TFileError(FileErrorText(source, action, QStringLiteral("Am Ziel steht eine Verknüpfung")));
    if (!file.rename(ToPlatformPath(target)))
        throw TFileError(FileErrorText(source, action, file.errorString()));
}

void DeleteFileAt(const QString& path)
{
    QFile file(ToPlatformPath(path));
    if (!file.remove() && QFileInfo::exists(file.fileName()))
        throw TFileError(FileErrorText(path, QStringLiteral("gelöscht"), file.errorString()));
}

QString GetTemporaryFilename(const QString& extension)
{
    const QString action = QStringLiteral("angelegt");
    // A temporary directory that does not exist has no path, and a bare file name would mean the working directory.
    const QString directory = QDir::tempPath();
    if (directory.isEmpty()) {
        throw TFileError(FileErrorText(GetEnvironment("TMPDIR"), action,
                                       QStringLiteral("Das Verzeichnis für temporäre Dateien fehlt")));
    }
    QTemporaryFile file(directory + QStringLiteral("/velmora-XXXXXX") + extension);
    file.setAutoRemove(false);
    if (!file.open())
        throw TFileError(FileErrorText(file.fileTemplate(), action, file.errorString()));
    return ToPackagePath(file.fileName());
}

QString FileErrorText(const QString& path, const QString& action, const QString& reason)
{
    return QStringLiteral("\"%1\" kann nicht %2 werden (%3)").arg(ToPlatformPath(path), action, reason);
}
