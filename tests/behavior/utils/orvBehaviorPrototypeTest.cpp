#include <gtest/gtest.h>

#include "behavior/behaviors/orvAbstractUserBehavior.h"
#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/callBacks/orvTriggerWorld.h"
#include "behavior/operators/orvFinalBehaviorOperator.h"
#include "behavior/operators/orvInitialBehaviorOperator.h"
#include "behavior/operators/orvLoopBehaviorOperator.h"
#include "behavior/utils/orvBehaviorPrototype.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"
#include "support/orvRecordingBehavior.h"
#include "system/containers/orvArray.h"
#include "system/inspection/orvInspectable.h"
#include "system/serialization/orvBinaryStream.h"

namespace
{

using orv::AbstractBehavior;
using orv::BehaviorPrototype;
using orv::CompositeBehavior;
using orv::LoopBehaviorOperator;
using orv::SmartPointer;
using RunStatus = AbstractBehavior::RunStatus;

/// A host behaviour with a descriptor and one saved setting: each run takes that many updates. It counts, per
/// entity, the runs it has started, in data sized by the entity hooks and not saved.
class Stepper : public orv::AbstractUserBehavior
{
    ORV_DECLARE_RTTI(Stepper)

public:
    bool checkNextBehaviorCandidatesConnection() const override { return true; }

    int _steps = 1;
    orv::Array<int> _updates;
    orv::Array<int> _runs;

protected:
    bool doInit() override { return true; }
    void doFinish() override {}
    void doAllocate(int capacity) override
    {
        _updates.reserve(static_cast<size_t>(capacity));
        _runs.reserve(static_cast<size_t>(capacity));
    }
    void doAddEntity(int entity) override
    {
        _updates.resize(static_cast<size_t>(entity) + 1, 0);
        _runs.resize(static_cast<size_t>(entity) + 1, 0);
    }
    void doStart(int entity) override
    {
        _updates[entity] = 0;
        ++_runs[entity];
    }
    void doUpdate(Time, int entity) override
    {
        if (++_updates[entity] >= _steps)
        {
            requestStop(entity);
        }
    }
    ResultStatus::Value doStop(Time, int) override { return ResultStatus::SUCCESS; }
};

ORV_IMPLEMENT_RTTI(Stepper, "c3f1d2a4-6b7e-4f80-9a1b-2c3d4e5f6a7b", "orvtest::Stepper")

void Stepper::addAttributes()
{
    _rtti->addBaseClass<orv::AbstractUserBehavior>();
    addAttribute("steps", &Stepper::_steps);
}

/// A chart initial -> loop(stepper) -> final, the loop going on for ever, with the host class registered.
class BehaviorPrototypeTest : public orvtest::CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        Stepper::createClassRTTI(true);
        _chart = new CompositeBehavior();
        _held = SmartPointer<AbstractBehavior>(_chart);
        _loop = new LoopBehaviorOperator(LoopBehaviorOperator::LoopMode::DO_WHILE,
                                         orv::BoolCallBackPointer(new orv::ConstantValueCallback<bool>(true)));
        _stepper = new Stepper();
        _stepper->_steps = 2;
        ASSERT_TRUE(_loop->addChildBehavior(_stepper));
        ASSERT_TRUE(_chart->addChildBehavior(_loop));
        ASSERT_TRUE(static_cast<orv::InitialBehaviorOperator*>(_chart->touchInitialBehavior())->setNextBehavior(_loop));
        ASSERT_TRUE(_loop->addNextBehaviorCandidate(_chart->touchFinalBehavior()));
    }
    void TearDown() override
    {
        _held = SmartPointer<AbstractBehavior>();
        Stepper::destroyClassRTTI(true);
        CoreTest::TearDown();
    }

    /// The loop and stepper of a chart built as above.
    static LoopBehaviorOperator* loopOf(AbstractBehavior* chart)
    {
        return dynamic_cast<LoopBehaviorOperator*>(
            static_cast<CompositeBehavior*>(chart)->getChildrenBehaviors()[2].getImpl());
    }
    static Stepper* stepperOf(AbstractBehavior* chart)
    {
        return dynamic_cast<Stepper*>(loopOf(chart)->touchChildBehavior());
    }
    /// Sizes, initialises and starts a chart for one entity.
    static void start(AbstractBehavior* chart)
    {
        chart->allocate(2);
        chart->addEntity(0);
        chart->init();
        chart->init(0);
        chart->requestStart(0);
    }

    CompositeBehavior* _chart = nullptr;
    SmartPointer<AbstractBehavior> _held;
    LoopBehaviorOperator* _loop = nullptr;
    Stepper* _stepper = nullptr;
};

