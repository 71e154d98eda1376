#include <gtest/gtest.h>

#include <cmath>

#include "math/orvMathExpect.h"
#include "math/types/orvQuaternion.h"

namespace
{

using orv::Quaternion;
using orv::Vector3;
using orvtest::expectNear;
using orvtest::expectSameRotation;

typedef void (Quaternion::*PivotSetter)(orv::Angle);
const PivotSetter kX = &Quaternion::setPivotX;
const PivotSetter kY = &Quaternion::setPivotY;
const PivotSetter kZ = &Quaternion::setPivotZ;

Quaternion pivot(float angle, PivotSetter axis)
{
    Quaternion q;
    (q.*axis)(angle);
    return q;
}

const Quaternion kSomeRotation = []
{
    Quaternion q(0.3f, -0.5f, 0.1f, 0.8f);
    q.normalizeSelf();
    return q;
}();

TEST(QuaternionTest, ProductIsHamiltonsAndAppliesTheRightOperandFirst)
{
    const Quaternion i(1.0f, 0.0f, 0.0f, 0.0f);
    const Quaternion j(0.0f, 1.0f, 0.0f, 0.0f);
    const Quaternion k(0.0f, 0.0f, 1.0f, 0.0f);
    EXPECT_EQ(k, i * j);
    EXPECT_EQ(-k, j * i);
    EXPECT_EQ(Quaternion(0.0f, 0.0f, 0.0f, -1.0f), i * i);

    const Quaternion a = pivot(orv::kHalfPi, kZ);
    const Quaternion b = pivot(orv::kHalfPi, kX);
    // X first takes Y to Z; Z then leaves it there.
    expectNear(Vector3(0.0f, 0.0f, 1.0f), (a * b) * Vector3(0.0f, 1.0f, 0.0f), 1.0e-6f);
    Quaternion c = a;
    c.multiplySelfNoReturn(b);
    EXPECT_EQ(a * b, c);
}

TEST(QuaternionTest, PivotsTurnCounterClockwiseAndRotationMatchesConjugation)
{
    expectNear(Vector3(0.0f, 1.0f, 0.0f), pivot(orv::kHalfPi, kZ) * Vector3(1.0f, 0.0f, 0.0f), 1.0e-6f);
    expectNear(Vector3(0.0f, 0.0f, 1.0f), pivot(orv::kHalfPi, kX) * Vector3(0.0f, 1.0f, 0.0f), 1.0e-6f);
    expectNear(Vector3(1.0f, 0.0f, 0.0f), pivot(orv::kHalfPi, kY) * Vector3(0.0f, 0.0f, 1.0f), 1.0e-6f);

    // The textbook form q (v, 0) q*, written out with the Hamilton product.
    const Vector3 v(1.5f, -2.0f, 0.25f);
    const Quaternion r = kSomeRotation * Quaternion(v.x, v.y, v.z, 0.0f) * kSomeRotation.getConjugate();
    expectNear(Vector3(r.x, r.y, r.z), kSomeRotation * v, 1.0e-5f);
    expectNear(Vector3(r.x, r.y, r.z), orv::rotateVecByQuat(v, kSomeRotation), 1.0e-5f);
    EXPECT_EQ(0.0f, (kSomeRotation * v)._alignmentValue);
}

TEST(QuaternionTest, AngularDistanceIgnoresTheSignAndNeverGivesANaN)
{
    // Rounding can take the cosine above 1; the clamp keeps acos from giving a NaN.
    const Quaternion rounded(0.07f, 0.0f, 0.0f, std::sqrt(1.0f - 0.07f * 0.07f));
    ASSERT_GT(Quaternion::dotProduct(rounded, rounded), 1.0f);
    EXPECT_EQ(0.0f, Quaternion::angularDistance(rounded, -rounded));
    EXPECT_NEAR(0.5f, Quaternion::angularDistance(pivot(0.2f, kX), pivot(0.7f, kX)), 1.0e-6f);
}

TEST(QuaternionTest, MultiplyAlphaQuatAppliesAFractionOfTheRotationTheShortWay)
{
    // At or below 0 it leaves the quaternion; at or above 1 it copies q without a product.
    Quaternion q = kSomeRotation;
    q.multiplyAlphaQuat(pivot(1.0f, kZ), 0.0f);
    EXPECT_EQ(kSomeRotation, q);
    q.multiplyAlphaQuat(pivot(1.0f, kZ), 1.0f);
    EXPECT_EQ(pivot(1.0f, kZ), q);

    q = pivot(0.4f, kX);
    q.multiplyAlphaQuat(pivot(1.2f, kZ), 0.25f);
    expectSameRotation(pivot(0.4f, kX) * pivot(0.3f, kZ), q, 1.0e-6f);
    // A q with negative w is the same rotation: the fraction goes the short way.
    Quaternion r;
    r.multiplyAlphaQuat(-pivot(1.2f, kZ), 0.5f);
    expectSameRotation(pivot(0.6f, kZ), r, 1.0e-6f);
}

TEST(QuaternionTest, RotationBetweenUnitVectorsTakesOneOntoTheOther)
{
    const Vector3 from = Vector3(1.0f, 2.0f, -0.5f).computeNormalize();
    const Vector3 to = Vector3(-0.3f, 0.2f, 1.0f).computeNormalize();
    expectNear(to, Quaternion::getRotationBetweenUnitVectors(from, to) * from, 1.0e-5f);
    // Opposite vectors have no single axis between them.
    expectNear(-from, Quaternion::getRotationBetweenUnitVectors(from, -from) * from, 1.0e-5f);
    const Vector3 x(1.0f, 0.0f, 0.0f);
    expectNear(-x, Quaternion::getRotationBetweenUnitVectors(x, -x) * x, 1.0e-6f);
    expectSameRotation(Quaternion(), Quaternion::getRotationBetweenUnitVectors(to, to), 1.0e-6f);
}

TEST(QuaternionTest, DualQuaternionCarriesTheTranslation)
{
    const Vector3 t(3.0f, -1.0f, 2.0f);
    Quaternion real;
    Quaternion dual;
    Quaternion::quaternionTranslationToDualQuaternion(kSomeRotation, t, real, dual);
    EXPECT_EQ(kSomeRotation, real);
    // The translation comes back as 2 dual real*.
    const Quaternion back = dual * real.getConjugate() * 2.0f;
    expectNear(t, Vector3(back.x, back.y, back.z), 1.0e-5f);
    EXPECT_NEAR(0.0f, back.w, 1.0e-5f);
}

} // namespace
