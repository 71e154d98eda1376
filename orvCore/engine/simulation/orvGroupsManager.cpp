// orvCore/engine/simulation/orvGroupsManager.cpp
#include "engine/simulation/orvGroupsManager.h"

namespace orv
{

GroupsManager::GroupsManager(int capacity)
{
    setMaxGroups(capacity);
}

void GroupsManager::initGroup(EntityHandle) {}

void GroupsManager::reset() {}

void GroupsManager::updateGroups() {}

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
