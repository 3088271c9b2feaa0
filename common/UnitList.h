#pragma once

#include <vector>

// One unit of the package: what runs when it is loaded and when it is unloaded.
struct TUnit
{
    const char* Name;
    void (*Initialize)() = nullptr; // nothing to do when null
    void (*Finalize)() = nullptr;
};

// The units of a package in their order. Each unit's initialization runs on the first load only and its finalization,
// in reverse order, on the matching last unload; each has its own counter.
class TUnitList
{
public:
    explicit TUnitList(const std::vector<TUnit>& units);

    void Initialize();
    // One call too many does no harm.
    void Finalize();
    // The names in order, null terminated; belongs to the list.
    const char* const* Names() const { return m_names.data(); }

private:
    struct TCountedUnit
    {
        TUnit Unit;
        int Count = 0;
    };

    std::vector<TCountedUnit> m_units;
    std::vector<const char*> m_names;
};
