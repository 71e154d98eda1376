// orvCore/system/inspection/orvRTTI.h
#pragma once

#include <atomic>
#include <cstdint>

#include "system/containers/orvMap.h"
#include "system/containers/orvPODArray.h"
#include "system/containers/orvStaticString.h"
#include "system/containers/orvString.h"
#include "system/inspection/orvUuid.h"

namespace orv
{

class AbstractAttribute;
class RTTI;

template <typename T>
class RTTIAccessor;
template <typename T, typename Owner>
class Attribute;
template <typename T, typename Owner>
class AccessorsAttribute;

/// Size in bytes of the buffer that holds registered type names until the next initCore.
constexpr uint64_t RTTI_STRING_CONCAT_LENGTH = 262144;

/// Copies a name into the type-name buffer and returns the copy. Registration only: not locked, never freed.
const char* RTTIConcat(const char* a);
/// "a<b>" in the type-name buffer.
const char* RTTIConcat(const char* a, const char* b);
/// "a<b,c>" in the type-name buffer.
const char* RTTIConcat(const char* a, const char* b, const char* c);
/// "a<b,c,d>" in the type-name buffer.
const char* RTTIConcat(const char* a, const char* b, const char* c, const char* d);
/// "a<b,c,d,e>" in the type-name buffer.
const char* RTTIConcat(const char* a, const char* b, const char* c, const char* d, const char* e);
/// "a<b,c>" in the type-name buffer, the last argument given as a string.
const char* RTTIConcat(const char* a, const char* b, const OrvString& c);
/// Rewinds the type-name buffer to its start; every name in it becomes invalid. Called by initCore.
void resetRTTIConcatBuffer();
/// Bytes of the type-name buffer in use since the last reset.
uint64_t getRTTIConcatBufferIndex();

/// Makes an instance of one class from nothing, for creation by identifier.
class IRTTICreator
{
public:
    /// Creators are deleted through this interface, by the descriptor that owns them.
    virtual ~IRTTICreator();
    /// A new default-constructed instance, owned by the caller.
    virtual void* create() const = 0;
};

/// The creator of class T: a plain new T().
template <class T>
class RTTICreatorT : public IRTTICreator
{
public:
    /// A new T, as an untyped pointer, owned by the caller.
    void* create() const override { return new T(); }
};

/// The run-time descriptor of a class: identifier, registered name, direct bases and own attributes, and the
/// process-wide registries that find descriptors and creators by identifier or name.
/// Built and torn down on the thread that runs initCore and finishCore; read-only, from any thread, in between.
class RTTI
{
public:
    /// Unregisters the descriptor, deletes its creator and its own attributes.
    ~RTTI();

    /// Descriptors come from the allocator of class descriptors.
    static void* operator new(size_t size);
    /// Gives a descriptor's block back.
    static void operator delete(void* pointer);

    /// The descriptor registered under typeID, or null. Fatal when it is registered under a different name.
    static RTTI* checkBeforeCreate(const Uuid& typeID, const char* name);
    /// Registers a new descriptor with counter 0, overwriting entries of the same identifier or name.
    /// Takes ownership of the creator, which is null for an abstract class. Fatal on a null identifier or name.
    static RTTI* create(const Uuid& typeID, const char* name, IRTTICreator* creator);
    /// Makes the three registries, empty. Called by initCore.
    static void allocateStaticRTTIs();
    /// Deletes the three registries. Called by finishCore, after destroyRTTIs.
    static void deallocateStaticRTTIs();
    /// Registers the descriptors of the base types. Called by initCore, after allocateStaticRTTIs.
    static void createRTTIs();
    /// Releases the base types, then deletes every descriptor still registered. Called by finishCore.
    static void destroyRTTIs();
    /// True between allocateStaticRTTIs and deallocateStaticRTTIs.
    static bool areStaticRTTIsAllocated();

    /// The identifier registered under name, or the null identifier.
    static const Uuid& getTypeID(const char* name);
    /// The name registered for typeID, or null.
    static const char* getTypeName(const Uuid& typeID);
    /// The descriptor registered for typeID, or null.
    static const RTTI* getRTTI(const Uuid& typeID);
    /// Every descriptor derived from typeID's, itself included, in identifier order; empty when typeID is unknown.
    static PODArray<const RTTI*> getRTTIs(const Uuid& typeID);
    /// A new instance of typeID's class, owned by the caller; null when unknown or abstract.
    static void* createInstance(const Uuid& typeID);
    /// True when createInstance would make an instance of typeID's class: it is registered and not abstract.
    static bool canCreateInstance(const Uuid& typeID);
    /// The registry of identifiers by name.
    static const OrvMap<OrvStaticString, Uuid>& getTypeNameToTypeID();
    /// The registry of descriptors by identifier.
    static const OrvMap<Uuid, const RTTI*>& getTypeIDToRTTI();

