#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "behavior/engine/orvAbstractBehavior.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvSimulation.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"

namespace
{

using orv::AbstractBehavior;
using orv::BehaviorGraph;
using orv::SmartPointer;
using Journal = std::vector<std::string>;
using RunStatus = AbstractBehavior::RunStatus;

/// A host behaviour that writes its name and every hook it receives into a shared journal.
class NamedBehavior : public AbstractBehavior
{
public:
    NamedBehavior(Journal* journal, std::string name) : _journal(journal), _name(std::move(name)) {}
    ~NamedBehavior() override { note("gone"); }

    bool checkNextBehaviorCandidatesConnection() const override { return true; }

    bool _initAnswer = true;
    bool _stopInUpdate = false;

protected:
    bool doInit() override { return note("doInit()"), _initAnswer; }
    void doFinish() override { note("doFinish()"); }
    void doAllocate(int capacity) override { note("doAllocate(" + std::to_string(capacity) + ")"); }
    void doDeallocate() override { note("doDeallocate()"); }
    void doAddEntity(int entity) override { note("doAddEntity(" + std::to_string(entity) + ")"); }
    void doInit(int entity) override { note("doInit(" + std::to_string(entity) + ")"); }
    void doFinish(int entity) override { note("doFinish(" + std::to_string(entity) + ")"); }
    void doStart(int entity) override { note("doStart(" + std::to_string(entity) + ")"); }
    void doUpdate(Time dt, int entity) override
    {
        note("doUpdate(" + std::to_string(dt).substr(0, 4) + ")");
        if (_stopInUpdate)
        {
            requestStop(entity);
        }
    }
    ResultStatus::Value doStop(Time, int) override { return note("doStop"), ResultStatus::FAILURE; }

private:
    void note(const std::string& line) { _journal->push_back(_name + " " + line); }

    Journal* _journal;
    std::string _name;
};

/// A host behaviour with a class descriptor, so that a snapshot can make it again; it does nothing.
class SavedBehavior : public AbstractBehavior
{
    ORV_DECLARE_RTTI(SavedBehavior)

public:
    bool checkNextBehaviorCandidatesConnection() const override { return true; }

protected:
    bool doInit() override { return true; }
    void doFinish() override {}
    void doStart(int) override {}
    void doUpdate(Time, int) override {}
    ResultStatus::Value doStop(Time, int) override { return ResultStatus::SUCCESS; }
};

ORV_IMPLEMENT_RTTI(SavedBehavior, "3b0e4f0a-8c1d-4f6e-9a57-2d6c1e8b7f40", "orvtest::SavedBehavior")

void SavedBehavior::addAttributes()
{
    _rtti->addBaseClass<AbstractBehavior>();
}

/// A simulation with one entity type of room for 8, whose graph is under test.
class BehaviorGraphTest : public orvtest::CoreTest
{
protected:
    void SetUp() override
    {
        CoreTest::SetUp();
        _simulation = new orv::Simulation(8, 0);
        _type = _simulation->getEntityType(_simulation->createEntityType(8));
        _graph = &_type->touchBehaviorGraph();
    }
    void TearDown() override
    {
        delete _simulation;
        // The nodes go before the library finishes.
        _held.clear();
        CoreTest::TearDown();
    }

    /// A node named name, also held by the test.
    NamedBehavior* make(const char* name)
    {
        NamedBehavior* node = new NamedBehavior(&_journal, name);
        _held.push_back(SmartPointer<AbstractBehavior>(node));
        return node;
    }
    void createEntities(int count)
    {
        for (int i = 0; i < count; ++i)
        {
            _simulation->createEntity(0);
        }
    }

