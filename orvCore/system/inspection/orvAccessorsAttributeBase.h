// orvCore/system/inspection/orvAccessorsAttributeBase.h
#pragma once

#include "system/inspection/orvAbstractAttributeT.h"
// Attributes are added through RTTI::addAttribute, which holds their value types' descriptors.
#include "system/inspection/orvRTTIAccessor.h"

namespace orv
{

namespace attributeDetail
{

/// The getter and setter pair of an attribute reached through member functions, for each form of T. Accessors is
/// the concrete class, which keeps the functions and calls them with callGetter(owner) and callSetter(owner, value),
/// with or without an index. A const getter is called on the owner as given; a touch getter on the same object.
template <typename T, typename Owner, typename Accessors>
class AccessorsAttributeBase : public AbstractAttributeT<T, Owner>
{
public:
    /// Kind VALUE.
    AccessorsAttributeBase(const char* name, const RTTI* ownerRTTI) : AbstractAttributeT<T, Owner>(name, ownerRTTI) {}

    /// The getter's result.
    T getValue(const Owner& owner) const override { return accessors().callGetter(const_cast<Owner&>(owner)); }
    /// Calls the setter.
    void setValue(Owner& owner, T value) const override { accessors().callSetter(owner, value); }

private:
    const Accessors& accessors() const { return static_cast<const Accessors&>(*this); }
};

/// The const V& pair.
template <typename V, typename Owner, typename Accessors>
class AccessorsAttributeBase<const V&, Owner, Accessors> : public AbstractAttributeT<const V&, Owner>
{
public:
    /// Kind CONST_REFERENCE.
    AccessorsAttributeBase(const char* name, const RTTI* ownerRTTI)
        : AbstractAttributeT<const V&, Owner>(name, ownerRTTI)
    {
    }

    /// The reference the getter returns.
    const V& getConstReference(const Owner& owner) const override
    {
        return accessors().callGetter(const_cast<Owner&>(owner));
    }
    /// Calls the setter, which copies the value.
    void setConstReference(Owner& owner, const V& value) const override { accessors().callSetter(owner, value); }

private:
    const Accessors& accessors() const { return static_cast<const Accessors&>(*this); }
};

/// The V* pair.
template <typename V, typename Owner, typename Accessors>
class AccessorsAttributeBase<V*, Owner, Accessors> : public AbstractAttributeT<V*, Owner>
{
public:
    /// Kind POINTER.
    AccessorsAttributeBase(const char* name, const RTTI* ownerRTTI) : AbstractAttributeT<V*, Owner>(name, ownerRTTI) {}

    /// The getter's pointer.
    V* getPointer(const Owner* owner) const override { return accessors().callGetter(const_cast<Owner&>(*owner)); }
    /// Calls the setter.
    void setPointer(Owner* owner, V* pointer) const override { accessors().callSetter(*owner, pointer); }

private:
    const Accessors& accessors() const { return static_cast<const Accessors&>(*this); }
};

/// The const V* pair.
template <typename V, typename Owner, typename Accessors>
class AccessorsAttributeBase<const V*, Owner, Accessors> : public AbstractAttributeT<const V*, Owner>
{
public:
    /// Kind CONST_POINTER.
    AccessorsAttributeBase(const char* name, const RTTI* ownerRTTI)
        : AbstractAttributeT<const V*, Owner>(name, ownerRTTI)
    {
    }

    /// The getter's pointer.
    const V* getConstPointer(const Owner& owner) const override
    {
        return accessors().callGetter(const_cast<Owner&>(owner));
    }
    /// Calls the setter.
    void setConstPointer(Owner& owner, const V* pointer) const override { accessors().callSetter(owner, pointer); }

private:
    const Accessors& accessors() const { return static_cast<const Accessors&>(*this); }
};

} // namespace attributeDetail

} // namespace orv
