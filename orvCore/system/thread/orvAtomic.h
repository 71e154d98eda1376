// orvCore/system/thread/orvAtomic.h
#pragma once

#include <atomic>
#include <cstdint>
#include <type_traits>

namespace orv
{

/// An unsigned word of type T shared between threads. Plain operations are sequentially consistent.
/// A copy reads the source once; copying is for records that are not shared yet.
template <typename T>
struct AtomicWord
{
    static_assert(std::is_unsigned<T>::value, "an atomic word is unsigned");

    /// The type of the word.
    typedef T value_type;

    /// Starts at 0.
    AtomicWord() = default;
    /// Starts at the value.
    AtomicWord(T value) : _value(value) {}
    /// Starts at the other's present value.
    AtomicWord(const AtomicWord& other) : _value(other.load()) {}
    /// Stores the other's present value.
    AtomicWord& operator=(const AtomicWord& other)
    {
        store(other.load());
        return *this;
    }

    /// The present value.
    T load() const { return _value.load(); }
    /// Replaces the value.
    void store(T value) { _value.store(value); }
    /// Adds delta, wrapping at the word's width. Returns the value before.
    T fetchAndAdd(T delta) { return _value.fetch_add(delta); }
    /// Adds 1. Returns the value before.
    T fetchAndIncrement() { return _value.fetch_add(1u); }
    /// Subtracts 1, wrapping at 0. Returns the value before.
    T fetchAndDecrement() { return _value.fetch_sub(1u); }
    /// Stores newValue if the value equals comparand. Returns the value before, which equals comparand on success.
    T compareAndSwap(T newValue, T comparand)
    {
        // compare_exchange_strong writes the value it found into comparand when it fails.
        _value.compare_exchange_strong(comparand, newValue);
        return comparand;
    }

    /// The present value, as load().
    operator T() const { return load(); }
    /// Replaces the value, as store().
    AtomicWord& operator=(T value)
    {
        store(value);
        return *this;
    }

    /// The word itself, for the acquire and release helpers.
    std::atomic<T> _value{0};
};

/// An unsigned 32-bit word shared between threads; wraps at 2^32.
typedef AtomicWord<uint32_t> atomic32_t;
/// An unsigned 64-bit word shared between threads; wraps at 2^64.
typedef AtomicWord<uint64_t> atomic64_t;

/// Reads the word with acquire order: what the releasing writer wrote before is visible after.
template <typename T>
T atomicLoadAcquire(const AtomicWord<T>& atomic)
{
    return atomic._value.load(std::memory_order_acquire);
}

/// Writes the word with release order: what this thread wrote before is visible to an acquiring reader.
template <typename T>
void atomicStoreRelease(AtomicWord<T>& atomic, typename AtomicWord<T>::value_type value)
{
    atomic._value.store(value, std::memory_order_release);
}

/// Reads the word as a flag, with acquire order: any non-zero value is true.
template <typename T>
bool atomicLoadAcquireBool(const AtomicWord<T>& atomic)
{
    return atomicLoadAcquire(atomic) != 0u;
}

/// Writes a flag as 1 or 0, with release order.
template <typename T>
void atomicStoreReleaseBool(AtomicWord<T>& atomic, bool value)
{
    atomicStoreRelease(atomic, value ? 1u : 0u);
}

} // namespace orv
