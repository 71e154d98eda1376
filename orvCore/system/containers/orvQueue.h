// orvCore/system/containers/orvQueue.h
#pragma once

#include <cstddef>
#include <utility>

#include "system/containers/orvDeque.h"

namespace orv
{

/// A first-in first-out view of a container with push_back, pop_front and front. One thread per instance.
template <typename T, typename C = OrvDeque<T>>
class OrvQueue
{
public:
    /// The standard adaptor types: the elements and the container that holds them.
    typedef T value_type;
    typedef C container_type;

    /// Adds a copy of value at the back.
    void push(const T& value) { _container.push_back(value); }
    /// Adds value, moved, at the back.
    void push(T&& value) { _container.push_back(std::move(value)); }
    /// Drops the front element; the queue must not be empty.
    void pop() { _container.pop_front(); }
    /// The oldest element; the queue must not be empty.
    T& front() { return _container.front(); }
    /// The oldest element; the queue must not be empty.
    const T& front() const { return _container.front(); }
    /// Number of elements.
    size_t size() const { return _container.size(); }
    /// True when there is no element.
    bool empty() const { return _container.empty(); }
    /// Drops every element.
    void clear() { _container.clear(); }

    /// The underlying container.
    const C& getContainer() const { return _container; }

private:
    /// The elements, oldest at the front.
    C _container;
};

} // namespace orv
