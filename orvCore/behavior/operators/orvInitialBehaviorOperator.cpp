// orvCore/behavior/operators/orvInitialBehaviorOperator.cpp
#include "behavior/operators/orvInitialBehaviorOperator.h"

#include "system/inspection/orvInspectable.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(InitialBehaviorOperator, "11d4c315-e14e-4610-824a-cf573f720db6", "orv::InitialBehaviorOperator")

void InitialBehaviorOperator::addAttributes()
{
    _rtti->addBaseClass<AbstractBehaviorOperator>();
}

InitialBehaviorOperator::InitialBehaviorOperator() = default;

InitialBehaviorOperator::~InitialBehaviorOperator() = default;

bool InitialBehaviorOperator::canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const
{
    return canAddSingleNextBehaviorCandidate(candidate, reason, "InitialBehaviorOperator");
}

bool InitialBehaviorOperator::addNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return addSingleNextBehaviorCandidate(candidate);
}

bool InitialBehaviorOperator::removeNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return removeSingleNextBehaviorCandidate(candidate);
}

bool InitialBehaviorOperator::checkNextBehaviorCandidatesConnection() const
{
    return checkSingleNextBehaviorCandidate("InitialBehaviorOperator can not have more than 1 next behavior candidate");
}

bool InitialBehaviorOperator::isTimeConsuming() const
{
    return false;
}

bool InitialBehaviorOperator::doInit()
{
    return true;
}

void InitialBehaviorOperator::doFinish()
{
}

void InitialBehaviorOperator::doStart(int entity)
{
    requestStop(entity);
}

void InitialBehaviorOperator::doUpdate(Time, int entity)
{
    requestStop(entity);
}

AbstractBehavior::ResultStatus::Value InitialBehaviorOperator::doStop(Time, int)
{
    return ResultStatus::SUCCESS;
}

} // namespace orv
