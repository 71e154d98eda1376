// orvCore/behavior/operators/orvNoOrderBehaviorOperator.cpp
#include "behavior/operators/orvNoOrderBehaviorOperator.h"

#include "behavior/operators/orvParallelBehaviorOperator.h"
#include "behavior/operators/orvRandomBehaviorOperator.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "system/debug/orvAssert.h"
#include "system/inspection/orvInspectable.h"

namespace orv
{

namespace
{

// A child without a flag (a row read short from a file) counts as run, so that a run always ends.
bool hasRun(const Array<bool>& flags, size_t child)
{
    return child >= flags.size() || flags[child];
}

} // namespace

ORV_IMPLEMENT_RTTI(NoOrderBehaviorOperator, "424fbc61-2600-4adc-a009-f920c11f84d3", "orv::NoOrderBehaviorOperator")

void NoOrderBehaviorOperator::addAttributes()
{
    _rtti->addBaseClass<AbstractBehaviorOperator>();
    addAccessorsAttribute<const Array<SmartPointer<AbstractBehavior>>&>(
        "childrenBehaviors", &NoOrderBehaviorOperator::getChildrenBehaviorsAttr,
        &NoOrderBehaviorOperator::setChildrenBehaviorsAttr);
    // Each capacity comes ahead of its array, so that the entries read back fit.
    addAccessorsAttribute<int>("childrenBehaviorsRunArrayCapacity",
                               &NoOrderBehaviorOperator::getChildrenBehaviorsRunArrayCapacity,
                               &NoOrderBehaviorOperator::setChildrenBehaviorsRunArrayCapacity);
    // The misspelt name is the one the streams have always used.
    addAttribute("childrenBhehaviorsRun", &NoOrderBehaviorOperator::_childrenBehaviorsRun);
    addAccessorsAttribute<int>("currentChildBehaviorRunIdArrayCapacity",
                               &NoOrderBehaviorOperator::getCurrentChildBehaviorRunIdArrayCapacity,
                               &NoOrderBehaviorOperator::setCurrentChildBehaviorRunIdArrayCapacity);
    addAttribute("currentChildBehaviorRunId", &NoOrderBehaviorOperator::_currentChildBehaviorRunId);
}

NoOrderBehaviorOperator::NoOrderBehaviorOperator() = default;

NoOrderBehaviorOperator::~NoOrderBehaviorOperator() = default;

bool NoOrderBehaviorOperator::canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const
{
    return canAddSingleNextBehaviorCandidate(candidate, reason, "NoOrderBehaviorOperator");
}

bool NoOrderBehaviorOperator::addNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return addSingleNextBehaviorCandidate(candidate);
}

bool NoOrderBehaviorOperator::removeNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return removeSingleNextBehaviorCandidate(candidate);
}

bool NoOrderBehaviorOperator::checkNextBehaviorCandidatesConnection() const
{
    return checkSingleNextBehaviorCandidate("NoOrderBehaviorOperator can not have more than 1 next behavior candidate");
}

bool NoOrderBehaviorOperator::addChildBehavior(AbstractBehavior* child)
{
    if (!AbstractBehaviorContainer::addChildBehavior(child))
    {
        return false;
    }
    joinGraph(*this, *child);
    return true;
}

bool NoOrderBehaviorOperator::removeChildBehavior(AbstractBehavior* child)
{
    // Held across the removal, which may drop the last other hold, so that it can leave the graph.
    SmartPointer<AbstractBehavior> hold(child);
    if (!AbstractBehaviorContainer::removeChildBehavior(child))
    {
        return false;
    }
    leaveGraph(*this, *child);
    return true;
}

bool NoOrderBehaviorOperator::checkChildrenBehaviorsConnection(bool recursive) const
{
    return checkUnorderedChildren(*this, "NoOrderBehaviorOperator", recursive);
}

bool NoOrderBehaviorOperator::checkChildBehaviorLooping(const AbstractBehavior*) const
{
    return false;
}

bool NoOrderBehaviorOperator::cleanChildrenBehaviors(bool recursive)
{
    return cleanUnorderedChildren(*this, "NoOrderBehaviorOperator", recursive);
}

void NoOrderBehaviorOperator::setBehaviorGraph(BehaviorGraph* graph)
{
    AbstractBehavior::setBehaviorGraph(graph);
    setBehaviorGraphOnChildren(graph);
}

