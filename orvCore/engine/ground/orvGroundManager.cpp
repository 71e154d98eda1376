// orvCore/engine/ground/orvGroundManager.cpp
#include "engine/ground/orvGroundManager.h"

#include "system/inspection/orvAttribute.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(GroundManager, "59f89947-2655-4251-b669-e58081ac04ea", "orv::GroundManager")

void GroundManager::addAttributes()
{
    addAttribute("running", &GroundManager::_running);
}

void GroundManager::init()
{
    _running = true;
}

void GroundManager::update(Time)
{
}

void GroundManager::finish()
{
    _running = false;
}

void GroundManager::reset()
{
    _running = false;
}

} // namespace orv
