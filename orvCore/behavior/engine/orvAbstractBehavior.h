// orvCore/behavior/engine/orvAbstractBehavior.h
#pragma once

#include <cstdint>

#include "behavior/callBacks/orvBoolCallBackPointer.h"
#include "behavior/callBacks/orvIVoidCallBack.h"
#include "system/containers/orvArray.h"
#include "system/containers/orvString.h"
#include "system/inspection/orvReferenceCounter.h"
#include "system/inspection/orvSmartPointer.h"

namespace orv
{

class AbstractBehaviorContainer;
class BehaviorGraph;

/// A node of a behaviour graph. One node serves every entity of the graph: each entity owns one status row in it,
/// indexed by the entity's index in the graph. update() drives a row through IDLE, STARTING, RUNNING and STOPPING
/// as far as the node's conditions allow, calling the virtual hooks that subclasses fill in.
/// Structure (candidates, conditions, allocate, addEntity, init) changes on one thread while nothing updates;
/// per-entity operations touch only that entity's row, so workers run different entities on one node at once.
class AbstractBehavior : public ReferenceCounter
{
    ORV_DECLARE_ABSTRACT_RTTI(AbstractBehavior)

public:
    /// The state of the node for one entity.
    struct RunStatus
    {
        enum Value
        {
            IDLE = 0, ///< not active; also the state after a finished run
            STARTING, ///< a start was requested; waits for the starting condition
            RUNNING,  ///< active; doUpdate runs every step
            STOPPING, ///< a stop was requested; doStop runs every step until it gives a result
            END
        };
    };

    /// The result of the last run for one entity.
    struct ResultStatus
    {
        enum Value
        {
            UNKNOWN = 0, ///< no result yet; from doStop: the stop goes on in the next step
            SUCCESS,
            FAILURE,
            END
        };
    };

    /// The status row of one entity: a plain record, saved with the graph.
    struct BehaviorStatusData
    {
        ORV_DECLARE_VALUE_RTTI(BehaviorStatusData)

        /// Simulated time and step lengths of the behaviour engine, in seconds.
        typedef double Time;

        /// Time spent in the present run status, in seconds; 0 at every change of run status.
        Time _time = 0.0;
        /// The state of the node for the entity.
        RunStatus::Value _runStatus = RunStatus::IDLE;
        /// The result of the last run.
        ResultStatus::Value _resultStatus = ResultStatus::UNKNOWN;
        /// Index into the node's candidates of the follower chosen for the entity, or the invalid id.
        uint32_t _nextBehaviorSelectedIdPerInstance = 0xFFFFFFFFu;

        /// The run status's code, for the streams; a code past STOPPING is kept as END, which update ignores.
        unsigned int getRunStatusUInt() const { return static_cast<unsigned int>(_runStatus); }
        void setRunStatusUInt(unsigned int value);
        /// The result's code, for the streams; a code past FAILURE is kept as END.
        unsigned int getResultStatusUInt() const { return static_cast<unsigned int>(_resultStatus); }
        void setResultStatusUInt(unsigned int value);
    };

    /// Step lengths and times, in seconds.
    typedef BehaviorStatusData::Time Time;

    /// The id of no follower.
    static constexpr uint32_t _nextBehaviorInvalidId = 0xFFFFFFFFu;

    /// No graph, no parent, no candidate, no row.
    AbstractBehavior();
    /// Lets the conditions and call-backs go; the rows are freed.
    ~AbstractBehavior() override;

    // ---- Per entity: entity is the entity's index in the graph. An index without a row is logged as an error
    // and changes nothing; a query then answers as a row at its defaults would. ----

