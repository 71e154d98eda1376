// orvCore/behavior/operators/orvRandomBehaviorOperator.cpp
#include "behavior/operators/orvRandomBehaviorOperator.h"

#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvAbstractEntityType.h"
#include "engine/simulation/orvEntity.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "system/containers/orvPODArray.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

// 2^-32 (bits 0x2F800000): scales a 32-bit draw into [0, 1].
constexpr float kDrawScale = 0x1p-32f;
// 0.00001 (bits 0x3727C5AC): the remainder below which a weight is reached.
constexpr float kReachedTolerance = 0.00001f;
// Followers listed on the stack; an operator with more lists them in a local array.
constexpr size_t kLocalListLength = 64;

const char* const kSetNextPrefix = "Can not explicitely set requested next behavior at requested position for current "
                                   "behavior : ";
const char* const kOwnLocked = "current behavior belongs to a parent behavior that is locked";
const char* const kOutOfBounds = "requested position is out of bounds";

void logEditRefusal(const char* prefix, const char* reason)
{
    orvLogCore(LogSeverity::LOG_ERROR, prefix << reason);
}

float callWeight(const SmartPointer<ITypedCallBack<float>>& weight, int entity)
{
    return weight.getImpl() != nullptr ? weight->call(entity) : 0.0f;
}

} // namespace

RandomNumberGenerator* touchEntityGenerator(const AbstractBehavior& node, int entity)
{
    const BehaviorGraph* graph = node.getBehaviorGraph();
    const AbstractEntityType* entityType = graph != nullptr ? graph->getEntityType() : nullptr;
    if (entityType == nullptr || entity < 0 || entity >= entityType->getHandleCount())
    {
        return nullptr;
    }
    Entity* owner = entityType->getEntityOrGroup(entity);
    return owner != nullptr ? &owner->touchRNG() : nullptr;
}

ORV_IMPLEMENT_RTTI(RandomBehaviorOperator, "9e197ca8-f404-4d66-b888-6519f522171d", "orv::RandomBehaviorOperator")

void RandomBehaviorOperator::addAttributes()
{
    _rtti->addBaseClass<AbstractBehaviorOperator>();
    addAttribute("conditions", &RandomBehaviorOperator::_conditions);
    addAttribute("weights", &RandomBehaviorOperator::_weights);
}

RandomBehaviorOperator::RandomBehaviorOperator() = default;

RandomBehaviorOperator::~RandomBehaviorOperator() = default;

bool RandomBehaviorOperator::addNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return addRandomNextBehavior(candidate, ScalarCallBackPointer<float>(new ConstantValueCallback<float>(1.0f)),
                                 BoolCallBackPointer());
}

bool RandomBehaviorOperator::removeNextBehaviorCandidate(AbstractBehavior* candidate)
{
    // The index is taken first: the base's removal shifts the followers behind it.
    const uint32_t id = retrieveNextBehaviorCandidateId(candidate);
    if (!AbstractBehavior::removeNextBehaviorCandidate(candidate))
    {
        return false;
    }
    if (id < _weights.size())
    {
        _weights.erase(_weights.begin() + id);
    }
    if (id < _conditions.size())
    {
        _conditions.erase(_conditions.begin() + id);
    }
    return true;
}

bool RandomBehaviorOperator::addRandomNextBehavior(AbstractBehavior* candidate,
                                                   const ScalarCallBackPointer<float>& weight,
                                                   const BoolCallBackPointer& condition)
{
    if (!AbstractBehavior::addNextBehaviorCandidate(candidate))
    {
        return false;
    }
    _weights.push_back(weight);
    _conditions.push_back(condition);
    if (getBehaviorGraph() != nullptr)
    {
        recursiveSetDataOnTriggers(condition);
    }
    return true;
}

bool RandomBehaviorOperator::removeRandomNextBehavior(AbstractBehavior* candidate)
{
    return removeNextBehaviorCandidate(candidate);
}

const AbstractBehavior* RandomBehaviorOperator::getRandomNextBehavior(unsigned int position) const
{
    return position < getNextBehaviorCandidates().size() ? getNextBehaviorCandidates()[position] : nullptr;
}

AbstractBehavior* RandomBehaviorOperator::touchRandomNextBehavior(unsigned int position)
{
    return position < getNextBehaviorCandidates().size() ? touchNextBehaviorCandidates()[position] : nullptr;
}

bool RandomBehaviorOperator::setRandomNextBehavior(unsigned int position, AbstractBehavior* next)
{
    const Array<AbstractBehavior*>& candidates = getNextBehaviorCandidates();
    const char* refusal = nullptr;
    if (hasParentBehaviorLocked())
    {
        refusal = kOwnLocked;
    }
    else if (next == this)
    {
        refusal = "requested next behavior is same as current behavior (forbidden connection)";
    }
    else if (next != nullptr && next->hasParentBehaviorLocked())
    {
        refusal = "requested next behavior belongs to a parent behavior that is locked";
    }
    else if (position >= candidates.size())
    {
        refusal = kOutOfBounds;
    }
    else if (candidates[position] != nullptr && candidates[position]->hasParentBehaviorLocked())
    {
        refusal = "next behavior currently set at requested position belongs to a parent behavior that is locked";
    }
    if (refusal != nullptr)
    {
        logEditRefusal(kSetNextPrefix, refusal);
        return false;
    }
    touchNextBehaviorCandidates()[position] = next;
    return true;
}

BoolCallBackPointer RandomBehaviorOperator::getCondition(unsigned int position) const
{
    return position < _conditions.size() ? BoolCallBackPointer(_conditions[position]) : BoolCallBackPointer();
}

