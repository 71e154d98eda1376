#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "support/orvAllocationCounter.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"
#include "support/orvWanderScene.h"

namespace
{

using orv::SimulationsProcessor;
using orvtest::buildWanderingWorld;

struct IndexRecorder
{
    std::vector<std::pair<int, int>> slices;
    std::atomic<int> visits{0};
    std::vector<std::atomic<int>> hits = std::vector<std::atomic<int>>(1000);
};

void recordSlice(orv::Time, void* userData, int first, int last)
{
    IndexRecorder* recorder = static_cast<IndexRecorder*>(userData);
    for (int i = first; i <= last; ++i)
    {
        recorder->hits[i].fetch_add(1);
    }
    recorder->visits.fetch_add(1);
}

void recordSliceInOrder(orv::Time, void* userData, int first, int last)
{
    static_cast<IndexRecorder*>(userData)->slices.emplace_back(first, last);
}

class SimulationsProcessorTest : public orvtest::CoreTest
{
protected:
    void TearDown() override
    {
        _processor.finish();
        CoreTest::TearDown();
    }

    /// Runs a churning wander world at 1, 2 and more threads than cores and expects the same end state.
    void expectSameEndStateAtEveryThreadCount(bool withGraph);

    SimulationsProcessor _processor;
};

TEST_F(SimulationsProcessorTest, FreshProcessorRunsOnTheCallingThreadAlone)
{
    EXPECT_EQ(1, _processor.getThreadCount());
    _processor.init(1);
    EXPECT_EQ(1, _processor.getThreadCount());
    _processor.init(0);
    EXPECT_EQ(1, _processor.getThreadCount());
    IndexRecorder recorder;
    _processor.processThreadable(&recordSliceInOrder, &recorder, 9, 4);
    EXPECT_EQ((std::vector<std::pair<int, int>>{{0, 3}, {4, 7}, {8, 9}}), recorder.slices);
    recorder.slices.clear();
    _processor.processThreadable(&recordSliceInOrder, &recorder, 2, 1);
    EXPECT_EQ((std::vector<std::pair<int, int>>{{0, 0}, {1, 1}, {2, 2}}), recorder.slices);
    recorder.slices.clear();
    _processor.processThreadable(&recordSliceInOrder, &recorder, -1, 1);
    EXPECT_TRUE(recorder.slices.empty());
}

TEST_F(SimulationsProcessorTest, TooManyThreadsAreBoundedToTheLogicalCPUsWithALogLine)
{
    orvtest::LogCapture capture;
    const int cpus = _processor.getLogicalCPUsCount();
    _processor.init(cpus + 3);
    EXPECT_EQ(cpus, _processor.getThreadCount());
    ASSERT_EQ(1u, capture.getLines().size());
    EXPECT_EQ("Cannot set Orvane Engine worker threads number below 1 or above logical CPUs of the computer, "
              "bounding value " +
                  std::to_string(cpus + 3) + " to [1," + std::to_string(cpus) +
                  "]. Note : ThreadCount includes main thread.",
              capture.getLines()[0]._message);
}

TEST_F(SimulationsProcessorTest, EveryIndexRunsExactlyOnceOnThePool)
{
    _processor.init(2);
    for (int round = 0; round < 50; ++round)
    {
        IndexRecorder recorder;
        _processor.processThreadable(&recordSlice, &recorder, 999, 7);
        EXPECT_EQ(143, recorder.visits.load());
        for (int i = 0; i < 1000; ++i)
        {
            ASSERT_EQ(1, recorder.hits[i].load()) << "index " << i << " in round " << round;
        }
    }
}

TEST_F(SimulationsProcessorTest, UpdateWithNoSimulationDoesNothing)
{
    _processor.update(0.04);
    EXPECT_TRUE(_processor.getSimulationsCollection().getBatchQueue().empty());
    EXPECT_EQ(0.0, _processor.getSimulationsCollection().getDuration());
}

TEST_F(SimulationsProcessorTest, OneTwoAndMoreThreadsThanCoresFromTheSameSeedEndInTheSameState)
{
    // Walked by the navigation context alone, then by a behaviour graph on each type.
    for (bool withGraph : {false, true})
    {
        SCOPED_TRACE(withGraph ? "behaviour graph" : "navigation context");
        expectSameEndStateAtEveryThreadCount(withGraph);
    }
}

void SimulationsProcessorTest::expectSameEndStateAtEveryThreadCount(bool withGraph)
{
    // More threads than cores are bounded to every core: the third run has the most workers the machine allows.
    const int threadCounts[] = {1, 2, _processor.getLogicalCPUsCount() + 1};
    std::vector<std::vector<uint32_t>> endStates;
    std::vector<uint32_t> firstFrameState;
    for (int threads : threadCounts)
    {
        orv::getRNG().setSeed(42);
        _processor.init(threads);
        orv::Simulation* simulation = buildWanderingWorld(2000, 2, withGraph);
        _processor.addSimulation(simulation);
        std::vector<orv::EntityHandle> handles;
        for (int frame = 0; frame < 30; ++frame)
        {
            _processor.update(0.04);
            if (frame == 0)
            {
                firstFrameState = orvtest::getPosesInHandleOrder(*simulation);
            }
            if (frame % 10 == 5)
            {
                // Churn: destroy some entities and create others, initialised through the pool.
                for (int i = 0; i < 50; ++i)
                {
                    simulation->destroyEntity(simulation->getEntitiesManager().getEntities()[i * 7].getHandle());
                }
                handles.clear();
                for (int i = 0; i < 50; ++i)
                {
                    handles.push_back(simulation->createEntity(static_cast<unsigned int>(i % 2)));
                }
                _processor.initEntities(simulation, handles.data(), static_cast<int>(handles.size()));
            }
        }
        endStates.push_back(orvtest::getPosesInHandleOrder(*simulation));
        _processor.finish();
    }
    ASSERT_EQ(2000u * 8u, endStates[0].size());
    // The crowd moved after its first frame.
    EXPECT_FALSE(firstFrameState == endStates[0]);
    EXPECT_TRUE(endStates[0] == endStates[1]);
    EXPECT_TRUE(endStates[0] == endStates[2]);
}

TEST_F(SimulationsProcessorTest, FramesAfterTheFirstAllocateNothing)
{
    _processor.init(2);
    _processor.addSimulation(buildWanderingWorld(5000, 2));
    _processor.update(0.04);
    _processor.update(0.04);
    orvtest::ScopedAllocationCount allocations;
    for (int frame = 0; frame < 20; ++frame)
    {
        _processor.update(0.04);
    }
    EXPECT_EQ(0, allocations.stop());
}

TEST_F(SimulationsProcessorTest, FinishDeletesTheSimulationsAndStopsTheWorkers)
{
    _processor.init(2);
    _processor.addSimulation(buildWanderingWorld(10, 2));
    _processor.update(0.04);
    _processor.finish();
    EXPECT_EQ(0, _processor.getSimulationsCollection().getSimulationCount());
    EXPECT_EQ(1, _processor.getThreadCount());
}

TEST_F(SimulationsProcessorTest, RemovedSimulationIsFinishedAndHandedBack)
{
    orv::Simulation* simulation = buildWanderingWorld(10, 2);
    _processor.addSimulation(simulation);
    EXPECT_EQ(&_processor.touchSimulationsCollection(), simulation->getSimulationsCollection());
    EXPECT_TRUE(_processor.removeSimulation(simulation));
    EXPECT_FALSE(_processor.removeSimulation(simulation));
    EXPECT_FALSE(simulation->isInitialized());
    EXPECT_EQ(nullptr, simulation->getSimulationsCollection());
    delete simulation;
}

using SimulationsProcessorDeathTest = SimulationsProcessorTest;

TEST_F(SimulationsProcessorDeathTest, UpdateOverAnUnconsumedQueueIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    EXPECT_DEATH(
        {
            _processor.touchSimulationsCollection().addSimulation(new orv::Simulation(4, 0));
            _processor.update(0.04);
        },
        "_batchQueue.empty\\(\\).*\\n.*Batch queue should be empty when requesting enqueueUpdate");
}

TEST_F(SimulationsProcessorDeathTest, QueueEndingOnANonBlockingBatchIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    EXPECT_DEATH(
        {
            orv::enqueueBatch(_processor.touchSimulationsCollection().touchBatchQueue(), &recordSlice, nullptr, false,
                              0, 0, 0.0);
            _processor.consumeEngineBatchQueue();
        },
        "batch queue should always finish with a blocking batch, thus forcing consuming all multithread queue");
}

} // namespace

