// orvCore/system/serialization/orvBinaryStreamCheck.cpp
#include "system/serialization/orvBinaryStreamCheck.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "system/inspection/orvAbstractAttribute.h"
#include "system/inspection/orvReferenceCounter.h"

namespace orv
{

BinaryStreamCheck::IObserver::~IObserver() = default;

void BinaryStreamCheck::IObserver::onObjectBegin(BinaryStreamCheck&, const RTTI&, uint32_t)
{
}

void BinaryStreamCheck::IObserver::onObjectEnd(BinaryStreamCheck&, const RTTI&)
{
}

void BinaryStreamCheck::IObserver::onObjects(BinaryStreamCheck&, const RTTI&, const WholeObject*, size_t,
                                             const AbstractAttribute* const*, const uint32_t*, size_t)
{
}

void BinaryStreamCheck::IObserver::onWord(BinaryStreamCheck&, uint32_t)
{
}

bool BinaryStreamCheck::IObserver::onWords(BinaryStreamCheck&, const uint8_t*, uint32_t)
{
    return false;
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

BinaryStreamCheck::IObserver::Notice BinaryStreamCheck::IObserver::noticeOf(const RTTI&, const AbstractAttribute&)
{
    return EACH_CALL;
}

BinaryStreamCheck::BinaryStreamCheck(const uint8_t* data, size_t size, IObserver* observer)
    : _data(data), _size(data != nullptr ? size : 0), _observer(observer)
{
    // Id 0 is null for good.
    _ids.resize(1);
    _ids[0] = IdRecord();
    _whats.push_back(nullptr);
    // Room for the ids of a usual world, an object every few dozen bytes, without moving the table as it fills.
    const size_t bound = _size / 4 + 2;
    const size_t usual = _size / 32 + 64;
    _ids.reserve(usual < bound ? usual : bound);
}

bool BinaryStreamCheck::checkEnd()
{
    if (_refused)
    {
        return false;
    }
    // The table holds a record per object of the world: it is searched only when some id still waits.
    for (size_t id = 1; _waitingCount != 0 && id < _ids.size(); ++id)
    {
        if (_ids[id].state() == ID_WAITING_FOR_BODY)
        {
            OrvMap<uint32_t, uint64_t>::iterator offset = _waitingOffsets.find(static_cast<uint32_t>(id));
            return refuseAt(offset != _waitingOffsets.end() ? offset->_value : _position,
                            "object %u of class %s is reached by pointer and never read", static_cast<unsigned int>(id),
                            rttiOf(_ids[id])->getTypeName());
        }
    }
    if (_position != _size)
    {
        return refuse("%lu bytes follow the last value", static_cast<unsigned long>(_size - _position));
    }
    // Few objects are reference counted (behaviour nodes, call-backs): both lists are short.
    std::sort(_heldIds.begin(), _heldIds.end());
    for (const CountedBody& body : _countedBodies)
    {
        if (!std::binary_search(_heldIds.begin(), _heldIds.end(), body._id))
        {
            return refuseAt(body._offset, "object %u is reached by plain pointers only: nothing would own it",
                            static_cast<unsigned int>(body._id));
        }
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
    return id < _ids.size() ? rttiOf(_ids[id]) : nullptr;
}

uint32_t BinaryStreamCheck::whatIndexOf(const void* what)
{
    // A handful of classes and value types: searched only when an id is first met through a pointer.
    for (size_t i = 1; i < _whats.size(); ++i)
    {
        if (_whats[i] == what)
        {
            return static_cast<uint32_t>(i);
        }
    }
    _whats.push_back(what);
    return static_cast<uint32_t>(_whats.size() - 1);
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
            _steps.push_back(
                Step{AttributeStreamShape::PLAIN, nullptr, shape._bytes, nullptr, IObserver::SILENT, noPlan});
        }
        else if (shape._kind == AttributeStreamShape::BOOL)
        {
            _steps.push_back(Step{AttributeStreamShape::OTHER, attribute, 0, nullptr, IObserver::SILENT, noPlan});
        }
        else
        {
            Notice notice = IObserver::SILENT;
            if (shape._kind == AttributeStreamShape::OBJECT && _observer != nullptr)
            {
                notice = _observer->noticeOf(*shape._rtti, *attribute);
            }
            _steps.push_back(Step{shape._kind, attribute, shape._bytes, shape._rtti, notice, noPlan});
        }
    }
    plan._count = _steps.size() - plan._first;
    plan._attributesCount = static_cast<uint32_t>(attributes.size());
    plan._what = whatIndexOf(&rtti);
    plan._flat = -1;
    plan._firstWhole = 0;
    plan._wholeCount = 0;
    plan._watchedCount = 0;
    plan._firstWatched = 0;
    _previousPlan = _lastPlan;
    _lastPlan = _plans.size();
    _plans.push_back(plan);
    return _lastPlan;
}

size_t BinaryStreamCheck::findNestedPlan(size_t step)
{
    // Finding the plan may add steps and move the array: the step is written by index afterwards.
    const size_t plan = planOf(*_steps[step]._rtti);
    _steps[step]._plan = plan;
    return plan;
}

bool BinaryStreamCheck::findFlat(size_t plan)
{
    bool flat = true;
    size_t watched = 0;
    const size_t first = _plans[plan]._first;
    const size_t count = _plans[plan]._count;
    for (size_t i = first; i < first + count && flat; ++i)
    {
        switch (_steps[i]._kind)
        {
        case AttributeStreamShape::PLAIN:
            break;
        case AttributeStreamShape::WORD:
        case AttributeStreamShape::POINTER:
            ++watched;
            break;
        case AttributeStreamShape::OBJECT:
        {
            // An object inside is walked by the general walk, which would call the observer for anything but a
            // run of plain values.
            if (_steps[i]._notice != IObserver::SILENT)
            {
                flat = false;
                break;
            }
            const size_t nested = nestedPlan(i);
            const size_t nestedFirst = _plans[nested]._first;
            for (size_t j = nestedFirst; j < nestedFirst + _plans[nested]._count; ++j)
            {
                flat = flat && _steps[j]._kind == AttributeStreamShape::PLAIN;
            }
            break;
        }
        default:
            flat = false;
            break;
        }
    }
    flat = flat && watched <= IObserver::maxWatchedValues;
    _plans[plan]._flat = flat ? 1 : 0;
    if (flat)
    {
        _plans[plan]._watchedCount = watched;
        addWholeSteps(plan);
    }
    return flat;
}

void BinaryStreamCheck::addWholeSteps(size_t plan)
{
    const size_t firstWhole = _wholeSteps.size();
    _plans[plan]._firstWatched = _watchedAttributes.size();
    const size_t first = _plans[plan]._first;
    const size_t count = _plans[plan]._count;
    for (size_t i = first; i < first + count; ++i)
    {
        const Step& step = _steps[i];
        const bool run = step._kind == AttributeStreamShape::PLAIN || step._kind == AttributeStreamShape::WORD;
        if (run && _wholeSteps.size() > firstWhole && _wholeSteps.back()._kind == AttributeStreamShape::PLAIN)
        {
            WholeStep& last = _wholeSteps.back();
            if (step._kind == AttributeStreamShape::WORD)
            {
                _wordOffsets.push_back(static_cast<uint32_t>(last._bytes));
                _watchedAttributes.push_back(step._attribute);
                ++last._wordCount;
            }
            last._bytes += step._bytes;
            ++last._stepCount;
        }
        else if (run)
        {
            const bool word = step._kind == AttributeStreamShape::WORD;
            _wholeSteps.push_back(
                WholeStep{AttributeStreamShape::PLAIN, step._bytes, i, 1, _wordOffsets.size(), word ? 1u : 0u});
            if (word)
            {
                _wordOffsets.push_back(0);
                _watchedAttributes.push_back(step._attribute);
            }
        }
        else if (step._kind == AttributeStreamShape::POINTER)
        {
            _wholeSteps.push_back(WholeStep{AttributeStreamShape::POINTER, 0, i, 1, 0, 0});
            _watchedAttributes.push_back(step._attribute);
        }
        else
        {
            // A silent object of plain values only: its plan holds one run at most.
            size_t bytes = 0;
            const size_t nested = step._plan;
            for (size_t j = _plans[nested]._first; j < _plans[nested]._first + _plans[nested]._count; ++j)
            {
                bytes += _steps[j]._bytes;
            }
            _wholeSteps.push_back(WholeStep{AttributeStreamShape::OBJECT, bytes, i, 1, 0, 0});
        }
    }
    _plans[plan]._firstWhole = firstWhole;
    _plans[plan]._wholeCount = _wholeSteps.size() - firstWhole;
}

bool BinaryStreamCheck::refuseInRun(size_t firstStep, size_t stepCount)
{
    for (size_t i = firstStep; i < firstStep + stepCount; ++i)
    {
        if (_steps[i]._bytes > _size - _position)
        {
            return refuseEarlyEnd(_steps[i]._bytes);
        }
        _position += _steps[i]._bytes;
    }
    return true;
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
    return checkObjectBody(rtti, planOf(rtti), 0, IObserver::EACH_CALL);
}

bool BinaryStreamCheck::checkObjects(const RTTI& rtti, uint32_t count)
{
    // Found once for the whole container: its elements are all of one class and one holder.
    const size_t plan = planOf(rtti);
    Notice notice = IObserver::EACH_CALL;
    if (_observer != nullptr && _attribute != nullptr)
    {
        if (&rtti != _lastElementRTTI || _attribute != _lastHolder)
        {
            _lastNotice = _observer->noticeOf(rtti, *_attribute);
            _lastElementRTTI = &rtti;
            _lastHolder = _attribute;
        }
        notice = _lastNotice;
    }
    if (notice == IObserver::ONE_CALL && isFlat(plan))
    {
        // The observer hears of the elements a batch at a time, in buffers small enough for a nested walk.
        // A flat class has at most maxWatchedValues words: a batch holds 8 objects at least.
        const size_t batchObjects = 32;
        const size_t wordRoom = 8 * IObserver::maxWatchedValues;
        IObserver::WholeObject objects[batchObjects];
        uint32_t words[wordRoom];
        const size_t perObject = _plans[plan]._watchedCount;
        const size_t batch = perObject * batchObjects <= wordRoom ? batchObjects : wordRoom / perObject;
        size_t pending = 0;
        for (uint32_t i = 0; i < count; ++i)
        {
            if (!checkValueHead(rtti, plan, objects[pending]._id) ||
                !checkWholeObject(plan, objects[pending], words + pending * perObject))
            {
                return false;
            }
            if (++pending == batch || i + 1 == count)
            {
                _observer->onObjects(*this, rtti, objects, pending,
                                     _watchedAttributes.data() + _plans[plan]._firstWatched, words, perObject);
                pending = 0;
                if (_refused)
                {
                    return false;
                }
            }
        }
        return true;
    }
    for (uint32_t i = 0; i < count; ++i)
    {
        if (!checkObjectBody(rtti, plan, 0, notice))
        {
            return false;
        }
    }
    return true;
}

bool BinaryStreamCheck::checkWords(uint32_t count)
{
    if (_refused)
    {
        return false;
    }
    const size_t bytes = static_cast<size_t>(count) * sizeof(uint32_t);
    const bool fit = bytes <= _size - _position;
    if (fit && (_observer == nullptr || count == 0 || (_attribute != nullptr && !_observer->watches(*_attribute))))
    {
        _position += bytes;
        return true;
    }
    if (fit && _observer->onWords(*this, _data + _position, count))
    {
        _position += bytes;
        return !_refused;
    }
    for (uint32_t i = 0; i < count && !_refused; ++i)
    {
        uint32_t word = 0;
        if (readBytes(&word, sizeof(word)) && _observer != nullptr)
        {
            _observer->onWord(*this, word);
        }
    }
    return !_refused;
}

bool BinaryStreamCheck::checkObjectHead(const RTTI& rtti, size_t plan, uint32_t pointerId, uint32_t& id)
{
    const uint64_t offset = _position;
    uint32_t attributesCount = 0;
    if (!_refused && _size - _position >= 2 * sizeof(uint32_t))
    {
        // Both words at once; the readings below give the refusal of data that ends inside them.
        memcpy(&id, _data + _position, sizeof(id));
        memcpy(&attributesCount, _data + _position + sizeof(id), sizeof(attributesCount));
        _position += 2 * sizeof(uint32_t);
    }
    else if (!readBytes(&id, sizeof(id)) || !readBytes(&attributesCount, sizeof(attributesCount)))
    {
        return false;
    }
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
        return true;
    }
    if (id == 0)
    {
        return true;
    }
    IdRecord* record = recordOf(id);
    if (record == nullptr)
    {
        return false;
    }
    const uint32_t what = _plans[plan]._what;
    if (record->_bits == 0)
    {
        // The usual case: an id met first here.
        record->_bits = what << 3 | ID_BY_VALUE;
        return true;
    }
    switch (record->state())
    {
    case ID_UNKNOWN:
        break;
    case ID_WAITING_FOR_BODY:
        // The reader destroys the instance it made for the pointer through this class: they must be one.
        if (record->what() != what)
        {
            return refuseAt(offset, "object %u is read as %s but was reached by pointer as %s",
                            static_cast<unsigned int>(id), rtti.getTypeName(), rttiOf(*record)->getTypeName());
        }
        --_waitingCount;
        break;
    default:
        return refuseAt(offset, "id %u is given to two objects", static_cast<unsigned int>(id));
    }
    // The reader gives an id the address of the last object read under it, and every pointer that address:
    // an id taken twice by objects read by value would send pointers checked against the first to the second.
    record->_bits = what << 3 | ID_BY_VALUE;
    return true;
}

