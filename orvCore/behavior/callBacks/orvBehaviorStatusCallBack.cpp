// orvCore/behavior/callBacks/orvBehaviorStatusCallBack.cpp
#include "behavior/callBacks/orvBehaviorStatusCallBack.h"

#include "system/debug/orvAssert.h"
#include "system/inspection/orvInspectable.h"

namespace orv
{

// Stands in for the behaviour node's own query until the node class joins the library; that class's source
// then defines this function as the node's getRunStatus(entity), and this definition goes. No node exists before
// that, so nothing reaches it.
BehaviorRunStatus::Value getBehaviorRunStatus(const AbstractBehavior&, int)
{
    orvExit("A behavior status is asked of a behavior node, which this library does not build yet");
}

ORV_IMPLEMENT_RTTI(BehaviorStatusCallBack, "c607e024-5355-4d1f-a182-decd5f761cf4", "BehaviorStatusCallBack")

void BehaviorStatusCallBack::addAttributes()
{
    _rtti->addBaseClass<ITypedCallBack<bool>>();
    // The "behavior" attribute, the node as a pointer, comes first once the node class has a descriptor.
    addAccessorsAttribute<unsigned int>("runStatus", &BehaviorStatusCallBack::getRunStatusUInt,
                                        &BehaviorStatusCallBack::setRunStatusUInt);
}

BehaviorStatusCallBack::BehaviorStatusCallBack(AbstractBehavior* behavior, const RunStatus::Value& runStatus)
    : _behavior(behavior), _runStatus(runStatus)
{
}

bool BehaviorStatusCallBack::call(int entity)
{
    return _behavior != nullptr && getBehaviorRunStatus(*_behavior, entity) == _runStatus;
}

void BehaviorStatusCallBack::setRunStatusUInt(unsigned int runStatus)
{
    _runStatus = runStatus < RunStatus::END ? static_cast<RunStatus::Value>(runStatus) : RunStatus::END;
}

} // namespace orv
