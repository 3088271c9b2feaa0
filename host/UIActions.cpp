#include "UIActions.h"

#include "Vlapputils.h"
#include "Vltext.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace
{

bool StartEditor(const QString& path)
{
    for (const char* variable : {"VISUAL", "EDITOR"}) {
        QStringList command = QProcess::splitCommand(GetEnvironment(variable));
        if (command.isEmpty())
            continue;
        const QString program = command.takeFirst();
        if (QProcess::startDetached(program, command << path))
            return true;
    }
    return false;
}

} // namespace

bool TShellExecuteAction::Execute() const
{
    const bool edit = SameText(m_verb, u"edit");
    if (m_fileName.isEmpty() || (!edit && !m_verb.isEmpty() && !SameText(m_verb, u"open")))
        return false;
    if (m_fileName.contains(QStringLiteral("://")))
        return QDesktopServices::openUrl(QUrl(m_fileName));
    const QFileInfo file(ToPlatformPath(m_fileName));
    if (!file.exists())
        return false;
    return (edit && StartEditor(file.absoluteFilePath())) ||
           QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
}

TUIActions& UIActions()
{
    static TUIActions actions;
    return actions;
}
