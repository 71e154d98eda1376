#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "behavior/engine/orvBehaviorContext.h"
#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "knowledgeBase/orvKBContext.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "support/orvCoreTestSupport.h"

namespace
{

using orv::EntityHandle;
using orv::Simulation;

/// What a snapshot must bring back of one entity.
struct EntityRecord
{
    float x, y, z;
    float bodyY, bodyW, moveY, moveW;
    uint32_t handle;
    int slot;
    int typeId;
    uint32_t seed;
    float scale;
};

std::vector<EntityRecord> recordEntities(const Simulation& simulation)
{
    std::vector<EntityRecord> records;
    for (const orv::Entity& entity : simulation.getEntitiesManager().getEntities())
    {
        records.push_back({entity.getPosition().x, entity.getPosition().y, entity.getPosition().z,
                           entity.getBodyOrientation().y, entity.getBodyOrientation().w, entity.getMoveOrientation().y,
                           entity.getMoveOrientation().w, entity.getHandle().getUint32(), entity.getIndexInEntityType(),
                           entity.getEntityType() != nullptr ? entity.getEntityType()->getEntityTypeId() : -1,
                           entity.getRNG().getSeed(), entity.getScale()});
    }
    return records;
}

bool operator==(const EntityRecord& a, const EntityRecord& b)
{
    return a.x == b.x && a.y == b.y && a.z == b.z && a.bodyY == b.bodyY && a.bodyW == b.bodyW && a.moveY == b.moveY &&
           a.moveW == b.moveW && a.handle == b.handle && a.slot == b.slot && a.typeId == b.typeId && a.seed == b.seed &&
           a.scale == b.scale;
}

class SimulationSnapshotTest : public orvtest::CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        _path = orvtest::tempFilePath("orvSimulationSnapshotTest");
    }
    void TearDown() override
    {
        std::remove(_path.c_str());
        CoreTest::TearDown();
    }

    /// Three types, entities created, some destroyed in the middle and at the end, and others created again.
    void buildWorld(Simulation& simulation)
    {
        orv::getRNG().setSeed(99);
        for (int t = 0; t < 3; ++t)
        {
            orv::EntityType* type = simulation.getEntityType(simulation.createEntityType(20 + t));
            type->setScaleRange(0.8f, 1.2f + 0.1f * static_cast<float>(t));
            type->setHeight(1.5f + 0.1f * static_cast<float>(t));
            type->setName(orv::OrvString("type") + t);
        }
        std::vector<EntityHandle> handles;
        for (int i = 0; i < 30; ++i)
        {
            handles.push_back(simulation.createEntity(static_cast<unsigned int>(i % 3)));
        }
        for (int i : {4, 17, 29, 0})
        {
            simulation.destroyEntity(handles[i]);
        }
        for (int i = 0; i < 3; ++i)
        {
            simulation.createEntity(static_cast<unsigned int>(i));
        }
        int n = 0;
        for (orv::Entity& entity : simulation.touchEntitiesManager().touchEntities())
        {
            const float f = static_cast<float>(n++);
            entity.setPosition(orv::Vector3(f, 0.5f * f, -f));
            entity.setMoveOrientation(orv::Quaternion(0.0f, 0.6f, 0.0f, 0.8f));
            entity.setBodyOrientation(orv::Quaternion(0.0f, 0.8f, 0.0f, 0.6f));
        }
    }

    std::string _path;
};

