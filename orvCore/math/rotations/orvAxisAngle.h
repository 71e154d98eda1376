// orvCore/math/rotations/orvAxisAngle.h
#pragma once

#include "math/types/orvAngle.h"
#include "math/types/orvVector3.h"

namespace orv
{

/// A rotation by an angle about an axis, counter-clockwise seen from the axis' tip. The axis is kept as given,
/// unnormalised. A plain value.
class AxisAngle
{
public:
    /// No rotation about +Z.
    AxisAngle() = default;
    /// A rotation by the angle, in radians, about the axis, kept as given.
    AxisAngle(const Vector3& axis, Angle angle) : _axis(axis), _angle(angle) {}

    /// The axis as given, unnormalised.
    const Vector3& getAxis() const { return _axis; }
    Vector3& touchAxis() { return _axis; }
    void setAxis(const Vector3& axis) { _axis = axis; }
    /// Radians.
    Angle getAngle() const { return _angle; }
    void setAngle(Angle angle) { _angle = angle; }

private:
    Vector3 _axis = Vector3(0.0f, 0.0f, 1.0f);
    Angle _angle = 0.0f;
};

} // namespace orv
