// orvCore/behavior/engine/orvBehaviorContext.cpp
#include "behavior/engine/orvBehaviorContext.h"

#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvAbstractEntityType.h"
#include "engine/simulation/orvEntity.h"
#include "engine/simulation/orvGroup.h"
#include "engine/simulation/orvSimulation.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

// The graph of the type of an entity or group, and its slot; null for one that belongs to no type.
BehaviorGraph* graphOf(const Entity* entity, int& slot)
{
    if (entity == nullptr || entity->getEntityType() == nullptr)
    {
        return nullptr;
    }
    slot = entity->getIndexInEntityType();
    return &entity->getEntityType()->touchBehaviorGraph();
}

// True when [first, last] lies in the dense array of count entities; otherwise logs why the hook does nothing.
bool isEntityRange(int first, int last, int count, const char* hook)
{
    if (first >= 0 && first <= last && last < count)
    {
        return true;
    }
    orvLogCore(LogSeverity::LOG_ERROR, "Cannot " << hook << " the behaviors of entities " << first << " to " << last
                                                 << ": the simulation holds " << count << " entities");
    return false;
}

} // namespace

ORV_IMPLEMENT_RTTI(BehaviorContext, "df997442-e330-427c-8a71-217ffc366790", "orv::BehaviorContext")

void BehaviorContext::addAttributes()
{
    _rtti->addBaseClass<IContext>();
}

BehaviorContext::BehaviorContext() : IContext(true, true)
{
}

BehaviorContext::~BehaviorContext() = default;

void BehaviorContext::setContextType()
{
    assignContextType(ContextType::BEHAVIOR);
}

void BehaviorContext::allocateComponentsArrays()
{
}

void BehaviorContext::deallocateComponentsArrays()
{
}

void BehaviorContext::doInit()
{
}

void BehaviorContext::doUpdate(Time)
{
}

void BehaviorContext::doFinish()
{
    Simulation* simulation = getSimulation();
    if (simulation == nullptr)
    {
        return;
    }
    // Groups were initialised first; their graphs finish first too.
    for (int i = 0; i < simulation->getGroupEntityTypeCount(); ++i)
    {
        simulation->getGroupEntityType(i)->touchBehaviorGraph().finish();
    }
    for (int i = 0; i < simulation->getEntityTypeCount(); ++i)
    {
        simulation->getEntityType(i)->touchBehaviorGraph().finish();
    }
}

void BehaviorContext::onInitEntityType(int entityTypeId)
{
    if (Simulation* simulation = getSimulation())
    {
        // The simulation checks the id against its types.
        simulation->getEntityType(entityTypeId)->touchBehaviorGraph().init();
    }
}

void BehaviorContext::onInitGroupEntityType(int groupEntityTypeId)
{
    if (Simulation* simulation = getSimulation())
    {
        simulation->getGroupEntityType(groupEntityTypeId)->touchBehaviorGraph().init();
    }
}

void BehaviorContext::onInitEntityComponents(int first, int last)
{
    Simulation* simulation = getSimulation();
    if (simulation == nullptr || !isEntityRange(first, last, simulation->getEntityCount(), "initialize"))
    {
        return;
    }
    EntitiesManager& manager = simulation->touchEntitiesManager();
    for (int i = first; i <= last; ++i)
    {
        int slot = 0;
        if (BehaviorGraph* graph = graphOf(manager.getEntity(i), slot))
        {
            graph->init(slot);
        }
    }
}

void BehaviorContext::onFinishEntityComponents(int first, int last)
{
    Simulation* simulation = getSimulation();
    if (simulation == nullptr || !isEntityRange(first, last, simulation->getEntityCount(), "finish"))
    {
        return;
    }
    EntitiesManager& manager = simulation->touchEntitiesManager();
    for (int i = first; i <= last; ++i)
    {
        int slot = 0;
        if (BehaviorGraph* graph = graphOf(manager.getEntity(i), slot))
        {
            graph->finish(slot);
        }
    }
}

void BehaviorContext::onInitGroupComponents(int first, int last)
{
    Simulation* simulation = getSimulation();
    if (simulation == nullptr)
    {
        return;
    }
    // The groups array may be empty: only the part of the range that holds groups is walked.
    const GroupsManager& manager = simulation->getGroupsManager();
    const int end = last < manager.getGroupCount() - 1 ? last : manager.getGroupCount() - 1;
    for (int i = first < 0 ? 0 : first; i <= end; ++i)
    {
        int slot = 0;
        if (BehaviorGraph* graph = graphOf(manager.getGroup(i), slot))
        {
            graph->init(slot);
        }
    }
}

