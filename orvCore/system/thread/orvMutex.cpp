// orvCore/system/thread/orvMutex.cpp
#include "system/thread/orvMutex.h"

namespace orv
{

void createMutex(mutexdef_t& mutexDef)
{
    mutexDef._mutex.emplace();
}

void destroyMutex(mutexdef_t& mutexDef)
{
    mutexDef._mutex.reset();
}

void lock(mutexdef_t& mutexDef)
{
    mutexDef._mutex->lock();
}

bool trylock(mutexdef_t& mutexDef)
{
    return mutexDef._mutex->try_lock();
}

void unlock(mutexdef_t& mutexDef)
{
    mutexDef._mutex->unlock();
}

Mutex::Mutex()
{
    createMutex(_mutexDef);
}

Mutex::~Mutex()
{
    destroyMutex(_mutexDef);
}

void Mutex::lock()
{
    orv::lock(_mutexDef);
}

bool Mutex::trylock()
{
    return orv::trylock(_mutexDef);
}

void Mutex::unlock()
{
    orv::unlock(_mutexDef);
}

} // namespace orv
