// orvCore/behavior/engine/orvAbstractBehavior.cpp
#include "behavior/engine/orvAbstractBehavior.h"

#include <new>

#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvAbstractTrigger.h"
#include "behavior/engine/orvAbstractBehaviorContainer.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "system/debug/orvAssert.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

// Removes the first entry holding the object of callBack, keeping the order of the others.
void removeFirst(Array<SmartPointer<IVoidCallBack>>& callBacks, const SmartPointer<IVoidCallBack>& callBack)
{
    for (SmartPointer<IVoidCallBack>* entry = callBacks.begin(); entry != callBacks.end(); ++entry)
    {
        if (entry->getImpl() == callBack.getImpl())
        {
            callBacks.erase(entry);
            return;
        }
    }
}

// Calls each non-null call-back in order.
void callEach(const Array<SmartPointer<IVoidCallBack>>& callBacks, int entity)
{
    for (const SmartPointer<IVoidCallBack>& callBack : callBacks)
    {
        if (callBack.getImpl() != nullptr)
        {
            callBack->call(entity);
        }
    }
}

} // namespace

ORV_IMPLEMENT_RTTI(AbstractBehavior::BehaviorStatusData, "257441f6-5d40-434b-bb5f-7219093ec5a7",
                   "orv::AbstractBehavior::BehaviorStatusData")

void AbstractBehavior::BehaviorStatusData::addAttributes()
{
    addAttribute("time", &BehaviorStatusData::_time);
    addAccessorsAttribute<unsigned int>("runStatus", &BehaviorStatusData::getRunStatusUInt,
                                        &BehaviorStatusData::setRunStatusUInt);
    addAccessorsAttribute<unsigned int>("resultStatus", &BehaviorStatusData::getResultStatusUInt,
                                        &BehaviorStatusData::setResultStatusUInt);
    addAttribute("nextBehaviorSelectedId", &BehaviorStatusData::_nextBehaviorSelectedIdPerInstance);
}

void AbstractBehavior::BehaviorStatusData::setRunStatusUInt(unsigned int value)
{
    _runStatus = value < RunStatus::END ? static_cast<RunStatus::Value>(value) : RunStatus::END;
}

void AbstractBehavior::BehaviorStatusData::setResultStatusUInt(unsigned int value)
{
    _resultStatus = value < ResultStatus::END ? static_cast<ResultStatus::Value>(value) : ResultStatus::END;
}

ORV_IMPLEMENT_ABSTRACT_RTTI(AbstractBehavior, "36c47d0c-64cb-41b7-a648-517b01c5fb4a", "orv::AbstractBehavior")

void AbstractBehavior::addAttributes()
{
    _rtti->addBaseClass<ReferenceCounter>();
    addAttribute("behaviorGraph", &AbstractBehavior::_behaviorGraph);
    addAttribute("nextBehaviorCandidates", &AbstractBehavior::_nextBehaviorCandidates);
    addAttribute("nextBehaviorSelectedId", &AbstractBehavior::_nextBehaviorSelectedId);
    // The capacity comes ahead of the rows, so that the rows read back fit.
    addAccessorsAttribute<int>("behaviorStatusDataArrayCapacity", &AbstractBehavior::getBehaviorStatusDataArrayCapacity,
                               &AbstractBehavior::setBehaviorStatusDataArrayCapacity);
    addAttribute("behaviorStatusData", &AbstractBehavior::_statusData);
    addAttribute("initialized", &AbstractBehavior::_initialized);
    addAttribute("requestStartAtInitialization", &AbstractBehavior::_requestStartAtInitialization);
    addAttribute("startingCondition", &AbstractBehavior::_startingCondition);
    addAttribute("stoppingCondition", &AbstractBehavior::_stoppingCondition);
}

AbstractBehavior::AbstractBehavior() = default;

AbstractBehavior::~AbstractBehavior() = default;

bool AbstractBehavior::hasNextBehaviorSelected(int entity) const
{
    return readRow(entity)._nextBehaviorSelectedIdPerInstance != _nextBehaviorInvalidId;
}

