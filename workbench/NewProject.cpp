#include "NewProject.h"

#include "Vlapputils.h"
#include "Vlprojects.h"

#include <QDir>
#include <QDirIterator>

namespace
{

const auto EmptyDocuments = QStringLiteral(":/workbench/newproject");

} // namespace

// Written anew instead of copied: a file of the resources is read-only, and a copy would be, too.
void AddEmptyDocuments(const TProject& project)
{
    const QDir source(EmptyDocuments);
    QDirIterator files(source.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString target = JoinFilePath(project.GetRootDirectory(), {source.relativeFilePath(file)});
        if (FileExists(target))
            continue;
        ForceDirectories(ExtractFileDir(target));
        WriteFile(target, ReadFile(file));
    }
}
