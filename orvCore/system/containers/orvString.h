// orvCore/system/containers/orvString.h
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

#include "system/containers/orvPODArray.h"
#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// A text on a PODArray<char> that keeps its terminator, so the storage holds the length plus one.
/// A string that never got text owns no block. Positions are byte offsets. One thread per instance.
class OrvString
{
public:
    /// The standard container types: characters, walked by pointer.
    typedef char value_type;
    typedef char* iterator;
    typedef const char* const_iterator;

    /// The "no position" answer of the searches, and "to the end" as a length.
    static constexpr size_t npos = static_cast<size_t>(-1);

    /// An empty string; owns no block until text arrives.
    OrvString() = default;
    /// A copy of a terminated text; null gives an empty string.
    OrvString(const char* text);
    /// A copy of the first count bytes of text.
    OrvString(const char* text, size_t count);
    /// A copy of the length bytes of other that start at pos; fatal when pos is past the end.
    OrvString(const OrvString& other, size_t pos, size_t length = npos);
    /// count copies of c.
    OrvString(size_t count, char c);
    /// A copy of a standard string.
    OrvString(const std::string& text);
    /// A deep copy.
    OrvString(const OrvString& other) = default;
    /// Takes the other's block.
    OrvString(OrvString&& other) noexcept = default;
    ~OrvString() = default;

    /// Deep copy.
    OrvString& operator=(const OrvString& other) = default;
    /// Takes the other's block.
    OrvString& operator=(OrvString&& other) noexcept = default;
    /// Copies a terminated text; null gives an empty string.
    OrvString& operator=(const char* text) { return assign(text); }
    /// Copies a standard string.
    OrvString& operator=(const std::string& text) { return assign(text.data(), text.size()); }
    /// Makes the string the one character c.
    OrvString& operator=(char c) { return assign(1, c); }

    /// The allocator for string contents: the string proxy allocator, or null before it is set up.
    static MemoryAllocator* getClassAllocator();
    /// The statistics category for string contents.
    static MemAllocStatId getClassMemoryStatId();

    /// Length in bytes; 0 for a string that never got text.
    size_t size() const { return _data._size != 0 ? _data._size - 1 : 0; }
    /// Length in bytes; same as size().
    size_t length() const { return size(); }
    /// True when the length is 0.
    bool empty() const { return _data._size <= 1; }
    /// Bytes that fit before the block must grow, the terminator not counted.
    size_t capacity() const { return _data._capacity != 0 ? _data._capacity - 1 : 0; }
    /// Makes room for count bytes of text.
    void reserve(size_t count);
    /// Sets the length; new bytes are c.
    void resize(size_t count, char c = '\0');
    /// Empties the string and keeps the block.
    void clear();
    /// Exchanges contents with other.
    void swap(OrvString& other);

    /// The terminated text; "" for a string without block, never null.
    const char* c_str() const { return _data._size != 0 ? _data._data : ""; }
    /// Same as c_str().
    const char* data() const { return c_str(); }
    /// Byte at index, unchecked; index size() reads the terminator.
    char& operator[](size_t index) { return _data._data[index]; }
    /// Byte at index, unchecked; index size() reads the terminator.
    const char& operator[](size_t index) const { return c_str()[index]; }
    /// Byte at index; fatal when index is not below size().
    char& at(size_t index);
    /// Byte at index; fatal when index is not below size().
    const char& at(size_t index) const;
    /// First byte; the string must not be empty.
    char& front() { return _data._data[0]; }
    /// Last byte; the string must not be empty.
    char& back() { return _data._data[size() - 1]; }
    /// First byte; the string must not be empty.
    const char& front() const { return _data._data[0]; }
    /// Last byte; the string must not be empty.
    const char& back() const { return _data._data[size() - 1]; }
    /// First byte.
    char* begin() { return _data._data; }
    /// One past the last byte, on the terminator.
    char* end() { return _data._data + size(); }
    /// First byte.
    const char* begin() const { return c_str(); }
    /// One past the last byte, on the terminator.
    const char* end() const { return c_str() + size(); }

    /// Appends other.
    OrvString& operator+=(const OrvString& other) { return append(other); }
    /// Appends a terminated text.
    OrvString& operator+=(const char* text) { return append(text); }
    /// Appends one byte.
    OrvString& operator+=(char c)
    {
        push_back(c);
        return *this;
    }
    /// Appends other.
    OrvString& append(const OrvString& other) { return append(other.c_str(), other.size()); }
    /// Appends the length bytes of other from pos; fatal when pos is past its end.
    OrvString& append(const OrvString& other, size_t pos, size_t length = npos);
    /// Appends a terminated text; null appends nothing.
    OrvString& append(const char* text);
    /// Appends count bytes of text.
    OrvString& append(const char* text, size_t count) { return replace(size(), 0, text, count); }
    /// Appends count copies of c.
    OrvString& append(size_t count, char c) { return replace(size(), 0, count, c); }
    /// Appends one byte.
    void push_back(char c);
    /// Drops the last byte; the string must not be empty.
    void pop_back();

