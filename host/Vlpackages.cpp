#include "Vlpackages.h"

#include "Vlerrors.h"

namespace
{

QStringList ToList(const char* const* table)
{
    QStringList names;
    for (; table && *table; ++table)
        names.append(QString::fromLatin1(*table));
    return names;
}

} // namespace

TLoadedPackage::TLoadedPackage(const QString& fileName) : m_library(fileName)
{
    // Texts and metadata of a module may live on in the toolkit; its code therefore stays mapped after the last unload.
    m_library.setLoadHints(QLibrary::PreventUnloadHint);
    if (!m_library.load()) {
        throw TUserError(
            QStringLiteral("Das Paket \"%1\" kann nicht geladen werden: %2").arg(fileName, m_library.errorString()));
    }
    m_initialize = reinterpret_cast<TPackageInitialize>(m_library.resolve("Initialize"));
    m_finalize = reinterpret_cast<TPackageFinalize>(m_library.resolve("Finalize"));
    m_getInfoTable = reinterpret_cast<TPackageGetInfoTable>(m_library.resolve("GetPackageInfoTable"));
    if (!m_initialize || !m_finalize || !m_getInfoTable) {
        m_library.unload();
        throw TUserError(QStringLiteral("\"%1\" ist kein Paket: Eine der drei Einsprungstellen fehlt.").arg(fileName));
    }
    m_initialize();
}

TLoadedPackage::~TLoadedPackage()
{
    m_finalize();
    m_library.unload();
}

QStringList TLoadedPackage::GetUnits() const
{
    return ToList(m_getInfoTable()->Units);
}

QStringList TLoadedPackage::GetRequiredPackages() const
{
    return ToList(m_getInfoTable()->RequiredPackages);
}
