#include "Rollback.h"

#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QDir>
#include <QFileInfo>

TRollback::~TRollback()
{
    for (auto undo = m_undos.rbegin(); undo != m_undos.rend(); ++undo) {
        // The others are still worth a try; what went wrong first is on its way already.
        Guarded(*undo);
    }
}

void MakeDirectory(const QString& path, TRollback& rollback)
{
    if (DirectoryExists(path))
        return;
    const QString above = ExtractFileDir(path);
    if (!above.isEmpty() && above != path)
        MakeDirectory(above, rollback);
    ForceDirectories(path);
    rollback.Add([path] { QDir().rmdir(ToPlatformPath(path)); });
}

void KeepContent(const QString& path, TRollback& rollback)
{
    if (!QFileInfo::exists(ToPlatformPath(path))) {
        rollback.Add([path] { DeleteFileAt(path); });
        return;
    }
    rollback.Add([path, content = ReadFile(path)] { WriteFile(path, content); });
}
