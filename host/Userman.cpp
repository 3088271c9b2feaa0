#include "Userman.h"

#include "Vlapputils.h"

#include <array>

namespace
{

constexpr auto ProjectVariable = "PRJPATH";

const std::array ProjectReferences{QStringLiteral("$(project)"), QStringLiteral("%PRJPATH%")};

TUserManager* instance = nullptr;
int references = 0;

} // namespace

// The host owns the variable: one that a parent process left behind belongs to another session's project.
TUserManager::TUserManager()
{
    qunsetenv(ProjectVariable);
}

TUserManager::~TUserManager()
{
    qunsetenv(ProjectVariable);
}

void TUserManager::OpenProject(const QString& directory)
{
    SetProject(std::make_unique<TProject>(TProject::Load(directory)));
}

void TUserManager::CloseProject()
{
    if (m_project)
        SetProject(nullptr);
}

void TUserManager::SetProject(std::unique_ptr<TProject> project)
{
    m_project = std::move(project);
    if (m_project)
        qputenv(ProjectVariable, ToPlatformPath(m_project->GetRootDirectory()).toLocal8Bit());
    else
        qunsetenv(ProjectVariable);
    Q_EMIT Notify(this, upProject, m_project ? m_project->GetProjectFile() : QString());
}

QString TUserManager::DecodeVars(const QString& text) const
{
    QString result = text;
    if (!m_project)
        return result;
    for (const QString& reference : ProjectReferences)
        result.replace(reference, m_project->GetRootDirectory(), Qt::CaseInsensitive);
    return result;
}

QString TUserManager::EnvToFilePath(const QString& text) const
{
    // In this order, because a percent sign in the name of the project's directory is no reference.
    return ToPackagePath(DecodeVars(ExpandEnvStrings(text)));
}

// The project is not left to the environment, which knows the active one only. A character that no path has stands for
// the root until all is expanded, because a percent sign in its name is no reference.
QString TUserManager::EnvToFilePathIn(const QString& root, const QString& text)
{
    // Most texts refer to nothing, and a bar of entries asks for each of its icons.
    if (!text.contains(u'%') && !text.contains(u'$'))
        return ToPackagePath(text);
    const auto mark = [](QString path) {
        for (const QString& reference : ProjectReferences)
            path.replace(reference, QString(QChar::Null), Qt::CaseInsensitive);
        return path;
    };
    QString path = mark(ExpandEnvStrings(mark(text)));
    if (root.isEmpty() && path.contains(QChar::Null))
        return {};
    return ToPackagePath(path.replace(QString(QChar::Null), root));
}

bool TUserManager::DependsOnProject(const QString& text)
{
    for (const QString& reference : ProjectReferences) {
        if (text.contains(reference, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

void SetupUserManager()
{
    if (references++ == 0)
        instance = new TUserManager;
}

void DisposeUserManager()
{
    if (references == 0 || --references > 0)
        return;
    delete instance;
    instance = nullptr;
}

TUserManager* UserManager()
{
    return instance;
}
