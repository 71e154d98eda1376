// orvCore/math/rotations/orvRotationMatrix.cpp
#include "math/rotations/orvRotationMatrix.h"

#include <cmath>

namespace orv
{

RotationMatrix::RotationMatrix()
{
    setToIdentity();
}

RotationMatrix::RotationMatrix(const Vector3& row0, const Vector3& row1, const Vector3& row2)
{
    _matrix[0] = row0;
    _matrix[1] = row1;
    _matrix[2] = row2;
}

RotationMatrix RotationMatrix::fromColumns(const Vector3& column0, const Vector3& column1, const Vector3& column2)
{
    return RotationMatrix(Vector3(column0.x, column1.x, column2.x), Vector3(column0.y, column1.y, column2.y),
                          Vector3(column0.z, column1.z, column2.z));
}

const RotationMatrix& RotationMatrix::getIdentity()
{
    static const RotationMatrix identity;
    return identity;
}

void RotationMatrix::setToIdentity()
{
    _matrix[0] = Vector3(1.0f, 0.0f, 0.0f);
    _matrix[1] = Vector3(0.0f, 1.0f, 0.0f);
    _matrix[2] = Vector3(0.0f, 0.0f, 1.0f);
}

Vector3 RotationMatrix::getColumn(int column) const
{
    return Vector3(_matrix[0][column], _matrix[1][column], _matrix[2][column]);
}

Vector3 RotationMatrix::operator*(const Vector3& v) const
{
    return Vector3(dotProduct(_matrix[0], v), dotProduct(_matrix[1], v), dotProduct(_matrix[2], v));
}

RotationMatrix RotationMatrix::operator*(const RotationMatrix& other) const
{
    RotationMatrix result;
    for (int row = 0; row < 3; ++row)
    {
        for (int column = 0; column < 3; ++column)
        {
            result._matrix[row][column] = _matrix[row][0] * other._matrix[0][column] +
                                          _matrix[row][1] * other._matrix[1][column] +
                                          _matrix[row][2] * other._matrix[2][column];
        }
    }
    return result;
}

RotationMatrix RotationMatrix::getTranspose() const
{
    return fromColumns(_matrix[0], _matrix[1], _matrix[2]);
}

float RotationMatrix::getDeterminant() const
{
    return dotProduct(_matrix[0], crossProduct(_matrix[1], _matrix[2]));
}

bool RotationMatrix::operator==(const RotationMatrix& other) const
{
    return _matrix[0] == other._matrix[0] && _matrix[1] == other._matrix[1] && _matrix[2] == other._matrix[2];
}

bool RotationMatrix::approxEqual(const RotationMatrix& other, float tolerance) const
{
    for (int row = 0; row < 3; ++row)
    {
        for (int column = 0; column < 3; ++column)
        {
            if (!(std::fabs(_matrix[row][column] - other._matrix[row][column]) <= tolerance))
            {
                return false;
            }
        }
    }
    return true;
}

} // namespace orv
