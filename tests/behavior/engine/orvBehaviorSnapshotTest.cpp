#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/engine/orvAbstractBehavior.h"
#include "behavior/engine/orvAbstractBehaviorContainer.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "engine/simulation/orvSnapshotCheck.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLoadedWorldUse.h"
#include "support/orvWanderScene.h"

namespace
{

using orv::Simulation;
typedef std::vector<uint8_t> Bytes;

/// Snapshots of worlds whose types run the wander graph.
class BehaviorSnapshotTest : public orvtest::CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        orvtest::registerWanderClasses(true);
        _path = orvtest::tempFilePath("orvBehaviorSnapshotTest");
    }
    void TearDown() override
    {
        std::remove(_path.c_str());
        orvtest::registerWanderClasses(false);
        CoreTest::TearDown();
    }
    Bytes save(const Simulation& world)
    {
        EXPECT_TRUE(world.exportToBinary(_path.c_str()));
        std::ifstream file(_path, std::ios::binary);
        return Bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    }
    static void run(orv::SimulationsProcessor& processor, int frames)
    {
        for (int i = 0; i < frames; ++i)
        {
            processor.update(0.04);
        }
    }
    /// Every status row of every node of every type's graph, walked through the containers, as numbers.
    static std::vector<double> graphState(const Simulation& world)
    {
        std::vector<double> state;
        for (int type = 0; type < world.getEntityTypeCount(); ++type)
        {
            for (const auto& behavior : world.getEntityType(type)->getBehaviorGraph().getBehaviors())
            {
                addNodeState(*behavior, state);
            }
        }
        return state;
    }
    static void addNodeState(const orv::AbstractBehavior& node, std::vector<double>& state)
    {
        for (const orv::AbstractBehavior::BehaviorStatusData& row : node.getStatusData())
        {
            state.insert(state.end(), {row._time, double(row._runStatus), double(row._resultStatus),
                                       double(row._nextBehaviorSelectedIdPerInstance)});
        }
        if (const auto* container = dynamic_cast<const orv::AbstractBehaviorContainer*>(&node))
        {
            for (const auto& child : container->getChildrenBehaviors())
            {
                addNodeState(*child, state);
            }
        }
    }

    std::string _path;
};

TEST_F(BehaviorSnapshotTest, AWorldRunByAGraphComesBackWithEveryRowAndGoesOnRunning)
{
    orv::getRNG().setSeed(7);
    orv::SimulationsProcessor processor;
    processor.init(2);
    Simulation* world = orvtest::buildWanderingWorld(60, 2, true);
    processor.addSimulation(world);
    run(processor, 30);
    const Bytes bytes = save(*world);
    const std::vector<double> savedState = graphState(*world);
    const std::vector<uint32_t> savedPoses = orvtest::getPosesInHandleOrder(*world);
    processor.finish();

    ASSERT_TRUE(Simulation::checkBinaryData(bytes.data(), bytes.size()));
    Simulation* loaded = new Simulation(4, 0);
    processor.init(2);
    processor.addSimulation(loaded);
    ASSERT_TRUE(loaded->loadAndImportFromBinary(_path.c_str()));
    const orv::AbstractBehavior& root = *loaded->getEntityType(0)->getBehaviorGraph().getBehaviors()[0];
    EXPECT_EQ(&loaded->getEntityType(0)->getBehaviorGraph(), root.getBehaviorGraph());
    EXPECT_TRUE(root.isRunning(0));
    EXPECT_TRUE(graphState(*loaded) == savedState);
    EXPECT_TRUE(orvtest::getPosesInHandleOrder(*loaded) == savedPoses);
    // Entity generators come back from their seeds, so the walk goes on differently, but it goes on.
    run(processor, 40);
    EXPECT_TRUE(root.isRunning(0));
    EXPECT_FALSE(graphState(*loaded) == savedState);
    EXPECT_FALSE(orvtest::getPosesInHandleOrder(*loaded) == savedPoses);
    processor.finish();
}

TEST_F(BehaviorSnapshotTest, AContainerThatHoldsItselfOrRowsBeyondItsTypeAreRefused)
{
    {
        Simulation world(8, 0);
        world.createEntityType(8);
        orv::CompositeBehavior* root = new orv::CompositeBehavior();
        world.getEntityType(0)->addBehavior(root, true);
        world.createEntity(0);
        // A cycle of ownership no edit allows, as a hostile file would make it.
        root->touchChildrenBehaviors().push_back(orv::SmartPointer<orv::AbstractBehavior>(root));
        const Bytes bytes = save(world);
        root->touchChildrenBehaviors().pop_back();
        EXPECT_FALSE(Simulation::checkBinaryData(bytes.data(), bytes.size()));
    }
    {
        Simulation world(8, 0);
        world.createEntityType(8);
        orv::CompositeBehavior* root = new orv::CompositeBehavior();
        world.getEntityType(0)->addBehavior(root, true);
        world.createEntity(0);
        root->setBehaviorStatusDataArrayCapacity(9);
        const Bytes bytes = save(world);
        EXPECT_FALSE(Simulation::checkBinaryData(bytes.data(), bytes.size()));
    }
}

TEST_F(BehaviorSnapshotTest, ANodeThatOnlyAFollowerArrowReachesIsRefused)
{
    // The arrow does not own its end: read back, that node would belong to nothing.
    Simulation world(8, 0);
    world.createEntityType(8);
    orv::CompositeBehavior* root = new orv::CompositeBehavior();
    orv::SmartPointer<orv::AbstractBehavior> stray(new orv::CompositeBehavior());
    ASSERT_TRUE(root->touchFinalBehavior() != nullptr);
    root->touchInitialBehavior()->touchNextBehaviorCandidates().push_back(stray.getImpl());
    world.getEntityType(0)->addBehavior(root, true);
    const Bytes bytes = save(world);
    orv::SnapshotCheckReport report;
    EXPECT_FALSE(Simulation::checkBinaryData(bytes.data(), bytes.size(), &report));
    EXPECT_NE(std::string::npos, std::string(report._reason.c_str()).find("nothing would own it"))
        << report._reason.c_str();
    root->touchInitialBehavior()->touchNextBehaviorCandidates().pop_back();
}

TEST_F(BehaviorSnapshotTest, EveryCutOfAGraphSnapshotIsRefusedOrLoadsIntoAWorldThatRuns)
{
    orv::getRNG().setSeed(3);
    Simulation* world = orvtest::buildWanderingWorld(4, 1, true);
    const Bytes bytes = save(*world);
    delete world;
    for (size_t size = 0; size < bytes.size(); size += 3)
    {
        if (Simulation::checkBinaryData(bytes.data(), size))
        {
            Simulation* loaded = new Simulation(4, 0);
            Simulation::importFromValidatedBinaryData(bytes.data(), size, *loaded);
            orvtest::useLoadedWorld(loaded);
        }
    }
}

} // namespace
