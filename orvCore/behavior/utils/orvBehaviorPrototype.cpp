// orvCore/behavior/utils/orvBehaviorPrototype.cpp
#include "behavior/utils/orvBehaviorPrototype.h"

#include <string>

#include "behavior/engine/orvAbstractBehavior.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

// Drops the prototype's hold; the last hold deletes, as a smart pointer would.
void release(AbstractBehavior* behavior)
{
    if (behavior != nullptr && behavior->decrementReferenceCount() == 0)
    {
        delete behavior;
    }
}

} // namespace

ORV_IMPLEMENT_RTTI(BehaviorPrototype, "96eb8b7a-14e3-4e92-9af0-eefad07670f4", "BehaviorPrototype")

void BehaviorPrototype::addAttributes()
{
    addAccessorsAttribute<AbstractBehavior*>("prototype", &BehaviorPrototype::touchPrototype,
                                             &BehaviorPrototype::setPrototype);
}

BehaviorPrototype::BehaviorPrototype() = default;

BehaviorPrototype::BehaviorPrototype(AbstractBehavior& behavior)
{
    const RTTI* rtti = behavior.getRTTI();
    if (rtti == nullptr || !RTTI::canCreateInstance(rtti->getTypeID()))
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot make a prototype of a behavior of type "
                                               << (rtti != nullptr ? rtti->getTypeName() : "(unregistered)")
                                               << " : its class has no registered descriptor with a creator");
        return;
    }
    if (behavior.getBehaviorGraph() != nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot make a prototype of a behavior of type "
                                               << rtti->getTypeName() << " : it belongs to a behavior graph");
        return;
    }
    writePrototype(behavior);
    _prototype = readCopy();
    if (_prototype == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot make a prototype of a behavior of type "
                                               << rtti->getTypeName() << " : it did not read back");
        return;
    }
    _prototype->incrementReferenceCount();
}

BehaviorPrototype::~BehaviorPrototype()
{
    release(_prototype);
}

void BehaviorPrototype::setPrototype(AbstractBehavior* prototype)
{
    // The new one is held first, so that setting the present prototype again never deletes it.
    if (prototype != nullptr)
    {
        prototype->incrementReferenceCount();
    }
    release(_prototype);
    _prototype = prototype;
    _serialize = true;
}

AbstractBehavior* BehaviorPrototype::createBehavior()
{
    if (_prototype == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot create a behavior from an empty prototype");
        return nullptr;
    }
    if (_serialize)
    {
        // A prototype set from outside, by a stream that read this object for instance, has no bytes here yet.
        writePrototype(*_prototype);
        _serialize = false;
    }
    AbstractBehavior* copy = readCopy();
    if (copy != nullptr)
    {
        ++_instancesCount;
    }
    return copy;
}

void BehaviorPrototype::writePrototype(const AbstractBehavior& behavior)
{
    _stream.getStream().str(std::string());
    _stream.clear();
    const AbstractBehavior* source = &behavior;
    _stream.pack(source);
}

AbstractBehavior* BehaviorPrototype::readCopy()
{
    // Every copy starts from fresh id tables, so that each one makes its own objects.
    _stream.clear();
    _stream.getStream().seekg(0);
    AbstractBehavior* copy = nullptr;
    _stream.unpack(copy);
    return copy;
}

} // namespace orv