TEST_F(SimulationSnapshotTest, BinarySnapshotBringsBackTheWholeWorld)
{
    Simulation saved(64, 0);
    buildWorld(saved);
    const std::vector<EntityRecord> expected = recordEntities(saved);
    const uint32_t processSeed = orv::getRNG().getSeed();
    ASSERT_TRUE(saved.exportToBinary(_path.c_str()));

    orv::getRNG().setSeed(12345);
    Simulation loaded(8, 0);
    ASSERT_TRUE(loaded.loadAndImportFromBinary(_path.c_str()));

    EXPECT_EQ(processSeed, orv::getRNG().getSeed());
    ASSERT_EQ(saved.getEntityCount(), loaded.getEntityCount());
    EXPECT_EQ(64, loaded.getMaxEntities());
    const std::vector<EntityRecord> actual = recordEntities(loaded);
    for (size_t i = 0; i < expected.size(); ++i)
    {
        EXPECT_TRUE(expected[i] == actual[i]) << "entity " << i;
    }

    // The handle tables match word for word, and every handle still finds its entity.
    const orv::Array<orv::HandleEntry>& savedEntries = saved.getEntitiesManager().getHandleEntries();
    const orv::Array<orv::HandleEntry>& loadedEntries = loaded.getEntitiesManager().getHandleEntries();
    ASSERT_EQ(savedEntries.size(), loadedEntries.size());
    for (size_t i = 0; i < savedEntries.size(); ++i)
    {
        EXPECT_EQ(savedEntries[i].getHandleInfoAsUint32(), loadedEntries[i].getHandleInfoAsUint32());
        EXPECT_EQ(savedEntries[i]._contentIndex, loadedEntries[i]._contentIndex);
    }
    for (const orv::Entity& entity : loaded.getEntitiesManager().getEntities())
    {
        EXPECT_TRUE(loaded.getEntitiesManager().isValidEntityHandle(entity.getHandle()));
        EXPECT_EQ(&entity, loaded.touchEntitiesManager().getEntity(entity.getHandle()));
    }

    // The types come back with their slots, their free slots, and pointers rebuilt into the loaded array.
    ASSERT_EQ(3, loaded.getEntityTypeCount());
    for (int t = 0; t < 3; ++t)
    {
        const orv::EntityType* before = saved.getEntityType(t);
        const orv::EntityType* after = loaded.getEntityType(t);
        EXPECT_EQ(t, after->getEntityTypeId());
        EXPECT_EQ(&loaded, after->getSimulation());
        EXPECT_EQ(before->getName(), after->getName());
        EXPECT_EQ(before->getHeight(), after->getHeight());
        EXPECT_EQ(before->getScaleMax(), after->getScaleMax());
        EXPECT_EQ(before->getMaxCount(), after->getMaxCount());
        EXPECT_TRUE(before->getRecycledIndices() == after->getRecycledIndices());
        ASSERT_EQ(before->getHandleCount(), after->getHandleCount());
        for (int slot = 0; slot < after->getHandleCount(); ++slot)
        {
            EXPECT_EQ(before->getEntityHandle(slot), after->getEntityHandle(slot));
            if (after->isIndexInUse(slot))
            {
                const orv::Entity* entity = after->getEntity(slot);
                EXPECT_EQ(loaded.touchEntitiesManager().getEntity(after->getEntityHandle(slot)), entity);
                EXPECT_EQ(after, entity->getEntityType());
            }
        }
    }

    // The world's contexts are the file's, in their type order, and the defaults are known again.
    ASSERT_EQ(2, loaded.getContextCount());
    EXPECT_EQ(loaded.getBehaviorContext(), loaded.getContextByIndex(0));
    EXPECT_EQ(loaded.getKBContext(), loaded.getContextByIndex(1));
    EXPECT_EQ(orv::IContext::ContextType::BEHAVIOR, loaded.getContextByIndex(0)->getContextType());
    EXPECT_EQ(&loaded, loaded.getContextByIndex(0)->getSimulation());

    // The head of the free list is not in the file: it follows from the table, so both worlds hand out the same
    // handles from here on.
    EXPECT_EQ(saved.getEntitiesManager().getFirstFreeHandleEntry(),
              loaded.getEntitiesManager().getFirstFreeHandleEntry());
    for (Simulation* world : {&saved, &loaded})
    {
        orv::getRNG().setSeed(77);
        for (int i = 0; i < 5; ++i)
        {
            world->createEntity(static_cast<unsigned int>(i % 3));
        }
    }
    loaded.destroyEntity(loaded.getEntitiesManager().getEntity(3)->getHandle());
    saved.destroyEntity(saved.getEntitiesManager().getEntity(3)->getHandle());
    EXPECT_TRUE(recordEntities(saved) == recordEntities(loaded));
}

TEST_F(SimulationSnapshotTest, MemoryImportMatchesTheFileImport)
{
    Simulation saved(32, 0);
    buildWorld(saved);
    ASSERT_TRUE(saved.exportToBinary(_path.c_str()));
    std::ifstream file(_path, std::ios::binary);
    const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());

    EXPECT_FALSE(Simulation::validateLoadedBinaryData(nullptr, bytes.size()));
    EXPECT_FALSE(Simulation::validateLoadedBinaryData(bytes.data(), 0));
    ASSERT_TRUE(Simulation::validateLoadedBinaryData(bytes.data(), bytes.size()));

    Simulation loaded(4, 0);
    ASSERT_TRUE(Simulation::importFromValidatedBinaryData(bytes.data(), bytes.size(), loaded));
    const std::vector<EntityRecord> expected = recordEntities(saved);
    const std::vector<EntityRecord> actual = recordEntities(loaded);
    ASSERT_EQ(expected.size(), actual.size());
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), actual.begin()));
}

TEST_F(SimulationSnapshotTest, RunningWorldSavedAndLoadedIntoARunningWorldRunsOn)
{
    orv::SimulationsProcessor processor;
    processor.init(2);
    Simulation* running = new Simulation(64, 0);
    buildWorld(*running);
    processor.addSimulation(running);
    for (int i = 0; i < 5; ++i)
    {
        processor.update(0.04);
    }
    ASSERT_TRUE(running->exportToBinary(_path.c_str()));
    const int count = running->getEntityCount();
    processor.finish();

    Simulation* target = new Simulation(8, 0);
    processor.addSimulation(target);
    ASSERT_TRUE(target->loadAndImportFromBinary(_path.c_str()));
    EXPECT_TRUE(target->isInitialized());
    EXPECT_EQ(5u, target->getCurrentFrame());
    processor.update(0.04);
    EXPECT_EQ(6u, target->getCurrentFrame());
    EXPECT_EQ(count, target->getEntityCount());
    processor.finish();
}

using SimulationSnapshotDeathTest = SimulationSnapshotTest;

TEST_F(SimulationSnapshotDeathTest, AnEmptyBufferIsRefusedByTheStream)
{
    orvtest::useThreadsafeDeathTests();
    Simulation simulation(4, 0);
    EXPECT_DEATH(Simulation::importFromValidatedBinaryData(nullptr, 0, simulation), "buffer != NULL");
}

} // namespace
