#include <gtest/gtest.h>

#include "math/types/orvDistanceUnit.h"

namespace
{

using orv::distanceUnit;

TEST(DistanceUnitTest, ConvertGoesThroughMetres)
{
    EXPECT_FLOAT_EQ(2.54f, orv::convert(1.0f, distanceUnit::INCH, distanceUnit::CENTIMETER));
    EXPECT_FLOAT_EQ(1.0f, orv::convert(3.0f, distanceUnit::FEET, distanceUnit::YARD));
    EXPECT_FLOAT_EQ(1500.0f, orv::convert(1.5f, distanceUnit::METER, distanceUnit::MILLIMETER));
    EXPECT_FLOAT_EQ(0.5f, orv::convert(5.0f, distanceUnit::DECIMETER, distanceUnit::METER));
}

} // namespace
