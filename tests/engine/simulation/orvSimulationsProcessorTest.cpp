#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <string>
#include <vector>

#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "support/orvCoreTestSupport.h"
#include "system/log/orvAbstractLogOutputter.h"
#include "system/log/orvCoreLog.h"
#include "system/log/orvLogEvent.h"

// A sanitizer runtime owns malloc: count through its hook rather than replace malloc. g++ names the sanitizer by a
// macro, clang by a feature.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ORV_TEST_SANITIZED_MALLOC 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ORV_TEST_SANITIZED_MALLOC 1
#endif
#endif

#if defined(ORV_TEST_SANITIZED_MALLOC)
// The sanitizer runtime exports this hook; its header does not come with every compiler.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*mallocHook)(const volatile void*, size_t),
                                                         void (*freeHook)(const volatile void*));
#endif

namespace
{

std::atomic<bool> g_countAllocations{false};
std::atomic<int> g_allocationCount{0};

} // namespace

#if defined(ORV_TEST_SANITIZED_MALLOC)
namespace
{

void onMalloc(const volatile void*, size_t)
{
    if (g_countAllocations.load(std::memory_order_relaxed))
    {
        g_allocationCount.fetch_add(1, std::memory_order_relaxed);
    }
}

void onFree(const volatile void*)
{
}

struct HookInstaller
{
    HookInstaller() { __sanitizer_install_malloc_and_free_hooks(&onMalloc, &onFree); }
} g_hookInstaller;

} // namespace
#else
// Every malloc of the process, the library's included, goes through these while the test binary runs.
extern "C"
{
    void* __libc_malloc(size_t size);
    void* __libc_calloc(size_t count, size_t size);
    void* __libc_realloc(void* pointer, size_t size);

    void* malloc(size_t size)
    {
        if (g_countAllocations.load(std::memory_order_relaxed))
        {
            g_allocationCount.fetch_add(1, std::memory_order_relaxed);
        }
        return __libc_malloc(size);
    }

    void* calloc(size_t count, size_t size)
    {
        if (g_countAllocations.load(std::memory_order_relaxed))
        {
            g_allocationCount.fetch_add(1, std::memory_order_relaxed);
        }
        return __libc_calloc(count, size);
    }

    void* realloc(void* pointer, size_t size)
    {
        if (g_countAllocations.load(std::memory_order_relaxed))
        {
            g_allocationCount.fetch_add(1, std::memory_order_relaxed);
        }
        return __libc_realloc(pointer, size);
    }
}
#endif

namespace
{

using orv::SimulationsProcessor;

/// Makes each entity wander: every step draws from the entity's own generator, so the end state depends on
/// each entity seeing its own draws in order, whichever thread runs its slice.
class WanderTestContext : public orv::IContext
{
public:
    WanderTestContext() : orv::IContext(true, false) {}
    void setContextType() override { assignContextType(ContextType::NAVIGATION); }
    void allocateComponentsArrays() override {}
    void deallocateComponentsArrays() override {}
    void doInit() override {}
    void doUpdate(orv::Time) override {}
    void doFinish() override {}
    bool registeredOnUpdateEntityComponents() const override { return true; }
    void onUpdateEntityComponents(orv::Time dt, int first, int last) override
    {
        orv::EntitiesManager& manager = getSimulation()->touchEntitiesManager();
        for (int i = first; i <= last; ++i)
        {
            orv::Entity* entity = manager.getEntity(i);
            const float heading = entity->touchRNG().frand(-3.14159f, 3.14159f);
            const float speed = entity->touchRNG().frand(0.5f, 1.5f);
            orv::Vector3 position = entity->getPosition();
            position.x += std::cos(heading) * speed * static_cast<float>(dt);
            position.z += std::sin(heading) * speed * static_cast<float>(dt);
            entity->setPosition(position);
            entity->setSpeed(speed);
        }
    }
};

/// Collects the messages of the core log.
class MessageCollector : public orv::AbstractLogOutputter
{
public:
    MessageCollector() : orv::AbstractLogOutputter(orv::LogSeverity::LOG_DEBUG, &orv::getCoreLog()) {}
    std::vector<std::string> _messages;

protected:
    void doOutput(const orv::LogEvent& event) override { _messages.push_back(event.getMessage()); }
};

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

    orv::Simulation* buildWanderingWorld(int entityCount)
    {
        orv::Simulation* simulation = new orv::Simulation(entityCount, 0);
        simulation->addContext(new WanderTestContext());
        const int typeA = simulation->createEntityType(entityCount);
        const int typeB = simulation->createEntityType(entityCount);
        for (int i = 0; i < entityCount; ++i)
        {
            simulation->createEntity(i % 3 == 0 ? typeB : typeA);
        }
        return simulation;
    }

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
    MessageCollector collector;
    const int cpus = _processor.getLogicalCPUsCount();
    _processor.init(cpus + 3);
    EXPECT_EQ(cpus, _processor.getThreadCount());
    ASSERT_EQ(1u, collector._messages.size());
    EXPECT_EQ("Cannot set Orvane Engine worker threads number below 1 or above logical CPUs of the computer, "
              "bounding value " +
                  std::to_string(cpus + 3) + " to [1," + std::to_string(cpus) +
                  "]. Note : ThreadCount includes main thread.",
              collector._messages[0]);
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

TEST_F(SimulationsProcessorTest, OneAndTwoThreadsFromTheSameSeedEndInTheSameState)
{
    std::vector<std::vector<float>> endStates;
    for (int threads = 1; threads <= 2; ++threads)
    {
        orv::getRNG().setSeed(42);
        _processor.init(threads);
        orv::Simulation* simulation = buildWanderingWorld(2000);
        _processor.addSimulation(simulation);
        std::vector<orv::EntityHandle> handles;
        for (int frame = 0; frame < 30; ++frame)
        {
            _processor.update(0.04);
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
        std::vector<float> state;
        for (const orv::Entity& entity : simulation->getEntitiesManager().getEntities())
        {
            state.push_back(entity.getPosition().x);
            state.push_back(entity.getPosition().z);
            state.push_back(static_cast<float>(entity.getHandle().getUint32()));
        }
        endStates.push_back(state);
        _processor.finish();
    }
    ASSERT_EQ(endStates[0].size(), endStates[1].size());
    EXPECT_TRUE(endStates[0] == endStates[1]);
}

TEST_F(SimulationsProcessorTest, FramesAfterTheFirstAllocateNothing)
{
    _processor.init(2);
    _processor.addSimulation(buildWanderingWorld(5000));
    _processor.update(0.04);
    _processor.update(0.04);
    g_allocationCount.store(0);
    g_countAllocations.store(true);
    for (int frame = 0; frame < 20; ++frame)
    {
        _processor.update(0.04);
    }
    g_countAllocations.store(false);
    EXPECT_EQ(0, g_allocationCount.load());
}

TEST_F(SimulationsProcessorTest, FinishDeletesTheSimulationsAndStopsTheWorkers)
{
    _processor.init(2);
    _processor.addSimulation(buildWanderingWorld(10));
    _processor.update(0.04);
    _processor.finish();
    EXPECT_EQ(0, _processor.getSimulationsCollection().getSimulationCount());
    EXPECT_EQ(1, _processor.getThreadCount());
}

TEST_F(SimulationsProcessorTest, RemovedSimulationIsFinishedAndHandedBack)
{
    orv::Simulation* simulation = buildWanderingWorld(10);
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
