// orvCore/behavior/operators/orvLoopBehaviorOperator.h
#pragma once

#include "behavior/engine/orvAbstractBehaviorContainer.h"
#include "behavior/operators/orvAbstractBehaviorOperator.h"

namespace orv
{

/// A loop around one child (a container or a host behaviour): the child runs again while the loop condition holds
/// for the entity, asked after each run (DO_WHILE) or also before the first (WHILE). Each pass costs at least a
/// frame. A failing child fails the loop. At most one follower. Locked while initialised.
class LoopBehaviorOperator : public AbstractBehaviorOperator, public AbstractBehaviorContainer
{
    ORV_DECLARE_RTTI(LoopBehaviorOperator)

public:
    /// When the condition is first asked.
    struct LoopMode
    {
        enum Value
        {
            WHILE = 0, ///< before the first run too
            DO_WHILE,  ///< after each run only
            END
        };
    };

    /// A loop of mode whose runs go on while condition holds. A stream makes one as DO_WHILE and always true.
    LoopBehaviorOperator(LoopMode::Value mode, const BoolCallBackPointer& condition);
    ~LoopBehaviorOperator() override;

    /// The one follower, or null.
    const AbstractBehavior* getNextBehavior() const { return getFirstNextBehaviorCandidate(); }
    AbstractBehavior* touchNextBehavior() { return getFirstNextBehaviorCandidate(); }
    /// Replaces the one follower, or removes it for null; refusals are logged as errors.
    bool setNextBehavior(AbstractBehavior* next) { return setSingleNextBehavior(next); }

    /// Sets the loop condition; refused (logged as an error) for null or under a locked parent.
    bool setCondition(const BoolCallBackPointer& condition);
    /// The loop condition.
    const BoolCallBackPointer& getCondition() const { return _condition; }
    /// Sets the mode; refused (logged as an error) while initialised.
    bool setLoopMode(LoopMode::Value mode);
    /// The mode.
    LoopMode::Value getLoopMode() const { return _loopMode; }
    /// The mode's code, for the streams; a code past DO_WHILE is kept as END, which runs as DO_WHILE.
    unsigned int getLoopModeUInt() const { return static_cast<unsigned int>(_loopMode); }
    void setLoopModeUInt(unsigned int mode);
    /// The child, or null.
    const AbstractBehavior* getChildBehavior() const;
    AbstractBehavior* touchChildBehavior();
    /// Replaces the child by the plain container edits, without giving it the graph; null only removes.
    bool setChildBehavior(AbstractBehavior* child);

    /// Whether candidate may follow: the base's rules and at most one follower.
    bool canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const override;
    /// Adds the one follower and selects it by default.
    bool addNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// Removes the follower; no follower is selected by default then.
    bool removeNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// False, logged, with more than one follower or without a condition.
    bool checkNextBehaviorCandidatesConnection() const override;
    /// The node is initialised.
    bool isLocked() const override { return isInitialized(); }
    /// The container's add for a first child; in a graph, the child also joins it.
    bool addChildBehavior(AbstractBehavior* child) override;
    /// The container's remove; in a graph, the child leaves it.
    bool removeChildBehavior(AbstractBehavior* child) override;
    /// One final child, a container or a host behaviour, owned here; with recursive, its own check too.
    bool checkChildrenBehaviorsConnection(bool recursive) const override;
    /// Always true: a loop leads back to its child.
    bool checkChildBehaviorLooping(const AbstractBehavior* child) const override;
    /// Repairs the child: drops foreign or null ones, removes one of the wrong type, cuts its followers.
    bool cleanChildrenBehaviors(bool recursive) override;
    /// Sets the graph of the loop and of its child.
    void setBehaviorGraph(BehaviorGraph* graph) override;

    /// The children, for the streams; the setter makes this loop their parent.
    const Array<SmartPointer<AbstractBehavior>>& getChildrenBehaviorsAttr() const { return getChildrenBehaviors(); }
    void setChildrenBehaviorsAttr(const Array<SmartPointer<AbstractBehavior>>& children);

protected:
    /// The child check without nesting, the child's init, then the condition's triggers bound.
    bool doInit() override;
    void doFinish() override;
    void doAddEntity(int entity) override;
    void doInit(int entity) override;
    void doFinish(int entity) override;
    void doAllocate(int capacity) override;
    void doDeallocate() override;
    /// Starts the child, after asking the condition in WHILE mode.
    void doStart(int entity) override;
    /// Drives the child; at the end of a run asks the condition and starts it again or stops.
    void doUpdate(Time dt, int entity) override;
    /// Drives a stopping child; its result is the loop's.
    ResultStatus::Value doStop(Time dt, int entity) override;
    void onRequestStop(int entity) override;

private:
    BoolCallBackPointer _condition;
    LoopMode::Value _loopMode = LoopMode::DO_WHILE;

    // The condition's answer for the entity; a missing condition (a loop that never initialised) answers false.
    bool askCondition(int entity) const { return _condition.getImpl() != nullptr && _condition->call(entity); }
};

} // namespace orv