bool BinaryStreamCheck::checkObjectBody(const RTTI& rtti, size_t plan, uint32_t pointerId, Notice notice)
{
    uint32_t id = 0;
    if (!checkObjectHead(rtti, plan, pointerId, id))
    {
        return false;
    }
    if (notice == IObserver::ONE_CALL && isFlat(plan))
    {
        IObserver::WholeObject object;
        object._id = id;
        uint32_t words[IObserver::maxWatchedValues];
        if (!checkWholeObject(plan, object, words))
        {
            return false;
        }
        _observer->onObjects(*this, rtti, &object, 1, _watchedAttributes.data() + _plans[plan]._firstWatched, words,
                             _plans[plan]._watchedCount);
        return !_refused;
    }
    const bool notify = notice != IObserver::SILENT && _observer != nullptr;
    if (notify)
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
        const AttributeStreamShape::Kind kind = _steps[i]._kind;
        _attribute = _steps[i]._attribute;
        switch (kind)
        {
        case AttributeStreamShape::PLAIN:
            skipBytes(_steps[i]._bytes);
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
        {
            uint32_t pointerId = 0;
            checkPointer(_steps[i]._rtti, true, pointerId);
            break;
        }
        case AttributeStreamShape::OBJECT:
        {
            const size_t nested = nestedPlan(i);
            checkObjectBody(*_steps[i]._rtti, nested, 0, _steps[i]._notice);
            break;
        }
        default:
            _attribute->check(*this);
            break;
        }
    }
    _attribute = holder;
    --_depth;
    if (notify && !_refused)
    {
        _observer->onObjectEnd(*this, rtti);
    }
    return !_refused;
}

