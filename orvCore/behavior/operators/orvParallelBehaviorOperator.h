// orvCore/behavior/operators/orvParallelBehaviorOperator.h
#pragma once

#include "behavior/engine/orvAbstractBehaviorContainer.h"
#include "behavior/operators/orvAbstractBehaviorOperator.h"

namespace orv
{

/// Runs all its children (containers or host behaviours) together, each with the full step of every frame. It ends
/// when the first or the last child has ended, or by its own stopping condition; a child that failed fails it when
/// it stops. At most one follower. Locked while initialised. Structure on one thread while nothing updates; the
/// per-entity run on the entity's worker.
class ParallelBehaviorOperator : public AbstractBehaviorOperator, public AbstractBehaviorContainer
{
    ORV_DECLARE_RTTI(ParallelBehaviorOperator)

public:
    /// When the operator ends by itself.
    struct ExitMode
    {
        enum Value
        {
            ALL_FINISHED = 0, ///< in the frame in which the last running child has ended
            ANYONE_FINISHED,  ///< in the frame in which the first child has ended; the others are stopped
            CUSTOM,           ///< only by the stopping condition the user sets
            END
        };
    };

    /// An operator with no child that ends in mode; a stream makes one as ALL_FINISHED.
    explicit ParallelBehaviorOperator(ExitMode::Value mode = ExitMode::ALL_FINISHED);
    ~ParallelBehaviorOperator() override;

    /// The one follower, or null.
    const AbstractBehavior* getNextBehavior() const { return getFirstNextBehaviorCandidate(); }
    AbstractBehavior* touchNextBehavior() { return getFirstNextBehaviorCandidate(); }
    /// Replaces the one follower, or removes it for null; refusals are logged as errors.
    bool setNextBehavior(AbstractBehavior* next) { return setSingleNextBehavior(next); }

    /// The exit mode.
    ExitMode::Value getExitMode() const { return _exitMode; }
    /// Sets the exit mode, used from the next init(); refused (logged as an error) while initialised.
    bool setExitMode(ExitMode::Value mode);
    /// The mode's code, for the streams; a code past CUSTOM is kept as END, which runs as CUSTOM.
    unsigned int getExitModeUInt() const { return static_cast<unsigned int>(_exitMode); }
    void setExitModeUInt(unsigned int mode);

    /// Whether candidate may follow: the base's rules and at most one follower.
    bool canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const override;
    /// Adds the one follower and selects it by default.
    bool addNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// Removes the follower; no follower is selected by default then.
    bool removeNextBehaviorCandidate(AbstractBehavior* candidate) override;
    /// False, logged, with more than one follower.
    bool checkNextBehaviorCandidatesConnection() const override;
    /// The node is initialised.
    bool isLocked() const override { return isInitialized(); }
    /// The container's add; in a graph, the child also joins it (graph, rows, entities).
    bool addChildBehavior(AbstractBehavior* child) override;
    /// The container's remove; in a graph, the child leaves it.
    bool removeChildBehavior(AbstractBehavior* child) override;
    /// Every child non-null, owned here, final, a container or a host behaviour; with recursive, nested containers
    /// too. An empty operator is valid. The report is logged as an error.
    bool checkChildrenBehaviorsConnection(bool recursive) const override;
    /// Always false: children of this operator have no followers.
    bool checkChildBehaviorLooping(const AbstractBehavior* child) const override;
    /// Drops null and foreign children, adopts orphans, removes those of the wrong type, cuts followers. True on a
    /// locked operator, which it leaves alone.
    bool cleanChildrenBehaviors(bool recursive) override;
    /// Sets the graph of the operator and of every child.
    void setBehaviorGraph(BehaviorGraph* graph) override;

    /// The children, for the streams; the setter makes this operator their parent.
    const Array<SmartPointer<AbstractBehavior>>& getChildrenBehaviorsAttr() const { return getChildrenBehaviors(); }
    void setChildrenBehaviorsAttr(const Array<SmartPointer<AbstractBehavior>>& children);

protected:
    /// The children check without nesting, the children's init; outside CUSTOM mode, the stopping condition is
    /// replaced by one built on the children being IDLE.
    bool doInit() override;
    void doFinish() override;
    void doAddEntity(int entity) override;
    void doInit(int entity) override;
    void doFinish(int entity) override;
    void doAllocate(int capacity) override;
    void doDeallocate() override;
    /// Starts every child, or stops at once without children.
    void doStart(int entity) override;
    /// Gives every active child the full step.
    void doUpdate(Time dt, int entity) override;
    /// Drives the stopping children; UNKNOWN while one is active, then FAILURE when any child failed.
    ResultStatus::Value doStop(Time dt, int entity) override;
    void onRequestStop(int entity) override;

private:
    ExitMode::Value _exitMode = ExitMode::ALL_FINISHED;
};

/// The children rules of a container whose children run unordered (parallel, no order): the check and the clean
/// of className's children, with their reports. Structure thread.
bool checkUnorderedChildren(const AbstractBehaviorContainer& container, const char* className, bool recursive);
bool cleanUnorderedChildren(AbstractBehaviorContainer& container, const char* className, bool recursive);

} // namespace orv
