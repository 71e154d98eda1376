#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/operators/orvBlockBehaviorOperator.h"
#include "behavior/operators/orvInitialBehaviorOperator.h"
#include "behavior/operators/orvLoopBehaviorOperator.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"
#include "support/orvRecordingBehavior.h"
#include "system/inspection/orvRTTI.h"

namespace
{

using orv::AbstractBehavior;
using orv::BlockBehaviorOperator;
using orv::BoolCallBackPointer;
using orv::CompositeBehavior;
using orv::LoopBehaviorOperator;
using orv::SmartPointer;
using orvtest::Journal;
using orvtest::RecordingBehavior;
using LoopMode = LoopBehaviorOperator::LoopMode;
using RunStatus = AbstractBehavior::RunStatus;
using ResultStatus = AbstractBehavior::ResultStatus;

/// A condition whose answers the test scripts, one per call (the last one repeats), and counts its calls.
class ScriptedCondition : public orv::ITypedCallBack<bool>
{
public:
    explicit ScriptedCondition(std::vector<bool> answers) : _answers(std::move(answers)) {}
    bool call(int) override
    {
        const size_t index = _calls < _answers.size() ? _calls : _answers.size() - 1;
        ++_calls;
        return _answers[index];
    }
    std::vector<bool> _answers;
    size_t _calls = 0;
};

/// A composite whose chart the test builds from initial to final, run for entity 0.
class SequencingOperatorsTest : public orvtest::CoreTest
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
    /// Adds the nodes to the composite and chains them from the initial to the final operator.
    void chain(std::initializer_list<AbstractBehavior*> nodes)
    {
        AbstractBehavior* previous = _composite->touchInitialBehavior();
        for (AbstractBehavior* node : nodes)
        {
            ASSERT_TRUE(_composite->addChildBehavior(node));
            if (previous == _composite->touchInitialBehavior())
            {
                ASSERT_TRUE(static_cast<orv::InitialBehaviorOperator*>(previous)->setNextBehavior(node));
            }
            else
            {
                ASSERT_TRUE(previous->addNextBehaviorCandidate(node));
            }
            previous = node;
        }
        ASSERT_TRUE(previous->addNextBehaviorCandidate(_composite->touchFinalBehavior()));
    }
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
    /// A loop of mode around a recording child named "C" that ends after one update of each run.
    LoopBehaviorOperator* makeLoop(LoopMode::Value mode, ScriptedCondition* condition)
    {
        LoopBehaviorOperator* loop = new LoopBehaviorOperator(mode, BoolCallBackPointer(condition));
        _child = new RecordingBehavior(&_journal, "C");
        _child->_updatesPerRun = 1;
        EXPECT_TRUE(loop->addChildBehavior(_child));
        return loop;
    }

    Journal _journal;
    CompositeBehavior* _composite = nullptr;
    SmartPointer<AbstractBehavior> _held;
    RecordingBehavior* _child = nullptr;
};

TEST_F(SequencingOperatorsTest, ABlockWithoutConditionPassesInItsFirstFrameAndLeavesTheNextNodeAZeroStep)
{
    BlockBehaviorOperator* block = new BlockBehaviorOperator();
    RecordingBehavior* a = new RecordingBehavior(&_journal, "A");
    chain({block, a});
    start();
    _composite->update(0.5, 0);
    EXPECT_EQ((Journal{"A:onRequestStart", "A:doStart(0)", "A:doUpdate(0)"}), _journal);
    EXPECT_EQ(a, _composite->getCurrentBehavior(0));
}

TEST_F(SequencingOperatorsTest, ABlockHoldsTheFlowUntilItsConditionOpens)
{
    BlockBehaviorOperator* block = new BlockBehaviorOperator();
    ScriptedCondition* gate = new ScriptedCondition({false, false, true});
    block->setBlockCondition(BoolCallBackPointer(gate));
    RecordingBehavior* a = new RecordingBehavior(&_journal, "A");
    chain({block, a});
    start();
    _composite->update(0.5, 0);
    _composite->update(0.5, 0);
    EXPECT_TRUE(_journal.empty());
    EXPECT_EQ(block, _composite->getCurrentBehavior(0));
    EXPECT_DOUBLE_EQ(1.0, block->getTime(0));
    _composite->update(0.5, 0);
    EXPECT_EQ((Journal{"A:onRequestStart", "A:doStart(0)", "A:doUpdate(0)"}), _journal);
    EXPECT_EQ(3u, gate->_calls);
}

