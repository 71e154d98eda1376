// orvCore/math/types/orvVector3.cpp
#include "math/types/orvVector3.h"

#include <cmath>

#include "math/types/orvVectorComponents.h"

#ifdef __SSE__
#include <xmmintrin.h>
#endif

namespace orv
{

namespace
{

using Components = VectorComponents<3>;

} // namespace

const Vector3& Vector3::getNullVector()
{
    static const Vector3 nullVector;
    return nullVector;
}

float Vector3::norm() const
{
    return std::sqrt(norm2());
}

void Vector3::normalizeSelf()
{
    // The bias keeps s above 0, so a null vector gets a finite scale and stays null without a branch.
    const float s = x * x + y * y + z * z + minimalFloatValueToAvoidTestingForNullity;
#ifdef __SSE__
    const __m128 lanes = _mm_loadu_ps(&x);
    const __m128 estimate = _mm_rsqrt_ss(_mm_set_ss(s));
    const float r = _mm_cvtss_f32(estimate);
    // One Newton-Raphson step takes the 12-bit estimate to about 22 bits.
    const float scale = r * (1.5f - 0.5f * s * r * r);
    _mm_storeu_ps(&x, _mm_mul_ps(lanes, _mm_set1_ps(scale)));
#else
    const float scale = 1.0f / std::sqrt(s);
    x *= scale;
    y *= scale;
    z *= scale;
    _alignmentValue *= scale;
#endif
}

Vector3 Vector3::computeNormalize() const
{
    Vector3 result(*this);
    result.normalizeSelf();
    return result;
}

bool Vector3::isNormalized(float tolerance) const
{
    return std::fabs(norm2() - 1.0f) <= tolerance;
}

Vector2 Vector3::project(Axis::Value axis) const
{
    switch (axis)
    {
    case Axis::X:
        return Vector2(y, z);
    case Axis::Y:
        return Vector2(x, z);
    default:
        return Vector2(x, y);
    }
}

Vector3 Vector3::computeRotateZ(Angle angle) const
{
    const Vector2 turned = projectZ().rotate(angle);
    return Vector3(turned.x, turned.y, z);
}

void Vector3::rotateZSelf(Angle angle)
{
    *this = computeRotateZ(angle);
}

Vector3& Vector3::operator+=(const Vector3& other)
{
    Components::add(&x, &other.x);
    return *this;
}

Vector3& Vector3::operator-=(const Vector3& other)
{
    Components::subtract(&x, &other.x);
    return *this;
}

Vector3& Vector3::operator*=(float scale)
{
    Components::scale(&x, scale);
    return *this;
}

Vector3& Vector3::operator/=(float divisor)
{
    Components::divide(&x, divisor);
    return *this;
}

bool Vector3::operator<(const Vector3& other) const
{
    return Components::less(&x, &other.x);
}

int lexicoGraphicCompare(const Vector3& a, const Vector3& b, float tolerance)
{
    return Components::compare(&a.x, &b.x, tolerance);
}

bool areCollinear(const Vector3& a, const Vector3& b, float tolerance)
{
    return crossProduct(a, b).norm2() <= tolerance * tolerance * a.norm2() * b.norm2();
}

Angle angle(const Vector3& a, const Vector3& b)
{
    // atan2 of the sine and cosine terms keeps full precision near 0 and pi, where acos does not; a null operand
    // gives atan2(0, 0), which is 0.
    return std::atan2(crossProduct(a, b).norm(), dotProduct(a, b));
}

Angle findNearestUnitAxis(Vector3& out, const Vector3& v)
{
    static const Vector3 axes[6] = {Vector3(1.0f, 0.0f, 0.0f),  Vector3(0.0f, 1.0f, 0.0f),  Vector3(0.0f, 0.0f, 1.0f),
                                    Vector3(-1.0f, 0.0f, 0.0f), Vector3(0.0f, -1.0f, 0.0f), Vector3(0.0f, 0.0f, -1.0f)};
    Angle angles[6];
    Angle smallest = 0.0f;
    for (int i = 0; i < 6; ++i)
    {
        angles[i] = std::fabs(angle(v, axes[i]));
        smallest = (i == 0 || angles[i] < smallest) ? angles[i] : smallest;
    }
    // Searching for equality in axis order sends a tie to the earlier axis.
    for (int i = 0; i < 6; ++i)
    {
        if (angles[i] == smallest)
        {
            out = axes[i];
            break;
        }
    }
    return smallest;
}

bool computeBarycentricsCoordinates(const Vector3& p, const Vector3& a, const Vector3& b, const Vector3& c, float& u,
                                    float& v, float& w)
{
    const Vector3 ab = b - a;
    const Vector3 ac = c - a;
    const Vector3 ap = p - a;
    const float d00 = dotProduct(ab, ab);
    const float d01 = dotProduct(ab, ac);
    const float d11 = dotProduct(ac, ac);
    const float d20 = dotProduct(ap, ab);
    const float d21 = dotProduct(ap, ac);
    const float denominator = d00 * d11 - d01 * d01;
    if (denominator == 0.0f)
    {
        u = v = w = 0.0f;
        return false;
    }
    v = (d11 * d20 - d01 * d21) / denominator;
    w = (d00 * d21 - d01 * d20) / denominator;
    u = 1.0f - v - w;
    return true;
}

const char* toString(const Vector3& v, char* buffer, size_t bufferSize)
{
    return Components::write(&v.x, buffer, bufferSize);
}

} // namespace orv
