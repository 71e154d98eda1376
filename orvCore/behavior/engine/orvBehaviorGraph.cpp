// orvCore/behavior/engine/orvBehaviorGraph.cpp
#include "behavior/engine/orvBehaviorGraph.h"

namespace orv
{

BehaviorGraph::BehaviorGraph(int maxEntityCount) : _maxEntityCount(maxEntityCount) {}

BehaviorGraph::~BehaviorGraph() = default;

void BehaviorGraph::addEntityToBehaviors(int slot)
{
    if (slot + 1 > _entitySlotCount)
    {
        _entitySlotCount = slot + 1;
    }
}

} // namespace orv
