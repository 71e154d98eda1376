#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvTriggerWorld.h"
#include "behavior/operators/orvFinalBehaviorOperator.h"
#include "behavior/operators/orvInitialBehaviorOperator.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"
#include "support/orvRecordingBehavior.h"
#include "system/inspection/orvInspectable.h"
#include "system/serialization/orvBinaryStream.h"

namespace
{

using orv::AbstractBehavior;
using orv::CompositeBehavior;
using orv::SmartPointer;
using orvtest::Journal;
using orvtest::RecordingBehavior;
using RunStatus = AbstractBehavior::RunStatus;
using ResultStatus = AbstractBehavior::ResultStatus;

/// A recording host behaviour with a descriptor of its own, so that a stream can make one.
class SavedBehavior : public RecordingBehavior
{
    ORV_DECLARE_RTTI(SavedBehavior)
};

ORV_IMPLEMENT_RTTI(SavedBehavior, "5b0c3f7e-8f4e-4d8a-a0f1-2f3c9d7e6b21", "orvtest::SavedBehavior")

void SavedBehavior::addAttributes()
{
    _rtti->addBaseClass<orv::AbstractUserBehavior>();
}

class CompositeBehaviorTest : public orvtest::CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        _composite = new CompositeBehavior();
        _held = SmartPointer<AbstractBehavior>(_composite);
    }
    void TearDown() override
    {
        _held = SmartPointer<AbstractBehavior>();
        CoreTest::TearDown();
    }

    /// A recording child of the composite, owned by it.
    RecordingBehavior* addChild(const std::string& name)
    {
        RecordingBehavior* child = new RecordingBehavior(&_journal, name);
        EXPECT_TRUE(_composite->addChildBehavior(child));
        return child;
    }
    /// A bare recording child (any number of followers), owned by the composite.
    orvtest::RecordingNode* addNode(const std::string& name)
    {
        orvtest::RecordingNode* child = new orvtest::RecordingNode(&_journal, name);
        EXPECT_TRUE(_composite->addChildBehavior(child));
        return child;
    }
    /// Connects the chain initial -> nodes... -> final.
    void chain(std::initializer_list<AbstractBehavior*> nodes)
    {
        AbstractBehavior* previous = _composite->touchInitialBehavior();
        for (AbstractBehavior* node : nodes)
        {
            if (previous == _composite->touchInitialBehavior())
            {
                EXPECT_TRUE(static_cast<orv::InitialBehaviorOperator*>(previous)->setNextBehavior(node));
            }
            else
            {
                EXPECT_TRUE(previous->addNextBehaviorCandidate(node));
            }
            previous = node;
        }
        EXPECT_TRUE(previous->addNextBehaviorCandidate(_composite->touchFinalBehavior()));
    }
    /// Sizes, initialises and starts the composite for one entity.
    void start()
    {
        _composite->allocate(4);
        _composite->addEntity(0);
        _composite->init();
        ASSERT_TRUE(_composite->isInitialized());
        _composite->init(0);
        _composite->requestStart(0);
        _journal.clear();
    }
    std::vector<const AbstractBehavior*> history() const
    {
        const auto& updated = _composite->getRuntimeHistory(0)._updatedBehaviorsThisFrame;
        return std::vector<const AbstractBehavior*>(updated.begin(), updated.end());
    }

    Journal _journal;
    CompositeBehavior* _composite = nullptr;
    SmartPointer<AbstractBehavior> _held;
};

TEST_F(CompositeBehaviorTest, ANewCompositePassesItsTwoOperatorsAndEndsWithSuccessInOneUpdate)
{
    EXPECT_TRUE(_composite->checkChildrenBehaviorsConnection(true));
    start();
    _composite->update(0.5, 0);
    EXPECT_EQ(RunStatus::IDLE, _composite->getRunStatus(0));
    EXPECT_EQ(ResultStatus::SUCCESS, _composite->getResultStatus(0));
    EXPECT_EQ(nullptr, _composite->getCurrentBehavior(0));
    EXPECT_EQ((std::vector<const AbstractBehavior*>{_composite->getInitialBehavior(), _composite->getFinalBehavior()}),
              history());
}

