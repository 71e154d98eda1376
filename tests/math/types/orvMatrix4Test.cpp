#include <gtest/gtest.h>

#include "math/conversions/orvConversions.h"
#include "math/orvMathExpect.h"
#include "math/types/orvMatrix4.h"

namespace
{

using orv::Matrix4;
using orv::Vector3;
using orv::Vector4;
using orvtest::expectNear;

Matrix4 translation(const Vector3& t)
{
    Matrix4 m;
    m.setPosition(t);
    return m;
}

Matrix4 rotation(const Vector3& axis, float angle)
{
    Matrix4 m;
    m.rotationAxis(axis, angle);
    return m;
}

TEST(Matrix4Test, ActsOnRowVectorsAndTheLeftOperandAppliesFirst)
{
    const Matrix4 move = translation(Vector3(5.0f, 0.0f, 0.0f));
    EXPECT_EQ(Vector4(5.0f, 0.0f, 0.0f, 1.0f), move[3]);
    EXPECT_EQ(Vector4(15.0f, 0.0f, 0.0f, 1.0f), Vector4(10.0f, 0.0f, 0.0f, 1.0f) * move);
    EXPECT_EQ(Vector3(15.0f, 0.0f, 0.0f), move.transformPoint(Vector3(10.0f, 0.0f, 0.0f)));
    EXPECT_EQ(Vector3(10.0f, 0.0f, 0.0f), move.transformVector(Vector3(10.0f, 0.0f, 0.0f)));

    const Matrix4 turn = rotation(Vector3(0.0f, 0.0f, 1.0f), orv::kHalfPi);
    // Turn then move: X goes to Y, then to (5, 1, 0).
    expectNear(Vector3(5.0f, 1.0f, 0.0f), (turn * move).transformPoint(Vector3(1.0f, 0.0f, 0.0f)), 1.0e-6f);
    // Move then turn: X goes to (6, 0, 0), then to (0, 6, 0).
    expectNear(Vector3(0.0f, 6.0f, 0.0f), (move * turn).transformPoint(Vector3(1.0f, 0.0f, 0.0f)), 1.0e-5f);
}

TEST(Matrix4Test, RotationAxisTurnsLikeTheQuaternionOfTheSameAxis)
{
    const Vector3 axis(1.0f, -2.0f, 0.5f);
    const Matrix4 m = rotation(axis * 3.0f, 1.1f);
    const orv::Quaternion q = orv::toQuaternion(orv::AxisAngle(axis.computeNormalize(), 1.1f));
    const Vector3 v(0.3f, 0.7f, -1.2f);
    expectNear(q * v, m.transformVector(v), 1.0e-5f);
    // A null axis has no direction to normalise: no turn at all.
    EXPECT_EQ(Matrix4::identity, rotation(Vector3(), 1.0f));
}

TEST(Matrix4Test, InverseUndoesTheTransformOrFailsAndChangesNothing)
{
    Matrix4 m = rotation(Vector3(0.2f, 1.0f, -0.3f), 0.8f) * translation(Vector3(4.0f, -1.0f, 2.5f));
    m[0] = m[0] * 2.0f; // a scale keeps it affine but not rigid
    Matrix4 inverse;
    for (bool affine : {false, true})
    {
        ASSERT_TRUE(inverse.inverse(m, affine));
        EXPECT_TRUE((m * inverse).approxEqual(Matrix4::identity, 1.0e-5f)) << "affine " << affine;
        EXPECT_TRUE((inverse * m).approxEqual(Matrix4::identity, 1.0e-5f)) << "affine " << affine;
    }
    Matrix4 singular;
    singular[2] = Vector4(0.0f, 0.0f, 0.0f, 0.0f);
    const Matrix4 before = inverse;
    EXPECT_FALSE(inverse.inverse(singular, false));
    EXPECT_FALSE(inverse.inverse(singular, true));
    EXPECT_EQ(before, inverse);
}

TEST(Matrix4Test, ProjectionsMapTheirVolumeToTheClipCube)
{
    Matrix4 p;
    p.perspective(orv::kHalfPi, 2.0f, 1.0f, 10.0f);
    const Vector4 nearCorner = Vector4(2.0f, 1.0f, -1.0f, 1.0f) * p;
    EXPECT_NEAR(1.0f, nearCorner.x / nearCorner.w, 1.0e-6f);
    EXPECT_NEAR(1.0f, nearCorner.y / nearCorner.w, 1.0e-6f);
    EXPECT_NEAR(-1.0f, nearCorner.z / nearCorner.w, 1.0e-6f);
    const Vector4 farCentre = Vector4(0.0f, 0.0f, -10.0f, 1.0f) * p;
    EXPECT_NEAR(1.0f, farCentre.z / farCentre.w, 1.0e-6f);
    Matrix4 f;
    f.frustum(-2.0f, 2.0f, -1.0f, 1.0f, 1.0f, 10.0f);
    EXPECT_TRUE(f.approxEqual(p, 1.0e-6f));
}

TEST(Matrix4Test, LookAtPutsTheEyeAtTheOriginFacingTheTarget)
{
    const Vector3 eye(3.0f, 4.0f, 5.0f);
    const Vector3 target(3.0f, 4.0f + 7.0f, 5.0f);
    const Vector3 up(0.0f, 0.0f, 1.0f);
    Matrix4 rh;
    rh.lookAt(eye, target, up);
    expectNear(Vector3(), rh.transformPoint(eye), 1.0e-5f);
    expectNear(Vector3(0.0f, 0.0f, -7.0f), rh.transformPoint(target), 1.0e-5f);
    expectNear(Vector3(0.0f, 1.0f, 0.0f), rh.transformVector(up), 1.0e-6f);
    // The left-handed view looks down +Z instead.
    Matrix4 lh;
    lh.lookAtLH(eye, target, up);
    expectNear(Vector3(0.0f, 0.0f, 7.0f), lh.transformPoint(target), 1.0e-5f);
}

} // namespace
