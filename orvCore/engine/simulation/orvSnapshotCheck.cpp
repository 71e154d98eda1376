// orvCore/engine/simulation/orvSnapshotCheck.cpp
#include "engine/simulation/orvSnapshotCheck.h"

#include <cstring>

#include "behavior/engine/orvBehaviorGraph.h"
#include "engine/simulation/orvAbstractEntityType.h"
#include "engine/simulation/orvEntitiesManager.h"
#include "engine/simulation/orvEntity.h"
#include "engine/simulation/orvEntityType.h"
#include "engine/simulation/orvGroupEntityType.h"
#include "engine/simulation/orvHandleEntry.h"
#include "engine/simulation/orvIContext.h"
#include "engine/simulation/orvSimulation.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "system/containers/orvMap.h"
#include "system/containers/orvPODArray.h"
#include "system/serialization/orvBinaryStreamCheck.h"

namespace orv
{

namespace
{

// A handle's index has 20 bits: no table, and so no dense array or type, can be larger.
const int kMaxTableSize = 1 << 20;

const uint32_t kIndexMask = 0xFFFFFu;
const uint32_t kCounterShift = 20;
const uint32_t kCounterMask = 0x7FFu;
const uint32_t kGroupBit = 0x80000000u;

struct EntryRecord
{
    uint32_t _info = 0;
    int32_t _contentIndex = 0;
    uint64_t _offset = 0;

    bool isActive() const { return (_info & kGroupBit) != 0; }
    uint32_t getNext() const { return _info & kIndexMask; }
    uint32_t getCounter() const { return (_info >> kCounterShift) & kCounterMask; }
};

struct EntityRecord
{
    uint32_t _handle = 0;
    uint32_t _typeId = 0;
    int32_t _slot = -1;
    uint32_t _parentGroup = 0;
    uint64_t _offset = 0;
};

struct TypeRecord
{
    uint32_t _id = 0;
    int32_t _entityTypeId = -1;
    int32_t _capacity = 0;
    uint32_t _simulationId = 0;
    PODArray<uint32_t> _handles;
    PODArray<uint32_t> _recycled;
    uint64_t _offset = 0;
};

struct ContextRecord
{
    uint32_t _id = 0;
    uint32_t _simulationId = 0;
    uint32_t _initialized = 0;
    uint64_t _offset = 0;
};

struct TypeOfId
{
    uint32_t _id = 0;
    uint32_t _index = 0;
};

const uint32_t kNoType = ~0u;

/// Where each of fields stands among attributes, in layout; false when one is missing.
bool findLayout(const AbstractAttribute* const* attributes, size_t count, const AbstractAttribute* const* fields,
                size_t fieldCount, size_t* layout)
{
    for (size_t f = 0; f < fieldCount; ++f)
    {
        layout[f] = count;
        for (size_t i = 0; i < count; ++i)
        {
            if (attributes[i] == fields[f])
            {
                layout[f] = i;
            }
        }
        if (layout[f] == count)
        {
            return false;
        }
    }
    return true;
}

struct Value
{
    uint32_t _value = 0;
    uint64_t _offset = 0;
};

/// Collects what the snapshot says of the world while the check walks it, then checks that it holds together.
class WorldObserver : public BinaryStreamCheck::IObserver
{
public:
    WorldObserver()
    {
        const RTTI& simulation = *Simulation::getClassRTTI();
        _simulationInitialized = simulation.getAttribute("initialized");
        _contexts = simulation.getAttribute("contexts");
        _entityTypes = simulation.getAttribute("entityTypes");
        _groupEntityTypes = simulation.getAttribute("groupEntityTypes");
        const RTTI& manager = *EntitiesManager::getClassRTTI();
        _reservedEntitiesSize = manager.getAttribute("reservedEntitiesSize");
        _entities = manager.getAttribute("entities");
        _handleEntries = manager.getAttribute("handleEntries");
        const RTTI& entity = *Entity::getClassRTTI();
        _entityType = entity.getAttribute("entityType");
        _entityHandle = entity.getAttribute("entityHandle");
        _indexInEntityType = entity.getAttribute("indexInEntityType");
        _parentGroupHandle = entity.getAttribute("parentGroupHandle");
        const RTTI& entry = *HandleEntry::getClassRTTI();
        _handleInfo = entry.getAttribute("handleInfo");
        _entityIndex = entry.getAttribute("entityIndex");
        const RTTI& type = *AbstractEntityType::getClassRTTI();
        _typeSimulation = type.getAttribute("simulation");
        _entityTypeId = type.getAttribute("entityTypeId");
        _entityArraysCapacity = type.getAttribute("entityArraysCapacity");
        _entityHandles = type.getAttribute("entityHandles");
        _recycledIndices = type.getAttribute("recycledIndices");
        _graphMaxCount = BehaviorGraph::getClassRTTI()->getAttribute("maxCount");
        const RTTI& context = *IContext::getClassRTTI();
        _parentSimulation = context.getAttribute("parentSimulation");
        _contextInitialized = context.getAttribute("initialized");
    }

