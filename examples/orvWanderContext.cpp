// examples/orvWanderContext.cpp
#include "orvWanderContext.h"

#include "system/inspection/orvInspectable.h"

namespace orvdemo
{

// A host class registers like the library's own, so that snapshots can make it again from its identifier.
ORV_IMPLEMENT_RTTI(WanderContext, "63602f45-86d9-4f32-bd16-3a6e7dc551ad", "orvdemo::WanderContext")

void WanderContext::addAttributes()
{
    _rtti->addBaseClass<orv::IContext>();
    addAttribute("time", &WanderContext::_time);
}

} // namespace orvdemo
