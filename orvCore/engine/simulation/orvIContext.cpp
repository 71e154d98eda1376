// orvCore/engine/simulation/orvIContext.cpp
#include "engine/simulation/orvIContext.h"

#include "engine/simulation/orvSimulation.h"
#include "system/debug/orvAssert.h"
#include "system/inspection/orvAccessorsAttribute.h"
#include "system/inspection/orvAttribute.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(IContext, "6facc219-6506-48df-a5fd-b7eafeef0de9", "orv::IContext")

void IContext::addAttributes()
{
    addAttribute("lod", &IContext::_lod);
    addAttribute("parentSimulation", &IContext::_simulation);
    addAccessorsAttribute<unsigned int>("initialized", &IContext::getInitializedWord, &IContext::setInitializedWord);
}

IContext::IContext(bool multithread, bool processGroupsFirst)
    : _isInitMultithread(multithread), _isUpdateMultithread(multithread), _processGroupsFirst(processGroupsFirst)
{
}

IContext::~IContext()
{
    orvAssertMsg(!isInitialized(), "A context can only be deleted after being finished.");
}

const char* IContext::getLogName() const
{
    // A host class that declares a descriptor without registering it has none: it is named as a context.
    const RTTI* rtti = getRTTI();
    if (rtti == nullptr)
    {
        rtti = IContext::getClassRTTI();
    }
    return rtti != nullptr ? rtti->getTypeName() : "orv::IContext";
}

int IContext::computeBatchSize(int configuredSize, int count)
{
    return configuredSize < 1 ? count / 100 + 1 : configuredSize;
}

void IContext::enqueueSlices(ProcessingBatchQueue& queue, BatchUpdateMethod method, bool blocking, int count,
                             int batchSize, Time dt)
{
    int first = 0;
    int last = (batchSize < count ? batchSize : count) - 1;
    while (first < count)
    {
        enqueueBatch(queue, method, this, blocking, first, last, dt);
        first += batchSize;
        last = (last + batchSize < count - 1) ? last + batchSize : count - 1;
    }
}

void IContext::enqueueTypesInit(ProcessingBatchQueue& queue, BatchUpdateMethod method, int typeCount)
{
    // One type runs alone; several run in parallel, closed by an empty blocking batch.
    const bool blocking = typeCount < 2;
    for (int typeId = 0; typeId < typeCount; ++typeId)
    {
        enqueueBatch(queue, method, this, blocking, typeId, typeId, 0.0);
    }
    if (!blocking)
    {
        Simulation::enqueueBlockingBatch(queue);
    }
}

void IContext::enqueueInit(ProcessingBatchQueue& queue, int entityTypeCount, int groupEntityTypeCount)
{
    enqueueBatch(queue, &IContext::initBatch, this, true, 0, 0, 0.0);
    if (_processGroupsFirst)
    {
        enqueueGroupEntityTypesInit(queue, groupEntityTypeCount);
        enqueueEntityTypesInit(queue, entityTypeCount);
    }
    else
    {
        enqueueEntityTypesInit(queue, entityTypeCount);
        enqueueGroupEntityTypesInit(queue, groupEntityTypeCount);
    }
}

void IContext::enqueueEntityTypesInit(ProcessingBatchQueue& queue, int entityTypeCount)
{
    if (registeredOnInitEntityType())
    {
        enqueueTypesInit(queue, &IContext::initEntityTypeBatch, entityTypeCount);
    }
}

void IContext::enqueueGroupEntityTypesInit(ProcessingBatchQueue& queue, int groupEntityTypeCount)
{
    if (registeredOnInitGroupEntityType())
    {
        enqueueTypesInit(queue, &IContext::initGroupEntityTypeBatch, groupEntityTypeCount);
    }
}

void IContext::enqueueComponentsInit(ProcessingBatchQueue& queue, int entityCount, int groupCount)
{
    const int entityBatchSize = computeBatchSize(_entityBatchSize, entityCount);
    const int groupBatchSize = computeBatchSize(_groupBatchSize, groupCount);
    if (_processGroupsFirst)
    {
        enqueueGroupComponentsInit(queue, groupCount, groupBatchSize);
        enqueueEntityComponentsInit(queue, entityCount, entityBatchSize);
    }
    else
    {
        enqueueEntityComponentsInit(queue, entityCount, entityBatchSize);
        enqueueGroupComponentsInit(queue, groupCount, groupBatchSize);
    }
}

void IContext::enqueueEntityComponentsInit(ProcessingBatchQueue& queue, int entityCount, int batchSize)
{
    if (!registeredOnInitEntityComponents() || entityCount == 0)
    {
        return;
    }
    enqueueSlices(queue, &IContext::initEntityComponentsBatch, !_isInitMultithread, entityCount, batchSize, 0.0);
    Simulation::enqueueBlockingBatch(queue);
}

void IContext::enqueueGroupComponentsInit(ProcessingBatchQueue& queue, int groupCount, int batchSize)
{
    if (!registeredOnInitGroupComponents() || groupCount == 0)
    {
        return;
    }
    enqueueSlices(queue, &IContext::initGroupComponentsBatch, !_isInitMultithread, groupCount, batchSize, 0.0);
    Simulation::enqueueBlockingBatch(queue);
}

