// orvCore/engine/simulation/orvWorkerThread.cpp
#include "engine/simulation/orvWorkerThread.h"

#include "engine/simulation/orvSimulationsProcessor.h"
#include "system/debug/orvAssert.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

void* WorkerThread::startRoutine(void* simulationsProcessor)
{
    orvAssert(simulationsProcessor != NULL);
    SimulationsProcessor* processor = static_cast<SimulationsProcessor*>(simulationsProcessor);
    while (processor->touchLaunchBarrier().wait())
    {
        if (processor->mustStopThreads())
        {
            return nullptr;
        }
        processor->consumeBatchQueueTask();
    }
    orvLogCore(LogSeverity::LOG_INFO,
               "Orvane Engine Thread issue : unable to get a launch signal in the given time (default to infinite).");
    processor->setSomeThreadsDied();
    return nullptr;
}

} // namespace orv
