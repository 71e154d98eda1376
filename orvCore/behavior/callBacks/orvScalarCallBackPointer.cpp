// orvCore/behavior/callBacks/orvScalarCallBackPointer.cpp
#include "behavior/callBacks/orvScalarCallBackPointer.h"

#include "behavior/callBacks/orvScalarCallBackComparisonOperator.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

template <typename T>
BoolCallBackPointer ScalarCallBackPointer<T>::makeComparison(const ScalarCallBackPointer& other,
                                                             unsigned int operatorType) const
{
    typedef ScalarCallBackComparisonOperator<T> Comparison;
    // A comparison of a missing operand would fail only when a worker first calls it: refuse it here.
    if (this->getImpl() == nullptr || other.getImpl() == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot build a comparison of two values: a value is null");
        return BoolCallBackPointer();
    }
    return BoolCallBackPointer(
        new Comparison(static_cast<typename Comparison::ComparisonOperator::Value>(operatorType), *this, other));
}

template <typename T>
BoolCallBackPointer ScalarCallBackPointer<T>::operator==(const ScalarCallBackPointer& other) const
{
    return makeComparison(other, ScalarCallBackComparisonOperator<T>::ComparisonOperator::EQUAL);
}

template <typename T>
BoolCallBackPointer ScalarCallBackPointer<T>::operator!=(const ScalarCallBackPointer& other) const
{
    return makeComparison(other, ScalarCallBackComparisonOperator<T>::ComparisonOperator::NOT_EQUAL);
}

template <typename T>
BoolCallBackPointer ScalarCallBackPointer<T>::operator<(const ScalarCallBackPointer& other) const
{
    return makeComparison(other, ScalarCallBackComparisonOperator<T>::ComparisonOperator::INFERIOR);
}

template <typename T>
BoolCallBackPointer ScalarCallBackPointer<T>::operator<=(const ScalarCallBackPointer& other) const
{
    return makeComparison(other, ScalarCallBackComparisonOperator<T>::ComparisonOperator::INFERIOR_EQUAL);
}

template <typename T>
BoolCallBackPointer ScalarCallBackPointer<T>::operator>(const ScalarCallBackPointer& other) const
{
    return makeComparison(other, ScalarCallBackComparisonOperator<T>::ComparisonOperator::SUPERIOR);
}

template <typename T>
BoolCallBackPointer ScalarCallBackPointer<T>::operator>=(const ScalarCallBackPointer& other) const
{
    return makeComparison(other, ScalarCallBackComparisonOperator<T>::ComparisonOperator::SUPERIOR_EQUAL);
}

// Only the comparisons of unsigned values are built, as only their comparison class is registered.
template BoolCallBackPointer ScalarCallBackPointer<unsigned int>::operator==(const ScalarCallBackPointer&) const;
template BoolCallBackPointer ScalarCallBackPointer<unsigned int>::operator!=(const ScalarCallBackPointer&) const;
template BoolCallBackPointer ScalarCallBackPointer<unsigned int>::operator<(const ScalarCallBackPointer&) const;
template BoolCallBackPointer ScalarCallBackPointer<unsigned int>::operator<=(const ScalarCallBackPointer&) const;
template BoolCallBackPointer ScalarCallBackPointer<unsigned int>::operator>(const ScalarCallBackPointer&) const;
template BoolCallBackPointer ScalarCallBackPointer<unsigned int>::operator>=(const ScalarCallBackPointer&) const;

} // namespace orv
