// orvCore/system/thread/orvRWSpinLock.cpp
#include "system/thread/orvRWSpinLock.h"

namespace orv
{

void createReaderWriterSpinLock(rwspinlockdef_t& rwSpinLockDef)
{
    rwSpinLockDef._spinRWMutex.emplace();
}

void destroyReaderWriterSpinLock(rwspinlockdef_t& rwSpinLockDef)
{
    rwSpinLockDef._spinRWMutex.reset();
}

void lockReader(rwspinlockdef_t& rwSpinLockDef)
{
    rwSpinLockDef._spinRWMutex->lock_shared();
}

bool trylockReader(rwspinlockdef_t& rwSpinLockDef)
{
    return rwSpinLockDef._spinRWMutex->try_lock_shared();
}

void unlockReader(rwspinlockdef_t& rwSpinLockDef)
{
    rwSpinLockDef._spinRWMutex->unlock_shared();
}

void lockWriter(rwspinlockdef_t& rwSpinLockDef)
{
    rwSpinLockDef._spinRWMutex->lock();
}

bool trylockWriter(rwspinlockdef_t& rwSpinLockDef)
{
    return rwSpinLockDef._spinRWMutex->try_lock();
}

void unlockWriter(rwspinlockdef_t& rwSpinLockDef)
{
    rwSpinLockDef._spinRWMutex->unlock();
}

RWSpinLock::RWSpinLock()
{
    createReaderWriterSpinLock(_rwSpinLockDef);
}

RWSpinLock::~RWSpinLock()
{
    destroyReaderWriterSpinLock(_rwSpinLockDef);
}

void RWSpinLock::lockReader()
{
    orv::lockReader(_rwSpinLockDef);
}

bool RWSpinLock::trylockReader()
{
    return orv::trylockReader(_rwSpinLockDef);
}

void RWSpinLock::unlockReader()
{
    orv::unlockReader(_rwSpinLockDef);
}

void RWSpinLock::lockWriter()
{
    orv::lockWriter(_rwSpinLockDef);
}

bool RWSpinLock::trylockWriter()
{
    return orv::trylockWriter(_rwSpinLockDef);
}

void RWSpinLock::unlockWriter()
{
    orv::unlockWriter(_rwSpinLockDef);
}

} // namespace orv
