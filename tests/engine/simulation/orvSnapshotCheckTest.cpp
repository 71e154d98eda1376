#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "engine/simulation/orvSnapshotCheck.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLoadedWorldUse.h"
#include "support/orvLogCapture.h"

namespace
{

using orv::Simulation;
using orv::SnapshotCheckReport;
typedef std::vector<uint8_t> Bytes;

/// A host context that declares no class descriptor of its own.
class BareContext : public orv::IContext
{
public:
    BareContext() : orv::IContext(true, false) {}
    void setContextType() override { assignContextType(ContextType::NAVIGATION); }
    void allocateComponentsArrays() override {}
    void deallocateComponentsArrays() override {}
    void doInit() override {}
    void doUpdate(orv::Time) override {}
    void doFinish() override {}
};

class SnapshotCheckTest : public orvtest::CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        _path = orvtest::tempFilePath("orvSnapshotCheckTest");
    }
    void TearDown() override
    {
        std::remove(_path.c_str());
        CoreTest::TearDown();
    }

    /// Two entity types of four slots and three entities in a world of sixteen.
    static void buildSmallWorld(Simulation& world)
    {
        world.createEntityType(4);
        world.createEntityType(4);
        world.createEntity(0);
        world.createEntity(1);
        world.createEntity(1);
    }

    Bytes save(const Simulation& world)
    {
        EXPECT_TRUE(world.exportToBinary(_path.c_str()));
        std::ifstream file(_path, std::ios::binary);
        return Bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    }

    void writeFile(const Bytes& bytes, size_t size)
    {
        std::ofstream file(_path, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(size));
    }

    /// Loads what the check accepted and uses the world as a host would, to its end.
    static void loadAndUse(const uint8_t* data, size_t size)
    {
        Simulation* world = new Simulation(4, 0);
        ASSERT_TRUE(Simulation::importFromValidatedBinaryData(data, size, *world));
        orvtest::useLoadedWorld(world);
    }

    std::string _path;
};

TEST_F(SnapshotCheckTest, EverySnapshotTheLibraryWritesPasses)
{
    Simulation world(16, 0);
    buildSmallWorld(world);
    const Bytes small = save(world);
    EXPECT_TRUE(Simulation::checkBinaryData(small.data(), small.size()));

    // Churned: free slots, recycled indices, a free list that no longer runs in order.
    for (int i = 0; i < 4; ++i)
    {
        world.createEntity(static_cast<unsigned int>(i % 2));
    }
    world.destroyEntity(world.getEntitiesManager().getEntity(2)->getHandle());
    world.destroyEntity(world.getEntitiesManager().getEntity(0)->getHandle());
    world.createEntity(0);
    const Bytes churned = save(world);
    SnapshotCheckReport report;
    EXPECT_TRUE(Simulation::checkBinaryData(churned.data(), churned.size(), &report)) << report._reason.c_str();

    // Running: the world and its contexts are initialised together.
    orv::SimulationsProcessor processor;
    Simulation* running = new Simulation(8, 0);
    buildSmallWorld(*running);
    processor.addSimulation(running);
    processor.update(0.04);
    const Bytes initialised = save(*running);
    EXPECT_TRUE(Simulation::checkBinaryData(initialised.data(), initialised.size(), &report)) << report._reason.c_str();
    processor.finish();
}

TEST_F(SnapshotCheckTest, EveryPrefixIsRefusedWithItsOffset)
{
    Simulation world(16, 0);
    buildSmallWorld(world);
    const Bytes bytes = save(world);
    for (size_t size = 0; size < bytes.size(); ++size)
    {
        SnapshotCheckReport report;
        ASSERT_FALSE(Simulation::checkBinaryData(bytes.data(), size, &report)) << "prefix of " << size;
        EXPECT_LE(report._offset, size);
        EXPECT_FALSE(report._reason.empty());
    }
    SnapshotCheckReport report;
    EXPECT_TRUE(Simulation::checkBinaryData(bytes.data(), bytes.size(), &report));
    EXPECT_TRUE(report._valid);
    EXPECT_TRUE(report._reason.empty());
}