const AbstractBehavior* AbstractBehavior::getNextBehaviorSelected(int entity) const
{
    // An id past the candidates (a candidate removed since, or a loaded row) reads as none.
    const uint32_t id = readRow(entity)._nextBehaviorSelectedIdPerInstance;
    return id < _nextBehaviorCandidates.size() ? _nextBehaviorCandidates[id] : nullptr;
}

AbstractBehavior* AbstractBehavior::touchNextBehaviorSelected(int entity)
{
    const uint32_t id = readRow(entity)._nextBehaviorSelectedIdPerInstance;
    return id < _nextBehaviorCandidates.size() ? _nextBehaviorCandidates[id] : nullptr;
}

const AbstractBehavior::BehaviorStatusData& AbstractBehavior::refuseEntity(int entity, const char* operation) const
{
    static const BehaviorStatusData defaults;
    orvLogCore(LogSeverity::LOG_ERROR, "Cannot " << operation << " the status of entity " << entity
                                                 << " in a behavior: it has no row among the " << _statusData.size());
    return defaults;
}

uint32_t AbstractBehavior::retrieveNextBehaviorCandidateId(const AbstractBehavior* candidate) const
{
    if (candidate != nullptr)
    {
        for (size_t i = 0; i < _nextBehaviorCandidates.size(); ++i)
        {
            if (_nextBehaviorCandidates[i] == candidate)
            {
                return static_cast<uint32_t>(i);
            }
        }
    }
    return _nextBehaviorInvalidId;
}

bool AbstractBehavior::hasNextBehaviorCandidate(const AbstractBehavior* candidate) const
{
    return retrieveNextBehaviorCandidateId(candidate) != _nextBehaviorInvalidId;
}

bool AbstractBehavior::hasAncestorBehavior(const AbstractBehaviorContainer* ancestor) const
{
    const AbstractBehavior* node = this;
    // The chain is finite: a container holds its children, so a node is never its own ancestor.
    while (node->_parentBehavior != nullptr)
    {
        if (node->_parentBehavior == ancestor)
        {
            return true;
        }
        node = dynamic_cast<const AbstractBehavior*>(node->_parentBehavior);
        if (node == nullptr)
        {
            return false;
        }
    }
    return false;
}

bool AbstractBehavior::hasParentBehaviorLocked() const
{
    return _parentBehavior != nullptr && _parentBehavior->isLocked();
}

bool AbstractBehavior::canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const
{
    reason = "Can not accept next behavior candidate for current behavior : ";
    if (hasParentBehaviorLocked())
    {
        reason += "current behavior belongs to a parent behavior that is locked";
        return false;
    }
    if (candidate == nullptr)
    {
        reason += "behavior candidate is NULL";
        return false;
    }
    if (candidate->hasParentBehaviorLocked())
    {
        reason += "behavior candidate belongs to a parent behavior that is locked";
        return false;
    }
    if (hasNextBehaviorCandidate(candidate))
    {
        reason += "behavior candidate is already registered as a next behavior candidate";
        return false;
    }
    reason.clear();
    return true;
}

bool AbstractBehavior::addNextBehaviorCandidate(AbstractBehavior* candidate)
{
    OrvString reason;
    if (!canAddNextBehaviorCandidate(candidate, reason))
    {
        logRefusal(reason);
        return false;
    }
    _nextBehaviorCandidates.push_back(candidate);
    return true;
}

bool AbstractBehavior::removeNextBehaviorCandidate(AbstractBehavior* candidate)
{
    OrvString reason("Can not remove next behavior candidate from current behavior : ");
    uint32_t id = _nextBehaviorInvalidId;
    if (hasParentBehaviorLocked())
    {
        reason += "current behavior belongs to a parent behavior that is locked";
    }
    else if (candidate == nullptr)
    {
        reason += "behavior candidate is NULL";
    }
    else if (candidate->hasParentBehaviorLocked())
    {
        reason += "behavior candidate belongs to a parent behavior that is locked";
    }
    else if ((id = retrieveNextBehaviorCandidateId(candidate)) == _nextBehaviorInvalidId)
    {
        reason += "behavior candidate is not registered as a next behavior candidate";
    }
    if (id == _nextBehaviorInvalidId)
    {
        logRefusal(reason);
        return false;
    }
    _nextBehaviorCandidates.erase(_nextBehaviorCandidates.begin() + id);
    return true;
}

