// orvCore/engine/simulation/orvAbstractEntityType.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvEntityHandle.h"
#include "knowledgeBase/orvKnowledgeBase.h"
#include "system/containers/orvArray.h"
#include "system/containers/orvString.h"

namespace orv
{

class Entity;
class Group;
class Simulation;

/// A kind of entity or group. Gives each instance a stable slot, reused last in first out, by which per-entity
/// data of contexts and behaviours is indexed. Owned by its simulation; changed on the host thread only, read
/// from parallel slices.
class AbstractEntityType
{
    ORV_DECLARE_ABSTRACT_RTTI(AbstractEntityType)

public:
    /// A type with room for maxCount instances, maxCount >= 0 (fatal otherwise).
    explicit AbstractEntityType(int maxCount);
    virtual ~AbstractEntityType();

    /// True for the types of groups.
    virtual bool isGroup() const { return false; }

    /// The owning simulation, not owned; set by it when it creates the type.
    Simulation* getSimulation() const { return _simulation; }
    void setSimulation(Simulation* simulation) { _simulation = simulation; }
    /// Position of the type in its simulation's array of entity or group types; -1 before it is added.
    int getEntityTypeId() const { return _entityTypeId; }
    void setEntityTypeId(int id) { _entityTypeId = id; }
    /// The host's name for the type; empty by default.
    const OrvString& getName() const { return _name; }
    void setName(const OrvString& name) { _name = name; }
    /// The behaviours of the type's instances, with per-slot data; owned by the type.
    const BehaviorGraph& getBehaviorGraph() const { return _behaviorGraph; }
    BehaviorGraph& touchBehaviorGraph() { return _behaviorGraph; }
    /// Adds a top-level behaviour to the type's graph, as BehaviorGraph::addBehavior does. Fatal unless the type is
    /// in a simulation that holds a BehaviorContext. Host thread, between frames.
    void addBehavior(AbstractBehavior* behavior, bool requestStartAtInitialization);
    /// Knowledge shared by the type's instances; owned by the type, not saved.
    const KnowledgeBase& getKB() const { return _entityTypeKB; }
    KnowledgeBase& touchKB() { return _entityTypeKB; }

    /// Slots used so far, free ones included.
    int getHandleCount() const { return static_cast<int>(_entityHandles.size()); }
    /// Live instances: used slots less the free ones.
    int getInstanceCount() const { return getHandleCount() - static_cast<int>(_recycledIndices.size()); }
    /// Slots available in all.
    int getMaxCount() const { return static_cast<int>(_entityHandles.capacity()); }
    /// The handle in a slot; the invalid handle in a free slot.
    EntityHandle getEntityHandle(int slot) const { return _entityHandles[slot]; }
    /// True when the slot holds an instance.
    bool isIndexInUse(int slot) const { return _entityHandles[slot] != _invalidHandle; }
    /// The slot of a handle, or _invalidEntityIndex. Linear search.
    int findIndexInEntityType(EntityHandle handle) const;
    /// The entity in a slot, or null in a free slot.
    Entity* getEntity(int slot) const { return _entities[slot]; }
    /// The group in a slot of a group type, or null.
    Group* getGroup(int slot) const;
    /// The entity or group in a slot, or null.
    Entity* getEntityOrGroup(int slot) const { return _entities[slot]; }
    /// The free slots, the next one to use last.
    const Array<int>& getRecycledIndices() const { return _recycledIndices; }

    /// Gives a new instance a slot: the last freed one, or a new one at the end.
    void addEntityHandle(EntityHandle handle);
    /// Frees a slot.
    void removeEntityHandle(int slot);
    /// Points a slot at the instance's new place after a move in the dense array.
    void updateEntityHandle(int slot, Entity* entity);
    /// Asks the processor to bring the tables of slot into cache, ahead of removeEntityHandle or
    /// updateEntityHandle; changes nothing. Any thread; slot must be a slot of the type.
    void prefetchSlot(int slot) const
    {
        __builtin_prefetch(&_entityHandles[slot], 1);
        __builtin_prefetch(&_entities[slot], 1);
    }
    /// Rebuilds the slot pointers from the simulation's entity table, after a load. A handle or an entry that
    /// points outside the tables gives a null pointer; nothing outside them is read.
    void resolveEntityHandles(Simulation& simulation);

    /// Sets the capacity of the slot arrays, capacity >= 0 (fatal otherwise).
    void allocate(int capacity);
    /// Capacity of the slot arrays, for loading; the setter requires value >= 0.
    int getEntityArraysCapacity() const { return getMaxCount(); }
    void setEntityArraysCapacity(int value);

    /// The handle of a free slot.
    static const EntityHandle _invalidHandle;
    /// The index reported when nothing is found.
    static constexpr int _invalidEntityIndex = -1;

private:
    OrvString _name;
    Simulation* _simulation = nullptr;
    int _entityTypeId = -1;
    Array<EntityHandle> _entityHandles;
    Array<Entity*> _entities;
    Array<int> _recycledIndices;
    BehaviorGraph _behaviorGraph;
    KnowledgeBase _entityTypeKB;
};

} // namespace orv
