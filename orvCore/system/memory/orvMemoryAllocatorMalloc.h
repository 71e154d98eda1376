// orvCore/system/memory/orvMemoryAllocatorMalloc.h
#pragma once

#include <atomic>
#include <cstdint>

#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// The built-in allocator: malloc behind a 24-byte header and a pad of 0xFADE words that deallocate walks back.
/// Any thread; the blocks are counted under their category when statistics are enabled.
class MemoryAllocatorMalloc : public MemoryAllocator
{
public:
    /// A block of size bytes aligned to align bytes: align > 0, and 1 or a multiple of 2. Fatal otherwise.
    void* allocate(size_t size, size_t align, MemAllocStatId category) override;
    /// Frees a block of allocate; pointer must not be null.
    void deallocate(void* pointer, MemAllocStatId category) override;
    /// True when the word before pointer is the pad word that allocate leaves; false for null.
    bool isValidAlloc(void* pointer) const override;

    /// The smallest alignment a block gets, in bytes.
    static size_t getMinimumAlignSupported() { return 2; }

private:
    std::atomic<uint64_t> _nextAllocationId{1};
};

} // namespace orv
