// orvCore/math/rotations/orvAxis.h
#pragma once

namespace orv
{

/// One of the three axes of a frame.
struct Axis
{
    enum Value
    {
        X = 0,
        Y = 1,
        Z = 2,
        END = 3,
        BEGIN = 0
    };
};

} // namespace orv