    /// Replaces the text with other.
    OrvString& assign(const OrvString& other) { return assign(other.c_str(), other.size()); }
    /// Replaces the text with the length bytes of other from pos; fatal when pos is past its end.
    OrvString& assign(const OrvString& other, size_t pos, size_t length = npos);
    /// Replaces the text with a terminated text; null empties the string.
    OrvString& assign(const char* text);
    /// Replaces the text with count bytes of text.
    OrvString& assign(const char* text, size_t count) { return replace(0, size(), text, count); }
    /// Replaces the text with count copies of c.
    OrvString& assign(size_t count, char c) { return replace(0, size(), count, c); }

    /// Inserts other before pos; fatal when pos is past the end.
    OrvString& insert(size_t pos, const OrvString& other) { return replace(pos, 0, other.c_str(), other.size()); }
    /// Inserts a terminated text before pos; fatal when pos is past the end.
    OrvString& insert(size_t pos, const char* text);
    /// Inserts count bytes of text before pos; fatal when pos is past the end.
    OrvString& insert(size_t pos, const char* text, size_t count) { return replace(pos, 0, text, count); }
    /// Inserts count copies of c before pos; fatal when pos is past the end.
    OrvString& insert(size_t pos, size_t count, char c) { return replace(pos, 0, count, c); }

    /// Removes length bytes from pos, or to the end; fatal when pos is past the end.
    OrvString& erase(size_t pos = 0, size_t length = npos) { return replace(pos, length, "", 0); }

    /// Replaces length bytes from pos with other; fatal when pos is past the end.
    OrvString& replace(size_t pos, size_t length, const OrvString& other)
    {
        return replace(pos, length, other.c_str(), other.size());
    }
    /// Replaces length bytes from pos with a terminated text; fatal when pos is past the end.
    OrvString& replace(size_t pos, size_t length, const char* text);
    /// Replaces length bytes from pos with count bytes of text, which may lie in this string.
    OrvString& replace(size_t pos, size_t length, const char* text, size_t count);
    /// Replaces length bytes from pos with count copies of c; fatal when pos is past the end.
    OrvString& replace(size_t pos, size_t length, size_t count, char c);

    /// First position at or after pos where other starts, or npos.
    size_t find(const OrvString& other, size_t pos = 0) const { return find(other.c_str(), pos, other.size()); }
    /// First position at or after pos where the terminated text starts, or npos.
    size_t find(const char* text, size_t pos = 0) const;
    /// First position at or after pos where the count bytes of text start, or npos.
    size_t find(const char* text, size_t pos, size_t count) const;
    /// First position at or after pos of c, or npos.
    size_t find(char c, size_t pos = 0) const;
    /// Last position at or before pos where other starts, or npos.
    size_t rfind(const OrvString& other, size_t pos = npos) const { return rfind(other.c_str(), pos, other.size()); }
    /// Last position at or before pos where the terminated text starts, or npos.
    size_t rfind(const char* text, size_t pos = npos) const;
    /// Last position at or before pos where the count bytes of text start, or npos.
    size_t rfind(const char* text, size_t pos, size_t count) const;
    /// Last position at or before pos of c, or npos.
    size_t rfind(char c, size_t pos = npos) const;

    /// First position at or after pos of a byte of set, or npos.
    size_t find_first_of(const OrvString& set, size_t pos = 0) const
    {
        return find_first_of(set.c_str(), pos, set.size());
    }
    /// First position at or after pos of a byte of the terminated set, or npos.
    size_t find_first_of(const char* set, size_t pos = 0) const;
    /// First position at or after pos of one of the count bytes of set, or npos.
    size_t find_first_of(const char* set, size_t pos, size_t count) const;
    /// First position at or after pos of c, or npos.
    size_t find_first_of(char c, size_t pos = 0) const { return find(c, pos); }
    /// Last position at or before pos of a byte of set, or npos.
    size_t find_last_of(const OrvString& set, size_t pos = npos) const
    {
        return find_last_of(set.c_str(), pos, set.size());
    }
    /// Last position at or before pos of a byte of the terminated set, or npos.
    size_t find_last_of(const char* set, size_t pos = npos) const;
    /// Last position at or before pos of one of the count bytes of set, or npos.
    size_t find_last_of(const char* set, size_t pos, size_t count) const;
    /// Last position at or before pos of c, or npos.
    size_t find_last_of(char c, size_t pos = npos) const { return rfind(c, pos); }
    /// First position at or after pos of a byte not in set, or npos.
    size_t find_first_not_of(const OrvString& set, size_t pos = 0) const
    {
        return find_first_not_of(set.c_str(), pos, set.size());
    }
    /// First position at or after pos of a byte not in the terminated set, or npos.
    size_t find_first_not_of(const char* set, size_t pos = 0) const;
    /// First position at or after pos of a byte not among the count bytes of set, or npos.
    size_t find_first_not_of(const char* set, size_t pos, size_t count) const;
    /// First position at or after pos of a byte other than c, or npos.
    size_t find_first_not_of(char c, size_t pos = 0) const { return find_first_not_of(&c, pos, 1); }
    /// Last position at or before pos of a byte not in set, or npos.
    size_t find_last_not_of(const OrvString& set, size_t pos = npos) const
    {
        return find_last_not_of(set.c_str(), pos, set.size());
    }
    /// Last position at or before pos of a byte not in the terminated set, or npos.
    size_t find_last_not_of(const char* set, size_t pos = npos) const;
    /// Last position at or before pos of a byte not among the count bytes of set, or npos.
    size_t find_last_not_of(const char* set, size_t pos, size_t count) const;
    /// Last position at or before pos of a byte other than c, or npos.
    size_t find_last_not_of(char c, size_t pos = npos) const { return find_last_not_of(&c, pos, 1); }

