#include <gtest/gtest.h>

#include "math/types/orvInterval.h"

namespace
{

typedef orv::Interval<float> Interval;

TEST(IntervalTest, StartsEmptyAndReversedBoundsAreEmpty)
{
    EXPECT_TRUE(Interval().isEmpty());
    EXPECT_TRUE(Interval(2.0f, 1.0f).isEmpty());
    EXPECT_FALSE(Interval(1.0f, 1.0f).isEmpty());
    EXPECT_EQ(0.0f, Interval(2.0f, 1.0f).getLength());
    EXPECT_FALSE(Interval().contains(0.0f));
}

TEST(IntervalTest, ContainsBothBounds)
{
    const Interval i(-1.0f, 3.0f);
    EXPECT_TRUE(i.contains(-1.0f));
    EXPECT_TRUE(i.contains(3.0f));
    EXPECT_FALSE(i.contains(3.0001f));
    EXPECT_TRUE(i.contains(Interval(0.0f, 3.0f)));
    EXPECT_FALSE(i.contains(Interval(0.0f, 3.5f)));
    EXPECT_TRUE(i.contains(Interval()));
    EXPECT_FLOAT_EQ(4.0f, i.getLength());
    EXPECT_FLOAT_EQ(1.0f, i.getCenter());
}

TEST(IntervalTest, IntersectionKeepsTheCommonPart)
{
    const Interval a(0.0f, 2.0f);
    EXPECT_EQ(Interval(1.0f, 2.0f), a.computeIntersection(Interval(1.0f, 5.0f)));
    EXPECT_EQ(Interval(2.0f, 2.0f), a.computeIntersection(Interval(2.0f, 5.0f)));
    EXPECT_TRUE(a.intersects(Interval(2.0f, 5.0f)));
    EXPECT_TRUE(a.computeIntersection(Interval(2.5f, 5.0f)).isEmpty());
    EXPECT_TRUE(a.computeIntersection(Interval()).isEmpty());
}

TEST(IntervalTest, ExtendGrowsToTheHull)
{
    Interval i;
    i.extend(3.0f);
    EXPECT_EQ(Interval(3.0f, 3.0f), i);
    i.extend(-1.0f);
    EXPECT_EQ(Interval(-1.0f, 3.0f), i);
    i.extend(Interval(5.0f, 6.0f));
    EXPECT_EQ(Interval(-1.0f, 6.0f), i);
    i.extend(Interval());
    EXPECT_EQ(Interval(-1.0f, 6.0f), i);
}

TEST(IntervalTest, EmptyIntervalsAreEqualWhateverTheirBounds)
{
    EXPECT_EQ(Interval(), Interval(5.0f, 1.0f));
    EXPECT_NE(Interval(), Interval(0.0f, 0.0f));
    Interval kept(1.0f, 2.0f);
    kept.setEmpty(true);
    EXPECT_EQ(1.0f, kept.getLowerBound());
    EXPECT_EQ(Interval(), kept);
}

} // namespace
