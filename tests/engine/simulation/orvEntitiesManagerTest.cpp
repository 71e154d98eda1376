#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "engine/ground/orvAbstractGround.h"
#include "engine/ground/orvNoGround.h"
#include "engine/simulation/orvSimulation.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvRecordingContext.h"
#include "system/serialization/orvBinaryStream.h"

namespace
{

using orv::EntityHandle;

class EntitiesManagerTest : public orvtest::CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        _simulation = new orv::Simulation(8, 0);
        _typeA = _simulation->createEntityType(4);
        _typeB = _simulation->createEntityType(4);
    }
    void TearDown() override
    {
        delete _simulation;
        CoreTest::TearDown();
    }
    orv::EntitiesManager& manager() { return _simulation->touchEntitiesManager(); }

    std::vector<std::string> _journal;
    orv::Simulation* _simulation = nullptr;
    int _typeA = 0;
    int _typeB = 0;
};

TEST_F(EntitiesManagerTest, FirstHandleIsEntryZeroWithCounterOne)
{
    const EntityHandle handle = _simulation->createEntity(_typeA);
    EXPECT_EQ(0u, handle._index);
    EXPECT_EQ(1u, handle._counter);
    EXPECT_EQ(0u, handle._isGroup);
    EXPECT_EQ(1048576u, handle.getUint32());
    EXPECT_TRUE(manager().isValidEntityHandle(handle));
}

TEST_F(EntitiesManagerTest, HandleBitFieldsMaskToTheirWidths)
{
    const EntityHandle handle(0x1FFFFFu, 0xFFFu, 3u);
    EXPECT_EQ(0xFFFFFu, handle._index);
    EXPECT_EQ(0x7FFu, handle._counter);
    EXPECT_EQ(1u, handle._isGroup);
    EntityHandle copy;
    copy.setUint32(handle.getUint32());
    EXPECT_EQ(handle, copy);
}

TEST_F(EntitiesManagerTest, CounterWrapsToZeroAfter2047Reuses)
{
    EntityHandle handle;
    for (int i = 0; i < 2047; ++i)
    {
        handle = _simulation->createEntity(_typeA);
        _simulation->destroyEntity(handle);
    }
    EXPECT_EQ(2047u, handle._counter);
    const EntityHandle wrapped = _simulation->createEntity(_typeA);
    EXPECT_EQ(0u, wrapped._index);
    EXPECT_EQ(0u, wrapped._counter);
    EXPECT_EQ(EntityHandle()._counter, wrapped._counter);
}

TEST_F(EntitiesManagerTest, DestroyedHandleIsRefusedAndItsEntryComesBackFirst)
{
    const EntityHandle first = _simulation->createEntity(_typeA);
    const EntityHandle second = _simulation->createEntity(_typeA);
    _simulation->destroyEntity(first);
    EXPECT_FALSE(manager().isValidEntityHandle(first));
    EXPECT_TRUE(manager().isValidEntityHandle(second));
    const EntityHandle again = _simulation->createEntity(_typeA);
    EXPECT_EQ(first._index, again._index);
    EXPECT_EQ(first._counter + 1, again._counter);
    EXPECT_FALSE(manager().isValidEntityHandle(first));
}

TEST_F(EntitiesManagerTest, DestroyingTheLastEntityMovesNothing)
{
    const EntityHandle a = _simulation->createEntity(_typeA);
    const EntityHandle b = _simulation->createEntity(_typeA);
    orv::Entity* before = _simulation->getEntity(a);
    _simulation->destroyEntity(b);
    EXPECT_EQ(1, _simulation->getEntityCount());
    EXPECT_EQ(before, _simulation->getEntity(a));
    EXPECT_EQ(0, manager().getEntityIndex(a));
}

