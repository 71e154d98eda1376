// orvCore/behavior/utils/orvStaticArrayTargetProvider.h
#pragma once

#include "behavior/utils/orvAbstractTargetProvider.h"
#include "system/containers/orvArray.h"

namespace orv
{

/// Gives each entity a point of a table, the entity's index modulo the table's size, so that a short table repeats
/// across the entities. The table must not be empty when a target is asked. Set on the host thread while nothing
/// updates.
class StaticArrayTargetProvider : public AbstractTargetProvider
{
    ORV_DECLARE_RTTI(StaticArrayTargetProvider)

public:
    /// An empty table.
    StaticArrayTargetProvider();
    /// The count points of targets. A negative count, or a null table with a positive count, is logged as an error
    /// and gives an empty table.
    StaticArrayTargetProvider(int count, const Vector3* targets);
    /// A copy of targets.
    explicit StaticArrayTargetProvider(const Array<Vector3>& targets);
    ~StaticArrayTargetProvider() override;

    /// target := the table's point at entity modulo the table's size. Fatal on an empty table; a negative entity
    /// is logged as an error and leaves target as it was.
    void computeTarget(int entity, Vector3& target, bool flag) override;

    /// The table, in world units.
    const Array<Vector3>& getTargets() const { return _targets; }
    /// Replaces the point at index; an index outside the table is logged as an error and changes nothing.
    void setTarget(int index, const Vector3& target);

private:
    Array<Vector3> _targets;
};

} // namespace orv
