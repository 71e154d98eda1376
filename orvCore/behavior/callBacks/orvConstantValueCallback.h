// orvCore/behavior/callBacks/orvConstantValueCallback.h
#pragma once

#include "behavior/callBacks/orvITypedCallBack.h"
#include "system/inspection/orvInspectable.h"

namespace orv
{

/// A call-back that gives the same value for every entity; T is bool or float. Stateless at run time; its value
/// is set on the host thread while nothing updates.
template <typename T>
class ConstantValueCallback : public ITypedCallBack<T>
{
    ORV_DECLARE_RTTI(ConstantValueCallback)

public:
    /// Gives T(): false, or 0.
    ConstantValueCallback() = default;
    /// Gives value.
    explicit ConstantValueCallback(const T& value) : _value(value) {}

    /// The value, whatever the entity.
    T call(int) override { return _value; }

    /// The value given to every entity.
    T getValue() const { return _value; }
    void setValue(const T& value) { _value = value; }

private:
    T _value = T();
};

ORV_IMPLEMENT_TEMPLATE_RTTI(ConstantValueCallback, "f0a4c151-5cd2-4f0a-badb-4d5ee706f7fd", "orv::ConstantValueCallback")

template <typename T>
void ConstantValueCallback<T>::addAttributes()
{
    _rtti->addBaseClass<ITypedCallBack<T>>();
    addAttribute("value", &ConstantValueCallback::_value);
}

} // namespace orv
