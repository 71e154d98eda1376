// orvCore/behavior/callBacks/orvLogicalOperatorCallBack.cpp
#include "behavior/callBacks/orvLogicalOperatorCallBack.h"

#include "system/debug/orvAssert.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

ORV_IMPLEMENT_RTTI(LogicalOperatorCallBack, "7ced08e1-358c-4b09-b086-cf6eba8fefd3", "orv::LogicalOperatorCallBack")

void LogicalOperatorCallBack::addAttributes()
{
    _rtti->addBaseClass<AbstractOperatorCallBack>();
    addAttribute("boolCallBack0", &LogicalOperatorCallBack::_boolCallBack0);
    addAttribute("boolCallBack1", &LogicalOperatorCallBack::_boolCallBack1);
    addAccessorsAttribute<unsigned int>("operatorType", &LogicalOperatorCallBack::getOperatorTypeUInt,
                                        &LogicalOperatorCallBack::setOperatorTypeUInt);
}

LogicalOperatorCallBack::LogicalOperatorCallBack(const BoolCallBackPointer& boolCallBack0,
                                                 const BoolCallBackPointer& boolCallBack1,
                                                 LogicalOperator::Value operatorType)
    : _boolCallBack0(boolCallBack0), _boolCallBack1(boolCallBack1), _operatorType(operatorType)
{
}

bool LogicalOperatorCallBack::call(int entity)
{
    orvAssertMsg(_boolCallBack0.getImpl() != nullptr && _boolCallBack1.getImpl() != nullptr,
                 "a logical operator is called with a missing operand");
    // The right side is reached only when the left leaves the answer open: its triggers count only then.
    switch (_operatorType)
    {
    case LogicalOperator::AND:
        return _boolCallBack0->call(entity) && _boolCallBack1->call(entity);
    case LogicalOperator::OR:
        return _boolCallBack0->call(entity) || _boolCallBack1->call(entity);
    case LogicalOperator::XOR:
    {
        const bool left = _boolCallBack0->call(entity);
        const bool right = _boolCallBack1->call(entity);
        return left != right;
    }
    default:
        orvExit("No valid operator defined for LogicalOperatorCallBack");
    }
}

BoolCallBackPointer LogicalOperatorCallBack::getOperand(int index) const
{
    return index == 0 ? _boolCallBack0 : _boolCallBack1;
}

void LogicalOperatorCallBack::setBoolCallBack0(const BoolCallBackPointer& callBack)
{
    if (callBack.getImpl() == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot set operand 0 of a logical operator: the call-back is null");
        return;
    }
    _boolCallBack0 = callBack;
}

void LogicalOperatorCallBack::setBoolCallBack1(const BoolCallBackPointer& callBack)
{
    if (callBack.getImpl() == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot set operand 1 of a logical operator: the call-back is null");
        return;
    }
    _boolCallBack1 = callBack;
}

void LogicalOperatorCallBack::setOperatorTypeUInt(unsigned int operatorType)
{
    // A code past the enumeration is not a value of it: it is kept as END, which call refuses.
    _operatorType =
        operatorType < LogicalOperator::END ? static_cast<LogicalOperator::Value>(operatorType) : LogicalOperator::END;
}

} // namespace orv
