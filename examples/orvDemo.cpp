// The demo host: starts the library, builds a wandering crowd or loads one from a snapshot, runs it frame by frame
// with some churn of entities, saves it if asked, and prints a summary.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "orvCore.h"
#include "support/orvWanderScene.h"
#include "system/log/orvCoreLog.h"
#include "system/utils/orvFileDir.h"

namespace
{

struct Options
{
    int entities = 10000;
    int frames = 300;
    int types = 2;
    int threads = 0;
    int churn = 100;
    int churnEvery = 50;
    double dt = 1.0 / 25.0;
    bool verbose = false;
    bool reseedAfterLoad = false;
    bool bare = false;
    const char* savePath = nullptr;
    const char* loadPath = nullptr;
};

/// What the run did, for the summary.
struct RunCounts
{
    long created = 0;
    long destroyed = 0;
    long handleReuses = 0;
    long entityUpdates = 0;
    double frameSeconds = 0.0;
};

void printUsage()
{
    printf("usage: orvDemo [--entities N] [--frames N] [--types N] [--threads N] [--churn N] [--churn-every N]\n"
           "               [--dt SECONDS] [--save FILE] [--load FILE [--reseed-after-load]] [--bare] [--verbose]\n"
           "  --entities     entities in the crowd (10000)\n"
           "  --frames       frames to run (300)\n"
           "  --types        entity types the crowd is spread over (2)\n"
           "  --threads      threads, the calling one included; 0 for one per core; at most one per core (0)\n"
           "  --churn        entities destroyed and created anew at each churn (100)\n"
           "  --churn-every  frames between two churns (50)\n"
           "  --dt           length of a frame in simulated seconds (0.04)\n"
           "  --save FILE    write a binary snapshot of the world to FILE after the last frame\n"
           "  --load FILE    start from the snapshot in FILE instead of building a crowd; the file is checked\n"
           "                 first, and a refused one ends the demo with the byte and the reason; the loaded\n"
           "                 world churns like a new one\n"
           "  --reseed-after-load\n"
           "                 after --load, restart each entity's generator from its loaded seed\n"
           "  --bare         wander by the navigation context alone, without the behaviour graph\n"
           "  --verbose      show the library's information log lines\n");
}

bool parseOptions(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i)
    {
        const char* flag = argv[i];
        if (strcmp(flag, "--help") == 0 || strcmp(flag, "-h") == 0)
        {
            printUsage();
            exit(0);
        }
        if (strcmp(flag, "--verbose") == 0)
        {
            options.verbose = true;
            continue;
        }
        if (strcmp(flag, "--bare") == 0)
        {
            options.bare = true;
            continue;
        }
        if (strcmp(flag, "--reseed-after-load") == 0)
        {
            options.reseedAfterLoad = true;
            continue;
        }
        if (i + 1 >= argc)
        {
            fprintf(stderr, "orvDemo: %s needs a value\n", flag);
            return false;
        }
        const char* value = argv[++i];
        if (strcmp(flag, "--save") == 0)
        {
            options.savePath = value;
            continue;
        }
        if (strcmp(flag, "--load") == 0)
        {
            options.loadPath = value;
            continue;
        }
        char* end = nullptr;
        const double number = strtod(value, &end);
        if (end == value || *end != '\0' || number < 0)
        {
            fprintf(stderr, "orvDemo: %s takes a non-negative number, not '%s'\n", flag, value);
            return false;
        }
        if (strcmp(flag, "--entities") == 0)
            options.entities = static_cast<int>(number);
        else if (strcmp(flag, "--frames") == 0)
            options.frames = static_cast<int>(number);
        else if (strcmp(flag, "--types") == 0)
            options.types = static_cast<int>(number);
        else if (strcmp(flag, "--threads") == 0)
            options.threads = static_cast<int>(number);
        else if (strcmp(flag, "--churn") == 0)
            options.churn = static_cast<int>(number);
        else if (strcmp(flag, "--churn-every") == 0)
            options.churnEvery = static_cast<int>(number);
        else if (strcmp(flag, "--dt") == 0)
            options.dt = number;
        else
        {
            fprintf(stderr, "orvDemo: unknown option %s\n", flag);
            return false;
        }
    }
    if (options.types < 1 || options.entities > 1000000)
    {
        fprintf(stderr, "orvDemo: --types must be at least 1 and --entities at most 1000000\n");
        return false;
    }
    if (options.reseedAfterLoad && options.loadPath == nullptr)
    {
        fprintf(stderr, "orvDemo: --reseed-after-load goes with --load\n");
        return false;
    }
    if (options.churn > options.entities)
    {
        options.churn = options.entities;
    }
    return true;
}

