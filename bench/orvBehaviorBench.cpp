// One behaviour node's update over many entities, rows walked in memory order.
#include <benchmark/benchmark.h>

#include <vector>

#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/engine/orvAbstractBehavior.h"
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
