// orvCore/engine/ground/orvNoGround.cpp
#include "engine/ground/orvNoGround.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(NoGround, "87acaa0e-d692-4031-8570-8f1f48c6345b", "orv::NoGround")

void NoGround::addAttributes()
{
    _rtti->addBaseClass<AbstractGround>();
}

} // namespace orv
