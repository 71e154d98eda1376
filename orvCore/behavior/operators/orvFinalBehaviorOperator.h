// orvCore/behavior/operators/orvFinalBehaviorOperator.h
#pragma once

#include "behavior/operators/orvAbstractBehaviorOperator.h"

namespace orv
{

/// The exit of a flow chart: it passes within the frame, taking no time, and has no follower, so the chart's walk
/// ends there and its composite stops.
class FinalBehaviorOperator : public AbstractBehaviorOperator
{
    ORV_DECLARE_RTTI(FinalBehaviorOperator)

public:
    /// The exit.
    FinalBehaviorOperator();
    ~FinalBehaviorOperator() override;

    /// Always false: the exit takes no follower.
    bool canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const override;
    /// Refused, logged as an error.
    bool addNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// Refused, logged as an error, with the same words as an add.
    bool removeNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// False, logged, with any follower.
    bool checkNextBehaviorCandidatesConnection() const override;
    /// False: the exit passes within the frame.
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
