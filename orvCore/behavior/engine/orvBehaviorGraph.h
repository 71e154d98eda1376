// orvCore/behavior/engine/orvBehaviorGraph.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

namespace orv
{

class AbstractEntityType;

/// The behaviour graph of one entity type, held by value by the type. Today it holds no behaviour: it counts the
/// type's slots, up to the highest one used, and its maximum count. Changed on the host thread only.
class BehaviorGraph
{
    ORV_DECLARE_RTTI(BehaviorGraph)

public:
    /// A graph for a type of at most maxEntityCount entities.
    explicit BehaviorGraph(int maxEntityCount = 0);
    virtual ~BehaviorGraph();

    /// Raises the slot count to slot + 1 when the slot is beyond it. Called by the entity type for a new slot.
    void addEntityToBehaviors(int slot);

    /// One more than the highest slot given so far, or 0.
    int getEntitySlotCount() const { return _entitySlotCount; }
    /// The maximum entity count given at construction.
    int getMaxEntityCount() const { return _maxEntityCount; }

    /// The entity type that holds the graph, or null; not owned. Set by that type when it is built; triggers reach
    /// the simulation through it.
    AbstractEntityType* getEntityType() const { return _parentEntityType; }
    void setParentEntityType(AbstractEntityType* entityType) { _parentEntityType = entityType; }

private:
    int _maxEntityCount = 0;
    int _entitySlotCount = 0;
    AbstractEntityType* _parentEntityType = nullptr;
};

} // namespace orv
