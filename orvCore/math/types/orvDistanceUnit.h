// orvCore/math/types/orvDistanceUnit.h
#pragma once

namespace orv
{

/// A unit of length.
struct distanceUnit
{
    enum Value
    {
        METER = 0,
        DECIMETER = 1,
        CENTIMETER = 2,
        MILLIMETER = 3,
        INCH = 4,
        FEET = 5,
        YARD = 6,
        END = 7
    };
};

/// Metres in one of the unit; 1 for a value out of range.
float getScaleFactor(distanceUnit::Value unit);

/// The length given in from, expressed in to: value times getScaleFactor(from) divided by getScaleFactor(to).
float convert(const float& value, distanceUnit::Value from, distanceUnit::Value to);

} // namespace orv
