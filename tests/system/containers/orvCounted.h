// tests/system/containers/orvCounted.h
#pragma once

namespace orvtest
{

/// Counts live instances, so that construction and destruction can be checked.
struct Counted
{
    static inline int live = 0;
    int value = 0;
    Counted() { ++live; }
    Counted(int v) : value(v) { ++live; }
    Counted(const Counted& other) : value(other.value) { ++live; }
    Counted& operator=(const Counted&) = default;
    ~Counted() { --live; }
};

} // namespace orvtest
