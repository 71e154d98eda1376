// orvCore/math/types/orvVector4.cpp
#include "math/types/orvVector4.h"

#include <cmath>
#include <cstdio>

#include "math/types/orvVector3.h"

namespace orv
{

namespace
{

const float kMinimalNorm2 = 1.0e-37f;

int compareWithTolerance(float a, float b, float tolerance)
{
    if (std::fabs(a - b) <= tolerance)
    {
        return 0;
    }
    return a < b ? -1 : 1;
}

} // namespace

Vector4::Vector4(const Vector3& v, float wValue) : x(v.x), y(v.y), z(v.z), w(wValue)
{
}

const Vector4& Vector4::getNullVector()
{
    static const Vector4 nullVector;
    return nullVector;
}

Vector3 Vector4::getXYZ() const
{
    return Vector3(x, y, z);
}

float Vector4::norm() const
{
    return std::sqrt(norm2());
}

void Vector4::normalizeSelf()
{
    // The tiny bias keeps a null vector null without a branch.
    const float scale = 1.0f / std::sqrt(norm2() + kMinimalNorm2);
    x *= scale;
    y *= scale;
    z *= scale;
    w *= scale;
}

Vector4 Vector4::computeNormalize() const
{
    Vector4 result(*this);
    result.normalizeSelf();
    return result;
}

bool Vector4::isNormalized(float tolerance) const
{
    return std::fabs(norm2() - 1.0f) <= tolerance;
}

Vector4& Vector4::operator+=(const Vector4& other)
{
    x += other.x;
    y += other.y;
    z += other.z;
    w += other.w;
    return *this;
}

Vector4& Vector4::operator-=(const Vector4& other)
{
    x -= other.x;
    y -= other.y;
    z -= other.z;
    w -= other.w;
    return *this;
}

Vector4& Vector4::operator*=(float scale)
{
    x *= scale;
    y *= scale;
    z *= scale;
    w *= scale;
    return *this;
}

Vector4& Vector4::operator/=(float divisor)
{
    x /= divisor;
    y /= divisor;
    z /= divisor;
    w /= divisor;
    return *this;
}

bool Vector4::operator<(const Vector4& other) const
{
    for (int i = 0; i < 4; ++i)
    {
        if ((*this)[i] != other[i])
        {
            return (*this)[i] < other[i];
        }
    }
    return false;
}

int lexicoGraphicCompare(const Vector4& a, const Vector4& b, float tolerance)
{
    for (int i = 0; i < 4; ++i)
    {
        const int result = compareWithTolerance(a[i], b[i], tolerance);
        if (result != 0)
        {
            return result;
        }
    }
    return 0;
}

const char* toString(const Vector4& v, char* buffer, size_t bufferSize)
{
    if (bufferSize > 0)
    {
        snprintf(buffer, bufferSize, "(%.9g, %.9g, %.9g, %.9g)", static_cast<double>(v.x), static_cast<double>(v.y),
                 static_cast<double>(v.z), static_cast<double>(v.w));
    }
    return buffer;
}

} // namespace orv