TEST_F(CompositeBehaviorTest, TheFrameGoesWholeToTheFirstChildThatTakesTimeAndTheNextGetsZero)
{
    RecordingBehavior* a = addChild("A");
    RecordingBehavior* b = addChild("B");
    a->_updatesPerRun = 2;
    chain({a, b});
    start();
    _composite->update(0.5, 0);
    EXPECT_EQ((Journal{"A:onRequestStart", "A:doStart(0)", "A:doUpdate(0.5)"}), _journal);
    _journal.clear();
    _composite->update(0.25, 0);
    EXPECT_EQ((Journal{"A:doUpdate(0.25)", "A:onRequestStop", "A:doStop(0)", "B:onRequestStart", "B:doStart(0)",
                       "B:doUpdate(0)"}),
              _journal);
    EXPECT_EQ(b, _composite->getCurrentBehavior(0));
    EXPECT_TRUE(_composite->isRunning(0));
}

TEST_F(CompositeBehaviorTest, ACycleCostsOnePassAFrameAndItsRepeatedNodeWaitsStarted)
{
    RecordingBehavior* x = addChild("X");
    orvtest::RecordingNode* y = addNode("Y");
    x->_stopInStart = true;
    y->_stopInStart = true;
    ASSERT_TRUE(static_cast<orv::InitialBehaviorOperator*>(_composite->touchInitialBehavior())->setNextBehavior(x));
    ASSERT_TRUE(x->addNextBehaviorCandidate(y));
    ASSERT_TRUE(y->addNextBehaviorCandidate(x));
    ASSERT_TRUE(y->addNextBehaviorCandidate(_composite->touchFinalBehavior()));
    // The chart is valid as far as finals go only through its one exit; a cycle is allowed.
    y->setNextBehaviorSelectedId(0);
    start();
    _composite->update(0.5, 0);
    EXPECT_EQ(RunStatus::STARTING, x->getRunStatus(0));
    EXPECT_EQ(x, _composite->getCurrentBehavior(0));
    EXPECT_EQ((std::vector<const AbstractBehavior*>{_composite->getInitialBehavior(), x, y}), history());
    _journal.clear();
    _composite->update(0.5, 0);
    EXPECT_EQ((Journal{"X:doStart(0)", "X:onRequestStop", "X:doStop(0.5)", "Y:onRequestStart", "Y:doStart(0)",
                       "Y:onRequestStop", "Y:doStop(0)", "X:onRequestStart"}),
              _journal);
}

TEST_F(CompositeBehaviorTest, AFailingChildFailsTheCompositeAndItsFollowerNeverStarts)
{
    RecordingBehavior* a = addChild("A");
    RecordingBehavior* b = addChild("B");
    a->_stopInStart = true;
    a->_stopAnswers = {ResultStatus::FAILURE};
    chain({a, b});
    start();
    _composite->update(0.5, 0);
    EXPECT_EQ((Journal{"A:onRequestStart", "A:doStart(0)", "A:onRequestStop", "A:doStop(0.5)"}), _journal);
    EXPECT_EQ(RunStatus::IDLE, _composite->getRunStatus(0));
    EXPECT_TRUE(_composite->isFailed(0));
}

TEST_F(CompositeBehaviorTest, AStoppedCompositeDrivesItsStoppingChildUntilItEndsAndTakesItsResult)
{
    RecordingBehavior* a = addChild("A");
    a->_stopAnswers = {ResultStatus::UNKNOWN, ResultStatus::FAILURE};
    chain({a});
    start();
    _composite->update(0.5, 0);
    _composite->requestStop(0);
    _journal.clear();
    _composite->update(0.25, 0);
    EXPECT_EQ(RunStatus::STOPPING, _composite->getRunStatus(0));
    _composite->update(0.125, 0);
    EXPECT_EQ((Journal{"A:doStop(0.25)", "A:doStop(0.125)"}), _journal);
    EXPECT_EQ(RunStatus::IDLE, _composite->getRunStatus(0));
    EXPECT_TRUE(_composite->isFailed(0));
}

