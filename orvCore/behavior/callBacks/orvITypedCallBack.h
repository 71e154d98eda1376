// orvCore/behavior/callBacks/orvITypedCallBack.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"
#include "system/inspection/orvReferenceCounter.h"

namespace orv
{

/// A condition, weight or value of a behaviour graph: called with an entity's index in its type, it gives a T
/// (bool, float or unsigned int). Held by SmartPointer; built on the host thread, called on the workers for many
/// entities at once, so any state it keeps is kept per entity.
template <typename T>
class ITypedCallBack : public ReferenceCounter
{
    ORV_DECLARE_ABSTRACT_RTTI(ITypedCallBack)

public:
    /// Deleted by the last SmartPointer that holds it.
    ~ITypedCallBack() override = default;

    /// The value for the entity at that index in its type. Called by the behaviour engine, with a valid index.
    virtual T call(int entity) = 0;
};

ORV_IMPLEMENT_ABSTRACT_TEMPLATE_RTTI(ITypedCallBack, "7e4dcef2-32d8-4dcd-9e70-219801cc21f6", "orv::ITypedCallBack")

template <typename T>
void ITypedCallBack<T>::addAttributes()
{
    _rtti->addBaseClass<ReferenceCounter>();
}

} // namespace orv
