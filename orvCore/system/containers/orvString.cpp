// orvCore/system/containers/orvString.cpp
#include "system/containers/orvString.h"

#include <cctype>
#include <cstdint>
#include <cstring>
#include <istream>
#include <ostream>
#include <string_view>
#include <utility>

#include "system/debug/orvAssert.h"
#include "system/memory/orvMemoryStatIds.h"
#include "system/memory/orvProxyAllocator.h"

namespace orv
{

namespace
{

// Owned by start-up and shut-down: bound in initializeStringAllocator, unbound in uninitializeStringAllocator.
ProxyAllocator gStringAllocator;

size_t clampLength(size_t pos, size_t length, size_t size)
{
    const size_t available = size - pos;
    return length < available ? length : available;
}

bool contains(const char* set, size_t count, char c)
{
    return count != 0 && memchr(set, c, count) != nullptr;
}

// The first position from pos whose character is in the set (wanted) or not in it.
size_t findInSet(const char* base, size_t length, const char* set, size_t count, size_t pos, bool wanted)
{
    for (size_t i = pos; i < length; ++i)
    {
        if (contains(set, count, base[i]) == wanted)
        {
            return i;
        }
    }
    return OrvString::npos;
}

// The same, walking back from pos, or from the end when pos is past it.
size_t findInSetBackward(const char* base, size_t length, const char* set, size_t count, size_t pos, bool wanted)
{
    if (length == 0)
    {
        return OrvString::npos;
    }
    for (size_t i = (pos < length ? pos : length - 1) + 1; i-- > 0;)
    {
        if (contains(set, count, base[i]) == wanted)
        {
            return i;
        }
    }
    return OrvString::npos;
}

} // namespace

OrvString::OrvString(const char* text)
{
    assign(text);
}

OrvString::OrvString(const char* text, size_t count)
{
    assign(text, count);
}

OrvString::OrvString(const OrvString& other, size_t pos, size_t length)
{
    orvAssert(pos <= other.size());
    assign(other.c_str() + pos, clampLength(pos, length, other.size()));
}

OrvString::OrvString(size_t count, char c)
{
    assign(count, c);
}

OrvString::OrvString(const std::string& text)
{
    assign(text.data(), text.size());
}

MemoryAllocator* OrvString::getClassAllocator()
{
    return getStringAllocator();
}

MemAllocStatId OrvString::getClassMemoryStatId()
{
    return MemoryStatIds::CoreSystemString;
}

void OrvString::reserve(size_t count)
{
    if (_data._size == 0)
    {
        _data.push_back('\0');
    }
    _data.reserve(count + 1);
}

void OrvString::resize(size_t count, char c)
{
    const size_t length = size();
    if (count > length)
    {
        append(count - length, c);
    }
    else if (count < length)
    {
        _data._size = count + 1;
        _data._data[count] = '\0';
    }
}

void OrvString::clear()
{
    if (_data._size != 0)
    {
        _data._size = 1;
        _data._data[0] = '\0';
    }
}

void OrvString::swap(OrvString& other)
{
    std::swap(_data, other._data);
}

char& OrvString::at(size_t index)
{
    orvAssert(index < size());
    return _data._data[index];
}

const char& OrvString::at(size_t index) const
{
    orvAssert(index < size());
    return _data._data[index];
}

OrvString& OrvString::append(const OrvString& other, size_t pos, size_t length)
{
    orvAssert(pos <= other.size());
    return append(other.c_str() + pos, clampLength(pos, length, other.size()));
}

OrvString& OrvString::append(const char* text)
{
    return text != nullptr ? append(text, strlen(text)) : *this;
}

void OrvString::push_back(char c)
{
    if (_data._size == 0)
    {
        // First text: the terminator goes in first, so the block starts at the push path's 8.
        _data.push_back('\0');
    }
    _data._data[_data._size - 1] = c;
    _data.push_back('\0');
}

void OrvString::pop_back()
{
    --_data._size;
    _data._data[_data._size - 1] = '\0';
}

OrvString& OrvString::assign(const OrvString& other, size_t pos, size_t length)
{
    orvAssert(pos <= other.size());
    return assign(other.c_str() + pos, clampLength(pos, length, other.size()));
}

OrvString& OrvString::assign(const char* text)
{
    if (text == nullptr)
    {
        clear();
        return *this;
    }
    return assign(text, strlen(text));
}

OrvString& OrvString::insert(size_t pos, const char* text)
{
    return replace(pos, 0, text, text != nullptr ? strlen(text) : 0);
}

OrvString& OrvString::replace(size_t pos, size_t length, const char* text)
{
    return replace(pos, length, text, text != nullptr ? strlen(text) : 0);
}

OrvString& OrvString::replace(size_t pos, size_t length, const char* text, size_t count)
{
    const size_t oldSize = size();
    orvAssert(pos <= oldSize);
    length = clampLength(pos, length, oldSize);
    if (length == 0 && count == 0)
    {
        return *this;
    }

    // Text inside this block would move or vanish under the memmove or the reallocation below.
    const uintptr_t textAddress = reinterpret_cast<uintptr_t>(text);
    const uintptr_t blockAddress = reinterpret_cast<uintptr_t>(_data._data);
    if (count != 0 && _data._data != nullptr && textAddress >= blockAddress &&
        textAddress < blockAddress + _data._capacity)
    {
        const OrvString copy(text, count);
        return replace(pos, length, copy.c_str(), count);
    }

    const size_t newSize = oldSize - length + count;
    if (newSize + 1 > _data._capacity)
    {
        _data.grow(newSize + 1);
    }
    if (_data._size == 0)
    {
        _data._data[0] = '\0';
    }
    // The tail moves with its terminator.
    memmove(_data._data + pos + count, _data._data + pos + length, oldSize - pos - length + 1);
    if (count != 0)
    {
        memcpy(_data._data + pos, text, count);
    }
    _data._size = newSize + 1;
    return *this;
}

OrvString& OrvString::replace(size_t pos, size_t length, size_t count, char c)
{
    const size_t oldSize = size();
    orvAssert(pos <= oldSize);
    length = clampLength(pos, length, oldSize);
    const size_t newSize = oldSize - length + count;
    if (newSize + 1 > _data._capacity)
    {
        _data.grow(newSize + 1);
    }
    if (_data._size == 0)
    {
        _data._data[0] = '\0';
    }
    memmove(_data._data + pos + count, _data._data + pos + length, oldSize - pos - length + 1);
    memset(_data._data + pos, c, count);
    _data._size = newSize + 1;
    return *this;
}

size_t OrvString::find(const char* text, size_t pos) const
{
    return find(text, pos, strlen(text));
}

size_t OrvString::find(const char* text, size_t pos, size_t count) const
{
    const size_t length = size();
    if (pos > length || count > length - pos)
    {
        return npos;
    }
    if (count == 0)
    {
        return pos;
    }
    const char* base = c_str();
    const size_t last = length - count;
    for (size_t i = pos; i <= last; ++i)
    {
        // Jump to the next candidate first byte before comparing the rest.
        const void* hit = memchr(base + i, text[0], last - i + 1);
        if (hit == nullptr)
        {
            return npos;
        }
        i = static_cast<size_t>(static_cast<const char*>(hit) - base);
        if (memcmp(base + i, text, count) == 0)
        {
            return i;
        }
    }
    return npos;
}

size_t OrvString::find(char c, size_t pos) const
{
    const size_t length = size();
    if (pos >= length)
    {
        return npos;
    }
    const void* hit = memchr(c_str() + pos, c, length - pos);
    return hit != nullptr ? static_cast<size_t>(static_cast<const char*>(hit) - c_str()) : npos;
}

size_t OrvString::rfind(const char* text, size_t pos) const
{
    return rfind(text, pos, strlen(text));
}

size_t OrvString::rfind(const char* text, size_t pos, size_t count) const
{
    const size_t length = size();
    if (count > length)
    {
        return npos;
    }
    size_t i = length - count;
    if (pos < i)
    {
        i = pos;
    }
    const char* base = c_str();
    for (;;)
    {
        if (memcmp(base + i, text, count) == 0)
        {
            return i;
        }
        if (i == 0)
        {
            return npos;
        }
        --i;
    }
}

size_t OrvString::rfind(char c, size_t pos) const
{
    return find_last_of(&c, pos, 1);
}

size_t OrvString::find_first_of(const char* set, size_t pos) const
{
    return find_first_of(set, pos, strlen(set));
}

size_t OrvString::find_first_of(const char* set, size_t pos, size_t count) const
{
    return findInSet(c_str(), size(), set, count, pos, true);
}

size_t OrvString::find_last_of(const char* set, size_t pos) const
{
    return find_last_of(set, pos, strlen(set));
}

size_t OrvString::find_last_of(const char* set, size_t pos, size_t count) const
{
    return findInSetBackward(c_str(), size(), set, count, pos, true);
}

size_t OrvString::find_first_not_of(const char* set, size_t pos) const
{
    return find_first_not_of(set, pos, strlen(set));
}

size_t OrvString::find_first_not_of(const char* set, size_t pos, size_t count) const
{
    return findInSet(c_str(), size(), set, count, pos, false);
}

size_t OrvString::find_last_not_of(const char* set, size_t pos) const
{
    return find_last_not_of(set, pos, strlen(set));
}

size_t OrvString::find_last_not_of(const char* set, size_t pos, size_t count) const
{
    return findInSetBackward(c_str(), size(), set, count, pos, false);
}

int OrvString::compare(const OrvString& other) const
{
    const size_t a = size();
    const size_t b = other.size();
    const int order = memcmp(c_str(), other.c_str(), a < b ? a : b);
    if (order != 0)
    {
        return order;
    }
    return a < b ? -1 : (a > b ? 1 : 0);
}

int OrvString::compare(const char* text) const
{
    // strcmp stops at the first terminator; this text has none inside, so a longer one decides.
    return strcmp(c_str(), text != nullptr ? text : "");
}

int OrvString::compare(size_t pos, size_t length, const OrvString& other) const
{
    orvAssert(pos <= size());
    length = clampLength(pos, length, size());
    const size_t b = other.size();
    const int order = memcmp(c_str() + pos, other.c_str(), length < b ? length : b);
    if (order != 0)
    {
        return order;
    }
    return length < b ? -1 : (length > b ? 1 : 0);
}

OrvString& OrvString::toLowerSelf()
{
    const size_t length = size();
    for (size_t i = 0; i < length; ++i)
    {
        _data._data[i] = static_cast<char>(tolower(static_cast<unsigned char>(_data._data[i])));
    }
    return *this;
}

OrvString& OrvString::toUpperSelf()
{
    const size_t length = size();
    for (size_t i = 0; i < length; ++i)
    {
        _data._data[i] = static_cast<char>(toupper(static_cast<unsigned char>(_data._data[i])));
    }
    return *this;
}

OrvString operator+(const OrvString& a, const OrvString& b)
{
    OrvString result;
    result.reserve(a.size() + b.size());
    result.append(a).append(b);
    return result;
}

OrvString operator+(const OrvString& a, const char* b)
{
    const size_t length = b != nullptr ? strlen(b) : 0;
    OrvString result;
    result.reserve(a.size() + length);
    result.append(a).append(b, length);
    return result;
}

OrvString operator+(const char* a, const OrvString& b)
{
    const size_t length = a != nullptr ? strlen(a) : 0;
    OrvString result;
    result.reserve(length + b.size());
    result.append(a, length).append(b);
    return result;
}

OrvString operator+(const OrvString& a, char b)
{
    OrvString result;
    result.reserve(a.size() + 1);
    result.append(a).push_back(b);
    return result;
}

OrvString operator+(char a, const OrvString& b)
{
    OrvString result;
    result.reserve(b.size() + 1);
    result.push_back(a);
    result.append(b);
    return result;
}

OrvString operator+(OrvString&& a, const OrvString& b)
{
    a.append(b);
    return std::move(a);
}

OrvString operator+(OrvString&& a, const char* b)
{
    a.append(b);
    return std::move(a);
}

OrvString operator+(OrvString&& a, char b)
{
    a.push_back(b);
    return std::move(a);
}

std::ostream& operator<<(std::ostream& out, const OrvString& text)
{
    return out << std::string_view(text.c_str(), text.size());
}

std::istream& operator>>(std::istream& in, OrvString& text)
{
    std::string word;
    if (in >> word)
    {
        text.assign(word.data(), word.size());
    }
    return in;
}

void initializeStringAllocator(MemoryAllocator* target)
{
    gStringAllocator.initialize(target, MemoryStatIds::CoreSystemString);
}

MemoryAllocator* getStringAllocator()
{
    return gStringAllocator.getTarget() != nullptr ? &gStringAllocator : nullptr;
}

void uninitializeStringAllocator()
{
    gStringAllocator.uninitialize();
}

} // namespace orv
