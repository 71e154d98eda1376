// orvCore/system/serialization/orvBinaryStreamCheck.cpp
#include "system/serialization/orvBinaryStreamCheck.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "system/inspection/orvAbstractAttribute.h"

namespace orv
{

namespace
{

enum IdState : uint8_t
{
    ID_UNKNOWN = 0,
    ID_BY_VALUE = 1,
    ID_POINTER_BODY = 2,
    ID_WAITING_FOR_BODY = 3,
    ID_BASE_VALUE = 4
};

} // namespace

BinaryStreamCheck::IObserver::~IObserver() = default;

void BinaryStreamCheck::IObserver::onObjectBegin(BinaryStreamCheck&, const RTTI&, uint32_t)
{
}

void BinaryStreamCheck::IObserver::onObjectEnd(BinaryStreamCheck&, const RTTI&)
{
}

void BinaryStreamCheck::IObserver::onWord(BinaryStreamCheck&, uint32_t)
{
}

void BinaryStreamCheck::IObserver::onBool(BinaryStreamCheck&, bool)
{
}

void BinaryStreamCheck::IObserver::onCount(BinaryStreamCheck&, uint32_t)
{
}

void BinaryStreamCheck::IObserver::onPointer(BinaryStreamCheck&, uint32_t)
{
}

bool BinaryStreamCheck::IObserver::watches(const AbstractAttribute&) const
{
    return true;
}

bool BinaryStreamCheck::IObserver::watchesObjects(const RTTI&, const AbstractAttribute&)
{
    return true;
}

BinaryStreamCheck::BinaryStreamCheck(const uint8_t* data, size_t size, IObserver* observer)
    : _data(data), _size(data != nullptr ? size : 0), _observer(observer)
{
    // Id 0 is null for good.
    _ids.resize(1);
    _ids[0] = IdRecord();
}

bool BinaryStreamCheck::checkEnd()
{
    if (_refused)
    {
        return false;
    }
    for (size_t id = 1; id < _ids.size(); ++id)
    {
        if (_ids[id]._state == ID_WAITING_FOR_BODY)
        {
            OrvMap<uint32_t, uint64_t>::iterator offset = _waitingOffsets.find(static_cast<uint32_t>(id));
            return refuseAt(offset != _waitingOffsets.end() ? offset->_value : _position,
                            "object %u of class %s is reached by pointer and never read", static_cast<unsigned int>(id),
                            _ids[id].rtti()->getTypeName());
        }
    }
    if (_position != _size)
    {
        return refuse("%lu bytes follow the last value", static_cast<unsigned long>(_size - _position));
    }
    return true;
}

bool BinaryStreamCheck::refuse(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    refuseWith(_position, format, arguments);
    va_end(arguments);
    return false;
}

bool BinaryStreamCheck::refuseAt(uint64_t offset, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    refuseWith(offset, format, arguments);
    va_end(arguments);
    return false;
}

void BinaryStreamCheck::refuseWith(uint64_t offset, const char* format, va_list arguments)
{
    if (_refused)
    {
        return;
    }
    char reason[512];
    vsnprintf(reason, sizeof(reason), format, arguments);
    _refused = true;
    _refusalOffset = offset;
    _refusalReason = reason;
}

const RTTI* BinaryStreamCheck::getClassOfId(uint32_t id) const
{
    return id < _ids.size() ? _ids[id].rtti() : nullptr;
}

BinaryStreamCheck::IdRecord* BinaryStreamCheck::growRecords(uint32_t id)
{
    // The writer numbers every object and value it meets from 1 up, and each costs at least 4 bytes: an id past
    // that bound cannot come from a stream, and refusing it keeps the table as small as the data.
    if (id > _size / 4 + 1)
    {
        refuse("id %u is larger than a stream of %lu bytes can hold", static_cast<unsigned int>(id),
               static_cast<unsigned long>(_size));
        return nullptr;
    }
    // Ids come mostly one after the other: doubling keeps the growth amortised, within the bound above.
    const size_t bound = _size / 4 + 2;
    size_t size = _ids.size() * 2 + 64;
    if (size <= id)
    {
        size = static_cast<size_t>(id) + 1;
    }
    _ids.resize(size < bound ? size : bound);
    return &_ids[id];
}

size_t BinaryStreamCheck::findPlan(const RTTI& rtti)
{
    // A world has a handful of classes, met in patterns such as an entity and then its generator: the last two
    // found are the usual answer.
    if (_previousPlan < _plans.size() && _plans[_previousPlan]._rtti == &rtti)
    {
        std::swap(_lastPlan, _previousPlan);
        return _lastPlan;
    }
    for (size_t i = 0; i < _plans.size(); ++i)
    {
        if (_plans[i]._rtti == &rtti)
        {
            _previousPlan = _lastPlan;
            _lastPlan = i;
            return i;
        }
    }
    Plan plan;
    plan._rtti = &rtti;
    plan._first = _steps.size();
    const PODArray<const AbstractAttribute*>& attributes = rtti.getAllAttributes();
    for (size_t i = 0; i < attributes.size(); ++i)
    {
        const AbstractAttribute* attribute = attributes[i];
        const AttributeStreamShape shape = attribute->getStreamShape();
        const bool watched = _observer != nullptr && _observer->watches(*attribute);
        // A float or a vector gives the observer nothing, watched or not.
        const bool silent =
            shape._kind == AttributeStreamShape::PLAIN ||
            ((shape._kind == AttributeStreamShape::WORD || shape._kind == AttributeStreamShape::BOOL) && !watched);
        if (silent && _steps.size() > plan._first && _steps.back()._kind == AttributeStreamShape::PLAIN)
        {
            _steps.back()._bytes += shape._bytes;
        }
        else if (silent)
        {
            _steps.push_back(Step{AttributeStreamShape::PLAIN, nullptr, shape._bytes, nullptr, false});
        }
        else if (shape._kind == AttributeStreamShape::BOOL)
        {
            _steps.push_back(Step{AttributeStreamShape::OTHER, attribute, 0, nullptr, false});
        }
        else
        {
            const bool notify = shape._kind == AttributeStreamShape::OBJECT && _observer != nullptr &&
                                _observer->watchesObjects(*shape._rtti, *attribute);
            _steps.push_back(Step{shape._kind, attribute, shape._bytes, shape._rtti, notify});
        }
    }
    plan._count = _steps.size() - plan._first;
    plan._attributesCount = static_cast<uint32_t>(attributes.size());
    _previousPlan = _lastPlan;
    _lastPlan = _plans.size();
    _plans.push_back(plan);
    return _lastPlan;
}

bool BinaryStreamCheck::refuseEarlyEnd(size_t size)
{
    if (_refused)
    {
        return false;
    }
    return refuse("the data ends early: %lu bytes needed, %lu left", static_cast<unsigned long>(size),
                  static_cast<unsigned long>(_size - _position));
}

bool BinaryStreamCheck::derives(const RTTI& derived, const RTTI& base)
{
    if (&derived == _lastDerived && &base == _lastBase)
    {
        return true;
    }
    if (!derived.isDerivedFrom(base))
    {
        return false;
    }
    _lastDerived = &derived;
    _lastBase = &base;
    return true;
}

bool BinaryStreamCheck::checkCount(uint32_t& count, size_t elementBytes)
{
    const uint64_t offset = _position;
    if (!readBytes(&count, sizeof(count)))
    {
        return false;
    }
    // Checked before anything is sized by it: the reader makes count elements in its first pass.
    if (elementBytes != 0 && count > (_size - _position) / elementBytes)
    {
        return refuseAt(offset, "a count of %u is larger than the %lu remaining bytes can hold",
                        static_cast<unsigned int>(count), static_cast<unsigned long>(_size - _position));
    }
    if (_observer != nullptr)
    {
        _observer->onCount(*this, count);
    }
    return !_refused;
}

bool BinaryStreamCheck::checkObject(const RTTI& rtti)
{
    return checkObjectBody(rtti, 0, true);
}

bool BinaryStreamCheck::checkObjectBody(const RTTI& rtti, uint32_t pointerId, bool notify)
{
    const uint64_t offset = _position;
    uint32_t id = 0;
    uint32_t attributesCount = 0;
    if (!readBytes(&id, sizeof(id)) || !readBytes(&attributesCount, sizeof(attributesCount)))
    {
        return false;
    }
    // An index, not an address: classes met inside may add plans and move the array.
    const size_t plan = planOf(rtti);
    if (attributesCount != _plans[plan]._attributesCount)
    {
        return refuseAt(offset + sizeof(id), "an object of class %s has %u attributes, the stream gives %u",
                        rtti.getTypeName(), rtti.getAttributesCount(), static_cast<unsigned int>(attributesCount));
    }
    if (_depth >= maxDepth)
    {
        return refuseAt(offset, "objects nest deeper than %u", maxDepth);
    }
    if (pointerId != 0)
    {
        // The body of an object reached by pointer carries the pointer's id again.
        if (id != pointerId)
        {
            return refuseAt(offset, "a body of id %u follows a pointer of id %u", static_cast<unsigned int>(id),
                            static_cast<unsigned int>(pointerId));
        }
    }
    else if (id != 0)
    {
        IdRecord* record = recordOf(id);
        if (record == nullptr)
        {
            return false;
        }
        switch (record->_state)
        {
        case ID_UNKNOWN:
            break;
        case ID_WAITING_FOR_BODY:
            // The reader destroys the instance it made for the pointer through this class: they must be one.
            if (record->_what != &rtti)
            {
                return refuseAt(offset, "object %u is read as %s but was reached by pointer as %s",
                                static_cast<unsigned int>(id), rtti.getTypeName(), record->rtti()->getTypeName());
            }
            break;
        default:
            return refuseAt(offset, "id %u is given to two objects", static_cast<unsigned int>(id));
        }
        // The reader gives an id the address of the last object read under it, and every pointer that address:
        // an id taken twice by objects read by value would send pointers checked against the first to the second.
        record->_what = &rtti;
        record->_state = ID_BY_VALUE;
    }
    if (notify && _observer != nullptr)
    {
        _observer->onObjectBegin(*this, rtti, id);
    }
    ++_depth;
    const AbstractAttribute* holder = _attribute;
    const size_t first = _plans[plan]._first;
    const size_t count = _plans[plan]._count;
    for (size_t i = first; i < first + count && !_refused; ++i)
    {
        // Read field by field, and again at each step: a step may add plans and move the array.
        const Step& step = _steps[i];
        const AttributeStreamShape::Kind kind = step._kind;
        _attribute = step._attribute;
        switch (kind)
        {
        case AttributeStreamShape::PLAIN:
            skipBytes(step._bytes);
            break;
        case AttributeStreamShape::WORD:
        {
            // Only watched words are steps of their own: the observer is there.
            uint32_t word = 0;
            if (readBytes(&word, sizeof(word)))
            {
                _observer->onWord(*this, word);
            }
            break;
        }
        case AttributeStreamShape::POINTER:
            checkInspectablePointer(step._rtti);
            break;
        case AttributeStreamShape::OBJECT:
        {
            const RTTI* objectRTTI = step._rtti;
            checkObjectBody(*objectRTTI, 0, step._notify);
            break;
        }
        default:
            _attribute->check(*this);
            break;
        }
    }
    _attribute = holder;
    --_depth;
    if (notify && !_refused && _observer != nullptr)
    {
        _observer->onObjectEnd(*this, rtti);
    }
    return !_refused;
}

bool BinaryStreamCheck::checkInspectablePointer(const RTTI* expected)
{
    const uint64_t offset = _position;
    uint32_t id = 0;
    if (!readBytes(&id, sizeof(id)))
    {
        return false;
    }
    if (_observer != nullptr)
    {
        _observer->onPointer(*this, id);
        if (_refused)
        {
            return false;
        }
    }
    if (id == 0)
    {
        return true;
    }
    Uuid typeID;
    unsigned char hasBody = 0;
    if (!readBytes(&typeID, sizeof(typeID)) || !readBytes(&hasBody, sizeof(hasBody)))
    {
        return false;
    }
    if (hasBody > 1)
    {
        return refuseAt(offset, "a pointer's body flag is %u", static_cast<unsigned int>(hasBody));
    }
    if (expected == nullptr)
    {
        return refuseAt(offset, "an object stands where a class without descriptor is expected");
    }
    IdRecord* record = recordOf(id);
    if (record == nullptr)
    {
        return false;
    }
    if (record->_state != ID_UNKNOWN)
    {
        // Both read passes take a known id's object from the id and pass over the class the pointer names.
        // The first pass skips the body of a known id and the second reads it: the two would part ways.
        if (hasBody != 0)
        {
            return refuseAt(offset, "object %u has a second body", static_cast<unsigned int>(id));
        }
        const RTTI* known = record->rtti();
        if (known == nullptr || !derives(*known, *expected))
        {
            return refuseAt(offset, "id %u, of %s, stands where %s is expected", static_cast<unsigned int>(id),
                            known != nullptr ? known->getTypeName() : "a value of a base type",
                            expected->getTypeName());
        }
        return true;
    }
    const RTTI* rtti = RTTI::getRTTI(typeID);
    if (rtti == nullptr)
    {
        return refuseAt(offset, "%s is not a registered class", typeID.getString().c_str());
    }
    if (!derives(*rtti, *expected))
    {
        return refuseAt(offset, "an object of class %s stands where %s is expected", rtti->getTypeName(),
                        expected->getTypeName());
    }
    if (!RTTI::canCreateInstance(typeID))
    {
        return refuseAt(offset, "class %s cannot be created from a stream", rtti->getTypeName());
    }
    record->_what = rtti;
    if (hasBody == 0)
    {
        record->_state = ID_WAITING_FOR_BODY;
        _waitingOffsets.insert(id, offset);
        return true;
    }
    record->_state = ID_POINTER_BODY;
    return checkObjectBody(*rtti, id, true);
}

bool BinaryStreamCheck::checkBaseTypePointer(const void* kind, bool (*checkBody)(BinaryStreamCheck&))
{
    const uint64_t offset = _position;
    uint32_t id = 0;
    unsigned char hasBody = 0;
    if (!readBytes(&id, sizeof(id)) || !readBytes(&hasBody, sizeof(hasBody)))
    {
        return false;
    }
    if (id == 0)
    {
        return hasBody == 0 ? true : refuseAt(offset, "a null pointer has a body");
    }
    IdRecord* record = recordOf(id);
    if (record == nullptr)
    {
        return false;
    }
    // The first read pass reads a body at the first meeting of an id, the second wherever the flag is set.
    if (record->_state == ID_UNKNOWN)
    {
        if (hasBody != 1)
        {
            return refuseAt(offset, "value %u is met first without its body", static_cast<unsigned int>(id));
        }
        record->_state = ID_BASE_VALUE;
        record->_what = kind;
        return checkBody(*this);
    }
    if (hasBody != 0)
    {
        return refuseAt(offset, "value %u has a second body", static_cast<unsigned int>(id));
    }
    if (record->_state != ID_BASE_VALUE || record->_what != kind)
    {
        return refuseAt(offset, "id %u stands for a value of another type", static_cast<unsigned int>(id));
    }
    return true;
}

size_t BinaryStreamCheck::minimumObjectBytes(const RTTI& rtti)
{
    // Id and attribute count, and at least one byte for each attribute: enough to bound what a count can make.
    return 2 * sizeof(uint32_t) + rtti.getAttributesCount();
}

} // namespace orv
