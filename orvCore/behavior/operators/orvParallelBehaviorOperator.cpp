// orvCore/behavior/operators/orvParallelBehaviorOperator.cpp
#include "behavior/operators/orvParallelBehaviorOperator.h"

#include <sstream>

#include "behavior/behaviors/orvAbstractUserBehavior.h"
#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvBehaviorStatusCallBack.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

bool derivesFrom(const AbstractBehavior& node, const RTTI* rtti)
{
    return rtti != nullptr && node.getRTTI()->isDerivedFrom(*rtti);
}

// Appends "\n\t- " count text to report when count is not zero.
void reportCount(std::ostringstream& report, size_t count, const char* text)
{
    if (count != 0)
    {
        report << "\n\t- " << count << text;
    }
}

} // namespace

bool checkUnorderedChildren(const AbstractBehaviorContainer& container, const char* className, bool recursive)
{
    size_t nulls = 0;
    size_t wrongType = 0;
    size_t notFinal = 0;
    size_t foreign = 0;
    size_t containerFailures = 0;
    for (const SmartPointer<AbstractBehavior>& held : container.getChildrenBehaviors())
    {
        const AbstractBehavior* child = held.getImpl();
        if (child == nullptr)
        {
            ++nulls;
            continue;
        }
        const AbstractBehaviorContainer* nested = dynamic_cast<const AbstractBehaviorContainer*>(child);
        if (nested == nullptr && !derivesFrom(*child, AbstractUserBehavior::getClassRTTI()))
        {
            ++wrongType;
        }
        if (!child->getNextBehaviorCandidates().empty())
        {
            ++notFinal;
        }
        if (child->getParentBehavior() != &container)
        {
            ++foreign;
        }
        if (recursive && nested != nullptr && !nested->checkChildrenBehaviorsConnection(true))
        {
            ++containerFailures;
        }
    }
    if (nulls + wrongType + notFinal + foreign + containerFailures == 0)
    {
        return true;
    }
    std::ostringstream report;
    report << "Invalid connection for children behaviors contained in " << className << " : ";
    reportCount(report, nulls, " children behaviors are NULL");
    reportCount(report, wrongType,
                " children behaviors are not of the required type (only AbstractBehaviorContainer or "
                "AbstractUserBehavior types allowed, type AbstractBehaviorOperator is forbidden)");
    reportCount(report, foreign,
                " children behaviors were added to current behavior but belong to another parent behavior");
    reportCount(report, notFinal,
                " children behaviors are not final (setting a next behavior for a contained behavior is forbidden)");
    reportCount(report, containerFailures, " children behaviors are behavior containers that have connection issues");
    orvLogCore(LogSeverity::LOG_ERROR, report.str());
    return false;
}

bool cleanUnorderedChildren(AbstractBehaviorContainer& container, const char* className, bool recursive)
{
    std::ostringstream report;
    report << "Can not clean children behaviors for " << className << " : ";
    if (container.isLocked())
    {
        // A locked container is left as it is, and that counts as clean: the reason is built but not logged.
        report << "behavior container is locked";
        return true;
    }
    Array<SmartPointer<AbstractBehavior>>& children = container.touchChildrenBehaviors();
    Array<AbstractBehavior*> wrongType;
    size_t notFinal = 0;
    size_t containerFailures = 0;
    for (size_t i = 0; i < children.size();)
    {
        AbstractBehavior* child = children[i].getImpl();
        if (child == nullptr || (child->getParentBehavior() != nullptr && child->getParentBehavior() != &container))
        {
            children.erase(children.begin() + i);
            continue;
        }
        ++i;
        child->setParentBehavior(&container);
        if (!derivesFrom(*child, CompositeBehavior::getClassRTTI()) &&
            !derivesFrom(*child, AbstractUserBehavior::getClassRTTI()))
        {
            wrongType.push_back(child);
            continue;
        }
        if (!child->getNextBehaviorCandidates().empty() &&
            !child->removeNextBehaviorCandidate(child->getNextBehaviorCandidates()[0]))
        {
            ++notFinal;
        }
        AbstractBehaviorContainer* nested = dynamic_cast<AbstractBehaviorContainer*>(child);
        if (recursive && nested != nullptr && !nested->cleanChildrenBehaviors(true))
        {
            ++containerFailures;
        }
    }
    // Removed after the walk, which indexes the children array.
    for (AbstractBehavior* child : wrongType)
    {
        container.removeChildBehavior(child);
    }
    if (notFinal + containerFailures == 0)
    {
        return true;
    }
    reportCount(report, notFinal,
                " children behaviors are not final (setting a next behavior for a contained behavior is forbidden)");
    reportCount(report, containerFailures, " children behaviors are behavior containers that have clean issues");
    orvLogCore(LogSeverity::LOG_ERROR, report.str());
    return false;
}

