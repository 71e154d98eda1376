#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "behavior/callBacks/orvBehaviorStatusCallBack.h"
#include "behavior/callBacks/orvCountTrigger.h"
#include "behavior/callBacks/orvTriggerWorld.h"
#include "behavior/callBacks/orvVoidFunctionCallBack.h"
#include "behavior/engine/orvAbstractBehavior.h"
#include "behavior/engine/orvAbstractBehaviorContainer.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"
#include "support/orvRecordingBehavior.h"
#include "system/inspection/orvAbstractAttribute.h"
#include "system/inspection/orvRTTI.h"
#include "system/serialization/orvBinaryStream.h"

namespace
{

using orv::AbstractBehavior;
using orv::BoolCallBackPointer;
using RunStatus = AbstractBehavior::RunStatus;
using ResultStatus = AbstractBehavior::ResultStatus;

/// The recording behaviour with a descriptor of its own, so that a stream can make one.
class RecordingBehavior : public orvtest::RecordingNode
{
    ORV_DECLARE_RTTI(RecordingBehavior)

public:
    using orvtest::RecordingNode::RecordingNode;
};

ORV_IMPLEMENT_RTTI(RecordingBehavior, "9d8f3e0c-3a57-4d43-9d0c-0b1f6c7e2a11", "orvtest::RecordingBehavior")

void RecordingBehavior::addAttributes()
{
    _rtti->addBaseClass<AbstractBehavior>();
}

/// A container node whose lock the test sets.
class LockableContainer : public RecordingBehavior, public orv::AbstractBehaviorContainer
{
public:
    bool isLocked() const override { return _locked; }
    bool checkChildrenBehaviorsConnection(bool) const override { return true; }
    bool checkChildBehaviorLooping(const AbstractBehavior*) const override { return false; }
    bool cleanChildrenBehaviors(bool) override { return true; }
    void adopt(AbstractBehavior* child) { forceAsParentBehavior(child); }
    bool _locked = false;
};

/// A container that is not itself a behaviour.
class BareContainer : public orv::AbstractBehaviorContainer
{
public:
    bool isLocked() const override { return false; }
    bool checkChildrenBehaviorsConnection(bool) const override { return true; }
    bool checkChildBehaviorLooping(const AbstractBehavior*) const override { return false; }
    bool cleanChildrenBehaviors(bool) override { return true; }
    void adopt(AbstractBehavior* child) { forceAsParentBehavior(child); }
};

using orvtest::Journal;

class AbstractBehaviorTest : public orvtest::CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        RecordingBehavior::createClassRTTI(true);
        _node = new RecordingBehavior(&_journal);
        _held = orv::SmartPointer<AbstractBehavior>(_node);
        _node->allocate(4);
        _node->addEntity(0);
        _node->init();
        _node->init(0);
        _journal.clear();
    }
    void TearDown() override
    {
        _held = orv::SmartPointer<AbstractBehavior>();
        RecordingBehavior::destroyClassRTTI(true);
        CoreTest::TearDown();
    }

    /// A void call-back that writes name(entity) into the journal.
    orv::SmartPointer<orv::IVoidCallBack> journalCallBack(const std::string& name)
    {
        struct Note : orv::IVoidCallBack
        {
            Note(Journal* journal, std::string name) : _journal(journal), _name(std::move(name)) {}
            void call(int entity) override { _journal->push_back(_name + "(" + std::to_string(entity) + ")"); }
            Journal* _journal;
            std::string _name;
        };
        return orv::SmartPointer<orv::IVoidCallBack>(new Note(&_journal, name));
    }
    static BoolCallBackPointer constant(bool value)
    {
        return BoolCallBackPointer(new orv::ConstantValueCallback<bool>(value));
    }

    Journal _journal;
    RecordingBehavior* _node = nullptr;
    orv::SmartPointer<AbstractBehavior> _held;
};

TEST_F(AbstractBehaviorTest, AStartedNodeRunsItsFirstFullStepInTheCallThatStartsIt)
{
    _node->addInitialStateCallBack(journalCallBack("initial"));
    _node->requestStart(0);
    EXPECT_EQ(RunStatus::STARTING, _node->getRunStatus(0));
    _node->update(0.5, 0);
    EXPECT_EQ((Journal{"onRequestStart", "doStart(0)", "initial(0)", "doUpdate(0.5)"}), _journal);
    EXPECT_TRUE(_node->isRunning(0));
    EXPECT_DOUBLE_EQ(0.5, _node->getTime(0));

    _journal.clear();
    _node->update(0.25, 0);
    EXPECT_EQ((Journal{"doUpdate(0.25)"}), _journal);
    EXPECT_DOUBLE_EQ(0.75, _node->getTime(0));
    EXPECT_EQ(ResultStatus::UNKNOWN, _node->getResultStatus(0));
}

