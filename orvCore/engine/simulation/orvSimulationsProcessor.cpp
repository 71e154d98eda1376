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
    // A slice of no index would never reach lastIndex: the loop below would only grow the array.
    orvAssert(batchSize > 0);
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
    if (_workerThreadCount == 0)
    {
        // No pool: the batches run here in their order, and no barrier is touched.
        for (const ProcessingBatch& batch : _batchQueueForMultithread)
        {
            batch._updateMethod(batch._dt, batch._userData, batch._firstIndex, batch._lastIndex);
        }
        _batchQueueForMultithread.clear();
        return;
    }
    // The run is published before its cursor: a thread that reads the new cursor reads this run's array and count.
    _runBatches.store(_batchQueueForMultithread.begin(), std::memory_order_relaxed);
    _runBatchCount._value.store(static_cast<uint32_t>(_batchQueueForMultithread.size()), std::memory_order_relaxed);
    _batchesDoneCount.store(0);
    ++_runNumber;
    atomicStoreRelease(_currentBatchToProcess, static_cast<uint64_t>(_runNumber) << 32);
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
        // A worker that is not back at the barrier yet is not waited for: it joins the run if it comes before the
        // last claim, and otherwise the run is done without it.
        if (!_launchUpdateProcessBarrier.launch())
        {
            _threadsLaunchFailed = true;
        }
        _threadedProcessingInProgress = true;
    }
}

void SimulationsProcessor::consumeBatchQueueTask()
{
    unsigned int batchesRun = 0;
    uint64_t cursor = atomicLoadAcquire(_currentBatchToProcess);
    for (;;)
    {
        const uint32_t index = static_cast<uint32_t>(cursor);
        // Read after the cursor, these belong to the cursor's run or to a later one; a later one's cursor differs,
        // so the claim below fails and the loop reads again.
        const uint32_t count = _runBatchCount._value.load(std::memory_order_relaxed);
        if (index >= count)
        {
            break;
        }
        const ProcessingBatch* batches = _runBatches.load(std::memory_order_relaxed);
        // Each claim moves the shared cursor from core to core, which costs as much as a small batch: a thread
        // claims a share of what remains, a smaller one as the run drains, so that a run of a hundred slices takes
        // a dozen claims and the threads still end together.
        const uint32_t remaining = count - index;
        const uint32_t share = remaining / (2u * static_cast<uint32_t>(_workerThreadCount + 1));
        const uint32_t take = share > 0 ? share : 1u;
        if (_currentBatchToProcess._value.compare_exchange_weak(cursor, cursor + take, std::memory_order_acq_rel,
                                                                std::memory_order_acquire))
        {
            for (uint32_t i = index; i < index + take; ++i)
            {
                const ProcessingBatch& batch = batches[i];
                batch._updateMethod(batch._dt, batch._userData, batch._firstIndex, batch._lastIndex);
            }
            batchesRun += take;
            // The run cannot end while this thread's batches are not counted: the next index is in the same run.
            cursor += take;
        }
    }
    if (batchesRun != 0)
    {
        _batchesDoneCount.fetchAndAdd(batchesRun);
    }
}

void SimulationsProcessor::waitForThreadedUpdateReady()
{
    if (_workerThreadCount > 0)
    {
        // The stop must wake every worker: a worker that is not back at the barrier yet would miss it and never end.
        // The spin yields after a while, so that such a worker gets to run even when it shares a core with this one.
        unsigned int round = 0;
        while (_launchUpdateProcessBarrier.getCurrentThreadsWaiting() != static_cast<unsigned int>(_workerThreadCount))
        {
            spinBackOff(round);
        }
    }
}

void SimulationsProcessor::waitForThreadedUpdateEnd()
{
    // Every batch is claimed by now; a worker may still run one. Even after a failed launch a worker that was already
    // awake may have claimed some, so the count is always awaited. Parallel runs are short: spin rather than sleep,
    // yielding after a while to a worker that shares the core.
    const uint32_t batchCount = _runBatchCount.load();
    unsigned int round = 0;
    while (atomicLoadAcquire(_batchesDoneCount) != batchCount)
    {
        spinBackOff(round);
    }
    _threadedProcessingInProgress = false;
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
