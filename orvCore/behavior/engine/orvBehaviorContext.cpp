// orvCore/behavior/engine/orvBehaviorContext.cpp
#include "behavior/engine/orvBehaviorContext.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(BehaviorContext, "df997442-e330-427c-8a71-217ffc366790", "orv::BehaviorContext")

void BehaviorContext::addAttributes()
{
    _rtti->addBaseClass<IContext>();
}

BehaviorContext::BehaviorContext() : IContext(true, true)
{
}

BehaviorContext::~BehaviorContext() = default;

void BehaviorContext::setContextType()
{
    assignContextType(ContextType::BEHAVIOR);
}

void BehaviorContext::allocateComponentsArrays()
{
}

void BehaviorContext::deallocateComponentsArrays()
{
}

void BehaviorContext::doInit()
{
}

void BehaviorContext::doUpdate(Time)
{
}

void BehaviorContext::doFinish()
{
}

} // namespace orv
