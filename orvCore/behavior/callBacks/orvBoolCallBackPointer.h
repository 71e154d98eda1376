// orvCore/behavior/callBacks/orvBoolCallBackPointer.h
#pragma once

#include "behavior/callBacks/orvITypedCallBack.h"
#include "system/inspection/orvClassDescriptor.h"
#include "system/inspection/orvSmartPointer.h"

namespace orv
{

/// A shared hold on a boolean call-back, with the operators that build condition trees: a && b, a || b, a ^ b and
/// !a each make a new operator call-back that shares the operands. Trees are built on the host thread, once.
/// Note that operator! builds a negation: test a pointer against null with getImpl().
class BoolCallBackPointer : public SmartPointer<ITypedCallBack<bool>>
{
    ORV_DECLARE_RTTI(BoolCallBackPointer)

public:
    /// Holds nothing.
    BoolCallBackPointer() = default;
    /// Holds callBack, which may be null.
    BoolCallBackPointer(ITypedCallBack<bool>* callBack);
    /// A further hold on the other's call-back.
    BoolCallBackPointer(const SmartPointer<ITypedCallBack<bool>>& other);

    /// A new AND of this and other: other is called only when this gives true. Empty, with a LOG_ERROR line, when
    /// either side is null.
    BoolCallBackPointer operator&&(const BoolCallBackPointer& other) const;
    /// A new OR of this and other: other is called only when this gives false. Empty, with a LOG_ERROR line, when
    /// either side is null.
    BoolCallBackPointer operator||(const BoolCallBackPointer& other) const;
    /// A new XOR of this and other: both are always called. Empty, with a LOG_ERROR line, when either side is null.
    BoolCallBackPointer operator^(const BoolCallBackPointer& other) const;
    /// A new negation of this. Empty, with a LOG_ERROR line, when this is null.
    BoolCallBackPointer operator!() const;
};

} // namespace orv
