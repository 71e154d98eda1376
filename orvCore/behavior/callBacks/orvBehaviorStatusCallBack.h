// orvCore/behavior/callBacks/orvBehaviorStatusCallBack.h
#pragma once

#include "behavior/callBacks/orvITypedCallBack.h"
#include "behavior/engine/orvAbstractBehavior.h"

namespace orv
{

/// True for an entity while a behaviour node is in a given run status for it. Does not own the node; the node
/// outlives the call-back. Built on the host thread; called on the workers.
class BehaviorStatusCallBack : public ITypedCallBack<bool>
{
    ORV_DECLARE_RTTI(BehaviorStatusCallBack)

public:
    /// The node's run states.
    typedef AbstractBehavior::RunStatus RunStatus;

    /// Watches no node: always false.
    BehaviorStatusCallBack() = default;
    /// Watches behavior, which may be null, for runStatus.
    BehaviorStatusCallBack(AbstractBehavior* behavior, const RunStatus::Value& runStatus);

    /// False without a node; else whether the node's run status for the entity is the one watched.
    bool call(int entity) override;

    /// The node watched, or null; not owned.
    AbstractBehavior* getBehavior() const { return _behavior; }
    void setBehavior(AbstractBehavior* behavior) { _behavior = behavior; }
    /// The run status watched.
    RunStatus::Value getRunStatus() const { return _runStatus; }
    void setRunStatus(RunStatus::Value runStatus) { _runStatus = runStatus; }
    /// The run status's code, for the streams; a code above END is kept as END, which no node is in.
    unsigned int getRunStatusUInt() const { return static_cast<unsigned int>(_runStatus); }
    void setRunStatusUInt(unsigned int runStatus);

private:
    AbstractBehavior* _behavior = nullptr;
    RunStatus::Value _runStatus = RunStatus::IDLE;
};

} // namespace orv
