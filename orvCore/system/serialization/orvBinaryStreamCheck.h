// orvCore/system/serialization/orvBinaryStreamCheck.h
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "math/types/orvQuaternion.h"
#include "math/types/orvVector2.h"
#include "math/types/orvVector3.h"
#include "math/types/orvVector4.h"
#include "system/containers/orvArray.h"
#include "system/containers/orvMap.h"
#include "system/containers/orvPODArray.h"
#include "system/containers/orvString.h"
#include "system/inspection/orvAbstractAttribute.h"
#include "system/inspection/orvRTTI.h"
#include "system/inspection/orvUuid.h"
#include "system/serialization/orvBinaryStreamForms.h"

namespace orv
{

class AbstractAttribute;

/// Walks bytes the way BinaryStream::unpack reads them, without building anything, and refuses what the reader
/// would trip on: data that ends early, an unknown or uncreatable class, an object whose class does not derive
/// from what its attribute expects, an attribute count other than the class's, a count larger than the remaining
/// bytes could hold, ids used inconsistently, a pointer body that the two read passes would not both read, and
/// nesting past maxDepth. The first refusal stops the walk and keeps its byte offset and reason.
/// An observer sees the values as they pass, to check what the bytes mean for their owner. One thread at a time.
class BinaryStreamCheck
{
public:
    /// Objects nested deeper than this, by value or through pointer bodies, are refused.
    static const unsigned int maxDepth = 64;

    /// Sees the values of a walk, for checks of meaning. Each call may refuse through the check.
    class IObserver
    {
    public:
        /// How the observer hears of an object read by value.
        enum Notice
        {
            /// No call for the object itself; its watched values are still heard of one by one.
            SILENT,
            /// onObjectBegin, a call per watched value, onObjectEnd.
            EACH_CALL,
            /// Its watched values in an onObjects call, for a class whose attributes are only numbers, words,
            /// pointers and silent objects without watched values; an object of another class gets EACH_CALL.
            ONE_CALL
        };
        /// An object heard of in one call: its id, and the offset where its attributes begin.
        struct WholeObject
        {
            /// The offset in the data.
            uint64_t _offset;
            /// The id the stream gives it.
            uint32_t _id;
        };
        /// The most watched words an object heard of in one call may have; a class with more gets EACH_CALL.
        static const size_t maxWatchedValues = 16;

        /// Observers are owned by whoever runs the check.
        virtual ~IObserver();
        /// An object read by value begins, with its class and id; getAttribute() is the attribute holding it.
        virtual void onObjectBegin(BinaryStreamCheck& check, const RTTI& rtti, uint32_t id);
        /// The object begun last ends.
        virtual void onObjectEnd(BinaryStreamCheck& check, const RTTI& rtti);
        /// count objects of class rtti heard of in one call, after the last of them was walked; the elements of
        /// one container come in several such calls. The watched words and pointer ids (0 for null) of objects[i]
        /// are the wordsPerObject words from words[i * wordsPerObject], in attribute order, the j-th of each of
        /// attributes[j]. getAttribute() holds the objects. An object a pointer of theirs carries the body of is
        /// heard of before. Does nothing unless overridden.
        virtual void onObjects(BinaryStreamCheck& check, const RTTI& rtti, const WholeObject* objects, size_t count,
                               const AbstractAttribute* const* attributes, const uint32_t* words,
                               size_t wordsPerObject);
        /// A 32-bit integer or an entity handle's word of the current attribute.
        virtual void onWord(BinaryStreamCheck& check, uint32_t word);
        /// The count words of a container of 32-bit integers or handles of the current attribute, 4 bytes each at
        /// words as on the stream, not aligned; getPosition() is the first one's offset. False to hear of them one
        /// by one through onWord instead, as unless overridden.
        virtual bool onWords(BinaryStreamCheck& check, const uint8_t* words, uint32_t count);
        /// A bool of the current attribute.
        virtual void onBool(BinaryStreamCheck& check, bool value);
        /// The element count of a container of the current attribute.
        virtual void onCount(BinaryStreamCheck& check, uint32_t count);
        /// A pointer to an inspectable object of the current attribute: its id, 0 for null.
        virtual void onPointer(BinaryStreamCheck& check, uint32_t id);
        /// False when the observer wants no call for the values of attribute: a run of plain values (numbers,
        /// vectors, words) that no one watches is then walked in one step. True unless overridden.
        virtual bool watches(const AbstractAttribute& attribute) const;
        /// How the observer hears of an object of class rtti held by attribute holder, itself or a container of
        /// them. Asked once per class and attribute in a walk, and once per container. EACH_CALL unless overridden.
        virtual Notice noticeOf(const RTTI& rtti, const AbstractAttribute& holder);
    };

