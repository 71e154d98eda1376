// orvCore/system/serialization/orvByteStream.h
#pragma once

#include <cstddef>
#include <cstring>
#include <istream>
#include <streambuf>
#include <string>

#include "system/containers/orvPODArray.h"

namespace orv
{

/// The bytes of a binary stream: a growable block with a read position and a write position, seen by the
/// standard library as a stream buffer. Its own read and append are plain copies, for the binary stream's many
/// small values. One thread at a time.
class ByteStreamBuffer : public std::streambuf
{
public:
    /// Appends or overwrites size bytes at the write position, which moves past them.
    void put(const void* data, size_t size)
    {
        if (_write + size > _bytes.size())
        {
            grow(_write + size);
        }
        memcpy(_bytes.data() + _write, data, size);
        _write += size;
    }
    /// Copies up to size bytes from the read position, which moves past them; gives how many.
    size_t get(void* data, size_t size)
    {
        const size_t available = _read < _bytes.size() ? _bytes.size() - _read : 0;
        const size_t count = size < available ? size : available;
        memcpy(data, _bytes.data() + _read, count);
        _read += count;
        return count;
    }
    /// All the bytes, as a string.
    std::string str() const { return std::string(_bytes.data(), _bytes.size()); }
    /// Replaces the bytes; both positions go to 0.
    void assign(const void* data, size_t size);
    /// The bytes and their count.
    const char* data() const { return _bytes.data(); }
    size_t size() const { return _bytes.size(); }
    /// Read and write positions, in bytes from the start.
    size_t getReadPosition() const { return _read; }
    size_t getWritePosition() const { return _write; }
    /// Moves the read position; past the end it stays where asked, and reads give nothing.
    void setReadPosition(size_t position) { _read = position; }
    /// Moves the write position, to at most the end.
    void setWritePosition(size_t position) { _write = position < _bytes.size() ? position : _bytes.size(); }

protected:
    /// The standard interface, for callers that use the bytes as a stream: one character at a time.
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* data, std::streamsize size) override;
    int_type underflow() override;
    int_type uflow() override;
    std::streamsize xsgetn(char* data, std::streamsize size) override;
    std::streamsize showmanyc() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode which) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

private:
    void grow(size_t size);

    PODArray<char> _bytes;
    size_t _read = 0;
    size_t _write = 0;
};

/// A standard stream over a ByteStreamBuffer: what BinaryStream::getStream hands out, with str() as a string
/// stream has.
class ByteStream : public std::iostream
{
public:
    /// An empty stream.
    ByteStream() : std::iostream(nullptr) { rdbuf(&_buffer); }
    ByteStream(const ByteStream&) = delete;
    ByteStream& operator=(const ByteStream&) = delete;

    /// All the bytes, as a string.
    std::string str() const { return _buffer.str(); }
    /// Replaces the bytes; both positions go to 0.
    void str(const std::string& bytes) { _buffer.assign(bytes.data(), bytes.size()); }
    /// The buffer itself.
    ByteStreamBuffer& buffer() { return _buffer; }

private:
    ByteStreamBuffer _buffer;
};

} // namespace orv
