// orvCore/engine/simulation/orvSimulationUserEvent.cpp
#include "engine/simulation/orvSimulationUserEvent.h"

namespace orv
{

SimulationUserEvent::~SimulationUserEvent() = default;

} // namespace orv
