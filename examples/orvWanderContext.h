// examples/orvWanderContext.h
#pragma once

#include <cmath>

#include "engine/simulation/orvIContext.h"
#include "engine/simulation/orvSimulation.h"
#include "math/random/orvNoise.h"
#include "math/types/orvQuaternion.h"
#include "math/types/orvVector3.h"

namespace orvdemo
{

/// A host NAVIGATION context that makes every entity wander on the ground plane: each frame it turns a little,
/// by smooth noise and a draw from the entity's own generator, and walks on at a speed that drifts the same way.
/// The heading lives in the entity's move orientation, so the context keeps no per-entity storage.
class WanderContext : public orv::IContext
{
    ORV_DECLARE_RTTI(WanderContext)

public:
    WanderContext() : orv::IContext(true, false) {}

    void setContextType() override { assignContextType(ContextType::NAVIGATION); }
    void allocateComponentsArrays() override {}
    void deallocateComponentsArrays() override {}
    void doInit() override {}
    void doUpdate(orv::Time dt) override { _time += static_cast<float>(dt); }
    void doFinish() override {}

    bool registeredOnInitEntityComponents() const override { return true; }
    void onInitEntityComponents(int first, int last) override
    {
        orv::EntitiesManager& manager = getSimulation()->touchEntitiesManager();
        for (int i = first; i <= last; ++i)
        {
            orv::Entity* entity = manager.getEntity(i);
            orv::RandomNumberGenerator& rng = entity->touchRNG();
            entity->setPosition(orv::Vector3(rng.frand(-50.0f, 50.0f), 0.0f, rng.frand(-50.0f, 50.0f)));
            setHeading(*entity, rng.frand(-kPi, kPi));
            entity->setSpeed(rng.frand(0.8f, 1.6f));
        }
    }

    bool registeredOnUpdateEntityComponents() const override { return true; }
    void onUpdateEntityComponents(orv::Time dt, int first, int last) override
    {
        orv::EntitiesManager& manager = getSimulation()->touchEntitiesManager();
        const float step = static_cast<float>(dt);
        for (int i = first; i <= last; ++i)
        {
            orv::Entity* entity = manager.getEntity(i);
            orv::RandomNumberGenerator& rng = entity->touchRNG();
            const float phase = static_cast<float>(entity->getId()) * 0.37f;
            const float turnRate = orv::sdnoise1(_time * 0.5f + phase) * 1.5f + rng.frand(-0.2f, 0.2f);
            const float heading = getHeading(*entity) + turnRate * step;
            setHeading(*entity, heading);
            float speed = entity->getSpeed() + rng.frand(-0.05f, 0.05f);
            speed = speed < 0.5f ? 0.5f : (speed > 2.0f ? 2.0f : speed);
            entity->setSpeed(speed);
            orv::Vector3 position = entity->getPosition();
            position.x += std::sin(heading) * speed * step;
            position.z += std::cos(heading) * speed * step;
            entity->setPosition(position);
        }
    }

private:
    static constexpr float kPi = 3.14159265f;

    // A heading is a rotation about the vertical axis, with 0 facing +z.
    static void setHeading(orv::Entity& entity, float heading)
    {
        const orv::Quaternion orientation(0.0f, std::sin(heading * 0.5f), 0.0f, std::cos(heading * 0.5f));
        entity.setMoveOrientation(orientation);
        entity.setBodyOrientation(orientation);
    }
    static float getHeading(const orv::Entity& entity)
    {
        const orv::Quaternion& q = entity.getMoveOrientation();
        return 2.0f * std::atan2(q.y, q.w);
    }

    float _time = 0.0f;
};

} // namespace orvdemo
