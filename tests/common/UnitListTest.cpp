#include "UnitList.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

namespace
{

QStringList& Steps()
{
    static QStringList steps;
    return steps;
}

class UnitList : public testing::Test
{
protected:
    UnitList() { Steps().clear(); }

    static QStringList TakeSteps() { return std::exchange(Steps(), {}); }

    TUnitList m_units{{
        {.Name = "Constants"},
        {.Name = "First",
         .Initialize = [] { Steps().append(QStringLiteral("+First")); },
         .Finalize = [] { Steps().append(QStringLiteral("-First")); }},
        {.Name = "Second",
         .Initialize = [] { Steps().append(QStringLiteral("+Second")); },
         .Finalize = [] { Steps().append(QStringLiteral("-Second")); }},
    }};
    const QStringList m_initialized{QStringLiteral("+First"), QStringLiteral("+Second")};
    const QStringList m_finalized{QStringLiteral("-Second"), QStringLiteral("-First")};
};

} // namespace

TEST_F(UnitList, InitializesInOrderAndFinalizesInReverse)
{
    m_units.Initialize();
    EXPECT_EQ(TakeSteps(), m_initialized);
    m_units.Finalize();
    EXPECT_EQ(TakeSteps(), m_finalized);
}

TEST_F(UnitList, RunsOnTheFirstLoadAndTheLastUnloadOnly)
{
    m_units.Initialize();
    m_units.Initialize();
    EXPECT_EQ(TakeSteps(), m_initialized);
    m_units.Finalize();
    EXPECT_EQ(TakeSteps(), QStringList());
    m_units.Finalize();
    EXPECT_EQ(TakeSteps(), m_finalized);
}

TEST_F(UnitList, RunsAgainAfterTheLastUnload)
{
    for (int i = 0; i < 2; ++i) {
        m_units.Initialize();
        EXPECT_EQ(TakeSteps(), m_initialized);
        m_units.Finalize();
        EXPECT_EQ(TakeSteps(), m_finalized);
    }
}

TEST_F(UnitList, IsNotHarmedByAFinalizeTooMany)
{
    m_units.Finalize();
    EXPECT_EQ(TakeSteps(), QStringList());
    m_units.Initialize();
    EXPECT_EQ(TakeSteps(), m_initialized);
}

TEST_F(UnitList, NamesItsUnitsInOrder)
{
    const char* const* names = m_units.Names();
    EXPECT_STREQ(names[0], "Constants");
    EXPECT_STREQ(names[1], "First");
    EXPECT_STREQ(names[2], "Second");
    EXPECT_EQ(names[3], nullptr);
}
