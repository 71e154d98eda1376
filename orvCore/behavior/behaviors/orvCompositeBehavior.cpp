// orvCore/behavior/behaviors/orvCompositeBehavior.cpp
#include "behavior/behaviors/orvCompositeBehavior.h"

#include <deque>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "behavior/operators/orvFinalBehaviorOperator.h"
#include "behavior/operators/orvInitialBehaviorOperator.h"
#include "system/debug/orvAssert.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

// Appends "\n\t- " count text to report when count is not zero.
void reportCount(std::ostringstream& report, size_t count, const char* text)
{
    if (count != 0)
    {
        report << "\n\t- " << count << text;
    }
}

} // namespace

ORV_IMPLEMENT_RTTI(CompositeBehavior, "76146d0e-74f5-4b08-bba3-80e4d52c0289", "orv::CompositeBehavior")

void CompositeBehavior::addAttributes()
{
    _rtti->addBaseClass<AbstractBehavior>();
    addAccessorsAttribute<const Array<SmartPointer<AbstractBehavior>>&>("childrenBehaviors",
                                                                        &CompositeBehavior::getChildrenBehaviorsAttr,
                                                                        &CompositeBehavior::setChildrenBehaviorsAttr);
    addAccessorsAttribute<int>("currentBehaviorArrayCapacity", &CompositeBehavior::getCurrentBehaviorArrayCapacity,
                               &CompositeBehavior::setCurrentBehaviorArrayCapacity);
    addAttribute("currentBehavior", &CompositeBehavior::_currentBehavior);
}

CompositeBehavior::CompositeBehavior()
{
    AbstractBehavior* initial = new InitialBehaviorOperator();
    AbstractBehavior* final = new FinalBehaviorOperator();
    AbstractBehaviorContainer::addChildBehavior(initial);
    AbstractBehaviorContainer::addChildBehavior(final);
    initial->addNextBehaviorCandidate(final);
}

CompositeBehavior::~CompositeBehavior() = default;

bool CompositeBehavior::canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const
{
    return canAddSingleNextBehaviorCandidate(candidate, reason, "CompositeBehavior");
}

bool CompositeBehavior::addNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return addSingleNextBehaviorCandidate(candidate);
}

bool CompositeBehavior::removeNextBehaviorCandidate(AbstractBehavior* candidate)
{
    return removeSingleNextBehaviorCandidate(candidate);
}

bool CompositeBehavior::checkNextBehaviorCandidatesConnection() const
{
    return checkSingleNextBehaviorCandidate("CompositeBehavior can not have more than 1 next behavior candidate");
}

bool CompositeBehavior::checkChildrenBehaviorsConnection(bool recursive) const
{
    std::ostringstream report;
    report << "Invalid connection for children behaviors contained in CompositeBehavior : ";
    const Array<SmartPointer<AbstractBehavior>>& children = getChildrenBehaviors();
    if (childAt(0) == nullptr || childAt(1) == nullptr)
    {
        if (childAt(0) == nullptr)
        {
            report << "\n\t- the default initial behavior was not found";
        }
        if (childAt(1) == nullptr)
        {
            report << "\n\t- the default final behavior was not found";
        }
        orvLogCore(LogSeverity::LOG_ERROR, report.str());
        return false;
    }

    size_t nulls = 0;
    size_t foreign = 0;
    OrvMap<const AbstractBehavior*, bool> reached;
    for (const SmartPointer<AbstractBehavior>& child : children)
    {
        if (child.getImpl() == nullptr)
        {
            ++nulls;
        }
        else if (child->getParentBehavior() != this)
        {
            ++foreign;
        }
        else
        {
            reached[child.getImpl()] = false;
        }
    }

    std::set<const AbstractBehavior*> strangers;
    size_t finals = 0;
    size_t connectionFailures = 0;
    size_t containerFailures = 0;
    std::deque<const AbstractBehavior*> queue{childAt(0)};
    while (!queue.empty())
    {
        const AbstractBehavior* node = queue.front();
        queue.pop_front();
        OrvMap<const AbstractBehavior*, bool>::iterator entry = reached.find(node);
        if (entry == reached.end())
        {
            strangers.insert(node);
            continue;
        }
        if (entry->_value)
        {
            continue;
        }
        entry->_value = true;
        if (node->getNextBehaviorCandidates().empty())
        {
            ++finals;
        }
        if (!node->checkNextBehaviorCandidatesConnection())
        {
            ++connectionFailures;
        }
        for (const AbstractBehavior* candidate : node->getNextBehaviorCandidates())
        {
            if (candidate != nullptr)
            {
                queue.push_back(candidate);
            }
        }
        const AbstractBehaviorContainer* container = dynamic_cast<const AbstractBehaviorContainer*>(node);
        if (recursive && container != nullptr && !container->checkChildrenBehaviorsConnection(true))
        {
            ++containerFailures;
        }
    }
    size_t unreached = 0;
    for (OrvMap<const AbstractBehavior*, bool>::const_iterator it = reached.begin(); it != reached.end(); ++it)
    {
        unreached += it->_value ? 0 : 1;
    }

    reportCount(report, foreign,
                " children behaviors were added to current behavior but reference another behavior as parent");
    reportCount(report, strangers.size(),
                " children behaviors are connected to initial behavior but were not added to current behavior");
    reportCount(report, nulls, " children behaviors added to current behavior are NULL");
    reportCount(report, unreached,
                " children behaviors were added to current behavior but are not connected to initial behavior");
    reportCount(report, connectionFailures,
                " children behaviors have next behaviors connection issues (connections check failed)");
    reportCount(report, containerFailures, " children behaviors are behavior containers that have connection issues");
    if (finals != 1)
    {
        report << "\n\t- " << finals
               << " final children behaviors were found (only the default final behavior is allowed)";
    }
    if (foreign + strangers.size() + nulls + unreached + connectionFailures + containerFailures == 0 && finals == 1)
    {
        return true;
    }
    orvLogCore(LogSeverity::LOG_ERROR, report.str());
    return false;
}

