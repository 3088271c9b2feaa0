#include "Application.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    TApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
