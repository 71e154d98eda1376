// orvCore/engine/simulation/orvEntitiesManager.cpp
#include "engine/simulation/orvEntitiesManager.h"

#include "engine/simulation/orvEntityType.h"
#include "engine/simulation/orvGroup.h"
#include "engine/simulation/orvIContext.h"
#include "engine/simulation/orvSimulation.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "system/debug/orvAssert.h"
#include "system/memory/orvLargePages.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(EntitiesManager, "1a2fa4b3-d391-4c62-9021-c0cfe4ffe239", "orv::EntitiesManager")

void EntitiesManager::addAttributes()
{
    // Reserves the dense array before it is read, so that the entities do not move between the two passes.
    addAccessorsAttribute<int>("reservedEntitiesSize", &EntitiesManager::getAllocatedEntityCount,
                               &EntitiesManager::setAllocatedEntityCount);
    addAttribute("entities", &EntitiesManager::_entities);
    addAttribute("handleEntries", &EntitiesManager::_handleEntries);
}

namespace
{

// Spreads the seeds of consecutive entities over the generator's seed space.
const uint32_t kEntitySeedStride = 4023829u;
// 2 to the power -32, as a float: turns a 32-bit draw into [0, 1).
const float kUnitFromUint32 = 2.3283064e-10f;

void linkFreeList(Array<HandleEntry>& entries)
{
    const int n = static_cast<int>(entries.size());
    for (int i = 0; i < n - 1; ++i)
    {
        entries[i] = HandleEntry(static_cast<uint32_t>(i + 1));
    }
    if (n > 0)
    {
        entries[n - 1] = HandleEntry();
    }
}

// The free-list rules read the first word of each entry through infoAt(i), so that they serve a live table and
// the raw words of a saved one alike. The fields are decoded by HandleEntry itself, as the stream does.
template <typename InfoAt>
uint32_t findFreeListHeadOf(const InfoAt& infoAt, size_t count)
{
    // The chain from the head visits every free entry and then links to 0: the head is the one free entry that
    // no free entry links to. When entry 0 is free and the head, the last link closes a cycle through it.
    Array<uint8_t> linked;
    linked.resize(count, 0);
    for (size_t i = 0; i < count; ++i)
    {
        HandleEntry entry;
        entry.setHandleInfoAsUint32(infoAt(i));
        if (entry._active == 0 && entry._nextFreeIndex < count)
        {
            linked[entry._nextFreeIndex] = 1;
        }
    }
    for (size_t i = 0; i < count; ++i)
    {
        HandleEntry entry;
        entry.setHandleInfoAsUint32(infoAt(i));
        if (entry._active == 0 && linked[i] == 0)
        {
            return static_cast<uint32_t>(i);
        }
    }
    return 0;
}

template <typename InfoAt>
bool isFreeListSoundOf(const InfoAt& infoAt, size_t count, uint32_t head)
{
    size_t freeCount = 0;
    for (size_t i = 0; i < count; ++i)
    {
        HandleEntry entry;
        entry.setHandleInfoAsUint32(infoAt(i));
        freeCount += entry._active == 0 ? 1 : 0;
    }
    if (freeCount == 0)
    {
        return head == 0;
    }
    Array<uint8_t> visited;
    visited.resize(count, 0);
    uint32_t current = head;
    for (size_t step = 0; step < freeCount; ++step)
    {
        if (current >= count || visited[current] != 0)
        {
            return false;
        }
        HandleEntry entry;
        entry.setHandleInfoAsUint32(infoAt(current));
        if (entry._active != 0)
        {
            return false;
        }
        visited[current] = 1;
        current = entry._nextFreeIndex;
    }
    // Every free entry seen once: the last one must hold the end marker.
    return current == 0;
}

} // namespace

void EntitiesManager::reserveEntities(size_t capacity)
{
    _entities.set_capacity(capacity);
    // Entities are large (their generators live inside them) and are reached at random by handle: on large pages a
    // lookup costs no walk of the page tables. A hint only; where the system has no such pages nothing changes.
    adviseLargePages(_entities.data(), _entities.capacity() * sizeof(Entity));
}

EntitiesManager::EntitiesManager(int capacity)
{
    reserveEntities(static_cast<size_t>(capacity));
    _handleEntries.set_capacity(capacity);
    _handleEntries.resize(capacity);
    linkFreeList(_handleEntries);
}

EntitiesManager::~EntitiesManager() = default;