bool CompositeBehavior::checkChildBehaviorLooping(const AbstractBehavior* child) const
{
    if (child == nullptr || child->getParentBehavior() != this || getChildrenBehaviors().empty())
    {
        return false;
    }
    std::set<const AbstractBehavior*> visited{child};
    std::deque<const AbstractBehavior*> queue{child};
    while (!queue.empty())
    {
        const AbstractBehavior* node = queue.front();
        queue.pop_front();
        for (const AbstractBehavior* candidate : node->getNextBehaviorCandidates())
        {
            if (candidate == child)
            {
                return true;
            }
            if (candidate != nullptr && visited.insert(candidate).second)
            {
                queue.push_back(candidate);
            }
        }
    }
    return false;
}

bool CompositeBehavior::cleanChildrenBehaviors(bool recursive)
{
    // A locked composite is left as it is, and that counts as clean.
    if (isLocked())
    {
        return true;
    }
    std::ostringstream report;
    report << "Can not clean children behaviors for CompositeBehavior : ";
    if (childAt(0) == nullptr || childAt(1) == nullptr)
    {
        if (childAt(0) == nullptr)
        {
            report << "\n\t- the default initial behavior was not found";
        }
        if (childAt(1) == nullptr)
        {
            report << "\n\t- the default final behavior was not found";
        }
        orvLogCore(LogSeverity::LOG_ERROR, report.str());
        return false;
    }
    AbstractBehavior* const initial = childAt(0);
    AbstractBehavior* const final = childAt(1);

    Array<SmartPointer<AbstractBehavior>>& children = touchChildrenBehaviors();
    OrvMap<AbstractBehavior*, bool> reached;
    for (size_t i = 0; i < children.size();)
    {
        AbstractBehavior* child = children[i].getImpl();
        if (child == nullptr || (child->getParentBehavior() != nullptr && child->getParentBehavior() != this))
        {
            children.erase(children.begin() + i);
            continue;
        }
        forceAsParentBehavior(child);
        reached[child] = false;
        ++i;
    }

    std::set<AbstractBehavior*> strangers;
    size_t connectionFailures = 0;
    size_t containerFailures = 0;
    size_t finalFailures = 0;
    std::deque<AbstractBehavior*> queue{initial};
    while (!queue.empty())
    {
        AbstractBehavior* node = queue.front();
        queue.pop_front();
        OrvMap<AbstractBehavior*, bool>::iterator entry = reached.find(node);
        if (entry == reached.end())
        {
            if (strangers.count(node) != 0 || !addChildBehavior(node))
            {
                strangers.insert(node);
                continue;
            }
            entry = reached.insert(node, false).first;
        }
        if (entry->_value)
        {
            continue;
        }
        entry->_value = true;
        if (node->getNextBehaviorCandidates().empty() && node != final && !node->addNextBehaviorCandidate(final))
        {
            ++finalFailures;
        }
        if (!node->checkNextBehaviorCandidatesConnection())
        {
            ++connectionFailures;
        }
        for (AbstractBehavior* candidate : node->getNextBehaviorCandidates())
        {
            if (candidate != nullptr)
            {
                queue.push_back(candidate);
            }
        }
        AbstractBehaviorContainer* container = dynamic_cast<AbstractBehaviorContainer*>(node);
        if (recursive && container != nullptr && !container->cleanChildrenBehaviors(true))
        {
            ++containerFailures;
        }
    }

    std::vector<AbstractBehavior*> unreached;
    for (OrvMap<AbstractBehavior*, bool>::iterator it = reached.begin(); it != reached.end(); ++it)
    {
        if (!it->_value)
        {
            unreached.push_back(it->_key);
        }
    }
    size_t notRemoved = 0;
    for (AbstractBehavior* child : unreached)
    {
        notRemoved += removeChildBehavior(child) ? 0 : 1;
    }

    reportCount(report, strangers.size(),
                " children behaviors are connected to initial behavior but were not added to current behavior");
    reportCount(report, notRemoved,
                " children behaviors were added to current behavior but are not connected to initial behavior");
    reportCount(report, connectionFailures,
                " children behaviors have next behaviors connection issues (connections check failed)");
    reportCount(report, containerFailures, " children behaviors are behavior containers that have clean issues");
    reportCount(report, finalFailures,
                " final children behaviors were found but could not be connected to default final behavior");
    if (strangers.size() + notRemoved + connectionFailures + containerFailures + finalFailures == 0)
    {
        return true;
    }
    orvLogCore(LogSeverity::LOG_ERROR, report.str());
    return false;
}

