#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "math/random/orvNoise.h"

namespace
{

using orv::perm;

TEST(NoiseTest, PermIsThePublishedPermutationStoredTwice)
{
    // A position-weighted sum of the published table catches any changed or swapped entry.
    long weighted = 0;
    for (int i = 0; i < 256; ++i)
    {
        ASSERT_EQ(perm[i], perm[i + 256]) << i;
        weighted += (i + 1L) * perm[i];
    }
    EXPECT_EQ(4406228L, weighted);
}

TEST(NoiseTest, EveryDimensionVanishesAtTheVerticesOfItsGrid)
{
    for (int i = -300; i <= 300; ++i)
    {
        ASSERT_EQ(0.0f, orv::sdnoise1(static_cast<float>(i))) << i;
    }
    // The unskew factors are (3 - sqrt 3) / 6, 1 / 6 and (5 - sqrt 5) / 20. A vertex rounded to float is a hair off its
    // corner, which then gives a hair of noise.
    for (int i = -3; i <= 3; ++i)
    {
        for (int j = -3; j <= 3; ++j)
        {
            const float fi = static_cast<float>(i);
            const float fj = static_cast<float>(j);
            const float t2 = (fi + fj) * 0.2113249f;
            EXPECT_NEAR(0.0f, orv::sdnoise2(fi - t2, fj - t2), 1.0e-5f);
            const float t3 = (fi + fj + 2.0f) / 6.0f;
            EXPECT_NEAR(0.0f, orv::sdnoise3(fi - t3, fj - t3, 2.0f - t3), 1.0e-5f);
            const float t4 = (fi + fj + 1.0f - 5.0f) * 0.1381966f;
            EXPECT_NEAR(0.0f, orv::sdnoise4(fi - t4, fj - t4, 1.0f - t4, -5.0f - t4), 1.0e-5f);
        }
    }
}

TEST(NoiseTest, StaysWithinItsRangeWithoutJumps)
{
    // A dead corner or a lost scale shows as a small range; a wrong corner offset or hash shows as a jump where
    // the point changes simplex.
    std::mt19937 engine(11u);
    std::uniform_real_distribution<float> coordinate(-300.0f, 300.0f);
    const float step = 1.0e-3f;
    float largest[4] = {0.0f, 0.0f, 0.0f, 0.0f};
    float jump[4] = {0.0f, 0.0f, 0.0f, 0.0f};
    for (int i = 0; i < 100000; ++i)
    {
        const float x = coordinate(engine), y = coordinate(engine), z = coordinate(engine), w = coordinate(engine);
        const float values[4] = {orv::sdnoise1(x), orv::sdnoise2(x, y), orv::sdnoise3(x, y, z),
                                 orv::sdnoise4(x, y, z, w)};
        const float stepped[4] = {orv::sdnoise1(x + step), orv::sdnoise2(x + step, y - step),
                                  orv::sdnoise3(x, y + step, z + step), orv::sdnoise4(x - step, y, z, w + step)};
        for (int d = 0; d < 4; ++d)
        {
            largest[d] = std::fmax(largest[d], std::fabs(values[d]));
            jump[d] = std::fmax(jump[d], std::fabs(stepped[d] - values[d]));
        }
    }
    // 0.25 * 8 * 0.75^4 bounds the one-dimensional noise.
    EXPECT_LE(largest[0], 0.6328125f);
    for (int d = 0; d < 4; ++d)
    {
        EXPECT_LE(largest[d], 1.0f) << "dimension " << d + 1;
        EXPECT_GT(largest[d], 0.5f) << "dimension " << d + 1;
        EXPECT_LE(jump[d], 10.0f * step) << "dimension " << d + 1;
    }
}

TEST(NoiseTest, GivesTheSameValuesOnEveryRun)
{
    // At -0.5: falloff 0.75^4 on both sides, cell 255 (perm 180, gradient +5) and cell 0 (gradient +8).
    EXPECT_EQ(0.25f * 0.31640625f * (5.0f * 0.5f - 8.0f * 0.5f), orv::sdnoise1(-0.5f));
    EXPECT_EQ(0x1.993388p-2f, orv::sdnoise1(0.3f));
    EXPECT_EQ(0x1.0ae976p-9f, orv::sdnoise2(0.3f, -1.7f));
    EXPECT_EQ(0x1.5d64eep-3f, orv::sdnoise3(0.3f, -1.7f, 12.25f));
    EXPECT_EQ(0x1.c03bap-2f, orv::sdnoise4(0.3f, -1.7f, 12.25f, -40.5f));
}

} // namespace

TEST(NoiseTest, InputsPastTheRangeOfIntGiveZeroAndNonFiniteOnesStayDefined)
{
    const float far = 7.6e13f;
    for (float x : {far, -far})
    {
        EXPECT_EQ(0.0f, orv::sdnoise1(x));
        EXPECT_EQ(0.0f, orv::sdnoise2(x, x));
        EXPECT_EQ(0.0f, orv::sdnoise3(x, x, x));
        EXPECT_EQ(0.0f, orv::sdnoise4(x, x, x, x));
    }
    // Under UBSan this is the test: the cell of a NaN or an infinity is computed without an undefined conversion.
    for (float x : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()})
    {
        const float values[4] = {orv::sdnoise1(x), orv::sdnoise2(x, 0.5f), orv::sdnoise3(x, 0.5f, 0.5f),
                                 orv::sdnoise4(x, 0.5f, 0.5f, 0.5f)};
        for (float value : values)
        {
            EXPECT_TRUE(std::isnan(value) || value == 0.0f) << value;
        }
    }
}
