// orvCore/behavior/callBacks/orvLogicalNotBoolCallBack.h
#pragma once

#include "behavior/callBacks/orvAbstractOperatorCallBack.h"

namespace orv
{

/// The negation of a boolean call-back. Built on the host thread; called on the workers.
class LogicalNotBoolCallBack : public AbstractOperatorCallBack
{
    ORV_DECLARE_RTTI(LogicalNotBoolCallBack)

public:
    /// A negation of a missing operand: give it one before it is called.
    LogicalNotBoolCallBack() = default;
    /// The negation of callBack, which it shares.
    explicit LogicalNotBoolCallBack(const BoolCallBackPointer& callBack);

    /// The inverse of the operand. Fatal on a missing operand.
    bool call(int entity) override;
    /// 1.
    int getOperandsCount() const override { return 1; }
    /// The operand, whatever the index.
    BoolCallBackPointer getOperand(int index) const override;

    /// The operand. The setter refuses a null call-back with a LOG_ERROR line and keeps the operand.
    const BoolCallBackPointer& getBoolCallBack() const { return _boolCallBack; }
    void setBoolCallBack(const BoolCallBackPointer& callBack);

private:
    BoolCallBackPointer _boolCallBack;
};

} // namespace orv
