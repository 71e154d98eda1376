#include <benchmark/benchmark.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#if ORV_HAVE_CEREAL
#include <cereal/archives/binary.hpp>
#include <cereal/types/vector.hpp>
#endif

#include "math/types/orvVector3.h"
#include "orvBenchSupport.h"
#include "system/containers/orvArray.h"
#include "system/containers/orvPODArray.h"
#include "system/inspection/orvAttribute.h"
#include "system/inspection/orvRTTI.h"
#include "system/serialization/orvBinaryStream.h"

namespace orvbench::stream
{

/// A small value object: 21 bytes of attributes behind its id and count.
class Particle
{
    ORV_DECLARE_VALUE_RTTI(Particle)

public:
    int _id = 0;
    float _mass = 0.0f;
    orv::Vector3 _position;
    bool _active = false;
};

/// Many small objects by value.
class Swarm
{
    ORV_DECLARE_VALUE_RTTI(Swarm)

public:
    orv::Array<Particle> _particles;
};

/// A polymorphic graph node reached only through pointers.
class Cell
{
    ORV_DECLARE_RTTI(Cell)

public:
    virtual ~Cell() = default;

    int _value = 0;
    Cell* _link = nullptr;
};

/// The roots of a graph of cells.
class Web
{
    ORV_DECLARE_VALUE_RTTI(Web)

public:
    orv::PODArray<Cell*> _cells;
};

ORV_IMPLEMENT_RTTI(Particle, "3f1e2d3c-4b5a-4698-a7b6-c5d4e3f2a1b0", "orvbench::Particle")
ORV_IMPLEMENT_RTTI(Swarm, "4a2f3e4d-5c6b-47a9-b8c7-d6e5f4a3b2c1", "orvbench::Swarm")
ORV_IMPLEMENT_RTTI(Cell, "5b3a4f5e-6d7c-48ba-89d8-e7f6a5b4c3d2", "orvbench::Cell")
ORV_IMPLEMENT_RTTI(Web, "6c4b5a6f-7e8d-49cb-9ae9-f8a7b6c5d4e3", "orvbench::Web")

void Particle::addAttributes()
{
    addAttribute("id", &Particle::_id);
    addAttribute("mass", &Particle::_mass);
    addAttribute("position", &Particle::_position);
    addAttribute("active", &Particle::_active);
}

void Swarm::addAttributes()
{
    addAttribute("particles", &Swarm::_particles);
}

void Cell::addAttributes()
{
    addAttribute("value", &Cell::_value);
    addAttribute("link", &Cell::_link);
}

void Web::addAttributes()
{
    addAttribute("cells", &Web::_cells);
}

} // namespace orvbench::stream

namespace
{

using namespace orvbench::stream;

constexpr size_t kObjectCount = 100000;

/// The library started, its registries up and the benchmark's classes registered.
class StreamScope
{
public:
    StreamScope()
    {
        _ownsRegistries = !orv::RTTI::areStaticRTTIsAllocated();
        if (_ownsRegistries)
        {
            orv::resetRTTIConcatBuffer();
            orv::RTTI::allocateStaticRTTIs();
            orv::RTTI::createRTTIs();
        }
        Particle::createClassRTTI(true);
        Swarm::createClassRTTI(true);
        Cell::createClassRTTI(true);
        Web::createClassRTTI(true);
    }
    ~StreamScope()
    {
        Web::destroyClassRTTI(true);
        Cell::destroyClassRTTI(true);
        Swarm::destroyClassRTTI(true);
        Particle::destroyClassRTTI(true);
        if (_ownsRegistries)
        {
            orv::RTTI::destroyRTTIs();
            orv::RTTI::deallocateStaticRTTIs();
        }
    }

private:
    orvbench::CoreScope _core;
    bool _ownsRegistries = false;
};

void fillSwarm(Swarm& swarm)
{
    swarm._particles.resize(kObjectCount);
    for (size_t i = 0; i < kObjectCount; ++i)
    {
        Particle& particle = swarm._particles[i];
        particle._id = static_cast<int>(i);
        particle._mass = 1.0f + static_cast<float>(i % 7);
        particle._position = orv::Vector3(static_cast<float>(i), 0.5f, -1.0f);
        particle._active = (i % 3) != 0;
    }
}

/// Every cell is a root; each even cell links to the next one, so half the cells are reached twice.
void fillWeb(Web& web)
{
    web._cells.resize(kObjectCount);
    for (size_t i = 0; i < kObjectCount; ++i)
    {
        web._cells[i] = new Cell();
        web._cells[i]->_value = static_cast<int>(i);
    }
    for (size_t i = 0; i + 1 < kObjectCount; i += 2)
    {
        web._cells[i]->_link = web._cells[i + 1];
    }
}

void freeWeb(Web& web)
{
    for (size_t i = 0; i < web._cells.size(); ++i)
    {
        delete web._cells[i];
    }
    web._cells.clear();
}

template <typename T>
std::string packToBytes(const T& value)
{
    orv::BinaryStream stream;
    stream.pack(value);
    return stream.getStream().str();
}

void BM_BinaryStreamWriteSmallObjects(benchmark::State& state)
{
    StreamScope scope;
    Swarm swarm;
    fillSwarm(swarm);
    uint64_t bytes = 0;
    for (auto _ : state)
    {
        orv::BinaryStream stream;
        stream.pack(swarm);
        bytes = stream.getLength();
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kObjectCount));
}

