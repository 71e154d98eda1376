#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "behavior/operators/orvAlternativeBehaviorOperator.h"
#include "behavior/operators/orvNoOrderBehaviorOperator.h"
#include "behavior/operators/orvParallelBehaviorOperator.h"
#include "behavior/operators/orvRandomBehaviorOperator.h"
#include "engine/simulation/orvEntity.h"
#include "engine/simulation/orvEntityType.h"
#include "engine/simulation/orvSimulation.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"
#include "support/orvRecordingBehavior.h"
#include "system/serialization/orvBinaryStream.h"

namespace
{

using orv::AbstractBehavior;
using orv::AlternativeBehaviorOperator;
using orv::BoolCallBackPointer;
using orv::NoOrderBehaviorOperator;
using orv::ParallelBehaviorOperator;
using orv::RandomBehaviorOperator;
using orv::RandomNumberGenerator;
using orv::SmartPointer;
using orvtest::Journal;
using orvtest::RecordingBehavior;
using orvtest::RecordingNode;
using ExitMode = ParallelBehaviorOperator::ExitMode;
using RunStatus = AbstractBehavior::RunStatus;
using ResultStatus = AbstractBehavior::ResultStatus;
using FloatPointer = orv::ScalarCallBackPointer<float>;

/// A call-back giving a fixed answer per entity (the last one for the others) and counting its calls.
template <typename T>
class CountingCallBack : public orv::ITypedCallBack<T>
{
public:
    explicit CountingCallBack(std::vector<T> answers) : _answers(std::move(answers)) {}
    T call(int entity) override
    {
        ++_calls;
        return _answers[static_cast<size_t>(entity) < _answers.size() ? entity : _answers.size() - 1];
    }
    std::vector<T> _answers;
    int _calls = 0;
};

/// A recording host behaviour that the streams can make.
class SavedLeaf : public RecordingBehavior
{
    ORV_DECLARE_RTTI(SavedLeaf)
};

ORV_IMPLEMENT_RTTI(SavedLeaf, "3ab270a3-5430-4b77-863a-bd768f64a2de", "orvtest::SavedLeaf")

void SavedLeaf::addAttributes()
{
    _rtti->addBaseClass<orv::AbstractUserBehavior>();
}

BoolCallBackPointer constant(bool value)
{
    return BoolCallBackPointer(new orv::ConstantValueCallback<bool>(value));
}

FloatPointer weight(float value)
{
    return FloatPointer(new orv::ConstantValueCallback<float>(value));
}

/// A simulation with one entity type whose graph holds the operator under test as its only top-level node,
/// started for every entity. Frames are the graph's own updates, without contexts or workers.
class SelectionWorld : public orvtest::CoreTest
{
protected:
    void TearDown() override
    {
        delete _simulation;
        CoreTest::TearDown();
    }
    void makeWorld(int entities)
    {
        _simulation = new orv::Simulation(entities, 0);
        _typeId = _simulation->createEntityType(entities);
        for (int i = 0; i < entities; ++i)
        {
            _simulation->createEntity(static_cast<unsigned int>(_typeId));
        }
        _entities = entities;
    }
    orv::BehaviorGraph& graph() { return _simulation->getEntityType(_typeId)->touchBehaviorGraph(); }
    /// Makes the node the graph's top-level node and starts it for every entity.
    void run(AbstractBehavior* node)
    {
        graph().addBehavior(node, true);
        graph().init();
        ASSERT_TRUE(node->isInitialized());
        for (int entity = 0; entity < _entities; ++entity)
        {
            graph().init(entity);
        }
    }
    /// A copy of the entity's generator in its present state.
    RandomNumberGenerator generatorOf(int entity)
    {
        return _simulation->getEntityType(_typeId)->getEntity(entity)->getRNG();
    }
    RecordingBehavior* child(const char* name, int updatesPerRun)
    {
        RecordingBehavior* node = new RecordingBehavior(&_journal, name);
        node->_updatesPerRun = updatesPerRun;
        return node;
    }
    /// A follower for a selecting operator; held by the test, as a chart would hold it.
    AbstractBehavior* follower()
    {
        _followers.push_back(SmartPointer<AbstractBehavior>(new RecordingNode()));
        return _followers.back().getImpl();
    }

