// orvCore/engine/simulation/orvGroup.cpp
#include "engine/simulation/orvGroup.h"

namespace orv
{

void Group::removeMember(Entity& entity)
{
    if (entity.getParentGroupHandle() == getHandle())
    {
        entity.setParentGroupHandle(EntityHandle());
    }
}

} // namespace orv
