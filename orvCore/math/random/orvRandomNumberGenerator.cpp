// orvCore/math/random/orvRandomNumberGenerator.cpp
#include "math/random/orvRandomNumberGenerator.h"

#include "system/genericPatterns/orvSingleton.h"
#include "system/inspection/orvAttribute.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(RandomNumberGenerator, "249e8f3e-427a-4896-a823-c85a4c5b4a60", "orv::RandomNumberGenerator")

void RandomNumberGenerator::addAttributes()
{
    // The seed alone: reading it does not seed again, so the position of the sequence stays in memory only.
    addAttribute("seed", &RandomNumberGenerator::_seed);
}

namespace
{

const int32_t kMtEndOffset = 624 * 4; // byte offset one past the last state word
// The position of a generator whose state waits for its seed, kept in the first word.
const int32_t kMtUnfilledOffset = kMtEndOffset + 4;
const int kMtMiddle = 397;
const uint32_t kMtMatrix = 0x9908B0DFu;
const uint32_t kMtUpperMask = 0x80000000u;
const uint32_t kMtLowerMask = 0x7FFFFFFFu;
// 2^-32, the float with bit pattern 0x2F800000.
const float kTwoToMinus32 = 2.3283064365386963e-10f;

// The seeding step x := x * kSeedMultiplier + kSeedIncrement, in unsigned 32-bit arithmetic.
const uint32_t kSeedMultiplier = 2147001325u;
const uint32_t kSeedIncrement = 715136305u;
// Independent lanes of the seeding: lane j computes the words j, j + lanes, j + 2 lanes... with the step taken
// lanes times at once, so that the chain of 624 dependent multiply-adds becomes one of 26. 24 lanes keep six
// vectors of four busy, enough to hide the latency of a 32-bit vector multiply.
const int kSeedLanes = 24;
static_assert(RandomNumberGenerator::STATE_LENGTH % kSeedLanes == 0, "the lanes share the state words evenly");

// The seeding step applied count times, as one multiply-add: x -> multiplier * x + increment.
struct SeedStep
{
    uint32_t multiplier;
    uint32_t increment;
};

constexpr SeedStep seedStepTimes(int count)
{
    SeedStep step{1u, 0u};
    for (int i = 0; i < count; ++i)
    {
        step.multiplier *= kSeedMultiplier;
        step.increment = step.increment * kSeedMultiplier + kSeedIncrement;
    }
    return step;
}

constexpr SeedStep kSeedLaneStep = seedStepTimes(kSeedLanes);

inline uint32_t stateWord(uint32_t x)
{
    return ((x >> 16) | (x << 16)) ^ 0x31415926u;
}

} // namespace

RandomNumberGenerator::RandomNumberGenerator(uint32_t seed)
{
    // Generators are made in bulk, entities' among them, and many never draw: the fill waits for the first draw.
    setSeedLazily(seed);
}

void RandomNumberGenerator::fillState(uint32_t seed, uint32_t* words)
{
    // Not the usual MT19937 seeding: saved simulations replay only with this exact fill.
    uint32_t lanes[kSeedLanes];
    uint32_t x = seed;
    for (int j = 0; j < kSeedLanes; ++j)
    {
        x = x * kSeedMultiplier + kSeedIncrement;
        lanes[j] = x;
    }
    for (int i = 0; i < STATE_LENGTH; i += kSeedLanes)
    {
        for (int j = 0; j < kSeedLanes; ++j)
        {
            words[i + j] = stateWord(lanes[j]);
            lanes[j] = lanes[j] * kSeedLaneStep.multiplier + kSeedLaneStep.increment;
        }
    }
}

void RandomNumberGenerator::setSeed(uint32_t seed)
{
    fillState(seed, _mtBuffer);
    _seed = seed;
    _mtIndex = kMtEndOffset;
}

void RandomNumberGenerator::setSeedLazily(uint32_t seed)
{
    // Apart from _seed, which a stream read may overwrite before the first draw.
    _mtBuffer[0] = seed;
    _seed = seed;
    _mtIndex = kMtUnfilledOffset;
}

uint32_t RandomNumberGenerator::rand()
{
    if (_mtIndex >= kMtEndOffset)
    {
        beginRound();
    }
    uint32_t y = _mtBuffer[_mtIndex >> 2];
    _mtIndex += 4;
    y ^= y >> 11;
    y ^= (y << 7) & 0x9D2C5680u;
    y ^= (y << 15) & 0xEFC60000u;
    y ^= y >> 18;
    return y;
}

uint32_t RandomNumberGenerator::rand(uint32_t a, uint32_t b)
{
    if (b <= a)
    {
        return a;
    }
    // rand() * 2^-32 * (b - a) in exact integer arithmetic, so that wide ranges lose nothing to float rounding.
    const uint64_t scaled = (static_cast<uint64_t>(rand()) * static_cast<uint64_t>(b - a)) >> 32;
    return a + static_cast<uint32_t>(scaled);
}

float RandomNumberGenerator::frand()
{
    return static_cast<float>(rand()) * kTwoToMinus32;
}

float RandomNumberGenerator::frand(float a, float b)
{
    return a + frand() * (b - a);
}

void RandomNumberGenerator::beginRound()
{
    if (_mtIndex == kMtUnfilledOffset)
    {
        // _seed is not used: a stream read may have replaced it since the seeding.
        fillState(_mtBuffer[0], _mtBuffer);
    }
    else if (_mtIndex > kMtEndOffset)
    {
        setSeed(0);
    }
    refill();
    _mtIndex = 0;
}

void RandomNumberGenerator::refill()
{
    for (int i = 0; i < _mtLength; ++i)
    {
        const uint32_t y = (_mtBuffer[i] & kMtUpperMask) | (_mtBuffer[(i + 1) % _mtLength] & kMtLowerMask);
        _mtBuffer[i] = _mtBuffer[(i + kMtMiddle) % _mtLength] ^ (y >> 1) ^ ((y & 1u) != 0 ? kMtMatrix : 0u);
    }
}

RandomNumberGenerator& getRNG()
{
    return Singleton<RandomNumberGenerator>::getInstance();
}

} // namespace orv
