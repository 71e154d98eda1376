// orvCore/behavior/callBacks/orvBehaviorStatusCallBack.cpp
#include "behavior/callBacks/orvBehaviorStatusCallBack.h"

#include "system/inspection/orvInspectable.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(BehaviorStatusCallBack, "c607e024-5355-4d1f-a182-decd5f761cf4", "BehaviorStatusCallBack")

void BehaviorStatusCallBack::addAttributes()
{
    _rtti->addBaseClass<ITypedCallBack<bool>>();
    addAttribute("behavior", &BehaviorStatusCallBack::_behavior);
    addAccessorsAttribute<unsigned int>("runStatus", &BehaviorStatusCallBack::getRunStatusUInt,
                                        &BehaviorStatusCallBack::setRunStatusUInt);
}

BehaviorStatusCallBack::BehaviorStatusCallBack(AbstractBehavior* behavior, const RunStatus::Value& runStatus)
    : _behavior(behavior), _runStatus(runStatus)
{
}

bool BehaviorStatusCallBack::call(int entity)
{
    return _behavior != nullptr && _behavior->getRunStatus(entity) == _runStatus;
}

void BehaviorStatusCallBack::setRunStatusUInt(unsigned int runStatus)
{
    _runStatus = runStatus < RunStatus::END ? static_cast<RunStatus::Value>(runStatus) : RunStatus::END;
}

} // namespace orv
