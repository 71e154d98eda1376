// orvCore/system/containers/orvRingBufferSize.h
#pragma once

#include <cstddef>

#include "system/debug/orvAssert.h"

namespace orv
{

/// The size rule and the buffer checks of SPSC_RingBuffer and MPMC_RingBuffer, for slots of SlotSize bytes.
template <size_t SlotSize>
struct RingBufferSize
{
    /// Bytes for elementCountMax slots; 0 unless the count is a power of two that fits in 32 bits. Fatal below 2.
    static size_t getBufferSizeToAllocate(size_t elementCountMax)
    {
        orvAssert(elementCountMax >= 2);
        // Free-running 32-bit counters, and the sequence distances read from them as signed 32-bit values, stay
        // consistent through wrap-around only for a power of two of 2^31 or less.
        if ((elementCountMax & (elementCountMax - 1)) != 0 || elementCountMax > (static_cast<size_t>(1) << 31))
        {
            return 0;
        }
        return elementCountMax * SlotSize;
    }

    /// Fatal unless buffer is set and bufferSize is the size for elementCountMax slots.
    static void checkBuffer(const void* buffer, size_t bufferSize, size_t elementCountMax)
    {
        orvAssert(buffer != NULL);
        orvAssert(bufferSize > 0 && bufferSize == getBufferSizeToAllocate(elementCountMax));
    }
};

} // namespace orv
