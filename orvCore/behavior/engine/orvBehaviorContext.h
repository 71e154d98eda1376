// orvCore/behavior/engine/orvBehaviorContext.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/simulation/orvIContext.h"

namespace orv
{

/// Runs the behaviour graph of every entity type, groups before entities.
/// A default context: every simulation holds one.
class BehaviorContext : public IContext
{
    ORV_DECLARE_RTTI(BehaviorContext)

public:
    BehaviorContext();
    ~BehaviorContext() override;

    void setContextType() override;
    void allocateComponentsArrays() override;
    void deallocateComponentsArrays() override;
    void doInit() override;
    void doUpdate(Time dt) override;
    void doFinish() override;
};

} // namespace orv
