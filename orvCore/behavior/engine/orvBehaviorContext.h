// orvCore/behavior/engine/orvBehaviorContext.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include "engine/simulation/orvIContext.h"

namespace orv
{

/// The BEHAVIOR context, which every simulation holds by default. Multithreaded, groups before entities. Today it
/// registers for no callback and its hooks do nothing: a frame costs its three blocking batches and no slice.
/// Owned by its simulation; its hooks run on the host thread.
class BehaviorContext : public IContext
{
    ORV_DECLARE_RTTI(BehaviorContext)

public:
    /// A multithreaded context that handles groups before entities.
    BehaviorContext();
    ~BehaviorContext() override;

    /// BEHAVIOR.
    void setContextType() override;
    /// The context keeps no per-entity storage yet: these do nothing.
    void allocateComponentsArrays() override;
    void deallocateComponentsArrays() override;
    void doInit() override;
    void doUpdate(Time dt) override;
    void doFinish() override;
};

} // namespace orv
