// orvCore/system/serialization/orvBinaryStream.h
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

#include "math/types/orvQuaternion.h"
#include "math/types/orvVector2.h"
#include "math/types/orvVector3.h"
#include "math/types/orvVector4.h"
#include "system/containers/orvArray.h"
#include "system/containers/orvDeque.h"
#include "system/containers/orvMap.h"
#include "system/containers/orvPODArray.h"
#include "system/containers/orvQueue.h"
#include "system/containers/orvSet.h"
#include "system/containers/orvString.h"
#include "system/debug/orvAssert.h"
#include "system/inspection/orvAbstractAttribute.h"
#include "system/inspection/orvRTTI.h"
#include "system/inspection/orvUuid.h"
#include "system/log/orvCoreLog.h"
#include "system/serialization/orvBinaryStreamForms.h"
#include "system/serialization/orvByteStream.h"
#include "system/serialization/orvIdTable.h"

namespace orv
{

/// Turns a graph of inspectable objects, with shared pointers and cycles, into a flat little-endian byte sequence
/// and back, in two passes each way. The bytes stay in memory; files are written and read whole. The stream has no
/// header or version of its own: a file's owner writes those in front. One thread at a time.
class BinaryStream
{
public:
    /// An object reached by pointer whose body is still to be written, with the class it was reached as; the
    /// class tells an object from its first member, which has the same address.
    struct TypedPointer
    {
        /// By address, then by the identifier's bytes.
        bool operator<(const TypedPointer& other) const;
        /// Same address and same class.
        bool operator==(const TypedPointer& other) const;

        /// The object.
        const void* _pointer = nullptr;
        /// Its dynamic class.
        Uuid _typeID;
    };

    /// An empty stream in its first pass, with null under id 0.
    BinaryStream();
    ~BinaryStream();
    BinaryStream(const BinaryStream&) = delete;
    BinaryStream& operator=(const BinaryStream&) = delete;

    /// Writes value in its form in two passes: the first walks the graph and gives ids, the second writes bytes.
    /// Several values may be packed one after the other; they share ids.
    template <typename T>
    void pack(const T& value);
    /// Reads value in its form in two passes over the same bytes, from the read position: the first makes the
    /// objects and gives every id its final address, the second sets every pointer and calls the setters.
    template <typename T>
    void unpack(T& value);

    /// Reads size raw bytes, in either pass; past the end of the bytes, what is missing stays unread.
    void read(char* data, unsigned int size);
    /// Writes size raw bytes whatever the pass: callers test isFirstPass().
    void write(const char* data, unsigned int size);

    /// Reads one byte: any byte but 0 is true.
    void read(bool& value);
    /// Reads one byte.
    void read(char& value) { readFixed(value); }
    /// Reads one byte.
    void read(unsigned char& value) { readFixed(value); }
    /// Reads two bytes.
    void read(int16_t& value) { readFixed(value); }
    /// Reads two bytes.
    void read(uint16_t& value) { readFixed(value); }
    /// Reads four bytes.
    void read(int32_t& value) { readFixed(value); }
    /// Reads four bytes.
    void read(uint32_t& value) { readFixed(value); }
    /// Reads eight bytes.
    void read(int64_t& value) { readFixed(value); }
    /// Reads eight bytes.
    void read(uint64_t& value) { readFixed(value); }
    /// Reads four bytes.
    void read(float& value) { readFixed(value); }
    /// Reads eight bytes.
    void read(double& value) { readFixed(value); }
    /// Reads the 16 storage bytes.
    void read(Uuid& value) { readFixed(value); }
    /// Reads an unsigned 32 length, then that many bytes.
    void read(OrvString& value);
    /// Reads x, y.
    void read(Vector2& value);
    /// Reads x, y, z; the padding is not stored.
    void read(Vector3& value);
    /// Reads x, y, z, w.
    void read(Vector4& value);
    /// Reads x, y, z, w.
    void read(Quaternion& value);

