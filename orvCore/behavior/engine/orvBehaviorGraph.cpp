// orvCore/behavior/engine/orvBehaviorGraph.cpp
#include "behavior/engine/orvBehaviorGraph.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(BehaviorGraph, "5f751cce-c799-4041-b5bc-e254ef2f2192", "orv::BehaviorGraph")

void BehaviorGraph::addAttributes()
{
}

BehaviorGraph::BehaviorGraph(int maxEntityCount) : _maxEntityCount(maxEntityCount)
{
}

BehaviorGraph::~BehaviorGraph() = default;

void BehaviorGraph::addEntityToBehaviors(int slot)
{
    if (slot + 1 > _entitySlotCount)
    {
        _entitySlotCount = slot + 1;
    }
}

} // namespace orv
