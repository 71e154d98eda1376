// orvCore/engine/simulation/orvGroup.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include "engine/simulation/orvEntity.h"

namespace orv
{

/// An entity that stands for a group of entities. Today it keeps no member list: a member names its group by its
/// parent group handle. No lock: changed on the host thread between frames, like an entity. No group is made yet.
class Group : public Entity
{
    ORV_DECLARE_RTTI(Group)

public:
    /// Clears the entity's parent group handle if it names this group; nothing otherwise. Host thread, from
    /// Simulation::destroyEntity.
    void removeMember(Entity& entity);
};

} // namespace orv