    /// Writes one byte in the second pass.
    void write(bool value) { writeBytes(&value, sizeof(value)); }
    /// Writes one byte in the second pass.
    void write(char value) { writeBytes(&value, sizeof(value)); }
    /// Writes one byte in the second pass.
    void write(unsigned char value) { writeBytes(&value, sizeof(value)); }
    /// Writes two bytes in the second pass.
    void write(int16_t value) { writeBytes(&value, sizeof(value)); }
    /// Writes two bytes in the second pass.
    void write(uint16_t value) { writeBytes(&value, sizeof(value)); }
    /// Writes four bytes in the second pass.
    void write(int32_t value) { writeBytes(&value, sizeof(value)); }
    /// Writes four bytes in the second pass.
    void write(uint32_t value) { writeBytes(&value, sizeof(value)); }
    /// Writes eight bytes in the second pass.
    void write(int64_t value) { writeBytes(&value, sizeof(value)); }
    /// Writes eight bytes in the second pass.
    void write(uint64_t value) { writeBytes(&value, sizeof(value)); }
    /// Writes four bytes in the second pass.
    void write(float value) { writeBytes(&value, sizeof(value)); }
    /// Writes eight bytes in the second pass.
    void write(double value) { writeBytes(&value, sizeof(value)); }
    /// Writes the 16 storage bytes in the second pass.
    void write(const Uuid& value) { writeBytes(&value, sizeof(value)); }
    /// Writes an unsigned 32 length and the bytes, without terminator, in the second pass.
    void write(const OrvString& value);
    /// Writes x, y in the second pass.
    void write(const Vector2& value);
    /// Writes x, y, z in the second pass.
    void write(const Vector3& value);
    /// Writes x, y, z, w in the second pass.
    void write(const Vector4& value);
    /// Writes x, y, z, w in the second pass.
    void write(const Quaternion& value);

    /// Writes an inspectable object in its by-value form: id, attribute count, attributes. With erasePending, a
    /// pending body of this object is dropped first, so that pointers to it carry none: the body stands here.
    template <typename T, typename = std::enable_if_t<binaryStreamDetail::IsInspectable<T>::value>>
    void write(const T& object, bool erasePending);
    /// Reads an inspectable object in its by-value form. The first pass makes this address the object's id,
    /// destroying a placeholder made for a pointer read earlier. Fatal on a different attribute count.
    template <typename T, typename = std::enable_if_t<binaryStreamDetail::IsInspectable<T>::value>>
    void read(T& object);

    /// Writes a pointer: to an inspectable object, id, class and, the first time, the body; to a value of a base
    /// type, id and, the first time, the value. Null is id 0.
    template <typename T>
    void write(T* pointer);
    /// Reads a pointer. The first pass makes the objects of unknown ids and leaves pointer as it was for known
    /// ones; the second pass sets it to the final address.
    template <typename T>
    void read(T*& pointer);
    /// Reads a const pointer as a pointer.
    template <typename T>
    void read(const T*& pointer);

    /// Writes the held object as a pointer.
    template <typename T>
    void write(const SmartPointer<T>& pointer);
    /// Reads a pointer and holds what it gives, in both passes.
    template <typename T>
    void read(SmartPointer<T>& pointer);

    /// Writes an unsigned 32 count, then each element in its form.
    template <typename T>
    void write(const Array<T>& array);
    /// Reads the count; the first pass alone clears and sizes the array, so elements keep their addresses.
    template <typename T>
    void read(Array<T>& array);
    /// Writes an unsigned 32 count, then each element in its form.
    template <typename T>
    void write(const PODArray<T>& array);
    /// Reads the count; the first pass alone clears and sizes the array, so elements keep their addresses.
    template <typename T>
    void read(PODArray<T>& array);
    /// Writes an unsigned 32 count, then key and value of each entry in ascending key order.
    template <typename K, typename V>
    void write(const OrvMap<K, V>& map);
    /// Reads the count; the first pass alone clears the map; each value is read over the entry of its key.
    template <typename K, typename V>
    void read(OrvMap<K, V>& map);
    /// Writes first, then second; no count.
    template <typename A, typename B>
    void write(const std::pair<A, B>& pair);
    /// Reads first, then second.
    template <typename A, typename B>
    void read(std::pair<A, B>& pair);

