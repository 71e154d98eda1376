// orvCore/system/utils/orvCharUtils.cpp
#include "system/utils/orvCharUtils.h"

#include <cstdio>
#include <cstring>

namespace orv
{

char* strcpySafe(char* destination, size_t size, const char* source)
{
    if (size == 0)
    {
        return destination;
    }
    strncpy(destination, source != nullptr ? source : "", size);
    // strncpy leaves no terminator when the source fills the destination.
    destination[size - 1] = '\0';
    return destination;
}

int sprintfSafe(char* destination, size_t size, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    const int result = vsprintfSafe(destination, size, format, args);
    va_end(args);
    return result;
}

int vsprintfSafe(char* destination, size_t size, const char* format, va_list args)
{
    if (size == 0)
    {
        return vsnprintf(nullptr, 0, format, args);
    }
    const int result = vsnprintf(destination, size, format, args);
    destination[size - 1] = '\0';
    return result;
}

void replaceBackSlashWithForwardSlash(char* text, size_t size)
{
    if (text == nullptr)
    {
        return;
    }
    for (size_t i = 0; i < size && text[i] != '\0'; ++i)
    {
        if (text[i] == '\\')
        {
            text[i] = '/';
        }
    }
}

} // namespace orv
