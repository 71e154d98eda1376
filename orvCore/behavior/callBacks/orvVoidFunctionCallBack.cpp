// orvCore/behavior/callBacks/orvVoidFunctionCallBack.cpp
#include "behavior/callBacks/orvVoidFunctionCallBack.h"

#include "system/inspection/orvInspectable.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(VoidFunctionCallBack, "048ece35-d778-4ac3-991e-f27fe3463cac", "orv::VoidFunctionCallBack")

void VoidFunctionCallBack::addAttributes()
{
    _rtti->addBaseClass<IVoidCallBack>();
}

VoidFunctionCallBack::VoidFunctionCallBack(Function function) : _function(function)
{
}

void VoidFunctionCallBack::call(int entity)
{
    // A call-back made by name for a load has no function yet: it stays silent rather than jump to null.
    if (_function != nullptr)
    {
        _function(entity);
    }
}

} // namespace orv
