#include "Application.h"

#include "Vlerrors.h"

#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

TApplication::TApplication(int& argc, char** argv) : QApplication(argc, argv)
{
    setOrganizationName(QStringLiteral("Velmora"));
    setApplicationName(QStringLiteral("Folders"));
    setApplicationVersion(QStringLiteral(VELMORA_VERSION));
    setApplicationDisplayName(QStringLiteral("Velmora Folders"));

    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    auto* translator = new QTranslator(this);
    if (translator->load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(translator);
}

bool TApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        HandleError(std::current_exception());
    }
    return false;
}
