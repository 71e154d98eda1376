// orvCore/behavior/operators/orvBlockBehaviorOperator.cpp
#include "behavior/operators/orvBlockBehaviorOperator.h"

#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(BlockBehaviorOperator, "57f78c57-f884-428c-b736-2c504e793c53", "orv::BlockBehaviorOperator")

void BlockBehaviorOperator::addAttributes()
{
    _rtti->addBaseClass<AbstractBehaviorOperator>();
}

BlockBehaviorOperator::BlockBehaviorOperator() = default;

BlockBehaviorOperator::~BlockBehaviorOperator() = default;

bool BlockBehaviorOperator::canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const
{
    return canAddSingleNextBehaviorCandidate(candidate, reason, "BlockBehaviorOperator");
}

bool BlockBehaviorOperator::addNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return addSingleNextBehaviorCandidate(candidate);
}

bool BlockBehaviorOperator::removeNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return removeSingleNextBehaviorCandidate(candidate);
}

bool BlockBehaviorOperator::checkNextBehaviorCandidatesConnection() const
{
    if (getNextBehaviorCandidates().size() <= 1)
    {
        return true;
    }
    // The line goes alone, then the report it was meant for, which is empty: two entries, as designed.
    orvLogCore(LogSeverity::LOG_ERROR, "BlockBehaviorOperator can not have more than 1 next behavior candidate");
    orvLogCore(LogSeverity::LOG_ERROR, "");
    return false;
}

bool BlockBehaviorOperator::doInit()
{
    return true;
}

void BlockBehaviorOperator::doFinish()
{
}

void BlockBehaviorOperator::doStart(int entity)
{
    if (getStoppingCondition().getImpl() != nullptr)
    {
        recursiveResetTriggers(getStoppingCondition(), entity);
    }
    else
    {
        requestStop(entity);
    }
}

void BlockBehaviorOperator::doUpdate(Time, int)
{
}

AbstractBehavior::ResultStatus::Value BlockBehaviorOperator::doStop(Time, int)
{
    return ResultStatus::SUCCESS;
}

} // namespace orv
