// orvCore/behavior/callBacks/orvBoolCallBackPointer.cpp
#include "behavior/callBacks/orvBoolCallBackPointer.h"

#include "behavior/callBacks/orvLogicalNotBoolCallBack.h"
#include "behavior/callBacks/orvLogicalOperatorCallBack.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

namespace
{

BoolCallBackPointer makeLogicalOperator(const BoolCallBackPointer& left, const BoolCallBackPointer& right,
                                        LogicalOperatorCallBack::LogicalOperator::Value operatorType, const char* name)
{
    // An operator over a missing operand would fail only when a worker first calls it: refuse it here.
    if (left.getImpl() == nullptr || right.getImpl() == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot build " << name << " of two conditions: a condition is null");
        return BoolCallBackPointer();
    }
    return BoolCallBackPointer(new LogicalOperatorCallBack(left, right, operatorType));
}

} // namespace

ORV_IMPLEMENT_RTTI(BoolCallBackPointer, "78b6d74d-922c-48a3-a592-201427005a5f", "orv::BoolCallBackPointer")

void BoolCallBackPointer::addAttributes()
{
    _rtti->addBaseClass<SmartPointer<ITypedCallBack<bool>>>();
}

BoolCallBackPointer::BoolCallBackPointer(ITypedCallBack<bool>* callBack) : SmartPointer<ITypedCallBack<bool>>(callBack)
{
}

BoolCallBackPointer::BoolCallBackPointer(const SmartPointer<ITypedCallBack<bool>>& other)
    : SmartPointer<ITypedCallBack<bool>>(other)
{
}

BoolCallBackPointer BoolCallBackPointer::operator&&(const BoolCallBackPointer& other) const
{
    return makeLogicalOperator(*this, other, LogicalOperatorCallBack::LogicalOperator::AND, "the AND");
}

BoolCallBackPointer BoolCallBackPointer::operator||(const BoolCallBackPointer& other) const
{
    return makeLogicalOperator(*this, other, LogicalOperatorCallBack::LogicalOperator::OR, "the OR");
}

BoolCallBackPointer BoolCallBackPointer::operator^(const BoolCallBackPointer& other) const
{
    return makeLogicalOperator(*this, other, LogicalOperatorCallBack::LogicalOperator::XOR, "the XOR");
}

BoolCallBackPointer BoolCallBackPointer::operator!() const
{
    if (getImpl() == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot build the negation of a condition: the condition is null");
        return BoolCallBackPointer();
    }
    return BoolCallBackPointer(new LogicalNotBoolCallBack(*this));
}

} // namespace orv
