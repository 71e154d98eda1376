// orvCore/math/types/orvVector2.h
#pragma once

#include <cstddef>

#include "math/types/orvAngle.h"

namespace orv
{

/// A point or direction of the plane, two 32-bit floats. A plain value.
class Vector2
{
public:
    /// The null vector.
    constexpr Vector2() = default;
    /// The vector with these components.
    constexpr Vector2(float xValue, float yValue) : x(xValue), y(yValue) {}

    /// The shared null vector, built on first use.
    static const Vector2& getNullVector();

    /// True when both components are exactly 0.
    bool isNull() const { return x == 0.0f && y == 0.0f; }
    /// Sets every component to 0.
    void setNull() { x = y = 0.0f; }
    /// Sets both components to the value.
    void fill(float value) { x = y = value; }
    /// Sets the components, in order.
    void setValues(float xValue, float yValue)
    {
        x = xValue;
        y = yValue;
    }

    /// Component 0 (x) or 1 (y). Not checked.
    float& operator[](int index) { return (&x)[index]; }
    float operator[](int index) const { return (&x)[index]; }
    /// The two components, in order.
    const float* getFloatValues() const { return &x; }
    float* touchFloatValues() { return &x; }

    /// Squared length.
    float norm2() const { return x * x + y * y; }
    /// Length.
    float norm() const;
    /// Scales to unit length by 1 / sqrt(norm2 + 1e-37): a null vector stays null.
    void normalizeSelf();
    /// A unit copy, as normalizeSelf makes it.
    Vector2 computeNormalize() const;
    /// True when the squared length is within the tolerance of 1.
    bool isNormalized(float tolerance) const;

    /// A copy turned counter-clockwise by the angle, in radians.
    Vector2 rotate(Angle angle) const;
    /// Turns counter-clockwise by the angle, in radians.
    void rotateSelf(Angle angle);
    /// A copy turned a quarter turn counter-clockwise: (-y, x).
    Vector2 rotate90() const { return Vector2(-y, x); }
    /// Turns a quarter turn counter-clockwise.
    void rotateSelf90();
    /// Direction from +X, counter-clockwise, in (-pi, pi]; 0 for the null vector.
    Angle getAngle() const;

    /// Componentwise sum, difference, negation, scaling and division; the compound forms change this vector.
    Vector2 operator+(const Vector2& other) const { return Vector2(x + other.x, y + other.y); }
    Vector2 operator-(const Vector2& other) const { return Vector2(x - other.x, y - other.y); }
    Vector2 operator-() const { return Vector2(-x, -y); }
    Vector2 operator*(float scale) const { return Vector2(x * scale, y * scale); }
    Vector2 operator/(float divisor) const { return Vector2(x / divisor, y / divisor); }
    Vector2& operator+=(const Vector2& other);
    Vector2& operator-=(const Vector2& other);
    Vector2& operator*=(float scale);
    Vector2& operator/=(float divisor);

    /// Lexicographic order: x first, then y.
    bool operator<(const Vector2& other) const { return x < other.x || (x == other.x && y < other.y); }
    /// Exact equality of both components.
    bool operator==(const Vector2& other) const { return x == other.x && y == other.y; }
    bool operator!=(const Vector2& other) const { return !(*this == other); }

    /// First component.
    float x = 0.0f;
    /// Second component.
    float y = 0.0f;
};

/// The vector scaled.
inline Vector2 operator*(float scale, const Vector2& v)
{
    return v * scale;
}

/// Scalar product.
inline float dotProduct(const Vector2& a, const Vector2& b)
{
    return a.x * b.x + a.y * b.y;
}

/// The z of the 3D cross product: positive when b lies counter-clockwise of a.
inline float crossProduct(const Vector2& a, const Vector2& b)
{
    return a.x * b.y - a.y * b.x;
}

/// Orders x then y, components closer than the tolerance counting as equal. Returns -1, 0 or 1.
int lexicoGraphicCompare(const Vector2& a, const Vector2& b, float tolerance = 0.0f);

/// True when the sine of the angle between a and b is at most the tolerance. A null vector is collinear with all.
bool areCollinear(const Vector2& a, const Vector2& b, float tolerance);

/// Signed angle turning a onto b, counter-clockwise positive, in (-pi, pi]; 0 when either is null.
Angle angle(const Vector2& a, const Vector2& b);

/// Weights (u, v, w) of a, b and c that give p, in the triangle's plane. False for a degenerate triangle.
bool computeBarycentricsCoordinates(const Vector2& p, const Vector2& a, const Vector2& b, const Vector2& c, float& u,
                                    float& v, float& w);

/// Writes "(x, y)", each to 9 significant digits, into the caller's buffer, cut to its size; returns the buffer.
const char* toString(const Vector2& v, char* buffer, size_t bufferSize);

} // namespace orv
