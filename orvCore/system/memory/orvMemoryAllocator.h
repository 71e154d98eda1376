// orvCore/system/memory/orvMemoryAllocator.h
#pragma once

#include <cstddef>

#include "system/memory/orvMemoryStatIds.h"
#include "system/memory/orvMemoryStats.h"

namespace orv
{

/// Where the library's classes get their memory. A host may derive its own and install it before initCore.
class MemoryAllocator
{
public:
    /// The alignment of allocations that ask for none, in bytes.
    static const size_t DEFAULT_ALIGN = 16;

    /// Allocators are deleted through this interface by their owner.
    virtual ~MemoryAllocator();

    /// A block of size bytes aligned to align, counted under the category. Any thread.
    virtual void* allocate(size_t size, size_t align, MemAllocStatId category) = 0;
    /// Gives back a block of this allocator. Any thread.
    virtual void deallocate(void* pointer, MemAllocStatId category) = 0;
    /// True when the pointer looks like a block of this allocator.
    virtual bool isValidAlloc(void* pointer) const = 0;

    /// Counts allocations in these statistics from now on. Does not take ownership.
    void enableAllocationStats(MemoryStats* stats) { _memoryStats = stats; }
    void disableAllocationStats() { _memoryStats = nullptr; }
    /// The statistics in use, or null.
    MemoryStats* getMemoryStats() const { return _memoryStats; }

private:
    MemoryStats* _memoryStats = nullptr;
};

/// The allocator in force; null before useCoreDefaultAllocator or setDefaultAllocator.
MemoryAllocator* getDefaultAllocator();
/// Makes the host's allocator the one in force. Does not take ownership; it must outlive finishCore.
void setDefaultAllocator(MemoryAllocator* allocator);
/// Makes the library's built-in malloc allocator the one in force.
void useCoreDefaultAllocator();

/// Enters an allocator in the list that findAllocator searches; false when all 16 slots are taken.
bool registerAllocator(MemoryAllocator* allocator);
/// Takes an allocator out of that list.
void unregisterAllocator(MemoryAllocator* allocator);
/// The first registered allocator that claims the pointer, or null.
MemoryAllocator* findAllocator(void* pointer);

} // namespace orv
