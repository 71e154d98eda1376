// orvCore/math/types/orvComparisonOperator.h
#pragma once

namespace orv
{

/// A comparison between two values, left operand first.
struct ComparisonOperator
{
    enum Value
    {
        EQUAL = 0,
        NOT_EQUAL = 1,
        LOWER_EQUAL = 2,
        LOWER = 3,
        GREATER = 4,
        GREATER_EQUAL = 5,
        END = 6
    };
};

} // namespace orv
