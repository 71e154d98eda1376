// orvCore/engine/simulation/orvAbstractEntityType.cpp
#include "engine/simulation/orvAbstractEntityType.h"

#include "behavior/engine/orvBehaviorContext.h"
#include "engine/simulation/orvEntity.h"
#include "engine/simulation/orvGroup.h"
#include "engine/simulation/orvSimulation.h"
#include "system/debug/orvAssert.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(AbstractEntityType, "659abee9-30eb-4d91-9107-0d51c8c6d80b", "orv::AbstractEntityType")

void AbstractEntityType::addAttributes()
{
    addAttribute("name", &AbstractEntityType::_name);
    addAttribute("simulation", &AbstractEntityType::_simulation);
    addAttribute("entityTypeId", &AbstractEntityType::_entityTypeId);
    // Sizes the three arrays before they are read.
    addAccessorsAttribute<int>("entityArraysCapacity", &AbstractEntityType::getEntityArraysCapacity,
                               &AbstractEntityType::setEntityArraysCapacity);
    addAttribute("entityHandles", &AbstractEntityType::_entityHandles);
    addAttribute("recycledIndices", &AbstractEntityType::_recycledIndices);
    addAttribute("behaviorGraph", &AbstractEntityType::_behaviorGraph);
}

const EntityHandle AbstractEntityType::_invalidHandle;

AbstractEntityType::AbstractEntityType(int maxCount) : _behaviorGraph(maxCount)
{
    // A negative count would turn into a request for nearly 2^64 bytes.
    orvAssert(maxCount >= 0);
    allocate(maxCount);
    _behaviorGraph.setParentEntityType(this);
}

AbstractEntityType::~AbstractEntityType() = default;

void AbstractEntityType::addBehavior(AbstractBehavior* behavior, bool requestStartAtInitialization)
{
    orvAssertMsg(_simulation != NULL && _simulation->getContext<BehaviorContext>() != NULL,
                 "Simulation needs a BehaviorContext to handle behaviors");
    _behaviorGraph.addBehavior(behavior, requestStartAtInitialization);
}

int AbstractEntityType::findIndexInEntityType(EntityHandle handle) const
{
    for (size_t i = 0; i < _entityHandles.size(); ++i)
    {
        if (_entityHandles[i] == handle)
        {
            return static_cast<int>(i);
        }
    }
    return _invalidEntityIndex;
}

Group* AbstractEntityType::getGroup(int slot) const
{
    return isGroup() ? static_cast<Group*>(_entities[slot]) : nullptr;
}

void AbstractEntityType::addEntityHandle(EntityHandle handle)
{
    Entity* entity = nullptr;
    if (handle._isGroup != 0)
    {
        entity = _simulation->touchGroupsManager().getGroup(handle);
    }
    else
    {
        entity = _simulation->touchEntitiesManager().getEntity(handle);
    }

    int slot = 0;
    if (!_recycledIndices.empty())
    {
        // The slot's per-slot behaviour data stay allocated: the graph is not told.
        slot = _recycledIndices.back();
        _recycledIndices.pop_back();
        _entityHandles[slot] = handle;
        _entities[slot] = entity;
    }
    else
    {
        const int entityHandleCount = getHandleCount();
        orvAssert(entityHandleCount < getMaxCount());
        slot = entityHandleCount;
        _entityHandles.push_back(handle);
        _entities.push_back(entity);
        _behaviorGraph.addEntityToBehaviors(slot);
    }
    entity->setEntityType(this);
    entity->setIndexInEntityType(slot);
}

void AbstractEntityType::removeEntityHandle(int slot)
{
    _entityHandles[slot] = _invalidHandle;
    Entity* entity = _entities[slot];
    _entities[slot] = nullptr;
    if (entity != nullptr)
    {
        entity->setEntityType(nullptr);
        entity->setIndexInEntityType(-1);
    }
    _recycledIndices.push_back(slot);
}

void AbstractEntityType::updateEntityHandle(int slot, Entity* entity)
{
    _entities[slot] = entity;
}

void AbstractEntityType::resolveEntityHandles(Simulation& simulation)
{
    EntitiesManager& manager = simulation.touchEntitiesManager();
    const Array<HandleEntry>& entries = manager.getHandleEntries();
    Array<Entity>& entities = manager.touchEntities();
    _entities.resize(_entityHandles.size());
    for (size_t slot = 0; slot < _entityHandles.size(); ++slot)
    {
        // A free slot's zero handle resolves through entry 0, like any other. The tables come from a file: an
        // index outside them resolves to null rather than being read.
        Entity* entity = nullptr;
        const uint32_t handleIndex = _entityHandles[slot]._index;
        if (handleIndex < entries.size())
        {
            const int32_t contentIndex = entries[handleIndex]._contentIndex;
            if (contentIndex >= 0 && static_cast<size_t>(contentIndex) < entities.size())
            {
                entity = &entities[contentIndex];
            }
        }
        _entities[slot] = entity;
    }
}

void AbstractEntityType::allocate(int capacity)
{
    orvAssert(capacity >= 0);
    _entityHandles.set_capacity(capacity);
    _entities.set_capacity(capacity);
    _recycledIndices.set_capacity(capacity);
}

void AbstractEntityType::setEntityArraysCapacity(int value)
{
    orvAssert(value >= 0);
    allocate(value);
}

} // namespace orv
