// tests/support/orvWanderScene.h
#pragma once

#include <cstdint>
#include <vector>

#include "engine/simulation/orvIContext.h"

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
    /// Multithreaded, entities before groups.
    WanderContext() : orv::IContext(true, false) {}

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
    bool registeredOnUpdateEntityComponents() const override { return true; }
    /// Turns and moves each entity of the dense rows first..last by dt seconds. Any thread, one slice each.
    void onUpdateEntityComponents(orv::Time dt, int first, int last) override;

private:
    static void setHeading(orv::Entity& entity, float heading);
    static float getHeading(const orv::Entity& entity);

    float _time = 0.0f; // seconds of noise clock, written only by doUpdate
};

/// A new, uninitialised simulation of entityCount wanderers (entityCount >= 0) spread over typeCount entity types
/// (>= 1), entity i of type i % typeCount, with a WanderContext added. The caller owns it until a processor takes it.
orv::Simulation* buildWanderingWorld(int entityCount, int typeCount);

/// Every live entity's handle word, then the raw bits of its position (x, y, z) and move orientation (x, y, z, w),
/// ordered by handle index: two worlds that ran the same are equal word for word.
std::vector<uint32_t> getPosesInHandleOrder(const orv::Simulation& simulation);

} // namespace orvtest
