// orvCore/behavior/operators/orvRandomBehaviorOperator.h
#pragma once

#include "behavior/callBacks/orvBoolCallBackPointer.h"
#include "behavior/callBacks/orvScalarCallBackPointer.h"
#include "behavior/operators/orvAbstractBehaviorOperator.h"

namespace orv
{

class RandomNumberGenerator;

/// Picks one follower, by weight, among those whose condition holds for the entity (a null condition always
/// holds), drawing from the entity's own generator; with one such follower it draws nothing. Takes no time, and
/// waits while no follower is eligible. Conditions and weights are kept parallel to the followers. Structure on one
/// thread while nothing updates; the choice on the entity's worker.
class RandomBehaviorOperator : public AbstractBehaviorOperator
{
    ORV_DECLARE_RTTI(RandomBehaviorOperator)

public:
    /// No follower.
    RandomBehaviorOperator();
    ~RandomBehaviorOperator() override;

    /// Appends candidate with a weight of 1 and no condition.
    bool addNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// Removes candidate with its weight and condition.
    bool removeNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// Appends candidate with its weight and its condition (null for always).
    bool addRandomNextBehavior(AbstractBehavior* candidate, const ScalarCallBackPointer<float>& weight,
                               const BoolCallBackPointer& condition);
    /// Removes candidate with its weight and condition, by the virtual removeNextBehaviorCandidate.
    virtual bool removeRandomNextBehavior(AbstractBehavior* candidate);
    /// The follower at position, or null out of range.
    const AbstractBehavior* getRandomNextBehavior(unsigned int position) const;
    AbstractBehavior* touchRandomNextBehavior(unsigned int position);
    /// Replaces the follower at position, keeping its weight and condition; refusals are logged as errors.
    bool setRandomNextBehavior(unsigned int position, AbstractBehavior* next);
    /// The condition at position (null for always), or null out of range.
    BoolCallBackPointer getCondition(unsigned int position) const;
    /// Replaces the condition at position; refusals are logged as errors.
    bool setCondition(unsigned int position, const BoolCallBackPointer& condition);
    /// The weight at position, or null out of range.
    ScalarCallBackPointer<float> getWeight(unsigned int position) const;
    /// Replaces the weight at position; refusals are logged as errors.
    bool setWeight(unsigned int position, const ScalarCallBackPointer<float>& weight);

    /// At least one follower, weights and conditions as many, no null follower or weight; the first problem is
    /// logged as an error.
    bool checkNextBehaviorCandidatesConnection() const override;
    /// False: the choice is made within the frame.
    bool isTimeConsuming() const override { return false; }

    /// The conditions and weights, parallel to the followers; for the streams.
    const Array<SmartPointer<ITypedCallBack<bool>>>& getConditions() const { return _conditions; }
    const Array<SmartPointer<ITypedCallBack<float>>>& getWeights() const { return _weights; }

protected:
    /// No follower selected by default; the conditions' triggers bound.
    bool doInit() override;
    void doFinish() override;
    void doAddEntity(int entity) override;
    void doAllocate(int capacity) override;
    void doFinish(int entity) override;
    /// Clears the entity's selection.
    void doStart(int entity) override;
    /// Chooses among the eligible followers and stops; waits while none is eligible or no weight was reached.
    void doUpdate(Time dt, int entity) override;
    /// SUCCESS.
    ResultStatus::Value doStop(Time dt, int entity) override;

private:
    Array<SmartPointer<ITypedCallBack<bool>>> _conditions;
    Array<SmartPointer<ITypedCallBack<float>>> _weights;

    // Binds the triggers of every condition to the graph.
    void bindConditionsTriggers();
};

/// The generator of the entity or group at index entity of node's graph's type, or null when the node is in no
/// typed graph or the index holds nothing. Entity's worker: the generator is that entity's alone.
RandomNumberGenerator* touchEntityGenerator(const AbstractBehavior& node, int entity);

} // namespace orv
