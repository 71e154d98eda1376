// orvCore/system/thread/orvSpinLock.cpp
#include "system/thread/orvSpinLock.h"

namespace orv
{

void createSpinLock(spinlockdef_t& spinLockDef)
{
    spinLockDef._spinMutex.emplace();
}

void destroySpinLock(spinlockdef_t& spinLockDef)
{
    spinLockDef._spinMutex.reset();
}

void lock(spinlockdef_t& spinLockDef)
{
    spinLockDef._spinMutex->lock();
}

bool trylock(spinlockdef_t& spinLockDef)
{
    return spinLockDef._spinMutex->try_lock();
}

void unlock(spinlockdef_t& spinLockDef)
{
    spinLockDef._spinMutex->unlock();
}

SpinLock::SpinLock()
{
    createSpinLock(_spinLockDef);
}

SpinLock::~SpinLock()
{
    destroySpinLock(_spinLockDef);
}

void SpinLock::lock()
{
    orv::lock(_spinLockDef);
}

bool SpinLock::trylock()
{
    return orv::trylock(_spinLockDef);
}

void SpinLock::unlock()
{
    orv::unlock(_spinLockDef);
}

} // namespace orv
