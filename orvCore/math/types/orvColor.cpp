// orvCore/math/types/orvColor.cpp
#include "math/types/orvColor.h"

#include <cmath>

namespace orv
{

namespace
{

float clampUnit(float value)
{
    return value < 0.0f ? 0.0f : (value > 1.0f ? 1.0f : value);
}

unsigned char toChannel(float value)
{
    return static_cast<unsigned char>(std::lround(clampUnit(value) * 255.0f));
}

bool compareChannel(unsigned char left, ComparisonOperator::Value comparison, unsigned char right)
{
    switch (comparison)
    {
    case ComparisonOperator::LOWER_EQUAL:
        return left <= right;
    case ComparisonOperator::LOWER:
        return left < right;
    case ComparisonOperator::GREATER:
        return left > right;
    case ComparisonOperator::GREATER_EQUAL:
        return left >= right;
    default:
        return false;
    }
}

} // namespace

uint32_t getColor(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha)
{
    return (static_cast<uint32_t>(alpha) << 24) | (static_cast<uint32_t>(red) << 16) |
           (static_cast<uint32_t>(green) << 8) | static_cast<uint32_t>(blue);
}

void getColorComponents(uint32_t color, unsigned char& red, unsigned char& green, unsigned char& blue,
                        unsigned char& alpha)
{
    alpha = static_cast<unsigned char>(color >> 24);
    red = static_cast<unsigned char>(color >> 16);
    green = static_cast<unsigned char>(color >> 8);
    blue = static_cast<unsigned char>(color);
}

bool compareColors(unsigned int left, ComparisonOperator::Value comparison, unsigned int right)
{
    if (comparison == ComparisonOperator::EQUAL)
    {
        return left == right;
    }
    if (comparison == ComparisonOperator::NOT_EQUAL)
    {
        return left != right;
    }
    for (int shift = 0; shift < 32; shift += 8)
    {
        if (!compareChannel(static_cast<unsigned char>(left >> shift), comparison,
                            static_cast<unsigned char>(right >> shift)))
        {
            return false;
        }
    }
    return true;
}

float hueToRgb(float p, float q, float t)
{
    if (t < 0.0f)
    {
        t += 1.0f;
    }
    if (t > 1.0f)
    {
        t -= 1.0f;
    }
    if (t < 1.0f / 6.0f)
    {
        return p + (q - p) * 6.0f * t;
    }
    if (t < 0.5f)
    {
        return q;
    }
    if (t < 2.0f / 3.0f)
    {
        return p + (q - p) * (2.0f / 3.0f - t) * 6.0f;
    }
    return p;
}

void hslToRgb(float hue, float saturation, float lightness, float& red, float& green, float& blue)
{
    if (saturation == 0.0f)
    {
        red = green = blue = lightness;
        return;
    }
    const float q =
        lightness < 0.5f ? lightness * (1.0f + saturation) : lightness + saturation - lightness * saturation;
    const float p = 2.0f * lightness - q;
    red = hueToRgb(p, q, hue + 1.0f / 3.0f);
    green = hueToRgb(p, q, hue);
    blue = hueToRgb(p, q, hue - 1.0f / 3.0f);
}

void rbgToHsl(float red, float green, float blue, float& hue, float& saturation, float& lightness)
{
    const float maximum = std::fmax(red, std::fmax(green, blue));
    const float minimum = std::fmin(red, std::fmin(green, blue));
    lightness = (maximum + minimum) * 0.5f;
    if (maximum == minimum)
    {
        hue = saturation = 0.0f;
        return;
    }
    const float delta = maximum - minimum;
    saturation = lightness > 0.5f ? delta / (2.0f - maximum - minimum) : delta / (maximum + minimum);
    if (maximum == red)
    {
        hue = (green - blue) / delta + (green < blue ? 6.0f : 0.0f);
    }
    else if (maximum == green)
    {
        hue = (blue - red) / delta + 2.0f;
    }
    else
    {
        hue = (red - green) / delta + 4.0f;
    }
    hue /= 6.0f;
}

uint32_t changeColorHSL(uint32_t color, float hueOffset, float saturationOffset, float lightnessOffset)
{
    unsigned char red;
    unsigned char green;
    unsigned char blue;
    unsigned char alpha;
    getColorComponents(color, red, green, blue, alpha);
    float hue;
    float saturation;
    float lightness;
    rbgToHsl(red / 255.0f, green / 255.0f, blue / 255.0f, hue, saturation, lightness);
    hue += hueOffset;
    hue -= std::floor(hue);
    saturation = clampUnit(saturation + saturationOffset);
    lightness = clampUnit(lightness + lightnessOffset);
    float newRed;
    float newGreen;
    float newBlue;
    hslToRgb(hue, saturation, lightness, newRed, newGreen, newBlue);
    return getColor(toChannel(newRed), toChannel(newGreen), toChannel(newBlue), alpha);
}

} // namespace orv
