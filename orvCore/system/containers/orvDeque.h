// orvCore/system/containers/orvDeque.h
#pragma once

#include <type_traits>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "system/containers/orvPODArray.h"
#include "system/debug/orvAssert.h"

namespace orv
{

/// A first-in first-out store in fixed blocks of 512 bytes, mapped by a slot array of block addresses.
/// Blocks freed at the front are kept and reused, so a steady push and pop cycle does not allocate.
/// One thread per instance.
template <typename T>
class OrvDeque
{
public:
    /// The standard container types.
    typedef T value_type;

    /// Slots of the block map at start; the head starts in the middle of them.
    static constexpr size_t _minimumMapSize = 8;
    /// Elements per block: as many as 512 bytes hold, at least one (64 for a pointer).
    static constexpr size_t _blockSize = sizeof(T) < 512 ? 512 / sizeof(T) : 1;

    static_assert(alignof(T) <= alignof(std::max_align_t), "blocks come from malloc");

    /// An empty deque with its 8 empty slots.
    OrvDeque() { reset(); }
    /// A copy of the elements, in order.
    OrvDeque(const OrvDeque& other)
    {
        reset();
        copyElements(other);
    }
    /// Takes the other's blocks; the other is left empty and usable.
    OrvDeque(OrvDeque&& other) noexcept
        : _blockAdresses(std::move(other._blockAdresses)), _recycledBlocks(std::move(other._recycledBlocks)),
          _size(other._size), _headBlockIndex(other._headBlockIndex),
          _headBlockFirstElementIndex(other._headBlockFirstElementIndex)
    {
        other._size = 0;
        other.reset();
    }
    ~OrvDeque() { release(); }

    /// Replaces the elements with a copy of the other's, in order.
    OrvDeque& operator=(const OrvDeque& other)
    {
        if (this != &other)
        {
            clear();
            copyElements(other);
        }
        return *this;
    }
    /// Takes the other's blocks; the other is left empty and usable.
    OrvDeque& operator=(OrvDeque&& other) noexcept
    {
        if (this != &other)
        {
            release();
            _blockAdresses = std::move(other._blockAdresses);
            _recycledBlocks = std::move(other._recycledBlocks);
            _size = other._size;
            _headBlockIndex = other._headBlockIndex;
            _headBlockFirstElementIndex = other._headBlockFirstElementIndex;
            other._size = 0;
            other.reset();
        }
        return *this;
    }

    /// Appends a copy of value at the back.
    void push_back(const T& value)
    {
        new (reserveBack()) T(value);
        ++_size;
    }
    /// Appends value, moved, at the back.
    void push_back(T&& value)
    {
        new (reserveBack()) T(std::move(value));
        ++_size;
    }

    /// Destroys the front element; the deque must not be empty.
    void pop_front()
    {
        T* block = _blockAdresses[_headBlockIndex];
        block[_headBlockFirstElementIndex].~T();
        ++_headBlockFirstElementIndex;
        if (_headBlockFirstElementIndex == _blockSize)
        {
            _recycledBlocks.push_back(block);
            _blockAdresses[_headBlockIndex] = nullptr;
            ++_headBlockIndex;
            _headBlockFirstElementIndex = 0;
            // Drained at a block edge: every slot is empty, so the head goes back to the middle.
            if (_size == 1)
            {
                _headBlockIndex = _minimumMapSize / 2;
            }
        }
        --_size;
        // A record queue that drains mid-block starts its next fill at the block's start, so that a queue filled
        // and drained the same way each time needs the same blocks each time and stops allocating.
        if (_size == 0 && !std::is_pointer<T>::value)
        {
            _headBlockFirstElementIndex = 0;
        }
    }

