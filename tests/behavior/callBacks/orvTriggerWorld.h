#pragma once

#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvSimulation.h"
#include "support/orvCoreTestSupport.h"

namespace orvtest
{

/// The smallest world a trigger reads: one simulation, one entity type whose graph the triggers bind to, and
/// a few entities. Frames are stepped by the simulation's own batch functions, without contexts or workers.
class TriggerWorld : public CoreTest
{
protected:
    static constexpr int _maxEntities = 8;

    void SetUp() override
    {
        CoreTest::SetUp();
        _simulation = new orv::Simulation(_maxEntities, 0);
        _typeId = _simulation->createEntityType(_maxEntities);
        addEntities(2);
    }
    void TearDown() override
    {
        delete _simulation;
        CoreTest::TearDown();
    }

    void addEntities(int count)
    {
        for (int i = 0; i < count; ++i)
        {
            _simulation->createEntity(static_cast<unsigned int>(_typeId));
        }
    }
    orv::BehaviorGraph* graph() { return &_simulation->getEntityType(_typeId)->touchBehaviorGraph(); }
    /// Ends the present frame dt seconds long and begins the next: the frame number rises by 1.
    void nextFrame(double dt = 0.5)
    {
        orv::Simulation::postUpdateBatch(dt, _simulation, 0, 0);
        orv::Simulation::preUpdateBatch(dt, _simulation, 0, 0);
    }
    static orv::BoolCallBackPointer constant(bool value)
    {
        return orv::BoolCallBackPointer(new orv::ConstantValueCallback<bool>(value));
    }

    orv::Simulation* _simulation = nullptr;
    int _typeId = -1;
};

} // namespace orvtest