    void onObjectBegin(BinaryStreamCheck& check, const RTTI& rtti, uint32_t id) override
    {
        Frame frame;
        const AbstractAttribute* holder = check.getAttribute();
        const ClassKind kind = kindOf(rtti);
        if (holder == nullptr && kind == WORLD)
        {
            if (_rootId != 0)
            {
                check.refuse("a second world");
                return;
            }
            _rootId = id;
            if (id == 0)
            {
                check.refuse("the world has id 0");
                return;
            }
        }
        else if (holder == _entities)
        {
            frame._kind = Frame::ENTITY;
            frame._index = static_cast<uint32_t>(_entityRecords.size());
            EntityRecord record;
            record._offset = check.getPosition();
            _entityRecords.push_back(record);
        }
        else if (holder == _handleEntries)
        {
            frame._kind = Frame::ENTRY;
            frame._index = static_cast<uint32_t>(_entryRecords.size());
            EntryRecord record;
            record._offset = check.getPosition();
            _entryRecords.push_back(record);
        }
        else if (kind == ENTITY_TYPE)
        {
            frame._kind = Frame::TYPE;
            frame._index = static_cast<uint32_t>(_typeRecords.size());
            _typeRecords.push_back(TypeRecord());
            _typeRecords.back()._id = id;
            _typeRecords.back()._offset = check.getPosition();
            _typeIndexOfId.insert(id, frame._index);
        }
        else if (kind == CONTEXT)
        {
            frame._kind = Frame::CONTEXT;
            frame._index = static_cast<uint32_t>(_contextRecords.size());
            ContextRecord record;
            record._id = id;
            record._offset = check.getPosition();
            _contextRecords.push_back(record);
        }
        _frames.push_back(frame);
    }

    void onObjectEnd(BinaryStreamCheck&, const RTTI&) override { _frames.pop_back(); }

    void onObjects(BinaryStreamCheck& check, const RTTI&, const WholeObject* objects, size_t count,
                   const AbstractAttribute* const* attributes, const uint32_t* words, size_t wordsPerObject) override
    {
        // The entities and the handle entries, the bulk of a world, come whole, in batches: a record each.
        const AbstractAttribute* holder = check.getAttribute();
        if (holder == _entities)
        {
            const AbstractAttribute* const fields[] = {_entityType, _entityHandle, _indexInEntityType,
                                                       _parentGroupHandle};
            size_t at[4];
            const bool laidOut = findLayout(attributes, wordsPerObject, fields, 4, at);
            for (size_t o = 0; o < count; ++o)
            {
                const uint32_t* own = words + o * wordsPerObject;
                EntityRecord record;
                record._offset = objects[o]._offset;
                if (laidOut)
                {
                    record._typeId = own[at[0]];
                    record._handle = own[at[1]];
                    record._slot = static_cast<int32_t>(own[at[2]]);
                    record._parentGroup = own[at[3]];
                }
                else
                {
                    for (size_t i = 0; i < wordsPerObject; ++i)
                    {
                        readEntityValue(record, attributes[i], own[i]);
                    }
                }
                _entityRecords.push_back(record);
            }
        }
        else if (holder == _handleEntries)
        {
            const AbstractAttribute* const fields[] = {_handleInfo, _entityIndex};
            size_t at[2];
            const bool laidOut = findLayout(attributes, wordsPerObject, fields, 2, at);
            for (size_t o = 0; o < count; ++o)
            {
                const uint32_t* own = words + o * wordsPerObject;
                EntryRecord record;
                record._offset = objects[o]._offset;
                if (laidOut)
                {
                    record._info = own[at[0]];
                    record._contentIndex = static_cast<int32_t>(own[at[1]]);
                }
                else
                {
                    for (size_t i = 0; i < wordsPerObject; ++i)
                    {
                        readEntryValue(record, attributes[i], own[i]);
                    }
                }
                _entryRecords.push_back(record);
            }
        }
    }

