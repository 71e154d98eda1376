// orvCore/behavior/callBacks/orvEmptyVoidCallBack.cpp
#include "behavior/callBacks/orvEmptyVoidCallBack.h"

#include "system/inspection/orvInspectable.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(EmptyVoidCallBack, "b2add18f-adb7-43e7-8f90-e886a9ca36f0", "orv::EmptyVoidCallBack")

void EmptyVoidCallBack::addAttributes()
{
    _rtti->addBaseClass<IVoidCallBack>();
}

void EmptyVoidCallBack::call(int)
{
}

} // namespace orv
