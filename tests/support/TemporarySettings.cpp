#include "TemporarySettings.h"

#include <QCoreApplication>
#include <QSettings>

TTemporarySettings::TTemporarySettings()
{
    QCoreApplication::setOrganizationName(QStringLiteral("VelmoraTest"));
    QCoreApplication::setApplicationName(QStringLiteral("Folders"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_directory.path());
    QSettings().clear();
}
