// orvCore/math/types/orvMatrix4.h
#pragma once

#include "math/types/orvAngle.h"
#include "math/types/orvVector3.h"
#include "math/types/orvVector4.h"

namespace orv
{

/// A 4x4 transform of four Vector4 rows acting on row vectors (v M): rows 0 to 2 are the images of X, Y and Z,
/// and the translation stands in row 3, which ends in 1. Products compose left first: v (A B) = (v A) B.
/// A plain value.
class Matrix4
{
public:
    /// The identity.
    constexpr Matrix4()
        : _matrix{Vector4(1.0f, 0.0f, 0.0f, 0.0f), Vector4(0.0f, 1.0f, 0.0f, 0.0f), Vector4(0.0f, 0.0f, 1.0f, 0.0f),
                  Vector4(0.0f, 0.0f, 0.0f, 1.0f)}
    {
    }
    /// The matrix with these rows.
    constexpr Matrix4(const Vector4& row0, const Vector4& row1, const Vector4& row2, const Vector4& row3)
        : _matrix{row0, row1, row2, row3}
    {
    }

    /// The unit matrix.
    static const Matrix4 identity;

    /// Row 0 to 3. Not checked.
    const Vector4& operator[](int row) const { return _matrix[row]; }
    Vector4& operator[](int row) { return _matrix[row]; }
    /// Row 0 without its w: the image of X.
    Vector3 right() const { return _matrix[0].getXYZ(); }
    /// Row 1 without its w: the image of Y.
    Vector3 up() const { return _matrix[1].getXYZ(); }
    /// Row 2 without its w: the image of Z.
    Vector3 dir() const { return _matrix[2].getXYZ(); }
    /// Row 3 without its w: the translation.
    Vector3 position() const { return _matrix[3].getXYZ(); }
    /// Sets the translation, keeping the 1 at the end of row 3.
    void setPosition(const Vector3& position);
    /// Column 0 to 3. Not checked.
    Vector4 column(int index) const;
    /// The sixteen terms, row after row.
    const float* floats() const { return &_matrix[0].x; }
    float* floats() { return &_matrix[0].x; }

    /// The determinant of the 4x4 matrix.
    float GetDeterminant() const;
    /// Transposes in place.
    void transpose();
    /// Becomes the inverse of source and returns true; returns false and stays unchanged when source is singular.
    /// With affine set, source is taken to end its columns in (0, 0, 0, 1) and the cheaper affine inverse is used.
    bool inverse(const Matrix4& source, bool affine);

    /// Becomes a right-handed perspective projection to clip space with depth in [-1, 1], the camera looking down
    /// -Z. fovY is the full vertical field in radians; aspect is width over height.
    void perspective(Angle fovY, float aspect, float zNear, float zFar);
    /// Becomes the perspective projection of the frustum with these near-plane bounds, as perspective.
    void frustum(float left, float right, float bottom, float top, float zNear, float zFar);
    /// Becomes an orthographic projection of the box to clip space, depth in [-1, 1], looking down -Z.
    void ortho(float left, float right, float bottom, float top, float zNear, float zFar);
    /// Becomes the right-handed view transform of lookAtRH.
    void lookAt(const Vector3& eye, const Vector3& target, const Vector3& upHint);
    /// Becomes the view transform, left-handed: the camera at eye looks down +Z towards target, Y near upHint.
    void lookAtLH(const Vector3& eye, const Vector3& target, const Vector3& upHint);
    /// Becomes the view transform, right-handed: the camera at eye looks down -Z towards target, Y near upHint.
    void lookAtRH(const Vector3& eye, const Vector3& target, const Vector3& upHint);
    /// Becomes the rotation by the angle, in radians, about the axis, counter-clockwise seen from its tip; the
    /// identity when the axis' squared length is below 0.001.
    void rotationAxis(const Vector3& axis, Angle angle);

    /// True when every term is within the tolerance of the other's.
    bool approxEqual(const Matrix4& other, float tolerance) const;

    /// This then other: v (this other).
    Matrix4 operator*(const Matrix4& other) const;
    /// The point (w = 1) transformed, translation included.
    Vector3 transformPoint(const Vector3& point) const;
    /// The direction (w = 0) transformed, translation left out.
    Vector3 transformVector(const Vector3& vector) const;
    /// Exact equality of the sixteen terms.
    bool operator==(const Matrix4& other) const;
    bool operator!=(const Matrix4& other) const { return !(*this == other); }

private:
    Vector4 _matrix[4];
};

/// The row vector times the matrix.
Vector4 operator*(const Vector4& v, const Matrix4& m);

} // namespace orv
