// orvCore/math/rotations/orvRotationMatrix.h
#pragma once

#include "math/types/orvVector3.h"

namespace orv
{

/// A 3x3 rotation matrix of three Vector3 rows. It acts on column vectors (M v): its columns are the images of
/// the X, Y and Z axes. A plain value.
class RotationMatrix
{
public:
    /// The identity.
    RotationMatrix();
    /// The matrix with these rows.
    RotationMatrix(const Vector3& row0, const Vector3& row1, const Vector3& row2);
    /// The matrix whose columns are these: the images of X, Y and Z.
    static RotationMatrix fromColumns(const Vector3& column0, const Vector3& column1, const Vector3& column2);

    /// The shared identity, built on first use.
    static const RotationMatrix& getIdentity();
    /// Becomes the identity.
    void setToIdentity();

    /// Row 0 to 2. Not checked.
    const Vector3& operator[](int row) const { return _matrix[row]; }
    Vector3& operator[](int row) { return _matrix[row]; }
    /// Column 0 to 2: the image of axis X, Y or Z. Not checked.
    Vector3 getColumn(int column) const;

    /// M v.
    Vector3 operator*(const Vector3& v) const;
    /// This times other: other applies first.
    RotationMatrix operator*(const RotationMatrix& other) const;
    /// The transpose, which is the inverse of a true rotation.
    RotationMatrix getTranspose() const;
    /// The determinant: 1 for a true rotation.
    float getDeterminant() const;

    /// Exact equality of the nine terms.
    bool operator==(const RotationMatrix& other) const;
    bool operator!=(const RotationMatrix& other) const { return !(*this == other); }
    /// True when every term is within the tolerance of the other's.
    bool approxEqual(const RotationMatrix& other, float tolerance) const;

private:
    Vector3 _matrix[3];
};

} // namespace orv
