// orvCore/engine/simulation/orvGroupsManager.cpp
#include "engine/simulation/orvGroupsManager.h"

namespace orv
{

ORV_IMPLEMENT_ABSTRACT_RTTI(GroupsManager, "8ce9f76e-a46a-4271-ae17-8d5abc4a7ca1", "orv::GroupsManager")

void GroupsManager::addAttributes()
{
}

GroupsManager::GroupsManager(int capacity)
{
    setMaxGroups(capacity);
}

void GroupsManager::initGroup(EntityHandle)
{
}

void GroupsManager::reset()
{
}

void GroupsManager::updateGroups()
{
}

void GroupsManager::setMaxGroups(int capacity)
{
    _maxGroups = capacity;
}

bool GroupsManager::isValidEntityHandle(EntityHandle) const
{
    return false;
}

Group* GroupsManager::getGroup(EntityHandle) const
{
    return nullptr;
}

Group* GroupsManager::getGroup(int) const
{
    return nullptr;
}

} // namespace orv
