#include <gtest/gtest.h>

#include "math/types/orvColor.h"

namespace
{

using orv::ComparisonOperator;

TEST(ColorTest, PacksChannelsAsAlphaRedGreenBlueAndComparesThemOneByOne)
{
    EXPECT_EQ(0x80FF4010u, orv::getColor(0xFF, 0x40, 0x10, 0x80));
    EXPECT_EQ(0xFF000000u, orv::getColor(0, 0, 0));
    unsigned char r, g, b, a;
    orv::getColorComponents(0x12345678u, r, g, b, a);
    EXPECT_EQ(0x12345678u, orv::getColor(r, g, b, a));
    // Orderings must hold on every channel.
    const unsigned int dark = orv::getColor(10, 20, 30, 255);
    const unsigned int light = orv::getColor(200, 20, 40, 255);
    EXPECT_TRUE(orv::compareColors(dark, ComparisonOperator::LOWER_EQUAL, light));
    EXPECT_FALSE(orv::compareColors(dark, ComparisonOperator::LOWER, light));
    EXPECT_FALSE(orv::compareColors(orv::getColor(0, 255, 0), ComparisonOperator::GREATER, orv::getColor(1, 0, 0)));
}

TEST(ColorTest, HslRoundTripsThroughRgbAndChangesKeepAlpha)
{
    const float colours[][3] = {{1.0f, 0.0f, 0.0f}, {0.2f, 0.6f, 0.4f}, {0.9f, 0.8f, 0.1f}, {0.5f, 0.5f, 0.5f}};
    for (const auto& c : colours)
    {
        float h, s, l, r, g, b;
        orv::rbgToHsl(c[0], c[1], c[2], h, s, l);
        orv::hslToRgb(h, s, l, r, g, b);
        EXPECT_NEAR(c[0], r, 1.0e-6f);
        EXPECT_NEAR(c[1], g, 1.0e-6f);
        EXPECT_NEAR(c[2], b, 1.0e-6f);
    }
    const unsigned int red = orv::getColor(255, 0, 0, 77);
    EXPECT_EQ(orv::getColor(0, 255, 0, 77), orv::changeColorHSL(red, 1.0f / 3.0f, 0.0f, 0.0f));
    EXPECT_EQ(orv::getColor(0, 0, 255, 77), orv::changeColorHSL(red, -1.0f / 3.0f, 0.0f, 0.0f));
    EXPECT_EQ(orv::getColor(255, 255, 255, 77), orv::changeColorHSL(red, 0.0f, 0.0f, 2.0f));
}

} // namespace