    /// The length bytes from pos, or to the end; fatal when pos is past the end.
    OrvString substr(size_t pos = 0, size_t length = npos) const { return OrvString(*this, pos, length); }

    /// Byte-wise order against other: negative, 0 or positive.
    int compare(const OrvString& other) const;
    /// Byte-wise order against a terminated text: negative, 0 or positive.
    int compare(const char* text) const;
    /// Byte-wise order of the length bytes from pos against other; fatal when pos is past the end.
    int compare(size_t pos, size_t length, const OrvString& other) const;

    /// Lowers the ASCII letters in place.
    OrvString& toLowerSelf();
    /// Raises the ASCII letters in place.
    OrvString& toUpperSelf();

    // Public on purpose: names and order are the fixed layout that other classes read.
    /// The text and its terminator; empty until text arrives.
    PODArray<char> _data;
};

/// Byte-wise equality.
inline bool operator==(const OrvString& a, const OrvString& b)
{
    return a.compare(b) == 0;
}
/// Byte-wise equality with a terminated text.
inline bool operator==(const OrvString& a, const char* b)
{
    return a.compare(b) == 0;
}
/// Byte-wise equality with a terminated text.
inline bool operator==(const char* a, const OrvString& b)
{
    return b.compare(a) == 0;
}
/// Byte-wise inequality.
inline bool operator!=(const OrvString& a, const OrvString& b)
{
    return a.compare(b) != 0;
}
/// Byte-wise inequality with a terminated text.
inline bool operator!=(const OrvString& a, const char* b)
{
    return a.compare(b) != 0;
}
/// Byte-wise inequality with a terminated text.
inline bool operator!=(const char* a, const OrvString& b)
{
    return b.compare(a) != 0;
}
/// Byte-wise order, as unsigned bytes.
inline bool operator<(const OrvString& a, const OrvString& b)
{
    return a.compare(b) < 0;
}
/// Byte-wise order against a terminated text.
inline bool operator<(const OrvString& a, const char* b)
{
    return a.compare(b) < 0;
}
/// Byte-wise order against a terminated text.
inline bool operator<(const char* a, const OrvString& b)
{
    return b.compare(a) > 0;
}
/// Byte-wise order.
inline bool operator<=(const OrvString& a, const OrvString& b)
{
    return a.compare(b) <= 0;
}
/// Byte-wise order.
inline bool operator>(const OrvString& a, const OrvString& b)
{
    return a.compare(b) > 0;
}
/// Byte-wise order.
inline bool operator>=(const OrvString& a, const OrvString& b)
{
    return a.compare(b) >= 0;
}

/// Concatenation.
OrvString operator+(const OrvString& a, const OrvString& b);
/// Concatenation with a terminated text.
OrvString operator+(const OrvString& a, const char* b);
/// Concatenation of a terminated text and a string.
OrvString operator+(const char* a, const OrvString& b);
/// Concatenation with one byte.
OrvString operator+(const OrvString& a, char b);
/// Concatenation of one byte and a string.
OrvString operator+(char a, const OrvString& b);
/// Concatenation that reuses the left operand's block.
OrvString operator+(OrvString&& a, const OrvString& b);
/// Concatenation that reuses the left operand's block.
OrvString operator+(OrvString&& a, const char* b);
/// Concatenation that reuses the left operand's block.
OrvString operator+(OrvString&& a, char b);

/// Writes the text, honouring the stream's width and fill.
std::ostream& operator<<(std::ostream& out, const OrvString& text);
/// Reads one whitespace-delimited word; on failure the string is left as it was.
std::istream& operator>>(std::istream& in, OrvString& text);

/// Binds the string proxy allocator to target, counting under MemoryStatIds::CoreSystemString. Called at start-up.
void initializeStringAllocator(MemoryAllocator* target);
/// The string proxy allocator, or null while it is not bound.
MemoryAllocator* getStringAllocator();
/// Unbinds the string proxy allocator. Called at shut-down.
void uninitializeStringAllocator();

} // namespace orv
