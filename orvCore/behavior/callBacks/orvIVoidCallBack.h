// orvCore/behavior/callBacks/orvIVoidCallBack.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"
#include "system/inspection/orvReferenceCounter.h"

namespace orv
{

/// A notification of a behaviour graph, called with an entity's index in its type when a node starts or stops.
/// Held by SmartPointer; called on the workers for many entities at once.
class IVoidCallBack : public ReferenceCounter
{
    ORV_DECLARE_ABSTRACT_RTTI(IVoidCallBack)

public:
    /// Deleted by the last SmartPointer that holds it.
    ~IVoidCallBack() override;

    /// Notifies the entity at that index in its type. Called by the behaviour engine, with a valid index.
    virtual void call(int entity) = 0;
};

} // namespace orv
