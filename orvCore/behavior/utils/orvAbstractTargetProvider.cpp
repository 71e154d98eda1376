// orvCore/behavior/utils/orvAbstractTargetProvider.cpp
#include "behavior/utils/orvAbstractTargetProvider.h"

#include "system/inspection/orvInspectable.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(AbstractTargetProvider, "6a5ff3b8-c7d8-4b9e-8e8c-5c53bfb5c04f",
                            "orv::AbstractTargetProvider")

void AbstractTargetProvider::addAttributes()
{
    _rtti->addBaseClass<ReferenceCounter>();
}

AbstractTargetProvider::AbstractTargetProvider() = default;

AbstractTargetProvider::~AbstractTargetProvider() = default;

bool AbstractTargetProvider::isUltimateTarget(int) const
{
    return true;
}

} // namespace orv
