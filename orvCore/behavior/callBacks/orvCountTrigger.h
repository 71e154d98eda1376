// orvCore/behavior/callBacks/orvCountTrigger.h
#pragma once

#include "behavior/callBacks/orvAbstractTrigger.h"

namespace orv
{

/// Counts, per entity, the frames in which it is asked, and compares the count with the entity's threshold.
/// Thresholds are set on the host thread while nothing updates; calls run on the workers.
class CountTrigger : public AbstractTrigger
{
    ORV_DECLARE_RTTI(CountTrigger)

public:
    /// A trigger comparing by condition; any code but the six comparisons compares as EQUAL.
    explicit CountTrigger(ComparisonOperator::Value condition = ComparisonOperator::EQUAL);

    /// Extends the counts with 0 and the thresholds with the default threshold.
    void setUsedCount(int count) override;
    /// Empties the counts and the thresholds too and sets their capacity.
    void setMaxCount(int count) override;

    /// The entity's threshold; 0, with a LOG_ERROR line, for an entity without an entry.
    unsigned int getTriggerCount(int entity) const;
    /// Sets the entity's threshold; refused with a LOG_ERROR line for an entity without an entry.
    void setTriggerCount(int entity, unsigned int count);
    /// The threshold of entities added from now on; 1 by default.
    unsigned int getDefaultTriggerCount() const { return _defaultThresholdCount; }
    void setDefaultTriggerCount(unsigned int count) { _defaultThresholdCount = count; }
    /// Frames counted for the entity since its reset; 0, with a LOG_ERROR line, for an entity without an entry.
    unsigned int getCurrentCount(int entity) const;

    /// The comparison of the count (left) with the threshold (right).
    ComparisonOperator::Value getCondition() const { return _condition; }
    void setCondition(ComparisonOperator::Value condition) { _condition = condition; }
    /// The comparison's code, for the streams; a code above END is kept as END, which compares as EQUAL.
    unsigned int getEnableConditionUInt() const { return static_cast<unsigned int>(_condition); }
    void setEnableConditionUInt(unsigned int condition);

    /// Capacities of the two per-entity arrays, for the streams, which set them before the arrays. A negative
    /// value is refused with a LOG_ERROR line.
    int getCallsCountArrayCapacity() const { return static_cast<int>(_callsCount.capacity()); }
    void setCallsCountArrayCapacity(int capacity);
    int getThresholdCountsArrayCapacity() const { return static_cast<int>(_thresholdCounts.capacity()); }
    void setThresholdCountsArrayCapacity(int capacity);

protected:
    /// The count starts over at 0.
    void doReset(int entity) override;
    /// Adds 1 to the count, then compares it with the threshold.
    bool doCall(int entity) override;

private:
    ComparisonOperator::Value _condition = ComparisonOperator::EQUAL;
    PODArray<unsigned int> _callsCount;
    PODArray<unsigned int> _thresholdCounts;
    unsigned int _defaultThresholdCount = 1;
};

} // namespace orv
