// orvCore/system/thread/orvScopedLock.h
#pragma once

#include <cstddef>

#include "system/debug/orvAssert.h"

namespace orv
{

/// Holds a lock from construction to the end of the scope. Lock has lock() and unlock(): Mutex, SpinLock.
/// Belongs to the thread that built it.
template <class Lock>
class ScopedLock
{
public:
    /// Takes the lock. Does not take ownership of it.
    explicit ScopedLock(Lock& lock) : _locked(&lock) { _locked->lock(); }
    /// Releases the lock.
    ~ScopedLock()
    {
        orvAssert(_locked != NULL);
        _locked->unlock();
    }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;

private:
    Lock* _locked = nullptr;
};

/// Holds a reader-writer lock from construction to the end of the scope: as a writer when writer is true, as a
/// reader otherwise. Lock has lockReader(), unlockReader(), lockWriter() and unlockWriter(): RWSpinLock.
template <class Lock, bool writer>
class ScopedLockRW
{
public:
    /// Takes the lock in the mode of the template. Does not take ownership of it.
    explicit ScopedLockRW(Lock& lock) : _locked(&lock)
    {
        if constexpr (writer)
        {
            _locked->lockWriter();
        }
        else
        {
            _locked->lockReader();
        }
    }
    /// Releases the lock in the same mode.
    ~ScopedLockRW()
    {
        orvAssert(_locked != NULL);
        if constexpr (writer)
        {
            _locked->unlockWriter();
        }
        else
        {
            _locked->unlockReader();
        }
    }
    ScopedLockRW(const ScopedLockRW&) = delete;
    ScopedLockRW& operator=(const ScopedLockRW&) = delete;

private:
    Lock* _locked = nullptr;
};

} // namespace orv