TEST_F(AbstractBehaviorTest, AClosedStartingConditionCountsTimeAndAStopThenEndsTheRunAsASuccessWithoutAHook)
{
    _node->setStartingCondition(constant(false));
    _node->addFinalStateCallBack(journalCallBack("final"));
    _node->requestStart(0);
    _node->update(0.5, 0);
    _node->update(0.25, 0);
    EXPECT_EQ(RunStatus::STARTING, _node->getRunStatus(0));
    EXPECT_DOUBLE_EQ(0.75, _node->getTime(0));

    _node->requestStop(0);
    EXPECT_EQ((Journal{"onRequestStart"}), _journal);
    EXPECT_EQ(RunStatus::IDLE, _node->getRunStatus(0));
    EXPECT_EQ(ResultStatus::SUCCESS, _node->getResultStatus(0));
    EXPECT_DOUBLE_EQ(0.0, _node->getTime(0));

    // An idle node is not touched by update, and its result stays readable.
    _node->update(1.0, 0);
    EXPECT_EQ(ResultStatus::SUCCESS, _node->getResultStatus(0));
    EXPECT_EQ(1u, _journal.size());
}

TEST_F(AbstractBehaviorTest, AStopInTheFirstStepStartsUpdatesAndStopsWithAZeroStepInOneCall)
{
    _node->addFinalStateCallBack(journalCallBack("final"));
    for (int way = 0; way < 2; ++way)
    {
        // First by the stopping condition, then by doUpdate itself: the same hooks in the same order.
        SCOPED_TRACE(way);
        _node->setStoppingCondition(way == 0 ? constant(true) : BoolCallBackPointer());
        _node->_stopInUpdate = way == 1;
        _journal.clear();
        _node->requestStart(0);
        _node->update(0.5, 0);
        EXPECT_EQ((Journal{"onRequestStart", "doStart(0)", "doUpdate(0.5)", "onRequestStop", "doStop(0)", "final(0)"}),
                  _journal);
        EXPECT_EQ(RunStatus::IDLE, _node->getRunStatus(0));
        EXPECT_EQ(ResultStatus::SUCCESS, _node->getResultStatus(0));
        EXPECT_DOUBLE_EQ(0.0, _node->getTime(0));
    }
}

TEST_F(AbstractBehaviorTest, AStopRequestedByDoStartSkipsTheUpdateAndStopsWithTheFullStep)
{
    _node->_stopInStart = true;
    _node->requestStart(0);
    _node->update(0.5, 0);
    EXPECT_EQ((Journal{"onRequestStart", "doStart(0)", "onRequestStop", "doStop(0.5)"}), _journal);
    EXPECT_EQ(RunStatus::IDLE, _node->getRunStatus(0));
}

TEST_F(AbstractBehaviorTest, AStopThatGoesOnKeepsTheRowStoppingWithAnUnknownResultUntilDoStopAnswers)
{
    _node->addFinalStateCallBack(journalCallBack("final"));
    _node->_stopAnswers = {ResultStatus::UNKNOWN, ResultStatus::UNKNOWN, ResultStatus::FAILURE};
    _node->setStoppingCondition(constant(true));
    _node->requestStart(0);
    _node->update(0.5, 0);
    EXPECT_EQ(RunStatus::STOPPING, _node->getRunStatus(0));
    EXPECT_EQ(ResultStatus::UNKNOWN, _node->getResultStatus(0));
    // Time counts from the stop request: the step of the request itself gave 0.
    EXPECT_DOUBLE_EQ(0.0, _node->getTime(0));

    _journal.clear();
    _node->update(0.25, 0);
    EXPECT_DOUBLE_EQ(0.25, _node->getTime(0));
    _node->update(0.125, 0);
    EXPECT_EQ((Journal{"doStop(0.25)", "doStop(0.125)", "final(0)"}), _journal);
    EXPECT_EQ(RunStatus::IDLE, _node->getRunStatus(0));
    EXPECT_TRUE(_node->isFailed(0));
    EXPECT_DOUBLE_EQ(0.0, _node->getTime(0));

    // A new start clears the result.
    _node->requestStart(0);
    EXPECT_EQ(ResultStatus::UNKNOWN, _node->getResultStatus(0));
}

