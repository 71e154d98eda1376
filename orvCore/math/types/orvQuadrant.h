// orvCore/math/types/orvQuadrant.h
#pragma once

namespace orv
{

/// A quarter of the plane, named by its compass direction with +Y as north and +X as east.
struct Quadrant
{
    enum Value
    {
        SE = 0,
        SW = 1,
        NW = 2,
        NE = 3,
        END = 4
    };
};

} // namespace orv
