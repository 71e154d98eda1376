// orvCore/math/types/orvAngleUtils.cpp
#include "math/types/orvAngleUtils.h"

#include <cmath>

#include "math/random/orvRandomNumberGenerator.h"

namespace orv
{

namespace
{

// One turn in 64 bits, the 32-bit turn widened: whole turns come off in double so that large angles keep their
// fraction.
const double kTurn = static_cast<double>(kTwoPi);
// 2^-32, the float with bit pattern 0x2F800000.
const float kTwoToMinus32 = 2.3283064365386963e-10f;

// The angle less its whole turns, in (-2 pi, 2 pi); unchanged within one turn.
float removeWholeTurns(Angle angle)
{
    const double value = static_cast<double>(angle);
    if (std::fabs(value) > kTurn)
    {
        return static_cast<float>(std::fmod(value, kTurn));
    }
    return angle;
}

} // namespace

bool AngleUtils::Comparator::operator()(Angle a, Angle b) const
{
    return getModuloValue(a) < getModuloValue(b);
}

bool AngleUtils::isModulo(Angle angle)
{
    return angle >= -kPi && angle < kPi;
}

void AngleUtils::moduloSelf(Angle& angle)
{
    angle = getModuloValue(angle);
}

Angle AngleUtils::getModuloValue(Angle angle)
{
    if (isModulo(angle))
    {
        return angle;
    }
    float value = removeWholeTurns(angle);
    // One turn at most remains; rounding in the step above may leave the value on either edge.
    if (value >= kPi)
    {
        value -= kTwoPi;
    }
    else if (value < -kPi)
    {
        value += kTwoPi;
    }
    if (value >= kPi)
    {
        value = -kPi;
    }
    return value;
}

Angle AngleUtils::getPositiveModuloValue(Angle angle)
{
    if (angle >= 0.0f && angle < kTwoPi)
    {
        return angle;
    }
    float value = removeWholeTurns(angle);
    if (value < 0.0f)
    {
        value += kTwoPi;
    }
    else if (value >= kTwoPi)
    {
        value -= kTwoPi;
    }
    // A tiny negative value plus one turn rounds to exactly one turn, which is 0.
    if (value >= kTwoPi)
    {
        value = 0.0f;
    }
    return value;
}

bool AngleUtils::approxEqual(Angle a, Angle b, float tolerance)
{
    const Angle wrappedB = isModulo(b) ? b : getModuloValue(b);
    // a's window [a - tolerance, a + tolerance] may straddle the wrap at pi: each end, wrapped, gives one copy of
    // the window's centre.
    const Angle fromLower = getModuloValue(a - tolerance) + tolerance;
    const Angle fromUpper = getModuloValue(a + tolerance) - tolerance;
    return std::fabs(wrappedB - fromLower) <= tolerance || std::fabs(wrappedB - fromUpper) <= tolerance;
}

Angle AngleUtils::approxDiff(Angle a, Angle b)
{
    return std::fabs(getModuloValue(b - a));
}

Angle AngleUtils::randomAngle(RandomNumberGenerator& rng, Angle from, Angle to)
{
    const float range = getPositiveModuloValue(to) - getPositiveModuloValue(from);
    return static_cast<float>(rng.rand()) * kTwoToMinus32 * range + from;
}

Angle AngleUtils::randomAngle(RandomNumberGenerator& rng)
{
    return static_cast<float>(rng.rand()) * kTwoToMinus32 * kTwoPi;
}

Angle AngleUtils::distance(Angle a, Angle b)
{
    return getModuloValue(b) - getModuloValue(a);
}

} // namespace orv
