// orvCore/engine/simulation/orvWorkerThread.h
#pragma once

namespace orv
{

/// The body of a SimulationsProcessor's worker: sleep on the barrier, take batches, report done, again.
class WorkerThread
{
public:
    /// Thread entry; the argument is the SimulationsProcessor.
    static void* startRoutine(void* simulationsProcessor);
};

} // namespace orv
