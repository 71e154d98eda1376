// orvCore/system/containers/orvStaticString.h
#pragma once

#include <cstring>

namespace orv
{

/// A borrowed pointer to a text of static lifetime, ordered by strcmp; a map key for names known at build time.
class OrvStaticString
{
public:
    /// The empty text.
    OrvStaticString() = default;
    /// Points at text, which must outlive every copy. Does not take ownership; null reads as "".
    OrvStaticString(const char* text) : _ptr(text != nullptr ? text : "") {}

    /// The text, never null.
    const char* c_str() const { return _ptr; }

    /// Order of the texts by strcmp.
    bool operator<(const OrvStaticString& other) const { return strcmp(_ptr, other._ptr) < 0; }
    /// Same text, by strcmp.
    bool operator==(const OrvStaticString& other) const { return strcmp(_ptr, other._ptr) == 0; }
    /// Different texts, by strcmp.
    bool operator!=(const OrvStaticString& other) const { return strcmp(_ptr, other._ptr) != 0; }

private:
    /// The borrowed text.
    const char* _ptr = "";
};

} // namespace orv
