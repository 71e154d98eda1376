#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "behavior/behaviors/orvAbstractUserBehavior.h"
#include "behavior/callBacks/orvTriggerWorld.h"
#include "behavior/utils/orvStaticArrayTargetProvider.h"
#include "behavior/utils/orvStaticTargetProvider.h"
#include "behavior/utils/orvWaypointTargetProvider.h"
#include "engine/simulation/orvAbstractEntityType.h"
#include "engine/simulation/orvEntity.h"
#include "support/orvCoreTestSupport.h"
#include "support/orvLogCapture.h"
#include "system/serialization/orvBinaryStream.h"

namespace
{

using orv::AbstractTargetProvider;
using orv::SmartPointer;
using orv::StaticArrayTargetProvider;
using orv::StaticTargetProvider;
using orv::Vector3;
using orv::WaypointTargetProvider;

const Vector3 kSquare[] = {Vector3(4.0f, 0.0f, 0.0f), Vector3(4.0f, 4.0f, 0.0f), Vector3(0.0f, 4.0f, 0.0f)};

using StaticTargetProvidersTest = orvtest::CoreTest;

TEST_F(StaticTargetProvidersTest, AFixedPointForAllAndAThreeTargetTableThatRepeats)
{
    orvtest::LogCapture log;
    StaticTargetProvider fixed(Vector3(1.0f, 2.0f, 3.0f));
    Vector3 target;
    fixed.computeTarget(7, target, true);
    EXPECT_EQ(Vector3(1.0f, 2.0f, 3.0f), target);
    EXPECT_TRUE(fixed.isUltimateTarget(7));

    StaticArrayTargetProvider table(3, kSquare);
    Vector3 first;
    Vector3 fourth;
    table.computeTarget(0, first, false);
    table.computeTarget(3, fourth, false);
    EXPECT_EQ(kSquare[0], first);
    EXPECT_EQ(first, fourth);
    // Bad arguments are logged and change nothing.
    table.setTarget(3, Vector3(9.0f, 9.0f, 9.0f));
    table.computeTarget(-1, target, false);
    EXPECT_EQ(Vector3(1.0f, 2.0f, 3.0f), target);
    EXPECT_TRUE(StaticArrayTargetProvider(2, nullptr).getTargets().empty());
    EXPECT_EQ(3, log.countLines(orv::LogSeverity::LOG_ERROR, {"Cannot"})) << log.describe();
}

using StaticTargetProvidersDeathTest = StaticTargetProvidersTest;

TEST_F(StaticTargetProvidersDeathTest, AnEmptyTableIsFatalWhenATargetIsAsked)
{
    StaticArrayTargetProvider provider;
    Vector3 target;
    EXPECT_DEATH(provider.computeTarget(0, target, false), "the table is empty");
}

/// A world of two entities whose positions the tests set, and a waypoint provider on its graph.
class WaypointTargetProviderTest : public orvtest::TriggerWorld
{
protected:
    orv::Entity* entity(int slot) { return _simulation->getEntityType(_typeId)->getEntity(slot); }
    Vector3 ask(WaypointTargetProvider& provider, int slot)
    {
        Vector3 target;
        provider.computeTarget(slot, target, false);
        return target;
    }
};

TEST_F(WaypointTargetProviderTest, AnEntityExactlyAtTheToleranceAdvancesOneStepPerCall)
{
    // Waypoints 0 and 1 are both within reach of the origin: one call still moves on by one only.
    const Vector3 points[] = {Vector3(0.0f, 2.0f, 0.0f), Vector3(0.0f, 0.0f, 0.0f), Vector3(8.0f, 0.0f, 0.0f)};
    WaypointTargetProvider provider(graph(), 3, points);
    provider.setTolerance(2.0f);
    entity(0)->setPosition(Vector3(0.0f, 0.0f, 0.0f));
    EXPECT_EQ(points[1], ask(provider, 0));
    EXPECT_EQ(points[2], ask(provider, 0));
    EXPECT_EQ(points[2], ask(provider, 0));
    EXPECT_TRUE(provider.isUltimateTarget(0));
    // The other entity keeps its own progress, and the height counts in the distance.
    entity(1)->setPosition(Vector3(0.0f, 2.0f, 2.01f));
    EXPECT_EQ(points[0], ask(provider, 1));
    EXPECT_FALSE(provider.isUltimateTarget(1));
    EXPECT_EQ(2, provider.getCurrentTargets().find(0).getValue());
}

TEST_F(WaypointTargetProviderTest, TheLastWaypointStaysWithoutAnyDistanceComputed)
{
    orvtest::LogCapture log;
    // Without a graph no position can be had: a call that needed one would log.
    WaypointTargetProvider single(nullptr, 1, kSquare);
    EXPECT_TRUE(single.isUltimateTarget(0));
    EXPECT_EQ(kSquare[0], ask(single, 0));
    EXPECT_EQ(kSquare[0], ask(single, 0));
    EXPECT_TRUE(single.isUltimateTarget(0));
    EXPECT_TRUE(log.getLines().empty()) << log.describe();
}

TEST_F(WaypointTargetProviderTest, BadArgumentsAreLoggedAndNoStepIsTaken)
{
    orvtest::LogCapture log;
    WaypointTargetProvider graphless(nullptr, 3, kSquare);
    graphless.setTolerance(100.0f);
    EXPECT_EQ(kSquare[0], ask(graphless, 0));

    WaypointTargetProvider provider(graph(), 3, kSquare);
    provider.setTolerance(100.0f);
    EXPECT_EQ(kSquare[0], ask(provider, 5)); // no entity in slot 5
    Vector3 untouched(7.0f, 7.0f, 7.0f);
    provider.computeTarget(-1, untouched, false);
    WaypointTargetProvider empty(graph(), 0, nullptr);
    empty.computeTarget(0, untouched, false);
    EXPECT_EQ(Vector3(7.0f, 7.0f, 7.0f), untouched);
    EXPECT_FALSE(empty.isUltimateTarget(0));
    EXPECT_TRUE(provider.getCurrentTargets().find(-1) == provider.getCurrentTargets().end());

    provider.setTolerance(-1.0f);
    EXPECT_FLOAT_EQ(100.0f, provider.getTolerance());
    provider.setTarget(3, Vector3());
    WaypointTargetProvider fromNull(graph(), 2, nullptr);
    EXPECT_TRUE(fromNull.getTargets().empty());
    EXPECT_EQ(7, log.countLines(orv::LogSeverity::LOG_ERROR, {"Cannot"})) << log.describe();
}

TEST_F(WaypointTargetProviderTest, AttributesGoUnderTheirNamesAndAStreamDropsTheTolerance)
{
    EXPECT_NE(nullptr, StaticTargetProvider::getClassRTTI()->getAttribute("target"));
    EXPECT_NE(nullptr, StaticArrayTargetProvider::getClassRTTI()->getAttribute("targets"));
    const orv::RTTI* rtti = WaypointTargetProvider::getClassRTTI();
    EXPECT_NE(nullptr, rtti->getAttribute("Targets"));
    EXPECT_NE(nullptr, rtti->getAttribute("Current Target"));
    EXPECT_NE(nullptr, rtti->getAttribute("Behavior Graph"));
    WaypointTargetProvider* written = new WaypointTargetProvider(graph(), 3, kSquare);
    SmartPointer<AbstractTargetProvider> held(written);
    written->setTolerance(100.0f);
    ask(*written, 1);
    // A graph belongs to its world: the copy is made without it.
    written->setBehaviorGraph(nullptr);
    orv::BinaryStream stream;
    stream.pack(held);
    SmartPointer<AbstractTargetProvider> read;
    stream.unpack(read);
    auto* copy = dynamic_cast<WaypointTargetProvider*>(read.getImpl());
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(3u, copy->getTargets().size());
    EXPECT_EQ(1, copy->getCurrentTargets().find(1).getValue());
    EXPECT_FLOAT_EQ(1.0f, copy->getTolerance());
}

/// A host behaviour that walks its entity towards the targets of a provider at a fixed speed, and stops once it
/// stands on its last target.
class Walker : public orv::AbstractUserBehavior
{
public:
    Walker(AbstractTargetProvider* provider, float speed) : _provider(provider), _speed(speed) {}
    bool checkNextBehaviorCandidatesConnection() const override { return true; }

protected:
    bool doInit() override { return true; }
    void doFinish() override {}
    void doStart(int) override {}
    void doUpdate(Time dt, int slot) override
    {
        orv::Entity* walker = getBehaviorGraph()->getEntityType()->getEntity(slot);
        Vector3 target;
        _provider->computeTarget(slot, target, false);
        const Vector3 offset = target - walker->getPosition();
        const float distance = std::sqrt(orv::dotProduct(offset, offset));
        const float step = _speed * static_cast<float>(dt);
        walker->setPosition(distance <= step ? target : walker->getPosition() + offset * (step / distance));
        if (distance <= step && _provider->isUltimateTarget(slot))
        {
            requestStop(slot);
        }
    }
    ResultStatus::Value doStop(Time, int) override { return ResultStatus::SUCCESS; }

private:
    SmartPointer<AbstractTargetProvider> _provider;
    float _speed;
};

TEST_F(WaypointTargetProviderTest, EntitiesOfASimulationWalkTheListToItsEnd)
{
    WaypointTargetProvider* provider = new WaypointTargetProvider(graph(), 3, kSquare);
    provider->setTolerance(0.5f);
    Walker* walker = new Walker(provider, 1.0f);
    graph()->addBehavior(walker, true);
    entity(0)->setPosition(Vector3(0.0f, 0.0f, 0.0f));
    entity(1)->setPosition(Vector3(4.0f, -3.0f, 0.0f));
    graph()->init();
    // First calls come one entity after the other, as the provider asks.
    for (int slot = 0; slot < 2; ++slot)
    {
        graph()->init(slot);
    }
    float nearestToCorner[2] = {100.0f, 100.0f};
    for (int frame = 0; frame < 100; ++frame)
    {
        for (int slot = 0; slot < 2; ++slot)
        {
            graph()->update(0.25, slot);
            const Vector3 offset = entity(slot)->getPosition() - kSquare[1];
            nearestToCorner[slot] = std::min(nearestToCorner[slot], std::sqrt(orv::dotProduct(offset, offset)));
        }
        nextFrame(0.25);
    }
    for (int slot = 0; slot < 2; ++slot)
    {
        EXPECT_GE(0.5f, nearestToCorner[slot]) << slot;
        EXPECT_TRUE(provider->isUltimateTarget(slot)) << slot;
        EXPECT_EQ(kSquare[2], entity(slot)->getPosition()) << slot;
        EXPECT_EQ(orv::AbstractBehavior::RunStatus::IDLE, walker->getRunStatus(slot)) << slot;
        EXPECT_EQ(orv::AbstractBehavior::ResultStatus::SUCCESS, walker->getResultStatus(slot)) << slot;
    }
}

} // namespace
