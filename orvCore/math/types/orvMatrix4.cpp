// orvCore/math/types/orvMatrix4.cpp
#include "math/types/orvMatrix4.h"

#include <cmath>

namespace orv
{

namespace
{

// Below this squared length an axis gives no direction to turn about.
const float kMinimalAxisNorm2 = 0.001f;

// The 2x2 minors of rows 0-1 (s) and rows 2-3 (c) of a row-major 4x4 matrix: the Laplace expansion along those
// row pairs gives both the determinant and the adjugate.
struct Minors
{
    explicit Minors(const float* m)
        : s0(m[0] * m[5] - m[4] * m[1]), s1(m[0] * m[6] - m[4] * m[2]), s2(m[0] * m[7] - m[4] * m[3]),
          s3(m[1] * m[6] - m[5] * m[2]), s4(m[1] * m[7] - m[5] * m[3]), s5(m[2] * m[7] - m[6] * m[3]),
          c0(m[8] * m[13] - m[12] * m[9]), c1(m[8] * m[14] - m[12] * m[10]), c2(m[8] * m[15] - m[12] * m[11]),
          c3(m[9] * m[14] - m[13] * m[10]), c4(m[9] * m[15] - m[13] * m[11]), c5(m[10] * m[15] - m[14] * m[11])
    {
    }

    float determinant() const { return s0 * c5 - s1 * c4 + s2 * c3 + s3 * c2 - s4 * c1 + s5 * c0; }

