#include "TestComponent.h"

// A package with the test component in it.

namespace
{

constexpr const char* Units[] = {"TestComponent", nullptr};
constexpr const char* RequiredPackages[] = {nullptr};
constexpr TPackageInfo Info{.Units = Units, .RequiredPackages = RequiredPackages};

} // namespace

void Initialize()
{
    TTestComponent::Register();
}

void Finalize()
{
    TTestComponent::Unregister();
}

const TPackageInfo* GetPackageInfoTable()
{
    return &Info;
}
