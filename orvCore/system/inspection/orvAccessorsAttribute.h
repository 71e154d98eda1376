// orvCore/system/inspection/orvAccessorsAttribute.h
#pragma once

#include <cstddef>

#include "system/inspection/orvAccessorsAttributeBase.h"
#include "system/inspection/orvAttributeMemberFunction.h"

namespace orv
{

/// The attribute of a getter and setter pair of Owner, of form V, const V&, V* or const V*. The getter may be const
/// or a touch getter, and may belong to a base of Owner; the setter takes the value by copy or by reference.
/// On reading, the setter runs once, in the second pass; a read-only attribute (no setter) must not be read.
/// Built as a temporary by the class's addAccessorsAttribute helper; its descriptor keeps a copy.
template <typename T, typename Owner>
class AccessorsAttribute : public attributeDetail::AccessorsAttributeBase<T, Owner, AccessorsAttribute<T, Owner>>,
                           public attributeDetail::AttributeClassDescriptor<T, Owner, AccessorsAttribute<T, Owner>>
{
public:
    /// The getter, called as GetterResult(Owner&).
    typedef AttributeMemberFunction<Owner, typename AttributeForm<T>::GetterResult> Getter;
    /// The setter, called as void(Owner&, SetterArgument).
    typedef AttributeMemberFunction<Owner, void, typename AttributeForm<T>::SetterArgument> Setter;

    /// The attribute name of Owner, whose descriptor is ownerRTTI, through getter and setter. Without a setter,
    /// the attribute is read-only: the getter-only form of a const V& attribute.
    template <typename GetterFunction, typename SetterFunction = std::nullptr_t>
    AccessorsAttribute(const char* name, const RTTI* ownerRTTI, GetterFunction getter, SetterFunction setter = nullptr)
        : attributeDetail::AccessorsAttributeBase<T, Owner, AccessorsAttribute>(name, ownerRTTI), _getter(getter),
          _setter(setter)
    {
    }

    /// The getter's result on owner.
    typename AttributeForm<T>::GetterResult callGetter(Owner& owner) const { return _getter(owner); }
    /// Calls the setter on owner.
    void callSetter(Owner& owner, typename AttributeForm<T>::SetterArgument value) const { _setter(owner, value); }

    /// The descriptor "orv::AccessorsAttribute<value,owner>", registered on first call.
    const RTTI* getRTTI() const override { return this->getOrCreateClassRTTI(); }

    /// Registered name of this class without its arguments.
    static constexpr const char* className = "orv::AccessorsAttribute";
    /// Base Uuid of this class's descriptors, one per form.
    static constexpr const char* baseTypeID =
        selectByAttributeForm<T>("e4a562e2-368f-4cb8-87af-d6f6cf8c7ebc", "b22c090f-7457-4212-8553-0b88e7a70285",
                                 "f01bb8ae-464c-4938-9e8a-09da2467452b", "e98077c4-25f0-420e-9b49-37bc005e8cd3");

private:
    /// The getter; copied with the attribute.
    Getter _getter;
    /// The setter, or none for a read-only attribute; copied with the attribute.
    Setter _setter;
};

} // namespace orv
