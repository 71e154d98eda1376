// orvCore/engine/simulation/orvSimulationsCollection.cpp
#include "engine/simulation/orvSimulationsCollection.h"

#include "engine/simulation/orvSimulation.h"
#include "system/debug/orvAssert.h"

namespace orv
{

SimulationsCollection::SimulationsCollection() = default;

SimulationsCollection::~SimulationsCollection()
{
    clear();
}

void SimulationsCollection::addSimulation(Simulation* simulation)
{
    simulation->setSimulationsCollection(this);
    _simulations.push_back(simulation);
    simulation->enqueueInit(_batchQueue);
}

bool SimulationsCollection::removeSimulation(Simulation* simulation)
{
    for (Simulation** it = _simulations.begin(); it != _simulations.end(); ++it)
    {
        if (*it == simulation)
        {
            if (simulation->isInitialized())
            {
                simulation->enqueueFinish(_batchQueue);
            }
            simulation->setSimulationsCollection(nullptr);
            _simulations.erase(it);
            return true;
        }
    }
    return false;
}

void SimulationsCollection::clear()
{
    for (size_t i = 0; i < _simulations.size(); ++i)
    {
        delete _simulations[i];
    }
    _simulations.clear();
}

void SimulationsCollection::enqueueUpdate(Time dt)
{
    orvAssertMsg(_batchQueue.empty(), "Batch queue should be empty when requesting enqueueUpdate");
    for (size_t i = 0; i < _simulations.size(); ++i)
    {
        // A simulation never initialised, or finished, is initialised on the way into its next frame.
        if (!_simulations[i]->isInitialized())
        {
            _simulations[i]->enqueueInit(_batchQueue);
        }
        _simulations[i]->enqueueUpdate(_batchQueue, dt);
    }
}

void SimulationsCollection::enqueueFinish()
{
    orvAssertMsg(_batchQueue.empty(), "Batch queue should be empty when requesting enqueueFinish");
    for (size_t i = 0; i < _simulations.size(); ++i)
    {
        if (_simulations[i]->isInitialized())
        {
            _simulations[i]->enqueueFinish(_batchQueue);
        }
    }
}

void SimulationsCollection::enqueueInitEntities(Simulation* simulation, const EntityHandle* handles, int count)
{
    simulation->enqueueInitEntities(_batchQueue, handles, count);
}

void SimulationsCollection::enqueueInitGroups(Simulation* simulation, const EntityHandle* handles, int count)
{
    simulation->enqueueInitGroups(_batchQueue, handles, count);
}

bool SimulationsCollection::getNextProcessingBatch(ProcessingBatch& batch)
{
    if (_batchQueue.empty())
    {
        return false;
    }
    batch = _batchQueue.front();
    _batchQueue.pop();
    return true;
}

Time SimulationsCollection::getDuration() const
{
    return _simulations.empty() ? 0.0 : _simulations[0]->getDuration();
}

} // namespace orv
