// Binary snapshots of a 10,000-entity world, written to and read from a file.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "engine/simulation/orvSimulation.h"
#include "orvBenchSupport.h"
#include "system/utils/orvFileDir.h"

namespace
{

const int kEntityCount = 10000;

std::string snapshotPath()
{
    const char* directory = getenv("TMPDIR");
    return std::string(directory != nullptr ? directory : "/tmp") + "/orvSnapshotBench.bin";
}

void buildWorld(orv::Simulation& simulation)
{
    simulation.createEntityType(kEntityCount);
    simulation.createEntityType(kEntityCount);
    for (int i = 0; i < kEntityCount; ++i)
    {
        simulation.createEntity(static_cast<unsigned int>(i & 1));
    }
}

void BM_SnapshotWrite(benchmark::State& state)
{
    orvbench::CoreScope core;
    orv::Simulation simulation(kEntityCount, 0);
    buildWorld(simulation);
    const std::string path = snapshotPath();
    for (auto _ : state)
    {
        simulation.exportToBinary(path.c_str());
    }
    state.SetBytesProcessed(state.iterations() * orv::FileDir::size(path.c_str()));
    std::remove(path.c_str());
}
BENCHMARK(BM_SnapshotWrite)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_SnapshotRead(benchmark::State& state)
{
    orvbench::CoreScope core;
    const std::string path = snapshotPath();
    {
        orv::Simulation simulation(kEntityCount, 0);
        buildWorld(simulation);
        simulation.exportToBinary(path.c_str());
    }
    for (auto _ : state)
    {
        orv::Simulation loaded(16, 0);
        loaded.loadAndImportFromBinary(path.c_str());
        benchmark::DoNotOptimize(loaded.getEntityCount());
    }
    state.SetBytesProcessed(state.iterations() * orv::FileDir::size(path.c_str()));
    std::remove(path.c_str());
}
BENCHMARK(BM_SnapshotRead)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The snapshot's bytes in memory, as a host that reads files itself holds them.
std::string snapshotBytes()
{
    const std::string path = snapshotPath();
    {
        orv::Simulation simulation(kEntityCount, 0);
        buildWorld(simulation);
        simulation.exportToBinary(path.c_str());
    }
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    file.close();
    std::remove(path.c_str());
    return bytes;
}

/// The import alone, trusting the bytes: the reference for the cost of checking them first.
void BM_SnapshotImport(benchmark::State& state)
{
    orvbench::CoreScope core;
    const std::string bytes = snapshotBytes();
    const uint8_t* data = reinterpret_cast<const uint8_t*>(bytes.data());
    for (auto _ : state)
    {
        orv::Simulation loaded(16, 0);
        orv::Simulation::importFromValidatedBinaryData(data, bytes.size(), loaded);
        benchmark::DoNotOptimize(loaded.getEntityCount());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}
BENCHMARK(BM_SnapshotImport)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The check alone, the part of a checked load the import does not pay.
void BM_SnapshotCheck(benchmark::State& state)
{
    orvbench::CoreScope core;
    const std::string bytes = snapshotBytes();
    const uint8_t* data = reinterpret_cast<const uint8_t*>(bytes.data());
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(orv::Simulation::checkBinaryData(data, bytes.size()));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}
BENCHMARK(BM_SnapshotCheck)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The check, then the import of what it accepted: what a careful host pays.
void BM_SnapshotCheckAndImport(benchmark::State& state)
{
    orvbench::CoreScope core;
    const std::string bytes = snapshotBytes();
    const uint8_t* data = reinterpret_cast<const uint8_t*>(bytes.data());
    for (auto _ : state)
    {
        orv::Simulation loaded(16, 0);
        if (orv::Simulation::checkBinaryData(data, bytes.size()))
        {
            orv::Simulation::importFromValidatedBinaryData(data, bytes.size(), loaded);
        }
        benchmark::DoNotOptimize(loaded.getEntityCount());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
}
BENCHMARK(BM_SnapshotCheckAndImport)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
