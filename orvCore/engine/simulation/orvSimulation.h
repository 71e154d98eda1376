// orvCore/engine/simulation/orvSimulation.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include <cstddef>
#include <cstdint>

#include "engine/ground/orvGroundManager.h"
#include "engine/simulation/orvEntitiesManager.h"
#include "engine/simulation/orvEntityType.h"
#include "engine/simulation/orvGroupEntityType.h"
#include "engine/simulation/orvGroupsManager.h"
#include "engine/simulation/orvIContext.h"
#include "engine/simulation/orvProcessingBatch.h"
#include "engine/simulation/orvSimulationUserEventsList.h"
#include "engine/simulation/orvSnapshotCheck.h"
#include "knowledgeBase/orvKnowledgeBase.h"
#include "system/containers/orvArray.h"

namespace orv
{

class BehaviorContext;
class BinaryStream;
class Group;
class KBContext;
class SimulationsCollection;

/// One simulated world: entities, groups, ground, entity types, contexts and world knowledge. It runs nothing by
/// itself: it lays its initialisation, frames and finish down as batches that a SimulationsProcessor consumes.
/// Changed by the host thread only, between frames.
class Simulation
{
    ORV_DECLARE_RTTI(Simulation)

public:
    /// A world with room for these counts, holding its two default contexts.
    Simulation(int maxEntities, int maxGroups);
    /// Fatal while initialised: finish the simulation first.
    virtual ~Simulation();

    /// Back to the state of a new object; only while not initialised.
    void reset();

    /// True between the end of its initialisation and its finish. Any thread, between frames.
    bool isInitialized() const { return _initialized; }
    /// True while the simulation is initialised and so steps with its collection.
    bool isRunning() const { return _initialized; }
    /// Simulated time at the start of the present frame.
    Time getDuration() const { return _duration; }
    /// Frames begun so far; the first frame is frame 1.
    unsigned int getCurrentFrame() const { return _frame; }
    void setCurrentFrame(unsigned int frame) { _frame = frame; }
    /// Simulated time at the start of the frame before; -1 before the first frame.
    Time getPreviousDuration() const { return _previousDuration; }

    /// The managers the world owns by value: entities, groups, ground. The touch twins are for the host thread
    /// between frames, and for contexts' slices on the entities of their own range.
    const EntitiesManager& getEntitiesManager() const { return _entitiesManager; }
    EntitiesManager& touchEntitiesManager() { return _entitiesManager; }
    const GroupsManager& getGroupsManager() const { return _groupsManager; }
    GroupsManager& touchGroupsManager() { return _groupsManager; }
    const GroundManager& getGroundManager() const { return _groundManager; }
    GroundManager& touchGroundManager() { return _groundManager; }
    /// The collection that holds and owns this world, or null; set by the collection on adding, nulled on removal.
    SimulationsCollection* getSimulationsCollection() const { return _simulationsCollection; }
    void setSimulationsCollection(SimulationsCollection* collection) { _simulationsCollection = collection; }

    /// The entity of a valid handle.
    Entity* getEntity(EntityHandle handle) { return _entitiesManager.getEntity(handle); }
    /// The group of a valid handle.
    Group* getGroup(EntityHandle handle) { return _groupsManager.getGroup(handle); }
    /// The entity or group that a handle names, by its group bit.
    Entity* getEntityOrGroup(EntityHandle handle);
    int getMaxEntities() const { return _entitiesManager.getMaxEntities(); }
    int getMaxGroups() const { return _groupsManager.getMaxGroups(); }
    int getEntityCount() const { return _entitiesManager.getEntityCount(); }
    int getGroupCount() const { return _groupsManager.getGroupCount(); }
    int getEntityTypeCount() const { return static_cast<int>(_entityTypes.size()); }
    int getGroupEntityTypeCount() const { return static_cast<int>(_groupEntityTypes.size()); }
    int getContextCount() const { return static_cast<int>(_contexts.size()); }
    IContext* getContextByIndex(int index) const { return _contexts[index]; }
    const KnowledgeBase& getKB() const { return _globalKB; }
    KnowledgeBase& touchKB() { return _globalKB; }
    const KnowledgeBase& getGroupKB() const { return _globalGroupKB; }
    KnowledgeBase& touchGroupKB() { return _globalGroupKB; }
    const SimulationUserEventsList& getUserEventsList() const { return _userEventsList; }
    /// The host fills this list, in ascending trigger time.
    SimulationUserEventsList& touchUserEventsList() { return _userEventsList; }

    /// Creates an entity type with that many instance slots and gives its id.
    int createEntityType(int maxCount);
    /// Creates a group type with that many instance slots and gives its id. Fatal once initialised.
    int createGroupEntityType(int maxCount);
    EntityType* getEntityType(int entityTypeId) const;
    GroupEntityType* getGroupEntityType(int groupEntityTypeId) const;

    /// Creates an entity of a type. In a running simulation, initialise it with initEntity or the processor.
    EntityHandle createEntity(unsigned int typeId) { return _entitiesManager.createEntity(typeId); }
    /// Runs the contexts' component initialisation of one entity, on the calling thread.
    void initEntity(EntityHandle handle) { _entitiesManager.initEntity(handle); }
    void initGroup(EntityHandle handle) { _groupsManager.initGroup(handle); }
    /// Destroys an entity; another entity may move into its place, its handle still valid.
    void destroyEntity(EntityHandle handle) { _entitiesManager.destroyEntity(handle); }