    /// The class's identifier.
    const Uuid& getTypeID() const { return _typeID; }
    /// The class's registered name, in the type-name buffer.
    const char* getTypeName() const { return _typeName; }

    /// True when other is this class or one of its bases, at any depth; compared by identifier.
    bool isDerivedFrom(const RTTI& other) const;
    /// True when T's descriptor exists and this class derives from it.
    template <class T>
    bool isDerivedFrom() const
    {
        const RTTI* other = T::getClassRTTI();
        return other != nullptr && isDerivedFrom(*other);
    }

    /// Number of direct bases.
    unsigned int getBaseClassesCount() const { return static_cast<unsigned int>(_baseClassesRTTI.size()); }
    /// The direct base at index, in the order they were added.
    const RTTI* getBaseClassRTTI(unsigned int index) const { return _baseClassesRTTI[index]; }

    /// Own attributes plus those of every base, recursively.
    unsigned int getAttributesCount() const { return static_cast<unsigned int>(getAllAttributes().size()); }
    /// True when this very attribute object belongs to the class or a base.
    bool hasAttribute(const AbstractAttribute& attribute) const;
    /// The attribute at index, bases first in base order, then the class's own; null from the total on.
    const AbstractAttribute* getAttribute(unsigned int index) const;
    /// Every attribute in getAttribute's order, as one array: what streams walk for each object. Built at the first
    /// call after a class was registered or changed, then read without a lock; valid until the next registration.
    const PODArray<const AbstractAttribute*>& getAllAttributes() const
    {
        if (_allAttributesLayout.load(std::memory_order_acquire) == _layout.load(std::memory_order_acquire))
        {
            return _allAttributes;
        }
        return rebuildAllAttributes();
    }
    /// The attribute of that name, normalised first; own attributes hide those of bases. Null when none.
    const AbstractAttribute* getAttribute(const char* name) const;
    /// Number of the class's own attributes.
    unsigned int getOwnAttributesCount() const { return static_cast<unsigned int>(_attributes.size()); }

    /// While set, addBaseClass and addAttribute undo what they would do.
    void isRemoving(bool removing) { _removingAttributes = removing; }
    /// True while addBaseClass and addAttribute undo.
    bool isRemoving() const { return _removingAttributes; }

    /// Live holds on the descriptor.
    unsigned int getCounter() const { return _counter; }
    /// Adds a hold.
    void incrementCounter() { ++_counter; }
    /// Drops a hold and returns how many remain.
    unsigned int decrementCounter() { return --_counter; }

    /// Registers (or holds) base class T and appends its descriptor; while removing, releases T instead.
    template <class T>
    void addBaseClass()
    {
        if (!_removingAttributes)
        {
            T::createClassRTTI(false);
            _baseClassesRTTI.push_back(T::getClassRTTI());
            layoutChanged();
        }
        else
        {
            T::destroyClassRTTI(false);
        }
    }

    /// Appends a heap copy of a temporary attribute and holds its value type's descriptor; while removing, deletes
    /// the own attribute of the same normalised name and releases that descriptor.
    /// A must name its value type ValueType and have a copy constructor; the caller includes orvRTTIAccessor.h.
    template <class A>
    void addAttribute(const A& attribute)
    {
        if (!_removingAttributes)
        {
            RTTIAccessor<typename A::ValueType>::createClassRTTI();
            _attributes.push_back(new A(attribute));
            layoutChanged();
        }
        else
        {
            removeAttribute(attribute.getName());
            RTTIAccessor<typename A::ValueType>::destroyClassRTTI();
        }
    }

private:
    RTTI(const Uuid& typeID, const char* typeName);
    RTTI(const RTTI&) = delete;
    RTTI& operator=(const RTTI&) = delete;

    // Deletes the first own attribute of that name, or the last one when none matches: add and remove lists
    // must be the same.
    void removeAttribute(const char* name);
    // The attribute of an already normalised name, own first, then in the bases.
    const AbstractAttribute* findAttribute(const char* normalisedName) const;
    // Marks every descriptor's flat attribute list out of date: a base anywhere may have changed.
    static void layoutChanged();
    // Brings _allAttributes up to date under a lock and gives it.
    const PODArray<const AbstractAttribute*>& rebuildAllAttributes() const;
    // Fills _allAttributes, bases first, depth first.
    void collectAttributes(PODArray<const AbstractAttribute*>& into) const;

