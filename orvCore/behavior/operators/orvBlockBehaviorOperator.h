// orvCore/behavior/operators/orvBlockBehaviorOperator.h
#pragma once

#include "behavior/operators/orvAbstractBehaviorOperator.h"

namespace orv
{

/// A gate of a flow chart: it holds the flow, taking the frames' time, until its block condition (the node's
/// stopping condition) becomes true; its triggers are re-armed at each start. Without a condition it passes in the
/// frame it starts, still taking that frame's time. At most one follower.
class BlockBehaviorOperator : public AbstractBehaviorOperator
{
    ORV_DECLARE_RTTI(BlockBehaviorOperator)

public:
    /// A gate without condition.
    BlockBehaviorOperator();
    ~BlockBehaviorOperator() override;

    /// The one follower, or null.
    const AbstractBehavior* getNextBehavior() const { return getFirstNextBehaviorCandidate(); }
    AbstractBehavior* touchNextBehavior() { return getFirstNextBehaviorCandidate(); }
    /// Replaces the one follower, or removes it for null; refusals are logged as errors.
    bool setNextBehavior(AbstractBehavior* next) { return setSingleNextBehavior(next); }
    /// The condition that opens the gate: the stopping condition under another name.
    void setBlockCondition(const BoolCallBackPointer& condition) { setStoppingCondition(condition); }
    const BoolCallBackPointer& getBlockCondition() const { return getStoppingCondition(); }

    /// Whether candidate may follow: the base's rules and at most one follower.
    bool canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const override;
    /// Adds the one follower and selects it by default.
    bool addNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// Removes the follower; no follower is selected by default then.
    bool removeNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// False with more than one follower: its line, then an empty report, both logged as errors.
    bool checkNextBehaviorCandidatesConnection() const override;

protected:
    bool doInit() override;
    void doFinish() override;
    /// Re-arms the condition's triggers for the entity, or stops at once without a condition.
    void doStart(int entity) override;
    void doUpdate(Time dt, int entity) override;
    /// SUCCESS.
    ResultStatus::Value doStop(Time dt, int entity) override;
};

} // namespace orv
