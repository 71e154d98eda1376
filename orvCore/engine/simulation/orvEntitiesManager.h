// orvCore/engine/simulation/orvEntitiesManager.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/simulation/orvEntity.h"
#include "engine/simulation/orvEntityHandle.h"
#include "engine/simulation/orvHandleEntry.h"
#include "system/containers/orvArray.h"
#include "system/debug/orvAssert.h"

namespace orv
{

class Simulation;

/// The entities of a simulation, by value in a dense array that stays packed, reached through a handle table
/// whose free entries form a last-in first-out list ending at entry 0. Owned by its simulation. Created and
/// destroyed on the host thread, outside parallel batches; read by index from parallel slices.
class EntitiesManager
{
    ORV_DECLARE_VALUE_RTTI(EntitiesManager)

public:
    /// A manager with room for capacity entities, capacity >= 0.
    explicit EntitiesManager(int capacity);
    ~EntitiesManager();

    /// Creates an entity of a type, tells the contexts, and gives its handle. Fatal for an unknown type or past
    /// the capacity. Host thread.
    EntityHandle createEntity(unsigned int typeId);
    /// Creates count entities of a type and writes their handles to handles[0..count). Host thread.
    void createEntities(unsigned int typeId, EntityHandle* handles, int count);
    /// Runs the component initialisation of the initialised contexts on one entity. Fatal for a stale handle.
    /// Distinct entities may be initialised from parallel slices.
    void initEntity(EntityHandle handle);
    /// initEntity on each entity in array order. Host thread.
    void initEntities();
    /// Destroys an entity; the last one of the dense array moves into its place. Fatal for a stale handle.
    /// Host thread.
    void destroyEntity(EntityHandle handle);
    /// destroyEntity on handles[0..count), in order. Host thread.
    void destroyEntities(const EntityHandle* handles, int count);
    /// Destroys every entity, the last first. Host thread.
    void reset();
    /// End-of-frame bookkeeping: each entity's last move orientation catches up. Host thread, between frames.
    void updateEntities();
    /// Destroys every entity and sizes the manager anew, capacity >= 0. Only while the simulation holds its two
    /// default contexts. Host thread.
    void setMaxEntities(int capacity);

    /// Restores after a load what the saved form leaves out: the head of the free list, found from the table
    /// alone (see findFreeListHead), and the next entity id, raised above every id and the entity count so that
    /// ids stay unique. Host thread.
    void rebuildFreeListHead();
    /// True when the free list from its head visits every free entry of the table once, then ends at entry 0.
    bool isFreeListSound() const;
    /// The head of the free list of a handle table given by the first words of its count entries (the
    /// "handleInfo" words): the lowest free entry that no free entry links to, or 0 when every free entry is
    /// linked to (entry 0 is then the head) or none is free. Any thread.
    static uint32_t findFreeListHead(const uint32_t* infoWords, size_t count);
    /// True when the free list from head, over the same words, visits exactly the free entries, each once, with
    /// indices below count, and its last entry links to 0. With no free entry, true for head 0. Any thread.
    static bool isFreeListSound(const uint32_t* infoWords, size_t count, uint32_t head);

    /// True for the handle of a live entity: an index inside the table, an active entry, the same counter.
    bool isValidEntityHandle(EntityHandle handle) const
    {
        if (handle._index >= _handleEntries.size())
        {
            return false;
        }
        const HandleEntry& entry = _handleEntries[handle._index];
        return entry._active != 0 && entry._counter == handle._counter;
    }
    /// The entity of a handle, through the table. The handle must be valid; one past the table is fatal.
    Entity* getEntity(EntityHandle handle)
    {
        orvAssert(handle._index < _handleEntries.size());
        return &_entities[_handleEntries[handle._index]._contentIndex];
    }
    const Entity* getEntity(EntityHandle handle) const
    {
        orvAssert(handle._index < _handleEntries.size());
        return &_entities[_handleEntries[handle._index]._contentIndex];
    }
    /// The entity at a dense index, in [0, getEntityCount()).
    Entity* getEntity(int denseIndex) { return &_entities[denseIndex]; }
    const Entity* getEntity(int denseIndex) const { return &_entities[denseIndex]; }
    /// The dense index of a handle's entity. The handle must be valid; one past the table is fatal.
    int getEntityIndex(EntityHandle handle) const
    {
        orvAssert(handle._index < _handleEntries.size());
        return _handleEntries[handle._index]._contentIndex;
    }
    /// Live entities, and the capacity of the dense array.
    int getEntityCount() const { return static_cast<int>(_entities.size()); }
    int getMaxEntities() const { return static_cast<int>(_entities.capacity()); }
    /// The dense array, in no particular order. The mutable twin is for loading and for contexts' slices.
    const Array<Entity>& getEntities() const { return _entities; }
    Array<Entity>& touchEntities() { return _entities; }
    /// The handle table, one entry per unit of capacity. The mutable twin is for loading: rebuild the free-list
    /// head after writing it.
    const Array<HandleEntry>& getHandleEntries() const { return _handleEntries; }
    Array<HandleEntry>& touchHandleEntries() { return _handleEntries; }
    /// Head of the free list of handle entries: the entry the next createEntity takes.
    unsigned int getFirstFreeHandleEntry() const { return _firstFreeHandleEntry; }
    /// Capacity of the dense array, for loading.
    int getAllocatedEntityCount() const { return getMaxEntities(); }
    /// Sets the capacity of the dense array before it is loaded: a loaded world holds as many entities as the one
    /// saved, whatever the capacity of the world it is loaded into. Never below the present count.
    void setAllocatedEntityCount(int count)
    {
        reserveEntities(count > getEntityCount() ? static_cast<size_t>(count) : _entities.size());
    }

    /// Entities are not paused one by one: does nothing.
    void pauseEntity(EntityHandle, bool) {}
    /// False for every handle.
    bool isPaused(EntityHandle) const { return false; }

    /// The owning simulation, not owned; set once by it before any entity exists.
    void setSimulation(Simulation* simulation) { _simulation = simulation; }
    Simulation* getSimulation() const { return _simulation; }

private:
    // Fatal unless the handle names an active entry of the table with the same counter.
    void checkHandle(EntityHandle handle) const;
    // Sets the capacity of the dense array, on large pages where the system has them.
    void reserveEntities(size_t capacity);

    Array<Entity> _entities;
    int _currentEntityId = 0;
    Array<HandleEntry> _handleEntries;
    unsigned int _firstFreeHandleEntry = 0;
    Simulation* _simulation = nullptr;
};

} // namespace orv
