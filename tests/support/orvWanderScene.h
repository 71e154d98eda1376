// tests/support/orvWanderScene.h
#pragma once

#include <cstdint>
#include <vector>

#include "behavior/behaviors/orvAbstractUserBehavior.h"
#include "behavior/callBacks/orvITypedCallBack.h"
#include "behavior/utils/orvWaypointTargetProvider.h"
#include "engine/simulation/orvIContext.h"
#include "system/containers/orvPODArray.h"

namespace orv
{
class Entity;
class Simulation;
} // namespace orv

namespace orvtest
{

/// A host NAVIGATION context that makes every entity wander on the ground plane: each frame it turns a little,
/// by smooth noise and a draw from the entity's own generator, and walks on at a speed that drifts the same way.
/// The heading lives in the entity's move orientation, so the context keeps no per-entity storage, and an entity's
/// path depends only on its own draws: the end state is the same whichever threads run the slices.
class WanderContext : public orv::IContext
{
    ORV_DECLARE_RTTI(WanderContext)

public:
    /// Multithreaded, entities before groups. A context that does not move only places the entities at their
    /// initialisation: a behaviour graph walks them then.
    explicit WanderContext(bool moves = true) : orv::IContext(true, false), _moves(moves) {}

    /// A NAVIGATION context with no arrays of its own and nothing to start or finish.
    void setContextType() override { assignContextType(ContextType::NAVIGATION); }
    void allocateComponentsArrays() override {}
    void deallocateComponentsArrays() override {}
    void doInit() override {}
    /// Advances the noise clock by dt seconds. Host thread, in the frame's blocking batch.
    void doUpdate(orv::Time dt) override { _time += static_cast<float>(dt); }
    void doFinish() override {}

    /// Takes part in the entities' initialisation and update.
    bool registeredOnInitEntityComponents() const override { return true; }
    /// Places each entity of the dense rows first..last in a 100 m square, facing and walking at random. Any thread.
    void onInitEntityComponents(int first, int last) override;
    bool registeredOnUpdateEntityComponents() const override { return _moves; }
    /// Turns and moves each entity of the dense rows first..last by dt seconds. Any thread, one slice each.
    void onUpdateEntityComponents(orv::Time dt, int first, int last) override;

