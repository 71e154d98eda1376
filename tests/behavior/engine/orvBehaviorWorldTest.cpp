#include <gtest/gtest.h>

#include <vector>

#include "behavior/behaviors/orvAbstractUserBehavior.h"
#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvITypedCallBack.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "behavior/operators/orvBlockBehaviorOperator.h"
#include "behavior/operators/orvInitialBehaviorOperator.h"
#include "behavior/operators/orvLoopBehaviorOperator.h"
#include "engine/simulation/orvAbstractEntityType.h"
#include "engine/simulation/orvEntity.h"
#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "support/orvCoreTestSupport.h"

namespace
{

using orv::AbstractBehavior;
using orv::BoolCallBackPointer;

/// A host behaviour that moves its entity along +x at 1 m/s for half a second, or, as a "hop", by 1 m in the
/// step it starts; it counts its runs per entity.
class StepBehavior : public orv::AbstractUserBehavior
{
public:
    explicit StepBehavior(bool hop) : _hop(hop) {}
    bool doInit() override { return true; }
    void doFinish() override {}
    void doAddEntity(int entity) override
    {
        _runs.resize(static_cast<size_t>(entity) + 1, 0);
        _left.resize(static_cast<size_t>(entity) + 1, 0.0);
    }
    void doStart(int entity) override
    {
        ++_runs[entity];
        _left[entity] = 0.5;
    }
    void doUpdate(Time dt, int entity) override
    {
        orv::Entity& moved = *getBehaviorGraph()->getEntityType()->getEntity(entity);
        orv::Vector3 position = moved.getPosition();
        position.x += _hop ? 1.0f : static_cast<float>(dt);
        moved.setPosition(position);
        _left[entity] -= dt;
        if (_hop || _left[entity] <= 1e-9)
        {
            requestStop(entity);
        }
    }
    ResultStatus::Value doStop(Time, int) override { return ResultStatus::SUCCESS; }

    std::vector<int> _runs;

private:
    bool _hop;
    std::vector<Time> _left;
};

/// True while a behaviour has run fewer than limit times for the entity.
class FewerRuns : public orv::ITypedCallBack<bool>
{
public:
    FewerRuns(const StepBehavior& behavior, int limit) : _behavior(behavior), _limit(limit) {}
    bool call(int entity) override { return _behavior._runs[entity] < _limit; }

private:
    const StepBehavior& _behavior;
    int _limit;
};

/// True once the simulation has passed a frame.
class AfterFrame : public orv::ITypedCallBack<bool>
{
public:
    AfterFrame(const orv::Simulation& simulation, unsigned int frame) : _simulation(simulation), _frame(frame) {}
    bool call(int) override { return _simulation.getCurrentFrame() > _frame; }

private:
    const orv::Simulation& _simulation;
    unsigned int _frame;
};

/// The graph a host builds: wait for frame 3, walk for half a second, hop three times in a loop, end.
struct HostGraph
{
    orv::CompositeBehavior* _root = nullptr;
    StepBehavior* _walk = nullptr;
    StepBehavior* _hop = nullptr;
};

HostGraph buildHostGraph(const orv::Simulation& simulation)
{
    HostGraph graph;
    graph._root = new orv::CompositeBehavior();
    orv::BlockBehaviorOperator* wait = new orv::BlockBehaviorOperator();
    wait->setBlockCondition(BoolCallBackPointer(new AfterFrame(simulation, 3)));
    graph._walk = new StepBehavior(false);
    graph._hop = new StepBehavior(true);
    orv::LoopBehaviorOperator* loop = new orv::LoopBehaviorOperator(orv::LoopBehaviorOperator::LoopMode::WHILE,
                                                                    BoolCallBackPointer(new FewerRuns(*graph._hop, 3)));
    EXPECT_TRUE(loop->addChildBehavior(graph._hop));
    for (AbstractBehavior* node : std::vector<AbstractBehavior*>{wait, graph._walk, loop})
    {
        EXPECT_TRUE(graph._root->addChildBehavior(node));
    }
    EXPECT_TRUE(static_cast<orv::InitialBehaviorOperator*>(graph._root->touchInitialBehavior())->setNextBehavior(wait));
    EXPECT_TRUE(wait->setNextBehavior(graph._walk));
    EXPECT_TRUE(graph._walk->setNextBehavior(loop));
    EXPECT_TRUE(loop->setNextBehavior(graph._root->touchFinalBehavior()));
    return graph;
}

using BehaviorWorldTest = orvtest::CoreTest;

TEST_F(BehaviorWorldTest, AHostGraphRunsOnTheWorkersToItsEndTheSameAtOneAndTwoThreads)
{
    std::vector<std::vector<float>> ends;
    for (int threads : {1, 2})
    {
        orv::SimulationsProcessor processor;
        processor.init(threads);
        orv::Simulation* simulation = new orv::Simulation(300, 0);
        const int type = simulation->createEntityType(300);
        const HostGraph graph = buildHostGraph(*simulation);
        simulation->getEntityType(type)->addBehavior(graph._root, true);
        for (int i = 0; i < 300; ++i)
        {
            simulation->createEntity(static_cast<unsigned int>(type));
        }
        processor.addSimulation(simulation);
        for (int frame = 0; frame < 30; ++frame)
        {
            processor.update(0.1);
        }
        std::vector<float> positions;
        for (int slot = 0; slot < 300; ++slot)
        {
            // Each entity waited, walked half a second at 1 m/s and hopped three times, then the graph ended.
            EXPECT_EQ(AbstractBehavior::RunStatus::IDLE, graph._root->getRunStatus(slot));
            EXPECT_EQ(AbstractBehavior::ResultStatus::SUCCESS, graph._root->getResultStatus(slot));
            EXPECT_EQ(1, graph._walk->_runs[slot]);
            EXPECT_EQ(3, graph._hop->_runs[slot]);
            positions.push_back(simulation->getEntityType(type)->getEntity(slot)->getPosition().x);
        }
        EXPECT_NEAR(3.5f, positions[0], 1e-4f);
        ends.push_back(positions);
        processor.finish();
    }
    EXPECT_TRUE(ends[0] == ends[1]);
}

} // namespace