    // Must stay first: the descriptor's start is read as its identifier.
    /// The class's identifier.
    Uuid _typeID;
    /// The registered name, in the type-name buffer.
    const char* _typeName = nullptr;
    /// Live holds on the descriptor.
    uint32_t _counter = 0;
    /// Direct bases, in the order they were added; not owned.
    PODArray<const RTTI*> _baseClassesRTTI;
    /// Own attributes, in the order they were added; owned.
    PODArray<AbstractAttribute*> _attributes;
    /// While true, addBaseClass and addAttribute undo.
    bool _removingAttributes = false;
    /// Every attribute, bases first; rebuilt when _allAttributesLayout lags the registrations.
    mutable PODArray<const AbstractAttribute*> _allAttributes;
    /// The registration count _allAttributes was built at; 0 when never built.
    mutable std::atomic<uint64_t> _allAttributesLayout{0};

    /// Counts registrations and changes of any descriptor's bases or attributes; starts at 1, so that a list
    /// built at 0 is never current.
    static std::atomic<uint64_t> _layout;
    /// Creators by identifier; null for abstract classes.
    static OrvMap<Uuid, IRTTICreator*>* _rttiFactory;
    /// Identifiers by name; keys point into the type-name buffer.
    static OrvMap<OrvStaticString, Uuid>* _typeNameToTypeID;
    /// Descriptors by identifier.
    static OrvMap<Uuid, const RTTI*>* _typeIDToRTTI;
};

/// Machinery behind the class-declaration macros; not for direct use.
namespace rttiDetail
{

/// Creator factory of a concrete class.
template <class C>
IRTTICreator* makeCreator()
{
    return new RTTICreatorT<C>();
}

/// Creator factory of an abstract class: none.
inline IRTTICreator* makeNoCreator()
{
    return nullptr;
}

/// The registered descriptor of typeID if current is stale or null, else current; creates one when none is there.
/// A descriptor left over from an earlier initCore is never trusted: it is looked up again.
RTTI* findOrCreate(RTTI* current, const Uuid& typeID, const char* typeName, IRTTICreator* (*makeCreator)());

/// True when rtti is null or is no longer the descriptor registered for typeID.
bool isStale(const RTTI* rtti, const Uuid& typeID);

/// Drops a hold on rtti; deletes it and nulls the pointer when none remains.
void release(RTTI*& rtti);

/// The steps of a class's createClassRTTI.
template <class C>
void createClassRTTI(RTTI*& rtti, const Uuid& typeID, const char* typeName, IRTTICreator* (*makeCreator)(),
                     bool withAttributes)
{
    rtti = findOrCreate(rtti, typeID, typeName, makeCreator);
    if (withAttributes)
    {
        C::addAttributes();
    }
    rtti->incrementCounter();
}

/// The steps of a class's destroyClassRTTI.
template <class C>
void destroyClassRTTI(RTTI*& rtti, bool withAttributes)
{
    if (rtti == nullptr)
    {
        return;
    }
    if (withAttributes)
    {
        // The same list that added the attributes removes them while the flag is set.
        rtti->isRemoving(true);
        C::addAttributes();
        rtti->isRemoving(false);
    }
    release(rtti);
}

/// The steps of getClassRTTI: the held descriptor, or the registered one, never a new one.
inline const RTTI* lookUpClassRTTI(RTTI*& rtti, const Uuid& typeID, const char* typeName)
{
    if (rtti == nullptr)
    {
        rtti = RTTI::checkBeforeCreate(typeID, typeName);
    }
    return rtti;
}

} // namespace rttiDetail

} // namespace orv

