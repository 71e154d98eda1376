#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "math/random/orvRandomNumberGenerator.h"
#include "math/types/orvAngleUtils.h"

namespace
{

using orv::AngleUtils;
using orv::kPi;
using orv::kTwoPi;

TEST(AngleUtilsTest, ModuloTakesOutWholeTurnsIntoHalfOpenRanges)
{
    EXPECT_TRUE(AngleUtils::isModulo(-kPi));
    EXPECT_FALSE(AngleUtils::isModulo(kPi));
    EXPECT_FALSE(AngleUtils::isModulo(std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ(-kPi, AngleUtils::getModuloValue(kPi));
    EXPECT_EQ(-kPi, AngleUtils::getModuloValue(-kPi));
    EXPECT_EQ(0.0f, AngleUtils::getPositiveModuloValue(kTwoPi));
    EXPECT_EQ(0.0f, AngleUtils::getPositiveModuloValue(-1.0e-9f));
    EXPECT_EQ(kPi, AngleUtils::getPositiveModuloValue(kPi));
    EXPECT_FLOAT_EQ(kTwoPi - 0.1f, AngleUtils::getPositiveModuloValue(-0.1f));
    EXPECT_NEAR(-0.1f, AngleUtils::getModuloValue(-0.1f - 2.0f * kTwoPi), 1.0e-6f);
    // Far from 0 the whole turns come off in double, so the fraction is that of the float as stored.
    const float big = 1000.5f;
    const float expected = static_cast<float>(std::remainder(static_cast<double>(big), static_cast<double>(kTwoPi)));
    EXPECT_NEAR(expected, AngleUtils::getModuloValue(big), 1.0e-6f);
    for (float a = -100.0f; a < 100.0f; a += 0.37f)
    {
        const float wrapped = AngleUtils::getModuloValue(a);
        ASSERT_TRUE(AngleUtils::isModulo(wrapped)) << a;
        const float positive = AngleUtils::getPositiveModuloValue(a);
        ASSERT_TRUE(positive >= 0.0f && positive < kTwoPi) << a;
        EXPECT_NEAR(0.0f, std::remainder(static_cast<double>(positive) - wrapped, kTwoPi), 1.0e-5) << a;
    }
}

TEST(AngleUtilsTest, DistanceIsRawWhileApproxEqualAndOrderingWrap)
{
    EXPECT_FLOAT_EQ(6.0f, AngleUtils::distance(-3.0f, 3.0f));
    EXPECT_NEAR(0.28318548f, AngleUtils::approxDiff(-3.0f, 3.0f), 1.0e-6f);
    EXPECT_TRUE(AngleUtils::approxEqual(kPi - 0.01f, -kPi + 0.01f, 0.05f));
    EXPECT_TRUE(AngleUtils::approxEqual(-kPi + 0.01f, kPi - 0.01f, 0.05f));
    EXPECT_TRUE(AngleUtils::approxEqual(0.0f, kTwoPi + 0.01f, 0.02f));
    EXPECT_FALSE(AngleUtils::approxEqual(0.0f, 0.2f, 0.1f));
    const AngleUtils::Comparator less;
    EXPECT_TRUE(less(1.5f * kPi, 0.0f));
    EXPECT_FALSE(less(0.25f, 0.25f + kTwoPi));
}

TEST(AngleUtilsTest, RandomAngleSpansTheGapBetweenPositiveModulos)
{
    orv::RandomNumberGenerator rng(7);
    for (int i = 0; i < 200; ++i)
    {
        // From -pi/2 to pi/2 is measured from 3 pi / 2 to pi / 2: a span of -pi, below the start.
        const float angle = AngleUtils::randomAngle(rng, -orv::kHalfPi, orv::kHalfPi);
        EXPECT_TRUE(angle <= -orv::kHalfPi && angle > -orv::kHalfPi - kPi - 1.0e-6f) << angle;
    }
}

} // namespace
