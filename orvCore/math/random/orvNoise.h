// orvCore/math/random/orvNoise.h
#pragma once

#include <cstdint>

namespace orv
{

/// The permutation of 0..255 of the published improved gradient noise, stored twice so that a chained index can
/// run up to 511 without wrapping.
extern const uint8_t perm[512];

/// Simplex noise in one dimension, about [-0.64, 0.64]; 0 at every integer. Pure, any thread.
float sdnoise1(float x);
/// Simplex noise in two dimensions, within [-1, 1]. Pure, any thread.
float sdnoise2(float x, float y);
/// Simplex noise in three dimensions, within about [-1, 1]. Pure, any thread.
float sdnoise3(float x, float y, float z);
/// Simplex noise in four dimensions, within about [-1, 1]. Pure, any thread.
float sdnoise4(float x, float y, float z, float w);

} // namespace orv
