#include <gtest/gtest.h>

#include "math/rotations/orvRotationMatrix.h"

namespace
{

using orv::RotationMatrix;
using orv::Vector3;

TEST(RotationMatrixTest, ActsOnColumnVectorsAndTheRightOperandAppliesFirst)
{
    // Quarter turns written by their columns: about +Z, X goes to Y; about +X, Y goes to Z.
    const RotationMatrix quarterZ =
        RotationMatrix::fromColumns(Vector3(0.0f, 1.0f, 0.0f), Vector3(-1.0f, 0.0f, 0.0f), Vector3(0.0f, 0.0f, 1.0f));
    const RotationMatrix quarterX =
        RotationMatrix::fromColumns(Vector3(1.0f, 0.0f, 0.0f), Vector3(0.0f, 0.0f, 1.0f), Vector3(0.0f, -1.0f, 0.0f));
    EXPECT_EQ(Vector3(0.0f, 1.0f, 0.0f), quarterZ * Vector3(1.0f, 0.0f, 0.0f));
    EXPECT_EQ(Vector3(-1.0f, 0.0f, 0.0f), quarterZ * Vector3(0.0f, 1.0f, 0.0f));
    EXPECT_EQ(Vector3(0.0f, -1.0f, 0.0f), quarterZ[0]);
    // X first: Y to Z; then Z leaves Z alone.
    EXPECT_EQ(Vector3(0.0f, 0.0f, 1.0f), (quarterZ * quarterX) * Vector3(0.0f, 1.0f, 0.0f));
}

} // namespace