    Notice noticeOf(const RTTI& rtti, const AbstractAttribute& holder) override
    {
        if (&holder == _entities || &holder == _handleEntries)
        {
            return ONE_CALL;
        }
        // An object of no kind of its own, held by no watched array, whose values are all plain and unwatched
        // (an entity's generator), gives the world's checks nothing.
        if (kindOf(rtti) != OTHER_CLASS)
        {
            return EACH_CALL;
        }
        const PODArray<const AbstractAttribute*>& attributes = rtti.getAllAttributes();
        for (size_t i = 0; i < attributes.size(); ++i)
        {
            const AttributeStreamShape::Kind kind = attributes[i]->getStreamShape()._kind;
            const bool plain = kind == AttributeStreamShape::PLAIN || kind == AttributeStreamShape::BOOL ||
                               kind == AttributeStreamShape::WORD;
            if (!plain || watches(*attributes[i]))
            {
                return EACH_CALL;
            }
        }
        return SILENT;
    }

    bool watches(const AbstractAttribute& attribute) const override
    {
        // Every attribute the world's checks read; the other plain values are passed over in runs.
        const AbstractAttribute* const watched[] = {
            _simulationInitialized, _contexts,          _entityTypes,       _groupEntityTypes,
            _reservedEntitiesSize,  _entities,          _handleEntries,     _entityType,
            _entityHandle,          _indexInEntityType, _parentGroupHandle, _handleInfo,
            _entityIndex,           _typeSimulation,    _entityTypeId,      _entityArraysCapacity,
            _entityHandles,         _recycledIndices,   _parentSimulation,  _contextInitialized};
        for (const AbstractAttribute* candidate : watched)
        {
            if (candidate == &attribute)
            {
                return true;
            }
        }
        return isCapacity(attribute);
    }

    /// A word the reader sizes per-entity storage with: a graph's count, or any "...ArrayCapacity" (the rows of a
    /// behaviour node, a composite's slots, a trigger's arrays, and those of host classes named alike).
    bool isCapacity(const AbstractAttribute& attribute) const
    {
        if (&attribute == _graphMaxCount)
        {
            return true;
        }
        static const char suffix[] = "ArrayCapacity";
        const char* name = attribute.getName();
        const size_t length = strlen(name);
        return attribute.getStreamShape()._kind == AttributeStreamShape::WORD && length >= sizeof(suffix) - 1 &&
               strcmp(name + length - (sizeof(suffix) - 1), suffix) == 0;
    }

    void onWord(BinaryStreamCheck& check, uint32_t word) override
    {
        const AbstractAttribute* attribute = check.getAttribute();
        const Frame frame = _frames.empty() ? Frame() : _frames.back();
        const uint64_t offset = check.getPosition() - sizeof(uint32_t);
        if (attribute != nullptr && isCapacity(*attribute) && frame._kind != Frame::TYPE)
        {
            // Checked at once, before the reader allocates: no more than the entity type around it holds.
            int32_t bound = kMaxTableSize;
            for (size_t i = _frames.size(); i-- > 0;)
            {
                if (_frames[i]._kind == Frame::TYPE)
                {
                    bound = _typeRecords[_frames[i]._index]._capacity;
                    break;
                }
            }
            const int32_t value = static_cast<int32_t>(word);
            if (value < 0 || value > bound)
            {
                check.refuseAt(offset, "a %s of %d is out of range (at most %d)", attribute->getName(), value, bound);
            }
            // The reader sets the capacity before it reads the array that follows, dropping what does not fit, and
            // then reads only the elements kept: the count that follows must fit, or the two passes part ways.
            _pendingCapacity = value;
            _pendingCapacityDepth = _frames.size();
            _pendingCapacityName = attribute->getName();
            return;
        }
        if (attribute == _reservedEntitiesSize)
        {
            _reserved._value = word;
            _reserved._offset = offset;
        }
        else if (frame._kind == Frame::ENTRY)
        {
            readEntryValue(_entryRecords[frame._index], attribute, word);
        }
        else if (frame._kind == Frame::ENTITY)
        {
            readEntityValue(_entityRecords[frame._index], attribute, word);
        }
        else if (frame._kind == Frame::TYPE)
        {
            TypeRecord& record = _typeRecords[frame._index];
            if (attribute == _entityTypeId)
            {
                record._entityTypeId = static_cast<int32_t>(word);
            }
            else if (attribute == _entityArraysCapacity)
            {
                record._capacity = static_cast<int32_t>(word);
                // Checked at once: the reader sizes the type's arrays with it.
                if (record._capacity < 0 || record._capacity > kMaxTableSize)
                {
                    check.refuseAt(offset, "an entity type's capacity of %d is out of range", record._capacity);
                }
            }
            else if (attribute == _entityHandles)
            {
                record._handles.push_back(word);
            }
            else if (attribute == _recycledIndices)
            {
                record._recycled.push_back(word);
            }
        }
        else if (frame._kind == Frame::CONTEXT && attribute == _contextInitialized)
        {
            _contextRecords[frame._index]._initialized = word;
        }
    }

