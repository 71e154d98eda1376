// orvCore/engine/simulation/orvGroupEntityType.cpp
#include "engine/simulation/orvGroupEntityType.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(GroupEntityType, "bd1ebaf5-fbb2-4088-9391-9c3f42678922", "orv::GroupEntityType")

void GroupEntityType::addAttributes()
{
    _rtti->addBaseClass<AbstractEntityType>();
}

GroupEntityType::GroupEntityType(int maxCount) : AbstractEntityType(maxCount)
{
}

} // namespace orv
