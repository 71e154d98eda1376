// orvCore/engine/simulation/orvIContext.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include "engine/simulation/orvEntityHandle.h"
#include "engine/simulation/orvProcessingBatch.h"
#include "system/thread/orvAtomic.h"

namespace orv
{

class Simulation;

/// A processing stage of a simulation, with per-entity and per-group state. The base class turns the stage's work
/// into batches, slices it and orders groups against entities; a derived class says which events it hears of
/// (registeredOn...) and handles them (on...). Contexts run in type order, each frame.
/// Owned by its simulation once added. "Host thread" below is the one thread that drives the SimulationsProcessor
/// and calls the Simulation; a slice runs on a worker or on that thread, in parallel with the other slices.
class IContext
{
    ORV_DECLARE_ABSTRACT_RTTI(IContext)

public:
    /// The run order of contexts; also what a context is.
    struct ContextType
    {
        /// In run order; USER_BEGIN to USER_END is the host's range, END the type of a context not yet added.
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
    /// Fatal while initialised: "A context can only be deleted after being finished."
    virtual ~IContext();

    /// Lays down initBatch and the per-type initialisation batches. Host thread, from Simulation::enqueueInit.
    virtual void enqueueInit(ProcessingBatchQueue& queue, int entityTypeCount, int groupEntityTypeCount);
    /// Lays down the component initialisation slices of every entity and group. Host thread, from
    /// Simulation::enqueueInit, after every context's enqueueInit.
    virtual void enqueueComponentsInit(ProcessingBatchQueue& queue, int entityCount, int groupCount);
    /// Lays down one frame: pre-update, the slices of one kind, an empty blocking batch, the other kind, post-update.
    /// Host thread, from Simulation::enqueueUpdate, unless the context is paused.
    virtual void enqueueUpdate(ProcessingBatchQueue& queue, Time dt, int entityCount, int groupCount);

    /// Sets the type through assignContextType. Host thread: on adding, and again in initBatch.
    virtual void setContextType() = 0;
    /// Builds the per-entity storage, sized for the simulation's maximum counts. Host thread, when the context is
    /// added to a simulation (getSimulation() is already set) or made by a snapshot import.
    virtual void allocateComponentsArrays() = 0;
    /// Frees that storage. Host thread, when the context is removed or dropped by a snapshot import.
    virtual void deallocateComponentsArrays() = 0;
    /// Once, at simulation initialisation, ahead of this context's type and component initialisation. Host thread,
    /// alone.
    virtual void doInit() = 0;
    /// Each frame before the context's slices. Host thread, alone: may write any state of the context.
    virtual void doUpdate(Time dt) = 0;
    /// Each frame after the context's slices. Host thread, alone. Does nothing unless overridden.
    virtual void doPostUpdate(Time dt);
    /// Once, at simulation finish, after the finish callbacks. Host thread, alone.
    virtual void doFinish() = 0;

    // Each predicate is asked on the host thread, whenever the base class lays down or makes the call it guards;
    // it must give the same answer every time. The base class answers false and its callbacks do nothing.

