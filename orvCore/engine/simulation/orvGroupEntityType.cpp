// orvCore/engine/simulation/orvGroupEntityType.cpp
#include "engine/simulation/orvGroupEntityType.h"

namespace orv
{

GroupEntityType::GroupEntityType(int maxCount) : AbstractEntityType(maxCount) {}

} // namespace orv
