// orvCore/behavior/operators/orvAlternativeBehaviorOperator.cpp
#include "behavior/operators/orvAlternativeBehaviorOperator.h"

#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

const char* const kOwnLocked = "current behavior belongs to a parent behavior that is locked";
const char* const kNextLocked = "requested next behavior belongs to a parent behavior that is locked";
const char* const kSelf = "requested next behavior is same as current behavior (forbidden connection)";
const char* const kOutOfBounds = "requested position is out of bounds";

void logEditRefusal(const char* prefix, const char* reason)
{
    orvLogCore(LogSeverity::LOG_ERROR, prefix << reason);
}

} // namespace

ORV_IMPLEMENT_RTTI(AlternativeBehaviorOperator, "0ff18840-76b3-49c0-b504-4b6741f62248",
                   "orv::AlternativeBehaviorOperator")

void AlternativeBehaviorOperator::addAttributes()
{
    _rtti->addBaseClass<AbstractBehaviorOperator>();
    addAttribute("conditions", &AlternativeBehaviorOperator::_conditions);
}

AlternativeBehaviorOperator::AlternativeBehaviorOperator() = default;

AlternativeBehaviorOperator::~AlternativeBehaviorOperator() = default;

bool AlternativeBehaviorOperator::addNextBehaviorCandidate(AbstractBehavior* candidate)
{
    if (!AbstractBehavior::addNextBehaviorCandidate(candidate))
    {
        return false;
    }
    _conditions.push_back(SmartPointer<ITypedCallBack<bool>>());
    return true;
}

bool AlternativeBehaviorOperator::removeNextBehaviorCandidate(AbstractBehavior* candidate)
{
    // The index is taken first: the base's removal shifts the followers behind it.
    const uint32_t id = retrieveNextBehaviorCandidateId(candidate);
    if (!AbstractBehavior::removeNextBehaviorCandidate(candidate))
    {
        return false;
    }
    if (id < _conditions.size())
    {
        _conditions.erase(_conditions.begin() + id);
    }
    return true;
}

bool AlternativeBehaviorOperator::addConditionalNextBehavior(AbstractBehavior* next,
                                                             const BoolCallBackPointer& condition)
{
    OrvString reason;
    if (!canAddNextBehaviorCandidate(next, reason))
    {
        orvLogCore(LogSeverity::LOG_ERROR, reason.c_str());
        return false;
    }
    Array<AbstractBehavior*>& candidates = touchNextBehaviorCandidates();
    if (candidates.empty())
    {
        // Position 0 is kept for the default, even when there is none yet.
        candidates.push_back(nullptr);
        _conditions.push_back(SmartPointer<ITypedCallBack<bool>>());
    }
    candidates.push_back(next);
    _conditions.push_back(condition);
    if (getBehaviorGraph() != nullptr)
    {
        recursiveSetDataOnTriggers(condition);
    }
    return true;
}

bool AlternativeBehaviorOperator::removeConditionalNextBehavior(AbstractBehavior* next)
{
    if (next != nullptr && next == getDefaultNextBehavior())
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Can not remove next behavior candidate from current behavior : removing default next behavior "
                   "is forbidden");
        return false;
    }
    return removeNextBehaviorCandidate(next);
}

const AbstractBehavior* AlternativeBehaviorOperator::getConditionalNextBehavior(unsigned int position) const
{
    return position < getNextBehaviorCandidates().size() ? getNextBehaviorCandidates()[position] : nullptr;
}

AbstractBehavior* AlternativeBehaviorOperator::touchConditionalNextBehavior(unsigned int position)
{
    return position < getNextBehaviorCandidates().size() ? touchNextBehaviorCandidates()[position] : nullptr;
}

bool AlternativeBehaviorOperator::setConditionalNextBehavior(unsigned int position, AbstractBehavior* next)
{
    const Array<AbstractBehavior*>& candidates = getNextBehaviorCandidates();
    const char* refusal = nullptr;
    if (hasParentBehaviorLocked())
    {
        refusal = kOwnLocked;
    }
    else if (next != nullptr && next->hasParentBehaviorLocked())
    {
        refusal = kNextLocked;
    }
    else if (position == 0)
    {
        refusal = "requested position is forbidden (position 0 is dedicated to default next behavior, use "
                  "\"setDefaultNextBehavior\" instead)";
    }
    else if (position >= candidates.size())
    {
        refusal = kOutOfBounds;
    }
    else if (candidates[position] != nullptr && candidates[position]->hasParentBehaviorLocked())
    {
        refusal = "next behavior currently set at requested position belongs to a parent behavior that is locked";
    }
    else if (next == this)
    {
        refusal = kSelf;
    }
    if (refusal != nullptr)
    {
        logEditRefusal("Can not explicitely set requested next behavior at requested position for current behavior : ",
                       refusal);
        return false;
    }
    touchNextBehaviorCandidates()[position] = next;
    return true;
}

const AbstractBehavior* AlternativeBehaviorOperator::getDefaultNextBehavior() const
{
    return getFirstNextBehaviorCandidate();
}

AbstractBehavior* AlternativeBehaviorOperator::touchDefaultNextBehavior()
{
    return getFirstNextBehaviorCandidate();
}

