// orvCore/engine/ground/orvGroundManager.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/simulation/orvTime.h"

namespace orv
{

/// The grounds of a simulation. Called by the simulation's blocking batches only.
class GroundManager
{
    ORV_DECLARE_VALUE_RTTI(GroundManager)

public:
    /// At simulation initialisation.
    void init();
    /// At the start of each frame.
    void update(Time dt);
    /// At simulation finish.
    void finish();
    /// Back to the state of a new manager.
    void reset();

    /// True between init and finish.
    bool isRunning() const { return _running; }

private:
    bool _running = false;
};

} // namespace orv
