#include <gtest/gtest.h>

#include "math/types/orvDistanceUnit.h"

namespace
{

using orv::distanceUnit;

TEST(DistanceUnitTest, ScaleFactorsAreInMetres)
{
    const float expected[distanceUnit::END] = {1.0f, 0.1f, 0.01f, 0.001f, 0.0254f, 0.3048f, 0.9144f};
    for (int unit = distanceUnit::METER; unit < distanceUnit::END; ++unit)
    {
        EXPECT_EQ(expected[unit], orv::getScaleFactor(static_cast<distanceUnit::Value>(unit))) << unit;
    }
}

TEST(DistanceUnitTest, ConvertGoesThroughMetres)
{
    EXPECT_FLOAT_EQ(2.54f, orv::convert(1.0f, distanceUnit::INCH, distanceUnit::CENTIMETER));
    EXPECT_FLOAT_EQ(1.0f, orv::convert(3.0f, distanceUnit::FEET, distanceUnit::YARD));
    EXPECT_FLOAT_EQ(1500.0f, orv::convert(1.5f, distanceUnit::METER, distanceUnit::MILLIMETER));
    EXPECT_FLOAT_EQ(12.0f, orv::convert(orv::convert(12.0f, distanceUnit::DECIMETER, distanceUnit::INCH),
                                        distanceUnit::INCH, distanceUnit::DECIMETER));
}

} // namespace
