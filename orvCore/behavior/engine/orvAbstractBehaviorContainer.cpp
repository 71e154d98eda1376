// orvCore/behavior/engine/orvAbstractBehaviorContainer.cpp
#include "behavior/engine/orvAbstractBehaviorContainer.h"

namespace orv
{

AbstractBehaviorContainer::AbstractBehaviorContainer() = default;

AbstractBehaviorContainer::~AbstractBehaviorContainer() = default;

bool AbstractBehaviorContainer::hasChildBehavior(const AbstractBehavior* child) const
{
    if (child == nullptr)
    {
        return false;
    }
    for (const SmartPointer<AbstractBehavior>& held : _childrenBehaviors)
    {
        if (held.getImpl() == child)
        {
            return true;
        }
    }
    return false;
}

void AbstractBehaviorContainer::forceAsParentBehavior(AbstractBehavior* child)
{
    if (child != nullptr)
    {
        child->setParentBehavior(this);
    }
}

} // namespace orv
