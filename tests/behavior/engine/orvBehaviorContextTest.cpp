#include <gtest/gtest.h>

#include <vector>

#include "behavior/engine/orvAbstractBehavior.h"
#include "behavior/engine/orvBehaviorContext.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "support/orvBatchQueueDrain.h"
#include "support/orvCoreTestSupport.h"

namespace
{

using orv::AbstractBehavior;
using orv::BehaviorContext;
using orv::ProcessingBatch;

/// A host behaviour that counts, per entity, its initialisations and its steps. Each entity's counters are
/// written by the one worker that runs the entity.
class CountingBehavior : public AbstractBehavior
{
public:
    bool checkNextBehaviorCandidatesConnection() const override { return true; }

    std::vector<int> _inits;
    std::vector<int> _steps;
    int _finishes = 0;

protected:
    void doAllocate(int capacity) override
    {
        _inits.assign(capacity, 0);
        _steps.assign(capacity, 0);
    }
    bool doInit() override { return true; }
    void doFinish() override { ++_finishes; }
    void doInit(int entity) override { ++_inits[entity]; }
    void doFinish(int entity) override { _steps[entity] = 0; }
    void doStart(int) override {}
    void doUpdate(Time, int entity) override { ++_steps[entity]; }
    ResultStatus::Value doStop(Time, int) override { return ResultStatus::SUCCESS; }
};

/// A simulation of 1,000 entities of one type, whose behaviour context is under test.
class BehaviorContextTest : public orvtest::CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        _simulation = new orv::Simulation(_count, 0);
        _type = _simulation->getEntityType(_simulation->createEntityType(_count));
        _context = _simulation->getBehaviorContext();
    }
    void TearDown() override
    {
        delete _simulation;
        _node = orv::SmartPointer<AbstractBehavior>();
        CoreTest::TearDown();
    }

    CountingBehavior* addCountingBehavior(orv::AbstractEntityType* type)
    {
        CountingBehavior* node = new CountingBehavior();
        _node = orv::SmartPointer<AbstractBehavior>(node);
        type->addBehavior(node, true);
        return node;
    }
    void createEntities(int count)
    {
        for (int i = 0; i < count; ++i)
        {
            _simulation->createEntity(0);
        }
    }
    static bool isEmptyBlocking(const ProcessingBatch& batch)
    {
        return batch._blocking && batch._updateMethod == &orv::Simulation::emptyBlockingBatch;
    }

    static constexpr int _count = 1000;
    orv::Simulation* _simulation = nullptr;
    orv::EntityType* _type = nullptr;
    BehaviorContext* _context = nullptr;
    orv::SmartPointer<AbstractBehavior> _node;
};

TEST_F(BehaviorContextTest, AFrameCutsAThousandEntitiesIntoRangesOfElevenBetweenTheBlockingBatches)
{
    createEntities(_count);
    _context->setEntityBatchSize(0);
    orv::ProcessingBatchQueue queue;
    _context->enqueueUpdate(queue, 0.04, _count, 0);
    const std::vector<ProcessingBatch> batches = orvtest::drain(queue);
    // No pre-update: the group half (empty), a blocking batch, 91 entity ranges, the post-update.
    ASSERT_EQ(93u, batches.size());
    EXPECT_TRUE(isEmptyBlocking(batches[0]));
    for (int i = 0; i < 91; ++i)
    {
        const ProcessingBatch& batch = batches[1 + i];
        EXPECT_EQ(&BehaviorContext::updateBehaviorGraphForIndex, batch._updateMethod);
        EXPECT_EQ(static_cast<orv::AbstractEntityType*>(_type), batch._userData);
        EXPECT_FALSE(batch._blocking);
        EXPECT_EQ(i * 11, batch._firstIndex);
        EXPECT_EQ(i < 90 ? i * 11 + 10 : 999, batch._lastIndex);
        EXPECT_EQ(0.04, batch._dt);
    }
    EXPECT_EQ(&orv::IContext::postUpdateBatch, batches[92]._updateMethod);
    EXPECT_TRUE(batches[92]._blocking);
    EXPECT_EQ(static_cast<orv::IContext*>(_context), batches[92]._userData);
}

