// orvCore/math/types/orvStatistics.cpp
#include "math/types/orvStatistics.h"

#include <cmath>

namespace orv
{

float Statistics::getMin() const
{
    float minimum = _values.size() > 0 ? _values[0] : 0.0f;
    for (size_t i = 1; i < _values.size(); ++i)
    {
        minimum = _values[i] < minimum ? _values[i] : minimum;
    }
    return minimum;
}

float Statistics::getMax() const
{
    float maximum = _values.size() > 0 ? _values[0] : 0.0f;
    for (size_t i = 1; i < _values.size(); ++i)
    {
        maximum = maximum < _values[i] ? _values[i] : maximum;
    }
    return maximum;
}

float Statistics::getArithmeticMean() const
{
    float sum = 0.0f;
    for (size_t i = 0; i < _values.size(); ++i)
    {
        sum += _values[i];
    }
    // An empty list keeps the sum of 0 rather than dividing by 0.
    return _values.size() > 0 ? sum / static_cast<float>(_values.size()) : sum;
}

float Statistics::getVariance() const
{
    if (_values.size() == 0)
    {
        return 0.0f;
    }
    float sumOfSquares = 0.0f;
    for (size_t i = 0; i < _values.size(); ++i)
    {
        sumOfSquares += _values[i] * _values[i];
    }
    const float mean = getArithmeticMean();
    return sumOfSquares / static_cast<float>(_values.size()) - mean * mean;
}

float Statistics::getStandardDeviation() const
{
    if (_values.size() == 0)
    {
        return 0.0f;
    }
    const float mean = getArithmeticMean();
    float sumOfSquaredDeviations = 0.0f;
    for (size_t i = 0; i < _values.size(); ++i)
    {
        const float deviation = _values[i] - mean;
        sumOfSquaredDeviations += deviation * deviation;
    }
    return powf(sumOfSquaredDeviations / static_cast<float>(_values.size()), 0.5f);
}

} // namespace orv
