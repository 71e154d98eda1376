// orvCore/math/types/orvInterval.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

namespace orv
{

/// A closed interval [lower, upper] of an ordered type, or the empty interval. A plain value.
template <class T>
class Interval
{
    ORV_DECLARE_VALUE_RTTI(Interval)

public:
    /// The empty interval.
    Interval() = default;
    /// [lower, upper]; empty when lower > upper.
    Interval(T lower, T upper) { setBounds(lower, upper); }

    /// True when the interval holds no value; its bounds then mean nothing.
    bool isEmpty() const { return _empty; }
    /// Marks the interval empty or not, keeping the bounds.
    void setEmpty(bool empty) { _empty = empty; }
    /// The bounds, as last set; meaningless when empty.
    T getLowerBound() const { return _lowerBound; }
    T getUpperBound() const { return _upperBound; }
    void setLowerBound(T lower) { _lowerBound = lower; }
    void setUpperBound(T upper) { _upperBound = upper; }
    /// Becomes [lower, upper]; empty when lower > upper.
    void setBounds(T lower, T upper)
    {
        _lowerBound = lower;
        _upperBound = upper;
        _empty = !(lower <= upper);
    }

    /// upper - lower; 0 when empty.
    T getLength() const { return _empty ? T() : _upperBound - _lowerBound; }
    /// (lower + upper) / 2; meaningless when empty.
    T getCenter() const { return (_lowerBound + _upperBound) / 2; }

    /// True when the value lies within the bounds, both included.
    bool contains(T value) const { return !_empty && _lowerBound <= value && value <= _upperBound; }
    /// True when every value of other lies in this one; the empty interval lies in every interval.
    bool contains(const Interval& other) const
    {
        return other._empty || (!_empty && _lowerBound <= other._lowerBound && other._upperBound <= _upperBound);
    }
    /// True when the two share at least one value; touching bounds count.
    bool intersects(const Interval& other) const
    {
        return !_empty && !other._empty && _lowerBound <= other._upperBound && other._lowerBound <= _upperBound;
    }
    /// The values common to both; empty when they do not meet.
    Interval computeIntersection(const Interval& other) const
    {
        if (!intersects(other))
        {
            return Interval();
        }
        return Interval(_lowerBound < other._lowerBound ? other._lowerBound : _lowerBound,
                        _upperBound < other._upperBound ? _upperBound : other._upperBound);
    }
    /// Grows to take in the value; an empty interval becomes [value, value].
    void extend(T value)
    {
        if (_empty)
        {
            setBounds(value, value);
            return;
        }
        _lowerBound = value < _lowerBound ? value : _lowerBound;
        _upperBound = _upperBound < value ? value : _upperBound;
    }
    /// Grows to the smallest interval holding both, the gap between them included.
    void extend(const Interval& other)
    {
        if (!other._empty)
        {
            extend(other._lowerBound);
            extend(other._upperBound);
        }
    }

    /// Two empty intervals are equal whatever their bounds; otherwise the bounds decide.
    bool operator==(const Interval& other) const
    {
        if (_empty || other._empty)
        {
            return _empty == other._empty;
        }
        return _lowerBound == other._lowerBound && _upperBound == other._upperBound;
    }
    bool operator!=(const Interval& other) const { return !(*this == other); }

private:
    T _lowerBound = T();
    T _upperBound = T();
    bool _empty = true;
};

ORV_IMPLEMENT_TEMPLATE_RTTI(Interval, "08e58c6e-7cff-42bc-9a5c-3b959a03d00a", "orv::Interval")

// Instantiated where the class is registered, whose source includes the attribute classes.
template <class T>
void Interval<T>::addAttributes()
{
    addAttribute("lowerBound", &Interval<T>::_lowerBound);
    addAttribute("upperBound", &Interval<T>::_upperBound);
    addAttribute("empty", &Interval<T>::_empty);
}

} // namespace orv
