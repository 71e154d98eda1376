// orvCore/behavior/engine/orvAbstractBehaviorContainer.cpp
#include "behavior/engine/orvAbstractBehaviorContainer.h"

#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvAbstractEntityType.h"
#include "system/containers/orvString.h"
#include "system/inspection/orvRTTI.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

AbstractBehaviorContainer::AbstractBehaviorContainer() = default;

AbstractBehaviorContainer::~AbstractBehaviorContainer() = default;

bool AbstractBehaviorContainer::addChildBehavior(AbstractBehavior* child)
{
    OrvString reason("Can not add child behavior to behavior container : ");
    const AbstractBehavior* self = dynamic_cast<const AbstractBehavior*>(this);
    const AbstractBehaviorContainer* childContainer = dynamic_cast<const AbstractBehaviorContainer*>(child);
    if (isLocked())
    {
        reason += "behavior container is locked";
    }
    else if (child == nullptr)
    {
        reason += "child behavior is NULL";
    }
    else if (child->getParentBehavior() == this)
    {
        reason += "child behavior already belongs to current behavior container";
    }
    else if (self != nullptr && childContainer != nullptr &&
             (childContainer == this || self->hasAncestorBehavior(childContainer)))
    {
        // A container is its own ancestor here: taking itself as a child would make the tree a cycle.
        reason += "child behavior is an ancestor of current behavior container";
    }
    else if (child->getParentBehavior() != nullptr)
    {
        reason += "child behavior already belongs to another behavior container but can not be removed from this "
                  "other behavior container";
    }
    else
    {
        child->setParentBehavior(this);
        _childrenBehaviors.push_back(SmartPointer<AbstractBehavior>(child));
        return true;
    }
    orvLogCore(LogSeverity::LOG_ERROR, reason.c_str());
    return false;
}

bool AbstractBehaviorContainer::removeChildBehavior(AbstractBehavior* child)
{
    OrvString reason("Can not remove child behavior from behavior container : ");
    if (isLocked())
    {
        reason += "behavior container is locked";
    }
    else if (child == nullptr)
    {
        reason += "child behavior is NULL";
    }
    else if (child->getParentBehavior() != this)
    {
        reason += "child behavior does not belong to current behavior container";
    }
    else
    {
        for (SmartPointer<AbstractBehavior>* entry = _childrenBehaviors.begin(); entry != _childrenBehaviors.end();
             ++entry)
        {
            if (entry->getImpl() == child)
            {
                // Hold the child while it is unlinked: the entry may be its last holder.
                SmartPointer<AbstractBehavior> hold(*entry);
                _childrenBehaviors.erase(entry);
                child->setParentBehavior(nullptr);
                return true;
            }
        }
        reason += "child behavior has not been found in current behavior container";
    }
    orvLogCore(LogSeverity::LOG_ERROR, reason.c_str());
    return false;
}

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

void AbstractBehaviorContainer::findChildrenBehaviors(const RTTI& rtti, Array<AbstractBehavior*>& found) const
{
    found.clear();
    // Breadth first: the containers met are walked in the order they were met.
    Array<const AbstractBehaviorContainer*> containers;
    containers.push_back(this);
    for (size_t next = 0; next < containers.size(); ++next)
    {
        for (const SmartPointer<AbstractBehavior>& child : containers[next]->_childrenBehaviors)
        {
            AbstractBehavior* node = child.getImpl();
            if (node == nullptr)
            {
                continue;
            }
            if (node->getRTTI()->isDerivedFrom(rtti))
            {
                found.push_back(node);
            }
            if (const AbstractBehaviorContainer* nested = dynamic_cast<const AbstractBehaviorContainer*>(node))
            {
                containers.push_back(nested);
            }
        }
    }
}

AbstractBehavior* AbstractBehaviorContainer::findFirstChildBehavior(const RTTI& rtti) const
{
    Array<AbstractBehavior*> found;
    findChildrenBehaviors(rtti, found);
    return found.empty() ? nullptr : found[0];
}

void AbstractBehaviorContainer::addUpdatedBehaviorToHistory(int entity, AbstractBehavior* behavior)
{
    if (_parentComposite != nullptr)
    {
        _parentComposite->addToHistory(entity, behavior);
    }
}

void AbstractBehaviorContainer::forceAsParentBehavior(AbstractBehavior* child)
{
    if (child != nullptr)
    {
        child->setParentBehavior(this);
    }
}

void AbstractBehaviorContainer::setBehaviorGraphOnChildren(BehaviorGraph* graph)
{
    for (SmartPointer<AbstractBehavior>& child : _childrenBehaviors)
    {
        if (child.getImpl() != nullptr)
        {
            child->setBehaviorGraph(graph);
        }
    }
}

void AbstractBehaviorContainer::doAllocateChildren(int capacity)
{
    for (SmartPointer<AbstractBehavior>& child : _childrenBehaviors)
    {
        if (child.getImpl() != nullptr)
        {
            child->allocate(capacity);
        }
    }
}

void AbstractBehaviorContainer::doDeallocateChildren()
{
    for (SmartPointer<AbstractBehavior>& child : _childrenBehaviors)
    {
        if (child.getImpl() != nullptr)
        {
            child->deallocate();
        }
    }
}

bool AbstractBehaviorContainer::initChildren()
{
    for (size_t i = 0; i < _childrenBehaviors.size(); ++i)
    {
        AbstractBehavior* child = _childrenBehaviors[i].getImpl();
        if (child == nullptr)
        {
            continue;
        }
        child->init();
        if (!child->isInitialized())
        {
            // All or nothing: the children initialised so far are finished again.
            for (size_t j = 0; j < i; ++j)
            {
                if (_childrenBehaviors[j].getImpl() != nullptr)
                {
                    _childrenBehaviors[j]->finish();
                }
            }
            return false;
        }
    }
    return true;
}

void AbstractBehaviorContainer::joinGraph(AbstractBehavior& owner, AbstractBehavior& child)
{
    BehaviorGraph* graph = owner.getBehaviorGraph();
    if (graph == nullptr)
    {
        return;
    }
    child.setBehaviorGraph(graph);
    child.allocate(graph->getMaxEntityCount());
    // The type's slots in use, free ones skipped; a graph held by no type has no entity yet.
    if (const AbstractEntityType* entityType = graph->getEntityType())
    {
        for (int slot = 0; slot < entityType->getHandleCount(); ++slot)
        {
            if (entityType->isIndexInUse(slot))
            {
                child.addEntity(slot);
            }
        }
    }
}

void AbstractBehaviorContainer::leaveGraph(AbstractBehavior& owner, AbstractBehavior& child)
{
    if (owner.getBehaviorGraph() != nullptr)
    {
        child.setBehaviorGraph(nullptr);
        child.deallocate();
    }
}

} // namespace orv