    bool onWords(BinaryStreamCheck& check, const uint8_t* words, uint32_t count) override
    {
        if (_frames.empty() || _frames.back()._kind != Frame::TYPE)
        {
            return false;
        }
        TypeRecord& record = _typeRecords[_frames.back()._index];
        PODArray<uint32_t>* target = nullptr;
        if (check.getAttribute() == _entityHandles)
        {
            target = &record._handles;
        }
        else if (check.getAttribute() == _recycledIndices)
        {
            target = &record._recycled;
        }
        else
        {
            return false;
        }
        const size_t at = target->size();
        target->resize(at + count);
        memcpy(target->data() + at, words, count * sizeof(uint32_t));
        return true;
    }

    void onBool(BinaryStreamCheck& check, bool value) override
    {
        if (check.getAttribute() == _simulationInitialized && _frames.size() == 1)
        {
            _initialized = value;
        }
    }

    void onCount(BinaryStreamCheck& check, uint32_t count) override
    {
        const AbstractAttribute* attribute = check.getAttribute();
        const uint64_t offset = check.getPosition() - sizeof(uint32_t);
        if (_pendingCapacityName != nullptr && _frames.size() == _pendingCapacityDepth)
        {
            const char* name = _pendingCapacityName;
            _pendingCapacityName = nullptr;
            if (count > static_cast<uint32_t>(_pendingCapacity))
            {
                check.refuseAt(offset, "%u elements follow a %s of %d", static_cast<unsigned int>(count), name,
                               _pendingCapacity);
                return;
            }
        }
        // The check has bounded count by the bytes that remain: room for the records is made once.
        if (attribute == _entities)
        {
            _entityCount._value = count;
            _entityCount._offset = offset;
            _entityRecords.reserve(_entityRecords.size() + count);
        }
        else if (attribute == _handleEntries)
        {
            _entryCount._value = count;
            _entryCount._offset = offset;
            _entryRecords.reserve(_entryRecords.size() + count);
        }
        else if (attribute == _entityHandles && !_frames.empty() && _frames.back()._kind == Frame::TYPE)
        {
            _typeRecords[_frames.back()._index]._handles.reserve(count);
        }
    }

    void onPointer(BinaryStreamCheck& check, uint32_t id) override
    {
        const AbstractAttribute* attribute = check.getAttribute();
        const Frame frame = _frames.empty() ? Frame() : _frames.back();
        const uint64_t offset = check.getPosition() - sizeof(uint32_t);
        if (attribute == _entityType && frame._kind == Frame::ENTITY)
        {
            readEntityValue(_entityRecords[frame._index], attribute, id);
        }
        else if (attribute == _typeSimulation && frame._kind == Frame::TYPE)
        {
            _typeRecords[frame._index]._simulationId = id;
        }
        else if (attribute == _parentSimulation && frame._kind == Frame::CONTEXT)
        {
            _contextRecords[frame._index]._simulationId = id;
        }
        else if (_frames.size() == 1 && attribute == _contexts)
        {
            _contextIds.push_back(Value{id, offset});
        }
        else if (_frames.size() == 1 && attribute == _entityTypes)
        {
            _entityTypeIds.push_back(Value{id, offset});
        }
        else if (_frames.size() == 1 && attribute == _groupEntityTypes)
        {
            _groupEntityTypeIds.push_back(Value{id, offset});
        }
    }