TEST_F(BehaviorContextTest, TypesWithoutEntitiesLayNoBatchButTheBlockingBatchesRemain)
{
    _simulation->createEntityType(4);
    _simulation->createGroupEntityType(4);
    orv::ProcessingBatchQueue queue;
    _context->enqueueUpdate(queue, 0.04, 0, 0);
    std::vector<ProcessingBatch> batches = orvtest::drain(queue);
    ASSERT_EQ(2u, batches.size());
    EXPECT_TRUE(isEmptyBlocking(batches[0]));
    EXPECT_EQ(&orv::IContext::postUpdateBatch, batches[1]._updateMethod);

    // Initialisation: the same cutting with a step of 0, closed by a second blocking batch.
    createEntities(3);
    _context->setEntityBatchSize(5);
    _context->enqueueComponentsInit(queue, 3, 0);
    batches = orvtest::drain(queue);
    ASSERT_EQ(3u, batches.size());
    EXPECT_TRUE(isEmptyBlocking(batches[0]));
    EXPECT_EQ(&BehaviorContext::initBehaviorGraphForIndex, batches[1]._updateMethod);
    EXPECT_EQ(0, batches[1]._firstIndex);
    EXPECT_EQ(2, batches[1]._lastIndex);
    EXPECT_EQ(0.0, batches[1]._dt);
    EXPECT_TRUE(isEmptyBlocking(batches[2]));
}

TEST_F(BehaviorContextTest, TheHooksInitializeAndFinishTheGraphsAndTolerateAnEmptyGroupsArray)
{
    CountingBehavior* node = addCountingBehavior(_type);
    createEntities(2);
    _context->onInitEntityType(0);
    EXPECT_TRUE(_type->getBehaviorGraph().isInitialized());
    _context->onInitEntityComponents(0, 1);
    EXPECT_EQ(AbstractBehavior::RunStatus::STARTING, node->getRunStatus(1));
    EXPECT_EQ(1, node->_inits[1]);
    _context->onInitGroupComponents(0, 5);
    _context->onFinishGroupComponents(0, 5);
    _context->onFinishEntityComponents(1, 1);
    EXPECT_EQ(AbstractBehavior::RunStatus::IDLE, node->getRunStatus(1));
    _context->doFinish();
    EXPECT_FALSE(_type->getBehaviorGraph().isInitialized());
    EXPECT_EQ(1, node->_finishes);
}

TEST_F(BehaviorContextTest, ASimulationStepsItsGraphsOnTheWorkersThroughTheProcessor)
{
    CountingBehavior* node = addCountingBehavior(_type);
    createEntities(600);
    orv::SimulationsProcessor processor;
    processor.init(2);
    processor.addSimulation(_simulation);
    for (int frame = 0; frame < 5; ++frame)
    {
        processor.update(0.04);
    }
    // Two entities go; the one created next takes a freed slot and starts afresh, the other slot stays free.
    _simulation->destroyEntity(_type->getEntityHandle(7));
    _simulation->destroyEntity(_type->getEntityHandle(8));
    const orv::EntityHandle late = _simulation->createEntity(0);
    processor.initEntities(_simulation, &late, 1);
    processor.update(0.04);
    const int lateSlot = _simulation->getEntity(late)->getIndexInEntityType();
    const int freeSlot = 7 + 8 - lateSlot;
    ASSERT_FALSE(_type->isIndexInUse(freeSlot));
    for (int slot = 0; slot < 600; ++slot)
    {
        ASSERT_EQ(slot == lateSlot ? 1 : slot == freeSlot ? 0 : 6, node->_steps[slot]) << "slot " << slot;
        ASSERT_EQ(slot == lateSlot ? 2 : 1, node->_inits[slot]) << "slot " << slot;
    }
    EXPECT_NEAR(0.24, node->getTime(0), 1e-9);
    // A batch over every slot skips the free one.
    BehaviorContext::initBehaviorGraphForIndex(0.0, _type, 0, 599);
    EXPECT_EQ(1, node->_inits[freeSlot]);
    EXPECT_EQ(3, node->_inits[lateSlot]);
    ASSERT_TRUE(processor.removeSimulation(_simulation));
    EXPECT_FALSE(_type->getBehaviorGraph().isInitialized());
    EXPECT_EQ(1, node->_finishes);
    processor.finish();
}

using BehaviorContextDeathTest = BehaviorContextTest;

TEST_F(BehaviorContextDeathTest, ATypeIdOutOfRangeIsFatal)
{
    EXPECT_DEATH(_context->onInitEntityType(1), "entityTypeId < static_cast<int>\\(_entityTypes.size\\(\\)\\)");
    EXPECT_DEATH(_context->onInitGroupEntityType(0),
                 "groupEntityTypeId < static_cast<int>\\(_groupEntityTypes.size\\(\\)\\)");
}

} // namespace
