#include <gtest/gtest.h>

#include "math/rotations/orvRotationMatrix.h"

namespace
{

using orv::RotationMatrix;
using orv::Vector3;

// A quarter turn about +Z, written by its columns: X goes to Y, Y goes to -X.
const RotationMatrix kQuarterZ =
    RotationMatrix::fromColumns(Vector3(0.0f, 1.0f, 0.0f), Vector3(-1.0f, 0.0f, 0.0f), Vector3(0.0f, 0.0f, 1.0f));
// A quarter turn about +X: Y goes to Z, Z goes to -Y.
const RotationMatrix kQuarterX =
    RotationMatrix::fromColumns(Vector3(1.0f, 0.0f, 0.0f), Vector3(0.0f, 0.0f, 1.0f), Vector3(0.0f, -1.0f, 0.0f));

TEST(RotationMatrixTest, ActsOnColumnVectors)
{
    EXPECT_EQ(Vector3(0.0f, 1.0f, 0.0f), kQuarterZ * Vector3(1.0f, 0.0f, 0.0f));
    EXPECT_EQ(Vector3(-1.0f, 0.0f, 0.0f), kQuarterZ * Vector3(0.0f, 1.0f, 0.0f));
    EXPECT_EQ(Vector3(0.0f, 1.0f, 0.0f), kQuarterZ.getColumn(0));
    EXPECT_EQ(Vector3(0.0f, -1.0f, 0.0f), kQuarterZ[0]);
}

TEST(RotationMatrixTest, ProductAppliesTheRightOperandFirst)
{
    const Vector3 v(0.0f, 1.0f, 0.0f);
    // X first: Y to Z; then Z leaves Z alone.
    EXPECT_EQ(Vector3(0.0f, 0.0f, 1.0f), (kQuarterZ * kQuarterX) * v);
    EXPECT_EQ(kQuarterZ * (kQuarterX * v), (kQuarterZ * kQuarterX) * v);
}

} // namespace
