// Frame throughput of the wander crowd on our pool beside the same work on oneTBB's parallel_for, the cost of an
// empty frame, and the cost of one parallel run with the workers spinning or asleep.
#include <benchmark/benchmark.h>

#include <oneapi/tbb/blocked_range.h>
#include <oneapi/tbb/global_control.h>
#include <oneapi/tbb/parallel_for.h>

#include <chrono>
#include <thread>
#include <vector>

#include "behavior/behaviors/orvCompositeBehavior.h"
#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "orvBenchSupport.h"
#include "support/orvWanderScene.h"

namespace
{

const double kFrameStep = 1.0 / 25.0;

/// A started library, a processor on the requested threads and the demo's wandering crowd over two entity types.
class WanderWorld
{
public:
    WanderWorld(int entityCount, int threadCount, bool withGraph = false)
    {
        _processor.init(threadCount);
        _processor.addSimulation(orvtest::buildWanderingWorld(entityCount, 2, withGraph));
        _processor.update(kFrameStep);
    }
    ~WanderWorld() { _processor.finish(); }

    orvbench::CoreScope _core;
    orv::SimulationsProcessor _processor;
};

void BM_FrameWander(benchmark::State& state)
{
    const int entities = static_cast<int>(state.range(0));
    WanderWorld world(entities, static_cast<int>(state.range(1)));
    for (auto _ : state)
    {
        world._processor.update(kFrameStep);
    }
    state.SetItemsProcessed(state.iterations() * entities);
    state.counters["threads"] = world._processor.getThreadCount();
}
BENCHMARK(BM_FrameWander)
    ->ArgsProduct({{1000, 10000, 100000}, {1, 2}})
    ->ArgNames({"entities", "threads"})
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);

/// Bytes a behaviour tree keeps for its entities: the status rows of every node, the composites' current-child
/// slots and frame histories, as allocated.
size_t treeBytes(const orv::AbstractBehavior& node)
{
    size_t bytes = node.getStatusData().capacity() * sizeof(orv::AbstractBehavior::BehaviorStatusData);
    if (const auto* composite = dynamic_cast<const orv::CompositeBehavior*>(&node))
    {
        bytes += static_cast<size_t>(composite->getCurrentBehaviorArrayCapacity()) *
                 (sizeof(orv::AbstractBehavior*) + sizeof(orv::RuntimeUpdateHistoryPerFrame));
        for (int entity = 0; entity < composite->getCurrentBehaviorArrayCapacity(); ++entity)
        {
            if (composite->hasEntitySlot(entity))
            {
                const orv::RuntimeUpdateHistoryPerFrame& history = composite->getRuntimeHistory(entity);
                bytes += history._updatedBehaviorsThisFrame.capacity() * sizeof(void*) +
                         history._childrenCompositeToClearTransitions.capacity() * sizeof(void*);
            }
        }
    }
    if (const auto* container = dynamic_cast<const orv::AbstractBehaviorContainer*>(&node))
    {
        for (const orv::SmartPointer<orv::AbstractBehavior>& child : container->getChildrenBehaviors())
        {
            bytes += child.getImpl() != nullptr ? treeBytes(*child) : 0;
        }
    }
    return bytes;
}

/// The wander crowd driven by a behaviour graph on each type: a loop around walk, pause and turn, in two composites.
/// Beside BM_FrameWander, whose graphs are empty; both place entities the same way.
void BM_FrameBehaviorGraph(benchmark::State& state)
{
    const int entities = static_cast<int>(state.range(0));
    WanderWorld world(entities, static_cast<int>(state.range(1)), true);
    for (auto _ : state)
    {
        world._processor.update(kFrameStep);
    }
    state.SetItemsProcessed(state.iterations() * entities);
    state.counters["threads"] = world._processor.getThreadCount();
    size_t bytes = 0;
    const orv::Simulation& simulation = *world._processor.getSimulationsCollection().getSimulation(0);
    for (int type = 0; type < simulation.getEntityTypeCount(); ++type)
    {
        for (const auto& behavior : simulation.getEntityType(type)->getBehaviorGraph().getBehaviors())
        {
            bytes += treeBytes(*behavior);
        }
    }
    // Each type's graph is sized for the whole crowd: the bytes per entity of one type's graph.
    state.counters["graphBytesPerEntity"] =
        static_cast<double>(bytes) / static_cast<double>(simulation.getEntityTypeCount()) / entities;
}
BENCHMARK(BM_FrameBehaviorGraph)
    ->ArgsProduct({{10000}, {1, 2}})
    ->ArgNames({"entities", "threads"})
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);

