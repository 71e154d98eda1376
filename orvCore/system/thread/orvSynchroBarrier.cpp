// orvCore/system/thread/orvSynchroBarrier.cpp
#include "system/thread/orvSynchroBarrier.h"

#include <cstring>

#include "system/debug/orvAssert.h"
#include "system/thread/orvThread.h"
#include "system/time/orvTimeTick.h"

namespace orv
{

SynchroBarrier::SynchroBarrier()
{
    const int mutexResult = pthread_mutex_init(&_mutex, nullptr);
    if (mutexResult != 0)
    {
        orvExit("Cannot initialise the barrier's mutex: %s", strerror(mutexResult));
    }
    for (pthread_cond_t& condition : _condition)
    {
        const int conditionResult = pthread_cond_init(&condition, nullptr);
        if (conditionResult != 0)
        {
            orvExit("Cannot initialise the barrier's condition: %s", strerror(conditionResult));
        }
    }
}

SynchroBarrier::~SynchroBarrier()
{
    pthread_cond_destroy(&_condition[1]);
    pthread_cond_destroy(&_condition[0]);
    pthread_mutex_destroy(&_mutex);
}

bool SynchroBarrier::wait()
{
    if (pthread_mutex_lock(&_mutex) != 0)
    {
        return false;
    }
    ++_currentThreadsWaiting;
    if (_threadCount != 0 && _currentThreadsWaiting >= _threadCount)
    {
        const bool succeeded = internal_launch();
        pthread_mutex_unlock(&_mutex);
        return succeeded;
    }
    const unsigned int condIndex = _condIndex;
    const uint64_t releaseCount = _releaseCount.load();
    pthread_mutex_unlock(&_mutex);

    if (spinForRelease(releaseCount))
    {
        return true;
    }

    if (pthread_mutex_lock(&_mutex) != 0)
    {
        return false;
    }
    // No release can come between the last look and the sleep: both are under the mutex. _condIndex has not moved
    // since the call unless a release came, and then the thread does not sleep.
    int result = 0;
    // A wake-up without a release is possible: sleep again until the release this thread waits for.
    while (result == 0 && _releaseCount.load() == releaseCount)
    {
        result = pthread_cond_wait(&_condition[condIndex], &_mutex);
    }
    const bool succeeded = result == 0;
    if (!succeeded && _releaseCount.load() == releaseCount)
    {
        // The thread leaves without a release: it no longer waits here.
        --_currentThreadsWaiting;
    }
    pthread_mutex_unlock(&_mutex);
    return succeeded;
}

bool SynchroBarrier::launch()
{
    if (pthread_mutex_lock(&_mutex) != 0)
    {
        return false;
    }
    const bool succeeded = internal_launch();
    pthread_mutex_unlock(&_mutex);
    return succeeded;
}

void SynchroBarrier::setThreadCount(unsigned int threadCount)
{
    pthread_mutex_lock(&_mutex);
    orvAssert(_currentThreadsWaiting == 0);
    _threadCount = threadCount;
    pthread_mutex_unlock(&_mutex);
}

unsigned int SynchroBarrier::getCurrentThreadsWaiting() const
{
    if (pthread_mutex_lock(&_mutex) != 0)
    {
        return 0;
    }
    const unsigned int currentThreadsWaiting = _currentThreadsWaiting;
    pthread_mutex_unlock(&_mutex);
    return currentThreadsWaiting;
}

unsigned int SynchroBarrier::getConditionIndex() const
{
    if (pthread_mutex_lock(&_mutex) != 0)
    {
        return 0;
    }
    const unsigned int condIndex = _condIndex;
    pthread_mutex_unlock(&_mutex);
    return condIndex;
}

bool SynchroBarrier::spinForRelease(uint64_t releaseCount) const
{
    if (_spinNanoseconds == 0)
    {
        return atomicLoadAcquire(_releaseCount) != releaseCount;
    }
    const timetick_t deadline = getTimeTick() + _spinNanoseconds;
    unsigned int round = 0;
    for (;;)
    {
        // Acquire: what the launcher wrote before its release is visible to the thread that sees the release.
        if (atomicLoadAcquire(_releaseCount) != releaseCount)
        {
            return true;
        }
        if (getTimeTick() >= deadline)
        {
            return false;
        }
        spinBackOff(round);
    }
}

bool SynchroBarrier::internal_launch()
{
    _currentThreadsWaiting = 0;
    const bool succeeded = pthread_cond_broadcast(&_condition[_condIndex]) == 0;
    // Threads that wait again from now on sleep on the other condition, which this broadcast does not touch.
    _condIndex = 1 - _condIndex;
    // Release: a spinning waiter that sees the new count sees what the launcher wrote before.
    atomicStoreRelease(_releaseCount, _releaseCount.load() + 1);
    return succeeded;
}

} // namespace orv