    /// Checks that what was collected holds together; refuses through check otherwise.
    bool checkWorld(BinaryStreamCheck& check)
    {
        if (_rootId == 0)
        {
            return check.refuse("no world in the data");
        }
        return checkTable(check) && checkFreeList(check) && checkTypes(check, _entityTypeIds, false) &&
               checkTypes(check, _groupEntityTypeIds, true) && checkEntities(check) && checkContexts(check);
    }

private:
    enum ClassKind
    {
        OTHER_CLASS,
        WORLD,
        ENTITY_TYPE,
        CONTEXT
    };

    struct ClassRecord
    {
        const RTTI* _rtti;
        ClassKind _kind;
    };

    // A derivation test walks the bases; a world has a handful of classes, so each is classified once.
    ClassKind kindOf(const RTTI& rtti)
    {
        // Objects of one class come in long runs: the entities, the handle entries.
        if (_lastClass < _classes.size() && _classes[_lastClass]._rtti == &rtti)
        {
            return _classes[_lastClass]._kind;
        }
        for (size_t i = 0; i < _classes.size(); ++i)
        {
            if (_classes[i]._rtti == &rtti)
            {
                _lastClass = i;
                return _classes[i]._kind;
            }
        }
        ClassKind kind = OTHER_CLASS;
        if (rtti.isDerivedFrom<Simulation>())
        {
            kind = WORLD;
        }
        else if (rtti.isDerivedFrom<AbstractEntityType>())
        {
            kind = ENTITY_TYPE;
        }
        else if (rtti.isDerivedFrom<IContext>())
        {
            kind = CONTEXT;
        }
        _classes.push_back(ClassRecord{&rtti, kind});
        return kind;
    }

    void readEntityValue(EntityRecord& record, const AbstractAttribute* attribute, uint32_t word) const
    {
        if (attribute == _entityType)
        {
            record._typeId = word;
        }
        else if (attribute == _entityHandle)
        {
            record._handle = word;
        }
        else if (attribute == _indexInEntityType)
        {
            record._slot = static_cast<int32_t>(word);
        }
        else if (attribute == _parentGroupHandle)
        {
            record._parentGroup = word;
        }
    }

    void readEntryValue(EntryRecord& record, const AbstractAttribute* attribute, uint32_t word) const
    {
        if (attribute == _handleInfo)
        {
            record._info = word;
        }
        else if (attribute == _entityIndex)
        {
            record._contentIndex = static_cast<int32_t>(word);
        }
    }

    struct Frame
    {
        enum Kind
        {
            OTHER,
            ENTITY,
            ENTRY,
            TYPE,
            CONTEXT
        };
        Kind _kind = OTHER;
        uint32_t _index = 0;
    };

    bool checkTable(BinaryStreamCheck& check)
    {
        const int reserved = static_cast<int>(_reserved._value);
        if (reserved < 0 || reserved > kMaxTableSize)
        {
            return check.refuseAt(_reserved._offset, "a capacity of %d entities is out of range", reserved);
        }
        if (_entryCount._value != static_cast<uint32_t>(reserved))
        {
            return check.refuseAt(_entryCount._offset, "%u handle entries for a capacity of %d entities",
                                  _entryCount._value, reserved);
        }
        if (_entityCount._value > static_cast<uint32_t>(reserved))
        {
            return check.refuseAt(_entityCount._offset, "%u entities for a capacity of %d", _entityCount._value,
                                  reserved);
        }
        size_t active = 0;
        for (size_t i = 0; i < _entryRecords.size(); ++i)
        {
            const EntryRecord& entry = _entryRecords[i];
            if (!entry.isActive())
            {
                continue;
            }
            ++active;
            if (entry._contentIndex < 0 || static_cast<size_t>(entry._contentIndex) >= _entityRecords.size())
            {
                return check.refuseAt(entry._offset, "handle entry %lu points at entity %d of %lu",
                                      static_cast<unsigned long>(i), entry._contentIndex,
                                      static_cast<unsigned long>(_entityRecords.size()));
            }
            const uint32_t handle = static_cast<uint32_t>(i) | (entry.getCounter() << kCounterShift);
            if (_entityRecords[entry._contentIndex]._handle != handle)
            {
                return check.refuseAt(entry._offset, "handle entry %lu and entity %d disagree",
                                      static_cast<unsigned long>(i), entry._contentIndex);
            }
        }
        if (active != _entityRecords.size())
        {
            return check.refuseAt(_entityCount._offset, "%lu entities for %lu active handle entries",
                                  static_cast<unsigned long>(_entityRecords.size()),
                                  static_cast<unsigned long>(active));
        }
        return true;
    }