bool AbstractBehavior::isTimeConsuming() const
{
    return true;
}

void AbstractBehavior::setBehaviorGraph(BehaviorGraph* graph)
{
    _behaviorGraph = graph;
}

void AbstractBehavior::setStartingCondition(const BoolCallBackPointer& condition)
{
    _startingCondition = condition;
    if (_behaviorGraph != nullptr)
    {
        recursiveSetDataOnTriggers(_startingCondition);
    }
}

void AbstractBehavior::setStoppingCondition(const BoolCallBackPointer& condition)
{
    _stoppingCondition = condition;
    if (_behaviorGraph != nullptr)
    {
        recursiveSetDataOnTriggers(_stoppingCondition);
    }
}

void AbstractBehavior::addInitialStateCallBack(const SmartPointer<IVoidCallBack>& callBack)
{
    _initialStateCallBacks.push_back(callBack);
}

void AbstractBehavior::removeInitialStateCallBack(const SmartPointer<IVoidCallBack>& callBack)
{
    removeFirst(_initialStateCallBacks, callBack);
}

void AbstractBehavior::addFinalStateCallBack(const SmartPointer<IVoidCallBack>& callBack)
{
    _finalStateCallBacks.push_back(callBack);
}

void AbstractBehavior::removeFinalStateCallBack(const SmartPointer<IVoidCallBack>& callBack)
{
    removeFirst(_finalStateCallBacks, callBack);
}

void AbstractBehavior::allocate(int capacity)
{
    setBehaviorStatusDataArrayCapacity(capacity);
    doAllocate(capacity);
    bindConditionTriggers();
}

void AbstractBehavior::init()
{
    if (AbstractBehaviorContainer* container = dynamic_cast<AbstractBehaviorContainer*>(this))
    {
        // A child container's nearest composite is this node when it is one, else this container's own.
        CompositeBehavior* composite = dynamic_cast<CompositeBehavior*>(this);
        if (composite == nullptr)
        {
            composite = container->getParentComposite();
        }
        for (SmartPointer<AbstractBehavior>& child : container->touchChildrenBehaviors())
        {
            if (AbstractBehaviorContainer* childContainer = dynamic_cast<AbstractBehaviorContainer*>(child.getImpl()))
            {
                childContainer->setParentComposite(composite);
            }
        }
    }
    _initialized = doInit();
    if (!_initialized)
    {
        orvLogCore(LogSeverity::LOG_INFO, "Unable to initialize the behavior.");
    }
}

void AbstractBehavior::addEntity(int entity)
{
    if (entity < 0)
    {
        refuseEntity(entity, "add");
        return;
    }
    const size_t count = static_cast<size_t>(entity) + 1;
    if (count > _statusData.capacity())
    {
        _statusData.set_capacity(count > _statusData.capacity() * 2 + 8 ? count : _statusData.capacity() * 2 + 8);
    }
    _statusData.resize(count);
    bindConditionTriggers();
    doAddEntity(entity);
}

void AbstractBehavior::init(int entity)
{
    if (!hasRow(entity))
    {
        refuseEntity(entity, "initialize");
        return;
    }
    BehaviorStatusData& row = _statusData[entity];
    row._nextBehaviorSelectedIdPerInstance = _nextBehaviorSelectedId;
    doInit(entity);
    if (_requestStartAtInitialization && _statusData[entity]._runStatus == RunStatus::IDLE)
    {
        orvAssertMsg(_parentBehavior == NULL, "Start must not be requested on a behavior which is not top level");
        requestStart(entity);
    }
}

