// Entity creation and destruction churn, and handle checks and lookups.
#include <benchmark/benchmark.h>

#include <vector>

#include "engine/simulation/orvSimulation.h"
#include "orvBenchSupport.h"

namespace
{

/// Destroys and recreates a tenth of a full simulation at random places, per iteration.
void BM_EntityCreateDestroyChurn(benchmark::State& state)
{
    orvbench::CoreScope core;
    const int count = static_cast<int>(state.range(0));
    orv::Simulation simulation(count, 0);
    simulation.createEntityType(count);
    simulation.createEntityType(count);
    for (int i = 0; i < count; ++i)
    {
        simulation.createEntity(static_cast<unsigned int>(i & 1));
    }
    orv::RandomNumberGenerator rng(7);
    const int churn = count / 10;
    for (auto _ : state)
    {
        for (int i = 0; i < churn; ++i)
        {
            const int index = static_cast<int>(rng.rand() % static_cast<uint32_t>(simulation.getEntityCount()));
            simulation.destroyEntity(simulation.getEntitiesManager().getEntities()[index].getHandle());
        }
        for (int i = 0; i < churn; ++i)
        {
            benchmark::DoNotOptimize(simulation.createEntity(static_cast<unsigned int>(i & 1)));
        }
    }
    state.SetItemsProcessed(state.iterations() * churn * 2);
}
BENCHMARK(BM_EntityCreateDestroyChurn)->Arg(10000)->Arg(100000);

class HandleFixture
{
public:
    explicit HandleFixture(int count) : _simulation(count, 0)
    {
        _simulation.createEntityType(count);
        for (int i = 0; i < count; ++i)
        {
            _handles.push_back(_simulation.createEntity(0));
        }
        // Destroy every third entity so that lookups go through a shuffled table.
        for (int i = 0; i < count; i += 3)
        {
            _simulation.destroyEntity(_handles[i]);
        }
    }
    orv::Simulation _simulation;
    std::vector<orv::EntityHandle> _handles;
};

void BM_HandleValidity(benchmark::State& state)
{
    orvbench::CoreScope core;
    HandleFixture fixture(static_cast<int>(state.range(0)));
    const orv::EntitiesManager& manager = fixture._simulation.getEntitiesManager();
    for (auto _ : state)
    {
        int valid = 0;
        for (const orv::EntityHandle handle : fixture._handles)
        {
            valid += manager.isValidEntityHandle(handle) ? 1 : 0;
        }
        benchmark::DoNotOptimize(valid);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(fixture._handles.size()));
}
BENCHMARK(BM_HandleValidity)->Arg(10000)->Arg(100000);

void BM_HandleLookup(benchmark::State& state)
{
    orvbench::CoreScope core;
    HandleFixture fixture(static_cast<int>(state.range(0)));
    std::vector<orv::EntityHandle> live;
    for (const orv::EntityHandle handle : fixture._handles)
    {
        if (fixture._simulation.getEntitiesManager().isValidEntityHandle(handle))
        {
            live.push_back(handle);
        }
    }
    orv::EntitiesManager& manager = fixture._simulation.touchEntitiesManager();
    for (auto _ : state)
    {
        float sum = 0.0f;
        for (const orv::EntityHandle handle : live)
        {
            sum += manager.getEntity(handle)->getRadius();
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(live.size()));
}
BENCHMARK(BM_HandleLookup)->Arg(10000)->Arg(100000);

} // namespace