TEST_F(EntitiesManagerTest, DestroyingInTheMiddleMovesTheLastEntityWhichKeepsItsHandleButNotItsGenerator)
{
    const EntityHandle a = _simulation->createEntity(_typeA);
    const EntityHandle b = _simulation->createEntity(_typeB);
    const EntityHandle c = _simulation->createEntity(_typeB);
    // b is part-way through its first round and past the fill; c has never drawn.
    for (int i = 0; i < 100; ++i)
    {
        _simulation->getEntity(b)->touchRNG().rand();
    }
    const orv::RandomNumberGenerator generatorOfB = _simulation->getEntity(b)->getRNG();
    const int idOfC = _simulation->getEntity(c)->getId();
    _simulation->getEntity(c)->setPosition(orv::Vector3(1.0f, 2.0f, 3.0f));

    _simulation->destroyEntity(b);

    ASSERT_TRUE(manager().isValidEntityHandle(c));
    EXPECT_EQ(1, manager().getEntityIndex(c));
    orv::Entity* moved = _simulation->getEntity(c);
    EXPECT_EQ(idOfC, moved->getId());
    EXPECT_EQ(2.0f, moved->getPosition().y);
    EXPECT_EQ(c, moved->getHandle());
    // The moved entity goes on with the generator that the destroyed entity left in the slot, from its position.
    orv::RandomNumberGenerator expected = generatorOfB;
    EXPECT_EQ(expected.getSeed(), moved->getRNG().getSeed());
    for (int i = 0; i < 1300; ++i)
    {
        ASSERT_EQ(expected.rand(), moved->touchRNG().rand()) << i;
    }
    // Its type's slot points at its new place.
    orv::EntityType* type = _simulation->getEntityType(_typeB);
    EXPECT_EQ(moved, type->getEntity(moved->getIndexInEntityType()));
    EXPECT_TRUE(manager().isValidEntityHandle(a));
}

TEST_F(EntitiesManagerTest, AMoveOntoAGeneratorThatNeverDrewKeepsItsSeedAndSequence)
{
    _simulation->createEntity(_typeA);
    const EntityHandle b = _simulation->createEntity(_typeA);
    const EntityHandle c = _simulation->createEntity(_typeA);
    const uint32_t seedOfB = _simulation->getEntity(b)->getRNG().getSeed();
    _simulation->getEntity(c)->touchRNG().rand();

    _simulation->destroyEntity(b);

    orv::Entity* moved = _simulation->getEntity(c);
    EXPECT_EQ(seedOfB, moved->getRNG().getSeed());
    orv::RandomNumberGenerator expected(seedOfB);
    for (int i = 0; i < 700; ++i)
    {
        ASSERT_EQ(expected.rand(), moved->touchRNG().rand()) << i;
    }
}

TEST_F(EntitiesManagerTest, AnEntityDrawsTheSequenceOfAGeneratorMadeWithItsSeed)
{
    _simulation->createEntity(_typeA);
    const EntityHandle handle = _simulation->createEntity(_typeB);
    orv::Entity* entity = _simulation->getEntity(handle);
    orv::RandomNumberGenerator expected(entity->getRNG().getSeed());
    for (int i = 0; i < 1300; ++i)
    {
        ASSERT_EQ(expected.rand(), entity->touchRNG().rand()) << i;
    }
}

