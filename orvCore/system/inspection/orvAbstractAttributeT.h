// orvCore/system/inspection/orvAbstractAttributeT.h
#pragma once

#include <type_traits>

#include "system/debug/orvAssert.h"
#include "system/inspection/orvAbstractAttribute.h"
#include "system/inspection/orvAttributeForm.h"
#include "system/inspection/orvRTTI.h"
#include "system/inspection/orvUuid.h"
#include "system/serialization/orvBinaryStream.h"
#include "system/serialization/orvBinaryStreamCheck.h"

namespace orv
{

/// Machinery shared by the attribute classes; not for direct use.
namespace attributeDetail
{

/// The identifier of an attribute class: its base, composed with the value type's and then the owner's. False,
/// and nothing set, while either of them has no descriptor.
template <typename T, typename Owner>
bool composeAttributeTypeID(const char* baseTypeID, Uuid& typeID, const RTTI*& value, const RTTI*& owner)
{
    value = RTTIAccessor<T>::getClassRTTI();
    owner = Owner::getClassRTTI();
    if (value == nullptr || owner == nullptr)
    {
        return false;
    }
    typeID = Uuid(baseTypeID) + value->getTypeID() + owner->getTypeID();
    return true;
}

/// The registered descriptor of an attribute class, or null; never creates one.
template <typename T, typename Owner>
const RTTI* lookUpAttributeRTTI(const char* baseTypeID)
{
    Uuid typeID;
    const RTTI* value = nullptr;
    const RTTI* owner = nullptr;
    if (!composeAttributeTypeID<T, Owner>(baseTypeID, typeID, value, owner))
    {
        return nullptr;
    }
    return RTTI::getRTTI(typeID);
}

/// Registers, on first need, the descriptor "className<value,owner>" with its bases, and holds it once more.
/// Null while the value type or the owner has no descriptor.
template <typename T, typename Owner>
const RTTI* createAttributeRTTI(const char* baseTypeID, const char* className, void (*addBaseClasses)(RTTI&))
{
    Uuid typeID;
    const RTTI* value = nullptr;
    const RTTI* owner = nullptr;
    if (!composeAttributeTypeID<T, Owner>(baseTypeID, typeID, value, owner))
    {
        return nullptr;
    }
    // Looked up by identifier first: composing the name on every call would fill the type-name buffer.
    RTTI* rtti = const_cast<RTTI*>(RTTI::getRTTI(typeID));
    if (rtti == nullptr)
    {
        rtti = RTTI::create(typeID, RTTIConcat(className, value->getTypeName(), owner->getTypeName()), nullptr);
        addBaseClasses(*rtti);
    }
    rtti->incrementCounter();
    return rtti;
}

/// Drops a hold on the descriptor of an attribute class; the last hold releases its bases and deletes it.
template <typename T, typename Owner>
void destroyAttributeRTTI(const char* baseTypeID, void (*addBaseClasses)(RTTI&))
{
    RTTI* rtti = const_cast<RTTI*>(lookUpAttributeRTTI<T, Owner>(baseTypeID));
    if (rtti == nullptr || rtti->getCounter() == 0 || rtti->decrementCounter() != 0)
    {
        return;
    }
    // The same list that added the bases releases them while the flag is set.
    rtti->isRemoving(true);
    addBaseClasses(*rtti);
    rtti->isRemoving(false);
    delete rtti;
}

/// The descriptor of an attribute object's class: registered, and held, on first call. Lazy because nothing in
/// a file depends on it and most attribute classes are never asked for theirs.
template <typename T, typename Owner>
const RTTI* getOrCreateAttributeRTTI(const char* baseTypeID, const char* className, void (*addBaseClasses)(RTTI&))
{
    const RTTI* rtti = lookUpAttributeRTTI<T, Owner>(baseTypeID);
    return rtti != nullptr ? rtti : createAttributeRTTI<T, Owner>(baseTypeID, className, addBaseClasses);
}

/// What every typed attribute shares below its getter and setter pair: the value type, the kind, the slot of its
/// own descriptor, and the XML slots.
template <typename T, typename Owner>
class AbstractAttributeTCore : public AbstractAttribute
{
public:
    /// The attribute's value type, in its form; its descriptor is held while the attribute is registered.
    typedef T ValueType;
    /// The declaring class.
    typedef Owner OwnerType;