void EntitiesManager::checkHandle(EntityHandle handle) const
{
    // A handle of another simulation, or a forged one, may point past the table.
    orvAssert(handle._index < _handleEntries.size());
    const unsigned int handleIndex = handle._index;
    orvAssert(_handleEntries[handleIndex]._counter == handle._counter);
    orvAssert(_handleEntries[handleIndex]._active == true);
}

EntityHandle EntitiesManager::createEntity(unsigned int typeId)
{
    // Compared unsigned: a cast to int would let ids of 2^31 and more through as negative.
    const unsigned int entityTypeId = typeId;
    orvAssert(entityTypeId < static_cast<unsigned int>(_simulation->getEntityTypeCount()));
    const int entityIndex = static_cast<int>(_entities.size());
    orvAssertMsg(entityIndex < static_cast<int>(_entities.capacity()),
                 "Can't create a new entity: entity max count (%d) already reached.",
                 static_cast<int>(_entities.capacity()));
    _entities.resize(_entities.size() + 1);

    const int handleIndex = static_cast<int>(_firstFreeHandleEntry);
    orvAssert(handleIndex < static_cast<int>(_entities.capacity()));
    HandleEntry& handleEntry = _handleEntries[handleIndex];
    orvAssert(handleEntry._active == false);
    _firstFreeHandleEntry = handleEntry._nextFreeIndex;
    handleEntry._nextFreeIndex = 0;
    handleEntry._contentIndex = entityIndex;
    handleEntry._counter = (handleEntry._counter + 1) % 2048;
    handleEntry._active = 1;

    // The new element was built by the resize with the null vector, the identity and the default measures.
    Entity& entity = _entities[entityIndex];
    const EntityHandle handle(static_cast<uint32_t>(handleIndex), handleEntry._counter, 0);
    entity.setHandle(handle);
    entity.setId(_currentEntityId);
    RandomNumberGenerator& processRng = getRNG();
    // The state waits for the entity's first draw: many entities never draw, and the fill is the dearest part of a
    // creation. The scale below draws from the process-wide generator, not from this one.
    entity.touchRNG().setSeedLazily(static_cast<uint32_t>(_entities.size()) * kEntitySeedStride + processRng.getSeed());
    ++_currentEntityId;

    EntityType* type = _simulation->getEntityType(static_cast<int>(typeId));
    if (type->getScaleMin() != type->getScaleMax())
    {
        const float u = static_cast<float>(processRng.rand()) * kUnitFromUint32;
        entity.setScale(type->getScaleMin() + u * (type->getScaleMax() - type->getScaleMin()));
    }
    else
    {
        entity.setScale(type->getScaleMin());
    }
    entity.setRadius(type->getRadius());
    entity.setHeight(type->getHeight());
    entity.setPersonalSpace(type->getPersonalSpaceRadius());

    type->addEntityHandle(handle);

    const int contextCount = _simulation->getContextCount();
    for (int i = 0; i < contextCount; ++i)
    {
        IContext* context = _simulation->getContextByIndex(i);
        if (context->registeredOnCreateEntityComponent())
        {
            context->onCreateEntityComponent(entityIndex, handle, static_cast<int>(typeId));
        }
    }
    return handle;
}

void EntitiesManager::createEntities(unsigned int typeId, EntityHandle* handles, int count)
{
    for (int i = 0; i < count; ++i)
    {
        handles[i] = createEntity(typeId);
    }
}

void EntitiesManager::initEntity(EntityHandle handle)
{
    checkHandle(handle);
    const int denseIndex = _handleEntries[handle._index]._contentIndex;
    const int contextCount = _simulation->getContextCount();
    for (int i = 0; i < contextCount; ++i)
    {
        // A context not yet initialised sees the entity in its own component initialisation.
        IContext* context = _simulation->getContextByIndex(i);
        if (context->isInitialized() && context->registeredOnInitEntityComponents())
        {
            context->onInitEntityComponents(denseIndex, denseIndex);
        }
    }
}

void EntitiesManager::initEntities()
{
    for (size_t i = 0; i < _entities.size(); ++i)
    {
        initEntity(_entities[i].getHandle());
    }
}

