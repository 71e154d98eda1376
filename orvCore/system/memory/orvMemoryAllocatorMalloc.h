// orvCore/system/memory/orvMemoryAllocatorMalloc.h
#pragma once

#include <atomic>
#include <cstdint>

#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// The built-in allocator: malloc behind a 24-byte header and a pad of 0xFADE words that deallocate walks back.
class MemoryAllocatorMalloc : public MemoryAllocator
{
public:
    void* allocate(size_t size, size_t align, MemAllocStatId category) override;
    void deallocate(void* pointer, MemAllocStatId category) override;
    bool isValidAlloc(void* pointer) const override;

    static size_t getMinimumAlignSupported() { return 2; }

private:
    std::atomic<uint64_t> _nextAllocationId{1};
};

} // namespace orv
