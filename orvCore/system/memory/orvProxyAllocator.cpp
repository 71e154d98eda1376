// orvCore/system/memory/orvProxyAllocator.cpp
#include "system/memory/orvProxyAllocator.h"

namespace orv
{

bool ProxyAllocator::initialize(MemoryAllocator* target, unsigned int category)
{
    _target = target;
    _category = category;
    return true;
}

void ProxyAllocator::uninitialize()
{
    _target = nullptr;
    _category = 0;
}

void* ProxyAllocator::allocate(size_t size, size_t align, MemAllocStatId)
{
    return _target->allocate(size, align, _category);
}

void ProxyAllocator::deallocate(void* pointer, MemAllocStatId)
{
    _target->deallocate(pointer, _category);
}

bool ProxyAllocator::isValidAlloc(void* pointer) const
{
    return _target != nullptr && _target->isValidAlloc(pointer);
}

} // namespace orv
