// orvCore/system/memory/orvMemoryAllocatorMalloc.cpp
#include "system/memory/orvMemoryAllocatorMalloc.h"

#include <cstdlib>
#include <cstring>

#include "system/debug/orvAssert.h"

namespace orv
{

namespace
{

const size_t kHeaderSize = 24;
const uint16_t kPadWord = 0xFADE;

uint16_t readWordBefore(const unsigned char* p)
{
    uint16_t word;
    memcpy(&word, p - sizeof(word), sizeof(word));
    return word;
}

} // namespace

void* MemoryAllocatorMalloc::allocate(size_t size, size_t align, MemAllocStatId category)
{
    // Refused before the divisions below.
    orvAssert(align != 0);
    const size_t minAlign = getMinimumAlignSupported();
    const size_t internalAlign = align > minAlign ? align : minAlign;
    orvAssert(internalAlign % minAlign == 0);
    orvAssert(internalAlign % align == 0);

    const size_t allocatedSize = size + internalAlign + kHeaderSize;
    unsigned char* h = static_cast<unsigned char*>(malloc(allocatedSize));
    const uintptr_t headerEnd = reinterpret_cast<uintptr_t>(h) + kHeaderSize;
    uintptr_t aligned = (headerEnd + internalAlign - 1) / internalAlign * internalAlign;
    // A pad always exists, so that the word before the user block is always the pad word.
    if (aligned == headerEnd)
    {
        aligned += internalAlign;
    }
    unsigned char* p = reinterpret_cast<unsigned char*>(aligned);
    orvAssert(reinterpret_cast<uintptr_t>(p) - reinterpret_cast<uintptr_t>(h) + size <= allocatedSize);
    orvAssert(reinterpret_cast<uintptr_t>(p) % internalAlign == 0);

    const uint64_t sizeField = allocatedSize;
    const uint64_t idField = _nextAllocationId.fetch_add(1);
    const uint64_t reserved = 0;
    memcpy(h, &sizeField, 8);
    memcpy(h + 8, &idField, 8);
    memcpy(h + 16, &reserved, 8);
    for (unsigned char* pad = h + kHeaderSize; pad + 1 < p; pad += 2)
    {
        memcpy(pad, &kPadWord, 2);
    }
    // An odd gap leaves one byte in front of the last word; the word before p is what deallocate reads.
    memcpy(p - 2, &kPadWord, 2);

    if (getMemoryStats() != nullptr)
    {
        getMemoryStats()->addMemoryAllocation(category, allocatedSize);
    }
    return p;
}

void MemoryAllocatorMalloc::deallocate(void* pointer, MemAllocStatId category)
{
    orvAssert(pointer != NULL);
    unsigned char* p = static_cast<unsigned char*>(pointer);
    unsigned char* headerEnd = p;
    // The reserved zero word of the header stops the walk over the pad.
    while (readWordBefore(headerEnd) == kPadWord)
    {
        headerEnd -= 2;
    }
    unsigned char* h = headerEnd - kHeaderSize;
    uint64_t allocatedSize;
    memcpy(&allocatedSize, h, 8);
    if (getMemoryStats() != nullptr)
    {
        getMemoryStats()->removeMemoryAllocation(category, allocatedSize);
    }
    free(h);
}

bool MemoryAllocatorMalloc::isValidAlloc(void* pointer) const
{
    if (pointer == nullptr)
    {
        return false;
    }
    return readWordBefore(static_cast<unsigned char*>(pointer)) == kPadWord;
}

} // namespace orv