    float s0, s1, s2, s3, s4, s5;
    float c0, c1, c2, c3, c4, c5;
};

// The view transform of a camera at eye whose Z axis points along zDirection, Y near upHint. The two handed forms
// differ only in which way Z points.
Matrix4 viewTransform(const Vector3& eye, const Vector3& zDirection, const Vector3& upHint)
{
    Vector3 zAxis = zDirection;
    zAxis.normalizeSelf();
    Vector3 xAxis = crossProduct(upHint, zAxis);
    xAxis.normalizeSelf();
    const Vector3 yAxis = crossProduct(zAxis, xAxis);
    return Matrix4(Vector4(xAxis.x, yAxis.x, zAxis.x, 0.0f), Vector4(xAxis.y, yAxis.y, zAxis.y, 0.0f),
                   Vector4(xAxis.z, yAxis.z, zAxis.z, 0.0f),
                   Vector4(-dotProduct(xAxis, eye), -dotProduct(yAxis, eye), -dotProduct(zAxis, eye), 1.0f));
}

} // namespace

const Matrix4 Matrix4::identity;

void Matrix4::setPosition(const Vector3& position)
{
    _matrix[3] = Vector4(position, 1.0f);
}

Vector4 Matrix4::column(int index) const
{
    return Vector4(_matrix[0][index], _matrix[1][index], _matrix[2][index], _matrix[3][index]);
}

float Matrix4::GetDeterminant() const
{
    return Minors(floats()).determinant();
}

void Matrix4::transpose()
{
    const Matrix4 copy(*this);
    for (int row = 0; row < 4; ++row)
    {
        _matrix[row] = copy.column(row);
    }
}

bool Matrix4::inverse(const Matrix4& source, bool affine)
{
    const float* m = source.floats();
    if (affine)
    {
        // Inverse of the 3x3 part by its adjugate; the translation row goes through it negated.
        const Vector3 r0 = source.right();
        const Vector3 r1 = source.up();
        const Vector3 r2 = source.dir();
        const Vector3 c0 = crossProduct(r1, r2);
        const float det = dotProduct(r0, c0);
        if (det == 0.0f)
        {
            return false;
        }
        const float invDet = 1.0f / det;
        const Vector3 c1 = crossProduct(r2, r0);
        const Vector3 c2 = crossProduct(r0, r1);
        // The inverse of a matrix with rows r0, r1, r2 has columns c0, c1, c2 over the determinant.
        Matrix4 result(Vector4(c0.x * invDet, c1.x * invDet, c2.x * invDet, 0.0f),
                       Vector4(c0.y * invDet, c1.y * invDet, c2.y * invDet, 0.0f),
                       Vector4(c0.z * invDet, c1.z * invDet, c2.z * invDet, 0.0f), Vector4(0.0f, 0.0f, 0.0f, 1.0f));
        const Vector3 t = result.transformVector(source.position());
        result._matrix[3] = Vector4(-t.x, -t.y, -t.z, 1.0f);
        *this = result;
        return true;
    }
    const Minors minors(m);
    const float det = minors.determinant();
    if (det == 0.0f)
    {
        return false;
    }
    const float s0 = minors.s0, s1 = minors.s1, s2 = minors.s2, s3 = minors.s3, s4 = minors.s4, s5 = minors.s5;
    const float c0 = minors.c0, c1 = minors.c1, c2 = minors.c2, c3 = minors.c3, c4 = minors.c4, c5 = minors.c5;
    const float k = 1.0f / det;
    float r[16];
    r[0] = (m[5] * c5 - m[6] * c4 + m[7] * c3) * k;
    r[1] = (-m[1] * c5 + m[2] * c4 - m[3] * c3) * k;
    r[2] = (m[13] * s5 - m[14] * s4 + m[15] * s3) * k;
    r[3] = (-m[9] * s5 + m[10] * s4 - m[11] * s3) * k;
    r[4] = (-m[4] * c5 + m[6] * c2 - m[7] * c1) * k;
    r[5] = (m[0] * c5 - m[2] * c2 + m[3] * c1) * k;
    r[6] = (-m[12] * s5 + m[14] * s2 - m[15] * s1) * k;
    r[7] = (m[8] * s5 - m[10] * s2 + m[11] * s1) * k;
    r[8] = (m[4] * c4 - m[5] * c2 + m[7] * c0) * k;
    r[9] = (-m[0] * c4 + m[1] * c2 - m[3] * c0) * k;
    r[10] = (m[12] * s4 - m[13] * s2 + m[15] * s0) * k;
    r[11] = (-m[8] * s4 + m[9] * s2 - m[11] * s0) * k;
    r[12] = (-m[4] * c3 + m[5] * c1 - m[6] * c0) * k;
    r[13] = (m[0] * c3 - m[1] * c1 + m[2] * c0) * k;
    r[14] = (-m[12] * s3 + m[13] * s1 - m[14] * s0) * k;
    r[15] = (m[8] * s3 - m[9] * s1 + m[10] * s0) * k;
    for (int row = 0; row < 4; ++row)
    {
        _matrix[row] = Vector4(r[4 * row], r[4 * row + 1], r[4 * row + 2], r[4 * row + 3]);
    }
    return true;
}

void Matrix4::perspective(Angle fovY, float aspect, float zNear, float zFar)
{
    const float f = 1.0f / std::tan(fovY * 0.5f);
    const float depth = zNear - zFar;
    *this = Matrix4(Vector4(f / aspect, 0.0f, 0.0f, 0.0f), Vector4(0.0f, f, 0.0f, 0.0f),
                    Vector4(0.0f, 0.0f, (zFar + zNear) / depth, -1.0f),
                    Vector4(0.0f, 0.0f, 2.0f * zFar * zNear / depth, 0.0f));
}

void Matrix4::frustum(float left, float right, float bottom, float top, float zNear, float zFar)
{
    const float width = right - left;
    const float height = top - bottom;
    const float depth = zFar - zNear;
    *this = Matrix4(Vector4(2.0f * zNear / width, 0.0f, 0.0f, 0.0f), Vector4(0.0f, 2.0f * zNear / height, 0.0f, 0.0f),
                    Vector4((right + left) / width, (top + bottom) / height, -(zFar + zNear) / depth, -1.0f),
                    Vector4(0.0f, 0.0f, -2.0f * zFar * zNear / depth, 0.0f));
}

void Matrix4::ortho(float left, float right, float bottom, float top, float zNear, float zFar)
{
    const float width = right - left;
    const float height = top - bottom;
    const float depth = zFar - zNear;
    *this = Matrix4(Vector4(2.0f / width, 0.0f, 0.0f, 0.0f), Vector4(0.0f, 2.0f / height, 0.0f, 0.0f),
                    Vector4(0.0f, 0.0f, -2.0f / depth, 0.0f),
                    Vector4(-(right + left) / width, -(top + bottom) / height, -(zFar + zNear) / depth, 1.0f));
}

void Matrix4::lookAt(const Vector3& eye, const Vector3& target, const Vector3& upHint)
{
    lookAtRH(eye, target, upHint);
}

void Matrix4::lookAtLH(const Vector3& eye, const Vector3& target, const Vector3& upHint)
{
    // Z points from the camera to the target.
    *this = viewTransform(eye, target - eye, upHint);
}

void Matrix4::lookAtRH(const Vector3& eye, const Vector3& target, const Vector3& upHint)
{
    // Z points from the target back to the camera.
    *this = viewTransform(eye, eye - target, upHint);
}

void Matrix4::rotationAxis(const Vector3& axis, Angle angle)
{
    if (axis.norm2() < kMinimalAxisNorm2)
    {
        *this = identity;
        return;
    }
    const Vector3 u = axis.computeNormalize();
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    const float t = 1.0f - c;
    const float x = u.x;
    const float y = u.y;
    const float z = u.z;
    *this =
        Matrix4(Vector4(x * x * t + c, x * y * t + z * s, x * z * t - y * s, 0.0f),
                Vector4(x * y * t - z * s, y * y * t + c, y * z * t + x * s, 0.0f),
                Vector4(x * z * t + y * s, y * z * t - x * s, z * z * t + c, 0.0f), Vector4(0.0f, 0.0f, 0.0f, 1.0f));
}

bool Matrix4::approxEqual(const Matrix4& other, float tolerance) const
{
    const float* a = floats();
    const float* b = other.floats();
    for (int i = 0; i < 16; ++i)
    {
        if (!(std::fabs(a[i] - b[i]) <= tolerance))
        {
            return false;
        }
    }
    return true;
}

Matrix4 Matrix4::operator*(const Matrix4& other) const
{
    return Matrix4(_matrix[0] * other, _matrix[1] * other, _matrix[2] * other, _matrix[3] * other);
}

Vector3 Matrix4::transformPoint(const Vector3& point) const
{
    return (Vector4(point, 1.0f) * *this).getXYZ();
}

Vector3 Matrix4::transformVector(const Vector3& vector) const
{
    return (Vector4(vector, 0.0f) * *this).getXYZ();
}

bool Matrix4::operator==(const Matrix4& other) const
{
    return _matrix[0] == other._matrix[0] && _matrix[1] == other._matrix[1] && _matrix[2] == other._matrix[2] &&
           _matrix[3] == other._matrix[3];
}

Vector4 operator*(const Vector4& v, const Matrix4& m)
{
    return Vector4(v.x * m[0].x + v.y * m[1].x + v.z * m[2].x + v.w * m[3].x,
                   v.x * m[0].y + v.y * m[1].y + v.z * m[2].y + v.w * m[3].y,
                   v.x * m[0].z + v.y * m[1].z + v.z * m[2].z + v.w * m[3].z,
                   v.x * m[0].w + v.y * m[1].w + v.z * m[2].w + v.w * m[3].w);
}

} // namespace orv