// The members every inspectable class declares. Put the macro first in the class body, so that getRTTI is the
// first virtual function; the access is public after it. The class defines addAttributes() in its source:
// _rtti->addBaseClass<Base>() for each direct base, then one attribute per member, through the two helpers. The
// attribute classes are only declared here: that source includes system/inspection/orvInspectable.h. Headers include
// system/inspection/orvClassDescriptor.h, which adds the template-class macros of orvRTTIAccessor.h.
#define ORV_DECLARE_RTTI_MEMBERS(ClassName, virtualKeyword)                                                            \
public:                                                                                                                \
    /** The class's descriptor while registered, else null. */                                                         \
    static ::orv::RTTI* _rtti;                                                                                         \
    /** Registers or holds the descriptor; with true, also adds the attributes. initCore's thread only. */             \
    static void createClassRTTI(bool withAttributes);                                                                  \
    /** Releases the descriptor; with true, also removes the attributes. finishCore's thread only. */                  \
    static void destroyClassRTTI(bool withAttributes);                                                                 \
    /** The class's descriptor, looked up if not held; never created here. */                                          \
    static const ::orv::RTTI* getClassRTTI();                                                                          \
    /** The descriptor of the object's class. */                                                                       \
    virtualKeyword const ::orv::RTTI* getRTTI() const;                                                                 \
    /** Adds, or while the descriptor is removing removes, the bases and attributes. Defined by the class. */          \
    static void addAttributes();                                                                                       \
    /** Adds (or removes) the attribute of a data member. */                                                           \
    template <typename OrvAttributeForm>                                                                               \
    static void addAttribute(const char* name, OrvAttributeForm ClassName::*member)                                    \
    {                                                                                                                  \
        _rtti->addAttribute(::orv::Attribute<OrvAttributeForm, ClassName>(name, _rtti, member));                       \
    }                                                                                                                  \
    /** Adds (or removes) the attribute of a getter and setter pair of the given form. */                              \
    template <typename OrvAttributeForm, typename OrvGetter, typename OrvSetter>                                       \
    static void addAccessorsAttribute(const char* name, OrvGetter getter, OrvSetter setter)                            \
    {                                                                                                                  \
        _rtti->addAttribute(::orv::AccessorsAttribute<OrvAttributeForm, ClassName>(name, _rtti, getter, setter));      \
    }

/// In a polymorphic class's body: the inspection members, with a virtual getRTTI.
#define ORV_DECLARE_RTTI(ClassName) ORV_DECLARE_RTTI_MEMBERS(ClassName, virtual)

/// In an abstract polymorphic class's body: the same members; the source uses ORV_IMPLEMENT_ABSTRACT_RTTI.
#define ORV_DECLARE_ABSTRACT_RTTI(ClassName) ORV_DECLARE_RTTI_MEMBERS(ClassName, virtual)

/// In a value class's body: the same members, with a plain getRTTI and no virtual table.
#define ORV_DECLARE_VALUE_RTTI(ClassName) ORV_DECLARE_RTTI_MEMBERS(ClassName, )

/// In the class's source: its identifier, registered name and creator factory.
#define ORV_IMPLEMENT_RTTI_WITH_CREATOR(ClassName, uuidText, typeName, creatorFactory)                                 \
    ::orv::RTTI* ClassName::_rtti = nullptr;                                                                           \
    void ClassName::createClassRTTI(bool withAttributes)                                                               \
    {                                                                                                                  \
        static const ::orv::Uuid typeID(uuidText);                                                                     \
        ::orv::rttiDetail::createClassRTTI<ClassName>(_rtti, typeID, typeName, creatorFactory, withAttributes);        \
    }                                                                                                                  \
    void ClassName::destroyClassRTTI(bool withAttributes)                                                              \
    {                                                                                                                  \
        ::orv::rttiDetail::destroyClassRTTI<ClassName>(_rtti, withAttributes);                                         \
    }                                                                                                                  \
    const ::orv::RTTI* ClassName::getClassRTTI()                                                                       \
    {                                                                                                                  \
        static const ::orv::Uuid typeID(uuidText);                                                                     \
        return ::orv::rttiDetail::lookUpClassRTTI(_rtti, typeID, typeName);                                            \
    }                                                                                                                  \
    const ::orv::RTTI* ClassName::getRTTI() const                                                                      \
    {                                                                                                                  \
        return getClassRTTI();                                                                                         \
    }

/// In a concrete class's source, e.g. ORV_IMPLEMENT_RTTI(Plane3, "ed30bc5a-...", "orv::Plane3").
#define ORV_IMPLEMENT_RTTI(ClassName, uuidText, typeName)                                                              \
    ORV_IMPLEMENT_RTTI_WITH_CREATOR(ClassName, uuidText, typeName, &::orv::rttiDetail::makeCreator<ClassName>)

/// In an abstract class's source, or a class never made from nothing: registered without a creator.
#define ORV_IMPLEMENT_ABSTRACT_RTTI(ClassName, uuidText, typeName)                                                     \
    ORV_IMPLEMENT_RTTI_WITH_CREATOR(ClassName, uuidText, typeName, &::orv::rttiDetail::makeNoCreator)
