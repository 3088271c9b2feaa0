#include "HostServices.h"

#include "Installation.h"
#include "DatapointBrowser.h"
#include "Folders.h"
#include "Userman.h"
#include "Vlerrors.h"
#include "WeekView.h"

THostServices::THostServices()
{
    SetupUserManager();
    SetApplicationInterface(IID_IRegisterClient, &m_clients);
    // The bar's unit makes only its class known, so its ProgID is ours to give.
    m_clients.RegisterComponentClass(QString::fromLatin1(ProgIdCmdButtons), QStringLiteral("TICmdButtons"));
    RegisterDatapointBrowsers();
    RegisterWeekView();
}

THostServices::~THostServices()
{
    m_package.reset();
    UnregisterWeekView();
    UnregisterDatapointBrowsers();
    SetApplicationInterface(IID_IRegisterClient, nullptr);
    DisposeUserManager();
}

void THostServices::LoadPackage()
{
    Guarded([this] { m_package = std::make_unique<TLoadedPackage>(PackageFile()); });
}
