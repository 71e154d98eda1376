// orvCore/system/containers/orvPODArray.h
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

#include "system/debug/orvAssert.h"
#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// A dynamic array of plain records, moved with memcpy and memmove and never constructed or destroyed one by one.
/// Storage comes from malloc; the allocator arguments are accepted for symmetry and dropped. One thread per instance.
template <typename T>
class PODArray
{
public:
    typedef T value_type;
    typedef T* iterator;
    typedef const T* const_iterator;

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
    PODArray(const PODArray& other) { assign(other._size, other._data); }
    /// Takes the other's block; the other is left empty.
    PODArray(PODArray&& other) noexcept : _size(other._size), _capacity(other._capacity), _data(other._data)
    {
        other._size = 0;
        other._capacity = 0;
        other._data = nullptr;
    }
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

    /// Sets the size; new elements are value-initialised (zero for scalars). Shrinking keeps the block.
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
        _size = count;
    }
    /// Sets the size; new elements are copies of value. Shrinking keeps the block.
    void resize(size_t count, const T& value)
    {
        if (count > _capacity)
        {
            // The value may live in the block that grow() frees.
            const T copy = value;
            grow(count);
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
    void push_back(const T& value)
    {
        if (_size + 1 > _capacity)
        {
            // The value may live in the block that grow() frees.
            const T copy = value;
            grow(0);
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
            grow(_size + count);
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
        _size = 0;
        if (count > _capacity)
        {
            set_capacity(count);
        }
        fill(0, count, copy);
        _size = count;
    }
    /// Replaces the contents with count records read from source, which must not be inside this array.
    void assign(size_t count, const T* source)
    {
        _size = 0;
        if (count > _capacity)
        {
            set_capacity(count);
        }
        if (count != 0)
        {
            memcpy(_data, source, count * sizeof(T));
        }
        _size = count;
    }

    /// Replaces the contents with count null (value-initialised) elements; settles assign(count, nullptr).
    void assign(size_t count, std::nullptr_t) { assign(count, T()); }

    /// Same size and equal elements, by the elements' operator==.
    bool operator==(const PODArray& other) const
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
    bool operator!=(const PODArray& other) const { return !(*this == other); }

private:
    void fill(size_t begin, size_t end, const T& value)
    {
        for (size_t i = begin; i < end; ++i)
        {
            _data[i] = value;
        }
    }

public:
    // Public on purpose: names and order are the fixed layout that other classes read.
    /// Number of elements in use.
    size_t _size = 0;
    /// Number of elements the block holds.
    size_t _capacity = 0;
    /// The malloc block, or null; owned.
    T* _data = nullptr;
};

} // namespace orv
