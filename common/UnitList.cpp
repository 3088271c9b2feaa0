#include "UnitList.h"

TUnitList::TUnitList(const std::vector<TUnit>& units)
{
    for (const TUnit& unit : units) {
        m_units.push_back({.Unit = unit});
        m_names.push_back(unit.Name);
    }
    m_names.push_back(nullptr);
}

void TUnitList::Initialize()
{
    for (TCountedUnit& counted : m_units) {
        if (counted.Count++ == 0 && counted.Unit.Initialize)
            counted.Unit.Initialize();
    }
}

void TUnitList::Finalize()
{
    for (auto counted = m_units.rbegin(); counted != m_units.rend(); ++counted) {
        if (counted->Count > 0 && --counted->Count == 0 && counted->Unit.Finalize)
            counted->Unit.Finalize();
    }
}
