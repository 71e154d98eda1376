#include <gtest/gtest.h>

#include <cmath>

#include "math/types/orvStatistics.h"

namespace
{

TEST(StatisticsTest, StandardDeviationKeepsTheSpreadFarFromZeroAndAnEmptyRecordGivesZeros)
{
    orv::Statistics stats;
    for (float v : {10000.3f, 10000.1f, 10000.2f})
    {
        stats.push_back(v);
    }
    EXPECT_EQ(10000.1f, stats.getMin());
    EXPECT_EQ(10000.3f, stats.getMax());
    EXPECT_NEAR(10000.2f, stats.getArithmeticMean(), 1.0e-3f);
    // The mean of squares loses the spread to cancellation; the deviations from the mean do not.
    EXPECT_NEAR(0.0816f, stats.getStandardDeviation(), 1.0e-3f);
    EXPECT_GT(std::fabs(stats.getVariance() - 0.00667f), 0.001f);
    stats.clear();
    EXPECT_EQ(0.0f, stats.getArithmeticMean());
    EXPECT_EQ(0.0f, stats.getStandardDeviation());
    EXPECT_EQ(0.0f, stats.getMin());
}

} // namespace
