// orvCore/math/types/orvVector4.cpp
#include "math/types/orvVector4.h"

#include <cmath>

#include "math/types/orvVector3.h"
#include "math/types/orvVectorComponents.h"

namespace orv
{

namespace
{

using Components = VectorComponents<4>;

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
    Components::normalize(&x, norm2());
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
    Components::add(&x, &other.x);
    return *this;
}

Vector4& Vector4::operator-=(const Vector4& other)
{
    Components::subtract(&x, &other.x);
    return *this;
}

Vector4& Vector4::operator*=(float scale)
{
    Components::scale(&x, scale);
    return *this;
}

Vector4& Vector4::operator/=(float divisor)
{
    Components::divide(&x, divisor);
    return *this;
}

bool Vector4::operator<(const Vector4& other) const
{
    return Components::less(&x, &other.x);
}

int lexicoGraphicCompare(const Vector4& a, const Vector4& b, float tolerance)
{
    return Components::compare(&a.x, &b.x, tolerance);
}

const char* toString(const Vector4& v, char* buffer, size_t bufferSize)
{
    return Components::write(&v.x, buffer, bufferSize);
}

} // namespace orv
