// orvCore/system/memory/orvMemoryStats.h
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "system/memory/orvMemoryStatIds.h"

namespace orv
{

/// Bytes and blocks in use, one atomic pair of counters per category. Any thread.
class MemoryStats
{
public:
    MemoryStats();

    /// Counts an allocation of size bytes in category, or its release. Any thread.
    void addMemoryAllocation(MemAllocStatId category, uint64_t size);
    void removeMemoryAllocation(MemAllocStatId category, uint64_t size);

    /// Bytes in use under the category.
    uint64_t getSize(MemAllocStatId category) const;
    /// Mebibytes in use under the category.
    double getSizeMB(MemAllocStatId category) const;
    /// Blocks in use under the category.
    uint64_t getCount(MemAllocStatId category) const;

private:
    std::atomic<uint64_t> _memorySize[MemoryStatIds::END];
    std::atomic<uint64_t> _memoryCount[MemoryStatIds::END];
};

} // namespace orv