    /// A check of size bytes at data, which it does not own; observer may be null.
    BinaryStreamCheck(const uint8_t* data, size_t size, IObserver* observer);
    BinaryStreamCheck(const BinaryStreamCheck&) = delete;
    BinaryStreamCheck& operator=(const BinaryStreamCheck&) = delete;

    /// Walks one value of type T from the present position, as unpack<T> reads it. False once refused.
    template <typename T>
    bool checkValue();
    /// After the last value: refuses bytes left over and objects reached by pointer that never got a body, and, when
    /// asked, reference-counted objects that no smart pointer holds.
    bool checkEnd();
    /// With true, a reference-counted object made for a plain pointer must also be held by a smart pointer in the
    /// bytes, or checkEnd refuses it: where plain pointers never own (a world), nothing would free it. Off unless set.
    void setRequireHeldCounted(bool require) { _requireHeldCounted = require; }

    /// True once something was refused.
    bool isRefused() const { return _refused; }
    /// Byte offset where the first refusal stood.
    uint64_t getRefusalOffset() const { return _refusalOffset; }
    /// Why the first refusal was made; empty while nothing was.
    const char* getRefusalReason() const { return _refusalReason.c_str(); }
    /// Refuses at the present position, with a printf-style reason; only the first refusal is kept. Always false.
    bool refuse(const char* format, ...);
    /// Refuses at offset, with a printf-style reason; only the first refusal is kept. Always false.
    bool refuseAt(uint64_t offset, const char* format, ...);

    /// Offset of the next byte to walk.
    uint64_t getPosition() const { return _position; }
    /// Bytes not walked yet.
    size_t getRemaining() const { return _size - _position; }
    /// The attribute being walked, innermost first; null at the top.
    const AbstractAttribute* getAttribute() const { return _attribute; }
    /// The class of the object that id stands for, or null while the id is unknown.
    const RTTI* getClassOfId(uint32_t id) const;

    /// Walks one inspectable object by value of class rtti: id, attribute count, attributes.
    bool checkObject(const RTTI& rtti);
    /// Walks count objects by value of class rtti, the elements of a container of the current attribute.
    bool checkObjects(const RTTI& rtti, uint32_t count);
    /// Walks the count words of a container of the current attribute, which checkCount made room for.
    bool checkWords(uint32_t count);
    /// Walks a pointer to an inspectable object whose class must derive from expected.
    bool checkInspectablePointer(const RTTI* expected);
    /// Walks a smart pointer, which owns what it points to: its object must come with its body at its first
    /// meeting, must have been made for a pointer, and must not be one whose body is being walked (an object that
    /// would hold itself). So no file makes a cycle of holds, and holds nest no deeper than maxDepth.
    bool checkHeldPointer(const RTTI* expected);
    /// Walks a pointer to a value of a base type whose body is checked by checkBody; kind tells the types apart.
    bool checkBaseTypePointer(const void* kind, bool (*checkBody)(BinaryStreamCheck&));
    /// Walks a container count whose elements take at least elementBytes each; false when they could not fit.
    bool checkCount(uint32_t& count, size_t elementBytes);
    /// Walks size bytes into data, or refuses when fewer remain.
    bool readBytes(void* data, size_t size)
    {
        if (_refused || size > _size - _position)
        {
            return refuseEarlyEnd(size);
        }
        memcpy(data, _data + _position, size);
        _position += size;
        return true;
    }
    /// Walks size bytes, or refuses when fewer remain.
    bool skipBytes(size_t size)
    {
        if (_refused || size > _size - _position)
        {
            return refuseEarlyEnd(size);
        }
        _position += size;
        return true;
    }

