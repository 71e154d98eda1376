// orvCore/engine/simulation/orvSimulationsProcessor.h
#pragma once

#include <atomic>
#include <cstdint>

#include "engine/simulation/orvEntityHandle.h"
#include "engine/simulation/orvProcessingBatch.h"
#include "engine/simulation/orvSimulationsCollection.h"
#include "system/containers/orvArray.h"
#include "system/thread/orvAtomic.h"
#include "system/thread/orvSynchroBarrier.h"
#include "system/thread/orvThread.h"

namespace orv
{

class Simulation;

/// What a host drives: a collection of simulations and a pool of worker threads that consume its batches.
/// The calling thread takes part in every parallel run and alone runs the blocking batches. Only one host thread may
/// call a processor, and every operation below is for that thread unless it says otherwise; the workers call only
/// the pool's own operations at the end.
class SimulationsProcessor
{
public:
    /// A processor with no simulation and no worker: everything runs on the calling thread until init. Host thread.
    SimulationsProcessor();
    /// Stops and joins the workers; deletes the simulations still held. Host thread.
    virtual ~SimulationsProcessor();

    /// Sets the thread count, the calling thread included, and restarts the workers if it changes; outside
    /// [1, logical CPUs] the count is bounded with a log line. Between frames only.
    void init(int threadCount);
    /// Advances every simulation by one frame of dt seconds (dt >= 0), initialising those that are not. Returns when
    /// the frame has ended on every thread. The batch queue must be empty: assertion.
    void update(Time dt);
    /// Initialises count entities (count >= 0) that the host created in a simulation held here, on the pool.
    void initEntities(Simulation* simulation, const EntityHandle* handles, int count);
    /// Initialises count groups (count >= 0) that the host created in a simulation held here, on the pool.
    void initGroups(Simulation* simulation, const EntityHandle* handles, int count);
    /// Finishes and deletes every simulation, gives back the run array and stops the workers: a host pointer to a
    /// simulation dangles afterwards. The batch queue must be empty: assertion.
    void finish();
    /// Takes ownership of a simulation and initialises it at once. Between frames.
    void addSimulation(Simulation* simulation);
    /// Finishes a simulation and hands it back to the caller, who deletes it; false if it is not held. Between frames.
    bool removeSimulation(Simulation* simulation);

    /// Runs function(0, userData, first, last) over the indices 0..lastIndex in slices of batchSize (> 0: assertion),
    /// the last slice shorter, on the pool; returns when every slice has run. A negative lastIndex runs nothing.
    /// The function runs on any thread of the pool, each slice once, in no order.
    void processThreadable(BatchUpdateMethod function, void* userData, int lastIndex, unsigned int batchSize);

    /// Threads of the pool, the calling thread included: 1 to getLogicalCPUsCount().
    int getThreadCount() const { return _workerThreadCount + 1; }
    /// Logical processors online when the processor was built; the most threads init accepts.
    int getLogicalCPUsCount() const { return _logicalCPUsCount; }
    /// The simulations held and their batch queue; owned by the processor. Host thread, between frames.
    const SimulationsCollection& getSimulationsCollection() const { return _simulationsCollection; }
    /// The simulations held and their batch queue, to change; owned by the processor. Host thread, between frames.
    SimulationsCollection& touchSimulationsCollection() { return _simulationsCollection; }

    /// Runs every batch of the queue, blocking ones alone on this thread and the runs between them on the pool, and
    /// empties it. The queue must end with a blocking batch: assertion.
    void consumeEngineBatchQueue();
    /// Gives back the memory of the parallel run's array, which frames otherwise keep for reuse.
    void deallocateEngineBatchQueue();

    /// A thread's share of the parallel run under way: batches claimed one at a time until none is left, then
    /// counted done. Host thread and workers; a thread that comes after the run's last claim does nothing.
    void consumeBatchQueueTask();
    /// The barrier the workers wait on between runs; owned by the processor. Workers.
    SynchroBarrier& touchLaunchBarrier() { return _launchUpdateProcessBarrier; }
    /// True once the workers must leave their loop. Workers.
    bool mustStopThreads() const { return atomicLoadAcquireBool(_stopThreads); }
    /// Records that a worker left its loop on an error; the pool does not replace it. Called by that worker.
    void setSomeThreadsDied() { _someThreadsDied = true; }

private:
    void updateThreadCount(int threadCount);
    void setupWorkerThreads(int threadCount, size_t stackSize);
    void closeWorkerThreads();
    void runParallelBatches();
    void launchThreadedUpdate();
    void waitForThreadedUpdateReady();
    void waitForThreadedUpdateEnd();

    SimulationsCollection _simulationsCollection;     // the simulations and their batch queue
    int _workerThreadCount = 0;                       // workers, the calling thread not counted
    threaddef_t* _workerThreads = nullptr;            // the workers, owned
    atomic32_t _stopThreads;                          // workers leave at their next wake-up
    int _logicalCPUsCount = 1;                        // logical processors online at construction
    SynchroBarrier _launchUpdateProcessBarrier;       // where workers wait between runs
    volatile bool _someThreadsDied = false;           // a worker left its loop on an error
    bool _threadsLaunchFailed = false;                // the last launch failed
    bool _threadedProcessingInProgress = false;       // a parallel run is under way
    BatchUpdateMethod _threadUpdateMethod = nullptr;  // unused
    Array<ProcessingBatch> _batchQueueForMultithread; // batches of the run being built or run; kept between frames
    int _threadsInUse = 0;                            // unused
    uint32_t _runNumber = 0;                          // parallel runs so far, wrapping; names the run in the cursor

    // The run under way, as the pool reads it: published before _currentBatchToProcess names the run.
    alignas(64) std::atomic<const ProcessingBatch*> _runBatches{nullptr};
    atomic32_t _runBatchCount;
    // Claimed by every thread of the pool, one batch at a time: the run's number in the high 32 bits, the next
    // batch's index in the low 32 bits. A thread that read a finished run's cursor cannot claim in the next one.
    alignas(64) atomic64_t _currentBatchToProcess;
    // Batches of the run under way that have ended; the run is over when it reaches _runBatchCount.
    alignas(64) atomic32_t _batchesDoneCount;
};

} // namespace orv
