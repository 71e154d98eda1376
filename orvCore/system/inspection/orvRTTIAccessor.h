// orvCore/system/inspection/orvRTTIAccessor.h
#pragma once

// The descriptors of value types (base types, composites, classes of the library) and the registration of template
// classes, whose identifiers are composed from their arguments' descriptors. Built on orvRTTI.h, never the reverse.

#include <cstdint>
#include <cstdio>
#include <type_traits>
#include <utility>

#include "system/inspection/orvRTTI.h"

namespace orv
{

class Quaternion;
class RotationMatrix;
class Vector2;
class Vector3;
class Vector4;
struct EntityHandle;
template <typename T>
class Array;
template <typename T>
class PODArray;
template <typename K, typename V>
class OrvMap;

/// Registers the descriptors of the base types and holds them. Called by RTTI::createRTTIs.
void createRTTIBaseTypeAccessors();
/// Releases the descriptors of the base types. Called by RTTI::destroyRTTIs.
void destroyRTTIBaseTypeAccessors();

/// The descriptor of T wherever T is a value type of an attribute. For a class of the library it forwards to the
/// class's own statics; base types and composites below have their own holder. Registration thread only.
template <typename T>
class RTTIAccessor
{
public:
    /// T's descriptor, or null.
    static const RTTI* getClassRTTI() { return T::getClassRTTI(); }
    /// Registers or holds T's descriptor, without its attributes.
    static void createClassRTTI() { T::createClassRTTI(false); }
    /// Releases a hold on T's descriptor.
    static void destroyClassRTTI() { T::destroyClassRTTI(false); }
};

/// The holder of a base type's descriptor, which createRTTIBaseTypeAccessors registers once per initCore.
template <typename T>
class RTTIBaseTypeAccessor
{
public:
    /// Holds rtti as T's descriptor.
    static void setRTTI(RTTI* rtti) { _rtti = rtti; }
    /// Forgets T's descriptor.
    static void unsetRTTI() { _rtti = nullptr; }
    /// T's descriptor, or null outside initCore and finishCore.
    static const RTTI* getClassRTTI() { return _rtti; }
    /// The descriptor for changing its count, or null.
    static RTTI* touchClassRTTI() { return _rtti; }
    /// Adds a hold on T's descriptor.
    static void createClassRTTI()
    {
        if (_rtti != nullptr)
        {
            _rtti->incrementCounter();
        }
    }
    /// Drops a hold; destroyRTTIBaseTypeAccessors, not this, deletes the descriptor.
    static void destroyClassRTTI()
    {
        if (_rtti != nullptr && _rtti->getCounter() > 0)
        {
            _rtti->decrementCounter();
        }
    }

private:
    /// The descriptor, registered by createRTTIBaseTypeAccessors.
    static inline RTTI* _rtti = nullptr;
};

/// The descriptor of a composite type made of one or two argument types: registered on the first hold, named
/// with a pattern, identified by base + first argument (+ second). Holds its arguments while it lives.
template <typename Composite, typename A, typename B = void>
class RTTICompositeAccessor
{
public:
    /// The descriptor, or null until the first hold.
    static const RTTI* getClassRTTI() { return _rtti; }
    /// Registers or holds the descriptor, and holds its arguments.
    static void createClassRTTI(const char* baseTypeID, const char* namePattern)
    {
        RTTIAccessor<A>::createClassRTTI();
        const RTTI* first = RTTIAccessor<A>::getClassRTTI();
        Uuid typeID = Uuid(baseTypeID) + first->getTypeID();
        const RTTI* second = nullptr;
        if constexpr (!std::is_void<B>::value)
        {
            RTTIAccessor<B>::createClassRTTI();
            second = RTTIAccessor<B>::getClassRTTI();
            typeID = typeID + second->getTypeID();
        }
        if (rttiDetail::isStale(_rtti, typeID))
        {
            char name[1024];
            if (second == nullptr)
            {
                snprintf(name, sizeof(name), namePattern, first->getTypeName());
            }
            else
            {
                snprintf(name, sizeof(name), namePattern, first->getTypeName(), second->getTypeName());
            }
            _rtti = rttiDetail::findOrCreate(nullptr, typeID, name, &rttiDetail::makeNoCreator);
        }
        _rtti->incrementCounter();
    }
    /// Releases a hold, then the arguments.
    static void destroyClassRTTI()
    {
        if (_rtti == nullptr)
        {
            return;
        }
        rttiDetail::release(_rtti);
        if constexpr (!std::is_void<B>::value)
        {
            RTTIAccessor<B>::destroyClassRTTI();
        }
        RTTIAccessor<A>::destroyClassRTTI();
    }

private:
    /// The descriptor while held.
    static inline RTTI* _rtti = nullptr;
};

/// The accessor of a base type is its holder, filled by createRTTIBaseTypeAccessors.
#define ORV_RTTI_BASE_TYPE_ACCESSOR(Type)                                                                              \
    template <>                                                                                                        \
    class RTTIAccessor<Type> : public RTTIBaseTypeAccessor<Type>                                                       \
    {                                                                                                                  \
    };

/// "bool".
ORV_RTTI_BASE_TYPE_ACCESSOR(bool)
/// "short".
ORV_RTTI_BASE_TYPE_ACCESSOR(int16_t)
/// "unsigned short".
ORV_RTTI_BASE_TYPE_ACCESSOR(uint16_t)
/// "int".
ORV_RTTI_BASE_TYPE_ACCESSOR(int32_t)
/// "unsigned int".
ORV_RTTI_BASE_TYPE_ACCESSOR(uint32_t)
/// "long".
ORV_RTTI_BASE_TYPE_ACCESSOR(int64_t)
/// "uint64_t".
ORV_RTTI_BASE_TYPE_ACCESSOR(uint64_t)
/// "float".
ORV_RTTI_BASE_TYPE_ACCESSOR(float)
/// "double".
ORV_RTTI_BASE_TYPE_ACCESSOR(double)
/// "string".
ORV_RTTI_BASE_TYPE_ACCESSOR(OrvString)
/// "char".
ORV_RTTI_BASE_TYPE_ACCESSOR(char)
/// "unsigned char".
ORV_RTTI_BASE_TYPE_ACCESSOR(unsigned char)
/// "orv::Uuid".
ORV_RTTI_BASE_TYPE_ACCESSOR(Uuid)
/// "orv::EntityHandle".
ORV_RTTI_BASE_TYPE_ACCESSOR(EntityHandle)
/// "orv::Vector2".
ORV_RTTI_BASE_TYPE_ACCESSOR(Vector2)
/// "orv::Vector3".
ORV_RTTI_BASE_TYPE_ACCESSOR(Vector3)
/// "orv::Vector4".
ORV_RTTI_BASE_TYPE_ACCESSOR(Vector4)
/// "orv::Quaternion".
ORV_RTTI_BASE_TYPE_ACCESSOR(Quaternion)
/// "orv::RotationMatrix".
ORV_RTTI_BASE_TYPE_ACCESSOR(RotationMatrix)

#undef ORV_RTTI_BASE_TYPE_ACCESSOR

/// "T*".
template <typename T>
class RTTIAccessor<T*>
{
public:
    /// The descriptor, or null until the first hold.
    static const RTTI* getClassRTTI() { return Holder::getClassRTTI(); }
    /// Registers or holds the descriptor and T's.
    static void createClassRTTI() { Holder::createClassRTTI("ee83e2b7-4c36-4965-9b02-5146e3ea72d0", "%s*"); }
    /// Releases both holds.
    static void destroyClassRTTI() { Holder::destroyClassRTTI(); }

private:
    typedef RTTICompositeAccessor<T*, T> Holder;
};

/// "const T*".
template <typename T>
class RTTIAccessor<const T*>
{
public:
    /// The descriptor, or null until the first hold.
    static const RTTI* getClassRTTI() { return Holder::getClassRTTI(); }
    /// Registers or holds the descriptor and T's.
    static void createClassRTTI() { Holder::createClassRTTI("6af6f9e5-292f-41ec-956c-a5eed421d056", "const %s*"); }
    /// Releases both holds.
    static void destroyClassRTTI() { Holder::destroyClassRTTI(); }

private:
    typedef RTTICompositeAccessor<const T*, T> Holder;
};

/// "const T&".
template <typename T>
class RTTIAccessor<const T&>
{
public:
    /// The descriptor, or null until the first hold.
    static const RTTI* getClassRTTI() { return Holder::getClassRTTI(); }
    /// Registers or holds the descriptor and T's.
    static void createClassRTTI() { Holder::createClassRTTI("7f18b132-84e3-4284-a123-2be7989e0848", "const %s&"); }
    /// Releases both holds.
    static void destroyClassRTTI() { Holder::destroyClassRTTI(); }

private:
    typedef RTTICompositeAccessor<const T&, T> Holder;
};

/// "Array<T>".
template <typename T>
class RTTIAccessor<Array<T>>
{
public:
    /// The descriptor, or null until the first hold.
    static const RTTI* getClassRTTI() { return Holder::getClassRTTI(); }
    /// Registers or holds the descriptor and T's.
    static void createClassRTTI() { Holder::createClassRTTI("f7ef84a0-6994-497f-9b90-4d37d2ef7670", "Array<%s>"); }
    /// Releases both holds.
    static void destroyClassRTTI() { Holder::destroyClassRTTI(); }

private:
    typedef RTTICompositeAccessor<Array<T>, T> Holder;
};

/// "PODArray<T>".
template <typename T>
class RTTIAccessor<PODArray<T>>
{
public:
    /// The descriptor, or null until the first hold.
    static const RTTI* getClassRTTI() { return Holder::getClassRTTI(); }
    /// Registers or holds the descriptor and T's.
    static void createClassRTTI() { Holder::createClassRTTI("d82fbb17-65dd-4579-a031-d68f04d44b5c", "PODArray<%s>"); }
    /// Releases both holds.
    static void destroyClassRTTI() { Holder::destroyClassRTTI(); }

private:
    typedef RTTICompositeAccessor<PODArray<T>, T> Holder;
};

/// "OrvMap<K,V>*", identified by base + K + V.
template <typename K, typename V>
class RTTIAccessor<OrvMap<K, V>>
{
public:
    /// The descriptor, or null until the first hold.
    static const RTTI* getClassRTTI() { return Holder::getClassRTTI(); }
    /// Registers or holds the descriptor, K's and V's.
    static void createClassRTTI() { Holder::createClassRTTI("812c7245-c0cf-4918-9bbe-a257b553e850", "OrvMap<%s,%s>*"); }
    /// Releases the three holds.
    static void destroyClassRTTI() { Holder::destroyClassRTTI(); }

private:
    typedef RTTICompositeAccessor<OrvMap<K, V>, K, V> Holder;
};

/// "pair<A,B>*", identified by base + A + B.
template <typename A, typename B>
class RTTIAccessor<std::pair<A, B>>
{
public:
    /// The descriptor, or null until the first hold.
    static const RTTI* getClassRTTI() { return Holder::getClassRTTI(); }
    /// Registers or holds the descriptor, A's and B's.
    static void createClassRTTI() { Holder::createClassRTTI("ac77798c-5da6-401b-9e87-ffe02cfe183a", "pair<%s,%s>*"); }
    /// Releases the three holds.
    static void destroyClassRTTI() { Holder::destroyClassRTTI(); }

private:
    typedef RTTICompositeAccessor<std::pair<A, B>, A, B> Holder;
};

/// Machinery behind the template-class macros; not for direct use.
namespace rttiDetail
{

/// The steps of a one-argument template's createClassRTTI: its identifier is base + argument's, its name
/// "name<argument>". Holds the argument's descriptor as long as its own.
template <class C, typename A0>
void createTemplateClassRTTI(RTTI*& rtti, const char* baseTypeID, const char* typeName, IRTTICreator* (*makeCreator)(),
                             bool withAttributes)
{
    RTTIAccessor<A0>::createClassRTTI();
    const RTTI* argument = RTTIAccessor<A0>::getClassRTTI();
    const Uuid typeID = Uuid(baseTypeID) + argument->getTypeID();
    if (isStale(rtti, typeID))
    {
        // Composed only when needed: each composition takes room in the type-name buffer.
        rtti = findOrCreate(nullptr, typeID, RTTIConcat(typeName, argument->getTypeName()), makeCreator);
    }
    createClassRTTI<C>(rtti, typeID, rtti->getTypeName(), makeCreator, withAttributes);
}

/// The steps of a one-argument template's destroyClassRTTI; releases the argument last.
template <class C, typename A0>
void destroyTemplateClassRTTI(RTTI*& rtti, bool withAttributes)
{
    if (rtti == nullptr)
    {
        return;
    }
    destroyClassRTTI<C>(rtti, withAttributes);
    RTTIAccessor<A0>::destroyClassRTTI();
}

/// The steps of a one-argument template's getClassRTTI; null while the argument has no descriptor.
template <typename A0>
const RTTI* lookUpTemplateClassRTTI(RTTI*& rtti, const char* baseTypeID, const char* typeName)
{
    if (rtti == nullptr)
    {
        const RTTI* argument = RTTIAccessor<A0>::getClassRTTI();
        if (argument != nullptr)
        {
            rtti = RTTI::checkBeforeCreate(Uuid(baseTypeID) + argument->getTypeID(),
                                           RTTIConcat(typeName, argument->getTypeName()));
        }
    }
    return rtti;
}

} // namespace rttiDetail

} // namespace orv

