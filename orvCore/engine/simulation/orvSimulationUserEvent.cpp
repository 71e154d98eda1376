// orvCore/engine/simulation/orvSimulationUserEvent.cpp
#include "engine/simulation/orvSimulationUserEvent.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(SimulationUserEvent, "3f12b09b-9d47-4873-8fa9-a8028d774c93", "orv::SimulationUserEvent")

void SimulationUserEvent::addAttributes()
{
    addAttribute("triggerTime", &SimulationUserEvent::_triggerTime);
}

SimulationUserEvent::~SimulationUserEvent() = default;

} // namespace orv
