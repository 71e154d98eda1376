// orvCore/behavior/operators/orvAlternativeBehaviorOperator.h
#pragma once

#include "behavior/callBacks/orvBoolCallBackPointer.h"
#include "behavior/operators/orvAbstractBehaviorOperator.h"

namespace orv
{

/// Picks the first follower, from position 1 on, whose condition holds for the entity, else the default follower
/// at position 0; without a default it waits until a condition holds. Takes no time. The conditions are kept
/// parallel to the followers; the default's is always null. Structure on one thread while nothing updates; the
/// choice on the entity's worker.
class AlternativeBehaviorOperator : public AbstractBehaviorOperator
{
    ORV_DECLARE_RTTI(AlternativeBehaviorOperator)

public:
    /// No follower.
    AlternativeBehaviorOperator();
    ~AlternativeBehaviorOperator() override;

    /// Appends candidate with no condition; the first one added this way is the default.
    bool addNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// Removes candidate with its condition; the default too, which shifts the others.
    bool removeNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// Appends next, chosen when condition holds; keeps position 0 for the default (a null one in an empty list).
    virtual bool addConditionalNextBehavior(AbstractBehavior* next, const BoolCallBackPointer& condition);
    /// Removes next with its condition; the default is refused (logged as an error).
    virtual bool removeConditionalNextBehavior(AbstractBehavior* next);
    /// The follower at position (0 is the default), or null out of range.
    const AbstractBehavior* getConditionalNextBehavior(unsigned int position) const;
    AbstractBehavior* touchConditionalNextBehavior(unsigned int position);
    /// Replaces the follower at position, from 1 on, keeping its condition; refusals are logged as errors.
    bool setConditionalNextBehavior(unsigned int position, AbstractBehavior* next);
    /// The default follower, or null.
    const AbstractBehavior* getDefaultNextBehavior() const;
    AbstractBehavior* touchDefaultNextBehavior();
    /// Sets the default follower (null for none); refusals are logged as errors.
    bool setDefaultNextBehavior(AbstractBehavior* next);
    /// The condition at position (always null at 0), or null out of range.
    BoolCallBackPointer getCondition(unsigned int position) const;
    /// Replaces the condition at position, from 1 on; refusals are logged as errors.
    bool setCondition(unsigned int position, const BoolCallBackPointer& condition);

    /// At least one follower, conditions as many, no null follower or condition from position 1 on; the first
    /// problem is logged as an error. A null default is valid.
    bool checkNextBehaviorCandidatesConnection() const override;
    /// False: the choice is made within the frame.
    bool isTimeConsuming() const override { return false; }

    /// The conditions, parallel to the followers; for the streams.
    const Array<SmartPointer<ITypedCallBack<bool>>>& getConditions() const { return _conditions; }

protected:
    /// No follower selected by default; the conditions' triggers bound.
    bool doInit() override;
    void doFinish() override;
    void doAddEntity(int entity) override;
    void doAllocate(int capacity) override;
    void doFinish(int entity) override;
    /// Clears the entity's selection.
    void doStart(int entity) override;
    /// Selects the first follower whose condition holds, else the default, and stops; waits without either.
    void doUpdate(Time dt, int entity) override;
    /// SUCCESS.
    ResultStatus::Value doStop(Time dt, int entity) override;

private:
    Array<SmartPointer<ITypedCallBack<bool>>> _conditions;

    // Binds the triggers of every condition to the graph.
    void bindConditionsTriggers();
};

} // namespace orv
