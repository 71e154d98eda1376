// orvCore/behavior/callBacks/orvAbstractTrigger.h
#pragma once

#include "behavior/callBacks/orvBoolCallBackPointer.h"
#include "behavior/callBacks/orvITypedCallBack.h"
#include "system/containers/orvPODArray.h"

namespace orv
{

class BehaviorGraph;
class Simulation;

/// How a trigger compares a count with its threshold. The two "less" codes come in the other order than those of
/// ScalarCallBackComparisonOperator<unsigned int>.
struct ComparisonOperator
{
    enum Value
    {
        EQUAL = 0,
        NOT_EQUAL,
        LOWER_EQUAL,
        LOWER,
        GREATER,
        GREATER_EQUAL,
        END
    };
};

/// A boolean call-back with memory per entity: it is evaluated at most once a frame for each entity, so that a
/// condition asked by several nodes in one frame counts once. It reads the frame through the behaviour graph it is
/// bound to, that graph's entity type and the type's simulation. Bound and sized on the host thread while nothing
/// updates; called on the workers, each entity's entries by one worker.
class AbstractTrigger : public ITypedCallBack<bool>
{
    ORV_DECLARE_ABSTRACT_RTTI(AbstractTrigger)

public:
    /// Unbound, with no entity.
    AbstractTrigger();
    ~AbstractTrigger() override;

    /// The entity's answer for the present frame: doCall runs at the first call of a frame, later calls of the
    /// same frame give the stored answer. Fatal when the trigger is not bound to a graph held by a type of a
    /// simulation, or when the entity has no entry.
    bool call(int entity) override;
    /// Extends the per-entity arrays to count entities when they are shorter; new entities are not evaluated yet.
    virtual void setUsedCount(int count);
    /// Binds the trigger to graph: when the graph changes, the arrays are emptied and sized for its maximum count
    /// (freed for null); then, with a graph, extended to the entities of its type. Host thread, while nothing
    /// updates.
    virtual void setBehaviorGraph(BehaviorGraph* graph);
    /// Empties the per-entity arrays and sets their capacity to count; a count below 1 frees them.
    virtual void setMaxCount(int count);

    /// Arms the trigger again for the entity: its count, clock or sequence starts over. Fatal when the entity has
    /// no entry. Called by the behaviour engine on the entity's worker, or by the host between frames.
    void reset(int entity);

    /// The graph the trigger is bound to, or null; not owned.
    BehaviorGraph* getBehaviorGraph() const { return _behaviorGraph; }
    /// Number of entities with entries.
    int getUsedCount() const { return static_cast<int>(_lastFrame.size()); }

    /// Walk a condition tree through its operator call-backs, down to the triggers and not into them, and give
    /// each trigger found the used count, the maximum count or the graph, or reset it for the entity.
    static void recursiveSetUsedCountTriggers(const SmartPointer<ITypedCallBack<bool>>& callBack, int count);
    static void recursiveSetMaxCountTriggers(const SmartPointer<ITypedCallBack<bool>>& callBack, int count);
    static void recursiveSetBehaviorGraphTriggers(const SmartPointer<ITypedCallBack<bool>>& callBack,
                                                  BehaviorGraph* graph);
    static void recursiveResetTriggers(const SmartPointer<ITypedCallBack<bool>>& callBack, int entity);

protected:
    /// Starts the entity's memory over; the entity has an entry. Does nothing here.
    virtual void doReset(int entity);
    /// The entity's answer, evaluated once a frame; the entity has an entry.
    virtual bool doCall(int entity) = 0;

    /// The simulation of the bound graph's type. Fatal when there is none.
    const Simulation& getSimulation() const;

    /// Extends array to count entries with value when it is shorter; capacity grows as any array's.
    template <typename T>
    static void extendTo(PODArray<T>& array, int count, const T& value)
    {
        if (count > static_cast<int>(array.size()))
        {
            array.resize(static_cast<size_t>(count), value);
        }
    }
    /// Empties array and sets its capacity to count, or frees it for a count below 1.
    template <typename T>
    static void clearTo(PODArray<T>& array, int count)
    {
        array.clear();
        array.set_capacity(count < 1 ? 0u : static_cast<size_t>(count));
    }
    /// True when the entity has an entry in the per-entity arrays.
    bool hasEntity(int entity) const { return entity >= 0 && entity < getUsedCount(); }

private:
    BehaviorGraph* _behaviorGraph = nullptr;
    // Per entity: the frame of the last evaluation, and its answer.
    PODArray<unsigned int> _lastFrame;
    PODArray<bool> _lastValue;
};

} // namespace orv
