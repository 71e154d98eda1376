// orvCore/system/inspection/orvContainerAccessorsAttribute.h
#pragma once

#include <cstdint>
#include <type_traits>

#include "system/inspection/orvAccessorsAttributeBase.h"
#include "system/inspection/orvAttributeMemberFunction.h"

namespace orv
{

/// One element of an indexed class exposed as a named attribute: getter(index) and setter(index, value) of Owner,
/// of form V, const V&, V* or const V*. Otherwise as AccessorsAttribute. Its descriptor keeps a copy.
template <typename T, typename Owner>
class ContainerAccessorsAttribute
    : public attributeDetail::AccessorsAttributeBase<T, Owner, ContainerAccessorsAttribute<T, Owner>>,
      public attributeDetail::AttributeClassDescriptor<T, Owner, ContainerAccessorsAttribute<T, Owner>>
{
public:
    /// The getter, called as GetterResult(Owner&, index).
    typedef AttributeMemberFunction<Owner, typename AttributeForm<T>::GetterResult, uint32_t> Getter;
    /// The setter, called as void(Owner&, index, SetterArgument).
    typedef AttributeMemberFunction<Owner, void, uint32_t, typename AttributeForm<T>::SetterArgument> Setter;

    /// The attribute name of Owner, whose descriptor is ownerRTTI: element index through getter and setter.
    template <typename GetterFunction, typename SetterFunction>
    ContainerAccessorsAttribute(const char* name, const RTTI* ownerRTTI, GetterFunction getter, SetterFunction setter,
                                uint32_t index)
        : attributeDetail::AccessorsAttributeBase<T, Owner, ContainerAccessorsAttribute>(name, ownerRTTI),
          _getter(getter), _setter(setter), _index(index)
    {
    }

    /// The getter's result for the element on owner.
    typename AttributeForm<T>::GetterResult callGetter(Owner& owner) const { return _getter(owner, _index); }
    /// Calls the setter for the element on owner.
    void callSetter(Owner& owner, typename AttributeForm<T>::SetterArgument value) const
    {
        _setter(owner, _index, value);
    }

    /// The const V& form's setter under its other name: forwards to setConstReference.
    template <typename U = T,
              std::enable_if_t<AttributeForm<U>::kind == AbstractAttribute::AttributeType::CONST_REFERENCE, int> = 0>
    void setReference(Owner& owner, typename AttributeForm<U>::SetterArgument value) const
    {
        this->setConstReference(owner, value);
    }

    /// The element's index in the owner.
    uint32_t getIndex() const { return _index; }

    /// The descriptor "orv::ContainerAccessorsAttribute<value,owner>", registered on first call.
    const RTTI* getRTTI() const override { return this->getOrCreateClassRTTI(); }

    /// Registered name of this class without its arguments.
    static constexpr const char* className = "orv::ContainerAccessorsAttribute";
    /// Base Uuid of this class's descriptors, one per form.
    static constexpr const char* baseTypeID =
        selectByAttributeForm<T>("34d83975-ea9f-47f6-811a-0fb0d7025e07", "0fde02ba-6ef4-49a2-b4a8-11285a3a8d3f",
                                 "c20ead8a-9f3a-424b-b74c-d15505015a8f", "4ecad8fc-aa83-4854-9b8f-5c87d9665bae");

private:
    /// The getter; copied with the attribute.
    Getter _getter;
    /// The setter; copied with the attribute.
    Setter _setter;
    /// The element's index, handed to both functions.
    uint32_t _index;
};

} // namespace orv
