// orvCore/engine/simulation/orvSimulationsProcessor.h
#pragma once

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
/// The calling thread takes part in every parallel run and alone runs the blocking batches.
/// Only one thread may call a processor.
class SimulationsProcessor
{
public:
    SimulationsProcessor();
    /// Stops the workers.
    virtual ~SimulationsProcessor();

    /// Sets the thread count, the calling thread included; bounded to [1, logical CPUs] with a log line.
    void init(int threadCount);
    /// Advances every simulation by one frame of length dt.
    void update(Time dt);
    /// Initialises entities created in a running simulation.
    void initEntities(Simulation* simulation, const EntityHandle* handles, int count);
    /// Initialises groups created in a running simulation.
    void initGroups(Simulation* simulation, const EntityHandle* handles, int count);
    /// Finishes and deletes every simulation, and stops the workers.
    void finish();
    /// Takes ownership of a simulation and initialises it at once.
    void addSimulation(Simulation* simulation);
    /// Finishes a simulation and gives it back to the caller; false if it is not held.
    bool removeSimulation(Simulation* simulation);

    /// Runs function(0, userData, first, last) over 0..lastIndex in slices of batchSize, on the pool. batchSize > 0.
    void processThreadable(BatchUpdateMethod function, void* userData, int lastIndex, unsigned int batchSize);

    /// Worker threads plus the calling thread.
    int getThreadCount() const { return _workerThreadCount + 1; }
    int getLogicalCPUsCount() const { return _logicalCPUsCount; }
    const SimulationsCollection& getSimulationsCollection() const { return _simulationsCollection; }
    SimulationsCollection& touchSimulationsCollection() { return _simulationsCollection; }

    /// Runs every batch of the queue: blocking ones alone here, the runs between them on the pool.
    void consumeEngineBatchQueue();
    /// Gives back the memory of the parallel run's array.
    void deallocateEngineBatchQueue();

    /// A worker's share of the parallel run: batches taken by fetch-and-add until none is left.
    void consumeBatchQueueTask();
    /// Called by a worker when its share is done.
    void incrementThreadDoneCount() { _threadsDoneCount.fetchAndAdd(1); }
    /// The barrier the workers sleep on.
    SynchroBarrier& touchLaunchBarrier() { return _launchUpdateProcessBarrier; }
    /// True once the workers must leave their loop.
    bool mustStopThreads() const { return atomicLoadAcquireBool(_stopThreads); }
    /// Records that a worker left its loop on an error.
    void setSomeThreadsDied() { _someThreadsDied = true; }

private:
    void updateThreadCount(int threadCount);
    void setupWorkerThreads(int threadCount, size_t stackSize);
    void closeWorkerThreads();
    void runParallelBatches();
    void launchThreadedUpdate();
    void resetThreadDoneCount() { _threadsDoneCount.store(0); }
    void waitForThreadedUpdateReady();
    void waitForThreadedUpdateEnd();

    SimulationsCollection _simulationsCollection;
    atomic32_t _threadsDoneCount;
    int _workerThreadCount = 0;
    threaddef_t* _workerThreads = nullptr;
    atomic32_t _stopThreads;
    int _logicalCPUsCount = 1;
    SynchroBarrier _launchUpdateProcessBarrier;
    volatile bool _someThreadsDied = false;
    bool _threadsLaunchFailed = false;
    bool _threadedProcessingInProgress = false;
    BatchUpdateMethod _threadUpdateMethod = nullptr;
    Array<ProcessingBatch> _batchQueueForMultithread;
    atomic32_t _currentBatchToProcess;
    int _threadsInUse = 0;
};

} // namespace orv
