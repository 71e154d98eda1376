// orvCore/system/thread/orvConditionLock.h
#pragma once

#include <mutex>
#include <optional>

#include <oneapi/tbb/mutex.h>

#include "system/thread/orvMutex.h"

namespace orv
{

/// The hold of one thread on a mutex, which a condition variable releases while it waits: the record under
/// ConditionLock. Usable between createConditionLock and destroyConditionLock.
struct conditionlockdef_t
{
    /// The hold, present between createConditionLock and destroyConditionLock.
    std::optional<std::unique_lock<tbb::mutex>> _uniqueLock;
};

/// Locks the mutex and builds the hold on it. The record must not hold one. The calling thread owns the hold.
void createConditionLock(conditionlockdef_t& conditionLockDef, mutexdef_t& mutexDef);
/// Unlocks the mutex and destroys the hold. On the thread that created it.
void destroyConditionLock(conditionlockdef_t& conditionLockDef);

/// Holds a Mutex locked from construction to destruction, except while a ConditionVar waits with it.
/// Belongs to the thread that built it.
class ConditionLock
{
public:
    /// Locks the mutex, sleeping while another thread holds it. Does not take ownership.
    explicit ConditionLock(Mutex& mutex);
    ~ConditionLock();
    ConditionLock(const ConditionLock&) = delete;
    ConditionLock& operator=(const ConditionLock&) = delete;

    /// The record, for ConditionVar.
    conditionlockdef_t& touchConditionLockDef() { return _conditionLockDef; }

private:
    conditionlockdef_t _conditionLockDef;
};

} // namespace orv