TEST_F(BehaviorPrototypeTest, ThePrototypeAndItsCopiesAreIndependentDeepCopiesThatRun)
{
    BehaviorPrototype prototype(*_chart);
    BehaviorPrototype other(*_chart);
    AbstractBehavior* kept = prototype.touchPrototype();
    ASSERT_NE(nullptr, dynamic_cast<CompositeBehavior*>(kept));
    LoopBehaviorOperator* loop = loopOf(kept);
    ASSERT_NE(nullptr, stepperOf(kept));
    EXPECT_NE(_loop->getCondition().getImpl(), loop->getCondition().getImpl());
    // The copy's links stay inside the copy.
    EXPECT_EQ(static_cast<CompositeBehavior*>(kept), loop->getParentBehavior());
    EXPECT_EQ(loop, stepperOf(kept)->getParentBehavior());
    EXPECT_EQ(static_cast<CompositeBehavior*>(kept)->getFinalBehavior(), loop->getNextBehaviorCandidates()[0]);
    stepperOf(other.touchPrototype())->_steps = 5;

    SmartPointer<AbstractBehavior> first(prototype.createBehavior());
    SmartPointer<AbstractBehavior> second(prototype.createBehavior());
    ASSERT_NE(nullptr, second.getImpl());
    EXPECT_EQ(2u, prototype.getInstancesCount());
    for (const AbstractBehavior* node : {static_cast<AbstractBehavior*>(_chart), kept, other.touchPrototype()})
    {
        EXPECT_NE(node, first.getImpl());
        EXPECT_NE(node, second.getImpl());
    }
    EXPECT_NE(first.getImpl(), second.getImpl());
    EXPECT_NE(stepperOf(first.getImpl()), stepperOf(second.getImpl()));
    stepperOf(second.getImpl())->_steps = 1;
    EXPECT_EQ(2, stepperOf(first.getImpl())->_steps);
    EXPECT_EQ(2, stepperOf(kept)->_steps);
    EXPECT_EQ(2, _stepper->_steps);

    start(first.getImpl());
    start(second.getImpl());
    for (int frame = 0; frame < 6; ++frame)
    {
        first->update(0.5, 0);
        second->update(0.5, 0);
    }
    // The loop restarts the stepper at every pass; a run of the second takes one update, of the first two.
    EXPECT_TRUE(first->isRunning(0));
    const int firstRuns = stepperOf(first.getImpl())->_runs[0];
    EXPECT_LE(2, firstRuns);
    EXPECT_LT(firstRuns, stepperOf(second.getImpl())->_runs[0]);
    // Neither the source nor the prototype has been given rows.
    EXPECT_TRUE(_chart->getStatusData().empty());
    EXPECT_TRUE(kept->getStatusData().empty());
}

TEST_F(BehaviorPrototypeTest, APrototypeReadFromAStreamMakesCopiesOfWhatItRead)
{
    EXPECT_STREQ("BehaviorPrototype", BehaviorPrototype::getClassRTTI()->getTypeName());
    BehaviorPrototype written(*_chart);
    orv::BinaryStream stream;
    stream.pack(written);
    BehaviorPrototype read;
    stream.unpack(read);
    ASSERT_NE(nullptr, read.getPrototype());
    EXPECT_NE(written.getPrototype(), read.getPrototype());
    SmartPointer<AbstractBehavior> copy(read.createBehavior());
    ASSERT_NE(nullptr, copy.getImpl());
    EXPECT_NE(read.getPrototype(), copy.getImpl());
    EXPECT_EQ(2, stepperOf(copy.getImpl())->_steps);
    EXPECT_EQ(1u, read.getInstancesCount());
}

using BehaviorPrototypeGraphTest = orvtest::TriggerWorld;

TEST_F(BehaviorPrototypeGraphTest, WhatCannotBeCopiedIsRefusedAndCopiesJoinAGraph)
{
    Stepper::createClassRTTI(true);
    {
        orvtest::LogCapture log;
        // A host class without a descriptor of its own cannot be made by a stream.
        orvtest::RecordingBehavior unregistered;
        BehaviorPrototype fromUnregistered(unregistered);
        EXPECT_EQ(nullptr, fromUnregistered.createBehavior());
        EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_ERROR, {"orv::AbstractUserBehavior", "descriptor"}));
        EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_ERROR, {"empty prototype"}));
        Stepper* source = new Stepper();
        BehaviorPrototype prototype(*source);
        graph()->addBehavior(source, true);
        BehaviorPrototype refused(*source);
        EXPECT_EQ(nullptr, refused.getPrototype());
        EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_ERROR, {"belongs to a behavior graph"})) << log.describe();

        AbstractBehavior* copy = prototype.createBehavior();
        graph()->addBehavior(copy, true);
        graph()->init();
        graph()->init(0);
        graph()->update(0.5, 0);
        EXPECT_EQ(1, static_cast<Stepper*>(copy)->_runs[0]);
        EXPECT_EQ(RunStatus::IDLE, copy->getRunStatus(0));
    }
    Stepper::destroyClassRTTI(true);
}

} // namespace
