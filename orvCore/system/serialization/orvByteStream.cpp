// orvCore/system/serialization/orvByteStream.cpp
#include "system/serialization/orvByteStream.h"

namespace orv
{

void ByteStreamBuffer::assign(const void* data, size_t size)
{
    _bytes.clear();
    if (size > 0)
    {
        _bytes.resize(size);
        memcpy(_bytes.data(), data, size);
    }
    _read = 0;
    _write = 0;
}

void ByteStreamBuffer::grow(size_t size)
{
    // Grows as the library's arrays do, so that appending stays amortised constant.
    if (size > _bytes.capacity())
    {
        const size_t doubled = _bytes.capacity() * 2 + 8;
        _bytes.reserve(size > doubled ? size : doubled);
    }
    _bytes.resize(size);
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
    if (_read >= _bytes.size())
    {
        return traits_type::eof();
    }
    return traits_type::to_int_type(_bytes[_read]);
}

ByteStreamBuffer::int_type ByteStreamBuffer::uflow()
{
    if (_read >= _bytes.size())
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
    return _read < _bytes.size() ? static_cast<std::streamsize>(_bytes.size() - _read) : -1;
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
        base = static_cast<off_type>(_bytes.size());
    }
    const off_type target = base + offset;
    if (target < 0 || target > static_cast<off_type>(_bytes.size()))
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