ORV_IMPLEMENT_RTTI(ParallelBehaviorOperator, "6e57dddf-2a0e-47cf-a96f-e784b81c8190", "orv::ParallelBehaviorOperator")

void ParallelBehaviorOperator::addAttributes()
{
    _rtti->addBaseClass<AbstractBehaviorOperator>();
    addAccessorsAttribute<const Array<SmartPointer<AbstractBehavior>>&>(
        "childrenBehaviors", &ParallelBehaviorOperator::getChildrenBehaviorsAttr,
        &ParallelBehaviorOperator::setChildrenBehaviorsAttr);
    addAccessorsAttribute<unsigned int>("exitMode", &ParallelBehaviorOperator::getExitModeUInt,
                                        &ParallelBehaviorOperator::setExitModeUInt);
}

ParallelBehaviorOperator::ParallelBehaviorOperator(ExitMode::Value mode) : _exitMode(mode)
{
}

ParallelBehaviorOperator::~ParallelBehaviorOperator() = default;

bool ParallelBehaviorOperator::setExitMode(ExitMode::Value mode)
{
    if (isInitialized())
    {
        // The word "condition" stays: the mode decides the stopping condition.
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Can not set condition for current behavior : current behavior is initialized");
        return false;
    }
    _exitMode = mode;
    return true;
}

void ParallelBehaviorOperator::setExitModeUInt(unsigned int mode)
{
    _exitMode = mode < ExitMode::END ? static_cast<ExitMode::Value>(mode) : ExitMode::END;
}

bool ParallelBehaviorOperator::canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const
{
    return canAddSingleNextBehaviorCandidate(candidate, reason, "ParallelBehaviorOperator");
}

bool ParallelBehaviorOperator::addNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return addSingleNextBehaviorCandidate(candidate);
}

bool ParallelBehaviorOperator::removeNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return removeSingleNextBehaviorCandidate(candidate);
}

bool ParallelBehaviorOperator::checkNextBehaviorCandidatesConnection() const
{
    return checkSingleNextBehaviorCandidate(
        "ParallelBehaviorOperator can not have more than 1 next behavior candidate");
}

bool ParallelBehaviorOperator::addChildBehavior(AbstractBehavior* child)
{
    if (!AbstractBehaviorContainer::addChildBehavior(child))
    {
        return false;
    }
    joinGraph(*this, *child);
    return true;
}

bool ParallelBehaviorOperator::removeChildBehavior(AbstractBehavior* child)
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

bool ParallelBehaviorOperator::checkChildrenBehaviorsConnection(bool recursive) const
{
    return checkUnorderedChildren(*this, "ParallelBehaviorOperator", recursive);
}

bool ParallelBehaviorOperator::checkChildBehaviorLooping(const AbstractBehavior*) const
{
    return false;
}

bool ParallelBehaviorOperator::cleanChildrenBehaviors(bool recursive)
{
    return cleanUnorderedChildren(*this, "ParallelBehaviorOperator", recursive);
}

