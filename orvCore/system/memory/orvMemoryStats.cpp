// orvCore/system/memory/orvMemoryStats.cpp
#include "system/memory/orvMemoryStats.h"

namespace orv
{

MemoryStats::MemoryStats()
{
    for (int i = 0; i < MemoryStatIds::END; ++i)
    {
        _memorySize[i].store(0, std::memory_order_relaxed);
        _memoryCount[i].store(0, std::memory_order_relaxed);
    }
}

void MemoryStats::addMemoryAllocation(MemAllocStatId category, uint64_t size)
{
    _memorySize[category].fetch_add(size, std::memory_order_relaxed);
    _memoryCount[category].fetch_add(1, std::memory_order_relaxed);
}

void MemoryStats::removeMemoryAllocation(MemAllocStatId category, uint64_t size)
{
    _memorySize[category].fetch_sub(size, std::memory_order_relaxed);
    _memoryCount[category].fetch_sub(1, std::memory_order_relaxed);
}

uint64_t MemoryStats::getSize(MemAllocStatId category) const
{
    return _memorySize[category].load(std::memory_order_relaxed);
}

double MemoryStats::getSizeMB(MemAllocStatId category) const
{
    return static_cast<double>(getSize(category)) / (1024.0 * 1024.0);
}

uint64_t MemoryStats::getCount(MemAllocStatId category) const
{
    return _memoryCount[category].load(std::memory_order_relaxed);
}

} // namespace orv
