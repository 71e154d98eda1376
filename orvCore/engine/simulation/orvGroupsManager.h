// orvCore/engine/simulation/orvGroupsManager.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include "engine/simulation/orvEntityHandle.h"

namespace orv
{

class Group;
class Simulation;

/// The place of a simulation's groups. Today it holds no group and keeps only its capacity: the count is 0, no
/// handle is valid, lookups give null and the other operations do nothing. Owned by its simulation; host thread,
/// and the simulation's blocking batches.
class GroupsManager
{
    ORV_DECLARE_VALUE_RTTI(GroupsManager)

public:
    /// A manager with room for capacity groups.
    explicit GroupsManager(int capacity);

    /// Does nothing: there is no group to initialise.
    void initGroup(EntityHandle handle);
    /// Does nothing: there is no group to destroy.
    void reset();
    /// Does nothing; called at the end of each frame by Simulation::postUpdateBatch.
    void updateGroups();
    /// Sets the capacity.
    void setMaxGroups(int capacity);

    /// False for every handle: no group lives.
    bool isValidEntityHandle(EntityHandle handle) const;
    /// Null for every handle.
    Group* getGroup(EntityHandle handle) const;
    /// Null for every dense index.
    Group* getGroup(int denseIndex) const;
    /// Groups alive: 0.
    int getGroupCount() const { return 0; }
    /// The capacity.
    int getMaxGroups() const { return _maxGroups; }
    /// Groups are not paused one by one: false for every handle.
    bool isPaused(EntityHandle) const { return false; }

    /// Set by the simulation that owns the manager.
    void setSimulation(Simulation* simulation) { _simulation = simulation; }

private:
    int _maxGroups = 0;
    Simulation* _simulation = nullptr;
};

} // namespace orv
