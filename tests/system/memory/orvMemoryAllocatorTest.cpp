#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "system/memory/orvMemoryAllocatorMalloc.h"
#include "system/memory/orvProxyAllocator.h"

namespace
{

uint16_t wordBefore(const void* p)
{
    uint16_t word;
    memcpy(&word, static_cast<const unsigned char*>(p) - 2, 2);
    return word;
}

TEST(MemoryAllocatorMallocTest, BlocksAreAlignedPaddedAndCounted)
{
    orv::MemoryAllocatorMalloc allocator;
    orv::MemoryStats stats;
    allocator.enableAllocationStats(&stats);
    for (size_t align : {1u, 2u, 8u, 16u, 64u})
    {
        void* p = allocator.allocate(40, align, 3);
        EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(p) % (align < 2 ? 2 : align));
        EXPECT_EQ(0xFADE, wordBefore(p));
        EXPECT_TRUE(allocator.isValidAlloc(p));
        memset(p, 0xAB, 40);
        allocator.deallocate(p, 3);
    }
    EXPECT_EQ(0u, stats.getSize(3));
    EXPECT_EQ(0u, stats.getCount(3));

    void* empty = allocator.allocate(0, 16, 3);
    void* other = allocator.allocate(0, 16, 3);
    EXPECT_NE(empty, other);
    EXPECT_EQ(2u, stats.getCount(3));
    EXPECT_EQ(2u * (0 + 16 + 24), stats.getSize(3));
    allocator.deallocate(empty, 3);
    allocator.deallocate(other, 3);
    EXPECT_FALSE(allocator.isValidAlloc(nullptr));
}

TEST(MemoryAllocatorMallocTest, ProxyCountsUnderItsOwnCategory)
{
    orv::MemoryAllocatorMalloc target;
    orv::MemoryStats stats;
    target.enableAllocationStats(&stats);
    orv::ProxyAllocator proxy;
    ASSERT_TRUE(proxy.initialize(&target, orv::MemoryStatIds::CoreSystemString));
    void* p = proxy.allocate(10, 8, orv::MemoryStatIds::CoreMath);
    EXPECT_EQ(1u, stats.getCount(orv::MemoryStatIds::CoreSystemString));
    EXPECT_EQ(0u, stats.getCount(orv::MemoryStatIds::CoreMath));
    EXPECT_TRUE(proxy.isValidAlloc(p));
    proxy.deallocate(p, orv::MemoryStatIds::CoreMath);
    EXPECT_EQ(0u, stats.getCount(orv::MemoryStatIds::CoreSystemString));
}

TEST(MemoryAllocatorMallocTest, SeventeenthRegistrationIsRefused)
{
    orv::MemoryAllocatorMalloc allocators[17];
    int accepted = 0;
    for (orv::MemoryAllocatorMalloc& allocator : allocators)
    {
        accepted += orv::registerAllocator(&allocator) ? 1 : 0;
    }
    EXPECT_EQ(16, accepted);
    void* p = allocators[3].allocate(8, 8, 0);
    // Every malloc block answers to the first registered allocator: they share one layout.
    EXPECT_EQ(&allocators[0], orv::findAllocator(p));
    allocators[3].deallocate(p, 0);
    for (orv::MemoryAllocatorMalloc& allocator : allocators)
    {
        orv::unregisterAllocator(&allocator);
    }
    EXPECT_EQ(nullptr, orv::findAllocator(p));
}

TEST(MemoryAllocatorMallocDeathTest, AlignmentThatIsNotEvenIsFatal)
{
    orv::MemoryAllocatorMalloc allocator;
    EXPECT_DEATH(allocator.allocate(8, 3, 0), "internalAlign % minAlign == 0");
}

TEST(MemoryAllocatorMallocDeathTest, AlignmentOfZeroIsFatalBeforeAnyDivision)
{
    orv::MemoryAllocatorMalloc allocator;
    EXPECT_DEATH(allocator.allocate(8, 0, 0), "align != 0");
}

} // namespace