    // The free list is last in, first out, and its end marker is entry 0: from its head it visits every free entry
    // once. The head is not saved; it is the free entry that no other points to, or 0 when they form a cycle.
    bool checkFreeList(BinaryStreamCheck& check)
    {
        const size_t count = _entryRecords.size();
        PODArray<uint8_t> pointedTo;
        pointedTo.resize(count);
        size_t freeCount = 0;
        for (size_t i = 0; i < count; ++i)
        {
            pointedTo[i] = 0;
        }
        for (size_t i = 0; i < count; ++i)
        {
            const EntryRecord& entry = _entryRecords[i];
            if (entry.isActive())
            {
                continue;
            }
            ++freeCount;
            if (entry.getNext() >= count)
            {
                return check.refuseAt(entry._offset, "free handle entry %lu links to %u, past the table",
                                      static_cast<unsigned long>(i), entry.getNext());
            }
            if (!_entryRecords[entry.getNext()].isActive())
            {
                pointedTo[entry.getNext()] = 1;
            }
        }
        if (freeCount == 0)
        {
            return true;
        }
        size_t head = 0;
        size_t heads = 0;
        for (size_t i = 0; i < count; ++i)
        {
            if (!_entryRecords[i].isActive() && pointedTo[i] == 0)
            {
                head = i;
                ++heads;
            }
        }
        if (heads > 1)
        {
            return check.refuseAt(_entryCount._offset, "the free handle entries form %lu lists",
                                  static_cast<unsigned long>(heads));
        }
        size_t index = head;
        for (size_t visited = 0; visited < freeCount; ++visited)
        {
            if (_entryRecords[index].isActive() || pointedTo[index] == 2)
            {
                return check.refuseAt(_entryRecords[index]._offset, "the free list of handle entries is broken");
            }
            pointedTo[index] = 2;
            index = _entryRecords[index].getNext();
        }
        return true;
    }

    bool checkTypes(BinaryStreamCheck& check, const PODArray<Value>& ids, bool groups)
    {
        OrvMap<uint32_t, uint32_t> seen;
        for (size_t position = 0; position < ids.size(); ++position)
        {
            const Value& id = ids[position];
            if (id._value == 0)
            {
                return check.refuseAt(id._offset, "entity type slot %lu is empty",
                                      static_cast<unsigned long>(position));
            }
            if (seen.find(id._value) != seen.end())
            {
                return check.refuseAt(id._offset, "an entity type is listed twice");
            }
            seen.insert(id._value, 0u);
            OrvMap<uint32_t, uint32_t>::iterator found = _typeIndexOfId.find(id._value);
            if (found == _typeIndexOfId.end())
            {
                return check.refuseAt(id._offset, "entity type %lu has no body", static_cast<unsigned long>(position));
            }
            const TypeRecord& type = _typeRecords[found.getValue()];
            if (type._entityTypeId != static_cast<int32_t>(position))
            {
                return check.refuseAt(type._offset, "entity type %lu calls itself %d",
                                      static_cast<unsigned long>(position), type._entityTypeId);
            }
            if (type._simulationId != _rootId)
            {
                return check.refuseAt(type._offset, "entity type %lu belongs to no world",
                                      static_cast<unsigned long>(position));
            }
            if (type._handles.size() > static_cast<size_t>(type._capacity))
            {
                return check.refuseAt(type._offset, "entity type %lu has %lu slots for a capacity of %d",
                                      static_cast<unsigned long>(position),
                                      static_cast<unsigned long>(type._handles.size()), type._capacity);
            }
            if (!checkSlots(check, type, position, groups))
            {
                return false;
            }
            if (!groups)
            {
                _entityTypeIndexOfId.insert(id._value, found.getValue());
                _entityTypeList.push_back(TypeOfId{id._value, found.getValue()});
            }
        }
        return true;
    }