void startLibrary(const Options& options)
{
    orv::useCoreDefaultAllocator();
    orv::initCore();
    // Registered before any snapshot is checked or read: a snapshot names its contexts by class identifier.
    orvtest::registerWanderClasses(true);
    if (!options.verbose)
    {
        orv::getCoreLog().setSeverityFilter(orv::LogSeverity::LOG_WARNING);
    }
    printf("%s\n", orv::getCoreProductInformation().getCString());
}

void startThreads(const Options& options, orv::SimulationsProcessor& processor)
{
    const int cpus = processor.getLogicalCPUsCount();
    // The processor bounds the count itself and logs an error line: say in words what it did.
    processor.init(options.threads > 0 ? options.threads : cpus);
    if (options.threads > cpus)
    {
        printf("asked for %d threads, this machine has %d: using %d\n", options.threads, cpus,
               processor.getThreadCount());
    }
}

/// Reads the whole file, or says why it cannot.
bool readFile(const char* path, std::vector<uint8_t>& bytes)
{
    std::ifstream file(path, std::ios::in | std::ios::binary);
    if (!file)
    {
        fprintf(stderr, "orvDemo: cannot open %s\n", path);
        return false;
    }
    bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    if (file.bad())
    {
        fprintf(stderr, "orvDemo: cannot read %s\n", path);
        return false;
    }
    return true;
}

/// Loads the world of a snapshot into a new simulation of the processor; null, with the reason printed, when the
/// file is refused.
orv::Simulation* loadWorld(const Options& options, orv::SimulationsProcessor& processor)
{
    // The bytes are checked before anything is built, so that a refusal says where and why.
    std::vector<uint8_t> bytes;
    if (!readFile(options.loadPath, bytes))
    {
        return nullptr;
    }
    orv::SnapshotCheckReport report;
    if (!orv::Simulation::checkBinaryData(bytes.data(), bytes.size(), &report))
    {
        fprintf(stderr, "orvDemo: %s is refused at byte %llu: %s\n", options.loadPath,
                static_cast<unsigned long long>(report._offset), report._reason.c_str());
        return nullptr;
    }

    // The world, its contexts and its types all come from the file.
    orv::Simulation* simulation = new orv::Simulation(options.entities, 0);
    processor.addSimulation(simulation);
    if (!simulation->loadAndImportFromBinary(options.loadPath))
    {
        // The file changed between the check and the load: the world is the empty one it was.
        fprintf(stderr, "orvDemo: %s could not be loaded\n", options.loadPath);
        return nullptr;
    }
    printf("loaded %s: %d entities at frame %u\n", options.loadPath, simulation->getEntityCount(),
           simulation->getCurrentFrame());

    if (options.reseedAfterLoad)
    {
        // A loaded generator keeps the state it was saved with and only takes the loaded seed, so each entity
        // goes on where its sequence was. Setting the seed again restarts each one at the start of its own
        // sequence, as a new entity with that seed would.
        orv::EntitiesManager& manager = simulation->touchEntitiesManager();
        for (int i = 0; i < manager.getEntityCount(); ++i)
        {
            orv::Entity* entity = manager.getEntity(i);
            entity->touchRNG().setSeed(entity->getRNG().getSeed());
        }
        printf("re-seeded %d entity generators from their loaded seeds\n", manager.getEntityCount());
    }
    return simulation;
}

/// A type id with a free slot, starting from a random one; -1 when every type is full.
int pickTypeWithRoom(const orv::Simulation& simulation, orv::RandomNumberGenerator& rng)
{
    const int typeCount = simulation.getEntityTypeCount();
    if (typeCount == 0)
    {
        return -1;
    }
    const int first = static_cast<int>(rng.rand() % static_cast<uint32_t>(typeCount));
    for (int k = 0; k < typeCount; ++k)
    {
        const int t = (first + k) % typeCount;
        const orv::EntityType* type = simulation.getEntityType(t);
        if (type->getInstanceCount() < type->getMaxCount())
        {
            return t;
        }
    }
    return -1;
}

/// Destroys entities at random places of the dense array, then creates as many anew and initialises them.
void churn(const Options& options, orv::SimulationsProcessor& processor, orv::Simulation& simulation,
           orv::RandomNumberGenerator& rng, std::vector<orv::EntityHandle>& newHandles, RunCounts& counts)
{
    for (int i = 0; i < options.churn && simulation.getEntityCount() > 0; ++i)
    {
        const int index = static_cast<int>(rng.rand() % static_cast<uint32_t>(simulation.getEntityCount()));
        simulation.destroyEntity(simulation.getEntitiesManager().getEntities()[index].getHandle());
        ++counts.destroyed;
    }
    newHandles.clear();
    for (int i = 0; i < options.churn && simulation.getEntityCount() < simulation.getMaxEntities(); ++i)
    {
        const int type = pickTypeWithRoom(simulation, rng);
        if (type < 0)
        {
            break;
        }
        const orv::EntityHandle handle = simulation.createEntity(static_cast<unsigned int>(type));
        counts.handleReuses += handle._counter > 1 ? 1 : 0;
        newHandles.push_back(handle);
        ++counts.created;
    }
    processor.initEntities(&simulation, newHandles.data(), static_cast<int>(newHandles.size()));
}

