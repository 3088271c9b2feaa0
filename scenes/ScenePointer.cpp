#include "ScenePointer.h"

#include "FoldersRc.h"
#include "Formatting.h"
#include "Vlapputils.h"
#include "Vlcodepage.h"
#include "Vlmessages.h"
#include "Vltext.h"

#include <QStringList>

#include <algorithm>

namespace
{

const auto ProjectKey = QStringLiteral("project");

// The lines of a text with any kind of line end; a last line without one counts.
QStringList ToLines(const QByteArray& content)
{
    QString text = FromCodePage(content);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    QStringList lines = text.split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

void SaveLines(const QString& path, const QStringList& lines)
{
    QString text;
    for (const QString& line : lines)
        text += line + QStringLiteral("\r\n");
    WriteFile(path, ToCodePage(text));
}

bool IsProjectLine(const QString& line)
{
    const qsizetype equals = line.indexOf(u'=');
    return equals >= 0 && SameText(QStringView(line).first(equals), ProjectKey);
}

QString ProjectOf(const QStringList& lines)
{
    const auto found = std::find_if(lines.begin(), lines.end(), IsProjectLine);
    return found == lines.end() ? QString() : found->mid(ProjectKey.size() + 1);
}

QStringList WithProject(QStringList lines, const QString& project)
{
    const QString line = ProjectKey + u'=' + project;
    const auto found = std::find_if(lines.begin(), lines.end(), IsProjectLine);
    if (found == lines.end())
        lines.append(line);
    else
        *found = line;
    return lines;
}

QString PointerFile(const QString& home, const QString& scenesMod)
{
    return JoinFilePath(home, {QStringLiteral("Parvex Studio Web"), QStringLiteral("_ext"),
                               QStringLiteral("scene_%1.env").arg(scenesMod)});
}

} // namespace

void UpdateScenePointer(const QString& scenesMod)
{
    const QString home = GetEnvironment("KOLT_HOME");
    if (!DirectoryExists(home))
        return;
    // As the file can hold it, so that it is found to be the same when it is read again.
    const QString project = FromCodePage(ToCodePage(GetLastPathItem(GetEnvironment("PRJPATH"), PathSeparator)));
    if (project.isEmpty())
        return;
    const QString path = PointerFile(home, scenesMod);
    if (!FileExists(path)) {
        SaveLines(path, WithProject({}, project));
        return;
    }

    const QStringList lines = ToLines(ReadFile(path));
    const QString current = ProjectOf(lines);
    if (current == project)
        SaveLines(path, lines);
    else if (current.isEmpty() || Confirm(FormatText(RcText(_INFO_ENV), current)))
        SaveLines(path, WithProject(lines, project));
}
