#include "Vlprojects.h"

#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{

constexpr int FileFormat = 1;

QString FormatKey()
{
    return QStringLiteral("format");
}

QString NameKey()
{
    return QStringLiteral("name");
}

QString ProjectFileIn(const QString& directory)
{
    return QDir(directory).filePath(TProject::ProjectFileName());
}

[[noreturn]] void ThrowDamaged(const QString& file, const QString& reason)
{
    throw TUserError(QStringLiteral("Die Projektdatei \"%1\" ist beschädigt: %2.").arg(file, reason));
}

QString AbsoluteDirectory(const QString& directory)
{
    return QDir::cleanPath(QDir(ToPlatformPath(directory)).absolutePath());
}

} // namespace

QString TProject::ProjectFileName()
{
    return QStringLiteral("velmora.project");
}

TProject TProject::Load(const QString& directory)
{
    TProject project;
    if (directory.isEmpty())
        throw TUserError(QStringLiteral("Es ist kein Projektverzeichnis angegeben."));
    project.m_rootDirectory = AbsoluteDirectory(directory);
    project.m_projectFile = ProjectFileIn(project.m_rootDirectory);
    if (!FileExists(project.m_projectFile)) {
        throw TUserError(QStringLiteral("\"%1\" ist kein Projekt: Die Datei \"%2\" fehlt.")
                             .arg(project.m_rootDirectory, ProjectFileName()));
    }

    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(ReadFile(project.m_projectFile), &error);
    if (!document.isObject()) {
        const bool parsed = error.error == QJsonParseError::NoError;
        ThrowDamaged(project.m_projectFile,
                     parsed ? QStringLiteral("Sie enthält kein Objekt")
                            : QStringLiteral("%1 (Zeichen %2)").arg(error.errorString()).arg(error.offset));
    }
    const QJsonObject content = document.object();
    if (content.value(FormatKey()).toInt() != FileFormat)
        ThrowDamaged(project.m_projectFile, QStringLiteral("\"format\" ist nicht %1").arg(FileFormat));
    project.m_name = content.value(NameKey()).toString().trimmed();
    if (project.m_name.isEmpty())
        ThrowDamaged(project.m_projectFile, QStringLiteral("\"name\" fehlt"));
    return project;
}

TProject TProject::Create(const QString& directory, const QString& name)
{
    if (directory.isEmpty() || name.trimmed().isEmpty())
        throw TUserError(QStringLiteral("Ein Projekt braucht ein Verzeichnis und einen Namen."));
    const QString root = AbsoluteDirectory(directory);
    const QString file = ProjectFileIn(root);
    if (FileExists(file))
        throw TUserError(QStringLiteral("In \"%1\" gibt es bereits ein Projekt.").arg(root));
    for (const char* folder : {"scenes", "schedule"})
        ForceDirectories(
            JoinFilePath(root, {QStringLiteral("_config"), QStringLiteral("data"), QString::fromLatin1(folder)}));
    for (const char* folder : {"_menu", "_buttons"})
        ForceDirectories(JoinFilePath(root, {QString::fromLatin1(folder)}));
    const QJsonObject content{{FormatKey(), FileFormat}, {NameKey(), name.trimmed()}};
    WriteFile(file, QJsonDocument(content).toJson());
    return Load(root);
}
