// orvCore/engine/simulation/orvIContext.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/simulation/orvEntityHandle.h"
#include "engine/simulation/orvProcessingBatch.h"
#include "system/thread/orvAtomic.h"

namespace orv
{

class Simulation;

/// A processing stage of a simulation, with per-entity and per-group state. The base class turns the stage's work
/// into batches, slices it and orders groups against entities; a derived class says which events it hears of
/// (registeredOn...) and handles them (on...). Contexts run in type order, each frame.
class IContext
{
    ORV_DECLARE_ABSTRACT_RTTI(IContext)

public:
    /// The run order of contexts; also what a context is.
    struct ContextType
    {
        enum Value
        {
            USER_BEGIN = 0,
            PERCEPTION,
            NAVIGATION,
            ANIMATION,
            PHYSICS,
            UVPIN,
            USER_END,
            REPLAY,
            VISUALIZATION,
            BEHAVIOR,
            KNOWLEDGE_BASE,
            END
        };
    };

    /// multithread: the component slices may run in parallel; processGroupsFirst: groups before entities.
    IContext(bool multithread, bool processGroupsFirst);
    /// Fatal while initialised.
    virtual ~IContext();

    /// Lays down initBatch and the per-type initialisation batches.
    virtual void enqueueInit(ProcessingBatchQueue& queue, int entityTypeCount, int groupEntityTypeCount);
    /// Lays down the component initialisation slices of every entity and group.
    virtual void enqueueComponentsInit(ProcessingBatchQueue& queue, int entityCount, int groupCount);
    /// Lays down one frame: pre-update, the slices of one kind, an empty blocking batch, the other kind, post-update.
    virtual void enqueueUpdate(ProcessingBatchQueue& queue, Time dt, int entityCount, int groupCount);

    /// Sets _contextType.
    virtual void setContextType() = 0;
    /// Builds the per-entity storage; called when the context is added to a simulation.
    virtual void allocateComponentsArrays() = 0;
    /// Frees it; called when the context is removed.
    virtual void deallocateComponentsArrays() = 0;
    /// Once, at simulation initialisation, alone on the consuming thread.
    virtual void doInit() = 0;
    /// Each frame before the slices, alone.
    virtual void doUpdate(Time dt) = 0;
    /// Each frame after the slices, alone.
    virtual void doPostUpdate(Time dt);
    /// Once, at simulation finish, alone.
    virtual void doFinish() = 0;

    virtual bool registeredOnCreateEntityType() const { return false; }
    virtual void onCreateEntityType(int typeId);
    virtual bool registeredOnInitEntityType() const { return false; }
    virtual void onInitEntityType(int typeId);
    virtual bool registeredOnInitGroupEntityType() const { return false; }
    virtual void onInitGroupEntityType(int typeId);
    virtual bool registeredOnCreateEntityComponent() const { return false; }
    virtual void onCreateEntityComponent(int denseIndex, EntityHandle handle, int typeId);
    virtual bool registeredOnInitEntityComponents() const { return false; }
    /// Inclusive range of dense indices. May run on a worker: write only the elements of the range.
    virtual void onInitEntityComponents(int first, int last);
    virtual bool registeredOnUpdateEntityComponents() const { return false; }
    /// Inclusive range of dense indices. May run on a worker: write only the elements of the range.
    virtual void onUpdateEntityComponents(Time dt, int first, int last);
    virtual bool registeredOnFinishEntityComponents() const { return false; }
    virtual void onFinishEntityComponents(int first, int last);
    virtual bool registeredOnDestroyEntityComponents() const { return false; }
    virtual void onDestroyEntityComponents(int first, int last);
    virtual bool registeredOnCreateGroupComponent() const { return false; }
    virtual void onCreateGroupComponent(int denseIndex, EntityHandle handle, int typeId);
    virtual bool registeredOnInitGroupComponents() const { return false; }
    virtual void onInitGroupComponents(int first, int last);
    virtual bool registeredOnUpdateGroupComponents() const { return false; }
    virtual void onUpdateGroupComponents(Time dt, int first, int last);
    virtual bool registeredOnFinishGroupComponents() const { return false; }
    virtual void onFinishGroupComponents(int first, int last);
    virtual bool registeredOnDestroyGroupComponents() const { return false; }
    virtual void onDestroyGroupComponents(int first, int last);

