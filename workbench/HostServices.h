#pragma once

#include "Vlclassregistry.h"
#include "Vlpackages.h"

#include <memory>

// What components find around them while this lives: the user manager and the client registry, and the package that
// offers them. Made before the first component; all components are gone before it goes.
class THostServices
{
public:
    THostServices();
    ~THostServices();
    THostServices(const THostServices&) = delete;
    THostServices& operator=(const THostServices&) = delete;

    // Loads the package of the installation; when that fails the user is told and the workbench goes on without it.
    void LoadPackage();

    const TClientRegistry& Clients() const { return m_clients; }

private:
    TClientRegistry m_clients;
    std::unique_ptr<TLoadedPackage> m_package;
};
