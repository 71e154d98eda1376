// orvCore/system/containers/orvMPMC_RingBuffer.h
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

#include "system/containers/orvRingBufferSize.h"

namespace orv
{

/// A bounded lock-free ring for any number of producer and consumer threads, on memory the caller provides.
/// Each slot carries a sequence number that says whose turn it is, so no slot is read before it is fully written.
/// Never allocates.
template <typename T>
class MPMC_RingBuffer
{
public:
    /// One slot: its sequence number, then room for the payload.
    struct Slot
    {
        /// Equal to the push counter when free for that push, to the pop counter plus 1 when full for that pop.
        std::atomic<uint32_t> _sequence;
        /// The payload, constructed by a push and destroyed by a pop.
        alignas(T) unsigned char _payload[sizeof(T)];
    };

    /// A ring with no buffer yet.
    MPMC_RingBuffer() = default;
    /// Not copyable: the counters are shared between threads.
    MPMC_RingBuffer(const MPMC_RingBuffer&) = delete;
    MPMC_RingBuffer& operator=(const MPMC_RingBuffer&) = delete;
    ~MPMC_RingBuffer() { uninitialize(); }

    /// Bytes to give initialize for elementCountMax slots; 0 unless the count is a power of two that fits in
    /// 32 bits. Fatal below 2.
    static size_t getBufferSizeToAllocate(size_t elementCountMax)
    {
        return RingBufferSize<sizeof(Slot)>::getBufferSizeToAllocate(elementCountMax);
    }

    /// Starts the ring empty on buffer, each slot's sequence at its index. Does not take ownership.
    /// Before any producer or consumer runs.
    void initialize(void* buffer, size_t bufferSize, size_t elementCountMax)
    {
        RingBufferSize<sizeof(Slot)>::checkBuffer(buffer, bufferSize, elementCountMax);
        _buffer = static_cast<Slot*>(buffer);
        _bufferMask = static_cast<uint32_t>(elementCountMax - 1);
        for (uint32_t i = 0; i <= _bufferMask; ++i)
        {
            new (&_buffer[i]._sequence) std::atomic<uint32_t>(i);
        }
        _enqueueHead.store(0, std::memory_order_relaxed);
        _dequeueTail.store(0, std::memory_order_relaxed);
    }
    /// Destroys what is left and forgets the buffer, which the caller then frees. After every thread stopped.
    void uninitialize()
    {
        if (_buffer == nullptr)
        {
            return;
        }
        const uint32_t head = _enqueueHead.load(std::memory_order_acquire);
        for (uint32_t tail = _dequeueTail.load(std::memory_order_acquire); tail != head; ++tail)
        {
            std::launder(reinterpret_cast<T*>(_buffer[tail & _bufferMask]._payload))->~T();
        }
        _buffer = nullptr;
        _bufferMask = 0;
        _enqueueHead.store(0, std::memory_order_relaxed);
        _dequeueTail.store(0, std::memory_order_relaxed);
    }

    /// Adds a copy of value; false when the ring is full. Any thread.
    bool try_push(const T& value)
    {
        uint32_t head = _enqueueHead.load(std::memory_order_relaxed);
        Slot* slot = nullptr;
        for (;;)
        {
            slot = &_buffer[head & _bufferMask];
            const uint32_t sequence = slot->_sequence.load(std::memory_order_acquire);
            const int32_t distance = static_cast<int32_t>(sequence - head);
            if (distance == 0)
            {
                // The slot is free for this push: claim it by moving the head on.
                if (_enqueueHead.compare_exchange_weak(head, head + 1, std::memory_order_relaxed))
                {
                    break;
                }
            }
            else if (distance < 0)
            {
                // The slot still holds the element of the previous lap.
                return false;
            }
            else
            {
                head = _enqueueHead.load(std::memory_order_relaxed);
            }
        }
        new (slot->_payload) T(value);
        // Release: the payload is complete before a consumer sees the sequence.
        slot->_sequence.store(head + 1, std::memory_order_release);
        return true;
    }
    /// Moves the oldest element into value; false when the ring is empty. Any thread.
    bool try_pop(T& value)
    {
        uint32_t tail = _dequeueTail.load(std::memory_order_relaxed);
        Slot* slot = nullptr;
        for (;;)
        {
            slot = &_buffer[tail & _bufferMask];
            const uint32_t sequence = slot->_sequence.load(std::memory_order_acquire);
            const int32_t distance = static_cast<int32_t>(sequence - (tail + 1));
            if (distance == 0)
            {
                if (_dequeueTail.compare_exchange_weak(tail, tail + 1, std::memory_order_relaxed))
                {
                    break;
                }
            }
            else if (distance < 0)
            {
                // Not yet written for this lap.
                return false;
            }
            else
            {
                tail = _dequeueTail.load(std::memory_order_relaxed);
            }
        }
        T* payload = std::launder(reinterpret_cast<T*>(slot->_payload));
        value = std::move(*payload);
        payload->~T();
        // Release: the slot is read before the producer of the next lap may write it.
        slot->_sequence.store(tail + _bufferMask + 1, std::memory_order_release);
        return true;
    }

    /// True between initialize and uninitialize.
    bool wasInitialized() const { return _buffer != nullptr; }
    /// True when no push was waiting to be popped at the moment of the call; others may have moved since.
    bool wasEmpty() const
    {
        return _enqueueHead.load(std::memory_order_acquire) == _dequeueTail.load(std::memory_order_acquire);
    }
    /// Number of slots, or 0 before initialize.
    size_t getElementCountMax() const { return _buffer != nullptr ? static_cast<size_t>(_bufferMask) + 1 : 0; }

private:
    // Producers, consumers and the read-only fields each keep a cache line of their own.
    /// Padding before the read-only fields.
    char _cachelinePad0[64] = {};
    /// The caller's slots.
    Slot* _buffer = nullptr;
    /// Slot count minus 1.
    uint32_t _bufferMask = 0;
    /// Padding between the read-only fields and the producers' counter.
    char _cachelinePad1[64] = {};
    /// Count of claimed pushes.
    std::atomic<uint32_t> _enqueueHead{0};
    /// Padding between the producers' and the consumers' counters.
    char _cachelinePad2[64] = {};
    /// Count of claimed pops.
    std::atomic<uint32_t> _dequeueTail{0};
    /// Padding after the consumers' counter.
    char _cachelinePad3[64] = {};
};

} // namespace orv
