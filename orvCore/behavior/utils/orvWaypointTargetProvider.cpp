// orvCore/behavior/utils/orvWaypointTargetProvider.cpp
#include "behavior/utils/orvWaypointTargetProvider.h"

#include <cmath>

#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvAbstractEntityType.h"
#include "engine/simulation/orvEntity.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(WaypointTargetProvider, "17dcb355-7482-4513-a6d7-0edc1936d078", "orv::WaypointTargetProvider")

void WaypointTargetProvider::addAttributes()
{
    _rtti->addBaseClass<AbstractTargetProvider>();
    addAttribute("Targets", &WaypointTargetProvider::_targets);
    addAttribute("Current Target", &WaypointTargetProvider::_currentTarget);
    addAttribute("Behavior Graph", &WaypointTargetProvider::_behaviorGraph);
}

WaypointTargetProvider::WaypointTargetProvider() = default;

WaypointTargetProvider::WaypointTargetProvider(BehaviorGraph* graph, int count, const Vector3* targets)
    : _behaviorGraph(graph)
{
    assignTargets(count, targets);
}

WaypointTargetProvider::WaypointTargetProvider(BehaviorGraph* graph, const Array<Vector3>& targets)
    : _targets(targets), _behaviorGraph(graph)
{
}

WaypointTargetProvider::~WaypointTargetProvider() = default;

void WaypointTargetProvider::computeTarget(int entity, Vector3& target, bool)
{
    if (_targets.empty() || entity < 0)
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Cannot compute a target for entity " << entity << " among " << _targets.size() << " waypoints");
        return;
    }
    // Only the first call of an entity inserts; later calls change the entity's own value.
    int& reached = _currentTarget[entity];
    const int last = static_cast<int>(_targets.size()) - 1;
    if (reached < 0 || reached > last)
    {
        // An entry read from a stream may lie outside the list.
        reached = reached < 0 ? 0 : last;
    }
    if (reached < last)
    {
        Vector3 position;
        if (findPosition(entity, position))
        {
            const Vector3 offset = _targets[static_cast<size_t>(reached)] - position;
            if (_tolerance2 >= dotProduct(offset, offset))
            {
                ++reached;
            }
        }
    }
    target = _targets[static_cast<size_t>(reached)];
}

bool WaypointTargetProvider::isUltimateTarget(int entity) const
{
    if (_targets.empty())
    {
        return false;
    }
    const OrvMap<int, int>::const_iterator found = _currentTarget.find(entity);
    const int reached = found == _currentTarget.end() ? 0 : found.getValue();
    return reached >= static_cast<int>(_targets.size()) - 1;
}

void WaypointTargetProvider::setTarget(int index, const Vector3& target)
{
    if (index < 0 || static_cast<size_t>(index) >= _targets.size())
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Cannot set waypoint " << index << " of a list of " << _targets.size() << " waypoints");
        return;
    }
    _targets[static_cast<size_t>(index)] = target;
}

float WaypointTargetProvider::getTolerance() const
{
    return std::sqrt(_tolerance2);
}

void WaypointTargetProvider::setTolerance(float tolerance)
{
    if (!(tolerance >= 0.0f))
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot set the waypoint tolerance to " << tolerance);
        return;
    }
    _tolerance2 = tolerance * tolerance;
}

void WaypointTargetProvider::assignTargets(int count, const Vector3* targets)
{
    if (count < 0 || (count > 0 && targets == nullptr))
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot build a waypoint target provider from "
                                               << count << " waypoints at " << static_cast<const void*>(targets));
        return;
    }
    _targets.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
    {
        _targets.push_back(targets[i]);
    }
}

bool WaypointTargetProvider::findPosition(int entity, Vector3& position) const
{
    const AbstractEntityType* type = _behaviorGraph != nullptr ? _behaviorGraph->getEntityType() : nullptr;
    if (type == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot walk entity "
                                               << entity
                                               << " along its waypoints : no graph, or a graph without entity type");
        return false;
    }
    const Entity* found = entity >= 0 && entity < type->getHandleCount() ? type->getEntity(entity) : nullptr;
    if (found == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Cannot walk entity " << entity << " along its waypoints : the entity type holds no such entity");
        return false;
    }
    position = found->getPosition();
    return true;
}

} // namespace orv
