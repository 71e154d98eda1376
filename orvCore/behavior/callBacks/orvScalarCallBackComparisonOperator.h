// orvCore/behavior/callBacks/orvScalarCallBackComparisonOperator.h
#pragma once

#include "behavior/callBacks/orvITypedCallBack.h"
#include "behavior/callBacks/orvScalarCallBackPointer.h"
#include "system/debug/orvAssert.h"
#include "system/inspection/orvInspectable.h"
#include "system/log/orvCoreLog.h"

namespace orv
{

/// The comparison of the values of two scalar call-backs, per entity; registered for unsigned int. Its operands
/// are not walked for triggers. Built on the host thread; called on the workers.
template <typename T>
class ScalarCallBackComparisonOperator : public ITypedCallBack<bool>
{
    ORV_DECLARE_RTTI(ScalarCallBackComparisonOperator)

public:
    /// The comparison; its unsigned code is saved. The two "less" codes come in the other order than those of
    /// orv::ComparisonOperator, which triggers use.
    struct ComparisonOperator
    {
        enum Value
        {
            EQUAL = 0,
            NOT_EQUAL,
            INFERIOR,
            INFERIOR_EQUAL,
            SUPERIOR,
            SUPERIOR_EQUAL,
            END
        };
    };

    /// EQUAL of two missing operands: give it both before it is called.
    ScalarCallBackComparisonOperator() = default;
    /// operand0 compared with operand1 by operatorType; it shares the operands.
    ScalarCallBackComparisonOperator(typename ComparisonOperator::Value operatorType,
                                     const ScalarCallBackPointer<T>& operand0, const ScalarCallBackPointer<T>& operand1)
        : _operatorType(operatorType), _scalarCallBack0(operand0), _scalarCallBack1(operand1)
    {
    }

    /// Calls operand 0, then operand 1, and compares the two values. Fatal on a missing operand, and with "No
    /// valid operator defined for ScalarCallBackComparisonOperator" on a code outside the enumeration.
    bool call(int entity) override
    {
        orvAssertMsg(_scalarCallBack0.getImpl() != nullptr && _scalarCallBack1.getImpl() != nullptr,
                     "a comparison is called with a missing operand");
        const T left = _scalarCallBack0->call(entity);
        const T right = _scalarCallBack1->call(entity);
        switch (_operatorType)
        {
        case ComparisonOperator::EQUAL:
            return left == right;
        case ComparisonOperator::NOT_EQUAL:
            return left != right;
        case ComparisonOperator::INFERIOR:
            return left < right;
        case ComparisonOperator::INFERIOR_EQUAL:
            return left <= right;
        case ComparisonOperator::SUPERIOR:
            return left > right;
        case ComparisonOperator::SUPERIOR_EQUAL:
            return left >= right;
        default:
            orvExit("No valid operator defined for ScalarCallBackComparisonOperator");
        }
    }

    /// The operands. The setters refuse a null call-back with a LOG_ERROR line and keep the operand.
    const ScalarCallBackPointer<T>& getScalarCallBack0() const { return _scalarCallBack0; }
    const ScalarCallBackPointer<T>& getScalarCallBack1() const { return _scalarCallBack1; }
    ScalarCallBackPointer<T>& touchScalarCallBack0() { return _scalarCallBack0; }
    ScalarCallBackPointer<T>& touchScalarCallBack1() { return _scalarCallBack1; }
    void setScalarCallBack0(const ScalarCallBackPointer<T>& callBack) { setOperand(_scalarCallBack0, callBack, 0); }
    void setScalarCallBack1(const ScalarCallBackPointer<T>& callBack) { setOperand(_scalarCallBack1, callBack, 1); }

    /// The comparison.
    typename ComparisonOperator::Value getOperatorType() const { return _operatorType; }
    void setOperatorType(typename ComparisonOperator::Value operatorType) { _operatorType = operatorType; }
    /// The comparison's code, for the streams; a code above END is kept as END.
    unsigned int getOperatorTypeUInt() const { return static_cast<unsigned int>(_operatorType); }
    void setOperatorTypeUInt(unsigned int operatorType)
    {
        // A code past the enumeration is not a value of it: it is kept as END, which call refuses.
        _operatorType = operatorType < ComparisonOperator::END
                            ? static_cast<typename ComparisonOperator::Value>(operatorType)
                            : ComparisonOperator::END;
    }

private:
    static void setOperand(ScalarCallBackPointer<T>& operand, const ScalarCallBackPointer<T>& callBack, int index)
    {
        if (callBack.getImpl() == nullptr)
        {
            orvLogCore(LogSeverity::LOG_ERROR,
                       "Cannot set operand " << index << " of a comparison: the call-back is null");
            return;
        }
        operand = callBack;
    }

    typename ComparisonOperator::Value _operatorType = ComparisonOperator::EQUAL;
    ScalarCallBackPointer<T> _scalarCallBack0;
    ScalarCallBackPointer<T> _scalarCallBack1;
};

ORV_IMPLEMENT_TEMPLATE_RTTI(ScalarCallBackComparisonOperator, "d17fe088-3052-4ef7-bb9a-09b420a64e8b",
                            "orv::ScalarCallBackComparisonOperator")

template <typename T>
void ScalarCallBackComparisonOperator<T>::addAttributes()
{
    _rtti->addBaseClass<ITypedCallBack<bool>>();
    addAttribute("scalarCallBack0", &ScalarCallBackComparisonOperator::_scalarCallBack0);
    addAttribute("scalarCallBack1", &ScalarCallBackComparisonOperator::_scalarCallBack1);
    addAccessorsAttribute<unsigned int>("operatorType", &ScalarCallBackComparisonOperator::getOperatorTypeUInt,
                                        &ScalarCallBackComparisonOperator::setOperatorTypeUInt);
}

} // namespace orv