TEST_F(SnapshotCheckTest, AnyChangedByteIsRefusedOrLoadsIntoAWorkingWorld)
{
    Simulation world(16, 0);
    buildSmallWorld(world);
    world.destroyEntity(world.getEntitiesManager().getEntity(0)->getHandle());
    const Bytes bytes = save(world);
    int loaded = 0;
    for (size_t at = 0; at < bytes.size(); ++at)
    {
        for (uint8_t value : {uint8_t(bytes[at] ^ 0xFF), uint8_t(bytes[at] + 1), uint8_t(0), uint8_t(0x80)})
        {
            if (value == bytes[at])
            {
                continue;
            }
            Bytes changed = bytes;
            changed[at] = value;
            if (Simulation::checkBinaryData(changed.data(), changed.size()))
            {
                ++loaded;
                loadAndUse(changed.data(), changed.size());
            }
        }
    }
    // Positions, orientations, names and seeds may take any value: such changes load.
    EXPECT_GT(loaded, 0);
}

TEST_F(SnapshotCheckTest, CraftedFilesAreRefusedWithTheirReason)
{
    Simulation world(16, 0);
    buildSmallWorld(world);
    const Bytes bytes = save(world);
    SnapshotCheckReport report;

    // The entity array's count follows the reserved size (16) and the manager's id and attribute count (3).
    const uint8_t managerHead[] = {3, 0, 0, 0, 16, 0, 0, 0, 3, 0, 0, 0};
    const auto found = std::search(bytes.begin(), bytes.end(), std::begin(managerHead), std::end(managerHead));
    ASSERT_NE(bytes.end(), found);
    Bytes huge = bytes;
    const uint32_t count = 0xFFFFFFF0u;
    memcpy(&huge[(found - bytes.begin()) + 8], &count, sizeof(count));
    EXPECT_FALSE(Simulation::checkBinaryData(huge.data(), huge.size(), &report));
    EXPECT_NE(nullptr, strstr(report._reason.c_str(), "larger than the")) << report._reason.c_str();
    EXPECT_EQ(static_cast<uint64_t>(found - bytes.begin()) + 8, report._offset);

    // The first entity type, reached through its first entity, given the class of the world.
    const orv::Uuid& typeId = orv::EntityType::getClassRTTI()->getTypeID();
    const uint8_t* typeBytes = reinterpret_cast<const uint8_t*>(&typeId);
    const auto typeAt = std::search(bytes.begin(), bytes.end(), typeBytes, typeBytes + sizeof(orv::Uuid));
    ASSERT_NE(bytes.end(), typeAt);
    Bytes wrongClass = bytes;
    memcpy(&wrongClass[typeAt - bytes.begin()], &Simulation::getClassRTTI()->getTypeID(), sizeof(orv::Uuid));
    EXPECT_FALSE(Simulation::checkBinaryData(wrongClass.data(), wrongClass.size(), &report));
    EXPECT_NE(nullptr, strstr(report._reason.c_str(), "orv::Simulation stands where")) << report._reason.c_str();

    Bytes unknownClass = bytes;
    unknownClass[typeAt - bytes.begin()] ^= 0x5A;
    EXPECT_FALSE(Simulation::checkBinaryData(unknownClass.data(), unknownClass.size(), &report));
    EXPECT_NE(nullptr, strstr(report._reason.c_str(), "is not a registered class")) << report._reason.c_str();

    // The entities manager, read by value inside the world, given the world's own id: the reader would hand every
    // pointer to the world the manager's address instead. The generator takes 12 bytes, the world's id, attribute
    // count, times, frame and flag 29 more.
    Bytes sharedId = bytes;
    memcpy(&sharedId[41], &bytes[12], sizeof(uint32_t));
    EXPECT_FALSE(Simulation::checkBinaryData(sharedId.data(), sharedId.size(), &report));
    EXPECT_NE(nullptr, strstr(report._reason.c_str(), "is given to two objects")) << report._reason.c_str();
    EXPECT_EQ(41u, report._offset);

    Bytes trailing = bytes;
    trailing.push_back(0);
    EXPECT_FALSE(Simulation::checkBinaryData(trailing.data(), trailing.size(), &report));
    EXPECT_FALSE(Simulation::checkBinaryData(nullptr, 0, &report));
}

