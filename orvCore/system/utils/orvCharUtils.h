// orvCore/system/utils/orvCharUtils.h
#pragma once

#include <cstdarg>
#include <cstddef>

namespace orv
{

/// Copies at most size bytes of source and always ends destination with a terminator in its last byte; a longer
/// source is cut. Returns destination. Does nothing when size is 0.
char* strcpySafe(char* destination, size_t size, const char* source);
/// Formats into destination of size bytes, always terminated; a longer text is cut. Returns what vsnprintf
/// returned: the length the whole text needs, or a negative value on a format error.
int sprintfSafe(char* destination, size_t size, const char* format, ...) __attribute__((format(printf, 3, 4)));
/// sprintfSafe with a list of arguments.
int vsprintfSafe(char* destination, size_t size, const char* format, va_list args)
    __attribute__((format(printf, 3, 0)));
/// Turns every backslash into a slash, in place, up to the terminator or size bytes.
void replaceBackSlashWithForwardSlash(char* text, size_t size);

} // namespace orv