    /// True when entity has a row.
    bool hasRow(int entity) const { return static_cast<unsigned int>(entity) < _statusData.size(); }
    /// True while the row's run status is RUNNING.
    bool isRunning(int entity) const { return getRunStatus(entity) == RunStatus::RUNNING; }
    /// True when the row's last result is FAILURE.
    bool isFailed(int entity) const { return getResultStatus(entity) == ResultStatus::FAILURE; }
    /// The row's run status.
    RunStatus::Value getRunStatus(int entity) const { return readRow(entity)._runStatus; }
    /// The row's last result.
    ResultStatus::Value getResultStatus(int entity) const { return readRow(entity)._resultStatus; }
    /// Seconds spent in the row's present run status.
    Time getTime(int entity) const { return readRow(entity)._time; }
    /// True when the row holds a valid follower id.
    bool hasNextBehaviorSelected(int entity) const;
    /// The follower chosen for the entity, or null when the row holds the invalid id (or one past the candidates).
    const AbstractBehavior* getNextBehaviorSelected(int entity) const;
    AbstractBehavior* touchNextBehaviorSelected(int entity);

    // ---- Structure ----

    /// The possible followers, in insertion order; not owned.
    const Array<AbstractBehavior*>& getNextBehaviorCandidates() const { return _nextBehaviorCandidates; }
    Array<AbstractBehavior*>& touchNextBehaviorCandidates() { return _nextBehaviorCandidates; }
    /// The candidate's index, or the invalid id for an unknown or null one.
    uint32_t retrieveNextBehaviorCandidateId(const AbstractBehavior* candidate) const;
    /// True when candidate is one of the followers.
    bool hasNextBehaviorCandidate(const AbstractBehavior* candidate) const;
    /// True when the node has no follower.
    bool isFinal() const { return _nextBehaviorCandidates.empty(); }
    /// The container holding the node, or null; not owned.
    const AbstractBehaviorContainer* getParentBehavior() const { return _parentBehavior; }
    AbstractBehaviorContainer* touchParentBehavior() { return _parentBehavior; }
    /// Sets the container without any check; containers call it when they take or give up a child.
    void setParentBehavior(AbstractBehaviorContainer* parent) { _parentBehavior = parent; }
    /// True when ancestor is the parent, or an ancestor of the parent; a parent that is not a behaviour ends the
    /// walk.
    bool hasAncestorBehavior(const AbstractBehaviorContainer* ancestor) const;
    /// True when the direct parent exists and is locked.
    bool hasParentBehaviorLocked() const;
    /// The graph the node belongs to, or null; not owned.
    BehaviorGraph* getBehaviorGraph() const { return _behaviorGraph; }
    /// The graph-level default of each row's follower, copied to the row by init(entity).
    uint32_t getNextBehaviorSelectedId() const { return _nextBehaviorSelectedId; }
    void setNextBehaviorSelectedId(uint32_t id) { _nextBehaviorSelectedId = id; }
    /// The result of the last init(); false again after finish().
    bool isInitialized() const { return _initialized; }

    /// Whether candidate may be added as a follower; when not, reason says why (the refusal text), else it is
    /// emptied. Subclasses narrow this and ask the base first.
    virtual bool canAddNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason) const;
    /// Appends candidate as a follower, or logs the refusal as an error and returns false.
    virtual bool addNextBehaviorCandidate(AbstractBehavior* candidate);
    /// Removes candidate, keeping the order of the others, or logs the refusal as an error and returns false.
    /// Follower ids already stored are not corrected here.
    virtual bool removeNextBehaviorCandidate(AbstractBehavior* candidate);
    /// True when the followers form a valid connection for this kind of node.
    virtual bool checkNextBehaviorCandidatesConnection() const = 0;
    /// True when the node takes simulated time; a node that does not is passed within a frame.
    virtual bool isTimeConsuming() const;
    /// Sets the graph; not owned.
    virtual void setBehaviorGraph(BehaviorGraph* graph);

    // ---- Conditions and call-backs ----

