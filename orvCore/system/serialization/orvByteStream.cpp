// orvCore/system/serialization/orvByteStream.cpp
#include "system/serialization/orvByteStream.h"

#include <cstdlib>

#include "system/debug/orvAssert.h"

namespace orv
{

ByteStreamBuffer::~ByteStreamBuffer()
{
    free(_bytes);
}

void ByteStreamBuffer::assign(const void* data, size_t size)
{
    if (size > _capacity)
    {
        // Fresh room, without copying the old bytes into it first.
        free(_bytes);
        _bytes = nullptr;
        _capacity = 0;
        _size = 0;
        grow(size);
    }
    if (size > 0)
    {
        // The bytes may be a part of this very room.
        memmove(_bytes, data, size);
    }
    _size = size;
    _read = 0;
    _write = 0;
}

void ByteStreamBuffer::grow(size_t size)
{
    // Doubles, so that appending stays amortised constant; the room is all usable at once.
    const size_t doubled = _capacity * 2 + 64;
    const size_t capacity = size > doubled ? size : doubled;
    char* bytes = static_cast<char*>(realloc(_bytes, capacity));
    orvAssertMsg(bytes != nullptr, "out of memory for %zu bytes", capacity);
    _bytes = bytes;
    _capacity = capacity;
}

ByteStreamBuffer::int_type ByteStreamBuffer::overflow(int_type character)
{
    if (traits_type::eq_int_type(character, traits_type::eof()))
    {
        return traits_type::not_eof(character);
    }
    const char byte = traits_type::to_char_type(character);
    put(&byte, 1);
    return character;
}

std::streamsize ByteStreamBuffer::xsputn(const char* data, std::streamsize size)
{
    put(data, static_cast<size_t>(size));
    return size;
}

ByteStreamBuffer::int_type ByteStreamBuffer::underflow()
{
    if (_read >= _size)
    {
        return traits_type::eof();
    }
    return traits_type::to_int_type(_bytes[_read]);
}

ByteStreamBuffer::int_type ByteStreamBuffer::uflow()
{
    if (_read >= _size)
    {
        return traits_type::eof();
    }
    return traits_type::to_int_type(_bytes[_read++]);
}

std::streamsize ByteStreamBuffer::xsgetn(char* data, std::streamsize size)
{
    return static_cast<std::streamsize>(get(data, static_cast<size_t>(size)));
}

std::streamsize ByteStreamBuffer::showmanyc()
{
    return _read < _size ? static_cast<std::streamsize>(_size - _read) : -1;
}

ByteStreamBuffer::pos_type ByteStreamBuffer::seekoff(off_type offset, std::ios_base::seekdir direction,
                                                     std::ios_base::openmode which)
{
    const bool in = (which & std::ios_base::in) != 0;
    const bool out = (which & std::ios_base::out) != 0;
    off_type base = 0;
    if (direction == std::ios_base::cur)
    {
        // From the present position, only one of the two can be meant.
        if (in == out)
        {
            return pos_type(off_type(-1));
        }
        base = static_cast<off_type>(in ? _read : _write);
    }
    else if (direction == std::ios_base::end)
    {
        base = static_cast<off_type>(_size);
    }
    const off_type target = base + offset;
    if (target < 0 || target > static_cast<off_type>(_size))
    {
        return pos_type(off_type(-1));
    }
    if (in)
    {
        _read = static_cast<size_t>(target);
    }
    if (out)
    {
        _write = static_cast<size_t>(target);
    }
    return pos_type(target);
}

ByteStreamBuffer::pos_type ByteStreamBuffer::seekpos(pos_type position, std::ios_base::openmode which)
{
    return seekoff(off_type(position), std::ios_base::beg, which);
}

} // namespace orv
