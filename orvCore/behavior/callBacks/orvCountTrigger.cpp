// orvCore/behavior/callBacks/orvCountTrigger.cpp
#include "behavior/callBacks/orvCountTrigger.h"

#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

void setCapacity(PODArray<unsigned int>& array, int capacity, const char* name)
{
    if (capacity < 0)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot set the capacity of " << name << " to " << capacity);
        return;
    }
    array.set_capacity(static_cast<size_t>(capacity));
}

} // namespace

ORV_IMPLEMENT_RTTI(CountTrigger, "78d00a5b-fd20-418a-ba37-acd0d2b2fbfb", "orv::CountTrigger")

void CountTrigger::addAttributes()
{
    _rtti->addBaseClass<AbstractTrigger>();
    addAccessorsAttribute<unsigned int>("condition", &CountTrigger::getEnableConditionUInt,
                                        &CountTrigger::setEnableConditionUInt);
    addAccessorsAttribute<int>("callsCountArrayCapacity", &CountTrigger::getCallsCountArrayCapacity,
                               &CountTrigger::setCallsCountArrayCapacity);
    addAttribute("callsCount", &CountTrigger::_callsCount);
    addAccessorsAttribute<int>("thresholdCountsArrayCapacity", &CountTrigger::getThresholdCountsArrayCapacity,
                               &CountTrigger::setThresholdCountsArrayCapacity);
    addAttribute("thresholdCounts", &CountTrigger::_thresholdCounts);
    addAttribute("defaultThresholdCount", &CountTrigger::_defaultThresholdCount);
}

CountTrigger::CountTrigger(ComparisonOperator::Value condition) : _condition(condition)
{
}

void CountTrigger::setUsedCount(int count)
{
    AbstractTrigger::setUsedCount(count);
    extendTo(_callsCount, count, 0u);
    extendTo(_thresholdCounts, count, _defaultThresholdCount);
}

void CountTrigger::setMaxCount(int count)
{
    AbstractTrigger::setMaxCount(count);
    clearTo(_callsCount, count);
    clearTo(_thresholdCounts, count);
}

unsigned int CountTrigger::getTriggerCount(int entity) const
{
    if (!hasEntity(entity))
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "No threshold for entity " << entity << ": the trigger has " << getUsedCount() << " entities");
        return 0;
    }
    return _thresholdCounts[entity];
}

void CountTrigger::setTriggerCount(int entity, unsigned int count)
{
    if (!hasEntity(entity))
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot set the threshold of entity " << entity << ": the trigger has "
                                                                                 << getUsedCount() << " entities");
        return;
    }
    _thresholdCounts[entity] = count;
}

unsigned int CountTrigger::getCurrentCount(int entity) const
{
    if (!hasEntity(entity))
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "No count for entity " << entity << ": the trigger has " << getUsedCount() << " entities");
        return 0;
    }
    return _callsCount[entity];
}

void CountTrigger::setEnableConditionUInt(unsigned int condition)
{
    // A code past the enumeration is not a value of it: END stands for it, and compares as EQUAL as it would.
    _condition = condition < ComparisonOperator::END ? static_cast<ComparisonOperator::Value>(condition)
                                                     : ComparisonOperator::END;
}

void CountTrigger::setCallsCountArrayCapacity(int capacity)
{
    setCapacity(_callsCount, capacity, "the trigger's counts");
}

void CountTrigger::setThresholdCountsArrayCapacity(int capacity)
{
    setCapacity(_thresholdCounts, capacity, "the trigger's thresholds");
}

void CountTrigger::doReset(int entity)
{
    _callsCount[entity] = 0;
}

bool CountTrigger::doCall(int entity)
{
    const unsigned int count = ++_callsCount[entity];
    const unsigned int threshold = _thresholdCounts[entity];
    switch (_condition)
    {
    case ComparisonOperator::NOT_EQUAL:
        return count != threshold;
    case ComparisonOperator::LOWER_EQUAL:
        return count <= threshold;
    case ComparisonOperator::LOWER:
        return count < threshold;
    case ComparisonOperator::GREATER:
        return count > threshold;
    case ComparisonOperator::GREATER_EQUAL:
        return count >= threshold;
    default:
        return count == threshold;
    }
}

} // namespace orv