TEST_F(AbstractBehaviorTest, RequestsOutOfTheirStateChangeAndCallNothing)
{
    _node->requestStop(0);
    EXPECT_EQ(RunStatus::IDLE, _node->getRunStatus(0));
    _node->requestStart(0);
    _node->update(0.5, 0);
    _journal.clear();
    _node->requestStart(0);
    EXPECT_TRUE(_node->isRunning(0));
    EXPECT_DOUBLE_EQ(0.5, _node->getTime(0));

    _node->_stopAnswers = {ResultStatus::UNKNOWN};
    _node->requestStop(0);
    _node->requestStop(0);
    EXPECT_EQ((Journal{"onRequestStop"}), _journal);
}

TEST_F(AbstractBehaviorTest, FinishForcesARunningRowBackToItsDefaultsWithOneZeroStopAndNoFinalCallBack)
{
    _node->addFinalStateCallBack(journalCallBack("final"));
    _node->setNextBehaviorSelectedId(0);
    _node->init(0);
    _node->requestStart(0);
    _node->update(0.5, 0);
    _node->_stopAnswers = {ResultStatus::UNKNOWN};
    _journal.clear();
    _node->finish(0);
    EXPECT_EQ((Journal{"onRequestStop", "doStop(0)", "doFinish(0)"}), _journal);
    const AbstractBehavior::BehaviorStatusData& row = _node->getStatusData()[0];
    EXPECT_EQ(RunStatus::IDLE, row._runStatus);
    EXPECT_EQ(ResultStatus::UNKNOWN, row._resultStatus);
    EXPECT_DOUBLE_EQ(0.0, row._time);
    EXPECT_EQ(AbstractBehavior::_nextBehaviorInvalidId, row._nextBehaviorSelectedIdPerInstance);

    // A starting row is stopped without any hook; an idle one only finishes.
    _node->requestStart(0);
    _journal.clear();
    _node->finish(0);
    _node->finish(0);
    EXPECT_EQ((Journal{"doFinish(0)", "doFinish(0)"}), _journal);
}

TEST_F(AbstractBehaviorTest, TheLifecycleCallsItsHooksAndSizesTheRows)
{
    RecordingBehavior node(&_journal);
    node.allocate(2);
    EXPECT_EQ(2, node.getBehaviorStatusDataArrayCapacity());
    node.addEntity(0);
    node.addEntity(1);
    node.addEntity(2);
    // Past the capacity, rows grow to twice the old capacity plus 8.
    EXPECT_EQ(12, node.getBehaviorStatusDataArrayCapacity());
    EXPECT_EQ(3u, node.getStatusData().size());
    node.setNextBehaviorSelectedId(7);
    node.setRequestStartAtInitialization(true);
    node.init();
    node.init(2);
    EXPECT_TRUE(node.isInitialized());
    EXPECT_EQ(RunStatus::STARTING, node.getRunStatus(2));
    EXPECT_EQ(7u, node.getStatusData()[2]._nextBehaviorSelectedIdPerInstance);
    // Id 7 is past the candidates: the row has an id but no follower.
    EXPECT_TRUE(node.hasNextBehaviorSelected(2));
    EXPECT_EQ(nullptr, node.getNextBehaviorSelected(2));
    node.finish();
    EXPECT_FALSE(node.isInitialized());
    node.allocate(1);
    EXPECT_EQ(1u, node.getStatusData().size());
    node.deallocate();
    EXPECT_EQ(0, node.getBehaviorStatusDataArrayCapacity());
    EXPECT_EQ((Journal{"doAllocate(2)", "doAddEntity(0)", "doAddEntity(1)", "doAddEntity(2)", "doInit()", "doInit(2)",
                       "onRequestStart", "doFinish()", "doAllocate(1)", "doDeallocate()"}),
              _journal);

    orvtest::LogCapture log;
    node._initAnswer = false;
    node.init();
    EXPECT_FALSE(node.isInitialized());
    EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_INFO, {"Unable to initialize the behavior."}));
}

