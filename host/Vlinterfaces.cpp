#include "Vlinterfaces.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

std::vector<std::pair<TGuid, IInterface*>>& Registered()
{
    static std::vector<std::pair<TGuid, IInterface*>> interfaces;
    return interfaces;
}

auto Find(const TGuid& iid)
{
    auto& interfaces = Registered();
    return std::find_if(interfaces.begin(), interfaces.end(), [&](const auto& entry) { return entry.first == iid; });
}

} // namespace

IInterface* SetApplicationInterface(const TGuid& iid, IInterface* object)
{
    auto& interfaces = Registered();
    const auto found = Find(iid);
    IInterface* previous = found == interfaces.end() ? nullptr : found->second;
    if (found != interfaces.end())
        interfaces.erase(found);
    if (object)
        interfaces.emplace_back(iid, object);
    return previous;
}

void FindApplicationInterface(const TGuid& iid, IInterface** result)
{
    const auto found = Find(iid);
    *result = found == Registered().end() ? nullptr : found->second;
}