bool AlternativeBehaviorOperator::setDefaultNextBehavior(AbstractBehavior* next)
{
    const AbstractBehavior* present = getDefaultNextBehavior();
    const char* refusal = nullptr;
    if (hasParentBehaviorLocked())
    {
        refusal = kOwnLocked;
    }
    else if (next != nullptr && next->hasParentBehaviorLocked())
    {
        refusal = kNextLocked;
    }
    else if (present != nullptr && present->hasParentBehaviorLocked())
    {
        refusal = "next behavior currently set belongs to a parent behavior that is locked";
    }
    else if (next == this)
    {
        refusal = kSelf;
    }
    if (refusal != nullptr)
    {
        logEditRefusal(
            "Can not explicitely set requested next behavior as default next behavior for current behavior : ",
            refusal);
        return false;
    }
    Array<AbstractBehavior*>& candidates = touchNextBehaviorCandidates();
    if (candidates.empty())
    {
        candidates.push_back(next);
        _conditions.push_back(SmartPointer<ITypedCallBack<bool>>());
        return true;
    }
    candidates[0] = next;
    if (_conditions.empty())
    {
        _conditions.push_back(SmartPointer<ITypedCallBack<bool>>());
    }
    else
    {
        _conditions[0] = SmartPointer<ITypedCallBack<bool>>();
    }
    return true;
}

BoolCallBackPointer AlternativeBehaviorOperator::getCondition(unsigned int position) const
{
    return position < _conditions.size() ? BoolCallBackPointer(_conditions[position]) : BoolCallBackPointer();
}

bool AlternativeBehaviorOperator::setCondition(unsigned int position, const BoolCallBackPointer& condition)
{
    const char* refusal = nullptr;
    if (hasParentBehaviorLocked())
    {
        refusal = kOwnLocked;
    }
    else if (position == 0)
    {
        refusal = "requested position is forbidden (position 0 is dedicated to default next behavior)";
    }
    else if (position >= _conditions.size())
    {
        refusal = kOutOfBounds;
    }
    if (refusal != nullptr)
    {
        logEditRefusal("Can not explicitely set condition at required position for current behavior : ", refusal);
        return false;
    }
    _conditions[position] = condition;
    if (getBehaviorGraph() != nullptr)
    {
        recursiveSetDataOnTriggers(condition);
    }
    return true;
}

bool AlternativeBehaviorOperator::checkNextBehaviorCandidatesConnection() const
{
    const Array<AbstractBehavior*>& candidates = getNextBehaviorCandidates();
    const char* problem = nullptr;
    if (candidates.empty())
    {
        problem = "AlternativeBehaviorOperator must have at least 1 next behavior candidate";
    }
    else if (_conditions.size() != candidates.size())
    {
        problem = "count of next behavior candidates and conditions differ";
    }
    for (size_t i = 1; problem == nullptr && i < candidates.size(); ++i)
    {
        if (candidates[i] == nullptr)
        {
            problem = "a next behavior to evaluate is NULL";
        }
        else if (_conditions[i].getImpl() == nullptr)
        {
            problem = "a condition used for evaluation is NULL";
        }
    }
    if (problem == nullptr)
    {
        return true;
    }
    logEditRefusal("Invalid connection for next behavior candidates : ", problem);
    return false;
}

bool AlternativeBehaviorOperator::doInit()
{
    setNextBehaviorSelectedId(_nextBehaviorInvalidId);
    bindConditionsTriggers();
    return true;
}

void AlternativeBehaviorOperator::doFinish()
{
    setNextBehaviorSelectedId(_nextBehaviorInvalidId);
}

void AlternativeBehaviorOperator::doAddEntity(int)
{
    bindConditionsTriggers();
}

void AlternativeBehaviorOperator::doAllocate(int)
{
    bindConditionsTriggers();
}

void AlternativeBehaviorOperator::doFinish(int entity)
{
    for (const SmartPointer<ITypedCallBack<bool>>& condition : _conditions)
    {
        recursiveResetTriggers(condition, entity);
    }
}

void AlternativeBehaviorOperator::doStart(int entity)
{
    touchStatusData(entity)._nextBehaviorSelectedIdPerInstance = _nextBehaviorInvalidId;
}

void AlternativeBehaviorOperator::doUpdate(Time, int entity)
{
    const Array<AbstractBehavior*>& candidates = getNextBehaviorCandidates();
    const size_t count = candidates.size() < _conditions.size() ? candidates.size() : _conditions.size();
    // The first true condition wins: the later ones are not asked this frame.
    for (size_t i = 1; i < count; ++i)
    {
        if (_conditions[i].getImpl() != nullptr && _conditions[i]->call(entity))
        {
            touchStatusData(entity)._nextBehaviorSelectedIdPerInstance = static_cast<uint32_t>(i);
            requestStop(entity);
            return;
        }
    }
    if (!candidates.empty() && candidates[0] != nullptr)
    {
        touchStatusData(entity)._nextBehaviorSelectedIdPerInstance = 0;
        requestStop(entity);
    }
}

AbstractBehavior::ResultStatus::Value AlternativeBehaviorOperator::doStop(Time, int)
{
    return ResultStatus::SUCCESS;
}

void AlternativeBehaviorOperator::bindConditionsTriggers()
{
    for (const SmartPointer<ITypedCallBack<bool>>& condition : _conditions)
    {
        recursiveSetDataOnTriggers(condition);
    }
}

} // namespace orv
