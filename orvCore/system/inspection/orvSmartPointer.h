// orvCore/system/inspection/orvSmartPointer.h
#pragma once

#include "system/inspection/orvAttribute.h"
#include "system/inspection/orvClassDescriptor.h"
#include "system/inspection/orvReferenceCounter.h"

namespace orv
{

/// A shared hold on an object derived from ReferenceCounter; the last hold deletes it. Copies may be made and
/// dropped on different threads; one smart pointer object is used by one thread at a time.
template <class T>
class SmartPointer
{
    ORV_DECLARE_RTTI(SmartPointer)

public:
    /// Holds nothing.
    SmartPointer() = default;
    /// Holds pointee, which may be null.
    SmartPointer(T* pointee) { hold(pointee); }
    /// A further hold on the other's object.
    SmartPointer(const SmartPointer& other) { hold(other._pointee); }
    /// Drops the hold.
    virtual ~SmartPointer() { release(); }

    /// Drops the present hold, then holds the other's object.
    SmartPointer& operator=(const SmartPointer& other)
    {
        if (this != &other)
        {
            release();
            hold(other._pointee);
        }
        return *this;
    }

    /// The object; must not be null.
    T* operator->() const { return _pointee; }
    /// The object; must not be null.
    T& operator*() const { return *_pointee; }
    /// True when nothing is held.
    bool operator!() const { return _pointee == nullptr; }
    /// The object as an untyped pointer, for tests against null.
    operator void*() const { return _pointee; }

    /// Holds on the object, or 0 when nothing is held.
    unsigned int getReferenceCount() const
    {
        return _referenceCounter != nullptr ? _referenceCounter->getReferenceCount() : 0u;
    }
    /// The object, or null; no hold is taken.
    T* getImpl() const { return _pointee; }

private:
    void hold(T* pointee)
    {
        _pointee = pointee;
        if (_pointee != nullptr)
        {
            if (_referenceCounter == nullptr)
            {
                _referenceCounter = _pointee;
            }
            _referenceCounter->incrementReferenceCount();
        }
    }

    void release()
    {
        // The count returned by the decrement decides, so that two last holds dropped at once cannot both delete.
        if (_referenceCounter != nullptr && _referenceCounter->decrementReferenceCount() == 0)
        {
            delete _pointee;
        }
        _referenceCounter = nullptr;
        _pointee = nullptr;
    }

public:
    // Public on purpose: the "Pointee" attribute and the streams reach the held object directly.
    /// The count's owner, the held object seen as its base; null when nothing is held.
    ReferenceCounter* _referenceCounter = nullptr;
    /// The held object, or null.
    T* _pointee = nullptr;
};

ORV_IMPLEMENT_TEMPLATE_RTTI(SmartPointer, "fa5e1ceb-a5b7-4ece-a7ac-1cb993c84838", "orv::SmartPointer")

template <class T>
void SmartPointer<T>::addAttributes()
{
    addAttribute<T*>("Pointee", &SmartPointer::_pointee);
}

} // namespace orv