/// In the header of a template class of one type argument, after the class: identifier base + argument's,
/// name "typeName<argument>". The class declares itself with ORV_DECLARE_RTTI or ORV_DECLARE_VALUE_RTTI and
/// defines addAttributes() in the header too.
#define ORV_IMPLEMENT_TEMPLATE_RTTI_WITH_CREATOR(ClassTemplate, baseUuidText, typeName, creatorFactory)                \
    template <typename A0>                                                                                             \
    ::orv::RTTI* ClassTemplate<A0>::_rtti = nullptr;                                                                   \
    template <typename A0>                                                                                             \
    void ClassTemplate<A0>::createClassRTTI(bool withAttributes)                                                       \
    {                                                                                                                  \
        ::orv::rttiDetail::createTemplateClassRTTI<ClassTemplate<A0>, A0>(_rtti, baseUuidText, typeName,               \
                                                                          creatorFactory, withAttributes);             \
    }                                                                                                                  \
    template <typename A0>                                                                                             \
    void ClassTemplate<A0>::destroyClassRTTI(bool withAttributes)                                                      \
    {                                                                                                                  \
        ::orv::rttiDetail::destroyTemplateClassRTTI<ClassTemplate<A0>, A0>(_rtti, withAttributes);                     \
    }                                                                                                                  \
    template <typename A0>                                                                                             \
    const ::orv::RTTI* ClassTemplate<A0>::getClassRTTI()                                                               \
    {                                                                                                                  \
        return ::orv::rttiDetail::lookUpTemplateClassRTTI<A0>(_rtti, baseUuidText, typeName);                          \
    }                                                                                                                  \
    template <typename A0>                                                                                             \
    const ::orv::RTTI* ClassTemplate<A0>::getRTTI() const                                                              \
    {                                                                                                                  \
        return getClassRTTI();                                                                                         \
    }

/// A concrete template class, e.g. ORV_IMPLEMENT_TEMPLATE_RTTI(IndexTriplet, "1510e4ff-...", "orv::IndexTriplet").
#define ORV_IMPLEMENT_TEMPLATE_RTTI(ClassTemplate, baseUuidText, typeName)                                             \
    ORV_IMPLEMENT_TEMPLATE_RTTI_WITH_CREATOR(ClassTemplate, baseUuidText, typeName,                                    \
                                             &::orv::rttiDetail::makeCreator<ClassTemplate<A0>>)

/// An abstract template class, registered without a creator.
#define ORV_IMPLEMENT_ABSTRACT_TEMPLATE_RTTI(ClassTemplate, baseUuidText, typeName)                                    \
    ORV_IMPLEMENT_TEMPLATE_RTTI_WITH_CREATOR(ClassTemplate, baseUuidText, typeName, &::orv::rttiDetail::makeNoCreator)
