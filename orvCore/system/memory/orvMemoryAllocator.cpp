// orvCore/system/memory/orvMemoryAllocator.cpp
#include "system/memory/orvMemoryAllocator.h"

#include <oneapi/tbb/spin_mutex.h>

#include "system/memory/orvMemoryAllocatorMalloc.h"

namespace orv
{

namespace
{

// Built at load time and destroyed at unload, so that it outlives every use between initCore and finishCore.
MemoryAllocatorMalloc s_coreDefaultAllocator;
MemoryAllocator* s_defaultAllocator = nullptr;

const int kAllocatorSlotCount = 16;
MemoryAllocator* s_registeredAllocators[kAllocatorSlotCount] = {};
tbb::spin_mutex s_registeredAllocatorsLock;

} // namespace

MemoryAllocator::~MemoryAllocator() = default;

MemoryAllocator* getDefaultAllocator()
{
    return s_defaultAllocator;
}

void setDefaultAllocator(MemoryAllocator* allocator)
{
    s_defaultAllocator = allocator;
}

void useCoreDefaultAllocator()
{
    s_defaultAllocator = &s_coreDefaultAllocator;
}

bool registerAllocator(MemoryAllocator* allocator)
{
    tbb::spin_mutex::scoped_lock lock(s_registeredAllocatorsLock);
    for (int i = 0; i < kAllocatorSlotCount; ++i)
    {
        if (s_registeredAllocators[i] == nullptr)
        {
            s_registeredAllocators[i] = allocator;
            return true;
        }
    }
    return false;
}

void unregisterAllocator(MemoryAllocator* allocator)
{
    tbb::spin_mutex::scoped_lock lock(s_registeredAllocatorsLock);
    for (int i = 0; i < kAllocatorSlotCount; ++i)
    {
        if (s_registeredAllocators[i] == allocator)
        {
            s_registeredAllocators[i] = nullptr;
        }
    }
}

MemoryAllocator* findAllocator(void* pointer)
{
    // The lock is held across the isValidAlloc calls so that no slot empties under the search.
    tbb::spin_mutex::scoped_lock lock(s_registeredAllocatorsLock);
    for (int i = 0; i < kAllocatorSlotCount; ++i)
    {
        if (s_registeredAllocators[i] != nullptr && s_registeredAllocators[i]->isValidAlloc(pointer))
        {
            return s_registeredAllocators[i];
        }
    }
    return nullptr;
}

} // namespace orv
