// orvCore/behavior/callBacks/orvAbstractOperatorCallBack.h
#pragma once

#include "behavior/callBacks/orvBoolCallBackPointer.h"
#include "behavior/callBacks/orvITypedCallBack.h"

namespace orv
{

/// A boolean call-back made of boolean operands. The engine walks a condition tree through the operands to bind
/// and reset the triggers under it, without knowing the operator classes. Built on the host thread.
class AbstractOperatorCallBack : public ITypedCallBack<bool>
{
    ORV_DECLARE_ABSTRACT_RTTI(AbstractOperatorCallBack)

public:
    /// Number of operands, 1 or 2.
    virtual int getOperandsCount() const = 0;
    /// The operand at index, from 0 to getOperandsCount() - 1; a further hold on it.
    virtual BoolCallBackPointer getOperand(int index) const = 0;
};

} // namespace orv
