// orvCore/system/thread/orvConditionLock.cpp
#include "system/thread/orvConditionLock.h"

namespace orv
{

void createConditionLock(conditionlockdef_t& conditionLockDef, mutexdef_t& mutexDef)
{
    conditionLockDef._uniqueLock.emplace(*mutexDef._mutex);
}

void destroyConditionLock(conditionlockdef_t& conditionLockDef)
{
    conditionLockDef._uniqueLock.reset();
}

ConditionLock::ConditionLock(Mutex& mutex)
{
    createConditionLock(_conditionLockDef, mutex.touchMutexDef());
}

ConditionLock::~ConditionLock()
{
    destroyConditionLock(_conditionLockDef);
}

} // namespace orv
