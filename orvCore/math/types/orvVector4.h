// orvCore/math/types/orvVector4.h
#pragma once

#include <cstddef>

namespace orv
{

class Vector3;

/// Four 32-bit floats: a homogeneous point, a matrix row or any 4-component value. A plain value.
class Vector4
{
public:
    /// The null vector.
    constexpr Vector4() = default;
    /// The vector with these components.
    constexpr Vector4(float xValue, float yValue, float zValue, float wValue)
        : x(xValue), y(yValue), z(zValue), w(wValue)
    {
    }
    /// (v.x, v.y, v.z, w).
    Vector4(const Vector3& v, float wValue);

    /// The shared null vector, built on first use.
    static const Vector4& getNullVector();

    /// True when all four components are exactly 0.
    bool isNull() const { return x == 0.0f && y == 0.0f && z == 0.0f && w == 0.0f; }
    /// Sets every component to 0.
    void setNull() { x = y = z = w = 0.0f; }
    /// Sets all four components to the value.
    void fill(float value) { x = y = z = w = value; }
    /// Sets the components, in order.
    void setValues(float xValue, float yValue, float zValue, float wValue)
    {
        x = xValue;
        y = yValue;
        z = zValue;
        w = wValue;
    }

    /// Component 0 (x) to 3 (w). Not checked.
    float& operator[](int index) { return (&x)[index]; }
    float operator[](int index) const { return (&x)[index]; }
    /// The four components, in order.
    const float* getFloatValues() const { return &x; }
    float* touchFloatValues() { return &x; }
    /// (x, y, z).
    Vector3 getXYZ() const;

    /// Squared length over the four components.
    float norm2() const { return x * x + y * y + z * z + w * w; }
    /// Length over the four components.
    float norm() const;
    /// Scales to unit length by 1 / sqrt(norm2 + 1e-37): a null vector stays null.
    void normalizeSelf();
    /// A unit copy, as normalizeSelf makes it.
    Vector4 computeNormalize() const;
    /// True when the squared length is within the tolerance of 1.
    bool isNormalized(float tolerance) const;

    /// Componentwise sum, difference, negation, scaling and division; the compound forms change this vector.
    Vector4 operator+(const Vector4& o) const { return Vector4(x + o.x, y + o.y, z + o.z, w + o.w); }
    Vector4 operator-(const Vector4& o) const { return Vector4(x - o.x, y - o.y, z - o.z, w - o.w); }
    Vector4 operator-() const { return Vector4(-x, -y, -z, -w); }
    Vector4 operator*(float s) const { return Vector4(x * s, y * s, z * s, w * s); }
    Vector4 operator/(float d) const { return Vector4(x / d, y / d, z / d, w / d); }
    Vector4& operator+=(const Vector4& other);
    Vector4& operator-=(const Vector4& other);
    Vector4& operator*=(float scale);
    Vector4& operator/=(float divisor);

    /// Lexicographic order on x, y, z, w.
    bool operator<(const Vector4& other) const;
    /// Exact equality of the four components.
    bool operator==(const Vector4& o) const { return x == o.x && y == o.y && z == o.z && w == o.w; }
    bool operator!=(const Vector4& other) const { return !(*this == other); }

    /// First component.
    float x = 0.0f;
    /// Second component.
    float y = 0.0f;
    /// Third component.
    float z = 0.0f;
    /// Fourth component.
    float w = 0.0f;
};

/// The vector scaled.
inline Vector4 operator*(float scale, const Vector4& v)
{
    return v * scale;
}

/// Scalar product over the four components.
inline float dotProduct(const Vector4& a, const Vector4& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
}

/// Orders x, y, z, then w, components closer than the tolerance counting as equal. Returns -1, 0 or 1.
int lexicoGraphicCompare(const Vector4& a, const Vector4& b, float tolerance = 0.0f);

/// Writes "(x, y, z, w)", each to 9 significant digits, into the caller's buffer, cut to its size; returns it.
const char* toString(const Vector4& v, char* buffer, size_t bufferSize);

} // namespace orv
