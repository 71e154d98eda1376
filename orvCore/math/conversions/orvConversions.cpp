// orvCore/math/conversions/orvConversions.cpp
#include "math/conversions/orvConversions.h"

#include <cmath>

namespace orv
{

namespace
{

// Sine of the middle angle above which a conversion to Euler angles treats it as a pole: about 0.36 degree off.
const float kEulerPoleSine = 0.99998f;

// The XYZ product formula with its x, y and z written into the slots of the axes a, b and c. Kept term for term:
// files and hosts hold quaternions made by it, odd orders included.
Quaternion eulerFormula(const EulerAngles& angles, int a, int b, int c)
{
    const float halfHeading = angles.heading * 0.5f;
    const float halfAttitude = angles.attitude * 0.5f;
    const float halfBank = angles.bank * 0.5f;
    const float c1 = std::cos(halfHeading);
    const float s1 = std::sin(halfHeading);
    const float c2 = std::cos(halfAttitude);
    const float s2 = std::sin(halfAttitude);
    const float c3 = std::cos(halfBank);
    const float s3 = std::sin(halfBank);
    Quaternion q;
    q[a] = c3 * s1 * c2 + s3 * c1 * s2;
    q[b] = c1 * s2 * c3 - s1 * c2 * s3;
    q[c] = s3 * c1 * c2 + c3 * s1 * s2;
    q.w = c1 * c2 * c3 - s1 * s2 * s3;
    return q;
}

Quaternion axisRotation(Angle angle, Axis::Value axis)
{
    Quaternion q;
    switch (axis)
    {
    case Axis::X:
        q.setPivotX(angle);
        break;
    case Axis::Y:
        q.setPivotY(angle);
        break;
    default:
        q.setPivotZ(angle);
        break;
    }
    return q;
}

// The rotation whose column kept is the given unit vector exactly, and whose column other lies in the plane of the
// kept vector and the hint, on the hint's side. The third column completes a right-handed frame.
Quaternion keptAxisToQuaternion(int kept, const Vector3& keptVector, int other, const Vector3& hint)
{
    const int third = 3 - kept - other;
    // (kept, other, third) in cyclic order means kept x other = third; otherwise other x kept = third, and both
    // products take their operands the other way round.
    const bool cyclic = other == (kept + 1) % 3;
    Vector3 thirdVector = cyclic ? crossProduct(keptVector, hint) : crossProduct(hint, keptVector);
    thirdVector.normalizeSelf();
    Vector3 otherVector = cyclic ? crossProduct(thirdVector, keptVector) : crossProduct(keptVector, thirdVector);
    otherVector.normalizeSelf();
    Vector3 columns[3];
    columns[kept] = keptVector;
    columns[other] = otherVector;
    columns[third] = thirdVector;
    return toQuaternion(RotationMatrix::fromColumns(columns[0], columns[1], columns[2]));
}

// The slots of the axes of an order, first to third.
void orderAxes(EulerOrder::Value order, int& a, int& b, int& c)
{
    static const int axes[EulerOrder::END][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    const int index = (order >= EulerOrder::XYZ && order < EulerOrder::END) ? order : EulerOrder::XYZ;
    a = axes[index][0];
    b = axes[index][1];
    c = axes[index][2];
}

} // namespace

Quaternion toQuaternion(const AxisAngle& axisAngle)
{
    const float half = axisAngle.getAngle() * 0.5f;
    const float s = std::sin(half);
    const Vector3& axis = axisAngle.getAxis();
    return Quaternion(axis.x * s, axis.y * s, axis.z * s, std::cos(half));
}

Quaternion toQuaternion(const RotationMatrix& matrix)
{
    const RotationMatrix& m = matrix;
    const float trace = m[0][0] + m[1][1] + m[2][2];
    Quaternion q;
    if (trace > 0.0f)
    {
        const float s = std::sqrt(trace + 1.0f);
        const float k = 0.5f / s;
        q.w = s * 0.5f;
        q.x = (m[2][1] - m[1][2]) * k;
        q.y = (m[0][2] - m[2][0]) * k;
        q.z = (m[1][0] - m[0][1]) * k;
    }
    else if (m[0][0] >= m[1][1] && m[0][0] >= m[2][2])
    {
        const float s = std::sqrt(m[0][0] - m[1][1] - m[2][2] + 1.0f);
        const float k = 0.5f / s;
        q.x = s * 0.5f;
        q.y = (m[0][1] + m[1][0]) * k;
        q.z = (m[0][2] + m[2][0]) * k;
        q.w = (m[2][1] - m[1][2]) * k;
    }
    else if (m[1][1] >= m[2][2])
    {
        const float s = std::sqrt(m[1][1] - m[0][0] - m[2][2] + 1.0f);
        const float k = 0.5f / s;
        q.y = s * 0.5f;
        q.x = (m[0][1] + m[1][0]) * k;
        q.z = (m[1][2] + m[2][1]) * k;
        q.w = (m[0][2] - m[2][0]) * k;
    }
    else
    {
        const float s = std::sqrt(m[2][2] - m[0][0] - m[1][1] + 1.0f);
        const float k = 0.5f / s;
        q.z = s * 0.5f;
        q.x = (m[0][2] + m[2][0]) * k;
        q.y = (m[1][2] + m[2][1]) * k;
        q.w = (m[1][0] - m[0][1]) * k;
    }
    return q;
}

Quaternion toQuaternion(Angle angle, Axis::Value axis)
{
    return axisRotation(angle, axis);
}

Quaternion toQuaternionXYZ(const EulerAngles& angles)
{
    return eulerFormula(angles, 0, 1, 2);
}

Quaternion toQuaternionXZY(const EulerAngles& angles)
{
    return eulerFormula(angles, 0, 2, 1);
}

Quaternion toQuaternionYXZ(const EulerAngles& angles)
{
    return eulerFormula(angles, 1, 0, 2);
}

Quaternion toQuaternionYZX(const EulerAngles& angles)
{
    return eulerFormula(angles, 1, 2, 0);
}

Quaternion toQuaternionZXY(const EulerAngles& angles)
{
    return eulerFormula(angles, 2, 0, 1);
}

Quaternion toQuaternionZYX(const EulerAngles& angles)
{
    return eulerFormula(angles, 2, 1, 0);
}

Quaternion toQuaternion(const EulerAngles& angles, EulerOrder::Value order)
{
    int a;
    int b;
    int c;
    orderAxes(order, a, b, c);
    return eulerFormula(angles, a, b, c);
}

Quaternion pivotXYZ_toQuaternion(Angle x, Angle y, Angle z)
{
    return axisRotation(x, Axis::X) * axisRotation(y, Axis::Y) * axisRotation(z, Axis::Z);
}

Quaternion pivotXZY_toQuaternion(Angle x, Angle y, Angle z)
{
    return axisRotation(x, Axis::X) * axisRotation(z, Axis::Z) * axisRotation(y, Axis::Y);
}

Quaternion pivotYXZ_toQuaternion(Angle x, Angle y, Angle z)
{
    return axisRotation(y, Axis::Y) * axisRotation(x, Axis::X) * axisRotation(z, Axis::Z);
}

Quaternion pivotYZX_toQuaternion(Angle x, Angle y, Angle z)
{
    return axisRotation(y, Axis::Y) * axisRotation(z, Axis::Z) * axisRotation(x, Axis::X);
}

Quaternion pivotZXY_toQuaternion(Angle x, Angle y, Angle z)
{
    return axisRotation(z, Axis::Z) * axisRotation(x, Axis::X) * axisRotation(y, Axis::Y);
}

Quaternion pivotZYX_toQuaternion(Angle x, Angle y, Angle z)
{
    return axisRotation(z, Axis::Z) * axisRotation(y, Axis::Y) * axisRotation(x, Axis::X);
}

Quaternion Axis_Zx_toQuaternion(const Vector3& z, const Vector3& x)
{
    return keptAxisToQuaternion(Axis::Z, z, Axis::X, x);
}

void Axis_Zx_toQuaternion(const Vector3& z, const Vector3& x, Quaternion& out)
{
    out = keptAxisToQuaternion(Axis::Z, z, Axis::X, x);
}

Quaternion Axis_Zy_toQuaternion(const Vector3& z, const Vector3& y)
{
    return keptAxisToQuaternion(Axis::Z, z, Axis::Y, y);
}

void Axis_Zy_toQuaternion(const Vector3& z, const Vector3& y, Quaternion& out)
{
    out = keptAxisToQuaternion(Axis::Z, z, Axis::Y, y);
}

Quaternion Axis_Xy_toQuaternion(const Vector3& x, const Vector3& y)
{
    return keptAxisToQuaternion(Axis::X, x, Axis::Y, y);
}

void Axis_Xy_toQuaternion(const Vector3& x, const Vector3& y, Quaternion& out)
{
    out = keptAxisToQuaternion(Axis::X, x, Axis::Y, y);
}

Quaternion Axis_Xz_toQuaternion(const Vector3& x, const Vector3& z)
{
    return keptAxisToQuaternion(Axis::X, x, Axis::Z, z);
}

void Axis_Xz_toQuaternion(const Vector3& x, const Vector3& z, Quaternion& out)
{
    out = keptAxisToQuaternion(Axis::X, x, Axis::Z, z);
}

Quaternion Axis_Yx_toQuaternion(const Vector3& y, const Vector3& x)
{
    return keptAxisToQuaternion(Axis::Y, y, Axis::X, x);
}

void Axis_Yx_toQuaternion(const Vector3& y, const Vector3& x, Quaternion& out)
{
    out = keptAxisToQuaternion(Axis::Y, y, Axis::X, x);
}

Quaternion Axis_Yz_toQuaternion(const Vector3& y, const Vector3& z)
{
    return keptAxisToQuaternion(Axis::Y, y, Axis::Z, z);
}

void Axis_Yz_toQuaternion(const Vector3& y, const Vector3& z, Quaternion& out)
{
    out = keptAxisToQuaternion(Axis::Y, y, Axis::Z, z);
}

RotationMatrix toRotationMatrix(const Quaternion& q)
{
    // The same terms as Quaternion::operator*(Vector3), so that both rotate a vector identically.
    const float xx = q.x * q.x;
    const float yy = q.y * q.y;
    const float zz = q.z * q.z;
    const float xy = q.x * q.y;
    const float xz = q.x * q.z;
    const float yz = q.y * q.z;
    const float wx = q.w * q.x;
    const float wy = q.w * q.y;
    const float wz = q.w * q.z;
    return RotationMatrix(Vector3(1.0f - 2.0f * (yy + zz), 2.0f * (xy - wz), 2.0f * (xz + wy)),
                          Vector3(2.0f * (xy + wz), 1.0f - 2.0f * (xx + zz), 2.0f * (yz - wx)),
                          Vector3(2.0f * (xz - wy), 2.0f * (yz + wx), 1.0f - 2.0f * (xx + yy)));
}

RotationMatrix toRotationMatrix(const AxisAngle& axisAngle)
{
    return toRotationMatrix(toQuaternion(axisAngle));
}

EulerPolesStatus::Value fromQuaternion(EulerAngles& out, const Quaternion& q, EulerOrder::Value order)
{
    int a;
    int b;
    int c;
    orderAxes(order, a, b, c);
    // Every order is the XYZ formula with renamed slots, so reading the slots back in XYZ order inverts it.
    const float x = q[a];
    const float y = q[b];
    const float z = q[c];
    const float w = q.w;
    // Terms of the matrix Rx(heading) Ry(attitude) Rz(bank).
    const float m00 = 1.0f - 2.0f * (y * y + z * z);
    const float m01 = 2.0f * (x * y - w * z);
    const float m02 = 2.0f * (x * z + w * y);
    const float m10 = 2.0f * (x * y + w * z);
    const float m11 = 1.0f - 2.0f * (x * x + z * z);
    const float m12 = 2.0f * (y * z - w * x);
    const float m22 = 1.0f - 2.0f * (x * x + y * y);
    const float sinAttitude = m02 > 1.0f ? 1.0f : (m02 < -1.0f ? -1.0f : m02);
    if (sinAttitude > kEulerPoleSine)
    {
        // Attitude +pi/2: row 1 is (sin(heading + bank), cos(heading + bank), 0).
        out = EulerAngles(std::atan2(m10, m11), kHalfPi, 0.0f);
        return EulerPolesStatus::NORTH;
    }
    if (sinAttitude < -kEulerPoleSine)
    {
        // Attitude -pi/2: row 1 is (sin(bank - heading), cos(bank - heading), 0).
        out = EulerAngles(std::atan2(-m10, m11), -kHalfPi, 0.0f);
        return EulerPolesStatus::SOUTH;
    }
    // atan2 against the cosine keeps the attitude precise near the poles, where asin is not.
    const float cosAttitude = std::sqrt(m00 * m00 + m01 * m01);
    out = EulerAngles(std::atan2(-m12, m22), std::atan2(sinAttitude, cosAttitude), std::atan2(-m01, m00));
    return EulerPolesStatus::NONE;
}

void fromQuaternion(AxisAngle& out, const Quaternion& q)
{
    Vector3 axis(q.x, q.y, q.z);
    const float sinHalf = axis.norm();
    if (sinHalf == 0.0f)
    {
        out = AxisAngle(Vector3(0.0f, 0.0f, 1.0f), 0.0f);
        return;
    }
    axis /= sinHalf;
    out = AxisAngle(axis, 2.0f * std::atan2(sinHalf, q.w));
}

void interpolate_noFactorRangeCheck(Quaternion& out, const Quaternion& a, const Quaternion& b, float factor)
{
    // q and -q are one rotation: blending towards the nearer of the two takes the short way round.
    const Quaternion nearB = Quaternion::dotProduct(a, b) < 0.0f ? -b : b;
    const float aWeight = 1.0f - factor;
    out = Quaternion(a.x * aWeight + nearB.x * factor, a.y * aWeight + nearB.y * factor,
                     a.z * aWeight + nearB.z * factor, a.w * aWeight + nearB.w * factor);
    out.normalizeSelf();
}

} // namespace orv
