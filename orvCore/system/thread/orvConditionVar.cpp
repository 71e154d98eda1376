// orvCore/system/thread/orvConditionVar.cpp
#include "system/thread/orvConditionVar.h"

#include <chrono>
#include <system_error>

#include "system/debug/orvAssert.h"

namespace orv
{

void createConditionVar(conditionvardef_t& conditionVarDef)
{
    conditionVarDef._condition.emplace();
}

void destroyConditionVar(conditionvardef_t& conditionVarDef)
{
    conditionVarDef._condition.reset();
}

void wait(conditionvardef_t& conditionVarDef, conditionlockdef_t& conditionLockDef)
{
    // The standard library reports a failed lock or unlock by throwing; nothing may leave the library that way.
    try
    {
        conditionVarDef._condition->wait(*conditionLockDef._uniqueLock);
    }
    catch (const std::system_error& error)
    {
        orvExit("Waiting on a condition variable failed: %s", error.what());
    }
}

bool waitFor(conditionvardef_t& conditionVarDef, conditionlockdef_t& conditionLockDef, uint32_t milliseconds)
{
    const std::chrono::system_clock::time_point limit =
        std::chrono::system_clock::now() +
        std::chrono::duration_cast<std::chrono::system_clock::duration>(
            std::chrono::nanoseconds(static_cast<uint64_t>(milliseconds) * 1000000u));
    try
    {
        return conditionVarDef._condition->wait_until(*conditionLockDef._uniqueLock, limit) ==
               std::cv_status::no_timeout;
    }
    catch (const std::system_error& error)
    {
        orvExit("Waiting on a condition variable failed: %s", error.what());
    }
    return false;
}

void notifyOne(conditionvardef_t& conditionVarDef)
{
    conditionVarDef._condition->notify_one();
}

void notifyAll(conditionvardef_t& conditionVarDef)
{
    conditionVarDef._condition->notify_all();
}

ConditionVar::ConditionVar()
{
    createConditionVar(_conditionVarDef);
}

ConditionVar::~ConditionVar()
{
    destroyConditionVar(_conditionVarDef);
}

void ConditionVar::wait(ConditionLock& conditionLock)
{
    orv::wait(_conditionVarDef, conditionLock.touchConditionLockDef());
}

bool ConditionVar::waitFor(ConditionLock& conditionLock, uint32_t milliseconds)
{
    return orv::waitFor(_conditionVarDef, conditionLock.touchConditionLockDef(), milliseconds);
}

void ConditionVar::notifyOne()
{
    orv::notifyOne(_conditionVarDef);
}

void ConditionVar::notifyAll()
{
    orv::notifyAll(_conditionVarDef);
}

} // namespace orv
