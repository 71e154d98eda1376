// orvCore/engine/simulation/orvSimulationUserEvent.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/simulation/orvTime.h"

namespace orv
{

/// A host call scheduled at a simulated time. Fires at most once, at the start of the first frame that reaches it,
/// in a blocking batch.
class SimulationUserEvent
{
    ORV_DECLARE_ABSTRACT_RTTI(SimulationUserEvent)

public:
    /// An event due at triggerTime, in seconds of simulation time; owned by the list that holds it.
    explicit SimulationUserEvent(Time triggerTime = 0.0) : _triggerTime(triggerTime) {}
    virtual ~SimulationUserEvent();

    /// The host's call.
    virtual void trigger() = 0;

    /// When the event is due, in seconds of simulation time.
    Time getTriggerTime() const { return _triggerTime; }
    void setTriggerTime(Time triggerTime) { _triggerTime = triggerTime; }
    bool operator<(const SimulationUserEvent& other) const { return _triggerTime < other._triggerTime; }

private:
    Time _triggerTime = 0.0;
};

} // namespace orv
