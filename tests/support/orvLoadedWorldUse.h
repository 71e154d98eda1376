// tests/support/orvLoadedWorldUse.h
#pragma once

#include "engine/simulation/orvEntitiesManager.h"
#include "engine/simulation/orvEntityType.h"
#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"

namespace orvtest
{

/// Uses a world just loaded from a snapshot as a host would, and ends it: a frame on a processor, one new entity
/// per type that has room, the destruction of the entity in the middle of the dense array, another frame, and the
/// processor's finish, which deletes the world. Takes ownership of world. Host thread.
inline void useLoadedWorld(orv::Simulation* world)
{
    if (world->isInitialized())
    {
        // A processor initialises what it is given: a world saved running is finished first, as a host reloading
        // it into a fresh processor would.
        orv::Simulation::finishBatch(0.0, world, 0, 0);
    }
    orv::SimulationsProcessor processor;
    processor.addSimulation(world);
    processor.update(0.04);
    const orv::EntitiesManager& manager = world->getEntitiesManager();
    for (int t = 0; t < world->getEntityTypeCount(); ++t)
    {
        const orv::EntityType* type = world->getEntityType(t);
        if (manager.getEntityCount() < manager.getMaxEntities() && type->getInstanceCount() < type->getMaxCount())
        {
            world->createEntity(static_cast<unsigned int>(t));
        }
    }
    if (manager.getEntityCount() > 0)
    {
        world->destroyEntity(manager.getEntity(manager.getEntityCount() / 2)->getHandle());
    }
    processor.update(0.04);
    processor.finish();
}

} // namespace orvtest
