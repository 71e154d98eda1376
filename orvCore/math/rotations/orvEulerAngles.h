// orvCore/math/rotations/orvEulerAngles.h
#pragma once

#include "math/types/orvAngle.h"

namespace orv
{

/// The order in which the three angles of an EulerAngles turn about the axes, by axis letters. The odd orders
/// (XZY, YXZ, ZYX) follow the XYZ formula with renamed slots, not the product of their named rotations.
struct EulerOrder
{
    enum Value
    {
        XYZ = 0,
        XZY = 1,
        YXZ = 2,
        YZX = 3,
        ZXY = 4,
        ZYX = 5,
        END = 6
    };
};

/// Where a conversion to Euler angles found the middle angle: clear of the poles, or at +pi/2 (NORTH) or -pi/2
/// (SOUTH), where only the sum or difference of the other two is defined and the third one is set to 0.
struct EulerPolesStatus
{
    enum Value
    {
        NONE = 0,
        NORTH = 1,
        SOUTH = 2,
        END = 3
    };
};

/// Three angles in radians: the first, second and third rotation of an EulerOrder. A plain value.
class EulerAngles
{
public:
    /// All three angles 0.
    constexpr EulerAngles() = default;
    /// The three angles in radians, first rotation first.
    constexpr EulerAngles(Angle headingValue, Angle attitudeValue, Angle bankValue)
        : heading(headingValue), attitude(attitudeValue), bank(bankValue)
    {
    }

    /// Exact equality of the three angles.
    bool operator==(const EulerAngles& o) const
    {
        return heading == o.heading && attitude == o.attitude && bank == o.bank;
    }
    bool operator!=(const EulerAngles& other) const { return !(*this == other); }

    /// First rotation, about the first axis of the order, radians.
    Angle heading = 0.0f;
    /// Second rotation, about the second axis of the order, radians.
    Angle attitude = 0.0f;
    /// Third rotation, about the third axis of the order, radians.
    Angle bank = 0.0f;
};

} // namespace orv
