// orvCore/behavior/operators/orvLoopBehaviorOperator.cpp
#include "behavior/operators/orvLoopBehaviorOperator.h"

#include <sstream>

#include "behavior/behaviors/orvAbstractUserBehavior.h"
#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvConstantValueCallback.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

// A loop made by a stream: DO_WHILE and always true, until its attributes are read.
class LoopCreator : public IRTTICreator
{
public:
    void* create() const override
    {
        return new LoopBehaviorOperator(LoopBehaviorOperator::LoopMode::DO_WHILE,
                                        BoolCallBackPointer(new ConstantValueCallback<bool>(true)));
    }
};

IRTTICreator* makeLoopCreator()
{
    return new LoopCreator();
}

bool derivesFrom(const AbstractBehavior& node, const RTTI* rtti)
{
    return rtti != nullptr && node.getRTTI()->isDerivedFrom(*rtti);
}

} // namespace

ORV_IMPLEMENT_RTTI_WITH_CREATOR(LoopBehaviorOperator, "f2b5d3d2-648a-4cb1-80e3-d8002967180b",
                                "orv::LoopBehaviorOperator", &makeLoopCreator)

void LoopBehaviorOperator::addAttributes()
{
    _rtti->addBaseClass<AbstractBehaviorOperator>();
    addAccessorsAttribute<const Array<SmartPointer<AbstractBehavior>>&>(
        "childrenBehaviors", &LoopBehaviorOperator::getChildrenBehaviorsAttr,
        &LoopBehaviorOperator::setChildrenBehaviorsAttr);
    addAttribute("condition", &LoopBehaviorOperator::_condition);
    addAccessorsAttribute<unsigned int>("loopMode", &LoopBehaviorOperator::getLoopModeUInt,
                                        &LoopBehaviorOperator::setLoopModeUInt);
}

LoopBehaviorOperator::LoopBehaviorOperator(LoopMode::Value mode, const BoolCallBackPointer& condition)
    : _condition(condition), _loopMode(mode)
{
}

LoopBehaviorOperator::~LoopBehaviorOperator() = default;

bool LoopBehaviorOperator::setCondition(const BoolCallBackPointer& condition)
{
    const char* refusal = nullptr;
    if (condition.getImpl() == nullptr)
    {
        refusal = "condition is NULL";
    }
    else if (hasParentBehaviorLocked())
    {
        refusal = "current behavior belongs to a parent behavior that is locked";
    }
    if (refusal != nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Can not set condition for current behavior : " << refusal);
        return false;
    }
    _condition = condition;
    return true;
}

bool LoopBehaviorOperator::setLoopMode(LoopMode::Value mode)
{
    if (isInitialized())
    {
        // The word "condition" stays, although a mode is set.
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Can not set condition for current behavior : current behavior is initialized");
        return false;
    }
    _loopMode = mode;
    return true;
}

void LoopBehaviorOperator::setLoopModeUInt(unsigned int mode)
{
    _loopMode = mode < LoopMode::END ? static_cast<LoopMode::Value>(mode) : LoopMode::END;
}

const AbstractBehavior* LoopBehaviorOperator::getChildBehavior() const
{
    return getChildrenBehaviors().empty() ? nullptr : getChildrenBehaviors()[0].getImpl();
}

AbstractBehavior* LoopBehaviorOperator::touchChildBehavior()
{
    return getChildrenBehaviors().empty() ? nullptr : touchChildrenBehaviors()[0].getImpl();
}

bool LoopBehaviorOperator::setChildBehavior(AbstractBehavior* child)
{
    if (AbstractBehavior* existing = touchChildBehavior())
    {
        if (!AbstractBehaviorContainer::removeChildBehavior(existing))
        {
            orvLogCore(LogSeverity::LOG_ERROR, "Can not set child behavior into behavior container : current behavior "
                                               "already has a child behavior that can not be removed");
            return false;
        }
    }
    if (child == nullptr)
    {
        return true;
    }
    return AbstractBehaviorContainer::addChildBehavior(child);
}

bool LoopBehaviorOperator::canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const
{
    return canAddSingleNextBehaviorCandidate(candidate, reason, "LoopBehaviorOperator");
}

bool LoopBehaviorOperator::addNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return addSingleNextBehaviorCandidate(candidate);
}

