#include <gtest/gtest.h>

#include "math/conversions/orvConversions.h"
#include "math/types/orvMatrix4.h"

namespace
{

using orv::Matrix4;
using orv::Vector3;
using orv::Vector4;

void expectNear(const Vector3& expected, const Vector3& actual, float tolerance)
{
    EXPECT_NEAR(expected.x, actual.x, tolerance);
    EXPECT_NEAR(expected.y, actual.y, tolerance);
    EXPECT_NEAR(expected.z, actual.z, tolerance);
}

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

TEST(Matrix4Test, ActsOnRowVectorsWithTheTranslationInTheLastRow)
{
    const Matrix4 m = translation(Vector3(1.0f, 2.0f, 3.0f));
    EXPECT_EQ(Vector4(0.0f, 0.0f, 0.0f, 1.0f) * Matrix4::identity, Vector4(0.0f, 0.0f, 0.0f, 1.0f));
    EXPECT_EQ(Vector4(1.0f, 2.0f, 3.0f, 1.0f), m[3]);
    EXPECT_EQ(Vector3(11.0f, 2.0f, 3.0f), m.transformPoint(Vector3(10.0f, 0.0f, 0.0f)));
    EXPECT_EQ(Vector3(10.0f, 0.0f, 0.0f), m.transformVector(Vector3(10.0f, 0.0f, 0.0f)));
    EXPECT_EQ(Vector3(1.0f, 2.0f, 3.0f), m.position());
}

TEST(Matrix4Test, ProductAppliesTheLeftOperandFirst)
{
    const Matrix4 turn = rotation(Vector3(0.0f, 0.0f, 1.0f), orv::kHalfPi);
    const Matrix4 move = translation(Vector3(5.0f, 0.0f, 0.0f));
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
    EXPECT_EQ(Vector4(0.0f, 0.0f, 0.0f, 1.0f), m[3]);
    EXPECT_EQ(Vector3(), m.position());
}

TEST(Matrix4Test, RotationAxisOfAShortAxisIsTheIdentity)
{
    EXPECT_EQ(Matrix4::identity, rotation(Vector3(), 1.0f));
    EXPECT_EQ(Matrix4::identity, rotation(Vector3(0.03f, 0.0f, 0.0f), 2.0f));
    EXPECT_NE(Matrix4::identity, rotation(Vector3(0.04f, 0.0f, 0.0f), 2.0f));
}

TEST(Matrix4Test, InverseUndoesTheTransform)
{
    Matrix4 m = rotation(Vector3(0.2f, 1.0f, -0.3f), 0.8f) * translation(Vector3(4.0f, -1.0f, 2.5f));
    m[0] = m[0] * 2.0f; // a scale keeps it affine but not rigid
    for (bool affine : {false, true})
    {
        Matrix4 inverse;
        ASSERT_TRUE(inverse.inverse(m, affine));
        EXPECT_TRUE((m * inverse).approxEqual(Matrix4::identity, 1.0e-5f)) << "affine " << affine;
        EXPECT_TRUE((inverse * m).approxEqual(Matrix4::identity, 1.0e-5f)) << "affine " << affine;
    }
    Matrix4 projection;
    projection.perspective(1.0f, 1.5f, 0.1f, 100.0f);
    Matrix4 inverse;
    ASSERT_TRUE(inverse.inverse(projection, false));
    EXPECT_TRUE((projection * inverse).approxEqual(Matrix4::identity, 1.0e-4f));
}

TEST(Matrix4Test, InverseOfASingularMatrixFailsAndChangesNothing)
{
    Matrix4 singular;
    singular[2] = Vector4(0.0f, 0.0f, 0.0f, 0.0f);
    Matrix4 inverse = translation(Vector3(1.0f, 1.0f, 1.0f));
    const Matrix4 before = inverse;
    EXPECT_FALSE(inverse.inverse(singular, false));
    EXPECT_FALSE(inverse.inverse(singular, true));
    EXPECT_EQ(before, inverse);
    EXPECT_EQ(0.0f, singular.GetDeterminant());
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
    rh.lookAtRH(eye, target, up);
    expectNear(Vector3(), rh.transformPoint(eye), 1.0e-5f);
    expectNear(Vector3(0.0f, 0.0f, -7.0f), rh.transformPoint(target), 1.0e-5f);
    expectNear(Vector3(0.0f, 1.0f, 0.0f), rh.transformVector(up), 1.0e-6f);
    Matrix4 byDefault;
    byDefault.lookAt(eye, target, up);
    EXPECT_EQ(rh, byDefault);

    Matrix4 lh;
    lh.lookAtLH(eye, target, up);
    expectNear(Vector3(0.0f, 0.0f, 7.0f), lh.transformPoint(target), 1.0e-5f);
    expectNear(Vector3(0.0f, 1.0f, 0.0f), lh.transformVector(up), 1.0e-6f);
}

} // namespace
