#include <gtest/gtest.h>

#include "system/containers/orvIndexTriplet.h"

namespace
{

using IndexTripletDeathTest = ::testing::Test;

TEST_F(IndexTripletDeathTest, PositionThreeIsFatal)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    orv::IndexTriplet<int> triplet;
    EXPECT_DEATH(triplet.get(3), "position < 3");
    EXPECT_DEATH(triplet.set(3, 1), "position < 3");
}

} // namespace
