// orvCore/math/conversions/orvConversions.h
#pragma once

#include "math/rotations/orvAxis.h"
#include "math/rotations/orvAxisAngle.h"
#include "math/rotations/orvEulerAngles.h"
#include "math/rotations/orvRotationMatrix.h"
#include "math/types/orvAngle.h"
#include "math/types/orvQuaternion.h"
#include "math/types/orvVector3.h"

namespace orv
{

/// The rotation of an axis and angle: axis times sin(angle / 2), then cos(angle / 2). The axis is used unnormalised.
Quaternion toQuaternion(const AxisAngle& axisAngle);
/// The unit quaternion of a rotation matrix acting on column vectors.
Quaternion toQuaternion(const RotationMatrix& matrix);
/// The rotation by the angle, in radians, about one axis.
Quaternion toQuaternion(Angle angle, Axis::Value axis);

/// The rotation about X by heading, then Y by attitude, then Z by bank: the product qX qY qZ.
Quaternion toQuaternionXYZ(const EulerAngles& angles);
/// The XYZ formula with the Y and Z slots swapped; not the product qX qZ qY.
Quaternion toQuaternionXZY(const EulerAngles& angles);
/// The XYZ formula with the X and Y slots swapped; not the product qY qX qZ.
Quaternion toQuaternionYXZ(const EulerAngles& angles);
/// The XYZ formula with its slots renamed Y, Z, X: the product qY qZ qX.
Quaternion toQuaternionYZX(const EulerAngles& angles);
/// The XYZ formula with its slots renamed Z, X, Y: the product qZ qX qY.
Quaternion toQuaternionZXY(const EulerAngles& angles);
/// The XYZ formula with the X and Z slots swapped; not the product qZ qY qX.
Quaternion toQuaternionZYX(const EulerAngles& angles);
/// The toQuaternion... function of the order.
Quaternion toQuaternion(const EulerAngles& angles, EulerOrder::Value order);

/// The Hamilton product qX(x) qY(y) qZ(z), the angles in radians.
Quaternion pivotXYZ_toQuaternion(Angle x, Angle y, Angle z);
/// The Hamilton product qX(x) qZ(z) qY(y); the angles are still given about X, Y, Z.
Quaternion pivotXZY_toQuaternion(Angle x, Angle y, Angle z);
/// The Hamilton product qY(y) qX(x) qZ(z); the angles are still given about X, Y, Z.
Quaternion pivotYXZ_toQuaternion(Angle x, Angle y, Angle z);
/// The Hamilton product qY(y) qZ(z) qX(x); the angles are still given about X, Y, Z.
Quaternion pivotYZX_toQuaternion(Angle x, Angle y, Angle z);
/// The Hamilton product qZ(z) qX(x) qY(y); the angles are still given about X, Y, Z.
Quaternion pivotZXY_toQuaternion(Angle x, Angle y, Angle z);
/// The Hamilton product qZ(z) qY(y) qX(x); the angles are still given about X, Y, Z.
Quaternion pivotZYX_toQuaternion(Angle x, Angle y, Angle z);

/// The rotation taking +Z to z exactly and +X into the plane of z and x. z must be unit; x need not be.
Quaternion Axis_Zx_toQuaternion(const Vector3& z, const Vector3& x);
/// Axis_Zx_toQuaternion into out.
void Axis_Zx_toQuaternion(const Vector3& z, const Vector3& x, Quaternion& out);
/// The rotation taking +Z to z exactly and +Y into the plane of z and y. z must be unit; y need not be.
Quaternion Axis_Zy_toQuaternion(const Vector3& z, const Vector3& y);
/// Axis_Zy_toQuaternion into out.
void Axis_Zy_toQuaternion(const Vector3& z, const Vector3& y, Quaternion& out);
/// The rotation taking +X to x exactly and +Y into the plane of x and y. x must be unit; y need not be.
Quaternion Axis_Xy_toQuaternion(const Vector3& x, const Vector3& y);
/// Axis_Xy_toQuaternion into out.
void Axis_Xy_toQuaternion(const Vector3& x, const Vector3& y, Quaternion& out);
/// The rotation taking +X to x exactly and +Z into the plane of x and z. x must be unit; z need not be.
Quaternion Axis_Xz_toQuaternion(const Vector3& x, const Vector3& z);
/// Axis_Xz_toQuaternion into out.
void Axis_Xz_toQuaternion(const Vector3& x, const Vector3& z, Quaternion& out);
/// The rotation taking +Y to y exactly and +X into the plane of y and x. y must be unit; x need not be.
Quaternion Axis_Yx_toQuaternion(const Vector3& y, const Vector3& x);
/// Axis_Yx_toQuaternion into out.
void Axis_Yx_toQuaternion(const Vector3& y, const Vector3& x, Quaternion& out);
/// The rotation taking +Y to y exactly and +Z into the plane of y and z. y must be unit; z need not be.
Quaternion Axis_Yz_toQuaternion(const Vector3& y, const Vector3& z);
/// Axis_Yz_toQuaternion into out.
void Axis_Yz_toQuaternion(const Vector3& y, const Vector3& z, Quaternion& out);

/// The rotation matrix of a unit quaternion, acting on column vectors.
RotationMatrix toRotationMatrix(const Quaternion& q);
/// The rotation matrix of an axis and angle, through its quaternion; the axis must be unit.
RotationMatrix toRotationMatrix(const AxisAngle& axisAngle);

/// The angles that toQuaternion(out, order) turns back into q or -q. At a pole the middle angle is +-pi/2, the
/// third is 0 and the first carries the rest. Returns which pole, if any. q must be unit.
EulerPolesStatus::Value fromQuaternion(EulerAngles& out, const Quaternion& q,
                                       EulerOrder::Value order = EulerOrder::XYZ);
/// The unit axis and the angle, in [0, 2 pi], of a unit quaternion; +Z and 0 for the identity.
void fromQuaternion(AxisAngle& out, const Quaternion& q);

/// Normalised linear blend of two quaternions, b taken on a's side: a (1 - factor) + b factor, scaled by
/// 1 / sqrt(norm2 + 1e-37). The factor is used as given, even outside [0, 1].
void interpolate_noFactorRangeCheck(Quaternion& out, const Quaternion& a, const Quaternion& b, float factor);

} // namespace orv
