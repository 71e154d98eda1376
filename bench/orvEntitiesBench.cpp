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

/// A full simulation of two types, with the host's list of live handles, as a host that churns entities keeps it.
/// With drawing, each new entity draws once from its own generator, which fills the generator's state.
class ChurnFixture
{
public:
    ChurnFixture(int count, bool drawing) : _simulation(count, 0), _drawing(drawing)
    {
        _simulation.createEntityType(count);
        _simulation.createEntityType(count);
        create(count);
    }
    /// Destroys count entities picked at random among the live ones.
    void destroyRandom(int count)
    {
        for (int i = 0; i < count; ++i)
        {
            const size_t pick = _rng.rand() % static_cast<uint32_t>(_handles.size());
            _simulation.destroyEntity(_handles[pick]);
            _handles[pick] = _handles.back();
            _handles.pop_back();
        }
    }
    /// Creates count entities, alternating the types.
    void create(int count)
    {
        for (int i = 0; i < count; ++i)
        {
            const orv::EntityHandle handle = _simulation.createEntity(static_cast<unsigned int>(i & 1));
            if (_drawing)
            {
                benchmark::DoNotOptimize(_simulation.getEntity(handle)->touchRNG().rand());
            }
            _handles.push_back(handle);
        }
    }

private:
    orv::Simulation _simulation;
    bool _drawing = false;
    std::vector<orv::EntityHandle> _handles;
    orv::RandomNumberGenerator _rng{7};
};

/// createEntity alone, in a simulation a tenth short of full: the destructions between rounds are not timed.
void BM_EntityCreate(benchmark::State& state)
{
    orvbench::CoreScope core;
    const int count = static_cast<int>(state.range(0));
    ChurnFixture fixture(count, false);
    const int churn = count / 10;
    for (auto _ : state)
    {
        state.PauseTiming();
        fixture.destroyRandom(churn);
        state.ResumeTiming();
        fixture.create(churn);
    }
    state.SetItemsProcessed(state.iterations() * churn);
}
BENCHMARK(BM_EntityCreate)->Arg(10000)->Arg(100000);

/// destroyEntity alone, of entities picked at random in a full simulation: the creations between rounds are not
/// timed. The second argument 1 has every entity draw once, as entities that use their generators do.
void BM_EntityDestroy(benchmark::State& state)
{
    orvbench::CoreScope core;
    const int count = static_cast<int>(state.range(0));
    ChurnFixture fixture(count, state.range(1) != 0);
    const int churn = count / 10;
    for (auto _ : state)
    {
        fixture.destroyRandom(churn);
        state.PauseTiming();
        fixture.create(churn);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * churn);
}
BENCHMARK(BM_EntityDestroy)->Args({10000, 0})->Args({100000, 0})->Args({10000, 1})->Args({100000, 1});

/// Filling a generator's state from a seed, the work that a new entity's generator puts off until its first draw.
void BM_GeneratorSetSeed(benchmark::State& state)
{
    orv::RandomNumberGenerator rng(0);
    uint32_t seed = 0;
    for (auto _ : state)
    {
        rng.setSeed(++seed);
        benchmark::DoNotOptimize(rng);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_GeneratorSetSeed);

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
