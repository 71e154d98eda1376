// Fuzzes the snapshot loader: whatever the check accepts is imported, stepped, changed and deleted as a host
// would. Anything but the assertions the library documents is a finding.
#include <cstddef>
#include <cstdint>

#include "engine/simulation/orvSimulation.h"
#include "orvCore.h"
#include "support/orvLoadedWorldUse.h"
#include "support/orvWanderScene.h"
#include "system/log/orvCoreLog.h"

namespace
{

bool startLibrary()
{
    orv::useCoreDefaultAllocator();
    orv::initCore();
    // The demo's context and behaviours, so that the snapshots the demo writes are known.
    orvtest::registerWanderClasses(true);
    // Refusals are expected by the thousand: keep the log to real trouble.
    orv::getCoreLog().setSeverityFilter(orv::LogSeverity::LOG_CRITICAL);
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const bool started = startLibrary();
    (void)started;
    if (!orv::Simulation::checkBinaryData(data, size))
    {
        return 0;
    }
    orv::Simulation* world = new orv::Simulation(4, 0);
    orv::Simulation::importFromValidatedBinaryData(data, size, *world);
    orvtest::useLoadedWorld(world);
    return 0;
}
