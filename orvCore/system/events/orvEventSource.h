// orvCore/system/events/orvEventSource.h
#pragma once

#include "system/containers/orvPODArray.h"

namespace orv
{

/// Base of events: a reference to the object that published it.
template <class T>
class Event
{
public:
    /// An event of source, which it refers to and does not own; any thread that owns the source.
    explicit Event(T& source) : _source(&source) {}
    virtual ~Event() = default;
    T& getSource() const { return *_source; }

private:
    T* _source;
};

/// Publishes events of type E to listeners, by calling one member function of Listener on each, in list order.
/// A listener added twice hears each event twice.
template <class Listener, class E>
class EventSource
{
public:
    /// The member function of Listener that hears an event.
    typedef void (Listener::*ProcessEvent)(const E&);

    /// A source with no listener, calling processEvent on each listener it will have. One thread at a time.
    explicit EventSource(ProcessEvent processEvent) : _processEvent(processEvent) {}
    virtual ~EventSource() = default;

    /// Appends a listener, not owned; it must outlive its place in the list.
    void addListener(Listener* listener) { _listeners.push_back(listener); }

    /// Removes the first occurrence of the listener; false if it is absent.
    bool removeListener(Listener* listener)
    {
        for (size_t i = 0; i < _listeners.size(); ++i)
        {
            if (_listeners[i] == listener)
            {
                _listeners.erase(_listeners.begin() + i);
                return true;
            }
        }
        return false;
    }

    /// True when the listener is in the list.
    bool hasListener(const Listener* listener) const
    {
        for (size_t i = 0; i < _listeners.size(); ++i)
        {
            if (_listeners[i] == listener)
            {
                return true;
            }
        }
        return false;
    }

    /// The listeners in the order they hear events; replaceable whole, and counted.
    const PODArray<Listener*>& getListeners() const { return _listeners; }
    void setListeners(const PODArray<Listener*>& listeners) { _listeners = listeners; }
    size_t getListenersCount() const { return _listeners.size(); }

    /// Calls every listener with the event, in list order, on the calling thread.
    void publishEvent(const E& event) const
    {
        for (size_t i = 0; i < _listeners.size(); ++i)
        {
            (_listeners[i]->*_processEvent)(event);
        }
    }

private:
    ProcessEvent _processEvent;
    PODArray<Listener*> _listeners;
};

} // namespace orv
