// orvCore/system/inspection/orvReferenceCounter.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"
#include "system/thread/orvAtomic.h"

namespace orv
{

/// The base of every object held by SmartPointer: the count of holds lives in the object itself, so a plain
/// pointer can become a further smart pointer at any time. Counts change atomically, from any thread.
class ReferenceCounter
{
    ORV_DECLARE_RTTI(ReferenceCounter)

public:
    /// No holds yet.
    ReferenceCounter() = default;
    /// A copy is a new object: it starts without holds.
    ReferenceCounter(const ReferenceCounter&) {}
    /// The holds belong to the object, not to its value: they are kept.
    ReferenceCounter& operator=(const ReferenceCounter&) { return *this; }
    virtual ~ReferenceCounter();

    /// Number of holds now.
    unsigned int getReferenceCount() const { return _referenceCount.load(); }
    /// Adds a hold; returns the count after.
    unsigned int incrementReferenceCount() { return _referenceCount.fetchAndIncrement() + 1u; }
    /// Drops a hold; returns the count after.
    unsigned int decrementReferenceCount() { return _referenceCount.fetchAndDecrement() - 1u; }

private:
    /// Number of holds, starting at 0.
    atomic32_t _referenceCount;
};

} // namespace orv
