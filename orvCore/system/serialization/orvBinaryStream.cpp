// orvCore/system/serialization/orvBinaryStream.cpp
#include "system/serialization/orvBinaryStream.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

#include "system/utils/orvFileDir.h"

namespace orv
{

bool BinaryStream::TypedPointer::operator<(const TypedPointer& other) const
{
    if (_pointer != other._pointer)
    {
        return _pointer < other._pointer;
    }
    return _typeID < other._typeID;
}

bool BinaryStream::TypedPointer::operator==(const TypedPointer& other) const
{
    return _pointer == other._pointer && _typeID == other._typeID;
}

BinaryStream::BinaryStream()
{
    clear();
}

BinaryStream::~BinaryStream()
{
}

void BinaryStream::read(char* data, unsigned int size)
{
    readBytes(data, size);
}

void BinaryStream::write(const char* data, unsigned int size)
{
    if (size == 0)
    {
        return;
    }
    _binaryStream.buffer().put(data, size);
}

void BinaryStream::read(OrvString& value)
{
    uint32_t length = 0;
    read(length);
    char* readBuffer = static_cast<char*>(malloc(static_cast<size_t>(length) + 1));
    orvAssert(readBuffer != NULL);
    // Past the end of the bytes the text stops where they stop.
    const size_t got = _binaryStream.buffer().get(readBuffer, length);
    if (got < length)
    {
        _binaryStream.setstate(std::ios::eofbit);
    }
    readBuffer[got] = '\0';
    value.assign(readBuffer, got);
    free(readBuffer);
}

void BinaryStream::read(Vector2& value)
{
    read(value.x);
    read(value.y);
}

void BinaryStream::read(Vector3& value)
{
    read(value.x);
    read(value.y);
    read(value.z);
}

void BinaryStream::read(Vector4& value)
{
    read(value.x);
    read(value.y);
    read(value.z);
    read(value.w);
}

void BinaryStream::read(Quaternion& value)
{
    read(value.x);
    read(value.y);
    read(value.z);
    read(value.w);
}

void BinaryStream::read(bool& value)
{
    // One byte compared with 0: a file's byte other than 0 or 1 must still give a valid bool.
    unsigned char byte = value ? 1 : 0;
    readFixed(byte);
    value = byte != 0;
}

void BinaryStream::write(const OrvString& value)
{
    if (_firstPass)
    {
        return;
    }
    const uint32_t length = static_cast<uint32_t>(value.size());
    write(length);
    write(value.c_str(), length);
}

void BinaryStream::write(const Vector2& value)
{
    write(value.x);
    write(value.y);
}

void BinaryStream::write(const Vector3& value)
{
    write(value.x);
    write(value.y);
    write(value.z);
}

void BinaryStream::write(const Vector4& value)
{
    write(value.x);
    write(value.y);
    write(value.z);
    write(value.w);
}

void BinaryStream::write(const Quaternion& value)
{
    write(value.x);
    write(value.y);
    write(value.z);
    write(value.w);
}

void* BinaryStream::popValuefromFifo()
{
    void* value = _queueOfAccessorAttributeValues.front();
    _queueOfAccessorAttributeValues.pop();
    return value;
}

void BinaryStream::clear()
{
    _firstPass = true;
    _binaryStream.clear();
    _pointerToIdMap.clear();
    _idToPointerMap.clear();
    _sparseIdToPointerMap.clear();
    _pointerToIdMap.findOrInsert(nullptr, 0u);
    touchAddressEntry(0) = nullptr;
    _pointersValueToWrite.clear();
    _createdInstances.clear();
}

uint64_t BinaryStream::getLength()
{
    // Asked of the buffer, so that a read that ran past the end does not hide what was written.
    return _binaryStream.buffer().getWritePosition();
}

uint64_t BinaryStream::getPosition()
{
    return _binaryStream.buffer().getReadPosition();
}

void BinaryStream::exportTo(const char* fileName)
{
    std::ofstream file(fileName, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!file)
    {
        return;
    }
    file.write(_binaryStream.buffer().data(), static_cast<std::streamsize>(_binaryStream.buffer().size()));
}

void BinaryStream::importFrom(const char* fileName)
{
    orvAssert(FileDir::exist(fileName));
    _binaryStream.buffer().assign(nullptr, 0);
    _binaryStream.clear();
    std::ifstream file(fileName, std::ios::in | std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    importFrom(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

void BinaryStream::importFrom(const uint8_t* buffer, size_t size)
{
    orvAssert(buffer != NULL);
    _binaryStream.buffer().assign(buffer, size);
    _binaryStream.clear();
    // The bytes were poured in: reading starts at 0, writing would continue after them.
    _binaryStream.buffer().setWritePosition(size);
}

void BinaryStream::seekRead(uint64_t position)
{
    _binaryStream.buffer().setReadPosition(static_cast<size_t>(position));
}

namespace
{

// Marks an id of the array that has no address yet: no object lies at an odd address.
void* const kNoAddress = reinterpret_cast<void*>(uintptr_t(1));

} // namespace

void* BinaryStream::findAddress(uint32_t id)
{
    return touchAddressEntry(id);
}

void** BinaryStream::findAddressEntry(uint32_t id)
{
    if (id < _idToPointerMap.size())
    {
        return _idToPointerMap[id] != kNoAddress ? &_idToPointerMap[id] : nullptr;
    }
    return _sparseIdToPointerMap.find(id);
}

void*& BinaryStream::touchAddressEntry(uint32_t id)
{
    // Every object and value takes at least four bytes: ids past that bound can only come from damaged bytes, and
    // must not size the array.
    const size_t denseBound = _binaryStream.buffer().size() / 4 + 1024;
    if (id >= _idToPointerMap.size() && id < denseBound)
    {
        const size_t previous = _idToPointerMap.size();
        _idToPointerMap.resize(static_cast<size_t>(id) + 1);
        for (size_t i = previous; i < _idToPointerMap.size(); ++i)
        {
            _idToPointerMap[i] = kNoAddress;
        }
    }
    if (id < _idToPointerMap.size())
    {
        void*& entry = _idToPointerMap[id];
        if (entry == kNoAddress)
        {
            entry = nullptr;
        }
        return entry;
    }
    return _sparseIdToPointerMap.findOrInsert(id, nullptr);
}

} // namespace orv