bool BinaryStreamCheck::checkWholeObject(size_t plan, IObserver::WholeObject& object, uint32_t* words)
{
    object._offset = _position;
    size_t count = 0;
    ++_depth;
    const AbstractAttribute* holder = _attribute;
    const size_t first = _plans[plan]._firstWhole;
    const size_t end = first + _plans[plan]._wholeCount;
    bool walked = true;
    for (size_t i = first; i < end && walked; ++i)
    {
        // Read field by field, and again at each step: a pointer's body may add plans and move the arrays.
        const WholeStep& whole = _wholeSteps[i];
        const size_t step = whole._firstStep;
        if (whole._kind == AttributeStreamShape::PLAIN)
        {
            if (whole._bytes > _size - _position)
            {
                walked = refuseInRun(step, whole._stepCount);
                break;
            }
            const uint8_t* run = _data + _position;
            const uint32_t* offsets = _wordOffsets.data() + whole._firstWord;
            for (size_t k = 0; k < whole._wordCount; ++k)
            {
                memcpy(&words[count + k], run + offsets[k], sizeof(uint32_t));
            }
            count += whole._wordCount;
            _position += whole._bytes;
        }
        else if (whole._kind == AttributeStreamShape::POINTER)
        {
            const RTTI* expected = _steps[step]._rtti;
            uint32_t pointerId = 0;
            if (!checkKnownPointer(expected, pointerId))
            {
                // A body inside is heard of with the pointer's attribute as its holder.
                _attribute = _steps[step]._attribute;
                walked = checkPointer(expected, false, pointerId);
                _attribute = holder;
            }
            words[count++] = pointerId;
        }
        else
        {
            // A silent object of plain values only: its head, then its run.
            const size_t bytes = whole._bytes;
            uint32_t nestedId = 0;
            walked = checkValueHead(*_steps[step]._rtti, _steps[step]._plan, nestedId) && skipBytes(bytes);
        }
    }
    --_depth;
    return walked;
}

