// orvCore/system/memory/orvProxyAllocator.h
#pragma once

#include "system/memory/orvMemoryAllocator.h"

namespace orv
{

/// Forwards to a target allocator, counting everything under its own category whatever the caller passes.
class ProxyAllocator : public MemoryAllocator
{
public:
    /// Binds the proxy to a target and a category. Does not take ownership of the target.
    bool initialize(MemoryAllocator* target, unsigned int category);
    void uninitialize();

    /// The target's, under the proxy's own category; any thread the target allows.
    void* allocate(size_t size, size_t align, MemAllocStatId category) override;
    void deallocate(void* pointer, MemAllocStatId category) override;
    bool isValidAlloc(void* pointer) const override;

    /// The target and the category given to initialize; null and 0 before.
    MemoryAllocator* getTarget() const { return _target; }
    unsigned int getCategory() const { return _category; }

private:
    MemoryAllocator* _target = nullptr;
    unsigned int _category = 0;
};

} // namespace orv
