// orvCore/system/serialization/orvByteStream.h
#pragma once

#include <cstddef>
#include <cstring>
#include <istream>
#include <streambuf>
#include <string>

namespace orv
{

/// The bytes of a binary stream: a growable block with a read position and a write position, seen by the
/// standard library as a stream buffer. Its own read and append are plain copies, for the binary stream's many
/// small values. One thread at a time.
class ByteStreamBuffer : public std::streambuf
{
public:
    /// An empty buffer; its room comes with the first bytes.
    ByteStreamBuffer() = default;
    ~ByteStreamBuffer() override;
    ByteStreamBuffer(const ByteStreamBuffer&) = delete;
    ByteStreamBuffer& operator=(const ByteStreamBuffer&) = delete;

    /// Appends or overwrites size bytes at the write position, which moves past them.
    void put(const void* data, size_t size)
    {
        if (_write + size > _capacity)
        {
            grow(_write + size);
        }
        memcpy(_bytes + _write, data, size);
        _write += size;
        if (_write > _size)
        {
            _size = _write;
        }
    }
    /// Copies up to size bytes from the read position, which moves past them; gives how many.
    size_t get(void* data, size_t size)
    {
        const size_t available = _read < _size ? _size - _read : 0;
        const size_t count = size < available ? size : available;
        memcpy(data, _bytes + _read, count);
        _read += count;
        return count;
    }
    /// Copies exactly N bytes from the read position when that many remain, and moves past them; otherwise reads
    /// what remains and gives false. N is a constant, so the copy is one load.
    template <size_t N>
    bool getFixed(void* data)
    {
        if (_read < _size && _size - _read >= N)
        {
            memcpy(data, _bytes + _read, N);
            _read += N;
            return true;
        }
        return get(data, N) == N;
    }
    /// All the bytes, as a string.
    std::string str() const { return std::string(_bytes, _size); }
    /// Replaces the bytes; both positions go to 0.
    void assign(const void* data, size_t size);
    /// The bytes and their count.
    const char* data() const { return _bytes; }
    size_t size() const { return _size; }
    /// Read and write positions, in bytes from the start.
    size_t getReadPosition() const { return _read; }
    size_t getWritePosition() const { return _write; }
    /// Moves the read position; past the end it stays where asked, and reads give nothing.
    void setReadPosition(size_t position) { _read = position; }
    /// Moves the write position, to at most the end.
    void setWritePosition(size_t position) { _write = position < _size ? position : _size; }

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
    // Makes room for at least size bytes.
    void grow(size_t size);

    // The room, _capacity bytes, of which the first _size are the bytes; never zeroed.
    char* _bytes = nullptr;
    size_t _capacity = 0;
    size_t _size = 0;
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
