// orvCore/behavior/utils/orvStaticTargetProvider.cpp
#include "behavior/utils/orvStaticTargetProvider.h"

#include "system/inspection/orvInspectable.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(StaticTargetProvider, "76a0a33d-fd23-4538-a6eb-e5ddc4ac20c6", "orv::StaticTargetProvider")

void StaticTargetProvider::addAttributes()
{
    _rtti->addBaseClass<AbstractTargetProvider>();
    addAttribute("target", &StaticTargetProvider::_target);
}

StaticTargetProvider::StaticTargetProvider() = default;

StaticTargetProvider::StaticTargetProvider(const Vector3& target) : _target(target)
{
}

StaticTargetProvider::~StaticTargetProvider() = default;

void StaticTargetProvider::computeTarget(int, Vector3& target, bool)
{
    target = _target;
}

} // namespace orv