bool CompositeBehavior::addChildBehavior(AbstractBehavior* child)
{
    if (!AbstractBehaviorContainer::addChildBehavior(child))
    {
        return false;
    }
    joinGraph(*this, *child);
    return true;
}

bool CompositeBehavior::removeChildBehavior(AbstractBehavior* child)
{
    const char* refusal = nullptr;
    if (child != nullptr && child == childAt(0))
    {
        refusal = "initial behavior can not be removed";
    }
    else if (child != nullptr && child == childAt(1))
    {
        refusal = "final behavior can not be removed";
    }
    if (refusal != nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Can not remove child behavior from composite behavior : " << refusal);
        return false;
    }
    // Held across the removal, which may drop the last other hold, so that it can leave the graph.
    SmartPointer<AbstractBehavior> hold(child);
    if (!AbstractBehaviorContainer::removeChildBehavior(child))
    {
        return false;
    }
    leaveGraph(*this, *child);
    return true;
}

void CompositeBehavior::setBehaviorGraph(BehaviorGraph* graph)
{
    AbstractBehavior::setBehaviorGraph(graph);
    setBehaviorGraphOnChildren(graph);
}

void CompositeBehavior::computeFlowMap(OrvMap<const AbstractBehavior*, bool>& map) const
{
    map.clear();
    if (getChildrenBehaviors().empty())
    {
        return;
    }
    for (const SmartPointer<AbstractBehavior>& child : getChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            map[child.getImpl()] = false;
        }
    }
    std::deque<const AbstractBehavior*> queue;
    if (childAt(0) != nullptr)
    {
        queue.push_back(childAt(0));
    }
    while (!queue.empty())
    {
        const AbstractBehavior* node = queue.front();
        queue.pop_front();
        bool& mark = map[node];
        if (mark)
        {
            continue;
        }
        mark = true;
        for (const AbstractBehavior* candidate : node->getNextBehaviorCandidates())
        {
            if (candidate != nullptr)
            {
                queue.push_back(candidate);
            }
        }
    }
}

bool CompositeBehavior::isChildBehaviorInFlow(const AbstractBehavior* child) const
{
    if (child == nullptr || child->getParentBehavior() != this || getChildrenBehaviors().empty() ||
        childAt(0) == nullptr)
    {
        return false;
    }
    std::set<const AbstractBehavior*> visited;
    std::deque<const AbstractBehavior*> queue{childAt(0)};
    while (!queue.empty())
    {
        const AbstractBehavior* node = queue.front();
        queue.pop_front();
        // Only this composite's own children are walked.
        if (node->getParentBehavior() != this || !visited.insert(node).second)
        {
            continue;
        }
        if (node == child)
        {
            return true;
        }
        for (const AbstractBehavior* candidate : node->getNextBehaviorCandidates())
        {
            if (candidate != nullptr)
            {
                queue.push_back(candidate);
            }
        }
    }
    return false;
}

