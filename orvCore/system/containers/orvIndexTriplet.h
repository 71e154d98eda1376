// orvCore/system/containers/orvIndexTriplet.h
#pragma once

#include <cstdint>

#include "system/debug/orvAssert.h"
#include "system/inspection/orvClassDescriptor.h"

namespace orv
{

template <typename T, typename Owner>
class ContainerAccessorsAttribute;

/// Three indices kept together, as the corners of a triangle.
template <typename T>
class IndexTriplet
{
    ORV_DECLARE_VALUE_RTTI(IndexTriplet)

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

ORV_IMPLEMENT_TEMPLATE_RTTI(IndexTriplet, "1510e4ff-00e2-487c-9fc3-c0160eef657d", "orv::IndexTriplet")

// Instantiated where the class is registered, whose source includes the attribute classes.
template <typename T>
void IndexTriplet<T>::addAttributes()
{
    // The three indices, each through get and set at its position.
    static const char* const names[3] = {"index0", "index1", "index2"};
    for (uint32_t position = 0; position < 3; ++position)
    {
        _rtti->addAttribute(ContainerAccessorsAttribute<T, IndexTriplet<T>>(
            names[position], _rtti, &IndexTriplet<T>::get, &IndexTriplet<T>::set, position));
    }
}

} // namespace orv
