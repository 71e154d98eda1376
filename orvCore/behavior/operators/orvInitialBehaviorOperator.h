// orvCore/behavior/operators/orvInitialBehaviorOperator.h
#pragma once

#include "behavior/operators/orvAbstractBehaviorOperator.h"

namespace orv
{

/// The entry of a flow chart: it passes within the frame, taking no time, to its one follower. One update takes it
/// from STARTING to IDLE with SUCCESS, unless a starting condition holds it.
class InitialBehaviorOperator : public AbstractBehaviorOperator
{
    ORV_DECLARE_RTTI(InitialBehaviorOperator)

public:
    /// An entry with no follower.
    InitialBehaviorOperator();
    ~InitialBehaviorOperator() override;

    /// The one follower, or null.
    const AbstractBehavior* getNextBehavior() const { return getFirstNextBehaviorCandidate(); }
    AbstractBehavior* touchNextBehavior() { return getFirstNextBehaviorCandidate(); }
    /// Replaces the one follower, or removes it for null; refusals are logged as errors.
    bool setNextBehavior(AbstractBehavior* next) { return setSingleNextBehavior(next); }

    /// Whether candidate may follow: the base's rules and at most one follower.
    bool canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const override;
    /// Adds the one follower and selects it by default.
    bool addNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// Removes the follower; no follower is selected by default then.
    bool removeNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// False, logged, with more than one follower.
    bool checkNextBehaviorCandidatesConnection() const override;
    /// False: the entry passes within the frame.
    bool isTimeConsuming() const override;

protected:
    bool doInit() override;
    void doFinish() override;
    /// Stops at once.
    void doStart(int entity) override;
    void doUpdate(Time dt, int entity) override;
    /// SUCCESS.
    ResultStatus::Value doStop(Time dt, int entity) override;
};

} // namespace orv
