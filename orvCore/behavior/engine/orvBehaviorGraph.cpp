// orvCore/behavior/engine/orvBehaviorGraph.cpp
#include "behavior/engine/orvBehaviorGraph.h"

#include "behavior/behaviors/orvCompositeBehavior.h"
#include "behavior/callBacks/orvAbstractTrigger.h"
#include "behavior/engine/orvAbstractBehavior.h"
#include "behavior/engine/orvAbstractBehaviorContainer.h"
#include "behavior/operators/orvAlternativeBehaviorOperator.h"
#include "behavior/operators/orvLoopBehaviorOperator.h"
#include "behavior/operators/orvRandomBehaviorOperator.h"

#include "engine/simulation/orvAbstractEntityType.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(BehaviorGraph, "5f751cce-c799-4041-b5bc-e254ef2f2192", "orv::BehaviorGraph")

void BehaviorGraph::addAttributes()
{
    addAttribute("parentEntityType", &BehaviorGraph::_parentEntityType);
    addAttribute("initialized", &BehaviorGraph::_initialized);
    addAttribute("maxCount", &BehaviorGraph::_maxCount);
    addAttribute("behaviors", &BehaviorGraph::_behaviors);
}

BehaviorGraph::BehaviorGraph(int maxCount) : _maxCount(maxCount)
{
}

BehaviorGraph::~BehaviorGraph()
{
    // A node that outlives the graph (held elsewhere) keeps no row and no link to it. Entries are null only in a
    // graph read from a damaged file: they are skipped everywhere.
    for (SmartPointer<AbstractBehavior>& behavior : _behaviors)
    {
        if (behavior.getImpl() != nullptr)
        {
            behavior->deallocate();
            behavior->setBehaviorGraph(nullptr);
        }
    }
}