void IContext::enqueueUpdate(ProcessingBatchQueue& queue, Time dt, int entityCount, int groupCount)
{
    enqueueBatch(queue, &IContext::preUpdateBatch, this, true, 0, 0, dt);
    const int entityBatchSize = computeBatchSize(_entityBatchSize, entityCount);
    const int groupBatchSize = computeBatchSize(_groupBatchSize, groupCount);
    // The empty blocking batch keeps the two kinds of slices apart, whatever the counts.
    if (_processGroupsFirst)
    {
        enqueueGroupComponentsUpdate(queue, dt, groupCount, groupBatchSize);
        Simulation::enqueueBlockingBatch(queue);
        enqueueEntityComponentsUpdate(queue, dt, entityCount, entityBatchSize);
    }
    else
    {
        enqueueEntityComponentsUpdate(queue, dt, entityCount, entityBatchSize);
        Simulation::enqueueBlockingBatch(queue);
        enqueueGroupComponentsUpdate(queue, dt, groupCount, groupBatchSize);
    }
    enqueueBatch(queue, &IContext::postUpdateBatch, this, true, 0, 0, dt);
}

void IContext::enqueueEntityComponentsUpdate(ProcessingBatchQueue& queue, Time dt, int entityCount, int batchSize)
{
    if (!registeredOnUpdateEntityComponents() || entityCount == 0)
    {
        return;
    }
    enqueueSlices(queue, &IContext::updateEntityComponentsBatch, !_isUpdateMultithread, entityCount, batchSize, dt);
}

void IContext::enqueueGroupComponentsUpdate(ProcessingBatchQueue& queue, Time dt, int groupCount, int batchSize)
{
    if (!registeredOnUpdateGroupComponents() || groupCount == 0)
    {
        return;
    }
    enqueueSlices(queue, &IContext::updateGroupComponentsBatch, !_isUpdateMultithread, groupCount, batchSize, dt);
}

void IContext::doPostUpdate(Time)
{
}

void IContext::onCreateEntityType(int)
{
}
void IContext::onInitEntityType(int)
{
}
void IContext::onInitGroupEntityType(int)
{
}
void IContext::onCreateEntityComponent(int, EntityHandle, int)
{
}
void IContext::onInitEntityComponents(int, int)
{
}
void IContext::onUpdateEntityComponents(Time, int, int)
{
}
void IContext::onFinishEntityComponents(int, int)
{
}
void IContext::onDestroyEntityComponents(int, int)
{
}
void IContext::onCreateGroupComponent(int, EntityHandle, int)
{
}
void IContext::onInitGroupComponents(int, int)
{
}
void IContext::onUpdateGroupComponents(Time, int, int)
{
}
void IContext::onFinishGroupComponents(int, int)
{
}
void IContext::onDestroyGroupComponents(int, int)
{
}

void IContext::finish()
{
    if (!isInitialized())
    {
        return;
    }
    const int entityCount = _simulation != nullptr ? _simulation->getEntityCount() : 0;
    const int groupCount = _simulation != nullptr ? _simulation->getGroupCount() : 0;
    // Finishing undoes the order of initialisation.
    if (!_processGroupsFirst && registeredOnFinishGroupComponents() && groupCount > 0)
    {
        onFinishGroupComponents(0, groupCount - 1);
    }
    if (registeredOnFinishEntityComponents() && entityCount > 0)
    {
        onFinishEntityComponents(0, entityCount - 1);
    }
    if (_processGroupsFirst && registeredOnFinishGroupComponents() && groupCount > 0)
    {
        onFinishGroupComponents(0, groupCount - 1);
    }
    doFinish();
    setInitialized(false);
    orvLogCore(LogSeverity::LOG_INFO, getLogName() << " finished");
}

void IContext::initBatch(Time, void* userData, int, int)
{
    IContext* context = static_cast<IContext*>(userData);
    if (context->isInitialized())
    {
        return;
    }
    context->setContextType();
    context->doInit();
    context->setInitialized(true);
    orvLogCore(LogSeverity::LOG_INFO, context->getLogName() << " initialized");
}

void IContext::initEntityTypeBatch(Time, void* userData, int first, int)
{
    static_cast<IContext*>(userData)->onInitEntityType(first);
}

void IContext::initGroupEntityTypeBatch(Time, void* userData, int first, int)
{
    static_cast<IContext*>(userData)->onInitGroupEntityType(first);
}

void IContext::initEntityComponentsBatch(Time, void* userData, int first, int last)
{
    static_cast<IContext*>(userData)->onInitEntityComponents(first, last);
}

void IContext::initGroupComponentsBatch(Time, void* userData, int first, int last)
{
    static_cast<IContext*>(userData)->onInitGroupComponents(first, last);
}

void IContext::preUpdateBatch(Time dt, void* userData, int, int)
{
    static_cast<IContext*>(userData)->doUpdate(dt);
}

void IContext::postUpdateBatch(Time dt, void* userData, int, int)
{
    static_cast<IContext*>(userData)->doPostUpdate(dt);
}

void IContext::updateEntityComponentsBatch(Time dt, void* userData, int first, int last)
{
    static_cast<IContext*>(userData)->onUpdateEntityComponents(dt, first, last);
}

void IContext::updateGroupComponentsBatch(Time dt, void* userData, int first, int last)
{
    static_cast<IContext*>(userData)->onUpdateGroupComponents(dt, first, last);
}

} // namespace orv
