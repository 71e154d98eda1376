// orvCore/system/utils/orvHashCode.cpp
#include "system/utils/orvHashCode.h"

#include <cstdint>
#include <cstring>

namespace orv
{

int getHashCode(const char* text)
{
    if (text == nullptr)
    {
        return 0;
    }
    const size_t length = strlen(text);
    uint64_t sum = 0;
    for (size_t i = 0; i < length; ++i)
    {
        // The byte counts as signed, its product is taken in 32 bits and then widened with its sign.
        const int32_t product = 31 * static_cast<int32_t>(static_cast<signed char>(text[i]));
        const uint64_t distance = static_cast<uint64_t>(length - 1 - i);
        sum += static_cast<uint64_t>(static_cast<int64_t>(product)) ^ distance;
    }
    return static_cast<int>(static_cast<uint32_t>(sum));
}

} // namespace orv
