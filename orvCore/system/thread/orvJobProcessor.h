// orvCore/system/thread/orvJobProcessor.h
#pragma once

#include <cstdint>

#include "system/thread/orvAtomic.h"
#include "system/thread/orvJobQueue.h"
#include "system/thread/orvTaskBase.h"

namespace orv
{

/// A worker: the body of one thread, which runs the jobs of its own queue in order, one at a time.
/// One producer thread enqueues; the worker's thread consumes.
class JobProcessor : public TaskBase
{
public:
    JobProcessor() = default;
    ~JobProcessor() override = default;
    JobProcessor(const JobProcessor&) = delete;
    /// Not copyable.
    JobProcessor& operator=(const JobProcessor&) = delete;

    /// Allocates the queue for jobCountMax slots, a power of two, of which one stays free. False otherwise.
    /// Before the thread starts.
    bool initialize(uint32_t jobCountMax);
    /// Frees the queue. The loop must have ended: assertion. Afterwards the worker can be initialised again.
    void uninitialize();
    /// Hands a job to the worker. False if the queue is full. The loop must be running and not stopping: assertions.
    /// From the producer thread only.
    bool enqueueJob(jobdef_t* job);

    /// The loop: runs queued jobs, sleeping a millisecond at a time when there is none, until a stop is requested.
    void runTask() override;
    /// Asks the loop to end after its present job. The loop must be running and not stopping: assertions.
    void requestStopTask() override;
    /// True while the loop runs. Any thread.
    bool isRunningTask() const override;
    /// 1 MiB.
    size_t getRequiredStackSize() const override;
    /// True while the loop sleeps for lack of work. Any thread.
    bool isWaiting() const;

private:
    JobQueue _jobsToProcess;    // written by the producer, read by the loop
    atomic32_t _isRunning;      // the loop is running
    atomic32_t _isWaiting;      // the loop sleeps for lack of work
    atomic32_t _stopProcessing; // the loop must end
};

} // namespace orv
