// orvCore/system/containers/orvIndexTriplet.h
#pragma once

#include "system/debug/orvAssert.h"

namespace orv
{

/// Three indices kept together, as the corners of a triangle.
template <typename T>
class IndexTriplet
{
public:
    /// Three value-initialised indices (zeros).
    IndexTriplet() = default;
    /// The indices a, b and c, in that order.
    IndexTriplet(const T& a, const T& b, const T& c) : _indices{a, b, c} {}

    /// The index at position 0, 1 or 2; fatal otherwise.
    const T& get(unsigned int position) const
    {
        orvAssert(position < 3);
        return _indices[position];
    }
    /// Sets the index at position 0, 1 or 2; fatal otherwise.
    void set(unsigned int position, const T& index)
    {
        orvAssert(position < 3);
        _indices[position] = index;
    }
    /// The index at position, unchecked.
    T& operator[](unsigned int position) { return _indices[position]; }
    /// The index at position, unchecked.
    const T& operator[](unsigned int position) const { return _indices[position]; }

    /// Same indices at the same positions.
    bool operator==(const IndexTriplet& other) const
    {
        return _indices[0] == other._indices[0] && _indices[1] == other._indices[1] && _indices[2] == other._indices[2];
    }
    /// Not operator==.
    bool operator!=(const IndexTriplet& other) const { return !(*this == other); }

private:
    /// The three indices.
    T _indices[3] = {};
};

} // namespace orv