TEST_F(AbstractBehaviorTest, AnEntityWithoutARowIsLoggedAndChangesNothing)
{
    orvtest::LogCapture log;
    _node->requestStart(1);
    _node->update(0.5, 1);
    _node->requestStop(-1);
    _node->init(4);
    _node->finish(9);
    _node->addEntity(-2);
    EXPECT_EQ(RunStatus::IDLE, _node->getRunStatus(3));
    EXPECT_FALSE(_node->isRunning(3));
    EXPECT_EQ(nullptr, _node->getNextBehaviorSelected(3));
    EXPECT_TRUE(_journal.empty());
    EXPECT_EQ(1u, _node->getStatusData().size());
    EXPECT_EQ(9, log.countLines(orv::LogSeverity::LOG_ERROR, {"has no row"})) << log.describe();
}

TEST_F(AbstractBehaviorTest, CallBacksAreAppendedAlsoTwiceAndRemovedFirstFirstWithNullEntriesSkipped)
{
    auto a = journalCallBack("a");
    auto b = journalCallBack("b");
    _node->addInitialStateCallBack(a);
    _node->addInitialStateCallBack(b);
    _node->addInitialStateCallBack(a);
    _node->addInitialStateCallBack(orv::SmartPointer<orv::IVoidCallBack>());
    _node->removeInitialStateCallBack(a);
    _node->removeInitialStateCallBack(journalCallBack("unknown"));
    ASSERT_EQ(3u, _node->getInitialStateCallBacks().size());
    _node->requestStart(0);
    _node->update(0.5, 0);
    EXPECT_EQ((Journal{"onRequestStart", "doStart(0)", "b(0)", "a(0)", "doUpdate(0.5)"}), _journal);
}

TEST_F(AbstractBehaviorTest, FollowerEditsAreRefusedWithTheirReasonsAndKeepTheOrder)
{
    orvtest::LogCapture log;
    RecordingBehavior b, c, d;
    EXPECT_TRUE(_node->isFinal());
    EXPECT_TRUE(_node->addNextBehaviorCandidate(&b));
    EXPECT_TRUE(_node->addNextBehaviorCandidate(&c));
    EXPECT_TRUE(_node->addNextBehaviorCandidate(&d));
    EXPECT_FALSE(_node->addNextBehaviorCandidate(&c));
    EXPECT_FALSE(_node->addNextBehaviorCandidate(nullptr));
    EXPECT_EQ(3u, _node->getNextBehaviorCandidates().size());
    EXPECT_FALSE(_node->isFinal());
    EXPECT_EQ(1u, _node->retrieveNextBehaviorCandidateId(&c));
    EXPECT_EQ(AbstractBehavior::_nextBehaviorInvalidId, _node->retrieveNextBehaviorCandidateId(nullptr));

    _node->selectFollower(0, 2);
    EXPECT_EQ(&d, _node->getNextBehaviorSelected(0));
    EXPECT_TRUE(_node->removeNextBehaviorCandidate(&c));
    EXPECT_FALSE(_node->removeNextBehaviorCandidate(&c));
    EXPECT_FALSE(_node->removeNextBehaviorCandidate(nullptr));
    ASSERT_EQ(2u, _node->getNextBehaviorCandidates().size());
    EXPECT_EQ(&d, _node->getNextBehaviorCandidates()[1]);
    // Ids stored in rows are not corrected: id 2 is past the candidates now.
    EXPECT_EQ(nullptr, _node->getNextBehaviorSelected(0));

    LockableContainer lockedParent;
    lockedParent._locked = true;
    lockedParent.adopt(&b);
    RecordingBehavior e;
    EXPECT_FALSE(_node->addNextBehaviorCandidate(&b));
    EXPECT_FALSE(_node->removeNextBehaviorCandidate(&b));
    EXPECT_FALSE(b.addNextBehaviorCandidate(&e));
    EXPECT_FALSE(b.removeNextBehaviorCandidate(&e));

    const std::string add = "Can not accept next behavior candidate for current behavior : ";
    const std::string remove = "Can not remove next behavior candidate from current behavior : ";
    const std::vector<std::string> expected = {
        add + "behavior candidate is already registered as a next behavior candidate",
        add + "behavior candidate is NULL",
        remove + "behavior candidate is not registered as a next behavior candidate",
        remove + "behavior candidate is NULL",
        add + "behavior candidate belongs to a parent behavior that is locked",
        remove + "behavior candidate belongs to a parent behavior that is locked",
        add + "current behavior belongs to a parent behavior that is locked",
        remove + "current behavior belongs to a parent behavior that is locked",
    };
    ASSERT_EQ(expected.size(), log.getLines().size()) << log.describe();
    for (size_t i = 0; i < expected.size(); ++i)
    {
        EXPECT_EQ(orv::LogSeverity::LOG_ERROR, log.getLines()[i]._severity);
        EXPECT_EQ(expected[i], log.getLines()[i]._message);
    }
    orv::OrvString reason("stale");
    EXPECT_TRUE(_node->canAddNextBehaviorCandidate(&e, reason));
    EXPECT_TRUE(reason.empty());
}