TEST_F(SequencingOperatorsTest, ADoWhileLoopRunsItsChildOnceBeforeAskingAndAPassCostsAFrame)
{
    ScriptedCondition* condition = new ScriptedCondition({true, false});
    LoopBehaviorOperator* loop = makeLoop(LoopMode::DO_WHILE, condition);
    chain({loop});
    start();
    _composite->update(0.5, 0);
    EXPECT_EQ((Journal{"C:onRequestStart", "C:doStart(0)", "C:doUpdate(0.5)", "C:onRequestStop", "C:doStop(0)",
                       "C:onRequestStart"}),
              _journal);
    EXPECT_EQ(1u, condition->_calls);
    // The loop reports its child's passes to the composite around it.
    const auto& history = _composite->getRuntimeHistory(0)._updatedBehaviorsThisFrame;
    EXPECT_NE(history.end(), std::find(history.begin(), history.end(), _child));
    _composite->update(0.5, 0);
    EXPECT_EQ(2u, condition->_calls);
    EXPECT_EQ(RunStatus::IDLE, _composite->getRunStatus(0));
    EXPECT_EQ(ResultStatus::SUCCESS, _composite->getResultStatus(0));
}

TEST_F(SequencingOperatorsTest, AWhileLoopFalseAtItsStartStopsForeverOnAChildThatNeverRan)
{
    ScriptedCondition* condition = new ScriptedCondition({false});
    LoopBehaviorOperator* loop = makeLoop(LoopMode::WHILE, condition);
    chain({loop});
    start();
    for (int frame = 0; frame < 3; ++frame)
    {
        _composite->update(0.5, 0);
    }
    // The never-run child's result is UNKNOWN, so the loop goes on stopping; nothing else changes it.
    EXPECT_TRUE(_journal.empty());
    EXPECT_EQ(RunStatus::STOPPING, loop->getRunStatus(0));
    EXPECT_TRUE(_composite->isRunning(0));
    _composite->finish(0);
    EXPECT_EQ(RunStatus::IDLE, loop->getRunStatus(0));
    EXPECT_EQ(RunStatus::IDLE, _composite->getRunStatus(0));
}

TEST_F(SequencingOperatorsTest, AFailingChildFailsTheLoopWithoutAskingItsCondition)
{
    ScriptedCondition* condition = new ScriptedCondition({true});
    LoopBehaviorOperator* loop = makeLoop(LoopMode::DO_WHILE, condition);
    _child->_stopAnswers = {ResultStatus::FAILURE};
    chain({loop});
    start();
    _composite->update(0.5, 0);
    EXPECT_EQ(0u, condition->_calls);
    EXPECT_TRUE(loop->isFailed(0));
    EXPECT_TRUE(_composite->isFailed(0));
}

TEST_F(SequencingOperatorsTest, LoopEditsAreRefusedWithTheirTexts)
{
    orvtest::LogCapture log;
    LoopBehaviorOperator* loop = makeLoop(LoopMode::WHILE, new ScriptedCondition({true}));
    SmartPointer<AbstractBehavior> holdLoop(loop);
    RecordingBehavior* second = new RecordingBehavior();
    SmartPointer<AbstractBehavior> holdSecond(second);
    EXPECT_FALSE(loop->setCondition(BoolCallBackPointer()));
    EXPECT_FALSE(loop->addChildBehavior(second));
    loop->allocate(2);
    loop->addEntity(0);
    loop->init();
    ASSERT_TRUE(loop->isInitialized());
    EXPECT_FALSE(loop->setLoopMode(LoopMode::DO_WHILE));
    EXPECT_EQ(LoopMode::WHILE, loop->getLoopMode());
    EXPECT_FALSE(loop->cleanChildrenBehaviors(true));
    loop->finish();
    EXPECT_TRUE(loop->setChildBehavior(second));
    EXPECT_EQ(second, loop->getChildBehavior());

    const std::vector<std::string> expected = {
        "Can not set condition for current behavior : condition is NULL",
        "Can not add child behavior to behavior container : current behavior already has a child behavior "
        "(LoopBehaviorOperator allows at most 1 child behavior)",
        "Can not set condition for current behavior : current behavior is initialized",
        "Can not clean child behavior for LoopBehaviorOperator : behavior container is locked",
    };
    ASSERT_EQ(expected.size(), log.getLines().size()) << log.describe();
    for (size_t i = 0; i < expected.size(); ++i)
    {
        EXPECT_EQ(expected[i], log.getLines()[i]._message);
    }
}

