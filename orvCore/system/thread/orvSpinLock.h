// orvCore/system/thread/orvSpinLock.h
#pragma once

#include <optional>

#include <oneapi/tbb/spin_mutex.h>

namespace orv
{

/// A busy-waiting, non-recursive lock: the record under SpinLock. Usable between createSpinLock and destroySpinLock.
struct spinlockdef_t
{
    /// The lock, present between createSpinLock and destroySpinLock.
    std::optional<tbb::spin_mutex> _spinMutex;
};

/// Builds the lock, unlocked. The record must not hold one.
void createSpinLock(spinlockdef_t& spinLockDef);
/// Destroys the lock, which must be unlocked.
void destroySpinLock(spinlockdef_t& spinLockDef);
/// Takes the lock, spinning while another thread holds it. Not recursive.
void lock(spinlockdef_t& spinLockDef);
/// Takes the lock if it is free. Returns whether it was taken.
bool trylock(spinlockdef_t& spinLockDef);
/// Releases the lock held by this thread.
void unlock(spinlockdef_t& spinLockDef);

/// A busy-waiting, non-recursive lock for very short sections. Any thread.
class SpinLock
{
public:
    SpinLock();
    ~SpinLock();
    SpinLock(const SpinLock&) = delete;
    /// Not copyable.
    SpinLock& operator=(const SpinLock&) = delete;

    /// Takes the lock, spinning while another thread holds it.
    void lock();
    /// Takes the lock if it is free. Returns whether it was taken.
    bool trylock();
    /// Releases the lock held by this thread.
    void unlock();

private:
    spinlockdef_t _spinLockDef;
};

} // namespace orv