TEST_F(AbstractBehaviorTest, AncestorsAreFoundThroughBehaviourContainersOnlyAndOnlyTheDirectParentsLockCounts)
{
    LockableContainer outer;
    LockableContainer inner;
    BareContainer bare;
    outer.adopt(&inner);
    inner.adopt(_node);
    EXPECT_TRUE(_node->hasAncestorBehavior(&inner));
    EXPECT_TRUE(_node->hasAncestorBehavior(&outer));
    EXPECT_FALSE(_node->hasAncestorBehavior(&bare));
    outer._locked = true;
    EXPECT_FALSE(_node->hasParentBehaviorLocked());
    inner._locked = true;
    EXPECT_TRUE(_node->hasParentBehaviorLocked());

    bare.adopt(&inner);
    EXPECT_FALSE(_node->hasAncestorBehavior(&outer));
    EXPECT_TRUE(_node->hasAncestorBehavior(&bare));
}

TEST_F(AbstractBehaviorTest, AStatusCallBackReadsTheNodesRow)
{
    orv::BehaviorStatusCallBack running(_node, RunStatus::RUNNING);
    orv::BehaviorStatusCallBack idle(_node, RunStatus::IDLE);
    EXPECT_TRUE(idle.call(0));
    _node->requestStart(0);
    _node->update(0.5, 0);
    EXPECT_TRUE(running.call(0));
    EXPECT_FALSE(idle.call(0));
}

TEST_F(AbstractBehaviorTest, ANodeComesBackFromABinaryStreamWithItsRowsAndConditions)
{
    _node->addEntity(1);
    _node->setRequestStartAtInitialization(true);
    _node->setStoppingCondition(!constant(true));
    _node->requestStart(1);
    _node->update(0.5, 1);
    orv::BinaryStream stream;
    stream.pack(_held);

    orv::SmartPointer<AbstractBehavior> read;
    stream.unpack(read);
    ASSERT_NE(nullptr, dynamic_cast<RecordingBehavior*>(read.getImpl()));
    EXPECT_EQ(_node->getBehaviorStatusDataArrayCapacity(), read->getBehaviorStatusDataArrayCapacity());
    ASSERT_EQ(2u, read->getStatusData().size());
    EXPECT_EQ(RunStatus::RUNNING, read->getRunStatus(1));
    EXPECT_DOUBLE_EQ(0.5, read->getTime(1));
    EXPECT_EQ(RunStatus::IDLE, read->getRunStatus(0));
    EXPECT_TRUE(read->isInitialized());
    EXPECT_TRUE(read->isRequestStartAtInitialization());
    EXPECT_EQ(nullptr, read->getStartingCondition().getImpl());
    ASSERT_NE(nullptr, read->getStoppingCondition().getImpl());
    EXPECT_FALSE(read->getStoppingCondition()->call(1));
}

TEST_F(AbstractBehaviorTest, TheNodeAndItsRowAreDescribedWithTheirAttributesInFileOrder)
{
    const orv::RTTI* node = orv::RTTI::getRTTI(orv::RTTI::getTypeID("orv::AbstractBehavior"));
    const orv::RTTI* row = orv::RTTI::getRTTI(orv::RTTI::getTypeID("orv::AbstractBehavior::BehaviorStatusData"));
    ASSERT_NE(nullptr, node);
    ASSERT_NE(nullptr, row);
    EXPECT_EQ(orv::Uuid("36c47d0c-64cb-41b7-a648-517b01c5fb4a"), node->getTypeID());
    EXPECT_EQ(orv::Uuid("257441f6-5d40-434b-bb5f-7219093ec5a7"), row->getTypeID());
    EXPECT_EQ(nullptr, orv::RTTI::createInstance(node->getTypeID()));
    auto names = [](const orv::RTTI& rtti)
    {
        std::vector<std::string> list;
        for (unsigned int i = 0; i < rtti.getAttributesCount(); ++i)
        {
            list.push_back(rtti.getAttribute(i)->getName());
        }
        return list;
    };
    EXPECT_EQ((std::vector<std::string>{"behaviorGraph", "nextBehaviorCandidates", "nextBehaviorSelectedId",
                                        "behaviorStatusDataArrayCapacity", "behaviorStatusData", "initialized",
                                        "requestStartAtInitialization", "startingCondition", "stoppingCondition"}),
              names(*node));
    EXPECT_EQ((std::vector<std::string>{"time", "runStatus", "resultStatus", "nextBehaviorSelectedId"}), names(*row));
    EXPECT_EQ(24u, sizeof(AbstractBehavior::BehaviorStatusData));
}

