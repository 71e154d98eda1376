// tests/support/orvWanderScene.cpp
#include "support/orvWanderScene.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "engine/simulation/orvSimulation.h"
#include "math/random/orvNoise.h"
#include "math/types/orvQuaternion.h"
#include "math/types/orvVector3.h"
#include "system/inspection/orvInspectable.h"

namespace
{

const float kPi = 3.14159265f;

uint32_t bitsOf(float value)
{
    uint32_t word;
    memcpy(&word, &value, sizeof(word));
    return word;
}

} // namespace

namespace orvtest
{

// A host class registers like the library's own, so that snapshots can make it again from its identifier.
ORV_IMPLEMENT_RTTI(WanderContext, "63602f45-86d9-4f32-bd16-3a6e7dc551ad", "orvtest::WanderContext")

void WanderContext::addAttributes()
{
    _rtti->addBaseClass<orv::IContext>();
    addAttribute("time", &WanderContext::_time);
}

void WanderContext::onInitEntityComponents(int first, int last)
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

void WanderContext::onUpdateEntityComponents(orv::Time dt, int first, int last)
{
    orv::EntitiesManager& manager = getSimulation()->touchEntitiesManager();
    const float step = static_cast<float>(dt);
    for (int i = first; i <= last; ++i)
    {
        orv::Entity* entity = manager.getEntity(i);
        orv::RandomNumberGenerator& rng = entity->touchRNG();
        // The phase spreads the entities over the noise, so that they do not all turn alike.
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

// A heading is a rotation about the vertical axis, with 0 facing +z.
void WanderContext::setHeading(orv::Entity& entity, float heading)
{
    const orv::Quaternion orientation(0.0f, std::sin(heading * 0.5f), 0.0f, std::cos(heading * 0.5f));
    entity.setMoveOrientation(orientation);
    entity.setBodyOrientation(orientation);
}

float WanderContext::getHeading(const orv::Entity& entity)
{
    const orv::Quaternion& q = entity.getMoveOrientation();
    return 2.0f * std::atan2(q.y, q.w);
}

orv::Simulation* buildWanderingWorld(int entityCount, int typeCount)
{
    orv::Simulation* simulation = new orv::Simulation(entityCount, 0);
    simulation->addContext(new WanderContext());
    for (int t = 0; t < typeCount; ++t)
    {
        orv::EntityType* type = simulation->getEntityType(simulation->createEntityType(entityCount));
        type->setScaleRange(0.9f, 1.1f);
        type->setHeight(1.6f + 0.1f * static_cast<float>(t % 4));
    }
    for (int i = 0; i < entityCount; ++i)
    {
        simulation->createEntity(static_cast<unsigned int>(i % typeCount));
    }
    return simulation;
}

std::vector<uint32_t> getPosesInHandleOrder(const orv::Simulation& simulation)
{
    std::vector<const orv::Entity*> entities;
    for (const orv::Entity& entity : simulation.getEntitiesManager().getEntities())
    {
        entities.push_back(&entity);
    }
    std::sort(entities.begin(), entities.end(),
              [](const orv::Entity* a, const orv::Entity* b) { return a->getHandle()._index < b->getHandle()._index; });
    std::vector<uint32_t> words;
    for (const orv::Entity* entity : entities)
    {
        const orv::Vector3& p = entity->getPosition();
        const orv::Quaternion& q = entity->getMoveOrientation();
        words.insert(words.end(), {entity->getHandle().getUint32(), bitsOf(p.x), bitsOf(p.y), bitsOf(p.z), bitsOf(q.x),
                                   bitsOf(q.y), bitsOf(q.z), bitsOf(q.w)});
    }
    return words;
}

} // namespace orvtest
