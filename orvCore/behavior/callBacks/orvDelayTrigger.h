// orvCore/behavior/callBacks/orvDelayTrigger.h
#pragma once

#include "behavior/callBacks/orvAbstractTrigger.h"
#include "engine/simulation/orvTime.h"

namespace orv
{

/// True for an entity once more simulated time than its delay has passed since its reset. Delays are set on the
/// host thread while nothing updates; calls run on the workers.
class DelayTrigger : public AbstractTrigger
{
    ORV_DECLARE_RTTI(DelayTrigger)

public:
    /// Extends the start times with 0 and the delays with the default delay.
    void setUsedCount(int count) override;
    /// Empties the start times and the delays too and sets their capacity.
    void setMaxCount(int count) override;

    /// The entity's delay in seconds; 0, with a LOG_ERROR line, for an entity without an entry.
    Time getTriggerDelay(int entity) const;
    /// Sets the entity's delay in seconds; refused with a LOG_ERROR line for an entity without an entry.
    void setTriggerDelay(int entity, Time delay);
    /// The delay of entities added from now on, in seconds; 0 by default.
    Time getDefaultTriggerDelay() const { return _defaultTriggerDelay; }
    void setDefaultTriggerDelay(Time delay) { _defaultTriggerDelay = delay; }
    /// Simulated time since the entity's reset, in seconds. Fatal when the trigger is not bound to a simulation;
    /// 0, with a LOG_ERROR line, for an entity without an entry.
    Time getCurrentDelay(int entity) const;

    /// Capacities of the two per-entity arrays, for the streams, which set them before the arrays. A negative
    /// value is refused with a LOG_ERROR line.
    int getStartTimeArrayCapacity() const { return static_cast<int>(_startTime.capacity()); }
    void setStartTimeArrayCapacity(int capacity);
    int getTriggerDelaysArrayCapacity() const { return static_cast<int>(_triggerDelays.capacity()); }
    void setTriggerDelaysArrayCapacity(int capacity);

protected:
    /// The clock starts at the simulation's present time.
    void doReset(int entity) override;
    /// True when the time since the reset is strictly above the delay.
    bool doCall(int entity) override;

private:
    PODArray<double> _startTime;
    PODArray<double> _triggerDelays;
    Time _defaultTriggerDelay = 0.0;
};

} // namespace orv
