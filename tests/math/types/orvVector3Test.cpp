#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdio>

#include "math/types/orvVector3.h"

namespace
{

using orv::Vector3;

static_assert(sizeof(Vector3) == 16 && alignof(Vector3) == 16, "a Vector3 fills one SIMD register");
static_assert(offsetof(Vector3, x) == 0 && offsetof(Vector3, y) == 4 && offsetof(Vector3, z) == 8 &&
                  offsetof(Vector3, _alignmentValue) == 12,
              "streams write the fields in this order");

TEST(Vector3Test, NormalizeSelfIsAccurateAtAnyScaleAndKeepsTheNullVectorNull)
{
    const Vector3 inputs[] = {Vector3(3.0f, 4.0f, 12.0f), Vector3(1.0e-15f, -2.0e-15f, 2.0e-15f),
                              Vector3(-1.0e15f, 1.0e14f, 7.0e15f), Vector3(0.0f, 0.0f, -5.0f)};
    for (const Vector3& input : inputs)
    {
        Vector3 v = input;
        v.normalizeSelf();
        EXPECT_NEAR(1.0f, v.norm(), 1.0e-6f);
        EXPECT_EQ(0.0f, v._alignmentValue);
        // Direction kept: the unit vector is parallel to the input and on its side.
        EXPECT_NEAR(1.0f, orv::dotProduct(v, input) / input.norm(), 1.0e-6f);
    }
    Vector3 null;
    null.normalizeSelf();
    EXPECT_EQ(Vector3(), null);
    EXPECT_FALSE(std::isnan(null._alignmentValue));
}

TEST(Vector3Test, ComparisonsAreLexicographicAndIgnoreThePadding)
{
    Vector3 padded(1.0f, 2.0f, 3.0f);
    padded._alignmentValue = 42.0f;
    EXPECT_TRUE(Vector3(1.0f, 2.0f, 3.0f) == padded);
    EXPECT_FALSE(Vector3(1.0f, 2.0f, 3.0f) < padded || padded < Vector3(1.0f, 2.0f, 3.0f));
    EXPECT_TRUE(Vector3(1.0f, 9.0f, 9.0f) < Vector3(2.0f, 0.0f, 0.0f));
    EXPECT_TRUE(Vector3(1.0f, 1.0f, 1.0f) < Vector3(1.0f, 1.0f, 2.0f));
    // The tolerant form treats close components as equal.
    EXPECT_EQ(0, orv::lexicoGraphicCompare(Vector3(1.0f, 2.0f, 3.0f), Vector3(1.005f, 2.0f, 2.995f), 0.01f));
    EXPECT_EQ(-1, orv::lexicoGraphicCompare(Vector3(1.005f, 2.0f, 3.0f), Vector3(1.0f, 2.5f, 0.0f), 0.01f));
}

TEST(Vector3Test, RotateZTurnsCounterClockwiseSeenFromAbove)
{
    const Vector3 turned = Vector3(1.0f, 0.0f, 5.0f).computeRotateZ(orv::kHalfPi);
    EXPECT_NEAR(0.0f, turned.x, 1.0e-6f);
    EXPECT_NEAR(1.0f, turned.y, 1.0e-6f);
    EXPECT_EQ(5.0f, turned.z);
}

TEST(Vector3Test, AngleIsUnsignedAndPreciseNearZeroAndPi)
{
    EXPECT_FLOAT_EQ(orv::kPi, orv::angle(Vector3(1.0f, 1.0f, 0.0f), Vector3(-1.0f, -1.0f, 0.0f)));
    // A 1e-4 radian gap is lost by acos in float, not by atan2.
    EXPECT_NEAR(1.0e-4f, orv::angle(Vector3(1.0f, 0.0f, 0.0f), Vector3(1.0f, 1.0e-4f, 0.0f)), 1.0e-8f);
    EXPECT_EQ(0.0f, orv::angle(Vector3(), Vector3(1.0f, 0.0f, 0.0f)));
}

TEST(Vector3Test, FindNearestUnitAxisPicksTheClosestAndTheEarlierOnATie)
{
    Vector3 axis;
    EXPECT_FLOAT_EQ(orv::angle(Vector3(0.1f, -1.0f, 0.2f), Vector3(0.0f, -1.0f, 0.0f)),
                    orv::findNearestUnitAxis(axis, Vector3(0.1f, -1.0f, 0.2f)));
    EXPECT_EQ(Vector3(0.0f, -1.0f, 0.0f), axis);
    orv::findNearestUnitAxis(axis, Vector3(0.0f, -1.0f, -1.0f));
    EXPECT_EQ(Vector3(0.0f, -1.0f, 0.0f), axis);
    orv::findNearestUnitAxis(axis, Vector3(1.0f, 1.0f, 1.0f));
    EXPECT_EQ(Vector3(1.0f, 0.0f, 0.0f), axis);
}

TEST(Vector3Test, BarycentricCoordinatesRebuildThePoint)
{
    const Vector3 a(1.0f, 0.0f, 2.0f);
    const Vector3 b(4.0f, 1.0f, 2.0f);
    const Vector3 c(0.0f, 5.0f, 3.0f);
    float u, v, w;
    ASSERT_TRUE(orv::computeBarycentricsCoordinates(a * 0.2f + b * 0.3f + c * 0.5f, a, b, c, u, v, w));
    EXPECT_NEAR(0.2f, u, 1.0e-5f);
    EXPECT_NEAR(0.3f, v, 1.0e-5f);
    EXPECT_NEAR(0.5f, w, 1.0e-5f);
    EXPECT_FALSE(orv::computeBarycentricsCoordinates(a, a, b, a * 2.0f - b, u, v, w));
}

TEST(Vector3Test, ToStringRoundTripsAndStaysInItsBuffer)
{
    char buffer[64];
    const Vector3 v(0.1f, -2.5e-8f, 123456.789f);
    orv::toString(v, buffer, sizeof(buffer));
    float x, y, z;
    ASSERT_EQ(3, sscanf(buffer, "(%f, %f, %f)", &x, &y, &z));
    EXPECT_EQ(v, Vector3(x, y, z));
    orv::toString(v, buffer, 5);
    EXPECT_STREQ("(0.1", buffer);
}

} // namespace
