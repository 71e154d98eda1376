#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/ground/orvAbstractGround.h"
#include "engine/ground/orvNoGround.h"
#include "engine/simulation/orvSimulation.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvRecordingContext.h"

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
    // The moved entity draws from the generator state that the destroyed entity left in the slot.
    orv::RandomNumberGenerator expected = generatorOfB;
    EXPECT_EQ(expected.rand(), moved->touchRNG().rand());
    // Its type's slot points at its new place.
    orv::EntityType* type = _simulation->getEntityType(_typeB);
    EXPECT_EQ(moved, type->getEntity(moved->getIndexInEntityType()));
    EXPECT_TRUE(manager().isValidEntityHandle(a));
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

TEST_F(EntitiesManagerDeathTest, UnknownTypeIsFatal)
{
    EXPECT_DEATH(_simulation->createEntity(5), "entityTypeId < _simulation->getEntityTypeCount\\(\\)");
}

TEST_F(EntitiesManagerDeathTest, DestroyingTwiceIsFatal)
{
    const EntityHandle handle = _simulation->createEntity(_typeA);
    _simulation->destroyEntity(handle);
    EXPECT_DEATH(_simulation->destroyEntity(handle), "_handleEntries\\[handleIndex\\]._active == true");
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