    /// Adds a context and takes ownership. Only before any entity or group exists and before initialisation.
    void addContext(IContext* context);
    /// Adds a context when entities already exist, replaying their creation to it. Only before initialisation.
    void addContextLate(IContext* context);
    /// Takes a context out; the caller gets the object back. Only while not initialised.
    void removeContext(IContext* context);
    /// The first context of a type in run order, or null.
    IContext* getContext(IContext::ContextType::Value type) const;
    /// The first context of class T in run order, or null.
    template <class T>
    T* getContext() const
    {
        for (size_t i = 0; i < _contexts.size(); ++i)
        {
            if (T* context = dynamic_cast<T*>(_contexts[i]))
            {
                return context;
            }
        }
        return nullptr;
    }
    BehaviorContext* getBehaviorContext() const { return _behaviorContext; }
    KBContext* getKBContext() const { return _kbContext; }

    /// Lays down the initialisation: preInitBatch, each context's init and per-type batches, components, postInitBatch.
    void enqueueInit(ProcessingBatchQueue& queue);
    /// Lays down one frame of length dt.
    void enqueueUpdate(ProcessingBatchQueue& queue, Time dt);
    /// Lays down the finish.
    void enqueueFinish(ProcessingBatchQueue& queue);
    /// Lays down the initialisation of entities created in a running simulation.
    void enqueueInitEntities(ProcessingBatchQueue& queue, const EntityHandle* handles, int count);
    /// Lays down the initialisation of groups created in a running simulation.
    void enqueueInitGroups(ProcessingBatchQueue& queue, const EntityHandle* handles, int count);
    /// Appends one empty blocking batch.
    static void enqueueBlockingBatch(ProcessingBatchQueue& queue);

    /// Writes the process-wide generator, then this world, to a binary snapshot file. A context whose class has no
    /// descriptor of its own could not be read back: it is left out, with a warning naming it. A file that cannot
    /// be written gets a LOG_ERROR line; the result is true all the same. Host thread, between frames.
    bool exportToBinary(const char* path) const;
    /// Replaces the process-wide generator's seed and this world with a binary snapshot file's. A missing file, or
    /// one that checkBinaryData refuses, gives a LOG_ERROR line naming the file and the reason, returns false and
    /// leaves everything as it was. Loaded generators keep their state and take the loaded seed: a host that wants
    /// each entity back on its own sequence re-seeds it with setSeed(getSeed()). Host thread, between frames.
    bool loadAndImportFromBinary(const char* path);
    /// True when size bytes at data hold a snapshot that loads without fault into any simulation; report, if given,
    /// says at which byte and why not. Builds nothing. Run it before importFromValidatedBinaryData.
    static bool checkBinaryData(const uint8_t* data, size_t size, SnapshotCheckReport* report = nullptr);
    /// True when the buffer can be handed to importFromValidatedBinaryData: a pointer and a size. It says nothing
    /// of the bytes: checkBinaryData does.
    static bool validateLoadedBinaryData(const uint8_t* data, size_t size);
    /// The in-memory form of loadAndImportFromBinary. The bytes are trusted: a snapshot that checkBinaryData
    /// refuses may end the process or worse. Host thread, between frames.
    static bool importFromValidatedBinaryData(const uint8_t* data, size_t size, Simulation& simulation);

    /// Always true: the value side of the "resolveEntityTypeEntities" attribute.
    bool getResolveEntityTypeEntitiesDummy() const { return true; }
    /// Rebuilds every entity type's pointers to its entities from the handle tables, whatever the value.
    void setResolveEntityTypeEntities(bool value);

    /// The batch functions the world lays down; userData is the Simulation. All run alone on the processor's
    /// calling thread, except initEntityBatch and initGroupBatch, which run on the pool for one entity or group each.
    static void preInitBatch(Time dt, void* userData, int first, int last);
    static void initEntityBatch(Time dt, void* userData, int first, int last);
    static void initGroupBatch(Time dt, void* userData, int first, int last);
    static void postInitBatch(Time dt, void* userData, int first, int last);
    static void preUpdateBatch(Time dt, void* userData, int first, int last);
    static void postUpdateBatch(Time dt, void* userData, int first, int last);
    static void finishBatch(Time dt, void* userData, int first, int last);
    /// Does nothing: its only effect is that it is blocking.
    static void emptyBlockingBatch(Time dt, void* userData, int first, int last);

private:
    void addContextInternal(IContext* context);
    void addDefaultContexts();
    void importFrom(BinaryStream& stream);

    EntitiesManager _entitiesManager;
    GroupsManager _groupsManager;
    GroundManager _groundManager;
    SimulationsCollection* _simulationsCollection = nullptr;
    Time _duration = 0.0;
    unsigned int _frame = 0;
    bool _initialized = false;
    Time _previousDuration = -1.0;
    unsigned int _currentUserEvent = 0;
    SimulationUserEventsList _userEventsList;
    Array<IContext*> _contexts;
    Array<EntityType*> _entityTypes;
    Array<GroupEntityType*> _groupEntityTypes;
    KnowledgeBase _globalKB;
    KnowledgeBase _globalGroupKB;
    KBContext* _kbContext = nullptr;
    BehaviorContext* _behaviorContext = nullptr;
};

} // namespace orv
