// orvCore/math/types/orvColor.h
#pragma once

#include <cstdint>

#include "math/types/orvComparisonOperator.h"

namespace orv
{

/// Packs 8-bit channels into one colour word, 0xAARRGGBB.
uint32_t getColor(unsigned char red, unsigned char green, unsigned char blue, unsigned char alpha = 255);

/// Unpacks a 0xAARRGGBB colour word into its 8-bit channels.
void getColorComponents(uint32_t color, unsigned char& red, unsigned char& green, unsigned char& blue,
                        unsigned char& alpha);

/// EQUAL and NOT_EQUAL compare whole words; the orderings hold when they hold for each of the four channels.
bool compareColors(unsigned int left, ComparisonOperator::Value comparison, unsigned int right);

/// One RGB channel of an HSL colour: p and q are the lightness bounds, t the hue shifted by a third of a turn.
float hueToRgb(float p, float q, float t);

/// HSL to RGB, every value in [0, 1]; the hue is in turns.
void hslToRgb(float hue, float saturation, float lightness, float& red, float& green, float& blue);

/// RGB to HSL, every value in [0, 1]; the hue is in turns and 0 for a grey.
void rbgToHsl(float red, float green, float blue, float& hue, float& saturation, float& lightness);

/// The colour with its hue turned by hueOffset (turns, wrapped) and saturationOffset and lightnessOffset added
/// (clamped to [0, 1]); alpha is kept.
uint32_t changeColorHSL(uint32_t color, float hueOffset, float saturationOffset, float lightnessOffset);

} // namespace orv
