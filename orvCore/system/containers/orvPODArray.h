// orvCore/system/containers/orvPODArray.h
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

#include "system/containers/orvArrayBase.h"
#include "system/debug/orvAssert.h"
#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// A dynamic array of plain records, moved with memcpy and memmove and never constructed or destroyed one by one.
/// Storage comes from malloc; the allocator arguments are accepted for symmetry and dropped. One thread per instance.
template <typename T>
class PODArray : public ArrayBase<T, PODArray<T>>
{
    typedef ArrayBase<T, PODArray<T>> Base;

public:
    /// An empty array: no block, capacity 0.
    PODArray() = default;
    /// The same; the allocator arguments are accepted and dropped.
    explicit PODArray(MemoryAllocator* allocator, MemAllocStatId statId = 0)
    {
        (void)allocator;
        (void)statId;
    }
    /// count copies of value.
    PODArray(size_t count, const T& value, MemoryAllocator* allocator = nullptr, MemAllocStatId statId = 0)
    {
        (void)allocator;
        (void)statId;
        assign(count, value);
    }
    /// A copy of count records read from source.
    PODArray(size_t count, const T* source, MemoryAllocator* allocator = nullptr, MemAllocStatId statId = 0)
    {
        (void)allocator;
        (void)statId;
        assign(count, source);
    }
    /// count null (value-initialised) elements; settles PODArray<U*>(count, nullptr) between the two forms above.
    PODArray(size_t count, std::nullptr_t, MemoryAllocator* allocator = nullptr, MemAllocStatId statId = 0)
    {
        (void)allocator;
        (void)statId;
        assign(count, T());
    }
    /// A deep copy, with a block of exactly the other's size.
    PODArray(const PODArray& other) : Base() { assign(other._size, other._data); }
    /// Takes the other's block; the other is left empty.
    PODArray(PODArray&& other) noexcept { this->takeBlock(other); }
    ~PODArray() { free(_data); }

    /// Deep copy; keeps this block when it is large enough.
    PODArray& operator=(const PODArray& other)
    {
        if (this != &other)
        {
            assign(other._size, other._data);
        }
        return *this;
    }
    /// Takes the other's block and frees this one.
    PODArray& operator=(PODArray&& other) noexcept
    {
        if (this != &other)
        {
            free(_data);
            this->takeBlock(other);
        }
        return *this;
    }

    /// Sets the size; new elements are value-initialised (zero for scalars). Shrinking keeps the block.
    void resize(size_t count)
    {
        if (count > _capacity)
        {
            this->grow(count);
        }
        for (size_t i = _size; i < count; ++i)
        {
            new (&_data[i]) T();
        }
        _size = count;
    }
    /// Sets the size; new elements are copies of value. Shrinking keeps the block.
    void resize(size_t count, const T& value)
    {
        if (count > _capacity)
        {
            // The value may live in the block that grow() frees.
            const T copy = value;
            this->grow(count);
            fill(_size, count, copy);
        }
        else
        {
            fill(_size, count, value);
        }
        _size = count;
    }
    /// Drops every element and keeps the block.
    void clear() { _size = 0; }

    /// Reallocates to exactly count elements, cutting the size if needed; 0 frees the block.
    void set_capacity(size_t count)
    {
        if (count == _capacity)
        {
            return;
        }
        if (count == 0)
        {
            free(_data);
            _data = nullptr;
            _size = 0;
            _capacity = 0;
            return;
        }
        T* block = static_cast<T*>(realloc(_data, count * sizeof(T)));
        orvAssertMsg(block != nullptr, "out of memory for %zu elements", count);
        _data = block;
        _capacity = count;
        if (_size > count)
        {
            _size = count;
        }
    }

    /// Appends a copy of value.
    void push_back(const T& value)
    {
        if (_size + 1 > _capacity)
        {
            // The value may live in the block that grow() frees.
            const T copy = value;
            this->grow(0);
            _data[_size++] = copy;
            return;
        }
        _data[_size++] = value;
    }
    /// Drops the last element; the array must not be empty.
    void pop_back() { --_size; }

    /// Removes the element at pos, moving the tail down. Returns pos, now the next element.
    T* erase(T* pos) { return erase(pos, pos + 1); }
    /// Removes the elements of [first, last), moving the tail down. Returns first.
    T* erase(T* first, T* last)
    {
        const size_t begin = static_cast<size_t>(first - _data);
        const size_t count = static_cast<size_t>(last - first);
        if (count != 0)
        {
            memmove(_data + begin, _data + begin + count, (_size - begin - count) * sizeof(T));
            _size -= count;
        }
        return _data + begin;
    }
    /// Inserts a copy of value before pos. Returns the new element's position.
    T* insert(T* pos, const T& value) { return insert(pos, 1, value); }
    /// Inserts count copies of value before pos. Returns the first new element's position.
    T* insert(T* pos, size_t count, const T& value)
    {
        const size_t index = static_cast<size_t>(pos - _data);
        const T copy = value;
        if (_size + count > _capacity)
        {
            this->grow(_size + count);
        }
        memmove(_data + index + count, _data + index, (_size - index) * sizeof(T));
        fill(index, index + count, copy);
        _size += count;
        return _data + index;
    }

    /// Replaces the contents with count copies of value.
    void assign(size_t count, const T& value)
    {
        const T copy = value;
        clear();
        this->reserve(count);
        fill(0, count, copy);
        _size = count;
    }
    /// Replaces the contents with count records read from source, which must not be inside this array.
    void assign(size_t count, const T* source)
    {
        clear();
        this->reserve(count);
        if (count != 0)
        {
            memcpy(_data, source, count * sizeof(T));
        }
        _size = count;
    }
    /// Replaces the contents with count null (value-initialised) elements; settles assign(count, nullptr).
    void assign(size_t count, std::nullptr_t) { assign(count, T()); }

private:
    void fill(size_t begin, size_t end, const T& value)
    {
        for (size_t i = begin; i < end; ++i)
        {
            _data[i] = value;
        }
    }

public:
    // The fields live in ArrayBase, in this order: _size, _capacity, _data.
    using Base::_capacity;
    using Base::_data;
    using Base::_size;
};

} // namespace orv
