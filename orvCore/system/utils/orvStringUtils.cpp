// orvCore/system/utils/orvStringUtils.cpp
#include "system/utils/orvStringUtils.h"

#include <cctype>
#include <cstdio>
#include <cstring>
#include <utility>

#include "system/containers/orvPODArray.h"
#include "system/debug/orvAssert.h"

namespace orv
{

namespace
{

// Owned by start-up: rewound by initCore. Copies stay valid until the next rewind.
char alphaNumericCopiesBuffer[ALPHANUM_BUFFER_SIZE];
int32_t alphaNumericCopiesBufferIndex = 0;

// The Latin-1 accented vowels that fold to their plain letter; any other byte above 127 becomes '_'.
char foldAccent(unsigned char c)
{
    switch (c)
    {
    case 224:
    case 226:
        return 'a';
    case 232:
    case 233:
    case 234:
    case 235:
        return 'e';
    case 238:
    case 239:
        return 'i';
    case 244:
    case 246:
        return 'o';
    case 249:
    case 251:
        return 'u';
    default:
        return '_';
    }
}

// Normalises source into destination, or only measures when destination is null. Returns whether anything
// changed; length receives the length of the normalised text.
bool normalise(const char* source, char* destination, size_t& length)
{
    bool changed = false;
    bool raiseNext = false;
    length = 0;
    for (const char* p = source; *p != '\0'; ++p)
    {
        const unsigned char c = static_cast<unsigned char>(*p);
        // Only the ASCII ranges count as letters and digits, whatever the locale.
        if (c < 128 && isblank(c))
        {
            changed = true;
            raiseNext = true;
            continue;
        }
        char mapped = (c < 128 && isalnum(c)) ? static_cast<char>(c) : foldAccent(c);
        if (raiseNext)
        {
            mapped = static_cast<char>(toupper(static_cast<unsigned char>(mapped)));
            raiseNext = false;
        }
        if (mapped != static_cast<char>(c))
        {
            changed = true;
        }
        if (destination != nullptr)
        {
            destination[length] = mapped;
        }
        ++length;
    }
    if (destination != nullptr)
    {
        destination[length] = '\0';
    }
    return changed;
}

void formatNumber(char (&digits)[64], int value)
{
    snprintf(digits, sizeof(digits), "%d", value);
}

void formatNumber(char (&digits)[64], unsigned int value)
{
    snprintf(digits, sizeof(digits), "%u", value);
}

void formatNumber(char (&digits)[64], double value)
{
    snprintf(digits, sizeof(digits), "%g", value);
}

template <typename Number>
OrvString appendNumber(OrvString text, Number value)
{
    char digits[64];
    formatNumber(digits, value);
    text += digits;
    return text;
}

} // namespace

OrvString toLower(const OrvString& text)
{
    OrvString result(text);
    result.toLowerSelf();
    return result;
}

OrvString toUpper(const OrvString& text)
{
    OrvString result(text);
    result.toUpperSelf();
    return result;
}

void replaceChar(OrvString& text, char from, char to)
{
    for (size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] == from)
        {
            text[i] = to;
        }
    }
}

void split(const OrvString& text, const OrvString& separator, Array<OrvString>& parts)
{
    if (text.empty() || separator.empty())
    {
        return;
    }
    size_t start = 0;
    size_t found = text.find(separator, start);
    while (found != OrvString::npos)
    {
        parts.push_back(text.substr(start, found - start));
        start = found + separator.size();
        found = text.find(separator, start);
    }
    parts.push_back(text.substr(start));
}

OrvString longuestCommonSubstring(const OrvString& a, const OrvString& b)
{
    if (a.empty() || b.empty())
    {
        return OrvString();
    }
    // One row of the classic table is enough: lengths of common suffixes ending at a[i] and b[j].
    PODArray<size_t> previous(b.size() + 1, static_cast<size_t>(0));
    PODArray<size_t> current(b.size() + 1, static_cast<size_t>(0));
    size_t bestLength = 0;
    size_t bestEnd = 0;
    for (size_t i = 1; i <= a.size(); ++i)
    {
        for (size_t j = 1; j <= b.size(); ++j)
        {
            current[j] = a[i - 1] == b[j - 1] ? previous[j - 1] + 1 : 0;
            if (current[j] > bestLength)
            {
                bestLength = current[j];
                bestEnd = i;
            }
        }
        previous = current;
    }
    return a.substr(bestEnd - bestLength, bestLength);
}

bool alphaNumerizeNameWithCopy(const char* source, char* destination)
{
    size_t length = 0;
    return normalise(source != nullptr ? source : "", destination, length);
}

bool alphaNumerizeName(OrvString& name)
{
    size_t length = 0;
    if (!normalise(name.c_str(), nullptr, length))
    {
        return false;
    }
    // The normalised text is never longer than the name, so it is written over it from the front.
    PODArray<char> copy(name.size() + 1, '\0');
    normalise(name.c_str(), copy.data(), length);
    name.assign(copy.data(), length);
    return true;
}

const char* alphaNumerizeNameStr(const char* name)
{
    if (name == nullptr)
    {
        return name;
    }
    size_t length = 0;
    if (!normalise(name, nullptr, length))
    {
        return name;
    }
    // Room is claimed and checked before the write, so a full buffer stops the process and is never overrun.
    const int32_t position = alphaNumericCopiesBufferIndex;
    alphaNumericCopiesBufferIndex += static_cast<int32_t>(length) + 1;
    orvAssert(alphaNumericCopiesBufferIndex <= ALPHANUM_BUFFER_SIZE);
    char* copy = alphaNumericCopiesBuffer + position;
    normalise(name, copy, length);
    return copy;
}

void resetAlphaNumericCopiesBuffer()
{
    alphaNumericCopiesBufferIndex = 0;
}

int32_t getAlphaNumericCopiesBufferIndex()
{
    return alphaNumericCopiesBufferIndex;
}

OrvString operator+(const OrvString& text, int value)
{
    return appendNumber(text, value);
}

OrvString operator+(const OrvString& text, unsigned int value)
{
    return appendNumber(text, value);
}

OrvString operator+(const OrvString& text, float value)
{
    return appendNumber(text, static_cast<double>(value));
}

OrvString operator+(const OrvString& text, double value)
{
    return appendNumber(text, value);
}

OrvString operator+(OrvString&& text, int value)
{
    return appendNumber(std::move(text), value);
}

OrvString operator+(OrvString&& text, unsigned int value)
{
    return appendNumber(std::move(text), value);
}

OrvString operator+(OrvString&& text, float value)
{
    return appendNumber(std::move(text), static_cast<double>(value));
}

OrvString operator+(OrvString&& text, double value)
{
    return appendNumber(std::move(text), value);
}

} // namespace orv
