// orvCore/behavior/callBacks/orvLogicalNotBoolCallBack.cpp
#include "behavior/callBacks/orvLogicalNotBoolCallBack.h"

#include "system/debug/orvAssert.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(LogicalNotBoolCallBack, "b6379f57-7995-4368-9062-a11f5373f995", "orv::LogicalNotBoolCallBack")

void LogicalNotBoolCallBack::addAttributes()
{
    _rtti->addBaseClass<AbstractOperatorCallBack>();
    addAttribute("boolCallBack", &LogicalNotBoolCallBack::_boolCallBack);
}

LogicalNotBoolCallBack::LogicalNotBoolCallBack(const BoolCallBackPointer& callBack) : _boolCallBack(callBack)
{
}

bool LogicalNotBoolCallBack::call(int entity)
{
    orvAssertMsg(_boolCallBack.getImpl() != nullptr, "a negation is called with a missing operand");
    return !_boolCallBack->call(entity);
}

BoolCallBackPointer LogicalNotBoolCallBack::getOperand(int) const
{
    return _boolCallBack;
}

void LogicalNotBoolCallBack::setBoolCallBack(const BoolCallBackPointer& callBack)
{
    if (callBack.getImpl() == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot set the operand of a negation: the call-back is null");
        return;
    }
    _boolCallBack = callBack;
}

} // namespace orv