    /// Sets the entity's move and body orientation to a heading about the vertical axis, in radians, 0 facing +z.
    static void setHeading(orv::Entity& entity, float heading);
    /// The heading of the entity's move orientation, in radians.
    static float getHeading(const orv::Entity& entity);

private:
    float _time = 0.0f; // seconds of noise clock, written only by doUpdate
    bool _moves = true; // whether the context walks the entities itself
};

/// The host behaviours of the wander graph: each acts for a time drawn from the entity's own generator at its start
/// and then ends; the time left is kept per entity (index in the type) and saved with the graph.
class TimedBehavior : public orv::AbstractUserBehavior
{
    ORV_DECLARE_ABSTRACT_RTTI(TimedBehavior)

public:
    /// Nothing to initialise: always true.
    bool doInit() override { return true; }
    void doFinish() override {}
    /// Draws the entity's time for this run.
    void doStart(int entity) override;
    /// Acts for dt seconds, then ends the run once its time is spent.
    void doUpdate(Time dt, int entity) override;
    /// SUCCESS.
    ResultStatus::Value doStop(Time dt, int entity) override;
    void doAllocate(int capacity) override
    {
        _remaining.set_capacity(static_cast<size_t>(capacity));
        _runs.set_capacity(static_cast<size_t>(capacity));
    }
    void doAddEntity(int entity) override;
    /// Runs started so far, all entities together. Host thread, between frames.
    unsigned long countRuns() const;

protected:
    /// The entity whose index in the graph's type is index.
    orv::Entity& touchEntity(int index);
    /// Seconds this run lasts for the entity, drawn from its generator.
    virtual float drawDuration(orv::Entity& entity) = 0;
    /// The action for dt seconds.
    virtual void act(orv::Entity& entity, float dt) = 0;

private:
    orv::PODArray<float> _remaining; // seconds left in the present run, per entity
    orv::PODArray<uint32_t> _runs;   // runs started, per entity; not saved
};

/// Walks straight on at the entity's speed for 1 to 3 s.
class WalkBehavior : public TimedBehavior
{
    ORV_DECLARE_RTTI(WalkBehavior)

protected:
    float drawDuration(orv::Entity& entity) override;
    void act(orv::Entity& entity, float dt) override;
};

/// Stands still for 0.2 to 1 s.
class PauseBehavior : public TimedBehavior
{
    ORV_DECLARE_RTTI(PauseBehavior)

protected:
    float drawDuration(orv::Entity& entity) override;
    void act(orv::Entity&, float) override {}
};

/// Turns on the spot at a rate drawn at the start (-1.5 to 1.5 rad/s) for 0.3 to 1 s.
class TurnBehavior : public TimedBehavior
{
    ORV_DECLARE_RTTI(TurnBehavior)

protected:
    float drawDuration(orv::Entity& entity) override;
    void act(orv::Entity& entity, float dt) override;
};

/// Walks towards the waypoints of a provider (a square of four corners, 20 m apart) for 1 to 3 s. The provider's
/// first answer for an entity is asked on the host thread as the entity joins, so that the workers only read and
/// step the provider's per-entity entry.
class WaypointWalkBehavior : public TimedBehavior
{
    ORV_DECLARE_RTTI(WaypointWalkBehavior)

public:
    /// A walk with its own provider.
    WaypointWalkBehavior();
    /// Sets the graph of the behaviour and of its provider.
    void setBehaviorGraph(orv::BehaviorGraph* graph) override;
    void doAddEntity(int entity) override;

protected:
    float drawDuration(orv::Entity& entity) override;
    void act(orv::Entity& entity, float dt) override;

private:
    orv::SmartPointer<orv::WaypointTargetProvider> _provider;
};

/// True for every fourth entity slot of a type: those follow the waypoints.
class EveryFourthEntity : public orv::ITypedCallBack<bool>
{
    ORV_DECLARE_RTTI(EveryFourthEntity)

public:
    bool call(int entity) override { return entity % 4 == 0; }
};

/// Runs started per kind of host behaviour ("walk", "turn", "pause", "waypoints") over the wander graphs of a
/// simulation: how many times entities took each branch. Host thread, between frames.
struct WanderBranchCounts
{
    unsigned long _walk = 0;
    unsigned long _turn = 0;
    unsigned long _pause = 0;
    unsigned long _waypoints = 0;
};
WanderBranchCounts countWanderBranches(const orv::Simulation& simulation);

/// Registers (true) or unregisters (false) the host classes of the wander scene: the context and the behaviours.
void registerWanderClasses(bool doRegister);

/// A new wander graph, over and over (a loop around a composite inside a composite): a random choice between walking
/// (weight 3) and turning (weight 1), then an alternative that sends every fourth entity along waypoints and the
/// others to a pause.
orv::AbstractBehavior* buildWanderGraph();

/// A new, uninitialised simulation of entityCount wanderers (entityCount >= 0) spread over typeCount entity types
/// (>= 1), entity i of type i % typeCount, with a WanderContext added. With withGraph, each type runs a wander graph
/// started at each entity's initialisation, and the context only places the entities. The caller owns the
/// simulation until a processor takes it.
orv::Simulation* buildWanderingWorld(int entityCount, int typeCount, bool withGraph = false);

/// Every live entity's handle word, then the raw bits of its position (x, y, z) and move orientation (x, y, z, w),
/// ordered by handle index: two worlds that ran the same are equal word for word.
std::vector<uint32_t> getPosesInHandleOrder(const orv::Simulation& simulation);

} // namespace orvtest
