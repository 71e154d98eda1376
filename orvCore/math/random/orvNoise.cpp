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

// Floor for the cell index; exact at integers, unlike a plain truncation for negative values. Past the range of
// int (or for a NaN) it answers 0: floats there are 256 or more apart, every corner is out of reach of such a point
// and the noise is 0 either way, but the conversion itself must stay defined.
inline int fastFloor(float x)
{
    if (!(x > -2147483520.0f && x < 2147483520.0f))
    {
        return 0;
    }
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

// The N + 1 corners of the simplex that holds a point in N dimensions, and the point's offset from the first. Every
// sum runs over the axes in index order, from the first term. The loops, over at most four axes or corners, are
// unrolled, so that each dimension runs as its written-out code would.
template <int N>
class SimplexCorners
{
public:
    // Skews the point onto the grid to find corner 0 of its cell, and unskews back to the point's offset from it.
    SimplexCorners(const float (&point)[N], float skew, float unskew) : _unskew(unskew)
    {
        float pointSum = point[0];
#pragma GCC unroll 4
        for (int d = 1; d < N; ++d)
        {
            pointSum += point[d];
        }
        const float s = pointSum * skew;
        int cellSum = 0;
#pragma GCC unroll 4
        for (int d = 0; d < N; ++d)
        {
            _cell[d] = fastFloor(point[d] + s);
            cellSum += _cell[d];
        }
        const float t = static_cast<float>(cellSum) * unskew;
#pragma GCC unroll 4
        for (int d = 0; d < N; ++d)
        {
            _offset[d] = point[d] - (static_cast<float>(_cell[d]) - t);
            _steps[0][d] = 0;
            _steps[N][d] = 1;
        }
    }

    // The point's offset from corner 0 along the axis.
    float getOffset(int axis) const
    {
        return _offset[axis];
    }

    // Which axes corner n, 1 to N - 1, steps along from corner 0: 1 or 0 for each. Corner N steps along all.
    void setSteps(int n, const int (&steps)[N])
    {
#pragma GCC unroll 4
        for (int d = 0; d < N; ++d)
        {
            _steps[n][d] = steps[d];
        }
    }

    // The sum of the corners' contributions: each falls off from falloffBase by its squared offset and takes the
    // gradient its hashed cell picks, masked into the table.
    float sum(float falloffBase, const float (*gradients)[N], int gradientMask) const
    {
        // Summed from corner 0's contribution, and with corner 0's offset taken as it is, so that a -0 stays -0.
        float total = contribution(0, _offset, falloffBase, gradients, gradientMask);
#pragma GCC unroll 4
        for (int n = 1; n <= N; ++n)
        {
            // From corner n: the offset less its steps, plus n times the unskew factor.
            float cornerOffset[N];
#pragma GCC unroll 4
            for (int d = 0; d < N; ++d)
            {
                cornerOffset[d] = _offset[d] - static_cast<float>(_steps[n][d]) + static_cast<float>(n) * _unskew;
            }
            total += contribution(n, cornerOffset, falloffBase, gradients, gradientMask);
        }
        return total;
    }

private:
    float contribution(int n, const float (&cornerOffset)[N], float falloffBase, const float (*gradients)[N],
                       int gradientMask) const
    {
        // Chained from the last axis in: an index reaches at most 255 + 1 + 255, within the doubled table.
        int hash = 0;
#pragma GCC unroll 4
        for (int d = N - 1; d >= 0; --d)
        {
            hash = perm[(_cell[d] & 0xff) + _steps[n][d] + hash];
        }
        const float* gradient = gradients[hash & gradientMask];
        float falloff = falloffBase - cornerOffset[0] * cornerOffset[0];
        float gradientDotOffset = gradient[0] * cornerOffset[0];
#pragma GCC unroll 4
        for (int d = 1; d < N; ++d)
        {
            falloff -= cornerOffset[d] * cornerOffset[d];
            gradientDotOffset += gradient[d] * cornerOffset[d];
        }
        return corner(falloff, gradientDotOffset);
    }

    float _unskew;
    int _cell[N];         // corner 0, on the skewed grid
    float _offset[N];     // the point from corner 0, unskewed
    int _steps[N + 1][N]; // per corner, 1 for each axis it steps along from corner 0
};

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
    SimplexCorners<2> corners({x, y}, kSkew2, kUnskew2);
    // The middle corner is one step along the axis of the larger offset.
    const bool alongX = corners.getOffset(0) > corners.getOffset(1);
    corners.setSteps(1, {alongX ? 1 : 0, alongX ? 0 : 1});
    return 40.0f * corners.sum(0.5f, grad2lut, 7);
}

float sdnoise3(float x, float y, float z)
{
    SimplexCorners<3> corners({x, y, z}, kSkew3, kUnskew3);
    const float x0 = corners.getOffset(0);
    const float y0 = corners.getOffset(1);
    const float z0 = corners.getOffset(2);
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
    corners.setSteps(1, {i1, j1, k1});
    corners.setSteps(2, {i2, j2, k2});
    return 28.0f * corners.sum(0.6f, grad3lut, 15);
}

float sdnoise4(float x, float y, float z, float w)
{
    SimplexCorners<4> corners({x, y, z, w}, kSkew4, kUnskew4);
    const float x0 = corners.getOffset(0);
    const float y0 = corners.getOffset(1);
    const float z0 = corners.getOffset(2);
    const float w0 = corners.getOffset(3);
    // The six pairwise comparisons pick the simplex; its row ranks the axes, and corner n steps along every axis
    // of rank at least 4 - n.
    const int c = (x0 > y0 ? 32 : 0) | (x0 > z0 ? 16 : 0) | (y0 > z0 ? 8 : 0) | (x0 > w0 ? 4 : 0) | (y0 > w0 ? 2 : 0) |
                  (z0 > w0 ? 1 : 0);
    const uint8_t* rank = simplex[c];
#pragma GCC unroll 4
    for (int n = 1; n < 4; ++n)
    {
        corners.setSteps(n, {rank[0] >= 4 - n ? 1 : 0, rank[1] >= 4 - n ? 1 : 0, rank[2] >= 4 - n ? 1 : 0,
                             rank[3] >= 4 - n ? 1 : 0});
    }
    return 27.0f * corners.sum(0.6f, grad4lut, 31);
}

} // namespace orv