    /// The front element; the deque must not be empty.
    T& front() { return _blockAdresses[_headBlockIndex][_headBlockFirstElementIndex]; }
    /// The front element; the deque must not be empty.
    const T& front() const { return _blockAdresses[_headBlockIndex][_headBlockFirstElementIndex]; }
    /// The element index places behind the front, unchecked.
    T& operator[](size_t index) { return *address(index); }
    /// The element index places behind the front, unchecked.
    const T& operator[](size_t index) const { return *address(index); }

    /// Number of elements.
    size_t size() const { return _size; }
    /// True when there is no element.
    bool empty() const { return _size == 0; }

    /// Destroys every element; the blocks are kept for reuse.
    void clear()
    {
        while (_size != 0)
        {
            pop_front();
        }
    }

    /// Slots in the block map; for inspection.
    size_t getMapSize() const { return _blockAdresses.size(); }
    /// Slot of the front block.
    size_t getHeadBlockIndex() const { return _headBlockIndex; }
    /// Index of the front element in its block.
    size_t getHeadBlockFirstElementIndex() const { return _headBlockFirstElementIndex; }
    /// Blocks kept for reuse.
    size_t getRecycledBlockCount() const { return _recycledBlocks.size(); }

private:
    void reset()
    {
        _blockAdresses.assign(_minimumMapSize, nullptr);
        _headBlockIndex = _minimumMapSize / 2;
        _headBlockFirstElementIndex = 0;
    }

    T* address(size_t index) const
    {
        const size_t position = _headBlockFirstElementIndex + index;
        return _blockAdresses[position / _blockSize + _headBlockIndex] + position % _blockSize;
    }

    // The slot for the element behind the back, with its block in place.
    T* reserveBack()
    {
        size_t position = _headBlockFirstElementIndex + _size;
        size_t block = position / _blockSize + _headBlockIndex;
        if (block >= _blockAdresses.size())
        {
            if (_headBlockIndex != 0)
            {
                // Room at the bottom: slide the used slots down so the head sits at half its index.
                const size_t newHead = _headBlockIndex >> 1;
                const size_t shift = _headBlockIndex - newHead;
                const size_t slotCount = _blockAdresses.size();
                memmove(&_blockAdresses[newHead], &_blockAdresses[_headBlockIndex],
                        (slotCount - _headBlockIndex) * sizeof(T*));
                memset(&_blockAdresses[slotCount - shift], 0, shift * sizeof(T*));
                _headBlockIndex = newHead;
            }
            else
            {
                _blockAdresses.resize(_blockAdresses.size() * 2, nullptr);
            }
            block = position / _blockSize + _headBlockIndex;
        }
        T*& slot = _blockAdresses[block];
        if (slot == nullptr)
        {
            if (_recycledBlocks.any())
            {
                slot = _recycledBlocks.back();
                _recycledBlocks.pop_back();
            }
            else
            {
                const size_t bytes = sizeof(T) < 512 ? 512 : sizeof(T);
                slot = static_cast<T*>(malloc(bytes));
                orvAssertMsg(slot != nullptr, "out of memory for a deque block");
            }
        }
        return slot + position % _blockSize;
    }

    void copyElements(const OrvDeque& other)
    {
        for (size_t i = 0; i < other._size; ++i)
        {
            push_back(other[i]);
        }
    }

    void release()
    {
        clear();
        for (size_t i = 0; i < _blockAdresses.size(); ++i)
        {
            free(_blockAdresses[i]);
        }
        for (size_t i = 0; i < _recycledBlocks.size(); ++i)
        {
            free(_recycledBlocks[i]);
        }
        _blockAdresses.clear();
        _recycledBlocks.clear();
    }

    /// Block addresses by slot; null where no block is in use.
    PODArray<T*> _blockAdresses;
    /// Blocks emptied at the front, reused before any new malloc.
    PODArray<T*> _recycledBlocks;
    /// Number of elements.
    size_t _size = 0;
    /// Slot of the front block.
    size_t _headBlockIndex = 0;
    /// Index of the front element in its block.
    size_t _headBlockFirstElementIndex = 0;
};

} // namespace orv
