#include "ScheduleEntry.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

TEST(ScheduleEntry, IsNothingForATextThatDoesNotBeginAsOne)
{
    for (const char* text : {"", "schedule ", "<schedule", "<schedule/>", "<schedule\ttime=\"1:00\"/>", " <schedule />"})
        EXPECT_FALSE(ReadScheduleEntry(QString::fromLatin1(text))) << text;
}