    /// Writes value in the form of its type, in the current pass: an inspectable object by value, a smart pointer
    /// (or a class derived from one) as a pointer, a word value (an entity handle) as its 32-bit word, anything else
    /// through its write.
    template <typename T>
    void writeValue(const T& value);
    /// Reads value in the form of its type, in the current pass.
    template <typename T>
    void readValue(T& value);

    /// True in the first pass of either direction, and at rest.
    bool isFirstPass() const { return _firstPass; }
    /// Sets the pass; for callers that run the two passes themselves.
    void setFirstPass(bool firstPass) { _firstPass = firstPass; }
    /// Keeps an accessor attribute's temporary from the first read pass to the second. Does not take ownership.
    void pushValueInFifo(void* value) { _queueOfAccessorAttributeValues.push(value); }
    /// The oldest kept temporary, removed from the queue; the queue must not be empty.
    void* popValuefromFifo();
    /// The bytes as a standard stream, for callers that write a header in front, seek, or take them as a string.
    ByteStream& getStream() { return _binaryStream; }

    /// Back to the first pass, with the error state cleared, both id maps holding only null under 0 and nothing
    /// pending. The bytes and the read and write positions stay.
    void clear();
    /// The write position, that is the bytes written so far; 0 if it is not available.
    uint64_t getLength();
    /// The read position.
    uint64_t getPosition();

    /// Writes all the bytes to fileName, truncating it. A file that cannot be opened gets nothing; nothing is
    /// reported.
    void exportTo(const char* fileName);
    /// Replaces the bytes with the whole content of fileName, which must exist; the read position goes to 0.
    void importFrom(const char* fileName);
    /// Replaces the bytes with size bytes of buffer, which must not be null; the read position goes to 0.
    void importFrom(const uint8_t* buffer, size_t size);

private:
    /// Appends size bytes in the second pass; the first pass writes nothing.
    void writeBytes(const void* data, size_t size)
    {
        if (!_firstPass)
        {
            _binaryStream.buffer().put(data, size);
        }
    }
    /// Reads up to size bytes, in either pass; past the end, what is missing stays unread.
    void readBytes(void* data, size_t size)
    {
        if (_binaryStream.buffer().get(data, size) < size)
        {
            _binaryStream.setstate(std::ios::eofbit);
        }
    }
    /// Reads a plain value of fixed size, in either pass; past the end, what is missing stays unread.
    template <typename T>
    void readFixed(T& value)
    {
        if (!_binaryStream.buffer().getFixed<sizeof(T)>(&value))
        {
            _binaryStream.setstate(std::ios::eofbit);
        }
    }
    /// Moves the read position; the stream's error state does not stop it.
    void seekRead(uint64_t position);

    /// The id of address, or a new one: the number of addresses known so far.
    uint32_t giveId(const void* address)
    {
        // Ids are never reused: the next one is the number of addresses known, null included.
        return _pointerToIdMap.findOrInsert(address, static_cast<uint32_t>(_pointerToIdMap.size()));
    }
    /// The id of address; an unknown address is entered with id 0.
    uint32_t findId(const void* address) { return _pointerToIdMap.findOrInsert(address, 0u); }
    /// The address of id; an unknown id is entered with null.
    void* findAddress(uint32_t id);
    /// The entry of id, or null when the id is unknown.
    void** findAddressEntry(uint32_t id);
    /// The entry of id, entered with null when unknown.
    void*& touchAddressEntry(uint32_t id);

    /// Ends the life of an instance made for a pointer whose id turned out to belong to an object read by value.
    template <typename T>
    void destroyPlaceholder(void* placeholder);

    template <typename T>
    void writeInspectablePointer(T* pointer);
    template <typename T>
    void writeBaseTypePointer(const T* pointer);
    template <typename T>
    void readInspectablePointer(T*& pointer);
    template <typename T>
    void readBaseTypePointer(T*& pointer);
    template <typename Container>
    void writeElements(const Container& container);
    template <typename Container>
    void readElements(Container& container);