bool RandomBehaviorOperator::setCondition(unsigned int position, const BoolCallBackPointer& condition)
{
    const char* prefix = "Can not explicitely set condition at required position for current behavior : ";
    if (hasParentBehaviorLocked())
    {
        logEditRefusal(prefix, kOwnLocked);
        return false;
    }
    if (position >= _conditions.size())
    {
        logEditRefusal(prefix, kOutOfBounds);
        return false;
    }
    _conditions[position] = condition;
    if (getBehaviorGraph() != nullptr)
    {
        recursiveSetDataOnTriggers(condition);
    }
    return true;
}

ScalarCallBackPointer<float> RandomBehaviorOperator::getWeight(unsigned int position) const
{
    return position < _weights.size() ? ScalarCallBackPointer<float>(_weights[position])
                                      : ScalarCallBackPointer<float>();
}

bool RandomBehaviorOperator::setWeight(unsigned int position, const ScalarCallBackPointer<float>& weight)
{
    const char* prefix = "Can not explicitely set weight at required position for current behavior : ";
    if (hasParentBehaviorLocked())
    {
        logEditRefusal(prefix, kOwnLocked);
        return false;
    }
    if (position >= _weights.size())
    {
        logEditRefusal(prefix, kOutOfBounds);
        return false;
    }
    _weights[position] = weight;
    return true;
}

bool RandomBehaviorOperator::checkNextBehaviorCandidatesConnection() const
{
    const Array<AbstractBehavior*>& candidates = getNextBehaviorCandidates();
    const char* problem = nullptr;
    if (candidates.empty())
    {
        problem = "RandomBehaviorOperator must have at least 1 next behavior candidate";
    }
    else if (_weights.size() != candidates.size())
    {
        problem = "count of next behavior candidates and weights differ";
    }
    else if (_conditions.size() != candidates.size())
    {
        problem = "count of next behavior candidates and conditions differ";
    }
    for (size_t i = 0; problem == nullptr && i < candidates.size(); ++i)
    {
        if (candidates[i] == nullptr)
        {
            problem = "a next behavior candidate for selection is NULL";
        }
        else if (_weights[i].getImpl() == nullptr)
        {
            problem = "a weight used for selection is NULL";
        }
    }
    if (problem == nullptr)
    {
        return true;
    }
    logEditRefusal("Invalid connection for next behavior candidates : ", problem);
    return false;
}

bool RandomBehaviorOperator::doInit()
{
    setNextBehaviorSelectedId(_nextBehaviorInvalidId);
    bindConditionsTriggers();
    return true;
}

void RandomBehaviorOperator::doFinish()
{
    setNextBehaviorSelectedId(_nextBehaviorInvalidId);
}

void RandomBehaviorOperator::doAddEntity(int)
{
    bindConditionsTriggers();
}

void RandomBehaviorOperator::doAllocate(int)
{
    bindConditionsTriggers();
}

void RandomBehaviorOperator::doFinish(int entity)
{
    for (const SmartPointer<ITypedCallBack<bool>>& condition : _conditions)
    {
        recursiveResetTriggers(condition, entity);
    }
}

void RandomBehaviorOperator::doStart(int entity)
{
    touchStatusData(entity)._nextBehaviorSelectedIdPerInstance = _nextBehaviorInvalidId;
}

void RandomBehaviorOperator::doUpdate(Time, int entity)
{
    // Conditions may be fewer than the followers in a graph that never passed its check.
    const size_t count = getNextBehaviorCandidates().size() < _conditions.size() ? getNextBehaviorCandidates().size()
                                                                                 : _conditions.size();
    uint32_t local[kLocalListLength];
    PODArray<uint32_t> spill;
    uint32_t* eligible = local;
    if (count > kLocalListLength)
    {
        spill.resize(count);
        eligible = spill.begin();
    }
    size_t listed = 0;
    for (size_t i = 0; i < count; ++i)
    {
        if (_conditions[i].getImpl() == nullptr || _conditions[i]->call(entity))
        {
            eligible[listed++] = static_cast<uint32_t>(i);
        }
    }
    if (listed == 0)
    {
        return;
    }
    if (listed == 1)
    {
        touchStatusData(entity)._nextBehaviorSelectedIdPerInstance = eligible[0];
        requestStop(entity);
        return;
    }
    float total = 0.0f;
    for (size_t i = 0; i < listed; ++i)
    {
        total += eligible[i] < _weights.size() ? callWeight(_weights[eligible[i]], entity) : 0.0f;
    }
    // Without a generator (a node outside any entity type) the draw counts as 0.
    RandomNumberGenerator* generator = touchEntityGenerator(*this, entity);
    const uint32_t draw = generator != nullptr ? generator->rand() : 0u;
    float r = static_cast<float>(draw) * kDrawScale * total;
    // The weights are called again, in the same order: a weight is not stored between the two walks.
    for (size_t i = 0; i < listed; ++i)
    {
        r -= eligible[i] < _weights.size() ? callWeight(_weights[eligible[i]], entity) : 0.0f;
        if (r < kReachedTolerance)
        {
            touchStatusData(entity)._nextBehaviorSelectedIdPerInstance = eligible[i];
            requestStop(entity);
            return;
        }
    }
    // Rounding left r above every weight: the operator draws again in the next frame.
}

AbstractBehavior::ResultStatus::Value RandomBehaviorOperator::doStop(Time, int)
{
    return ResultStatus::SUCCESS;
}

void RandomBehaviorOperator::bindConditionsTriggers()
{
    for (const SmartPointer<ITypedCallBack<bool>>& condition : _conditions)
    {
        recursiveSetDataOnTriggers(condition);
    }
}

} // namespace orv
