#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "math/types/orvQuaternion.h"

namespace
{

using orv::Quaternion;
using orv::Vector3;

Quaternion pivot(float angle, char axis)
{
    Quaternion q;
    if (axis == 'x')
    {
        q.setPivotX(angle);
    }
    else if (axis == 'y')
    {
        q.setPivotY(angle);
    }
    else
    {
        q.setPivotZ(angle);
    }
    return q;
}

// The textbook form q (v, 0) q*, written out with the Hamilton product.
Vector3 conjugationRotate(const Quaternion& q, const Vector3& v)
{
    const Quaternion r = q * Quaternion(v.x, v.y, v.z, 0.0f) * q.getConjugate();
    return Vector3(r.x, r.y, r.z);
}

void expectNear(const Vector3& expected, const Vector3& actual, float tolerance)
{
    EXPECT_NEAR(expected.x, actual.x, tolerance);
    EXPECT_NEAR(expected.y, actual.y, tolerance);
    EXPECT_NEAR(expected.z, actual.z, tolerance);
}

void expectSameRotation(const Quaternion& expected, const Quaternion& actual, float tolerance)
{
    const float sign = Quaternion::dotProduct(expected, actual) < 0.0f ? -1.0f : 1.0f;
    for (int i = 0; i < 4; ++i)
    {
        EXPECT_NEAR(expected[i], sign * actual[i], tolerance) << "component " << i;
    }
}

const Quaternion kSomeRotation = []
{
    Quaternion q(0.3f, -0.5f, 0.1f, 0.8f);
    q.normalizeSelf();
    return q;
}();

TEST(QuaternionTest, ProductIsHamiltonsWithTheLeftOperandOnTheLeft)
{
    const Quaternion i(1.0f, 0.0f, 0.0f, 0.0f);
    const Quaternion j(0.0f, 1.0f, 0.0f, 0.0f);
    const Quaternion k(0.0f, 0.0f, 1.0f, 0.0f);
    EXPECT_EQ(k, i * j);
    EXPECT_EQ(-k, j * i);
    EXPECT_EQ(i, j * k);
    EXPECT_EQ(Quaternion(0.0f, 0.0f, 0.0f, -1.0f), i * i);
}

TEST(QuaternionTest, ProductAppliesTheRightOperandFirst)
{
    const Quaternion a = pivot(orv::kHalfPi, 'z');
    const Quaternion b = pivot(orv::kHalfPi, 'x');
    const Vector3 v(0.0f, 1.0f, 0.0f);
    // X first takes Y to Z; Z then leaves it there.
    expectNear(Vector3(0.0f, 0.0f, 1.0f), (a * b) * v, 1.0e-6f);
    expectNear(a * (b * v), (a * b) * v, 1.0e-6f);
    Quaternion c = a;
    c.multiplySelfNoReturn(b);
    EXPECT_EQ(a * b, c);
}

TEST(QuaternionTest, PivotsTurnCounterClockwiseAboutTheirAxis)
{
    expectNear(Vector3(0.0f, 1.0f, 0.0f), pivot(orv::kHalfPi, 'z') * Vector3(1.0f, 0.0f, 0.0f), 1.0e-6f);
    expectNear(Vector3(0.0f, 0.0f, 1.0f), pivot(orv::kHalfPi, 'x') * Vector3(0.0f, 1.0f, 0.0f), 1.0e-6f);
    expectNear(Vector3(1.0f, 0.0f, 0.0f), pivot(orv::kHalfPi, 'y') * Vector3(0.0f, 0.0f, 1.0f), 1.0e-6f);
}

TEST(QuaternionTest, RotatingAVectorMatchesConjugation)
{
    const Vector3 v(1.5f, -2.0f, 0.25f);
    const Vector3 expected = conjugationRotate(kSomeRotation, v);
    expectNear(expected, kSomeRotation * v, 1.0e-5f);
    expectNear(expected, orv::rotateVecByQuat(v, kSomeRotation), 1.0e-5f);
    EXPECT_EQ(0.0f, (kSomeRotation * v)._alignmentValue);
}

TEST(QuaternionTest, AngularDistanceIgnoresTheSignOfTheQuaternion)
{
    const Quaternion exact(0.5f, -0.5f, 0.5f, 0.5f);
    EXPECT_EQ(0.0f, Quaternion::angularDistance(exact, exact));
    EXPECT_EQ(0.0f, Quaternion::angularDistance(exact, -exact));
    // Rounding can take the cosine above 1; the clamp keeps acos from giving a NaN.
    const Quaternion rounded(0.07f, 0.0f, 0.0f, std::sqrt(1.0f - 0.07f * 0.07f));
    ASSERT_GT(Quaternion::dotProduct(rounded, rounded), 1.0f);
    EXPECT_EQ(0.0f, Quaternion::angularDistance(rounded, -rounded));
    // Near a cosine of 1, acos turns the last bit of a float into about 7e-4 radian.
    EXPECT_NEAR(0.0f, Quaternion::angularDistance(kSomeRotation, -kSomeRotation), 1.0e-3f);
    EXPECT_NEAR(0.5f, Quaternion::angularDistance(Quaternion(), pivot(0.5f, 'y')), 1.0e-6f);
    EXPECT_NEAR(0.5f, Quaternion::angularDistance(pivot(0.2f, 'x'), pivot(0.7f, 'x')), 1.0e-6f);
}

TEST(QuaternionTest, MultiplyAlphaQuatAtTheEndsLeavesOrCopiesWithoutAProduct)
{
    Quaternion q = kSomeRotation;
    q.multiplyAlphaQuat(pivot(1.0f, 'z'), 0.0f);
    q.multiplyAlphaQuat(pivot(1.0f, 'z'), -0.5f);
    EXPECT_EQ(kSomeRotation, q);
    q.multiplyAlphaQuat(pivot(1.0f, 'z'), 1.0f);
    EXPECT_EQ(pivot(1.0f, 'z'), q);
    q = kSomeRotation;
    q.multiplyAlphaQuat(pivot(1.0f, 'z'), 3.0f);
    EXPECT_EQ(pivot(1.0f, 'z'), q);
}

TEST(QuaternionTest, MultiplyAlphaQuatAppliesAFractionOfTheRotation)
{
    Quaternion q = pivot(0.4f, 'x');
    q.multiplyAlphaQuat(pivot(1.2f, 'z'), 0.25f);
    expectSameRotation(pivot(0.4f, 'x') * pivot(0.3f, 'z'), q, 1.0e-6f);

    // A q with negative w is the same rotation: the fraction goes the short way.
    Quaternion r;
    r.multiplyAlphaQuat(-pivot(1.2f, 'z'), 0.5f);
    expectSameRotation(pivot(0.6f, 'z'), r, 1.0e-6f);

    // Near the identity the linear weights take over; their blend falls short of unit length by under 1e-5.
    Quaternion s;
    s.multiplyAlphaQuat(pivot(0.01f, 'y'), 0.5f);
    expectSameRotation(pivot(0.005f, 'y'), s, 1.0e-5f);
    EXPECT_LT(s.norm2(), 1.0f - 1.0e-6f);
}

TEST(QuaternionTest, MultiplyAlphaQuatLetsANaNAlphaThrough)
{
    Quaternion q;
    q.multiplyAlphaQuat(pivot(1.0f, 'z'), std::numeric_limits<float>::quiet_NaN());
    EXPECT_TRUE(std::isnan(q.w));
}

TEST(QuaternionTest, RotationBetweenUnitVectorsTakesOneOntoTheOther)
{
    const Vector3 from = Vector3(1.0f, 2.0f, -0.5f).computeNormalize();
    const Vector3 to = Vector3(-0.3f, 0.2f, 1.0f).computeNormalize();
    expectNear(to, Quaternion::getRotationBetweenUnitVectors(from, to) * from, 1.0e-5f);

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