    /// The initialised flag as a word, 0 or 1, for the class's attribute.
    unsigned int getInitializedWord() const { return isInitialized() ? 1u : 0u; }
    void setInitializedWord(unsigned int initialized) { setInitialized(initialized != 0); }

    /// Undoes the initialisation: finish callbacks over every group and entity, then doFinish.
    void finish();

    void pause() { setPaused(true); }
    void unpause() { setPaused(false); }
    void setPaused(bool paused) { atomicStoreReleaseBool(_paused, paused); }
    /// A paused context lays down no batch in a frame. Read by any thread.
    bool isPaused() const { return atomicLoadAcquireBool(_paused); }
    void setInitialized(bool initialized) { atomicStoreReleaseBool(_initialized, initialized); }
    /// Read by any thread.
    bool isInitialized() const { return atomicLoadAcquireBool(_initialized); }

    ContextType::Value getContextType() const { return _contextType; }
    Simulation* getSimulation() const { return _simulation; }
    void setSimulation(Simulation* simulation) { _simulation = simulation; }
    int getLod() const { return _lod; }
    void setLod(int lod) { _lod = lod; }
    bool isInitMultithread() const { return _isInitMultithread; }
    bool isUpdateMultithread() const { return _isUpdateMultithread; }
    bool getProcessGroupsFirst() const { return _processGroupsFirst; }
    /// Entities per slice; below 1 means about a hundred slices whatever the count.
    int getEntityBatchSize() const { return _entityBatchSize; }
    void setEntityBatchSize(int size) { _entityBatchSize = size; }
    /// Groups per slice; below 1 means automatic.
    int getGroupBatchSize() const { return _groupBatchSize; }
    void setGroupBatchSize(int size) { _groupBatchSize = size; }

    /// Lays down the per-type initialisation of the entity types.
    void enqueueEntityTypesInit(ProcessingBatchQueue& queue, int entityTypeCount);
    /// Lays down the per-type initialisation of the group types.
    void enqueueGroupEntityTypesInit(ProcessingBatchQueue& queue, int groupEntityTypeCount);
    void enqueueEntityComponentsInit(ProcessingBatchQueue& queue, int entityCount, int batchSize);
    void enqueueGroupComponentsInit(ProcessingBatchQueue& queue, int groupCount, int batchSize);
    void enqueueEntityComponentsUpdate(ProcessingBatchQueue& queue, Time dt, int entityCount, int batchSize);
    void enqueueGroupComponentsUpdate(ProcessingBatchQueue& queue, Time dt, int groupCount, int batchSize);

    /// The slice size for a count: the configured one, or count / 100 + 1 when it is below 1.
    static int computeBatchSize(int configuredSize, int count);

    static void initBatch(Time dt, void* userData, int first, int last);
    static void initEntityTypeBatch(Time dt, void* userData, int first, int last);
    static void initGroupEntityTypeBatch(Time dt, void* userData, int first, int last);
    static void initEntityComponentsBatch(Time dt, void* userData, int first, int last);
    static void initGroupComponentsBatch(Time dt, void* userData, int first, int last);
    static void preUpdateBatch(Time dt, void* userData, int first, int last);
    static void postUpdateBatch(Time dt, void* userData, int first, int last);
    static void updateEntityComponentsBatch(Time dt, void* userData, int first, int last);
    static void updateGroupComponentsBatch(Time dt, void* userData, int first, int last);

protected:
    /// For setContextType.
    void assignContextType(ContextType::Value type) { _contextType = type; }

private:
    void enqueueSlices(ProcessingBatchQueue& queue, BatchUpdateMethod method, bool blocking, int count, int batchSize,
                       Time dt);
    void enqueueTypesInit(ProcessingBatchQueue& queue, BatchUpdateMethod method, int typeCount);
    const char* getLogName() const;

    int _lod = 0;
    ContextType::Value _contextType = ContextType::END;
    Simulation* _simulation = nullptr;
    bool _isInitMultithread = true;
    bool _isUpdateMultithread = true;
    int _entityBatchSize = -1;
    int _groupBatchSize = -1;
    atomic32_t _initialized;
    atomic32_t _paused;
    bool _processGroupsFirst = false;
};

} // namespace orv