    /// The gate from STARTING to RUNNING, or null for none.
    const BoolCallBackPointer& getStartingCondition() const { return _startingCondition; }
    /// Sets the gate; its triggers are bound to the graph at once when the node has one.
    void setStartingCondition(const BoolCallBackPointer& condition);
    /// The condition that stops a RUNNING row, or null for none.
    const BoolCallBackPointer& getStoppingCondition() const { return _stoppingCondition; }
    /// Sets the stopping condition; its triggers are bound to the graph at once when the node has one.
    void setStoppingCondition(const BoolCallBackPointer& condition);
    /// Appends a call-back run after doStart; duplicates are kept. Not saved.
    void addInitialStateCallBack(const SmartPointer<IVoidCallBack>& callBack);
    /// Removes the first entry of that object; an unknown one is ignored.
    void removeInitialStateCallBack(const SmartPointer<IVoidCallBack>& callBack);
    /// Appends a call-back run when a stop completes; duplicates are kept. Not saved.
    void addFinalStateCallBack(const SmartPointer<IVoidCallBack>& callBack);
    /// Removes the first entry of that object; an unknown one is ignored.
    void removeFinalStateCallBack(const SmartPointer<IVoidCallBack>& callBack);
    /// The initial and final call-backs, in calling order.
    const Array<SmartPointer<IVoidCallBack>>& getInitialStateCallBacks() const { return _initialStateCallBacks; }
    const Array<SmartPointer<IVoidCallBack>>& getFinalStateCallBacks() const { return _finalStateCallBacks; }
    /// Whether init(entity) starts the row itself; top-level nodes only.
    bool isRequestStartAtInitialization() const { return _requestStartAtInitialization; }
    void setRequestStartAtInitialization(bool value) { _requestStartAtInitialization = value; }

    // ---- Lifecycle, in the order the graph calls it ----

    /// Sets the rows' capacity to exactly capacity (rows past it are dropped), then doAllocate, then binds the
    /// conditions' triggers.
    void allocate(int capacity);
    /// Repairs the composite links of child containers, then takes doInit's answer; a refusal is logged.
    void init();
    /// Sizes the rows to entity + 1, new rows at their defaults, binds the conditions' triggers, then doAddEntity.
    void addEntity(int entity);
    /// Copies the default follower into the row, doInit(entity), and starts the row when the node asks for it.
    /// Fatal on a node with a parent that asks to start itself.
    void init(int entity);
    /// Drives the row as far as its conditions allow in one step of dt seconds. Never allocates.
    void update(Time dt, int entity);
    /// Forces the row out of any state (one doStop(0) when it was running, no final call-back), doFinish(entity),
    /// and puts the row back to its defaults.
    void finish(int entity);
    /// doFinish(), marks the node uninitialised and binds the conditions' triggers again.
    void finish();
    /// Destroys the rows, doDeallocate(), and frees the rows' storage.
    void deallocate();

    /// IDLE to STARTING: result UNKNOWN, time 0, onRequestStart. Any other state: nothing.
    void requestStart(int entity);
    /// STARTING to IDLE with SUCCESS and no hook; RUNNING to STOPPING with onRequestStop. Otherwise nothing.
    void requestStop(int entity);

    // ---- For the streams ----

    /// The rows' capacity; saved ahead of the rows so that they fit when read.
    int getBehaviorStatusDataArrayCapacity() const { return static_cast<int>(_statusData.capacity()); }
    /// Sets the rows' capacity to exactly value; fatal for a negative value.
    void setBehaviorStatusDataArrayCapacity(int value);
    /// The rows, one per entity index.
    const Array<BehaviorStatusData>& getStatusData() const { return _statusData; }
    /// After a load: links the node to graph and binds its conditions' triggers there, gives every slot below
    /// slotCount a row (new ones at their defaults), forgets follower ids that name no follower, and drops a start
    /// at initialisation asked of a node that has a parent: a file's values cannot lead the frame astray.
    void repairLoaded(BehaviorGraph* graph, int slotCount);

protected:
    /// Extra storage for capacity entities. Nothing here.
    virtual void doAllocate(int capacity);
    /// Frees what doAllocate took. Nothing here.
    virtual void doDeallocate();
    /// The node's own initialisation; false when it cannot run.
    virtual bool doInit() = 0;
    /// Undoes doInit.
    virtual void doFinish() = 0;
    /// The row of entity exists already. Nothing here.
    virtual void doAddEntity(int entity);
    /// Per-entity initialisation. Nothing here.
    virtual void doInit(int entity);
    /// Per-entity clean-up. Nothing here.
    virtual void doFinish(int entity);
    /// The row has just become RUNNING.
    virtual void doStart(int entity) = 0;
    /// One step of a RUNNING row, dt seconds.
    virtual void doUpdate(Time dt, int entity) = 0;
    /// One step of a STOPPING row, dt seconds: UNKNOWN to go on stopping, SUCCESS or FAILURE to end the run.
    virtual ResultStatus::Value doStop(Time dt, int entity) = 0;
    /// The row has just become STARTING. Nothing here.
    virtual void onRequestStart(int entity);
    /// The row has just become STOPPING. Nothing here.
    virtual void onRequestStop(int entity);

