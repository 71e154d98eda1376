// orvCore/engine/simulation/orvSimulationsCollection.h
#pragma once

#include "engine/simulation/orvEntityHandle.h"
#include "engine/simulation/orvProcessingBatch.h"
#include "system/containers/orvPODArray.h"

namespace orv
{

class Simulation;

/// Simulations that share one batch queue, run one after another in order of adding. Owns them.
/// Used by one host thread, or by the SimulationsProcessor that embeds it on that thread; never by the workers.
class SimulationsCollection
{
public:
    /// An empty collection with an empty queue.
    SimulationsCollection();
    /// Deletes the simulations still held.
    virtual ~SimulationsCollection();

    /// Takes ownership and lays the simulation's initialisation down on the queue.
    void addSimulation(Simulation* simulation);
    /// Gives a simulation back to the caller, laying its finish down first if it is initialised. False if absent.
    bool removeSimulation(Simulation* simulation);
    /// Deletes every simulation.
    void clear();

    /// Lays down one frame of dt seconds of every simulation, initialising those that are not. Fatal if the queue
    /// is not empty.
    void enqueueUpdate(Time dt);
    /// Lays down the finish of every initialised simulation. Fatal if the queue is not empty.
    void enqueueFinish();
    /// Lays down the initialisation of count (>= 0) host-created entities of a simulation held here.
    void enqueueInitEntities(Simulation* simulation, const EntityHandle* handles, int count);
    /// Lays down the initialisation of count (>= 0) host-created groups of a simulation held here.
    void enqueueInitGroups(Simulation* simulation, const EntityHandle* handles, int count);

    /// Copies out and pops the front batch; false when the queue is empty.
    bool getNextProcessingBatch(ProcessingBatch& batch);

    /// The batches laid down and not yet consumed, front first; owned by the collection.
    const ProcessingBatchQueue& getBatchQueue() const { return _batchQueue; }
    /// The batches laid down and not yet consumed, to add to or drain; owned by the collection.
    ProcessingBatchQueue& touchBatchQueue() { return _batchQueue; }
    /// Simulated time of the first simulation, in seconds; 0 with none.
    Time getDuration() const;
    /// Simulations held, >= 0.
    int getSimulationCount() const { return static_cast<int>(_simulations.size()); }
    /// The simulation at index, in order of adding; 0 <= index < getSimulationCount(). Still owned here.
    Simulation* getSimulation(int index) const { return _simulations[index]; }

private:
    PODArray<Simulation*> _simulations;
    ProcessingBatchQueue _batchQueue;
};

} // namespace orv
