// tests/support/orvWanderScene.cpp
#include "support/orvWanderScene.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvConstantValueCallback.h"
#include "behavior/operators/orvAlternativeBehaviorOperator.h"
#include "behavior/operators/orvInitialBehaviorOperator.h"
#include "behavior/operators/orvLoopBehaviorOperator.h"
#include "behavior/operators/orvRandomBehaviorOperator.h"
#include "engine/simulation/orvAbstractEntityType.h"
#include "engine/simulation/orvSimulation.h"
#include "math/random/orvNoise.h"
#include "math/types/orvQuaternion.h"
#include "math/types/orvVector3.h"
#include "system/inspection/orvInspectable.h"

namespace
{

const float kPi = 3.14159265f;

uint32_t bitsOf(float value)
{
    uint32_t word;
    memcpy(&word, &value, sizeof(word));
    return word;
}

} // namespace

namespace orvtest
{

// A host class registers like the library's own, so that snapshots can make it again from its identifier.
ORV_IMPLEMENT_RTTI(WanderContext, "63602f45-86d9-4f32-bd16-3a6e7dc551ad", "orvtest::WanderContext")

void WanderContext::addAttributes()
{
    _rtti->addBaseClass<orv::IContext>();
    addAttribute("time", &WanderContext::_time);
    addAttribute("moves", &WanderContext::_moves);
}

void WanderContext::onInitEntityComponents(int first, int last)
{
    orv::EntitiesManager& manager = getSimulation()->touchEntitiesManager();
    for (int i = first; i <= last; ++i)
    {
        orv::Entity* entity = manager.getEntity(i);
        orv::RandomNumberGenerator& rng = entity->touchRNG();
        entity->setPosition(orv::Vector3(rng.frand(-50.0f, 50.0f), 0.0f, rng.frand(-50.0f, 50.0f)));
        setHeading(*entity, rng.frand(-kPi, kPi));
        entity->setSpeed(rng.frand(0.8f, 1.6f));
    }
}

void WanderContext::onUpdateEntityComponents(orv::Time dt, int first, int last)
{
    orv::EntitiesManager& manager = getSimulation()->touchEntitiesManager();
    const float step = static_cast<float>(dt);
    for (int i = first; i <= last; ++i)
    {
        orv::Entity* entity = manager.getEntity(i);
        orv::RandomNumberGenerator& rng = entity->touchRNG();
        // The phase spreads the entities over the noise, so that they do not all turn alike.
        const float phase = static_cast<float>(entity->getId()) * 0.37f;
        const float turnRate = orv::sdnoise1(_time * 0.5f + phase) * 1.5f + rng.frand(-0.2f, 0.2f);
        const float heading = getHeading(*entity) + turnRate * step;
        setHeading(*entity, heading);
        float speed = entity->getSpeed() + rng.frand(-0.05f, 0.05f);
        speed = speed < 0.5f ? 0.5f : (speed > 2.0f ? 2.0f : speed);
        entity->setSpeed(speed);
        orv::Vector3 position = entity->getPosition();
        position.x += std::sin(heading) * speed * step;
        position.z += std::cos(heading) * speed * step;
        entity->setPosition(position);
    }
}

// A heading is a rotation about the vertical axis, with 0 facing +z.
void WanderContext::setHeading(orv::Entity& entity, float heading)
{
    const orv::Quaternion orientation(0.0f, std::sin(heading * 0.5f), 0.0f, std::cos(heading * 0.5f));
    entity.setMoveOrientation(orientation);
    entity.setBodyOrientation(orientation);
}

float WanderContext::getHeading(const orv::Entity& entity)
{
    const orv::Quaternion& q = entity.getMoveOrientation();
    return 2.0f * std::atan2(q.y, q.w);
}

ORV_IMPLEMENT_ABSTRACT_RTTI(TimedBehavior, "0f4c4f5e-2d0b-4b8e-9f53-6d1f1b7a3c01", "orvtest::TimedBehavior")

void TimedBehavior::addAttributes()
{
    _rtti->addBaseClass<orv::AbstractUserBehavior>();
    addAttribute("remaining", &TimedBehavior::_remaining);
}

void TimedBehavior::doAddEntity(int entity)
{
    if (static_cast<size_t>(entity) >= _remaining.size())
    {
        _remaining.resize(static_cast<size_t>(entity) + 1, 0.0f);
    }
    if (static_cast<size_t>(entity) >= _runs.size())
    {
        _runs.resize(static_cast<size_t>(entity) + 1, 0u);
    }
}

unsigned long TimedBehavior::countRuns() const
{
    unsigned long runs = 0;
    for (uint32_t count : _runs)
    {
        runs += count;
    }
    return runs;
}

orv::Entity& TimedBehavior::touchEntity(int index)
{
    return *getBehaviorGraph()->getEntityType()->getEntity(index);
}

void TimedBehavior::doStart(int entity)
{
    // A row read from a file may have no time slot: the run then ends at its first step.
    if (static_cast<size_t>(entity) < _remaining.size())
    {
        _remaining[entity] = drawDuration(touchEntity(entity));
    }
    if (static_cast<size_t>(entity) < _runs.size())
    {
        ++_runs[entity];
    }
}

void TimedBehavior::doUpdate(Time dt, int entity)
{
    if (static_cast<size_t>(entity) >= _remaining.size() || getBehaviorGraph() == nullptr ||
        getBehaviorGraph()->getEntityType() == nullptr)
    {
        requestStop(entity);
        return;
    }
    const float step = static_cast<float>(dt);
    act(touchEntity(entity), step);
    _remaining[entity] -= step;
    if (_remaining[entity] <= 0.0f)
    {
        requestStop(entity);
    }
}

orv::AbstractBehavior::ResultStatus::Value TimedBehavior::doStop(Time, int)
{
    return ResultStatus::SUCCESS;
}

ORV_IMPLEMENT_RTTI(WalkBehavior, "6a3e52d4-6f51-4f0c-8d0e-1c9a7b2e4d02", "orvtest::WalkBehavior")

void WalkBehavior::addAttributes()
{
    _rtti->addBaseClass<TimedBehavior>();
}

float WalkBehavior::drawDuration(orv::Entity& entity)
{
    return entity.touchRNG().frand(1.0f, 3.0f);
}

void WalkBehavior::act(orv::Entity& entity, float dt)
{
    const float heading = WanderContext::getHeading(entity);
    orv::Vector3 position = entity.getPosition();
    position.x += std::sin(heading) * entity.getSpeed() * dt;
    position.z += std::cos(heading) * entity.getSpeed() * dt;
    entity.setPosition(position);
}

ORV_IMPLEMENT_RTTI(PauseBehavior, "8c1d7e3f-0a24-4e6b-b5d9-3e8f2a6c5b03", "orvtest::PauseBehavior")

void PauseBehavior::addAttributes()
{
    _rtti->addBaseClass<TimedBehavior>();
}

float PauseBehavior::drawDuration(orv::Entity& entity)
{
    return entity.touchRNG().frand(0.2f, 1.0f);
}

ORV_IMPLEMENT_RTTI(TurnBehavior, "9e2f8a40-1b35-4f7c-86ea-4f903b7d6c04", "orvtest::TurnBehavior")

void TurnBehavior::addAttributes()
{
    _rtti->addBaseClass<TimedBehavior>();
}

float TurnBehavior::drawDuration(orv::Entity& entity)
{
    return entity.touchRNG().frand(0.3f, 1.0f);
}

void TurnBehavior::act(orv::Entity& entity, float dt)
{
    // The rate follows from the entity's own generator state, so that a run turns one way throughout.
    const float rate = static_cast<float>(entity.getId() % 7) * 0.5f - 1.5f;
    WanderContext::setHeading(entity, WanderContext::getHeading(entity) + rate * dt);
}

ORV_IMPLEMENT_RTTI(WaypointWalkBehavior, "b3c4d5e6-7f80-4a1b-9c2d-5e6f7a8b9c05", "orvtest::WaypointWalkBehavior")

void WaypointWalkBehavior::addAttributes()
{
    _rtti->addBaseClass<TimedBehavior>();
    addAttribute("provider", &WaypointWalkBehavior::_provider);
}

WaypointWalkBehavior::WaypointWalkBehavior()
{
    const orv::Vector3 corners[] = {orv::Vector3(10.0f, 0.0f, 10.0f), orv::Vector3(-10.0f, 0.0f, 10.0f),
                                    orv::Vector3(-10.0f, 0.0f, -10.0f), orv::Vector3(10.0f, 0.0f, -10.0f)};
    _provider = orv::SmartPointer<orv::WaypointTargetProvider>(new orv::WaypointTargetProvider(nullptr, 4, corners));
    _provider->setTolerance(2.0f);
}

void WaypointWalkBehavior::setBehaviorGraph(orv::BehaviorGraph* graph)
{
    TimedBehavior::setBehaviorGraph(graph);
    if (_provider.getImpl() != nullptr)
    {
        _provider->setBehaviorGraph(graph);
    }
}

void WaypointWalkBehavior::doAddEntity(int entity)
{
    TimedBehavior::doAddEntity(entity);
    // The provider's entry for the entity is made here, on the host thread, and not by a worker.
    orv::Vector3 target;
    if (_provider.getImpl() != nullptr && getBehaviorGraph() != nullptr &&
        getBehaviorGraph()->getEntityType() != nullptr)
    {
        _provider->computeTarget(entity, target, false);
    }
}

float WaypointWalkBehavior::drawDuration(orv::Entity& entity)
{
    return entity.touchRNG().frand(1.0f, 3.0f);
}

void WaypointWalkBehavior::act(orv::Entity& entity, float dt)
{
    if (_provider.getImpl() == nullptr)
    {
        return;
    }
    orv::Vector3 target;
    _provider->computeTarget(entity.getIndexInEntityType(), target, false);
    orv::Vector3 position = entity.getPosition();
    const float dx = target.x - position.x;
    const float dz = target.z - position.z;
    const float distance = std::sqrt(dx * dx + dz * dz);
    if (distance > 1e-3f)
    {
        const float heading = std::atan2(dx, dz);
        WanderContext::setHeading(entity, heading);
        const float step = std::min(distance, entity.getSpeed() * dt);
        position.x += dx / distance * step;
        position.z += dz / distance * step;
        entity.setPosition(position);
    }
}

ORV_IMPLEMENT_RTTI(EveryFourthEntity, "c4d5e6f7-8091-4b2c-8d3e-6f7a8b9c0d06", "orvtest::EveryFourthEntity")

void EveryFourthEntity::addAttributes()
{
    _rtti->addBaseClass<orv::ITypedCallBack<bool>>();
}

namespace
{

void addBranchRuns(const orv::AbstractBehavior& node, WanderBranchCounts& counts)
{
    if (const auto* walk = dynamic_cast<const WalkBehavior*>(&node))
    {
        counts._walk += walk->countRuns();
    }
    else if (const auto* turn = dynamic_cast<const TurnBehavior*>(&node))
    {
        counts._turn += turn->countRuns();
    }
    else if (const auto* pause = dynamic_cast<const PauseBehavior*>(&node))
    {
        counts._pause += pause->countRuns();
    }
    else if (const auto* waypoints = dynamic_cast<const WaypointWalkBehavior*>(&node))
    {
        counts._waypoints += waypoints->countRuns();
    }
    if (const auto* container = dynamic_cast<const orv::AbstractBehaviorContainer*>(&node))
    {
        for (const orv::SmartPointer<orv::AbstractBehavior>& child : container->getChildrenBehaviors())
        {
            if (child.getImpl() != nullptr)
            {
                addBranchRuns(*child, counts);
            }
        }
    }
}

} // namespace

WanderBranchCounts countWanderBranches(const orv::Simulation& simulation)
{
    WanderBranchCounts counts;
    for (int type = 0; type < simulation.getEntityTypeCount(); ++type)
    {
        for (const orv::SmartPointer<orv::AbstractBehavior>& behavior :
             simulation.getEntityType(type)->getBehaviorGraph().getBehaviors())
        {
            if (behavior.getImpl() != nullptr)
            {
                addBranchRuns(*behavior, counts);
            }
        }
    }
    return counts;
}

void registerWanderClasses(bool doRegister)
{
    if (doRegister)
    {
        WanderContext::createClassRTTI(true);
        TimedBehavior::createClassRTTI(true);
        WalkBehavior::createClassRTTI(true);
        PauseBehavior::createClassRTTI(true);
        TurnBehavior::createClassRTTI(true);
        WaypointWalkBehavior::createClassRTTI(true);
        EveryFourthEntity::createClassRTTI(true);
    }
    else
    {
        EveryFourthEntity::destroyClassRTTI(true);
        WaypointWalkBehavior::destroyClassRTTI(true);
        TurnBehavior::destroyClassRTTI(true);
        PauseBehavior::destroyClassRTTI(true);
        WalkBehavior::destroyClassRTTI(true);
        TimedBehavior::destroyClassRTTI(true);
        WanderContext::destroyClassRTTI(true);
    }
}

orv::AbstractBehavior* buildWanderGraph()
{
    // Inner chart: a random choice of walking or turning, then the alternative of waypoints or a pause.
    orv::CompositeBehavior* steps = new orv::CompositeBehavior();
    orv::RandomBehaviorOperator* choice = new orv::RandomBehaviorOperator();
    orv::AbstractUserBehavior* walk = new WalkBehavior();
    orv::AbstractUserBehavior* turn = new TurnBehavior();
    orv::AlternativeBehaviorOperator* route = new orv::AlternativeBehaviorOperator();
    orv::AbstractUserBehavior* pause = new PauseBehavior();
    orv::AbstractUserBehavior* waypoints = new WaypointWalkBehavior();
    for (orv::AbstractBehavior* node :
         {static_cast<orv::AbstractBehavior*>(choice), static_cast<orv::AbstractBehavior*>(walk),
          static_cast<orv::AbstractBehavior*>(turn), static_cast<orv::AbstractBehavior*>(route),
          static_cast<orv::AbstractBehavior*>(pause), static_cast<orv::AbstractBehavior*>(waypoints)})
    {
        steps->addChildBehavior(node);
    }
    static_cast<orv::InitialBehaviorOperator*>(steps->touchInitialBehavior())->setNextBehavior(choice);
    choice->addRandomNextBehavior(walk, orv::ScalarCallBackPointer<float>(new orv::ConstantValueCallback<float>(3.0f)),
                                  orv::BoolCallBackPointer());
    choice->addRandomNextBehavior(turn, orv::ScalarCallBackPointer<float>(new orv::ConstantValueCallback<float>(1.0f)),
                                  orv::BoolCallBackPointer());
    walk->setNextBehavior(route);
    turn->setNextBehavior(route);
    route->setDefaultNextBehavior(pause);
    route->addConditionalNextBehavior(waypoints, orv::BoolCallBackPointer(new EveryFourthEntity()));
    pause->setNextBehavior(steps->touchFinalBehavior());
    waypoints->setNextBehavior(steps->touchFinalBehavior());

    // Outer chart: the inner one over and over.
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

orv::Simulation* buildWanderingWorld(int entityCount, int typeCount, bool withGraph)
{
    orv::Simulation* simulation = new orv::Simulation(entityCount, 0);
    simulation->addContext(new WanderContext(!withGraph));
    for (int t = 0; t < typeCount; ++t)
    {
        orv::EntityType* type = simulation->getEntityType(simulation->createEntityType(entityCount));
        type->setScaleRange(0.9f, 1.1f);
        type->setHeight(1.6f + 0.1f * static_cast<float>(t % 4));
        if (withGraph)
        {
            type->addBehavior(buildWanderGraph(), true);
        }
    }
    for (int i = 0; i < entityCount; ++i)
    {
        simulation->createEntity(static_cast<unsigned int>(i % typeCount));
    }
    return simulation;
}

std::vector<uint32_t> getPosesInHandleOrder(const orv::Simulation& simulation)
{
    std::vector<const orv::Entity*> entities;
    for (const orv::Entity& entity : simulation.getEntitiesManager().getEntities())
    {
        entities.push_back(&entity);
    }
    std::sort(entities.begin(), entities.end(),
              [](const orv::Entity* a, const orv::Entity* b) { return a->getHandle()._index < b->getHandle()._index; });
    std::vector<uint32_t> words;
    for (const orv::Entity* entity : entities)
    {
        const orv::Vector3& p = entity->getPosition();
        const orv::Quaternion& q = entity->getMoveOrientation();
        words.insert(words.end(), {entity->getHandle().getUint32(), bitsOf(p.x), bitsOf(p.y), bitsOf(p.z), bitsOf(q.x),
                                   bitsOf(q.y), bitsOf(q.z), bitsOf(q.w)});
    }
    return words;
}

} // namespace orvtest
