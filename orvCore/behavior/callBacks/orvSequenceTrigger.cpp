// orvCore/behavior/callBacks/orvSequenceTrigger.cpp
#include "behavior/callBacks/orvSequenceTrigger.h"

#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(SequenceTrigger, "95700891-f3ae-4a9c-a0c5-cb573f1cedfe", "orv::SequenceTrigger")

void SequenceTrigger::addAttributes()
{
    _rtti->addBaseClass<AbstractTrigger>();
    addAttribute("sequenceIterator", &SequenceTrigger::_sequenceIterator);
}

void SequenceTrigger::setUsedCount(int count)
{
    AbstractTrigger::setUsedCount(count);
    for (size_t i = 0; i < _sequence.size(); ++i)
    {
        recursiveSetUsedCountTriggers(_sequence[i], count);
    }
    extendTo(_sequenceIterator, count, 0u);
}

void SequenceTrigger::setBehaviorGraph(BehaviorGraph* graph)
{
    AbstractTrigger::setBehaviorGraph(graph);
    for (size_t i = 0; i < _sequence.size(); ++i)
    {
        recursiveSetBehaviorGraphTriggers(_sequence[i], graph);
    }
}

void SequenceTrigger::setMaxCount(int count)
{
    AbstractTrigger::setMaxCount(count);
    for (size_t i = 0; i < _sequence.size(); ++i)
    {
        recursiveSetMaxCountTriggers(_sequence[i], count);
    }
    clearTo(_sequenceIterator, count);
}

void SequenceTrigger::addStep(const BoolCallBackPointer& step)
{
    if (step.getImpl() == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot add a step to a sequence trigger: the step is null");
        return;
    }
    _sequence.push_back(step);
    if (getBehaviorGraph() != nullptr)
    {
        recursiveSetBehaviorGraphTriggers(step, getBehaviorGraph());
    }
}

unsigned int SequenceTrigger::getCurrentStep(int entity) const
{
    if (!hasEntity(entity))
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "No step for entity " << entity << ": the trigger has " << getUsedCount() << " entities");
        return 0;
    }
    return _sequenceIterator[entity];
}

void SequenceTrigger::doReset(int entity)
{
    _sequenceIterator[entity] = 0;
    if (!_sequence.empty())
    {
        recursiveResetTriggers(_sequence[0], entity);
    }
}

bool SequenceTrigger::doCall(int entity)
{
    const unsigned int stepCount = static_cast<unsigned int>(_sequence.size());
    unsigned int& step = _sequenceIterator[entity];
    while (step < stepCount && _sequence[step]->call(entity))
    {
        ++step;
        // The next step's triggers count from the moment it is reached.
        if (step < stepCount)
        {
            recursiveResetTriggers(_sequence[step], entity);
        }
    }
    return step >= stepCount;
}

} // namespace orv
