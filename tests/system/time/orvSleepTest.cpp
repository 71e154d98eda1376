#include <gtest/gtest.h>

#include "system/time/orvSleep.h"
#include "system/time/orvTimeTick.h"

namespace
{

TEST(SleepTest, SleepLastsAtLeastTheRequestedMilliseconds)
{
    // Across the whole seconds and the milliseconds part: 1,005 ms is one second and 5,000,000 ns.
    const orv::timetick_t start = orv::getTimeTick();
    orv::sleep(1005);
    const orv::timetick_t elapsed = orv::getTimeTick() - start;
    EXPECT_GE(elapsed, 1005000000u);
}

} // namespace
