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
            return refuseAt(_ids[id]._firstOffset, "object %u of class %s is reached by pointer and never read",
                            static_cast<unsigned int>(id), _ids[id]._rtti->getTypeName());
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
    if (_refused)
    {
        return false;
    }
    char reason[512];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(reason, sizeof(reason), format, arguments);
    va_end(arguments);
    _refused = true;
    _refusalOffset = _position;
    _refusalReason = reason;
    return false;
}

bool BinaryStreamCheck::refuseAt(uint64_t offset, const char* format, ...)
{
    if (_refused)
    {
        return false;
    }
    char reason[512];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(reason, sizeof(reason), format, arguments);
    va_end(arguments);
    _refused = true;
    _refusalOffset = offset;
    _refusalReason = reason;
    return false;
}

const RTTI* BinaryStreamCheck::getClassOfId(uint32_t id) const
{
    return id < _ids.size() ? _ids[id]._rtti : nullptr;
}

BinaryStreamCheck::IdRecord* BinaryStreamCheck::recordOf(uint32_t id)
{
    // The writer numbers every object and value it meets from 1 up, and each costs at least 4 bytes: an id past
    // that bound cannot come from a stream, and refusing it keeps the table as small as the data.
    if (id > _size / 4 + 1)
    {
        refuse("id %u is larger than a stream of %lu bytes can hold", static_cast<unsigned int>(id),
               static_cast<unsigned long>(_size));
        return nullptr;
    }
    if (id >= _ids.size())
    {
        const size_t previous = _ids.size();
        _ids.resize(id + 1);
        for (size_t i = previous; i < _ids.size(); ++i)
        {
            _ids[i] = IdRecord();
        }
    }
    return &_ids[id];
}

size_t BinaryStreamCheck::attributesOf(const RTTI& rtti)
{
    // A world has a handful of classes and meets them in runs: the last one found is the usual answer.
    if (_lastList < _attributeListOfClass.size() && _attributeListOfClass[_lastList]._rtti == &rtti)
    {
        return _attributeListOfClass[_lastList]._first;
    }
    for (size_t i = 0; i < _attributeListOfClass.size(); ++i)
    {
        if (_attributeListOfClass[i]._rtti == &rtti)
        {
            _lastList = i;
            return _attributeListOfClass[i]._first;
        }
    }
    AttributeList list;
    list._rtti = &rtti;
    list._first = _attributeLists.size();
    const unsigned int count = rtti.getAttributesCount();
    for (unsigned int i = 0; i < count; ++i)
    {
        _attributeLists.push_back(rtti.getAttribute(i));
    }
    _lastList = _attributeListOfClass.size();
    _attributeListOfClass.push_back(list);
    return list._first;
}

bool BinaryStreamCheck::readBytes(void* data, size_t size)
{
    if (_refused)
    {
        return false;
    }
    if (size > _size - _position)
    {
        return refuse("the data ends early: %lu bytes needed, %lu left", static_cast<unsigned long>(size),
                      static_cast<unsigned long>(_size - _position));
    }
    memcpy(data, _data + _position, size);
    _position += size;
    return true;
}

bool BinaryStreamCheck::skipBytes(size_t size)
{
    if (_refused)
    {
        return false;
    }
    if (size > _size - _position)
    {
        return refuse("the data ends early: %lu bytes needed, %lu left", static_cast<unsigned long>(size),
                      static_cast<unsigned long>(_size - _position));
    }
    _position += size;
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
    return checkObjectBody(rtti, 0);
}

bool BinaryStreamCheck::checkObjectBody(const RTTI& rtti, uint32_t pointerId)
{
    const uint64_t offset = _position;
    uint32_t id = 0;
    uint32_t attributesCount = 0;
    if (!readBytes(&id, sizeof(id)) || !readBytes(&attributesCount, sizeof(attributesCount)))
    {
        return false;
    }
    if (attributesCount != rtti.getAttributesCount())
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
            if (record->_rtti != &rtti)
            {
                return refuseAt(offset, "object %u is read as %s but was reached by pointer as %s",
                                static_cast<unsigned int>(id), rtti.getTypeName(), record->_rtti->getTypeName());
            }
            break;
        default:
            return refuseAt(offset, "id %u is given to two objects", static_cast<unsigned int>(id));
        }
        // The reader gives an id the address of the last object read under it, and every pointer that address:
        // an id taken twice by objects read by value would send pointers checked against the first to the second.
        record->_rtti = &rtti;
        record->_state = ID_BY_VALUE;
        record->_firstOffset = offset;
    }
    if (_observer != nullptr)
    {
        _observer->onObjectBegin(*this, rtti, id);
    }
    ++_depth;
    const AbstractAttribute* holder = _attribute;
    // An index, not an address: classes met inside may add lists and move the array.
    const size_t first = attributesOf(rtti);
    for (uint32_t i = 0; i < attributesCount && !_refused; ++i)
    {
        _attribute = _attributeLists[first + i];
        _attribute->check(*this);
    }
    _attribute = holder;
    --_depth;
    if (!_refused && _observer != nullptr)
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
    const RTTI* rtti = RTTI::getRTTI(typeID);
    if (rtti == nullptr)
    {
        return refuseAt(offset, "%s is not a registered class", typeID.getString().c_str());
    }
    if (expected == nullptr || !rtti->isDerivedFrom(*expected))
    {
        return refuseAt(offset, "an object of class %s stands where %s is expected", rtti->getTypeName(),
                        expected != nullptr ? expected->getTypeName() : "a class without descriptor");
    }
    IdRecord* record = recordOf(id);
    if (record == nullptr)
    {
        return false;
    }
    if (record->_state != ID_UNKNOWN)
    {
        // The first read pass skips the body of a known id and the second reads it: the two would part ways.
        if (hasBody != 0)
        {
            return refuseAt(offset, "object %u has a second body", static_cast<unsigned int>(id));
        }
        if (record->_rtti == nullptr || !record->_rtti->isDerivedFrom(*expected))
        {
            return refuseAt(offset, "id %u, of %s, stands where %s is expected", static_cast<unsigned int>(id),
                            record->_rtti != nullptr ? record->_rtti->getTypeName() : "a value of a base type",
                            expected->getTypeName());
        }
        return true;
    }
    if (!RTTI::canCreateInstance(typeID))
    {
        return refuseAt(offset, "class %s cannot be created from a stream", rtti->getTypeName());
    }
    record->_rtti = rtti;
    record->_firstOffset = offset;
    if (hasBody == 0)
    {
        record->_state = ID_WAITING_FOR_BODY;
        return true;
    }
    record->_state = ID_POINTER_BODY;
    return checkObjectBody(*rtti, id);
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
        record->_baseKind = kind;
        record->_firstOffset = offset;
        return checkBody(*this);
    }
    if (hasBody != 0)
    {
        return refuseAt(offset, "value %u has a second body", static_cast<unsigned int>(id));
    }
    if (record->_state != ID_BASE_VALUE || record->_baseKind != kind)
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
