// orvCore/math/types/orvStatistics.h
#pragma once

#include <cstddef>

#include "system/containers/orvPODArray.h"

namespace orv
{

/// A list of samples and their summary figures, all in 32-bit floats. Every figure is 0 for an empty list.
class Statistics
{
public:
    /// Appends a sample.
    void push_back(float value) { _values.push_back(value); }
    /// Removes every sample.
    void clear() { _values.clear(); }
    /// Number of samples.
    size_t size() const { return _values.size(); }
    /// The samples, in the order they came.
    const PODArray<float>& getValues() const { return _values; }
    PODArray<float>& touchValues() { return _values; }

    /// The smallest sample.
    float getMin() const;
    /// The largest sample.
    float getMax() const;
    /// The sum of the samples over their count.
    float getArithmeticMean() const;
    /// The mean of the squares less the square of the mean.
    float getVariance() const;
    /// The mean squared deviation from the mean, to the power 0.5. Computed apart from getVariance, so the two
    /// may differ in their last bits.
    float getStandardDeviation() const;

private:
    PODArray<float> _values;
};

} // namespace orv
