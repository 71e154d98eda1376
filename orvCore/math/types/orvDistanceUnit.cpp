// orvCore/math/types/orvDistanceUnit.cpp
#include "math/types/orvDistanceUnit.h"

namespace orv
{

float getScaleFactor(distanceUnit::Value unit)
{
    static const float factors[distanceUnit::END] = {1.0f, 0.1f, 0.01f, 0.001f, 0.0254f, 0.3048f, 0.9144f};
    if (unit < distanceUnit::METER || unit >= distanceUnit::END)
    {
        return 1.0f;
    }
    return factors[unit];
}

float convert(const float& value, distanceUnit::Value from, distanceUnit::Value to)
{
    return value * getScaleFactor(from) / getScaleFactor(to);
}

} // namespace orv