    /// Binds the triggers of a condition tree to the node's graph.
    void recursiveSetDataOnTriggers(const BoolCallBackPointer& callBack);
    /// Re-arms the triggers of a condition tree for the entity.
    static void recursiveResetTriggers(const BoolCallBackPointer& callBack, int entity);

    /// The one-follower rule of the nodes that allow at most one follower: the base's refusals, then a refusal of
    /// a second candidate that names className.
    bool canAddSingleNextBehaviorCandidate(const AbstractBehavior* candidate, OrvString& reason,
                                           const char* className) const;
    /// The base's add under the one-follower rule: on success the follower is selected by default.
    bool addSingleNextBehaviorCandidate(AbstractBehavior* candidate);
    /// The base's remove under the one-follower rule: on success no follower is selected by default.
    bool removeSingleNextBehaviorCandidate(AbstractBehavior* candidate);
    /// Replaces the one follower by next, or removes it for null; the row default follows. False, with the refusal
    /// logged as an error, when a lock or a self-connection forbids it.
    bool setSingleNextBehavior(AbstractBehavior* next);
    /// False, with line logged as an error behind the connection prefix, when the node has more than one follower.
    bool checkSingleNextBehaviorCandidate(const char* line) const;
    /// The first follower, or null.
    AbstractBehavior* getFirstNextBehaviorCandidate() const
    {
        return _nextBehaviorCandidates.empty() ? nullptr : _nextBehaviorCandidates[0];
    }

    /// The row of entity.
    BehaviorStatusData& touchStatusData(int entity) { return _statusData[entity]; }
    const BehaviorStatusData& getStatusData(int entity) const { return _statusData[entity]; }

private:
    // Followers, in insertion order; owned by the containers' children arrays.
    Array<AbstractBehavior*> _nextBehaviorCandidates;
    BehaviorGraph* _behaviorGraph = nullptr;
    uint32_t _nextBehaviorSelectedId = _nextBehaviorInvalidId;
    // One row per entity index, walked in memory order by the context's batches.
    Array<BehaviorStatusData> _statusData;
    AbstractBehaviorContainer* _parentBehavior = nullptr;
    bool _initialized = false;
    bool _requestStartAtInitialization = false;
    BoolCallBackPointer _startingCondition;
    BoolCallBackPointer _stoppingCondition;
    Array<SmartPointer<IVoidCallBack>> _initialStateCallBacks;
    Array<SmartPointer<IVoidCallBack>> _finalStateCallBacks;

    // Binds both conditions' triggers, starting condition first.
    void bindConditionTriggers();
    // The row of entity, or a row at its defaults (and a logged error) when entity has none.
    const BehaviorStatusData& readRow(int entity) const
    {
        return hasRow(entity) ? _statusData[entity] : refuseEntity(entity, "read");
    }
    // Logs that entity has no row for operation; gives a row at its defaults.
    const BehaviorStatusData& refuseEntity(int entity, const char* operation) const;
    // Logs a refusal of an edit of the followers.
    static void logRefusal(const OrvString& reason);
};

} // namespace orv