void CompositeBehavior::clearUpdatedNodesAndTransitions(int entity)
{
    if (!hasEntitySlot(entity))
    {
        return;
    }
    RuntimeUpdateHistoryPerFrame& history = _runtimeHistoryPerEntity[entity];
    history._updatedBehaviorsThisFrame.clear();
    for (CompositeBehavior* composite : history._childrenCompositeToClearTransitions)
    {
        composite->clearUpdatedNodesAndTransitions(entity);
    }
    history._childrenCompositeToClearTransitions.clear();
}

void CompositeBehavior::addToHistory(int entity, const AbstractBehavior* behavior)
{
    if (!hasEntitySlot(entity))
    {
        return;
    }
    _runtimeHistoryPerEntity[entity]._updatedBehaviorsThisFrame.push_back(behavior);
}

bool CompositeBehavior::isInHistory(int entity, const AbstractBehavior* behavior) const
{
    if (!hasEntitySlot(entity))
    {
        return false;
    }
    // Short lists: a linear search.
    for (const AbstractBehavior* updated : _runtimeHistoryPerEntity[entity]._updatedBehaviorsThisFrame)
    {
        if (updated == behavior)
        {
            return true;
        }
    }
    return false;
}

void CompositeBehavior::setChildrenBehaviorsAttr(const Array<SmartPointer<AbstractBehavior>>& children)
{
    touchChildrenBehaviors() = children;
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        forceAsParentBehavior(child.getImpl());
    }
}

void CompositeBehavior::repairLoadedSlots(int slotCount)
{
    if (slotCount > 0 && _currentBehavior.size() < static_cast<size_t>(slotCount))
    {
        _currentBehavior.resize(static_cast<size_t>(slotCount), nullptr);
    }
    if (_runtimeHistoryPerEntity.size() < _currentBehavior.size())
    {
        _runtimeHistoryPerEntity.resize(_currentBehavior.size());
    }
    for (AbstractBehavior*& current : _currentBehavior)
    {
        // A current child elsewhere in the graph (this composite itself, an ancestor) would loop the walk.
        if (current != nullptr && (current->getParentBehavior() != this || !hasChildBehavior(current)))
        {
            current = nullptr;
        }
    }
}

void CompositeBehavior::setCurrentBehaviorArrayCapacity(int value)
{
    orvAssert(value >= 0);
    _currentBehavior.set_capacity(static_cast<size_t>(value));
    _runtimeHistoryPerEntity.resize(static_cast<size_t>(value));
}

void CompositeBehavior::doAllocate(int capacity)
{
    _currentBehavior.set_capacity(static_cast<size_t>(capacity));
    doAllocateChildren(capacity);
    _runtimeHistoryPerEntity.resize(static_cast<size_t>(capacity));
}

void CompositeBehavior::doDeallocate()
{
    _currentBehavior.clear();
    doDeallocateChildren();
    _currentBehavior.set_capacity(0);
    _runtimeHistoryPerEntity.clear();
    _runtimeHistoryPerEntity.set_capacity(0);
}

bool CompositeBehavior::doInit()
{
    if (!checkChildrenBehaviorsConnection(false))
    {
        return false;
    }
    return initChildren();
}

void CompositeBehavior::doFinish()
{
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->finish();
        }
    }
}

void CompositeBehavior::doAddEntity(int entity)
{
    const size_t count = static_cast<size_t>(entity) + 1;
    if (count > _currentBehavior.capacity())
    {
        const size_t grown = _currentBehavior.capacity() * 2 + 8;
        _currentBehavior.set_capacity(count > grown ? count : grown);
    }
    _currentBehavior.resize(count, nullptr);
    _currentBehavior[entity] = nullptr;
    // An entity past the allocated capacity still gets its frame history.
    if (_runtimeHistoryPerEntity.size() < count)
    {
        _runtimeHistoryPerEntity.resize(count);
    }
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->addEntity(entity);
        }
    }
}

void CompositeBehavior::doInit(int entity)
{
    if (!hasEntitySlot(entity))
    {
        return;
    }
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->init(entity);
        }
    }
}

void CompositeBehavior::doFinish(int entity)
{
    if (!hasEntitySlot(entity))
    {
        return;
    }
    for (SmartPointer<AbstractBehavior>& child : touchChildrenBehaviors())
    {
        if (child.getImpl() != nullptr)
        {
            child->finish(entity);
        }
    }
    _currentBehavior[entity] = nullptr;
}

