// orvCore/engine/ground/orvGroundManager.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include "engine/simulation/orvTime.h"

namespace orv
{

/// The place of a simulation's grounds. Today it holds no ground and keeps only whether the simulation runs.
/// Owned by its simulation; called on the host thread, by the simulation's blocking batches and by reset.
class GroundManager
{
    ORV_DECLARE_VALUE_RTTI(GroundManager)

public:
    /// Marks the manager running; at simulation initialisation, in Simulation::preInitBatch.
    void init();
    /// Does nothing; called at the start of each frame, in Simulation::preUpdateBatch.
    void update(Time dt);
    /// Marks the manager stopped; at simulation finish, in Simulation::finishBatch.
    void finish();
    /// Back to the state of a new manager; from Simulation::reset.
    void reset();

    /// True between init and finish; the "running" attribute.
    bool isRunning() const { return _running; }

private:
    bool _running = false;
};

} // namespace orv
