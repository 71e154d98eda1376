// orvCore/system/thread/orvJobQueue.h
#pragma once

#include <cstddef>
#include <cstdint>

#include "system/thread/orvAtomic.h"
#include "system/time/orvTimeTick.h"

namespace orv
{

/// The work of a job: called once with the job's data, on a worker thread.
typedef void (*jobprocess_t)(void*);

/// One job slot. Filled by the scheduler before the job is queued; then the worker alone writes it until _isDone.
struct jobdef_t
{
    /// The work.
    jobprocess_t _process = nullptr;
    /// Its argument. Not owned.
    void* _data = nullptr;
    /// Monotonic clock in nanoseconds when the work began; written by the worker.
    timetick_t _startTime = 0;
    /// Monotonic clock in nanoseconds when the work returned; written by the worker.
    timetick_t _endTime = 0;
    /// 1 while the work runs.
    atomic32_t _isRunning;
    /// 1 once the work has returned and the times are written.
    atomic32_t _isDone;
};

/// A fixed ring of job pointers between one producer thread and one consumer thread, with no lock.
/// One slot always stays free: a queue of capacity n holds n - 1 jobs.
class JobQueue
{
public:
    JobQueue() = default;
    /// Frees the ring if uninitialize was not called.
    ~JobQueue();
    JobQueue(const JobQueue&) = delete;
    JobQueue& operator=(const JobQueue&) = delete;

    /// Allocates an empty ring of elementCountMax slots, at least 2: assertion. False, allocating nothing, unless
    /// the count is a power of two that fits the 32-bit indices. Before either thread uses the queue.
    bool initialize(size_t elementCountMax);
    /// Frees the ring, dropping what is left. After both threads stopped using it.
    void uninitialize();
    /// Appends a job; false when n - 1 jobs wait. Producer thread only.
    bool tryPushJob(jobdef_t* job);
    /// Takes the oldest job; false when none waits. Consumer thread only.
    bool tryPopJob(jobdef_t*& job);
    /// True between a successful initialize and uninitialize.
    bool wasInitialized() const { return _jobBuffer != nullptr; }

private:
    jobdef_t** _jobBuffer = nullptr; // the slots, owned
    uint32_t _bufferMask = 0;        // slot count minus 1
    atomic32_t _enqueueHead;         // next slot to write, below the slot count; written by the producer
    atomic32_t _dequeueTail;         // next slot to read, below the slot count; written by the consumer
};

} // namespace orv