    Journal _journal;
    std::vector<SmartPointer<AbstractBehavior>> _held;
    orv::Simulation* _simulation = nullptr;
    orv::EntityType* _type = nullptr;
    BehaviorGraph* _graph = nullptr;
};

TEST_F(BehaviorGraphTest, TheLifecycleReachesTheTopLevelNodesInOrderAndStartsTheEntryAtEntityInitialization)
{
    _type->addBehavior(make("A"), true);
    _graph->addBehavior(make("B"), false);
    createEntities(1);
    _graph->init();
    EXPECT_TRUE(_graph->isInitialized());
    _graph->init(0);
    _graph->update(0.5, 0);
    _graph->finish(0);
    _graph->finish();
    EXPECT_FALSE(_graph->isInitialized());
    EXPECT_EQ((Journal{"A doAllocate(8)", "B doAllocate(8)", "A doAddEntity(0)", "B doAddEntity(0)", "A doInit()",
                       "B doInit()", "A doInit(0)", "B doInit(0)", "A doStart(0)", "A doUpdate(0.50)", "A doStop",
                       "A doFinish(0)", "B doFinish(0)", "A doFinish()", "B doFinish()"}),
              _journal);
    EXPECT_EQ(RunStatus::IDLE, _held[0]->getRunStatus(0));
}

TEST_F(BehaviorGraphTest, TopLevelNodesAreIndependentAndEachGetsTheWholeStep)
{
    NamedBehavior* failing = make("A");
    failing->_stopInUpdate = true;
    _graph->addBehavior(failing, true);
    _graph->addBehavior(make("B"), true);
    createEntities(1);
    _graph->init();
    _graph->init(0);
    _journal.clear();
    _graph->update(0.5, 0);
    _graph->update(0.25, 0);
    EXPECT_EQ((Journal{"A doStart(0)", "A doUpdate(0.50)", "A doStop", "B doStart(0)", "B doUpdate(0.50)",
                       "B doUpdate(0.25)"}),
              _journal);
    EXPECT_TRUE(failing->isFailed(0));
    EXPECT_TRUE(_held[1]->isRunning(0));
}

TEST_F(BehaviorGraphTest, AFailedInitializationLeavesTheGraphInitializedAndTheNodeStillRuns)
{
    NamedBehavior* node = make("A");
    node->_initAnswer = false;
    _graph->addBehavior(node, true);
    createEntities(1);
    _graph->init();
    _graph->init(0);
    _graph->update(0.5, 0);
    EXPECT_TRUE(_graph->isInitialized());
    EXPECT_FALSE(node->isInitialized());
    EXPECT_TRUE(node->isRunning(0));
}

TEST_F(BehaviorGraphTest, ANodeAddedLateGetsARowForEverySlotInUseAndNoneForAFreeSlot)
{
    createEntities(3);
    _simulation->destroyEntity(_simulation->getEntitiesManager().getEntity(1)->getHandle());
    ASSERT_FALSE(_type->isIndexInUse(1));
    _graph->addBehavior(make("A"), false);
    EXPECT_EQ((Journal{"A doAllocate(8)", "A doAddEntity(0)", "A doAddEntity(2)"}), _journal);
    EXPECT_EQ(3, _graph->getEntitySlotCount());
}

TEST_F(BehaviorGraphTest, RemovingANodeFreesItsRowsAndUnlinksItAndClearingFreesNothing)
{
    createEntities(2);
    _graph->addBehavior(make("A"), false);
    _graph->addBehavior(make("B"), false);
    _graph->addBehavior(new NamedBehavior(&_journal, "C"), false);
    _journal.clear();
    _graph->removeBehavior(_held[1].getImpl());
    EXPECT_EQ((Journal{"B doDeallocate()"}), _journal);
    EXPECT_EQ(nullptr, _held[1]->getBehaviorGraph());
    EXPECT_EQ(0u, _held[1]->getStatusData().capacity());
    ASSERT_EQ(2u, _graph->getBehaviors().size());
    EXPECT_EQ(_held[0].getImpl(), _graph->getBehaviors()[0].getImpl());

    // A node that only the graph holds goes with its entry; clearing frees no row of those left.
    _graph->removeBehavior(_graph->getBehaviors()[1].getImpl());
    _graph->clearBehaviors();
    EXPECT_EQ((Journal{"B doDeallocate()", "C doDeallocate()", "C gone"}), _journal);
    EXPECT_TRUE(_graph->getBehaviors().empty());
    EXPECT_EQ(2u, _held[0]->getStatusData().size());
}

TEST_F(BehaviorGraphTest, BadArgumentsAreRefusedWithAnErrorAndChangeNothing)
{
    orvtest::LogCapture capture;
    BehaviorGraph other(8);
    NamedBehavior* foreign = make("F");
    other.addBehavior(foreign, false);
    _graph->addBehavior(make("A"), false);
    _journal.clear();

    _graph->addBehavior(nullptr, false);
    _graph->addBehavior(foreign, false);
    _graph->addBehavior(_held[1].getImpl(), false);
    _graph->removeBehavior(nullptr);
    _graph->removeBehavior(foreign);
    EXPECT_EQ(3, capture.countLines(orv::LogSeverity::LOG_ERROR, {"Can not add behavior to behavior graph : "}))
        << capture.describe();
    EXPECT_EQ(2, capture.countLines(orv::LogSeverity::LOG_ERROR, {"Can not remove behavior from behavior graph : "}));
    EXPECT_TRUE(capture.hasLine(orv::LogSeverity::LOG_ERROR, {"another behavior graph"}));
    EXPECT_TRUE(_journal.empty());
    EXPECT_EQ(1u, _graph->getBehaviors().size());
    EXPECT_EQ(&other, foreign->getBehaviorGraph());
}

TEST_F(BehaviorGraphTest, AGraphThatGoesFreesAndUnlinksTheNodesHeldElsewhere)
{
    {
        BehaviorGraph graph(4);
        graph.addBehavior(make("A"), false);
        graph.addEntityToBehaviors(0);
        EXPECT_EQ(1, graph.getEntitySlotCount());
        _journal.clear();
    }
    EXPECT_EQ((Journal{"A doDeallocate()"}), _journal);
    EXPECT_EQ(nullptr, _held[0]->getBehaviorGraph());
}

TEST_F(BehaviorGraphTest, ASnapshotBringsTheGraphBackWithItsTypeItsNodesAndTheirRows)
{
    SavedBehavior::createClassRTTI(true);
    const std::string path = ::testing::TempDir() + "orvBehaviorGraphTest.bin";
    SavedBehavior* saved = new SavedBehavior();
    _type->addBehavior(saved, true);
    createEntities(2);
    _graph->init();
    _graph->init(1);
    _graph->update(0.5, 1);
    ASSERT_TRUE(_simulation->exportToBinary(path.c_str()));
    {
        orv::Simulation loaded(8, 0);
        ASSERT_TRUE(loaded.loadAndImportFromBinary(path.c_str()));
        orv::EntityType* type = loaded.getEntityType(0);
        const BehaviorGraph& graph = type->getBehaviorGraph();
        EXPECT_EQ(type, graph.getEntityType());
        EXPECT_TRUE(graph.isInitialized());
        EXPECT_EQ(8, graph.getMaxCount());
        ASSERT_EQ(1u, graph.getBehaviors().size());
        const AbstractBehavior* node = graph.getBehaviors()[0].getImpl();
        EXPECT_NE(saved, node);
        EXPECT_EQ(&graph, node->getBehaviorGraph());
        EXPECT_TRUE(node->isRunning(1));
        EXPECT_DOUBLE_EQ(0.5, node->getTime(1));
        EXPECT_EQ(RunStatus::IDLE, node->getRunStatus(0));
    }
    std::remove(path.c_str());
    _graph->removeBehavior(saved);
    SavedBehavior::destroyClassRTTI(true);
}

using BehaviorGraphDeathTest = BehaviorGraphTest;

TEST_F(BehaviorGraphDeathTest, AddingABehaviorToATypeOutsideASimulationIsFatal)
{
    orv::EntityType loose(4);
    EXPECT_DEATH(loose.addBehavior(make("A"), false), "Simulation needs a BehaviorContext to handle behaviors");
}

} // namespace