    static_assert(!std::is_reference<T>::value || std::is_const<std::remove_reference_t<T>>::value,
                  "the reference form of an attribute is const V&");

    /// The kind comes from the form of T.
    AbstractAttributeTCore(const char* name, const RTTI* ownerRTTI) : AbstractAttribute(name, ownerRTTI)
    {
        _attributeType = AttributeForm<T>::kind;
    }

    /// The descriptor of T in its form, held since the attribute was added.
    const RTTI* getAttributeRTTI() const override { return RTTIAccessor<T>::getClassRTTI(); }
    /// Walks the value in the form of T: a const V& goes as a V, a pointer as a pointer.
    bool check(BinaryStreamCheck& check) const override
    {
        return check.checkValue<std::remove_const_t<std::remove_reference_t<T>>>();
    }
    /// The stream form of the value type in its form: a const V& goes as a V, a pointer as a pointer.
    AttributeStreamShape getStreamShape() const override
    {
        return BinaryStreamCheck::shapeOf<std::remove_const_t<std::remove_reference_t<T>>>();
    }
    /// XML writing of attributes comes with the XML stream; until then it stops the process.
    void pack(XMLStream&, DataItem&, const void*) const override { stopWithoutXMLForm(); }
    /// XML reading of attributes comes with the XML stream; until then it stops the process.
    void unpack(XMLStream&, const DataItem&, void*) const override { stopWithoutXMLForm(); }
    using AbstractAttribute::pack;
    using AbstractAttribute::unpack;

    /// The descriptor of the attribute object's own class, registered on first call.
    virtual const RTTI* getRTTI() const = 0;

protected:
    /// The fatal answer of a getter or setter that the attribute's class does not implement.
    [[noreturn]] void stopNotImplemented() const
    {
        const RTTI* value = getAttributeRTTI();
        const RTTI* owner = getOwnerRTTI();
        orvExit("Not implemented in AbstractAttributeT derived class, for the attribute %s of type %s from an object "
                "of type %s",
                getName(), value != nullptr ? value->getTypeName() : "", owner != nullptr ? owner->getTypeName() : "");
    }

private:
    [[noreturn]] void stopWithoutXMLForm() const { orvExit("No XML form is built for the attribute %s", getName()); }
};

/// The getter and setter pair of the plain form V, and the binary stream through them: the getter's value is
/// written; on reading, the getter's value is read over and handed to the setter in the second pass only.
template <typename T, typename Owner>
class AbstractAttributeTForm : public AbstractAttributeTCore<T, Owner>
{
public:
    /// Kind VALUE.
    AbstractAttributeTForm(const char* name, const RTTI* ownerRTTI) : AbstractAttributeTCore<T, Owner>(name, ownerRTTI)
    {
    }

    /// The value of the attribute on owner.
    virtual T getValue(const Owner&) const { this->stopNotImplemented(); }
    /// Sets the value of the attribute on owner.
    virtual void setValue(Owner&, T) const { this->stopNotImplemented(); }

    /// Writes the getter's value.
    void pack(BinaryStream& stream, const void* object) const override
    {
        stream.writeValue(getValue(*static_cast<const Owner*>(object)));
    }
    /// Reads over the getter's value; the setter gets it in the second pass, when every pointer is final.
    void unpack(BinaryStream& stream, void* object) const override
    {
        // The slot exists for every value type; a type that cannot be copied has no accessor form to go through.
        if constexpr (std::is_copy_constructible<T>::value)
        {
            Owner& owner = *static_cast<Owner*>(object);
            T value = getValue(owner);
            stream.readValue(value);
            if (!stream.isFirstPass())
            {
                setValue(owner, value);
            }
        }
        else
        {
            (void)stream;
            (void)object;
            this->stopNotImplemented();
        }
    }
    using AbstractAttributeTCore<T, Owner>::pack;
    using AbstractAttributeTCore<T, Owner>::unpack;
};

/// The pair of the const V& form: the owner hands out a reference and copies what it is given.
template <typename V, typename Owner>
class AbstractAttributeTForm<const V&, Owner> : public AbstractAttributeTCore<const V&, Owner>
{
public:
    /// Kind CONST_REFERENCE.
    AbstractAttributeTForm(const char* name, const RTTI* ownerRTTI)
        : AbstractAttributeTCore<const V&, Owner>(name, ownerRTTI)
    {
    }

