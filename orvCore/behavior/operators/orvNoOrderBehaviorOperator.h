// orvCore/behavior/operators/orvNoOrderBehaviorOperator.h
#pragma once

#include "behavior/engine/orvAbstractBehaviorContainer.h"
#include "behavior/operators/orvAbstractBehaviorOperator.h"
#include "system/containers/orvPODArray.h"

namespace orv
{

/// Runs each of its children (containers or host behaviours) once, one after another, in an order drawn from the
/// entity's own generator; the last child left is taken without a draw. A child chosen after another's end starts
/// in the same frame. A child that failed fails the operator when it stops. At most one follower. Locked while
/// initialised. Structure on one thread while nothing updates; the per-entity run on the entity's worker.
class NoOrderBehaviorOperator : public AbstractBehaviorOperator, public AbstractBehaviorContainer
{
    ORV_DECLARE_RTTI(NoOrderBehaviorOperator)

public:
    /// The id of no running child.
    static constexpr unsigned int _childBehaviorInvalidId = 0xFFFFFFFFu;

    /// An operator with no child.
    NoOrderBehaviorOperator();
    ~NoOrderBehaviorOperator() override;

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

    /// True when the entity has its flags and its running-child slot; rows read from a file may lack them.
    bool hasEntitySlot(int entity) const
    {
        return static_cast<unsigned int>(entity) < _childrenBehaviorsRun.size() &&
               static_cast<unsigned int>(entity) < _currentChildBehaviorRunId.size();
    }
    /// The child running for the entity, or null. Entity's worker.
    const AbstractBehavior* getCurrentBehavior(int entity) const;
    AbstractBehavior* touchCurrentBehavior(int entity);
    /// Chooses among the children not yet run (a draw only when more than one is left) and starts it, or stops the
    /// operator when none is left. Entity's worker; no allocation.
    void selectCurrentBehavior(int entity);
    /// Updates the running child by dt seconds; when it has ended, marks it run, and stops the operator after the
    /// last one. Entity's worker.
    void updateCurrentBehavior(Time dt, int entity);

    /// The children, for the streams; the setter makes this operator their parent.
    const Array<SmartPointer<AbstractBehavior>>& getChildrenBehaviorsAttr() const { return getChildrenBehaviors(); }
    void setChildrenBehaviorsAttr(const Array<SmartPointer<AbstractBehavior>>& children);
    /// Per entity, one flag per child, true once the child has ended in this run; saved so that a run goes on.
    const Array<Array<bool>>& getChildrenBehaviorsRun() const { return _childrenBehaviorsRun; }
    /// Per entity, the index of the running child or the invalid id.
    const PODArray<unsigned int>& getCurrentChildBehaviorRunIds() const { return _currentChildBehaviorRunId; }
    /// Capacities of the two per-entity arrays, saved ahead of them; fatal for a negative value.
    int getChildrenBehaviorsRunArrayCapacity() const { return static_cast<int>(_childrenBehaviorsRun.capacity()); }
    void setChildrenBehaviorsRunArrayCapacity(int value);
    int getCurrentChildBehaviorRunIdArrayCapacity() const
    {
        return static_cast<int>(_currentChildBehaviorRunId.capacity());
    }
    void setCurrentChildBehaviorRunIdArrayCapacity(int value);

protected:
    /// The children check without nesting, then the children's init.
    bool doInit() override;
    void doFinish() override;
    void doAddEntity(int entity) override;
    void doInit(int entity) override;
    void doFinish(int entity) override;
    void doAllocate(int capacity) override;
    void doDeallocate() override;
    /// Stops at once without children; the first child is chosen by the first update.
    void doStart(int entity) override;
    /// Drives the running child, then chooses and starts the next ones while the step allows.
    void doUpdate(Time dt, int entity) override;
    /// Drives a stopping child until it is idle; then FAILURE when any child's last result is FAILURE.
    ResultStatus::Value doStop(Time dt, int entity) override;
    /// A new run: every flag false, no running child.
    void onRequestStart(int entity) override;
    void onRequestStop(int entity) override;

private:
    Array<Array<bool>> _childrenBehaviorsRun;
    PODArray<unsigned int> _currentChildBehaviorRunId;

    // Ends the entity's run: flags emptied, no running child.
    void clearRun(int entity);
};

} // namespace orv