bool LoopBehaviorOperator::removeNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return removeSingleNextBehaviorCandidate(candidate);
}

bool LoopBehaviorOperator::checkNextBehaviorCandidatesConnection() const
{
    bool valid =
        checkSingleNextBehaviorCandidate("LoopBehaviorOperator can not have more than 1 next behavior candidate");
    if (_condition.getImpl() == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Invalid connection for next behavior candidates : condition used for loop exit is NULL");
        valid = false;
    }
    return valid;
}

bool LoopBehaviorOperator::addChildBehavior(AbstractBehavior* child)
{
    if (!getChildrenBehaviors().empty())
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Can not add child behavior to behavior container : current behavior already "
                   "has a child behavior (LoopBehaviorOperator allows at most 1 child behavior)");
        return false;
    }
    if (!AbstractBehaviorContainer::addChildBehavior(child))
    {
        return false;
    }
    joinGraph(*this, *child);
    return true;
}

bool LoopBehaviorOperator::removeChildBehavior(AbstractBehavior* child)
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

bool LoopBehaviorOperator::checkChildrenBehaviorsConnection(bool recursive) const
{
    std::ostringstream report;
    report << "Invalid connection for children behaviors contained in LoopBehaviorOperator : ";
    const size_t count = getChildrenBehaviors().size();
    bool valid = true;
    if (count > 1)
    {
        report << "only one child behavior is allowed (" << count << " children behaviors found)";
        valid = false;
    }
    else if (count == 1)
    {
        const AbstractBehavior* child = getChildBehavior();
        if (child == nullptr)
        {
            report << "child behavior is NULL";
            valid = false;
        }
        else
        {
            const AbstractBehaviorContainer* container = dynamic_cast<const AbstractBehaviorContainer*>(child);
            if (container == nullptr && !derivesFrom(*child, AbstractUserBehavior::getClassRTTI()))
            {
                report << "\n\t- Child behavior is not of the required type (only AbstractBehaviorContainer or "
                          "AbstractUserBehavior types allowed, type AbstractBehaviorOperator is forbidden)";
                valid = false;
            }
            if (!child->getNextBehaviorCandidates().empty())
            {
                report << "\n\t- Child behavior is not final (setting a next behavior for a contained behavior is "
                          "forbidden)";
                valid = false;
            }
            if (child->getParentBehavior() != this)
            {
                report << "\n\t- Child behavior was added to current behavior but belong to another parent behavior";
                valid = false;
            }
            if (recursive && container != nullptr && !container->checkChildrenBehaviorsConnection(true))
            {
                report << "\n\t- Child behavior is behavior container that have connection issues";
                valid = false;
            }
        }
    }
    if (!valid)
    {
        orvLogCore(LogSeverity::LOG_ERROR, report.str());
    }
    return valid;
}

bool LoopBehaviorOperator::checkChildBehaviorLooping(const AbstractBehavior*) const
{
    return true;
}

bool LoopBehaviorOperator::cleanChildrenBehaviors(bool recursive)
{
    std::ostringstream report;
    report << "Can not clean child behavior for LoopBehaviorOperator : ";
    if (isLocked())
    {
        // Unlike a composite, a locked loop says so.
        report << "behavior container is locked";
        orvLogCore(LogSeverity::LOG_ERROR, report.str());
        return false;
    }
    if (getChildrenBehaviors().empty())
    {
        return true;
    }
    AbstractBehavior* child = touchChildBehavior();
    if (child == nullptr || (child->getParentBehavior() != nullptr && child->getParentBehavior() != this))
    {
        touchChildrenBehaviors().clear();
        return true;
    }
    forceAsParentBehavior(child);
    if (!derivesFrom(*child, CompositeBehavior::getClassRTTI()) &&
        !derivesFrom(*child, AbstractUserBehavior::getClassRTTI()))
    {
        if (removeChildBehavior(child))
        {
            return true;
        }
        // Two blanks after "not", as the text has always had them.
        report << "child behavior is not  of the required type (only CompositeBehavior or AbstractUserBehavior types "
                  "allowed, type AbstractBehaviorOperator is forbidden) and can not be removed";
        orvLogCore(LogSeverity::LOG_ERROR, report.str());
        return false;
    }
    bool valid = true;
    if (!child->getNextBehaviorCandidates().empty() &&
        !child->removeNextBehaviorCandidate(child->getNextBehaviorCandidates()[0]))
    {
        report << "\n\t- Child behavior is not final (setting a next behavior for a contained behavior is forbidden)";
        valid = false;
    }
    AbstractBehaviorContainer* container = dynamic_cast<AbstractBehaviorContainer*>(child);
    if (valid && recursive && container != nullptr && !container->cleanChildrenBehaviors(true))
    {
        report << "\n\t- Child behavior is a behavior container that have clean issues";
        valid = false;
    }
    if (!valid)
    {
        orvLogCore(LogSeverity::LOG_ERROR, report.str());
    }
    return valid;
}