TEST_F(SnapshotCheckTest, ARefusedFileLeavesTheWorldAsItWas)
{
    Simulation saved(16, 0);
    buildSmallWorld(saved);
    const Bytes bytes = save(saved);

    Simulation target(8, 0);
    target.createEntityType(2);
    const orv::EntityHandle kept = target.createEntity(0);
    orv::getRNG().setSeed(5);
    writeFile(bytes, bytes.size() / 2);
    SnapshotCheckReport report;
    ASSERT_FALSE(Simulation::checkBinaryData(bytes.data(), bytes.size() / 2, &report));
    const std::string missing = _path + ".missing";
    {
        orvtest::LogCapture log;
        EXPECT_FALSE(target.loadAndImportFromBinary(_path.c_str()));
        EXPECT_FALSE(target.loadAndImportFromBinary(missing.c_str()));
        // The host learns from the error line which file was refused, where and why.
        const std::string at = "at byte " + std::to_string(report._offset);
        EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_ERROR, {_path.c_str(), at.c_str(), report._reason.c_str()}))
            << log.describe();
        EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_ERROR, {missing.c_str(), "no such file"})) << log.describe();
        // Writing where no file can be made keeps the result every snapshot operation gives, and says why.
        const std::string unwritable = _path + ".missing/snapshot.bin";
        EXPECT_TRUE(target.exportToBinary(unwritable.c_str()));
        EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_ERROR, {unwritable.c_str(), "not written"})) << log.describe();
    }
    EXPECT_EQ(5u, orv::getRNG().getSeed());
    EXPECT_EQ(1, target.getEntityTypeCount());
    EXPECT_EQ(8, target.getMaxEntities());
    EXPECT_TRUE(target.getEntitiesManager().isValidEntityHandle(kept));

    // A good file replaces the populated world whole: its types are freed, not leaked.
    writeFile(bytes, bytes.size());
    ASSERT_TRUE(target.loadAndImportFromBinary(_path.c_str()));
    EXPECT_EQ(2, target.getEntityTypeCount());
    EXPECT_EQ(3, target.getEntityCount());
    EXPECT_EQ(16, target.getMaxEntities());
}

TEST_F(SnapshotCheckTest, AContextWithoutItsOwnDescriptorIsLeftOutOfTheFile)
{
    Simulation world(16, 0);
    world.addContext(new BareContext());
    buildSmallWorld(world);
    ASSERT_EQ(3, world.getContextCount());
    orvtest::LogCapture log;
    const Bytes bytes = save(world);
    EXPECT_EQ(3, world.getContextCount());
    EXPECT_EQ(1, log.countLines(orv::LogSeverity::LOG_WARNING, {"BareContext", "left out", _path.c_str()}))
        << log.describe();
    // The library's own contexts have descriptors: only the bare one is named.
    EXPECT_EQ(1, log.countLines(orv::LogSeverity::LOG_WARNING, {"has no class descriptor"})) << log.describe();
    ASSERT_TRUE(Simulation::checkBinaryData(bytes.data(), bytes.size()));

    Simulation loaded(4, 0);
    ASSERT_TRUE(loaded.loadAndImportFromBinary(_path.c_str()));
    EXPECT_EQ(2, loaded.getContextCount());
    EXPECT_EQ(3, loaded.getEntityCount());
}

} // namespace
