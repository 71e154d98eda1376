// orvCore/behavior/utils/orvStaticTargetProvider.h
#pragma once

#include "behavior/utils/orvAbstractTargetProvider.h"

namespace orv
{

/// Gives every entity the same fixed point. Set on the host thread while nothing updates.
class StaticTargetProvider : public AbstractTargetProvider
{
    ORV_DECLARE_RTTI(StaticTargetProvider)

public:
    /// The origin as target.
    StaticTargetProvider();
    /// target for every entity.
    explicit StaticTargetProvider(const Vector3& target);
    ~StaticTargetProvider() override;

    /// target := the fixed point, whatever the entity.
    void computeTarget(int entity, Vector3& target, bool flag) override;

    /// The fixed point, in world units.
    const Vector3& getTarget() const { return _target; }
    void setTarget(const Vector3& target) { _target = target; }

private:
    Vector3 _target;
};

} // namespace orv