    /// The fewest bytes a value of type T takes on the stream.
    template <typename T>
    static size_t minimumBytes();
    /// How a value of type T goes on the stream, as the walk tells forms apart.
    template <typename T>
    static AttributeStreamShape shapeOf();

private:
    /// What an id stands for so far.
    enum IdState : uint32_t
    {
        /// Not met yet.
        ID_UNKNOWN = 0,
        /// An object read by value.
        ID_BY_VALUE = 1,
        /// An instance made for a pointer, with its body.
        ID_POINTER_BODY = 2,
        /// An instance made for a pointer without body, which waits for an object by value.
        ID_WAITING_FOR_BODY = 3,
        /// A value of a base type.
        ID_BASE_VALUE = 4
    };
    /// What an id stands for so far, in 4 bytes so that the table of a large world stays in cache.
    struct IdRecord
    {
        /// The IdState in the low 3 bits; above them, the index in _whats of the object's class or of the tag of
        /// the value's type, 0 while unknown.
        uint32_t _bits = 0;

        /// The IdState.
        uint32_t state() const { return _bits & 7u; }
        /// The index in _whats.
        uint32_t what() const { return _bits >> 3; }
    };
    /// The class of the object the record stands for; null for a base-type value or an unknown id.
    const RTTI* rttiOf(const IdRecord& record) const
    {
        return record.state() != ID_BASE_VALUE ? static_cast<const RTTI*>(_whats[record.what()]) : nullptr;
    }
    /// The index in _whats of a class or of a base type's tag, added when new.
    uint32_t whatIndexOf(const void* what);
    typedef IObserver::Notice Notice;
    template <typename T>
    static bool checkBodyOf(BinaryStreamCheck& check);
    static size_t minimumObjectBytes(const RTTI& rtti);
    /// Walks an object of class rtti, whose plan is plan; pointerId is the id of the pointer carrying it, or 0.
    bool checkObjectBody(const RTTI& rtti, size_t plan, uint32_t pointerId, Notice notice);
    /// Walks an object's id and attribute count and books the id; id receives it.
    bool checkObjectHead(const RTTI& rtti, size_t plan, uint32_t pointerId, uint32_t& id);
    /// checkObjectHead for an object by value: the usual head, a new id and the class's count, in one reading.
    bool checkValueHead(const RTTI& rtti, size_t plan, uint32_t& id)
    {
        if (!_refused && 2 * sizeof(uint32_t) <= _size - _position && _depth < maxDepth)
        {
            uint32_t attributesCount = 0;
            memcpy(&id, _data + _position, sizeof(id));
            memcpy(&attributesCount, _data + _position + sizeof(id), sizeof(attributesCount));
            if (attributesCount == _plans[plan]._attributesCount && id != 0 && id < _ids.size() && _ids[id]._bits == 0)
            {
                _ids[id]._bits = _plans[plan]._what << 3 | ID_BY_VALUE;
                _position += 2 * sizeof(uint32_t);
                return true;
            }
        }
        return checkObjectHead(rtti, plan, 0, id);
    }
    /// Walks the attributes of a flat object, its watched words into words, the plan's _watchedCount of them;
    /// object receives where they began.
    bool checkWholeObject(size_t plan, IObserver::WholeObject& object, uint32_t* words);
    /// Walks a pointer to an inspectable object; tell says whether the observer hears of its id.
    bool checkPointer(const RTTI* expected, bool tell, uint32_t& id, bool held = false);
    /// Walks the usual pointer, to an object met before and without its body, in one reading; false, having walked
    /// nothing, for any other, which checkPointer walks and refuses if it must.
    bool checkKnownPointer(const RTTI* expected, uint32_t& id)
    {
        const size_t pointerBytes = sizeof(uint32_t) + sizeof(Uuid) + 1;
        if (_refused || expected == nullptr || pointerBytes > _size - _position)
        {
            return false;
        }
        memcpy(&id, _data + _position, sizeof(id));
        if (id == 0 || _data[_position + pointerBytes - 1] != 0 || id >= _ids.size())
        {
            return false;
        }
        const RTTI* known = rttiOf(_ids[id]);
        if (known == nullptr || !((known == _lastDerived && expected == _lastBase) || derives(*known, *expected)))
        {
            return false;
        }
        _position += pointerBytes;
        return true;
    }
    /// The record of id, grown into when new; null, after a refusal, for an id no stream of this size can hold.
    IdRecord* recordOf(uint32_t id) { return id < _ids.size() ? &_ids[id] : growRecords(id); }
    IdRecord* growRecords(uint32_t id);
    /// One step of a class's walk: a run of plain values no observer watches, a watched word, a pointer or an
    /// object walked here, or an attribute's own check.
    struct Step
    {
        /// PLAIN for a run, WORD, POINTER, OBJECT, or OTHER for the attribute's own check.
        AttributeStreamShape::Kind _kind;
        /// The attribute; null for a run.
        const AbstractAttribute* _attribute;
        /// The run's bytes.
        size_t _bytes;
        /// The class pointed to or read.
        const RTTI* _rtti;
        /// For an object, how the observer hears of it.
        Notice _notice;
        /// For an object, its class's plan once walked; noPlan before.
        size_t _plan;
    };
    /// A class's steps in _steps, made once per class and walk.
    struct Plan
    {
        /// The class.
        const RTTI* _rtti;
        /// Its first step in _steps, and how many.
        size_t _first;
        size_t _count;
        /// The class's attribute count, which the stream must repeat.
        uint32_t _attributesCount;
        /// The class's index in _whats.
        uint32_t _what;
        /// Whether objects of the class can be heard of in one call: 1 yes, 0 no, -1 not known yet.
        int8_t _flat;
        /// Once found flat, its first step in _wholeSteps, and how many.
        size_t _firstWhole;
        size_t _wholeCount;
        /// Once found flat, how many watched words an object of it gives, and their attributes' first in
        /// _watchedAttributes.
        size_t _watchedCount;
        size_t _firstWatched;
    };
    /// One step of the walk of an object heard of in one call: a run of plain values and watched words taken
    /// after one test of the bytes left, a pointer, or a silent object of plain values.
    struct WholeStep
    {
        /// PLAIN for a run, POINTER or OBJECT.
        AttributeStreamShape::Kind _kind;
        /// The bytes of a run, or of the plain values of an object.
        size_t _bytes;
        /// The first step in _steps it stands for, and how many.
        size_t _firstStep;
        size_t _stepCount;
        /// A run's watched words, by their offsets from its start in _wordOffsets: the first and how many.
        size_t _firstWord;
        size_t _wordCount;
    };
    /// A step's plan before its first walk.
    static const size_t noPlan = ~static_cast<size_t>(0);
    /// The plan of rtti's attributes; an index, since classes met later may add plans and move the array.
    size_t planOf(const RTTI& rtti)
    {
        return _lastPlan < _plans.size() && _plans[_lastPlan]._rtti == &rtti ? _lastPlan : findPlan(rtti);
    }
    /// planOf past the last plan found: the one before, a known one, or a new one.
    size_t findPlan(const RTTI& rtti);
    /// The plan of the class of the object step at index step, found at its first walk.
    size_t nestedPlan(size_t step) { return _steps[step]._plan != noPlan ? _steps[step]._plan : findNestedPlan(step); }
    size_t findNestedPlan(size_t step);
    /// True when objects of plan's class can be heard of in one call.
    bool isFlat(size_t plan) { return _plans[plan]._flat >= 0 ? _plans[plan]._flat != 0 : findFlat(plan); }
    bool findFlat(size_t plan);
    /// Adds the whole steps of a plan found flat.
    void addWholeSteps(size_t plan);
    /// Refuses for data that ends inside the run of stepCount steps from firstStep, which starts at the position.
    bool refuseInRun(size_t firstStep, size_t stepCount);
    /// Keeps the first refusal: its offset and its reason, formatted from arguments.
    void refuseWith(uint64_t offset, const char* format, va_list arguments);
    /// Refuses for data that ends before size more bytes, unless refused already. Always false.
    bool refuseEarlyEnd(size_t size);
    /// True when derived derives from base, remembered for the last pair asked.
    bool derives(const RTTI& derived, const RTTI& base);