namespace
{

TEST_F(SimulationsProcessorTest, BackToBackRunsOfChangingSizesRunEveryIndexOnce)
{
    // Runs follow each other with no pause and their arrays grow and move: a worker that comes late to a run must
    // neither claim a batch of the next one nor read the array it left.
    _processor.init(_processor.getLogicalCPUsCount());
    IndexRecorder recorder;
    for (int round = 0; round < 2000; ++round)
    {
        const int lastIndex = (round * 37) % 1000;
        const unsigned int batchSize = 1u + static_cast<unsigned int>(round % 5);
        for (std::atomic<int>& hit : recorder.hits)
        {
            hit.store(0);
        }
        _processor.processThreadable(&recordSlice, &recorder, lastIndex, batchSize);
        for (int i = 0; i < 1000; ++i)
        {
            ASSERT_EQ(i <= lastIndex ? 1 : 0, recorder.hits[i].load()) << "index " << i << " in round " << round;
        }
        if (round % 100 == 99)
        {
            // The array goes back to nothing and grows again.
            _processor.deallocateEngineBatchQueue();
        }
    }
}

TEST_F(SimulationsProcessorDeathTest, ASliceOfNoIndexIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    IndexRecorder recorder;
    EXPECT_DEATH(_processor.processThreadable(&recordSlice, &recorder, 9, 0), "batchSize > 0");
}

TEST_F(SimulationsProcessorDeathTest, FinishOverAnUnconsumedQueueIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    EXPECT_DEATH(
        {
            _processor.touchSimulationsCollection().addSimulation(new orv::Simulation(4, 0));
            _processor.finish();
        },
        "_batchQueue.empty\\(\\).*\\n.*Batch queue should be empty when requesting enqueueFinish");
}

} // namespace
