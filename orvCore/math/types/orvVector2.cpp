// orvCore/math/types/orvVector2.cpp
#include "math/types/orvVector2.h"

#include <cmath>

#include "math/types/orvVectorComponents.h"

namespace orv
{

namespace
{

using Components = VectorComponents<2>;

} // namespace

const Vector2& Vector2::getNullVector()
{
    static const Vector2 nullVector;
    return nullVector;
}

float Vector2::norm() const
{
    return std::sqrt(norm2());
}

void Vector2::normalizeSelf()
{
    Components::normalize(&x, norm2());
}

Vector2 Vector2::computeNormalize() const
{
    Vector2 result(*this);
    result.normalizeSelf();
    return result;
}

bool Vector2::isNormalized(float tolerance) const
{
    return std::fabs(norm2() - 1.0f) <= tolerance;
}

Vector2 Vector2::rotate(Angle angle) const
{
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    return Vector2(x * c - y * s, x * s + y * c);
}

void Vector2::rotateSelf(Angle angle)
{
    *this = rotate(angle);
}

void Vector2::rotateSelf90()
{
    *this = rotate90();
}

Angle Vector2::getAngle() const
{
    return std::atan2(y, x);
}

Vector2& Vector2::operator+=(const Vector2& other)
{
    Components::add(&x, &other.x);
    return *this;
}

Vector2& Vector2::operator-=(const Vector2& other)
{
    Components::subtract(&x, &other.x);
    return *this;
}

Vector2& Vector2::operator*=(float scale)
{
    Components::scale(&x, scale);
    return *this;
}

Vector2& Vector2::operator/=(float divisor)
{
    Components::divide(&x, divisor);
    return *this;
}

int lexicoGraphicCompare(const Vector2& a, const Vector2& b, float tolerance)
{
    return Components::compare(&a.x, &b.x, tolerance);
}

bool areCollinear(const Vector2& a, const Vector2& b, float tolerance)
{
    const float cross = crossProduct(a, b);
    return cross * cross <= tolerance * tolerance * a.norm2() * b.norm2();
}

Angle angle(const Vector2& a, const Vector2& b)
{
    // atan2 of the sine and cosine terms keeps full precision near 0 and pi, where acos does not.
    return std::atan2(crossProduct(a, b), dotProduct(a, b));
}

bool computeBarycentricsCoordinates(const Vector2& p, const Vector2& a, const Vector2& b, const Vector2& c, float& u,
                                    float& v, float& w)
{
    const Vector2 ab = b - a;
    const Vector2 ac = c - a;
    const float area = crossProduct(ab, ac);
    if (area == 0.0f)
    {
        u = v = w = 0.0f;
        return false;
    }
    const Vector2 ap = p - a;
    v = crossProduct(ap, ac) / area;
    w = crossProduct(ab, ap) / area;
    u = 1.0f - v - w;
    return true;
}

const char* toString(const Vector2& v, char* buffer, size_t bufferSize)
{
    return Components::write(&v.x, buffer, bufferSize);
}

} // namespace orv
