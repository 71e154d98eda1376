// orvCore/math/random/orvRandomNumberGenerator.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include <cstdint>

namespace orv
{

/// A Mersenne Twister (MT19937) generator with its own seeding, giving the same sequence for the same seed on
/// every run and machine. A plain value with no lock: one owner thread at a time. The state lives inside it.
class RandomNumberGenerator
{
    ORV_DECLARE_VALUE_RTTI(RandomNumberGenerator)

public:
    /// A generator seeded with the seed.
    RandomNumberGenerator(uint32_t seed = 0);

    /// Fills the state from the seed and sets the position so that the next draw refills it: the sequence restarts.
    void setSeed(uint32_t seed);
    /// The seed last given.
    uint32_t getSeed() const { return _seed; }

    /// The next 32-bit value of the sequence.
    uint32_t rand();
    /// One draw scaled into [a, b): a + floor(rand() * (b - a) / 2^32). a when b <= a.
    uint32_t rand(uint32_t a, uint32_t b);
    /// One draw as a float: rand() converted to float, times 2^-32. In [0, 1]: the top 128 values of rand()
    /// round to 2^32 in the conversion and give exactly 1.
    float frand();
    /// a + frand() * (b - a), in float, in that order.
    float frand(float a, float b);

private:
    // Refills the state from itself, the twist of MT19937.
    void refill();

    uint32_t _seed = 0;
    static const uint16_t _mtLength = 624;
    int32_t _mtIndex = 0; // byte offset of the next word in _mtBuffer: a multiple of 4 from 0 to 2,496
    uint32_t _mtBuffer[_mtLength];
};

/// The process-wide generator, Singleton<RandomNumberGenerator>. Created at start-up; one thread at a time.
RandomNumberGenerator& getRNG();

} // namespace orv