    /// The owner's value.
    virtual const V& getConstReference(const Owner&) const { this->stopNotImplemented(); }
    /// Hands a value to the owner, which copies it.
    virtual void setConstReference(Owner&, const V&) const { this->stopNotImplemented(); }

    /// Writes the referenced value; an inspectable one in its by-value form.
    void pack(BinaryStream& stream, const void* object) const override
    {
        stream.writeValue(getConstReference(*static_cast<const Owner*>(object)));
    }
    /// Reads into a temporary that keeps one address across both passes, so that pointers in the stream can
    /// resolve into it. The setter gets it complete in the second pass and must copy it: it is deleted after.
    void unpack(BinaryStream& stream, void* object) const override
    {
        if (stream.isFirstPass())
        {
            V* temp = new V();
            stream.pushValueInFifo(temp);
            stream.readValue(*temp);
            return;
        }
        // Both passes walk the same attributes in the same order, so the oldest temporary is this attribute's.
        V* temp = static_cast<V*>(stream.popValuefromFifo());
        stream.readValue(*temp);
        setConstReference(*static_cast<Owner*>(object), *temp);
        delete temp;
    }
    using AbstractAttributeTCore<const V&, Owner>::pack;
    using AbstractAttributeTCore<const V&, Owner>::unpack;
};

/// The pair of the V* form: a pointer that the stream resolves by id.
template <typename V, typename Owner>
class AbstractAttributeTForm<V*, Owner> : public AbstractAttributeTCore<V*, Owner>
{
public:
    /// Kind POINTER.
    AbstractAttributeTForm(const char* name, const RTTI* ownerRTTI) : AbstractAttributeTCore<V*, Owner>(name, ownerRTTI)
    {
    }

    /// The owner's pointer.
    virtual V* getPointer(const Owner*) const { this->stopNotImplemented(); }
    /// Sets the owner's pointer.
    virtual void setPointer(Owner*, V*) const { this->stopNotImplemented(); }

    /// Writes the pointer that the getter gives, with its target's body the first time.
    void pack(BinaryStream& stream, const void* object) const override
    {
        stream.write(getPointer(static_cast<const Owner*>(object)));
    }
    /// Reads the pointer; the setter gets it in the second pass only, when every target has its final address.
    void unpack(BinaryStream& stream, void* object) const override
    {
        V* pointer = nullptr;
        stream.read(pointer);
        if (!stream.isFirstPass())
        {
            setPointer(static_cast<Owner*>(object), pointer);
        }
    }
    using AbstractAttributeTCore<V*, Owner>::pack;
    using AbstractAttributeTCore<V*, Owner>::unpack;
};

/// The pair of the const V* form: as V*, through const getters and setters.
template <typename V, typename Owner>
class AbstractAttributeTForm<const V*, Owner> : public AbstractAttributeTCore<const V*, Owner>
{
public:
    /// Kind CONST_POINTER.
    AbstractAttributeTForm(const char* name, const RTTI* ownerRTTI)
        : AbstractAttributeTCore<const V*, Owner>(name, ownerRTTI)
    {
    }

    /// The owner's pointer.
    virtual const V* getConstPointer(const Owner&) const { this->stopNotImplemented(); }
    /// Sets the owner's pointer.
    virtual void setConstPointer(Owner&, const V*) const { this->stopNotImplemented(); }

    /// Writes the pointer that the getter gives, with its target's body the first time.
    void pack(BinaryStream& stream, const void* object) const override
    {
        stream.write(getConstPointer(*static_cast<const Owner*>(object)));
    }
    /// Reads the pointer; the setter gets it in the second pass only, also when no body followed.
    void unpack(BinaryStream& stream, void* object) const override
    {
        const V* pointer = nullptr;
        stream.read(pointer);
        if (!stream.isFirstPass())
        {
            setConstPointer(*static_cast<Owner*>(object), pointer);
        }
    }
    using AbstractAttributeTCore<const V*, Owner>::pack;
    using AbstractAttributeTCore<const V*, Owner>::unpack;
};

} // namespace attributeDetail

/// The typed attribute of form T on class Owner. T is V, const V&, V* or const V*, and each form has its own
/// getter and setter pair (getValue/setValue, getConstReference/setConstReference, getPointer/setPointer,
/// getConstPointer/setConstPointer) that stops the process here: the concrete attribute classes implement it.
/// On the binary stream it goes through that pair, the setter running in the second read pass only.
template <typename T, typename Owner>
class AbstractAttributeT : public attributeDetail::AbstractAttributeTForm<T, Owner>
{
public:
    /// The kind comes from the form of T.
    AbstractAttributeT(const char* name, const RTTI* ownerRTTI)
        : attributeDetail::AbstractAttributeTForm<T, Owner>(name, ownerRTTI)
    {
    }

