// orvCore/math/types/orvAngle.h
#pragma once

namespace orv
{

/// An angle in radians, 32-bit.
typedef float Angle;

/// Pi in 32 bits (0x40490FDB), a hair above the true value.
constexpr float kPi = 3.14159265358979323846f;
/// One turn, 2 pi in 32 bits (6.2831855, exactly twice kPi).
constexpr float kTwoPi = 6.28318530717958647692f;
/// A quarter turn, pi / 2 in 32 bits.
constexpr float kHalfPi = 1.57079632679489661923f;

} // namespace orv
