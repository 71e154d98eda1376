// orvCore/engine/simulation/orvEntityType.cpp
#include "engine/simulation/orvEntityType.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(EntityType, "8a9663d5-6d5b-43d2-a72b-b3ce1fd66fd0", "orv::EntityType")

void EntityType::addAttributes()
{
    _rtti->addBaseClass<AbstractEntityType>();
    addAttribute("scaleMin", &EntityType::_scaleMin);
    addAttribute("scaleMax", &EntityType::_scaleMax);
    addAttribute("radius", &EntityType::_radius);
    addAttribute("height", &EntityType::_height);
    addAttribute("personalSpaceRadius", &EntityType::_personalSpaceRadius);
    addAttribute("characterFile", &EntityType::_characterFile);
    addAttribute("pelvisHeightRatio", &EntityType::_pelvisHeightRatio);
    addAttribute("colorABGR", &EntityType::_colorABGR);
}

EntityType::EntityType(int maxCount) : AbstractEntityType(maxCount)
{
}

} // namespace orv
