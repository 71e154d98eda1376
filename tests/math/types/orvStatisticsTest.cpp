#include <gtest/gtest.h>

#include <cmath>

#include "math/types/orvStatistics.h"

namespace
{

TEST(StatisticsTest, SummarisesItsSamples)
{
    orv::Statistics stats;
    for (float v : {2.0f, 4.0f, 4.0f, 4.0f, 5.0f, 5.0f, 7.0f, 9.0f})
    {
        stats.push_back(v);
    }
    EXPECT_EQ(8u, stats.size());
    EXPECT_EQ(2.0f, stats.getMin());
    EXPECT_EQ(9.0f, stats.getMax());
    EXPECT_EQ(5.0f, stats.getArithmeticMean());
    EXPECT_EQ(4.0f, stats.getVariance());
    EXPECT_EQ(2.0f, stats.getStandardDeviation());
}

TEST(StatisticsTest, StandardDeviationIsComputedApartFromTheVariance)
{
    // Far from 0 the mean of squares loses the spread to cancellation; the deviations do not.
    orv::Statistics stats;
    for (float v : {10000.1f, 10000.2f, 10000.3f})
    {
        stats.push_back(v);
    }
    EXPECT_NEAR(0.0816f, stats.getStandardDeviation(), 1.0e-3f);
    EXPECT_GT(std::fabs(stats.getVariance() - 0.00667f), 0.001f);
}

TEST(StatisticsTest, EmptyRecordGivesZeros)
{
    orv::Statistics stats;
    stats.push_back(3.0f);
    stats.clear();
    EXPECT_EQ(0.0f, stats.getArithmeticMean());
    EXPECT_EQ(0.0f, stats.getVariance());
    EXPECT_EQ(0.0f, stats.getStandardDeviation());
    EXPECT_EQ(0.0f, stats.getMin());
    EXPECT_EQ(0.0f, stats.getMax());
}

} // namespace
