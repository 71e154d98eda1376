// orvCore/engine/simulation/orvEntityType.cpp
#include "engine/simulation/orvEntityType.h"

namespace orv
{

EntityType::EntityType(int maxCount) : AbstractEntityType(maxCount) {}

} // namespace orv
