// orvCore/system/thread/orvJobScheduler.h
#pragma once

#include <cstdint>

#include "system/thread/orvJobQueue.h"
#include "system/time/orvTimeTick.h"

namespace orv
{

class JobProcessor;
struct threaddef_t;

/// Names a job handed out by JobScheduler: the index of its slot.
struct jobid_t
{
    /// The id of no job.
    static constexpr uint64_t _invalidJobId = 0xFFFFFFFFFFFFFFFFull;

    /// True unless this is the id of no job.
    bool isValidJobId() const { return _id != _invalidJobId; }

    /// Slot index, or _invalidJobId.
    uint64_t _id = _invalidJobId;
};

/// Runs jobs on a fixed set of worker threads, handed out in strict rotation, with a fixed number of job slots.
/// Allocates only in initialize. Not thread-safe: one thread initialises, requests, queries and releases.
class JobScheduler
{
public:
    /// One job slot's bookkeeping: free, or held by a job until releaseJobRequest.
    struct jobrequest_t
    {
        /// Index of the slot in the job buffer, fixed at initialize.
        uint32_t _jobIndex = 0;
        /// Worker that runs the job; kNoWorker while the slot is free.
        uint32_t _workerIndex = kNoWorker;
        /// Next free request; null while the slot is held, and at the end of the free list.
        jobrequest_t* _next = nullptr;
    };

    /// Worker index of a free slot.
    static constexpr uint32_t kNoWorker = 0xFFFFFFFFu;

    JobScheduler() = default;
    /// uninitialize must have been called: assertions.
    ~JobScheduler();
    JobScheduler(const JobScheduler&) = delete;
    JobScheduler& operator=(const JobScheduler&) = delete;

    /// Starts workerCount worker threads, at least 1, and builds jobBufferCount slots, a power of two and at least 2,
    /// for jobs in flight: assertions. Each worker queue holds jobBufferCount - 1 jobs. Returns true.
    bool initialize(uint32_t workerCount, uint32_t jobBufferCount);
    /// Stops and joins the workers, dropping the jobs they have not started, and frees everything.
    void uninitialize();
    /// Hands process(data) to the next worker in turn and names it in id. False, with nothing changed, when every
    /// slot is held. May spin while that worker's queue is full. Only between initialize and uninitialize: assertion.
    bool requestJobProcessing(jobprocess_t process, void* data, jobid_t& id);
    /// Frees the slot of a finished job, whose id may then come back. False while the job is not done.
    bool releaseJobRequest(jobid_t id);
    /// True while the job's process runs.
    bool isJobRunning(jobid_t id) const;
    /// True once the job's process has returned, until the slot is reused.
    bool isJobDone(jobid_t id) const;
    /// Monotonic time at which the job started, in nanoseconds. The job must be done: assertions.
    timetick_t getJobStartTime(jobid_t id) const;
    /// Monotonic time at which the job ended, in nanoseconds. The job must be done: assertions.
    timetick_t getJobEndTime(jobid_t id) const;
    /// Index of the worker that runs the job, below the worker count; kNoWorker for a free slot.
    uint32_t getJobWorkerIndex(jobid_t id) const;

private:
    /// Takes the head of the free list for the worker.
    jobrequest_t* pickJobRequest(uint32_t workerIndex);
    /// Fills the slot and marks it neither running nor done.
    void setupJob(jobdef_t& job, jobprocess_t process, void* data);
    /// Spins until the worker's queue takes the job.
    void enqueueJob(uint32_t workerIndex, jobdef_t* job);
    /// Names the request's job.
    void assignJobId(const jobrequest_t& request, jobid_t& id) const;
    /// The slot of a valid id: assertion.
    const jobdef_t& getJob(jobid_t id) const;

    uint32_t _workerCount = 0;                 // worker threads
    threaddef_t* _threads = nullptr;           // one per worker, owned
    JobProcessor* _workers = nullptr;          // owned
    uint32_t _jobBufferCount = 0;              // job slots, a power of two
    jobdef_t* _jobBuffer = nullptr;            // the slots, owned
    jobrequest_t* _requestBuffer = nullptr;    // one per slot, same index, owned
    uint32_t _nextWorkerIndex = 0;             // rotation cursor, taken modulo the worker count
    jobrequest_t* _availableRequest = nullptr; // head of the free list
};

} // namespace orv
