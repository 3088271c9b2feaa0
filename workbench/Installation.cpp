#include "Installation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>
#include <initializer_list>

namespace
{

constexpr auto HomeVariable = "NORHOME";
constexpr auto PlatformVariable = "QT_QPA_PLATFORM";
constexpr auto PackageVariable = "VELMORA_PACKAGE";

QString Installed(const QString& relative)
{
    return QDir::cleanPath(QDir(QCoreApplication::applicationDirPath()).filePath(relative));
}

bool IsAnySet(std::initializer_list<const char*> variables)
{
    return std::any_of(variables.begin(), variables.end(),
                       [](const char* variable) { return !qEnvironmentVariableIsEmpty(variable); });
}

} // namespace

void ProvideProductHome()
{
    if (!qEnvironmentVariableIsSet(HomeVariable))
        qputenv(HomeVariable, Installed(QStringLiteral("../share/velmora")).toLocal8Bit());
}

QString PackageFile()
{
    if (qEnvironmentVariableIsSet(PackageVariable))
        return qEnvironmentVariable(PackageVariable);
    const QString beside = Installed(QStringLiteral("../lib/libfolders.so"));
    return QFileInfo::exists(beside) ? beside : Installed(QStringLiteral("../lib/velmora/libfolders.so"));
}

bool ChoosePlatform()
{
    const bool hasScreen = IsAnySet({"DISPLAY", "WAYLAND_DISPLAY", PlatformVariable});
    if (!hasScreen)
        qputenv(PlatformVariable, "offscreen");
    // In memory the toolkit warns of every window property that has no meaning there; standard error is for our own
    // lines.
    if (qgetenv(PlatformVariable) == "offscreen")
        QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));
    return hasScreen;
}
