// orvCore/behavior/callBacks/orvIVoidCallBack.cpp
#include "behavior/callBacks/orvIVoidCallBack.h"

#include "system/inspection/orvInspectable.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(IVoidCallBack, "0b89ab9f-0161-4e98-b0e6-89784485aa9a", "orv::IVoidCallBack")

void IVoidCallBack::addAttributes()
{
    _rtti->addBaseClass<ReferenceCounter>();
}

IVoidCallBack::~IVoidCallBack() = default;

} // namespace orv
