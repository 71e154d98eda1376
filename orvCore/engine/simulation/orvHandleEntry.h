// orvCore/engine/simulation/orvHandleEntry.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include <cstdint>
#include <cstring>

namespace orv
{

/// One entry of a handle table: free-list link, generation and activity in one word, then the dense position.
struct HandleEntry
{
    ORV_DECLARE_VALUE_RTTI(HandleEntry)

    /// All zero.
    HandleEntry() : _nextFreeIndex(0), _counter(0), _active(0) {}
    /// A free entry linked to next.
    explicit HandleEntry(uint32_t next) : _nextFreeIndex(next & 0xFFFFFu), _counter(0), _active(0) {}

    /// The first word as a whole.
    uint32_t getHandleInfoAsUint32() const
    {
        uint32_t word;
        memcpy(&word, this, sizeof(word));
        return word;
    }
    /// Sets the first word as a whole.
    void setHandleInfoAsUint32(uint32_t word) { memcpy(static_cast<void*>(this), &word, sizeof(word)); }

    /// Next entry of the free list, while the entry is free.
    uint32_t _nextFreeIndex : 20;
    /// Generation; raised when the entry is taken.
    uint32_t _counter : 11;
    /// The entry is in use.
    uint32_t _active : 1;
    /// Present position of the entity in the dense array.
    int32_t _contentIndex = 0;
};

static_assert(sizeof(HandleEntry) == 8, "a handle entry is two 32-bit words");

} // namespace orv
