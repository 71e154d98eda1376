// orvCore/system/thread/orvSynchroBarrier.h
#pragma once

#include <cstdint>
#include <pthread.h>

namespace orv
{

/// Where threads sleep until a release: launch() from another thread, or the arrival of the thread count.
/// Two conditions are used in turn, so that a thread that comes back to wait at once is not caught by the release
/// still under way. Any thread.
class SynchroBarrier
{
public:
    /// A barrier released only by launch().
    SynchroBarrier();
    ~SynchroBarrier();
    SynchroBarrier(const SynchroBarrier&) = delete;
    SynchroBarrier& operator=(const SynchroBarrier&) = delete;

    /// Sleeps until the next release; the thread that brings the count to the thread count releases instead.
    /// Returns false on a system failure.
    bool wait();
    /// Wakes every thread in wait. Returns false on a system failure.
    bool launch();
    /// Sets the automatic release threshold; 0 means release only by launch(). No thread may be waiting: assertion.
    void setThreadCount(unsigned int threadCount);
    /// Threads asleep in wait now; 0 on a system failure.
    unsigned int getCurrentThreadsWaiting() const;
    /// Which of the two conditions the next wait sleeps on, 0 or 1; each release flips it.
    unsigned int getConditionIndex() const;

private:
    /// Releases the sleepers on the current condition and moves to the other. Under _mutex.
    bool internal_launch();

    /// Wait limit in milliseconds: none, wait sleeps until the release.
    static constexpr unsigned int _timeOut = 0xFFFFFFFFu;

    unsigned int _threadCount = 0;           // automatic release threshold, 0 for never
    unsigned int _currentThreadsWaiting = 0; // threads asleep in wait
    unsigned int _condIndex = 0;             // condition of the next wait, 0 or 1
    uint64_t _releaseCount = 0;              // releases so far; a sleeper leaves only when it has moved
    mutable pthread_mutex_t _mutex;          // guards the fields above
    pthread_cond_t _condition[2];            // alternating: a wait sleeps on _condition[_condIndex]
};

} // namespace orv
