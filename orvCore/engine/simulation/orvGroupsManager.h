// orvCore/engine/simulation/orvGroupsManager.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/simulation/orvEntityHandle.h"

namespace orv
{

class Group;
class Simulation;

/// The groups of a simulation, kept by the same handle scheme as the entities, with the group bit set.
class GroupsManager
{
    ORV_DECLARE_VALUE_RTTI(GroupsManager)

public:
    explicit GroupsManager(int capacity);

    /// Runs the contexts' component initialisation of one group.
    void initGroup(EntityHandle handle);
    /// Destroys every group.
    void reset();
    /// Per-frame bookkeeping of every group, at the end of the frame.
    void updateGroups();
    /// Sets the capacity.
    void setMaxGroups(int capacity);

    /// True for the handle of a live group.
    bool isValidEntityHandle(EntityHandle handle) const;
    /// The group of a handle, or null.
    Group* getGroup(EntityHandle handle) const;
    /// The group at a dense index.
    Group* getGroup(int denseIndex) const;
    int getGroupCount() const { return 0; }
    int getMaxGroups() const { return _maxGroups; }
    /// Groups are not paused one by one: false for every handle.
    bool isPaused(EntityHandle) const { return false; }

    void setSimulation(Simulation* simulation) { _simulation = simulation; }

private:
    int _maxGroups = 0;
    Simulation* _simulation = nullptr;
};

} // namespace orv
