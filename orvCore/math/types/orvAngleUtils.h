// orvCore/math/types/orvAngleUtils.h
#pragma once

#include "math/types/orvAngle.h"

namespace orv
{

class RandomNumberGenerator;

/// Operations on angles in radians: wrapping into one turn, comparing, drawing. Pure, any thread.
class AngleUtils
{
public:
    /// Orders angles by their value wrapped into [-pi, pi), so that angles a whole number of turns apart tie.
    struct Comparator
    {
        /// The angle type the comparator orders, in radians.
        typedef orv::Angle Angle;

        /// True when a, wrapped, lies below b, wrapped.
        bool operator()(Angle a, Angle b) const;
    };

    /// True when the angle lies in [-pi, pi); false for a NaN.
    static bool isModulo(Angle angle);
    /// Wraps the angle into [-pi, pi) in place.
    static void moduloSelf(Angle& angle);
    /// The angle wrapped into [-pi, pi): pi gives -pi.
    static Angle getModuloValue(Angle angle);
    /// The angle wrapped into [0, 2 pi).
    static Angle getPositiveModuloValue(Angle angle);
    /// True when b lies within the tolerance of a, all three in radians, across the wrap at pi.
    static bool approxEqual(Angle a, Angle b, float tolerance);
    /// The shortest unsigned turn between a and b, in [0, pi].
    static Angle approxDiff(Angle a, Angle b);
    /// A draw of rand() times 2^-32 times (positive modulo of to minus positive modulo of from), plus from.
    static Angle randomAngle(RandomNumberGenerator& rng, Angle from, Angle to);
    /// A draw over the full turn, [0, 2 pi).
    static Angle randomAngle(RandomNumberGenerator& rng);
    /// getModuloValue(b) - getModuloValue(a), not wrapped again: it may lie outside [-pi, pi).
    static Angle distance(Angle a, Angle b);
    /// Radians to degrees.
    static float radianToDegree(Angle angle) { return angle * (180.0f / kPi); }
    /// Degrees to radians.
    static Angle degreeToRadian(float degrees) { return degrees * (kPi / 180.0f); }
};

} // namespace orv
