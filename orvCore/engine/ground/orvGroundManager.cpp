// orvCore/engine/ground/orvGroundManager.cpp
#include "engine/ground/orvGroundManager.h"

namespace orv
{

void GroundManager::init() {}

void GroundManager::update(Time) {}

void GroundManager::finish() {}

void GroundManager::reset() {}

} // namespace orv
