// orvCore/behavior/engine/orvBehaviorGraph.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include "engine/simulation/orvTime.h"
#include "system/containers/orvArray.h"
#include "system/inspection/orvSmartPointer.h"

namespace orv
{

class AbstractBehavior;
class AbstractEntityType;

/// The behaviours of one entity type, held by value by the type. Owns its top-level nodes and runs them in order
/// of adding for every entity of the type, with the entity's slot in the type as the row index in every node.
/// Structure (add, remove, init(), finish()) changes on the host thread while nothing updates; the per-entity
/// operations run on the behaviour context's workers, one entity on one worker.
class BehaviorGraph
{
    ORV_DECLARE_RTTI(BehaviorGraph)

public:
    /// A graph whose nodes get rows for at most maxCount entities.
    explicit BehaviorGraph(int maxCount = 0);
    /// Takes every node out of the graph (rows freed, graph link cleared), then lets them go.
    virtual ~BehaviorGraph();
    /// A graph owns its nodes' rows: it is never copied.
    BehaviorGraph(const BehaviorGraph&) = delete;
    BehaviorGraph& operator=(const BehaviorGraph&) = delete;

    /// Takes behavior as a top-level node, updated after those added before: links it to the graph, allocates its
    /// rows and adds the type's entities. With requestStartAtInitialization it starts itself at init(entity).
    /// A null node, one already in a graph or one held by a container is refused with a logged error.
    void addBehavior(AbstractBehavior* behavior, bool requestStartAtInitialization);
    /// Frees the rows of a top-level node, unlinks it and lets it go; the others keep their order. A node that is
    /// not a top-level node of the graph is refused with a logged error.
    void removeBehavior(AbstractBehavior* behavior);
    /// Drops every top-level node without freeing its rows.
    void clearBehaviors();
    /// The top-level nodes, owned, in update order.
    const Array<SmartPointer<AbstractBehavior>>& getBehaviors() const { return _behaviors; }

    /// init() on every node in order, then marks the graph initialised whatever they answer.
    void init();
    /// finish() on every node in order, then marks the graph not initialised.
    void finish();
    /// Per-entity initialisation of every node in order; starts the nodes that ask for it. entity is a slot of
    /// the type. Host thread or the entity's worker.
    void init(int entity);
    /// One step of dt seconds of every node in order, each with the whole step. The entity's worker; no lock, no
    /// allocation.
    void update(Time dt, int entity);
    /// Forces every node out of any state for the entity, in order. Host thread or the entity's worker.
    void finish(int entity);

    /// Gives behavior a row for every slot of the type in use; free slots are skipped.
    void addEntitiesToBehavior(AbstractBehavior* behavior);
    /// Gives every top-level node a row for the slot, containers passing it down. Called by the type for a new
    /// slot.
    void addEntityToBehaviors(int entity);

    /// After a load: makes every node of the graph, walked through the containers, fit the type's slots (rows,
    /// composite slots) and drop follower ids and current children that point nowhere valid. Host thread.
    void repairLoadedNodes();

    /// True between init() and finish().
    bool isInitialized() const { return _initialized; }
    /// The number of rows every node is allocated for; set at construction.
    int getMaxCount() const { return _maxCount; }
    /// The same, under the name the triggers and containers use.
    int getMaxEntityCount() const { return _maxCount; }
    /// The rows in use: the type's slots, free ones included; for a graph held by no type, the most rows a
    /// top-level node has.
    int getEntitySlotCount() const;

    /// The entity type that holds the graph, or null; not owned. Set by that type when it is built or loaded;
    /// triggers reach the simulation through it.
    AbstractEntityType* getEntityType() const { return _parentEntityType; }
    void setParentEntityType(AbstractEntityType* entityType) { _parentEntityType = entityType; }

private:
    // Returns the index of behavior among the top-level nodes, or -1.
    int findBehavior(const AbstractBehavior* behavior) const;

    Array<SmartPointer<AbstractBehavior>> _behaviors;
    bool _initialized = false;
    int _maxCount = 0;
    AbstractEntityType* _parentEntityType = nullptr;
};

} // namespace orv
