// orvCore/system/thread/orvSynchroBarrier.cpp
#include "system/thread/orvSynchroBarrier.h"

#include <cstring>

#include "system/debug/orvAssert.h"

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
    bool succeeded = true;
    if (_threadCount != 0 && _currentThreadsWaiting >= _threadCount)
    {
        succeeded = internal_launch();
    }
    else
    {
        const unsigned int condIndex = _condIndex;
        const uint64_t releaseCount = _releaseCount;
        int result = 0;
        // A wake-up without a release is possible: sleep again until the release this thread waits for.
        while (result == 0 && _releaseCount == releaseCount)
        {
            result = pthread_cond_wait(&_condition[condIndex], &_mutex);
        }
        succeeded = result == 0;
        if (!succeeded && _releaseCount == releaseCount)
        {
            // The thread leaves without a release: it no longer sleeps here.
            --_currentThreadsWaiting;
        }
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

bool SynchroBarrier::internal_launch()
{
    _currentThreadsWaiting = 0;
    const bool succeeded = pthread_cond_broadcast(&_condition[_condIndex]) == 0;
    // Threads that wait again from now on sleep on the other condition, which this broadcast does not touch.
    _condIndex = 1 - _condIndex;
    ++_releaseCount;
    return succeeded;
}

} // namespace orv
