// orvCore/system/memory/orvLargePages.cpp
#include "system/memory/orvLargePages.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace orv
{

void adviseLargePages(void* data, size_t size)
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    const uintptr_t kLargePage = uintptr_t(2) << 20;
    const uintptr_t start = reinterpret_cast<uintptr_t>(data);
    // Only the large pages wholly inside the block: the advice covers whole pages, and the block's neighbours are
    // not ours to advise.
    const uintptr_t first = (start + kLargePage - 1) & ~(kLargePage - 1);
    const uintptr_t end = (start + size) & ~(kLargePage - 1);
    if (data == nullptr || end <= first)
    {
        return;
    }
    // The result is not needed: without large pages the block stays as it was.
    (void)madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
#else
    (void)data;
    (void)size;
#endif
}

} // namespace orv
