// orvCore/system/thread/orvMutex.h
#pragma once

#include <optional>

#include <oneapi/tbb/mutex.h>

namespace orv
{

/// A blocking, non-recursive lock: the record under Mutex. Usable between createMutex and destroyMutex.
struct mutexdef_t
{
    /// The lock, present between createMutex and destroyMutex.
    std::optional<tbb::mutex> _mutex;
};

/// Builds the lock, unlocked. The record must not hold one.
void createMutex(mutexdef_t& mutexDef);
/// Destroys the lock, which must be unlocked.
void destroyMutex(mutexdef_t& mutexDef);
/// Takes the lock, sleeping while another thread holds it. Not recursive.
void lock(mutexdef_t& mutexDef);
/// Takes the lock if it is free. Returns whether it was taken.
bool trylock(mutexdef_t& mutexDef);
/// Releases the lock held by this thread.
void unlock(mutexdef_t& mutexDef);

/// A blocking, non-recursive lock for sections that may wait. Any thread.
class Mutex
{
public:
    Mutex();
    ~Mutex();
    Mutex(const Mutex&) = delete;
    /// Not copyable.
    Mutex& operator=(const Mutex&) = delete;

    /// Takes the lock, sleeping while another thread holds it.
    void lock();
    /// Takes the lock if it is free. Returns whether it was taken.
    bool trylock();
    /// Releases the lock held by this thread.
    void unlock();

    /// The record, for ConditionLock.
    mutexdef_t& touchMutexDef() { return _mutexDef; }

private:
    mutexdef_t _mutexDef;
};

} // namespace orv
