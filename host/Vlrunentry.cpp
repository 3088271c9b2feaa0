#include "Vlrunentry.h"

#include "Folderman.h"
#include "UIActions.h"
#include "Vlagreements.h"
#include "Vlapputils.h"
#include "Vlentrypaths.h"
#include "Vlerrors.h"
#include "Vlprogramfiles.h"

#include <QFileInfo>
#include <QUrl>

namespace
{

void Open(const QString& caption, const QString& fileOrAddress)
{
    TShellExecuteAction& action = UIActions().ShellExecute;
    action.SetVerb(QStringLiteral("open"));
    action.SetFileName(fileOrAddress);
    if (!action.Execute())
        throw TUserError(QStringLiteral("\"%1\" lässt sich nicht öffnen: Für \"%2\" gibt es kein Programm.")
                             .arg(caption, VisibleText(ToPlatformPath(fileOrAddress))));
}

bool IsSameFile(const QString& a, const QString& b)
{
    const QString canonical = QFileInfo(ToPlatformPath(a)).canonicalFilePath();
    return !canonical.isEmpty() && canonical == QFileInfo(ToPlatformPath(b)).canonicalFilePath();
}

// Entries do not run entries: one that names itself would never end.
void CheckIsNoEntry(const QString& caption, const QString& path, const QString& entryFile)
{
    if (IsSameFile(path, entryFile))
        throw TUserError(QStringLiteral("Der Eintrag \"%1\" nennt sich selbst.").arg(caption));
    if (IsEntryFileName(path) || IsEntryFileName(QFileInfo(ToPlatformPath(path)).canonicalFilePath()))
        throw TUserError(
            QStringLiteral("Der Eintrag \"%1\" nennt einen anderen Eintrag. Er muss eine Datei nennen.").arg(caption));
}

void RunFile(const QString& caption, const QString& target, const QString& entryFile)
{
    const QString path = ResolveEntryPath(target);
    if (path.isEmpty())
        throw TUserError(QStringLiteral("\"%1\" braucht ein offenes Projekt: \"%2\"").arg(caption, target));
    CheckIsNoEntry(caption, path, entryFile);
    const QFileInfo file(ToPlatformPath(path));
    if (!file.isFile() && !file.isDir())
        throw TUserError(QStringLiteral("\"%1\" lässt sich nicht öffnen: \"%2\" gibt es nicht oder ist keine Datei.")
                             .arg(caption, file.filePath()));
    if (!MayRunProgram(path) || IsAgreedTo(caption, file.filePath(), path))
        Open(caption, path);
}

void RunAddress(const QString& caption, const QString& target, const QString& entryFile)
{
    const QUrl url(target);
    if (url.isLocalFile()) {
        RunFile(caption, url.toLocalFile(), entryFile);
        return;
    }
    if (!target.contains(QStringLiteral("://")) || !url.isValid())
        throw TUserError(QStringLiteral("\"%1\" lässt sich nicht öffnen: \"%2\" ist keine Webadresse.")
                             .arg(caption, VisibleText(target)));
    if (!MayAddressRunProgram(target) || IsAgreedTo(caption, target, {}))
        Open(caption, target);
}

} // namespace

void RunEntry(const QString& caption, const TEntryRecord& record, const QString& file)
{
    // Copies: while a question stands, the entry may be edited, and what was agreed to is what it says now.
    const TEntryRecord now = record;
    const QString name(caption.constData(), caption.size());
    switch (now.Kind) {
    case TEntryKind::Command:
        FolderManager().RunCommand(now.Target);
        break;
    case TEntryKind::File:
        RunFile(name, now.Target, file);
        break;
    case TEntryKind::Address:
        RunAddress(name, now.Target, file);
        break;
    }
}
