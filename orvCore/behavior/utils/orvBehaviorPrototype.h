// orvCore/behavior/utils/orvBehaviorPrototype.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"
#include "system/serialization/orvBinaryStream.h"

namespace orv
{

class AbstractBehavior;

/// Keeps a private deep copy of a behaviour, made through a binary stream, as the template of further instances:
/// the stream keeps the bytes, and every createBehavior reads one more independent copy from them. Host classes
/// are copied like the library's when the host has registered their descriptors. One thread at a time, outside
/// frames.
class BehaviorPrototype
{
    ORV_DECLARE_RTTI(BehaviorPrototype)

public:
    /// No prototype.
    BehaviorPrototype();
    /// A deep copy of behavior, written to the kept stream and read back. A behaviour whose class has no
    /// registered descriptor, or that belongs to a graph (whose copy would take the whole world along), is refused
    /// with a logged error and leaves no prototype.
    explicit BehaviorPrototype(AbstractBehavior& behavior);
    /// Lets the prototype go.
    virtual ~BehaviorPrototype();
    BehaviorPrototype(const BehaviorPrototype&) = delete;
    BehaviorPrototype& operator=(const BehaviorPrototype&) = delete;

    /// The private copy, or null; held by the prototype.
    const AbstractBehavior* getPrototype() const { return _prototype; }
    AbstractBehavior* touchPrototype() { return _prototype; }
    /// Holds prototype (not copied) in place of the present one; its bytes are written again at the next
    /// createBehavior. The streams set it this way.
    void setPrototype(AbstractBehavior* prototype);

    /// A new deep copy of the prototype, read from the kept bytes, with no hold on it: the caller takes it, as it
    /// would a new object. Null, with a logged error, when there is no prototype.
    AbstractBehavior* createBehavior();
    /// The copies made by createBehavior so far.
    unsigned int getInstancesCount() const { return _instancesCount; }

private:
    AbstractBehavior* _prototype = nullptr;
    unsigned int _instancesCount = 0;
    // True when the kept bytes no longer show the prototype and must be written again before the next copy.
    bool _serialize = false;
    BinaryStream _stream;

    // Writes the prototype to the kept bytes in place of what they held.
    void writePrototype(const AbstractBehavior& behavior);
    // Reads one copy from the start of the kept bytes, in the stream's two passes.
    AbstractBehavior* readCopy();
};

} // namespace orv
