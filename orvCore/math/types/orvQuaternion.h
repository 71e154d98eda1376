// orvCore/math/types/orvQuaternion.h
#pragma once

#include <cstddef>

#include "math/types/orvAngle.h"
#include "math/types/orvVector3.h"

namespace orv
{

/// A rotation as a quaternion of 32-bit floats, w being the scalar part. A plain value; unit length is the
/// caller's business except where an operation says it normalises.
class Quaternion
{
public:
    /// The identity rotation (0, 0, 0, 1).
    constexpr Quaternion() = default;
    /// The quaternion with these components, w last.
    constexpr Quaternion(float xValue, float yValue, float zValue, float wValue)
        : x(xValue), y(yValue), z(zValue), w(wValue)
    {
    }

    /// The shared all-zero quaternion, a function-local static built on first use.
    static const Quaternion& getNullVector();
    /// The shared identity (0, 0, 0, 1), a function-local static built on first use.
    static const Quaternion& getIdentity();

    /// Becomes (0, 0, 0, 1).
    void setToIdentity()
    {
        x = y = z = 0.0f;
        w = 1.0f;
    }
    /// Becomes the rotation by the angle, in radians, about +X.
    void setPivotX(Angle angle);
    /// Becomes the rotation by the angle, in radians, about +Y.
    void setPivotY(Angle angle);
    /// Becomes the rotation by the angle, in radians, about +Z.
    void setPivotZ(Angle angle);

    /// True when all four components are exactly 0.
    bool isNull() const { return x == 0.0f && y == 0.0f && z == 0.0f && w == 0.0f; }
    /// Component 0 (x) to 3 (w). Not checked.
    float& operator[](int index) { return (&x)[index]; }
    float operator[](int index) const { return (&x)[index]; }
    /// x, y, z, w, in order.
    const float* getFloatValues() const { return &x; }
    float* touchFloatValues() { return &x; }

    /// Sum of the squares of the four components.
    float norm2() const { return x * x + y * y + z * z + w * w; }
    /// Divides by sqrt(norm2 + 1e-37): the null quaternion stays null.
    void normalizeSelf();
    /// (-x, -y, -z, w): the inverse rotation of a unit quaternion.
    Quaternion getConjugate() const { return Quaternion(-x, -y, -z, w); }

    /// Each component scaled.
    Quaternion operator*(float scale) const { return Quaternion(x * scale, y * scale, z * scale, w * scale); }
    /// Each component divided.
    Quaternion operator/(float divisor) const { return Quaternion(x / divisor, y / divisor, z / divisor, w / divisor); }
    /// v rotated, as q v q-conjugate, through the rotation matrix of this quaternion.
    Vector3 operator*(const Vector3& v) const;
    /// Hamilton product, this on the left: the rotation q is applied first, then this one.
    Quaternion operator*(const Quaternion& q) const;
    /// Componentwise sum.
    Quaternion operator+(const Quaternion& q) const { return Quaternion(x + q.x, y + q.y, z + q.z, w + q.w); }
    /// Componentwise difference.
    Quaternion operator-(const Quaternion& q) const { return Quaternion(x - q.x, y - q.y, z - q.z, w - q.w); }
    /// All four components negated: the same rotation.
    Quaternion operator-() const { return Quaternion(-x, -y, -z, -w); }
    /// Exact equality of the four components; q and -q differ.
    bool operator==(const Quaternion& q) const { return x == q.x && y == q.y && z == q.z && w == q.w; }
    bool operator!=(const Quaternion& q) const { return !(*this == q); }

    /// Becomes this * q.
    void multiplySelfNoReturn(const Quaternion& q);
    /// Becomes this times the fraction alpha of q, blended spherically from the identity. Alpha at or below 0 leaves
    /// this unchanged; alpha at or above 1 copies q over this, with no product.
    void multiplyAlphaQuat(const Quaternion& q, float alpha);

    /// Four-term scalar product.
    static float dotProduct(const Quaternion& a, const Quaternion& b);
    /// Angle, in [0, 2 pi], of the rotation between two unit quaternions; q and -q are 0 apart.
    static Angle angularDistance(const Quaternion& a, const Quaternion& b);
    /// The shortest rotation taking the unit vector from onto the unit vector to; a half turn about an axis normal
    /// to from when they are opposite.
    static Quaternion getRotationBetweenUnitVectors(const Vector3& from, const Vector3& to);
    /// The dual quaternion of the rotation q followed by the translation t: outReal is q, outDual is t q / 2.
    static void quaternionTranslationToDualQuaternion(const Quaternion& q, const Vector3& t, Quaternion& outReal,
                                                      Quaternion& outDual);

    /// Vector part, x.
    float x = 0.0f;
    /// Vector part, y.
    float y = 0.0f;
    /// Vector part, z.
    float z = 0.0f;
    /// Scalar part.
    float w = 1.0f;
};

/// v rotated by q, as q v q-conjugate through the vector form v + 2 w (u x v) + 2 u x (u x v). q must be unit.
Vector3 rotateVecByQuat(const Vector3& v, const Quaternion& q);

/// Writes "(x, y, z, w)", each to 9 significant digits, into the caller's buffer, cut to its size; returns it.
const char* toString(const Quaternion& q, char* buffer, size_t bufferSize);

} // namespace orv