void CompositeBehavior::doStart(int entity)
{
    if (!hasEntitySlot(entity))
    {
        requestStop(entity);
        return;
    }
    AbstractBehavior* current = childAt(0);
    _currentBehavior[entity] = current;
    if (current == nullptr)
    {
        // A chart without its initial operator (a graph that failed its check) ends at once.
        requestStop(entity);
        return;
    }
    current->requestStart(entity);
    // A child that ended in its own start hands over to its follower at once.
    while (current->getRunStatus(entity) == RunStatus::IDLE && current->touchNextBehaviorSelected(entity) != nullptr)
    {
        current = current->touchNextBehaviorSelected(entity);
        _currentBehavior[entity] = current;
        current->requestStart(entity);
    }
    if (current->getRunStatus(entity) == RunStatus::IDLE)
    {
        _currentBehavior[entity] = nullptr;
        requestStop(entity);
    }
}

void CompositeBehavior::doUpdate(Time dt, int entity)
{
    if (!hasEntitySlot(entity))
    {
        requestStop(entity);
        return;
    }
    clearUpdatedNodesAndTransitions(entity);
    AbstractBehavior* currentBehavior = _currentBehavior[entity];
    if (currentBehavior == nullptr)
    {
        // Nothing active (a chart that ended, read back from a file): the composite ends.
        requestStop(entity);
        return;
    }
    currentBehavior->update(dt, entity);
    Time remaining = currentBehavior->isTimeConsuming() ? 0.0 : dt;
    if (currentBehavior->getResultStatus(entity) == ResultStatus::FAILURE)
    {
        requestStop(entity);
        return;
    }
    if (currentBehavior->getRunStatus(entity) != RunStatus::IDLE)
    {
        return;
    }
    addToHistory(entity, currentBehavior);
    for (;;)
    {
        if (currentBehavior->getRunStatus(entity) != RunStatus::IDLE)
        {
            if (currentBehavior->getResultStatus(entity) == ResultStatus::FAILURE)
            {
                requestStop(entity);
            }
            return;
        }
        if (currentBehavior->getResultStatus(entity) == ResultStatus::FAILURE)
        {
            requestStop(entity);
            return;
        }
        if (!currentBehavior->hasNextBehaviorSelected(entity))
        {
            _currentBehavior[entity] = nullptr;
            requestStop(entity);
            return;
        }
        currentBehavior = currentBehavior->touchNextBehaviorSelected(entity);
        orvAssert(currentBehavior != NULL);
        _currentBehavior[entity] = currentBehavior;
        currentBehavior->requestStart(entity);
        // A node met twice in a frame waits, started, for the next frame: a cycle costs one pass a frame.
        if (isInHistory(entity, currentBehavior))
        {
            return;
        }
        addToHistory(entity, currentBehavior);
        currentBehavior->update(remaining, entity);
        if (currentBehavior->isTimeConsuming())
        {
            remaining = 0.0;
        }
    }
}

AbstractBehavior::ResultStatus::Value CompositeBehavior::doStop(Time dt, int entity)
{
    if (!hasEntitySlot(entity))
    {
        return ResultStatus::FAILURE;
    }
    CompositeBehavior* parent = getParentComposite();
    if (parent != nullptr && parent->hasEntitySlot(entity))
    {
        parent->_runtimeHistoryPerEntity[entity]._childrenCompositeToClearTransitions.push_back(this);
    }
    AbstractBehavior* current = _currentBehavior[entity];
    if (current == nullptr)
    {
        return ResultStatus::SUCCESS;
    }
    if (current->getResultStatus(entity) == ResultStatus::FAILURE)
    {
        return ResultStatus::FAILURE;
    }
    if (current->getRunStatus(entity) == RunStatus::IDLE)
    {
        return ResultStatus::SUCCESS;
    }
    addToHistory(entity, current);
    current->update(dt, entity);
    if (current->getRunStatus(entity) != RunStatus::IDLE)
    {
        return ResultStatus::UNKNOWN;
    }
    return current->getResultStatus(entity) == ResultStatus::FAILURE ? ResultStatus::FAILURE : ResultStatus::SUCCESS;
}

void CompositeBehavior::onRequestStart(int entity)
{
    if (!hasEntitySlot(entity))
    {
        return;
    }
    _currentBehavior[entity] = nullptr;
}

void CompositeBehavior::onRequestStop(int entity)
{
    if (!hasEntitySlot(entity))
    {
        return;
    }
    if (AbstractBehavior* current = _currentBehavior[entity])
    {
        current->requestStop(entity);
    }
}

} // namespace orv
