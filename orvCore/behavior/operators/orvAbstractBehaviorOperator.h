// orvCore/behavior/operators/orvAbstractBehaviorOperator.h
#pragma once

#include "behavior/engine/orvAbstractBehavior.h"

namespace orv
{

/// A node of a flow chart that holds no behaviour of its own but shapes the flow: entry, exit, gate, loop, choice.
class AbstractBehaviorOperator : public AbstractBehavior
{
    ORV_DECLARE_ABSTRACT_RTTI(AbstractBehaviorOperator)

public:
    /// An operator with no follower.
    AbstractBehaviorOperator();
    ~AbstractBehaviorOperator() override;
};

} // namespace orv