bool BinaryStreamCheck::checkInspectablePointer(const RTTI* expected)
{
    uint32_t id = 0;
    return checkPointer(expected, true, id);
}

bool BinaryStreamCheck::checkHeldPointer(const RTTI* expected)
{
    uint32_t id = 0;
    return checkPointer(expected, true, id, true);
}

bool BinaryStreamCheck::checkPointer(const RTTI* expected, bool tell, uint32_t& id, bool held)
{
    // Most pointers of a world name an object met before, without its body.
    if (!tell && !held && checkKnownPointer(expected, id))
    {
        return true;
    }
    const uint64_t offset = _position;
    if (!readBytes(&id, sizeof(id)))
    {
        return false;
    }
    if (tell && _observer != nullptr)
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
    if (held)
    {
        _heldIds.push_back(id);
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
    if (record->state() != ID_UNKNOWN)
    {
        // Both read passes take a known id's object from the id and pass over the class the pointer names.
        // The first pass skips the body of a known id and the second reads it: the two would part ways.
        if (hasBody != 0)
        {
            return refuseAt(offset, "object %u has a second body", static_cast<unsigned int>(id));
        }
        if (held && record->state() != ID_POINTER_BODY)
        {
            return refuseAt(offset, "object %u is held by a smart pointer but was not made for a pointer",
                            static_cast<unsigned int>(id));
        }
        if (held)
        {
            for (uint32_t open : _openBodies)
            {
                if (open == id)
                {
                    return refuseAt(offset, "object %u holds itself", static_cast<unsigned int>(id));
                }
            }
        }
        const RTTI* known = rttiOf(*record);
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
    const uint32_t what = whatIndexOf(rtti);
    if (held && hasBody == 0)
    {
        return refuseAt(offset, "held object %u comes without its body", static_cast<unsigned int>(id));
    }
    if (hasBody == 0)
    {
        record->_bits = what << 3 | ID_WAITING_FOR_BODY;
        ++_waitingCount;
        _waitingOffsets.insert(id, offset);
        return true;
    }
    record->_bits = what << 3 | ID_POINTER_BODY;
    if (_requireHeldCounted && !held && derives(*rtti, *ReferenceCounter::getClassRTTI()))
    {
        _countedBodies.push_back(CountedBody{id, offset});
    }
    // The depth bound keeps this list short: a hold is looked up in it only when it names a known object.
    _openBodies.push_back(id);
    const bool walked = checkObjectBody(*rtti, planOf(*rtti), id, IObserver::EACH_CALL);
    _openBodies.pop_back();
    return walked;
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
    if (record->state() == ID_UNKNOWN)
    {
        if (hasBody != 1)
        {
            return refuseAt(offset, "value %u is met first without its body", static_cast<unsigned int>(id));
        }
        record->_bits = whatIndexOf(kind) << 3 | ID_BASE_VALUE;
        return checkBody(*this);
    }
    if (hasBody != 0)
    {
        return refuseAt(offset, "value %u has a second body", static_cast<unsigned int>(id));
    }
    if (record->state() != ID_BASE_VALUE || _whats[record->what()] != kind)
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
