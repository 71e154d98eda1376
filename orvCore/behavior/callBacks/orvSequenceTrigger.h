// orvCore/behavior/callBacks/orvSequenceTrigger.h
#pragma once

#include "behavior/callBacks/orvAbstractTrigger.h"
#include "system/containers/orvArray.h"

namespace orv
{

/// True for an entity once each of its steps, conditions taken in order, has been true for it: a step is asked only
/// after the one before it passed, and the triggers under a step are reset as the entity reaches it. Several steps
/// may pass in one evaluation; a complete sequence stays true until its reset. Steps are added on the host thread
/// while nothing updates; calls run on the workers.
class SequenceTrigger : public AbstractTrigger
{
    ORV_DECLARE_RTTI(SequenceTrigger)

public:
    /// Passes the count down to the triggers under every step, then extends the step indices with 0.
    void setUsedCount(int count) override;
    /// Binds the trigger, then the triggers under every step, to graph.
    void setBehaviorGraph(BehaviorGraph* graph) override;
    /// Passes the count down to the triggers under every step, then empties the step indices and sets their
    /// capacity.
    void setMaxCount(int count) override;

    /// Appends a step, bound at once when the sequence is; a null step is refused with a LOG_ERROR line.
    void addStep(const BoolCallBackPointer& step);
    /// The steps, in order.
    const Array<SmartPointer<ITypedCallBack<bool>>>& getSequence() const { return _sequence; }
    /// The index of the step the entity waits for, the step count once complete; 0, with a LOG_ERROR line, for an
    /// entity without an entry.
    unsigned int getCurrentStep(int entity) const;

protected:
    /// Back to step 0, whose triggers are reset.
    void doReset(int entity) override;
    /// Passes as many steps as are true in a row; true once every step has passed.
    bool doCall(int entity) override;

private:
    Array<SmartPointer<ITypedCallBack<bool>>> _sequence;
    PODArray<unsigned int> _sequenceIterator;
};

} // namespace orv
