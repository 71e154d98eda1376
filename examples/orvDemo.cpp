// The demo host: starts the library, builds a wandering crowd, runs it frame by frame with some churn of
// entities, and prints a summary.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "orvCore.h"
#include "orvWanderContext.h"
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
    const char* savePath = nullptr;
    const char* loadPath = nullptr;
};

void printUsage()
{
    printf("usage: orvDemo [--entities N] [--frames N] [--types N] [--threads N] [--churn N] [--churn-every N]\n"
           "               [--dt SECONDS] [--save FILE] [--load FILE] [--verbose]\n"
           "  --entities     entities in the crowd (10000)\n"
           "  --frames       frames to run (300)\n"
           "  --types        entity types the crowd is spread over (2)\n"
           "  --threads      threads, the calling one included; 0 for one per core (0)\n"
           "  --churn        entities destroyed and created anew at each churn (100)\n"
           "  --churn-every  frames between two churns (50)\n"
           "  --dt           length of a frame in simulated seconds (0.04)\n"
           "  --save FILE    write a binary snapshot of the world to FILE after the last frame\n"
           "  --load FILE    start from the snapshot in FILE instead of building a crowd; no churn then\n"
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
    if (options.churn > options.entities)
    {
        options.churn = options.entities;
    }
    return true;
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

    orv::useCoreDefaultAllocator();
    orv::initCore();
    orvdemo::WanderContext::createClassRTTI(true);
    if (!options.verbose)
    {
        orv::getCoreLog().setSeverityFilter(orv::LogSeverity::LOG_WARNING);
    }
    printf("%s\n", orv::getCoreProductInformation().getCString());

    orv::SimulationsProcessor processor;
    processor.init(options.threads > 0 ? options.threads : processor.getLogicalCPUsCount());

    orv::Simulation* simulation = new orv::Simulation(options.entities, 0);
    if (options.loadPath != nullptr)
    {
        // The world, its contexts and its types all come from the file.
        processor.addSimulation(simulation);
        simulation->loadAndImportFromBinary(options.loadPath);
        // A loaded manager keeps the free-list head it had, so it takes no new entity: no churn.
        options.churn = 0;
        printf("loaded %s: %d entities at frame %u\n", options.loadPath, simulation->getEntityCount(),
               simulation->getCurrentFrame());
    }
    else
    {
        simulation->addContext(new orvdemo::WanderContext());
        for (int t = 0; t < options.types; ++t)
        {
            orv::EntityType* type = simulation->getEntityType(simulation->createEntityType(options.entities));
            type->setScaleRange(0.9f, 1.1f);
            type->setHeight(1.6f + 0.1f * static_cast<float>(t % 4));
        }
        for (int i = 0; i < options.entities; ++i)
        {
            simulation->createEntity(static_cast<unsigned int>(i % options.types));
        }
        processor.addSimulation(simulation);
    }
    const unsigned int firstFrame = simulation->getCurrentFrame();
    const int typeCount = simulation->getEntityTypeCount();

    long handleReuses = 0;
    long created = options.loadPath != nullptr ? 0 : options.entities;
    long destroyed = 0;
    long entityUpdates = 0;
    std::vector<orv::EntityHandle> newHandles;
    double frameSeconds = 0.0;
    orv::RandomNumberGenerator churnRng(1234);

    for (int frame = 1; frame <= options.frames; ++frame)
    {
        const auto start = std::chrono::steady_clock::now();
        processor.update(options.dt);
        frameSeconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        entityUpdates += simulation->getEntityCount();

        if (options.churnEvery > 0 && frame % options.churnEvery == 0 && options.churn > 0)
        {
            // Destroy entities at random places of the dense array, then create as many anew.
            for (int i = 0; i < options.churn && simulation->getEntityCount() > 0; ++i)
            {
                const int index =
                    static_cast<int>(churnRng.rand() % static_cast<uint32_t>(simulation->getEntityCount()));
                simulation->destroyEntity(simulation->getEntitiesManager().getEntities()[index].getHandle());
                ++destroyed;
            }
            newHandles.clear();
            for (int i = 0; i < options.churn; ++i)
            {
                const orv::EntityHandle handle =
                    simulation->createEntity(static_cast<unsigned int>(churnRng.rand() % typeCount));
                handleReuses += handle._counter > 1 ? 1 : 0;
                newHandles.push_back(handle);
                ++created;
            }
            processor.initEntities(simulation, newHandles.data(), static_cast<int>(newHandles.size()));
        }
    }

    if (options.savePath != nullptr)
    {
        simulation->exportToBinary(options.savePath);
        printf("saved %s: %lld bytes\n", options.savePath,
               static_cast<long long>(orv::FileDir::size(options.savePath)));
    }
    const int alive = simulation->getEntityCount();
    const unsigned int framesRun = simulation->getCurrentFrame() - firstFrame;
    const double simulated = simulation->getDuration();
    const int threads = processor.getThreadCount();
    processor.finish();
    orvdemo::WanderContext::destroyClassRTTI(true);
    orv::finishCore();

    const double perFrameMs = framesRun > 0 ? 1000.0 * frameSeconds / framesRun : 0.0;
    printf("frames:                  %u (%.2f s simulated)\n", framesRun, simulated);
    printf("threads:                 %d\n", threads);
    printf("entities alive:          %d (created %ld, destroyed %ld)\n", alive, created, destroyed);
    printf("handle reuses:           %ld\n", handleReuses);
    printf("time per frame:          %.3f ms\n", perFrameMs);
    printf("entity updates per sec:  %.0f\n", frameSeconds > 0.0 ? entityUpdates / frameSeconds : 0.0);
    return 0;
}
