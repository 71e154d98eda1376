// orvCore/math/types/orvVectorComponents.h
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdio>

namespace orv
{

/// The operations that the vector and quaternion types run on their N float components alike, components taken in
/// index order. Each does, per component, the float operations of the written-out formula in the same order, so
/// every type rounds alike; the arithmetic loops are unrolled as the written-out code was. Pure, any thread.
template <int N>
struct VectorComponents
{
    static_assert(N >= 2 && N <= 4, "vectors have two to four components");

    /// Added to the squared length before the square root, so that normalising needs no test for 0.
    static constexpr float minimalNorm2 = 1.0e-37f;

    /// v[i] += other[i].
    static void add(float* v, const float* other)
    {
#pragma GCC unroll 4
        for (int i = 0; i < N; ++i)
        {
            v[i] += other[i];
        }
    }
    /// v[i] -= other[i].
    static void subtract(float* v, const float* other)
    {
#pragma GCC unroll 4
        for (int i = 0; i < N; ++i)
        {
            v[i] -= other[i];
        }
    }
    /// v[i] *= factor.
    static void scale(float* v, float factor)
    {
#pragma GCC unroll 4
        for (int i = 0; i < N; ++i)
        {
            v[i] *= factor;
        }
    }
    /// v[i] /= divisor.
    static void divide(float* v, float divisor)
    {
#pragma GCC unroll 4
        for (int i = 0; i < N; ++i)
        {
            v[i] /= divisor;
        }
    }

    /// Scales v, of squared length norm2, by 1 / sqrt(norm2 + 1e-37): a null vector stays null.
    static void normalize(float* v, float norm2)
    {
        // The tiny bias keeps a null vector null without a branch.
        scale(v, 1.0f / std::sqrt(norm2 + minimalNorm2));
    }

    /// Lexicographic order: true when a lies below b at the first component where they differ.
    static bool less(const float* a, const float* b)
    {
        for (int i = 0; i < N; ++i)
        {
            if (a[i] != b[i])
            {
                return a[i] < b[i];
            }
        }
        return false;
    }
    /// Lexicographic comparison, components closer than the tolerance counting as equal. Returns -1, 0 or 1.
    static int compare(const float* a, const float* b, float tolerance)
    {
        for (int i = 0; i < N; ++i)
        {
            if (!(std::fabs(a[i] - b[i]) <= tolerance))
            {
                return a[i] < b[i] ? -1 : 1;
            }
        }
        return 0;
    }

    /// Writes "(v0, v1, ...)", each to 9 significant digits, into the caller's buffer, cut to its size; returns it.
    static const char* write(const float* v, char* buffer, size_t bufferSize)
    {
        static const char* const formats[] = {"(%.9g, %.9g)", "(%.9g, %.9g, %.9g)", "(%.9g, %.9g, %.9g, %.9g)"};
        double values[4] = {};
        for (int i = 0; i < N; ++i)
        {
            values[i] = static_cast<double>(v[i]);
        }
        if (bufferSize > 0)
        {
            // Values past the format's last conversion are passed and ignored.
            snprintf(buffer, bufferSize, formats[N - 2], values[0], values[1], values[2], values[3]);
        }
        return buffer;
    }
};

} // namespace orv
