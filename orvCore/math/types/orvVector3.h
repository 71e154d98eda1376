// orvCore/math/types/orvVector3.h
#pragma once

#include <cstddef>

#include "math/rotations/orvAxis.h"
#include "math/types/orvAngle.h"
#include "math/types/orvVector2.h"

namespace orv
{

/// A point or direction of space, three 32-bit floats padded to four so that it fills one SIMD register.
/// 16-byte aligned. A plain value.
class alignas(16) Vector3
{
public:
    /// The null vector.
    constexpr Vector3() = default;
    /// The vector with these components.
    constexpr Vector3(float xValue, float yValue, float zValue) : x(xValue), y(yValue), z(zValue) {}

    /// Added to the squared length before the reciprocal square root, so that normalising needs no test for 0.
    static constexpr float minimalFloatValueToAvoidTestingForNullity = 1.0e-37f;

    /// The shared null vector, a function-local static built on first use.
    static const Vector3& getNullVector();

    /// True when x, y and z are exactly 0.
    bool isNull() const { return x == 0.0f && y == 0.0f && z == 0.0f; }
    /// Sets every component to 0.
    void setNull() { x = y = z = _alignmentValue = 0.0f; }
    /// Sets x, y and z to the value.
    void fill(float value) { x = y = z = value; }
    /// Sets the components, in order.
    void setValues(float xValue, float yValue, float zValue)
    {
        x = xValue;
        y = yValue;
        z = zValue;
    }

    /// Component 0 (x), 1 (y) or 2 (z). Not checked.
    float& operator[](int index) { return (&x)[index]; }
    float operator[](int index) const { return (&x)[index]; }
    /// x, y and z, in order, then the padding.
    const float* getFloatValues() const { return &x; }
    float* touchFloatValues() { return &x; }

    /// Squared length.
    float norm2() const { return x * x + y * y + z * z; }
    /// Length.
    float norm() const;
    /// Scales to unit length through the processor's approximate reciprocal square root and one Newton-Raphson
    /// step: about 22 bits, not exactly rounded. A null vector stays null.
    void normalizeSelf();
    /// A unit copy, as normalizeSelf makes it.
    Vector3 computeNormalize() const;
    /// True when the squared length is within the tolerance of 1.
    bool isNormalized(float tolerance) const;

    /// The two components left when the axis is dropped, in axis order: X gives (y, z), Y (x, z), Z (x, y).
    Vector2 project(Axis::Value axis) const;
    /// (x, y).
    Vector2 projectZ() const { return Vector2(x, y); }
    /// A copy turned about +Z by the angle, counter-clockwise seen from +Z.
    Vector3 computeRotateZ(Angle angle) const;
    /// Turns about +Z by the angle, counter-clockwise seen from +Z.
    void rotateZSelf(Angle angle);

    /// Componentwise sum, difference, negation, scaling and division; the compound forms change this vector.
    Vector3 operator+(const Vector3& other) const { return Vector3(x + other.x, y + other.y, z + other.z); }
    Vector3 operator-(const Vector3& other) const { return Vector3(x - other.x, y - other.y, z - other.z); }
    Vector3 operator-() const { return Vector3(-x, -y, -z); }
    Vector3 operator*(float scale) const { return Vector3(x * scale, y * scale, z * scale); }
    Vector3 operator/(float divisor) const { return Vector3(x / divisor, y / divisor, z / divisor); }
    Vector3& operator+=(const Vector3& other);
    Vector3& operator-=(const Vector3& other);
    Vector3& operator*=(float scale);
    Vector3& operator/=(float divisor);

    /// Lexicographic order on x, y, z.
    bool operator<(const Vector3& other) const;
    /// Exact equality of x, y and z; the padding takes no part.
    bool operator==(const Vector3& other) const { return x == other.x && y == other.y && z == other.z; }
    bool operator!=(const Vector3& other) const { return !(*this == other); }

    /// First component.
    float x = 0.0f;
    /// Second component.
    float y = 0.0f;
    /// Third component.
    float z = 0.0f;
    /// Padding to four lanes; 0 in everything the operations build.
    float _alignmentValue = 0.0f;
};

/// The vector scaled.
inline Vector3 operator*(float scale, const Vector3& v)
{
    return v * scale;
}

/// Scalar product.
inline float dotProduct(const Vector3& a, const Vector3& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// Right-handed cross product a x b.
inline Vector3 crossProduct(const Vector3& a, const Vector3& b)
{
    return Vector3(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x);
}

/// Orders x, then y, then z, components closer than the tolerance counting as equal. Returns -1, 0 or 1.
int lexicoGraphicCompare(const Vector3& a, const Vector3& b, float tolerance = 0.0f);

/// True when the sine of the angle between a and b is at most the tolerance. A null vector is collinear with all.
bool areCollinear(const Vector3& a, const Vector3& b, float tolerance);

/// Unsigned angle between a and b, in [0, pi]; 0 when either is null.
Angle angle(const Vector3& a, const Vector3& b);

/// Stores in out the unit axis (+X, +Y, +Z, -X, -Y, -Z) nearest in angle to v, the earlier on a tie, and returns
/// that angle.
Angle findNearestUnitAxis(Vector3& out, const Vector3& v);

/// Weights (u, v, w) of a, b and c whose blend is the projection of p on the triangle's plane. False for a
/// degenerate triangle.
bool computeBarycentricsCoordinates(const Vector3& p, const Vector3& a, const Vector3& b, const Vector3& c, float& u,
                                    float& v, float& w);

/// Writes "(x, y, z)", each to 9 significant digits, into the caller's buffer, cut to its size; returns the buffer.
const char* toString(const Vector3& v, char* buffer, size_t bufferSize);

} // namespace orv