void BM_BinaryStreamReadSmallObjects(benchmark::State& state)
{
    StreamScope scope;
    Swarm swarm;
    fillSwarm(swarm);
    const std::string bytes = packToBytes(swarm);
    for (auto _ : state)
    {
        orv::BinaryStream stream;
        stream.importFrom(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
        Swarm read;
        stream.unpack(read);
        benchmark::DoNotOptimize(read._particles.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kObjectCount));
}

void BM_BinaryStreamWriteSharedGraph(benchmark::State& state)
{
    StreamScope scope;
    Web web;
    fillWeb(web);
    uint64_t bytes = 0;
    for (auto _ : state)
    {
        orv::BinaryStream stream;
        stream.pack(web);
        bytes = stream.getLength();
        benchmark::DoNotOptimize(bytes);
    }
    freeWeb(web);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kObjectCount));
}

void BM_BinaryStreamReadSharedGraph(benchmark::State& state)
{
    StreamScope scope;
    Web web;
    fillWeb(web);
    const std::string bytes = packToBytes(web);
    freeWeb(web);
    for (auto _ : state)
    {
        orv::BinaryStream stream;
        stream.importFrom(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
        Web read;
        stream.unpack(read);
        benchmark::DoNotOptimize(read._cells.data());
        state.PauseTiming();
        freeWeb(read);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kObjectCount));
}

#if ORV_HAVE_CEREAL

/// The same small object for the reference serializer: the same fields, written in the same order.
struct ReferenceParticle
{
    int _id = 0;
    float _mass = 0.0f;
    float _x = 0.0f, _y = 0.0f, _z = 0.0f;
    bool _active = false;

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(_id, _mass, _x, _y, _z, _active);
    }
};

std::vector<ReferenceParticle> referenceSwarm()
{
    Swarm swarm;
    fillSwarm(swarm);
    std::vector<ReferenceParticle> particles(kObjectCount);
    for (size_t i = 0; i < kObjectCount; ++i)
    {
        const Particle& particle = swarm._particles[i];
        particles[i] = {particle._id,         particle._mass,       particle._position.x,
                        particle._position.y, particle._position.z, particle._active};
    }
    return particles;
}

/// The reference: a widely used header-only serializer writing the same objects by value to a string stream.
void BM_ReferenceCerealWriteSmallObjects(benchmark::State& state)
{
    const std::vector<ReferenceParticle> particles = referenceSwarm();
    size_t bytes = 0;
    for (auto _ : state)
    {
        std::stringstream stream(std::ios::in | std::ios::out | std::ios::binary);
        {
            cereal::BinaryOutputArchive archive(stream);
            archive(particles);
        }
        bytes = static_cast<size_t>(stream.tellp());
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kObjectCount));
}

void BM_ReferenceCerealReadSmallObjects(benchmark::State& state)
{
    const std::vector<ReferenceParticle> particles = referenceSwarm();
    std::stringstream written(std::ios::in | std::ios::out | std::ios::binary);
    {
        cereal::BinaryOutputArchive archive(written);
        archive(particles);
    }
    const std::string bytes = written.str();
    for (auto _ : state)
    {
        std::stringstream stream(bytes, std::ios::in | std::ios::binary);
        std::vector<ReferenceParticle> read;
        {
            cereal::BinaryInputArchive archive(stream);
            archive(read);
        }
        benchmark::DoNotOptimize(read.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes.size()));
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kObjectCount));
}

BENCHMARK(BM_ReferenceCerealWriteSmallObjects)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReferenceCerealReadSmallObjects)->Unit(benchmark::kMillisecond);

#endif

BENCHMARK(BM_BinaryStreamWriteSmallObjects)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BinaryStreamReadSmallObjects)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BinaryStreamWriteSharedGraph)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BinaryStreamReadSharedGraph)->Unit(benchmark::kMillisecond);

} // namespace
