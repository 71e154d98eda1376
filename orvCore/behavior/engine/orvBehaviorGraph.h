// orvCore/behavior/engine/orvBehaviorGraph.h
#pragma once

#include "system/inspection/orvInspectable.h"

namespace orv
{

/// The behaviours run by every entity of one type, with per-slot data sized for the type's maximum count.
class BehaviorGraph
{
    ORV_DECLARE_RTTI(BehaviorGraph)

public:
    /// A graph whose per-slot data can hold maxEntityCount entities.
    explicit BehaviorGraph(int maxEntityCount = 0);
    virtual ~BehaviorGraph();

    /// Makes room for the per-slot data of a slot used for the first time.
    void addEntityToBehaviors(int slot);

    /// Slots that have been given per-slot data so far.
    int getEntitySlotCount() const { return _entitySlotCount; }
    int getMaxEntityCount() const { return _maxEntityCount; }

private:
    int _maxEntityCount = 0;
    int _entitySlotCount = 0;
};

} // namespace orv
