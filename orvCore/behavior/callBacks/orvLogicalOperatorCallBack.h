// orvCore/behavior/callBacks/orvLogicalOperatorCallBack.h
#pragma once

#include "behavior/callBacks/orvAbstractOperatorCallBack.h"

namespace orv
{

/// AND, OR or XOR of two boolean call-backs. AND and OR call their second operand only when the first leaves the
/// answer open, so a trigger on the right side counts only when it is reached. Built on the host thread; called
/// on the workers.
class LogicalOperatorCallBack : public AbstractOperatorCallBack
{
    ORV_DECLARE_RTTI(LogicalOperatorCallBack)

public:
    /// The operation; its unsigned code is saved.
    struct LogicalOperator
    {
        enum Value
        {
            AND = 0,
            OR,
            XOR,
            END
        };
    };

    /// AND of two missing operands: give it both before it is called.
    LogicalOperatorCallBack() = default;
    /// The operation on the two operands, which it shares.
    LogicalOperatorCallBack(const BoolCallBackPointer& boolCallBack0, const BoolCallBackPointer& boolCallBack1,
                            LogicalOperator::Value operatorType);

    /// Operand 0, then operand 1 when the operation needs it. Fatal on a missing operand, and with "No valid
    /// operator defined for LogicalOperatorCallBack" on an operation that is not AND, OR or XOR.
    bool call(int entity) override;
    /// 2.
    int getOperandsCount() const override { return 2; }
    /// Operand 0 for index 0, operand 1 for any other index.
    BoolCallBackPointer getOperand(int index) const override;

    /// The operands. The setters refuse a null call-back with a LOG_ERROR line and keep the operand.
    const BoolCallBackPointer& getBoolCallBack0() const { return _boolCallBack0; }
    const BoolCallBackPointer& getBoolCallBack1() const { return _boolCallBack1; }
    BoolCallBackPointer& touchBoolCallBack0() { return _boolCallBack0; }
    BoolCallBackPointer& touchBoolCallBack1() { return _boolCallBack1; }
    void setBoolCallBack0(const BoolCallBackPointer& callBack);
    void setBoolCallBack1(const BoolCallBackPointer& callBack);

    /// The operation.
    LogicalOperator::Value getOperatorType() const { return _operatorType; }
    void setOperatorType(LogicalOperator::Value operatorType) { _operatorType = operatorType; }
    /// The operation's code, for the streams; a code above END is kept as END.
    unsigned int getOperatorTypeUInt() const { return static_cast<unsigned int>(_operatorType); }
    void setOperatorTypeUInt(unsigned int operatorType);

private:
    BoolCallBackPointer _boolCallBack0;
    BoolCallBackPointer _boolCallBack1;
    LogicalOperator::Value _operatorType = LogicalOperator::AND;
};

} // namespace orv
