// orvCore/system/inspection/orvAttribute.h
#pragma once

#include <type_traits>

#include "system/inspection/orvAbstractAttributeT.h"
// Attributes are added through RTTI::addAttribute, which holds their value types' descriptors.
#include "system/inspection/orvRTTIAccessor.h"

namespace orv
{

namespace attributeDetail
{

/// How Attribute reaches a data member of the plain form V: read and written in place, in both read passes.
template <typename T, typename Owner>
class MemberAttributeBase : public AbstractAttributeT<T, Owner>
{
public:
    /// The member's type in Owner.
    typedef T Owner::*MemberPointer;

    /// Reads and writes member of Owner.
    MemberAttributeBase(const char* name, const RTTI* ownerRTTI, MemberPointer member)
        : AbstractAttributeT<T, Owner>(name, ownerRTTI), _attribute(member)
    {
    }

    /// A copy of the member.
    T getValue(const Owner& owner) const override
    {
        // The slot exists for every member; one that cannot be copied is reached only through the streams.
        if constexpr (std::is_copy_constructible<T>::value)
        {
            return owner.*_attribute;
        }
        else
        {
            (void)owner;
            this->stopNotImplemented();
        }
    }
    /// Assigns the member.
    void setValue(Owner& owner, T value) const override
    {
        if constexpr (std::is_copy_assignable<T>::value)
        {
            owner.*_attribute = value;
        }
        else
        {
            (void)owner;
            (void)value;
            this->stopNotImplemented();
        }
    }

    /// Writes the member where it stands; an inspectable member in its by-value form.
    void pack(BinaryStream& stream, const void* object) const override
    {
        stream.writeValue(static_cast<const Owner*>(object)->*_attribute);
    }
    /// Reads straight into the member in both passes: a container is sized in the first pass only, so its
    /// elements keep their addresses for the pointers resolved in the second.
    void unpack(BinaryStream& stream, void* object) const override
    {
        stream.readValue(static_cast<Owner*>(object)->*_attribute);
    }
    using AbstractAttributeT<T, Owner>::pack;
    using AbstractAttributeT<T, Owner>::unpack;

    /// The data member; copied with the attribute.
    MemberPointer _attribute;
};

/// How Attribute reaches a pointer member: through the virtual pair, set in both read passes.
template <typename V, typename Owner>
class MemberAttributeBase<V*, Owner> : public AbstractAttributeT<V*, Owner>
{
public:
    /// The member's type in Owner.
    typedef V* Owner::*MemberPointer;

    /// Reads and writes member of Owner.
    MemberAttributeBase(const char* name, const RTTI* ownerRTTI, MemberPointer member)
        : AbstractAttributeT<V*, Owner>(name, ownerRTTI), _attribute(member)
    {
    }

    /// The member.
    V* getPointer(const Owner* owner) const override { return owner->*_attribute; }
    /// Sets the member.
    void setPointer(Owner* owner, V* pointer) const override { owner->*_attribute = pointer; }

    /// Reads the pointer and sets the member in both passes; the second pass gives the final address.
    void unpack(BinaryStream& stream, void* object) const override
    {
        V* pointer = nullptr;
        stream.read(pointer);
        setPointer(static_cast<Owner*>(object), pointer);
    }
    using AbstractAttributeT<V*, Owner>::unpack;

    /// The data member; copied with the attribute.
    MemberPointer _attribute;
};

/// How Attribute reaches a const pointer member: through the virtual pair, set in both read passes.
template <typename V, typename Owner>
class MemberAttributeBase<const V*, Owner> : public AbstractAttributeT<const V*, Owner>
{
public:
    /// The member's type in Owner.
    typedef const V* Owner::*MemberPointer;

    /// Reads and writes member of Owner.
    MemberAttributeBase(const char* name, const RTTI* ownerRTTI, MemberPointer member)
        : AbstractAttributeT<const V*, Owner>(name, ownerRTTI), _attribute(member)
    {
    }

    /// The member.
    const V* getConstPointer(const Owner& owner) const override { return owner.*_attribute; }
    /// Sets the member.
    void setConstPointer(Owner& owner, const V* pointer) const override { owner.*_attribute = pointer; }

    /// Reads the pointer and sets the member in both passes; the second pass gives the final address.
    void unpack(BinaryStream& stream, void* object) const override
    {
        const V* pointer = nullptr;
        stream.read(pointer);
        setConstPointer(*static_cast<Owner*>(object), pointer);
    }
    using AbstractAttributeT<const V*, Owner>::unpack;

    /// The data member; copied with the attribute.
    MemberPointer _attribute;
};

/// A data member cannot be a reference: the const V& form goes through AccessorsAttribute.
template <typename V, typename Owner>
class MemberAttributeBase<const V&, Owner>;

} // namespace attributeDetail

/// The attribute of a data member of Owner, of form V, V* or const V*: the member is read and written directly.
/// Built as a temporary by the class's addAttribute helper; its descriptor keeps a copy.
template <typename T, typename Owner>
class Attribute : public attributeDetail::MemberAttributeBase<T, Owner>,
                  public attributeDetail::AttributeClassDescriptor<T, Owner, Attribute<T, Owner>>
{
public:
    /// The attribute name of member of Owner, whose descriptor is ownerRTTI.
    Attribute(const char* name, const RTTI* ownerRTTI, T Owner::*member)
        : attributeDetail::MemberAttributeBase<T, Owner>(name, ownerRTTI, member)
    {
    }

    /// The descriptor "orv::Attribute<value,owner>", registered on first call.
    const RTTI* getRTTI() const override { return this->getOrCreateClassRTTI(); }

    /// Registered name of this class without its arguments.
    static constexpr const char* className = "orv::Attribute";
    /// Base Uuid of this class's descriptors, one per form; a member has no reference form.
    static constexpr const char* baseTypeID =
        selectByAttributeForm<T>("2d7c0267-4f4d-428f-ac62-d29fd4af04e5", nullptr,
                                 "3b91bae6-10e3-421e-bdd9-31bd15f97067", "22a8891c-2050-4256-bd71-e47f5cc1c087");
};

} // namespace orv
