// orvCore/behavior/callBacks/orvScalarCallBackPointer.h
#pragma once

#include "behavior/callBacks/orvBoolCallBackPointer.h"
#include "behavior/callBacks/orvITypedCallBack.h"
#include "system/inspection/orvClassDescriptor.h"
#include "system/inspection/orvSmartPointer.h"

namespace orv
{

/// A shared hold on a call-back giving a T (float or unsigned int), with the comparisons that build boolean
/// conditions from two of them: a == b, a != b, a < b, a <= b, a > b, a >= b each make a new
/// ScalarCallBackComparisonOperator that shares the operands. Trees are built on the host thread, once.
/// Note that operator== builds a comparison: compare holds with getImpl().
template <typename T>
class ScalarCallBackPointer : public SmartPointer<ITypedCallBack<T>>
{
    ORV_DECLARE_RTTI(ScalarCallBackPointer)

public:
    /// Holds nothing.
    ScalarCallBackPointer() = default;
    /// Holds callBack, which may be null.
    ScalarCallBackPointer(ITypedCallBack<T>* callBack) : SmartPointer<ITypedCallBack<T>>(callBack) {}
    /// A further hold on the other's call-back.
    ScalarCallBackPointer(const SmartPointer<ITypedCallBack<T>>& other) : SmartPointer<ITypedCallBack<T>>(other) {}

    /// The comparisons of this value with the other's, computed per entity when the condition is called. Each is
    /// empty, with a LOG_ERROR line, when either side is null. Built for unsigned int only.
    BoolCallBackPointer operator==(const ScalarCallBackPointer& other) const;
    BoolCallBackPointer operator!=(const ScalarCallBackPointer& other) const;
    BoolCallBackPointer operator<(const ScalarCallBackPointer& other) const;
    BoolCallBackPointer operator<=(const ScalarCallBackPointer& other) const;
    BoolCallBackPointer operator>(const ScalarCallBackPointer& other) const;
    BoolCallBackPointer operator>=(const ScalarCallBackPointer& other) const;

private:
    // The comparison of the given code of ScalarCallBackComparisonOperator<T>.
    BoolCallBackPointer makeComparison(const ScalarCallBackPointer& other, unsigned int operatorType) const;
};

ORV_IMPLEMENT_TEMPLATE_RTTI(ScalarCallBackPointer, "7049d7b3-c568-4a77-b57e-9fcd1548f242", "orv::ScalarCallBackPointer")

template <typename T>
void ScalarCallBackPointer<T>::addAttributes()
{
    _rtti->addBaseClass<SmartPointer<ITypedCallBack<T>>>();
}

} // namespace orv
