// orvCore/system/thread/orvSynchroBarrier.h
#pragma once

#include <cstdint>
#include <pthread.h>

#include "system/thread/orvAtomic.h"

namespace orv
{

/// Where threads wait until a release: launch() from another thread, or the arrival of the thread count.
/// A waiting thread spins for a short time before it sleeps, so that releases that follow each other closely cost no
/// wake-up. Two conditions are used in turn, so that a thread that comes back to wait at once is not caught by the
/// release still under way. Any thread.
class SynchroBarrier
{
public:
    /// How long wait spins on the release before it sleeps by default, in nanoseconds: longer than the serial part
    /// of a frame of ten thousand entities, so that its parallel runs find the workers awake; a wake through the
    /// condition costs tens of microseconds. The spin yields the processor after a few rounds, so a spinning worker
    /// gives way to the threads with work on a loaded machine.
    static constexpr uint64_t kSpinNanoseconds = 200000;

    /// A barrier released only by launch().
    SynchroBarrier();
    ~SynchroBarrier();
    SynchroBarrier(const SynchroBarrier&) = delete;
    SynchroBarrier& operator=(const SynchroBarrier&) = delete;

    /// Waits for the next release, spinning up to the spin time and then sleeping; the thread that brings the count to
    /// the thread count releases instead. Counts as waiting from the call. Returns false on a system failure.
    bool wait();
    /// Wakes every thread in wait. Returns false on a system failure.
    bool launch();
    /// Sets the automatic release threshold; 0 means release only by launch(). No thread may be waiting: assertion.
    void setThreadCount(unsigned int threadCount);
    /// Sets how long wait spins before it sleeps, in nanoseconds; 0 sleeps at once. Set before threads wait.
    void setSpinNanoseconds(uint64_t spinNanoseconds) { _spinNanoseconds = spinNanoseconds; }
    /// How long wait spins before it sleeps, in nanoseconds.
    uint64_t getSpinNanoseconds() const { return _spinNanoseconds; }
    /// Threads in wait now, spinning or asleep; 0 on a system failure.
    unsigned int getCurrentThreadsWaiting() const;
    /// Which of the two conditions the next wait sleeps on, 0 or 1; each release flips it.
    unsigned int getConditionIndex() const;

private:
    /// Releases the sleepers on the current condition and moves to the other. Under _mutex.
    bool internal_launch();
    /// Spins until a release moves _releaseCount off releaseCount, or the spin time passes. True on a release.
    bool spinForRelease(uint64_t releaseCount) const;

    /// Wait limit in milliseconds: none, wait sleeps until the release.
    static constexpr unsigned int _timeOut = 0xFFFFFFFFu;

    unsigned int _threadCount = 0;           // automatic release threshold, 0 for never
    unsigned int _currentThreadsWaiting = 0; // threads in wait, spinning or asleep
    unsigned int _condIndex = 0;             // condition of the next wait, 0 or 1
    atomic64_t _releaseCount;                // releases so far, written under _mutex; a waiter leaves once it moves
    mutable pthread_mutex_t _mutex;          // guards the fields above
    pthread_cond_t _condition[2];            // alternating: a wait sleeps on _condition[_condIndex]
    uint64_t _spinNanoseconds = kSpinNanoseconds; // spin time of a wait before it sleeps; set while none waits
};

} // namespace orv
