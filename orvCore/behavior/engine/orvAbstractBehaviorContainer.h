// orvCore/behavior/engine/orvAbstractBehaviorContainer.h
#pragma once

#include "behavior/engine/orvAbstractBehavior.h"
#include "system/containers/orvArray.h"
#include "system/inspection/orvSmartPointer.h"

namespace orv
{

class CompositeBehavior;

/// The second base of every behaviour that holds children: it owns them, in insertion order, and knows the
/// nearest enclosing composite. Today it gives the ownership and the lock; adding, removing and checking children
/// belong to the concrete containers. Changed on one thread while nothing updates.
class AbstractBehaviorContainer
{
public:
    /// No child, no composite.
    AbstractBehaviorContainer();
    /// Lets the children go; their parent links are left as they are.
    virtual ~AbstractBehaviorContainer();

    /// True when the children and their followers may not be edited.
    virtual bool isLocked() const = 0;

    /// The children, owned, in insertion order.
    const Array<SmartPointer<AbstractBehavior>>& getChildrenBehaviors() const { return _childrenBehaviors; }
    Array<SmartPointer<AbstractBehavior>>& touchChildrenBehaviors() { return _childrenBehaviors; }
    /// True when child is one of the children; false for null.
    bool hasChildBehavior(const AbstractBehavior* child) const;

    /// The nearest enclosing composite, or null until the node's init() has set it; not owned.
    CompositeBehavior* getParentComposite() const { return _parentComposite; }
    void setParentComposite(CompositeBehavior* composite) { _parentComposite = composite; }

protected:
    /// Makes this container child's parent, without any check; nothing for null.
    void forceAsParentBehavior(AbstractBehavior* child);

private:
    Array<SmartPointer<AbstractBehavior>> _childrenBehaviors;
    CompositeBehavior* _parentComposite = nullptr;
};

} // namespace orv
