// orvCore/system/containers/orvSPSC_RingBuffer.h
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "system/containers/orvRingBufferSize.h"

namespace orv
{

/// A bounded ring between one producer thread and one consumer thread, on memory the caller provides.
/// The counters run freely and wrap; the slot is the counter masked, so every slot is usable. Never allocates.
template <typename T>
class SPSC_RingBuffer
{
public:
    /// A ring with no buffer yet.
    SPSC_RingBuffer() = default;
    /// Not copyable: the counters are shared between threads.
    SPSC_RingBuffer(const SPSC_RingBuffer&) = delete;
    SPSC_RingBuffer& operator=(const SPSC_RingBuffer&) = delete;
    ~SPSC_RingBuffer() { uninitialize(); }

    /// Bytes to give initialize for elementCountMax slots; 0 unless the count is a power of two that fits in
    /// 32 bits. Fatal below 2.
    static size_t getBufferSizeToAllocate(size_t elementCountMax)
    {
        return RingBufferSize<sizeof(T)>::getBufferSizeToAllocate(elementCountMax);
    }

    /// Starts the ring empty on buffer. Does not take ownership. Before any producer or consumer runs.
    void initialize(void* buffer, size_t bufferSize, size_t elementCountMax)
    {
        RingBufferSize<sizeof(T)>::checkBuffer(buffer, bufferSize, elementCountMax);
        _buffer = static_cast<T*>(buffer);
        _bufferMask = static_cast<uint32_t>(elementCountMax - 1);
        _enqueueHead.store(0, std::memory_order_relaxed);
        _dequeueTail.store(0, std::memory_order_relaxed);
    }
    /// Destroys what is left and forgets the buffer, which the caller then frees. After both threads stopped.
    void uninitialize()
    {
        if (_buffer == nullptr)
        {
            return;
        }
        const uint32_t head = _enqueueHead.load(std::memory_order_acquire);
        for (uint32_t tail = _dequeueTail.load(std::memory_order_relaxed); tail != head; ++tail)
        {
            _buffer[tail & _bufferMask].~T();
        }
        _buffer = nullptr;
        _bufferMask = 0;
        _enqueueHead.store(0, std::memory_order_relaxed);
        _dequeueTail.store(0, std::memory_order_relaxed);
    }

    /// Adds a copy of value; false when the ring is full. Producer thread only.
    bool try_push(const T& value)
    {
        const uint32_t head = _enqueueHead.load(std::memory_order_relaxed);
        // Acquire: the consumer has finished with the slot it released.
        const uint32_t tail = _dequeueTail.load(std::memory_order_acquire);
        if (head - tail > _bufferMask)
        {
            return false;
        }
        new (&_buffer[head & _bufferMask]) T(value);
        // Release: the payload is written before the consumer can see the slot.
        _enqueueHead.store(head + 1, std::memory_order_release);
        return true;
    }
    /// Moves the oldest element into value; false when the ring is empty. Consumer thread only.
    bool try_pop(T& value)
    {
        const uint32_t tail = _dequeueTail.load(std::memory_order_relaxed);
        // Acquire: the payload the producer published is visible.
        const uint32_t head = _enqueueHead.load(std::memory_order_acquire);
        if (tail == head)
        {
            return false;
        }
        T& slot = _buffer[tail & _bufferMask];
        value = std::move(slot);
        slot.~T();
        // Release: the slot is read before the producer may write it again.
        _dequeueTail.store(tail + 1, std::memory_order_release);
        return true;
    }

    /// True between initialize and uninitialize.
    bool wasInitialized() const { return _buffer != nullptr; }
    /// True when the ring held nothing at the moment of the call; either side may have moved since.
    bool wasEmpty() const
    {
        return _enqueueHead.load(std::memory_order_acquire) == _dequeueTail.load(std::memory_order_acquire);
    }
    /// Number of slots, or 0 before initialize.
    size_t getElementCountMax() const { return _buffer != nullptr ? static_cast<size_t>(_bufferMask) + 1 : 0; }

private:
    /// The caller's slots.
    T* _buffer = nullptr;
    /// Slot count minus 1.
    uint32_t _bufferMask = 0;
    /// Count of pushes; written by the producer.
    std::atomic<uint32_t> _enqueueHead{0};
    /// Count of pops; written by the consumer.
    std::atomic<uint32_t> _dequeueTail{0};
};

} // namespace orv
