#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <sstream>

#include "math/random/orvRandomNumberGenerator.h"
#include "system/genericPatterns/orvSingleton.h"

namespace
{

using orv::RandomNumberGenerator;

static_assert(sizeof(RandomNumberGenerator) == 4 + 4 + 624 * 4, "the state lives inside its owner");

// The seeding rule written out on its own: x := x * 2147001325 + 715136305, word := (x rotated right 16) ^ 0x31415926.
void seedState(uint32_t seed, uint32_t* words)
{
    uint32_t x = seed;
    for (int i = 0; i < 624; ++i)
    {
        x = x * 2147001325u + 715136305u;
        words[i] = ((x >> 16) | (x << 16)) ^ 0x31415926u;
    }
}

// The standard library's MT19937 holding the same state, positioned so that its next draw refills it.
std::mt19937 referenceEngine(uint32_t seed)
{
    uint32_t words[624];
    seedState(seed, words);
    std::stringstream text;
    for (uint32_t word : words)
    {
        text << word << ' ';
    }
    text << 624;
    std::mt19937 engine;
    text >> engine;
    return engine;
}

TEST(RandomNumberGeneratorTest, SeedZeroStartsFromTheKnownStateWord)
{
    uint32_t words[624];
    seedState(0, words);
    EXPECT_EQ(0x2C707386u, words[0]);
}

TEST(RandomNumberGeneratorTest, DrawsMatchTheStandardTwistAndTemperingFromTheSeededState)
{
    // Equal outputs over a full refill mean equal states, so this also checks the seeding word for word.
    for (uint32_t seed : {0u, 1u, 0xDEADBEEFu, 0xFFFFFFFFu})
    {
        std::mt19937 reference = referenceEngine(seed);
        RandomNumberGenerator rng(seed);
        // Three refills and a bit.
        for (int i = 0; i < 2000; ++i)
        {
            ASSERT_EQ(reference(), rng.rand()) << "seed " << seed << " draw " << i;
        }
    }
}

TEST(RandomNumberGeneratorTest, KnownFirstOutputs)
{
    RandomNumberGenerator zero(0);
    EXPECT_EQ(0x52D55AA5u, zero.rand());
    EXPECT_EQ(0x0B5AFD35u, zero.rand());
    EXPECT_EQ(0x2F389094u, zero.rand());
    EXPECT_EQ(0xFF44E3EAu, zero.rand());
    RandomNumberGenerator other(12345);
    EXPECT_EQ(0x5FE09E98u, other.rand());
    EXPECT_EQ(0x1E07DD9Cu, other.rand());
}

TEST(RandomNumberGeneratorTest, SameSeedGivesTheSameSequenceAndCopiesGoOnAlike)
{
    RandomNumberGenerator a(77);
    RandomNumberGenerator b(77);
    for (int i = 0; i < 1000; ++i)
    {
        ASSERT_EQ(a.rand(), b.rand());
    }
    RandomNumberGenerator copy = a;
    for (int i = 0; i < 1000; ++i)
    {
        ASSERT_EQ(a.rand(), copy.rand());
    }
}

TEST(RandomNumberGeneratorTest, SetSeedMidSequenceRestartsIt)
{
    RandomNumberGenerator rng(42);
    const uint32_t first = rng.rand();
    const uint32_t second = rng.rand();
    for (int i = 0; i < 700; ++i)
    {
        rng.rand();
    }
    rng.setSeed(42);
    EXPECT_EQ(42u, rng.getSeed());
    EXPECT_EQ(first, rng.rand());
    EXPECT_EQ(second, rng.rand());
    rng.setSeed(0);
    EXPECT_EQ(0x52D55AA5u, rng.rand());
}

TEST(RandomNumberGeneratorTest, FrandIsTheDrawTimesTwoToTheMinus32)
{
    RandomNumberGenerator rng(9);
    RandomNumberGenerator mirror(9);
    for (int i = 0; i < 5000; ++i)
    {
        const float f = rng.frand();
        ASSERT_TRUE(f >= 0.0f && f <= 1.0f) << f;
        ASSERT_EQ(static_cast<float>(mirror.rand()) * 0x1p-32f, f);
    }
}

TEST(RandomNumberGeneratorTest, FrandReachesOneForTheTopDraws)
{
    // Draw 79,584 of seed 34 is 0xFFFFFFA6, which rounds to 2^32 as a float.
    RandomNumberGenerator rng(34);
    for (int i = 0; i < 79584; ++i)
    {
        ASSERT_LT(rng.frand(), 1.0f);
    }
    EXPECT_EQ(1.0f, rng.frand());
}

TEST(RandomNumberGeneratorTest, RangedDrawsStayInTheirRange)
{
    RandomNumberGenerator rng(5);
    for (int i = 0; i < 2000; ++i)
    {
        const uint32_t r = rng.rand(10, 20);
        ASSERT_TRUE(r >= 10 && r < 20) << r;
        const float f = rng.frand(-2.0f, 3.0f);
        ASSERT_TRUE(f >= -2.0f && f <= 3.0f) << f;
    }
    EXPECT_EQ(7u, rng.rand(7, 7));
    EXPECT_EQ(7u, rng.rand(7, 3));
    // The widest range keeps every bit of the draw: r (2^32 - 1) / 2^32 is r - 1 for any r above 0.
    RandomNumberGenerator mirror(5);
    RandomNumberGenerator wide(5);
    EXPECT_EQ(mirror.rand() - 1u, wide.rand(0, 0xFFFFFFFFu));
}

TEST(RandomNumberGeneratorTest, GetRngIsTheProcessWideInstance)
{
    orv::Singleton<RandomNumberGenerator>::create(0u);
    RandomNumberGenerator& rng = orv::getRNG();
    EXPECT_EQ(&orv::Singleton<RandomNumberGenerator>::getInstance(), &rng);
    EXPECT_EQ(0x52D55AA5u, rng.rand());
    orv::Singleton<RandomNumberGenerator>::destroy();
}

TEST(RandomNumberGeneratorDeathTest, GetRngBeforeStartUpIsFatal)
{
    ASSERT_FALSE(orv::Singleton<RandomNumberGenerator>::exists());
    EXPECT_DEATH(orv::getRNG(), "_instance != nullptr");
}

} // namespace
