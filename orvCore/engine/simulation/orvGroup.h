// orvCore/engine/simulation/orvGroup.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/simulation/orvEntity.h"

namespace orv
{

/// An entity with member entities, steered as a whole.
class Group : public Entity
{
    ORV_DECLARE_RTTI(Group)

public:
    /// Takes an entity out of the group and clears its parent group handle; nothing if it is not a member.
    void removeMember(Entity& entity);
};

} // namespace orv