TEST_F(CompositeBehaviorTest, NestedCompositesHandTheFrameDownAndTheirEndUp)
{
    CompositeBehavior* inner = new CompositeBehavior();
    ASSERT_TRUE(_composite->addChildBehavior(inner));
    RecordingBehavior* leaf = new RecordingBehavior(&_journal, "leaf");
    ASSERT_TRUE(inner->addChildBehavior(leaf));
    ASSERT_TRUE(static_cast<orv::InitialBehaviorOperator*>(inner->touchInitialBehavior())->setNextBehavior(leaf));
    ASSERT_TRUE(leaf->addNextBehaviorCandidate(inner->touchFinalBehavior()));
    leaf->_updatesPerRun = 2;
    chain({inner});
    start();
    EXPECT_EQ(_composite, inner->getParentComposite());
    _composite->update(0.5, 0);
    EXPECT_EQ(leaf, inner->getCurrentBehavior(0));
    _composite->update(0.5, 0);
    EXPECT_EQ(RunStatus::IDLE, _composite->getRunStatus(0));
    EXPECT_EQ(ResultStatus::SUCCESS, _composite->getResultStatus(0));
    // The inner history stays readable until the outer composite's next frame.
    EXPECT_FALSE(inner->getRuntimeHistory(0)._updatedBehaviorsThisFrame.empty());
}

TEST_F(CompositeBehaviorTest, InitialisationIsAllOrNothingAndLocksTheChildrenUntilFinish)
{
    orvtest::LogCapture log;
    RecordingBehavior* a = addChild("A");
    RecordingBehavior* b = addChild("B");
    chain({a, b});
    b->_initAnswer = false;
    _composite->init();
    EXPECT_FALSE(_composite->isInitialized());
    EXPECT_EQ((Journal{"A:doInit()", "B:doInit()", "A:doFinish()"}), _journal);
    EXPECT_FALSE(a->isInitialized());

    b->_initAnswer = true;
    _composite->init();
    ASSERT_TRUE(_composite->isInitialized());
    RecordingBehavior* late = new RecordingBehavior();
    SmartPointer<AbstractBehavior> holdLate(late);
    EXPECT_FALSE(_composite->addChildBehavior(late));
    EXPECT_FALSE(a->addNextBehaviorCandidate(late));
    EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_ERROR,
                            {"Can not add child behavior to behavior container : behavior container is locked"}));
    EXPECT_TRUE(_composite->cleanChildrenBehaviors(true));
    _composite->finish();
    EXPECT_TRUE(_composite->addChildBehavior(late));
}

TEST_F(CompositeBehaviorTest, ChildEditsAreRefusedWithTheirReasons)
{
    orvtest::LogCapture log;
    RecordingBehavior* a = addChild("A");
    CompositeBehavior* other = new CompositeBehavior();
    SmartPointer<AbstractBehavior> holdOther(other);
    EXPECT_FALSE(_composite->addChildBehavior(a));
    EXPECT_FALSE(_composite->addChildBehavior(nullptr));
    EXPECT_FALSE(other->addChildBehavior(a));
    EXPECT_FALSE(other->removeChildBehavior(a));
    EXPECT_FALSE(_composite->removeChildBehavior(_composite->touchInitialBehavior()));
    EXPECT_FALSE(_composite->removeChildBehavior(_composite->touchFinalBehavior()));
    // A container can be neither its own child nor the child of one of its descendants.
    ASSERT_TRUE(_composite->addChildBehavior(other));
    CompositeBehavior* self = _composite;
    EXPECT_FALSE(other->addChildBehavior(self));
    EXPECT_FALSE(other->addChildBehavior(other));

    const std::string add = "Can not add child behavior to behavior container : ";
    const std::vector<std::string> expected = {
        add + "child behavior already belongs to current behavior container",
        add + "child behavior is NULL",
        add + "child behavior already belongs to another behavior container but can not be removed from this other "
              "behavior container",
        "Can not remove child behavior from behavior container : child behavior does not belong to current behavior "
        "container",
        "Can not remove child behavior from composite behavior : initial behavior can not be removed",
        "Can not remove child behavior from composite behavior : final behavior can not be removed",
        add + "child behavior is an ancestor of current behavior container",
        add + "child behavior is an ancestor of current behavior container",
    };
    ASSERT_EQ(expected.size(), log.getLines().size()) << log.describe();
    for (size_t i = 0; i < expected.size(); ++i)
    {
        EXPECT_EQ(expected[i], log.getLines()[i]._message);
    }
    EXPECT_TRUE(_composite->removeChildBehavior(a));
    EXPECT_EQ(3u, _composite->getChildrenBehaviors().size());
}

