#include <gtest/gtest.h>

#include <cstdlib>

#include "support/orvCoreTestSupport.h"

extern "C" int __lsan_is_turned_off();

namespace
{

// Death-test children end with 3 when their leak check is off, 4 when it is on.
void exitWithLeakCheckState()
{
    std::exit(__lsan_is_turned_off() != 0 ? 3 : 4);
}

TEST(DeathTestLeakCheckTest, TheTestProcessKeepsItsLeakCheck)
{
    EXPECT_EQ(0, __lsan_is_turned_off());
}

TEST(DeathTestLeakCheckDeathTest, AForkedChildSkipsItsLeakCheck)
{
    GTEST_FLAG_SET(death_test_style, "fast");
    EXPECT_EXIT(exitWithLeakCheckState(), ::testing::ExitedWithCode(3), "");
}

TEST(DeathTestLeakCheckDeathTest, AThreadsafeChildSkipsItsLeakCheck)
{
    orvtest::useThreadsafeDeathTests();
    EXPECT_EXIT(exitWithLeakCheckState(), ::testing::ExitedWithCode(3), "");
}

} // namespace
