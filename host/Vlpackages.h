#pragma once

#include "Vlexport.h"

#include <QLibrary>
#include <QString>
#include <QStringList>

// What a package tells its loader about itself: null-terminated tables that belong to the package.
struct TPackageInfo
{
    const char* const* Units;            // in the order of their initialization
    const char* const* RequiredPackages; // what must be loaded before
};

// The three functions that a package exports, with C linkage, and nothing else.
extern "C"
{
    using TPackageInitialize = void (*)();
    using TPackageFinalize = void (*)();
    using TPackageGetInfoTable = const TPackageInfo* (*)();
}

// One load of a package: initializes its units in the constructor and finalizes them in the destructor. Components of
// the package must be gone by then. The same package may be loaded more than once; its units run once.
class VLHOST_API TLoadedPackage
{
public:
    // `fileName` without the platform's extension is enough. Throws TUserError when it cannot be loaded, or when it is
    // no package.
    explicit TLoadedPackage(const QString& fileName);
    ~TLoadedPackage();
    TLoadedPackage(const TLoadedPackage&) = delete;
    TLoadedPackage& operator=(const TLoadedPackage&) = delete;

    QStringList GetUnits() const;
    QStringList GetRequiredPackages() const;

private:
    QLibrary m_library;
    TPackageInitialize m_initialize = nullptr;
    TPackageFinalize m_finalize = nullptr;
    TPackageGetInfoTable m_getInfoTable = nullptr;
};