TEST_F(SequencingOperatorsTest, TheLoopsChildCheckAndCleanUpReportWhatIsWrong)
{
    orvtest::LogCapture log;
    LoopBehaviorOperator loop(LoopMode::WHILE, BoolCallBackPointer(new ScriptedCondition({true})));
    BlockBehaviorOperator* block = new BlockBehaviorOperator();
    RecordingBehavior* after = new RecordingBehavior();
    SmartPointer<AbstractBehavior> holdAfter(after);
    ASSERT_TRUE(loop.addChildBehavior(block));
    ASSERT_TRUE(block->addNextBehaviorCandidate(after));
    EXPECT_FALSE(loop.checkChildrenBehaviorsConnection(true));
    ASSERT_EQ(1u, log.getLines().size());
    EXPECT_EQ(
        "Invalid connection for children behaviors contained in LoopBehaviorOperator : "
        "\n\t- Child behavior is not of the required type (only AbstractBehaviorContainer or AbstractUserBehavior "
        "types allowed, type AbstractBehaviorOperator is forbidden)"
        "\n\t- Child behavior is not final (setting a next behavior for a contained behavior is forbidden)",
        log.getLines()[0]._message);
    // An operator child is removed by the clean-up; a host behaviour with a follower loses it.
    EXPECT_TRUE(loop.cleanChildrenBehaviors(true));
    EXPECT_EQ(nullptr, loop.getChildBehavior());
    RecordingBehavior* child = new RecordingBehavior();
    ASSERT_TRUE(loop.addChildBehavior(child));
    ASSERT_TRUE(child->addNextBehaviorCandidate(after));
    EXPECT_TRUE(loop.cleanChildrenBehaviors(true));
    EXPECT_TRUE(child->isFinal());
    EXPECT_TRUE(loop.checkChildrenBehaviorsConnection(true));

    log.clear();
    LoopBehaviorOperator conditionless(LoopMode::WHILE, BoolCallBackPointer());
    EXPECT_FALSE(conditionless.checkNextBehaviorCandidatesConnection());
    EXPECT_TRUE(
        log.hasLine(orv::LogSeverity::LOG_ERROR,
                    {"Invalid connection for next behavior candidates : condition used for loop exit is NULL"}));
}

TEST_F(SequencingOperatorsTest, ABlockWithTwoFollowersLogsItsLineAndThenAnEmptyReport)
{
    orvtest::LogCapture log;
    BlockBehaviorOperator block;
    RecordingBehavior a;
    RecordingBehavior b;
    block.touchNextBehaviorCandidates().push_back(&a);
    block.touchNextBehaviorCandidates().push_back(&b);
    EXPECT_FALSE(block.checkNextBehaviorCandidatesConnection());
    ASSERT_EQ(2u, log.getLines().size());
    EXPECT_EQ("BlockBehaviorOperator can not have more than 1 next behavior candidate", log.getLines()[0]._message);
    EXPECT_EQ("", log.getLines()[1]._message);
}

TEST_F(SequencingOperatorsTest, AStreamMakesALoopAsDoWhileAndAlwaysTrue)
{
    const orv::RTTI* rtti = LoopBehaviorOperator::getClassRTTI();
    ASSERT_NE(nullptr, rtti);
    SmartPointer<AbstractBehavior> made(static_cast<AbstractBehavior*>(orv::RTTI::createInstance(rtti->getTypeID())));
    LoopBehaviorOperator* loop = dynamic_cast<LoopBehaviorOperator*>(made.getImpl());
    ASSERT_NE(nullptr, loop);
    EXPECT_EQ(LoopMode::DO_WHILE, loop->getLoopMode());
    ASSERT_NE(nullptr, loop->getCondition().getImpl());
    EXPECT_TRUE(loop->getCondition()->call(0));
}

} // namespace