void EntitiesManager::destroyEntity(EntityHandle handle)
{
    orvAssert(handle._isGroup == 0);
    checkHandle(handle);
    const int denseIndex = _handleEntries[handle._index]._contentIndex;
    Entity& entity = _entities[denseIndex];
    const int lastIndex = static_cast<int>(_entities.size()) - 1;
    Entity& last = _entities[lastIndex];

    // The entity, the last one (which moves into its place), their type slots and the last one's handle entry lie
    // far apart: their loads are started together, so that their cache misses overlap instead of following one
    // another.
    AbstractEntityType* type = entity.getEntityType();
    const int slot = entity.getIndexInEntityType();
    AbstractEntityType* lastType = last.getEntityType();
    const int lastSlot = last.getIndexInEntityType();
    __builtin_prefetch(&_handleEntries[last.getHandle()._index], 1);
    if (type != nullptr)
    {
        type->prefetchSlot(slot);
    }
    if (lastType != nullptr && denseIndex != lastIndex)
    {
        lastType->prefetchSlot(lastSlot);
    }

    const EntityHandle parent = entity.getParentGroupHandle();
    GroupsManager& groups = _simulation->touchGroupsManager();
    if (parent._counter != 0 && parent._isGroup != 0 && groups.isValidEntityHandle(parent))
    {
        groups.getGroup(parent)->removeMember(entity);
    }

    // Contexts hear of the end in reverse order, with the dense index before the move.
    const int contextCount = _simulation->getContextCount();
    for (int i = contextCount - 1; i >= 0; --i)
    {
        IContext* context = _simulation->getContextByIndex(i);
        if (context->isInitialized() && context->registeredOnFinishEntityComponents())
        {
            context->onFinishEntityComponents(denseIndex, denseIndex);
        }
    }
    for (int i = contextCount - 1; i >= 0; --i)
    {
        IContext* context = _simulation->getContextByIndex(i);
        if (context->isInitialized() && context->registeredOnDestroyEntityComponents())
        {
            context->onDestroyEntityComponents(denseIndex, denseIndex);
        }
    }

    entity.getEntityType()->removeEntityHandle(entity.getIndexInEntityType());

    HandleEntry& handleEntry = _handleEntries[handle._index];
    handleEntry._nextFreeIndex = _firstFreeHandleEntry;
    handleEntry._active = 0;
    _firstFreeHandleEntry = handle._index;

    if (denseIndex != lastIndex)
    {
        // The last entity moves into the hole; its generator state stays behind with the slot it leaves.
        const Entity& moved = last;
        entity = moved;
        _handleEntries[moved.getHandle()._index]._contentIndex = denseIndex;
        entity.getEntityType()->updateEntityHandle(entity.getIndexInEntityType(), &entity);
    }
    _entities.pop_back();
}

void EntitiesManager::destroyEntities(const EntityHandle* handles, int count)
{
    for (int i = 0; i < count; ++i)
    {
        destroyEntity(handles[i]);
    }
}

void EntitiesManager::reset()
{
    while (!_entities.empty())
    {
        destroyEntity(_entities.back().getHandle());
    }
}

void EntitiesManager::updateEntities()
{
    const size_t count = _entities.size();
    for (size_t i = 0; i < count; ++i)
    {
        _entities[i].setLastMoveOrientation(_entities[i].getMoveOrientation());
    }
}

void EntitiesManager::setMaxEntities(int capacity)
{
    orvAssert(_simulation->getContextCount() == 2);
    _entities.clear();
    _handleEntries.clear();
    reserveEntities(static_cast<size_t>(capacity));
    _handleEntries.set_capacity(capacity);
    _handleEntries.resize(capacity);
    linkFreeList(_handleEntries);
    _currentEntityId = 0;
    _firstFreeHandleEntry = 0;
}

void EntitiesManager::rebuildFreeListHead()
{
    const Array<HandleEntry>& entries = _handleEntries;
    _firstFreeHandleEntry =
        findFreeListHeadOf([&entries](size_t i) { return entries[i].getHandleInfoAsUint32(); }, entries.size());

    // Ids are not saved: new ones start above every id present and never below the entity count.
    int nextId = _currentEntityId;
    if (nextId < getEntityCount())
    {
        nextId = getEntityCount();
    }
    for (size_t i = 0; i < _entities.size(); ++i)
    {
        if (_entities[i].getId() >= nextId)
        {
            nextId = _entities[i].getId() + 1;
        }
    }
    _currentEntityId = nextId;
}

bool EntitiesManager::isFreeListSound() const
{
    const Array<HandleEntry>& entries = _handleEntries;
    return isFreeListSoundOf([&entries](size_t i) { return entries[i].getHandleInfoAsUint32(); }, entries.size(),
                             _firstFreeHandleEntry);
}

uint32_t EntitiesManager::findFreeListHead(const uint32_t* infoWords, size_t count)
{
    return findFreeListHeadOf([infoWords](size_t i) { return infoWords[i]; }, count);
}

bool EntitiesManager::isFreeListSound(const uint32_t* infoWords, size_t count, uint32_t head)
{
    return isFreeListSoundOf([infoWords](size_t i) { return infoWords[i]; }, count, head);
}

} // namespace orv
