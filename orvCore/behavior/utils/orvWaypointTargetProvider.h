// orvCore/behavior/utils/orvWaypointTargetProvider.h
#pragma once

#include "behavior/utils/orvAbstractTargetProvider.h"
#include "system/containers/orvArray.h"
#include "system/containers/orvMap.h"

namespace orv
{

class BehaviorGraph;

/// Walks each entity along one list of waypoints: an entity's target is its present waypoint, and the next one
/// once it has come within the tolerance of it, one step per call. Positions come from the entity type of the
/// graph. The list, graph and tolerance are set on the host thread while nothing updates.
/// An entity's first call adds its entry to one map shared by all entities, and so allocates and is not safe
/// against other calls at the same time: make the first calls before parallel updates, or serialize them.
class WaypointTargetProvider : public AbstractTargetProvider
{
    ORV_DECLARE_RTTI(WaypointTargetProvider)

public:
    /// No graph, no waypoint, a tolerance of 1.
    WaypointTargetProvider();
    /// The count waypoints of targets, for the entities of graph (not owned). A negative count, or a null table
    /// with a positive count, is logged as an error and gives no waypoint.
    WaypointTargetProvider(BehaviorGraph* graph, int count, const Vector3* targets);
    /// A copy of targets, for the entities of graph (not owned).
    WaypointTargetProvider(BehaviorGraph* graph, const Array<Vector3>& targets);
    ~WaypointTargetProvider() override;

    /// target := the entity's present waypoint, after one step forward when the entity stands within the tolerance
    /// of it (the boundary included) and it is not the last. No step, with a logged error, for an entity that the
    /// graph's entity type does not hold; target is left as it was, with a logged error, when there is no
    /// waypoint or entity is negative.
    void computeTarget(int entity, Vector3& target, bool flag) override;
    /// True when the entity's waypoint is the last one; an entity not met yet stands at the first.
    bool isUltimateTarget(int entity) const override;

    /// The waypoints, in world units, in walking order.
    const Array<Vector3>& getTargets() const { return _targets; }
    /// Replaces waypoint index; an index outside the list is logged as an error and changes nothing.
    void setTarget(int index, const Vector3& target);
    /// The waypoint index each entity met so far has reached, by entity index.
    const OrvMap<int, int>& getCurrentTargets() const { return _currentTarget; }
    /// The graph whose entity type gives the positions; not owned.
    BehaviorGraph* getBehaviorGraph() const { return _behaviorGraph; }
    void setBehaviorGraph(BehaviorGraph* graph) { _behaviorGraph = graph; }
    /// The arrival distance, in world units, >= 0; a negative one is logged as an error and changes nothing.
    float getTolerance() const;
    void setTolerance(float tolerance);

private:
    Array<Vector3> _targets;
    // Per entity index, the waypoint reached; an entry is added at the entity's first call.
    OrvMap<int, int> _currentTarget;
    BehaviorGraph* _behaviorGraph = nullptr;
    // The square of the arrival distance, so that the per-call test needs no square root. Not saved.
    float _tolerance2 = 1.0f;

    // Copies count waypoints, or logs why it cannot.
    void assignTargets(int count, const Vector3* targets);
    // The position of entity, or false with a logged error when the graph's entity type holds no such entity.
    bool findPosition(int entity, Vector3& position) const;
};

} // namespace orv