    /// True to hear onCreateEntityType.
    virtual bool registeredOnCreateEntityType() const { return false; }
    /// A type was created: Simulation::createEntityType, createGroupEntityType (with the group type's id), or
    /// addContextLate once per existing entity type. Host thread, between frames: may write any state of the context.
    virtual void onCreateEntityType(int typeId);
    /// True to hear onInitEntityType.
    virtual bool registeredOnInitEntityType() const { return false; }
    /// Initialisation of one entity type, after this context's doInit. With one type, a blocking batch on the host
    /// thread; with several, one slice per type in parallel: write only that type's state.
    virtual void onInitEntityType(int typeId);
    /// True to hear onInitGroupEntityType.
    virtual bool registeredOnInitGroupEntityType() const { return false; }
    /// Initialisation of one group type, as onInitEntityType: blocking for one type, else in parallel, one per slice.
    virtual void onInitGroupEntityType(int typeId);
    /// True to hear onCreateEntityComponent.
    virtual bool registeredOnCreateEntityComponent() const { return false; }
    /// An entity was made at denseIndex: Simulation::createEntity, or addContextLate once per existing entity.
    /// Host thread, between frames, even before the context is initialised: sets up the component at denseIndex.
    virtual void onCreateEntityComponent(int denseIndex, EntityHandle handle, int typeId);
    /// True to hear onInitEntityComponents.
    virtual bool registeredOnInitEntityComponents() const { return false; }
    /// Initialises the components of the inclusive dense range. At simulation initialisation in slices: in parallel
    /// when the context is multithreaded, else blocking on the host thread. For one entity (first == last) through
    /// Simulation::initEntity on the host thread, or SimulationsProcessor::initEntities on a worker whatever the
    /// setting; only once the context is initialised. Writes only the components of its range.
    virtual void onInitEntityComponents(int first, int last);
    /// True to hear onUpdateEntityComponents.
    virtual bool registeredOnUpdateEntityComponents() const { return false; }
    /// Each frame, unless paused, over the inclusive dense range: a slice in parallel when the context is
    /// multithreaded, else blocking on the host thread. Writes only its range's components and entities; no lock,
    /// allocation or log.
    virtual void onUpdateEntityComponents(Time dt, int first, int last);
    /// True to hear onFinishEntityComponents.
    virtual bool registeredOnFinishEntityComponents() const { return false; }
    /// Undoes the initialisation of the inclusive dense range: every entity in finish(), one in
    /// Simulation::destroyEntity (initialised contexts only, in reverse run order). Host thread, alone.
    virtual void onFinishEntityComponents(int first, int last);
    /// True to hear onDestroyEntityComponents.
    virtual bool registeredOnDestroyEntityComponents() const { return false; }
    /// An entity is going: Simulation::destroyEntity, after every finish callback, in reverse run order, initialised
    /// contexts only. Host thread, alone. The manager then moves its last entity to this dense index: a context
    /// that keeps components by dense index moves its last one likewise.
    virtual void onDestroyEntityComponents(int first, int last);
    /// True to hear onCreateGroupComponent.
    virtual bool registeredOnCreateGroupComponent() const { return false; }
    /// A group was made at denseIndex; host thread. Not called yet: the groups manager makes no group.
    virtual void onCreateGroupComponent(int denseIndex, EntityHandle handle, int typeId);
    /// True to hear onInitGroupComponents.
    virtual bool registeredOnInitGroupComponents() const { return false; }
    /// As onInitEntityComponents, for groups. Not called yet: a simulation has no group.
    virtual void onInitGroupComponents(int first, int last);
    /// True to hear onUpdateGroupComponents.
    virtual bool registeredOnUpdateGroupComponents() const { return false; }
    /// As onUpdateEntityComponents, for groups, in the other half of the frame. Not called yet: no group exists.
    virtual void onUpdateGroupComponents(Time dt, int first, int last);
    /// True to hear onFinishGroupComponents.
    virtual bool registeredOnFinishGroupComponents() const { return false; }
    /// As onFinishEntityComponents, for groups, in finish(). Not called yet: no group exists.
    virtual void onFinishGroupComponents(int first, int last);
    /// True to hear onDestroyGroupComponents.
    virtual bool registeredOnDestroyGroupComponents() const { return false; }
    /// As onDestroyEntityComponents, for groups. Not called yet: no group can be destroyed.
    virtual void onDestroyGroupComponents(int first, int last);

    /// The initialised flag as a word, 0 or 1: the two sides of the "initialized" attribute.
    unsigned int getInitializedWord() const { return isInitialized() ? 1u : 0u; }
    void setInitializedWord(unsigned int initialized) { setInitialized(initialized != 0); }

    /// Undoes the initialisation: finish callbacks over every group and entity, then doFinish. Nothing if not
    /// initialised. Host thread, from Simulation::finishBatch, in reverse run order.
    void finish();

