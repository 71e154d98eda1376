// orvCore/engine/simulation/orvSimulationsCollection.h
#pragma once

#include "engine/simulation/orvEntityHandle.h"
#include "engine/simulation/orvProcessingBatch.h"
#include "system/containers/orvPODArray.h"

namespace orv
{

class Simulation;

/// Simulations that share one batch queue, run one after another in order of adding. Owns them.
/// Used by one host thread.
class SimulationsCollection
{
public:
    SimulationsCollection();
    /// Deletes the simulations still held.
    virtual ~SimulationsCollection();

    /// Takes ownership and lays the simulation's initialisation down on the queue.
    void addSimulation(Simulation* simulation);
    /// Gives a simulation back to the caller, laying its finish down first if it is initialised. False if absent.
    bool removeSimulation(Simulation* simulation);
    /// Deletes every simulation.
    void clear();

    /// Lays down one frame of every simulation, initialising those that are not. Fatal if the queue is not empty.
    void enqueueUpdate(Time dt);
    /// Lays down the finish of every initialised simulation. Fatal if the queue is not empty.
    void enqueueFinish();
    void enqueueInitEntities(Simulation* simulation, const EntityHandle* handles, int count);
    void enqueueInitGroups(Simulation* simulation, const EntityHandle* handles, int count);

    /// Copies out and pops the front batch; false when the queue is empty.
    bool getNextProcessingBatch(ProcessingBatch& batch);

    const ProcessingBatchQueue& getBatchQueue() const { return _batchQueue; }
    ProcessingBatchQueue& touchBatchQueue() { return _batchQueue; }
    /// Simulated time of the first simulation; 0 with none.
    Time getDuration() const;
    int getSimulationCount() const { return static_cast<int>(_simulations.size()); }
    Simulation* getSimulation(int index) const { return _simulations[index]; }

private:
    PODArray<Simulation*> _simulations;
    ProcessingBatchQueue _batchQueue;
};

} // namespace orv
