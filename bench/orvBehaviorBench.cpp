// One behaviour node's update over many entities, rows walked in memory order.
#include <benchmark/benchmark.h>

#include <vector>

#include "behavior/behaviors/orvAbstractUserBehavior.h"
#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/callBacks/orvScalarCallBackPointer.h"
#include "behavior/engine/orvAbstractBehavior.h"
#include "behavior/operators/orvBlockBehaviorOperator.h"
#include "behavior/operators/orvInitialBehaviorOperator.h"
#include "behavior/operators/orvLoopBehaviorOperator.h"
#include "behavior/operators/orvParallelBehaviorOperator.h"
#include "behavior/operators/orvRandomBehaviorOperator.h"
#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "orvBenchSupport.h"

namespace
{

using orv::AbstractBehavior;

/// The cheapest host behaviour that does work: it sums the time each entity has run. It starts again whenever a
/// run ends, so that a step through the whole cycle can be measured too.
class SummingBehavior : public AbstractBehavior
{
public:
    explicit SummingBehavior(int entities) : _sums(static_cast<size_t>(entities), 0.0) {}
    bool checkNextBehaviorCandidatesConnection() const override { return true; }
    std::vector<Time> _sums;

protected:
    bool doInit() override { return true; }
    void doFinish() override {}
    void doStart(int) override {}
    void doUpdate(Time dt, int entity) override { _sums[static_cast<size_t>(entity)] += dt; }
    ResultStatus::Value doStop(Time, int) override { return ResultStatus::SUCCESS; }
};

/// A node over count entities, each row started and, with a stopping condition, ended within every update.
void prepare(SummingBehavior& node, int count, bool stopEveryStep)
{
    node.allocate(count);
    node.init();
    if (stopEveryStep)
    {
        node.setStoppingCondition(orv::BoolCallBackPointer(new orv::ConstantValueCallback<bool>(true)));
    }
    else
    {
        node.setStoppingCondition(orv::BoolCallBackPointer(new orv::ConstantValueCallback<bool>(false)));
    }
    for (int entity = 0; entity < count; ++entity)
    {
        node.addEntity(entity);
        node.init(entity);
        node.requestStart(entity);
    }
}

/// Every row RUNNING: one doUpdate and one stopping-condition call per entity.
void BM_BehaviorNodeUpdateRunning(benchmark::State& state)
{
    orvbench::CoreScope core;
    const int count = static_cast<int>(state.range(0));
    orv::SmartPointer<AbstractBehavior> held(new SummingBehavior(count));
    SummingBehavior& node = static_cast<SummingBehavior&>(*held);
    prepare(node, count, false);
    for (auto _ : state)
    {
        for (int entity = 0; entity < count; ++entity)
        {
            node.update(1.0 / 30.0, entity);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.counters["rowBytes"] = static_cast<double>(sizeof(AbstractBehavior::BehaviorStatusData));
}
BENCHMARK(BM_BehaviorNodeUpdateRunning)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// Every row through the whole cycle in each update: requestStart, then STARTING to RUNNING to STOPPING to IDLE.
void BM_BehaviorNodeUpdateFullCycle(benchmark::State& state)
{
    orvbench::CoreScope core;
    const int count = static_cast<int>(state.range(0));
    orv::SmartPointer<AbstractBehavior> held(new SummingBehavior(count));
    SummingBehavior& node = static_cast<SummingBehavior&>(*held);
    prepare(node, count, true);
    for (auto _ : state)
    {
        for (int entity = 0; entity < count; ++entity)
        {
            node.requestStart(entity);
            node.update(1.0 / 30.0, entity);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_BehaviorNodeUpdateFullCycle)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace

// ---- A small tree in a whole frame ----

namespace
{

/// A host action of one frame: it adds the step to its entity's total and ends.
class OneFrameAction : public orv::AbstractUserBehavior
{
public:
    bool doInit() override { return true; }
    void doFinish() override {}
    void doAllocate(int capacity) override { _totals.assign(static_cast<size_t>(capacity), 0.0); }
    void doStart(int) override {}
    void doUpdate(Time dt, int entity) override
    {
        _totals[static_cast<size_t>(entity)] += dt;
        requestStop(entity);
    }
    ResultStatus::Value doStop(Time, int) override { return ResultStatus::SUCCESS; }
    std::vector<Time> _totals;
};

/// Over and over: a condition (a gate that opens at once), then a random choice of two host actions; with
/// withParallel, the choice leads on to a parallel operator that runs two more host actions together.
orv::AbstractBehavior* buildChoiceTree(bool withParallel = false)
{
    orv::CompositeBehavior* steps = new orv::CompositeBehavior();
    orv::BlockBehaviorOperator* gate = new orv::BlockBehaviorOperator();
    gate->setBlockCondition(orv::BoolCallBackPointer(new orv::ConstantValueCallback<bool>(true)));
    orv::RandomBehaviorOperator* choice = new orv::RandomBehaviorOperator();
    OneFrameAction* left = new OneFrameAction();
    OneFrameAction* right = new OneFrameAction();
    for (orv::AbstractBehavior* node : std::vector<orv::AbstractBehavior*>{gate, choice, left, right})
    {
        steps->addChildBehavior(node);
    }
    static_cast<orv::InitialBehaviorOperator*>(steps->touchInitialBehavior())->setNextBehavior(gate);
    gate->setNextBehavior(choice);
    choice->addNextBehaviorCandidate(left);
    choice->addNextBehaviorCandidate(right);
    AbstractBehavior* afterChoice = steps->touchFinalBehavior();
    if (withParallel)
    {
        orv::ParallelBehaviorOperator* both = new orv::ParallelBehaviorOperator();
        both->addChildBehavior(new OneFrameAction());
        both->addChildBehavior(new OneFrameAction());
        steps->addChildBehavior(both);
        both->setNextBehavior(steps->touchFinalBehavior());
        afterChoice = both;
    }
    left->setNextBehavior(afterChoice);
    right->setNextBehavior(afterChoice);
    orv::LoopBehaviorOperator* loop =
        new orv::LoopBehaviorOperator(orv::LoopBehaviorOperator::LoopMode::DO_WHILE,
                                      orv::BoolCallBackPointer(new orv::ConstantValueCallback<bool>(true)));
    loop->addChildBehavior(steps);
    orv::CompositeBehavior* root = new orv::CompositeBehavior();
    root->addChildBehavior(loop);
    static_cast<orv::InitialBehaviorOperator*>(root->touchInitialBehavior())->setNextBehavior(loop);
    loop->setNextBehavior(root->touchFinalBehavior());
    return root;
}

/// Bytes of per-entity state of a tree: every node's rows and the composites' slots, as allocated, per slot.
double treeBytesPerSlot(const orv::AbstractBehavior& node, int slots)
{
    double bytes = static_cast<double>(node.getStatusData().capacity() * sizeof(AbstractBehavior::BehaviorStatusData));
    if (const auto* composite = dynamic_cast<const orv::CompositeBehavior*>(&node))
    {
        bytes += composite->getCurrentBehaviorArrayCapacity() *
                 static_cast<double>(sizeof(AbstractBehavior*) + sizeof(orv::RuntimeUpdateHistoryPerFrame));
        for (int entity = 0; entity < slots; ++entity)
        {
            const orv::RuntimeUpdateHistoryPerFrame& history = composite->getRuntimeHistory(entity);
            bytes += static_cast<double>((history._updatedBehaviorsThisFrame.capacity() +
                                          history._childrenCompositeToClearTransitions.capacity()) *
                                         sizeof(void*));
        }
    }
    if (const auto* action = dynamic_cast<const OneFrameAction*>(&node))
    {
        bytes += static_cast<double>(action->_totals.capacity() * sizeof(AbstractBehavior::Time));
    }
    if (const auto* container = dynamic_cast<const orv::AbstractBehaviorContainer*>(&node))
    {
        for (const orv::SmartPointer<AbstractBehavior>& child : container->getChildrenBehaviors())
        {
            bytes += treeBytesPerSlot(*child, slots) * slots;
        }
    }
    return bytes / slots;
}

/// Frames of 10,000 entities of one type on one thread: range(1) 0, an empty graph (the frame's own cost); 1, the
/// choice tree; 2, the choice tree with a parallel operator after the choice.
void BM_FrameChoiceTree(benchmark::State& state)
{
    orvbench::CoreScope core;
    const int entities = static_cast<int>(state.range(0));
    const bool withTree = state.range(1) != 0;
    const bool withParallel = state.range(1) == 2;
    orv::SimulationsProcessor processor;
    processor.init(1);
    orv::Simulation* simulation = new orv::Simulation(entities, 0);
    const int type = simulation->createEntityType(entities);
    orv::AbstractBehavior* tree = withTree ? buildChoiceTree(withParallel) : nullptr;
    if (tree != nullptr)
    {
        simulation->getEntityType(type)->addBehavior(tree, true);
    }
    for (int i = 0; i < entities; ++i)
    {
        simulation->createEntity(static_cast<unsigned int>(type));
    }
    processor.addSimulation(simulation);
    processor.update(0.04);
    for (auto _ : state)
    {
        processor.update(0.04);
    }
    state.counters["nsPerEntity"] = benchmark::Counter(
        static_cast<double>(entities), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    if (tree != nullptr)
    {
        state.counters["treeBytesPerEntity"] = treeBytesPerSlot(*tree, entities);
    }
    processor.finish();
}
BENCHMARK(BM_FrameChoiceTree)
    ->ArgsProduct({{10000}, {0, 1, 2}})
    ->ArgNames({"entities", "tree"})
    ->UseRealTime()
    ->Unit(benchmark::kMicrosecond);

} // namespace
