#include "Vlhourglass.h"

#include <QCursor>
#include <QGuiApplication>
#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

// The shape of the cursor that overrides all others, or -1.
int OverrideShape()
{
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor ? cursor->shape() : -1;
}

} // namespace

TEST(Hourglass, ShowsWhileItLives)
{
    ASSERT_EQ(OverrideShape(), -1);
    {
        const THourglass hourglass;
        EXPECT_EQ(OverrideShape(), Qt::WaitCursor);
    }
    EXPECT_EQ(OverrideShape(), -1);
}

TEST(Hourglass, StaysUntilTheOutermostIsGone)
{
    {
        const THourglass outer;
        {
            const THourglass inner;
            EXPECT_EQ(OverrideShape(), Qt::WaitCursor);
        }
        EXPECT_EQ(OverrideShape(), Qt::WaitCursor);
    }
    EXPECT_EQ(OverrideShape(), -1);
}

TEST(Hourglass, PutsThePreviousCursorBack)
{
    QGuiApplication::setOverrideCursor(Qt::CrossCursor);
    {
        const THourglass hourglass;
        EXPECT_EQ(OverrideShape(), Qt::WaitCursor);
    }
    EXPECT_EQ(OverrideShape(), Qt::CrossCursor);
    QGuiApplication::restoreOverrideCursor();
}

TEST(Hourglass, GoesWhenAStepFails)
{
    EXPECT_THROW(
        {
            const THourglass hourglass;
            throw std::runtime_error("step");
        },
        std::runtime_error);
    EXPECT_EQ(OverrideShape(), -1);
}
