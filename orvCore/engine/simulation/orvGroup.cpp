// orvCore/engine/simulation/orvGroup.cpp
#include "engine/simulation/orvGroup.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(Group, "bfb621cd-9863-47ec-9ed8-99b19161f739", "orv::Group")

void Group::addAttributes()
{
    _rtti->addBaseClass<Entity>();
}

void Group::removeMember(Entity& entity)
{
    if (entity.getParentGroupHandle() == getHandle())
    {
        entity.setParentGroupHandle(EntityHandle());
    }
}

} // namespace orv
