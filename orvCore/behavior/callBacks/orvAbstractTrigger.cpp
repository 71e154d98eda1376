// orvCore/behavior/callBacks/orvAbstractTrigger.cpp
#include "behavior/callBacks/orvAbstractTrigger.h"

#include "behavior/callBacks/orvAbstractOperatorCallBack.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvAbstractEntityType.h"
#include "engine/simulation/orvSimulation.h"
#include "system/debug/orvAssert.h"
#include "system/inspection/orvInspectable.h"

namespace orv
{

namespace
{

// Visits the triggers of a condition tree: operators are walked through their operands, a trigger is visited and
// not entered, anything else is a leaf. An operator has at most two operands.
template <typename Visit>
void forEachTrigger(ITypedCallBack<bool>* callBack, const Visit& visit)
{
    if (callBack == nullptr)
    {
        return;
    }
    if (AbstractTrigger* trigger = dynamic_cast<AbstractTrigger*>(callBack))
    {
        visit(*trigger);
        return;
    }
    if (AbstractOperatorCallBack* operatorCallBack = dynamic_cast<AbstractOperatorCallBack*>(callBack))
    {
        forEachTrigger(operatorCallBack->getOperand(0).getImpl(), visit);
        if (operatorCallBack->getOperandsCount() >= 2)
        {
            forEachTrigger(operatorCallBack->getOperand(1).getImpl(), visit);
        }
    }
}

} // namespace

ORV_IMPLEMENT_ABSTRACT_RTTI(AbstractTrigger, "611f3548-e06a-4788-aaee-8b42899a598c", "orv::AbstractTrigger")

void AbstractTrigger::addAttributes()
{
    _rtti->addBaseClass<ITypedCallBack<bool>>();
    addAccessorsAttribute<BehaviorGraph*>("behaviorGraph", &AbstractTrigger::getBehaviorGraph,
                                          &AbstractTrigger::setBehaviorGraph);
}

AbstractTrigger::AbstractTrigger() = default;

AbstractTrigger::~AbstractTrigger() = default;

bool AbstractTrigger::call(int entity)
{
    const unsigned int frame = getSimulation().getCurrentFrame();
    orvAssertMsg(hasEntity(entity), "entity %d has no entry in the trigger's %d", entity, getUsedCount());
    if (_lastFrame[entity] != frame)
    {
        _lastFrame[entity] = frame;
        _lastValue[entity] = doCall(entity);
    }
    return _lastValue[entity];
}

void AbstractTrigger::setUsedCount(int count)
{
    // A new entity's last frame is one no simulation reaches, so its first call evaluates.
    extendTo(_lastFrame, count, 0xFFFFFFFFu);
    extendTo(_lastValue, count, false);
}

void AbstractTrigger::setBehaviorGraph(BehaviorGraph* graph)
{
    if (graph != _behaviorGraph)
    {
        _behaviorGraph = graph;
        setMaxCount(graph != nullptr ? graph->getMaxEntityCount() : 0);
    }
    if (graph != nullptr)
    {
        // The type's slots, free ones included, are the rows in use; a graph held by no type counts its own.
        const AbstractEntityType* entityType = graph->getEntityType();
        setUsedCount(entityType != nullptr ? entityType->getHandleCount() : graph->getEntitySlotCount());
    }
}

void AbstractTrigger::setMaxCount(int count)
{
    clearTo(_lastFrame, count);
    clearTo(_lastValue, count);
}

void AbstractTrigger::reset(int entity)
{
    orvAssertMsg(hasEntity(entity), "entity %d has no entry in the trigger's %d", entity, getUsedCount());
    // Frame 0 is a real frame: a trigger reset and called in frame 0 gives its stored answer.
    _lastFrame[entity] = 0;
    doReset(entity);
}

void AbstractTrigger::doReset(int)
{
}

const Simulation& AbstractTrigger::getSimulation() const
{
    orvAssertMsg(_behaviorGraph != nullptr, "the trigger is not bound to a behavior graph");
    const AbstractEntityType* entityType = _behaviorGraph->getEntityType();
    orvAssertMsg(entityType != nullptr && entityType->getSimulation() != nullptr,
                 "the trigger's behavior graph belongs to no simulation");
    return *entityType->getSimulation();
}

void AbstractTrigger::recursiveSetUsedCountTriggers(const SmartPointer<ITypedCallBack<bool>>& callBack, int count)
{
    forEachTrigger(callBack.getImpl(), [count](AbstractTrigger& trigger) { trigger.setUsedCount(count); });
}

void AbstractTrigger::recursiveSetMaxCountTriggers(const SmartPointer<ITypedCallBack<bool>>& callBack, int count)
{
    forEachTrigger(callBack.getImpl(), [count](AbstractTrigger& trigger) { trigger.setMaxCount(count); });
}

void AbstractTrigger::recursiveSetBehaviorGraphTriggers(const SmartPointer<ITypedCallBack<bool>>& callBack,
                                                        BehaviorGraph* graph)
{
    forEachTrigger(callBack.getImpl(), [graph](AbstractTrigger& trigger) { trigger.setBehaviorGraph(graph); });
}

void AbstractTrigger::recursiveResetTriggers(const SmartPointer<ITypedCallBack<bool>>& callBack, int entity)
{
    forEachTrigger(callBack.getImpl(), [entity](AbstractTrigger& trigger) { trigger.reset(entity); });
}

} // namespace orv
