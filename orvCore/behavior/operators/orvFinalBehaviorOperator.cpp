// orvCore/behavior/operators/orvFinalBehaviorOperator.cpp
#include "behavior/operators/orvFinalBehaviorOperator.h"

#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

// The refusal of every follower edit; the closing bracket without an opening one is part of the text.
const char* const noFollower =
    "Can not accept next behavior candidate for current behavior : FinalBehaviorOperator can not have any next "
    "behavior candidate)";

} // namespace

ORV_IMPLEMENT_RTTI(FinalBehaviorOperator, "06cb65ff-2ab7-431e-b4ee-75971e0ba579", "orv::FinalBehaviorOperator")

void FinalBehaviorOperator::addAttributes()
{
    _rtti->addBaseClass<AbstractBehaviorOperator>();
}

FinalBehaviorOperator::FinalBehaviorOperator() = default;

FinalBehaviorOperator::~FinalBehaviorOperator() = default;

bool FinalBehaviorOperator::canAddNextBehaviorCandidate(const AbstractBehavior*, OrvString& reason) const
{
    reason = noFollower;
    return false;
}

bool FinalBehaviorOperator::addNextBehaviorCandidate(AbstractBehavior*)
{
    orvLogCore(LogSeverity::LOG_ERROR, noFollower);
    return false;
}

bool FinalBehaviorOperator::removeNextBehaviorCandidate(AbstractBehavior*)
{
    orvLogCore(LogSeverity::LOG_ERROR, noFollower);
    return false;
}

bool FinalBehaviorOperator::checkNextBehaviorCandidatesConnection() const
{
    if (getNextBehaviorCandidates().empty())
    {
        return true;
    }
    orvLogCore(LogSeverity::LOG_ERROR, "Invalid connection for next behavior candidates : "
                                           << "FinalBehaviorOperator can not have any next behavior candidate");
    return false;
}

bool FinalBehaviorOperator::isTimeConsuming() const
{
    return false;
}

bool FinalBehaviorOperator::doInit()
{
    return true;
}

void FinalBehaviorOperator::doFinish()
{
}

void FinalBehaviorOperator::doStart(int entity)
{
    requestStop(entity);
}

void FinalBehaviorOperator::doUpdate(Time, int entity)
{
    requestStop(entity);
}

AbstractBehavior::ResultStatus::Value FinalBehaviorOperator::doStop(Time, int)
{
    return ResultStatus::SUCCESS;
}

} // namespace orv