TEST_F(CompositeBehaviorTest, TheChartCheckReportsEveryCountAndCleaningRepairsWhatItCan)
{
    orvtest::LogCapture log;
    orvtest::RecordingNode* r = addNode("R");
    RecordingBehavior* stray = addChild("stray");
    RecordingBehavior* lost = addChild("lost");
    RecordingBehavior* stranger = new RecordingBehavior(&_journal, "stranger");
    SmartPointer<AbstractBehavior> holdStranger(stranger);
    _composite->touchChildrenBehaviors().push_back(SmartPointer<AbstractBehavior>());
    ASSERT_TRUE(static_cast<orv::InitialBehaviorOperator*>(_composite->touchInitialBehavior())->setNextBehavior(r));
    ASSERT_TRUE(r->addNextBehaviorCandidate(_composite->touchFinalBehavior()));
    ASSERT_TRUE(r->addNextBehaviorCandidate(stray));
    ASSERT_TRUE(r->addNextBehaviorCandidate(stranger));
    EXPECT_FALSE(_composite->checkChildrenBehaviorsConnection(false));
    ASSERT_EQ(1u, log.getLines().size());
    EXPECT_EQ("Invalid connection for children behaviors contained in CompositeBehavior : "
              "\n\t- 1 children behaviors are connected to initial behavior but were not added to current behavior"
              "\n\t- 1 children behaviors added to current behavior are NULL"
              "\n\t- 1 children behaviors were added to current behavior but are not connected to initial behavior"
              "\n\t- 2 final children behaviors were found (only the default final behavior is allowed)",
              log.getLines()[0]._message);

    log.clear();
    EXPECT_TRUE(_composite->cleanChildrenBehaviors(true)) << log.describe();
    EXPECT_TRUE(log.getLines().empty()) << log.describe();
    EXPECT_TRUE(_composite->hasChildBehavior(stranger));
    EXPECT_FALSE(_composite->hasChildBehavior(lost));
    EXPECT_EQ(_composite->getFinalBehavior(), stray->getNextBehaviorCandidates()[0]);
    EXPECT_EQ(_composite->getFinalBehavior(), stranger->getNextBehaviorCandidates()[0]);
    EXPECT_TRUE(_composite->checkChildrenBehaviorsConnection(true));
    EXPECT_TRUE(_composite->isChildBehaviorInFlow(stray));
    orv::OrvMap<const AbstractBehavior*, bool> flow;
    _composite->computeFlowMap(flow);
    EXPECT_EQ(5u, flow.size());
    EXPECT_FALSE(_composite->checkChildBehaviorLooping(r));
}

TEST_F(CompositeBehaviorTest, TheOneFollowerRuleOfCompositesAndOperators)
{
    orvtest::LogCapture log;
    CompositeBehavior* next = new CompositeBehavior();
    SmartPointer<AbstractBehavior> holdNext(next);
    RecordingBehavior other;
    EXPECT_TRUE(_composite->addNextBehaviorCandidate(next));
    EXPECT_EQ(0u, _composite->getNextBehaviorSelectedId());
    EXPECT_FALSE(_composite->addNextBehaviorCandidate(&other));
    EXPECT_TRUE(_composite->setNextBehavior(&other));
    EXPECT_EQ(&other, _composite->getNextBehavior());
    EXPECT_FALSE(_composite->setNextBehavior(_composite));
    EXPECT_TRUE(_composite->setNextBehavior(nullptr));
    EXPECT_EQ(AbstractBehavior::_nextBehaviorInvalidId, _composite->getNextBehaviorSelectedId());
    EXPECT_FALSE(_composite->touchFinalBehavior()->addNextBehaviorCandidate(&other));
    EXPECT_FALSE(_composite->touchFinalBehavior()->removeNextBehaviorCandidate(&other));
    EXPECT_FALSE(_composite->touchInitialBehavior()->addNextBehaviorCandidate(&other));

    const std::string accept = "Can not accept next behavior candidate for current behavior : ";
    const std::string finalText = accept + "FinalBehaviorOperator can not have any next behavior candidate)";
    const std::vector<std::string> expected = {
        accept + "current behavior already has a next behavior candidate (CompositeBehavior allows at most 1 next "
                 "behavior candidate)",
        "Can not explicitely set requested next behavior for current behavior : requested next behavior is same as "
        "current behavior (forbidden connection)",
        finalText,
        finalText,
        accept + "current behavior already has a next behavior candidate (InitialBehaviorOperator allows at most 1 "
                 "next behavior candidate)",
    };
    ASSERT_EQ(expected.size(), log.getLines().size()) << log.describe();
    for (size_t i = 0; i < expected.size(); ++i)
    {
        EXPECT_EQ(expected[i], log.getLines()[i]._message);
    }
}

