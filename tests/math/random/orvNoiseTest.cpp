#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "math/random/orvNoise.h"

namespace
{

using orv::perm;

// Improved gradient noise over the same permutation, as published with it; its value at (3.14, 42, 7) is the
// published check value.
double improvedNoise(double x, double y, double z)
{
    const auto fade = [](double t) { return t * t * t * (t * (t * 6 - 15) + 10); };
    const auto lerp = [](double t, double a, double b) { return a + t * (b - a); };
    const auto grad = [](int hash, double gx, double gy, double gz)
    {
        const int h = hash & 15;
        const double u = h < 8 ? gx : gy;
        const double v = h < 4 ? gy : (h == 12 || h == 14 ? gx : gz);
        return ((h & 1) == 0 ? u : -u) + ((h & 2) == 0 ? v : -v);
    };
    const int X = static_cast<int>(std::floor(x)) & 255;
    const int Y = static_cast<int>(std::floor(y)) & 255;
    const int Z = static_cast<int>(std::floor(z)) & 255;
    x -= std::floor(x);
    y -= std::floor(y);
    z -= std::floor(z);
    const double u = fade(x), v = fade(y), w = fade(z);
    const int A = perm[X] + Y, AA = perm[A] + Z, AB = perm[A + 1] + Z;
    const int B = perm[X + 1] + Y, BA = perm[B] + Z, BB = perm[B + 1] + Z;
    return lerp(w,
                lerp(v, lerp(u, grad(perm[AA], x, y, z), grad(perm[BA], x - 1, y, z)),
                     lerp(u, grad(perm[AB], x, y - 1, z), grad(perm[BB], x - 1, y - 1, z))),
                lerp(v, lerp(u, grad(perm[AA + 1], x, y, z - 1), grad(perm[BA + 1], x - 1, y, z - 1)),
                     lerp(u, grad(perm[AB + 1], x, y - 1, z - 1), grad(perm[BB + 1], x - 1, y - 1, z - 1))));
}

TEST(NoiseTest, PermIsThePublishedPermutationStoredTwice)
{
    const int start[] = {151, 160, 137, 91, 90, 15};
    for (int i = 0; i < 6; ++i)
    {
        EXPECT_EQ(start[i], perm[i]);
    }
    int seen[256] = {0};
    for (int i = 0; i < 256; ++i)
    {
        ++seen[perm[i]];
        ASSERT_EQ(perm[i], perm[i + 256]) << i;
    }
    for (int value = 0; value < 256; ++value)
    {
        ASSERT_EQ(1, seen[value]) << value;
    }
    EXPECT_DOUBLE_EQ(0.13691995878400012, improvedNoise(3.14, 42.0, 7.0));
}

TEST(NoiseTest, OneDimensionalNoiseVanishesAtIntegers)
{
    for (int i = -300; i <= 300; ++i)
    {
        ASSERT_EQ(0.0f, orv::sdnoise1(static_cast<float>(i))) << i;
    }
}

TEST(NoiseTest, OneDimensionalNoiseAtHalfIntegersFollowsTheGradients)
{
    // At 0.5: falloff 0.75^4 on both sides, gradients +8 (perm 151) and +1 (perm 160).
    EXPECT_EQ(0.25f * 0.31640625f * (8.0f * 0.5f - 1.0f * 0.5f), orv::sdnoise1(0.5f));
    // At -0.5: cell 255 (perm 180, gradient +5) and cell 0 (gradient +8).
    EXPECT_EQ(0.25f * 0.31640625f * (5.0f * 0.5f - 8.0f * 0.5f), orv::sdnoise1(-0.5f));
}

TEST(NoiseTest, EveryDimensionVanishesAtTheVerticesOfItsGrid)
{
    const float unskew2 = 0.2113249f;
    const float unskew3 = 1.0f / 6.0f;
    const float unskew4 = 0.1381966f;
    // A vertex rounded to float is a hair off its corner, which then gives a hair of noise.
    for (int i = -3; i <= 3; ++i)
    {
        for (int j = -3; j <= 3; ++j)
        {
            const float fi = static_cast<float>(i);
            const float fj = static_cast<float>(j);
            const float t2 = (fi + fj) * unskew2;
            EXPECT_NEAR(0.0f, orv::sdnoise2(fi - t2, fj - t2), 1.0e-5f);
            const float t3 = (fi + fj + 2.0f) * unskew3;
            EXPECT_NEAR(0.0f, orv::sdnoise3(fi - t3, fj - t3, 2.0f - t3), 1.0e-5f);
            const float t4 = (fi + fj + 1.0f - 5.0f) * unskew4;
            EXPECT_NEAR(0.0f, orv::sdnoise4(fi - t4, fj - t4, 1.0f - t4, -5.0f - t4), 1.0e-5f);
        }
    }
}

TEST(NoiseTest, StaysWithinItsRange)
{
    std::mt19937 engine(11u);
    std::uniform_real_distribution<float> coordinate(-300.0f, 300.0f);
    float largest[4] = {0.0f, 0.0f, 0.0f, 0.0f};
    for (int i = 0; i < 100000; ++i)
    {
        const float x = coordinate(engine), y = coordinate(engine), z = coordinate(engine), w = coordinate(engine);
        largest[0] = std::fmax(largest[0], std::fabs(orv::sdnoise1(x)));
        largest[1] = std::fmax(largest[1], std::fabs(orv::sdnoise2(x, y)));
        largest[2] = std::fmax(largest[2], std::fabs(orv::sdnoise3(x, y, z)));
        largest[3] = std::fmax(largest[3], std::fabs(orv::sdnoise4(x, y, z, w)));
    }
    // 0.25 * 8 * 0.75^4 bounds the one-dimensional noise.
    EXPECT_LE(largest[0], 0.6328125f);
    for (int d = 1; d < 4; ++d)
    {
        EXPECT_LE(largest[d], 1.0f) << "dimension " << d + 1;
        // A dead corner or a lost scale shows as a small range.
        EXPECT_GT(largest[d], 0.5f) << "dimension " << d + 1;
    }
}

TEST(NoiseTest, IsContinuousAcrossCellAndSimplexBorders)
{
    // A wrong corner offset or hash shows as a jump where the point changes simplex.
    std::mt19937 engine(12u);
    std::uniform_real_distribution<float> coordinate(-50.0f, 50.0f);
    const float step = 1.0e-3f;
    const float bound = 10.0f * step;
    for (int i = 0; i < 20000; ++i)
    {
        const float x = coordinate(engine), y = coordinate(engine), z = coordinate(engine), w = coordinate(engine);
        ASSERT_LE(std::fabs(orv::sdnoise1(x + step) - orv::sdnoise1(x)), bound) << x;
        ASSERT_LE(std::fabs(orv::sdnoise2(x + step, y - step) - orv::sdnoise2(x, y)), bound) << x << " " << y;
        ASSERT_LE(std::fabs(orv::sdnoise3(x, y + step, z + step) - orv::sdnoise3(x, y, z)), bound);
        ASSERT_LE(std::fabs(orv::sdnoise4(x - step, y, z, w + step) - orv::sdnoise4(x, y, z, w)), bound);
    }
}

TEST(NoiseTest, GivesTheSameValuesOnEveryRun)
{
    EXPECT_EQ(0x1.993388p-2f, orv::sdnoise1(0.3f));
    EXPECT_EQ(0x1.0ae976p-9f, orv::sdnoise2(0.3f, -1.7f));
    EXPECT_EQ(0x1.5d64eep-3f, orv::sdnoise3(0.3f, -1.7f, 12.25f));
    EXPECT_EQ(0x1.c03bap-2f, orv::sdnoise4(0.3f, -1.7f, 12.25f, -40.5f));
}

} // namespace
