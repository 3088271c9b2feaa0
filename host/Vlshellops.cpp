#include "Vlshellops.h"

#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlshellitems.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace
{

constexpr int MaxFolderNames = 10000;

[[noreturn]] void Fail(const QByteArray& path, const QString& action, const QString& reason)
{
    throw TFileError(FileErrorText(ShellDisplayName(path), action, reason));
}

bool Exists(const QByteArray& path)
{
    struct stat state
    {};
    return lstat(path.constData(), &state) == 0;
}

// Empty when `name` can be the name of an item.
QString Objection(const QString& name)
{
    if (name.trimmed().isEmpty())
        return QStringLiteral("Der Name ist leer");
    if (name == u'.' || name == QStringLiteral(".."))
        return QStringLiteral("Dieser Name ist dem System vorbehalten");
    if (name.contains(u'/') || name.contains(PathSeparator) || name.contains(QChar::Null))
        return QStringLiteral("Ein Name enthält keinen Schrägstrich");
    return {};
}

// Never over something that exists; 0 or the number of the error.
int RenameWithoutReplacing(const QByteArray& from, const QByteArray& to)
{
    if (renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    // Not every file system knows how to do both in one step.
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    if (Exists(to))
        return EEXIST;
    return std::rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}

// The toolkit's last resort is the trash in the user's data; without that it would take the working directory for one.
bool HasHomeTrash()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return !data.isEmpty() && QDir().mkpath(data + QStringLiteral("/Trash"));
}

} // namespace

QString SystemErrorText(int error)
{
    switch (error) {
    case EACCES:
    case EPERM:
        return QStringLiteral("Zugriff verweigert");
    case EROFS:
        return QStringLiteral("Der Datenträger ist schreibgeschützt");
    case ENOENT:
        return QStringLiteral("Nicht mehr vorhanden");
    case EEXIST:
    case ENOTEMPTY:
        return QStringLiteral("Diesen Namen gibt es schon");
    case ENAMETOOLONG:
        return QStringLiteral("Der Name ist zu lang");
    case ENOSPC:
    case EDQUOT:
        return QStringLiteral("Der Datenträger ist voll");
    case EISDIR:
        return QStringLiteral("Dort steht ein Verzeichnis");
    default:
        return qt_error_string(error);
    }
}

QByteArray RenameShellItem(const QByteArray& path, const QString& name)
{
    const QString action = QStringLiteral("umbenannt");
    const QString objection = Objection(name);
    if (!objection.isEmpty())
        Fail(path, action, objection);
    const QByteArray target = path.left(path.lastIndexOf('/') + 1) + QFile::encodeName(name);
    if (const int error = RenameWithoutReplacing(path, target))
        Fail(path, action, SystemErrorText(error));
    return target;
}

void MoveShellItemToTrash(const QByteArray& path)
{
    const QString action = QStringLiteral("in den Papierkorb gelegt");
    if (!Exists(path))
        Fail(path, action, SystemErrorText(ENOENT));
    if (!IsDecodableName(path))
        Fail(path, action, QStringLiteral("Der Papierkorb kann diesen Namen nicht aufnehmen"));
    QFile file(QFile::decodeName(path));
    if (!HasHomeTrash() || !file.moveToTrash())
        Fail(path, action, QStringLiteral("Hier ist kein Papierkorb erreichbar; nichts wurde gelöscht"));
}

QByteArray MakeShellFolder(const QByteArray& folder)
{
    const QByteArray base = QByteArrayLiteral("Neuer Ordner");
    const QByteArray prefix = folder.endsWith('/') ? folder : folder + '/';
    for (int number = 1; number <= MaxFolderNames; ++number) {
        const QByteArray name = number == 1 ? base : base + " (" + QByteArray::number(number) + ')';
        if (mkdir(QByteArray(prefix + name).constData(), 0777) == 0)
            return name;
        if (errno != EEXIST)
            Fail(prefix + name, QStringLiteral("angelegt"), SystemErrorText(errno));
    }
    Fail(prefix + base, QStringLiteral("angelegt"), SystemErrorText(EEXIST));
}