void runFrames(const Options& options, orv::SimulationsProcessor& processor, orv::Simulation& simulation,
               RunCounts& counts)
{
    std::vector<orv::EntityHandle> newHandles;
    newHandles.reserve(static_cast<size_t>(options.churn));
    orv::RandomNumberGenerator churnRng(1234);
    for (int frame = 1; frame <= options.frames; ++frame)
    {
        const auto start = std::chrono::steady_clock::now();
        processor.update(options.dt);
        counts.frameSeconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        counts.entityUpdates += simulation.getEntityCount();

        if (options.churnEvery > 0 && frame % options.churnEvery == 0 && options.churn > 0)
        {
            churn(options, processor, simulation, churnRng, newHandles, counts);
        }
    }
}

bool saveWorld(const char* path, const orv::Simulation& simulation)
{
    // A file that is not there afterwards failed too, whatever the export said.
    const bool exported = simulation.exportToBinary(path);
    const int64_t size = orv::FileDir::size(path);
    if (!exported || size <= 0)
    {
        fprintf(stderr, "orvDemo: saving failed: the snapshot could not be written to %s\n", path);
        return false;
    }
    printf("saved %s: %lld bytes\n", path, static_cast<long long>(size));
    return true;
}

void printSummary(unsigned int framesRun, double simulated, int threads, int alive, const RunCounts& counts)
{
    const double perFrameMs = framesRun > 0 ? 1000.0 * counts.frameSeconds / framesRun : 0.0;
    printf("frames:                  %u (%.2f s simulated)\n", framesRun, simulated);
    printf("threads:                 %d\n", threads);
    printf("entities alive:          %d (created %ld, destroyed %ld)\n", alive, counts.created, counts.destroyed);
    printf("handle reuses:           %ld\n", counts.handleReuses);
    printf("time per frame:          %.3f ms\n", perFrameMs);
    printf("entity updates per sec:  %.0f\n",
           counts.frameSeconds > 0.0 ? counts.entityUpdates / counts.frameSeconds : 0.0);
}

/// How often the entities took each branch of their behaviour graphs; nothing for a world without them.
void printBranches(const orv::Simulation& simulation)
{
    const orvtest::WanderBranchCounts branches = orvtest::countWanderBranches(simulation);
    if (branches._walk + branches._turn + branches._pause + branches._waypoints == 0)
    {
        return;
    }
    printf("behaviour branches:      walk %lu, turn %lu (random 3:1); pause %lu, waypoints %lu (alternative)\n",
           branches._walk, branches._turn, branches._pause, branches._waypoints);
}

/// Finishes the processor, which deletes its simulations, then the library.
void finish(orv::SimulationsProcessor& processor)
{
    processor.finish();
    orvtest::registerWanderClasses(false);
    orv::finishCore();
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    if (!parseOptions(argc, argv, options))
    {
        printUsage();
        return 2;
    }
    if (options.loadPath != nullptr && !orv::FileDir::exist(options.loadPath))
    {
        fprintf(stderr, "orvDemo: no snapshot at %s\n", options.loadPath);
        return 1;
    }

    startLibrary(options);
    int status = 0;
    {
        orv::SimulationsProcessor processor;
        startThreads(options, processor);

        RunCounts counts;
        orv::Simulation* simulation = nullptr;
        if (options.loadPath != nullptr)
        {
            simulation = loadWorld(options, processor);
        }
        else
        {
            simulation = orvtest::buildWanderingWorld(options.entities, options.types, !options.bare);
            processor.addSimulation(simulation);
            counts.created = options.entities;
        }

        if (simulation == nullptr)
        {
            status = 1;
        }
        else
        {
            const unsigned int firstFrame = simulation->getCurrentFrame();
            runFrames(options, processor, *simulation, counts);
            if (options.savePath != nullptr && !saveWorld(options.savePath, *simulation))
            {
                status = 1;
            }
            const unsigned int framesRun = simulation->getCurrentFrame() - firstFrame;
            printSummary(framesRun, simulation->getDuration(), processor.getThreadCount(), simulation->getEntityCount(),
                         counts);
            printBranches(*simulation);
        }
        finish(processor);
    }
    return status;
}