    /// Pausing skips the whole context in the frames laid down after it; initialisation, finish and entity
    /// callbacks go on. Any thread; takes effect at the next frame.
    void pause() { setPaused(true); }
    void unpause() { setPaused(false); }
    void setPaused(bool paused) { atomicStoreReleaseBool(_paused, paused); }
    /// True while paused. Read by any thread.
    bool isPaused() const { return atomicLoadAcquireBool(_paused); }
    /// Set by initBatch, cleared by finish; a snapshot import sets it from the file.
    void setInitialized(bool initialized) { atomicStoreReleaseBool(_initialized, initialized); }
    /// True between initBatch and finish. Read by any thread.
    bool isInitialized() const { return atomicLoadAcquireBool(_initialized); }

    /// The type set by setContextType; END before the context is added.
    ContextType::Value getContextType() const { return _contextType; }
    /// The simulation that holds the context, or null. Not owned.
    Simulation* getSimulation() const { return _simulation; }
    /// Set by Simulation::addContext and nulled by removeContext; hosts do not call it.
    void setSimulation(Simulation* simulation) { _simulation = simulation; }
    /// Level of detail, the "lod" attribute: kept and saved, read by no part of the library.
    int getLod() const { return _lod; }
    void setLod(int lod) { _lod = lod; }
    /// The constructor's choices: initialisation slices and update slices may run in parallel; groups go first.
    bool isInitMultithread() const { return _isInitMultithread; }
    bool isUpdateMultithread() const { return _isUpdateMultithread; }
    bool getProcessGroupsFirst() const { return _processGroupsFirst; }
    /// Entities per slice; below 1 means about a hundred slices whatever the count. Host thread, between frames.
    int getEntityBatchSize() const { return _entityBatchSize; }
    void setEntityBatchSize(int size) { _entityBatchSize = size; }
    /// Groups per slice; below 1 means automatic. Host thread, between frames.
    int getGroupBatchSize() const { return _groupBatchSize; }
    void setGroupBatchSize(int size) { _groupBatchSize = size; }

    /// Lays down the per-type initialisation of the entity types, if registered: blocking for one type, else in
    /// parallel followed by an empty blocking batch.
    void enqueueEntityTypesInit(ProcessingBatchQueue& queue, int entityTypeCount);
    /// Lays down the per-type initialisation of the group types, in the same way.
    void enqueueGroupEntityTypesInit(ProcessingBatchQueue& queue, int groupEntityTypeCount);
    /// Lay down the initialisation slices of one kind, if registered and the count is not 0, then an empty
    /// blocking batch.
    void enqueueEntityComponentsInit(ProcessingBatchQueue& queue, int entityCount, int batchSize);
    void enqueueGroupComponentsInit(ProcessingBatchQueue& queue, int groupCount, int batchSize);
    /// Lay down the update slices of one kind, if registered and the count is not 0; the next batch is blocking.
    void enqueueEntityComponentsUpdate(ProcessingBatchQueue& queue, Time dt, int entityCount, int batchSize);
    void enqueueGroupComponentsUpdate(ProcessingBatchQueue& queue, Time dt, int groupCount, int batchSize);

    /// The slice size for a count: the configured one, or count / 100 + 1 when it is below 1.
    static int computeBatchSize(int configuredSize, int count);

    // The batch functions; userData is the context, first and last the batch's indices.

    /// Blocking: unless initialised, setContextType, doInit, mark initialised and log "<class> initialized".
    static void initBatch(Time dt, void* userData, int first, int last);
    /// onInitEntityType(first).
    static void initEntityTypeBatch(Time dt, void* userData, int first, int last);
    /// onInitGroupEntityType(first).
    static void initGroupEntityTypeBatch(Time dt, void* userData, int first, int last);
    /// onInitEntityComponents(first, last).
    static void initEntityComponentsBatch(Time dt, void* userData, int first, int last);
    /// onInitGroupComponents(first, last).
    static void initGroupComponentsBatch(Time dt, void* userData, int first, int last);
    /// Blocking: doUpdate(dt).
    static void preUpdateBatch(Time dt, void* userData, int first, int last);
    /// Blocking: doPostUpdate(dt).
    static void postUpdateBatch(Time dt, void* userData, int first, int last);
    /// onUpdateEntityComponents(dt, first, last).
    static void updateEntityComponentsBatch(Time dt, void* userData, int first, int last);
    /// onUpdateGroupComponents(dt, first, last).
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
