#include "Vlentrypaths.h"

#include "Userman.h"
#include "Vlapputils.h"

#include <QDir>

QString ResolveEntryPath(const QString& text)
{
    return ResolveEntryPathIn(ActiveProjectRoot(), text);
}

QString ResolveEntryPathIn(const QString& root, const QString& text)
{
    const QString path = TUserManager::EnvToFilePathIn(root, text);
    if (path.isEmpty() || QDir::isAbsolutePath(ToPlatformPath(path)))
        return path;
    return root.isEmpty() ? QString() : ToPackagePath(JoinFilePath(root, {path}));
}

QString PortableEntryPath(const QString& root, const QString& path)
{
    QString first;
    QString second;
    QString third;
    const QString base = ToPackagePath(root);
    ExtractRelPath(base, ToPackagePath(path), PathSeparator, first, second, third);
    if (base.isEmpty() || first != base)
        return QDir::fromNativeSeparators(ToPlatformPath(path));
    return QStringLiteral("%PRJPATH%/") + third.replace(PathSeparator, u'/');
}

QString ActiveProjectRoot()
{
    const TProject* project = UserManager() ? UserManager()->GetActiveProject() : nullptr;
    return project ? project->GetRootDirectory() : QString();
}

bool IsEntryFileName(const QString& path)
{
    return path.endsWith(QStringLiteral(".uri"), Qt::CaseInsensitive);
}
