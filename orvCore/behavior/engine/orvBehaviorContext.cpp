// orvCore/behavior/engine/orvBehaviorContext.cpp
#include "behavior/engine/orvBehaviorContext.h"

namespace orv
{

BehaviorContext::BehaviorContext() : IContext(true, true) {}

BehaviorContext::~BehaviorContext() = default;

void BehaviorContext::setContextType()
{
    assignContextType(ContextType::BEHAVIOR);
}

void BehaviorContext::allocateComponentsArrays() {}

void BehaviorContext::deallocateComponentsArrays() {}

void BehaviorContext::doInit() {}

void BehaviorContext::doUpdate(Time) {}

void BehaviorContext::doFinish() {}

} // namespace orv
