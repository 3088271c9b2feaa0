#include "Folders.h"

#include "ICmdButtons.h"
#include "ICmdShellTree.h"
#include "IMenuTree.h"
#include "IScenesTree.h"
#include "IScheduleTree.h"
#include "UnitList.h"
#include "XmlReading.h"

namespace
{

// In the order of their initialization.
TUnitList& Units()
{
    static TUnitList units({
        {.Name = "FoldersRc"},
        {.Name = "FoldersCommon", .Initialize = InitializeXml, .Finalize = FinalizeXml},
        {.Name = "ICmdButtons", .Initialize = InitializeCmdButtonsUnit, .Finalize = FinalizeCmdButtonsUnit},
        {.Name = "ICmdShellTree", .Initialize = InitializeShellTreeUnit, .Finalize = FinalizeShellTreeUnit},
        {.Name = "IMenuTree", .Initialize = InitializeMenuUnit, .Finalize = FinalizeMenuUnit},
        {.Name = "IScenesTree", .Initialize = InitializeScenesUnit, .Finalize = FinalizeScenesUnit},
        {.Name = "IScheduleTree", .Initialize = InitializeScheduleUnit, .Finalize = FinalizeScheduleUnit},
    });
    return units;
}

constexpr const char* RequiredPackages[] = {"vlhost", nullptr};

} // namespace

void Initialize()
{
    Units().Initialize();
}

void Finalize()
{
    Units().Finalize();
}

const TPackageInfo* GetPackageInfoTable()
{
    static const TPackageInfo info{.Units = Units().Names(), .RequiredPackages = RequiredPackages};
    return &info;
}
