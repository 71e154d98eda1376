#include <gtest/gtest.h>

#include "math/types/orvVector2.h"

namespace
{

using orv::Vector2;

TEST(Vector2Test, RotationsAndAnglesTurnCounterClockwise)
{
    const Vector2 v = Vector2(2.0f, 0.0f).rotate(orv::kHalfPi);
    EXPECT_NEAR(0.0f, v.x, 1.0e-6f);
    EXPECT_NEAR(2.0f, v.y, 1.0e-6f);
    EXPECT_EQ(Vector2(-3.0f, 1.0f), Vector2(1.0f, 3.0f).rotate90());
    EXPECT_FLOAT_EQ(orv::kHalfPi, Vector2(0.0f, 5.0f).getAngle());
    EXPECT_FLOAT_EQ(orv::kHalfPi, orv::angle(Vector2(3.0f, 0.0f), Vector2(0.0f, 1.0f)));
    EXPECT_FLOAT_EQ(-orv::kHalfPi, orv::angle(Vector2(0.0f, 1.0f), Vector2(3.0f, 0.0f)));
    EXPECT_EQ(0.0f, orv::angle(Vector2(), Vector2(0.0f, 1.0f)));
}

} // namespace
