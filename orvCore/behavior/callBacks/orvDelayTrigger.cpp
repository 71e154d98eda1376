// orvCore/behavior/callBacks/orvDelayTrigger.cpp
#include "behavior/callBacks/orvDelayTrigger.h"

#include "engine/simulation/orvSimulation.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

void setCapacity(PODArray<double>& array, int capacity, const char* name)
{
    if (capacity < 0)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot set the capacity of " << name << " to " << capacity);
        return;
    }
    array.set_capacity(static_cast<size_t>(capacity));
}

} // namespace

ORV_IMPLEMENT_RTTI(DelayTrigger, "a9abc401-c0a2-4296-ad32-bd691f2402e2", "orv::DelayTrigger")

void DelayTrigger::addAttributes()
{
    _rtti->addBaseClass<AbstractTrigger>();
    // The start times' capacity is saved under the count trigger's name.
    addAccessorsAttribute<int>("callsCountArrayCapacity", &DelayTrigger::getStartTimeArrayCapacity,
                               &DelayTrigger::setStartTimeArrayCapacity);
    addAttribute("startTime", &DelayTrigger::_startTime);
    addAccessorsAttribute<int>("triggerDelaysArrayCapacity", &DelayTrigger::getTriggerDelaysArrayCapacity,
                               &DelayTrigger::setTriggerDelaysArrayCapacity);
    addAttribute("triggerDelays", &DelayTrigger::_triggerDelays);
    addAttribute("defaultTriggerDelay", &DelayTrigger::_defaultTriggerDelay);
}

void DelayTrigger::setUsedCount(int count)
{
    AbstractTrigger::setUsedCount(count);
    extendTo(_startTime, count, 0.0);
    extendTo(_triggerDelays, count, _defaultTriggerDelay);
}

void DelayTrigger::setMaxCount(int count)
{
    AbstractTrigger::setMaxCount(count);
    clearTo(_startTime, count);
    clearTo(_triggerDelays, count);
}

Time DelayTrigger::getTriggerDelay(int entity) const
{
    if (!hasEntity(entity))
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "No delay for entity " << entity << ": the trigger has " << getUsedCount() << " entities");
        return 0.0;
    }
    return _triggerDelays[entity];
}

void DelayTrigger::setTriggerDelay(int entity, Time delay)
{
    if (!hasEntity(entity))
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot set the delay of entity " << entity << ": the trigger has "
                                                                             << getUsedCount() << " entities");
        return;
    }
    _triggerDelays[entity] = delay;
}

Time DelayTrigger::getCurrentDelay(int entity) const
{
    const Time duration = getSimulation().getDuration();
    if (!hasEntity(entity))
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "No clock for entity " << entity << ": the trigger has " << getUsedCount() << " entities");
        return 0.0;
    }
    return duration - _startTime[entity];
}

void DelayTrigger::setStartTimeArrayCapacity(int capacity)
{
    setCapacity(_startTime, capacity, "the trigger's start times");
}

void DelayTrigger::setTriggerDelaysArrayCapacity(int capacity)
{
    setCapacity(_triggerDelays, capacity, "the trigger's delays");
}

void DelayTrigger::doReset(int entity)
{
    _startTime[entity] = getSimulation().getDuration();
}

bool DelayTrigger::doCall(int entity)
{
    // Strictly above: a delay of 0 is reached only in a frame after the reset.
    return getSimulation().getDuration() - _startTime[entity] > _triggerDelays[entity];
}

} // namespace orv
