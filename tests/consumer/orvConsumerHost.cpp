// A host of the installed library: starts it, runs one frame of a small crowd with a context of its own, and
// exits 0 only if every entity was updated once and the frame counted.
#include <atomic>
#include <cstdio>

#include "engine/simulation/orvIContext.h"
#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "orvCore.h"

namespace
{

const int kEntityCount = 64;

/// Counts the entity updates of each frame; any worker may run a slice, so the count is atomic.
class CountingContext : public orv::IContext
{
public:
    CountingContext() : orv::IContext(true, false) {}

    void setContextType() override { assignContextType(ContextType::NAVIGATION); }
    void allocateComponentsArrays() override {}
    void deallocateComponentsArrays() override {}
    void doInit() override {}
    void doUpdate(orv::Time) override {}
    void doFinish() override {}

    bool registeredOnUpdateEntityComponents() const override { return true; }
    void onUpdateEntityComponents(orv::Time, int first, int last) override
    {
        _updates.fetch_add(last - first + 1, std::memory_order_relaxed);
    }

    /// Entity updates since the start, over every frame. Read between frames.
    int getUpdateCount() const { return _updates.load(std::memory_order_relaxed); }

private:
    std::atomic<int> _updates{0};
};

bool runOneFrame()
{
    orv::SimulationsProcessor processor;
    processor.init(2);
    orv::Simulation* simulation = new orv::Simulation(kEntityCount, 0);
    CountingContext* counter = new CountingContext();
    simulation->addContext(counter);
    const int type = simulation->createEntityType(kEntityCount);
    for (int i = 0; i < kEntityCount; ++i)
    {
        simulation->createEntity(type);
    }
    processor.addSimulation(simulation);
    processor.update(0.04);

    const bool ok = simulation->getEntityCount() == kEntityCount && simulation->getCurrentFrame() == 1 &&
                    counter->getUpdateCount() == kEntityCount;
    printf("orvConsumerHost: %d entities, frame %u, %d entity updates on %d threads\n", simulation->getEntityCount(),
           simulation->getCurrentFrame(), counter->getUpdateCount(), processor.getThreadCount());
    // The processor deletes its simulations, and the simulation its contexts.
    processor.finish();
    return ok;
}

} // namespace

int main()
{
    orv::useCoreDefaultAllocator();
    orv::initCore();
    const bool ok = runOneFrame();
    orv::finishCore();
    if (!ok)
    {
        fprintf(stderr, "orvConsumerHost: the frame did not run as expected\n");
        return 1;
    }
    return 0;
}
