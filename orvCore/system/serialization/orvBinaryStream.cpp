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

BinaryStream::BinaryStream() : _binaryStream(std::ios::in | std::ios::out | std::ios::binary | std::ios::trunc)
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
    if (_binaryStream.rdbuf()->sputn(data, size) != static_cast<std::streamsize>(size))
    {
        _binaryStream.setstate(std::ios::badbit);
    }
}

void BinaryStream::read(OrvString& value)
{
    uint32_t length = 0;
    read(length);
    char* readBuffer = static_cast<char*>(malloc(static_cast<size_t>(length) + 1));
    orvAssert(readBuffer != NULL);
    // Past the end of the bytes the text stops where they stop.
    const std::streamsize got = _binaryStream.rdbuf()->sgetn(readBuffer, length);
    if (got < static_cast<std::streamsize>(length))
    {
        _binaryStream.setstate(std::ios::eofbit);
    }
    readBuffer[got > 0 ? got : 0] = '\0';
    value.assign(readBuffer, static_cast<size_t>(got > 0 ? got : 0));
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

void BinaryStream::read(EntityHandle& value)
{
    uint32_t word = value.getUint32();
    read(word);
    value.setUint32(word);
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

void BinaryStream::write(const EntityHandle& value)
{
    write(value.getUint32());
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
    _pointerToIdMap.insert(nullptr, 0u);
    _idToPointerMap.insert(0u, nullptr);
    _pointersValueToWrite.clear();
    _createdInstances.clear();
}

uint64_t BinaryStream::getLength()
{
    // Asked of the buffer, so that a read that ran past the end does not hide what was written.
    const std::streampos position = _binaryStream.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::out);
    return position == std::streampos(-1) ? 0 : static_cast<uint64_t>(position);
}

uint64_t BinaryStream::getPosition()
{
    const std::streampos position = _binaryStream.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in);
    return position == std::streampos(-1) ? 0 : static_cast<uint64_t>(position);
}

void BinaryStream::exportTo(const char* fileName)
{
    std::ofstream file(fileName, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!file)
    {
        return;
    }
    const std::string bytes = _binaryStream.str();
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void BinaryStream::importFrom(const char* fileName)
{
    orvAssert(FileDir::exist(fileName));
    _binaryStream.str(std::string());
    _binaryStream.clear();
    std::ifstream file(fileName, std::ios::in | std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    importFrom(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

void BinaryStream::importFrom(const uint8_t* buffer, size_t size)
{
    orvAssert(buffer != NULL);
    _binaryStream.str(std::string(reinterpret_cast<const char*>(buffer), size));
    _binaryStream.clear();
    // The bytes were poured in: reading starts at 0, writing would continue after them.
    _binaryStream.rdbuf()->pubseekoff(0, std::ios::end, std::ios::out);
    _binaryStream.rdbuf()->pubseekpos(0, std::ios::in);
}

void BinaryStream::writeBytes(const void* data, size_t size)
{
    if (_firstPass)
    {
        return;
    }
    write(static_cast<const char*>(data), static_cast<unsigned int>(size));
}

void BinaryStream::readBytes(void* data, size_t size)
{
    // Straight from the buffer: a stream that ran past its end can still be rewound for the second pass.
    const std::streamsize got =
        _binaryStream.rdbuf()->sgetn(static_cast<char*>(data), static_cast<std::streamsize>(size));
    if (got < static_cast<std::streamsize>(size))
    {
        _binaryStream.setstate(std::ios::eofbit);
    }
}

void BinaryStream::seekRead(uint64_t position)
{
    _binaryStream.rdbuf()->pubseekpos(static_cast<std::streamoff>(position), std::ios::in);
}

uint32_t BinaryStream::giveId(const void* address)
{
    auto found = _pointerToIdMap.find(address);
    if (found != _pointerToIdMap.end())
    {
        return found.getValue();
    }
    // Ids are never reused: the next one is the number of addresses known, null included.
    const uint32_t id = static_cast<uint32_t>(_pointerToIdMap.size());
    _pointerToIdMap.insert(address, id);
    return id;
}

uint32_t BinaryStream::findId(const void* address)
{
    return _pointerToIdMap[address];
}

void* BinaryStream::findAddress(uint32_t id)
{
    return _idToPointerMap[id];
}

} // namespace orv
