// orvCore/system/thread/orvAtomic.h
#pragma once

#include <atomic>
#include <cstdint>

namespace orv
{

/// An unsigned 32-bit word shared between threads. Plain operations are sequentially consistent.
/// A copy reads the source once; copying is for records that are not shared yet.
struct atomic32_t
{
    /// Starts at 0.
    atomic32_t() = default;
    /// Starts at the value.
    atomic32_t(unsigned value) : _value(value) {}
    /// Starts at the other's present value.
    atomic32_t(const atomic32_t& other) : _value(other.load()) {}
    /// Stores the other's present value.
    atomic32_t& operator=(const atomic32_t& other)
    {
        store(other.load());
        return *this;
    }

    /// The present value.
    unsigned load() const { return _value.load(); }
    /// Replaces the value.
    void store(unsigned value) { _value.store(value); }
    /// Adds delta, wrapping at 2^32. Returns the value before.
    unsigned fetchAndAdd(unsigned delta) { return _value.fetch_add(delta); }
    /// Adds 1. Returns the value before.
    unsigned fetchAndIncrement() { return _value.fetch_add(1u); }
    /// Subtracts 1, wrapping at 0. Returns the value before.
    unsigned fetchAndDecrement() { return _value.fetch_sub(1u); }
    /// Stores newValue if the value equals comparand. Returns the value before, which equals comparand on success.
    unsigned compareAndSwap(unsigned newValue, unsigned comparand)
    {
        // compare_exchange_strong writes the value it found into comparand when it fails.
        _value.compare_exchange_strong(comparand, newValue);
        return comparand;
    }

    /// The present value, as load().
    operator unsigned() const { return load(); }
    /// Replaces the value, as store().
    atomic32_t& operator=(unsigned value)
    {
        store(value);
        return *this;
    }

    /// The word itself, for the acquire and release helpers.
    std::atomic<uint32_t> _value{0};
};

/// An unsigned 64-bit word shared between threads. Plain operations are sequentially consistent.
/// A copy reads the source once; copying is for records that are not shared yet.
struct atomic64_t
{
    /// Starts at 0.
    atomic64_t() = default;
    /// Starts at the value.
    atomic64_t(uint64_t value) : _value(value) {}
    /// Starts at the other's present value.
    atomic64_t(const atomic64_t& other) : _value(other.load()) {}
    /// Stores the other's present value.
    atomic64_t& operator=(const atomic64_t& other)
    {
        store(other.load());
        return *this;
    }

    /// The present value.
    uint64_t load() const { return _value.load(); }
    /// Replaces the value.
    void store(uint64_t value) { _value.store(value); }
    /// Adds delta, wrapping at 2^64. Returns the value before.
    uint64_t fetchAndAdd(uint64_t delta) { return _value.fetch_add(delta); }
    /// Adds 1. Returns the value before.
    uint64_t fetchAndIncrement() { return _value.fetch_add(1u); }
    /// Subtracts 1, wrapping at 0. Returns the value before.
    uint64_t fetchAndDecrement() { return _value.fetch_sub(1u); }
    /// Stores newValue if the value equals comparand. Returns the value before, which equals comparand on success.
    uint64_t compareAndSwap(uint64_t newValue, uint64_t comparand)
    {
        // compare_exchange_strong writes the value it found into comparand when it fails.
        _value.compare_exchange_strong(comparand, newValue);
        return comparand;
    }

    /// The present value, as load().
    operator uint64_t() const { return load(); }
    /// Replaces the value, as store().
    atomic64_t& operator=(uint64_t value)
    {
        store(value);
        return *this;
    }

    /// The word itself, for the acquire and release helpers.
    std::atomic<uint64_t> _value{0};
};

/// Reads the word with acquire order: what the releasing writer wrote before is visible after.
inline unsigned atomicLoadAcquire(const atomic32_t& atomic)
{
    return atomic._value.load(std::memory_order_acquire);
}

/// Writes the word with release order: what this thread wrote before is visible to an acquiring reader.
inline void atomicStoreRelease(atomic32_t& atomic, unsigned value)
{
    atomic._value.store(value, std::memory_order_release);
}

/// Reads the word as a flag, with acquire order: any non-zero value is true.
inline bool atomicLoadAcquireBool(const atomic32_t& atomic)
{
    return atomicLoadAcquire(atomic) != 0u;
}

/// Writes a flag as 1 or 0, with release order.
inline void atomicStoreReleaseBool(atomic32_t& atomic, bool value)
{
    atomicStoreRelease(atomic, value ? 1u : 0u);
}

/// Reads the word with acquire order.
inline uint64_t atomicLoadAcquire(const atomic64_t& atomic)
{
    return atomic._value.load(std::memory_order_acquire);
}

/// Writes the word with release order.
inline void atomicStoreRelease(atomic64_t& atomic, uint64_t value)
{
    atomic._value.store(value, std::memory_order_release);
}

/// Reads the word as a flag, with acquire order: any non-zero value is true.
inline bool atomicLoadAcquireBool(const atomic64_t& atomic)
{
    return atomicLoadAcquire(atomic) != 0u;
}

/// Writes a flag as 1 or 0, with release order.
inline void atomicStoreReleaseBool(atomic64_t& atomic, bool value)
{
    atomicStoreRelease(atomic, value ? 1u : 0u);
}

} // namespace orv
