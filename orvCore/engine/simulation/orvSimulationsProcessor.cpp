// orvCore/engine/simulation/orvSimulationsProcessor.cpp
#include "engine/simulation/orvSimulationsProcessor.h"

#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvWorkerThread.h"
#include "system/debug/orvAssert.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

const size_t kWorkerStackSize = 1048576;

// Parallel runs are short: the calling thread spins instead of sleeping, easing the core between reads.
inline void spinPause()
{
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#endif
}

} // namespace

SimulationsProcessor::SimulationsProcessor() : _logicalCPUsCount(static_cast<int>(getSupportedConcurrentThreadCount()))
{
}

SimulationsProcessor::~SimulationsProcessor()
{
    updateThreadCount(1);
}

void SimulationsProcessor::init(int threadCount)
{
    updateThreadCount(threadCount);
}

void SimulationsProcessor::update(Time dt)
{
    _simulationsCollection.enqueueUpdate(dt);
    consumeEngineBatchQueue();
}

void SimulationsProcessor::initEntities(Simulation* simulation, const EntityHandle* handles, int count)
{
    _simulationsCollection.enqueueInitEntities(simulation, handles, count);
    consumeEngineBatchQueue();
}

void SimulationsProcessor::initGroups(Simulation* simulation, const EntityHandle* handles, int count)
{
    _simulationsCollection.enqueueInitGroups(simulation, handles, count);
    consumeEngineBatchQueue();
}

void SimulationsProcessor::finish()
{
    _simulationsCollection.enqueueFinish();
    consumeEngineBatchQueue();
    deallocateEngineBatchQueue();
    _simulationsCollection.clear();
    updateThreadCount(1);
}

void SimulationsProcessor::addSimulation(Simulation* simulation)
{
    // The initialisation is consumed at once, so that the next update finds an empty queue.
    _simulationsCollection.addSimulation(simulation);
    consumeEngineBatchQueue();
}

bool SimulationsProcessor::removeSimulation(Simulation* simulation)
{
    const bool removed = _simulationsCollection.removeSimulation(simulation);
    consumeEngineBatchQueue();
    return removed;
}

void SimulationsProcessor::processThreadable(BatchUpdateMethod function, void* userData, int lastIndex,
                                             unsigned int batchSize)
{
    auto appendSlice = [&](int first, int last)
    { _batchQueueForMultithread.push_back(makeBatch(function, userData, false, first, last, 0.0)); };
    if (batchSize == 1)
    {
        for (int index = 0; index <= lastIndex; ++index)
        {
            appendSlice(index, index);
        }
    }
    else
    {
        const int size = static_cast<int>(batchSize);
        int first = 0;
        int last = size - 1;
        while (last <= lastIndex)
        {
            appendSlice(first, last);
            first = last + 1;
            last = first + size - 1;
        }
        // A final shorter slice ends at lastIndex.
        if (first <= lastIndex)
        {
            appendSlice(first, lastIndex);
        }
    }
    if (!_batchQueueForMultithread.empty())
    {
        runParallelBatches();
    }
}

void SimulationsProcessor::consumeEngineBatchQueue()
{
    ProcessingBatch batch;
    while (_simulationsCollection.getNextProcessingBatch(batch))
    {
        if (batch._blocking)
        {
            if (!_batchQueueForMultithread.empty())
            {
                runParallelBatches();
            }
            batch._updateMethod(batch._dt, batch._userData, batch._firstIndex, batch._lastIndex);
        }
        else
        {
            _batchQueueForMultithread.push_back(batch);
        }
    }
    orvAssertMsg(_batchQueueForMultithread.empty(),
                 "batch queue should always finish with a blocking batch, thus forcing consuming all multithread "
                 "queue");
}

void SimulationsProcessor::deallocateEngineBatchQueue()
{
    _batchQueueForMultithread.set_capacity(_batchQueueForMultithread.size());
}

void SimulationsProcessor::runParallelBatches()
{
    _currentBatchToProcess.store(0);
    launchThreadedUpdate();
    consumeBatchQueueTask();
    waitForThreadedUpdateEnd();
    _batchQueueForMultithread.clear();
}