TEST_F(EntitiesManagerTest, AnEntitysSavedBytesAndReadSeedDoNotDependOnWhenItsStateWasFilled)
{
    const EntityHandle handle = _simulation->createEntity(_typeA);
    orv::Entity* entity = _simulation->getEntity(handle);
    const uint32_t creationSeed = entity->getRNG().getSeed();
    orv::RandomNumberGenerator eager(0);
    eager.setSeed(creationSeed);
    orv::BinaryStream lazyStream;
    lazyStream.pack(entity->getRNG());
    orv::BinaryStream eagerStream;
    eagerStream.pack(eager);
    EXPECT_EQ(eagerStream.getStream().str(), lazyStream.getStream().str());

    // A seed read before the first draw is answered by getSeed; the state still comes from the creation seed.
    orv::BinaryStream saved;
    saved.pack(orv::RandomNumberGenerator(5u));
    const std::string bytes = saved.getStream().str();
    orv::BinaryStream reader;
    reader.importFrom(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    reader.unpack(entity->touchRNG());
    EXPECT_EQ(5u, entity->getRNG().getSeed());
    for (int i = 0; i < 700; ++i)
    {
        ASSERT_EQ(eager.rand(), entity->touchRNG().rand()) << i;
    }
}

TEST_F(EntitiesManagerTest, TypeSlotsAreReusedLastFreedFirst)
{
    orv::EntityType* type = _simulation->getEntityType(_typeA);
    const EntityHandle h0 = _simulation->createEntity(_typeA);
    const EntityHandle h1 = _simulation->createEntity(_typeA);
    const EntityHandle h2 = _simulation->createEntity(_typeA);
    const int slot0 = _simulation->getEntity(h0)->getIndexInEntityType();
    const int slot2 = _simulation->getEntity(h2)->getIndexInEntityType();
    _simulation->destroyEntity(h0);
    _simulation->destroyEntity(h2);
    EXPECT_EQ(3, type->getHandleCount());
    EXPECT_EQ(1, type->getInstanceCount());
    EXPECT_FALSE(type->isIndexInUse(slot0));
    EXPECT_EQ(orv::AbstractEntityType::_invalidEntityIndex, type->findIndexInEntityType(h2));

    const EntityHandle n1 = _simulation->createEntity(_typeA);
    const EntityHandle n2 = _simulation->createEntity(_typeA);
    EXPECT_EQ(slot2, _simulation->getEntity(n1)->getIndexInEntityType());
    EXPECT_EQ(slot0, _simulation->getEntity(n2)->getIndexInEntityType());
    EXPECT_EQ(n1, type->getEntityHandle(slot2));
    EXPECT_EQ(_simulation->getEntity(h1), type->getEntity(type->findIndexInEntityType(h1)));
}

TEST_F(EntitiesManagerTest, NewEntityTakesTheMeasuresOfItsTypeAndASeedFromItsRank)
{
    orv::EntityType* type = _simulation->getEntityType(_typeB);
    type->setRadius(0.4f);
    type->setHeight(1.9f);
    type->setPersonalSpaceRadius(0.7f);
    _simulation->createEntity(_typeA);
    const EntityHandle handle = _simulation->createEntity(_typeB);
    const orv::Entity* entity = _simulation->getEntity(handle);
    EXPECT_EQ(0.4f, entity->getRadius());
    EXPECT_EQ(1.9f, entity->getHeight());
    EXPECT_EQ(0.7f, entity->getPersonalSpace());
    EXPECT_EQ(2u * 4023829u + orv::getRNG().getSeed(), entity->getRNG().getSeed());
    EXPECT_EQ(1, entity->getId());
    EXPECT_EQ(1.0f, entity->getScale());
}

TEST_F(EntitiesManagerTest, EqualScaleBoundsLeaveTheProcessGeneratorAlone)
{
    orv::RandomNumberGenerator reference = orv::getRNG();
    _simulation->createEntity(_typeA);
    EXPECT_EQ(reference.rand(), orv::getRNG().rand());
}

TEST_F(EntitiesManagerTest, ScaleRangeDrawsFromTheProcessGenerator)
{
    _simulation->getEntityType(_typeA)->setScaleRange(1.0f, 2.0f);
    orv::RandomNumberGenerator reference = orv::getRNG();
    const EntityHandle handle = _simulation->createEntity(_typeA);
    const float u = static_cast<float>(reference.rand()) * 2.3283064e-10f;
    EXPECT_EQ(1.0f + u * 1.0f, _simulation->getEntity(handle)->getScale());
}

TEST_F(EntitiesManagerTest, UpdateEntitiesCatchesTheLastMoveOrientationUp)
{
    const EntityHandle handle = _simulation->createEntity(_typeA);
    orv::Quaternion turned;
    turned.x = 0.0f;
    turned.y = 0.0f;
    turned.z = 1.0f;
    turned.w = 0.0f;
    _simulation->getEntity(handle)->setMoveOrientation(turned);
    manager().updateEntities();
    EXPECT_EQ(1.0f, _simulation->getEntity(handle)->getLastMoveOrientation().z);
}

TEST_F(EntitiesManagerTest, ContextsHearCreationInOrderAndDestructionInReverseOrder)
{
    std::vector<std::string> journal;
    orv::Simulation simulation(4, 0);
    simulation.addContext(new orvtest::RecordingContext(journal, "nav", orv::IContext::ContextType::NAVIGATION));
    simulation.addContext(new orvtest::RecordingContext(journal, "per", orv::IContext::ContextType::PERCEPTION));
    const int type = simulation.createEntityType(4);
    const EntityHandle handle = simulation.createEntity(type);
    EXPECT_EQ((std::vector<std::string>{"nav:allocate", "per:allocate", "per:createType(0)", "nav:createType(0)",
                                        "per:create(0,0)", "nav:create(0,0)"}),
              journal);
    // Contexts that are not initialised hear of no finish or destruction.
    journal.clear();
    simulation.destroyEntity(handle);
    EXPECT_TRUE(journal.empty());

    const EntityHandle other = simulation.createEntity(type);
    for (int i = 0; i < simulation.getContextCount(); ++i)
    {
        simulation.getContextByIndex(i)->setInitialized(true);
    }
    journal.clear();
    simulation.initEntity(other);
    simulation.destroyEntity(other);
    EXPECT_EQ(
        (std::vector<std::string>{"per:initEntities(0,0)", "nav:initEntities(0,0)", "nav:finishEntities(0,0)",
                                  "per:finishEntities(0,0)", "nav:destroyEntities(0,0)", "per:destroyEntities(0,0)"}),
        journal);
    for (int i = 0; i < simulation.getContextCount(); ++i)
    {
        simulation.getContextByIndex(i)->setInitialized(false);
    }
}

TEST_F(EntitiesManagerTest, GroundAdaptResponsibleFollowsTheFlagsInOrder)
{
    // Hosts compare with the codes: the names keep them.
    orv::NoGround noGround;
    struct FlatGround : orv::AbstractGround
    {
    } flat;
    orv::Entity entity;
    EXPECT_EQ(0, entity.getGroundAdaptResponsible(noGround));
    EXPECT_EQ(4, entity.getGroundAdaptResponsible(flat));
    entity.usePathComponent(true);
    EXPECT_EQ(4, entity.getGroundAdaptResponsible(noGround));
    entity.setGroundAdaptationMode(1);
    EXPECT_EQ(4, entity.getGroundAdaptResponsible(flat));
    entity.setGroundAdaptationMode(3);
    EXPECT_EQ(0, entity.getGroundAdaptResponsible(flat));
    entity.setGroundAdaptationMode(2);
    entity.useMotionComponent(true);
    EXPECT_EQ(4, entity.getGroundAdaptResponsible(flat));
    entity.incrBeMotionUse();
    EXPECT_EQ(1, entity.getGroundAdaptResponsible(flat));
    entity.incrBeGroundAdaptUse();
    EXPECT_EQ(1, entity.getGroundAdaptResponsible(flat));
    entity.decrBeMotionUse();
    EXPECT_EQ(2, entity.getGroundAdaptResponsible(flat));
    entity.setMotionLocomotion(true);
    EXPECT_EQ(3, entity.getGroundAdaptResponsible(flat));
    entity.decrBeGroundAdaptUse();
    EXPECT_EQ(5, entity.getGroundAdaptResponsible(flat));
}

TEST_F(EntitiesManagerTest, AssignmentKeepsTheDestinationGeneratorAndPhysicsPointer)
{
    orv::Entity source;
    orv::Entity destination;
    source.touchRNG().setSeed(7);
    destination.touchRNG().setSeed(9);
    int body = 0;
    source.setPhysicUserPointer(&body);
    source.setSpeed(3.0f);
    destination = source;
    EXPECT_EQ(3.0f, destination.getSpeed());
    EXPECT_EQ(9u, destination.getRNG().getSeed());
    EXPECT_EQ(nullptr, destination.getPhysicUserPointer());
}

/// The first words of a table's entries, as a saved table holds them.
std::vector<uint32_t> infoWordsOf(const orv::EntitiesManager& manager)
{
    std::vector<uint32_t> words;
    for (size_t i = 0; i < manager.getHandleEntries().size(); ++i)
    {
        words.push_back(manager.getHandleEntries()[i].getHandleInfoAsUint32());
    }
    return words;
}

TEST_F(EntitiesManagerTest, AChurnedTableCopiedIntoAFreshManagerGivesBackItsFreeListHead)
{
    const int capacity = 24;
    for (uint32_t churn = 0; churn < 300; ++churn)
    {
        orv::Simulation world(capacity, 0);
        const int type = world.createEntityType(capacity);
        std::mt19937 random(churn);
        std::vector<EntityHandle> live;
        const int steps = static_cast<int>(random() % 200);
        for (int step = 0; step < steps; ++step)
        {
            // Creation and destruction in random order, from empty to full and back.
            const bool create = live.empty() || (static_cast<int>(live.size()) < capacity && random() % 2 == 0);
            if (create)
            {
                live.push_back(world.createEntity(type));
            }
            else
            {
                const size_t pick = random() % live.size();
                world.destroyEntity(live[pick]);
                live.erase(live.begin() + static_cast<std::ptrdiff_t>(pick));
            }
        }
        const orv::EntitiesManager& original = world.getEntitiesManager();
        const std::vector<uint32_t> words = infoWordsOf(original);
        ASSERT_TRUE(original.isFreeListSound()) << "churn " << churn;
        ASSERT_EQ(original.getFirstFreeHandleEntry(), orv::EntitiesManager::findFreeListHead(words.data(), capacity))
            << "churn " << churn;

        orv::Simulation fresh(capacity, 0);
        orv::EntitiesManager& copy = fresh.touchEntitiesManager();
        for (int i = 0; i < capacity; ++i)
        {
            copy.touchHandleEntries()[i] = original.getHandleEntries()[i];
        }
        copy.rebuildFreeListHead();
        ASSERT_EQ(original.getFirstFreeHandleEntry(), copy.getFirstFreeHandleEntry()) << "churn " << churn;
        ASSERT_TRUE(copy.isFreeListSound()) << "churn " << churn;
    }
}

TEST_F(EntitiesManagerTest, FreeListRuleCoversTheCycleTheFullTableAndBrokenLists)
{
    using orv::EntitiesManager;
    using orv::HandleEntry;
    // A new table: every entry free, and the last link back to 0 closes a cycle through the head.
    const std::vector<uint32_t> fresh = infoWordsOf(manager());
    EXPECT_EQ(0u, EntitiesManager::findFreeListHead(fresh.data(), fresh.size()));
    EXPECT_TRUE(EntitiesManager::isFreeListSound(fresh.data(), fresh.size(), 0));
    EXPECT_FALSE(EntitiesManager::isFreeListSound(fresh.data(), fresh.size(), 3));

    // A full table: no free entry, head 0.
    for (int i = 0; i < 4; ++i)
    {
        _simulation->createEntity(_typeA);
        _simulation->createEntity(_typeB);
    }
    const std::vector<uint32_t> full = infoWordsOf(manager());
    EXPECT_EQ(0u, EntitiesManager::findFreeListHead(full.data(), full.size()));
    EXPECT_TRUE(EntitiesManager::isFreeListSound(full.data(), full.size(), 0));
    EXPECT_TRUE(manager().isFreeListSound());

    // Free entries 2 -> 5 -> 0 (end), entry 0 active.
    uint32_t words[6] = {};
    HandleEntry active;
    active._active = 1;
    words[0] = words[1] = words[3] = words[4] = active.getHandleInfoAsUint32();
    words[2] = HandleEntry(5).getHandleInfoAsUint32();
    words[5] = HandleEntry(0).getHandleInfoAsUint32();
    EXPECT_EQ(2u, EntitiesManager::findFreeListHead(words, 6));
    EXPECT_TRUE(EntitiesManager::isFreeListSound(words, 6, 2));
    // A free entry that the chain misses.
    words[4] = HandleEntry(0).getHandleInfoAsUint32();
    EXPECT_FALSE(EntitiesManager::isFreeListSound(words, 6, 2));
    // A link past the table.
    words[4] = active.getHandleInfoAsUint32();
    words[5] = HandleEntry(9).getHandleInfoAsUint32();
    EXPECT_FALSE(EntitiesManager::isFreeListSound(words, 6, 2));
    // A loop that comes back to the head.
    words[5] = HandleEntry(2).getHandleInfoAsUint32();
    EXPECT_FALSE(EntitiesManager::isFreeListSound(words, 6, 2));
    EXPECT_FALSE(EntitiesManager::isFreeListSound(words, 6, 7));
}

TEST_F(EntitiesManagerTest, RebuildingKeepsNewIdsAboveEveryIdPresent)
{
    const EntityHandle first = _simulation->createEntity(_typeA);
    _simulation->createEntity(_typeA);
    _simulation->getEntity(first)->setId(6);
    const unsigned int head = manager().getFirstFreeHandleEntry();
    manager().rebuildFreeListHead();
    EXPECT_EQ(head, manager().getFirstFreeHandleEntry());
    EXPECT_EQ(7, _simulation->getEntity(_simulation->createEntity(_typeA))->getId());
}

TEST_F(EntitiesManagerTest, ResolvingReadsNothingOutsideTheTablesAndGivesNullThere)
{
    // A type of a larger world, resolved against this one: eight entries, two entities.
    orv::Simulation large(64, 0);
    const int typeId = large.createEntityType(64);
    std::vector<EntityHandle> handles;
    for (int i = 0; i < 12; ++i)
    {
        handles.push_back(large.createEntity(typeId));
    }
    large.destroyEntity(handles[1]);
    _simulation->createEntity(_typeA);
    _simulation->createEntity(_typeA);
    // Entries 3 and 4 hold dense positions outside the array.
    manager().touchHandleEntries()[3]._contentIndex = 2;
    manager().touchHandleEntries()[4]._contentIndex = -1;

    orv::EntityType* type = large.getEntityType(typeId);
    type->resolveEntityHandles(*_simulation);
    orv::Entity* entities = &manager().touchEntities()[0];
    EXPECT_EQ(&entities[0], type->getEntity(0));
    // The free slot's zero handle goes through entry 0.
    EXPECT_FALSE(type->isIndexInUse(1));
    EXPECT_EQ(&entities[0], type->getEntity(1));
    EXPECT_EQ(&entities[manager().getHandleEntries()[2]._contentIndex], type->getEntity(2));
    EXPECT_EQ(nullptr, type->getEntity(3));
    EXPECT_EQ(nullptr, type->getEntity(4));
    for (int slot = 8; slot < 12; ++slot)
    {
        EXPECT_EQ(nullptr, type->getEntity(slot)) << slot;
    }

    // A world without entries resolves everything to null, free slots included.
    orv::Simulation empty(0, 0);
    type->resolveEntityHandles(empty);
    for (int slot = 0; slot < 12; ++slot)
    {
        EXPECT_EQ(nullptr, type->getEntity(slot)) << slot;
    }
}

using EntitiesManagerDeathTest = EntitiesManagerTest;

TEST_F(EntitiesManagerDeathTest, CreatingPastTheCapacityIsFatalWithTheCapacity)
{
    for (int i = 0; i < 4; ++i)
    {
        _simulation->createEntity(_typeA);
        _simulation->createEntity(_typeB);
    }
    EXPECT_DEATH(_simulation->createEntity(_typeA),
                 "entityIndex < static_cast<int>\\(_entities.capacity\\(\\)\\).*\\n.*"
                 "Can't create a new entity: entity max count \\(8\\) already reached.");
}

TEST_F(EntitiesManagerDeathTest, UnknownTypeIsFatalEvenPastTheSignedRange)
{
    const char* condition = "entityTypeId < static_cast<unsigned int>\\(_simulation->getEntityTypeCount\\(\\)\\)";
    EXPECT_DEATH(_simulation->createEntity(5), condition);
    EXPECT_DEATH(_simulation->createEntity(0x80000000u), condition);
    EXPECT_DEATH(_simulation->createEntity(0xFFFFFFFFu), condition);
}

TEST_F(EntitiesManagerDeathTest, DestroyingTwiceIsFatal)
{
    const EntityHandle handle = _simulation->createEntity(_typeA);
    _simulation->destroyEntity(handle);
    EXPECT_DEATH(_simulation->destroyEntity(handle), "_handleEntries\\[handleIndex\\]._active == true");
}

TEST_F(EntitiesManagerDeathTest, AStaleHandleIsFatalOnceItsEntryIsReused)
{
    const EntityHandle stale = _simulation->createEntity(_typeA);
    _simulation->destroyEntity(stale);
    const EntityHandle reused = _simulation->createEntity(_typeA);
    ASSERT_EQ(stale._index, reused._index);
    const char* condition = "_handleEntries\\[handleIndex\\]._counter == handle._counter";
    EXPECT_DEATH(_simulation->destroyEntity(stale), condition);
    EXPECT_DEATH(_simulation->initEntity(stale), condition);
}

TEST_F(EntitiesManagerDeathTest, AHandlePastTheTableIsFatalBeforeAnyRead)
{
    _simulation->createEntity(_typeA);
    // Index 8 is one past this world's table, as a handle of a larger world may be.
    const EntityHandle foreign(8, 1, 0);
    EXPECT_FALSE(manager().isValidEntityHandle(foreign));
    EXPECT_FALSE(manager().isValidEntityHandle(EntityHandle(0xFFFFF, 1, 0)));
    const char* condition = "handle._index < _handleEntries.size\\(\\)";
    EXPECT_DEATH(_simulation->destroyEntity(foreign), condition);
    EXPECT_DEATH(_simulation->initEntity(foreign), condition);
    EXPECT_DEATH(manager().getEntity(foreign), condition);
    EXPECT_DEATH(manager().getEntityIndex(foreign), condition);
}

TEST_F(EntitiesManagerDeathTest, AFullEntityTypeIsFatal)
{
    for (int i = 0; i < 4; ++i)
    {
        _simulation->createEntity(_typeA);
    }
    EXPECT_DEATH(_simulation->createEntity(_typeA), "entityHandleCount < getMaxCount\\(\\)");
}

TEST_F(EntitiesManagerDeathTest, ANegativeTypeCapacityIsFatal)
{
    EXPECT_DEATH(_simulation->createEntityType(-1), "maxCount >= 0");
    orv::EntityType* type = _simulation->getEntityType(_typeA);
    EXPECT_DEATH(type->allocate(-1), "capacity >= 0");
    EXPECT_DEATH(type->setEntityArraysCapacity(-1), "value >= 0");
}

TEST_F(EntitiesManagerDeathTest, DestroyingThroughAGroupHandleIsFatal)
{
    EXPECT_DEATH(_simulation->destroyEntity(EntityHandle(0, 1, 1)), "handle._isGroup == 0");
}

TEST_F(EntitiesManagerDeathTest, ResizingWithAThirdContextIsFatal)
{
    _simulation->addContext(new orvtest::RecordingContext(_journal, "nav"));
    EXPECT_DEATH(manager().setMaxEntities(16), "_simulation->getContextCount\\(\\) == 2");
}

TEST_F(EntitiesManagerTest, SetMaxEntitiesEmptiesAndResizesTheManager)
{
    _simulation->createEntity(_typeA);
    manager().setMaxEntities(32);
    EXPECT_EQ(0, _simulation->getEntityCount());
    EXPECT_EQ(32, _simulation->getMaxEntities());
    EXPECT_EQ(0u, manager().getFirstFreeHandleEntry());
    EXPECT_EQ(1u, manager().getHandleEntries()[0]._nextFreeIndex);
    manager().setMaxEntities(0);
    EXPECT_EQ(0, _simulation->getMaxEntities());
    EXPECT_TRUE(manager().getHandleEntries().empty());
}

} // namespace
