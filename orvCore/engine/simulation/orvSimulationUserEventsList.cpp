// orvCore/engine/simulation/orvSimulationUserEventsList.cpp
#include "engine/simulation/orvSimulationUserEventsList.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(SimulationUserEventsList, "5517913e-3779-4f09-b1d6-f8f9f12652dc", "orv::SimulationUserEventsList")

void SimulationUserEventsList::addAttributes()
{
    addAttribute("userEvents", &SimulationUserEventsList::_userEvents);
}

} // namespace orv
