// orvCore/behavior/utils/orvAbstractTargetProvider.h
#pragma once

#include "math/types/orvVector3.h"
#include "system/inspection/orvReferenceCounter.h"

namespace orv
{

/// Tells, per entity, where that entity has to go. Host behaviours ask it at every step and hold it by smart
/// pointer. A host adds its own kinds by deriving from it.
class AbstractTargetProvider : public ReferenceCounter
{
    ORV_DECLARE_ABSTRACT_RTTI(AbstractTargetProvider)

public:
    /// No state of its own.
    AbstractTargetProvider();
    ~AbstractTargetProvider() override;

    /// Sets target to where entity (its index in the graph) has to go now. The flag is free for a host's
    /// providers; the library's own ignore it. Runs on the entity's worker.
    virtual void computeTarget(int entity, Vector3& target, bool flag) = 0;
    /// True when the target given to entity is its last one; true unless a provider walks a list.
    virtual bool isUltimateTarget(int entity) const;
};

} // namespace orv