void AbstractBehavior::update(Time dt, int entity)
{
    if (!hasRow(entity))
    {
        refuseEntity(entity, "update");
        return;
    }
    // The row is read again after each hook: a hook may request a start or a stop of this very row.
    BehaviorStatusData* row = &_statusData[entity];
    if (row->_runStatus == RunStatus::STARTING)
    {
        if (_startingCondition.getImpl() == nullptr || _startingCondition->call(entity))
        {
            row->_runStatus = RunStatus::RUNNING;
            row->_time = 0.0;
            doStart(entity);
            callEach(_initialStateCallBacks, entity);
            row = &_statusData[entity];
        }
        else
        {
            row->_time += dt;
        }
    }
    Time step = dt;
    if (row->_runStatus == RunStatus::RUNNING)
    {
        row->_time += dt;
        doUpdate(dt, entity);
        if (_stoppingCondition.getImpl() != nullptr && _stoppingCondition->call(entity))
        {
            requestStop(entity);
        }
        row = &_statusData[entity];
        step = 0.0;
    }
    if (row->_runStatus == RunStatus::STOPPING)
    {
        row->_time += step;
        const ResultStatus::Value result = doStop(step, entity);
        row = &_statusData[entity];
        row->_resultStatus = result;
        if (result != ResultStatus::UNKNOWN)
        {
            row->_runStatus = RunStatus::IDLE;
            row->_time = 0.0;
            callEach(_finalStateCallBacks, entity);
        }
    }
}

void AbstractBehavior::finish(int entity)
{
    if (!hasRow(entity))
    {
        refuseEntity(entity, "finish");
        return;
    }
    if (_statusData[entity]._runStatus != RunStatus::IDLE)
    {
        requestStop(entity);
        if (_statusData[entity]._runStatus == RunStatus::STOPPING)
        {
            // Forced: whatever the stop answers, the row goes back to its defaults below.
            doStop(0.0, entity);
        }
    }
    doFinish(entity);
    BehaviorStatusData* row = &_statusData[entity];
    row->~BehaviorStatusData();
    new (row) BehaviorStatusData();
}

void AbstractBehavior::finish()
{
    doFinish();
    _initialized = false;
    bindConditionTriggers();
}

void AbstractBehavior::deallocate()
{
    _statusData.clear();
    doDeallocate();
    _statusData.set_capacity(0);
}

void AbstractBehavior::requestStart(int entity)
{
    if (!hasRow(entity))
    {
        refuseEntity(entity, "start");
        return;
    }
    BehaviorStatusData& row = _statusData[entity];
    if (row._runStatus != RunStatus::IDLE)
    {
        return;
    }
    row._runStatus = RunStatus::STARTING;
    row._resultStatus = ResultStatus::UNKNOWN;
    row._time = 0.0;
    onRequestStart(entity);
}

void AbstractBehavior::requestStop(int entity)
{
    if (!hasRow(entity))
    {
        refuseEntity(entity, "stop");
        return;
    }
    BehaviorStatusData& row = _statusData[entity];
    if (row._runStatus == RunStatus::STARTING)
    {
        // A run that never began counts as a success, and no hook hears of it.
        row._runStatus = RunStatus::IDLE;
        row._resultStatus = ResultStatus::SUCCESS;
        row._time = 0.0;
        return;
    }
    if (row._runStatus == RunStatus::RUNNING)
    {
        row._runStatus = RunStatus::STOPPING;
        row._time = 0.0;
        onRequestStop(entity);
    }
}

void AbstractBehavior::repairLoaded(BehaviorGraph* graph, int slotCount)
{
    _behaviorGraph = graph;
    bindConditionTriggers();
    if (_parentBehavior != nullptr)
    {
        _requestStartAtInitialization = false;
    }
    if (slotCount > 0 && _statusData.size() < static_cast<size_t>(slotCount))
    {
        _statusData.resize(static_cast<size_t>(slotCount));
    }
    // An id is kept only when it names a follower that exists.
    auto repair = [this](uint32_t& id)
    {
        if (id != _nextBehaviorInvalidId &&
            (id >= _nextBehaviorCandidates.size() || _nextBehaviorCandidates[id] == nullptr))
        {
            id = _nextBehaviorInvalidId;
        }
    };
    repair(_nextBehaviorSelectedId);
    for (BehaviorStatusData& row : _statusData)
    {
        repair(row._nextBehaviorSelectedIdPerInstance);
    }
}

