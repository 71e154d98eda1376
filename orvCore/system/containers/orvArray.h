// orvCore/system/containers/orvArray.h
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

#include "system/debug/orvAssert.h"
#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// A dynamic array that constructs, copies and destroys its elements one by one.
/// Storage comes from malloc; the allocator arguments are accepted for symmetry and dropped. One thread per instance.
template <typename T>
class Array
{
public:
    typedef T value_type;
    typedef T* iterator;
    typedef const T* const_iterator;

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
    Array(const Array& other)
    {
        set_capacity(other._size);
        for (size_t i = 0; i < other._size; ++i)
        {
            new (&_data[i]) T(other._data[i]);
        }
        _size = other._size;
    }
    /// Takes the other's block; the other is left empty.
    Array(Array&& other) noexcept : _size(other._size), _capacity(other._capacity), _data(other._data)
    {
        other._size = 0;
        other._capacity = 0;
        other._data = nullptr;
    }
    ~Array() { set_capacity(0); }

    /// Deep copy; keeps this block when it is large enough.
    Array& operator=(const Array& other)
    {
        if (this != &other)
        {
            clear();
            reserve(other._size);
            for (size_t i = 0; i < other._size; ++i)
            {
                new (&_data[i]) T(other._data[i]);
            }
            _size = other._size;
        }
        return *this;
    }
    /// Takes the other's block and releases this one.
    Array& operator=(Array&& other) noexcept
    {
        if (this != &other)
        {
            set_capacity(0);
            _size = other._size;
            _capacity = other._capacity;
            _data = other._data;
            other._size = 0;
            other._capacity = 0;
            other._data = nullptr;
        }
        return *this;
    }

    /// The allocator for the contents of container classes: the one in force.
    static MemoryAllocator* getClassAllocator() { return getDefaultAllocator(); }
    /// The statistics category for the contents of container classes.
    static MemAllocStatId getClassMemoryStatId() { return 0; }

    /// The element at index; fatal when out of range.
    T& at(size_t index)
    {
        orvAssert(index < _size);
        return _data[index];
    }
    /// The element at index; fatal when out of range.
    const T& at(size_t index) const
    {
        orvAssert(index < _size);
        return _data[index];
    }
    /// The element at index, unchecked.
    T& operator[](size_t index) { return _data[index]; }
    /// The element at index, unchecked.
    const T& operator[](size_t index) const { return _data[index]; }

    /// Number of elements.
    size_t size() const { return _size; }
    /// True when there is at least one element.
    bool any() const { return _size != 0; }
    /// True when there is no element.
    bool empty() const { return _size == 0; }
    /// Elements that fit before the block must grow.
    size_t capacity() const { return _capacity; }
    /// The block, or null when nothing was ever stored.
    T* data() { return _data; }
    /// The block, or null when nothing was ever stored.
    const T* data() const { return _data; }

    /// First element.
    T* begin() { return _data; }
    /// First element.
    const T* begin() const { return _data; }
    /// One past the last element.
    T* end() { return _data + _size; }
    /// One past the last element.
    const T* end() const { return _data + _size; }
    /// First element; the array must not be empty.
    T& front() { return _data[0]; }
    /// First element; the array must not be empty.
    const T& front() const { return _data[0]; }
    /// Last element; the array must not be empty.
    T& back() { return _data[_size - 1]; }
    /// Last element; the array must not be empty.
    const T& back() const { return _data[_size - 1]; }

    /// Sets the size: new elements are default-constructed in place, surplus ones destroyed. Shrinking keeps the block.
    void resize(size_t count)
    {
        if (count > _capacity)
        {
            grow(count);
        }
        for (size_t i = _size; i < count; ++i)
        {
            new (&_data[i]) T();
        }
        destroy(count, _size);
        _size = count;
    }
    /// Sets the size: new elements are copies of value, surplus ones destroyed. Shrinking keeps the block.
    void resize(size_t count, const T& value)
    {
        // The value may live in the block that grow() releases or among the surplus destroyed here.
        const T copy(value);
        if (count > _capacity)
        {
            grow(count);
        }
        for (size_t i = _size; i < count; ++i)
        {
            new (&_data[i]) T(copy);
        }
        destroy(count, _size);
        _size = count;
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
        T* block = nullptr;
        const size_t kept = _size < count ? _size : count;
        if (count != 0)
        {
            block = static_cast<T*>(malloc(count * sizeof(T)));
            orvAssertMsg(block != nullptr, "out of memory for %zu elements", count);
            for (size_t i = 0; i < kept; ++i)
            {
                new (&block[i]) T(std::move(_data[i]));
            }
        }
        destroy(0, _size);
        free(_data);
        _data = block;
        _capacity = count;
        _size = kept;
    }
    /// Makes room for count elements without changing the size; the block only grows.
    void reserve(size_t count)
    {
        if (count > _capacity)
        {
            set_capacity(count);
        }
    }
    /// Grows to the greater of count and twice the capacity plus 8; grow(0) is the push path.
    void grow(size_t count = 0)
    {
        const size_t doubled = _capacity * 2 + 8;
        set_capacity(count > doubled ? count : doubled);
    }
    /// Shrinks the block to the size; an empty array frees it.
    void trim() { set_capacity(_size); }

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
            const size_t count = _capacity * 2 + 8;
            T* block = static_cast<T*>(malloc(count * sizeof(T)));
            orvAssertMsg(block != nullptr, "out of memory for %zu elements", count);
            new (&block[_size]) T(std::forward<Args>(args)...);
            for (size_t i = 0; i < _size; ++i)
            {
                new (&block[i]) T(std::move(_data[i]));
            }
            destroy(0, _size);
            free(_data);
            _data = block;
            _capacity = count;
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
            grow(_size + count);
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
        reserve(count);
        for (size_t i = 0; i < count; ++i)
        {
            new (&_data[i]) T(copy);
        }
        _size = count;
    }

    /// Same size and equal elements, by the elements' operator==.
    bool operator==(const Array& other) const
    {
        if (_size != other._size)
        {
            return false;
        }
        for (size_t i = 0; i < _size; ++i)
        {
            if (!(_data[i] == other._data[i]))
            {
                return false;
            }
        }
        return true;
    }
    /// Not operator==.
    bool operator!=(const Array& other) const { return !(*this == other); }

private:
    void destroy(size_t begin, size_t end)
    {
        for (size_t i = begin; i < end; ++i)
        {
            _data[i].~T();
        }
    }

public:
    // Public on purpose: names and order are the fixed layout that other classes read.
    /// Number of constructed elements.
    size_t _size = 0;
    /// Number of elements the block holds.
    size_t _capacity = 0;
    /// The malloc block, or null; owned.
    T* _data = nullptr;
};

} // namespace orv
