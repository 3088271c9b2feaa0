#pragma once

#include "Vlexport.h"

#include <array>
#include <cstdint>

// Identifies an interface across module boundaries.
struct TGuid
{
    std::uint32_t Data1 = 0;
    std::uint16_t Data2 = 0;
    std::uint16_t Data3 = 0;
    std::array<std::uint8_t, 8> Data4{};

    bool operator==(const TGuid&) const = default;
};

// The reference-counted base of every interface that crosses a module boundary. Objects behind such interfaces are
// owned by somebody else (a form, the application); the count is kept for the protocol's sake and never deletes
// anything. There is no virtual destructor, because the slots of derived interfaces have to follow these three
// directly.
class IInterface
{
public:
    // Gives the interface `iid` in `result` and returns true, or clears `result` and returns false.
    virtual bool QueryInterface(const TGuid& iid, void** result) = 0;
    // Both return the new count, for diagnostics only.
    virtual int AddRef() = 0;
    virtual int Release() = 0;

protected:
    ~IInterface() = default;
};

// {00000000-0000-0000-C000-000000000046}
inline constexpr TGuid IID_IInterface{0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// Makes an interface of the application known to FindApplicationInterface, or forgets it when `object` is null.
// The object stays the caller's and must outlive its registration. Returns what was registered before, or null.
VLHOST_API IInterface* SetApplicationInterface(const TGuid& iid, IInterface* object);

// Asks the host application for one of its interfaces. `result` is null when the application does not offer it.
VLHOST_API void FindApplicationInterface(const TGuid& iid, IInterface** result);