void LoopBehaviorOperator::setBehaviorGraph(BehaviorGraph* graph)
{
    AbstractBehavior::setBehaviorGraph(graph);
    setBehaviorGraphOnChildren(graph);
}

void LoopBehaviorOperator::setChildrenBehaviorsAttr(const Array<SmartPointer<AbstractBehavior>>& children)
{
    touchChildrenBehaviors() = children;
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        forceAsParentBehavior(child.getImpl());
    }
}

bool LoopBehaviorOperator::doInit()
{
    if (!checkChildrenBehaviorsConnection(false) || !initChildren())
    {
        return false;
    }
    recursiveSetDataOnTriggers(_condition);
    return true;
}

void LoopBehaviorOperator::doFinish()
{
    if (AbstractBehavior* child = touchChildBehavior())
    {
        child->finish();
    }
}

void LoopBehaviorOperator::doAddEntity(int entity)
{
    recursiveSetDataOnTriggers(_condition);
    if (AbstractBehavior* child = touchChildBehavior())
    {
        child->addEntity(entity);
    }
}

void LoopBehaviorOperator::doInit(int entity)
{
    if (AbstractBehavior* child = touchChildBehavior())
    {
        child->init(entity);
    }
}

void LoopBehaviorOperator::doFinish(int entity)
{
    if (AbstractBehavior* child = touchChildBehavior())
    {
        child->finish(entity);
    }
    recursiveResetTriggers(_condition, entity);
}

void LoopBehaviorOperator::doAllocate(int capacity)
{
    recursiveSetDataOnTriggers(_condition);
    doAllocateChildren(capacity);
}

void LoopBehaviorOperator::doDeallocate()
{
    doDeallocateChildren();
}

void LoopBehaviorOperator::doStart(int entity)
{
    AbstractBehavior* child = touchChildBehavior();
    if (child == nullptr)
    {
        requestStop(entity);
        return;
    }
    if (_loopMode == LoopMode::WHILE && !askCondition(entity))
    {
        requestStop(entity);
        return;
    }
    child->requestStart(entity);
}

void LoopBehaviorOperator::doUpdate(Time dt, int entity)
{
    AbstractBehavior* child = touchChildBehavior();
    if (child == nullptr)
    {
        requestStop(entity);
        return;
    }
    if (child->getRunStatus(entity) != RunStatus::IDLE)
    {
        child->update(dt, entity);
        addUpdatedBehaviorToHistory(entity, child);
    }
    if (child->getRunStatus(entity) != RunStatus::IDLE)
    {
        return;
    }
    if (child->getResultStatus(entity) == ResultStatus::FAILURE)
    {
        requestStop(entity);
        return;
    }
    // The next pass starts now and first runs in the next frame: a pass costs at least one frame.
    if (askCondition(entity))
    {
        child->requestStart(entity);
    }
    else
    {
        requestStop(entity);
    }
}

AbstractBehavior::ResultStatus::Value LoopBehaviorOperator::doStop(Time dt, int entity)
{
    AbstractBehavior* child = touchChildBehavior();
    if (child == nullptr)
    {
        return ResultStatus::SUCCESS;
    }
    if (child->getRunStatus(entity) != RunStatus::IDLE)
    {
        child->update(dt, entity);
        addUpdatedBehaviorToHistory(entity, child);
    }
    return child->getResultStatus(entity);
}

void LoopBehaviorOperator::onRequestStop(int entity)
{
    AbstractBehavior* child = touchChildBehavior();
    if (child != nullptr && child->getRunStatus(entity) != RunStatus::IDLE)
    {
        child->requestStop(entity);
    }
}

} // namespace orv
