// orvCore/behavior/utils/orvStaticArrayTargetProvider.cpp
#include "behavior/utils/orvStaticArrayTargetProvider.h"

#include "system/debug/orvAssert.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(StaticArrayTargetProvider, "a63b262e-107c-4ff8-8517-fd993ca41f78", "orv::StaticArrayTargetProvider")

void StaticArrayTargetProvider::addAttributes()
{
    _rtti->addBaseClass<AbstractTargetProvider>();
    addAttribute("targets", &StaticArrayTargetProvider::_targets);
}

StaticArrayTargetProvider::StaticArrayTargetProvider() = default;

StaticArrayTargetProvider::StaticArrayTargetProvider(int count, const Vector3* targets)
{
    if (count < 0 || (count > 0 && targets == nullptr))
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot build a static array target provider from "
                                               << count << " targets at " << static_cast<const void*>(targets));
        return;
    }
    _targets.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
    {
        _targets.push_back(targets[i]);
    }
}

StaticArrayTargetProvider::StaticArrayTargetProvider(const Array<Vector3>& targets) : _targets(targets)
{
}

StaticArrayTargetProvider::~StaticArrayTargetProvider() = default;

void StaticArrayTargetProvider::computeTarget(int entity, Vector3& target, bool)
{
    // The modulo needs a table: an empty one is the host's mistake, not a state to run in.
    orvAssertMsg(!_targets.empty(), "StaticArrayTargetProvider::computeTarget needs at least one target, the table "
                                    "is empty");
    if (entity < 0)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot compute a target for entity " << entity);
        return;
    }
    target = _targets[static_cast<size_t>(entity) % _targets.size()];
}

void StaticArrayTargetProvider::setTarget(int index, const Vector3& target)
{
    if (index < 0 || static_cast<size_t>(index) >= _targets.size())
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Cannot set target " << index << " of a table of " << _targets.size() << " targets");
        return;
    }
    _targets[static_cast<size_t>(index)] = target;
}

} // namespace orv
