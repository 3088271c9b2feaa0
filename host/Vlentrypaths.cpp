#include "Vlentrypaths.h"

#include "Userman.h"
#include "Vlapputils.h"

#include <QDir>

namespace
{

QString ProjectRoot()
{
    const TProject* project = UserManager() ? UserManager()->GetActiveProject() : nullptr;
    return project ? project->GetRootDirectory() : QString();
}

} // namespace

QString ResolveEntryPath(const QString& text)
{
    const QString path = UserManager() ? UserManager()->EnvToFilePath(text) : ToPackagePath(text);
    if (path.isEmpty() || QDir::isAbsolutePath(ToPlatformPath(path)))
        return path;
    const QString root = ProjectRoot();
    return root.isEmpty() ? QString() : ToPackagePath(JoinFilePath(root, {path}));
}

QString PortableEntryPath(const QString& path)
{
    QString first;
    QString second;
    QString third;
    const QString root = ToPackagePath(ProjectRoot());
    ExtractRelPath(root, ToPackagePath(path), PathSeparator, first, second, third);
    if (root.isEmpty() || first != root)
        return QDir::fromNativeSeparators(ToPlatformPath(path));
    return QStringLiteral("%PRJPATH%/") + third.replace(PathSeparator, u'/');
}

bool IsEntryFileName(const QString& path)
{
    return path.endsWith(QStringLiteral(".uri"), Qt::CaseInsensitive);
}