    /// The descriptor "orv::AbstractAttributeT<value,owner>", registered on first call.
    const RTTI* getRTTI() const override
    {
        return attributeDetail::getOrCreateAttributeRTTI<T, Owner>(baseTypeID, className, &addBaseClasses);
    }

    /// This class's descriptor, or null while it is not registered.
    static const RTTI* getAttributeClassRTTI() { return attributeDetail::lookUpAttributeRTTI<T, Owner>(baseTypeID); }
    /// Registers this class's descriptor if needed and holds it; null while T or Owner has no descriptor.
    static const RTTI* createAttributeRTTI()
    {
        return attributeDetail::createAttributeRTTI<T, Owner>(baseTypeID, className, &addBaseClasses);
    }
    /// Drops a hold on this class's descriptor.
    static void destroyAttributeRTTI() { attributeDetail::destroyAttributeRTTI<T, Owner>(baseTypeID, &addBaseClasses); }
    /// The bases of this class's descriptor: none that is inspectable.
    static void addBaseClasses(RTTI&) {}
    /// As createAttributeRTTI, so that a derived attribute class can name this one with RTTI::addBaseClass.
    static void createClassRTTI(bool) { createAttributeRTTI(); }
    /// As destroyAttributeRTTI, for RTTI::addBaseClass.
    static void destroyClassRTTI(bool) { destroyAttributeRTTI(); }
    /// As getAttributeClassRTTI, for RTTI::addBaseClass.
    static const RTTI* getClassRTTI() { return getAttributeClassRTTI(); }

    /// Registered name of this class without its arguments.
    static constexpr const char* className = "orv::AbstractAttributeT";
    /// Base Uuid of this class's descriptors, one per form.
    static constexpr const char* baseTypeID =
        selectByAttributeForm<T>("890b55dc-bc4a-4e63-8adb-32d645edd196", "027d8908-42af-41d2-88ec-578b284e9eac",
                                 "45163da5-0153-45a9-a6c7-f3b7c50ab45c", "d1537693-edb8-47ac-ae50-73a51b46736f");
};

namespace attributeDetail
{

/// The descriptor handling every concrete attribute class shares. Derived names its className and baseTypeID, and
/// its descriptor's only base is AbstractAttributeT<T, Owner>.
template <typename T, typename Owner, typename Derived>
class AttributeClassDescriptor
{
public:
    /// This class's descriptor, or null while it is not registered.
    static const RTTI* getAttributeClassRTTI() { return lookUpAttributeRTTI<T, Owner>(Derived::baseTypeID); }
    /// Registers this class's descriptor if needed and holds it; null while T or Owner has no descriptor.
    static const RTTI* createAttributeRTTI()
    {
        return attributeDetail::createAttributeRTTI<T, Owner>(Derived::baseTypeID, Derived::className, &addBaseClasses);
    }
    /// Drops a hold on this class's descriptor.
    static void destroyAttributeRTTI()
    {
        attributeDetail::destroyAttributeRTTI<T, Owner>(Derived::baseTypeID, &addBaseClasses);
    }
    /// Adds, or while removing releases, the base AbstractAttributeT<T, Owner>.
    static void addBaseClasses(RTTI& rtti) { rtti.addBaseClass<AbstractAttributeT<T, Owner>>(); }

protected:
    /// The descriptor, registered on first call: what the derived class's getRTTI answers.
    static const RTTI* getOrCreateClassRTTI()
    {
        return getOrCreateAttributeRTTI<T, Owner>(Derived::baseTypeID, Derived::className, &addBaseClasses);
    }
};

} // namespace attributeDetail

} // namespace orv