const AbstractBehavior* NoOrderBehaviorOperator::getCurrentBehavior(int entity) const
{
    if (!hasEntitySlot(entity))
    {
        return nullptr;
    }
    const unsigned int id = _currentChildBehaviorRunId[entity];
    return id < getChildrenBehaviors().size() ? getChildrenBehaviors()[id].getImpl() : nullptr;
}

AbstractBehavior* NoOrderBehaviorOperator::touchCurrentBehavior(int entity)
{
    if (!hasEntitySlot(entity))
    {
        return nullptr;
    }
    const unsigned int id = _currentChildBehaviorRunId[entity];
    return id < getChildrenBehaviors().size() ? touchChildrenBehaviors()[id].getImpl() : nullptr;
}

void NoOrderBehaviorOperator::selectCurrentBehavior(int entity)
{
    if (!hasEntitySlot(entity))
    {
        requestStop(entity);
        return;
    }
    // The flags are walked twice instead of listing the children left: the walk allocates nothing.
    const Array<bool>& flags = _childrenBehaviorsRun[entity];
    const size_t childCount = getChildrenBehaviors().size();
    uint32_t left = 0;
    for (size_t i = 0; i < childCount; ++i)
    {
        left += hasRun(flags, i) ? 0 : 1;
    }
    if (left == 0)
    {
        requestStop(entity);
        clearRun(entity);
        return;
    }
    uint32_t pick = 0;
    if (left > 1)
    {
        // Without a generator (a node outside any entity type) the first child left is taken.
        RandomNumberGenerator* generator = touchEntityGenerator(*this, entity);
        pick = generator != nullptr ? generator->rand() % left : 0;
    }
    for (size_t i = 0; i < childCount; ++i)
    {
        if (hasRun(flags, i))
        {
            continue;
        }
        if (pick == 0)
        {
            _currentChildBehaviorRunId[entity] = static_cast<unsigned int>(i);
            if (AbstractBehavior* child = touchChildrenBehaviors()[i].getImpl())
            {
                child->requestStart(entity);
            }
            return;
        }
        --pick;
    }
}

void NoOrderBehaviorOperator::updateCurrentBehavior(Time dt, int entity)
{
    if (!hasEntitySlot(entity) || _currentChildBehaviorRunId[entity] >= getChildrenBehaviors().size())
    {
        return;
    }
    const unsigned int id = _currentChildBehaviorRunId[entity];
    AbstractBehavior* child = touchChildrenBehaviors()[id].getImpl();
    if (child != nullptr)
    {
        child->update(dt, entity);
        addUpdatedBehaviorToHistory(entity, child);
        if (child->getRunStatus(entity) != RunStatus::IDLE)
        {
            return;
        }
    }
    // The child's result is not read here: a failing child does not end the run.
    Array<bool>& flags = _childrenBehaviorsRun[entity];
    if (id < flags.size())
    {
        flags[id] = true;
    }
    _currentChildBehaviorRunId[entity] = _childBehaviorInvalidId;
    bool allRun = true;
    for (size_t i = 0; allRun && i < getChildrenBehaviors().size(); ++i)
    {
        allRun = hasRun(flags, i);
    }
    if (allRun)
    {
        requestStop(entity);
        clearRun(entity);
    }
}

void NoOrderBehaviorOperator::setChildrenBehaviorsAttr(const Array<SmartPointer<AbstractBehavior>>& children)
{
    touchChildrenBehaviors() = children;
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        forceAsParentBehavior(child.getImpl());
    }
}

void NoOrderBehaviorOperator::setChildrenBehaviorsRunArrayCapacity(int value)
{
    orvAssert(value >= 0);
    _childrenBehaviorsRun.set_capacity(static_cast<size_t>(value));
}

void NoOrderBehaviorOperator::setCurrentChildBehaviorRunIdArrayCapacity(int value)
{
    orvAssert(value >= 0);
    _currentChildBehaviorRunId.set_capacity(static_cast<size_t>(value));
}

bool NoOrderBehaviorOperator::doInit()
{
    return checkChildrenBehaviorsConnection(false) && initChildren();
}

void NoOrderBehaviorOperator::doFinish()
{
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->finish();
        }
    }
}