/// The same frame, batch for batch, with every parallel run handed to oneTBB's parallel_for instead of our pool:
/// the blocking batches run on the calling thread as ours do, so only the executor differs.
void BM_FrameWanderTbbReference(benchmark::State& state)
{
    const int entities = static_cast<int>(state.range(0));
    const int threads = static_cast<int>(state.range(1));
    WanderWorld world(entities, 1);
    tbb::global_control control(tbb::global_control::max_allowed_parallelism, static_cast<size_t>(threads));
    orv::SimulationsCollection& collection = world._processor.touchSimulationsCollection();
    std::vector<orv::ProcessingBatch> run;
    run.reserve(256);
    for (auto _ : state)
    {
        collection.enqueueUpdate(kFrameStep);
        orv::ProcessingBatch batch;
        while (collection.getNextProcessingBatch(batch))
        {
            if (!batch._blocking)
            {
                run.push_back(batch);
                continue;
            }
            if (!run.empty())
            {
                tbb::parallel_for(size_t(0), run.size(),
                                  [&run](size_t i)
                                  {
                                      const orv::ProcessingBatch& slice = run[i];
                                      slice._updateMethod(slice._dt, slice._userData, slice._firstIndex,
                                                          slice._lastIndex);
                                  });
                run.clear();
            }
            batch._updateMethod(batch._dt, batch._userData, batch._firstIndex, batch._lastIndex);
        }
    }
    state.SetItemsProcessed(state.iterations() * entities);
}
BENCHMARK(BM_FrameWanderTbbReference)
    ->ArgsProduct({{1000, 10000, 100000}, {1, 2}})
    ->ArgNames({"entities", "threads"})
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);

/// A frame of a simulation with no entity: every default context's blocking batches and nothing else.
void BM_EmptyFrame(benchmark::State& state)
{
    orvbench::CoreScope core;
    orv::SimulationsProcessor processor;
    processor.init(static_cast<int>(state.range(0)));
    processor.addSimulation(new orv::Simulation(16, 0));
    for (auto _ : state)
    {
        processor.update(kFrameStep);
    }
    processor.finish();
}
BENCHMARK(BM_EmptyFrame)->Arg(1)->Arg(2)->ArgName("threads")->UseRealTime();

void doNothing(orv::Time, void*, int, int)
{
}

/// One parallel run right after another: the launch to the workers spinning on the barrier, two empty batches taken
/// by whichever threads come first, and the wait for both to end.
void BM_ParallelRun(benchmark::State& state)
{
    orvbench::CoreScope core;
    orv::SimulationsProcessor processor;
    processor.init(static_cast<int>(state.range(0)));
    for (auto _ : state)
    {
        processor.processThreadable(&doNothing, nullptr, 1, 1);
    }
    processor.finish();
}
BENCHMARK(BM_ParallelRun)->Arg(1)->Arg(2)->ArgName("threads")->UseRealTime();

/// One parallel run after an idle millisecond, as a host between frames: the workers have gone from spinning to
/// sleeping on the barrier, so the launch wakes them through its condition, and the calling thread takes the batches
/// that a worker still waking does not claim. The idle time is not counted.
void BM_ParallelRunAfterIdle(benchmark::State& state)
{
    orvbench::CoreScope core;
    orv::SimulationsProcessor processor;
    processor.init(static_cast<int>(state.range(0)));
    for (auto _ : state)
    {
        state.PauseTiming();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        state.ResumeTiming();
        processor.processThreadable(&doNothing, nullptr, 1, 1);
    }
    processor.finish();
}
// A fixed count: the untimed idle millisecond would otherwise be paid for every one of the millions of iterations
// that a run of a few hundred nanoseconds asks for.
BENCHMARK(BM_ParallelRunAfterIdle)->Arg(1)->Arg(2)->ArgName("threads")->UseRealTime()->Iterations(2000);

} // namespace
