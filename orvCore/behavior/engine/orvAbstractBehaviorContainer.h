// orvCore/behavior/engine/orvAbstractBehaviorContainer.h
#pragma once

#include "behavior/engine/orvAbstractBehavior.h"
#include "system/containers/orvArray.h"
#include "system/inspection/orvSmartPointer.h"

namespace orv
{

class BehaviorGraph;
class CompositeBehavior;
class RTTI;

/// The second base of every behaviour that holds children: it owns them, in insertion order, and knows the
/// nearest enclosing composite. A container is locked while it is initialised: its children are not edited then.
/// Structure changes on one thread while nothing updates.
class AbstractBehaviorContainer
{
public:
    /// No child, no composite.
    AbstractBehaviorContainer();
    /// Lets the children go; their parent links are left as they are.
    virtual ~AbstractBehaviorContainer();

    /// True when the children and their followers may not be edited: the container is initialised.
    virtual bool isLocked() const = 0;
    /// Adopts child and appends it, or logs the refusal as an error and returns false.
    virtual bool addChildBehavior(AbstractBehavior* child);
    /// Erases child, keeping the order of the others, and clears its parent; or logs the refusal as an error and
    /// returns false. The child dies here when nothing else holds it.
    virtual bool removeChildBehavior(AbstractBehavior* child);
    /// True when the children form a valid whole; with recursive, nested containers are checked too. Problems are
    /// logged as errors.
    virtual bool checkChildrenBehaviorsConnection(bool recursive) const = 0;
    /// True when child leads back to itself through followers.
    virtual bool checkChildBehaviorLooping(const AbstractBehavior* child) const = 0;
    /// Repairs what the connection check reports; with recursive, nested containers too. False when something
    /// could not be repaired (logged as an error).
    virtual bool cleanChildrenBehaviors(bool recursive) = 0;

    /// The children, owned, in insertion order.
    const Array<SmartPointer<AbstractBehavior>>& getChildrenBehaviors() const { return _childrenBehaviors; }
    Array<SmartPointer<AbstractBehavior>>& touchChildrenBehaviors() { return _childrenBehaviors; }
    /// True when child is one of the children; false for null.
    bool hasChildBehavior(const AbstractBehavior* child) const;
    /// Fills found with every descendant whose class derives from rtti, breadth first through nested containers.
    void findChildrenBehaviors(const RTTI& rtti, Array<AbstractBehavior*>& found) const;
    /// The first descendant, breadth first, whose class derives from rtti, or null.
    AbstractBehavior* findFirstChildBehavior(const RTTI& rtti) const;

    /// The nearest enclosing composite, or null until the node's init() has set it; not owned.
    CompositeBehavior* getParentComposite() const { return _parentComposite; }
    void setParentComposite(CompositeBehavior* composite) { _parentComposite = composite; }
    /// Records behavior in the frame history of the nearest composite for the entity; nothing without one.
    /// How a container that is not a composite reports the children it updates. Entity's worker.
    void addUpdatedBehaviorToHistory(int entity, AbstractBehavior* behavior);

protected:
    /// Makes this container child's parent, without any check; nothing for null.
    void forceAsParentBehavior(AbstractBehavior* child);
    /// Gives every child the graph.
    void setBehaviorGraphOnChildren(BehaviorGraph* graph);
    /// Allocates every child's rows for capacity entities.
    void doAllocateChildren(int capacity);
    /// Frees every child's rows.
    void doDeallocateChildren();
    /// Initialises the children in order; at the first that fails, finishes those before it and returns false.
    bool initChildren();
    /// Gives child the graph of owner, sized for it and with its entities, when owner has a graph; for a child
    /// added to a container that already runs in a graph.
    static void joinGraph(AbstractBehavior& owner, AbstractBehavior& child);
    /// Takes child out of owner's graph: a null graph and no rows. Nothing when owner has no graph.
    static void leaveGraph(AbstractBehavior& owner, AbstractBehavior& child);

private:
    Array<SmartPointer<AbstractBehavior>> _childrenBehaviors;
    CompositeBehavior* _parentComposite = nullptr;
};

} // namespace orv