    const uint8_t* _data;
    size_t _size;
    size_t _position = 0;
    IObserver* _observer;
    const AbstractAttribute* _attribute = nullptr;
    unsigned int _depth = 0;
    bool _refused = false;
    uint64_t _refusalOffset = 0;
    OrvString _refusalReason;
    PODArray<IdRecord> _ids;
    /// The classes and base-type tags ids stand for, each once; null first, for the unknown ids.
    PODArray<const void*> _whats;
    /// Where each id that waits for its body was met, for the refusal at the end.
    OrvMap<uint32_t, uint64_t> _waitingOffsets;
    /// How many ids wait for their body now.
    size_t _waitingCount = 0;
    PODArray<Plan> _plans;
    PODArray<Step> _steps;
    PODArray<WholeStep> _wholeSteps;
    PODArray<uint32_t> _wordOffsets;
    /// Ids of the pointer bodies being walked, outermost first; at most maxDepth.
    PODArray<uint32_t> _openBodies;
    /// A reference-counted object made for a plain pointer: its id and the offset of that pointer.
    struct CountedBody
    {
        uint32_t _id;
        uint64_t _offset;
    };
    /// Reference-counted objects made for plain pointers: each must be held by a smart pointer somewhere, or
    /// nothing would own it.
    PODArray<CountedBody> _countedBodies;
    /// Ids held by smart pointers.
    PODArray<uint32_t> _heldIds;
    /// Whether reference-counted objects must be held.
    bool _requireHeldCounted = false;
    PODArray<const AbstractAttribute*> _watchedAttributes;
    size_t _lastPlan = 0;
    size_t _previousPlan = 0;
    const RTTI* _lastDerived = nullptr;
    const RTTI* _lastBase = nullptr;
    /// The observer's answer for the elements of the last container of objects walked, and whose they are.
    const RTTI* _lastElementRTTI = nullptr;
    const AbstractAttribute* _lastHolder = nullptr;
    Notice _lastNotice = IObserver::EACH_CALL;
};

/// Type tests of the check; not for direct use.
namespace binaryStreamCheckDetail
{

/// Tells the containers, maps and pairs of the stream's forms apart, and what they hold.
template <typename T>
struct IsArray : std::false_type
{
};
template <typename T>
struct IsArray<Array<T>> : std::true_type
{
    typedef T Element;
};
template <typename T>
struct IsArray<PODArray<T>> : std::true_type
{
    typedef T Element;
};
template <typename T>
struct IsMap : std::false_type
{
};
template <typename K, typename V>
struct IsMap<OrvMap<K, V>> : std::true_type
{
    typedef K Key;
    typedef V Value;
};
template <typename T>
struct IsPair : std::false_type
{
};
template <typename A, typename B>
struct IsPair<std::pair<A, B>> : std::true_type
{
};

/// One object per base type, whose address tells the base types apart.
template <typename T>
struct BaseKind
{
    static const char tag;
};
template <typename T>
const char BaseKind<T>::tag = 0;

} // namespace binaryStreamCheckDetail

template <typename T>
size_t BinaryStreamCheck::minimumBytes()
{
    using namespace binaryStreamDetail;
    using namespace binaryStreamCheckDetail;
    if constexpr (std::is_pointer<T>::value || IsSmartPointer<T>::value)
    {
        return sizeof(uint32_t);
    }
    else if constexpr (IsInspectable<T>::value)
    {
        const RTTI* rtti = T::getClassRTTI();
        return rtti != nullptr ? minimumObjectBytes(*rtti) : 2 * sizeof(uint32_t);
    }
    else if constexpr (IsArray<T>::value || IsMap<T>::value || std::is_same<T, OrvString>::value)
    {
        return sizeof(uint32_t);
    }
    else if constexpr (IsPair<T>::value)
    {
        return minimumBytes<typename T::first_type>() + minimumBytes<typename T::second_type>();
    }
    else if constexpr (std::is_same<T, Vector3>::value)
    {
        return 3 * sizeof(float);
    }
    else if constexpr (IsWordValue<T>::value)
    {
        return sizeof(uint32_t);
    }
    else
    {
        return sizeof(T);
    }
}

template <typename T>
AttributeStreamShape BinaryStreamCheck::shapeOf()
{
    using namespace binaryStreamDetail;
    AttributeStreamShape shape;
    if constexpr (std::is_pointer<T>::value)
    {
        typedef std::remove_const_t<std::remove_pointer_t<T>> Pointee;
        if constexpr (IsInspectable<Pointee>::value)
        {
            shape._kind = AttributeStreamShape::POINTER;
            shape._rtti = Pointee::getClassRTTI();
        }
    }
    else if constexpr (IsSmartPointer<T>::value)
    {
        // Holds are walked by their own code, which refuses cycles: they are no steps of a plan.
        shape._kind = AttributeStreamShape::OTHER;
    }
    else if constexpr (IsInspectable<T>::value)
    {
        shape._kind = AttributeStreamShape::OBJECT;
        shape._rtti = T::getClassRTTI();
    }
    else if constexpr (std::is_same<T, bool>::value)
    {
        shape._kind = AttributeStreamShape::BOOL;
        shape._bytes = 1;
    }
    else if constexpr (IsWordValue<T>::value || (std::is_integral<T>::value && sizeof(T) == sizeof(uint32_t)))
    {
        shape._kind = AttributeStreamShape::WORD;
        shape._bytes = sizeof(uint32_t);
    }
    else if constexpr (std::is_same<T, Vector2>::value)
    {
        shape._kind = AttributeStreamShape::PLAIN;
        shape._bytes = 2 * sizeof(float);
    }
    else if constexpr (std::is_same<T, Vector3>::value)
    {
        shape._kind = AttributeStreamShape::PLAIN;
        shape._bytes = 3 * sizeof(float);
    }
    else if constexpr (std::is_same<T, Vector4>::value || std::is_same<T, Quaternion>::value)
    {
        shape._kind = AttributeStreamShape::PLAIN;
        shape._bytes = 4 * sizeof(float);
    }
    else if constexpr (std::is_arithmetic<T>::value || std::is_same<T, Uuid>::value)
    {
        shape._kind = AttributeStreamShape::PLAIN;
        shape._bytes = sizeof(T);
    }
    if ((shape._kind == AttributeStreamShape::POINTER || shape._kind == AttributeStreamShape::OBJECT) &&
        shape._rtti == nullptr)
    {
        // Without a descriptor the value's own walk gives the refusal.
        shape._kind = AttributeStreamShape::OTHER;
    }
    return shape;
}

template <typename T>
bool BinaryStreamCheck::checkValue()
{
    using namespace binaryStreamDetail;
    using namespace binaryStreamCheckDetail;
    if (_refused)
    {
        return false;
    }
    if constexpr (std::is_pointer<T>::value)
    {
        typedef std::remove_const_t<std::remove_pointer_t<T>> Pointee;
        if constexpr (IsInspectable<Pointee>::value)
        {
            return checkInspectablePointer(Pointee::getClassRTTI());
        }
        else
        {
            return checkBaseTypePointer(&BaseKind<Pointee>::tag, &checkBodyOf<Pointee>);
        }
    }
    else if constexpr (IsSmartPointer<T>::value)
    {
        return checkHeldPointer(IsSmartPointer<T>::Pointee::getClassRTTI());
    }
    else if constexpr (IsInspectable<T>::value)
    {
        const RTTI* rtti = T::getClassRTTI();
        if (rtti == nullptr)
        {
            return refuse("a class of the stream has no descriptor");
        }
        return checkObject(*rtti);
    }
    else if constexpr (IsArray<T>::value)
    {
        typedef typename IsArray<T>::Element Element;
        uint32_t count = 0;
        if (!checkCount(count, minimumBytes<Element>()))
        {
            return false;
        }
        constexpr bool indirect = std::is_pointer<Element>::value || IsSmartPointer<Element>::value;
        if constexpr (!indirect && IsInspectable<Element>::value)
        {
            const RTTI* rtti = Element::getClassRTTI();
            if (count != 0 && rtti == nullptr)
            {
                return refuse("a class of the stream has no descriptor");
            }
            return count == 0 || checkObjects(*rtti, count);
        }
        else if constexpr (!indirect && !std::is_same<Element, bool>::value &&
                           (IsWordValue<Element>::value ||
                            (std::is_integral<Element>::value && sizeof(Element) == sizeof(uint32_t))))
        {
            return checkWords(count);
        }
        else
        {
            for (uint32_t i = 0; i < count; ++i)
            {
                if (!checkValue<Element>())
                {
                    return false;
                }
            }
            return true;
        }
    }
    else if constexpr (IsMap<T>::value)
    {
        typedef typename IsMap<T>::Key Key;
        typedef typename IsMap<T>::Value Value;
        uint32_t count = 0;
        if (!checkCount(count, minimumBytes<Key>() + minimumBytes<Value>()))
        {
            return false;
        }
        for (uint32_t i = 0; i < count; ++i)
        {
            if (!checkValue<Key>() || !checkValue<Value>())
            {
                return false;
            }
        }
        return true;
    }
    else if constexpr (IsPair<T>::value)
    {
        return checkValue<typename T::first_type>() && checkValue<typename T::second_type>();
    }
    else if constexpr (std::is_same<T, OrvString>::value)
    {
        uint32_t length = 0;
        return checkCount(length, 1) && skipBytes(length);
    }
    else if constexpr (std::is_same<T, Vector2>::value)
    {
        return skipBytes(2 * sizeof(float));
    }
    else if constexpr (std::is_same<T, Vector3>::value)
    {
        return skipBytes(3 * sizeof(float));
    }
    else if constexpr (std::is_same<T, Vector4>::value || std::is_same<T, Quaternion>::value)
    {
        return skipBytes(4 * sizeof(float));
    }
    else if constexpr (std::is_same<T, bool>::value)
    {
        unsigned char byte = 0;
        if (!readBytes(&byte, 1))
        {
            return false;
        }
        if (_observer != nullptr)
        {
            _observer->onBool(*this, byte != 0);
        }
        return !_refused;
    }
    else if constexpr (IsWordValue<T>::value || (std::is_integral<T>::value && sizeof(T) == sizeof(uint32_t)))
    {
        uint32_t word = 0;
        if (!readBytes(&word, sizeof(word)))
        {
            return false;
        }
        if (_observer != nullptr)
        {
            _observer->onWord(*this, word);
        }
        return !_refused;
    }
    else
    {
        static_assert(std::is_arithmetic<T>::value || std::is_same<T, Uuid>::value,
                      "a value type the binary stream check does not know");
        return skipBytes(sizeof(T));
    }
}

template <typename T>
bool BinaryStreamCheck::checkBodyOf(BinaryStreamCheck& check)
{
    return check.checkValue<T>();
}

} // namespace orv
