#include <gtest/gtest.h>

#include "math/types/orvInterval.h"

namespace
{

typedef orv::Interval<float> Interval;

TEST(IntervalTest, HoldsBothBoundsAndTreatsEveryEmptyIntervalAlike)
{
    EXPECT_TRUE(Interval().isEmpty());
    EXPECT_TRUE(Interval(2.0f, 1.0f).isEmpty());
    EXPECT_FALSE(Interval().contains(0.0f));
    const Interval i(-1.0f, 3.0f);
    EXPECT_TRUE(i.contains(-1.0f));
    EXPECT_TRUE(i.contains(3.0f));
    EXPECT_TRUE(i.contains(Interval(0.0f, 3.0f)));
    EXPECT_FALSE(i.contains(Interval(0.0f, 3.5f)));
    EXPECT_TRUE(i.contains(Interval()));
    // Empty intervals are equal whatever their bounds.
    EXPECT_EQ(Interval(), Interval(5.0f, 1.0f));
    EXPECT_NE(Interval(), Interval(0.0f, 0.0f));
    // Intersections keep the common part, bounds included; extending takes the hull.
    EXPECT_EQ(Interval(3.0f, 3.0f), i.computeIntersection(Interval(3.0f, 5.0f)));
    EXPECT_TRUE(i.computeIntersection(Interval(3.5f, 5.0f)).isEmpty());
    EXPECT_TRUE(i.computeIntersection(Interval()).isEmpty());
    Interval hull;
    hull.extend(3.0f);
    EXPECT_EQ(Interval(3.0f, 3.0f), hull);
    hull.extend(Interval(-1.0f, 0.0f));
    hull.extend(Interval());
    EXPECT_EQ(Interval(-1.0f, 3.0f), hull);
}

} // namespace
