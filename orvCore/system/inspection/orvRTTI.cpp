// orvCore/system/inspection/orvRTTI.cpp
#include "system/inspection/orvRTTI.h"

#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <sstream>

#include "system/debug/orvAssert.h"
#include "system/inspection/orvAbstractAttribute.h"
#include "system/inspection/orvRTTIAccessor.h"
#include "system/inspection/orvRTTIAllocator.h"
#include "system/log/orvCoreLog.h"
#include "system/utils/orvStringUtils.h"

namespace orv
{

namespace
{

// Owned by start-up: rewound by initCore, never compacted. Names stay valid until the next rewind.
char RTTIConcatBuffer[RTTI_STRING_CONCAT_LENGTH];
uint64_t RTTIConcatBufferIndex = 0;

const char* orEmpty(const char* text)
{
    return text != nullptr ? text : "";
}

const char* concatFormat(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    const int length = vsnprintf(nullptr, 0, format, args);
    va_end(args);

    // The room is claimed and checked before the write, so a full buffer stops the process and is never overrun.
    const uint64_t position = RTTIConcatBufferIndex;
    RTTIConcatBufferIndex += static_cast<uint64_t>(length) + 1u;
    orvAssert(RTTIConcatBufferIndex < RTTI_STRING_CONCAT_LENGTH);

    va_start(args, format);
    vsnprintf(RTTIConcatBuffer + position, static_cast<size_t>(length) + 1u, format, args);
    va_end(args);
    return RTTIConcatBuffer + position;
}

// A name in its normalised form, on the stack unless it is long.
class NormalisedName
{
public:
    explicit NormalisedName(const char* name)
    {
        name = orEmpty(name);
        const size_t length = strlen(name);
        char* destination = _local;
        if (length >= sizeof(_local))
        {
            _heap.resize(length + 1);
            destination = _heap.data();
        }
        alphaNumerizeNameWithCopy(name, destination);
        _text = destination;
    }
    const char* c_str() const { return _text; }

private:
    char _local[256];
    PODArray<char> _heap;
    const char* _text = nullptr;
};

} // namespace

const char* RTTIConcat(const char* a)
{
    return concatFormat("%s", orEmpty(a));
}

const char* RTTIConcat(const char* a, const char* b)
{
    return concatFormat("%s<%s>", orEmpty(a), orEmpty(b));
}

const char* RTTIConcat(const char* a, const char* b, const char* c)
{
    return concatFormat("%s<%s,%s>", orEmpty(a), orEmpty(b), orEmpty(c));
}

const char* RTTIConcat(const char* a, const char* b, const char* c, const char* d)
{
    return concatFormat("%s<%s,%s,%s>", orEmpty(a), orEmpty(b), orEmpty(c), orEmpty(d));
}

const char* RTTIConcat(const char* a, const char* b, const char* c, const char* d, const char* e)
{
    return concatFormat("%s<%s,%s,%s,%s>", orEmpty(a), orEmpty(b), orEmpty(c), orEmpty(d), orEmpty(e));
}

const char* RTTIConcat(const char* a, const char* b, const OrvString& c)
{
    return RTTIConcat(a, b, c.c_str());
}

void resetRTTIConcatBuffer()
{
    RTTIConcatBufferIndex = 0;
}

uint64_t getRTTIConcatBufferIndex()
{
    return RTTIConcatBufferIndex;
}

IRTTICreator::~IRTTICreator() = default;

OrvMap<Uuid, IRTTICreator*>* RTTI::_rttiFactory = nullptr;
OrvMap<OrvStaticString, Uuid>* RTTI::_typeNameToTypeID = nullptr;
OrvMap<Uuid, const RTTI*>* RTTI::_typeIDToRTTI = nullptr;

RTTI::RTTI(const Uuid& typeID, const char* typeName) : _typeID(typeID), _typeName(typeName)
{
}

RTTI::~RTTI()
{
    // Only the registered descriptor of an identifier owns its entries: one that create() overwrote leaves the
    // newer descriptor's entries and creator alone.
    if (_typeIDToRTTI != nullptr)
    {
        OrvMap<Uuid, const RTTI*>::iterator entry = _typeIDToRTTI->find(_typeID);
        if (entry != _typeIDToRTTI->end() && entry->_value == this)
        {
            OrvMap<Uuid, IRTTICreator*>::iterator creator = _rttiFactory->find(_typeID);
            if (creator != _rttiFactory->end())
            {
                delete creator->_value;
                _rttiFactory->erase(creator);
            }
            OrvMap<OrvStaticString, Uuid>::iterator name = _typeNameToTypeID->find(OrvStaticString(_typeName));
            if (name != _typeNameToTypeID->end() && name->_value == _typeID)
            {
                _typeNameToTypeID->erase(name);
            }
            _typeIDToRTTI->erase(entry);
        }
    }
    for (size_t i = 0; i < _attributes.size(); ++i)
    {
        delete _attributes[i];
    }
    _attributes.set_capacity(0);
    _baseClassesRTTI.set_capacity(0);
    _allAttributes.set_capacity(0);
    _allAttributesLayout.store(0, std::memory_order_relaxed);
    layoutChanged();
}

void* RTTI::operator new(size_t size)
{
    MemoryAllocator* allocator = getRTTIAllocator();
    void* block = allocator != nullptr
                      ? allocator->allocate(size, MemoryAllocator::DEFAULT_ALIGN, MemoryStatIds::CoreSystemInspection)
                      : malloc(size);
    orvAssertMsg(block != nullptr, "out of memory for a class descriptor of %zu bytes", size);
    return block;
}

void RTTI::operator delete(void* pointer)
{
    if (pointer == nullptr)
    {
        return;
    }
    // Descriptors are made and deleted while the allocator is bound, between initCore and finishCore; outside,
    // both sides fall back to malloc.
    MemoryAllocator* allocator = getRTTIAllocator();
    if (allocator != nullptr)
    {
        allocator->deallocate(pointer, MemoryStatIds::CoreSystemInspection);
    }
    else
    {
        free(pointer);
    }
}

RTTI* RTTI::checkBeforeCreate(const Uuid& typeID, const char* name)
{
    if (_typeIDToRTTI == nullptr)
    {
        return nullptr;
    }
    OrvMap<Uuid, const RTTI*>::iterator entry = _typeIDToRTTI->find(typeID);
    if (entry == _typeIDToRTTI->end())
    {
        return nullptr;
    }
    const char* copy = RTTIConcat(name);
    const RTTI* found = entry->_value;
    if (strcmp(copy, found->_typeName) == 0)
    {
        return const_cast<RTTI*>(found);
    }

    // One identifier for two names would make files ambiguous: stop here, loudly.
    std::ostringstream message;
    message << "Type ID " << typeID.getString() << " trying to register with the TypeName : " << copy
            << " is already registered with a different TypeName : " << found->_typeName;
    printErrorMessage(message.str().c_str());
    orvLogCore(LogSeverity::LOG_CRITICAL, message.str());
    showCallStack();
    raise(SIGTRAP);
    exit(-1);
}

RTTI* RTTI::create(const Uuid& typeID, const char* name, IRTTICreator* creator)
{
    orvAssertMsg(!typeID.isNull(), "TypeID is NULL for RTTI %s", orEmpty(name));
    orvAssertMsg(name != 0, "Name is NULL for RTTI %s", typeID.getString().c_str());
    orvAssertMsg(_typeIDToRTTI != nullptr, "the class registries are not allocated, for RTTI %s", name);

    RTTI* rtti = new RTTI(typeID, RTTIConcat(name));
    // Keyed on the descriptor's own copy of the name, which lives as long as the buffer.
    (*_typeNameToTypeID)[OrvStaticString(rtti->_typeName)] = typeID;
    (*_typeIDToRTTI)[typeID] = rtti;
    IRTTICreator*& registered = (*_rttiFactory)[typeID];
    if (registered != creator)
    {
        delete registered;
    }
    registered = creator;
    return rtti;
}

void RTTI::allocateStaticRTTIs()
{
    if (_typeIDToRTTI == nullptr)
    {
        _rttiFactory = new OrvMap<Uuid, IRTTICreator*>();
        _typeNameToTypeID = new OrvMap<OrvStaticString, Uuid>();
        _typeIDToRTTI = new OrvMap<Uuid, const RTTI*>();
    }
}

void RTTI::deallocateStaticRTTIs()
{
    if (_rttiFactory != nullptr)
    {
        for (OrvMap<Uuid, IRTTICreator*>::iterator it = _rttiFactory->begin(); it != _rttiFactory->end(); ++it)
        {
            delete it->_value;
        }
    }
    delete _rttiFactory;
    delete _typeNameToTypeID;
    delete _typeIDToRTTI;
    _rttiFactory = nullptr;
    _typeNameToTypeID = nullptr;
    _typeIDToRTTI = nullptr;
}

void RTTI::createRTTIs()
{
    createRTTIBaseTypeAccessors();
}

void RTTI::destroyRTTIs()
{
    destroyRTTIBaseTypeAccessors();
    if (_typeIDToRTTI == nullptr)
    {
        return;
    }
    // Whatever is left goes, held or not: the leftmost entry each time, until none remains.
    while (!_typeIDToRTTI->empty())
    {
        OrvMap<Uuid, const RTTI*>::iterator first = _typeIDToRTTI->begin();
        const Uuid typeID = first->_key;
        delete first->_value;
        _typeIDToRTTI->erase(typeID);
    }
}

bool RTTI::areStaticRTTIsAllocated()
{
    return _typeIDToRTTI != nullptr;
}

const Uuid& RTTI::getTypeID(const char* name)
{
    static const Uuid nullTypeID;
    if (_typeNameToTypeID == nullptr)
    {
        return nullTypeID;
    }
    OrvMap<OrvStaticString, Uuid>::const_iterator entry = _typeNameToTypeID->find(OrvStaticString(name));
    return entry != _typeNameToTypeID->end() ? entry->_value : nullTypeID;
}

const char* RTTI::getTypeName(const Uuid& typeID)
{
    const RTTI* rtti = getRTTI(typeID);
    return rtti != nullptr ? rtti->_typeName : nullptr;
}

const RTTI* RTTI::getRTTI(const Uuid& typeID)
{
    if (_typeIDToRTTI == nullptr)
    {
        return nullptr;
    }
    OrvMap<Uuid, const RTTI*>::const_iterator entry = _typeIDToRTTI->find(typeID);
    return entry != _typeIDToRTTI->end() ? entry->_value : nullptr;
}

PODArray<const RTTI*> RTTI::getRTTIs(const Uuid& typeID)
{
    PODArray<const RTTI*> result;
    const RTTI* base = getRTTI(typeID);
    if (base == nullptr)
    {
        return result;
    }
    for (OrvMap<Uuid, const RTTI*>::const_iterator it = _typeIDToRTTI->begin(); it != _typeIDToRTTI->end(); ++it)
    {
        if (it->_value->isDerivedFrom(*base))
        {
            result.push_back(it->_value);
        }
    }
    return result;
}

void* RTTI::createInstance(const Uuid& typeID)
{
    if (_rttiFactory == nullptr)
    {
        return nullptr;
    }
    OrvMap<Uuid, IRTTICreator*>::const_iterator entry = _rttiFactory->find(typeID);
    if (entry == _rttiFactory->end() || entry->_value == nullptr)
    {
        return nullptr;
    }
    return entry->_value->create();
}

bool RTTI::canCreateInstance(const Uuid& typeID)
{
    if (_rttiFactory == nullptr)
    {
        return false;
    }
    OrvMap<Uuid, IRTTICreator*>::const_iterator entry = _rttiFactory->find(typeID);
    return entry != _rttiFactory->end() && entry->_value != nullptr;
}

const OrvMap<OrvStaticString, Uuid>& RTTI::getTypeNameToTypeID()
{
    orvAssert(_typeNameToTypeID != nullptr);
    return *_typeNameToTypeID;
}

const OrvMap<Uuid, const RTTI*>& RTTI::getTypeIDToRTTI()
{
    orvAssert(_typeIDToRTTI != nullptr);
    return *_typeIDToRTTI;
}

bool RTTI::isDerivedFrom(const RTTI& other) const
{
    if (_typeID == other._typeID)
    {
        return true;
    }
    for (size_t i = 0; i < _baseClassesRTTI.size(); ++i)
    {
        const RTTI* base = _baseClassesRTTI[i];
        if (base != nullptr && base->isDerivedFrom(other))
        {
            return true;
        }
    }
    return false;
}

bool RTTI::hasAttribute(const AbstractAttribute& attribute) const
{
    for (size_t i = 0; i < _attributes.size(); ++i)
    {
        if (_attributes[i] == &attribute)
        {
            return true;
        }
    }
    for (size_t i = 0; i < _baseClassesRTTI.size(); ++i)
    {
        if (_baseClassesRTTI[i] != nullptr && _baseClassesRTTI[i]->hasAttribute(attribute))
        {
            return true;
        }
    }
    return false;
}

const AbstractAttribute* RTTI::getAttribute(unsigned int index) const
{
    const PODArray<const AbstractAttribute*>& attributes = getAllAttributes();
    return index < attributes.size() ? attributes[index] : nullptr;
}

std::atomic<uint64_t> RTTI::_layout{1};

namespace
{

// Serialises the rebuilds of flat attribute lists; readers of an up-to-date list take no lock.
std::mutex sLayoutMutex;

} // namespace

void RTTI::layoutChanged()
{
    _layout.fetch_add(1, std::memory_order_acq_rel);
}

const PODArray<const AbstractAttribute*>& RTTI::rebuildAllAttributes() const
{
    const uint64_t layout = _layout.load(std::memory_order_acquire);
    std::lock_guard<std::mutex> lock(sLayoutMutex);
    if (_allAttributesLayout.load(std::memory_order_relaxed) != layout)
    {
        _allAttributes.clear();
        collectAttributes(_allAttributes);
        _allAttributesLayout.store(layout, std::memory_order_release);
    }
    return _allAttributes;
}

void RTTI::collectAttributes(PODArray<const AbstractAttribute*>& into) const
{
    // Bases first, in base order and depth first, then the class's own: the order of members in binary files.
    for (size_t i = 0; i < _baseClassesRTTI.size(); ++i)
    {
        if (_baseClassesRTTI[i] != nullptr)
        {
            _baseClassesRTTI[i]->collectAttributes(into);
        }
    }
    for (size_t i = 0; i < _attributes.size(); ++i)
    {
        into.push_back(_attributes[i]);
    }
}

const AbstractAttribute* RTTI::getAttribute(const char* name) const
{
    const NormalisedName normalised(name);
    return findAttribute(normalised.c_str());
}

const AbstractAttribute* RTTI::findAttribute(const char* normalisedName) const
{
    for (size_t i = 0; i < _attributes.size(); ++i)
    {
        if (strcmp(_attributes[i]->getName(), normalisedName) == 0)
        {
            return _attributes[i];
        }
    }
    for (size_t i = 0; i < _baseClassesRTTI.size(); ++i)
    {
        if (_baseClassesRTTI[i] == nullptr)
        {
            continue;
        }
        if (const AbstractAttribute* found = _baseClassesRTTI[i]->findAttribute(normalisedName))
        {
            return found;
        }
    }
    return nullptr;
}

void RTTI::removeAttribute(const char* name)
{
    if (_attributes.empty())
    {
        return;
    }
    const NormalisedName normalised(name);
    size_t index = 0;
    while (index + 1 < _attributes.size() && strcmp(_attributes[index]->getName(), normalised.c_str()) != 0)
    {
        ++index;
    }
    delete _attributes[index];
    _attributes.erase(_attributes.begin() + index);
    layoutChanged();
}

namespace rttiDetail
{

bool isStale(const RTTI* rtti, const Uuid& typeID)
{
    return rtti == nullptr || RTTI::getRTTI(typeID) != rtti;
}

RTTI* findOrCreate(RTTI* current, const Uuid& typeID, const char* typeName, IRTTICreator* (*makeCreator)())
{
    if (!isStale(current, typeID))
    {
        return current;
    }
    RTTI* rtti = RTTI::checkBeforeCreate(typeID, typeName);
    if (rtti == nullptr)
    {
        rtti = RTTI::create(typeID, typeName, makeCreator != nullptr ? makeCreator() : nullptr);
    }
    return rtti;
}

void release(RTTI*& rtti)
{
    if (rtti == nullptr)
    {
        return;
    }
    if (rtti->getCounter() == 0 || rtti->decrementCounter() == 0)
    {
        delete rtti;
        rtti = nullptr;
    }
}

} // namespace rttiDetail

} // namespace orv
