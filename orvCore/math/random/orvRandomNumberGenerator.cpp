// orvCore/math/random/orvRandomNumberGenerator.cpp
#include "math/random/orvRandomNumberGenerator.h"

#include "system/genericPatterns/orvSingleton.h"

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
const int kMtMiddle = 397;
const uint32_t kMtMatrix = 0x9908B0DFu;
const uint32_t kMtUpperMask = 0x80000000u;
const uint32_t kMtLowerMask = 0x7FFFFFFFu;
// 2^-32, the float with bit pattern 0x2F800000.
const float kTwoToMinus32 = 2.3283064365386963e-10f;

} // namespace

RandomNumberGenerator::RandomNumberGenerator(uint32_t seed)
{
    _mtIndex = kMtEndOffset + 1;
    setSeed(seed);
}

void RandomNumberGenerator::setSeed(uint32_t seed)
{
    // Not the usual MT19937 seeding: saved simulations replay only with this exact fill.
    uint32_t x = seed;
    for (int i = 0; i < _mtLength; ++i)
    {
        x = x * 2147001325u + 715136305u;
        _mtBuffer[i] = ((x >> 16) | (x << 16)) ^ 0x31415926u;
    }
    _seed = seed;
    _mtIndex = kMtEndOffset;
}

uint32_t RandomNumberGenerator::rand()
{
    if (_mtIndex >= kMtEndOffset)
    {
        if (_mtIndex > kMtEndOffset)
        {
            setSeed(0);
        }
        refill();
        _mtIndex = 0;
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
