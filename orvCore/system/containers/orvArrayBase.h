// orvCore/system/containers/orvArrayBase.h
#pragma once

#include <cstddef>

#include "system/debug/orvAssert.h"
#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// The block, the size and the operations that do not depend on how elements are moved, shared by Array and
/// PODArray. Derived supplies set_capacity, which moves the elements its own way. Never used on its own.
template <typename T, typename Derived>
class ArrayBase
{
public:
    /// The standard container types: elements, walked by pointer.
    typedef T value_type;
    typedef T* iterator;
    typedef const T* const_iterator;

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

    /// Makes room for count elements without changing the size; the block only grows.
    void reserve(size_t count)
    {
        if (count > _capacity)
        {
            touchDerived().set_capacity(count);
        }
    }
    /// Grows to the greater of count and twice the capacity plus 8; grow(0) is the push path.
    void grow(size_t count = 0) { touchDerived().set_capacity(getGrownCapacity(count)); }
    /// Shrinks the block to the size; an empty array frees it.
    void trim() { touchDerived().set_capacity(_size); }

    /// Same size and equal elements, by the elements' operator==.
    bool operator==(const Derived& other) const
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
    bool operator!=(const Derived& other) const { return !(*this == other); }

protected:
    ArrayBase() = default;
    // Derived copies and moves, as only it knows how to treat the elements.
    ArrayBase(const ArrayBase&) = delete;
    ArrayBase& operator=(const ArrayBase&) = delete;
    ~ArrayBase() = default;

    /// The capacity that growing to hold count elements gives: the greater of count and twice the capacity plus 8.
    size_t getGrownCapacity(size_t count) const
    {
        const size_t doubled = _capacity * 2 + 8;
        return count > doubled ? count : doubled;
    }
    /// Takes the other's block and leaves the other empty; this array's block must be released already.
    void takeBlock(ArrayBase& other)
    {
        _size = other._size;
        _capacity = other._capacity;
        _data = other._data;
        other._size = 0;
        other._capacity = 0;
        other._data = nullptr;
    }

private:
    Derived& touchDerived() { return static_cast<Derived&>(*this); }

public:
    // Public on purpose: names and order are the fixed layout that other classes read.
    /// Number of elements in use; in an Array each one is constructed.
    size_t _size = 0;
    /// Number of elements the block holds.
    size_t _capacity = 0;
    /// The malloc block, or null; owned.
    T* _data = nullptr;
};

} // namespace orv
