// orvCore/behavior/behaviors/orvAbstractUserBehavior.h
#pragma once

#include "behavior/engine/orvAbstractBehavior.h"

namespace orv
{

/// The base of the leaves a host writes (locomotion, animation and the like): a node with at most one follower,
/// selected by default. The host implements doInit, doFinish, doStart, doUpdate and doStop; they run on the workers
/// and keep to per-entity data.
class AbstractUserBehavior : public AbstractBehavior
{
    ORV_DECLARE_ABSTRACT_RTTI(AbstractUserBehavior)

public:
    /// A leaf with no follower.
    AbstractUserBehavior();
    ~AbstractUserBehavior() override;

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
};

} // namespace orv
