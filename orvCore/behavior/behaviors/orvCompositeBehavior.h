// orvCore/behavior/behaviors/orvCompositeBehavior.h
#pragma once

#include "behavior/engine/orvAbstractBehavior.h"
#include "behavior/engine/orvAbstractBehaviorContainer.h"
#include "system/containers/orvArray.h"
#include "system/containers/orvMap.h"
#include "system/containers/orvPODArray.h"

namespace orv
{

class CompositeBehavior;

/// What one composite updated for one entity in the present frame: the frame's loop guard and what a viewer reads.
struct RuntimeUpdateHistoryPerFrame
{
    /// The children updated this frame, in order.
    PODArray<const AbstractBehavior*> _updatedBehaviorsThisFrame;
    /// Child composites that stopped this frame; their own history is cleared at this composite's next frame, so
    /// that a viewer can still read it now.
    PODArray<CompositeBehavior*> _childrenCompositeToClearTransitions;
};

/// A flow chart of children run from a default initial operator (child 0) to a default final operator (child 1).
/// One update of an entity passes as many children as the chart allows in the frame: the frame's step goes whole to
/// the first child that takes time, later ones get 0, and a child met twice in a frame waits for the next. A child
/// that fails fails the composite. Locked while initialised. Structure on one thread while nothing updates; the
/// per-entity walk on the entity's worker.
class CompositeBehavior : public AbstractBehavior, public AbstractBehaviorContainer
{
    ORV_DECLARE_RTTI(CompositeBehavior)

public:
    /// A valid empty chart: the default initial operator connected to the default final one.
    CompositeBehavior();
    ~CompositeBehavior() override;

    /// The default initial operator (child 0), or null.
    const AbstractBehavior* getInitialBehavior() const { return childAt(0); }
    AbstractBehavior* touchInitialBehavior() { return childAt(0); }
    /// The default final operator (child 1), or null.
    const AbstractBehavior* getFinalBehavior() const { return childAt(1); }
    AbstractBehavior* touchFinalBehavior() { return childAt(1); }

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

    /// The chart check: both default operators present, every child reached from the initial one and owned here,
    /// every reached node's followers valid, exactly one node without follower; with recursive, nested containers
    /// too. The report is logged as an error.
    bool checkChildrenBehaviorsConnection(bool recursive) const override;
    /// True when child leads back to itself through followers.
    bool checkChildBehaviorLooping(const AbstractBehavior* child) const override;
    /// Repairs the chart: drops null and foreign children, adopts reached strangers, connects dead ends to the
    /// default final operator, removes unreached children. True on a locked composite, which it leaves alone.
    bool cleanChildrenBehaviors(bool recursive) override;
    /// The container's add; in a graph, the child also joins it (graph, rows, entities).
    bool addChildBehavior(AbstractBehavior* child) override;
    /// Refuses the default operators, then the container's remove; in a graph, the child leaves it.
    bool removeChildBehavior(AbstractBehavior* child) override;
    /// Sets the graph of the composite and of every child.
    void setBehaviorGraph(BehaviorGraph* graph) override;

    /// Fills map with every non-null child, true for those reached from the initial operator.
    void computeFlowMap(OrvMap<const AbstractBehavior*, bool>& map) const;
    /// True when child is a child of this composite reached from the initial operator.
    bool isChildBehaviorInFlow(const AbstractBehavior* child) const;

    /// True when the entity has its current-child slot and its frame history. Rows read from a file may lack them:
    /// the per-entity walk then ends the composite for that entity instead of reading past the arrays.
    bool hasEntitySlot(int entity) const
    {
        return static_cast<unsigned int>(entity) < _currentBehavior.size() &&
               static_cast<unsigned int>(entity) < _runtimeHistoryPerEntity.size();
    }
    /// The child active for the entity, or null (also for an entity without a slot).
    const AbstractBehavior* getCurrentBehavior(int entity) const
    {
        return hasEntitySlot(entity) ? _currentBehavior[entity] : nullptr;
    }
    AbstractBehavior* touchCurrentBehavior(int entity)
    {
        return hasEntitySlot(entity) ? _currentBehavior[entity] : nullptr;
    }
    /// What the entity's walk updated in the present frame; the entity has a slot.
    const RuntimeUpdateHistoryPerFrame& getRuntimeHistory(int entity) const { return _runtimeHistoryPerEntity[entity]; }
    /// Empties the entity's frame history and, through them, that of the child composites that stopped last frame.
    void clearUpdatedNodesAndTransitions(int entity);
    /// Appends behavior to the entity's frame history. Entity's worker.
    void addToHistory(int entity, const AbstractBehavior* behavior);

    /// After a load: gives every slot below slotCount its current-child slot and history, and forgets a current
    /// child that is not one of the children.
    void repairLoadedSlots(int slotCount);

    /// The children, for the streams; the setter makes this composite their parent.
    const Array<SmartPointer<AbstractBehavior>>& getChildrenBehaviorsAttr() const { return getChildrenBehaviors(); }
    void setChildrenBehaviorsAttr(const Array<SmartPointer<AbstractBehavior>>& children);
    /// Capacity of the per-entity current-child slots, saved ahead of them; the setter sizes the histories too.
    /// Fatal for a negative value.
    int getCurrentBehaviorArrayCapacity() const { return static_cast<int>(_currentBehavior.capacity()); }
    void setCurrentBehaviorArrayCapacity(int value);

protected:
    void doAllocate(int capacity) override;
    void doDeallocate() override;
    /// The chart check without nested containers, then all the children or none.
    bool doInit() override;
    void doFinish() override;
    void doAddEntity(int entity) override;
    void doInit(int entity) override;
    void doFinish(int entity) override;
    /// Starts the initial operator and, past children that end at once, their followers.
    void doStart(int entity) override;
    /// Walks the chart for the entity as far as the frame allows.
    void doUpdate(Time dt, int entity) override;
    /// Drives a stopping child until it is idle; its result becomes the composite's.
    ResultStatus::Value doStop(Time dt, int entity) override;
    void onRequestStart(int entity) override;
    void onRequestStop(int entity) override;

private:
    // Per entity: the active child, or null.
    PODArray<AbstractBehavior*> _currentBehavior;
    // Per entity: the frame history; its arrays are reused from frame to frame.
    Array<RuntimeUpdateHistoryPerFrame> _runtimeHistoryPerEntity;

    AbstractBehavior* childAt(size_t index) const
    {
        return index < getChildrenBehaviors().size() ? getChildrenBehaviors()[index].getImpl() : nullptr;
    }
    bool isInHistory(int entity, const AbstractBehavior* behavior) const;
};

} // namespace orv
