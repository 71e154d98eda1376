#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

#include "system/containers/orvArray.h"
#include "system/containers/orvMap.h"

namespace
{

/// The same shuffled keys for every container at a given size.
std::vector<int> makeKeys(size_t count)
{
    std::vector<int> keys(count);
    for (size_t i = 0; i < count; ++i)
    {
        keys[i] = static_cast<int>(i * 2);
    }
    std::mt19937 random(12345);
    std::shuffle(keys.begin(), keys.end(), random);
    return keys;
}

void BM_ArrayPushBack(benchmark::State& state)
{
    const std::vector<int> keys = makeKeys(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
    {
        orv::Array<int> array;
        for (int key : keys)
        {
            array.push_back(key);
        }
        benchmark::DoNotOptimize(array.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_StdVectorPushBack(benchmark::State& state)
{
    const std::vector<int> keys = makeKeys(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
    {
        std::vector<int> vector;
        for (int key : keys)
        {
            vector.push_back(key);
        }
        benchmark::DoNotOptimize(vector.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_OrvMapInsert(benchmark::State& state)
{
    const std::vector<int> keys = makeKeys(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
    {
        orv::OrvMap<int, int> map;
        for (int key : keys)
        {
            map.insert(key, key);
        }
        benchmark::DoNotOptimize(map.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_StdMapInsert(benchmark::State& state)
{
    const std::vector<int> keys = makeKeys(static_cast<size_t>(state.range(0)));
    for (auto _ : state)
    {
        std::map<int, int> map;
        for (int key : keys)
        {
            map.insert(std::make_pair(key, key));
        }
        benchmark::DoNotOptimize(map.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_OrvMapFind(benchmark::State& state)
{
    const std::vector<int> keys = makeKeys(static_cast<size_t>(state.range(0)));
    orv::OrvMap<int, int> map;
    for (int key : keys)
    {
        map.insert(key, key);
    }
    for (auto _ : state)
    {
        // Odd keys miss, even keys hit: half of the lookups each way.
        long found = 0;
        for (int key : keys)
        {
            found += map.find(key) != map.end();
            found += map.find(key + 1) != map.end();
        }
        benchmark::DoNotOptimize(found);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * 2);
}

void BM_StdMapFind(benchmark::State& state)
{
    const std::vector<int> keys = makeKeys(static_cast<size_t>(state.range(0)));
    std::map<int, int> map;
    for (int key : keys)
    {
        map.insert(std::make_pair(key, key));
    }
    for (auto _ : state)
    {
        long found = 0;
        for (int key : keys)
        {
            found += map.find(key) != map.end();
            found += map.find(key + 1) != map.end();
        }
        benchmark::DoNotOptimize(found);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * 2);
}

} // namespace

BENCHMARK(BM_ArrayPushBack)->Arg(10000)->Arg(100000);
BENCHMARK(BM_StdVectorPushBack)->Arg(10000)->Arg(100000);
BENCHMARK(BM_OrvMapInsert)->Arg(10000)->Arg(100000);
BENCHMARK(BM_StdMapInsert)->Arg(10000)->Arg(100000);
BENCHMARK(BM_OrvMapFind)->Arg(10000)->Arg(100000);
BENCHMARK(BM_StdMapFind)->Arg(10000)->Arg(100000);
