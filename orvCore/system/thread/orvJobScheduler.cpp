// orvCore/system/thread/orvJobScheduler.cpp
#include "system/thread/orvJobScheduler.h"

#include "system/debug/orvAssert.h"
#include "system/thread/orvJobProcessor.h"
#include "system/thread/orvThread.h"

namespace orv
{

JobScheduler::~JobScheduler()
{
    orvAssert(_workers == NULL);
    orvAssert(_jobBuffer == NULL);
}

bool JobScheduler::initialize(uint32_t workerCount, uint32_t jobBufferCount)
{
    orvAssert(_workers == NULL);
    orvAssert(workerCount > 0);

    _workerCount = workerCount;
    _threads = new threaddef_t[workerCount];
    _workers = new JobProcessor[workerCount];
    _jobBufferCount = jobBufferCount;
    _jobBuffer = new jobdef_t[jobBufferCount];
    _requestBuffer = new jobrequest_t[jobBufferCount];

    for (uint32_t workerIndex = 0; workerIndex < workerCount; ++workerIndex)
    {
        // A queue as long as the slot count holds every job but one; enqueueJob waits out the last.
        const bool workerIsSetup = _workers[workerIndex].initialize(jobBufferCount);
        orvAssert(workerIsSetup);
        const bool started = startTask(_threads[workerIndex], &_workers[workerIndex]);
        orvAssert(started);
    }
    // A worker accepts jobs, and a stop, only once its loop runs.
    for (uint32_t workerIndex = 0; workerIndex < workerCount; ++workerIndex)
    {
        while (!_workers[workerIndex].isRunningTask())
        {
            yieldCurrentThread();
        }
    }

    const uint32_t jobRequestCountMax = jobBufferCount;
    for (uint32_t requestIndex = 0; requestIndex < jobRequestCountMax; ++requestIndex)
    {
        jobrequest_t& request = _requestBuffer[requestIndex];
        request._jobIndex = requestIndex;
        request._workerIndex = kNoWorker;
        const uint32_t nextIndex = requestIndex + 1;
        if (nextIndex == jobRequestCountMax)
        {
            request._next = nullptr;
        }
        else
        {
            orvAssert(nextIndex < jobRequestCountMax);
            request._next = &_requestBuffer[nextIndex];
        }
    }
    _nextWorkerIndex = 0;
    _availableRequest = &_requestBuffer[0];
    return true;
}

void JobScheduler::uninitialize()
{
    _availableRequest = nullptr;
    for (uint32_t workerIndex = 0; workerIndex < _workerCount; ++workerIndex)
    {
        const bool stopped = stopTask(_threads[workerIndex], &_workers[workerIndex]);
        orvAssert(stopped);
        _workers[workerIndex].uninitialize();
    }
    delete[] _requestBuffer;
    _requestBuffer = nullptr;
    delete[] _jobBuffer;
    _jobBuffer = nullptr;
    delete[] _workers;
    _workers = nullptr;
    delete[] _threads;
    _threads = nullptr;
    _jobBufferCount = 0;
    _workerCount = 0;
}

bool JobScheduler::requestJobProcessing(jobprocess_t process, void* data, jobid_t& id)
{
    // Before initialize, or after uninitialize, a refusal would read as "every slot is held" and a caller would wait
    // for a slot that never comes back.
    orvAssert(_workers != NULL);
    if (_availableRequest == nullptr)
    {
        return false;
    }
    // Strict rotation, blind to load: a worker busy with a long job still gets its turn.
    const uint32_t workerIndex = _nextWorkerIndex % _workerCount;
    ++_nextWorkerIndex;

    jobrequest_t* request = pickJobRequest(workerIndex);
    jobdef_t& job = _jobBuffer[request->_jobIndex];
    setupJob(job, process, data);
    enqueueJob(workerIndex, &job);
    assignJobId(*request, id);
    return true;
}

bool JobScheduler::releaseJobRequest(jobid_t id)
{
    if (!isJobDone(id))
    {
        return false;
    }
    const uint32_t jobIndex = static_cast<uint32_t>(id._id);
    jobrequest_t& request = _requestBuffer[jobIndex];
    orvAssert(request._jobIndex == jobIndex);
    // A second release of the same id finds the slot already free.
    orvAssert(request._workerIndex < _workerCount);
    orvAssert(request._next == NULL);
    request._workerIndex = kNoWorker;
    request._next = _availableRequest;
    _availableRequest = &request;
    return true;
}

bool JobScheduler::isJobRunning(jobid_t id) const
{
    return atomicLoadAcquireBool(getJob(id)._isRunning);
}

bool JobScheduler::isJobDone(jobid_t id) const
{
    return atomicLoadAcquireBool(getJob(id)._isDone);
}

timetick_t JobScheduler::getJobStartTime(jobid_t id) const
{
    const jobdef_t& job = getJob(id);
    orvAssert(atomicLoadAcquireBool(job._isDone) == true);
    orvAssert(atomicLoadAcquireBool(job._isRunning) == false);
    return job._startTime;
}

timetick_t JobScheduler::getJobEndTime(jobid_t id) const
{
    const jobdef_t& job = getJob(id);
    orvAssert(atomicLoadAcquireBool(job._isDone) == true);
    orvAssert(atomicLoadAcquireBool(job._isRunning) == false);
    return job._endTime;
}

uint32_t JobScheduler::getJobWorkerIndex(jobid_t id) const
{
    getJob(id);
    return _requestBuffer[id._id]._workerIndex;
}

JobScheduler::jobrequest_t* JobScheduler::pickJobRequest(uint32_t workerIndex)
{
    jobrequest_t* request = _availableRequest;
    _availableRequest = request->_next;
    request->_workerIndex = workerIndex;
    request->_next = nullptr;
    return request;
}

void JobScheduler::setupJob(jobdef_t& job, jobprocess_t process, void* data)
{
    job._process = process;
    job._data = data;
    job._startTime = 0;
    job._endTime = 0;
    // Published by the queue push that follows: the worker sees the slot filled before it pops it.
    atomicStoreReleaseBool(job._isRunning, false);
    atomicStoreReleaseBool(job._isDone, false);
}

void JobScheduler::enqueueJob(uint32_t workerIndex, jobdef_t* job)
{
    // The queue is full only while the worker still has slots' worth of jobs ahead: it drains them on its own.
    while (!_workers[workerIndex].enqueueJob(job))
    {
        yieldCurrentThread();
    }
}

void JobScheduler::assignJobId(const jobrequest_t& request, jobid_t& id) const
{
    id._id = request._jobIndex;
}

const jobdef_t& JobScheduler::getJob(jobid_t id) const
{
    orvAssert(id._id < _jobBufferCount);
    return _jobBuffer[id._id];
}

} // namespace orv