void BehaviorContext::onFinishGroupComponents(int first, int last)
{
    Simulation* simulation = getSimulation();
    if (simulation == nullptr)
    {
        return;
    }
    const GroupsManager& manager = simulation->getGroupsManager();
    const int end = last < manager.getGroupCount() - 1 ? last : manager.getGroupCount() - 1;
    for (int i = first < 0 ? 0 : first; i <= end; ++i)
    {
        int slot = 0;
        if (BehaviorGraph* graph = graphOf(manager.getGroup(i), slot))
        {
            graph->finish(slot);
        }
    }
}

void BehaviorContext::enqueueTypeBatches(ProcessingBatchQueue& queue, BatchUpdateMethod method,
                                         AbstractEntityType* type, bool blocking, int batchSize, Time dt)
{
    // Free slots are counted: the batch skips them, so that the ranges do not move when entities go.
    const int count = type->getHandleCount();
    int first = 0;
    int last = (batchSize < count ? batchSize : count) - 1;
    while (first < count)
    {
        enqueueBatch(queue, method, type, blocking, first, last, dt);
        first += batchSize;
        last = last + batchSize < count - 1 ? last + batchSize : count - 1;
    }
}

void BehaviorContext::enqueueAllTypes(ProcessingBatchQueue& queue, BatchUpdateMethod method, bool blocking,
                                      int entityCount, int groupCount, Time dt)
{
    Simulation* simulation = getSimulation();
    const int groupBatchSize = computeBatchSize(getGroupBatchSize(), groupCount);
    const int entityBatchSize = computeBatchSize(getEntityBatchSize(), entityCount);
    const int groupTypeCount = simulation != nullptr ? simulation->getGroupEntityTypeCount() : 0;
    const int entityTypeCount = simulation != nullptr ? simulation->getEntityTypeCount() : 0;
    // Groups always run before entities, whatever getProcessGroupsFirst says: entity behaviours may read what the
    // group behaviours of the same frame wrote.
    for (int i = 0; i < groupTypeCount; ++i)
    {
        enqueueTypeBatches(queue, method, simulation->getGroupEntityType(i), blocking, groupBatchSize, dt);
    }
    Simulation::enqueueBlockingBatch(queue);
    for (int i = 0; i < entityTypeCount; ++i)
    {
        enqueueTypeBatches(queue, method, simulation->getEntityType(i), blocking, entityBatchSize, dt);
    }
}

void BehaviorContext::enqueueComponentsInit(ProcessingBatchQueue& queue, int entityCount, int groupCount)
{
    enqueueAllTypes(queue, &BehaviorContext::initBehaviorGraphForIndex, !isInitMultithread(), entityCount, groupCount,
                    0.0);
    Simulation::enqueueBlockingBatch(queue);
}

void BehaviorContext::enqueueUpdate(ProcessingBatchQueue& queue, Time dt, int entityCount, int groupCount)
{
    enqueueAllTypes(queue, &BehaviorContext::updateBehaviorGraphForIndex, !isUpdateMultithread(), entityCount,
                    groupCount, dt);
    enqueueBatch(queue, &IContext::postUpdateBatch, static_cast<IContext*>(this), true, 0, 0, dt);
}

void BehaviorContext::initBehaviorGraphForIndex(Time, void* userData, int first, int last)
{
    AbstractEntityType* type = static_cast<AbstractEntityType*>(userData);
    BehaviorGraph& graph = type->touchBehaviorGraph();
    // A type's slots never shrink during a run; the bound only keeps a range laid for other slots (before a load)
    // inside the type's arrays.
    const int end = last < type->getHandleCount() ? last : type->getHandleCount() - 1;
    for (int slot = first < 0 ? 0 : first; slot <= end; ++slot)
    {
        if (type->isIndexInUse(slot))
        {
            graph.init(slot);
        }
    }
}

void BehaviorContext::updateBehaviorGraphForIndex(Time dt, void* userData, int first, int last)
{
    AbstractEntityType* type = static_cast<AbstractEntityType*>(userData);
    BehaviorGraph& graph = type->touchBehaviorGraph();
    const int end = last < type->getHandleCount() ? last : type->getHandleCount() - 1;
    for (int slot = first < 0 ? 0 : first; slot <= end; ++slot)
    {
        if (type->isIndexInUse(slot))
        {
            graph.update(dt, slot);
        }
    }
}

} // namespace orv
