// orvCore/system/thread/orvConditionVar.h
#pragma once

#include <condition_variable>
#include <cstdint>
#include <optional>

#include "system/thread/orvConditionLock.h"

namespace orv
{

/// A place where threads sleep until another notifies them: the record under ConditionVar.
/// Usable between createConditionVar and destroyConditionVar.
struct conditionvardef_t
{
    /// The condition variable, present between createConditionVar and destroyConditionVar.
    std::optional<std::condition_variable_any> _condition;
};

/// Builds the condition variable. The record must not hold one.
void createConditionVar(conditionvardef_t& conditionVarDef);
/// Destroys the condition variable; no thread may be waiting on it.
void destroyConditionVar(conditionvardef_t& conditionVarDef);
/// Releases the lock's mutex, sleeps until notified, and locks it again. May wake without a notification:
/// callers test their condition in a loop. A system failure ends the process.
void wait(conditionvardef_t& conditionVarDef, conditionlockdef_t& conditionLockDef);
/// As wait, but gives up when the wall clock passes now plus the milliseconds. Returns false on that time-out.
bool waitFor(conditionvardef_t& conditionVarDef, conditionlockdef_t& conditionLockDef, uint32_t milliseconds);
/// Wakes one waiting thread, if any.
void notifyOne(conditionvardef_t& conditionVarDef);
/// Wakes every waiting thread.
void notifyAll(conditionvardef_t& conditionVarDef);

/// A place where threads sleep, each holding a ConditionLock, until another thread notifies them. Any thread.
class ConditionVar
{
public:
    ConditionVar();
    ~ConditionVar();
    ConditionVar(const ConditionVar&) = delete;
    /// Not copyable.
    ConditionVar& operator=(const ConditionVar&) = delete;

    /// Releases the lock's mutex, sleeps until notified, and locks it again. May wake without a notification.
    void wait(ConditionLock& conditionLock);
    /// As wait, with a limit in milliseconds of wall-clock time. Returns false on the time-out.
    bool waitFor(ConditionLock& conditionLock, uint32_t milliseconds);
    /// Wakes one waiting thread, if any.
    void notifyOne();
    /// Wakes every waiting thread.
    void notifyAll();

private:
    conditionvardef_t _conditionVarDef;
};

} // namespace orv
