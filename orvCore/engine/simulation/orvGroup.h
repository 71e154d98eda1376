// orvCore/engine/simulation/orvGroup.h
#pragma once

#include "engine/simulation/orvEntity.h"

namespace orv
{

/// An entity with member entities, steered as a whole.
class Group : public Entity
{
public:
    /// Takes an entity out of the group and clears its parent group handle; nothing if it is not a member.
    void removeMember(Entity& entity);
};

} // namespace orv