    orv::Simulation* _simulation = nullptr;
    int _typeId = -1;
    int _entities = 0;
    Journal _journal;
    std::vector<SmartPointer<AbstractBehavior>> _followers;
};

// ---- Parallel ----

using ParallelBehaviorOperatorTest = SelectionWorld;

TEST_F(ParallelBehaviorOperatorTest, AnyoneFinishedStopsTheOthersInTheFrameTheFirstEndsAndDrivesThemToIdle)
{
    makeWorld(1);
    ParallelBehaviorOperator* parallel = new ParallelBehaviorOperator(ExitMode::ANYONE_FINISHED);
    RecordingBehavior* a = child("A", 1);
    RecordingBehavior* b = child("B", 0);
    b->_stopAnswers = {ResultStatus::UNKNOWN, ResultStatus::SUCCESS};
    ASSERT_TRUE(parallel->addChildBehavior(a));
    ASSERT_TRUE(parallel->addChildBehavior(b));
    run(parallel);
    ASSERT_NE(nullptr, parallel->getStoppingCondition().getImpl());
    _journal.clear();
    graph().update(0.5, 0);
    EXPECT_EQ((Journal{"A:onRequestStart", "B:onRequestStart", "A:doStart(0)", "A:doUpdate(0.5)", "A:onRequestStop",
                       "A:doStop(0)", "B:doStart(0)", "B:doUpdate(0.5)", "B:onRequestStop", "B:doStop(0)"}),
              _journal);
    EXPECT_EQ(RunStatus::STOPPING, parallel->getRunStatus(0));
    EXPECT_EQ(RunStatus::STOPPING, b->getRunStatus(0));
    graph().update(0.5, 0);
    EXPECT_EQ(RunStatus::IDLE, b->getRunStatus(0));
    EXPECT_EQ(RunStatus::IDLE, parallel->getRunStatus(0));
    EXPECT_EQ(ResultStatus::SUCCESS, parallel->getResultStatus(0));
}

TEST_F(ParallelBehaviorOperatorTest, AllFinishedWaitsForTheLastChildAndAFailedChildFailsItOnlyThen)
{
    makeWorld(1);
    ParallelBehaviorOperator* parallel = new ParallelBehaviorOperator(ExitMode::ALL_FINISHED);
    RecordingBehavior* a = child("A", 1);
    a->_stopAnswers = {ResultStatus::FAILURE};
    RecordingBehavior* b = child("B", 3);
    ASSERT_TRUE(parallel->addChildBehavior(a));
    ASSERT_TRUE(parallel->addChildBehavior(b));
    run(parallel);
    graph().update(0.5, 0);
    EXPECT_TRUE(a->isFailed(0));
    EXPECT_TRUE(parallel->isRunning(0));
    graph().update(0.5, 0);
    EXPECT_TRUE(parallel->isRunning(0));
    EXPECT_EQ(2, b->_updates);
    graph().update(0.5, 0);
    EXPECT_EQ(RunStatus::IDLE, parallel->getRunStatus(0));
    EXPECT_EQ(ResultStatus::FAILURE, parallel->getResultStatus(0));
}

TEST_F(ParallelBehaviorOperatorTest, CustomWithoutStoppingConditionNeverStopsByItself)
{
    makeWorld(1);
    ParallelBehaviorOperator* parallel = new ParallelBehaviorOperator(ExitMode::CUSTOM);
    ASSERT_TRUE(parallel->addChildBehavior(child("A", 1)));
    ASSERT_TRUE(parallel->addChildBehavior(child("B", 1)));
    run(parallel);
    for (int frame = 0; frame < 4; ++frame)
    {
        graph().update(0.5, 0);
    }
    EXPECT_EQ(nullptr, parallel->getStoppingCondition().getImpl());
    EXPECT_TRUE(parallel->isRunning(0));
}

TEST_F(ParallelBehaviorOperatorTest, AnEmptyOperatorEndsInItsFirstFrameAndTheModeIsFixedOnceInitialised)
{
    makeWorld(1);
    orvtest::LogCapture log;
    ParallelBehaviorOperator* parallel = new ParallelBehaviorOperator(ExitMode::ANYONE_FINISHED);
    run(parallel);
    graph().update(0.5, 0);
    EXPECT_EQ(RunStatus::IDLE, parallel->getRunStatus(0));
    EXPECT_EQ(ResultStatus::SUCCESS, parallel->getResultStatus(0));
    EXPECT_FALSE(parallel->setExitMode(ExitMode::CUSTOM));
    EXPECT_EQ(ExitMode::ANYONE_FINISHED, parallel->getExitMode());
    EXPECT_TRUE(log.hasLine(orv::LogSeverity::LOG_ERROR,
                            {"Can not set condition for current behavior : current behavior is initialized"}));
}

// ---- No order ----

using NoOrderBehaviorOperatorTest = SelectionWorld;

TEST_F(NoOrderBehaviorOperatorTest, TheOrderComesFromTheEntityGeneratorWithNoDrawForTheLastChild)
{
    makeWorld(6);
    NoOrderBehaviorOperator* noOrder = new NoOrderBehaviorOperator();
    const char* const names[] = {"A", "B", "C"};
    for (const char* name : names)
    {
        // Each child ends in its first update, so that the three chain within one frame.
        ASSERT_TRUE(noOrder->addChildBehavior(child(name, 1)));
    }
    run(noOrder);
    for (int entity = 0; entity < _entities; ++entity)
    {
        RandomNumberGenerator expected = generatorOf(entity);
        std::vector<std::string> left(names, names + 3);
        Journal order;
        while (!left.empty())
        {
            const size_t pick = left.size() > 1 ? expected.rand() % left.size() : 0;
            order.push_back(left[pick] + ":doStart(" + std::to_string(entity) + ")");
            left.erase(left.begin() + static_cast<long>(pick));
        }
        _journal.clear();
        graph().update(0.5, entity);
        Journal started;
        for (const std::string& line : _journal)
        {
            if (line.find("doStart") != std::string::npos)
            {
                started.push_back(line);
            }
        }
        EXPECT_EQ(order, started) << "entity " << entity;
        // Exactly two draws: the generators agree from here on.
        EXPECT_EQ(expected.rand(), generatorOf(entity).rand()) << "entity " << entity;
        EXPECT_EQ(RunStatus::IDLE, noOrder->getRunStatus(entity));
        EXPECT_EQ(ResultStatus::SUCCESS, noOrder->getResultStatus(entity));
    }
}

TEST_F(NoOrderBehaviorOperatorTest, TheNextChildStartsInTheFrameTheLastEndedWithAZeroStep)
{
    makeWorld(1);
    NoOrderBehaviorOperator* noOrder = new NoOrderBehaviorOperator();
    RecordingBehavior* a = child("A", 2);
    RecordingBehavior* b = child("B", 2);
    ASSERT_TRUE(noOrder->addChildBehavior(a));
    ASSERT_TRUE(noOrder->addChildBehavior(b));
    run(noOrder);
    graph().update(0.5, 0);
    const AbstractBehavior* first = noOrder->getCurrentBehavior(0);
    ASSERT_NE(nullptr, first);
    _journal.clear();
    graph().update(0.5, 0);
    const std::string second = first == a ? "B:" : "A:";
    const std::string firstName = first == a ? "A:" : "B:";
    EXPECT_EQ((Journal{firstName + "doUpdate(0.5)", firstName + "onRequestStop", firstName + "doStop(0)",
                       second + "onRequestStart", second + "doStart(0)", second + "doUpdate(0)"}),
              _journal);
    EXPECT_NE(first, noOrder->getCurrentBehavior(0));
}

TEST_F(NoOrderBehaviorOperatorTest, AFailingChildDoesNotEndTheRunButFailsTheOperator)
{
    makeWorld(1);
    NoOrderBehaviorOperator* noOrder = new NoOrderBehaviorOperator();
    RecordingBehavior* a = child("A", 1);
    a->_stopAnswers = {ResultStatus::FAILURE};
    RecordingBehavior* b = child("B", 1);
    RecordingBehavior* c = child("C", 1);
    ASSERT_TRUE(noOrder->addChildBehavior(a));
    ASSERT_TRUE(noOrder->addChildBehavior(b));
    ASSERT_TRUE(noOrder->addChildBehavior(c));
    run(noOrder);
    graph().update(0.5, 0);
    for (RecordingBehavior* node : {a, b, c})
    {
        EXPECT_EQ(RunStatus::IDLE, node->getRunStatus(0));
        EXPECT_NE(ResultStatus::UNKNOWN, node->getResultStatus(0));
    }
    EXPECT_EQ(RunStatus::IDLE, noOrder->getRunStatus(0));
    EXPECT_EQ(ResultStatus::FAILURE, noOrder->getResultStatus(0));
    EXPECT_TRUE(noOrder->getChildrenBehaviorsRun()[0].empty());
}

TEST_F(NoOrderBehaviorOperatorTest, ARunComesBackFromABinaryStreamWithTheSameChildrenLeft)
{
    SavedLeaf::createClassRTTI(true);
    {
        SmartPointer<AbstractBehavior> held(new NoOrderBehaviorOperator());
        NoOrderBehaviorOperator& noOrder = static_cast<NoOrderBehaviorOperator&>(*held);
        for (int i = 0; i < 3; ++i)
        {
            ASSERT_TRUE(noOrder.addChildBehavior(new SavedLeaf()));
        }
        noOrder.allocate(1);
        noOrder.addEntity(0);
        noOrder.init();
        noOrder.init(0);
        noOrder.requestStart(0);
        // Outside an entity type there is no generator: the first child left is taken.
        noOrder.update(0.5, 0);
        noOrder.touchCurrentBehavior(0)->requestStop(0);
        noOrder.update(0.5, 0);
        ASSERT_EQ(1u, noOrder.getCurrentChildBehaviorRunIds()[0]);

        orv::BinaryStream stream;
        stream.pack(held);
        SmartPointer<AbstractBehavior> read;
        stream.unpack(read);
        NoOrderBehaviorOperator* copy = dynamic_cast<NoOrderBehaviorOperator*>(read.getImpl());
        ASSERT_NE(nullptr, copy);
        EXPECT_EQ((std::vector<bool>{true, false, false}), std::vector<bool>(copy->getChildrenBehaviorsRun()[0].begin(),
                                                                             copy->getChildrenBehaviorsRun()[0].end()));
        ASSERT_EQ(copy->getChildrenBehaviors()[1].getImpl(), copy->getCurrentBehavior(0));
        copy->touchCurrentBehavior(0)->requestStop(0);
        copy->update(0.5, 0);
        EXPECT_EQ(copy->getChildrenBehaviors()[2].getImpl(), copy->getCurrentBehavior(0));
        copy->touchCurrentBehavior(0)->requestStop(0);
        copy->update(0.5, 0);
        EXPECT_EQ(RunStatus::IDLE, copy->getRunStatus(0));
        EXPECT_EQ(ResultStatus::SUCCESS, copy->getResultStatus(0));
    }
    SavedLeaf::destroyClassRTTI(true);
}

// ---- Random ----

using RandomBehaviorOperatorTest = SelectionWorld;

TEST_F(RandomBehaviorOperatorTest, TheChoiceFollowsTheEntityDrawAndCallsTheWeightsAgainUpToIt)
{
    makeWorld(8);
    RandomBehaviorOperator* random = new RandomBehaviorOperator();
    const float weights[] = {1.0f, 2.0f, 3.5f};
    std::vector<CountingCallBack<float>*> counters;
    for (float value : weights)
    {
        counters.push_back(new CountingCallBack<float>({value}));
        ASSERT_TRUE(random->addRandomNextBehavior(follower(), FloatPointer(counters.back()), BoolCallBackPointer()));
    }
    run(random);
    for (int entity = 0; entity < _entities; ++entity)
    {
        RandomNumberGenerator expected = generatorOf(entity);
        const float total = (weights[0] + weights[1]) + weights[2];
        float r = static_cast<float>(expected.rand()) * std::ldexp(1.0f, -32) * total;
        size_t choice = 0;
        while ((r -= weights[choice]) >= 0.00001f)
        {
            ++choice;
        }
        for (CountingCallBack<float>* counter : counters)
        {
            counter->_calls = 0;
        }
        graph().update(0.5, entity);
        EXPECT_EQ(_followers[choice].getImpl(), random->getNextBehaviorSelected(entity)) << "entity " << entity;
        for (size_t i = 0; i < counters.size(); ++i)
        {
            EXPECT_EQ(i <= choice ? 2 : 1, counters[i]->_calls) << "entity " << entity << ", weight " << i;
        }
        EXPECT_EQ(expected.rand(), generatorOf(entity).rand());
        EXPECT_EQ(RunStatus::IDLE, random->getRunStatus(entity));
    }
}

TEST_F(RandomBehaviorOperatorTest, ChoicesOverManyEntitiesFollowTheWeights)
{
    makeWorld(4000);
    RandomBehaviorOperator* random = new RandomBehaviorOperator();
    const double weights[] = {1.0, 2.0, 5.0};
    for (double value : weights)
    {
        ASSERT_TRUE(
            random->addRandomNextBehavior(follower(), weight(static_cast<float>(value)), BoolCallBackPointer()));
    }
    run(random);
    std::vector<int> counts(3, 0);
    for (int entity = 0; entity < _entities; ++entity)
    {
        graph().update(0.5, entity);
        ++counts[random->getStatusData()[entity]._nextBehaviorSelectedIdPerInstance];
    }
    for (size_t i = 0; i < counts.size(); ++i)
    {
        const double p = weights[i] / 8.0;
        // Five standard deviations of a binomial count: the seeds are fixed, and a fair draw stays well inside.
        const double bound = 5.0 * std::sqrt(_entities * p * (1.0 - p));
        EXPECT_NEAR(_entities * p, counts[i], bound) << "follower " << i;
    }
}

TEST_F(RandomBehaviorOperatorTest, OneEligibleFollowerIsTakenWithoutDrawOrWeight)
{
    makeWorld(1);
    RandomBehaviorOperator* random = new RandomBehaviorOperator();
    CountingCallBack<float>* counted = new CountingCallBack<float>({1.0f});
    ASSERT_TRUE(random->addRandomNextBehavior(follower(), FloatPointer(counted), constant(false)));
    ASSERT_TRUE(random->addRandomNextBehavior(follower(), FloatPointer(counted), constant(true)));
    run(random);
    RandomNumberGenerator before = generatorOf(0);
    graph().update(0.5, 0);
    EXPECT_EQ(_followers[1].getImpl(), random->getNextBehaviorSelected(0));
    EXPECT_EQ(0, counted->_calls);
    EXPECT_EQ(before.rand(), generatorOf(0).rand());
}

TEST_F(RandomBehaviorOperatorTest, NoEligibleFollowerWaitsAndZeroWeightsTakeTheFirstListed)
{
    makeWorld(1);
    RandomBehaviorOperator* random = new RandomBehaviorOperator();
    CountingCallBack<bool>* gate = new CountingCallBack<bool>({false});
    ASSERT_TRUE(random->addRandomNextBehavior(follower(), weight(0.0f), BoolCallBackPointer(gate)));
    ASSERT_TRUE(random->addRandomNextBehavior(follower(), weight(0.0f), BoolCallBackPointer(gate)));
    ASSERT_TRUE(random->addRandomNextBehavior(follower(), weight(0.0f), BoolCallBackPointer()));
    ASSERT_TRUE(random->setCondition(2, BoolCallBackPointer(gate)));
    run(random);
    graph().update(0.5, 0);
    graph().update(0.5, 0);
    EXPECT_TRUE(random->isRunning(0));
    EXPECT_FALSE(random->hasNextBehaviorSelected(0));
    ASSERT_TRUE(random->setCondition(0, constant(false)));
    gate->_answers = {true};
    graph().update(0.5, 0);
    EXPECT_EQ(_followers[1].getImpl(), random->getNextBehaviorSelected(0));
}

// ---- Alternative ----

using AlternativeBehaviorOperatorTest = SelectionWorld;

TEST_F(AlternativeBehaviorOperatorTest, TheFirstTrueConditionWinsElseTheDefault)
{
    makeWorld(3);
    AlternativeBehaviorOperator* alternative = new AlternativeBehaviorOperator();
    ASSERT_TRUE(alternative->setDefaultNextBehavior(follower()));
    // Per entity: entity 0 takes position 1, entity 1 position 2, entity 2 the default.
    CountingCallBack<bool>* first = new CountingCallBack<bool>({true, false, false});
    CountingCallBack<bool>* second = new CountingCallBack<bool>({true, true, false});
    ASSERT_TRUE(alternative->addConditionalNextBehavior(follower(), BoolCallBackPointer(first)));
    ASSERT_TRUE(alternative->addConditionalNextBehavior(follower(), BoolCallBackPointer(second)));
    run(alternative);
    graph().update(0.5, 0);
    EXPECT_EQ(_followers[1].getImpl(), alternative->getNextBehaviorSelected(0));
    EXPECT_EQ(0, second->_calls);
    graph().update(0.5, 1);
    EXPECT_EQ(_followers[2].getImpl(), alternative->getNextBehaviorSelected(1));
    graph().update(0.5, 2);
    EXPECT_EQ(_followers[0].getImpl(), alternative->getNextBehaviorSelected(2));
    for (int entity = 0; entity < _entities; ++entity)
    {
        EXPECT_EQ(RunStatus::IDLE, alternative->getRunStatus(entity));
    }
}

TEST_F(AlternativeBehaviorOperatorTest, WithoutDefaultAndNoTrueConditionItWaits)
{
    makeWorld(1);
    AlternativeBehaviorOperator* alternative = new AlternativeBehaviorOperator();
    CountingCallBack<bool>* gate = new CountingCallBack<bool>({false});
    ASSERT_TRUE(alternative->addConditionalNextBehavior(follower(), BoolCallBackPointer(gate)));
    EXPECT_EQ(nullptr, alternative->getDefaultNextBehavior());
    EXPECT_EQ(2u, alternative->getNextBehaviorCandidates().size());
    run(alternative);
    graph().update(0.5, 0);
    graph().update(0.5, 0);
    EXPECT_TRUE(alternative->isRunning(0));
    gate->_answers = {true};
    graph().update(0.5, 0);
    EXPECT_EQ(_followers[0].getImpl(), alternative->getNextBehaviorSelected(0));
    EXPECT_EQ(RunStatus::IDLE, alternative->getRunStatus(0));
}

} // namespace