void AbstractBehavior::setBehaviorStatusDataArrayCapacity(int value)
{
    orvAssert(value >= 0);
    _statusData.set_capacity(static_cast<size_t>(value));
}

void AbstractBehavior::doAllocate(int)
{
}

void AbstractBehavior::doDeallocate()
{
}

void AbstractBehavior::doAddEntity(int)
{
}

void AbstractBehavior::doInit(int)
{
}

void AbstractBehavior::doFinish(int)
{
}

void AbstractBehavior::onRequestStart(int)
{
}

void AbstractBehavior::onRequestStop(int)
{
}

void AbstractBehavior::recursiveSetDataOnTriggers(const BoolCallBackPointer& callBack)
{
    AbstractTrigger::recursiveSetBehaviorGraphTriggers(callBack, _behaviorGraph);
}

void AbstractBehavior::recursiveResetTriggers(const BoolCallBackPointer& callBack, int entity)
{
    AbstractTrigger::recursiveResetTriggers(callBack, entity);
}

bool AbstractBehavior::canAddSingleNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason,
                                                         const char* className) const
{
    if (!AbstractBehavior::canAddNextBehaviorCandidate(candidate, reason))
    {
        return false;
    }
    if (!_nextBehaviorCandidates.empty())
    {
        reason = "Can not accept next behavior candidate for current behavior : current behavior already has a next "
                 "behavior candidate (";
        reason += className;
        reason += " allows at most 1 next behavior candidate)";
        return false;
    }
    return true;
}

bool AbstractBehavior::addSingleNextBehaviorCandidate(AbstractBehavior* candidate)
{
    if (!AbstractBehavior::addNextBehaviorCandidate(candidate))
    {
        return false;
    }
    _nextBehaviorSelectedId = 0;
    return true;
}

bool AbstractBehavior::removeSingleNextBehaviorCandidate(AbstractBehavior* candidate)
{
    if (!AbstractBehavior::removeNextBehaviorCandidate(candidate))
    {
        return false;
    }
    _nextBehaviorSelectedId = _nextBehaviorInvalidId;
    return true;
}

bool AbstractBehavior::setSingleNextBehavior(AbstractBehavior* next)
{
    OrvString reason("Can not explicitely set requested next behavior for current behavior : ");
    if (hasParentBehaviorLocked())
    {
        reason += "current behavior belongs to a parent behavior that is locked";
    }
    else if (next == this)
    {
        reason += "requested next behavior is same as current behavior (forbidden connection)";
    }
    else if (next != nullptr && next->hasParentBehaviorLocked())
    {
        reason += "requested next behavior belongs to a parent behavior that is locked";
    }
    else if (!_nextBehaviorCandidates.empty() && _nextBehaviorCandidates[0] != nullptr &&
             _nextBehaviorCandidates[0]->hasParentBehaviorLocked())
    {
        reason += "next behavior currently set belongs to a parent behavior that is locked";
    }
    else
    {
        if (next == nullptr)
        {
            _nextBehaviorCandidates.clear();
            _nextBehaviorSelectedId = _nextBehaviorInvalidId;
        }
        else
        {
            if (_nextBehaviorCandidates.empty())
            {
                _nextBehaviorCandidates.push_back(next);
            }
            else
            {
                _nextBehaviorCandidates[0] = next;
            }
            _nextBehaviorSelectedId = 0;
        }
        return true;
    }
    logRefusal(reason);
    return false;
}

bool AbstractBehavior::checkSingleNextBehaviorCandidate(const char* line) const
{
    if (_nextBehaviorCandidates.size() <= 1)
    {
        return true;
    }
    orvLogCore(LogSeverity::LOG_ERROR, "Invalid connection for next behavior candidates : " << line);
    return false;
}

void AbstractBehavior::bindConditionTriggers()
{
    recursiveSetDataOnTriggers(_startingCondition);
    recursiveSetDataOnTriggers(_stoppingCondition);
}

void AbstractBehavior::logRefusal(const OrvString& reason)
{
    orvLogCore(LogSeverity::LOG_ERROR, reason.c_str());
}

} // namespace orv
