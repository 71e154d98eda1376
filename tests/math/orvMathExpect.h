// tests/math/orvMathExpect.h
#pragma once

#include <gtest/gtest.h>

#include "math/types/orvQuaternion.h"

namespace orvtest
{

/// Expects each coordinate of actual within tolerance of expected.
inline void expectNear(const orv::Vector3& expected, const orv::Vector3& actual, float tolerance)
{
    EXPECT_NEAR(expected.x, actual.x, tolerance);
    EXPECT_NEAR(expected.y, actual.y, tolerance);
    EXPECT_NEAR(expected.z, actual.z, tolerance);
}

/// Expects two quaternions to give the same rotation: equal components up to a common sign.
inline void expectSameRotation(const orv::Quaternion& expected, const orv::Quaternion& actual, float tolerance)
{
    const float sign = orv::Quaternion::dotProduct(expected, actual) < 0.0f ? -1.0f : 1.0f;
    for (int i = 0; i < 4; ++i)
    {
        EXPECT_NEAR(expected[i], sign * actual[i], tolerance) << "component " << i;
    }
}

} // namespace orvtest