    bool checkSlots(BinaryStreamCheck& check, const TypeRecord& type, size_t position, bool groups)
    {
        PODArray<uint8_t> recycled;
        recycled.resize(type._handles.size());
        for (size_t slot = 0; slot < recycled.size(); ++slot)
        {
            recycled[slot] = 0;
        }
        for (size_t i = 0; i < type._recycled.size(); ++i)
        {
            const uint32_t slot = type._recycled[i];
            if (slot >= type._handles.size() || recycled[slot] != 0 || type._handles[slot] != 0)
            {
                return check.refuseAt(type._offset, "entity type %lu recycles slot %d wrongly",
                                      static_cast<unsigned long>(position), static_cast<int>(slot));
            }
            recycled[slot] = 1;
        }
        for (size_t slot = 0; slot < type._handles.size(); ++slot)
        {
            const uint32_t handle = type._handles[slot];
            if (recycled[slot] != 0)
            {
                continue;
            }
            if (handle == 0)
            {
                return check.refuseAt(type._offset, "slot %lu of entity type %lu is free but not recycled",
                                      static_cast<unsigned long>(slot), static_cast<unsigned long>(position));
            }
            // No group lives in a snapshot yet, so a group type's slots can only be free.
            const EntityRecord* entity = groups ? nullptr : findEntity(handle);
            if (entity == nullptr || entity->_typeId != type._id || entity->_slot != static_cast<int32_t>(slot))
            {
                return check.refuseAt(type._offset, "slot %lu of entity type %lu holds a handle of no entity of it",
                                      static_cast<unsigned long>(slot), static_cast<unsigned long>(position));
            }
        }
        return true;
    }

    const EntityRecord* findEntity(uint32_t handle) const
    {
        const uint32_t index = handle & kIndexMask;
        if ((handle & kGroupBit) != 0 || index >= _entryRecords.size())
        {
            return nullptr;
        }
        const EntryRecord& entry = _entryRecords[index];
        if (!entry.isActive() || entry.getCounter() != ((handle >> kCounterShift) & kCounterMask))
        {
            return nullptr;
        }
        // checkTable made every active entry's content index valid.
        return &_entityRecords[entry._contentIndex];
    }

    // A world has a few entity types and many entities: a short list is searched faster than the map.
    uint32_t entityTypeIndexOf(uint32_t id)
    {
        if (_entityTypeList.size() <= 8)
        {
            for (size_t i = 0; i < _entityTypeList.size(); ++i)
            {
                if (_entityTypeList[i]._id == id)
                {
                    return _entityTypeList[i]._index;
                }
            }
            return kNoType;
        }
        OrvMap<uint32_t, uint32_t>::iterator found = _entityTypeIndexOfId.find(id);
        return found != _entityTypeIndexOfId.end() ? found.getValue() : kNoType;
    }

    bool checkEntities(BinaryStreamCheck& check)
    {
        for (size_t i = 0; i < _entityRecords.size(); ++i)
        {
            const EntityRecord& entity = _entityRecords[i];
            const uint32_t typeIndex = entityTypeIndexOf(entity._typeId);
            if (typeIndex == kNoType)
            {
                return check.refuseAt(entity._offset, "entity %lu has no entity type of the world",
                                      static_cast<unsigned long>(i));
            }
            const TypeRecord& type = _typeRecords[typeIndex];
            if (entity._slot < 0 || static_cast<size_t>(entity._slot) >= type._handles.size() ||
                type._handles[entity._slot] != entity._handle)
            {
                return check.refuseAt(entity._offset, "entity %lu is not in slot %d of its type",
                                      static_cast<unsigned long>(i), entity._slot);
            }
            if (entity._parentGroup != 0)
            {
                return check.refuseAt(entity._offset, "entity %lu belongs to a group the world does not hold",
                                      static_cast<unsigned long>(i));
            }
        }
        return true;
    }

