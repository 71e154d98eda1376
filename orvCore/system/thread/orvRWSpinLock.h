// orvCore/system/thread/orvRWSpinLock.h
#pragma once

#include <optional>

#include <oneapi/tbb/spin_rw_mutex.h>

namespace orv
{

/// A busy-waiting lock held by one writer or by several readers: the record under RWSpinLock.
/// Usable between createReaderWriterSpinLock and destroyReaderWriterSpinLock.
struct rwspinlockdef_t
{
    /// The lock, present between createReaderWriterSpinLock and destroyReaderWriterSpinLock.
    std::optional<tbb::spin_rw_mutex> _spinRWMutex;
};

/// Builds the lock, free. The record must not hold one.
void createReaderWriterSpinLock(rwspinlockdef_t& rwSpinLockDef);
/// Destroys the lock, which must be free.
void destroyReaderWriterSpinLock(rwspinlockdef_t& rwSpinLockDef);
/// Takes a share of the lock, spinning while a writer holds it. Not recursive.
void lockReader(rwspinlockdef_t& rwSpinLockDef);
/// Takes a share of the lock if no writer holds it. Returns whether it was taken.
bool trylockReader(rwspinlockdef_t& rwSpinLockDef);
/// Releases this thread's share.
void unlockReader(rwspinlockdef_t& rwSpinLockDef);
/// Takes the whole lock, spinning while a writer or any reader holds it. Not recursive.
void lockWriter(rwspinlockdef_t& rwSpinLockDef);
/// Takes the whole lock if it is free. Returns whether it was taken.
bool trylockWriter(rwspinlockdef_t& rwSpinLockDef);
/// Releases the whole lock held by this thread.
void unlockWriter(rwspinlockdef_t& rwSpinLockDef);

/// A busy-waiting lock for very short sections, held by one writer or by several readers. Any thread.
class RWSpinLock
{
public:
    RWSpinLock();
    ~RWSpinLock();
    RWSpinLock(const RWSpinLock&) = delete;
    /// Not copyable.
    RWSpinLock& operator=(const RWSpinLock&) = delete;

    /// Takes a share of the lock, spinning while a writer holds it.
    void lockReader();
    /// Takes a share of the lock if no writer holds it. Returns whether it was taken.
    bool trylockReader();
    /// Releases this thread's share.
    void unlockReader();
    /// Takes the whole lock, spinning while a writer or any reader holds it.
    void lockWriter();
    /// Takes the whole lock if it is free. Returns whether it was taken.
    bool trylockWriter();
    /// Releases the whole lock held by this thread.
    void unlockWriter();

private:
    rwspinlockdef_t _rwSpinLockDef;
};

} // namespace orv
