// orvCore/math/random/orvNoise.cpp
#include "math/random/orvNoise.h"

namespace orv
{

namespace
{

// Skew and unskew factors of the simplex grids: (sqrt(n + 1) - 1) / n and (1 - 1 / sqrt(n + 1)) / n.
const float kSkew2 = 0.3660254f;
const float kUnskew2 = 0.2113249f;
const float kSkew3 = 0.333333333f;
const float kUnskew3 = 0.166666667f;
const float kSkew4 = 0.309017f;
const float kUnskew4 = 0.1381966f;

// clang-format off
// Eight directions of the plane: the axes and the diagonals.
const float grad2lut[8][2] = {{-1.0f, -1.0f}, {1.0f, 0.0f},  {-1.0f, 0.0f}, {1.0f, 1.0f},
                              {-1.0f, 1.0f},  {0.0f, -1.0f}, {0.0f, 1.0f},  {1.0f, -1.0f}};

// The twelve cube edge directions, then four of them again to fill sixteen entries.
const float grad3lut[16][3] = {{1.0f, 0.0f, 1.0f},  {0.0f, 1.0f, 1.0f},   {-1.0f, 0.0f, 1.0f},  {0.0f, -1.0f, 1.0f},
                               {1.0f, 0.0f, -1.0f}, {0.0f, 1.0f, -1.0f},  {-1.0f, 0.0f, -1.0f}, {0.0f, -1.0f, -1.0f},
                               {1.0f, -1.0f, 0.0f}, {1.0f, 1.0f, 0.0f},   {-1.0f, 1.0f, 0.0f},  {-1.0f, -1.0f, 0.0f},
                               {1.0f, 0.0f, 1.0f},  {-1.0f, 0.0f, 1.0f},  {0.0f, 1.0f, -1.0f},  {0.0f, -1.0f, -1.0f}};

// The thirty-two edge directions of the tesseract.
const float grad4lut[32][4] = {
    {0.0f, 1.0f, 1.0f, 1.0f},   {0.0f, 1.0f, 1.0f, -1.0f},   {0.0f, 1.0f, -1.0f, 1.0f},   {0.0f, 1.0f, -1.0f, -1.0f},
    {0.0f, -1.0f, 1.0f, 1.0f},  {0.0f, -1.0f, 1.0f, -1.0f},  {0.0f, -1.0f, -1.0f, 1.0f},  {0.0f, -1.0f, -1.0f, -1.0f},
    {1.0f, 0.0f, 1.0f, 1.0f},   {1.0f, 0.0f, 1.0f, -1.0f},   {1.0f, 0.0f, -1.0f, 1.0f},   {1.0f, 0.0f, -1.0f, -1.0f},
    {-1.0f, 0.0f, 1.0f, 1.0f},  {-1.0f, 0.0f, 1.0f, -1.0f},  {-1.0f, 0.0f, -1.0f, 1.0f},  {-1.0f, 0.0f, -1.0f, -1.0f},
    {1.0f, 1.0f, 0.0f, 1.0f},   {1.0f, 1.0f, 0.0f, -1.0f},   {1.0f, -1.0f, 0.0f, 1.0f},   {1.0f, -1.0f, 0.0f, -1.0f},
    {-1.0f, 1.0f, 0.0f, 1.0f},  {-1.0f, 1.0f, 0.0f, -1.0f},  {-1.0f, -1.0f, 0.0f, 1.0f},  {-1.0f, -1.0f, 0.0f, -1.0f},
    {1.0f, 1.0f, 1.0f, 0.0f},   {1.0f, 1.0f, -1.0f, 0.0f},   {1.0f, -1.0f, 1.0f, 0.0f},   {1.0f, -1.0f, -1.0f, 0.0f},
    {-1.0f, 1.0f, 1.0f, 0.0f},  {-1.0f, 1.0f, -1.0f, 0.0f},  {-1.0f, -1.0f, 1.0f, 0.0f},  {-1.0f, -1.0f, -1.0f, 0.0f}};

// For each outcome of the six comparisons x>y, x>z, y>z, x>w, y>w, z>w (bits 32 down to 1), the rank of each
// offset among the four: 3 for the largest. Rows of impossible outcomes are zero.
const uint8_t simplex[64][4] = {
    {0, 1, 2, 3}, {0, 1, 3, 2}, {0, 0, 0, 0}, {0, 2, 3, 1}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {1, 2, 3, 0},
    {0, 2, 1, 3}, {0, 0, 0, 0}, {0, 3, 1, 2}, {0, 3, 2, 1}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {1, 3, 2, 0},
    {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0},
    {1, 2, 0, 3}, {0, 0, 0, 0}, {1, 3, 0, 2}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {2, 3, 0, 1}, {2, 3, 1, 0},
    {1, 0, 2, 3}, {1, 0, 3, 2}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {2, 0, 3, 1}, {0, 0, 0, 0}, {2, 1, 3, 0},
    {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0},
    {2, 0, 1, 3}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {3, 0, 1, 2}, {3, 0, 2, 1}, {0, 0, 0, 0}, {3, 1, 2, 0},
    {2, 1, 0, 3}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {3, 1, 0, 2}, {0, 0, 0, 0}, {3, 2, 0, 1}, {3, 2, 1, 0}};
// clang-format on

// Floor for the cell index; exact at integers, unlike a plain truncation for negative values.
inline int fastFloor(float x)
{
    const int truncated = static_cast<int>(x);
    return static_cast<float>(truncated) <= x ? truncated : truncated - 1;
}

// One of 1..8, negated for half the hashes.
inline float grad1(int hash)
{
    const int h = hash & 15;
    const float gradient = 1.0f + static_cast<float>(h & 7);
    return (h & 8) != 0 ? -gradient : gradient;
}

// The contribution of one corner: t^4 times the gradient's dot product with the offset, where t is the falloff
// base; 0 once the base is negative, outside the corner's reach.
inline float corner(float falloff, float gradientDotOffset)
{
    if (falloff < 0.0f)
    {
        return 0.0f;
    }
    const float t2 = falloff * falloff;
    return t2 * t2 * gradientDotOffset;
}

} // namespace

// clang-format off
const uint8_t perm[512] = {
    151, 160, 137, 91,  90,  15,  131, 13,  201, 95,  96,  53,  194, 233, 7,   225, 140, 36,  103, 30,  69,  142,
    8,   99,  37,  240, 21,  10,  23,  190, 6,   148, 247, 120, 234, 75,  0,   26,  197, 62,  94,  252, 219, 203,
    117, 35,  11,  32,  57,  177, 33,  88,  237, 149, 56,  87,  174, 20,  125, 136, 171, 168, 68,  175, 74,  165,
    71,  134, 139, 48,  27,  166, 77,  146, 158, 231, 83,  111, 229, 122, 60,  211, 133, 230, 220, 105, 92,  41,
    55,  46,  245, 40,  244, 102, 143, 54,  65,  25,  63,  161, 1,   216, 80,  73,  209, 76,  132, 187, 208, 89,
    18,  169, 200, 196, 135, 130, 116, 188, 159, 86,  164, 100, 109, 198, 173, 186, 3,   64,  52,  217, 226, 250,
    124, 123, 5,   202, 38,  147, 118, 126, 255, 82,  85,  212, 207, 206, 59,  227, 47,  16,  58,  17,  182, 189,
    28,  42,  223, 183, 170, 213, 119, 248, 152, 2,   44,  154, 163, 70,  221, 153, 101, 155, 167, 43,  172, 9,
    129, 22,  39,  253, 19,  98,  108, 110, 79,  113, 224, 232, 178, 185, 112, 104, 218, 246, 97,  228, 251, 34,
    242, 193, 238, 210, 144, 12,  191, 179, 162, 241, 81,  51,  145, 235, 249, 14,  239, 107, 49,  192, 214, 31,
    181, 199, 106, 157, 184, 84,  204, 176, 115, 121, 50,  45,  127, 4,   150, 254, 138, 236, 205, 93,  222, 114,
    67,  29,  24,  72,  243, 141, 128, 195, 78,  66,  215, 61,  156, 180,
    151, 160, 137, 91,  90,  15,  131, 13,  201, 95,  96,  53,  194, 233, 7,   225, 140, 36,  103, 30,  69,  142,
    8,   99,  37,  240, 21,  10,  23,  190, 6,   148, 247, 120, 234, 75,  0,   26,  197, 62,  94,  252, 219, 203,
    117, 35,  11,  32,  57,  177, 33,  88,  237, 149, 56,  87,  174, 20,  125, 136, 171, 168, 68,  175, 74,  165,
    71,  134, 139, 48,  27,  166, 77,  146, 158, 231, 83,  111, 229, 122, 60,  211, 133, 230, 220, 105, 92,  41,
    55,  46,  245, 40,  244, 102, 143, 54,  65,  25,  63,  161, 1,   216, 80,  73,  209, 76,  132, 187, 208, 89,
    18,  169, 200, 196, 135, 130, 116, 188, 159, 86,  164, 100, 109, 198, 173, 186, 3,   64,  52,  217, 226, 250,
    124, 123, 5,   202, 38,  147, 118, 126, 255, 82,  85,  212, 207, 206, 59,  227, 47,  16,  58,  17,  182, 189,
    28,  42,  223, 183, 170, 213, 119, 248, 152, 2,   44,  154, 163, 70,  221, 153, 101, 155, 167, 43,  172, 9,
    129, 22,  39,  253, 19,  98,  108, 110, 79,  113, 224, 232, 178, 185, 112, 104, 218, 246, 97,  228, 251, 34,
    242, 193, 238, 210, 144, 12,  191, 179, 162, 241, 81,  51,  145, 235, 249, 14,  239, 107, 49,  192, 214, 31,
    181, 199, 106, 157, 184, 84,  204, 176, 115, 121, 50,  45,  127, 4,   150, 254, 138, 236, 205, 93,  222, 114,
    67,  29,  24,  72,  243, 141, 128, 195, 78,  66,  215, 61,  156, 180};
// clang-format on

float sdnoise1(float x)
{
    const int i0 = fastFloor(x);
    const int i1 = i0 + 1;
    const float x0 = x - static_cast<float>(i0);
    const float x1 = x0 - 1.0f;
    // Both offsets lie within [-1, 1], so neither falloff base goes negative.
    const float n0 = corner(1.0f - x0 * x0, grad1(perm[i0 & 0xff]) * x0);
    const float n1 = corner(1.0f - x1 * x1, grad1(perm[i1 & 0xff]) * x1);
    return 0.25f * (n0 + n1);
}

float sdnoise2(float x, float y)
{
    const float s = (x + y) * kSkew2;
    const int i = fastFloor(x + s);
    const int j = fastFloor(y + s);
    const float t = static_cast<float>(i + j) * kUnskew2;
    const float x0 = x - (static_cast<float>(i) - t);
    const float y0 = y - (static_cast<float>(j) - t);
    // The middle corner is one step along the axis of the larger offset.
    const int i1 = x0 > y0 ? 1 : 0;
    const int j1 = x0 > y0 ? 0 : 1;
    const float x1 = x0 - static_cast<float>(i1) + kUnskew2;
    const float y1 = y0 - static_cast<float>(j1) + kUnskew2;
    const float x2 = x0 - 1.0f + 2.0f * kUnskew2;
    const float y2 = y0 - 1.0f + 2.0f * kUnskew2;
    const int ii = i & 0xff;
    const int jj = j & 0xff;
    const float* g0 = grad2lut[perm[ii + perm[jj]] & 7];
    const float* g1 = grad2lut[perm[ii + i1 + perm[jj + j1]] & 7];
    const float* g2 = grad2lut[perm[ii + 1 + perm[jj + 1]] & 7];
    const float n0 = corner(0.5f - x0 * x0 - y0 * y0, g0[0] * x0 + g0[1] * y0);
    const float n1 = corner(0.5f - x1 * x1 - y1 * y1, g1[0] * x1 + g1[1] * y1);
    const float n2 = corner(0.5f - x2 * x2 - y2 * y2, g2[0] * x2 + g2[1] * y2);
    return 40.0f * (n0 + n1 + n2);
}

float sdnoise3(float x, float y, float z)
{
    const float s = (x + y + z) * kSkew3;
    const int i = fastFloor(x + s);
    const int j = fastFloor(y + s);
    const int k = fastFloor(z + s);
    const float t = static_cast<float>(i + j + k) * kUnskew3;
    const float x0 = x - (static_cast<float>(i) - t);
    const float y0 = y - (static_cast<float>(j) - t);
    const float z0 = z - (static_cast<float>(k) - t);
    // The second and third corners step along the axes in decreasing order of the offsets.
    int i1, j1, k1, i2, j2, k2;
    if (x0 >= y0)
    {
        if (y0 >= z0)
        {
            i1 = 1, j1 = 0, k1 = 0, i2 = 1, j2 = 1, k2 = 0;
        }
        else if (x0 >= z0)
        {
            i1 = 1, j1 = 0, k1 = 0, i2 = 1, j2 = 0, k2 = 1;
        }
        else
        {
            i1 = 0, j1 = 0, k1 = 1, i2 = 1, j2 = 0, k2 = 1;
        }
    }
    else
    {
        if (y0 < z0)
        {
            i1 = 0, j1 = 0, k1 = 1, i2 = 0, j2 = 1, k2 = 1;
        }
        else if (x0 < z0)
        {
            i1 = 0, j1 = 1, k1 = 0, i2 = 0, j2 = 1, k2 = 1;
        }
        else
        {
            i1 = 0, j1 = 1, k1 = 0, i2 = 1, j2 = 1, k2 = 0;
        }
    }
    const float x1 = x0 - static_cast<float>(i1) + kUnskew3;
    const float y1 = y0 - static_cast<float>(j1) + kUnskew3;
    const float z1 = z0 - static_cast<float>(k1) + kUnskew3;
    const float x2 = x0 - static_cast<float>(i2) + 2.0f * kUnskew3;
    const float y2 = y0 - static_cast<float>(j2) + 2.0f * kUnskew3;
    const float z2 = z0 - static_cast<float>(k2) + 2.0f * kUnskew3;
    const float x3 = x0 - 1.0f + 3.0f * kUnskew3;
    const float y3 = y0 - 1.0f + 3.0f * kUnskew3;
    const float z3 = z0 - 1.0f + 3.0f * kUnskew3;
    const int ii = i & 0xff;
    const int jj = j & 0xff;
    const int kk = k & 0xff;
    const float* g0 = grad3lut[perm[ii + perm[jj + perm[kk]]] & 15];
    const float* g1 = grad3lut[perm[ii + i1 + perm[jj + j1 + perm[kk + k1]]] & 15];
    const float* g2 = grad3lut[perm[ii + i2 + perm[jj + j2 + perm[kk + k2]]] & 15];
    const float* g3 = grad3lut[perm[ii + 1 + perm[jj + 1 + perm[kk + 1]]] & 15];
    const float n0 = corner(0.6f - x0 * x0 - y0 * y0 - z0 * z0, g0[0] * x0 + g0[1] * y0 + g0[2] * z0);
    const float n1 = corner(0.6f - x1 * x1 - y1 * y1 - z1 * z1, g1[0] * x1 + g1[1] * y1 + g1[2] * z1);
    const float n2 = corner(0.6f - x2 * x2 - y2 * y2 - z2 * z2, g2[0] * x2 + g2[1] * y2 + g2[2] * z2);
    const float n3 = corner(0.6f - x3 * x3 - y3 * y3 - z3 * z3, g3[0] * x3 + g3[1] * y3 + g3[2] * z3);
    return 28.0f * (n0 + n1 + n2 + n3);
}

float sdnoise4(float x, float y, float z, float w)
{
    const float s = (x + y + z + w) * kSkew4;
    const int i = fastFloor(x + s);
    const int j = fastFloor(y + s);
    const int k = fastFloor(z + s);
    const int l = fastFloor(w + s);
    const float t = static_cast<float>(i + j + k + l) * kUnskew4;
    const float x0 = x - (static_cast<float>(i) - t);
    const float y0 = y - (static_cast<float>(j) - t);
    const float z0 = z - (static_cast<float>(k) - t);
    const float w0 = w - (static_cast<float>(l) - t);
    // The six pairwise comparisons pick the simplex; its row ranks the axes, and corner n steps along every axis
    // of rank at least 4 - n.
    const int c = (x0 > y0 ? 32 : 0) | (x0 > z0 ? 16 : 0) | (y0 > z0 ? 8 : 0) | (x0 > w0 ? 4 : 0) | (y0 > w0 ? 2 : 0) |
                  (z0 > w0 ? 1 : 0);
    const uint8_t* rank = simplex[c];
    const int i1 = rank[0] >= 3 ? 1 : 0;
    const int j1 = rank[1] >= 3 ? 1 : 0;
    const int k1 = rank[2] >= 3 ? 1 : 0;
    const int l1 = rank[3] >= 3 ? 1 : 0;
    const int i2 = rank[0] >= 2 ? 1 : 0;
    const int j2 = rank[1] >= 2 ? 1 : 0;
    const int k2 = rank[2] >= 2 ? 1 : 0;
    const int l2 = rank[3] >= 2 ? 1 : 0;
    const int i3 = rank[0] >= 1 ? 1 : 0;
    const int j3 = rank[1] >= 1 ? 1 : 0;
    const int k3 = rank[2] >= 1 ? 1 : 0;
    const int l3 = rank[3] >= 1 ? 1 : 0;
    const float x1 = x0 - static_cast<float>(i1) + kUnskew4;
    const float y1 = y0 - static_cast<float>(j1) + kUnskew4;
    const float z1 = z0 - static_cast<float>(k1) + kUnskew4;
    const float w1 = w0 - static_cast<float>(l1) + kUnskew4;
    const float x2 = x0 - static_cast<float>(i2) + 2.0f * kUnskew4;
    const float y2 = y0 - static_cast<float>(j2) + 2.0f * kUnskew4;
    const float z2 = z0 - static_cast<float>(k2) + 2.0f * kUnskew4;
    const float w2 = w0 - static_cast<float>(l2) + 2.0f * kUnskew4;
    const float x3 = x0 - static_cast<float>(i3) + 3.0f * kUnskew4;
    const float y3 = y0 - static_cast<float>(j3) + 3.0f * kUnskew4;
    const float z3 = z0 - static_cast<float>(k3) + 3.0f * kUnskew4;
    const float w3 = w0 - static_cast<float>(l3) + 3.0f * kUnskew4;
    const float x4 = x0 - 1.0f + 4.0f * kUnskew4;
    const float y4 = y0 - 1.0f + 4.0f * kUnskew4;
    const float z4 = z0 - 1.0f + 4.0f * kUnskew4;
    const float w4 = w0 - 1.0f + 4.0f * kUnskew4;
    const int ii = i & 0xff;
    const int jj = j & 0xff;
    const int kk = k & 0xff;
    const int ll = l & 0xff;
    const float* g0 = grad4lut[perm[ii + perm[jj + perm[kk + perm[ll]]]] & 31];
    const float* g1 = grad4lut[perm[ii + i1 + perm[jj + j1 + perm[kk + k1 + perm[ll + l1]]]] & 31];
    const float* g2 = grad4lut[perm[ii + i2 + perm[jj + j2 + perm[kk + k2 + perm[ll + l2]]]] & 31];
    const float* g3 = grad4lut[perm[ii + i3 + perm[jj + j3 + perm[kk + k3 + perm[ll + l3]]]] & 31];
    const float* g4 = grad4lut[perm[ii + 1 + perm[jj + 1 + perm[kk + 1 + perm[ll + 1]]]] & 31];
    const float n0 =
        corner(0.6f - x0 * x0 - y0 * y0 - z0 * z0 - w0 * w0, g0[0] * x0 + g0[1] * y0 + g0[2] * z0 + g0[3] * w0);
    const float n1 =
        corner(0.6f - x1 * x1 - y1 * y1 - z1 * z1 - w1 * w1, g1[0] * x1 + g1[1] * y1 + g1[2] * z1 + g1[3] * w1);
    const float n2 =
        corner(0.6f - x2 * x2 - y2 * y2 - z2 * z2 - w2 * w2, g2[0] * x2 + g2[1] * y2 + g2[2] * z2 + g2[3] * w2);
    const float n3 =
        corner(0.6f - x3 * x3 - y3 * y3 - z3 * z3 - w3 * w3, g3[0] * x3 + g3[1] * y3 + g3[2] * z3 + g3[3] * w3);
    const float n4 =
        corner(0.6f - x4 * x4 - y4 * y4 - z4 * z4 - w4 * w4, g4[0] * x4 + g4[1] * y4 + g4[2] * z4 + g4[3] * w4);
    return 27.0f * (n0 + n1 + n2 + n3 + n4);
}

} // namespace orv