int BehaviorGraph::findBehavior(const AbstractBehavior* behavior) const
{
    for (size_t i = 0; i < _behaviors.size(); ++i)
    {
        if (_behaviors[i].getImpl() == behavior)
        {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void BehaviorGraph::addBehavior(AbstractBehavior* behavior, bool requestStartAtInitialization)
{
    const char* refusal = nullptr;
    if (behavior == nullptr)
    {
        refusal = "behavior is NULL";
    }
    else if (behavior->getBehaviorGraph() != nullptr && behavior->getBehaviorGraph() != this)
    {
        refusal = "behavior belongs to another behavior graph";
    }
    else if (findBehavior(behavior) >= 0)
    {
        refusal = "behavior is already a top level behavior of this behavior graph";
    }
    else if (behavior->getParentBehavior() != nullptr)
    {
        // A container's child is updated by the container: at top level too it would run twice a step.
        refusal = "behavior belongs to a parent behavior";
    }
    if (refusal != nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Can not add behavior to behavior graph : " << refusal);
        return;
    }
    behavior->setRequestStartAtInitialization(requestStartAtInitialization);
    behavior->setBehaviorGraph(this);
    behavior->allocate(_maxCount);
    _behaviors.push_back(SmartPointer<AbstractBehavior>(behavior));
    addEntitiesToBehavior(behavior);
}

void BehaviorGraph::removeBehavior(AbstractBehavior* behavior)
{
    const int index = behavior != nullptr ? findBehavior(behavior) : -1;
    if (index < 0)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Can not remove behavior from behavior graph : "
                                               << (behavior == nullptr ? "behavior is NULL"
                                                                       : "behavior is not a top level behavior of "
                                                                         "this behavior graph"));
        return;
    }
    // The entry may hold the last reference: the node is unlinked before it can go.
    behavior->deallocate();
    behavior->setBehaviorGraph(nullptr);
    _behaviors.erase(_behaviors.begin() + index);
}

void BehaviorGraph::clearBehaviors()
{
    _behaviors.clear();
}

void BehaviorGraph::init()
{
    // A node that refuses its initialisation logs it itself; the graph runs all the same.
    for (SmartPointer<AbstractBehavior>& behavior : _behaviors)
    {
        if (behavior.getImpl() != nullptr)
        {
            behavior->init();
        }
    }
    _initialized = true;
}

void BehaviorGraph::finish()
{
    for (SmartPointer<AbstractBehavior>& behavior : _behaviors)
    {
        if (behavior.getImpl() != nullptr)
        {
            behavior->finish();
        }
    }
    _initialized = false;
}

void BehaviorGraph::init(int entity)
{
    for (SmartPointer<AbstractBehavior>& behavior : _behaviors)
    {
        if (behavior.getImpl() != nullptr)
        {
            behavior->init(entity);
        }
    }
}

void BehaviorGraph::update(Time dt, int entity)
{
    // Top-level nodes are independent: each gets the whole step, whatever the others did with theirs.
    for (SmartPointer<AbstractBehavior>& behavior : _behaviors)
    {
        if (behavior.getImpl() != nullptr)
        {
            behavior->update(dt, entity);
        }
    }
}

void BehaviorGraph::finish(int entity)
{
    for (SmartPointer<AbstractBehavior>& behavior : _behaviors)
    {
        if (behavior.getImpl() != nullptr)
        {
            behavior->finish(entity);
        }
    }
}

void BehaviorGraph::addEntitiesToBehavior(AbstractBehavior* behavior)
{
    if (behavior == nullptr || _parentEntityType == nullptr)
    {
        return;
    }
    // Rows are added in rising slot order: a node truncates its rows to the slot it is given.
    const int slotCount = _parentEntityType->getHandleCount();
    for (int slot = 0; slot < slotCount; ++slot)
    {
        if (_parentEntityType->isIndexInUse(slot))
        {
            behavior->addEntity(slot);
        }
    }
}

void BehaviorGraph::addEntityToBehaviors(int entity)
{
    for (SmartPointer<AbstractBehavior>& behavior : _behaviors)
    {
        if (behavior.getImpl() != nullptr)
        {
            behavior->addEntity(entity);
        }
    }
}

int BehaviorGraph::getEntitySlotCount() const
{
    if (_parentEntityType != nullptr)
    {
        return _parentEntityType->getHandleCount();
    }
    int count = 0;
    for (const SmartPointer<AbstractBehavior>& behavior : _behaviors)
    {
        const int rows = behavior.getImpl() != nullptr ? static_cast<int>(behavior->getStatusData().size()) : 0;
        count = rows > count ? rows : count;
    }
    return count;
}

void BehaviorGraph::repairLoadedNodes()
{
    const int slotCount = getEntitySlotCount();
    // Iterative and with a visited list: a file may hold a node in two places; it is repaired once.
    Array<AbstractBehavior*> pending;
    Array<AbstractBehavior*> visited;
    for (SmartPointer<AbstractBehavior>& behavior : _behaviors)
    {
        if (behavior.getImpl() != nullptr)
        {
            pending.push_back(behavior.getImpl());
        }
    }
    while (!pending.empty())
    {
        AbstractBehavior* node = pending[pending.size() - 1];
        pending.pop_back();
        bool seen = false;
        for (AbstractBehavior* done : visited)
        {
            seen = seen || done == node;
        }
        if (seen)
        {
            continue;
        }
        visited.push_back(node);
        node->repairLoaded(this, slotCount);
        // Conditions that operators keep beside the node's own: their triggers are bound here too.
        if (LoopBehaviorOperator* loop = dynamic_cast<LoopBehaviorOperator*>(node))
        {
            AbstractTrigger::recursiveSetBehaviorGraphTriggers(loop->getCondition(), this);
        }
        else if (RandomBehaviorOperator* random = dynamic_cast<RandomBehaviorOperator*>(node))
        {
            for (const SmartPointer<ITypedCallBack<bool>>& condition : random->getConditions())
            {
                AbstractTrigger::recursiveSetBehaviorGraphTriggers(condition, this);
            }
        }
        else if (AlternativeBehaviorOperator* alternative = dynamic_cast<AlternativeBehaviorOperator*>(node))
        {
            for (const SmartPointer<ITypedCallBack<bool>>& condition : alternative->getConditions())
            {
                AbstractTrigger::recursiveSetBehaviorGraphTriggers(condition, this);
            }
        }
        if (CompositeBehavior* composite = dynamic_cast<CompositeBehavior*>(node))
        {
            composite->repairLoadedSlots(slotCount);
        }
        if (AbstractBehaviorContainer* container = dynamic_cast<AbstractBehaviorContainer*>(node))
        {
            for (SmartPointer<AbstractBehavior>& child : container->touchChildrenBehaviors())
            {
                if (child.getImpl() != nullptr)
                {
                    pending.push_back(child.getImpl());
                }
            }
        }
    }
}

} // namespace orv