/// Nodes whose conditions hold triggers, in a simulation whose frames the triggers read.
class AbstractBehaviorTriggerTest : public orvtest::TriggerWorld
{
protected:
    void SetUp() override
    {
        TriggerWorld::SetUp();
        for (RecordingBehavior* node : {&_first, &_second})
        {
            node->setBehaviorGraph(graph());
            node->allocate(_maxEntities);
            for (int entity = 0; entity < 2; ++entity)
            {
                node->addEntity(entity);
                node->init(entity);
            }
        }
    }
    RecordingBehavior _first;
    RecordingBehavior _second;
};

TEST_F(AbstractBehaviorTriggerTest, TriggersUnderOperatorsAreBoundAtOnceAndExtendedAtEveryNewEntity)
{
    orv::CountTrigger* trigger = new orv::CountTrigger(orv::ComparisonOperator::GREATER_EQUAL);
    BoolCallBackPointer held(trigger);
    RecordingBehavior unbound;
    unbound.setStartingCondition(!held);
    EXPECT_EQ(nullptr, trigger->getBehaviorGraph());

    _first.setStartingCondition(constant(true) && !held);
    EXPECT_EQ(graph(), trigger->getBehaviorGraph());
    EXPECT_EQ(2, trigger->getUsedCount());
    addEntities(1);
    _first.addEntity(2);
    EXPECT_EQ(3, trigger->getUsedCount());
}

TEST_F(AbstractBehaviorTriggerTest, ATriggerAskedByTwoNodesInOneFrameCountsOnceAndAShortCircuitedOneNotAtAll)
{
    orv::CountTrigger* shared = new orv::CountTrigger(orv::ComparisonOperator::GREATER_EQUAL);
    orv::CountTrigger* skipped = new orv::CountTrigger(orv::ComparisonOperator::GREATER_EQUAL);
    BoolCallBackPointer sharedHeld(shared);
    BoolCallBackPointer skippedHeld(skipped);
    _first.setStoppingCondition(sharedHeld);
    _second.setStoppingCondition(sharedHeld || skippedHeld);
    _first.setStartingCondition(constant(false) && skippedHeld);
    shared->setTriggerCount(0, 100);
    skipped->setTriggerCount(0, 100);
    _first.requestStart(0);
    _second.requestStart(0);
    nextFrame();
    _second.update(0.5, 0);
    _first.update(0.5, 0);
    _second.update(0.5, 0);
    // The frame's answers come from one evaluation each: both sides of the OR were asked once.
    EXPECT_TRUE(_second.isRunning(0));
    EXPECT_EQ(1u, shared->getCurrentCount(0));
    EXPECT_EQ(1u, skipped->getCurrentCount(0));
    // In the next frame only the AND is asked, and its false left side keeps the trigger from counting.
    nextFrame();
    _first.update(0.5, 0);
    EXPECT_EQ(RunStatus::STARTING, _first.getRunStatus(0));
    EXPECT_EQ(1u, skipped->getCurrentCount(0));
}

using AbstractBehaviorDeathTest = AbstractBehaviorTest;

TEST_F(AbstractBehaviorDeathTest, StartAtInitializationBelowTheTopLevelAndANegativeCapacityAreFatal)
{
    LockableContainer parent;
    parent.adopt(_node);
    _node->setRequestStartAtInitialization(true);
    EXPECT_DEATH(_node->init(0), "Start must not be requested on a behavior which is not top level");
    EXPECT_DEATH(_node->init(0), "_parentBehavior == NULL");
    EXPECT_DEATH(_node->setBehaviorStatusDataArrayCapacity(-1), "value >= 0");
}

} // namespace