TEST_F(CompositeBehaviorTest, AChartComesBackFromABinaryStreamAndGoesOnRunning)
{
    SavedBehavior::createClassRTTI(true);
    {
        SavedBehavior* leaf = new SavedBehavior();
        ASSERT_TRUE(_composite->addChildBehavior(leaf));
        chain({leaf});
        start();
        _composite->update(0.5, 0);
        ASSERT_TRUE(leaf->isRunning(0));
        orv::BinaryStream stream;
        stream.pack(_held);
        SmartPointer<AbstractBehavior> read;
        stream.unpack(read);
        CompositeBehavior* copy = dynamic_cast<CompositeBehavior*>(read.getImpl());
        ASSERT_NE(nullptr, copy);
        ASSERT_EQ(3u, copy->getChildrenBehaviors().size());
        const AbstractBehavior* copiedLeaf = copy->getChildrenBehaviors()[2].getImpl();
        EXPECT_EQ(copy, copiedLeaf->getParentBehavior());
        EXPECT_EQ(copiedLeaf, copy->getCurrentBehavior(0));
        EXPECT_EQ(copy->getFinalBehavior(), copiedLeaf->getNextBehaviorCandidates()[0]);
        copy->update(0.5, 0);
        EXPECT_TRUE(copiedLeaf->isRunning(0));
        EXPECT_DOUBLE_EQ(1.0, copiedLeaf->getTime(0));
        copy->requestStop(0);
        copy->update(0.5, 0);
        EXPECT_EQ(RunStatus::IDLE, copy->getRunStatus(0));
        EXPECT_EQ(ResultStatus::SUCCESS, copy->getResultStatus(0));
    }
    _held = SmartPointer<AbstractBehavior>();
    SavedBehavior::destroyClassRTTI(true);
}

using CompositeBehaviorGraphTest = orvtest::TriggerWorld;

TEST_F(CompositeBehaviorGraphTest, AChildAddedInAGraphJoinsItAndLeavesItWhenRemoved)
{
    SmartPointer<AbstractBehavior> held(new CompositeBehavior());
    CompositeBehavior& composite = static_cast<CompositeBehavior&>(*held);
    composite.setBehaviorGraph(graph());
    composite.allocate(_maxEntities);
    RecordingBehavior* child = new RecordingBehavior();
    SmartPointer<AbstractBehavior> holdChild(child);
    ASSERT_TRUE(composite.addChildBehavior(child));
    EXPECT_EQ(graph(), child->getBehaviorGraph());
    EXPECT_EQ(2u, child->getStatusData().size());
    EXPECT_EQ(_maxEntities, child->getBehaviorStatusDataArrayCapacity());
    ASSERT_TRUE(composite.removeChildBehavior(child));
    EXPECT_EQ(nullptr, child->getBehaviorGraph());
    EXPECT_EQ(0, child->getBehaviorStatusDataArrayCapacity());
}

using CompositeBehaviorDeathTest = CompositeBehaviorTest;

TEST_F(CompositeBehaviorDeathTest, AFollowerIdPastTheCandidatesAndANegativeCapacityAreFatal)
{
    RecordingBehavior* a = addChild("A");
    a->_updatesPerRun = 2;
    chain({a});
    start();
    _composite->update(0.5, 0);
    a->selectFollower(0, 5);
    EXPECT_DEATH(_composite->update(0.5, 0), "currentBehavior != NULL");
    EXPECT_DEATH(_composite->setCurrentBehaviorArrayCapacity(-1), "value >= 0");
}

} // namespace