    /// Every address given an id; null is 0.
    IdTable<const void*, uint32_t> _pointerToIdMap;
    /// Every id given an address, by id; 0 is null. Ids come one after the other, so they index an array; an id
    /// far past the bytes read goes to _sparseIdToPointerMap.
    PODArray<void*> _idToPointerMap;
    /// Ids too large for the array.
    IdTable<uint32_t, void*> _sparseIdToPointerMap;
    /// Objects reached by pointer whose body has yet to be written, sorted and without duplicates.
    OrvSet<TypedPointer> _pointersValueToWrite;
    /// Instances this stream made for pointers; only these are destroyed when an object read by value takes their id.
    OrvSet<const void*> _createdInstances;
    /// The bytes, binary, open for reading and writing.
    ByteStream _binaryStream;
    /// True in the first pass of either direction.
    bool _firstPass = true;
    /// Temporaries of const V& accessor attributes, kept between the two read passes.
    OrvQueue<void*, OrvDeque<void*>> _queueOfAccessorAttributeValues;
};

template <typename T>
void BinaryStream::pack(const T& value)
{
    _firstPass = true;
    writeValue(value);
    _firstPass = false;
    writeValue(value);
    _firstPass = true;
}

template <typename T>
void BinaryStream::unpack(T& value)
{
    const uint64_t start = getPosition();
    _firstPass = true;
    readValue(value);
    _firstPass = false;
    seekRead(start);
    readValue(value);
    _firstPass = true;
}

template <typename T, typename>
void BinaryStream::write(const T& object, bool erasePending)
{
    const RTTI& rtti = *object.getRTTI();
    if (erasePending && !_pointersValueToWrite.empty())
    {
        TypedPointer typedPointer;
        typedPointer._pointer = &object;
        typedPointer._typeID = rtti.getTypeID();
        _pointersValueToWrite.erase(typedPointer);
    }
    if (_firstPass)
    {
        giveId(&object);
    }
    else
    {
        write(findId(&object));
    }
    const PODArray<const AbstractAttribute*>& attributes = rtti.getAllAttributes();
    if (!_firstPass)
    {
        write(static_cast<uint32_t>(attributes.size()));
    }
    for (size_t i = 0; i < attributes.size(); ++i)
    {
        attributes[i]->pack(*this, &object);
    }
}

template <typename T, typename>
void BinaryStream::read(T& object)
{
    const RTTI& rtti = *object.getRTTI();
    uint32_t id = 0;
    read(id);
    // Id 0 is null's for good: a by-value object never takes it.
    if (_firstPass && id != 0)
    {
        void** found = findAddressEntry(id);
        if (found != nullptr && *found != &object && *found != nullptr && _createdInstances.erase(*found) != 0)
        {
            // A pointer read before this object made an instance under its id; the object itself is here.
            destroyPlaceholder<T>(*found);
        }
        touchAddressEntry(id) = &object;
    }
    uint32_t attributesCount = 0;
    read(attributesCount);
    const PODArray<const AbstractAttribute*>& attributes = rtti.getAllAttributes();
    orvAssertMsg(rtti.getAttributesCount() == attributesCount,
                 "the Inspectable object of type : %s passed as an argument to BinaryStream::read has a different "
                 "attributes count, %lu, than the one being read from the stream, %lu",
                 rtti.getTypeName(), static_cast<unsigned long>(rtti.getAttributesCount()),
                 static_cast<unsigned long>(attributesCount));
    for (uint32_t i = 0; i < attributesCount; ++i)
    {
        attributes[i]->unpack(*this, &object);
    }
}

template <typename T>
void BinaryStream::write(T* pointer)
{
    if constexpr (binaryStreamDetail::IsInspectable<std::remove_const_t<T>>::value)
    {
        writeInspectablePointer(const_cast<std::remove_const_t<T>*>(pointer));
    }
    else
    {
        writeBaseTypePointer(static_cast<const T*>(pointer));
    }
}

template <typename T>
void BinaryStream::read(T*& pointer)
{
    if constexpr (binaryStreamDetail::IsInspectable<T>::value)
    {
        readInspectablePointer(pointer);
    }
    else
    {
        readBaseTypePointer(pointer);
    }
}

template <typename T>
void BinaryStream::read(const T*& pointer)
{
    T* mutablePointer = const_cast<T*>(pointer);
    read(mutablePointer);
    pointer = mutablePointer;
}

template <typename T>
void BinaryStream::write(const SmartPointer<T>& pointer)
{
    write(pointer._pointee);
}

template <typename T>
void BinaryStream::read(SmartPointer<T>& pointer)
{
    T* held = nullptr;
    read(held);
    // The temporary holds first, so that a pointer already holding the same object never drops to 0.
    pointer = SmartPointer<T>(held);
}

template <typename T>
void BinaryStream::write(const Array<T>& array)
{
    writeElements(array);
}

template <typename T>
void BinaryStream::read(Array<T>& array)
{
    readElements(array);
}

template <typename T>
void BinaryStream::write(const PODArray<T>& array)
{
    writeElements(array);
}

template <typename T>
void BinaryStream::read(PODArray<T>& array)
{
    readElements(array);
}

template <typename K, typename V>
void BinaryStream::write(const OrvMap<K, V>& map)
{
    write(static_cast<uint32_t>(map.size()));
    for (auto entry = map.begin(); entry != map.end(); ++entry)
    {
        writeValue(entry.getKey());
        writeValue(entry.getValue());
    }
}

template <typename K, typename V>
void BinaryStream::read(OrvMap<K, V>& map)
{
    uint32_t count = 0;
    read(count);
    if (_firstPass)
    {
        map.clear();
    }
    for (uint32_t i = 0; i < count; ++i)
    {
        K key = K();
        readValue(key);
        // Entries are nodes that never move, so the second pass reads over the very values of the first.
        readValue(map[key]);
    }
}

template <typename A, typename B>
void BinaryStream::write(const std::pair<A, B>& pair)
{
    writeValue(pair.first);
    writeValue(pair.second);
}

template <typename A, typename B>
void BinaryStream::read(std::pair<A, B>& pair)
{
    readValue(pair.first);
    readValue(pair.second);
}

template <typename T>
void BinaryStream::writeValue(const T& value)
{
    if constexpr (binaryStreamDetail::IsSmartPointer<T>::value)
    {
        // A class derived from a smart pointer goes as its smart pointer, not as an object of its own.
        typedef typename binaryStreamDetail::IsSmartPointer<T>::Pointee Pointee;
        write(static_cast<const SmartPointer<Pointee>&>(value));
    }
    else if constexpr (binaryStreamDetail::IsInspectable<T>::value)
    {
        write(value, true);
    }
    else if constexpr (binaryStreamDetail::IsWordValue<T>::value)
    {
        write(static_cast<uint32_t>(value.getUint32()));
    }
    else
    {
        write(value);
    }
}

template <typename T>
void BinaryStream::readValue(T& value)
{
    if constexpr (binaryStreamDetail::IsSmartPointer<T>::value)
    {
        typedef typename binaryStreamDetail::IsSmartPointer<T>::Pointee Pointee;
        read(static_cast<SmartPointer<Pointee>&>(value));
    }
    else if constexpr (binaryStreamDetail::IsWordValue<T>::value)
    {
        uint32_t word = value.getUint32();
        read(word);
        value.setUint32(word);
    }
    else
    {
        read(value);
    }
}

template <typename T>
void BinaryStream::destroyPlaceholder(void* placeholder)
{
    // Made by the creator of the class that the by-value object has, so its own destructor and delete fit.
    delete static_cast<T*>(placeholder);
}

template <typename T>
void BinaryStream::writeInspectablePointer(T* pointer)
{
    if (_firstPass)
    {
        if (_pointerToIdMap.find(pointer) != nullptr)
        {
            return;
        }
        const RTTI& rtti = *pointer->getRTTI();
        giveId(pointer);
        TypedPointer typedPointer;
        typedPointer._pointer = pointer;
        typedPointer._typeID = rtti.getTypeID();
        _pointersValueToWrite.insert(typedPointer);
        const PODArray<const AbstractAttribute*>& attributes = rtti.getAllAttributes();
        for (size_t i = 0; i < attributes.size(); ++i)
        {
            attributes[i]->pack(*this, pointer);
        }
        return;
    }
    write(findId(pointer));
    if (pointer == nullptr)
    {
        return;
    }
    const RTTI& rtti = *pointer->getRTTI();
    write(rtti.getTypeID());
    TypedPointer typedPointer;
    typedPointer._pointer = pointer;
    typedPointer._typeID = rtti.getTypeID();
    if (_pointersValueToWrite.find(typedPointer) == _pointersValueToWrite.end())
    {
        write(static_cast<unsigned char>(0));
        return;
    }
    write(static_cast<unsigned char>(1));
    // Erases the pending body before any attribute is written, so a cycle back here writes no second body.
    write(*pointer, true);
}

template <typename T>
void BinaryStream::writeBaseTypePointer(const T* pointer)
{
    if (_firstPass)
    {
        return;
    }
    const uint32_t* found = _pointerToIdMap.find(pointer);
    if (found != nullptr)
    {
        write(*found);
        write(static_cast<unsigned char>(0));
        return;
    }
    // Base values get their ids in the second pass, after every object of the first.
    const uint32_t id = giveId(pointer);
    write(id);
    write(static_cast<unsigned char>(1));
    writeValue(*pointer);
}

template <typename T>
void BinaryStream::readInspectablePointer(T*& pointer)
{
    uint32_t id = 0;
    read(id);
    if (id == 0)
    {
        pointer = nullptr;
        return;
    }
    Uuid typeID;
    unsigned char hasBody = 0;
    read(typeID);
    read(hasBody);
    if (!_firstPass)
    {
        pointer = static_cast<T*>(findAddress(id));
        if (pointer != nullptr && hasBody == 1)
        {
            read(*pointer);
        }
        return;
    }
    if (findAddressEntry(id) != nullptr)
    {
        // Not set on purpose: the target may still move to an object read by value; the second pass sets it.
        return;
    }
    void* instance = RTTI::createInstance(typeID);
    pointer = static_cast<T*>(instance);
    if (instance == nullptr)
    {
        // The body, if any, stays unread: the rest of the stream is out of step.
        orvLogCore(LogSeverity::LOG_WARNING, typeID.getString().c_str() << " is not a registered inspectable type");
        return;
    }
    touchAddressEntry(id) = instance;
    _createdInstances.insert(instance);
    if (hasBody == 1)
    {
        read(*pointer);
    }
}

template <typename T>
void BinaryStream::readBaseTypePointer(T*& pointer)
{
    uint32_t id = 0;
    unsigned char hasBody = 0;
    read(id);
    read(hasBody);
    if (_firstPass && findAddressEntry(id) == nullptr)
    {
        // The first time an id is met its value follows; hasBody is not consulted.
        T* value = new T();
        touchAddressEntry(id) = value;
        readValue(*value);
    }
    pointer = static_cast<T*>(findAddress(id));
    if (!_firstPass && hasBody == 1 && pointer != nullptr)
    {
        readValue(*pointer);
    }
}

template <typename Container>
void BinaryStream::writeElements(const Container& container)
{
    write(static_cast<uint32_t>(container.size()));
    for (size_t i = 0; i < container.size(); ++i)
    {
        writeValue(container[i]);
    }
}

template <typename Container>
void BinaryStream::readElements(Container& container)
{
    uint32_t count = 0;
    read(count);
    if (_firstPass)
    {
        container.clear();
        container.resize(count);
    }
    // The second pass reads over the elements of the first; the bound only matters for a caller's own passes.
    const size_t elements = count < container.size() ? count : container.size();
    for (size_t i = 0; i < elements; ++i)
    {
        readValue(container[i]);
    }
}

} // namespace orv