void ParallelBehaviorOperator::setBehaviorGraph(BehaviorGraph* graph)
{
    AbstractBehavior::setBehaviorGraph(graph);
    setBehaviorGraphOnChildren(graph);
}

void ParallelBehaviorOperator::setChildrenBehaviorsAttr(const Array<SmartPointer<AbstractBehavior>>& children)
{
    touchChildrenBehaviors() = children;
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        forceAsParentBehavior(child.getImpl());
    }
}

bool ParallelBehaviorOperator::doInit()
{
    if (!checkChildrenBehaviorsConnection(false) || !initChildren())
    {
        return false;
    }
    const Array<SmartPointer<AbstractBehavior>>& children = getChildrenBehaviors();
    if (children.empty() || (_exitMode != ExitMode::ALL_FINISHED && _exitMode != ExitMode::ANYONE_FINISHED))
    {
        return true;
    }
    // The exit mode is the stopping condition, tested by update() right after doUpdate: the operator stops in the
    // frame in which the first, or the last, child has become IDLE.
    BoolCallBackPointer exit(new BehaviorStatusCallBack(children[0].getImpl(), RunStatus::IDLE));
    for (size_t i = 1; i < children.size(); ++i)
    {
        const BoolCallBackPointer idle(new BehaviorStatusCallBack(children[i].getImpl(), RunStatus::IDLE));
        exit = _exitMode == ExitMode::ANYONE_FINISHED ? (exit || idle) : (exit && idle);
    }
    setStoppingCondition(exit);
    return true;
}

void ParallelBehaviorOperator::doFinish()
{
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->finish();
        }
    }
}

void ParallelBehaviorOperator::doAddEntity(int entity)
{
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->addEntity(entity);
        }
    }
}

void ParallelBehaviorOperator::doInit(int entity)
{
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->init(entity);
        }
    }
}

void ParallelBehaviorOperator::doFinish(int entity)
{
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->finish(entity);
        }
    }
}

void ParallelBehaviorOperator::doAllocate(int capacity)
{
    doAllocateChildren(capacity);
}

void ParallelBehaviorOperator::doDeallocate()
{
    doDeallocateChildren();
}

void ParallelBehaviorOperator::doStart(int entity)
{
    if (getChildrenBehaviors().empty())
    {
        requestStop(entity);
        return;
    }
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->requestStart(entity);
        }
    }
}

void ParallelBehaviorOperator::doUpdate(Time dt, int entity)
{
    if (getChildrenBehaviors().empty())
    {
        requestStop(entity);
        return;
    }
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr && child->getRunStatus(entity) != RunStatus::IDLE)
        {
            child->update(dt, entity);
            addUpdatedBehaviorToHistory(entity, child.getImpl());
        }
    }
}

AbstractBehavior::ResultStatus::Value ParallelBehaviorOperator::doStop(Time dt, int entity)
{
    if (getChildrenBehaviors().empty())
    {
        return ResultStatus::SUCCESS;
    }
    bool active = false;
    bool failed = false;
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() == nullptr)
        {
            continue;
        }
        if (child->getRunStatus(entity) != RunStatus::IDLE)
        {
            child->update(dt, entity);
            addUpdatedBehaviorToHistory(entity, child.getImpl());
            active = active || child->getRunStatus(entity) != RunStatus::IDLE;
        }
        // A child that ended earlier in the run, or was never restarted, still counts with its last result.
        failed = failed || child->getResultStatus(entity) == ResultStatus::FAILURE;
    }
    if (active)
    {
        return ResultStatus::UNKNOWN;
    }
    return failed ? ResultStatus::FAILURE : ResultStatus::SUCCESS;
}

void ParallelBehaviorOperator::onRequestStop(int entity)
{
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr && child->getRunStatus(entity) != RunStatus::IDLE)
        {
            child->requestStop(entity);
        }
    }
}

} // namespace orv