    bool checkContexts(BinaryStreamCheck& check)
    {
        OrvMap<uint32_t, uint32_t> recordOfId;
        for (size_t i = 0; i < _contextRecords.size(); ++i)
        {
            recordOfId.insert(_contextRecords[i]._id, static_cast<uint32_t>(i));
        }
        OrvMap<uint32_t, uint32_t> seen;
        for (size_t position = 0; position < _contextIds.size(); ++position)
        {
            const Value& id = _contextIds[position];
            if (id._value == 0 || seen.find(id._value) != seen.end())
            {
                return check.refuseAt(id._offset, "context slot %lu is empty or repeated",
                                      static_cast<unsigned long>(position));
            }
            seen.insert(id._value, 0u);
            OrvMap<uint32_t, uint32_t>::iterator found = recordOfId.find(id._value);
            if (found == recordOfId.end())
            {
                return check.refuseAt(id._offset, "context %lu has no body", static_cast<unsigned long>(position));
            }
            const ContextRecord& context = _contextRecords[found.getValue()];
            if (context._simulationId != _rootId)
            {
                return check.refuseAt(context._offset, "context %lu belongs to no world",
                                      static_cast<unsigned long>(position));
            }
            // A world runs with every context initialised and stops with none: a context deleted while
            // initialised, or initialised twice, ends the process.
            if ((context._initialized != 0) != _initialized)
            {
                return check.refuseAt(context._offset, "context %lu is %s in a world that is %s",
                                      static_cast<unsigned long>(position),
                                      context._initialized != 0 ? "initialised" : "not initialised",
                                      _initialized ? "initialised" : "not initialised");
            }
        }
        return true;
    }

    const AbstractAttribute* _simulationInitialized = nullptr;
    const AbstractAttribute* _contexts = nullptr;
    const AbstractAttribute* _entityTypes = nullptr;
    const AbstractAttribute* _groupEntityTypes = nullptr;
    const AbstractAttribute* _reservedEntitiesSize = nullptr;
    const AbstractAttribute* _entities = nullptr;
    const AbstractAttribute* _handleEntries = nullptr;
    const AbstractAttribute* _entityType = nullptr;
    const AbstractAttribute* _entityHandle = nullptr;
    const AbstractAttribute* _indexInEntityType = nullptr;
    const AbstractAttribute* _parentGroupHandle = nullptr;
    const AbstractAttribute* _handleInfo = nullptr;
    const AbstractAttribute* _entityIndex = nullptr;
    const AbstractAttribute* _typeSimulation = nullptr;
    const AbstractAttribute* _entityTypeId = nullptr;
    const AbstractAttribute* _entityArraysCapacity = nullptr;
    const AbstractAttribute* _graphMaxCount = nullptr;
    // The last capacity word met, for the count of the array that follows it in the same object.
    const char* _pendingCapacityName = nullptr;
    int32_t _pendingCapacity = 0;
    size_t _pendingCapacityDepth = 0;
    const AbstractAttribute* _entityHandles = nullptr;
    const AbstractAttribute* _recycledIndices = nullptr;
    const AbstractAttribute* _parentSimulation = nullptr;
    const AbstractAttribute* _contextInitialized = nullptr;

    uint32_t _rootId = 0;
    bool _initialized = false;
    Value _reserved;
    Value _entityCount;
    Value _entryCount;
    PODArray<ClassRecord> _classes;
    PODArray<Frame> _frames;
    size_t _lastClass = 0;
    PODArray<EntryRecord> _entryRecords;
    PODArray<EntityRecord> _entityRecords;
    Array<TypeRecord> _typeRecords;
    PODArray<ContextRecord> _contextRecords;
    PODArray<Value> _contextIds;
    PODArray<Value> _entityTypeIds;
    PODArray<Value> _groupEntityTypeIds;
    OrvMap<uint32_t, uint32_t> _typeIndexOfId;
    OrvMap<uint32_t, uint32_t> _entityTypeIndexOfId;
    PODArray<TypeOfId> _entityTypeList;
};

} // namespace

bool SnapshotCheck::check(const uint8_t* data, size_t size, SnapshotCheckReport* report)
{
    WorldObserver observer;
    BinaryStreamCheck check(data, size, &observer);
    // In a world only smart pointers own what they point to: a node or call-back held by none would leak.
    check.setRequireHeldCounted(true);
    const bool valid = data != nullptr && check.checkValue<RandomNumberGenerator>() && check.checkValue<Simulation>() &&
                       check.checkEnd() && observer.checkWorld(check);
    if (data == nullptr)
    {
        check.refuse("no data");
    }
    if (report != nullptr)
    {
        report->_valid = valid;
        report->_offset = valid ? 0 : check.getRefusalOffset();
        report->_reason = valid ? "" : check.getRefusalReason();
    }
    return valid;
}

} // namespace orv