void NoOrderBehaviorOperator::doAddEntity(int entity)
{
    const size_t count = static_cast<size_t>(entity) + 1;
    if (_childrenBehaviorsRun.size() < count)
    {
        _childrenBehaviorsRun.resize(count);
    }
    if (_currentChildBehaviorRunId.size() < count)
    {
        _currentChildBehaviorRunId.resize(count, _childBehaviorInvalidId);
    }
    // A slot used again starts with no run left over from its former entity.
    _childrenBehaviorsRun[entity].clear();
    _currentChildBehaviorRunId[entity] = _childBehaviorInvalidId;
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->addEntity(entity);
        }
    }
}

void NoOrderBehaviorOperator::doInit(int entity)
{
    if (hasEntitySlot(entity))
    {
        // Sized here so that a run's flags never allocate.
        _childrenBehaviorsRun[entity].set_capacity(getChildrenBehaviors().size());
    }
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->init(entity);
        }
    }
}

void NoOrderBehaviorOperator::doFinish(int entity)
{
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->finish(entity);
        }
    }
    clearRun(entity);
}

void NoOrderBehaviorOperator::doAllocate(int capacity)
{
    _childrenBehaviorsRun.set_capacity(static_cast<size_t>(capacity));
    _currentChildBehaviorRunId.set_capacity(static_cast<size_t>(capacity));
    doAllocateChildren(capacity);
}

void NoOrderBehaviorOperator::doDeallocate()
{
    _childrenBehaviorsRun.set_capacity(0);
    _currentChildBehaviorRunId.set_capacity(0);
    doDeallocateChildren();
}

void NoOrderBehaviorOperator::doStart(int entity)
{
    if (getChildrenBehaviors().empty())
    {
        requestStop(entity);
    }
}

void NoOrderBehaviorOperator::doUpdate(Time dt, int entity)
{
    if (!hasEntitySlot(entity))
    {
        requestStop(entity);
        return;
    }
    Time step = dt;
    if (_currentChildBehaviorRunId[entity] != _childBehaviorInvalidId)
    {
        updateCurrentBehavior(step, entity);
        step = 0.0;
    }
    // Children that end at once chain within the frame; each is run once, so the walk ends.
    while (_currentChildBehaviorRunId[entity] == _childBehaviorInvalidId && getRunStatus(entity) == RunStatus::RUNNING)
    {
        selectCurrentBehavior(entity);
        if (_currentChildBehaviorRunId[entity] != _childBehaviorInvalidId)
        {
            updateCurrentBehavior(step, entity);
            step = 0.0;
        }
    }
}

AbstractBehavior::ResultStatus::Value NoOrderBehaviorOperator::doStop(Time dt, int entity)
{
    if (AbstractBehavior* child = touchCurrentBehavior(entity))
    {
        child->update(dt, entity);
        addUpdatedBehaviorToHistory(entity, child);
        if (child->getRunStatus(entity) != RunStatus::IDLE)
        {
            return ResultStatus::UNKNOWN;
        }
    }
    clearRun(entity);
    for (const SmartPointer<AbstractBehavior>& child : getChildrenBehaviors())
    {
        if (child.getImpl() != nullptr && child->getResultStatus(entity) == ResultStatus::FAILURE)
        {
            return ResultStatus::FAILURE;
        }
    }
    return ResultStatus::SUCCESS;
}

void NoOrderBehaviorOperator::onRequestStart(int entity)
{
    if (!hasEntitySlot(entity))
    {
        return;
    }
    // Grown as any array grows; doInit(entity) has reserved the children's count already.
    _childrenBehaviorsRun[entity].resize(getChildrenBehaviors().size(), false);
    _currentChildBehaviorRunId[entity] = _childBehaviorInvalidId;
}

void NoOrderBehaviorOperator::onRequestStop(int entity)
{
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr && child->getRunStatus(entity) != RunStatus::IDLE)
        {
            child->requestStop(entity);
        }
    }
}

void NoOrderBehaviorOperator::clearRun(int entity)
{
    if (hasEntitySlot(entity))
    {
        _childrenBehaviorsRun[entity].clear();
        _currentChildBehaviorRunId[entity] = _childBehaviorInvalidId;
    }
}

} // namespace orv
