#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "behavior/engine/orvAbstractBehavior.h"
#include "behavior/engine/orvBehaviorContext.h"
#include "engine/simulation/orvSimulation.h"
#include "engine/simulation/orvSimulationsProcessor.h"
#include "knowledgeBase/orvKBContext.h"
#include "support/orvBatchQueueDrain.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvRecordingContext.h"

namespace
{

using orv::IContext;
using orv::ProcessingBatch;
using orv::Simulation;
using orvtest::drain;

class CountingEvent : public orv::SimulationUserEvent
{
public:
    CountingEvent(orv::Time time, std::vector<std::string>& journal, const char* name)
        : orv::SimulationUserEvent(time), _journal(journal), _name(name)
    {
    }
    void trigger() override { _journal.push_back(_name); }

private:
    std::vector<std::string>& _journal;
    const char* _name;
};

class SimulationTest : public orvtest::CoreTest
{
protected:
    void TearDown() override
    {
        _processor.finish();
        CoreTest::TearDown();
    }

    Simulation* addSimulation(int maxEntities = 16)
    {
        Simulation* simulation = new Simulation(maxEntities, 0);
        _processor.addSimulation(simulation);
        return simulation;
    }

    orv::SimulationsProcessor _processor;
    std::vector<std::string> _journal;
};

TEST_F(SimulationTest, NewSimulationHoldsTheTwoDefaultContextsInTypeOrder)
{
    Simulation simulation(4, 0);
    ASSERT_EQ(2, simulation.getContextCount());
    EXPECT_EQ(simulation.getBehaviorContext(), simulation.getContextByIndex(0));
    EXPECT_EQ(simulation.getKBContext(), simulation.getContextByIndex(1));
    EXPECT_EQ(IContext::ContextType::BEHAVIOR, simulation.getContextByIndex(0)->getContextType());
    EXPECT_EQ(simulation.getBehaviorContext(), simulation.getContext<orv::BehaviorContext>());
    EXPECT_EQ(simulation.getKBContext(), simulation.getContext(IContext::ContextType::KNOWLEDGE_BASE));
    EXPECT_EQ(nullptr, simulation.getContext(IContext::ContextType::PHYSICS));
    EXPECT_EQ(-1.0, simulation.getPreviousDuration());
}

TEST_F(SimulationTest, ContextsAreSortedByTypeAndEqualTypesKeepTheirAddingOrder)
{
    Simulation simulation(4, 0);
    IContext* first = new orvtest::RecordingContext(_journal, "a", IContext::ContextType::ANIMATION);
    IContext* second = new orvtest::RecordingContext(_journal, "b", IContext::ContextType::PERCEPTION);
    IContext* third = new orvtest::RecordingContext(_journal, "c", IContext::ContextType::ANIMATION);
    simulation.addContext(first);
    simulation.addContext(second);
    simulation.addContext(third);
    ASSERT_EQ(5, simulation.getContextCount());
    EXPECT_EQ(second, simulation.getContextByIndex(0));
    EXPECT_EQ(first, simulation.getContextByIndex(1));
    EXPECT_EQ(third, simulation.getContextByIndex(2));

    simulation.removeContext(first);
    EXPECT_EQ(nullptr, first->getSimulation());
    EXPECT_EQ(4, simulation.getContextCount());
    EXPECT_EQ(third, simulation.getContextByIndex(1));
    simulation.removeContext(first);
    EXPECT_EQ(4, simulation.getContextCount());
    delete first;
}

TEST_F(SimulationTest, InitLaysDownContextsThenComponentsBetweenTheSimulationBatches)
{
    Simulation simulation(4, 0);
    simulation.addContext(new orvtest::RecordingContext(_journal, "nav"));
    simulation.createEntityType(4);
    simulation.createEntity(0);
    orv::ProcessingBatchQueue queue;
    simulation.enqueueInit(queue);
    const std::vector<ProcessingBatch> batches = drain(queue);
    IContext* nav = simulation.getContextByIndex(0);
    ASSERT_EQ(12u, batches.size());
    EXPECT_EQ(&Simulation::preInitBatch, batches[0]._updateMethod);
    EXPECT_EQ(&IContext::initBatch, batches[1]._updateMethod);
    EXPECT_EQ(nav, batches[1]._userData);
    // One entity type: its initialisation runs alone, with no empty batch behind it.
    EXPECT_EQ(&IContext::initEntityTypeBatch, batches[2]._updateMethod);
    EXPECT_TRUE(batches[2]._blocking);
    EXPECT_EQ(&IContext::initBatch, batches[3]._updateMethod);
    EXPECT_EQ(&IContext::initEntityTypeBatch, batches[4]._updateMethod);
    EXPECT_EQ(&IContext::initBatch, batches[5]._updateMethod);
    // A single-threaded context's slices are blocking; an empty blocking batch closes them.
    EXPECT_EQ(&IContext::initEntityComponentsBatch, batches[6]._updateMethod);
    EXPECT_TRUE(batches[6]._blocking);
    EXPECT_EQ(&Simulation::emptyBlockingBatch, batches[7]._updateMethod);
    // The behaviour context's graph batches, between its two blocking batches.
    EXPECT_EQ(&Simulation::emptyBlockingBatch, batches[8]._updateMethod);
    EXPECT_EQ(&orv::BehaviorContext::initBehaviorGraphForIndex, batches[9]._updateMethod);
    EXPECT_EQ(&Simulation::emptyBlockingBatch, batches[10]._updateMethod);
    EXPECT_EQ(&Simulation::postInitBatch, batches[11]._updateMethod);
}

TEST_F(SimulationTest, EmptySimulationStillLaysDownEveryContextsBlockingBatches)
{
    Simulation simulation(4, 0);
    orv::ProcessingBatchQueue queue;
    simulation.enqueueUpdate(queue, 0.5);
    const std::vector<ProcessingBatch> batches = drain(queue);
    ASSERT_EQ(7u, batches.size());
    EXPECT_EQ(&Simulation::preUpdateBatch, batches[0]._updateMethod);
    // The behaviour context lays no pre-update batch.
    EXPECT_EQ(&Simulation::emptyBlockingBatch, batches[1]._updateMethod);
    EXPECT_EQ(&IContext::postUpdateBatch, batches[2]._updateMethod);
    EXPECT_EQ(&IContext::preUpdateBatch, batches[3]._updateMethod);
    EXPECT_EQ(&Simulation::emptyBlockingBatch, batches[4]._updateMethod);
    EXPECT_EQ(&IContext::postUpdateBatch, batches[5]._updateMethod);
    EXPECT_EQ(&Simulation::postUpdateBatch, batches[6]._updateMethod);
    for (const ProcessingBatch& batch : batches)
    {
        EXPECT_TRUE(batch._blocking);
    }
    EXPECT_EQ(0.5, batches[6]._dt);
}

TEST_F(SimulationTest, PausedContextLaysDownNothingUntilUnpaused)
{
    Simulation simulation(4, 0);
    simulation.getBehaviorContext()->pause();
    orv::ProcessingBatchQueue queue;
    simulation.enqueueUpdate(queue, 0.1);
    EXPECT_EQ(5u, drain(queue).size());
    simulation.getBehaviorContext()->unpause();
    simulation.enqueueUpdate(queue, 0.1);
    EXPECT_EQ(7u, drain(queue).size());
}

TEST_F(SimulationTest, FramesCountAndDurationSumsTheSteps)
{
    Simulation* simulation = addSimulation();
    EXPECT_TRUE(simulation->isInitialized());
    for (int i = 0; i < 4; ++i)
    {
        _processor.update(0.25);
    }
    EXPECT_EQ(4u, simulation->getCurrentFrame());
    EXPECT_DOUBLE_EQ(1.0, simulation->getDuration());
    EXPECT_DOUBLE_EQ(0.75, simulation->getPreviousDuration());
}

TEST_F(SimulationTest, UserEventsFireOnceInTheFirstFrameThatReachesThem)
{
    CountingEvent atZero(0.0, _journal, "zero");
    CountingEvent between(0.15, _journal, "between");
    CountingEvent later(0.3, _journal, "later");
    Simulation* simulation = addSimulation();
    auto& events = simulation->touchUserEventsList().touchUserEvents();
    events.push_back(&atZero);
    events.push_back(&between);
    events.push_back(&later);

    _processor.update(0.1);
    EXPECT_EQ(std::vector<std::string>{"zero"}, _journal);
    _processor.update(0.1);
    EXPECT_EQ(std::vector<std::string>{"zero"}, _journal);
    // Frame 3 starts at 0.2, the first start past 0.15.
    _processor.update(0.1);
    EXPECT_EQ((std::vector<std::string>{"zero", "between"}), _journal);
    _processor.update(0.1);
    _processor.update(0.1);
    EXPECT_EQ((std::vector<std::string>{"zero", "between", "later"}), _journal);
    events.clear();
}

TEST_F(SimulationTest, UserEventsHeldBackByAnUnsortedListOrANullEntry)
{
    CountingEvent late(1.0, _journal, "late");
    CountingEvent early(0.0, _journal, "early");
    Simulation* simulation = addSimulation();
    auto& events = simulation->touchUserEventsList().touchUserEvents();
    events.push_back(&late);
    events.push_back(&early);
    _processor.update(0.5);
    _processor.update(0.5);
    EXPECT_TRUE(_journal.empty());
    // Frame 3 starts at 1.0: late fires, and early, already behind the previous frame's start, is skipped.
    _processor.update(0.5);
    EXPECT_EQ(std::vector<std::string>{"late"}, _journal);
    events.clear();
}

TEST_F(SimulationTest, NullUserEventStopsTheWalkInEveryFrame)
{
    CountingEvent due(0.0, _journal, "due");
    Simulation* simulation = addSimulation();
    auto& events = simulation->touchUserEventsList().touchUserEvents();
    events.push_back(nullptr);
    events.push_back(&due);
    _processor.update(0.5);
    _processor.update(0.5);
    EXPECT_TRUE(_journal.empty());
    events.clear();
}

TEST_F(SimulationTest, FinishRunsContextsInReverseOrderAndANewRunStartsAtFrameZero)
{
    Simulation* simulation = new Simulation(4, 0);
    simulation->addContext(new orvtest::RecordingContext(_journal, "per", IContext::ContextType::PERCEPTION));
    simulation->addContext(new orvtest::RecordingContext(_journal, "nav", IContext::ContextType::NAVIGATION));
    simulation->createEntityType(2);
    simulation->createEntity(0);
    _processor.addSimulation(simulation);
    _processor.update(0.5);
    _processor.update(0.5);
    _journal.clear();
    ASSERT_TRUE(_processor.removeSimulation(simulation));
    EXPECT_FALSE(simulation->isInitialized());
    EXPECT_EQ(
        (std::vector<std::string>{"nav:finishEntities(0,0)", "nav:finish", "per:finishEntities(0,0)", "per:finish"}),
        _journal);
    // Adding it again initialises it anew.
    _processor.addSimulation(simulation);
    EXPECT_EQ(0u, simulation->getCurrentFrame());
    EXPECT_DOUBLE_EQ(0.5, simulation->getPreviousDuration());
}

TEST_F(SimulationTest, AddContextLateReplaysTypesAndEntitiesInArrayOrder)
{
    Simulation simulation(4, 0);
    simulation.createEntityType(2);
    simulation.createEntityType(2);
    simulation.createEntity(1);
    simulation.createEntity(0);
    simulation.addContextLate(new orvtest::RecordingContext(_journal, "late"));
    EXPECT_EQ((std::vector<std::string>{"late:allocate", "late:createType(0)", "late:createType(1)", "late:create(0,1)",
                                        "late:create(1,0)"}),
              _journal);
}

TEST_F(SimulationTest, ResetLeavesFreshDefaultContextsAndNoTypes)
{
    Simulation simulation(4, 0);
    simulation.addContext(new orvtest::RecordingContext(_journal, "nav"));
    simulation.createEntityType(2);
    simulation.createEntity(0);
    simulation.reset();
    ASSERT_EQ(2, simulation.getContextCount());
    EXPECT_NE(nullptr, dynamic_cast<orv::BehaviorContext*>(simulation.getContextByIndex(0)));
    EXPECT_NE(nullptr, dynamic_cast<orv::KBContext*>(simulation.getContextByIndex(1)));
    EXPECT_EQ(0, simulation.getEntityTypeCount());
    EXPECT_EQ(0, simulation.getEntityCount());
}

TEST_F(SimulationTest, EntitiesCreatedInARunningSimulationAreInitialisedThroughTheQueue)
{
    Simulation* simulation = new Simulation(8, 0);
    simulation->addContext(new orvtest::RecordingContext(_journal, "nav"));
    simulation->createEntityType(8);
    _processor.addSimulation(simulation);
    orv::EntityHandle handles[2] = {simulation->createEntity(0), simulation->createEntity(0)};
    _journal.clear();
    _processor.initEntities(simulation, handles, 2);
    EXPECT_EQ((std::vector<std::string>{"nav:initEntities(0,0)", "nav:initEntities(1,1)"}), _journal);
}

using SimulationDeathTest = SimulationTest;

TEST_F(SimulationDeathTest, AddingAContextAfterTheFirstEntityIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    Simulation simulation(4, 0);
    simulation.createEntityType(2);
    simulation.createEntity(0);
    EXPECT_DEATH(simulation.addContext(new orvtest::RecordingContext(_journal, "nav")),
                 "Contexts must be added before simulation creates entities.");
}

TEST_F(SimulationDeathTest, AddingAContextToAnInitialisedSimulationIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    Simulation* simulation = addSimulation();
    EXPECT_DEATH(simulation->addContextLate(new orvtest::RecordingContext(_journal, "nav")),
                 "!isInitialized\\(\\).*\\n.*Contexts must be added before simulation initialization.");
}

TEST_F(SimulationDeathTest, DeletingAnInitialisedSimulationIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    Simulation* simulation = addSimulation();
    EXPECT_DEATH(delete simulation, "Simulation must be finished before calling its destructor");
}

TEST_F(SimulationDeathTest, CreatingAGroupTypeInAnInitialisedSimulationIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    Simulation* simulation = addSimulation();
    EXPECT_DEATH(simulation->createGroupEntityType(2), "isInitialized\\(\\) == false");
}

TEST_F(SimulationDeathTest, UnknownEntityTypeIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    Simulation simulation(4, 0);
    EXPECT_DEATH(simulation.getEntityType(0), "entityTypeId < static_cast<int>\\(_entityTypes.size\\(\\)\\)");
}

TEST_F(SimulationDeathTest, ANegativeEntityTypeIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    Simulation simulation(4, 0);
    simulation.createEntityType(2);
    EXPECT_DEATH(simulation.getEntityType(-1), "entityTypeId >= 0");
}

TEST_F(SimulationDeathTest, InitialisingTwiceIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    Simulation* simulation = addSimulation();
    EXPECT_DEATH(Simulation::preInitBatch(0.0, simulation, 0, 0), "Simulation has already been initialized");
}

TEST_F(SimulationDeathTest, ResetOrRemovingAContextWhileInitialisedIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    Simulation* simulation = addSimulation();
    EXPECT_DEATH(simulation->reset(), "Simulation reset can only be called when Simulation is not initialized");
    EXPECT_DEATH(simulation->removeContext(simulation->getContextByIndex(0)), "!isInitialized\\(\\)");
}

TEST_F(SimulationDeathTest, AddingANullContextIsFatal)
{
    orvtest::useThreadsafeDeathTests();
    Simulation simulation(4, 0);
    EXPECT_DEATH(simulation.addContext(nullptr), "context != NULL");
}

/// A context that lays down no initialisation of its own, and so stays uninitialised.
class NeverInitialisedContext : public orvtest::RecordingContext
{
public:
    using RecordingContext::RecordingContext;
    void enqueueInit(orv::ProcessingBatchQueue&, int, int) override {}
};

TEST_F(SimulationDeathTest, AContextLeftUninitialisedStopsTheSimulationsInitialisation)
{
    orvtest::useThreadsafeDeathTests();
    Simulation* simulation = new Simulation(4, 0);
    simulation->addContext(new NeverInitialisedContext(_journal, "lazy"));
    EXPECT_DEATH(_processor.addSimulation(simulation), "Unable to initialize Simulation");
    delete simulation;
}

} // namespace
