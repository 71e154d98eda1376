// orvCore/engine/simulation/orvEntitiesManager.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/simulation/orvEntity.h"
#include "engine/simulation/orvEntityHandle.h"
#include "engine/simulation/orvHandleEntry.h"
#include "system/containers/orvArray.h"

namespace orv
{

class Simulation;

/// The entities of a simulation, by value in a dense array that stays packed, reached through a handle table
/// whose free entries form a last-in first-out list. Created and destroyed on the host thread, outside parallel
/// batches; read by index from parallel slices.
class EntitiesManager
{
    ORV_DECLARE_VALUE_RTTI(EntitiesManager)

public:
    /// A manager with room for capacity entities.
    explicit EntitiesManager(int capacity);
    ~EntitiesManager();

    /// Creates an entity of a type, tells the contexts, and gives its handle. Fatal past the capacity.
    EntityHandle createEntity(unsigned int typeId);
    /// Creates count entities of a type and writes their handles.
    void createEntities(unsigned int typeId, EntityHandle* handles, int count);
    /// Runs the component initialisation of the initialised contexts on one entity.
    void initEntity(EntityHandle handle);
    /// initEntity on each entity in array order.
    void initEntities();
    /// Destroys an entity; the last one of the dense array moves into its place.
    void destroyEntity(EntityHandle handle);
    void destroyEntities(const EntityHandle* handles, int count);
    /// Destroys every entity, the last first.
    void reset();
    /// End-of-frame bookkeeping: each entity's last move orientation catches up.
    void updateEntities();
    /// Destroys every entity and sizes the manager anew. Only while the simulation holds its two default contexts.
    void setMaxEntities(int capacity);

    /// True for the handle of a live entity: an active entry with the same counter.
    bool isValidEntityHandle(EntityHandle handle) const
    {
        if (handle._index >= _handleEntries.size())
        {
            return false;
        }
        const HandleEntry& entry = _handleEntries[handle._index];
        return entry._active != 0 && entry._counter == handle._counter;
    }
    /// The entity of a handle, through the table. The handle must be valid.
    Entity* getEntity(EntityHandle handle) { return &_entities[_handleEntries[handle._index]._contentIndex]; }
    const Entity* getEntity(EntityHandle handle) const
    {
        return &_entities[_handleEntries[handle._index]._contentIndex];
    }
    /// The entity at a dense index.
    Entity* getEntity(int denseIndex) { return &_entities[denseIndex]; }
    const Entity* getEntity(int denseIndex) const { return &_entities[denseIndex]; }
    /// The dense index of a handle's entity.
    int getEntityIndex(EntityHandle handle) const { return _handleEntries[handle._index]._contentIndex; }
    int getEntityCount() const { return static_cast<int>(_entities.size()); }
    int getMaxEntities() const { return static_cast<int>(_entities.capacity()); }
    const Array<Entity>& getEntities() const { return _entities; }
    Array<Entity>& touchEntities() { return _entities; }
    const Array<HandleEntry>& getHandleEntries() const { return _handleEntries; }
    /// Head of the free list of handle entries.
    unsigned int getFirstFreeHandleEntry() const { return _firstFreeHandleEntry; }
    /// Capacity of the dense array, for loading.
    int getAllocatedEntityCount() const { return getMaxEntities(); }
    /// Reserves the dense array before it is loaded.
    void setAllocatedEntityCount(int count) { _entities.reserve(count); }

    /// Entities are not paused one by one: does nothing.
    void pauseEntity(EntityHandle, bool) {}
    /// False for every handle.
    bool isPaused(EntityHandle) const { return false; }

    void setSimulation(Simulation* simulation) { _simulation = simulation; }
    Simulation* getSimulation() const { return _simulation; }

private:
    void checkHandle(EntityHandle handle) const;

    Array<Entity> _entities;
    int _currentEntityId = 0;
    Array<HandleEntry> _handleEntries;
    unsigned int _firstFreeHandleEntry = 0;
    Simulation* _simulation = nullptr;
};

} // namespace orv