void SimulationsProcessor::launchThreadedUpdate()
{
    if (_someThreadsDied)
    {
        // The count is unchanged, so this restarts nothing.
        updateThreadCount(getThreadCount());
        _someThreadsDied = false;
    }
    _threadsLaunchFailed = false;
    if (_workerThreadCount > 0)
    {
        resetThreadDoneCount();
        waitForThreadedUpdateReady();
        if (!_launchUpdateProcessBarrier.launch())
        {
            _threadsLaunchFailed = true;
        }
        _threadedProcessingInProgress = true;
    }
}

void SimulationsProcessor::consumeBatchQueueTask()
{
    const unsigned int size = static_cast<unsigned int>(_batchQueueForMultithread.size());
    const ProcessingBatch* batches = _batchQueueForMultithread.begin();
    unsigned int index = _currentBatchToProcess.fetchAndAdd(1);
    while (index < size)
    {
        const ProcessingBatch& batch = batches[index];
        batch._updateMethod(batch._dt, batch._userData, batch._firstIndex, batch._lastIndex);
        index = _currentBatchToProcess.fetchAndAdd(1);
    }
}

void SimulationsProcessor::waitForThreadedUpdateReady()
{
    if (_workerThreadCount > 0)
    {
        // No wake-up may be lost on a worker that has not gone to sleep yet.
        while (_launchUpdateProcessBarrier.getCurrentThreadsWaiting() != static_cast<unsigned int>(_workerThreadCount))
        {
            spinPause();
        }
    }
}

void SimulationsProcessor::waitForThreadedUpdateEnd()
{
    if (_workerThreadCount > 0 && !_threadsLaunchFailed)
    {
        while (atomicLoadAcquire(_threadsDoneCount) < static_cast<unsigned int>(_workerThreadCount))
        {
            spinPause();
        }
        _threadedProcessingInProgress = false;
    }
}

void SimulationsProcessor::updateThreadCount(int threadCount)
{
    if (getThreadCount() == threadCount)
    {
        return;
    }
    closeWorkerThreads();
    if (threadCount < 2)
    {
        return;
    }
    setupWorkerThreads(threadCount, kWorkerStackSize);
}

void SimulationsProcessor::setupWorkerThreads(int threadCount, size_t stackSize)
{
    atomicStoreReleaseBool(_stopThreads, false);
    if (threadCount < 1 || threadCount > _logicalCPUsCount)
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Cannot set Orvane Engine worker threads number below 1 or above logical CPUs of the computer, "
                   "bounding value "
                       << threadCount << " to [1," << _logicalCPUsCount
                       << "]. Note : ThreadCount includes main thread.");
        threadCount = threadCount < 1 ? 1 : _logicalCPUsCount;
    }
    const int workerCount = threadCount - 1;
    if (workerCount < 1)
    {
        _workerThreadCount = 0;
        _threadsInUse = 0;
        return;
    }
    _workerThreads = new threaddef_t[workerCount];
    for (int i = 0; i < workerCount; ++i)
    {
        resetThreadId(_workerThreads[i]);
        const bool created = createThread(_workerThreads[i], &WorkerThread::startRoutine, this, stackSize);
        orvAssert(created);
    }
    _workerThreadCount = workerCount;
    _threadsInUse = 0;
}

void SimulationsProcessor::closeWorkerThreads()
{
    if (_workerThreadCount == 0)
    {
        return;
    }
    waitForThreadedUpdateReady();
    atomicStoreReleaseBool(_stopThreads, true);
    if (!_launchUpdateProcessBarrier.launch())
    {
        orvLogCore(LogSeverity::LOG_CRITICAL, "Unable to launch stop thread signal, undefined behavior may follow.");
    }
    for (int i = 0; i < _workerThreadCount; ++i)
    {
        joinThread(_workerThreads[i]);
    }
    delete[] _workerThreads;
    _workerThreads = nullptr;
    _workerThreadCount = 0;
}

} // namespace orv
