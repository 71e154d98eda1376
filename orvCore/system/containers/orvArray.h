// orvCore/system/containers/orvArray.h
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

#include "system/containers/orvArrayBase.h"
#include "system/debug/orvAssert.h"
#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// A dynamic array that constructs, copies and destroys its elements one by one.
/// Storage comes from malloc; the allocator arguments are accepted for symmetry and dropped. One thread per instance.
template <typename T>
class Array : public ArrayBase<T, Array<T>>
{
    typedef ArrayBase<T, Array<T>> Base;

public:
    /// An empty array: no block, capacity 0.
    Array() = default;
    /// The same; the allocator arguments are accepted and dropped.
    explicit Array(MemoryAllocator* allocator, MemAllocStatId statId = 0)
    {
        (void)allocator;
        (void)statId;
    }
    /// count copies of value.
    Array(size_t count, const T& value, MemoryAllocator* allocator = nullptr, MemAllocStatId statId = 0)
    {
        (void)allocator;
        (void)statId;
        assign(count, value);
    }
    /// A deep copy, with a block of exactly the other's size.
    Array(const Array& other) : Base()
    {
        set_capacity(other._size);
        constructCopies(other);
    }
    /// Takes the other's block; the other is left empty.
    Array(Array&& other) noexcept { this->takeBlock(other); }
    ~Array() { set_capacity(0); }

    /// Deep copy; keeps this block when it is large enough.
    Array& operator=(const Array& other)
    {
        if (this != &other)
        {
            clear();
            this->reserve(other._size);
            constructCopies(other);
        }
        return *this;
    }
    /// Takes the other's block and releases this one.
    Array& operator=(Array&& other) noexcept
    {
        if (this != &other)
        {
            set_capacity(0);
            this->takeBlock(other);
        }
        return *this;
    }

    /// Sets the size: new elements are default-constructed in place, surplus ones destroyed. Shrinking keeps the block.
    void resize(size_t count) { resizeWith(count); }
    /// Sets the size: new elements are copies of value, surplus ones destroyed. Shrinking keeps the block.
    void resize(size_t count, const T& value)
    {
        // The value may live in the block that grow() releases or among the surplus destroyed here.
        const T copy(value);
        resizeWith(count, copy);
    }
    /// Destroys every element and keeps the block.
    void clear()
    {
        destroy(0, _size);
        _size = 0;
    }

    /// Reallocates to exactly count elements, destroying those past it; 0 frees the block.
    void set_capacity(size_t count)
    {
        if (count == _capacity)
        {
            return;
        }
        moveToBlock(count != 0 ? allocate(count) : nullptr, count, _size < count ? _size : count);
    }

    /// Appends a copy of value.
    void push_back(const T& value) { emplace_back(value); }
    /// Appends value, moved.
    void push_back(T&& value) { emplace_back(std::move(value)); }
    /// Appends an element built from the arguments. Returns it.
    template <typename... Args>
    T& emplace_back(Args&&... args)
    {
        if (_size + 1 > _capacity)
        {
            // Build the new element before the old block goes: the arguments may refer into it.
            const size_t count = this->getGrownCapacity(_size + 1);
            T* block = allocate(count);
            new (&block[_size]) T(std::forward<Args>(args)...);
            moveToBlock(block, count, _size);
        }
        else
        {
            new (&_data[_size]) T(std::forward<Args>(args)...);
        }
        return _data[_size++];
    }
    /// Destroys the last element; the array must not be empty.
    void pop_back()
    {
        --_size;
        _data[_size].~T();
    }

    /// Removes the element at pos, moving the tail down. Returns pos, now the next element.
    T* erase(T* pos) { return erase(pos, pos + 1); }
    /// Removes the elements of [first, last), moving the tail down. Returns first.
    T* erase(T* first, T* last)
    {
        const size_t begin = static_cast<size_t>(first - _data);
        const size_t count = static_cast<size_t>(last - first);
        if (count != 0)
        {
            for (size_t i = begin; i + count < _size; ++i)
            {
                _data[i] = std::move(_data[i + count]);
            }
            destroy(_size - count, _size);
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
        const T copy(value);
        if (_size + count > _capacity)
        {
            this->grow(_size + count);
        }
        // Slots at or past the old size hold no object yet: construct there, assign below.
        const size_t oldSize = _size;
        for (size_t i = oldSize; i-- > index;)
        {
            const size_t target = i + count;
            if (target >= oldSize)
            {
                new (&_data[target]) T(std::move(_data[i]));
            }
            else
            {
                _data[target] = std::move(_data[i]);
            }
        }
        for (size_t i = index; i < index + count; ++i)
        {
            if (i < oldSize)
            {
                _data[i] = copy;
            }
            else
            {
                new (&_data[i]) T(copy);
            }
        }
        _size += count;
        return _data + index;
    }

    /// Replaces the contents with count copies of value.
    void assign(size_t count, const T& value)
    {
        const T copy(value);
        clear();
        this->reserve(count);
        for (size_t i = 0; i < count; ++i)
        {
            new (&_data[i]) T(copy);
        }
        _size = count;
    }

private:
    static T* allocate(size_t count)
    {
        T* block = static_cast<T*>(malloc(count * sizeof(T)));
        orvAssertMsg(block != nullptr, "out of memory for %zu elements", count);
        return block;
    }
    // Moves the first kept elements into block, which holds capacity elements, destroys the rest and frees the old
    // block.
    void moveToBlock(T* block, size_t capacity, size_t kept)
    {
        for (size_t i = 0; i < kept; ++i)
        {
            new (&block[i]) T(std::move(_data[i]));
        }
        destroy(0, _size);
        free(_data);
        _data = block;
        _capacity = capacity;
        _size = kept;
    }
    // Builds the elements from the size up to count from args (none: value-initialised), destroys those past it.
    template <typename... Args>
    void resizeWith(size_t count, const Args&... args)
    {
        if (count > _capacity)
        {
            this->grow(count);
        }
        for (size_t i = _size; i < count; ++i)
        {
            new (&_data[i]) T(args...);
        }
        destroy(count, _size);
        _size = count;
    }
    // Copies other's elements into this block, which is empty and large enough.
    void constructCopies(const Array& other)
    {
        for (size_t i = 0; i < other._size; ++i)
        {
            new (&_data[i]) T(other._data[i]);
        }
        _size = other._size;
    }
    void destroy(size_t begin, size_t end)
    {
        for (size_t i = begin; i < end; ++i)
        {
            _data[i].~T();
        }
    }

public:
    // The fields live in ArrayBase, in this order: _size, _capacity, _data.
    using Base::_capacity;
    using Base::_data;
    using Base::_size;
};

} // namespace orv
