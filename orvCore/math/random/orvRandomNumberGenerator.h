// orvCore/math/random/orvRandomNumberGenerator.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include <cstdint>

namespace orv
{

/// A Mersenne Twister (MT19937) generator with its own seeding, giving the same sequence for the same seed on
/// every run and machine. A plain value with no lock: one owner thread at a time. The state lives inside it.
/// The state may be filled at the first draw rather than at seeding: no draw, copy or saved form can tell.
class RandomNumberGenerator
{
    ORV_DECLARE_VALUE_RTTI(RandomNumberGenerator)

public:
    /// A generator seeded with the seed. Cheap: the state is filled at the first draw.
    RandomNumberGenerator(uint32_t seed = 0);

    /// Fills the state from the seed and sets the position so that the next draw refills it: the sequence restarts.
    void setSeed(uint32_t seed);
    /// setSeed, with the fill of the state put off until the next draw: the same sequence, at no cost for a
    /// generator that never draws. The state still comes from this seed when the saved seed is read over it.
    void setSeedLazily(uint32_t seed);
    /// The seed last given, or read from a stream.
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

    /// Number of 32-bit words in the state.
    static constexpr int STATE_LENGTH = 624;
    /// Writes the STATE_LENGTH words that setSeed gives for a seed into words. Any thread.
    static void fillState(uint32_t seed, uint32_t* words);

private:
    // Starts a new round of 624 draws: fills a state still waiting for its seed, then twists it.
    void beginRound();
    // Refills the state from itself, the twist of MT19937.
    void refill();

    uint32_t _seed = 0;
    static const uint16_t _mtLength = STATE_LENGTH;
    // Byte offset of the next word in _mtBuffer: a multiple of 4 from 0 to 2,496. One word past the end, the state
    // is not filled yet and _mtBuffer[0] holds the seed to fill it from.
    int32_t _mtIndex = 0;
    uint32_t _mtBuffer[_mtLength];
};

/// The process-wide generator, Singleton<RandomNumberGenerator>. Created at start-up; one thread at a time.
RandomNumberGenerator& getRNG();

} // namespace orv
