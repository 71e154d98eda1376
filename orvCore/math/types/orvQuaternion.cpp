// orvCore/math/types/orvQuaternion.cpp
#include "math/types/orvQuaternion.h"

#include <cmath>

#include "math/types/orvVectorComponents.h"

namespace orv
{

namespace
{

using Components = VectorComponents<4>;

// Below this cosine the spherical weights are well conditioned; above it sin(t) is too small to divide by.
const float kSlerpCosineLimit = 0.9999f;

} // namespace

const Quaternion& Quaternion::getNullVector()
{
    static const Quaternion nullQuaternion(0.0f, 0.0f, 0.0f, 0.0f);
    return nullQuaternion;
}

const Quaternion& Quaternion::getIdentity()
{
    static const Quaternion identity(0.0f, 0.0f, 0.0f, 1.0f);
    return identity;
}

void Quaternion::setPivotX(Angle angle)
{
    const float half = angle * 0.5f;
    *this = Quaternion(std::sin(half), 0.0f, 0.0f, std::cos(half));
}

void Quaternion::setPivotY(Angle angle)
{
    const float half = angle * 0.5f;
    *this = Quaternion(0.0f, std::sin(half), 0.0f, std::cos(half));
}

void Quaternion::setPivotZ(Angle angle)
{
    const float half = angle * 0.5f;
    *this = Quaternion(0.0f, 0.0f, std::sin(half), std::cos(half));
}

void Quaternion::normalizeSelf()
{
    Components::normalize(&x, norm2());
}

Vector3 Quaternion::operator*(const Vector3& v) const
{
    // The rows of the rotation matrix of a unit quaternion, the same terms as toRotationMatrix.
    const float xx = x * x;
    const float yy = y * y;
    const float zz = z * z;
    const float xy = x * y;
    const float xz = x * z;
    const float yz = y * z;
    const float wx = w * x;
    const float wy = w * y;
    const float wz = w * z;
    const float m00 = 1.0f - 2.0f * (yy + zz);
    const float m01 = 2.0f * (xy - wz);
    const float m02 = 2.0f * (xz + wy);
    const float m10 = 2.0f * (xy + wz);
    const float m11 = 1.0f - 2.0f * (xx + zz);
    const float m12 = 2.0f * (yz - wx);
    const float m20 = 2.0f * (xz - wy);
    const float m21 = 2.0f * (yz + wx);
    const float m22 = 1.0f - 2.0f * (xx + yy);
    return Vector3(m00 * v.x + m01 * v.y + m02 * v.z, m10 * v.x + m11 * v.y + m12 * v.z,
                   m20 * v.x + m21 * v.y + m22 * v.z);
}

Quaternion Quaternion::operator*(const Quaternion& q) const
{
    return Quaternion(w * q.x + x * q.w + y * q.z - z * q.y, w * q.y - x * q.z + y * q.w + z * q.x,
                      w * q.z + x * q.y - y * q.x + z * q.w, w * q.w - x * q.x - y * q.y - z * q.z);
}

void Quaternion::multiplySelfNoReturn(const Quaternion& q)
{
    *this = *this * q;
}

void Quaternion::multiplyAlphaQuat(const Quaternion& q, float alpha)
{
    // A NaN fails this comparison and goes on into the blend.
    if (alpha <= 0.0f)
    {
        return;
    }
    if (alpha >= 1.0f)
    {
        // A copy and not a product: callers rely on it.
        *this = q;
        return;
    }
    float cosine = q.w;
    float sign = 1.0f;
    if (cosine < 0.0f)
    {
        cosine = -cosine;
        sign = -1.0f;
    }
    float identityWeight;
    float qWeight;
    if (cosine < kSlerpCosineLimit)
    {
        const float t = std::acos(cosine);
        const float sinT = std::sin(t);
        identityWeight = std::sin((1.0f - alpha) * t) / sinT;
        qWeight = std::sin(alpha * t) / sinT;
    }
    else
    {
        identityWeight = 1.0f - alpha;
        qWeight = alpha;
    }
    qWeight *= sign;
    Quaternion fraction = q * qWeight;
    fraction.w += identityWeight;
    multiplySelfNoReturn(fraction);
}

float Quaternion::dotProduct(const Quaternion& a, const Quaternion& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
}

Angle Quaternion::angularDistance(const Quaternion& a, const Quaternion& b)
{
    const Quaternion aNegatedW(a.x, a.y, a.z, -a.w);
    float cosine = std::fabs((aNegatedW * b).w);
    if (cosine > 1.0f)
    {
        cosine = 1.0f;
    }
    return std::fabs(2.0f * std::acos(cosine));
}

Quaternion Quaternion::getRotationBetweenUnitVectors(const Vector3& from, const Vector3& to)
{
    const float cosine = orv::dotProduct(from, to);
    if (cosine < -0.999999f)
    {
        // Opposite vectors: any axis normal to from will do; X unless from is nearly along it.
        Vector3 axis = crossProduct(Vector3(1.0f, 0.0f, 0.0f), from);
        if (axis.norm2() < 1.0e-6f)
        {
            axis = crossProduct(Vector3(0.0f, 1.0f, 0.0f), from);
        }
        axis.normalizeSelf();
        return Quaternion(axis.x, axis.y, axis.z, 0.0f);
    }
    // (from x to, 1 + from . to) is the wanted rotation scaled by 2 cos(angle / 2); normalising removes the scale.
    const Vector3 axis = crossProduct(from, to);
    Quaternion result(axis.x, axis.y, axis.z, 1.0f + cosine);
    result.normalizeSelf();
    return result;
}

void Quaternion::quaternionTranslationToDualQuaternion(const Quaternion& q, const Vector3& t, Quaternion& outReal,
                                                       Quaternion& outDual)
{
    outReal = q;
    outDual = (Quaternion(t.x, t.y, t.z, 0.0f) * q) * 0.5f;
}

Vector3 rotateVecByQuat(const Vector3& v, const Quaternion& q)
{
    const Vector3 u(q.x, q.y, q.z);
    const Vector3 t = crossProduct(u, v) * 2.0f;
    return v + t * q.w + crossProduct(u, t);
}

const char* toString(const Quaternion& q, char* buffer, size_t bufferSize)
{
    return Components::write(&q.x, buffer, bufferSize);
}

} // namespace orv
