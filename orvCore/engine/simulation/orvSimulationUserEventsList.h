// orvCore/engine/simulation/orvSimulationUserEventsList.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/simulation/orvSimulationUserEvent.h"
#include "system/containers/orvArray.h"

namespace orv
{

/// The user events of a simulation, in ascending trigger time: the walk stops at the first one not yet due, and
/// at a null entry. The host fills it and keeps ownership of the events.
class SimulationUserEventsList
{
    ORV_DECLARE_VALUE_RTTI(SimulationUserEventsList)

public:
    /// The events, owned by the list; host thread, between frames.
    const Array<SimulationUserEvent*>& getUserEvents() const { return _userEvents; }
    Array<SimulationUserEvent*>& touchUserEvents() { return _userEvents; }

private:
    Array<SimulationUserEvent*> _userEvents;
};

} // namespace orv
